#include <array>
#include <gtest/gtest.h>

#include "SimHand.h"

// Arming, trigger, window and read-out of the simulated instrument, worked by registers alone.

namespace zu::test {
namespace {

class BothSeries : public testing::TestWithParam<bool> {
  protected:
    static SimTraits Traits(int boards = 1) {
        return {.Later = GetParam(), .LargeMemory = true, .Boards = boards, .Direct = true};
    }
};
INSTANTIATE_TEST_SUITE_P(Sim, BothSeries, testing::Bool(),
                         [](const auto& later) { return std::string(later.param ? "Later" : "Earlier"); });

// ---- trigger memory ----

TEST_P(BothSeries, TriggerMemoryStoresOnTheFallOfItsStrobe) {
    SimBench bench(Traits(2), Steps());
    const int address = GetParam() ? 14 : 0;
    const int other = GetParam() ? 0 : 14;
    bench.Page(9);
    Hand& board = bench.Boards[1];
    board.Put(address, 0x42);
    board.Put(other, 0x43);
    const auto entry = [&](int page, int a) {
        return bench.Sim.Board(1).TriggerTable(page)[static_cast<std::size_t>(a)];
    };
    board.Put(4, 0xAB);  // strobe high
    EXPECT_EQ(entry(9, 0x42), 0);
    board.Put(4, 0xA9);
    EXPECT_EQ(entry(9, 0x42), 0xA8 >> 3);
    board.Put(4, 0xF9);
    EXPECT_EQ(entry(9, 0x42), 0xA8 >> 3) << "no edge";
    board.Put(4, 0xFB);
    EXPECT_EQ(entry(9, 0x42), 0xA8 >> 3) << "the rising edge";
    board.Put(4, 0xF9);
    EXPECT_EQ(entry(9, 0x42), 0xF8 >> 3);
    EXPECT_EQ(entry(9, 0x43), 0) << "addressed by the other register";
    EXPECT_EQ(entry(8, 0x42), 0);
    EXPECT_EQ(bench.Sim.Board(0).TriggerTable(9)[0x42], 0) << "each board has its own";
    board.Put(4, 0x0F);
    board.Put(4, 0x0D);
    EXPECT_EQ(entry(9, 0x42), 0xF8 >> 3) << "not while R4 bit 2 is high";
}

TEST_P(BothSeries, PageAndCountAreTakenOnTheRiseOfR1Bit3) {
    SimBench bench(Traits(), Steps());
    Hand& hand = bench.Master();
    bench.Page(3);
    EXPECT_EQ(bench.Sim.TriggerPage(), 3);
    hand.Put(7, 0xF5);
    hand.Set(2, 3, false);
    EXPECT_EQ(bench.Sim.TriggerPage(), 3) << "R7 alone is nothing";
    hand.Set(1, 3, true);
    EXPECT_EQ(bench.Sim.TriggerPage(), 5) << "four bits";
    hand.Put(7, 7);
    hand.Set(1, 3, true);
    hand.Set(1, 3, false);
    EXPECT_EQ(bench.Sim.TriggerPage(), 5) << "neither level nor fall";
    hand.Set(2, 3, true);
    hand.Pulse(1, 3);
    EXPECT_EQ(bench.Sim.TriggerPage(), 5) << "not while R2 bit 3 is high";
    EXPECT_EQ(bench.Sim.TriggerCount(), 255);
    hand.Set(3, 2, true);
    hand.Put(7, 0x9C);
    EXPECT_EQ(bench.Sim.TriggerCount(), 255);
    hand.Pulse(1, 3);
    EXPECT_EQ(bench.Sim.TriggerCount(), 0x9C);
    EXPECT_EQ(bench.Sim.TriggerPage(), 5);
    hand.Set(2, 3, false);
    hand.Put(7, 0x9D);
    hand.Pulse(1, 3);
    EXPECT_EQ(bench.Sim.TriggerCount(), 0x9D) << "R3 bit 2 decides";
    EXPECT_EQ(bench.Sim.TriggerPage(), 5);
}

// ---- status ----

TEST_P(BothSeries, StatusGoesFromWaitingOverTriggeredToFull) {
    SimBench bench(Traits(), Steps());
    bench.Sim.SetPollNs(0);
    bench.Word(15, FirstPodIs(kByteAt64));
    EXPECT_EQ(bench.Status(), 0);
    bench.Go();
    EXPECT_EQ(bench.Status(), 0);
    bench.Sim.Advance(639);
    EXPECT_EQ(bench.Status(), 0) << "sample 63 is the newest";
    bench.Sim.Advance(1);
    EXPECT_EQ(bench.Status(), 1);
    bench.Sim.Advance(8175 * 10 + 9);
    EXPECT_EQ(bench.Status(), 1) << "8175 of 8176 samples came after it";
    bench.Sim.Advance(1);
    EXPECT_EQ(bench.Status(), 2);
    bench.Sim.Advance(1e9);
    EXPECT_EQ(bench.Status(), 2);
    bench.Set(2, 4, false);
    EXPECT_EQ(bench.Sim.Read(0, 1) & 0x50, 0) << "not while R2 bit 4 is low";
    EXPECT_EQ(bench.Status(), 2);
    bench.Set(5, 1, false);
    EXPECT_EQ(bench.Status(), 0) << "the fall of R5 bit 1 ends it";
    bench.Set(5, 1, true);
    EXPECT_EQ(bench.Status(), 0);
}

TEST_P(BothSeries, TheReadThatEndsTheArmingNeverSaysFull) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Arm();
    bench.Select(1);
    bench.Sim.Advance(1e9);
    EXPECT_EQ(bench.Status(), 1);
    EXPECT_EQ(bench.Status(), 2);
}

TEST_P(BothSeries, PollsTakeTheirTime) {
    SimBench bench(Traits(), Steps());
    const SimTicks before = bench.Sim.Now();
    bench.Status();
    EXPECT_EQ(bench.Sim.Now() - before, kTicksPerMs);
    bench.Sim.SetPollNs(250);
    bench.Status();
    EXPECT_EQ(bench.Sim.Now() - before, kTicksPerMs + 2500);
    bench.Set(2, 4, false);
    bench.Sim.Read(0, 1);
    bench.Sim.Read(0, 2);
    EXPECT_EQ(bench.Sim.Now() - before, kTicksPerMs + 2500) << "only polls do";
}

TEST_P(BothSeries, NothingRunsUnarmedOrWithoutClock) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Select(1);
    EXPECT_FALSE(bench.Wait(10)) << "not armed";
    bench.Select(7);
    bench.Arm();
    EXPECT_FALSE(bench.Wait(10)) << "clock held";
    bench.Select(1);
    EXPECT_TRUE(bench.Wait(10));
}

