// The commands: their texts, what the model takes away, how they look and what they do.
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <vector>

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

CommandId Memory(int mode) {
    return MemoryCommand(mode);
}

const std::set<CommandId> kRemovedAlways{
    CommandId::PatternEditOld,
    CommandId::PatternBackground,
    CommandId::ClockOr,
    CommandId::ClockNor,
    CommandId::ClockAnd,
    CommandId::ClockNand,
    CommandId::ClockFallingRising,
    CommandId::ClockRisingFalling,
    CommandId::TriggerOut,
    CaptureModeCommand(3),
    CaptureModeCommand(4),
    CommandId::TestTdsSearch,
    CommandId::TestBuildData,
    CommandId::Test2,
    CommandId::TestPulseWidth,
    CommandId::TestTenCaptures,
    MemoryCommand(2),
};

// --- Table ---------------------------------------------------------------------------------------------

TEST(CommandTable, KeepsTheQuotedTexts) {
    const std::map<CommandId, std::string_view> texts{
        {LoadSlotCommand(0), "Load &default settings"},
        {LoadSlotCommand(1), "Load Settings 1"},
        {LoadSlotCommand(5), "Load Settings &5"},
        {SaveSlotCommand(0), "Save &default settings"},
        {SaveSlotCommand(1), "Save Settings &1"},
        {SaveSlotCommand(5), "Save Settings &5"},
        {CommandId::DataLog, "Data Log"},
        {CommandId::DataLogSettings, "Data Log settings"},
        {CommandId::AutosaveData, "&Auto save settings and data"},
        {CommandId::TriggerMode, "Trigger mode"},
        {CommandId::LoopNormal, "Normal (Lower CPU usage)"},
        {CommandId::LoopFaster, "Faster (High CPU usage)"},
        {CommandId::TriggerOut, "Trigger out enabled"},
        {CaptureModeCommand(0), "&Normal (w/trigger)"},
        {CaptureModeCommand(1), "&Single (w/trigger)"},
        {CaptureModeCommand(2), "&Auto"},
        {CaptureModeCommand(3), "One Shot (w/o trigger)"},
        {CaptureModeCommand(4), "Continuous Pattern Generator output"},
        {CommandId::ClockInternal, "&Internal"},
        {CommandId::ClockExtRising, "Ext. Clock[0] &Rising"},
        {CommandId::ClockExtFalling, "Ext. Clock[0] &Falling"},
        {CommandId::ClockExternal, "&External ...."},
        {CommandId::ClockOr, "Ext. Clock[0] or Ext. Clock[1]"},
        {CommandId::ClockNor, "Ext. Clock[0] nor Ext. Clock[1]"},
        {CommandId::ClockAnd, "Ext. Clock[0] and Ext. Clock[1]"},
        {CommandId::ClockNand, "Ext. Clock[0] nand Ext. Clock[1]"},
        {CommandId::ClockFallingRising, "Ext. Clock[0] Falling && [1] Rising"},
        {CommandId::ClockRisingFalling, "Ext. Clock[0] Rising && [1] Falling"},
        {Memory(0), "Small memory"},
        {Memory(1), "Large Memory"},
        {Memory(3), "Large memory (No Pattern Generator)"},
        {Memory(4), "Small memory x2"},
        {Memory(5), "Large memory x2"},
        {Memory(6), "Small memory x4"},
        {Memory(7), "Large memory x4"},
        {Memory(8), "Small memory x1"},
        {Memory(9), "Large memory x1"},
        {Memory(10), "Small memory x3"},
        {Memory(11), "Large memory x3"},
        {CommandId::PodSetup, "Pod mode &setup...."},
        {CommandId::PatternVoltage, "Pattern Generator output voltage..."},
        {CommandId::PatternEditOld, "&Edit Pattern Generator data"},
        {CommandId::PatternEdit, "&Edit Pattern Generator data"},
        {CommandId::PatternBackground, "Background (Pattern Generator)"},
        {CommandId::IdentifyAnalyzer, "Identify Analyzer"},
        {CommandId::TestTdsSearch, "tds search"},
        {CommandId::TestBuildData, "Build test data from file"},
        {CommandId::Test2, "test2"},
        {CommandId::TestPulseWidth, "Pulse width (avg,shortest + longest)"},
        {CommandId::TestTenCaptures, "10 captures"},
        {RateCommand(0), "1 GSa/s (1 ns)"},
        {RateCommand(34), "1 Sa/s  (1 s)"},
        {ZoomCommand(0), "  1:50 data:pixel"},
        {ZoomCommand(16), "4000:1 data:pixel"},
    };
    for (const auto& [id, text] : texts) EXPECT_EQ(Traits(id).Text, text);
}

