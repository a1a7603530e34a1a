// The preferences file: every key, its default, and what survives a run.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <vector>

#include "core/Preferences.h"
#include "files/Ini.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

constexpr const char* kFile = "WRoach.ini";

std::unique_ptr<Bench> Screen(const std::string& preferences = {}) {
    auto bench = std::make_unique<Bench>();
    bench->State->Screen.ScreenW = 1920;
    bench->State->Screen.ScreenH = 1040;
    if (!preferences.empty()) bench->Folder.Write(kFile, preferences);
    return bench;
}

std::string Saved(const Bench& bench, std::string_view section, std::string_view key) {
    const IniFile ini = IniFile::Load(bench.State->Files.PreferencesFile);
    return std::string(ini.Find(section, key).value_or("(absent)"));
}

std::string Block(const std::string& section, const std::string& keys) {
    return "[" + section + "]\r\n" + keys;
}
constexpr const char* kRect = "left=10\r\ntop=20\r\nright=310\r\nbottom=220\r\n";

TEST(LoadPreferences, WithoutAFileOpensTheTimingWindowOnly) {
    const auto bench = Screen();
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->Shell.Log, Strings{"open Timing"});
    EXPECT_EQ(bench->State->Windows.TimingStat, 1);
}

TEST(LoadPreferences, WithoutAFileTakesTheDefaults) {
    const auto bench = Screen();
    InstrumentState& state = *bench->State;
    state.Files.DataLogCnt = 5;
    state.Cursors.CursorMath.fill(4);
    state.Cursors.CursorDlgMode = 0;
    LoadPreferences(bench->App);
    EXPECT_EQ(state.Files.DataLogCnt, 0);
    EXPECT_EQ(state.Files.AutosaveData, 1);
    EXPECT_EQ(state.Files.Autosave, 0) << "both are 1 by default, and then the old one falls";
    EXPECT_EQ(state.Cursors.CursorDlgMode, 1);
    EXPECT_EQ(state.Windows.LastWindow, 1);
    EXPECT_EQ(state.Cursors.CursorMath, (std::array<std::int32_t, 5>{0, 3, 6, 8, 9}));
    EXPECT_EQ(state.Files.LastFolder, "");
}

struct WindowCase {
    const char* Section;
    const char* Opens;  ///< null: this window has no open flag in the file
    WindowRect WindowRecord::*Rect;
    std::int32_t WindowRecord::*Valid;
};

class WindowBlock : public testing::TestWithParam<WindowCase> {};

TEST_P(WindowBlock, RestoresPlaceAndOpenness) {
    const auto bench = Screen(Block("Timing DLG", "stat=0\r\n") +
                              Block(GetParam().Section, std::string("def=1\r\n") + kRect + "stat=1\r\n"));
    // The Timing window's own section comes twice then; the first one counts.
    const bool timing = std::string(GetParam().Section) == "Timing DLG";
    if (timing)
        bench->Folder.Write(kFile, Block("Timing DLG", std::string("def=1\r\n") + kRect + "stat=1\r\n"));
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->State->Windows.*GetParam().Rect, (WindowRect{10, 20, 310, 220}));
    EXPECT_EQ(bench->State->Windows.*GetParam().Valid, 1);
    const Strings opened = GetParam().Opens == nullptr ? Strings{} : Strings{GetParam().Opens};
    EXPECT_EQ(bench->Shell.Log, opened);
}

TEST_P(WindowBlock, WithoutDefIgnoresTheRectangle) {
    const auto bench = Screen(Block(GetParam().Section, std::string("def=0\r\n") + kRect));
    bench->State->Windows.*GetParam().Rect = {1, 2, 301, 402};
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->State->Windows.*GetParam().Rect, (WindowRect{1, 2, 301, 402}));
    EXPECT_EQ(bench->State->Windows.*GetParam().Valid, 0);
}

TEST_P(WindowBlock, RepairsItsRectangle) {
    const auto bench =
        Screen(Block(GetParam().Section, "def=1\r\nleft=-7\r\ntop=2000\r\nright=3\r\nbottom=2100\r\n"));
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->State->Windows.*GetParam().Rect, (WindowRect{0, 0, 50, 1040}));
}