TEST_P(BothSeries, SynthesiserWithoutAWordDoesNotTick) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Synth(0);
    bench.Go();
    EXPECT_FALSE(bench.Wait(10));
    bench.Force();
    bench.Sim.Advance(1e9);
    EXPECT_EQ(bench.Status(), 1) << "no samples come to fill the memory";
    bench.Stop();
    EXPECT_EQ(bench.Status(), 2) << "it is cut short";
}

// ---- window ----

TEST_P(BothSeries, TriggerLiesWhereThePositionSays) {
    for (const int phases : {1, 2, 4}) {
        for (const int depth : {8192, 32768, 131072}) {
            const int top = 0x40000 - depth / 2;
            for (const int step : {0, 1, 8, 9, 100, depth / 2 - 1}) {
                SimBench bench(Traits(), Steps());
                bench.Depth(depth);
                bench.Phases(phases);
                bench.Position(static_cast<std::uint32_t>(top + step));
                bench.Word(15, FirstPodIs(kByteAt64));
                bench.Go();
                ASSERT_TRUE(bench.Wait());
                const SimMemory* memory = bench.Sim.Acquisition().Captured();
                ASSERT_NE(memory, nullptr);
                EXPECT_EQ(memory->Length, depth * phases);
                EXPECT_EQ(memory->Trigger, step * 2 * phases) << phases << " " << depth;
                std::array<std::uint8_t, 2> bytes{};
                memory->Sample(0, memory->Trigger - 1, 1, bytes);
                EXPECT_EQ(bytes[1], kByteAt64);
                EXPECT_NE(bytes[0], kByteAt64);
            }
        }
    }
}