TEST(CommandTable, TakesTheTextsOfRatesAndZooms) {
    for (int code = 0; code < kRateCodes; ++code) {
        EXPECT_EQ(Traits(RateCommand(code)).Text, kRates[static_cast<std::size_t>(code)].MenuText);
    }
    for (int step = 0; step < kZoomSteps; ++step) {
        EXPECT_EQ(Traits(ZoomCommand(step)).Text, kZoomTable[static_cast<std::size_t>(step)].MenuText);
    }
}

TEST(CommandTable, GivesEveryKeyToOneCommand) {
    std::set<std::string_view> keys;
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const std::string_view key = Traits(static_cast<CommandId>(i)).Key;
        EXPECT_TRUE(key.empty() || keys.insert(key).second) << key;
    }
    EXPECT_EQ(Traits(CommandId::FileOpen).Key, "Ctrl+O");
    EXPECT_EQ(Traits(CommandId::FileSave).Key, "Ctrl+S");
    EXPECT_EQ(Traits(CommandId::Go).Key, "F5");
    EXPECT_EQ(Traits(CommandId::TriggerMode).Key, "M");
    EXPECT_EQ(Traits(CommandId::RateDown).Key, "R");
    EXPECT_EQ(Traits(CommandId::RateUp).Key, "Shift+R");
    EXPECT_EQ(Traits(CommandId::TriggerWord).Key, "W");
}

/// What has no key of its own is a row of a family that another key walks, or is done once in a long while.
TEST(CommandTable, GivesAKeyToMostCommands) {
    std::set<CommandId> without{
        CommandId::AutosaveData,    CommandId::LoopNormal,     CommandId::LoopFaster,
        CommandId::ClearBufferOnGo, CommandId::ClockExtRising, CommandId::ClockExtFalling,
        CommandId::PatternVoltage,  CommandId::PatternEdit,    CommandId::IdentifyAnalyzer,
        CommandId::About,           CommandId::ReplayFile,
    };
    without.insert(kRemovedAlways.begin(), kRemovedAlways.end());
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const auto id = static_cast<CommandId>(i);
        const auto within = [id](CommandId first, CommandId last) {
            return FamilyIndex(id, first, last) >= 0;
        };
        const bool ofFamily = within(CommandId::Rate0, CommandId::RateLast) ||
                              within(CommandId::Zoom0, CommandId::ZoomLast) ||
                              within(CommandId::Memory0, CommandId::MemoryLast) ||
                              within(CommandId::CaptureMode0, CommandId::CaptureModeLast) ||
                              within(CommandId::Scene0, CommandId::SceneLast) ||
                              within(CommandId::ScreenColor0, CommandId::CursorColorLast);
        EXPECT_EQ(Traits(id).Key.empty(), ofFamily || without.count(id) != 0) << Traits(id).Text;
    }
}

/// Letters and figures that are held while the mouse does its work are no keys.
TEST(CommandTable, LeavesTheHeldKeysFree) {
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        for (const char* held : {"A", "B", "C", "D", "T", "2", "3", "4", "5"}) {
            EXPECT_NE(Traits(static_cast<CommandId>(i)).Key, held);
        }
    }
}

TEST(CommandTable, HasNothingOutsideItsCommands) {
    EXPECT_EQ(Traits(CommandId::Count).Text, "");
    EXPECT_EQ(Traits(static_cast<CommandId>(255)).Text, "");
    EXPECT_EQ(ClockTypeOf(CommandId::Go), -1);
}

TEST(CommandTable, KnowsTheClockTypes) {
    const std::map<CommandId, int> types{
        {CommandId::ClockInternal, 0},
        {CommandId::ClockExtRising, 1},
        {CommandId::ClockExtFalling, 2},
        {CommandId::ClockExternal, 3},
        {CommandId::ClockOr, 9},
        {CommandId::ClockNor, 10},
        {CommandId::ClockAnd, 11},
        {CommandId::ClockNand, 12},
        {CommandId::ClockFallingRising, 13},
        {CommandId::ClockRisingFalling, 14},
    };
    for (const auto& [id, type] : types) EXPECT_EQ(ClockTypeOf(id), type);
}

