// Group lines in all styles.
#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "display/GroupLine.h"
#include "state/SampleView.h"
#include "support/Groups.h"
#include "support/Recorded.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::FillPod;
using test::MakeGroup;
using test::MakeRun;
using test::MakeState;
using test::Paint;
using test::SetHigh;
using test::SetLength;
using test::ShowColumns;
using test::ShowLines;
using Kind = RecorderCanvas::Kind;
using Points = std::vector<Point>;

/// Group line painter without the rest of the view.
struct GroupPainter {
    std::unique_ptr<InstrumentState> State = MakeState();
    RecorderCanvas Canvas{2000, 400};
    PolylineBuffer Buffer;
    DigestSet Digests;

    explicit GroupPainter(std::int32_t length) { SetLength(*State, length); }
    void Draw(std::int64_t first, std::int32_t zoom, std::int32_t right, int style,
              LineExtra extra = LineExtra::Plain) {
        Canvas.Clear();
        const TimeAxis axis{first, zoom, 100, right};
        Digests.Begin(axis);
        const std::int32_t height = StyleHeight(style, Metrics{});
        const RowFrame row{*State, Canvas, Buffer, Digests, axis, 36, height, FontId::Text};
        DrawGroupTrace(row, 0, {160, LineKind::Group, style, extra});
    }
    [[nodiscard]] std::string Ops() const {
        std::string dump = Canvas.Dump();
        return dump.substr(dump.find('\n') + 1);  // behind the pen
    }
};

TEST(GroupTextLine, RunsAreCellsSinglesAreTextAndNarrowOnesAreHatched) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    // 10 pixels a sample, "XX" takes 12: 3 x 11, 1 x 22 (hatched), 2 x 33.
    FillPod(*p.State, 0, [](std::int32_t i) { return i < 3 ? 0x11 : i == 3 ? 0x22 : 0x33; });
    p.Draw(0, 10, 160, 0);
    EXPECT_EQ(p.Ops(),
              "move 102,36\nline 100,42\nline 102,48\n"
              "text 109,37 11\n"
              "move 128,36\nline 130,42\nline 128,48\n"
              "move 102,36\nline 128,36\nmove 102,48\nline 128,48\n"
              "poly 130,36 130,48 131,48 131,36 132,36 132,48 133,48 133,36 134,36 134,48 "
              "135,48 135,36 136,36 136,48 137,48 137,36 138,36 138,48 139,48 139,36\n"
              "move 142,36\nline 140,42\nline 142,48\n"
              "text 144,37 33\n"
              "move 158,36\nline 160,42\nline 158,48\n"
              "move 142,36\nline 158,36\nmove 142,48\nline 158,48\n");
    // A single sample that is wide enough is text alone.
    p.Draw(3, 25, 125, 0);
    EXPECT_EQ(p.Ops().substr(0, 15), "text 100,37 22\n");
}

TEST(GroupTextLine, ARunThatBeganBeforeTheScreenHasNoLeftChevron) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    FillPod(*p.State, 0, [](std::int32_t i) { return i < 10 ? 0x11 : 0x22; });
    p.Draw(5, 10, 200, 0);
    EXPECT_EQ(p.Ops().substr(0, 16), "text 119,37 11\nm");
    EXPECT_NE(p.Ops().find("move 100,36\nline 148,36\n"), std::string::npos) << "its lines begin at the edge";
    p.Draw(10, 10, 200, 0);
    EXPECT_EQ(p.Ops().substr(0, 12), "move 102,36\n") << "sample 9 has another value";
    p.Draw(0, 10, 200, 0);
    EXPECT_EQ(p.Ops().substr(0, 12), "move 102,36\n") << "nothing lies before sample 0";
}

TEST(GroupTextLine, RunsAreCutAtTheRightEdgeAndAtTheEndOfData) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    p.Draw(0, 10, 155, 0);
    EXPECT_NE(p.Ops().find("move 153,36\nline 155,42\nline 153,48\n"), std::string::npos);
    p.Draw(96, 10, 400, 0);
    EXPECT_NE(p.Ops().find("move 138,36\nline 140,42\nline 138,48\n"), std::string::npos);
    p.Draw(100, 10, 400, 0);
    EXPECT_EQ(p.Ops(), "");
    SetBufLenFull(p.State->Buffer.BufLen, 0, 0);
    p.Draw(0, 10, 400, 0);
    EXPECT_EQ(p.Ops(), "") << "a pod without samples ends the line";
}

