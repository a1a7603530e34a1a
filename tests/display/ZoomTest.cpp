// Zoom chain, clamp, origins and the sample axis.
#include <gtest/gtest.h>

#include "display/Zoom.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeState;
using test::SetLength;

struct ZoomRow {
    std::size_t Index;
    const char* Text;
    std::int32_t Zoom;
};
constexpr ZoomRow kRows[] = {
    {0, "  1:50 data:pixel", 50},     {1, "  1:20 data:pixel", 25},     {2, "  1:10 data:pixel", 10},
    {3, "  1:5  data:pixel", 5},      {4, "  1:2  data:pixel", 2},      {5, "  1:1  data:pixel", 1},
    {6, "  2:1  data:pixel", -2},     {7, "  4:1  data:pixel", -4},     {8, " 10:1  data:pixel", -10},
    {9, " 20:1  data:pixel", -20},    {10, " 40:1  data:pixel", -40},   {11, "100:1  data:pixel", -100},
    {12, "200:1  data:pixel", -200},  {13, "400:1  data:pixel", -400},  {14, "1000:1 data:pixel", -1000},
    {15, "2000:1 data:pixel", -2000}, {16, "4000:1 data:pixel", -4000},
};

class EachZoom : public testing::TestWithParam<ZoomRow> {};
INSTANTIATE_TEST_SUITE_P(Zoom, EachZoom, testing::ValuesIn(kRows));

TEST_P(EachZoom, HasItsTextValueAndNeighbours) {
    const ZoomRow& row = GetParam();
    EXPECT_EQ(kZoomTable[row.Index].MenuText, row.Text);
    EXPECT_EQ(kZoomTable[row.Index].Zoom, row.Zoom);
    EXPECT_EQ(ZoomIn(row.Zoom), row.Index == 0 ? 50 : kRows[row.Index - 1].Zoom);
    EXPECT_EQ(ZoomOut(row.Zoom), row.Index == 16 ? -4000 : kRows[row.Index + 1].Zoom);
}

TEST(Zoom, ValuesOffTheChainStay) {
    for (const int zoom : {0, 3, 20, -1, -3, -8000, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(ZoomIn(zoom), zoom);
        EXPECT_EQ(ZoomOut(zoom), zoom);
    }
}

TEST(Zoom, ClampTakesTheFirstStepThatLeavesHalfAScreenInside) {
    // 1000 pixels, 8192 samples: -10 shows 10000, half of it fits; -20's half does not.
    EXPECT_EQ(ClampZoom(-10, 1000, 8192), -10);
    EXPECT_EQ(ClampZoom(-20, 1000, 8192), -10);
    EXPECT_EQ(ClampZoom(-4000, 1000, 8192), -10);
    EXPECT_EQ(ClampZoom(-4, 1000, 8192), -4);
    EXPECT_EQ(ClampZoom(50, 1000, 8192), 50) << "zooms above 0 are not replaced";
    // Exactly half a screen is enough.
    EXPECT_EQ(ClampZoom(-20, 1000, 10000), -20);
    EXPECT_EQ(ClampZoom(-20, 1000, 9999), -10);
}

TEST(Zoom, ClampWithoutAFittingStepKeepsTheZoom) {
    // -2 with 1000 pixels shows 2000 samples: with less than 1000 samples no step fits.
    EXPECT_EQ(ClampZoom(-40, 1000, 900), -40);
    // Between two steps: -40 shows 40000 and needs 20000, -20 shows 20000 and needs 20001 > 20000 samples.
    EXPECT_EQ(ClampZoom(-400, 1000, 60000), -100);
    EXPECT_EQ(ClampZoom(-400, 1000, 30000), -40);
}

TEST(Zoom, PositionLeavesHalfAScreen) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    state->Timing.ScreenZoom = -40;
    state->Timing.TimingDataPos = 90000;
    ClampZoomPosition(*state, 1000);
    EXPECT_EQ(state->Timing.TimingDataPos, 80000);
    ClampZoomPosition(*state, 1000);
    EXPECT_EQ(state->Timing.TimingDataPos, 80000);
    state->Timing.ScreenZoom = -1000;
    ClampZoomPosition(*state, 1000);
    EXPECT_EQ(state->Timing.TimingDataPos, 0) << "memory is shorter than half a screen";
}

TEST(Zoom, PositionAboveZoom0CountsPixelsTimesZoom) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    state->Timing.ScreenZoom = 25;
    state->Timing.TimingDataPos = 99000;
    ClampZoomPosition(*state, 1001);
    EXPECT_EQ(state->Timing.TimingDataPos, 100000 - 12512) << "25 x 1001 / 2 cut";
    SetLength(*state, 8192);
    ClampZoomPosition(*state, 1001);
    EXPECT_EQ(state->Timing.TimingDataPos, 0) << "the slack is cut to memory";
}

