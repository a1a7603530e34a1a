// States that no dialog can make arm, capture and end without a wild access: a file may bring any number.
#include <gtest/gtest.h>
#include <random>

#include "LiveBench.h"
#include "core/CaptureSteps.h"

namespace zu {
namespace {

using test::LiveBench;

constexpr int kRows[] = {1, 2, 3, 4, 5, 11, 12, 13, 14, 15};

class AnyNumbers {
  public:
    explicit AnyNumbers(unsigned seed) : random_(seed) {}
    unsigned Below(unsigned count) { return static_cast<unsigned>(random_() % count); }

    template <typename Int>
    void Set(Int& field) {
        constexpr std::int64_t kEdges[] = {0,  1,   2,   3,   4,    15,   16,     17,        -1,       34,
                                           35, 127, 128, 255, -128, 8189, 262143, INT32_MAX, INT32_MIN};
        const std::int64_t value =
            Below(3) != 0 ? kEdges[Below(std::size(kEdges))] : static_cast<std::int64_t>(random_());
        field = static_cast<Int>(value);
    }
    template <typename Array>
    void SetEach(Array& fields) {
        for (auto& field : fields) Set(field);
    }

  private:
    std::mt19937 random_;
};

void MakeHostile(InstrumentState& state, AnyNumbers& any) {
    TriggerRecord& trigger = state.Trigger;
    any.SetEach(trigger.SeqList);
    any.SetEach(trigger.ModeList);
    any.SetEach(trigger.CountList);
    any.SetEach(trigger.ElseList);
    any.SetEach(trigger.EdgeList16);
    any.SetEach(trigger.TrigMatchMode);
    any.Set(trigger.LevelCount);
    any.Set(trigger.TrigCnt);
    any.Set(trigger.TrigCntMd);
    for (auto& board : trigger.TrigWord.Board) {
        for (auto& entry : board) any.SetEach(entry);
    }
    any.SetEach(state.Cursors.Cur);
    any.Set(state.Clock.ClockType);
    any.Set(state.Clock.ClockRate);
    any.Set(state.Clock.ClockEdge);
    any.Set(state.Memory.HardwareMode);
    any.Set(state.Memory.HardwareMux);
    any.Set(state.Memory.BufferLen);
    if (any.Below(2) == 0) any.SetEach(state.Pods.HardwarePod);
    any.SetEach(state.Pods.ThrHd);
    any.SetEach(state.Pods.PatGenV);
    any.SetEach(state.Pods.AdjAddr);
    any.Set(state.Pods.ReprogramFlag);
    any.SetEach(state.Channels.ChannelInvert);
    any.Set(state.Pattern.PatternOutputMode);
    any.Set(state.Pattern.PatDirty);
    any.Set(state.Pattern.PatLimit);
    any.Set(state.Capture.CaptureMode);
    any.Set(state.Capture.ForceDelay);
    any.Set(state.Capture.TicksSinceGo);
    any.Set(state.Serial.SerialMode);
    any.Set(state.Serial.SerialGroup);
    any.Set(state.Identity.HardwareType);
    state.Capture.ClearBufferOnGo = 0;
}

class HostileCapture : public testing::TestWithParam<unsigned> {};

TEST_P(HostileCapture, ArmsAndEndsWithoutAWildAccess) {
    AnyNumbers any(GetParam());
    LiveBench bench(kRows[GetParam() % std::size(kRows)]);
    bench.Host.LongestWaitNs = 1e7;
    const InstrumentState& state = *bench.State;
    for (int round = 0; round < 100; ++round) {
        const std::uint8_t type = state.Identity.HardwareType;
        MakeHostile(*bench.State, any);
        bench.Host.Answers.assign(8, any.Below(2) == 0);
        Go(bench.App);
        for (int tick = 0; tick < 3; ++tick) {
            TimerBody(bench.App, kHardwareTimer);
            bench.Sim().Advance(1e6);
        }
        if (any.Below(2) == 0) End(bench.App);
        ReadInstrument(bench.App);
        Stop(bench.App);
        EXPECT_EQ(state.Capture.CaptureState, 0);
        EXPECT_EQ(bench.App.Poll.BusyDepth, 0);
        for (std::size_t pod = 0; pod < static_cast<std::size_t>(state.Shape.PodCount); ++pod) {
            EXPECT_GE(state.Pods.AdjAddr[pod], 0) << pod;
            EXPECT_LE(state.Pods.AdjAddr[pod], 128 + 255) << pod;
        }
        bench.State->Identity.HardwareType = type;
        bench.Host.Boxes.clear();
        bench.Shell.Log.clear();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HostileCapture, testing::Range(0U, 30U));

}  // namespace
}  // namespace zu
