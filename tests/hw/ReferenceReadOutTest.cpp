#include <random>

#include "ReferenceBench.h"
#include "hw/ReadOut.h"
#include "reference/CaptureMaker.h"

// Read-out against its second writing: accesses, samples and alignments.

namespace zu::test {
namespace {

void CompareReadOut(ReferenceBench& bench) {
    const reference::Capture& c = bench.Setup;
    SCOPED_TRACE("type " + std::to_string(bench.Bank.Type) + " boards " + std::to_string(c.Boards) +
                 " clock " + std::to_string(c.ClockType) + " rate " + std::to_string(c.ClockRate) + " mode " +
                 std::to_string(c.HardwareMode));
    bench.Apply();
    reference::EndCapture(bench.Bank, bench.Setup);
    EXPECT_EQ(EndCapture(bench.Hardware, bench.State, bench.Words), 1);
    bench.Compare();
    bench.CompareSamples();
}

TEST(ReferenceReadOut, EveryTypeRateAndMode) {
    for (int type = 0; type <= 16; ++type) {
        for (const int boards : {1, 2, 3, 4}) {
            for (int rate = 0; rate <= 6; ++rate) {
                for (int mode = 0; mode < 4; ++mode) {
                    ReferenceBench bench(type, (mode + rate) % 2 != 0, static_cast<unsigned>(type));
                    reference::MakeCapture(bench.Setup, boards);
                    bench.Setup.ClockRate = rate;
                    bench.Setup.HardwareMode = mode;
                    bench.Setup.Position = 3 * mode;
                    CompareReadOut(bench);
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST(ReferenceReadOut, LengthsOfAMultiplexedLayout) {
    for (const int type : {1, 5, 13, 15}) {
        for (const int rate : {1, 3, 5}) {
            ReferenceBench bench(type, type == 15);
            reference::MakeCapture(bench.Setup, 4);
            for (std::size_t p = 0; p < 20; ++p) bench.Setup.Lengths[p] = p % 5 % 2 == 0 ? 93 : 0;
            bench.Setup.ClockRate = rate;
            CompareReadOut(bench);
        }
    }
}

TEST(ReferenceReadOut, LengthsSixApart) {
    for (const int type : {11, 13, 14}) {
        for (int boards = 1; boards <= 3; ++boards) {
            ReferenceBench bench(type, false);
            reference::MakeCapture(bench.Setup, boards);
            bench.Setup.BufStep = 0xA6;
            bench.Setup.ClockRate = 1;
            for (std::size_t p = 0; p < 20; ++p) bench.Setup.Lengths[p] = static_cast<int>(90 - 4 * p);
            CompareReadOut(bench);
        }
    }
}

TEST(ReferenceReadOut, PatternPodsKeepTheirBytes) {
    for (const int type : {3, 5, 13, 15}) {
        for (int output = 0; output < 3; ++output) {
            for (int variant = 0; variant < 4; ++variant) {
                ReferenceBench bench(type, variant % 2 != 0);
                reference::MakeCapture(bench.Setup, 2);
                reference::MakePatterns(bench.Setup, variant);
                bench.Setup.OutputMode = output;
                bench.Setup.ClockRate = 1 + variant;
                CompareReadOut(bench);
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceReadOut, PodsOutOfUseAreNotRead) {
    for (const int type : {3, 5, 13, 15}) {
        for (int rate = 1; rate <= 5; ++rate) {
            ReferenceBench bench(type, false);
            reference::MakeCapture(bench.Setup, 3);
            for (const std::size_t pod : {0U, 3U, 6U, 9U, 12U})
                bench.Setup.Pods[pod] = 3 + static_cast<int>(pod) % 2;
            bench.Setup.ClockRate = rate;
            CompareReadOut(bench);
        }
    }
}

TEST(ReferenceReadOut, EmulatedInvertsOnly) {
    ReferenceBench bench(15, true);
    reference::MakeCapture(bench.Setup, 4);
    bench.Setup.Emulated = true;
    bench.Setup.Inverted[0] = bench.Setup.Inverted[9] = bench.Setup.Inverted[159] = true;
    CompareReadOut(bench);
}

TEST(ReferenceReadOut, Alignment) {
    int found = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        std::mt19937 random(seed);
        ReferenceBench bench(seed % 2 == 0 ? 13 : 3, false, seed);
        reference::MakeCapture(bench.Setup, 1);
        bench.Setup.Lengths.assign(20, 300);
        for (auto& word : bench.Setup.Words) word[0] = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX";
        for (int i = 0; i < 2; ++i)
            bench.Setup.Words[3][0][36 + random() % 8 - 9 * (random() % 5)] = "01"[random() % 2];
        bench.Setup.Edge = static_cast<int>(random() % 3);
        bench.Setup.Count = static_cast<int>(random() % 256);
        bench.Setup.CountMode = static_cast<int>(random() % 4);
        bench.Setup.Position = static_cast<int>(random() % 320) - 10;
        CompareReadOut(bench);
        if (bench.Setup.Adjusted[0] != 0) ++found;
        if (HasFailure()) return;
    }
    EXPECT_GT(found, 100);
}

/// The first pod's bit 7 changes `distance` samples behind the trigger position; the buffer is `length` long.
void CompareEdgeAt(int distance, int length, int edge) {
    ReferenceBench bench(13, false);
    reference::MakeCapture(bench.Setup, 1);
    bench.Setup.Lengths.assign(20, length);
    for (auto& word : bench.Setup.Words) word[0] = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX 1XXXXXXX";
    bench.Setup.Position = 20;
    bench.Setup.Edge = edge;
    bench.Setup.CountMode = 2;
    bench.Instrument.Memory = bench.Twin.Memory = [distance, edge](unsigned i) -> std::uint8_t {
        return (static_cast<int>(i) >= 20 + distance) == (edge == 0) ? 0x80 : 0x00;
    };
    CompareReadOut(bench);
    const bool seen = distance >= 1 && distance <= 128 && 20 + distance < length;
    EXPECT_EQ(bench.State.Pods.AdjAddr[0], seen ? distance : 0);
}

TEST(ReferenceReadOut, AlignmentAtTheEndsOfTheSearch) {
    for (int edge = 0; edge < 3; ++edge) {
        for (const int distance : {-3, 0, 1, 2, 64, 127, 128, 129}) {
            for (const int length : {20, 21, 20 + 64, 20 + 65, 20 + 128, 20 + 129, 300}) {
                CompareEdgeAt(distance, length, edge);
            }
        }
    }
}

TEST(ReferenceReadOut, Random) {
    static const int kTypes[] = {1, 3, 5, 6, 7, 11, 13, 15};
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        const int type = kTypes[random() % 8];
        ReferenceBench bench(type, random() % 2 != 0, seed);
        reference::MakeRandomCapture(bench.Setup, random);
        SCOPED_TRACE("seed " + std::to_string(seed));
        CompareReadOut(bench);
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace zu::test
