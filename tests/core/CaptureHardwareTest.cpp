// The run loop with an instrument whose status answers are scripted: order of steps, texts, timers, failures.
#include <deque>
#include <gtest/gtest.h>

#include "core/Capture.h"
#include "core/Commands.h"
#include "state/Rates.h"
#include "support/Bench.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

constexpr std::uint8_t kFilling = 0x10;
constexpr std::uint8_t kWaiting = 0x00;
constexpr std::uint8_t kComplete = 0x50;

/// Registers that swallow what is written and answer the status register from a list, then with its last
/// entry. Counts what the loop sets off.
class StatusOps : public RegisterOps {
  public:
    std::deque<std::uint8_t> Answers{kWaiting};
    int Reads = 0;
    int Blocks = 0;
    std::vector<std::pair<std::uint16_t, std::uint8_t>> Writes;
    std::uint16_t StatusPort = 0;

    void RegWrite(std::uint16_t, std::uint16_t port, std::uint8_t value) override {
        Writes.emplace_back(port, value);
    }
    std::uint8_t RegRead(std::uint16_t, std::uint16_t port) override {
        if (port != StatusPort) return 0;
        ++Reads;
        const std::uint8_t answer = Answers.front();
        if (Answers.size() > 1) Answers.pop_front();
        return answer;
    }
    void RegReadBlock(std::uint16_t, std::uint16_t, std::int32_t count, std::uint8_t* buffer) override {
        if (count < 1) return;
        ++Blocks;
        std::fill_n(buffer, count, std::uint8_t{0x5A});
    }
};

/// A program on a connected instrument of the newest kind.
struct BoardBench : Bench {
    explicit BoardBench(int mode = 0, int loop = 0) {
        UseRow(15);
        State->Identity.Emulated = 0;
        State->Identity.ComMode = 8;
        State->Windows.CursorDlgStat = 1;
        State->Windows.TimingStat = 1;
        Capture().CaptureMode = static_cast<std::uint8_t>(mode);
        Capture().CaptureLoopMode = static_cast<std::uint8_t>(loop);
        for (int board = 0; board < kMaxBoards; ++board) {
            SetBoardBase(Hardware.Ports, board, static_cast<std::uint16_t>(0x210 + board * kBoardSpacing));
        }
        Ops.StatusPort = Hardware.Ports.At(1, 0);
        Hardware.Ops = &Ops;
        Capture().ClearBufferOnGo = 0;
        SetCharOfChannel(*State, 0, 0, '1');
        State->Trigger.SeqList[0] = 1;
    }
    CaptureRecord& Capture() { return State->Capture; }
    std::string Status() { return std::string(Capture().StatusText.View()); }
    /// What the status register says from the next poll on. Arming polls once itself.
    void Answer(std::initializer_list<std::uint8_t> answers) { Ops.Answers = answers; }
    void Tick() { TimerBody(App, kHardwareTimer); }

    StatusOps Ops;
};

TEST(HardwareGo, StartsItsTimerBeforeItArms) {
    BoardBench bench;
    Go(bench.App);
    EXPECT_EQ(bench.Host.TimerLog, Strings{"start 1 30"});
    EXPECT_GT(bench.Ops.Writes.size(), 1000U) << "trigger memory was written";
    EXPECT_EQ(bench.Capture().CaptureState, 1);
    EXPECT_EQ(bench.Status(), "Go hit");
    EXPECT_EQ(bench.State->Pods.ReprogramFlag & 4, 0) << "arming has sent the thresholds";
}

TEST(HardwareGo, WithTheOldCaptureCompletePollsAtOnceAndKeepsTheForceDelay) {
    BoardBench bench;
    bench.Capture().ForceDelay = 77;
    bench.Answer({kComplete});
    Go(bench.App);
    EXPECT_EQ(bench.Host.TimerLog, Strings{"start 1 0"});
    EXPECT_EQ(bench.Capture().ForceDelay, 77);
}

TEST(HardwareGo, WhileRunningStopsTheClockAndArmsAgain) {
    BoardBench bench;
    Go(bench.App);
    bench.Forget();
    Go(bench.App);
    EXPECT_EQ(bench.Host.TimerLog, (Strings{"kill 1", "start 1 30"}));
    EXPECT_EQ(bench.Capture().CaptureState, 1);
}