TEST_P(BothSeries, WindowReachesBeforeTheArming) {
    SimBench bench(Traits(), Steps());
    bench.Position(0x40000 - 16);  // nearly all of the window lies before the trigger
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Go();
    ASSERT_TRUE(bench.Wait());
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    EXPECT_EQ(memory.Trigger, 8192 - 32);
    const auto bytes = GetParam() ? bench.ReadGroup(0, 0, 0, 8192) : bench.ReadLane(0, 0, 8192);
    const std::int64_t first = 64 - memory.Trigger;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        ASSERT_EQ(bytes[i], StepStimulus::Byte(0, first + static_cast<std::int64_t>(i))) << i;
    }
}

// ---- gate ----

TEST_P(BothSeries, ForceTriggersNow) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, [](int, std::uint8_t) { return false; });
    bench.Sim.SetPollNs(0);
    bench.Go();
    bench.Sim.Advance(12345);
    EXPECT_EQ(bench.Status(), 0);
    const std::int64_t present = bench.Sim.Now() / 100;
    bench.Force();
    EXPECT_EQ(bench.Status(), 1);
    bench.Sim.Advance(1e6);
    EXPECT_EQ(bench.Status(), 2);
    const auto bytes = GetParam() ? bench.ReadGroup(0, 0, 0, 32) : bench.ReadLane(0, 0, 32);
    EXPECT_EQ(bytes[16], StepStimulus::Byte(0, present));
}

TEST_P(BothSeries, ForceWaitsForTheClock) {
    SimBench bench(Traits(), Steps());
    bench.Arm();
    bench.Force();
    EXPECT_FALSE(bench.Wait(5));
    bench.Select(1);
    EXPECT_TRUE(bench.Wait(5));
}

TEST_P(BothSeries, ParkedNeverTriggersUntilItIsLetGo) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Gate(true, false);
    bench.Go();
    EXPECT_FALSE(bench.Wait(20));
    EXPECT_EQ(bench.Status(), 0);
    bench.Gate(false, false);
    const std::int64_t free = bench.Sim.Now() / 100;
    ASSERT_TRUE(bench.Wait(20));
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    EXPECT_GE(memory.Timeline->TimeOf(memory.First + memory.Trigger) / 100, free)
        << "what passed meanwhile does not count";
}

TEST_P(BothSeries, BothGateBitsLetTheTriggerDecide) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Gate(true, true);
    bench.Go();
    EXPECT_TRUE(bench.Wait(5));
}

TEST_P(BothSeries, StoppingTheClockCutsATriggeredCaptureShort) {
    SimBench bench(Traits(), Steps());
    bench.Sim.SetPollNs(0);
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Go();
    bench.Sim.Advance(1000);
    EXPECT_EQ(bench.Status(), 1);
    bench.Stop();
    EXPECT_EQ(bench.Status(), 2);
    const auto bytes = GetParam() ? bench.ReadGroup(0, 0, 0, 8192) : bench.ReadLane(0, 0, 8192);
    EXPECT_EQ(bytes[16], kByteAt64);
    EXPECT_EQ(bytes[8191], StepStimulus::Byte(0, 64 - 16 + 8191)) << "filled as if it had gone on";
}

TEST_P(BothSeries, ReadOutFinishesATriggeredCapture) {
    SimBench bench(Traits(), Steps());
    bench.Sim.SetPollNs(0);
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Go();
    bench.Sim.Advance(1000);
    EXPECT_EQ(bench.Status(), 1);
    const auto bytes = GetParam() ? bench.ReadGroup(0, 0, 0, 32) : bench.ReadLane(0, 0, 32);
    EXPECT_EQ(bytes[16], kByteAt64);
    EXPECT_EQ(bench.Status(), 2);
}

// ---- clock ----

TEST_P(BothSeries, ClockHeldInBetweenLeavesAGap) {
    SimBench bench(Traits(), Steps());
    bench.Sim.SetPollNs(0);
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Go();
    bench.Sim.Advance(299);  // samples 0 to 29
    bench.Stop();
    bench.Sim.Advance(10001);  // to step 1030
    EXPECT_EQ(bench.Status(), 0);
    bench.Select(1);
    bench.Sim.Advance(1e6);
    EXPECT_EQ(bench.Status(), 2);
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    EXPECT_EQ(memory.Timeline->TimeOf(29), 290 * 10);
    EXPECT_EQ(memory.Timeline->TimeOf(30), 10300 * 10);
    EXPECT_EQ(memory.Timeline->TimeOf(31), 10310 * 10);
}

