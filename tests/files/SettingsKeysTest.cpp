// Each key that holds one number: written from the field, read into it.
#include <gtest/gtest.h>
#include <span>

#include "files/SettingsKeys.h"
#include "files/SettingsReader.h"
#include "files/SettingsWriter.h"
#include "support/ScriptedHost.h"
#include "support/StartState.h"

namespace zu {
namespace {

struct Section {
    const char* Name;
    std::span<const keys::NumberKey> Keys;
};

const Section kSections[] = {
    {"File", keys::kFile},           {"TimingWin", keys::kTimingWin},  {"TimingWin", keys::kTimingWinRest},
    {"StateWin", keys::kStateWin},   {"SerialWin", keys::kSerialWin},  {"Cursor DLG", keys::kCursorDlg},
    {"Trigger", keys::kTrigger},     {"Trigger", keys::kTriggerCount}, {"Clock", keys::kClock},
    {"Search", keys::kSearch},       {"Search", keys::kSearchRest},    {"Pattern", keys::kPattern},
    {"Screen", keys::kScreen},       {"Glitch", keys::kGlitch},        {"Pulse", keys::kPulse},
    {"Hardware", keys::kHardware},   {"Print", keys::kPrint},          {"Capture", keys::kCapture},
    {"PatEditor", keys::kPatEditor},
};

IniText Written(InstrumentState& state) {
    test::ScriptedHost host;
    return IniText::Parse(SettingsText(state, host));
}

/// Keys that do not simply take any value: tests of their own tell what they take.
bool HasRuleOfItsOwn(std::string_view section, std::string_view name) {
    return name == "ExportZU" || (section == "SerialWin" && name == "Mode") ||
           (section == "Clock" && name == "Type");
}

TEST(SettingsKeys, AreWrittenFromTheirFields) {
    for (const Section& section : kSections) {
        for (const keys::NumberKey& key : section.Keys) {
            const auto state = test::StartState(16);
            key.Set(*state, 17);
            const IniText ini = Written(*state);
            const auto value = ini.Find(section.Name, key.Name);
            if (key.Use == keys::Use::Read) {
                EXPECT_FALSE(value) << section.Name << " " << key.Name;
            } else {
                EXPECT_EQ(value, "17") << section.Name << " " << key.Name;
            }
        }
    }
}

TEST(SettingsKeys, AreReadIntoTheirFields) {
    for (const Section& section : kSections) {
        for (const keys::NumberKey& key : section.Keys) {
            const auto state = test::StartState(16);
            const std::int64_t before = key.Get(*state);
            if (HasRuleOfItsOwn(section.Name, key.Name)) continue;
            test::ScriptedHost host;
            std::string text = "[File]\nFileVersion=192\n";
            if (section.Name != std::string_view("File")) text += "[" + std::string(section.Name) + "]\n";
            text += std::string(key.Name) + "=17\n";
            ReadSettings(*state, host, IniText::Parse(text));
            const bool read = key.Use != keys::Use::Write;
            EXPECT_EQ(key.Get(*state), read ? 17 : before) << section.Name << " " << key.Name;
        }
    }
}

TEST(SettingsKeys, HoldTheFullRangeOfTheirWidth) {
    EXPECT_EQ(keys::Narrow(keys::Width::I8, 128), -128);
    EXPECT_EQ(keys::Narrow(keys::Width::U8, -1), 255);
    EXPECT_EQ(keys::Narrow(keys::Width::I16, 32768), -32768);
    EXPECT_EQ(keys::Narrow(keys::Width::U16, -1), 65535);
    EXPECT_EQ(keys::Narrow(keys::Width::I32, 2147483648), INT32_MIN);
    EXPECT_EQ(keys::Narrow(keys::Width::U32, -1), 4294967295);
}

TEST(SettingsKeys, WriteAFieldInTheWidthOfTheFile) {
    const auto state = test::StartState(16);
    state->Timing.TimingGrid = 200;
    state->Trigger.TrigCnt = 200;
    state->Pattern.PatStep = 4294967295U;
    const IniText ini = Written(*state);
    EXPECT_EQ(ini.Find("TimingWin", "Grid"), "-56");
    EXPECT_EQ(ini.Find("Trigger", "Cnt"), "200");
    EXPECT_EQ(ini.Find("PatEditor", "Step"), "4294967295");
}

}  // namespace
}  // namespace zu