TEST(GroupTextLine, EachFormat) {
    GroupPainter p(100);
    GroupRecord& group = MakeRun(*p.State, 0, 8);
    group.TwosComplement = 1;
    FillPod(*p.State, 0, [](std::int32_t) { return 0xC1; });
    p.State->Translate.Entry[0] = {std::string_view("11000001"), std::string_view("a label"), 0, 0xC1, 0xFF};
    p.State->Translate.TranslateCount = 1;
    const char* texts[] = {"C1", "11000001", "\xC1", "-063", "a label"};
    for (int style = 0; style < 5; ++style) {
        p.Draw(0, 2, 300, style);
        EXPECT_EQ(p.Canvas.TextsAt(37), (std::vector<std::string>{texts[style]}));
    }
}

TEST(GroupTextLine, BelowZoom0TheFirstSampleOfEachColumnCounts) {
    GroupPainter p(1000);
    MakeRun(*p.State, 0, 8);
    // Columns of 10; value changes within column 20 show from column 21 on.
    FillPod(*p.State, 0, [](std::int32_t i) { return i < 205 ? 0x11 : i >= 300 && i < 310 ? 0x44 : 0x22; });
    p.Draw(0, -10, 200, 0);
    EXPECT_EQ(p.Canvas.TextsAt(37), (std::vector<std::string>{"11", "22"}))
        << "the nine columns from 21 to 30 are too narrow for a text";
    EXPECT_NE(p.Ops().find("poly 121,36 121,48 122,48"), std::string::npos);
    p.Draw(7, -10, 200, 0);
    EXPECT_EQ(p.Canvas.TextsAt(37).at(0), "11");
    p.Draw(0, -2000, 200, 0);
    EXPECT_EQ(p.Ops(), "");
}

TEST(GroupTextLine, NeighbouringHatchesAreOneDrawing) {
    GroupPainter p(1000);
    MakeRun(*p.State, 0, 8);
    FillPod(*p.State, 0, [](std::int32_t i) { return i; });
    p.Draw(0, 1, 400, 0);
    EXPECT_EQ(test::Polylines(p.Canvas).size(), 1U);
    EXPECT_EQ(test::Polylines(p.Canvas)[0].size(), 600U) << "two points a pixel column";
}

TEST(GroupTextLine, StopsAt13499Samples) {
    GroupPainter p(50000);
    MakeRun(*p.State, 0, 8);
    p.Draw(0, 1, 20100, 0);
    EXPECT_NE(p.Ops().find("line 13599,42\n"), std::string::npos) << "100 + 13499";
}

/// What a text line draws: its texts with their places, and the pixel columns that are hatched.
struct TextLineDrawing {
    std::vector<std::pair<std::int32_t, std::string>> Texts;
    std::set<std::int32_t> Hatched;
    friend bool operator==(const TextLineDrawing&, const TextLineDrawing&) = default;
};

TextLineDrawing ReadDrawing(const RecorderCanvas& canvas) {
    TextLineDrawing drawing;
    for (const auto& op : canvas.Ops()) {
        if (op.What == Kind::Text) drawing.Texts.emplace_back(op.Area.Left, op.String);
        if (op.What != Kind::Polyline) continue;
        for (const Point& point : op.Points) drawing.Hatched.insert(point.X);
    }
    return drawing;
}