TEST(HardwareGo, ThatCannotArmStopsAndSaysGoHit) {
    BoardBench bench;
    bench.State->Pods.HardwarePod[2] = 1;
    bench.State->Pattern.PatternOutputMode = 0;
    bench.State->Clock.ClockRate = 9;
    bench.Host.Answers.assign(8, false);  // the pattern question is answered with a stop
    Go(bench.App);
    if (bench.Host.Boxes.empty()) GTEST_FAIL() << "the question did not come";
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_EQ(bench.Host.Timers.count(kHardwareTimer), 0U);
    EXPECT_EQ(bench.Status(), "Go hit");
}

TEST(HardwarePoll, TellsOfWaiting) {
    BoardBench bench;
    Go(bench.App);
    bench.Answer({kWaiting});
    bench.Tick();
    EXPECT_EQ(bench.Status(), "Not triggered");
    EXPECT_EQ(bench.Capture().TrigStat, 2);
    bench.Capture().CaptureCount = 4;
    bench.Tick();
    EXPECT_EQ(bench.Status(), "Triggered 4 \nWaiting for next trigger");
    EXPECT_EQ(bench.Capture().TicksSinceGo, 2);
    EXPECT_EQ(bench.Capture().TimerBodies, 2);
}

TEST(HardwarePoll, TellsOfFilling) {
    BoardBench bench;
    Go(bench.App);
    bench.Answer({kFilling});
    for (const auto& [count, text] :
         {std::pair{0, "Trig/Fill buf(0 captures)"}, std::pair{1, "Trig/Fill buf(1 capture)"},
          std::pair{2, "Trig/Fill buf(2 captures)"}}) {
        bench.Capture().CaptureCount = count;
        bench.Tick();
        EXPECT_EQ(bench.Status(), text);
    }
    EXPECT_EQ(bench.Capture().TicksSinceGo, 3);
    EXPECT_EQ(bench.Capture().TrigStat, 1);
}

TEST(HardwarePoll, RedrawsTheCursorWindowAlone) {
    BoardBench bench;
    Go(bench.App);
    bench.Forget();
    bench.Answer({kWaiting});
    bench.Tick();
    EXPECT_EQ(bench.Shell.Log, Strings{"redraw Cursor"});
}

TEST(HardwarePoll, StopsWhenTheWordsCanNeverMatch) {
    BoardBench bench;
    Go(bench.App);
    bench.State->Trigger.SeqList[1] = 2;  // word 1 asks for nothing, word 0 does
    bench.Answer({kWaiting});
    bench.Tick();
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_EQ(bench.Status(), "Trig word can't be all X");
    EXPECT_EQ(bench.Host.Timers.count(kHardwareTimer), 0U);
}

TEST(HardwareReadOut, OfASingleCaptureEndsIdleWithCountOne) {
    for (const int mode : {1, 3, 4}) {
        BoardBench bench(mode);
        bench.State->Pods.HardwarePod[4] = 1;
        Go(bench.App);
        bench.State->Pods.AdjAddr[4] = 9;
        bench.Capture().TicksSinceGo = 5;
        bench.Forget();
        bench.Answer({kComplete});
        bench.Tick();
        EXPECT_EQ(bench.Capture().CaptureState, 0) << mode;
        EXPECT_EQ(bench.Capture().CaptureCount, 1) << mode;
        EXPECT_EQ(bench.Capture().TicksSinceGo, 0) << mode;
        EXPECT_EQ(bench.Status(), "Triggered 1") << mode;
        EXPECT_EQ(bench.Host.TimerLog, Strings{"kill 1"}) << mode;
        EXPECT_EQ(bench.State->Buffer.Samples(0)[1000], 0x5A) << mode;
        EXPECT_EQ(bench.State->Pods.AdjAddr[4], 0) << mode;
        EXPECT_EQ(bench.Shell.Log, (Strings{"redraw Timing", "redraw Cursor"})) << mode;
    }
}

