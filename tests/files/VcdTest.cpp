#include <gtest/gtest.h>

#include "files/Vcd.h"
#include "support/TempFolder.h"

// Value change dumps: signals become channels, stamps become time.

namespace zu {
namespace {

using Changes = std::vector<VcdChange>;

constexpr const char* kHead =
    "$date today $end\n$timescale 10 ns $end\n$scope module top $end\n"
    "$var wire 1 ! scl $end\n$var wire 1 \" sda $end\n"
    "$upscope $end\n$enddefinitions $end\n";

TEST(Vcd, ScalarsOnChannelsInOrder) {
    const auto dump = ParseVcd(std::string(kHead) + "#0\n$dumpvars\n1!\n1\"\n$end\n#5\n0\"\n#7 0! #9\n");
    ASSERT_TRUE(dump);
    EXPECT_EQ(dump->Channels, (std::vector<std::string>{"scl", "sda"}));
    EXPECT_EQ(dump->Pods[0], (Changes{{0, 3}, {50000, 1}, {70000, 0}}));
    EXPECT_EQ(dump->Picoseconds, 90000);
    for (std::size_t pod = 1; pod < dump->Pods.size(); ++pod) EXPECT_TRUE(dump->Pods[pod].empty());
}

TEST(Vcd, VectorsTakeAChannelABit) {
    const auto dump = ParseVcd(
        "$var reg 10 # data [9:0] $end $var wire 1 $ x $end\n"
        "#0 b1000000001 # 1$ #1 b101 # #2 bx1 # #3 bz # #4 b #");
    ASSERT_TRUE(dump);
    ASSERT_EQ(dump->Channels.size(), 11U);
    EXPECT_EQ(dump->Channels[0], "data[0]");
    EXPECT_EQ(dump->Channels[9], "data[9]");
    EXPECT_EQ(dump->Channels[10], "x");
    EXPECT_EQ(dump->Pods[0], (Changes{{0, 0x01}, {1000, 0x05}, {2000, 0x01}, {3000, 0xFF}}));
    EXPECT_EQ(dump->Pods[1], (Changes{{0, 0x06}, {1000, 0x04}, {3000, 0x07}}));
}

TEST(Vcd, Timescales) {
    const std::pair<const char*, std::int64_t> scales[] = {
        {"1ps", 3},           {"100 fs", 0},          {"1 ns", 3000},     {"10us", 30000000},
        {"1 ms", 3000000000}, {"1 s", 3000000000000}, {"nonsense", 3000}, {"", 3000}};
    for (const auto& [scale, picoseconds] : scales) {
        const auto dump =
            ParseVcd("$timescale " + std::string(scale) + " $end $var wire 1 a a $end #0 0a #3 1a #3");
        ASSERT_TRUE(dump);
        EXPECT_EQ(dump->Pods[0], (Changes{{picoseconds, 1}})) << scale;
    }
}

TEST(Vcd, StampsCountFromTheFirstAndNeverGoBack) {
    const auto dump = ParseVcd("$timescale 1ps $end $var wire 1 a a $end #100 0a #150 1a #120 0a #170 1a");
    ASSERT_TRUE(dump);
    EXPECT_EQ(dump->Pods[0], (Changes{{50, 0}, {70, 1}})) << "of two levels at a time the last counts";
    EXPECT_EQ(dump->Picoseconds, 70);
}

TEST(Vcd, AStampBelowZeroCountsAsZeroHoweverFar) {
    const auto dump = ParseVcd(
        "$timescale 1s $end $var wire 1 a a $end #-999999999999999998 1a #9223372036854775807 0a "
        "#-999999999999999998 1a");
    ASSERT_TRUE(dump);
    EXPECT_EQ(dump->Pods[0].front(), (VcdChange{0, 1}));
    EXPECT_EQ(dump->Pods[0].back().Value, 1) << "a stamp that goes back counts as the last";
    EXPECT_EQ(dump->Picoseconds, dump->Pods[0].back().Picoseconds);
}

TEST(Vcd, OddDumps) {
    EXPECT_FALSE(ParseVcd(""));
    EXPECT_FALSE(ParseVcd("#0 1! #1 0!"));
    EXPECT_FALSE(ParseVcd("$var real 64 r r $end $var event 1 e e $end r1.5 r"));
    EXPECT_FALSE(ParseVcd("$var"));
    EXPECT_FALSE(ParseVcd("$comment $var wire 1 a a $end"));
    const auto twice = ParseVcd("$var wire 1 a a $end $var wire 1 a again $end $var wire 1 b b $end 1a 1b");
    ASSERT_TRUE(twice);
    EXPECT_EQ(twice->Channels, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(twice->Pods[0], (Changes{{0, 3}}));
    EXPECT_EQ(twice->Picoseconds, 1);
    const auto strange =
        ParseVcd("$var wire -5 a a $end $frob #x # #-3 1 b 1a b1 qq #99999999999999999999 0a");
    ASSERT_TRUE(strange);
    EXPECT_EQ(strange->Channels.size(), 1U);
    EXPECT_GT(strange->Picoseconds, 0);
}

TEST(Vcd, MoreSignalsThanChannels) {
    const auto dump =
        ParseVcd("$var wire 150 a a $end $var wire 20 b b $end $var wire 1 c c $end b1 a b1x b 1c");
    ASSERT_TRUE(dump);
    EXPECT_EQ(dump->Channels.size(), 160U);
    EXPECT_EQ(dump->Channels[159], "b[9]");
    EXPECT_EQ(dump->Pods[18], (Changes{{0, 0x80}})) << "b1x: bit 1 is high";
}

TEST(Vcd, Files) {
    test::TempFolder folder;
    EXPECT_FALSE(ReadVcd(folder.File("none.vcd")));
    const std::string text = std::string(kHead) + "#0 1! #1 0!";
    const auto dump = ReadVcd(test::WriteBytes(folder.File("bus.vcd"), text));
    ASSERT_TRUE(dump);
    EXPECT_EQ(dump->Pods[0], ParseVcd(text)->Pods[0]);
    std::string large = kHead;
    for (int i = 0; i < 300000; ++i) large += "#" + std::to_string(i) + (i % 2 == 0 ? " 1!\n" : " 0!\n");
    const auto long_ = ReadVcd(test::WriteBytes(folder.File("long.vcd"), large));
    ASSERT_TRUE(long_);
    EXPECT_EQ(long_->Pods[0].size(), 300000U);
}

}  // namespace
}  // namespace zu
