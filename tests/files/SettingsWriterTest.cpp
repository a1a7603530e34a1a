// The settings text, byte for byte.
#include <gtest/gtest.h>

#include "DaceState.h"
#include "files/Ini.h"
#include "files/SettingsWriter.h"
#include "state/Rates.h"
#include "support/ScriptedHost.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using test::DaceState;
using test::ScriptedHost;

std::string Written(InstrumentState& state) {
    ScriptedHost host;
    host.Clock = {2024, 2, 29, 3, 4, 5};
    std::string text = SettingsText(state, host);
    EXPECT_TRUE(host.Boxes.empty());
    return text;
}

/// The line of a key in a text, with its line end.
std::string LineOf(const std::string& text, const std::string& key) {
    const std::size_t at = text.find("\r\n" + key + "=");
    if (at == std::string::npos) return {};
    return text.substr(at + 2, text.find("\r\n", at + 2) - at);
}

/// The text of a section, from its head's line end to the blank line before the next one.
std::string SectionOf(const std::string& text, const std::string& name) {
    const std::string head = "\r\n[" + name + "]\r\n";
    const std::size_t at = text.find(head);
    if (at == std::string::npos) return "no section";
    const std::size_t end = text.find("\r\n\r\n[", at + head.size() - 2);
    return text.substr(at + head.size(), end == std::string::npos ? end : end + 2 - at - head.size());
}

TEST(SettingsText, IsTheWholeFileToTheByte) {
    const auto state = DaceState::Make();
    EXPECT_EQ(Written(*state), test::ReadBytes(std::string(ZU_TEST_DATA) + "/files/dace.ini"));
}

TEST(SettingsText, IsWhatASaveLeavesOnDisk) {
    const test::TempFolder folder;
    const auto state = DaceState::Make();
    ScriptedHost host;
    host.Clock = {2024, 2, 29, 3, 4, 5};
    const std::string path = test::WriteBytes(folder.File("WDace_0.ini"), "something longer than nothing");
    EXPECT_TRUE(SaveSettingsFile(*state, host, path));
    EXPECT_EQ(test::ReadBytes(path), test::ReadBytes(std::string(ZU_TEST_DATA) + "/files/dace.ini"));
    EXPECT_EQ(folder.Count(), 1);
}

TEST(SettingsText, NamesTheModelByItsSeries) {
    const char* const kModelLines[] = {"Model=PikeXX\r\n", "Model=Dace\r\n", "Model=RoachXX\r\n", "", "",
                                       "Model=PerchXX\r\n"};
    for (int series = 0; series < 6; ++series) {
        const auto state = test::StartState(5, series);
        const std::string text = Written(*state);
        EXPECT_EQ(LineOf(text, "Model"), kModelLines[series]) << series;
        EXPECT_EQ(LineOf(text, "FileVersion"), "FileVersion=192\r\n");
    }
    const auto unknown = test::StartState(5, 6);
    EXPECT_EQ(LineOf(Written(*unknown), "Model"), "");
}

TEST(SettingsText, HoldsTheColumnsOnlyForTheMeasuredDisplay) {
    const auto state = test::StartState(16, 1);
    EXPECT_NE(Written(*state).find("\r\nTimingDisp7=0,0,0\r\n"), std::string::npos);
    state->Timing.TimingDispInfoType = 1;
    EXPECT_EQ(Written(*state).find("\r\nTimingDisp0="), std::string::npos);
    EXPECT_NE(Written(*state).find("\r\nTimingDispInfoType=1\r\n"), std::string::npos);
}

TEST(SettingsText, HoldsTheRatesOwnTextForEveryCode) {
    const auto state = test::StartState(15);
    for (std::size_t code = 0; code < kRates.size(); ++code) {
        state->Clock.ClockRate = static_cast<std::uint8_t>(code);
        const std::string text = Written(*state);
        EXPECT_EQ(LineOf(text, "Rate"), "Rate=" + std::to_string(code) + "\r\n");
        EXPECT_EQ(LineOf(text, "RateStg"), "RateStg=" + std::string(kRates[code].FileText) + "\r\n");
    }
    state->Clock.ClockRate = 35;
    EXPECT_EQ(LineOf(Written(*state), "RateStg"), "RateStg=\r\n");
}

TEST(SettingsText, HoldsOnlySlicesThatSaySomethingAndTheirNames) {
    const auto state = test::StartState(15);
    auto& boards = state->Trigger.TrigWord.Board;
    boards[0][3][43] = '1';
    boards[2][3][0] = '0';
    boards[3][1][7] = '0';
    state->Trigger.TrigWordName[3] = "three";
    const std::string text = SectionOf(Written(*state), "Trigger");
    const std::size_t at = text.find("w3-1=");
    EXPECT_EQ(text.substr(at, text.find("SeqList") - at),
              "w3-1=XXXXXXX0 XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX\r\n"
              "w0-3=XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXX1\r\n"
              "w2-3=0XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX\r\n"
              "N1=1Event\r\nN3=three\r\nTotTrigWords=3\r\n");
}