TEST_P(BothSeries, RateChangedAfterTheTriggerKeepsPhasesAndDepth) {
    SimBench bench(Traits(), Steps());
    bench.Sim.SetPollNs(0);
    bench.Phases(2);
    bench.Synth(0x1D2D88);  // 100 ns
    bench.Word(15, [](int, std::uint8_t) { return false; });
    bench.Go();
    bench.Sim.Advance(1e5);
    bench.Force();
    bench.Set(2, 6, true);
    bench.Depth(32768);
    bench.Synth(0x2D7C08);
    EXPECT_EQ(bench.Status(), 1);
    bench.Select(1);
    bench.Sim.Advance((8176 * 2 - 1) * 5 - 1);
    EXPECT_EQ(bench.Status(), 1);
    bench.Sim.Advance(1);
    EXPECT_EQ(bench.Status(), 2) << "the rest comes at the new rate";
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    EXPECT_EQ(memory.Phases, 2);
    EXPECT_EQ(memory.Depth, 8192);
    const std::int64_t trigger = memory.First + memory.Trigger;
    EXPECT_EQ(memory.Timeline->TimeOf(trigger) - memory.Timeline->TimeOf(trigger - 1), 500);
    EXPECT_EQ(memory.Timeline->TimeOf(trigger + 2) - memory.Timeline->TimeOf(trigger + 1), 50);
}

TEST_P(BothSeries, ReloadedSynthesiserCountsWithTheNextControlByte) {
    SimBench bench(Traits(), Steps());
    bench.Word(15, [](int, std::uint8_t) { return false; });
    bench.Go();
    bench.Synth(0);
    bench.Set(5, 7, true);
    bench.Set(5, 7, false);
    bench.Sim.Advance(1000);
    bench.Force();
    EXPECT_TRUE(bench.Wait(5)) << "still at the rate that the control byte chose";
}

TEST_P(BothSeries, ExternalEdges) {
    for (const int selector : {0, 2}) {
        SimBench bench(Traits(), Steps());
        bench.Word(15, FirstPodIs(StepStimulus::Byte(0, 1000)));  // 10 us
        bench.Selector = selector;
        bench.Sim.Advance(123);
        bench.Go();
        bench.Force();
        ASSERT_TRUE(bench.Wait(20));
        const SimMemory& memory = *bench.Sim.Acquisition().Captured();
        const SimTicks shift = selector == 2 ? kTicksPerUs / 2 : 0;
        for (const int i : {-3, 0, 1, 100}) {
            const SimTicks time = memory.Timeline->TimeOf(i);
            EXPECT_EQ(FloorMod(time - shift, kTicksPerUs), 0);
        }
        EXPECT_EQ(memory.Timeline->TimeOf(1) - memory.Timeline->TimeOf(0), kTicksPerUs);
    }
}

/// The first pod counts microseconds.
class Microseconds : public SimStimulus {
  public:
    SimRun At(int pod, SimTicks time) override {
        if (pod != 0) return {};
        const SimTicks us = FloorDiv(time, kTicksPerUs);
        return {static_cast<std::uint8_t>(us), (us + 1) * kTicksPerUs};
    }
};

TEST(SimGatedClock, OnlyEdgesThatTheTableLetsPass) {
    SimBench bench({true, true, 1, true}, std::make_shared<Microseconds>());
    for (int a = 0; a < 256; ++a) {
        bench.Master().Put(14, a);
        const int data = a % 16 == 3 || a % 16 == 4 ? 0x0B : 0x03;
        for (const int value : {data, data & 0xFE, data}) bench.Master().Put(4, value);
    }
    bench.Master().Put(4, 0x06);
    bench.Word(15, FirstPodIs(0x43));
    for (const int selector : {4, 6}) {
        bench.Selector = selector;
        bench.Go();
        ASSERT_TRUE(bench.Wait(200)) << "a window takes 65 ms";
        const auto bytes = bench.ReadGroup(0, 0, 0, 8192);
        EXPECT_EQ(bytes[16], 0x43);
        for (std::size_t i = 1; i < bytes.size(); ++i) {
            ASSERT_EQ(static_cast<std::uint8_t>(bytes[i] - bytes[i - 1]), bytes[i] % 16 == 3 ? 15 : 1) << i;
        }
        bench.Stop();
    }
}

