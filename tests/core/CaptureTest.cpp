// The run loop in emulation: Go, Stop, End, pauses, timers and the status texts.
#include <gtest/gtest.h>
#include <vector>

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

constexpr const char* kNotHere = "ERROR:|Can't capture in Hardware emulation\tmode";

std::unique_ptr<Bench> Emulating(int mode = 0, int loop = 0) {
    auto bench = std::make_unique<Bench>();
    bench->UseRow(15);
    bench->State->Capture.CaptureMode = static_cast<std::uint8_t>(mode);
    bench->State->Capture.CaptureLoopMode = static_cast<std::uint8_t>(loop);
    return bench;
}

int Byte1(const Bench& bench) {
    return bench.State->Buffer.Pod[0][1];
}

// --- Texts ---------------------------------------------------------------------------------------------

TEST(CaptureModeTexts, FillTheBox) {
    constexpr std::string_view kTexts[] = {"Normal (w/trigger)    ", "Single (w/trigger)    ",
                                           "Auto                  ", "One Shot (w/o trigger)",
                                           "Continuous (PG only)  "};
    for (int mode = 0; mode < 5; ++mode) {
        EXPECT_EQ(CaptureModeText(mode), kTexts[mode]);
        EXPECT_EQ(CaptureModeText(mode).size(), 22U);
    }
    EXPECT_EQ(CaptureModeText(5), "");
    EXPECT_EQ(CaptureModeText(-1), "");
}

// --- Go ------------------------------------------------------------------------------------------------

TEST(Go, StartsTheEmulationTimer) {
    const auto bench = Emulating();
    CaptureRecord& capture = bench->State->Capture;
    capture.TimerBodies = 9;
    capture.TicksSinceGo = 9;
    capture.CaptureCount = 9;
    capture.TrigStat = 3;
    Go(bench->App);
    EXPECT_EQ(capture.CaptureState, 1);
    EXPECT_EQ(capture.CaptureCount, 0);
    EXPECT_EQ(capture.TimerBodies, 0);
    EXPECT_EQ(capture.TicksSinceGo, 0);
    EXPECT_EQ(capture.TrigStat, 0);
    EXPECT_EQ(capture.StatusText.View(), "Go hit");
    EXPECT_EQ(bench->State->Pods.ReprogramFlag, 0xFF);
    EXPECT_EQ(bench->Host.TimerLog, Strings{"start 2 30"});
}

TEST(Go, ClearsTheBuffersIfAskedTo) {
    const auto bench = Emulating();
    bench->State->Buffer.Samples(7)[1000] = 0xAA;
    bench->State->Capture.ClearBufferOnGo = 0;
    Go(bench->App);
    EXPECT_EQ(bench->State->Buffer.Samples(7)[1000], 0xAA);
    bench->State->Capture.ClearBufferOnGo = 1;
    Go(bench->App);
    EXPECT_EQ(bench->State->Buffer.Samples(7)[1000], 0);
}

TEST(Go, ShowsItsTextInAnOpenCursorWindow) {
    const auto bench = Emulating();
    bench->State->Capture.ClearBufferOnGo = 0;
    Go(bench->App);
    EXPECT_EQ(bench->Shell.Count("redraw Cursor"), 0);
    Stop(bench->App);
    bench->State->Windows.CursorDlgStat = 1;
    Go(bench->App);
    EXPECT_EQ(bench->Shell.Count("redraw Cursor"), 2);
}

TEST(Go, WhileRunningStopsFirst) {
    const auto bench = Emulating();
    Go(bench->App);
    TimerBody(bench->App, 2);
    bench->Forget();
    Go(bench->App);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    EXPECT_EQ(bench->State->Capture.CaptureCount, 0);
}