TEST_P(WindowBlock, IsWrittenBack) {
    const auto bench = Screen();
    bench->State->Windows.*GetParam().Rect = {11, 22, 333, 444};
    bench->State->Windows.*GetParam().Valid = 1;
    SavePreferences(bench->App);
    EXPECT_EQ(Saved(*bench, GetParam().Section, "def"), "1");
    EXPECT_EQ(Saved(*bench, GetParam().Section, "left"), "11");
    EXPECT_EQ(Saved(*bench, GetParam().Section, "top"), "22");
    EXPECT_EQ(Saved(*bench, GetParam().Section, "right"), "333");
    EXPECT_EQ(Saved(*bench, GetParam().Section, "bottom"), "444");
    EXPECT_EQ(Saved(*bench, GetParam().Section, "stat"), GetParam().Opens == nullptr ? "(absent)" : "0");
}

INSTANTIATE_TEST_SUITE_P(
    All, WindowBlock,
    testing::Values(
        WindowCase{"Timing DLG", "open Timing", &WindowRecord::TimingRect, &WindowRecord::TimingRectValid},
        WindowCase{"PG DLG", nullptr, &WindowRecord::PatternRect, &WindowRecord::PatternRectValid},
        WindowCase{"Threshold", "open Threshold", &WindowRecord::ThresholdRect,
                   &WindowRecord::ThresholdRectValid},
        WindowCase{"Statelist DLG", "open StateList", &WindowRecord::StateRect,
                   &WindowRecord::StateRectValid},
        WindowCase{"Serial DLG", "open Serial", &WindowRecord::SerialRect, &WindowRecord::SerialRectValid},
        WindowCase{"SPIRect DLG", "open Spi", &WindowRecord::SpiRect, &WindowRecord::SpiRectValid}),
    [](const auto& test) {
        std::string name = test.param.Section;
        name.erase(name.find_last_not_of("DLG ") + 1);
        return name;
    });

TEST(LoadPreferences, OpensTheWindowsInItsOrder) {
    std::string text;
    for (const char* section :
         {"SPIRect DLG", "Serial DLG", "Statelist DLG", "Threshold", "PG DLG", "Timing DLG"}) {
        text += Block(section, "stat=1\r\n");
    }
    const auto bench = Screen(text);
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->Shell.Log,
              (Strings{"open Timing", "open Threshold", "open StateList", "open Serial", "open Spi"}));
}

TEST(LoadPreferences, ClearsTheOpenFlagBeforeItOpens) {
    const auto bench = Screen();
    bench->State->Windows.TimingStat = 1;
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->Shell.Log, Strings{"open Timing"});
}

TEST(LoadPreferences, TakesMissingEdgesFromWhatIsThere) {
    const auto bench =
        Screen(Block("Statelist DLG", "def=1\r\nleft=30\r\n") + Block("Serial DLG", "def=1\r\nleft=30\r\n"));
    bench->State->Windows.StateRect = {1, 2, 603, 404};
    bench->State->Windows.SerialRect = {1, 2, 603, 404};
    LoadPreferences(bench->App);
    EXPECT_EQ(bench->State->Windows.StateRect, (WindowRect{30, 2, 603, 404}));
    EXPECT_EQ(bench->State->Windows.SerialRect, (WindowRect{30, 0, 400, 200}))
        << "the serial windows have their own";
}

TEST(LoadPreferences, KeepsTheOldAutosaveOnlyWithoutTheNewOne) {
    const auto both = Screen(Block("File", "Autosave=1\r\nAutosaveData=1\r\n"));
    LoadPreferences(both->App);
    EXPECT_EQ(both->State->Files.Autosave, 0);
    EXPECT_EQ(both->State->Files.AutosaveData, 1);
    const auto old = Screen(Block("File", "Autosave=1\r\nAutosaveData=0\r\n"));
    LoadPreferences(old->App);
    EXPECT_EQ(old->State->Files.Autosave, 1);
    EXPECT_EQ(old->State->Files.AutosaveData, 0);
}

