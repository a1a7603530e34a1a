// The sample store: lengths, the offset rule, the size of a block, what may be touched.
#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>

#include "state/CaptureBuffer.h"

namespace zu {
namespace {

BufferLengths EqualLengths(std::int32_t length, int count = kMaxPods) {
    BufferLengths lengths{};
    std::fill_n(lengths.begin(), count, length);
    return lengths;
}

TEST(BufferLengths, AreReadAndWrittenByIndex) {
    BufferLengths lengths{};
    for (int i = 0; i < kMaxPods; ++i) SetBufLenFull(lengths, i, 100 + i);
    for (int i = 0; i < kMaxPods; ++i) EXPECT_EQ(GetBufLenFull(lengths, i), 100 + i);
}

TEST(BufferLengths, OutsideTheTwentyNothingIsStoredOrFound) {
    BufferLengths lengths = EqualLengths(7);
    for (const int index : {-1, 20, 1000, INT32_MIN, INT32_MAX}) {
        SetBufLenFull(lengths, index, 99);
        EXPECT_EQ(GetBufLenFull(lengths, index), 0) << index;
    }
    EXPECT_EQ(lengths, EqualLengths(7));
}

TEST(LongestLength, IsTheLargestOfTheFirstCount) {
    BufferLengths lengths{};
    lengths[2] = 500;
    lengths[7] = 900;
    EXPECT_EQ(GetLongestBufLen(lengths, 2), 0);
    EXPECT_EQ(GetLongestBufLen(lengths, 3), 500);
    EXPECT_EQ(GetLongestBufLen(lengths, 7), 500);
    EXPECT_EQ(GetLongestBufLen(lengths, 8), 900);
    EXPECT_EQ(GetLongestBufLen(lengths, 20), 900);
}

TEST(LongestLength, IsZeroForNoBuffersAndStopsAtTwenty) {
    const BufferLengths lengths = EqualLengths(42);
    EXPECT_EQ(GetLongestBufLen(lengths, 0), 0);
    EXPECT_EQ(GetLongestBufLen(lengths, -3), 0);
    EXPECT_EQ(GetLongestBufLen(lengths, 1000), 42);
}

TEST(DisplayLength, TakesTheAlignmentOffButAtMost128) {
    const BufferLengths lengths = EqualLengths(1000);
    EXPECT_EQ(GetBufLenDisp(0, lengths, 0), 1000);
    EXPECT_EQ(GetBufLenDisp(0, lengths, 50), 950);
    EXPECT_EQ(GetBufLenDisp(0, lengths, 127), 873);
    EXPECT_EQ(GetBufLenDisp(0, lengths, 128), 872);
    EXPECT_EQ(GetBufLenDisp(0, lengths, 129), 872);
    EXPECT_EQ(GetBufLenDisp(19, lengths, INT32_MAX), 872);
}

TEST(DisplayLength, TakesANegativeAlignmentAsNone) {
    EXPECT_EQ(GetBufLenDisp(0, EqualLengths(1000), -1), 1000);
    EXPECT_EQ(GetBufLenDisp(0, EqualLengths(1000), INT32_MIN), 1000);
}

TEST(DisplayLength, IsNeverBelowZero) {
    EXPECT_EQ(GetBufLenDisp(0, EqualLengths(100), 300), 0);
    EXPECT_EQ(GetBufLenDisp(0, EqualLengths(128), 128), 0);
    EXPECT_EQ(GetBufLenDisp(0, EqualLengths(129), 128), 1);
    EXPECT_EQ(GetBufLenDisp(0, EqualLengths(0), 0), 0);
}

TEST(DisplayLength, IsZeroOutsideTheTwenty) {
    const BufferLengths lengths = EqualLengths(1000);
    EXPECT_EQ(GetBufLenDisp(20, lengths, 0), 0);
    EXPECT_EQ(GetBufLenDisp(255, lengths, 0), 0);
    EXPECT_EQ(GetBufLenDisp(-1, lengths, 0), 0);
}

TEST(BlockOffset, StepsByTheLengthOfTheBufferItself) {
    BufferLengths lengths{};
    const std::array<std::int32_t, 5> five{1000, 2000, 3000, 4000, 5000};
    std::copy(five.begin(), five.end(), lengths.begin() + 10);
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 10), 0U);
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 11), 4U * 2000);
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 12), 4U * (2000 + 3000));
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 13), 4U * (2000 + 3000 + 4000));
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 14), 4U * (2000 + 3000 + 4000 + 5000));
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 15), 0U) << "each block of five starts anew";
}

