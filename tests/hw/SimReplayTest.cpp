#include <gtest/gtest.h>

#include "SimHand.h"
#include "hw/sim/SimReplay.h"

namespace zu::test {
namespace {

SimSamples Recorded(std::size_t length) {
    SimSamples samples;
    samples.Period = 50 * kTicksPerNs;
    for (std::size_t i = 0; i < length; ++i) {
        samples.Pods[0].push_back(static_cast<std::uint8_t>(i / 7));
        if (i < length / 2) samples.Pods[3].push_back(0x5A);
    }
    return samples;
}

TEST(SimReplay, SampleForSampleAtItsOwnPeriod) {
    const SimSamples samples = Recorded(1000);
    const auto replay = MakeSimReplay(samples);
    EXPECT_EQ(replay->ExternalPeriod(), 500);
    for (int i = -2000; i < 3000; ++i) {
        const auto place = static_cast<std::size_t>((i + 2000) % 1000);
        for (const SimTicks inside : {0, 499}) {
            const SimTicks time = i * SimTicks{500} + inside;
            const SimRun run = replay->At(0, time);
            ASSERT_EQ(run.Value, samples.Pods[0][place]);
            ASSERT_GT(run.Until, time);
            ASSERT_EQ(replay->At(0, run.Until - 1).Value, run.Value);
            ASSERT_EQ(replay->At(3, time).Value, place < 500 ? 0x5A : 0) << "quiet behind its end";
            ASSERT_EQ(replay->At(7, time).Value, 0);
        }
    }
    EXPECT_EQ(replay->At(-1, 0).Value, 0);
    EXPECT_EQ(replay->At(20, 0).Value, 0);
}

TEST(SimReplay, NothingIsQuiet) {
    EXPECT_EQ(MakeSimReplay(SimSamples{})->At(0, 5).Value, 0);
    EXPECT_EQ(MakeSimReplay(SimChanges{})->At(0, 5).Value, 0);
    SimSamples samples = Recorded(10);
    samples.Period = 0;
    EXPECT_GT(MakeSimReplay(samples)->At(0, 5).Until, 5);
}

TEST(SimReplay, ChangesRepeatWithTheirLength) {
    SimChanges changes;
    changes.Length = 100;
    changes.Pods[2] = {{10, 1}, {40, 3}, {99, 0}};
    const auto replay = MakeSimReplay(changes);
    for (const SimTicks turn : {-300, -100, 0, 100, 1000}) {
        EXPECT_EQ(replay->At(2, turn).Value, 0);
        EXPECT_EQ(replay->At(2, turn + 9).Value, 0);
        EXPECT_EQ(replay->At(2, turn + 10).Value, 1);
        EXPECT_EQ(replay->At(2, turn + 10).Until, turn + 40);
        EXPECT_EQ(replay->At(2, turn + 39).Value, 1);
        EXPECT_EQ(replay->At(2, turn + 98).Value, 3);
        EXPECT_EQ(replay->At(2, turn + 99).Value, 0);
    }
    changes.Length = 1;  // shorter than what it holds
    EXPECT_EQ(MakeSimReplay(changes)->At(2, 98).Value, 3);
}

TEST(SimReplay, IsCapturedAsItWasRecorded) {
    const SimSamples samples = Recorded(3000);
    SimBench bench({true, true, 1, true}, MakeSimReplay(samples));
    bench.Synth(0x1D2D08);  // 50 ns
    bench.Word(15, [](int pod, std::uint8_t byte) { return pod != 0 || byte == 9; });
    bench.Go();
    ASSERT_TRUE(bench.Wait(10));
    const auto bytes = bench.ReadGroup(0, 0, 0, 2000);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        ASSERT_EQ(bytes[i], samples.Pods[0][9 * 7 - 16 + i]);
    }
}

}  // namespace
}  // namespace zu::test
