// What lies under a point: rows, columns, cursors, ticks.
#include <algorithm>
#include <gtest/gtest.h>

#include "display/GroupLine.h"
#include "display/HitTest.h"
#include "display/Zoom.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeState;
using test::SetLength;
using test::ShowLines;

constexpr Metrics kFonts;

TEST(LineAtY, WalksTheRowsFromTheFirstShown) {
    const auto state = MakeState();
    state->Groups[2].Mode = 3;
    ShowLines(*state, {{9, 5}, {161, 0}, {190, 9}, {162, 0}, {3, 6}});
    EXPECT_FALSE(LineAtY(*state, kFonts, 35)) << "above the first row";
    const auto first = LineAtY(*state, kFonts, 36);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->Line, 0);
    EXPECT_EQ(first->Kind, LineKind::Channel);
    EXPECT_EQ(first->Number, 9);
    EXPECT_EQ(LineAtY(*state, kFonts, 54)->Line, 0);
    const auto group = LineAtY(*state, kFonts, 55);
    EXPECT_EQ(group->Line, 1);
    EXPECT_EQ(group->Kind, LineKind::Group);
    EXPECT_EQ(group->Number, 1);
    const auto spacer = LineAtY(*state, kFonts, 70);
    EXPECT_EQ(spacer->Kind, LineKind::Spacer);
    EXPECT_EQ(spacer->Number, -1);
    EXPECT_EQ(spacer->Height, 15) << "a spacer counts as a text row, though it is drawn by its style";
    EXPECT_EQ(LineAtY(*state, kFonts, 85)->Line, 3);
    EXPECT_EQ(LineAtY(*state, kFonts, 85)->Height, 135);
    EXPECT_EQ(LineAtY(*state, kFonts, 220)->Line, 4);
    EXPECT_EQ(LineAtY(*state, kFonts, 232)->Line, 4);
    EXPECT_FALSE(LineAtY(*state, kFonts, 233));
    state->Timing.TimingChPos = 4;
    EXPECT_EQ(LineAtY(*state, kFonts, 36)->Line, 4);
}

TEST(LineAtY, LinesWithoutDataTakeNoRoom) {
    const auto state = MakeState();
    SetBufLenFull(state->Buffer.BufLen, 1, 0);
    ShowLines(*state, {{8, 5}, {9, 5}, {0, 5}});
    EXPECT_EQ(LineAtY(*state, kFonts, 36)->Line, 2);
}

TEST(LineAtY, FindsTheRowThatWasPainted) {
    test::Random random(9);
    const auto state = MakeState(15);
    test::ShowColumns(*state, {{1}});
    state->Timing.TimingGrid = 0;
    for (int round = 0; round < 200; ++round) {
        const Metrics fonts = Metrics::ForScreen(round % 2 == 0 ? 600 : 1080);
        for (int pod = 0; pod < 20; ++pod)
            SetBufLenFull(state->Buffer.BufLen, pod, random.OneIn(4) ? 0 : 1000);
        for (GroupRecord& group : state->Groups)
            group.Mode = static_cast<std::int8_t>(random.OneIn(6) ? 3 + random.Below(4) : 0);
        state->Timing.TimingLines = 1 + random.Below(60);
        state->Timing.TimingChPos = random.Below(5);
        // Each source once, so that its number names its row.
        for (std::size_t line = 0; line < 60; ++line) {
            state->Timing.LineSource[line] = random.OneIn(3) && line < 30
                                                 ? 160 + static_cast<std::int32_t>(line)
                                                 : static_cast<std::int32_t>(2 * line) + random.Below(2);
            state->Timing.LineStyle[line] = static_cast<std::uint8_t>(random.Below(12));
        }
        const auto painted = test::Paint(*state, 400, 1200, fonts);
        for (std::int32_t y = kHeaderHeight; y < 1200; ++y) {
            const auto hit = LineAtY(*state, fonts, y);
            if (!hit) break;
            if (y != hit->Top) continue;
            const bool group = hit->Kind == LineKind::Group;
            const bool lanes = group && IsSpiGroup(*state, hit->Number);
            // An SPI line has its group's number below the first lane.
            const std::int32_t at = lanes ? LaneTop(y, 0, fonts) + kLaneStep : y;
            const auto texts = painted.Canvas.TextsAt(at);
            const std::string number =
                group ? "G" + std::to_string(hit->Number + 1) : std::to_string(hit->Number);
            ASSERT_NE(std::find(texts.begin(), texts.end(), number), texts.end())
                << "round " << round << " y " << y << " line " << hit->Line;
        }
    }
}

TEST(ColumnAtX, FindsTheSpan) {
    const auto state = MakeState();
    test::ShowColumns(*state, {{2}, {3}, {4}});
    const ColumnLayout layout = LayoutColumns(*state, 6);
    EXPECT_EQ(ColumnAtX(layout, 0), 0);
    EXPECT_EQ(ColumnAtX(layout, 89), 0);
    EXPECT_EQ(ColumnAtX(layout, 90), -1) << "the gap";
    EXPECT_EQ(ColumnAtX(layout, 96), 1);
    EXPECT_EQ(ColumnAtX(layout, 114), 2);
    EXPECT_EQ(ColumnAtX(layout, 400), -1);
}

