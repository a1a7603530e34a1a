// SPI groups as four lanes.
#include <gtest/gtest.h>
#include <set>

#include "display/GroupLine.h"
#include "serial/SpiDecoder.h"
#include "support/Groups.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeGroup;
using test::MakeState;
using test::Paint;
using test::SetHigh;
using test::SetLength;
using test::ShowColumns;
using test::ShowLines;
using Kind = RecorderCanvas::Kind;

// SPI line: group 0 with clock 0, SI 1, SO 2, CS 3; bytes are put into the arrays by hand.
std::unique_ptr<InstrumentState> SpiState(std::int32_t length) {
    auto state = MakeState();
    SetLength(*state, length);
    ResizeDecodeBuffers(*state);
    GroupRecord& group = MakeGroup(*state, {0, 1, 2, 3});
    group.Mode = 3;
    group.Name = std::string_view("FLASH");
    ShowColumns(*state, {{1}, {2}});
    ShowLines(*state, {{160, 0}});
    state->Timing.TimingGrid = 0;
    return state;
}

void PutByte(std::vector<std::uint16_t>& entries, std::size_t start, std::size_t end, int value) {
    entries[start] = static_cast<std::uint16_t>(spi::kStart | value);
    entries[end] = static_cast<std::uint16_t>(entries[end] | spi::kEnd);
}

TEST(SpiLine, FourLanesWithTheirNames) {
    const auto state = SpiState(1000);
    SetHigh(*state, 0, 100, 200);
    const auto painted = Paint(*state, 800, 200);
    // Half a text row is 7; lanes at 43, 81, 119 and 138, 16 pixels high.
    EXPECT_EQ(LaneTop(36, 0, {}), 43);
    EXPECT_EQ(LaneTop(36, 1, {}), 81);
    EXPECT_EQ(LaneTop(36, 2, {}), 119);
    EXPECT_EQ(LaneTop(36, 3, {}), 138);
    EXPECT_EQ(painted.Canvas.TextsAt(43), (std::vector<std::string>{"0", "Pod 1A Ch 0"}));
    EXPECT_EQ(painted.Canvas.TextsAt(62), (std::vector<std::string>{"G1", "FLASH"}));
    EXPECT_EQ(painted.Canvas.TextsAt(81), (std::vector<std::string>{"1", "Pod 1A Ch 1"}));
    EXPECT_EQ(painted.Canvas.TextsAt(119), (std::vector<std::string>{"2", "Pod 1A Ch 2"}));
    EXPECT_EQ(painted.Canvas.TextsAt(138), (std::vector<std::string>{"3", "Pod 1A Ch 3"}));
    const auto lanes = test::Polylines(painted.Canvas);
    ASSERT_EQ(lanes.size(), 4U);
    EXPECT_EQ(lanes[0][0].Y, 59);
    EXPECT_EQ(lanes[0][2].Y, 43);
    EXPECT_EQ(lanes[3][0].Y, 154);
}

TEST(SpiLine, BytesStandAboveTheirLane) {
    const auto state = SpiState(1000);
    PutByte(state->Serial.SpiSI[0], 100, 180, 0x9F);
    PutByte(state->Serial.SpiSO[0], 200, 280, 0x05);
    const auto painted = Paint(*state, 800, 200);
    // SI's bytes above its lane at 62, SO's at 100; DataLeft is 120.
    bool si = false;
    bool so = false;
    for (const auto& op : painted.Canvas.Ops()) {
        if (op.What != Kind::Text) continue;
        if (op.String == "9F") {
            si = true;
            EXPECT_EQ(op.Area.Left, 120 + 100 + (80 - 12) / 2);
            EXPECT_EQ(op.Area.Top, 63);
        }
        if (op.String == "05") {
            so = true;
            EXPECT_EQ(op.Area.Left, 120 + 200 + (80 - 12) / 2);
            EXPECT_EQ(op.Area.Top, 101);
        }
    }
    EXPECT_TRUE(si && so);
    const std::string dump = painted.Canvas.Dump();
    EXPECT_NE(dump.find("move 222,62\nline 220,68\nline 222,74\n"), std::string::npos)
        << "chevron at the start";
    EXPECT_NE(dump.find("move 298,62\nline 300,68\nline 298,74\n"), std::string::npos) << "and at the end";
}

TEST(SpiLine, ABytesPartOnScreenIsDrawnWithoutALeftChevron) {
    const auto state = SpiState(1000);
    PutByte(state->Serial.SpiSI[0], 100, 180, 0x9F);
    state->Timing.TimingDataPos = 140;
    std::string dump = Paint(*state, 800, 200).Canvas.Dump();
    EXPECT_NE(dump.find(" 9F\n"), std::string::npos);
    EXPECT_NE(dump.find("move 120,62\nline 158,62\n"), std::string::npos);
    state->Timing.TimingDataPos = 181;
    dump = Paint(*state, 800, 200).Canvas.Dump();
    EXPECT_EQ(dump.find(" 9F\n"), std::string::npos) << "it ended before the screen";
}

TEST(SpiLine, BytesTooNarrowForTheirTextAreHatched) {
    const auto state = SpiState(100000);
    for (std::size_t i = 0; i < 100; ++i)
        PutByte(state->Serial.SpiSI[0], 1000 + 100 * i, 1080 + 100 * i, 0x55);
    state->Timing.ScreenZoom = -20;
    const auto painted = Paint(*state, 800, 200);
    EXPECT_EQ(painted.Canvas.Dump().find(" 55\n"), std::string::npos);
    std::size_t hatches = 0;
    for (const auto& line : test::Polylines(painted.Canvas))
        hatches += line[0].Y == 62 && line[1].Y == 74 ? 1 : 0;
    EXPECT_EQ(hatches, 100U);
    state->Timing.ScreenZoom = -4000;
    const auto far = Paint(*state, 800, 200);
    for (const auto& line : test::Polylines(far.Canvas))
        EXPECT_LT(line.size(), 100U) << "a column is filled once";
}