TEST(HardwareReadOut, OfARepeatingCaptureArmsAgain) {
    for (const int mode : {0, 2}) {
        BoardBench bench(mode);
        Go(bench.App);
        bench.Forget();
        bench.Answer({kComplete, kWaiting});
        const std::size_t writes = bench.Ops.Writes.size();
        bench.Tick();
        EXPECT_EQ(bench.Capture().CaptureState, 1);
        EXPECT_EQ(bench.Capture().CaptureCount, 1);
        EXPECT_EQ(bench.Capture().TrigStat, 0);
        EXPECT_EQ(bench.Host.TimerLog, (Strings{"kill 1", "start 1 30"}));
        EXPECT_GT(bench.Ops.Writes.size(), writes + 100);
        bench.Answer({kComplete, kWaiting});
        bench.Tick();
        EXPECT_EQ(bench.Capture().CaptureCount, 2);
        EXPECT_EQ(bench.Status(), "Triggered 2");
    }
}

TEST(HardwareReadOut, RedrawsEveryOpenViewInItsOrder) {
    BoardBench bench(1);
    WindowRecord& windows = bench.State->Windows;
    windows.StateStat = windows.SerialStat = windows.SpiStat = windows.ThresholdStat = 1;
    Go(bench.App);
    bench.Forget();
    bench.Answer({kComplete});
    bench.Tick();
    EXPECT_EQ(bench.Shell.Log,
              (Strings{"redraw Timing", "redraw StateList", "redraw Serial", "redraw Spi", "redraw Cursor"}));
}

/// Traffic of an earlier capture, which a decoder takes away.
void PutOldTraffic(InstrumentState& state) {
    state.Groups[0].Mode = 1;
    state.Groups[1].Mode = 3;
    state.Groups[1].Size = 4;
    state.Serial.SerialMode = 1;
    state.Serial.SerialEvents[5] = 7;
    state.Serial.SpiFirst = 99;
}

TEST(HardwareReadOut, DecodesSpiAlwaysAndTheSerialGroupForItsWindow) {
    for (const int open : {0, 1}) {
        BoardBench bench(1);
        bench.State->Windows.SerialStat = open;
        Go(bench.App);
        PutOldTraffic(*bench.State);
        bench.Answer({kComplete});
        bench.Tick();
        EXPECT_NE(bench.State->Serial.SpiFirst, 99);
        EXPECT_EQ(bench.State->Serial.SerialEvents[5] == 7, open == 0);
    }
}

TEST(HardwareEnd, DecodesTheSerialGroupForItsWindow) {
    for (const int open : {0, 1}) {
        BoardBench bench(1);
        bench.State->Windows.SerialStat = open;
        Go(bench.App);
        PutOldTraffic(*bench.State);
        End(bench.App);
        EXPECT_EQ(bench.State->Serial.SerialEvents[5] == 7, open == 0);
    }
}

TEST(HardwareAuto, ForcesOnEveryTickBehindTheDelay) {
    BoardBench bench(2);
    Go(bench.App);
    bench.Capture().ForceDelay = 1;
    bench.Answer({kWaiting});
    bench.Tick();
    bench.Tick();
    const std::size_t polled = bench.Ops.Writes.size();
    bench.Tick();  // the third tick finds two waited
    const std::size_t forced = bench.Ops.Writes.size() - polled;
    bench.Tick();
    EXPECT_EQ(bench.Ops.Writes.size() - polled, 2 * forced) << "and again";
    BoardBench calm(2);
    Go(calm.App);
    calm.Capture().ForceDelay = 100;
    calm.Answer({kWaiting});
    const std::size_t before = calm.Ops.Writes.size();
    calm.Tick();
    EXPECT_LT(calm.Ops.Writes.size() - before, forced);
}

TEST(HardwareAuto, OfTheLargeMemoryAt100MHzForcesAfterTheSecondTick) {
    BoardBench bench(2);
    bench.State->Clock.ClockRate = 5;
    bench.State->Memory.BufferLen = 131072;
    Go(bench.App);
    EXPECT_EQ(bench.Capture().ForceDelay, 1) << "1310720 ns";
    bench.Answer({kWaiting});
    const std::uint16_t control = bench.Hardware.Ports.At(3, 0);
    std::vector<int> forces;
    for (int tick = 0; tick < 4; ++tick) {
        bench.Ops.Writes.clear();
        bench.Tick();
        forces.push_back(static_cast<int>(
            std::count_if(bench.Ops.Writes.begin(), bench.Ops.Writes.end(), [control](const auto& write) {
                return write.first == control && (write.second & 0x60) == 0x40;
            })));
    }
    EXPECT_EQ(forces, (std::vector<int>{0, 0, 1, 1}));
}

