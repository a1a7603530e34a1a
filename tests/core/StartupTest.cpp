// Start-up and exit from end to end, without windows.
#include <gtest/gtest.h>
#include <vector>

#include "core/CommandLine.h"
#include "core/Commands.h"
#include "core/Frame.h"
#include "core/Preferences.h"
#include "core/RateRules.h"
#include "core/Startup.h"
#include "files/Ini.h"
#include "files/SettingsWriter.h"
#include "support/Bench.h"
#include "support/Captures.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

/// A one-board instrument of 32K at an ISA address: it echoes what presence asks and names its family.
class OneBoard : public PortIo {
  public:
    std::uint16_t Base = 0x210;
    int Writes = 0;
    bool Present = true;

    void Out8(std::uint16_t port, std::uint8_t value) override {
        ++Writes;
        if (port == Base + 1) echo_ = value & 1;
    }
    std::uint8_t In8(std::uint16_t port) override {
        if (!Present) return 0xFF;
        if (port == Base + 1) return static_cast<std::uint8_t>(0x20 | (echo_ << 7));  // class 1
        if (port == Base + 2) return 0;                                               // the later family
        return 0xFF;
    }
    void InString(std::uint16_t, PortUnit, std::span<std::uint8_t>) override {}

  private:
    unsigned echo_ = 0;
};

struct Program : Bench {
    explicit Program(std::vector<std::string> args = {}, const std::string& preferences = {}) {
        args.insert(args.begin(), "zu");
        End = ParseCommandLine(args, State->Files.AppDir, State->Command);
        if (!preferences.empty()) Folder.Write("WRoach.ini", preferences);
    }

    /// A board behind direct port access.
    void Attach(OneBoard& board) {
        App.Platform.PlatformId = 1;
        Hardware.Seams.Ports = &board;
    }
    void Run() {
        CreateFrame(App);
        RunStartupSequence(App);
    }
    /// Exit code of a start that ends the process.
    int RunToTheEnd() {
        try {
            Run();
        } catch (const test::ProcessEnded& end) {
            return end.Code;
        }
        return -1;
    }
    [[nodiscard]] std::string Stored(std::string_view section, std::string_view key) const {
        const IniFile ini = IniFile::Load(State->Files.PreferencesFile);
        return std::string(ini.Find(section, key).value_or("(absent)"));
    }

    std::optional<CommandLineEnd> End;
};

constexpr const char* kIsaBoard = "[Hardware]\r\nAddress=0\r\nComMode=8\r\n";

std::string SettingsOf(int row, const std::string& more = {}) {
    return "\r\n[File]\r\nFileVersion=192\r\n" + more + "\r\n[Hardware]\r\nType=" + std::to_string(row) +
           "\r\nMode=1\r\n";
}

// --- Nothing attached ----------------------------------------------------------------------------------

TEST(FirstStart, ReachesTheMainWindowInEmulation) {
    Program program;
    program.Run();
    const InstrumentState& state = *program.State;
    EXPECT_EQ(state.Identity.Emulated, 1);
    EXPECT_EQ(state.Identity.HardwareType, 15);
    EXPECT_EQ(state.Shape.TotalChannels, 160);
    EXPECT_EQ(state.Windows.TimingStat, 1);
    EXPECT_EQ(state.Windows.CursorDlgStat, 1);
    EXPECT_EQ(state.Windows.StateStat, 0);
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(state.Memory.BufferLen, 524288) << "emulation starts with the depth of the catalogue";
    EXPECT_EQ(state.Memory.HardwareMode, 0);
}

TEST(FirstStart, ShowsItsDialogsAndWindowsInOrder) {
    Program program;
    program.Run();
    const Strings first(program.Shell.Log.begin(), program.Shell.Log.begin() + 4);
    EXPECT_EQ(first, (Strings{"address dialog", "model dialog", "open Cursor", "open Timing"}));
    EXPECT_EQ(program.Shell.Count("menus"), 1);
}

