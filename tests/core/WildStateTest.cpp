// Commands on states that no menu can make: a file may hold any number.
#include <gtest/gtest.h>
#include <random>

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/MemoryMenu.h"
#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

class WildNumbers {
  public:
    explicit WildNumbers(unsigned seed) : random_(seed) {}

    /// Below `count`.
    unsigned Below(unsigned count) { return static_cast<unsigned>(random_() % count); }

    template <typename Int>
    void Set(Int& field) {
        constexpr std::int64_t kEdges[] = {0, 1, -1, 2, 127, -128, 255, 32767, 65535, INT32_MAX, INT32_MIN};
        const std::int64_t value =
            Below(2) == 0 ? kEdges[Below(std::size(kEdges))] : static_cast<std::int64_t>(random_());
        field = static_cast<Int>(value);
    }
    template <typename Array>
    void SetEach(Array& fields) {
        for (auto& field : fields) Set(field);
    }

  private:
    std::mt19937 random_;
};

/// All that the commands here read, but for what a file cannot reach: shape, lengths and the room for
/// samples.
void MakeWild(InstrumentState& state, WildNumbers& wild) {
    wild.Set(state.Clock.ClockType);
    wild.Set(state.Clock.ClockRate);
    wild.Set(state.Memory.HardwareMode);
    wild.Set(state.Memory.HardwareMux);
    wild.SetEach(state.Pods.HardwarePod);
    wild.SetEach(state.Pods.AdjAddr);
    wild.Set(state.Capture.CaptureMode);
    wild.Set(state.Capture.ClearBufferOnGo);
    wild.Set(state.Trigger.TrigOut);
    wild.SetEach(state.Cursors.Cur);
    wild.Set(state.Timing.ScreenZoom);
    wild.Set(state.Timing.TimingDataPos);
    wild.Set(state.Timing.TimingChPos);
    wild.SetEach(state.StateList.ScreenL);
    wild.SetEach(state.StateList.ScreenF);
    wild.Set(state.Serial.SerialMode);
    wild.Set(state.Serial.SerialGroup);
    wild.Set(state.Windows.SerialStat);
    wild.Set(state.Windows.SpiStat);
    for (GroupRecord& group : state.Groups) {
        wild.Set(group.Size);
        wild.Set(group.Mode);
        wild.Set(group.Channels[0]);
    }
}

/// A fast loop would wait for a user who is not there.
bool NeverEnds(CommandId id) {
    return id == CommandId::LoopFaster;
}

void AskEveryCommand(const Bench& bench) {
    for (std::size_t i = 0; i <= kCommandCount; ++i) QueryCommand(bench.App, static_cast<CommandId>(i));
    StatusMemoryText(*bench.State);
    BoardStatusText(*bench.State);
    AboutText(*bench.State);
    CaptureModeText(bench.State->Capture.CaptureMode);
    EXPECT_GE(GetRateNS(bench.State->Clock.ClockType, bench.State->Clock.ClockRate), 0);
    EXPECT_LE(DisplayChannelCount(*bench.State), bench.State->Shape.TotalChannels);
}

class WildState : public testing::TestWithParam<unsigned> {};

TEST_P(WildState, NoCommandLeavesTheBuffers) {
    constexpr int kSteps = 300;
    Bench bench;
    WildNumbers wild(GetParam());
    bench.UseRow(15);
    for (int step = 0; step < kSteps; ++step) {
        if (step % 50 == 0) bench.UseRow(static_cast<int>(wild.Below(28)));
        MakeWild(*bench.State, wild);
        AskEveryCommand(bench);
        PrepareMenu(bench.App);
        const auto id = static_cast<CommandId>(wild.Below(kCommandCount));
        if (!NeverEnds(id)) RunCommand(bench.App, id);
        TimerBody(bench.App, kEmulationTimer);
        ComputeGroupWidths(*bench.State);
        for (int i = 0; i < kMaxPods; ++i) {
            const std::int32_t length = GetBufLenFull(bench.State->Buffer.BufLen, i);
            ASSERT_GE(length, 0) << Traits(id).Text;
            ASSERT_LE(static_cast<std::size_t>(length), bench.State->Buffer.Room(i)) << Traits(id).Text;
        }
        bench.Forget();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WildState, testing::Range(1U, 9U));

TEST(WildRate, CountsAs10NanosecondsAndStepsUpIntoTheTable) {
    Bench bench;
    bench.UseRow(15);
    for (const int code : {35, 200, 255}) {
        bench.State->Clock.ClockRate = static_cast<std::uint8_t>(code);
        EXPECT_EQ(GetRateNS(0, code), 10);
        EXPECT_EQ(RateStatusText(0, code), "");
        RateDown(bench.App);
        EXPECT_EQ(bench.State->Clock.ClockRate, code) << "nothing lies beyond";
        RateUp(bench.App);
        EXPECT_EQ(bench.State->Clock.ClockRate, 34);
    }
}

}  // namespace
}  // namespace zu