TEST(BlockOffset, OfMultiplexedLengthsCoincides) {
    BufferLengths lengths{};
    lengths[0] = lengths[2] = lengths[4] = 524288;
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 1), 0U) << "a buffer without samples takes no room";
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 2), 4U * 524288);
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 3), 4U * 524288);
    EXPECT_EQ(CaptureBuffer::BlockOffset(lengths, 4), 8U * 524288);
}

TEST(BlockSize, IsAtLeast131072) {
    EXPECT_EQ(CaptureBuffer::BlockSize(BufferLengths{}, 0), 131072U);
    EXPECT_EQ(CaptureBuffer::BlockSize(EqualLengths(2048), 3), 131072U);
}

TEST(BlockSize, HoldsFourTimesTheLengthsAndTheLastBuffersRoom) {
    EXPECT_EQ(CaptureBuffer::BlockSize(EqualLengths(131072), 0), 4U * 5 * 131072 + 16);
    // The first length steps nothing, so a long first buffer fills its block alone ...
    BufferLengths first{};
    first[5] = 1000000;
    EXPECT_EQ(CaptureBuffer::BlockSize(first, 1), 4U * 1000000 + 16);
    // ... and a long last one is stepped by its own length before its room begins.
    BufferLengths last{};
    last[9] = 1000000;
    EXPECT_EQ(CaptureBuffer::BlockSize(last, 1), 8U * 1000000 + 16);
}

TEST(BlockSize, TakesNegativeLengthsAsNone) {
    EXPECT_EQ(CaptureBuffer::BlockSize(EqualLengths(-5), 0), 131072U);
    EXPECT_EQ(CaptureBuffer::BlockOffset(EqualLengths(INT32_MIN), 4), 0U);
}

TEST(CaptureBuffer, HoldsNothingBeforeItIsAllocated) {
    CaptureBuffer buffer;
    for (int i = 0; i < kMaxPods; ++i) {
        EXPECT_EQ(buffer.Pod[static_cast<std::size_t>(i)], nullptr);
        EXPECT_EQ(buffer.Room(i), 0U);
        EXPECT_TRUE(buffer.Samples(i).empty());
        EXPECT_TRUE(buffer.Pattern(i).empty());
    }
    EXPECT_EQ(buffer.Extra1, nullptr);
    EXPECT_EQ(buffer.Extra2, nullptr);
}

TEST(CaptureBuffer, LaysBuffersOutInBlocksOfFive) {
    CaptureBuffer buffer;
    for (std::size_t i = 0; i < kMaxPods; ++i) buffer.BufLen[i] = static_cast<std::int32_t>(40000 + 100 * i);
    buffer.Allocate();
    for (std::size_t i = 0; i < kMaxPods; ++i) {
        const std::size_t base = i / 5 * 5;
        const auto offset =
            static_cast<std::ptrdiff_t>(CaptureBuffer::BlockOffset(buffer.BufLen, static_cast<int>(i)));
        EXPECT_EQ(buffer.Pod[i] - buffer.Pod[base], offset) << i;
        EXPECT_EQ(buffer.PatPod[i] - buffer.PatPod[base], offset) << i;
        EXPECT_NE(buffer.Pod[i], buffer.PatPod[i]) << i;
    }
}

