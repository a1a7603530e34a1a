// How samples of a channel become points at every zoom.
#include <gtest/gtest.h>

#include "display/ChannelTrace.h"
#include "display/Zoom.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::FillPod;
using test::MakeState;
using test::SetHigh;
using test::SetLength;
using Points = std::vector<Point>;

constexpr std::int32_t kLeft = 150;
constexpr std::int32_t kTop = 36;
constexpr std::int32_t kRow = 19;
constexpr std::int32_t kHigh = kTop;
constexpr std::int32_t kLow = kTop + kRow - 5;

struct Tracer {
    std::unique_ptr<InstrumentState> State = MakeState();
    RecorderCanvas Canvas{1000, 400};
    PolylineBuffer Buffer;
    DigestSet Digests;

    explicit Tracer(std::int32_t length) { SetLength(*State, length); }

    Points Trace(int channel, std::int64_t first, std::int32_t zoom, std::int32_t right,
                 LineExtra extra = LineExtra::Plain) {
        Canvas.Clear();
        const TimeAxis axis{first, zoom, kLeft, right};
        Digests.Begin(axis);
        const RowFrame row{*State, Canvas, Buffer, Digests, axis, kTop, kRow, FontId::Text};
        DrawChannelTrace(row, channel, extra);
        Points all;
        for (const auto& line : test::Polylines(Canvas)) all.insert(all.end(), line.begin(), line.end());
        return all;
    }
    [[nodiscard]] std::vector<std::string> Labels() const { return Canvas.TextsAt(kTop + 1); }
};

TEST(TraceZoom1, StepsAtEachChange) {
    Tracer t(1000);
    SetHigh(*t.State, 2, 105, 108);
    // The walk runs five pixels beyond the right edge and marks the edge itself.
    const Points want{{150, kLow}, {155, kLow}, {155, kHigh}, {158, kHigh},
                      {158, kLow}, {170, kLow}, {170, kLow},  {175, kLow}};
    EXPECT_EQ(t.Trace(2, 100, 1, 170), want);
}

TEST(TraceZoom1, EndsWithTheData) {
    Tracer t(1000);
    SetHigh(*t.State, 2, 997, 1000);
    const Points want{{150, kLow}, {152, kLow}, {152, kHigh}, {155, kHigh}};
    EXPECT_EQ(t.Trace(2, 995, 1, 170), want) << "five samples are left";
    EXPECT_TRUE(t.Trace(2, 1000, 1, 170).empty());
    EXPECT_TRUE(t.Trace(2, 5000, 1, 170).empty());
}

TEST(TraceWide, StepsByPixelsPerSample) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 11, 13);
    const Points want{{150, kLow}, {160, kLow}, {160, kHigh}, {180, kHigh},
                      {180, kLow}, {210, kLow}, {220, kLow}};
    // Right edge 200: the flat run is closed at 210, the first sample at or beyond 205; the walk ends there.
    EXPECT_EQ(t.Trace(0, 10, 10, 200), want);
}

TEST(TraceWide, EndsWithTheLastSamplesFullWidth) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 999, 1000);
    const Points want{{150, kLow}, {170, kLow}, {170, kHigh}, {180, kHigh}};
    EXPECT_EQ(t.Trace(0, 997, 10, 800), want);
}

TEST(TraceCompressed, AGlitchOfOneSampleIsAFullStroke) {
    for (const ZoomStep& step : kZoomTable) {
        if (step.Zoom > 0) continue;
        const std::int32_t s = -step.Zoom;
        Tracer t(50 * s);
        SetHigh(*t.State, 3, 20 * s + s / 2, 20 * s + s / 2 + 1);
        // Inside its column the stroke goes up and the column's last sample brings it down again; in the last
        // sample of a column it comes down in the next one.
        const std::int32_t x = kLeft + 20;
        const bool inside = s / 2 != s - 1;
        const Points want =
            inside ? Points{{kLeft, kLow}, {x, kLow}, {x, kHigh}, {x, kHigh}, {x, kLow}, {kLeft + 49, kLow}}
                   : Points{{kLeft, kLow},  {x, kLow},     {x, kHigh},
                            {x + 1, kHigh}, {x + 1, kLow}, {kLeft + 49, kLow}};
        EXPECT_EQ(t.Trace(3, 0, step.Zoom, kLeft + 50), want) << step.Zoom;
    }
}