TEST(Zoom, SetZoomByOrigin) {
    const auto state = MakeState();
    const auto at = [&](int origin, std::int32_t from, std::int32_t to, const ZoomPoint& point = {}) {
        state->Timing.TimingDataPos = 5000;
        state->Timing.ScreenZoom = from;
        SetZoom(*state, 800, origin, point, to);
        EXPECT_EQ(state->Timing.ScreenZoom, to);
        return state->Timing.TimingDataPos;
    };
    EXPECT_EQ(at(-1, 1, 2), 5200) << "sample 5400 stays in the middle";
    EXPECT_EQ(at(-1, 1, -2), 4600);
    EXPECT_EQ(at(-1, 2, -40), 0) << "clamped to 0";
    EXPECT_EQ(at(-2, 1, 10), 5000);
    EXPECT_EQ(at(-3, 1, 10, {5300, 300}), 5270);
    EXPECT_EQ(at(-3, 1, -10, {5300, 300}), 2300);
    EXPECT_EQ(at(-3, 1, -10, {100, 300}), 0);
    for (int cursor = 0; cursor <= 4; ++cursor) {
        state->Cursors.Cur[static_cast<std::size_t>(cursor)] = 7000 + cursor;
        EXPECT_EQ(at(cursor, 1, 2), 7000 + cursor - 200);
        EXPECT_EQ(at(cursor, 1, -2), 7000 + cursor - 800);
    }
    EXPECT_EQ(at(77, 1, 2), 5200) << "an origin that is none counts as the centre";
}

TEST(Zoom, ApplyZoomTellsWhetherAnythingChanged) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    state->Timing.ScreenZoom = 1;
    EXPECT_FALSE(ApplyZoom(*state, 800, -2, {}, 1));
    EXPECT_TRUE(ApplyZoom(*state, 800, -2, {}, -4));
    EXPECT_TRUE(ApplyZoom(*state, 800, -2, {}, -4000)) << "replaced by what fits";
    EXPECT_EQ(state->Timing.ScreenZoom, -200);
    EXPECT_FALSE(ApplyZoom(*state, 800, -2, {}, -4000));
}

TEST(Zoom, AHeldPointStaysAtStrongZoomsOfShortCaptures) {
    const auto state = MakeState();
    SetLength(*state, 8192);
    state->Timing.ScreenZoom = 10;
    state->Timing.TimingDataPos = 4000;
    ApplyZoom(*state, 800, kOriginPoint, {4040, 400}, 25);
    EXPECT_EQ(state->Timing.TimingDataPos, 4040 - 16);
}

TEST(Zoom, VisibleAndShownSamples) {
    EXPECT_EQ(SamplesInPixels(800, 1), 800);
    EXPECT_EQ(SamplesInPixels(801, 2), 400);
    EXPECT_EQ(SamplesInPixels(800, -40), 32000);
    EXPECT_EQ(SamplesInPixels(800, 0), 800) << "zoom 0 counts as 1";
    EXPECT_EQ(SamplesInPixels(-5, 1), 0);
    EXPECT_EQ(SamplesInPixels(800, INT32_MIN), 800LL * 1000000);
    EXPECT_EQ(SamplesInPixels(800, INT32_MAX), 0);

    EXPECT_EQ(ShownSamples(0, 1, 800, 10000), 800);
    EXPECT_EQ(ShownSamples(9900, 1, 800, 10000), 100);
    EXPECT_EQ(ShownSamples(0, -40, 800, 10000), 10000);
    EXPECT_EQ(ShownSamples(0, 50, 800, 10000), 16);
    EXPECT_EQ(ShownSamples(-10, 1, 800, 10000), 800);
    EXPECT_EQ(ShownSamples(20000, 1, 800, 10000), 0);
    EXPECT_EQ(ShownSamples(0, 1, 800, 0), 0);
    EXPECT_EQ(ShownSamples(0, 1, -3, 100), 0);
}

TEST(TimeAxis, XOfSample) {
    const TimeAxis wide{100, 10, 130, 930};
    EXPECT_EQ(wide.XOf(100), 130);
    EXPECT_EQ(wide.XOf(103), 160);
    EXPECT_EQ(wide.SampleAt(160), 103);
    EXPECT_EQ(wide.SampleAt(169), 103);
    EXPECT_TRUE(wide.OnScreen(179));
    EXPECT_FALSE(wide.OnScreen(180)) << "x 930 is beyond the last pixel";
    EXPECT_FALSE(wide.OnScreen(99));
    const TimeAxis narrow{100, -40, 130, 930};
    EXPECT_EQ(narrow.XOf(139), 130);
    EXPECT_EQ(narrow.XOf(140), 131);
    EXPECT_EQ(narrow.SampleAt(131), 140);
    EXPECT_TRUE(narrow.OnScreen(100 + 800 * 40 - 1));
    EXPECT_FALSE(narrow.OnScreen(100 + 800 * 40));
    const TimeAxis none{0, 1, 130, 20};
    EXPECT_EQ(none.Width(), 0);
    EXPECT_FALSE(none.OnScreen(0));
}

TEST(TimeAxis, SampleAndXAreInverse) {
    test::Random random(11);
    for (int round = 0; round < 20000; ++round) {
        TimeAxis axis;
        axis.First = random.Below(2000000);
        axis.Left = random.Below(500);
        axis.Right = axis.Left + 1 + random.Below(4000);
        axis.Zoom = kZoomTable[static_cast<std::size_t>(random.Below(17))].Zoom;
        const std::int32_t x = axis.Left + random.Below(axis.Width());
        const std::int64_t sample = axis.SampleAt(x);
        ASSERT_TRUE(axis.OnScreen(sample));
        // The sample's first pixel is at or left of x by less than a sample's width; below zoom 0 it is x.
        ASSERT_LE(axis.XOf(sample), x);
        ASSERT_GT(axis.XOf(sample) + std::max(axis.Zoom, 1), x);
        ASSERT_EQ(axis.SampleAt(axis.XOf(sample)), sample);
    }
}

}  // namespace
}  // namespace zu