TEST(CaptureBuffer, StartsZeroed) {
    CaptureBuffer buffer;
    buffer.BufLen = EqualLengths(40000);
    buffer.Allocate();
    const auto isZero = [](std::uint8_t byte) { return byte == 0; };
    for (int i = 0; i < kMaxPods; ++i) {
        EXPECT_TRUE(std::ranges::all_of(buffer.Samples(i), isZero)) << i;
        EXPECT_TRUE(std::ranges::all_of(buffer.Pattern(i), isZero)) << i;
    }
}

TEST(CaptureBuffer, EveryByteOfTheRoomMayBeTouched) {
    CaptureBuffer buffer;
    buffer.BufLen = EqualLengths(40000);
    buffer.Allocate();
    for (int i = 0; i < kMaxPods; ++i) {
        const auto k = static_cast<std::size_t>(i);
        ASSERT_GE(buffer.Room(i), 4U * 40000) << "room for the multiplexed depth";
        buffer.Pod[k][0] = buffer.Pod[k][buffer.Room(i) - 1] = 1;
        buffer.PatPod[k][0] = buffer.PatPod[k][buffer.Room(i) - 1] = 1;
    }
    buffer.Extra1[4 * 40000] = buffer.Extra2[4 * 40000] = 1;
}

TEST(CaptureBuffer, KeepsItsContentsWhenOnlyLengthsChange) {
    CaptureBuffer buffer;
    buffer.BufLen = EqualLengths(40000);
    buffer.Allocate();
    std::iota(buffer.Samples(1).begin(), buffer.Samples(1).end(), std::uint8_t{0});
    std::uint8_t* const before = buffer.Pod[1];
    SetBufLenFull(buffer.BufLen, 1, 0);
    EXPECT_TRUE(buffer.Samples(1).empty());
    SetBufLenFull(buffer.BufLen, 1, 20000);
    EXPECT_EQ(buffer.Pod[1], before);
    EXPECT_EQ(buffer.Samples(1).size(), 20000U);
    EXPECT_EQ(buffer.Samples(1)[19999], static_cast<std::uint8_t>(19999));
}

TEST(CaptureBuffer, CutsALengthThatExceedsItsRoom) {
    CaptureBuffer buffer;
    buffer.BufLen = EqualLengths(40000);
    buffer.Allocate();
    SetBufLenFull(buffer.BufLen, 4, INT32_MAX);
    EXPECT_EQ(buffer.Samples(4).size(), buffer.Room(4));
    EXPECT_EQ(buffer.Pattern(4).size(), buffer.Room(4));
    SetBufLenFull(buffer.BufLen, 4, -1);
    EXPECT_TRUE(buffer.Samples(4).empty());
}

TEST(CaptureBuffer, HasNothingOutsideTheTwenty) {
    CaptureBuffer buffer;
    buffer.BufLen = EqualLengths(1000);
    buffer.Allocate();
    for (const int index : {-1, 20, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(buffer.Room(index), 0U);
        EXPECT_TRUE(buffer.Samples(index).empty());
        EXPECT_TRUE(buffer.Pattern(index).empty());
    }
}

TEST(CaptureBuffer, FreeGivesBackAllAndClearsTheLengths) {
    CaptureBuffer buffer;
    buffer.BufLen = EqualLengths(1000);
    buffer.Allocate();
    buffer.Free();
    EXPECT_EQ(buffer.BufLen, BufferLengths{});
    EXPECT_TRUE(std::ranges::all_of(buffer.Pod, [](const auto* pod) { return pod == nullptr; }));
    EXPECT_TRUE(std::ranges::all_of(buffer.PatPod, [](const auto* pod) { return pod == nullptr; }));
    EXPECT_EQ(buffer.Extra1, nullptr);
    EXPECT_EQ(buffer.Extra2, nullptr);
    EXPECT_EQ(buffer.Room(0), 0U);
    buffer.Free();
    buffer.BufLen = EqualLengths(1000);
    buffer.Allocate();
    EXPECT_EQ(buffer.Samples(19).size(), 1000U);
}

}  // namespace
}  // namespace zu