TEST(TraceCompressed, AColumnEndsAtTheLevelOfItsLastSample) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 12, 15);    // up and down within column 1
    SetHigh(*t.State, 0, 25, 1000);  // up in column 2, stays
    const Points want{{150, kLow}, {151, kLow}, {151, kHigh}, {151, kHigh},
                      {151, kLow}, {152, kLow}, {152, kHigh}, {159, kHigh}};
    EXPECT_EQ(t.Trace(0, 0, -10, 160), want);
}

TEST(TraceCompressed, ColumnsAreAlignedToTheirWidth) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 20, 30);
    // First shown sample 17: the first column is samples 10..19, drawn at the left edge.
    const Points want{{150, kLow}, {151, kLow}, {151, kHigh}, {152, kHigh}, {152, kLow}, {159, kLow}};
    EXPECT_EQ(t.Trace(0, 17, -10, 160), want);
    EXPECT_EQ(t.Trace(0, 10, -10, 160), want);
}

TEST(TraceCompressed, LessThanOneColumnOfDataDrawsNothing) {
    Tracer t(3999);
    SetHigh(*t.State, 0, 100, 200);
    EXPECT_TRUE(t.Trace(0, 0, -4000, 800).empty());
    EXPECT_FALSE(t.Trace(0, 0, -2000, 800).empty());
    EXPECT_TRUE(t.Trace(0, 3990, -2000, 800).empty()) << "beyond the last whole column";
}

TEST(Trace, AbsentPodsDrawNothing) {
    Tracer t(1000);
    for (const int zoom : {50, 1, -10}) {
        EXPECT_TRUE(t.Trace(45, 0, zoom, 800).empty());
        EXPECT_TRUE(t.Trace(159, 0, zoom, 800).empty());
        EXPECT_TRUE(t.Trace(160, 0, zoom, 800).empty());
        EXPECT_TRUE(t.Trace(-1, 0, zoom, 800).empty());
    }
}

TEST(Trace, PatternPodsShowTheirPattern) {
    Tracer t(1000);
    t.State->Buffer.Pattern(0)[5] = 1;
    t.State->Pods.HardwarePod[0] = 2;
    const Points want{{150, kLow}, {155, kLow}, {155, kHigh}, {156, kHigh},
                      {156, kLow}, {160, kLow}, {160, kLow},  {165, kLow}};
    EXPECT_EQ(t.Trace(0, 0, 1, 160), want);
}

TEST(Trace, SamplesAreCountedFromThePodsAlignment) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 30, 40);
    t.State->Pods.AdjAddr[0] = 25;
    const Points want{{150, kLow}, {155, kLow}, {155, kHigh}, {165, kHigh},
                      {165, kLow}, {170, kLow}, {170, kLow},  {175, kLow}};
    EXPECT_EQ(t.Trace(0, 0, 1, 170), want);
}

TEST(Trace, BehindAWideAlignmentTheLineIsLow) {
    Tracer t(1000);
    FillPod(*t.State, 0, [](std::int32_t) { return 1; });
    t.State->Pods.AdjAddr[0] = 300;  // 872 samples are shown, 700 are stored
    const Points want{{150, kHigh}, {160, kHigh}, {160, kLow}, {169, kLow}};
    EXPECT_EQ(t.Trace(0, 600, -10, 170), want);
    const Points one{{150, kHigh}, {160, kHigh}, {160, kLow}, {165, kLow}};
    EXPECT_EQ(t.Trace(0, 690, 1, 160), one);
}

TEST(Trace, AHugeWidthGoesOnInAFurtherPolyline) {
    Tracer t(60000);
    FillPod(*t.State, 0, [](std::int32_t i) { return i % 10 == 5 ? 1 : 0; });
    t.Trace(0, 0, -10, kLeft + 6000);
    const auto lines = test::Polylines(t.Canvas);
    ASSERT_EQ(lines.size(), 2U) << "6000 columns with 4 points each";
    EXPECT_LE(lines[0].size(), 13500U);
    EXPECT_EQ(lines[0].back(), lines[1].front()) << "the picture has no gap";
    t.Trace(0, 0, -10, kLeft + 3000);
    EXPECT_EQ(test::Polylines(t.Canvas).size(), 1U);
}

// Slow reading of a drawn compressed trace: level at the end of each column and whether it has a stroke.
struct Column {
    bool Stroke = false;
    bool Level = false;
};
std::vector<Column> ReadColumns(const Points& points, std::int32_t columns) {
    std::vector<Column> read(static_cast<std::size_t>(columns));
    std::size_t at = 0;
    bool level = points.front().Y == kHigh;
    for (std::int32_t c = 0; c < columns; ++c) {
        Column& column = read[static_cast<std::size_t>(c)];
        for (; at < points.size() && points[at].X <= kLeft + c; ++at) {
            if (at > 0 && points[at].X == points[at - 1].X && points[at].Y != points[at - 1].Y)
                column.Stroke = true;
            level = points[at].Y == kHigh;
        }
        column.Level = level;
    }
    return read;
}

