// Whole captures: the run loop, the code that drives the instrument, and the simulated instrument behind
// every cable. What stands in the buffers is what the signals did, aligned at the trigger.
#include <gtest/gtest.h>

#include "core/Capture.h"
#include "core/CommandLine.h"
#include "core/Commands.h"
#include "core/Frame.h"
#include "core/RateRules.h"
#include "core/Startup.h"
#include "hw/Attachment.h"
#include "state/Catalogue.h"
#include "state/SampleView.h"
#include "support/Bench.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::Bench;

constexpr std::int64_t kStepTicks = 1000;  // 100 ns

/// Every pod counts upwards every 100 ns, each from a start of its own.
class Counters final : public SimStimulus {
  public:
    static std::uint8_t Value(int pod, SimTicks time) {
        return static_cast<std::uint8_t>(FloorDiv(time, kStepTicks) + 7 * pod);
    }
    SimRun At(int pod, SimTicks time) override {
        return {Value(pod, time), (FloorDiv(time, kStepTicks) + 1) * kStepTicks};
    }
};

/// A base of its own, so that it outlives the session.
struct Attached {
    Attachment Cable;
};

/// A program that came up on a simulated instrument with counters at its pods; own time, so that runs repeat.
struct LiveProgram : Attached, Bench {
    explicit LiveProgram(const std::string& simulate) : Attached{Attachment(simulate)} {
        const auto end = ParseCommandLine(std::vector<std::string>{"zu", "--simulate=" + simulate},
                                          State->Files.AppDir, State->Command);
        EXPECT_FALSE(end);
        Cable.Simulated()->SetRealTime(false);
        Cable.Simulated()->Connect(std::make_shared<Counters>());
        Cable.AttachTo(Hardware);
        CreateFrame(App);
        RunStartupSequence(App);
        State->Capture.CaptureLoopMode = 0;
        State->Capture.CaptureMode = 1;
        Host.TimerLog.clear();
    }

    /// Word 0 asks for a value of pod 0.
    void TriggerOn(int value) {
        for (int bit = 0; bit < 8; ++bit) {
            SetCharOfChannel(*State, bit, 0, (value >> bit & 1) != 0 ? '1' : '0');
        }
        State->Trigger.SeqList.fill(0);
        State->Trigger.SeqList[0] = 1;
        State->Trigger.EdgeList16[0] = 0;
        State->Trigger.TrigMatchMode[0] = 1;
        State->Trigger.TrigCntMd = 3;
    }
    /// Ticks until the capture is complete; -1 if it never is.
    int RunToEnd() {
        Go(App);
        for (int tick = 0; tick < 2000; ++tick) {
            if (State->Capture.CaptureState == 0) return tick;
            TimerBody(App, kHardwareTimer);
            Cable.Simulated()->Advance(30e6);
        }
        return -1;
    }
    int Sample(int pod, std::int64_t i) const { return BindPod(*State, pod).At(i); }
    std::int64_t Trigger() const { return State->Cursors.Cur[4]; }
};

/// Holds every displayed sample of every pod against a counter that steps every `perStep` samples, the
/// trigger at its cursor.
void ExpectCounters(LiveProgram& program, int value, int perStep) {
    const std::int64_t at = program.Trigger();
    EXPECT_EQ(program.Sample(0, at), value);
    EXPECT_EQ(program.Sample(0, at - 1), (value - 1) & 0xFF);
    const int pods = program.State->Shape.TotalChannels / 8;
    int wrong = 0;
    for (int pod = 0; pod < pods; ++pod) {
        const SampleView view = BindPod(*program.State, pod);
        for (std::int64_t i = 0; i < view.Stored && wrong < 5; ++i) {
            const auto expected = static_cast<std::uint8_t>(value + 7 * pod + FloorDiv(i - at, perStep));
            if (view.At(i) == expected) continue;
            ++wrong;
            ADD_FAILURE() << "pod " << pod << " sample " << i << " is " << int{view.At(i)} << ", not "
                          << int{expected};
        }
    }
}