TEST(Go, WhilePausedArmsAgain) {
    const auto bench = Emulating();
    Go(bench->App);
    PauseCapture(bench->App);
    ASSERT_EQ(bench->State->Capture.CaptureState, 2);
    bench->Forget();
    Go(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    EXPECT_EQ(bench->Host.TimerLog, Strings{"start 2 30"});
}

TEST(HardwareEmulation, IsRefusedByGoStopAndEnd) {
    const auto bench = Emulating();
    bench->State->Identity.Emulated = 2;
    bench->State->Capture.CaptureCount = 5;
    Go(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_EQ(bench->State->Capture.StatusText.View(), "Go hit");
    bench->State->Capture.CaptureState = 2;
    Stop(bench->App);
    End(bench->App);
    EXPECT_EQ(bench->Texts(), (Strings{kNotHere, kNotHere, kNotHere}));
    EXPECT_EQ(bench->State->Capture.CaptureState, 2) << "unchanged";
    EXPECT_EQ(bench->State->Capture.StatusText.View(), "Go hit");
    EXPECT_TRUE(bench->Host.TimerLog.empty());
}

TEST(FunctionKey5, StartsAndStops) {
    const auto bench = Emulating();
    GoOrStop(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    GoOrStop(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_EQ(bench->State->Capture.StatusText.View(), "Stop hit (0)");
}

// --- Ticks ---------------------------------------------------------------------------------------------

TEST(EmulationTick, InNormalModeClimbsAndShowsInTheData) {
    const auto bench = Emulating(0);
    Go(bench->App);
    for (int tick = 1; tick <= 600; ++tick) {
        OnTimer(bench->App, 2);
        ASSERT_EQ(bench->State->Capture.CaptureCount, tick);
        ASSERT_EQ(Byte1(*bench), tick % 255);
        ASSERT_EQ(bench->State->Capture.StatusText.View(), "Triggered " + std::to_string(tick));
    }
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    EXPECT_EQ(bench->State->Capture.TimerBodies, 600);
}

TEST(EmulationTick, StartsTheTimerAnewWhileItRuns) {
    for (const int mode : {0, 2}) {
        const auto bench = Emulating(mode);
        Go(bench->App);
        bench->Forget();
        OnTimer(bench->App, 2);
        EXPECT_EQ(bench->Host.TimerLog, Strings{"start 2 30"});
    }
}

class OneCaptureMode : public testing::TestWithParam<int> {};

TEST_P(OneCaptureMode, GoesIdleAndTicksOnUntilStop) {
    const auto bench = Emulating(GetParam());
    Go(bench->App);
    bench->Forget();
    for (int tick = 0; tick < 3; ++tick) {
        OnTimer(bench->App, 2);
        EXPECT_EQ(bench->State->Capture.CaptureState, 0);
        EXPECT_EQ(bench->State->Capture.CaptureCount, 0);
        EXPECT_EQ(bench->State->Capture.StatusText.View(), "Triggered 0");
        EXPECT_EQ(Byte1(*bench), 0);
    }
    EXPECT_TRUE(bench->Host.TimerLog.empty()) << "neither killed nor started";
    EXPECT_EQ(bench->Host.Timers.count(2), 1U);
    Stop(bench->App);
    EXPECT_EQ(bench->Host.Timers.count(2), 0U);
}

INSTANTIATE_TEST_SUITE_P(All, OneCaptureMode, testing::Values(1, 3, 4));

TEST(EmulationTick, RedrawsTheOpenWindows) {
    const auto bench = Emulating();
    bench->State->Windows.TimingStat = 1;
    bench->State->Windows.StateStat = 1;
    bench->State->Windows.SerialStat = 1;
    bench->State->Windows.CursorDlgStat = 1;
    bench->State->Windows.SpiStat = 1;
    TimerBody(bench->App, 2);
    EXPECT_EQ(bench->Shell.Log,
              (Strings{"redraw Cursor", "redraw Timing", "redraw StateList", "redraw Serial"}));
}

TEST(EmulationTick, DoesNotBeginInsideAnother) {
    const auto bench = Emulating();
    bench->State->Windows.TimingStat = 1;
    Go(bench->App);
    bench->Shell.OnRedraw = [&](WindowId) { TimerBody(bench->App, 2); };
    TimerBody(bench->App, 2);
    EXPECT_EQ(bench->State->Capture.TimerBodies, 1);
    EXPECT_EQ(bench->State->Capture.CaptureCount, 1);
}

TEST(EmulationTick, BeforeAnyModelTouchesNothing) {
    Bench bench;
    TimerBody(bench.App, 2);
    EXPECT_EQ(bench.State->Capture.CaptureCount, 1);
}

TEST(ExitAfterCapture, ClosesTheProgramAfterTheFirstCount) {
    const auto bench = Emulating();
    bench->State->Command.CmdExitAfterCapture = 1;
    Go(bench->App);
    EXPECT_FALSE(bench->Host.Closed);
    OnTimer(bench->App, 2);
    EXPECT_TRUE(bench->Host.Closed);
}

TEST(ExitAfterCapture, NeedsTheSwitchAndACount) {
    const auto bench = Emulating();
    Go(bench->App);
    OnTimer(bench->App, 2);
    EXPECT_FALSE(bench->Host.Closed);
    const auto single = Emulating(1);
    single->State->Command.CmdExitAfterCapture = 1;
    Go(single->App);
    OnTimer(single->App, 2);
    EXPECT_FALSE(single->Host.Closed) << "the count of a single emulated capture is 0";
}

// --- Stop and End --------------------------------------------------------------------------------------

TEST(Stop, KillsTheTimerAndTellsTheCount) {
    const auto bench = Emulating();
    bench->State->Windows.CursorDlgStat = 1;
    Go(bench->App);
    TimerBody(bench->App, 2);
    TimerBody(bench->App, 2);
    bench->Forget();
    Stop(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_EQ(bench->State->Capture.StatusText.View(), "Stop hit (2)");
    EXPECT_EQ(bench->Host.TimerLog, Strings{"kill 2"});
    EXPECT_EQ(bench->Shell.Log, Strings{"redraw Cursor"});
}

TEST(Stop, WhenIdleOnlyWritesItsText) {
    const auto bench = Emulating();
    bench->State->Capture.CaptureCount = 12;
    const CaptureRecord before = bench->State->Capture;
    Stop(bench->App);
    const CaptureRecord& after = bench->State->Capture;
    EXPECT_EQ(after.StatusText.View(), "Stop hit (12)");
    EXPECT_EQ(after.CaptureState, before.CaptureState);
    EXPECT_EQ(after.CaptureCount, before.CaptureCount);
    EXPECT_EQ(after.TimerBodies, before.TimerBodies);
    EXPECT_EQ(after.TrigStat, before.TrigStat);
}

TEST(Stop, LeavesTheTimerOfTheFastLoopAlone) {
    const auto bench = Emulating(0, 1);
    Stop(bench->App);
    EXPECT_TRUE(bench->Host.TimerLog.empty());
    bench->State->Capture.CaptureMode = 2;
    Stop(bench->App);
    EXPECT_EQ(bench->Host.TimerLog, Strings{"kill 2"});
}

TEST(Stop, OfABoardKillsItsOwnTimer) {
    const auto bench = Emulating();
    bench->State->Identity.Emulated = 0;
    bench->State->Capture.CaptureState = 1;
    Stop(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_EQ(bench->Host.TimerLog, Strings{"kill 1"});
}

TEST(End, InEmulationOnlyGoesIdle) {
    const auto bench = Emulating();
    bench->State->Windows.CursorDlgStat = 1;
    Go(bench->App);
    TimerBody(bench->App, 2);
    bench->Forget();
    End(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_EQ(bench->State->Capture.StatusText.View(), "End hit (1)");
    EXPECT_EQ(bench->Shell.Log, Strings{"redraw Cursor"});
    EXPECT_TRUE(bench->Host.TimerLog.empty());
}

// --- Pauses --------------------------------------------------------------------------------------------

TEST(PauseCapture, TogglesARunningCapture) {
    const auto bench = Emulating();
    PauseCapture(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    Go(bench->App);
    bench->Forget();
    PauseCapture(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 2);
    PauseCapture(bench->App);
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
}

TEST(PauseCapture, UsesTheTimerOfTheBoard) {
    const auto bench = Emulating();
    bench->State->Identity.Emulated = 0;
    bench->State->Capture.CaptureState = 1;
    PauseCapture(bench->App);
    EXPECT_EQ(bench->Host.TimerLog, Strings{"kill 1"});
}

TEST(CapturePause, NestsWithoutArmingInBetween) {
    const auto bench = Emulating();
    Go(bench->App);
    bench->Forget();
    {
        const CapturePause outer(bench->App);
        {
            const CapturePause inner(bench->App);
            EXPECT_EQ(bench->State->Capture.CaptureState, 2);
        }
        EXPECT_EQ(bench->State->Capture.CaptureState, 2);
    }
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
    EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
}

TEST(CapturePause, LeavesAnIdleCaptureIdle) {
    const auto bench = Emulating();
    { const CapturePause pause(bench->App); }
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_TRUE(bench->Host.TimerLog.empty());
}

TEST(CapturePause, DoesNotResumeWhatWasStoppedMeanwhile) {
    const auto bench = Emulating();
    Go(bench->App);
    {
        const CapturePause pause(bench->App);
        Stop(bench->App);
    }
    EXPECT_EQ(bench->State->Capture.CaptureState, 0);
    EXPECT_TRUE(bench->Host.Timers.empty());
}

TEST(CapturePause, ResumesOnceOnly) {
    const auto bench = Emulating();
    Go(bench->App);
    CapturePause pause(bench->App);
    pause.Resume();
    pause.Resume();
    EXPECT_EQ(bench->State->Capture.CaptureState, 1);
}

TEST(RunningCapture, GoesOnThroughEverySettingWithOnePause) {
    const auto bench = Emulating();
    MarkAllRates(bench->State->Clock);
    const std::vector<std::function<void()>> changes{
        [&] { SetRate(bench->App, 3); },
        [&] { SetClockType(bench->App, 1); },
        [&] { SetInternalClock(bench->App); },
        [&] { SetMemoryMode(bench->App, -1, 1); },
        [&] { RateDown(bench->App); },
        [&] { SetTrigOut(bench->App, true); },
        [&] { CycleCaptureMode(bench->App); },
        [&] { RunCommand(bench->App, CommandId::LoopNormal); },
        [&] { RunCommand(bench->App, RateCommand(1)); },
    };
    Go(bench->App);
    for (const auto& change : changes) {
        bench->Forget();
        change();
        EXPECT_EQ(bench->State->Capture.CaptureState, 1);
        EXPECT_EQ(bench->Host.TimerLog, (Strings{"kill 2", "start 2 30"}));
        EXPECT_NE(bench->State->Capture.StatusText.View().substr(0, 4), "Stop");
    }
}

// --- Timer period --------------------------------------------------------------------------------------

struct PeriodCase {
    const char* Name;
    int Type, Code;
    std::int32_t Samples;
    std::int32_t Delay;
};

class TimerPeriod : public testing::TestWithParam<PeriodCase> {};

TEST_P(TimerPeriod, Is30AndSetsTheForcingDelay) {
    Bench bench;
    bench.State->Clock.ClockType = static_cast<std::uint8_t>(GetParam().Type);
    bench.State->Clock.ClockRate = static_cast<std::uint8_t>(GetParam().Code);
    bench.State->Memory.BufferLen = GetParam().Samples;
    EXPECT_EQ(GetTimerPeriod(bench.App), 30);
    EXPECT_EQ(bench.State->Capture.ForceDelay, GetParam().Delay);
}

INSTANTIATE_TEST_SUITE_P(
    All, TimerPeriod,
    testing::Values(PeriodCase{"Plain", 0, 5, 131072, 1}, PeriodCase{"External", 1, 5, 131072, 160},
                    PeriodCase{"Qualified", 3, 5, 131072, 160}, PeriodCase{"Latched", 5, 20, 131072, 1},
                    PeriodCase{"Slowest", 0, 34, 8192, 90112}, PeriodCase{"Short", 0, 5, 9999, 1},
                    PeriodCase{"OneMillisecondRate", 0, 25, 131072, 1441},
                    PeriodCase{"SlowestAndDeepest", 0, 34, 4194304, 46137344}),
    [](const auto& test) { return test.param.Name; });

TEST(TimerPeriod, OfTheCommandLineLeavesTheDelayOfAKnownRate) {
    Bench bench;
    bench.State->Command.CmdTimerPeriod = 200;
    bench.State->Memory.BufferLen = 131072;
    bench.State->Capture.ForceDelay = 77;
    EXPECT_EQ(GetTimerPeriod(bench.App), 200);
    EXPECT_EQ(bench.State->Capture.ForceDelay, 77);
    bench.State->Clock.ClockType = 1;
    EXPECT_EQ(GetTimerPeriod(bench.App), 200);
    EXPECT_EQ(bench.State->Capture.ForceDelay, 160);
}

TEST(TimerPeriod, OfTheCommandLineIsTheTimers) {
    const auto bench = Emulating();
    bench->State->Command.CmdTimerPeriod = 100;
    Go(bench->App);
    EXPECT_EQ(bench->Host.TimerLog, Strings{"start 2 100"});
}

// --- Clearing and redrawing ----------------------------------------------------------------------------

TEST(ClearDataBuffer, ZeroesWhatTheBuffersHold) {
    const auto bench = Emulating();
    for (int pod = 0; pod < 20; ++pod) {
        const auto samples = bench->State->Buffer.Samples(pod);
        samples.front() = samples.back() = 0xFF;
    }
    SetMemoryMode(bench->App, -1, 0);
    ClearDataBuffer(bench->App);
    for (std::size_t pod = 0; pod < 20; ++pod) {
        EXPECT_EQ(bench->State->Buffer.Pod[pod][0], 0);
        EXPECT_EQ(bench->State->Buffer.Pod[pod][524287], 0xFF) << "beyond the length nothing is touched";
    }
}

TEST(ClearDataBuffer, ZeroesTheDecodersOfOpenWindows) {
    const auto bench = Emulating();
    SerialRecord& serial = bench->State->Serial;
    const auto mark = [&] {
        serial.SpiSI[1][5] = 7;
        serial.SpiSO[2][5] = 7;
        serial.SerialEvents[5] = 7;
    };
    mark();
    serial.SerialMode = 1;
    ClearDataBuffer(bench->App);
    EXPECT_EQ(serial.SpiSI[1][5], 7);
    EXPECT_EQ(serial.SerialEvents[5], 7);
    bench->State->Windows.SpiStat = 1;
    ClearDataBuffer(bench->App);
    EXPECT_EQ(serial.SpiSI[1][5], 0);
    EXPECT_EQ(serial.SpiSO[2][5], 0);
    EXPECT_EQ(serial.SerialEvents[5], 7);
    bench->State->Windows.SerialStat = 1;
    serial.SerialMode = 0;
    ClearDataBuffer(bench->App);
    EXPECT_EQ(serial.SerialEvents[5], 7) << "no serial group";
    serial.SerialMode = 2;
    ClearDataBuffer(bench->App);
    EXPECT_EQ(serial.SerialEvents[5], 0);
}

TEST(RefreshAll, RedrawsEachOpenWindow) {
    Bench bench;
    RefreshAll(bench.App);
    EXPECT_TRUE(bench.Shell.Log.empty());
    WindowRecord& windows = bench.State->Windows;
    windows.TimingStat = windows.StateStat = windows.SerialStat = windows.SpiStat = 1;
    windows.CursorDlgStat = windows.ThresholdStat = windows.PatEditStat = 1;
    RefreshAll(bench.App);
    EXPECT_EQ(bench.Shell.Log, (Strings{"redraw Timing", "redraw StateList", "redraw Serial", "redraw Cursor",
                                        "redraw Threshold", "redraw Spi"}));
}

}  // namespace
}  // namespace zu