TEST(FirstStart, FillsTheIdentity) {
    Program program;
    program.Run();
    const IdentityRecord& identity = program.State->Identity;
    EXPECT_EQ(identity.Version, "RoachSer Version 2.16 - 7/27/20");
    EXPECT_EQ(identity.OsFamily, 0);
    EXPECT_EQ(identity.HwAddressMenu, 1);
    EXPECT_EQ(identity.AddressIndex, 0);
    EXPECT_EQ(identity.BoardPortAddress, 0x210);
    EXPECT_EQ(identity.ComMode, 8) << "the ISA addresses are where the dialog begins";
}

TEST(FirstStart, TakesAwayWhatTheModelLacks) {
    Program program;
    program.Run();
    EXPECT_TRUE(program.App.Removed.test(Index(CommandId::IdentifyAnalyzer)));
    EXPECT_TRUE(program.App.Removed.test(Index(MemoryCommand(4))));
    EXPECT_EQ(program.State->Clock.RateAvail[4], 255);
    EXPECT_EQ(program.State->Clock.RateAvail[3], 1);
}

TEST(FirstStart, TakesTheModelThatTheUserPicks) {
    Program program;
    program.Shell.OnModelDialog = [&] { program.State->Identity.HardwareType = 11; };
    program.Run();
    EXPECT_EQ(program.State->Shape.TotalChannels, 40);
    EXPECT_EQ(program.State->Clock.RateAvail[1], 255) << "the rates are those of the model";
}

TEST(Start, EndsOnAnUnknownSystem) {
    for (const std::uint32_t id : {0U, 3U, 99U}) {
        Program program;
        program.App.Platform.PlatformId = id;
        EXPECT_EQ(program.RunToTheEnd(), 1);
        EXPECT_EQ(program.Texts(), Strings{"ERROR|OS type not detected. Call Ostrand"});
    }
}

TEST(Start, MapsThePlatformToTheWayOfPortAccess) {
    Program program;
    program.App.Platform.PlatformId = 1;
    program.Run();
    EXPECT_EQ(program.State->Identity.OsFamily, 1);
    EXPECT_EQ(program.Hardware.OsIoMode, 1);
}

TEST(Start, NamesTheVersionOfTheSeries) {
    constexpr std::string_view kVersions[] = {"Pikexxx Version 1.85b  - 5/10/06",
                                              "Dace Version 1.39 - 6/25/07",
                                              "RoachSer Version 2.16 - 7/27/20",
                                              "Tench Version 0.9 - 3/16/06",
                                              "",
                                              "PerchVer Version 1.39 - 7/27/20"};
    constexpr int kRows[] = {5, 17, 15, 19, 24, 27};
    for (std::uint8_t series = 0; series < 6; ++series) {
        Program program;
        program.State->Identity.ModelSeries = series;
        program.Run();
        EXPECT_EQ(program.State->Identity.Version, kVersions[series]);
        EXPECT_EQ(program.State->Identity.HardwareType, kRows[series]);
    }
}

TEST(Start, OfTheSeriesWithItsOwnParallelModeSelectsIt) {
    Program program;
    program.State->Identity.ModelSeries = 1;
    program.Run();
    EXPECT_EQ(program.State->Identity.ComMode, 128);
    EXPECT_EQ(program.State->Identity.HwPort, 0x3BC);
}

TEST(Start, OfTheSeriesWithItsOwnParallelModeGoesOnToTheStoredOne) {
    Program program;
    program.State->Identity.ModelSeries = 1;
    program.Folder.Write("WDace.ini", "[Hardware]\r\nComMode=4\r\nAddress=8\r\n");
    program.Run();
    EXPECT_EQ(program.State->Identity.HwPort, 0x378) << "the stored mode takes the port of its index";
    EXPECT_EQ(program.State->Identity.ComMode, 9) << "the driver did not open: USB is left";
}

// --- The stored connection -----------------------------------------------------------------------------

TEST(StoredBoard, IsFoundWithoutAnyDialog) {
    OneBoard board;
    Program program({}, kIsaBoard);
    program.Attach(board);
    program.Run();
    const IdentityRecord& identity = program.State->Identity;
    EXPECT_EQ(identity.Emulated, 0);
    EXPECT_EQ(identity.HardwareType, 11);
    EXPECT_EQ(identity.FoundTable[0], 11);
    EXPECT_EQ(program.State->Shape.TotalChannels, 40);
    EXPECT_EQ(program.Shell.Count("address dialog"), 0);
    EXPECT_EQ(program.Shell.Count("model dialog"), 0);
}