// --- What the model takes away -------------------------------------------------------------------------

std::set<CommandId> RemovedByRow(int row) {
    const std::set<CommandId> allX{Memory(4), Memory(5), Memory(6),  Memory(7),
                                   Memory(8), Memory(9), Memory(10), Memory(11)};
    std::set<CommandId> removed;
    const auto add = [&removed](const std::set<CommandId>& more) {
        removed.insert(more.begin(), more.end());
    };
    if (row <= 17 || (row >= 20 && row <= 24)) add(allX);
    if (row <= 12 || (row >= 16 && row <= 19) || row >= 25) add({Memory(3)});
    if (row <= 10 || (row >= 16 && row <= 19)) add({CommandId::PatternVoltage});
    if (row == 16 || row == 17 || row >= 25) add({CommandId::ClockExternal});
    if (row == 18 || row == 19) add({Memory(8), Memory(9), Memory(10), Memory(11), CommandId::PodSetup});
    if (row == 18) add({Memory(6), Memory(7)});
    if (row == 25 || row == 26) {
        add({Memory(1), Memory(9), Memory(5), Memory(11), Memory(7), Memory(10), Memory(6)});
    }
    return removed;
}

class RemovedOn : public testing::TestWithParam<int> {};

TEST_P(RemovedOn, TheRow) {
    InstrumentState state;
    state.Identity.HardwareType = static_cast<std::uint8_t>(GetParam());
    const CommandSet removed = RemovedCommands(state);
    const std::set<CommandId> byRow = RemovedByRow(GetParam());
    MarkAllRates(state.Clock);
    MarkRowRates(state.Clock, GetParam());
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const auto id = static_cast<CommandId>(i);
        const int code = FamilyIndex(id, CommandId::Rate0, CommandId::RateLast);
        const bool noRate = code >= 0 && state.Clock.RateAvail[static_cast<std::size_t>(code)] == 255;
        EXPECT_EQ(removed.test(i), noRate || kRemovedAlways.count(id) != 0 || byRow.count(id) != 0)
            << Traits(id).Text;
    }
}

INSTANTIATE_TEST_SUITE_P(All, RemovedOn, testing::Range(0, 28));

TEST(RemovedEntries, StayAwayWhenTheModelChanges) {
    Bench bench;
    bench.UseRow(15);
    bench.App.Removed = RemovedCommands(*bench.State);
    ASSERT_TRUE(QueryCommand(bench.App, Memory(4)).Removed);
    ChangeModel(*bench.State, 27);
    EXPECT_TRUE(QueryCommand(bench.App, Memory(4)).Removed);
    EXPECT_FALSE(RunCommand(bench.App, Memory(4)));
}

// --- How an entry looks --------------------------------------------------------------------------------

TEST(QueryCommand, ChecksTheCurrentRate) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_TRUE(QueryCommand(bench.App, RateCommand(5)).Checked);
    EXPECT_FALSE(QueryCommand(bench.App, RateCommand(6)).Checked);
    EXPECT_TRUE(QueryCommand(bench.App, RateCommand(6)).Checkable);
}

TEST(QueryCommand, ChecksCode5UnderTheLatchedClockAndNoneUnderTheOthers) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Clock.ClockRate = 8;
    for (const int type : {1, 2, 3, 5, 6, 9, 14}) {
        bench.State->Clock.ClockType = static_cast<std::uint8_t>(type);
        for (int code = 0; code < kRateCodes; ++code) {
            EXPECT_EQ(QueryCommand(bench.App, RateCommand(code)).Checked, type == 5 && code == 5) << type;
        }
    }
}

TEST(QueryCommand, GreysTheRatesThatTheRowDoesNotAllow) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_FALSE(QueryCommand(bench.App, RateCommand(4)).Enabled);
    EXPECT_TRUE(QueryCommand(bench.App, RateCommand(3)).Enabled);
}

