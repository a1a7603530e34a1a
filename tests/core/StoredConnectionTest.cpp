// Start-up with the connection that the preferences keep: found, gone, elsewhere, of a mode that is not
// there.
#include <gtest/gtest.h>
#include <vector>

#include "StartupBench.h"
#include "core/Commands.h"
#include "core/Preferences.h"
#include "core/RateRules.h"

namespace zu {
namespace {

using test::Bench;
using test::kIsaBoard;
using test::OneBoard;
using test::Program;
using test::SettingsOf;
using Strings = std::vector<std::string>;

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

}  // namespace
}  // namespace zu