TEST(LiveCapture, ShowsWhatTheSignalsDidOnEveryModelAndCable) {
    for (const int row : {1, 2, 3, 4, 5, 11, 12, 13, 14, 15}) {
        for (const char* cable : {"usb", "isa", "byte", "epp", "epp32"}) {
            const std::string name = std::string(Model(row).ShortName) + "@" + cable;
            SCOPED_TRACE(name);
            LiveProgram program(name);
            ASSERT_EQ(program.State->Identity.Emulated, 0);
            SetRate(program.App, 8);  // 100 ns
            program.TriggerOn(0x40);
            ASSERT_GE(program.RunToEnd(), 0) << program.State->Capture.StatusText.View();
            EXPECT_EQ(program.State->Capture.StatusText.View(), "Triggered 1");
            const double period = GetRateNS(0, program.State->Clock.ClockRate);
            ExpectCounters(program, 0x40, static_cast<int>(100 / period));
        }
    }
}

TEST(LiveCapture, ComesTwiceInARowTheSame) {
    LiveProgram program("Roach160L@usb");
    SetRate(program.App, 5);
    program.TriggerOn(0x40);
    for (int round = 0; round < 3; ++round) {
        ASSERT_GE(program.RunToEnd(), 0);
        ExpectCounters(program, 0x40, 10);
    }
}

TEST(LiveCapture, FollowsTheTriggerCursor) {
    for (const int at : {0, 1, 10, 100, 4000, 8000}) {
        SCOPED_TRACE(at);
        LiveProgram program("Roach160L@usb");
        SetRate(program.App, 5);
        program.TriggerOn(0xA5);
        program.State->Cursors.Cur[4] = at;
        ASSERT_GE(program.RunToEnd(), 0);
        if (at == 0) continue;  // the sample ahead of it is not shown
        ExpectCounters(program, 0xA5, 10);
    }
}

TEST(LiveCapture, RunsOnInNormalModeUntilStop) {
    LiveProgram program("Roach40L@usb");
    program.State->Capture.CaptureMode = 0;
    SetRate(program.App, 5);
    program.TriggerOn(1);
    Go(program.App);
    for (int tick = 0; tick < 200 && program.State->Capture.CaptureCount < 3; ++tick) {
        TimerBody(program.App, kHardwareTimer);
        program.Cable.Simulated()->Advance(30e6);
    }
    EXPECT_EQ(program.State->Capture.CaptureCount, 3);
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    Stop(program.App);
    EXPECT_EQ(program.State->Capture.CaptureState, 0);
    EXPECT_EQ(program.Cable.Simulated()->SampleClock().Source, SimClockSource::Stopped);
}

TEST(LiveCapture, IsForcedInAutoWhenNothingComes) {
    LiveProgram program("Roach40L@usb");
    program.State->Capture.CaptureMode = 2;
    SetRate(program.App, 5);
    program.TriggerOn(1);
    SetCharOfChannel(*program.State, 0, 0, '0');
    SetCharOfChannel(*program.State, 8, 0, '1');
    for (int bit = 1; bit < 8; ++bit) SetCharOfChannel(*program.State, 8 + bit, 0, '1');
    for (int bit = 0; bit < 8; ++bit) SetCharOfChannel(*program.State, bit, 0, '1');  // both 0xFF: never
    Go(program.App);
    int ticks = 0;
    while (program.State->Capture.CaptureCount == 0 && ++ticks < 50) {
        TimerBody(program.App, kHardwareTimer);
        program.Cable.Simulated()->Advance(30e6);
    }
    EXPECT_EQ(program.State->Capture.CaptureCount, 1);
    EXPECT_LT(ticks, 10);
    Stop(program.App);
}

TEST(LiveCapture, EndShowsWhatTheMemoryHolds) {
    LiveProgram program("Roach160L@usb");
    SetRate(program.App, 5);
    program.TriggerOn(0x40);
    for (int bit = 0; bit < 8; ++bit) SetCharOfChannel(*program.State, 8 + bit, 0, '0');  // never together
    Go(program.App);
    TimerBody(program.App, kHardwareTimer);
    EXPECT_EQ(program.State->Capture.StatusText.View(), "Not triggered");
    End(program.App);
    EXPECT_EQ(program.State->Capture.CaptureState, 0);
    const int first = program.Sample(0, 100);
    for (int i = 101; i < 400; ++i) {
        const int step = (program.Sample(0, i) - program.Sample(0, i - 1)) & 0xFF;
        EXPECT_LE(step, 1);
    }
    EXPECT_EQ((program.Sample(0, 400) - first) & 0xFF, 30);
}

}  // namespace
}  // namespace zu