TEST(SavePreferences, WritesEveryKeyInItsOrder) {
    const auto bench = Screen();
    InstrumentState& state = *bench->State;
    state.Files.DefSaveType = "INI";
    state.Files.DefLoadType = "CSV";
    state.Files.DataLogCnt = 12;
    state.Files.Autosave = 0;
    state.Windows.MainRect = {1, 2, 3, 4};
    state.Windows.TimingStat = 1;
    state.Windows.LastWindow = 3;
    state.Cursors.CursorDlgMode = 0;
    state.Cursors.CursorMath = {5, 4, 3, 2, 1};
    state.Files.LastFolder = "/data/My Files";
    state.Files.RecentFiles = {"/data/a.zu", "/data/b.zu", "", ""};
    SavePreferences(bench->App);
    const std::string empty = "left=0\r\ntop=0\r\nright=0\r\nbottom=0\r\n";
    EXPECT_EQ(
        bench->Folder.Read(kFile),
        "[File]\r\nDefSaveType=INI\r\nDefLoadType=CSV\r\nDataLogCnt=12\r\nAutosave=0\r\nAutosaveData=1\r\n"
        "LastFolder=/data/My Files\r\nRecent1=/data/a.zu\r\nRecent2=/data/b.zu\r\nRecent3=\r\nRecent4=\r\n"
        "[Timing DLG]\r\ndef=0\r\n" +
            empty + "stat=1\r\n[PG DLG]\r\ndef=0\r\n" + empty + "[Threshold]\r\ndef=0\r\n" + empty +
            "stat=0\r\n[Statelist DLG]\r\ndef=0\r\n" + empty +
            "stat=0\r\n[Status]\r\nLast Window selected=3\r\n"
            "[Main]\r\nleft=1\r\ntop=2\r\nright=3\r\nbottom=4\r\n"
            "[Cursor DLG]\r\nmode=0\r\nMath1=5\r\nMath2=4\r\nMath3=3\r\nMath4=2\r\nMath5=1\r\n"
            "[Serial DLG]\r\ndef=0\r\n" +
            empty + "stat=0\r\nTransfers=1\r\n[SPIRect DLG]\r\ndef=0\r\n" + empty + "stat=0\r\n");
}

TEST(SavePreferences, IsReadBackWhole) {
    const auto bench = Screen();
    InstrumentState& state = *bench->State;
    state.Files.DataLogCnt = -3;
    state.Files.AutosaveData = 0;
    state.Windows.MainRect = {1, 2, 300, 400};
    state.Windows.LastWindow = 2;
    state.Cursors.CursorMath = {9, 8, 7, 6, 5};
    state.Serial.TransfersShown = 0;
    state.Files.LastFolder = "/data";
    state.Files.RecentFiles[2] = "/x.zu";
    SavePreferences(bench->App);
    const auto other = Screen(bench->Folder.Read(kFile));
    LoadPreferences(other->App);
    EXPECT_EQ(other->State->Files.DataLogCnt, -3);
    EXPECT_EQ(other->State->Files.AutosaveData, 0);
    EXPECT_EQ(other->State->Files.Autosave, 1);
    EXPECT_EQ(other->State->Windows.LastWindow, 2);
    EXPECT_EQ(other->State->Cursors.CursorMath, (std::array<std::int32_t, 5>{9, 8, 7, 6, 5}));
    EXPECT_EQ(other->State->Files.LastFolder, "/data");
    EXPECT_EQ(other->State->Serial.TransfersShown, 0);
    EXPECT_EQ(other->State->Files.RecentFiles[2], "/x.zu");
    EXPECT_EQ(ReadMainRect(*other->State, {}), (WindowRect{1, 2, 300, 400}));
    EXPECT_TRUE(other->Shell.Log.empty()) << "all windows were closed";
}