TEST(SimGatedClock, ClosedGateTakesNothing) {
    SimBench bench({true, true, 1, true}, std::make_shared<Microseconds>());
    bench.Word(15, FirstPodIs(0x43));
    bench.Selector = 4;
    bench.Go();
    bench.Sim.Advance(1e8);
    bench.Force();
    EXPECT_FALSE(bench.Wait(50));
    bench.Stop();
    EXPECT_EQ(bench.Status(), 2);
    EXPECT_EQ(bench.ReadGroup(0, 0, 0, 8192).size(), 8192U);
}

TEST(SimFixedClock, RunsThoughTheSelectorStops) {
    SimBench bench({true, true, 1, true}, Steps());
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Synth(0);
    bench.Selector = 7;
    bench.Go();
    EXPECT_FALSE(bench.Wait(5));
    bench.Set(3, 1, true);
    EXPECT_FALSE(bench.Wait(5)) << "one of the two bits";
    bench.Set(2, 5, true);
    ASSERT_TRUE(bench.Wait(5));
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    EXPECT_EQ(memory.Timeline->TimeOf(1) - memory.Timeline->TimeOf(0), 10 * kTicksPerNs);
}

// ---- time ----

TEST_P(BothSeries, RealTimePassesByItself) {
    SimBench bench(Traits(), Steps());
    bench.Sim.Advance(5e9);
    const SimTicks before = bench.Sim.Now();
    bench.Sim.SetRealTime(true);
    EXPECT_GE(bench.Sim.Now(), before) << "goes on from where it was";
    EXPECT_LT(bench.Sim.Now(), before + 60000 * kTicksPerMs);
    bench.Word(15, FirstPodIs(kByteAt64));
    bench.Go();
    while (bench.Status() != 2) {
    }
    bench.Sim.SetRealTime(false);
    const SimTicks stopped = bench.Sim.Now();
    bench.Sim.Advance(10);
    EXPECT_EQ(bench.Sim.Now(), stopped + 100);
    const auto bytes = GetParam() ? bench.ReadGroup(0, 0, 0, 32) : bench.ReadLane(0, 0, 32);
    EXPECT_EQ(bytes[16], kByteAt64);
}

TEST_P(BothSeries, SameRegistersSameBytes) {
    const auto run = [] {
        SimBench bench(Traits(), Steps());
        std::vector<std::uint8_t> all;
        for (int i = 0; i < 3; ++i) {
            bench.Word(15, FirstPodIs(40 * i));
            bench.Go();
            EXPECT_TRUE(bench.Wait(20));
            const auto bytes = GetParam() ? bench.ReadGroup(0, 1, 0, 4000) : bench.ReadLane(0, 2, 4000);
            all.insert(all.end(), bytes.begin(), bytes.end());
            bench.Stop();
        }
        return all;
    };
    EXPECT_EQ(run(), run());
}

TEST(SimTimeline, NumbersAndTimesAreEachOthersInverse) {
    SimTimeline line;
    EXPECT_EQ(line.NumberAt(5), 0);
    line.Run(1000, 10);
    line.Hold(1095);  // 0 to 9
    line.Run(5000, 7);
    line.Hold(5000);          // 10
    line.Append(9000, 3, 4);  // 11 to 14
    line.Append(9012, 3, 2);  // the same stretch goes on
    EXPECT_EQ(line.Next(0), 17);
    const std::pair<std::int64_t, SimTicks> times[] = {{-2, 980},  {0, 1000},  {9, 1090},  {10, 5000},
                                                       {11, 9000}, {14, 9009}, {16, 9015}, {20, 9027}};
    for (const auto& [number, time] : times) {
        EXPECT_EQ(line.TimeOf(number), time);
        EXPECT_EQ(line.NumberAt(time), number);
        EXPECT_EQ(line.NumberAt(time - 1), number - 1);
    }
    EXPECT_EQ(line.NumberAt(4999), 9) << "the clock stood";
    EXPECT_EQ(line.NumberAt(8999), 10);
    line.Forget(12);
    EXPECT_EQ(line.TimeOf(12), 9003);
}

}  // namespace
}  // namespace zu::test