TEST(QueryCommand, NamesThe16ChannelsOfRow27) {
    Bench bench;
    bench.UseRow(27);
    EXPECT_EQ(QueryCommand(bench.App, RateCommand(2)).Text, "400 MSa/s (2.5 ns) (16 Channel)");
    EXPECT_EQ(QueryCommand(bench.App, RateCommand(3)).Text, "250 MSa/s (4 ns)");
    bench.State->Identity.HardwareType = 19;
    EXPECT_EQ(QueryCommand(bench.App, RateCommand(2)).Text, "400 MSa/s (2.5 ns)");
}

TEST(QueryCommand, NeverOffersTheDeepModeAtCode1) {
    Bench bench;
    bench.UseRow(15);
    SetRate(bench.App, 1);
    EXPECT_FALSE(QueryCommand(bench.App, Memory(3)).Enabled);
    EXPECT_FALSE(RunCommand(bench.App, Memory(3)));
    SetRate(bench.App, 3);
    EXPECT_TRUE(QueryCommand(bench.App, Memory(3)).Enabled);
    EXPECT_EQ(QueryCommand(bench.App, Memory(3)).Text, "160ch      256K (No Pattern Generator)");
}

TEST(QueryCommand, ChecksWhatIsInForce) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Capture.CaptureMode = 2;
    bench.State->Clock.ClockType = 2;
    bench.State->Timing.ScreenZoom = 25;
    bench.State->Windows.TimingStat = 1;
    for (const CommandId id : {CaptureModeCommand(2), CommandId::ClockExtFalling, ZoomCommand(1),
                               CommandId::WindowTiming, CommandId::LoopNormal, CommandId::ClearBufferOnGo,
                               CommandId::AutosaveData, CommandId::TimingGrid, Memory(0)}) {
        EXPECT_TRUE(QueryCommand(bench.App, id).Checked) << Traits(id).Text;
    }
    for (const CommandId id :
         {CaptureModeCommand(0), CommandId::ClockInternal, ZoomCommand(0), CommandId::WindowStateList,
          CommandId::LoopFaster, CommandId::TriggerOut, CommandId::DataLog, Memory(1)}) {
        EXPECT_FALSE(QueryCommand(bench.App, id).Checked) << Traits(id).Text;
        EXPECT_TRUE(QueryCommand(bench.App, id).Checkable) << Traits(id).Text;
    }
    EXPECT_FALSE(QueryCommand(bench.App, CommandId::Go).Checkable);
}

TEST(QueryCommand, GreysWhatIsNotBuiltYet) {
    Bench bench;
    bench.UseRow(15);
    for (const CommandId id : {CommandId::FileExport, CommandId::FilePrint, CommandId::ClockExternal,
                               CommandId::TriggerWord, CommandId::PodSetup, CommandId::PatternEdit}) {
        EXPECT_FALSE(QueryCommand(bench.App, id).Enabled) << Traits(id).Text;
        EXPECT_FALSE(RunCommand(bench.App, id));
    }
}

TEST(QueryCommand, OffersWhatIsBuilt) {
    Bench bench;
    bench.UseRow(15);
    for (const CommandId id : {CommandId::FileOpen,
                               CommandId::FileSave,
                               LoadSlotCommand(0),
                               SaveSlotCommand(5),
                               CommandId::AutosaveData,
                               CommandId::FileExit,
                               CommandId::Go,
                               CaptureModeCommand(2),
                               CommandId::TriggerMode,
                               CommandId::LoopFaster,
                               CommandId::ClearBufferOnGo,
                               CommandId::ClearDataBuffer,
                               RateCommand(5),
                               CommandId::RateUp,
                               CommandId::ClockInternal,
                               CommandId::ClockExtRising,
                               Memory(0),
                               Memory(1),
                               CommandId::BoardStatus,
                               CommandId::GroupSetup,
                               CommandId::ChannelSetup,
                               CommandId::TimingSetup,
                               CommandId::InsertGroup,
                               CommandId::InsertSpacer,
                               CommandId::StateListSetup,
                               CommandId::WindowStateList,
                               CommandId::WindowSerial,
                               CommandId::WindowSpi,
                               CommandId::Search,
                               CommandId::SearchForward,
                               CommandId::SearchBackward,
                               CommandId::GoTo,
                               ZoomCommand(0),
                               CommandId::ZoomIn,
                               CommandId::TimingGrid,
                               CommandId::ScreenColor0,
                               CommandId::CursorColorLast,
                               CommandId::WindowTiming,
                               CommandId::WindowCursor,
                               CommandId::WindowTile,
                               CommandId::HelpKeys,
                               CommandId::About}) {
        EXPECT_TRUE(QueryCommand(bench.App, id).Enabled) << Traits(id).Text;
    }
}