TEST(SpiLine, EveryByteIsSeenAtEveryZoomBelow0) {
    test::Random random(5);
    const auto state = SpiState(200000);
    ShowColumns(*state, {});
    for (int round = 0; round < 100; ++round) {
        auto& entries = state->Serial.SpiSI[0];
        std::fill(entries.begin(), entries.end(), std::uint16_t{0});
        std::vector<std::pair<std::int64_t, std::int64_t>> bytes;
        const std::int32_t gap = random.OneIn(2) ? 1 : 1 + random.Below(3000);
        for (std::int64_t at = random.Below(500); at + 100 < 200000; at += random.Below(gap)) {
            bytes.emplace_back(at, at + 7 + random.Below(30));
            PutByte(entries, static_cast<std::size_t>(at), static_cast<std::size_t>(bytes.back().second),
                    0x55);
            at = bytes.back().second + 1;
        }
        const TimeAxis axis{random.Below(100000), -4 - random.Below(round % 2 == 0 ? 40 : 4000), 0, 700};
        state->Timing.TimingDataPos = static_cast<std::int32_t>(axis.First);
        state->Timing.ScreenZoom = axis.Zoom;
        std::set<std::int64_t> drawn;
        for (const auto& line : test::Polylines(Paint(*state, 700, 200).Canvas)) {
            if (line[0].Y != 62 && line[0].Y != 74) continue;
            for (const Point& point : line) drawn.insert(point.X);
        }
        // A byte fills its columns, the one that it ends in only beside others.
        std::set<std::int64_t> least;
        std::set<std::int64_t> most;
        for (const auto& [start, end] : bytes) {
            if (end <= axis.First) continue;
            const std::int64_t x0 = std::max<std::int64_t>(axis.XOf(start), 0);
            for (std::int64_t x = x0; x < std::max(axis.XOf(end), x0 + 1) && x < 700; ++x) least.insert(x);
            for (std::int64_t x = x0; x <= axis.XOf(end) && x < 700; ++x) most.insert(x);
        }
        ASSERT_TRUE(std::includes(drawn.begin(), drawn.end(), least.begin(), least.end())) << round;
        ASSERT_TRUE(std::includes(most.begin(), most.end(), drawn.begin(), drawn.end())) << round;
    }
}

TEST(SpiLine, GroupsWithoutASlotOrWithMissingChannelsHaveLanesOnly) {
    const auto state = SpiState(1000);
    PutByte(state->Serial.SpiSI[0], 100, 180, 0x9F);
    state->Groups[0].Size = 3;
    auto painted = Paint(*state, 800, 200);
    EXPECT_EQ(test::Polylines(painted.Canvas).size(), 3U);
    EXPECT_EQ(painted.Canvas.Dump().find(" 9F\n"), std::string::npos) << "no slot, no bytes";
    MakeGroup(*state, {0, 99, -5, 3});
    painted = Paint(*state, 800, 200);
    EXPECT_EQ(test::Polylines(painted.Canvas).size(), 2U);
    EXPECT_EQ(painted.Canvas.TextsAt(81), (std::vector<std::string>{"99", "Pod 3C Ch 19"}));
}

TEST(SpiLine, SlotsFollowTheOrderOfTheGroups) {
    const auto state = SpiState(1000);
    state->Groups[4] = state->Groups[0];
    PutByte(state->Serial.SpiSI[1], 100, 180, 0x77);
    ShowLines(*state, {{164, 0}});
    EXPECT_NE(Paint(*state, 800, 200).Canvas.Dump().find(" 77\n"), std::string::npos);
    state->Groups[0].Mode = 0;
    EXPECT_EQ(Paint(*state, 800, 200).Canvas.Dump().find(" 77\n"), std::string::npos);
}

TEST(SpiLine, ArraysShorterThanTheDataAreNotOverrun) {
    const auto state = SpiState(1000);
    PutByte(state->Serial.SpiSI[0], 100, 180, 0x9F);
    state->Serial.SpiSI[0].resize(150);
    state->Serial.SpiSO[0].clear();
    for (const int zoom : {50, 1, -10, -4000}) {
        state->Timing.ScreenZoom = zoom;
        for (const int position : {0, 120, 149, 150, 999, 100000}) {
            state->Timing.TimingDataPos = position;
            EXPECT_FALSE(Paint(*state, 800, 200).Canvas.Ops().empty());
        }
    }
}

TEST(LaneAt, FindsTheLane) {
    EXPECT_EQ(LaneAt(36, 42, {}), -1);
    EXPECT_EQ(LaneAt(36, 43, {}), 0);
    EXPECT_EQ(LaneAt(36, 61, {}), 0);
    EXPECT_EQ(LaneAt(36, 62, {}), -1);
    EXPECT_EQ(LaneAt(36, 81, {}), 1);
    EXPECT_EQ(LaneAt(36, 119, {}), 2);
    EXPECT_EQ(LaneAt(36, 138, {}), 3);
    EXPECT_EQ(LaneAt(36, 157, {}), -1);
}

}  // namespace
}  // namespace zu
