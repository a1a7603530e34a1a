#include <algorithm>
#include <random>

#include "ArmScript.h"
#include "hw/AdjustAddress.h"

namespace zu::test {
namespace {

/// A board's samples by channel, as the alignment looks at them.
struct AdjustBench : ArmBench {
    AdjustBench(const ArmCase& c, std::int32_t length) : ArmBench(c) {
        State.Buffer.BufLen.fill(length);
        State.Buffer.Allocate();
        State.Shape.PodCount = static_cast<std::int8_t>(5 * c.Boards);
        State.Pods.AdjAddr.fill(-1);
    }
    void Put(int channel, std::int32_t from, std::int32_t to, bool level) {
        for (std::int32_t i = from; i < to; ++i) {
            std::uint8_t& byte = State.Buffer.Pod[static_cast<std::size_t>(channel / 8)][i];
            const auto mask = static_cast<std::uint8_t>(1U << channel % 8);
            byte = static_cast<std::uint8_t>(level ? byte | mask : byte & ~mask);
        }
    }
    /// The alignment of the first pod; all pods must have the same.
    std::int32_t Adjust(int step = 5) {
        AdjustAddress(CaptureSetupOf(State), step, State, Words);
        for (int pod = 1; pod < State.Shape.PodCount; ++pod) {
            EXPECT_EQ(State.Pods.AdjAddr[static_cast<std::size_t>(pod)], State.Pods.AdjAddr[0]) << pod;
        }
        for (int pod = State.Shape.PodCount; pod < kMaxPods; ++pod) {
            EXPECT_EQ(State.Pods.AdjAddr[static_cast<std::size_t>(pod)], -1) << pod;
        }
        return State.Pods.AdjAddr[0];
    }
};

/// Channel 0 asks for "1", on a rising edge, with the count off.
ArmCase RisingChannel0() {
    ArmCase c;
    c.Boards = 1;
    c.Edge = 0;
    c.Position = 100;
    c.Word(0, 0, "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXX1");
    return c;
}

TEST(Adjust, RisingEdgeIsTheFirstMatchAfterNone) {
    for (int at = 101; at <= 228; ++at) {
        AdjustBench bench(RisingChannel0(), 1000);
        bench.Put(0, at, 1000, true);
        EXPECT_EQ(bench.Adjust(), at - 100);
    }
}

TEST(Adjust, AnEdgeBehindTheSearchOrBeforeItIsNone) {
    for (const int at : {0, 50, 100, 229, 500}) {
        AdjustBench bench(RisingChannel0(), 1000);
        bench.Put(0, at, 1000, true);
        EXPECT_EQ(bench.Adjust(), 0) << at;
    }
}

TEST(Adjust, AFirstPositionThatMatchesMustEndFirst) {
    AdjustBench bench(RisingChannel0(), 1000);
    bench.Put(0, 0, 110, true);
    bench.Put(0, 120, 1000, true);
    EXPECT_EQ(bench.Adjust(), 20);
}

TEST(Adjust, FallingEdgeIsTheFirstMissAfterAMatch) {
    for (const int edge : {1, 2, 255}) {
        ArmCase c = RisingChannel0();
        c.Edge = edge;
        AdjustBench bench(c, 1000);
        bench.Put(0, 115, 130, true);
        EXPECT_EQ(bench.Adjust(), 30) << edge;
    }
}

TEST(Adjust, TheCountIsAddedOnAFallingEdgeInTheDurationModes) {
    for (int edge = 0; edge <= 2; ++edge) {
        for (int mode = -1; mode <= 4; ++mode) {
            for (const int count : {0, 1, 255}) {
                ArmCase c = RisingChannel0();
                c.Edge = edge;
                c.CountMode = mode;
                c.Count = count;
                AdjustBench bench(c, 1000);
                bench.Put(0, 115, 130, true);
                const int found = edge == 0 ? 15 : 30;
                const bool added = edge == 1 && (mode == 0 || mode == 1);
                EXPECT_EQ(bench.Adjust(), added ? found + count : found) << edge << " " << mode;
                bench.Put(0, 0, 1000, false);
                EXPECT_EQ(bench.Adjust(), 0) << "nothing found, nothing added";
            }
        }
    }
}

TEST(Adjust, PositionAtOrBehindTheLongestBufferIsZero) {
    for (const int position : {1000, 1001, 5000, INT32_MAX, INT32_MAX - 64}) {
        ArmCase c = RisingChannel0();
        c.Position = position;
        AdjustBench bench(c, 1000);
        bench.Put(0, 500, 1000, true);
        EXPECT_EQ(bench.Adjust(), 0) << position;
    }
}

TEST(Adjust, TheSearchEndsAtTheLongestBuffer) {
    ArmCase c = RisingChannel0();
    c.Position = 950;
    AdjustBench bench(c, 1000);
    bench.Put(0, 999, 1000, true);
    EXPECT_EQ(bench.Adjust(), 49);
    bench.State.Buffer.BufLen.fill(999);
    EXPECT_EQ(bench.Adjust(), 0);
}

TEST(Adjust, APositionBelowZeroCountsAsZero) {
    ArmCase c = RisingChannel0();
    c.Position = -300;
    AdjustBench bench(c, 1000);
    bench.Put(0, 9, 1000, true);
    EXPECT_EQ(bench.Adjust(), 9);
}

TEST(Adjust, AShortPodAsksNothingBehindItsEnd) {
    ArmCase c = RisingChannel0();
    c.Word(0, 0, "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXX1 XXXXXXX1");
    AdjustBench bench(c, 1000);
    bench.Put(0, 110, 1000, true);
    EXPECT_EQ(bench.Adjust(), 0) << "pod 1 stays low";
    bench.State.Buffer.BufLen[1] = 105;
    EXPECT_EQ(bench.Adjust(), 10);
}

TEST(Adjust, PodsInAnyOtherModeAskNothing) {
    for (const int mode : {1, 2, 3, 4, -1}) {
        ArmCase c = RisingChannel0();
        c.Word(0, 0, "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXX1 XXXXXXX1");
        c.Pods[1] = mode;
        AdjustBench bench(c, 1000);
        bench.Put(0, 110, 1000, true);
        EXPECT_EQ(bench.Adjust(), 10) << mode;
    }
}

TEST(Adjust, PatternsOnceAreNotAligned) {
    for (const int output : {0, 1, 2}) {
        ArmCase c = RisingChannel0();
        c.OutputMode = output;
        c.Pods[1] = 1;
        AdjustBench bench(c, 1000);
        bench.Put(0, 110, 1000, true);
        EXPECT_EQ(bench.Adjust(), output == 0 ? 0 : 10);
    }
}

TEST(Adjust, AnEmptySequenceFindsNothing) {
    for (const int edge : {0, 1}) {
        ArmCase c = RisingChannel0();
        c.Edge = edge;
        for (const std::vector<int>& sequence :
             {std::vector<int>{0}, {0, 0, 17}, {-1}, {INT32_MIN, INT32_MAX}}) {
            c.Sequence = sequence;
            AdjustBench bench(c, 1000);
            bench.Put(0, 110, 120, true);
            EXPECT_EQ(bench.Adjust(), 0);
        }
    }
}

TEST(Adjust, TheLastLevelCounts) {
    ArmCase c = RisingChannel0();
    c.Sequence = {2, 0, 1, 0};
    c.Word(1, 0, "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXX1X");
    AdjustBench bench(c, 1000);
    bench.Put(0, 140, 1000, true);
    bench.Put(1, 110, 1000, true);
    EXPECT_EQ(bench.Adjust(), 40);
}

TEST(Adjust, TheWordIsTakenAsItIsInAnyBitMode) {
    ArmCase c = RisingChannel0();
    c.MatchMode = 0;
    AdjustBench bench(c, 1000);
    bench.Put(0, 110, 1000, true);
    EXPECT_EQ(bench.Adjust(), 10);
}

TEST(Adjust, EveryChannelHasItsCell) {
    for (int channel = 0; channel < 160; ++channel) {
        for (const bool level : {false, true}) {
            ArmCase c = RisingChannel0();
            c.Boards = 4;
            c.Words = {};
            std::string cells = kAnyCells;
            // The board's lowest channel stands at the right end.
            const int inBoard = channel % 40;
            cells[static_cast<std::size_t>(43 - inBoard - inBoard / 8)] = level ? '1' : '0';
            c.Word(0, channel / 40, cells);
            AdjustBench bench(c, 300);
            bench.Put(channel, 0, 120, !level);
            bench.Put(channel, 120, 300, level);
            EXPECT_EQ(bench.Adjust(), 20) << channel;
        }
    }
}

// ---- against an evaluator that is slow and plain ----

/// Whether all channels of the capture pods stand as the word asks at a sample.
bool SlowMatch(const AdjustBench& bench, const ArmCase& c, const std::vector<std::string>& boards, int at) {
    for (int channel = 0; channel < 40 * c.Boards; ++channel) {
        const auto pod = static_cast<std::size_t>(channel / 8);
        if (c.Pods[pod] != 0 || at >= bench.State.Buffer.BufLen[pod]) continue;
        const int inBoard = channel % 40;
        const char cell = boards[static_cast<std::size_t>(channel / 40)]
                                [static_cast<std::size_t>(43 - inBoard - inBoard / 8)];
        const bool high = (bench.State.Buffer.Pod[pod][at] >> channel % 8 & 1) != 0;
        if ((cell == '1' && !high) || (cell == '0' && high)) return false;
    }
    return true;
}

int SlowAdjust(const AdjustBench& bench, const ArmCase& c) {
    if (c.OutputMode == 0 && c.HasPatterns()) return 0;
    int word = -1;
    for (const int entry : c.Sequence) {
        if (entry >= 1 && entry <= 16) word = entry - 1;
    }
    if (word < 0) return 0;
    int longest = 0;
    for (int pod = 0; pod < 5 * c.Boards; ++pod) {
        longest = std::max(longest, bench.State.Buffer.BufLen[static_cast<std::size_t>(pod)]);
    }
    std::vector<std::string> boards(4);
    for (int b = 0; b < c.Boards; ++b) boards[static_cast<std::size_t>(b)] = c.Cells(word, b);
    bool other = false;  // a sample of the kind that is not wanted has been seen
    for (int at = c.Position; at <= c.Position + 128 && at < longest; ++at) {
        const bool match = SlowMatch(bench, c, boards, at);
        if (match != (c.Edge == 0)) other = true;
        if (match != (c.Edge == 0) || !other) continue;
        const bool duration = c.CountMode == 0 || c.CountMode == 1;
        return at - c.Position + (c.Edge == 1 && duration ? c.Count : 0);
    }
    return 0;
}

TEST(Adjust, AgreesWithAPlainEvaluator) {
    std::mt19937 random(45);
    int found = 0;
    for (int round = 0; round < 2000; ++round) {
        ArmCase c;
        c.Boards = static_cast<int>(1 + random() % 4);
        c.Edge = static_cast<int>(random() % 3);
        c.CountMode = static_cast<int>(random() % 4);
        c.Count = static_cast<int>(random() % 256);
        c.OutputMode = static_cast<int>(random() % 3);
        c.MatchMode = static_cast<int>(random() % 2);
        c.Position = static_cast<int>(random() % 220);
        c.Sequence.assign(1 + random() % 16, 0);
        for (int& entry : c.Sequence) entry = random() % 2 == 0 ? static_cast<int>(random() % 18) : 0;
        const auto pods = static_cast<unsigned>(5 * c.Boards);
        if (random() % 4 == 0) c.Pods[random() % pods] = static_cast<int>(random() % 5);
        for (int w = 0; w < 16; ++w) {
            for (int cell = 0; cell < 3; ++cell) {
                std::string cells = kAnyCells;
                cells[random() % cells.size()] = "01Xx "[random() % 5];
                c.Word(w, static_cast<int>(random() % static_cast<unsigned>(c.Boards)), cells);
            }
        }
        AdjustBench bench(c, 256);
        for (std::size_t pod = 0; pod < 20; ++pod) {
            // Slow signals, so that most samples are like the one before.
            std::uint8_t level = static_cast<std::uint8_t>(random());
            for (int i = 0; i < 256; ++i) {
                if (random() % 8 == 0) level ^= static_cast<std::uint8_t>(1U << random() % 8);
                bench.State.Buffer.Pod[pod][i] = level;
            }
            if (random() % 6 == 0) bench.State.Buffer.BufLen[pod] = static_cast<std::int32_t>(random() % 257);
        }
        const int expected = SlowAdjust(bench, c);
        ASSERT_EQ(bench.Adjust(), expected) << c.Name() << " round " << round;
        found += expected != 0 ? 1 : 0;
    }
    EXPECT_GT(found, 300);
    EXPECT_LT(found, 1900);
}

}  // namespace
}  // namespace zu::test
