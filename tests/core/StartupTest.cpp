// Start-up with nothing attached and exit, from end to end, without windows.
#include <gtest/gtest.h>
#include <vector>

#include "StartupBench.h"
#include "core/Commands.h"
#include "core/Preferences.h"
#include "core/RateRules.h"

namespace zu {
namespace {

using test::kIsaBoard;
using test::OneBoard;
using test::Program;
using test::SettingsOf;
using Strings = std::vector<std::string>;

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