TEST(QueryCommand, OffersStopAndEndWhileThereIsSomethingToEnd) {
    Bench bench;
    bench.UseRow(15);
    const auto offers = [&bench](CommandId id) { return QueryCommand(bench.App, id).Enabled; };
    EXPECT_FALSE(offers(CommandId::Stop) || offers(CommandId::End));
    bench.State->Capture.CaptureMode = 1;
    RunCommand(bench.App, CommandId::Go);
    EXPECT_TRUE(offers(CommandId::Stop) && offers(CommandId::End));
    EXPECT_TRUE(offers(CommandId::Go)) << "it begins anew";
    OnTimer(bench.App, kEmulationTimer);
    EXPECT_FALSE(offers(CommandId::End));
    EXPECT_TRUE(offers(CommandId::Stop)) << "the tick of emulation goes on until Stop";
    EXPECT_TRUE(RunCommand(bench.App, CommandId::Stop));
    EXPECT_FALSE(offers(CommandId::Stop));
    bench.State->Identity.Emulated = 0;
    bench.State->Pods.HardwarePod[2] = 1;
    EXPECT_TRUE(offers(CommandId::Stop)) << "it holds the clock of the patterns";
    bench.State->Pods.HardwarePod[2] = 0;
    bench.State->Capture.CaptureMode = 4;
    EXPECT_TRUE(offers(CommandId::Stop));
}

TEST(QueryCommand, KnowsOfSimulatedSignalsOnlyBesideTheSimulatedInstrument) {
    Bench bench;
    bench.UseRow(15);
    for (const CommandId id : {SceneCommand(0), SceneCommand(kSceneCount - 1), CommandId::ReplayFile}) {
        EXPECT_TRUE(QueryCommand(bench.App, id).Removed);
        EXPECT_FALSE(RunCommand(bench.App, id));
    }
}

TEST(QueryCommand, StepsRatesWithTheInternalClockOnly) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_TRUE(QueryCommand(bench.App, CommandId::RateUp).Enabled);
    bench.State->Clock.ClockType = 1;
    EXPECT_FALSE(QueryCommand(bench.App, CommandId::RateUp).Enabled);
    EXPECT_FALSE(QueryCommand(bench.App, CommandId::RateDown).Enabled);
}

TEST(QueryCommand, AnswersForNoCommandAtAll) {
    const Bench bench;
    const CommandState entry = QueryCommand(bench.App, CommandId::Count);
    EXPECT_TRUE(entry.Removed);
    EXPECT_FALSE(entry.Enabled);
}

TEST(PrepareMenu, MovesARateThatTheRowDoesNotAllow) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Clock.ClockRate = 4;
    PrepareMenu(bench.App);
    EXPECT_EQ(bench.State->Clock.ClockRate, 3);
}

// --- What a command does -------------------------------------------------------------------------------

TEST(RunCommand, SetsRatesAndMemory) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_TRUE(RunCommand(bench.App, RateCommand(8)));
    EXPECT_EQ(bench.State->Clock.ClockRate, 8);
    EXPECT_TRUE(RunCommand(bench.App, Memory(1)));
    EXPECT_EQ(bench.State->Memory.BufferLen, 131072);
    EXPECT_EQ(bench.Shell.Log.back(), "bars");
}

TEST(RunCommand, LetsTheLayoutChooseTheMultiplexing) {
    Bench bench;
    bench.UseRow(15);
    SetRate(bench.App, 1);
    RunCommand(bench.App, Memory(1));
    EXPECT_EQ(bench.State->Memory.HardwareMux, 1);
    EXPECT_EQ(bench.State->Memory.BufferLen, 524288);
}

TEST(RunCommand, SelectsClocks) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::ClockExtFalling));
    EXPECT_EQ(bench.State->Clock.ClockType, 2);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::ClockInternal));
    EXPECT_EQ(bench.State->Clock.ClockType, 0);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::RateDown));
    EXPECT_EQ(bench.State->Clock.ClockRate, 6);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::RateUp));
    EXPECT_EQ(bench.State->Clock.ClockRate, 5);
}