TEST(StoredBoard, IsProbedTwice) {
    OneBoard board;
    Program program({}, kIsaBoard);
    program.Attach(board);
    const int once = [&] {
        Bench bench;
        bench.Hardware.Seams.Ports = &board;
        SetupOSFunctions(bench.Hardware, 1);
        SetupIO(bench.Hardware, *bench.State, 0, 8);
        board.Writes = 0;
        FindBoard(bench.Hardware, *bench.State, 0x210);
        return board.Writes;
    }();
    ASSERT_GT(once, 0);
    board.Writes = 0;
    program.Run();
    EXPECT_GE(board.Writes, 2 * once);
}

TEST(StoredBoard, WithoutAStartFileTakesTheDepthOfItsMode) {
    OneBoard board;
    Program program({}, kIsaBoard);
    program.Attach(board);
    program.Run();
    EXPECT_EQ(program.State->Memory.BufferLen, 8192);
    EXPECT_EQ(program.State->Memory.HardwareMux, 0);
}

TEST(StoredBoard, WithAStartFileTakesTheFilesMode) {
    OneBoard board;
    Program program({}, kIsaBoard);
    program.Attach(board);
    program.Folder.Write("WRoach_0.zu", SettingsOf(11));
    program.Run();
    EXPECT_EQ(program.State->Memory.HardwareMode, 1);
    EXPECT_EQ(program.State->Memory.BufferLen, 32768);
}

TEST(StoredBoard, ThatIsGoneOpensTheAddressDialog) {
    OneBoard board;
    board.Present = false;
    Program program({}, kIsaBoard);
    program.Attach(board);
    program.Run();
    EXPECT_EQ(program.State->Identity.Emulated, 1);
    EXPECT_EQ(program.State->Identity.FoundTable[0], 0);
    EXPECT_EQ(program.Shell.Count("address dialog"), 1);
    EXPECT_EQ(program.Shell.Count("model dialog"), 1);
    EXPECT_EQ(program.State->Identity.HardwareType, 15);
}

TEST(StoredBoard, AtAnotherAddressIsFoundThere) {
    OneBoard board;
    board.Base = 0x2A0;
    Program program({}, "[Hardware]\r\nAddress=3\r\nComMode=8\r\n");
    program.Attach(board);
    program.Run();
    EXPECT_EQ(program.State->Identity.Emulated, 0);
    EXPECT_EQ(program.State->Identity.BoardPortAddress, 0x2A0);
    EXPECT_EQ(program.State->Identity.FoundTable[3], 11);
}

TEST(StoredConnection, WithOneKeyOnlyAsks) {
    for (const char* keys : {"Address=0\r\n", "ComMode=8\r\n", "ComMode=0\r\nAddress=0\r\n"}) {
        OneBoard board;
        Program program({}, std::string("[Hardware]\r\n") + keys);
        program.Attach(board);
        program.Run();
        EXPECT_EQ(program.Shell.Count("address dialog"), 1) << keys;
        EXPECT_EQ(program.State->Identity.Emulated, 1);
        EXPECT_EQ(program.State->Identity.ComMode, 8);
    }
}

TEST(StoredConnection, CorrectsAnIndexBeyondTheTable) {
    for (const char* index : {"10", "11", "65535", "-1", "4000000000"}) {
        OneBoard board;
        Program program({}, std::string("[Hardware]\r\nComMode=8\r\nAddress=") + index + "\r\n");
        program.Attach(board);
        program.Run();
        EXPECT_EQ(program.State->Identity.AddressIndex, 0) << index;
        EXPECT_EQ(program.State->Identity.Emulated, 0) << index;
    }
}

TEST(StoredConnection, OfAParallelModeWithAnIsaIndexEndsTheProgram) {
    Program program({}, "[Hardware]\r\nComMode=4\r\nAddress=3\r\n");
    EXPECT_EQ(program.RunToTheEnd(), 0);
    EXPECT_TRUE(program.Shell.Log.empty());
}

