#include <gtest/gtest.h>

#include "core/RateRules.h"
#include "core/Replay.h"
#include "files/DataFile.h"
#include "state/Rates.h"
#include "support/Bench.h"
#include "support/Captures.h"

// Recordings as signals for the simulated instrument.

namespace zu {
namespace {

using test::Bench;

TEST(Replay, DataFileSampleForSample) {
    Bench bench;
    bench.UseRow(13);
    bench.State->Clock.ClockRate = 9;
    SetMemoryMode(bench.App, 0, 1);
    bench.State->Channels.ChannelName[3] = "READY";
    for (int pod = 0; pod < 5; ++pod) {
        auto samples = bench.State->Buffer.Samples(pod);
        ASSERT_FALSE(samples.empty());
        for (std::size_t i = 0; i < samples.size(); ++i) {
            samples[i] = static_cast<std::uint8_t>(i * 7 + static_cast<std::size_t>(pod) + (i >> 8));
        }
    }
    const std::string path = bench.Folder.File("bus.ZU");
    ASSERT_TRUE(WriteDataFile(*bench.State, bench.Host, path));
    const auto title = bench.Host.Title;

    const Replay replay = LoadReplay(bench.Host, path);
    ASSERT_NE(replay.Signals, nullptr);
    EXPECT_EQ(bench.Texts(), std::vector<std::string>{});
    EXPECT_EQ(bench.Host.Title, title);
    ASSERT_GT(replay.ChannelNames.size(), 3U);
    EXPECT_EQ(replay.ChannelNames[3], "READY");
    const auto period = static_cast<SimTicks>(GetRateNS(0, 9) * kTicksPerNs);
    EXPECT_EQ(replay.Signals->ExternalPeriod(), period);
    for (int pod = 0; pod < 5; ++pod) {
        const auto samples = bench.State->Buffer.Samples(pod);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const SimTicks time = static_cast<SimTicks>(i) * period;
            ASSERT_EQ(replay.Signals->At(pod, time).Value, samples[i]) << pod << " " << i;
        }
    }
}

TEST(Replay, ValueChangeDump) {
    Bench bench;
    const std::string path = bench.Folder.Write(
        "bus.vcd", "$timescale 1ns $end $var wire 1 ! scl $end $var wire 1 # sda $end #0 1! 1# #20 0# #50");
    const Replay replay = LoadReplay(bench.Host, path);
    ASSERT_NE(replay.Signals, nullptr);
    EXPECT_EQ(replay.ChannelNames, (std::vector<std::string>{"scl", "sda"}));
    EXPECT_EQ(replay.Signals->At(0, 199).Value, 3);
    EXPECT_EQ(replay.Signals->At(0, 200).Value, 1);
    EXPECT_EQ(replay.Signals->At(0, 500).Value, 3) << "begins anew";
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

TEST(Replay, WhatCannotBeUsedIsTold) {
    Bench bench;
    const std::string files[] = {bench.Folder.File("none.vcd"), bench.Folder.File("none.zu"),
                                 bench.Folder.Write("empty.vcd", ""), bench.Folder.Write("text.txt", "x"),
                                 bench.Folder.Path()};
    for (const std::string& path : files) {
        bench.Forget();
        EXPECT_EQ(LoadReplay(bench.Host, path).Signals, nullptr) << path;
        EXPECT_EQ(bench.Host.Boxes.size(), 1U) << path;
    }
}

TEST(Replay, RecordingsOfRealBuses) {
    ZU_NEEDS_CAPTURES();
    for (const char* name : test::kCaptures) {
        Bench bench;
        const Replay replay = LoadReplay(bench.Host, test::CapturePath(std::string(name) + ".zu").string());
        ASSERT_NE(replay.Signals, nullptr) << name;
        EXPECT_TRUE(bench.Host.Boxes.empty()) << name;
        int changes = 0;
        SimTicks time = 0;
        for (int i = 0; i < 20000; ++i) {
            const int pod = i % kSimPods;
            const SimRun run = replay.Signals->At(pod, time);
            changes += replay.Signals->At(pod, run.Until).Value != run.Value ? 1 : 0;
            time += replay.Signals->ExternalPeriod();
        }
        EXPECT_GT(changes, 5) << name;
    }
}

}  // namespace
}  // namespace zu