/// The same from the samples, bit by bit.
TextLineDrawing SlowDrawing(const InstrumentState& state, std::int64_t first, std::int32_t zoom,
                            std::int32_t right) {
    const GroupRecord& group = state.Groups[0];
    std::int64_t length = INT32_MAX;
    for (std::int32_t i = 0; i < group.Size; ++i) {
        const int channel = group.Channels[static_cast<std::size_t>(i)];
        length = std::min<std::int64_t>(length, BindChannel(state, channel).Shown);
    }
    const auto textAt = [&](std::int64_t sample) {
        std::string text;
        for (std::int32_t i = group.Size - 1; i >= 0; --i) {
            const int channel = group.Channels[static_cast<std::size_t>(i)];
            text += (BindChannel(state, channel).At(sample) >> channel % 8 & 1) != 0 ? '1' : '0';
        }
        return text;
    };
    const std::int64_t stride = zoom < 0 ? -zoom : 1;
    const std::int32_t pixels = zoom < 0 ? 1 : zoom;
    const std::int64_t start = first - first % stride;
    TextLineDrawing drawing;
    for (std::int32_t x = 100; x < right;) {
        const std::int64_t step = (x - 100) / pixels;
        // Below zoom 0 a column is drawn when it is whole, above it when its sample is there.
        const auto has = [&](std::int64_t s) { return start + (s + (zoom < 0 ? 1 : 0)) * stride <= length; };
        const auto there = [&](std::int64_t s) { return zoom < 0 ? has(s) : start + s < length; };
        if (!there(step)) break;
        const std::string text = textAt(start + step * stride);
        std::int64_t end = step + 1;
        while (100 + end * pixels < right && there(end) && textAt(start + end * stride) == text) ++end;
        const auto x1 = static_cast<std::int32_t>(std::min<std::int64_t>(100 + end * pixels, right));
        const auto width = static_cast<std::int32_t>(6 * text.size());
        if (width > x1 - x) {
            for (std::int32_t column = x; column < x1; ++column) drawing.Hatched.insert(column);
        } else {
            drawing.Texts.emplace_back(end - step == 1 ? x : (x1 - width - x) / 2 + x, text);
        }
        x = x1;
    }
    return drawing;
}

TEST(GroupTextLine, ShowsWhatASlowReadingOfEveryChannelShows) {
    test::Random random(31);
    GroupPainter p(0);
    constexpr std::int32_t kZooms[] = {50, 25, 10, 5, 3, 2, 1, -1, -2, -4, -7, -10, -40};
    for (int round = 0; round < 600; ++round) {
        const std::int32_t zoom = kZooms[random.Below(13)];
        const std::int32_t length = 1 + random.Below(zoom < 0 ? 300 * -zoom : 400);
        SetLength(*p.State, length);
        const std::int32_t rarity = 1 + random.Below(zoom < 0 ? 60 * -zoom : 60);
        for (int pod = 0; pod < 3; ++pod) {
            int value = random.Below(256);
            FillPod(*p.State, pod, [&](std::int32_t) {
                if (random.OneIn(rarity)) value = random.Below(256);
                return value;
            });
            p.State->Pods.AdjAddr[static_cast<std::size_t>(pod)] = random.OneIn(3) ? random.Below(50) : 0;
        }
        GroupRecord& group = MakeRun(*p.State, 0, 1 + random.Below(6));
        for (std::int32_t i = 0; i < group.Size; ++i)
            group.Channels[static_cast<std::size_t>(i)] = random.Below(24);
        const std::int64_t first = random.Below(length);
        const std::int32_t right = 101 + random.Below(500);
        if (ShownSamples(first, zoom, right - 100, length) == 0) continue;
        p.Draw(first, zoom, right, 1);
        const TextLineDrawing drawn = ReadDrawing(p.Canvas);
        const TextLineDrawing slow = SlowDrawing(*p.State, first, zoom, right);
        ASSERT_EQ(drawn.Texts, slow.Texts) << "round " << round << " zoom " << zoom;
        ASSERT_EQ(drawn.Hatched, slow.Hatched) << "round " << round << " zoom " << zoom;
    }
}

TEST(GroupOverlay, DrawsEachChannelInItsOwnColour) {
    GroupPainter p(100);
    MakeGroup(*p.State, {1, 9, 77, -3, 2});
    SetHigh(*p.State, 9, 50, 60);
    for (const int zoom : {10, 1, -5}) {
        p.Draw(0, zoom, 200, 7, LineExtra::Overlay);
        EXPECT_EQ(test::Polylines(p.Canvas).size(), 3U) << "channels that the model lacks have no trace";
        std::vector<Rgb> pens;
        for (const auto& op : p.Canvas.Ops()) {
            if (op.What == Kind::Pen) pens.push_back(op.Color);
        }
        EXPECT_EQ(pens,
                  (std::vector<Rgb>{0, p.State->Channels.ChannelColor[1], p.State->Channels.ChannelColor[9],
                                    p.State->Channels.ChannelColor[2]}));
    }
}

TEST(GroupOverlay, HasNoLabels) {
    GroupPainter p(100);
    MakeGroup(*p.State, {0});
    FillPod(*p.State, 0, [](std::int32_t i) { return i / 10 & 1; });
    p.Draw(0, 10, 900, 7, LineExtra::Overlay);
    for (const auto& op : p.Canvas.Ops()) EXPECT_NE(op.What, Kind::Text);
}