TEST(StoredConnection, OfAParallelModeTakesThePortOfItsIndex) {
    Program program({}, "[Hardware]\r\nComMode=4\r\nAddress=8\r\n");
    program.Run();
    EXPECT_EQ(program.State->Identity.HwPort, 0x378);
    EXPECT_EQ(program.State->Identity.AddressIndex, 8);
    EXPECT_EQ(program.State->Identity.BoardPortAddress, 0);
}

TEST(StoredUsb, ThatIsNotThereFallsBackToIsaAndProbesNothing) {
    OneBoard board;
    Program program({}, "[Hardware]\r\nComMode=9\r\nAddress=2\r\n");
    program.Attach(board);
    program.Run();
    EXPECT_EQ(program.State->Identity.ComMode, 8);
    EXPECT_EQ(program.State->Identity.AddressIndex, 0);
    EXPECT_EQ(program.State->Identity.Emulated, 1) << "the board at the first address was not asked";
    EXPECT_EQ(program.Shell.Count("address dialog"), 1);
}

TEST(StoredUsb, OfThePatternSeriesIsProbedUntested) {
    Program program({}, "[Hardware]\r\nComMode=9\r\nAddress=2\r\n");
    program.State->Identity.ModelSeries = 5;
    program.Folder.Write("WPerch.ini", "[Hardware]\r\nComMode=9\r\nAddress=2\r\n");
    program.Run();
    EXPECT_EQ(program.State->Identity.ComMode, 9) << "no test, so no fall-back";
    EXPECT_EQ(program.State->Identity.AddressIndex, 7);
    EXPECT_EQ(program.Shell.Count("address dialog"), 1);
}

TEST(ProductIdSwitch, ForcesUsbWithoutReadingTheStoredMode) {
    OneBoard board;
    Program program({"-PID_0325"}, kIsaBoard);
    program.Attach(board);
    program.Run();
    EXPECT_EQ(program.State->Identity.Emulated, 1) << "the stored board was not asked";
    EXPECT_EQ(program.State->Identity.ComMode, 8) << "after the fall-back";
    EXPECT_EQ(program.Shell.Count("address dialog"), 1);
}

TEST(ProductIdSwitch, KeepsIdentifyAnalyzer) {
    Program program({"-PID_0325"});
    program.Run();
    EXPECT_FALSE(QueryCommand(program.App, CommandId::IdentifyAnalyzer).Removed);
    const Strings before = program.Shell.Log;
    EXPECT_TRUE(RunCommand(program.App, CommandId::IdentifyAnalyzer));
    EXPECT_EQ(program.Shell.Log, before);
    EXPECT_TRUE(program.Host.Boxes.empty());
}

TEST(NumberSwitch, ChangesNothing) {
    Program plain;
    plain.Run();
    Program program({"-5"});
    program.Run();
    EXPECT_EQ(program.Shell.Log, plain.Shell.Log);
    EXPECT_EQ(program.State->Identity.ComMode, plain.State->Identity.ComMode);
    EXPECT_EQ(program.App.Removed, plain.App.Removed);
}

// --- The question of scripts ---------------------------------------------------------------------------

TEST(ReturnZuStat, WithoutABoardPrintsSoAndEndsWith0) {
    Program program({"-ReturnZuStat"});
    EXPECT_EQ(program.RunToTheEnd(), 0);
    EXPECT_EQ(program.Host.Lines, Strings{"ZU NOT found"});
    EXPECT_EQ(program.Shell.Log, (Strings{"address dialog", "model dialog"})) << "no window follows";
    EXPECT_FALSE(program.Folder.Has("WRoach.ini")) << "the exit path is not taken";
    EXPECT_FALSE(program.Folder.Has("WRoach_0.zu"));
}

TEST(ReturnZuStat, WithABoardPrintsSoAndEndsWith1) {
    OneBoard board;
    Program program({"-RETURNZUSTAT"}, kIsaBoard);
    program.Attach(board);
    EXPECT_EQ(program.RunToTheEnd(), 1);
    EXPECT_EQ(program.Host.Lines, Strings{"ZU found"});
    EXPECT_TRUE(program.Shell.Log.empty());
}