class EachNarrowZoom : public testing::TestWithParam<std::int32_t> {};
INSTANTIATE_TEST_SUITE_P(Decimation, EachNarrowZoom,
                         testing::Values(-1, -2, -3, -4, -10, -20, -40, -64, -100, -200, -333, -400, -1000,
                                         -2000, -4000));

/// Fills channel 0..7 with phases of random lengths and glitches of one sample.
void Jitter(Tracer& t, test::Random& random, std::int32_t length, std::int32_t rarity) {
    SetLength(*t.State, length);
    int value = random.Below(256);
    FillPod(*t.State, 0, [&](std::int32_t) {
        const int now = value;
        if (random.OneIn(rarity)) value = random.Below(256);
        return random.OneIn(2 * rarity) ? now ^ 0x10 : now;
    });
    t.State->Pods.AdjAddr[0] = random.Below(40);
}

/// Draws random samples at zoom -s and reads them slowly: a stroke exactly in the columns that differ from
/// the level before them, and the level of the column's last sample behind it.
void ExpectNoPulseLost(Tracer& t, test::Random& random, std::int32_t s) {
    const std::int32_t length = s + random.Below(60 * s);
    Jitter(t, random, length, 1 + random.Below(3 * s));
    const std::int64_t first = random.Below(length);
    const std::int32_t width = 1 + random.Below(70);
    const int channel = random.Below(8);

    const SampleView view = BindChannel(*t.State, channel);
    const std::int64_t start = first - first % s;
    const std::int64_t shown = ShownSamples(first, -s, width, view.Shown);
    const auto columns = static_cast<std::int32_t>(shown > 0 ? (first % s + shown) / s : 0);
    const Points points = t.Trace(channel, first, -s, kLeft + width);
    if (columns == 0) {
        ASSERT_TRUE(points.empty());
        return;
    }
    ASSERT_EQ(points.front().X, kLeft);
    ASSERT_EQ(points.back().X, kLeft + columns - 1);
    const auto bit = [&](std::int64_t i) { return (view.At(i) >> channel & 1) != 0; };
    const auto read = ReadColumns(points, columns);
    bool before = bit(start);
    for (std::int32_t c = 0; c < columns; ++c) {
        bool differs = false;
        for (std::int64_t i = start + c * s; i < start + (c + 1) * s; ++i)
            differs = differs || bit(i) != before;
        const Column& column = read[static_cast<std::size_t>(c)];
        ASSERT_EQ(column.Stroke, differs) << "zoom " << -s << " column " << c;
        before = bit(start + (c + 1) * s - 1);
        ASSERT_EQ(column.Level, before) << "zoom " << -s << " column " << c;
    }
}

