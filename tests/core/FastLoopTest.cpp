// The fast loop in emulation: what it polls, what it runs in between, what ends it and leads to it.
#include <deque>
#include <functional>
#include <gtest/gtest.h>

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

/// A host whose message queue holds actions; an empty queue is idle.
class QueuedHost : public test::ScriptedHost {
  public:
    std::deque<std::function<Turn()>> Queue;
    std::function<void()> OnIdle;

    Turn RunWaitingMessage() override {
        if (Queue.empty()) {
            if (OnIdle) OnIdle();
            return Turn::Idle;
        }
        const auto message = Queue.front();
        Queue.pop_front();
        return message();
    }
};

struct FastBench {
    explicit FastBench(int mode) {
        ChangeModel(*Base.State, 15);
        Base.State->Capture.CaptureMode = static_cast<std::uint8_t>(mode);
        Base.State->Capture.CaptureLoopMode = 1;
    }
    Bench Base;
    QueuedHost Host;
    zu::App App{*Base.State, Host, Base.Shell, Base.Hardware};

    CaptureRecord& Capture() { return Base.State->Capture; }
    /// Stops the loop after so many idle turns.
    void StopAfter(int turns) {
        Host.OnIdle = [this, turns, seen = 0]() mutable {
            if (++seen > turns) Stop(App);
        };
    }
};

TEST(FastLoop, PollsWithoutATimerUntilItIsStopped) {
    FastBench bench(0);
    bench.StopAfter(5);
    Go(bench.App);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_EQ(bench.Capture().CaptureCount, 5) << "the turn that stopped it polls no more";
    EXPECT_EQ(bench.Capture().StatusText.View(), "Stop hit (5)");
    EXPECT_TRUE(bench.Host.TimerLog.empty());
    EXPECT_FALSE(bench.App.Poll.FastLoopActive);
}

TEST(FastLoop, OfASingleCaptureEndsAfterOnePoll) {
    FastBench bench(1);
    Go(bench.App);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_EQ(bench.Capture().TimerBodies, 1);
    EXPECT_EQ(bench.Capture().StatusText.View(), "Triggered 0");
}

TEST(FastLoop, RunsWaitingMessagesBeforeItPolls) {
    FastBench bench(0);
    bench.Host.Queue.push_back([&] {
        EXPECT_EQ(bench.Capture().TimerBodies, 0);
        return Host::Turn::Handled;
    });
    bench.Host.Queue.push_back([&] {
        Stop(bench.App);
        return Host::Turn::Handled;
    });
    Go(bench.App);
    EXPECT_EQ(bench.Capture().TimerBodies, 0);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
}

TEST(FastLoop, EndsWithTheQuitMessage) {
    FastBench bench(0);
    bench.Host.Queue.push_back([] { return Host::Turn::Quit; });
    Go(bench.App);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_EQ(bench.Capture().StatusText.View(), "Go hit");
}

TEST(FastLoop, ThatIsSwitchedToAutoGoesOnByTimer) {
    FastBench bench(0);
    bench.Host.Queue.push_back([&] {
        SetCaptureMode(bench.App, 2);
        return Host::Turn::Handled;
    });
    Go(bench.App);
    EXPECT_EQ(bench.Capture().CaptureState, 1);
    EXPECT_EQ(bench.Capture().StatusText.View(), "Go hit");
    EXPECT_EQ(bench.Host.Timers.count(2), 1U);
    EXPECT_FALSE(bench.App.Poll.FastLoopActive);
}

TEST(FastLoop, DoesNotCloseTheProgramAfterACapture) {
    FastBench bench(0);
    bench.Base.State->Command.CmdExitAfterCapture = 1;
    bench.StopAfter(3);
    Go(bench.App);
    EXPECT_FALSE(bench.Host.Closed);
}

TEST(FastLoop, ReturnsAtOnceWhenIdle) {
    FastBench bench(0);
    FastLoop(bench.App, 2);
    EXPECT_EQ(bench.Capture().TimerBodies, 0);
}

TEST(FastLoop, KeepsOnPollingAfterAChangeOfASetting) {
    FastBench bench(0);
    bench.Host.Queue.push_back([&] {
        SetRate(bench.App, 8);
        EXPECT_EQ(bench.Capture().CaptureState, 1);
        return Host::Turn::Handled;
    });
    bench.StopAfter(2);
    Go(bench.App);
    EXPECT_EQ(bench.Capture().CaptureCount, 2);
    EXPECT_TRUE(bench.Host.Timers.empty());
}

TEST(TriggerLoop, SwitchedToFasterWhileRunningPollsByTheFastLoop) {
    FastBench bench(0);
    bench.Capture().CaptureLoopMode = 0;
    Go(bench.App);
    bench.StopAfter(4);
    RunCommand(bench.App, CommandId::LoopFaster);
    EXPECT_EQ(bench.Capture().CaptureCount, 4);
    EXPECT_EQ(bench.Capture().CaptureState, 0);
    EXPECT_TRUE(bench.Host.Timers.empty());
}

TEST(TriggerLoop, SwitchedWhenIdleLeavesNoTimerBehind) {
    FastBench bench(1);
    bench.Capture().CaptureLoopMode = 0;
    Go(bench.App);
    OnTimer(bench.App, 2);
    ASSERT_EQ(bench.Host.Timers.count(2), 1U);
    RunCommand(bench.App, CommandId::LoopFaster);
    EXPECT_TRUE(bench.Host.Timers.empty());
}

}  // namespace
}  // namespace zu
