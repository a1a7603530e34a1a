// The one accessor of displayed samples.
#include <gtest/gtest.h>
#include <memory>

#include "state/Model.h"
#include "state/SampleView.h"

namespace zu {
namespace {

constexpr std::int32_t kLength = 1000;

/// Buffer byte i of pod p is p + i, its pattern byte 100 + p + i, both modulo 256.
std::unique_ptr<InstrumentState> FilledState() {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, 15);
    for (int pod = 0; pod < kMaxPods; ++pod) {
        SetBufLenFull(state->Buffer.BufLen, pod, kLength);
        for (int i = 0; i < kLength; ++i) {
            state->Buffer.Samples(pod)[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(pod + i);
            state->Buffer.Pattern(pod)[static_cast<std::size_t>(i)] =
                static_cast<std::uint8_t>(100 + pod + i);
        }
    }
    return state;
}

TEST(SampleView, ShowsCapturedSamplesFromTheAlignmentOn) {
    const auto state = FilledState();
    state->Pods.AdjAddr[3] = 40;
    const SampleView view = BindPod(*state, 3);
    EXPECT_EQ(view.At(0), 43);
    EXPECT_EQ(view.At(10), 53);
    EXPECT_EQ(view.Shown, kLength - 40);
    EXPECT_EQ(view.At(kLength - 41), static_cast<std::uint8_t>(3 + kLength - 1));
    EXPECT_EQ(view.At(kLength - 40), 0) << "nothing is stored there";
}

TEST(SampleView, ShowsZeroWhereALargeAlignmentLeavesNoSamples) {
    const auto state = FilledState();
    state->Pods.AdjAddr[0] = 300;
    const SampleView view = BindPod(*state, 0);
    EXPECT_EQ(view.Shown, kLength - 128) << "at most 128 samples are taken off";
    EXPECT_EQ(view.Stored, kLength - 300);
    EXPECT_EQ(view.At(699), static_cast<std::uint8_t>(kLength - 1));
    EXPECT_TRUE(view.Has(871));
    EXPECT_EQ(view.At(871), 0);
    EXPECT_FALSE(view.Has(872));
}

TEST(SampleView, IgnoresAnAlignmentThatPointsOutside) {
    const auto state = FilledState();
    for (const std::int32_t adjust : {-1, kLength + 1, INT32_MIN, INT32_MAX}) {
        state->Pods.AdjAddr[2] = adjust;
        const SampleView view = BindPod(*state, 2);
        EXPECT_EQ(view.At(0), 2) << adjust;
        EXPECT_EQ(view.Stored, kLength) << adjust;
        EXPECT_EQ(view.At(kLength), 0) << adjust;
    }
    state->Pods.AdjAddr[2] = kLength;
    EXPECT_EQ(BindPod(*state, 2).Stored, 0);
    EXPECT_EQ(BindPod(*state, 2).At(0), 0);
}

TEST(SampleView, ShowsPatternDataOfPatternPodsUnshifted) {
    const auto state = FilledState();
    for (const std::int8_t mode : std::initializer_list<std::int8_t>{1, 2}) {
        state->Pods.HardwarePod[5] = mode;
        state->Pods.AdjAddr[5] = 40;
        const SampleView view = BindPod(*state, 5);
        EXPECT_EQ(view.At(0), 105);
        EXPECT_EQ(view.Shown, kLength);
    }
}

TEST(SampleView, ShowsSamplesInEveryOtherPodMode) {
    const auto state = FilledState();
    for (const std::int8_t mode : std::initializer_list<std::int8_t>{0, 3, 4, 5, -1, 127, -128}) {
        state->Pods.HardwarePod[5] = mode;
        EXPECT_EQ(BindPod(*state, 5).At(0), 5) << int{mode};
    }
}

TEST(SampleView, IsEmptyWhereThereIsNothing) {
    const auto state = FilledState();
    SetBufLenFull(state->Buffer.BufLen, 4, 0);
    for (const int pod : {4, -1, 20, INT32_MIN, INT32_MAX}) {
        const SampleView view = BindPod(*state, pod);
        EXPECT_EQ(view.Shown, 0);
        EXPECT_FALSE(view.Has(0));
        EXPECT_EQ(view.At(0), 0);
    }
    const InstrumentState unborn;
    EXPECT_EQ(BindPod(unborn, 0).Shown, 0);
}

TEST(SampleView, BoundsEveryIndex) {
    const auto state = FilledState();
    const SampleView view = BindPod(*state, 1);
    for (const std::int64_t i : {std::int64_t{-1}, std::int64_t{kLength}, INT64_MIN, INT64_MAX}) {
        EXPECT_EQ(view.At(i), 0);
        EXPECT_FALSE(view.Has(i));
    }
}

TEST(SampleView, NeverReadsBeyondTheRoomOfItsBuffer) {
    const auto state = FilledState();
    SetBufLenFull(state->Buffer.BufLen, 19, INT32_MAX);
    const SampleView view = BindPod(*state, 19);
    EXPECT_LE(static_cast<std::size_t>(view.Stored), state->Buffer.Room(19));
    EXPECT_EQ(view.At(view.Stored - 1), 0);
}

TEST(SampleView, OfAChannelIsThatOfItsPod) {
    const auto state = FilledState();
    EXPECT_EQ(BindChannel(*state, 0).At(0), 0);
    EXPECT_EQ(BindChannel(*state, 7).At(0), 0);
    EXPECT_EQ(BindChannel(*state, 8).At(0), 1);
    EXPECT_EQ(BindChannel(*state, 159).At(0), 19);
    for (const int channel : {-1, -8, 160, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(BindChannel(*state, channel).Shown, 0) << channel;
    }
}

}  // namespace
}  // namespace zu