TEST(CursorNear, WithinFourPixels) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    state->Cursors.Cur = {1000, 1100, 1200, 1300, 50, 0};
    const TimeAxis one{900, 1, 150, 950};
    EXPECT_EQ(CursorNear(*state, one, 250), 0);
    EXPECT_EQ(CursorNear(*state, one, 254), 0);
    EXPECT_EQ(CursorNear(*state, one, 246), 0);
    EXPECT_EQ(CursorNear(*state, one, 255), -1);
    EXPECT_EQ(CursorNear(*state, one, 350), 1);
    const TimeAxis narrow{0, -40, 150, 950};
    EXPECT_EQ(CursorNear(*state, narrow, 150 + 21), 0) << "160 samples are near";
    EXPECT_EQ(CursorNear(*state, narrow, 150 + 20), -1);
    EXPECT_EQ(CursorNear(*state, narrow, 150 + 1), 4);
    const TimeAxis wide{990, 50, 150, 1950};
    EXPECT_EQ(CursorNear(*state, wide, 650), 0);
    EXPECT_EQ(CursorNear(*state, wide, 646), 0);
    EXPECT_EQ(CursorNear(*state, wide, 645), -1);
    EXPECT_EQ(CursorNear(*state, wide, 699), 0) << "all of the sample is near";
    EXPECT_EQ(CursorNear(*state, wide, 700), -1);
}

TEST(CursorNear, TheClosestWinsAndTheLowerOnATie) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    state->Cursors.Cur = {103, 100, 100, 500, 99, 0};
    const TimeAxis axis{0, 1, 0, 800};
    EXPECT_EQ(CursorNear(*state, axis, 100), 1) << "B and C on one sample: B";
    EXPECT_EQ(CursorNear(*state, axis, 102), 0);
    EXPECT_EQ(CursorNear(*state, axis, 98), 4);
    state->Cursors.Cur = {98, 102, 0, 0, 0, 0};
    EXPECT_EQ(CursorNear(*state, axis, 100), 0);
}

TEST(CursorNear, CursorsOffTheScreenAreNotNear) {
    const auto state = MakeState();
    state->Cursors.Cur = {99, 900, 901, 902, 903, 0};
    EXPECT_EQ(CursorNear(*state, {100, 1, 0, 800}, 0), -1);
}

TEST(Strip, ScaleAndBack) {
    const auto state = MakeState();
    SetLength(*state, 8000);
    const StripScale strip = StripOf(*state, 150, 950);
    EXPECT_EQ(strip.XOf(0), 150);
    EXPECT_EQ(strip.XOf(19), 151);
    EXPECT_EQ(strip.XOf(7999), 949);
    EXPECT_EQ(strip.SampleAt(150), 0);
    EXPECT_EQ(strip.SampleAt(551), 4010);
    const StripScale none = StripOf(*state, 950, 150);
    EXPECT_EQ(none.SampleAt(500), 0);
    SetLength(*state, 0);
    EXPECT_EQ(StripOf(*state, 0, 100).Longest, 1);
}

TEST(Strip, BoxShowsWhereTheScreenLies) {
    const auto state = MakeState();
    SetLength(*state, 8000);
    state->Timing.TimingDataPos = 1000;
    const StripScale strip = StripOf(*state, 150, 950);
    StripBox box = BoxOf(*state, strip, 26);
    EXPECT_EQ(box.Left, 250);
    EXPECT_EQ(box.Right, 330);
    EXPECT_EQ(box.Top, 3);
    EXPECT_EQ(box.Bottom, 22);
    state->Timing.TimingDataPos = -50;
    box = BoxOf(*state, strip, 26);
    EXPECT_EQ(box.Left, 150);
    EXPECT_EQ(box.Right, 230);
}

TEST(Strip, TicksAreNearWithinTwoPixels) {
    const auto state = MakeState();
    SetLength(*state, 8000);
    state->Cursors.Cur = {1000, 2000, 2010, 3000, 4000, 0};
    const StripScale strip = StripOf(*state, 150, 950);
    EXPECT_EQ(TickNear(*state, strip, 250), 0);
    EXPECT_EQ(TickNear(*state, strip, 252), 0);
    EXPECT_EQ(TickNear(*state, strip, 248), 0);
    EXPECT_EQ(TickNear(*state, strip, 253), -1);
    EXPECT_EQ(TickNear(*state, strip, 351), 2) << "C's own pixel";
    EXPECT_EQ(TickNear(*state, strip, 350), 1);
    EXPECT_EQ(TickNear(*state, StripOf(*state, 950, 150), 250), -1);
}

}  // namespace
}  // namespace zu