TEST_P(EachNarrowZoom, HasAStrokeExactlyWhereASlowScanFindsADifference) {
    test::Random random(static_cast<unsigned>(-GetParam()));
    Tracer t(0);
    for (int round = 0; round < 60; ++round) {
        ExpectNoPulseLost(t, random, -GetParam());
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST(Decimation, NoPulseIsLostAtAnyZoomBelow0) {
    test::Random random(12);
    Tracer t(0);
    for (int round = 0; round < 400; ++round) {
        ExpectNoPulseLost(t, random, 1 + random.Below(round % 2 == 0 ? 40 : 4100));
        ASSERT_FALSE(HasFatalFailure());
    }
}

class EachWideZoom : public testing::TestWithParam<std::int32_t> {};
INSTANTIATE_TEST_SUITE_P(Expansion, EachWideZoom, testing::Values(1, 2, 3, 5, 10, 25, 50));

TEST_P(EachWideZoom, EveryPixelHasTheLevelOfItsSampleAndStrokesStandAtChanges) {
    const std::int32_t p = GetParam();
    test::Random random(static_cast<unsigned>(1000 + p));
    Tracer t(0);
    for (int round = 0; round < 100; ++round) {
        const std::int32_t length = 1 + random.Below(300);
        Jitter(t, random, length, 1 + random.Below(30));
        const SampleView view = BindChannel(*t.State, 5);
        const std::int64_t first = random.Below(length);
        const std::int32_t width = p + random.Below(900);
        const Points points = t.Trace(5, first, p, kLeft + width);
        const std::int64_t left = view.Shown - first;
        if (left <= 0) {
            ASSERT_TRUE(points.empty());
            continue;
        }
        // The trace reaches the right edge or the end of the data.
        ASSERT_GE(points.back().X, std::min<std::int64_t>(kLeft + width, kLeft + left * p));
        const auto bit = [&](std::int64_t i) { return (view.At(i) >> 5 & 1) != 0; };
        const auto pixels = static_cast<std::int32_t>(std::min<std::int64_t>(width, left * p));
        const auto read = ReadColumns(points, pixels);
        for (std::int32_t x = 0; x < pixels; ++x) {
            const std::int64_t sample = first + x / p;
            const Column& column = read[static_cast<std::size_t>(x)];
            ASSERT_EQ(column.Level, bit(sample)) << "zoom " << p << " pixel " << x;
            const bool change = x > 0 && x % p == 0 && bit(sample) != bit(sample - 1);
            ASSERT_EQ(column.Stroke, change) << "zoom " << p << " pixel " << x;
        }
    }
}

TEST(Labels, PulseWidthsStandBetweenTheirEdges) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 5, 15);
    SetHigh(*t.State, 0, 20, 40);
    t.Trace(0, 0, 10, 950, LineExtra::PulseWidth);
    // Edges at 5, 15, 20, 40: the first phase has no beginning on screen, the last no end.
    EXPECT_EQ(t.Labels(), (std::vector<std::string>{"100ns", "50ns", "200ns"}));
    for (const auto& op : t.Canvas.Ops()) {
        if (op.What == RecorderCanvas::Kind::Text && op.String == "100ns") {
            EXPECT_EQ(op.Area.Left, kLeft + 50 + (100 - 30) / 2);
        }
    }
}

TEST(Labels, WidthsThatDoNotFitAreLeftOut) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 5, 7);
    SetHigh(*t.State, 0, 20, 40);
    t.Trace(0, 0, 10, 950, LineExtra::PulseWidth);
    EXPECT_EQ(t.Labels(), (std::vector<std::string>{"130ns", "200ns"})) << "20ns takes 24 pixels of 20";
}

TEST(Labels, WithoutARateWidthsAreSamplesAndFrequenciesAreNone) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 5, 15);
    SetHigh(*t.State, 0, 25, 35);
    t.State->Clock.ClockType = 1;
    t.Trace(0, 0, 10, 950, LineExtra::PulseWidth);
    EXPECT_EQ(t.Labels(), (std::vector<std::string>{"10.00Sa", "10.00Sa", "10.00Sa"}));
    t.Trace(0, 0, 10, 950, LineExtra::FrequencyRising);
    EXPECT_TRUE(t.Labels().empty());
}

TEST(Labels, LabelsFollowTheRateNotTheCursorWindow) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 5, 15);
    t.State->Cursors.CursorDlgMode = 0;
    t.Trace(0, 0, 10, 950, LineExtra::PulseWidth);
    EXPECT_EQ(t.Labels(), (std::vector<std::string>{"100ns"}));
}

TEST(Labels, FrequenciesFromEdgeToEdge) {
    Tracer t(1000);
    SetHigh(*t.State, 0, 5, 15);
    SetHigh(*t.State, 0, 25, 45);
    SetHigh(*t.State, 0, 65, 75);
    t.Trace(0, 0, 10, 950, LineExtra::FrequencyFalling);
    // Falling at 15, 45, 75: 30 samples of 10 ns.
    EXPECT_EQ(t.Labels(), (std::vector<std::string>{"  3.3MHz", "  3.3MHz"}));
    t.Trace(0, 0, 10, 950, LineExtra::FrequencyRising);
    // Rising at 5, 25, 65.
    EXPECT_EQ(t.Labels(), (std::vector<std::string>{"  5.0MHz", "  2.5MHz"}));
}

TEST(Labels, OnlyZoomsAbove1HaveThem) {
    Tracer t(1000);
    FillPod(*t.State, 0, [](std::int32_t i) { return i / 100 & 1; });
    for (const int zoom : {1, -2, -10}) {
        t.Trace(0, 0, zoom, 950, LineExtra::PulseWidth);
        EXPECT_TRUE(t.Labels().empty());
    }
    t.Trace(0, 0, 2, 950, LineExtra::Plain);
    EXPECT_TRUE(t.Labels().empty());
}

}  // namespace
}  // namespace zu
