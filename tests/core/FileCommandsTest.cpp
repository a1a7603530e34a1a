// Load and save by type, the file dialogs, the quick slots, and the order in which a load touches the state.
#include <algorithm>
#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/Defaults.h"
#include "core/FileCommands.h"
#include "core/RateRules.h"
#include "files/SettingsWriter.h"
#include "support/Bench.h"
#include "support/Captures.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

constexpr const char* kOtherHardware =
    "Warning|The settings file does not match the installed hardware. Abort load?";

std::unique_ptr<Bench> Running(int row = 15) {
    auto bench = std::make_unique<Bench>();
    bench->State->Command.ModelRow = row;
    InitDefaults(bench->App);
    bench->Forget();
    return bench;
}

/// A settings file with these lines in [Hardware] and what follows it.
std::string Hardware(const std::string& lines) {
    return "\r\n[File]\r\nFileVersion=192\r\n\r\n[Hardware]\r\n" + lines;
}

// --- Loading -------------------------------------------------------------------------------------------

TEST(LoadFile, ReadsSettingsAndAppliesTheirMemory) {
    const auto bench = Running();
    const std::string name = bench->Folder.Write("a.ini", Hardware("Type=15\r\nMode=1\r\nMux=1\r\n"));
    bench->State->Pattern.PatDirty = 0;
    EXPECT_EQ(LoadFile(bench->App, "INI", name, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->Host.Title, name);
    EXPECT_EQ(bench->State->Pattern.PatDirty, 1);
    EXPECT_EQ(bench->State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench->State->Memory.HardwareMux, 1);
    EXPECT_EQ(bench->State->Memory.BufferLen, 131072);
    EXPECT_EQ(bench->State->Memory.DisplayLen, 4 * 131072);
    EXPECT_TRUE(bench->Host.Boxes.empty());
    EXPECT_EQ(bench->Shell.Log.back(), "bars");
}

TEST(LoadFile, FindsAnUpperCasedName) {
    const auto bench = Running();
    bench->Folder.Write("Bench Set.ini", Hardware("Type=15\r\nMode=1\r\n"));
    const std::string upper = bench->Folder.File("BENCH SET.INI");
    EXPECT_EQ(LoadFile(bench->App, "INI", upper, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench->Host.Title, upper) << "the title stays as asked for";
}

TEST(LoadFile, TellsOfAMissingFileTwice) {
    const auto bench = Running();
    for (const char* type : {"ZU", "INI"}) {
        bench->Forget();
        EXPECT_EQ(LoadFile(bench->App, type, bench->Folder.File("none"), true), LoadStatus::Failed);
        EXPECT_EQ(bench->Texts(),
                  (Strings{"|Error: File not found.", "File Error(9):|File could not be opened"}));
    }
}

TEST(LoadFile, QuietlyReportsAMissingFile) {
    const auto bench = Running();
    for (const char* type : {"ZU", "INI", "ZXT"}) {
        EXPECT_EQ(LoadFile(bench->App, type, bench->Folder.File("none"), false), LoadStatus::FailedSilently);
    }
    EXPECT_TRUE(bench->Host.Boxes.empty());
    EXPECT_EQ(bench->State->Memory.BufferLen, 524288) << "nothing was applied";
    EXPECT_EQ(bench->Shell.Count("bars"), 0);
}

TEST(LoadFile, OfOtherHardwareAsksAndStopsOnYes) {
    const auto bench = Running();
    const std::string name = bench->Folder.Write("a.ini", Hardware("Type=13\r\nMode=1\r\n"));
    SetMemoryMode(bench->App, -1, 0);
    bench->State->Pods.ReprogramFlag = 0;
    bench->Host.Answers = {true};
    EXPECT_EQ(LoadFile(bench->App, "INI", name, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->Texts(), Strings{kOtherHardware});
    EXPECT_EQ(bench->State->Memory.HardwareMode, 0);
    EXPECT_EQ(bench->State->Pods.ReprogramFlag, 1) << "the present memory mode was applied again";
}

TEST(LoadFile, OfOtherHardwareGoesOnOnNoAndKeepsTheModel) {
    const auto bench = Running();
    const std::string name =
        bench->Folder.Write("a.ini", Hardware("Type=13\r\nMode=1\r\nPod0=3\r\nPod7=1\r\nPod19=2\r\n"));
    bench->Host.Answers = {false};
    EXPECT_EQ(LoadFile(bench->App, "INI", name, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->State->Identity.HardwareType, 15);
    EXPECT_EQ(bench->State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench->State->Pods.HardwarePod[0], 3);
    EXPECT_EQ(bench->State->Pods.HardwarePod[7], 1) << "also pods that this hardware could not honour";
    EXPECT_EQ(bench->State->Pods.HardwarePod[19], 2);
}

TEST(LoadFile, WithoutATypeDoesNotAsk) {
    const auto bench = Running();
    LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", Hardware("Mode=1\r\n")), true);
    EXPECT_TRUE(bench->Host.Boxes.empty());
}

TEST(LoadFile, ScalesThePatternZoom) {
    struct Case {
        const char* Zoom;
        double Scale;
    };
    for (const Case& c : {Case{"4", 0.25}, Case{"1", 1.0}, Case{"0", 1.0}, Case{"-8", 8.0}}) {
        const auto bench = Running();
        const std::string text = Hardware("Type=15\r\n") + "\r\n[PatEditor]\r\nZoom=" + c.Zoom + "\r\n";
        LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", text), true);
        EXPECT_DOUBLE_EQ(bench->State->Pattern.PatZoomScale, c.Scale) << c.Zoom;
    }
}

std::string Windows(int timing, int stateList, int serial) {
    return Hardware("Type=15\r\n") + "\r\n[TimingWin]\r\nStat=" + std::to_string(timing) +
           "\r\n\r\n[StateWin]\r\nStat=" + std::to_string(stateList) +
           "\r\n\r\n[SerialWin]\r\nStat=" + std::to_string(serial) + "\r\n";
}

/// Only the openings and closings of the log.
Strings OpenedAndClosed(const Bench& bench) {
    Strings lines;
    for (const std::string& line : bench.Shell.Log) {
        if (line.rfind("open", 0) == 0 || line.rfind("close", 0) == 0) lines.push_back(line);
    }
    return lines;
}

TEST(LoadFile, OpensTheWindowsThatTheFileHasOpen) {
    const auto bench = Running();
    LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", Windows(1, 1, 1)), true);
    EXPECT_EQ(OpenedAndClosed(*bench), (Strings{"open Serial", "open Timing", "open StateList"}));
    EXPECT_EQ(bench->State->Windows.TimingStat, 1);
}

TEST(LoadFile, ClosesTheWindowsThatTheFileHasClosed) {
    const auto bench = Running();
    bench->State->Windows.TimingStat = bench->State->Windows.StateStat = bench->State->Windows.SerialStat = 1;
    LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", Windows(0, 0, 0)), true);
    EXPECT_EQ(OpenedAndClosed(*bench), (Strings{"close Serial", "close Timing", "close StateList"}));
    EXPECT_EQ(bench->State->Windows.StateStat, 0);
}

TEST(LoadFile, LeavesWindowsThatAgreeOrAreNotTold) {
    const auto bench = Running();
    bench->State->Windows.TimingStat = 1;
    LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", Windows(1, 0, 0)), true);
    LoadFile(bench->App, "INI", bench->Folder.Write("b.ini", Hardware("Type=15\r\n")), true);
    EXPECT_TRUE(OpenedAndClosed(*bench).empty());
    EXPECT_EQ(bench->State->Windows.TimingStat, 1);
}

TEST(LoadFile, OnRow25DropsThePatternModesOfTheFirstThreePods) {
    const auto bench = Running(25);
    LoadFile(bench->App, "INI",
             bench->Folder.Write("a.ini", Hardware("Type=25\r\nPod0=1\r\nPod1=2\r\nPod2=3\r\nPod3=1\r\n")),
             true);
    EXPECT_EQ(bench->State->Pods.HardwarePod[0], 0);
    EXPECT_EQ(bench->State->Pods.HardwarePod[1], 0);
    EXPECT_EQ(bench->State->Pods.HardwarePod[2], 3);
    EXPECT_EQ(bench->State->Pods.HardwarePod[3], 1) << "the fourth is left";
    const auto wide = Running(26);
    LoadFile(wide->App, "INI", wide->Folder.Write("a.ini", Hardware("Type=26\r\nPod0=1\r\n")), true);
    EXPECT_EQ(wide->State->Pods.HardwarePod[0], 1);
}

TEST(LoadFile, PausesARunningCaptureOnce) {
    const auto bench = Running();
    Go(bench->App);
    bench->Forget();
    LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", Hardware("Type=15\r\nMode=1\r\n")), true);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
}

TEST(LoadFile, RedrawsEveryOpenWindow) {
    const auto bench = Running();
    WindowRecord& windows = bench->State->Windows;
    windows.TimingStat = windows.SpiStat = windows.PatEditStat = windows.ThresholdStat = 1;
    LoadFile(bench->App, "INI", bench->Folder.Write("a.ini", "\r\n[File]\r\n"), true);
    for (const char* line : {"redraw Timing", "redraw Spi", "redraw Pattern", "redraw Threshold"}) {
        EXPECT_GE(bench->Shell.Count(line), 1) << line;
    }
}

TEST(LoadFile, OfAnUnknownModelOnNoHardwareTypeTakesTheFilesMode) {
    const auto bench = Running(0);
    const std::string text = Hardware("Type=0\r\n") + "\r\n[Model Whatever-9K 1 1]\r\n[Settings]\r\n";
    EXPECT_EQ(LoadFile(bench->App, "ZU", bench->Folder.Write("a.zu", text), true), LoadStatus::Loaded);
    EXPECT_EQ(bench->State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench->State->Memory.HardwareMux, 1);
    EXPECT_EQ(bench->State->Memory.BufferLen, 131072);
    EXPECT_TRUE(bench->Host.Boxes.empty());
}

TEST(LoadFile, CountsReportedProblemsAsLoaded) {
    const auto bench = Running();
    const std::string text = Hardware("Type=15\r\n") + "\r\n[Data d3 0 16]\r\n";
    EXPECT_EQ(LoadFile(bench->App, "ZU", bench->Folder.Write("a.zu", text), true), LoadStatus::Loaded);
    EXPECT_EQ(bench->Texts(), Strings{"File Load Error(3)|Bad data record header."});
}

TEST(LoadFile, ReadsATranslateTable) {
    const auto bench = Running();
    const std::string name =
        bench->Folder.Write("a.zxt", "\r\n[UserDefined]\r\nud0Bit=10X\r\nud0Stg=hello\r\nud0Skip=0\r\n");
    EXPECT_EQ(LoadFile(bench->App, "ZXT", name, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->State->Translate.Entry[0].Stg.View(), "hello");
    EXPECT_EQ(bench->State->Translate.TranslateCount, 1);
    EXPECT_EQ(bench->Host.Title, name);
}

TEST(LoadFile, RemarksOnAMissingTranslateTable) {
    const auto bench = Running();
    EXPECT_EQ(LoadFile(bench->App, "ZXT", "/no/such.zxt", true), LoadStatus::Failed);
    EXPECT_TRUE(bench->Host.Boxes.empty());
    EXPECT_EQ(bench->Host.Remarks, Strings{"Could not open /no/such.zxt."});
}

TEST(LoadFile, SaysThatCsvIsNotRead) {
    const auto bench = Running();
    LoadFile(bench->App, "CSV", bench->Folder.Write("a.csv", "1,2"), true);
    EXPECT_EQ(bench->Texts(), Strings{"File not loaded|This version does not read CSV files."});
}

TEST(LoadFile, TellsOfAMissingCsvFileOnce) {
    const auto bench = Running();
    EXPECT_EQ(LoadFile(bench->App, "CSV", bench->Folder.File("none.csv"), true), LoadStatus::Failed);
    EXPECT_EQ(bench->Texts(), Strings{"File Error(9):|File could not be opened"});
    EXPECT_EQ(LoadFile(bench->App, "CSV", bench->Folder.File("none.csv"), false), LoadStatus::FailedSilently);
}

TEST(LoadFile, DecodesTheSpiGroupsOfTheFile) {
    ZU_NEEDS_CAPTURES();
    const std::string name = test::CapturePath("spi_flash_read64.zu").string();
    Bench bench;
    bench.State->Command.DocumentFile = name;
    InitDefaults(bench.App);
    LoadFile(bench.App, "ZU", name, true);
    EXPECT_GT(bench.State->Serial.SpiLast, 0);
    EXPECT_EQ(bench.State->Serial.SpiSI[0][static_cast<std::size_t>(bench.State->Serial.SpiFirst)] & 0x100,
              0x100);
}

TEST(LoadFile, DecodesTheSerialGroupOfAnOpenWindow) {
    ZU_NEEDS_CAPTURES();
    const std::string name = test::CapturePath("i2c_eeprom_page_write.zu").string();
    Bench bench;
    bench.State->Command.DocumentFile = name;
    InitDefaults(bench.App);
    LoadFile(bench.App, "ZU", name, true);
    ASSERT_EQ(bench.State->Serial.SerialMode, 1);
    ASSERT_EQ(bench.State->Windows.SerialStat, 1);
    const auto& events = bench.State->Serial.SerialEvents;
    EXPECT_GT(std::count_if(events.begin(), events.end(), [](std::uint8_t code) { return code != 0; }), 0);
}

class LoadCapture : public testing::TestWithParam<const char*> {};

TEST_P(LoadCapture, OnItsOwnModelShowsNothing) {
    ZU_NEEDS_CAPTURES();
    const std::string name = test::CapturePath(std::string(GetParam()) + ".zu").string();
    Bench bench;
    bench.State->Command.DocumentFile = name;
    InitDefaults(bench.App);
    EXPECT_EQ(LoadFile(bench.App, "ZU", name, true), LoadStatus::Loaded);
    EXPECT_TRUE(bench.Host.Boxes.empty());
    EXPECT_EQ(bench.State->Windows.TimingStat, 1);
}

TEST_P(LoadCapture, OnAnotherModelAsks) {
    ZU_NEEDS_CAPTURES();
    const std::string name = test::CapturePath(std::string(GetParam()) + ".zu").string();
    const auto bench = Running(2);
    bench->Host.Answers = {true};
    EXPECT_EQ(LoadFile(bench->App, "ZU", name, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->Texts(), Strings{kOtherHardware});
}

INSTANTIATE_TEST_SUITE_P(All, LoadCapture, testing::ValuesIn(test::kCaptures));

// --- Saving --------------------------------------------------------------------------------------------

TEST(SaveFile, WritesSettings) {
    const auto bench = Running();
    const std::string name = bench->Folder.File("a.ini");
    SaveFile(bench->App, name, "ini");
    EXPECT_EQ(bench->Host.Title, name);
    EXPECT_EQ(bench->Folder.Read("a.ini"), SettingsText(*bench->State, bench->Host));
    EXPECT_EQ(bench->Shell.Log, (Strings{"busy", "not busy"}));
}

TEST(SaveFile, WritesSettingsAndData) {
    const auto bench = Running();
    SetMemoryMode(bench->App, -1, 0);
    bench->State->Buffer.Samples(2)[7] = 0x42;
    const std::string name = bench->Folder.File("a.zu");
    SaveFile(bench->App, name, "ZU");
    EXPECT_EQ(bench->Host.Title, name);
    bench->State->Buffer.Samples(2)[7] = 0;
    EXPECT_EQ(LoadFile(bench->App, "ZU", name, true), LoadStatus::Loaded);
    EXPECT_EQ(bench->State->Buffer.Samples(2)[7], 0x42);
    EXPECT_TRUE(bench->Host.Boxes.empty());
}

TEST(SaveFile, WritesTheTranslateTableAlone) {
    const auto bench = Running();
    bench->State->Translate.Entry[0].Bit = "1X0";
    bench->State->Translate.Entry[0].Stg = "text";
    SaveFile(bench->App, bench->Folder.File("a.zxt"), "ZXT");
    EXPECT_EQ(bench->Folder.Read("a.zxt"), "\r\n[UserDefined]\r\nud0Bit=1X0\r\nud0Stg=text\r\nud0Skip=0\r\n");
    EXPECT_EQ(bench->Host.Title, bench->Folder.File("a.zxt"));
}

TEST(SaveFile, ClearsTheAlignmentOfPatternPods) {
    const auto bench = Running();
    bench->State->Pods.AdjAddr.fill(9);
    bench->State->Pods.HardwarePod[1] = 1;
    bench->State->Pods.HardwarePod[2] = 2;
    bench->State->Pods.HardwarePod[3] = 3;
    SaveFile(bench->App, bench->Folder.File("a.zxt"), "ZXT");
    EXPECT_EQ(bench->State->Pods.AdjAddr[0], 9);
    EXPECT_EQ(bench->State->Pods.AdjAddr[1], 0);
    EXPECT_EQ(bench->State->Pods.AdjAddr[2], 0);
    EXPECT_EQ(bench->State->Pods.AdjAddr[3], 9);
}

TEST(SaveFile, EndsTheProgramOnANameOfMoreThan500Characters) {
    const auto bench = Running();
    bench->State->Pods.HardwarePod[0] = 1;
    bench->State->Pods.AdjAddr[0] = 9;
    SaveFile(bench->App, std::string(500, 'a'), "PRN");
    EXPECT_TRUE(bench->Host.Boxes.empty());
    try {
        SaveFile(bench->App, std::string(501, 'a'), "ZU");
        FAIL() << "the process goes on";
    } catch (const test::ProcessEnded& end) {
        EXPECT_EQ(end.Code, 0);
    }
    EXPECT_EQ(bench->Texts(), Strings{"Internal Error:|File name error: call Ostrand"});
    EXPECT_EQ(bench->State->Pods.AdjAddr[0], 0) << "this comes first";
}

TEST(SaveFile, RemarksOnAFailureAndKeepsTheOldFile) {
    const auto bench = Running();
    for (const char* type : {"INI", "ZU", "ZXT"}) {
        SaveFile(bench->App, bench->Folder.File("no/such/folder/a.x"), type);
    }
    EXPECT_TRUE(bench->Host.Boxes.empty());
    EXPECT_EQ(bench->Host.Remarks.size(), 3U);
}

TEST(SaveFile, SaysWhichTypesItDoesNotWrite) {
    const auto bench = Running();
    bench->Host.Title = "before";
    SaveFile(bench->App, bench->Folder.File("a.prn"), "prn");
    EXPECT_EQ(bench->Host.Remarks, Strings{"This version does not write PRN files."});
    EXPECT_FALSE(bench->Folder.Has("a.prn"));
    EXPECT_EQ(bench->Host.Title, "before");
}

// --- File dialogs --------------------------------------------------------------------------------------

struct FilterCase {
    const char* Type;
    const char* Open;
    const char* Save;
};

class Filters : public testing::TestWithParam<FilterCase> {};

TEST_P(Filters, StartWithTheTypeUsedLast) {
    const auto bench = Running();
    bench->State->Files.DefLoadType = bench->State->Files.DefSaveType = GetParam().Type;
    OpenCommand(bench->App);
    SaveCommand(bench->App);
    ASSERT_EQ(bench->Host.Requests.size(), 2U);
    const FileRequest& open = bench->Host.Requests[0];
    EXPECT_FALSE(open.Save);
    EXPECT_EQ(open.Filters, GetParam().Open);
    EXPECT_EQ(open.InitialName, "*.ZU");
    const FileRequest& save = bench->Host.Requests[1];
    EXPECT_TRUE(save.Save);
    EXPECT_EQ(save.Filters, GetParam().Save);
}

constexpr const char* kDataFirst =
    "Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Comma Sep [data] (*.CSV)|*.csv|Translate table "
    "(*.ZXT)|*.ZXT||";
constexpr const char* kSaveDataFirst =
    "Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Translate table (*.ZXT)|*.ZXT||";

INSTANTIATE_TEST_SUITE_P(
    All, Filters,
    testing::Values(
        FilterCase{"ZU", kDataFirst, kSaveDataFirst},
        FilterCase{
            "INI",
            "Settings File (*.INI)|*.INI|Data File (*.ZU)|*.zu|Comma Sep [data] (*.CSV)|*.csv|Translate "
            "table (*.ZXT)|*.ZXT||",
            "Settings File (*.INI)|*.INI|Data File (*.ZU)|*.zu|Translate table (*.ZXT)|*.ZXT||"},
        FilterCase{
            "CSV",
            "Comma Sep [data] (*.CSV)|*.csv|Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Translate "
            "table (*.ZXT)|*.ZXT||",
            kSaveDataFirst},
        FilterCase{
            "ZXT",
            "Translate table (*.ZXT)|*.ZXT|Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Comma Sep "
            "[data] (*.CSV)|*.csv||",
            "Translate table (*.ZXT)|*.ZXT|Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI||"},
        FilterCase{"I2C", kDataFirst, kSaveDataFirst}, FilterCase{"PRN", kDataFirst, kSaveDataFirst}),
    [](const auto& test) { return test.param.Type; });

TEST(OpenCommand, LoadsTheChosenFileAndRemembersIt) {
    const auto bench = Running();
    const std::string name = bench->Folder.Write("a.IniX.ini", Hardware("Type=15\r\nMode=1\r\n"));
    bench->Host.Files = {name};
    OpenCommand(bench->App);
    EXPECT_EQ(bench->State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench->State->Files.DefLoadType, "INI");
    EXPECT_EQ(bench->State->Files.DefSaveType, "ZU");
    EXPECT_EQ(bench->State->Files.LastFolder, bench->Folder.Path());
    EXPECT_EQ(bench->State->Files.RecentFiles[0], name);
    OpenCommand(bench->App);
    EXPECT_EQ(bench->Host.Requests.back().InitialName, bench->Folder.File("*.ZU"));
    EXPECT_EQ(bench->Host.Requests.back().DefaultExtension, "INI");
}

TEST(OpenCommand, TellsOfAMissingFile) {
    const auto bench = Running();
    bench->Host.Files = {bench->Folder.File("none.zu")};
    OpenCommand(bench->App);
    EXPECT_EQ(bench->Texts(),
              (Strings{"|Error: File not found.", "File Error(9):|File could not be opened"}));
}

TEST(OpenCommand, RefusesOtherTypes) {
    for (const char* name : {"a.txt", "a", "a.prn", "a.i2c", "a.zu.bak", "dir.zu/a"}) {
        const auto bench = Running();
        bench->Host.Files = {name};
        OpenCommand(bench->App);
        EXPECT_EQ(bench->Texts(), Strings{"File not loaded|Incorrect file type"}) << name;
        EXPECT_EQ(bench->State->Files.DefLoadType, "ZU");
        EXPECT_EQ(bench->State->Files.LastFolder, "");
        EXPECT_EQ(bench->Host.Title, "");
    }
}

TEST(OpenCommand, DoesNothingWhenCancelled) {
    const auto bench = Running();
    Go(bench->App);
    bench->Forget();
    bench->Host.Files = {""};
    OpenCommand(bench->App);
    EXPECT_EQ(bench->Host.Title, "");
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
}

TEST(OpenCommand, KeepsCsvAsTheTypeOfTheSession) {
    const auto bench = Running();
    bench->Host.Files = {bench->Folder.Write("a.csv", "")};
    OpenCommand(bench->App);
    EXPECT_EQ(bench->State->Files.DefLoadType, "CSV");
}

TEST(SaveCommand, SavesTheChosenTypeAndRemembersIt) {
    const auto bench = Running();
    for (const char* name : {"a.ini", "a.ZXT"}) {
        bench->Host.Files = {bench->Folder.File(name)};
        SaveCommand(bench->App);
        EXPECT_TRUE(bench->Folder.Has(name));
        EXPECT_EQ(bench->Host.Title, bench->Folder.File(name));
    }
    EXPECT_EQ(bench->State->Files.DefSaveType, "ZXT");
    EXPECT_EQ(bench->State->Files.DefLoadType, "ZU");
    EXPECT_EQ(bench->State->Files.LastFolder, bench->Folder.Path());
}

TEST(SaveCommand, OfAnotherTypeOnlySetsTheTitle) {
    for (const char* name : {"a.txt", "a.spi", "a"}) {
        const auto bench = Running();
        bench->State->Pods.HardwarePod[0] = 1;
        bench->State->Pods.AdjAddr[0] = 9;
        bench->Host.Files = {bench->Folder.File(name)};
        SaveCommand(bench->App);
        EXPECT_EQ(bench->Host.Title, bench->Folder.File(name));
        EXPECT_FALSE(bench->Folder.Has(name));
        EXPECT_EQ(bench->State->Pods.AdjAddr[0], 9);
        EXPECT_TRUE(bench->Host.Remarks.empty());
        EXPECT_EQ(bench->State->Files.DefSaveType, "ZU");
    }
}

TEST(SaveCommand, PausesARunningCaptureOnce) {
    const auto bench = Running();
    Go(bench->App);
    bench->Forget();
    bench->Host.Files = {bench->Folder.File("a.ini")};
    SaveCommand(bench->App);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
}

TEST(RecentFiles, HoldTheLastFourOnce) {
    FileRecord files;
    for (const char* name : {"/d/1", "/d/2", "/d/3", "/d/4", "/d/5"}) RememberFile(files, name);
    EXPECT_EQ(files.RecentFiles, (std::array<std::string, 4>{"/d/5", "/d/4", "/d/3", "/d/2"}));
    RememberFile(files, "/e/3");
    RememberFile(files, "/d/4");
    EXPECT_EQ(files.RecentFiles, (std::array<std::string, 4>{"/d/4", "/e/3", "/d/5", "/d/3"}));
    EXPECT_EQ(files.LastFolder, "/d");
}

// --- Quick slots ---------------------------------------------------------------------------------------

class QuickSlot : public testing::TestWithParam<int> {};

TEST_P(QuickSlot, SavesSettingsOnlyAndLoadsThem) {
    const auto bench = Running();
    const std::string file = "WRoach_" + std::to_string(GetParam()) + ".ini";
    bench->State->Print.PrintEnd = 4711;
    EXPECT_TRUE(RunCommand(bench->App, SaveSlotCommand(GetParam())));
    EXPECT_EQ(bench->Folder.Read(file), SettingsText(*bench->State, bench->Host));
    EXPECT_EQ(bench->Host.Title, "") << "saving a slot is no change of document";
    bench->State->Print.PrintEnd = 1;
    EXPECT_TRUE(RunCommand(bench->App, LoadSlotCommand(GetParam())));
    EXPECT_EQ(bench->State->Print.PrintEnd, 4711);
    EXPECT_EQ(bench->Host.Title, bench->Folder.File(file));
}

TEST_P(QuickSlot, TellsWhenItIsEmpty) {
    const auto bench = Running();
    LoadSlot(bench->App, GetParam());
    EXPECT_EQ(bench->Texts(),
              (Strings{"|Error: File not found.", "File Error(9):|File could not be opened"}));
}

INSTANTIATE_TEST_SUITE_P(All, QuickSlot, testing::Range(0, 6));

TEST(QuickSlots, AreSix) {
    const auto bench = Running();
    for (const int slot : {-1, 6, 100}) {
        LoadSlot(bench->App, slot);
        SaveSlot(bench->App, slot);
    }
    EXPECT_TRUE(bench->Host.Boxes.empty());
}

TEST(QuickSlots, PauseARunningCaptureForTheLoad) {
    const auto bench = Running();
    SaveSlot(bench->App, 2);
    Go(bench->App);
    bench->Forget();
    LoadSlot(bench->App, 2);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
}

}  // namespace
}  // namespace zu