TEST(SettingsText, HoldsTheSlicesOfTheBoardsThatTheModelHas) {
    for (const int row : {13, 14, 15}) {
        const auto state = test::StartState(row);
        for (auto& board : state->Trigger.TrigWord.Board) board[0][0] = '0';
        const std::string text = Written(*state);
        EXPECT_EQ(LineOf(text, "TotTrigWords"),
                  "TotTrigWords=" + std::to_string(state->Shape.WordsPerTrig) + "\r\n");
        for (int board = 0; board < 4; ++board) {
            const std::string key = "w" + std::to_string(board) + "-0";
            EXPECT_EQ(LineOf(text, key).empty(), board >= state->Shape.WordsPerTrig) << row << " " << key;
        }
    }
}

TEST(SettingsText, HoldsAsManyRowsAsTheModelHas) {
    for (const int row : {13, 14, 15, 16, 18, 24, 27}) {
        const auto state = test::StartState(row);
        const std::string text = Written(*state);
        const int pods = state->Shape.PodCount;
        const int channels = state->Shape.TotalChannels;
        const auto has = [&text](const std::string& key, int index) {
            return text.find("\r\n" + key + std::to_string(index) + "=") != std::string::npos;
        };
        EXPECT_TRUE(has("AdjAddr", pods - 1) && !has("AdjAddr", pods)) << row;
        EXPECT_TRUE(has("Pod", pods - 1) && !has("Pod", pods)) << row;
        EXPECT_TRUE(has("I", channels - 1) && !has("I", channels)) << row;
        EXPECT_TRUE(has("LSE", channels - 1) && !has("LSE", channels)) << row;
        EXPECT_EQ(SectionOf(text, "ChannelData").find("N" + std::to_string(channels) + "="),
                  std::string::npos);
    }
}

TEST(SettingsText, LeavesOutEmptyGroupsAndKeepsTheNumbersOfTheOthers) {
    const auto state = test::StartState(13);
    state->Groups[1].Size = 0;
    state->Groups[3].Size = 0;
    const std::string text = Written(*state);
    EXPECT_EQ(SectionOf(text, "Group1"), "no section");
    EXPECT_EQ(SectionOf(text, "Group3"), "no section");
    EXPECT_EQ(
        SectionOf(text, "Group4"),
        "M=0\r\nN=Group 5\r\nS=8\r\nL=32,33,34,35,36,37,38,39,\r\nColor4=0,0,0\r\nB=0\r\nA=0\r\nT=0\r\n");
    EXPECT_EQ(SectionOf(text, "Group"), "TotGroups=3\r\n");
    EXPECT_LT(text.find("[Group4]"), text.find("[Group]"));
}

TEST(SettingsText, KeepsClockType4InTheFileAndPuts5InTheState) {
    const auto state = test::StartState(15);
    state->Clock.ClockType = 4;
    ScriptedHost host;
    const std::string text = SettingsText(*state, host);
    EXPECT_EQ(LineOf(text, "Type"), "Type=4\r\n");
    EXPECT_EQ(state->Clock.ClockType, 5);
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0].Text,
              "Clock mode External + Internal is not available. Mode changed to External + 100MHz Internal");
    EXPECT_EQ(host.Boxes[0].Caption, "File load");
}

TEST(SettingsText, TouchesNothingElseInTheState) {
    const auto state = DaceState::Make();
    const std::string first = Written(*state);
    EXPECT_EQ(Written(*state), first);
}

TEST(SettingsText, CutsWhatTheStateShouldNotHold) {
    const auto state = test::StartState(15);
    state->Shape.TotalChannels = 100000;
    state->Shape.PodCount = 127;
    state->Shape.WordsPerTrig = 100;
    state->Timing.TimingLines = 100000;
    state->Groups[2].Size = 100000;
    const std::string text = Written(*state);
    EXPECT_NE(text.find("\r\nI159="), std::string::npos);
    EXPECT_EQ(text.find("\r\nI160="), std::string::npos);
    EXPECT_NE(text.find("\r\nLSE230="), std::string::npos);
    EXPECT_EQ(text.find("\r\nLSE231="), std::string::npos);
    EXPECT_NE(text.find("\r\nS=100000\r\n"), std::string::npos);
}

TEST(SaveSettingsFile, ThatDoesNotOpenSaysSoInTheStatusBarOnlyAndLeavesTheClockAlone) {
    const auto state = test::StartState(15);
    state->Clock.ClockType = 4;
    ScriptedHost host;
    EXPECT_FALSE(SaveSettingsFile(*state, host, "/no such folder/x.ini"));
    EXPECT_TRUE(host.Boxes.empty());
    ASSERT_EQ(host.Remarks.size(), 1U);
    EXPECT_EQ(host.Remarks[0], "Could not save /no such folder/x.ini: No such file or directory");
    EXPECT_EQ(state->Clock.ClockType, 4);
}

}  // namespace
}  // namespace zu