std::vector<zu::Rect> Bars(const RecorderCanvas& canvas) {
    std::vector<zu::Rect> bars;
    for (const auto& op : canvas.Ops()) {
        if (op.What == Kind::Fill) bars.push_back(op.Area);
    }
    return bars;
}

TEST(GroupDifference, BarsWhereSomeButNotAllChannelsAre1) {
    GroupPainter p(1000);
    GroupRecord& group = MakeGroup(*p.State, {0, 9});
    group.Color = 0x123456;
    SetHigh(*p.State, 0, 5, 20);
    SetHigh(*p.State, 9, 10, 15);
    p.Draw(0, 1, 400, 7, LineExtra::Difference);
    EXPECT_EQ(Bars(p.Canvas), (std::vector<zu::Rect>{{105, 36, 110, 54}, {115, 36, 120, 54}}));
    p.Draw(0, 10, 400, 7, LineExtra::Difference);
    EXPECT_EQ(Bars(p.Canvas), (std::vector<zu::Rect>{{150, 36, 200, 54}, {250, 36, 300, 54}}));
    p.Draw(0, -4, 300, 7, LineExtra::Difference);
    // Columns 1 (4..7), 2 (8..11), 3 (12..15) and 4 (16..19) have a sample that disagrees.
    EXPECT_EQ(Bars(p.Canvas), (std::vector<zu::Rect>{{101, 36, 105, 54}}));
    for (const auto& op : p.Canvas.Ops()) {
        if (op.What == Kind::Fill) {
            EXPECT_EQ(op.Color, 0x123456U);
        }
    }
    SetBufLenFull(p.State->Buffer.BufLen, 1, 12);
    p.Draw(0, 1, 400, 7, LineExtra::Difference);
    EXPECT_EQ(Bars(p.Canvas), (std::vector<zu::Rect>{{105, 36, 110, 54}}))
        << "a channel without data stops the line";
}

TEST(GroupCurve, OnePointASampleAndTheLastOneDoubled) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    FillPod(*p.State, 0, [](std::int32_t i) { return i < 97 ? 0 : i == 97 ? 255 : i == 98 ? 128 : 15; });
    // Style 7: 23 high, 16 values a pixel, base 36 + 23 - 5 = 54.
    p.Draw(96, 10, 400, 7);
    EXPECT_EQ(p.Canvas.LastPolyline(), (Points{{100, 54}, {110, 39}, {120, 46}, {130, 54}, {130, 54}}));
    p.Draw(97, 10, 400, 7);
    EXPECT_EQ(p.Canvas.LastPolyline(), (Points{{100, 39}, {110, 46}, {120, 54}}))
        << "three points are not doubled";
}

TEST(GroupCurve, TwosComplementSwingsAroundTheMiddle) {
    GroupPainter p(100);
    GroupRecord& group = MakeRun(*p.State, 0, 8);
    group.TwosComplement = 1;
    FillPod(*p.State, 0, [](std::int32_t i) { return i == 0 ? 0 : i == 1 ? 127 : i == 2 ? 128 : 255; });
    p.Draw(0, 10, 129, 7);
    // o = 128 / 16 = 8; -1 is cut to 0. Two whole samples are on screen, the line runs on to the fourth.
    EXPECT_EQ(p.Canvas.LastPolyline(), (Points{
                                           {100, 46},
                                           {110, 39},
                                           {120, 54},
                                           {130, 46},
                                           {130, 46},
                                       }));
}

TEST(GroupCurve, ItsLineReachesTheRightEdge) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    for (const int zoom : {2, 5, 10, 25, 50}) {
        for (std::int32_t right = 150; right < 210; ++right) {
            p.Draw(0, zoom, right, 7);
            EXPECT_GE(p.Canvas.LastPolyline().back().X, right) << zoom;
        }
    }
    p.Draw(97, 10, 400, 7);
    EXPECT_EQ(p.Canvas.LastPolyline().back().X, 120) << "or the last sample";
}

TEST(GroupCurve, BelowZoom0LeastMostAndLastOfEachColumn) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    FillPod(*p.State, 0, [](std::int32_t i) {
        return i == 3 ? 255 : i == 5 ? 32 : i == 9 ? 64 : i < 10 ? 48 : 80;
    });
    p.Draw(0, -10, 102, 7);
    EXPECT_EQ(p.Canvas.LastPolyline(),
              (Points{{100, 52}, {100, 39}, {100, 50}, {101, 49}, {101, 49}, {101, 49}}));
}