TEST(HardwareStop, HoldsTheClockAlsoWhenIdle) {
    BoardBench bench;
    Stop(bench.App);
    EXPECT_FALSE(bench.Ops.Writes.empty());
    EXPECT_EQ(bench.Host.TimerLog, Strings{"kill 1"});
    EXPECT_EQ(bench.Status(), "Stop hit (0)");
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

TEST(HardwareEnd, ForcesFillsAndReadsWhateverTheClock) {
    BoardBench bench;
    bench.State->Clock.ClockRate = 20;
    bench.State->Clock.ClockType = 1;
    bench.Capture().CaptureCount = 3;
    bench.State->Pods.HardwarePod[1] = 2;
    bench.State->Pods.AdjAddr[1] = 12;
    Go(bench.App);
    bench.Capture().CaptureCount = 3;
    bench.Forget();
    const std::uint32_t before = bench.Host.Ticks;
    End(bench.App);
    EXPECT_GE(bench.Host.Ticks - before, 16U);
    EXPECT_EQ(bench.State->Clock.ClockRate, 20);
    EXPECT_EQ(bench.State->Clock.ClockType, 1);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_EQ(bench.Capture().CaptureCount, 0);
    EXPECT_EQ(bench.Status(), "End hit (3)");
    EXPECT_EQ(bench.Host.TimerLog, Strings{"kill 1"});
    EXPECT_GT(bench.Ops.Blocks, 0);
    EXPECT_EQ(bench.State->Pods.AdjAddr[1], 0);
    EXPECT_EQ(bench.Shell.Log, (Strings{"redraw Cursor", "redraw Timing", "redraw Cursor"}));
}

TEST(HardwarePause, DropsTheCaptureAndArmsItAgain) {
    BoardBench bench;
    Go(bench.App);
    bench.Forget();
    const std::size_t writes = bench.Ops.Writes.size();
    PauseCapture(bench.App);
    EXPECT_EQ(bench.Capture().CaptureState, 2);
    EXPECT_EQ(bench.Ops.Writes.size(), writes);
    PauseCapture(bench.App);
    EXPECT_EQ(bench.Capture().CaptureState, 1);
    EXPECT_EQ(bench.Host.TimerLog, (Strings{"kill 1", "start 1 30"}));
    EXPECT_GT(bench.Ops.Writes.size(), writes + 100);
}

/// A shell whose redraw of the Timing window polls, as a box's own message loop does.
TEST(HardwarePoll, DoesNotBeginInsideAnother) {
    BoardBench bench(0);
    Go(bench.App);
    bench.Answer({kComplete, kWaiting});
    bench.Shell.OnRedraw = [&](WindowId) { bench.Tick(); };
    bench.Tick();
    EXPECT_EQ(bench.Capture().TimerBodies, 1);
    EXPECT_EQ(bench.App.Poll.BusyDepth, 0);
}

TEST(HardwareTimer, ClosesTheProgramAfterTheFirstReadOutIfAskedTo) {
    BoardBench bench(0);
    bench.State->Command.CmdExitAfterCapture = 1;
    Go(bench.App);
    bench.Answer({kWaiting});
    OnTimer(bench.App, kHardwareTimer);
    EXPECT_FALSE(bench.Host.Closed);
    bench.Answer({kComplete, kWaiting});
    OnTimer(bench.App, kHardwareTimer);
    EXPECT_TRUE(bench.Host.Closed);
}

TEST(HardwareFastLoop, ReadsASingleCaptureWithoutATimer) {
    BoardBench bench(1, 1);
    bench.Answer({kWaiting, kWaiting, kWaiting, kFilling, kComplete});
    Go(bench.App);
    EXPECT_EQ(bench.Capture().CaptureCount, 1);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_TRUE(bench.Host.TimerLog.empty());
    EXPECT_FALSE(bench.App.Poll.FastLoopActive);
}

}  // namespace
}  // namespace zu