TEST(ReturnZuStat, AsksTheInstrumentWhateverElseIsNamed) {
    for (const char* other : {"/no/such/Thing.zu", "--model=13"}) {
        OneBoard board;
        Program program({"-RETURNZUSTAT", other}, kIsaBoard);
        program.Attach(board);
        EXPECT_EQ(program.RunToTheEnd(), 1) << other;
        EXPECT_EQ(program.Host.Lines, Strings{"ZU found"});
        EXPECT_TRUE(program.Host.Boxes.empty());
    }
}

// --- Start-up files ------------------------------------------------------------------------------------

TEST(StartFile, IsTheDefaultDataFile) {
    Program program;
    program.Folder.Write("WRoach_0.zu", SettingsOf(15, "DataLogFileName=mine\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "mine");
    EXPECT_EQ(program.State->Memory.BufferLen, 131072);
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(program.Host.Title, program.Folder.File("WRoach_0.zu"));
}

TEST(StartFile, OfOldProgramsIsTurnedIntoANewOne) {
    Program program;
    program.Folder.Write("WRoach_0.ini", SettingsOf(15, "DataLogFileName=old\r\n"));
    program.Run();
    EXPECT_EQ(program.Texts(),
              Strings{"Note:|Old format default settings file found. A new format file will be created. "});
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "old");
    const std::string written = program.Folder.Read("WRoach_0.zu");
    EXPECT_EQ(written.rfind("\r\n[File]\r\n", 0), 0U);
    EXPECT_NE(written.find("DataLogFileName=old\r\n"), std::string::npos);
    EXPECT_EQ(written.find("[Comment"), std::string::npos) << "the settings block only";
    EXPECT_EQ(written.find("[Settings]"), std::string::npos);
}

TEST(StartFile, MissingOpensTheTimingWindow) {
    Program program({}, "[Timing DLG]\r\nstat=0\r\n");
    program.Run();
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
    EXPECT_EQ(program.Shell.Count("open Timing"), 1);
}

TEST(StartFile, OfTheSwitchIsFoundInTheProgramsFolderWhateverItsCase) {
    Program program({"-Lspi Run.zu"});
    program.Folder.Write("Spi run.ZU", SettingsOf(15, "DataLogFileName=found\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "found");
    EXPECT_EQ(program.Host.Title, program.Folder.File("SPI RUN.ZU"));
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(program.Shell.Count("address dialog"), 1) << "the switch starts no viewer";
}

TEST(StartFile, OfTheSwitchNeverComesFromTheWorkingFolder) {
    Program program({"-Lonly-here.zu"});
    const auto before = std::filesystem::current_path();
    const test::TempFolder work;
    work.Write("only-here.zu", SettingsOf(15));
    std::filesystem::current_path(work.Path());
    program.Run();
    std::filesystem::current_path(before);
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("ONLY-HERE.ZU")});
}

TEST(StartFile, OfTheSwitchThatIsMissingIsToldAndStartUpGoesOn) {
    Program program({"-Lnone.zu", "-G"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("NONE.ZU")});
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
    EXPECT_EQ(program.Host.Title, program.Folder.File("NONE.ZU")) << "the title is set once more at the end";
}

TEST(StartFile, OfTheSwitchReplacesTheDefaultOne) {
    Program program({"-Lmine.zu"});
    program.Folder.Write("mine.zu", SettingsOf(15, "DataLogFileName=mine\r\n"));
    program.Folder.Write("WRoach_0.zu", SettingsOf(15, "DataLogFileName=default\r\nExportG=5\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "mine");
    EXPECT_EQ(program.State->Files.ExportG, 0);
}

TEST(StartFile, OfTheCsvSwitchThatIsMissingIsToldInTheSameWay) {
    Program program({"-Cnone.csv"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("NONE.CSV")});
}

TEST(StartFile, AnyArgumentThatBeginsWithLIsOne) {
    Program program({"-LAYOUT"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|" + program.Folder.File("AYOUT")});
}

TEST(StartFile, TypesOfThePreferencesAreReadAndChecked) {
    Program program({}, "[File]\r\nDefSaveType=prn\r\nDefLoadType=CSV\r\n");
    program.Run();
    EXPECT_EQ(program.State->Files.DefSaveType, "PRN");
    EXPECT_EQ(program.State->Files.DefLoadType, "ZU");
}

TEST(AutoGo, PressesGoAtTheEnd) {
    Program program({"-g"});
    program.Run();
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    EXPECT_EQ(program.Host.TimerLog.back(), "start 2 30");
}

// --- Viewer --------------------------------------------------------------------------------------------

TEST(Viewer, OpensTheNamedFileAtOnceOnItsOwnModel) {
    OneBoard board;
    Program program({"Somewhere.zu"}, kIsaBoard);
    program.Attach(board);
    const std::string name = program.Folder.Write("Somewhere.zu", SettingsOf(13, "DataLogFileName=mine\r\n"));
    program.State->Command.DocumentFile = name;
    program.Run();
    EXPECT_EQ(program.State->Identity.Emulated, 1) << "a viewer asks no instrument";
    EXPECT_EQ(program.State->Identity.HardwareType, 13);
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "mine");
    EXPECT_EQ(program.State->Memory.BufferLen, 131072);
    EXPECT_EQ(program.Host.Title, name);
    EXPECT_EQ(program.Shell.Count("address dialog"), 0);
    EXPECT_EQ(program.Shell.Count("model dialog"), 0);
    EXPECT_TRUE(program.Host.Boxes.empty());
    EXPECT_EQ(program.State->Files.RecentFiles[0], name);
    EXPECT_EQ(program.State->Files.LastFolder, program.Folder.Path());
}

TEST(Viewer, TellsOfAFileThatIsMissing) {
    Program program({"/no/such/Thing.zu"});
    program.Run();
    EXPECT_EQ(program.Texts(), Strings{"Error: File did not load|/no/such/Thing.zu"});
    EXPECT_EQ(program.State->Identity.HardwareType, 15);
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
    EXPECT_EQ(program.State->Files.RecentFiles[0], "");
}

TEST(Viewer, OpensSettingsAndTranslateTablesToo) {
    Program program;
    program.State->Command.DocumentFile =
        program.Folder.Write("a.INI", SettingsOf(14, "DataLogFileName=ini\r\n"));
    program.Run();
    EXPECT_EQ(program.State->Files.DataLogFileName.View(), "ini");
    Program table;
    table.State->Command.DocumentFile =
        table.Folder.Write("a.zxt", "\r\n[UserDefined]\r\nud0Bit=1\r\nud0Stg=x\r\nud0Skip=0\r\n");
    table.Run();
    EXPECT_EQ(table.State->Translate.TranslateCount, 1);
}

TEST(Viewer, OfAModelNeedsNoFile) {
    Program program({"--model=Roach80L"});
    program.Run();
    EXPECT_EQ(program.State->Identity.HardwareType, 14);
    EXPECT_EQ(program.Shell.Count("address dialog"), 0);
    EXPECT_EQ(program.Shell.Count("model dialog"), 0);
    EXPECT_EQ(program.State->Windows.TimingStat, 1);
}

TEST(Viewer, OpensEveryRealCapture) {
    ZU_NEEDS_CAPTURES();
    for (const char* capture : test::kCaptures) {
        Program program({test::CapturePath(std::string(capture) + ".zu").string()});
        program.Run();
        EXPECT_TRUE(program.Host.Boxes.empty()) << capture;
        EXPECT_EQ(program.State->Windows.TimingStat, 1);
        EXPECT_GT(program.State->Memory.DisplayLen, 0);
    }
}

TEST(LoadSwitch, OpensARealCaptureByItsUpperCasedName) {
    ZU_NEEDS_CAPTURES();
    Program program({"-L" + test::CapturePath("i2c_eeprom_page_write.zu").string()});
    program.Host.Answers = {false};
    program.Run();
    EXPECT_EQ(program.Texts(),
              (Strings{"Warning|The settings file does not match the installed hardware. Abort load?",
                       "Software running in Demo mode|"}))
        << "the model stays that of the emulation";
    EXPECT_NE(program.State->Channels.ChannelName[0].View(), "Pod 1A Ch 0") << "its channels are named";
}

// --- Exit ----------------------------------------------------------------------------------------------

TEST(Exit, SavesSettingsDataAndPreferences) {
    Program program;
    program.Run();
    program.State->Print.PrintEnd = 4711;
    program.State->Buffer.Samples(0)[3] = 0x77;
    const std::string title = program.Host.Title;
    Shutdown(program.App);
    const std::string data = program.Folder.Read("WRoach_0.zu");
    EXPECT_NE(data.find("End=4711\r\n"), std::string::npos);
    EXPECT_NE(data.find("\r\n[Data D0 0 32768]\r\n"), std::string::npos);
    EXPECT_EQ(data.substr(data.size() - 14), "\r\n[Settings]\r\n");
    EXPECT_EQ(program.Stored("Timing DLG", "stat"), "1");
    EXPECT_EQ(program.Host.Title, title);
    EXPECT_TRUE(program.State->Buffer.Samples(0).empty()) << "the buffers are freed";
    EXPECT_EQ(program.State->Capture.CaptureState, 0);
}

TEST(Exit, WithoutAutosaveLeavesTheDataFile) {
    Program program({}, "[File]\r\nAutosaveData=0\r\n");
    const std::string before = SettingsOf(15, "DataLogFileName=before\r\n");
    program.Folder.Write("WRoach_0.zu", before);
    program.Run();
    program.State->Print.PrintEnd = 4711;
    Shutdown(program.App);
    EXPECT_EQ(program.Folder.Read("WRoach_0.zu"), before);
    EXPECT_EQ(program.Stored("File", "AutosaveData"), "0") << "the preferences are written all the same";
    EXPECT_EQ(program.Stored("Main", "right"), "1880");
}

TEST(Exit, OfAViewerLeavesTheDataFile) {
    Program program({"--model=13"});
    const std::string before = SettingsOf(15);
    program.Folder.Write("WRoach_0.zu", before);
    program.Host.Answers = {true};
    program.Run();
    Shutdown(program.App);
    EXPECT_EQ(program.Folder.Read("WRoach_0.zu"), before);
    EXPECT_TRUE(program.Folder.Has("WRoach.ini"));
}

TEST(Exit, StopsARunningCapture) {
    Program program({"-G"});
    program.Run();
    Shutdown(program.App);
    EXPECT_TRUE(program.Host.Timers.empty());
}

TEST(Exit, WithABoardStoresTheConnection) {
    OneBoard board;
    Program program({}, kIsaBoard);
    program.Attach(board);
    program.Run();
    program.State->Identity.AddressIndex = 2;
    Shutdown(program.App);
    EXPECT_EQ(program.Stored("Hardware", "Address"), "2");
    EXPECT_EQ(program.Stored("Hardware", "ComMode"), "8");
}

TEST(Exit, AndTheNextStartIsWhereTheLastOneWas) {
    Program first;
    first.Run();
    SetMemoryMode(first.App, -1, 1);
    first.State->Buffer.Samples(19)[131071] = 0x3C;
    first.State->Cursors.Cur[0] = 777;
    SetRate(first.App, 12);
    first.Shell.Open(WindowId::StateList);
    Shutdown(first.App);
    Program second({}, first.Folder.Read("WRoach.ini"));
    second.Folder.Write("WRoach_0.zu", first.Folder.Read("WRoach_0.zu"));
    second.Run();
    EXPECT_TRUE(second.Host.Boxes.empty());
    EXPECT_EQ(second.State->Clock.ClockRate, 12);
    EXPECT_EQ(second.State->Cursors.Cur[0], 777);
    EXPECT_EQ(second.State->Buffer.Samples(19)[131071], 0x3C);
    EXPECT_EQ(second.State->Windows.StateStat, 1);
    EXPECT_EQ(second.State->Windows.TimingStat, 1);
}

}  // namespace
}  // namespace zu