TEST(GroupCurve, EveryTimingStyleFillsItsHeight) {
    constexpr std::int32_t kSpan[] = {12, 8, 16, 32, 64, 128, 256};
    for (int style = 5; style <= 11; ++style) {
        GroupPainter p(10);
        MakeRun(*p.State, 0, 8);
        FillPod(*p.State, 0, [](std::int32_t i) { return i == 0 ? 0 : 255; });
        p.Draw(0, 10, 120, style);
        const Points points = p.Canvas.LastPolyline();
        ASSERT_GE(points.size(), 2U);
        EXPECT_EQ(points[0].Y - points[1].Y, 255 * kSpan[style - 5] / 256) << style;
    }
}

TEST(GroupCurve, StopsAtItsPoints) {
    GroupPainter p(100000);
    MakeRun(*p.State, 0, 8);
    p.Draw(0, 1, 20100, 7);
    EXPECT_EQ(p.Canvas.LastPolyline().size(), 13500U) << "13499 samples, the last one doubled";
    p.Draw(0, -5, 20100, 7);
    EXPECT_EQ(p.Canvas.LastPolyline().size(), 13497U) << "whole columns of three points within 13498";
    EXPECT_EQ(test::Polylines(p.Canvas).size(), 1U);
}

TEST(GroupCurve, LabelModesOnAGroupAreACurve) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    p.Draw(0, 10, 300, 7, LineExtra::PulseWidth);
    EXPECT_EQ(test::Polylines(p.Canvas).size(), 1U);
}

TEST(GroupTextLine, ModesOfTimingStylesDoNotChangeIt) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 8);
    p.Draw(0, 10, 300, 0);
    const std::string plain = p.Ops();
    for (const auto extra : {LineExtra::Overlay, LineExtra::Difference, LineExtra::PulseWidth}) {
        p.Draw(0, 10, 300, 0, extra);
        EXPECT_EQ(p.Ops(), plain);
    }
}

TEST(GroupTextLine, PatternPodsShowTheirPattern) {
    GroupPainter p(100);
    MakeRun(*p.State, 0, 16);
    std::fill_n(p.State->Buffer.Pattern(1).begin(), 100, std::uint8_t{0xAB});
    FillPod(*p.State, 0, [](std::int32_t) { return 0xCD; });
    p.State->Pods.HardwarePod[1] = 2;
    p.Draw(0, 10, 300, 0);
    EXPECT_EQ(p.Canvas.TextsAt(37), (std::vector<std::string>{"ABCD"}));
}

TEST(GroupCells, NumberNameAndBlanks) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    ShowColumns(*state, {{1}, {2}, {3}, {4}, {5}, {9}});
    ShowLines(*state, {{162, 0}});
    state->Groups[2].Color = 0x00AA00;
    const auto painted = Paint(*state, 1000, 60);
    EXPECT_EQ(painted.Canvas.TextsAt(36),
              (std::vector<std::string>{"G3", "Group 3", "        ", "         "}))
        << "nine blanks, cut to a column of eight";
    // The Trig Word cell is two diagonals from the column's left to its right.
    std::string dump = painted.Canvas.Dump();
    EXPECT_NE(dump.find("pen 00aa00\nmove 120,36\nline 132,46\nmove 120,46\nline 132,36\n"),
              std::string::npos);
}

TEST(RecordedDrawing, GroupsInEachStyle) {
    const auto state = MakeState();
    SetLength(*state, 4000);
    FillPod(*state, 0, [](std::int32_t i) { return i / 7 % 256; });
    FillPod(*state, 1, [](std::int32_t i) { return i / 300 * 16 % 256; });
    ShowColumns(*state, {{0}, {2}});
    ShowLines(*state, {{160, 0}, {161, 1}, {161, 2}, {161, 3}, {161, 4}, {160, 7}, {161, 8, 1}, {160, 6, 2}});
    state->Timing.TimingGrid = 0;
    state->Timing.TimingDataPos = 200;
    state->Groups[1].TwosComplement = 1;
    const struct {
        int Zoom;
        const char* Name;
    } cases[] = {{10, "groups-wide"}, {-10, "groups-narrow"}};
    for (const auto& c : cases) {
        state->Timing.ScreenZoom = c.Zoom;
        test::ExpectRecorded(c.Name, Paint(*state, 420, 280).Canvas.Dump());
    }
}

}  // namespace
}  // namespace zu