TEST(RunCommand, CyclesTheCaptureModeThroughThree) {
    Bench bench;
    bench.UseRow(15);
    for (const int wanted : {1, 2, 0, 1}) {
        EXPECT_TRUE(RunCommand(bench.App, CommandId::TriggerMode));
        EXPECT_EQ(bench.State->Capture.CaptureMode, wanted);
        EXPECT_EQ(bench.Shell.Log.back(), "bars");
    }
    bench.State->Capture.CaptureMode = 4;
    RunCommand(bench.App, CommandId::TriggerMode);
    EXPECT_EQ(bench.State->Capture.CaptureMode, 2);
    RunCommand(bench.App, CaptureModeCommand(1));
    EXPECT_EQ(bench.State->Capture.CaptureMode, 1);
}

TEST(RunCommand, TogglesSwitches) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Windows.TimingStat = 1;
    RunCommand(bench.App, CommandId::ClearBufferOnGo);
    EXPECT_EQ(bench.State->Capture.ClearBufferOnGo, 0);
    RunCommand(bench.App, CommandId::LoopFaster);
    EXPECT_EQ(bench.State->Capture.CaptureLoopMode, 1);
    RunCommand(bench.App, CommandId::LoopNormal);
    EXPECT_EQ(bench.State->Capture.CaptureLoopMode, 0);
    RunCommand(bench.App, CommandId::TimingGrid);
    EXPECT_EQ(bench.State->Timing.TimingGrid, 0);
    EXPECT_EQ(bench.Shell.Log.back(), "redraw Timing");
    RunCommand(bench.App, CommandId::WindowTiming);
    EXPECT_EQ(bench.State->Windows.TimingStat, 0);
    RunCommand(bench.App, CommandId::WindowTiming);
    EXPECT_EQ(bench.State->Windows.TimingStat, 1);
}

TEST(RunCommand, OfAutosaveLeavesOnlyOneAutosave) {
    Bench bench;
    bench.State->Files.Autosave = 1;
    RunCommand(bench.App, CommandId::AutosaveData);
    EXPECT_EQ(bench.State->Files.AutosaveData, 0);
    EXPECT_EQ(bench.State->Files.Autosave, 1);
    RunCommand(bench.App, CommandId::AutosaveData);
    EXPECT_EQ(bench.State->Files.AutosaveData, 1);
    EXPECT_EQ(bench.State->Files.Autosave, 0);
}

TEST(RunCommand, ShowsTheBoardStatus) {
    Bench bench;
    bench.UseRow(12);
    RunCommand(bench.App, CommandId::BoardStatus);
    EXPECT_EQ(bench.Texts(), Strings{"status|Roach80S_32B , 32768K ,ch=80,pods=10,buffers=10"});
}

TEST(RunCommand, IdentifyAnalyzerDoesNothing) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::IdentifyAnalyzer));
    EXPECT_TRUE(bench.Host.Boxes.empty());
    EXPECT_TRUE(bench.Shell.Log.empty());
}

TEST(RunCommand, LeavesToTheWindowsWhatIsTheirs) {
    Bench bench;
    bench.UseRow(15);
    for (const CommandId id : {ZoomCommand(3), CommandId::ZoomIn, CommandId::ZoomOut, CommandId::WindowTile,
                               CommandId::WindowCascade, CommandId::About, CommandId::FileExit}) {
        EXPECT_FALSE(RunCommand(bench.App, id)) << Traits(id).Text;
        EXPECT_TRUE(QueryCommand(bench.App, id).Enabled) << Traits(id).Text;
    }
}

TEST(AboutText, ShowsTheProductIdOfTheCommandLine) {
    InstrumentState state;
    state.Identity.Version = "RoachSer Version 2.16 - 7/27/20";
    EXPECT_EQ(AboutText(state), "RoachSer Version 2.16 - 7/27/20");
    state.Command.CmdPid = 0x25;
    EXPECT_EQ(AboutText(state), "RoachSer Version 2.16 - 7/27/20 (PID_0025)");
    state.Command.CmdPid = 0x0827;
    EXPECT_EQ(AboutText(state), "RoachSer Version 2.16 - 7/27/20 (PID_0827)");
}

}  // namespace
}  // namespace zu
