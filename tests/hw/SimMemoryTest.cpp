#include <array>
#include <gtest/gtest.h>

#include "SimHand.h"

// Sample and pattern memory of the simulated instrument, worked by registers alone.

namespace zu::test {
namespace {

class BothMemories : public testing::TestWithParam<bool> {
  protected:
    static SimTraits Traits(int boards = 1) {
        return {.Later = GetParam(), .LargeMemory = true, .Boards = boards, .Direct = true};
    }
};
INSTANTIATE_TEST_SUITE_P(Sim, BothMemories, testing::Bool(),
                         [](const auto& later) { return std::string(later.param ? "Later" : "Earlier"); });

struct Capture {
    SimBench Bench;
    std::int64_t First = 0;  ///< step of the window's first sample
    int StepsASample = 1;    ///< in quarters of a step

    Capture(const SimTraits& traits, int phases, std::uint32_t word = 0x2D7C08) : Bench(traits, Steps()) {
        Bench.Phases(phases);
        Bench.Synth(word);
        Bench.Word(15, FirstPodIs(kByteAt64));
        Bench.Go();
        EXPECT_TRUE(Bench.Wait());
    }
    [[nodiscard]] std::uint8_t Sample(int pod, std::int64_t place) {
        std::array<std::uint8_t, 1> byte{};
        Bench.Sim.Acquisition().Captured()->Sample(pod, place, 1, byte);
        return byte[0];
    }
};

// ---- read-out ----

TEST(SimReadOut, PlainOfTheYoungerSeries) {
    Capture capture({true, true, 2, true}, 1);
    for (int board = 0; board < 2; ++board) {
        for (const auto& [group, k, pod] : std::vector<std::array<int, 3>>{
                 {0, 0, 0}, {0, 1, 1}, {1, 0, 2}, {1, 1, 3}, {2, 0, 4}, {0, 2, 0}, {1, 3, 3}}) {
            const auto bytes = capture.Bench.ReadGroup(board, group, k, 8192);
            for (int i = 0; i < 8192; ++i) {
                ASSERT_EQ(bytes[static_cast<std::size_t>(i)], capture.Sample(board * 5 + pod, i));
                ASSERT_EQ(bytes[static_cast<std::size_t>(i)],
                          StepStimulus::Byte(board * 5 + pod, 64 - 16 + i));
            }
        }
        for (const auto& [group, k] : {std::pair{3, 0}, {3, 3}, {2, 1}, {2, 3}}) {
            EXPECT_EQ(capture.Bench.ReadGroup(board, group, k, 4), std::vector<std::uint8_t>(4, 0xFF));
        }
    }
}

TEST(SimReadOut, DualOfTheYoungerSeries) {
    for (const bool swapped : {false, true}) {
        Capture capture({true, true, 1, true}, 2, swapped ? 0x2D7C08 : 0x08B488);
        for (int group = 0; group < 3; ++group) {
            for (int k = 0; k < 4; ++k) {
                const int pod = 2 * group + (k & 1);
                if (pod > 4) continue;
                const int offset = (k >= 2) != swapped ? 2 : 1;
                const auto bytes = capture.Bench.ReadGroup(0, group, k, 8192);
                for (int i = 0; i < 8192; ++i) {
                    ASSERT_EQ(bytes[static_cast<std::size_t>(i)], capture.Sample(pod, 2 * i + offset));
                }
            }
        }
    }
}

TEST(SimReadOut, QuadOfTheYoungerSeries) {
    Capture capture({true, true, 2, true}, 4);
    for (int board = 0; board < 2; ++board) {
        for (int group = 0; group < 3; ++group) {
            for (int k = 0; k < 4; ++k) {
                const auto bytes = capture.Bench.ReadGroup(board, group, k, 8192);
                for (int i = 0; i < 8192; ++i) {
                    ASSERT_EQ(bytes[static_cast<std::size_t>(i)],
                              capture.Sample(board * 5 + 2 * group, 4 * i + 4 - k));
                }
            }
        }
    }
}

TEST(SimReadOut, OlderSeries) {
    for (const int phases : {1, 2, 4}) {
        Capture capture({false, true, 4, true}, phases);
        for (int board = 0; board < 4; ++board) {
            for (int k = 0; k < 5; ++k) {
                const auto bytes = capture.Bench.ReadLane(board, k, 8192);
                const bool last = k == 4;
                const int pod = last || phases == 1 ? k : phases == 2 ? k % 2 : 0;
                const int offset = last || phases == 1 ? 0 : phases == 2 ? 1 - k / 2 : 4 - k;
                for (int i = 0; i < 8192; ++i) {
                    ASSERT_EQ(bytes[static_cast<std::size_t>(i)],
                              capture.Sample(board * 5 + pod, phases * i + offset))
                        << phases << " " << k << " " << i;
                }
            }
        }
        for (const int mask : {0xF8, 0x00, 0x38}) {
            capture.Bench.S9(0, mask);
            capture.Bench.Boards[0].Set(3, 0, false);
            EXPECT_EQ(capture.Bench.Block(0, 3), std::vector<std::uint8_t>(3, 0xFF)) << "no one lane";
            capture.Bench.Boards[0].Set(3, 0, true);
        }
    }
}

TEST_P(BothMemories, AddressBeginsAtTheFallOfR3Bit0AndWraps) {
    Capture capture(Traits(2), 1);
    SimBench& bench = capture.Bench;
    const auto whole = GetParam() ? bench.ReadGroup(1, 0, 0, 8192) : bench.ReadLane(1, 0, 8192);
    Hand& hand = bench.Boards[1];
    hand.Set(3, 0, true);
    hand.Set(3, 0, false);
    EXPECT_EQ(bench.Block(1, 3), std::vector<std::uint8_t>(whole.begin(), whole.begin() + 3));
    hand.Set(3, 0, false);
    bench.Boards[0].Pulse(3, 0);
    EXPECT_EQ(bench.Block(1, 2), std::vector<std::uint8_t>(whole.begin() + 3, whole.begin() + 5))
        << "pieces go on, other boards do not matter";
    bench.Block(1, 8192 - 5);
    EXPECT_EQ(bench.Block(1, 2), std::vector<std::uint8_t>(whole.begin(), whole.begin() + 2));
    EXPECT_EQ(bench.Block(2, 2), std::vector<std::uint8_t>(2, 0xFF)) << "not fitted";
    EXPECT_EQ(bench.Block(0, 0).size(), 0U);
}

TEST_P(BothMemories, SingleReadsOfMemoryWhileR3Bit0IsLow) {
    Capture capture(Traits(), 1);
    SimBench& bench = capture.Bench;
    const auto whole = GetParam() ? bench.ReadGroup(0, 0, 0, 1200) : bench.ReadLane(0, 0, 1200);
    bench.Set(3, 0, true);
    if (!GetParam()) bench.S9(0, 0x78);
    EXPECT_EQ(bench.Sim.Read(0, 0), 0) << "a strobe";
    bench.Set(3, 0, false);
    for (int i = 0; i < 600; ++i) {
        EXPECT_EQ(bench.Sim.Peek(0, 0), whole[static_cast<std::size_t>(i)]);
        EXPECT_EQ(bench.Sim.Read(0, 0), whole[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(bench.Block(0, 600), std::vector<std::uint8_t>(whole.begin() + 600, whole.end()));
}

TEST_P(BothMemories, MemoryBeforeTheFirstCapture) {
    SimBench bench(Traits(), Steps());
    EXPECT_EQ(bench.ReadLane(0, 0, 4), std::vector<std::uint8_t>(4, 0));
    bench.Arm();
    EXPECT_EQ(bench.ReadLane(0, 0, 4), std::vector<std::uint8_t>(4, 0)) << "armed, no clock";
    EXPECT_EQ(bench.Sim.Acquisition().Captured(), nullptr);
}

TEST_P(BothMemories, MemoryStaysUntilTheNextCaptureIsFull) {
    Capture capture(Traits(), 1);
    SimBench& bench = capture.Bench;
    const auto lane = [&] { return GetParam() ? bench.ReadGroup(0, 0, 0, 64) : bench.ReadLane(0, 0, 64); };
    const auto first = lane();
    bench.Stop();
    bench.Arm();
    EXPECT_EQ(lane(), first);
    EXPECT_EQ(bench.Sim.Acquisition().Captures(), 1U);
    bench.Word(15, FirstPodIs(0x77));
    bench.Go();
    ASSERT_TRUE(bench.Wait());
    EXPECT_EQ(bench.Sim.Acquisition().Captures(), 2U);
    EXPECT_NE(lane(), first);
    EXPECT_EQ(lane()[16], 0x77);
}

TEST_P(BothMemories, ReadOutOfAnUntriggeredCaptureShowsTheNewestSamples) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, [](int, std::uint8_t) { return false; });
    const SimTicks start = bench.Sim.Now() / 100;
    bench.Go();
    bench.Sim.Advance(1e6);
    bench.Stop();
    const SimTicks end = bench.Sim.Now() / 100;
    const auto bytes = GetParam() ? bench.ReadGroup(0, 0, 0, 8192) : bench.ReadLane(0, 0, 8192);
    EXPECT_GT(end, start + 8192);
    EXPECT_EQ(bytes.back(), StepStimulus::Byte(0, end));
    EXPECT_EQ(bytes.front(), StepStimulus::Byte(0, end - 8191));
    EXPECT_EQ(bench.Status(), 0);
}

// ---- pattern generator ----

/// Lanes 0 and 1 of board 0 of the younger series with patterns of different lengths.
struct Generator {
    SimBench Bench{{true, true, 1, true}, Steps()};
    std::vector<std::uint8_t> First, Second;

    explicit Generator(bool once) {
        std::vector<std::uint8_t> image;
        for (int i = 0; i < 1000; ++i) {
            First.push_back(static_cast<std::uint8_t>(i / 3));
            Second.push_back(static_cast<std::uint8_t>(255 - i % 100));
            image.insert(image.end(), {First.back(), Second.back()});
        }
        Bench.Set(6, 5, true);
        Bench.S9(0, 0x78);
        Bench.Master().Put(4, 0x04);
        // As with direct registers a pair goes ahead of the data.
        image.insert(image.begin(), {0xEE, 0xEE});
        for (const std::uint8_t byte : image) Bench.Master().Put(14, byte);
        Bench.S9(0, 0xF8);
        Bench.Word(15, FirstPodIs(First[300]));
        Bench.Master().Put(4, once ? 0x56 : 0x46);  // drivers of lanes 0 and 1
        Bench.S9(0, 0x00);
    }
};

TEST(SimGenerator, PatternsAreCapturedWithTheSignals) {
    for (const bool once : {false, true}) {
        Generator generator(once);
        generator.Bench.Go();
        ASSERT_TRUE(generator.Bench.Wait(20));
        const SimMemory& memory = *generator.Bench.Sim.Acquisition().Captured();
        EXPECT_EQ(memory.First + memory.Trigger, 300);
        std::vector<std::uint8_t> bytes(6000);
        memory.Sample(0, -memory.First, 1, bytes);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            ASSERT_EQ(bytes[i], generator.First[once ? std::min<std::size_t>(i, 999) : i % 1000]) << i;
        }
        memory.Sample(1, -memory.First, 1, bytes);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            ASSERT_EQ(bytes[i], generator.Second[once ? std::min<std::size_t>(i, 999) : i % 1000]) << i;
        }
        memory.Sample(0, -memory.First - 5, 1, std::span(bytes).first(5));
        EXPECT_EQ(bytes[0], generator.First[0]) << "before the start";
        memory.Sample(2, -memory.First, 1, bytes);
        EXPECT_EQ(bytes[77], StepStimulus::Byte(2, 77)) << "not driven";
    }
}

TEST(SimGenerator, StaysAcrossCapturesAndLooksOfTheReadOut) {
    Generator generator(false);
    SimBench& bench = generator.Bench;
    for (int again = 0; again < 2; ++again) {
        bench.Go();
        ASSERT_TRUE(bench.Wait(20));
        bench.Stop();
        for (int lane = 0; lane < 5; ++lane) bench.ReadLane(0, lane, 16);
        bench.S9(0, 0xF8);
        EXPECT_EQ(bench.Sim.Board(0).Pattern(0).size(), 1000U);
        EXPECT_EQ(bench.Sim.Board(0).Pattern(1).size(), 1000U);
    }
    bench.S9(0, 0x78);
    bench.Master().Put(4, 0x04);
    for (const int byte : {0, 0, 0x11, 0x22}) bench.Master().Put(14, byte);
    EXPECT_EQ(bench.Sim.Board(0).Pattern(0), std::vector<std::uint8_t>{0x11})
        << "replaced by the next download";
    EXPECT_EQ(bench.Sim.Board(0).Pattern(1), std::vector<std::uint8_t>{0x22});
}

TEST(SimGenerator, DrivesNothingWithItsDriversOff) {
    Generator generator(false);
    generator.Bench.Master().Put(4, 0x06);
    generator.Bench.Go();
    generator.Bench.Force();
    ASSERT_TRUE(generator.Bench.Wait(20));
    const SimMemory& memory = *generator.Bench.Sim.Acquisition().Captured();
    std::array<std::uint8_t, 1> byte{};
    memory.Sample(0, -memory.First + 70, 1, byte);
    EXPECT_EQ(byte[0], StepStimulus::Byte(0, 70));
}

TEST(SimReset, ForgetsTheCapture) {
    Capture capture({true, true, 1, true}, 1);
    EXPECT_NE(capture.Bench.Sim.Acquisition().Captured(), nullptr);
    capture.Bench.Sim.Reset();
    EXPECT_EQ(capture.Bench.Sim.Acquisition().Captured(), nullptr);
    EXPECT_EQ(capture.Bench.Sim.Acquisition().Captures(), 0U);
    EXPECT_EQ(capture.Bench.Sim.TriggerPage(), 0);
    EXPECT_EQ(capture.Bench.Sim.TriggerCount(), 0);
    EXPECT_EQ(capture.Bench.Sim.Board(0).TriggerTable(15)[kByteAt64], 0);
    EXPECT_EQ(capture.Bench.Sim.Read(0, 1), 0);
    EXPECT_EQ(capture.Bench.Block(0, 2), std::vector<std::uint8_t>(2, 0));
}

}  // namespace
}  // namespace zu::test