TEST(SavePreferences, InEmulationKeepsTheConnectionOfTheLastBoard) {
    const auto bench = Screen(Block("Hardware", "Address=3\r\nComMode=8\r\n"));
    bench->State->Identity.AddressIndex = 7;
    bench->State->Identity.ComMode = 9;
    SavePreferences(bench->App);
    EXPECT_EQ(Saved(*bench, "Hardware", "Address"), "3");
    EXPECT_EQ(Saved(*bench, "Hardware", "ComMode"), "8");
    bench->State->Identity.Emulated = 0;
    SavePreferences(bench->App);
    EXPECT_EQ(Saved(*bench, "Hardware", "Address"), "7");
    EXPECT_EQ(Saved(*bench, "Hardware", "ComMode"), "9");
}

TEST(SavePreferences, WithoutABoardEverLeavesTheKeysOut) {
    const auto bench = Screen();
    SavePreferences(bench->App);
    EXPECT_EQ(Saved(*bench, "Hardware", "Address"), "(absent)");
}

TEST(SavePreferences, KeepsWhatItDoesNotKnow) {
    const auto bench = Screen("; by hand\r\n[Mine]\r\nkey=value\r\n");
    SavePreferences(bench->App);
    EXPECT_EQ(bench->Folder.Read(kFile).rfind("; by hand\r\n[Mine]\r\nkey=value\r\n", 0), 0U);
}

TEST(SavePreferences, RemarksOnAFileThatCannotBeWritten) {
    const auto bench = Screen();
    bench->State->Files.PreferencesFile = bench->Folder.File("gone/WRoach.ini");
    SavePreferences(bench->App);
    EXPECT_TRUE(bench->Host.Boxes.empty());
    EXPECT_EQ(bench->Host.Remarks.size(), 1U);
}

TEST(MainRect, TakesEachMissingEdgeFromItsDefault) {
    const auto bench = Screen(Block("Main", "left=5\r\nbottom=600\r\n"));
    EXPECT_EQ(ReadMainRect(*bench->State, {1, 2, 3, 4}), (WindowRect{5, 2, 3, 600}));
    const auto none = Screen();
    EXPECT_EQ(ReadMainRect(*none->State, {1, 2, 3, 4}), (WindowRect{1, 2, 3, 4}));
}

TEST(StoredConnection, CountsKeysWithText) {
    struct Case {
        const char* Keys;
        bool HasMode, HasAddress;
    };
    for (const Case& c :
         {Case{"", false, false}, Case{"ComMode=8\r\nAddress=0\r\n", true, true},
          Case{"ComMode=0\r\nAddress=2\r\n", false, true}, Case{"ComMode=\r\nAddress=\r\n", false, false},
          Case{"ComMode=9\r\n", true, false}, Case{"ComMode=x\r\nAddress=x\r\n", false, true}}) {
        const auto bench = Screen(Block("Hardware", c.Keys));
        const StoredConnection stored = ReadStoredConnection(*bench->State);
        EXPECT_EQ(stored.HasMode, c.HasMode) << c.Keys;
        EXPECT_EQ(stored.HasAddress, c.HasAddress) << c.Keys;
    }
}

TEST(FileTypes, AreCheckedAndUpperCased) {
    for (const char* type : {"ZU", "INI", "I2C", "PRN", "ZXT"}) EXPECT_EQ(CheckedFileType(type), type);
    EXPECT_EQ(CheckedFileType("ini"), "INI");
    for (const char* type : {"CSV", "SPI", "", "ZU ", "X"}) EXPECT_EQ(CheckedFileType(type), "ZU");
    const auto bench = Screen(Block("File", "DefSaveType=zxt\r\nDefLoadType=CSV\r\n"));
    ReadFileTypes(*bench->State);
    EXPECT_EQ(bench->State->Files.DefSaveType, "ZXT");
    EXPECT_EQ(bench->State->Files.DefLoadType, "ZU");
    const auto none = Screen();
    none->State->Files.DefSaveType = "INI";
    ReadFileTypes(*none->State);
    EXPECT_EQ(none->State->Files.DefSaveType, "ZU");
}

}  // namespace
}  // namespace zu
