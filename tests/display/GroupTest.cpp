// Values of groups, their texts, and group lines in all styles.
#include <gtest/gtest.h>

#include "display/GroupLine.h"
#include "display/GroupScan.h"
#include "display/GroupValue.h"
#include "serial/SpiDecoder.h"
#include "support/Recorded.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::FillPod;
using test::MakeState;
using test::Paint;
using test::SetHigh;
using test::SetLength;
using test::ShowColumns;
using test::ShowLines;
using Kind = RecorderCanvas::Kind;
using Points = std::vector<Point>;

/// Makes group 0 of these channels, least significant first.
GroupRecord& MakeGroup(InstrumentState& state, std::initializer_list<std::int32_t> channels) {
    GroupRecord& group = state.Groups[0];
    group.Size = 0;
    for (const std::int32_t channel : channels)
        group.Channels[static_cast<std::size_t>(group.Size++)] = channel;
    return group;
}

GroupRecord& MakeRun(InstrumentState& state, std::int32_t first, std::int32_t size) {
    GroupRecord& group = state.Groups[0];
    group.Size = size;
    for (std::int32_t i = 0; i < size; ++i) group.Channels[static_cast<std::size_t>(i)] = first + i;
    return group;
}

std::string TextOf(InstrumentState& state, const GroupRecord& group, std::int64_t i, GroupFormat format) {
    return GroupText(state, group, GroupReader(state, group).At(i), format);
}

TEST(GroupValue, FirstChannelIsTheLeastSignificantBit) {
    const auto state = MakeState();
    SetLength(*state, 100);
    SetHigh(*state, 9, 10, 20);
    const GroupRecord& group = MakeGroup(*state, {3, 9, 0});
    const GroupReader reader(*state, group);
    EXPECT_EQ(reader.Length(), 100);
    EXPECT_EQ(GroupNumber(group, reader.At(10)), 2);
    EXPECT_EQ(GroupNumber(group, reader.At(20)), 0);
    EXPECT_EQ(GroupBits(group, reader.At(10)), "010");
}

TEST(GroupValue, AbsentChannelsMakeTheGroupAbsent) {
    const auto state = MakeState();
    SetLength(*state, 100);
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {})).Length(), 0);
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, 40})).Length(), 0) << "beyond the model";
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, -1})).Length(), 0);
    SetBufLenFull(state->Buffer.BufLen, 1, 60);
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, 8})).Length(), 60) << "the shortest pod";
    state->Pods.AdjAddr[1] = 20;
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, 8})).Length(), 40);
}

TEST(GroupText, HexPadsToWholeDigits) {
    const auto state = MakeState();
    SetLength(*state, 16);
    FillPod(*state, 0, [](std::int32_t) { return 0x25; });
    FillPod(*state, 1, [](std::int32_t) { return 0xAB; });
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 6), 0, GroupFormat::Hex), "25");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 1), 0, GroupFormat::Hex), "1");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 16), 0, GroupFormat::Hex), "AB25");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 13), 0, GroupFormat::Hex), "0B25");
    GroupRecord& signedGroup = MakeRun(*state, 8, 8);
    signedGroup.TwosComplement = 1;
    EXPECT_EQ(TextOf(*state, signedGroup, 0, GroupFormat::Hex), "AB") << "the sign does not show in hex";
    EXPECT_EQ(TextOf(*state, signedGroup, 0, GroupFormat::Binary), "10101011");
}

TEST(GroupText, DecimalIsPaddedAndSigned) {
    const auto state = MakeState();
    SetLength(*state, 256);
    FillPod(*state, 0, [](std::int32_t i) { return i; });
    GroupRecord& group = MakeRun(*state, 0, 8);
    EXPECT_EQ(TextOf(*state, group, 7, GroupFormat::Decimal), "007");
    EXPECT_EQ(TextOf(*state, group, 255, GroupFormat::Decimal), "255");
    group.TwosComplement = 1;
    EXPECT_EQ(TextOf(*state, group, 255, GroupFormat::Decimal), "-001");
    EXPECT_EQ(TextOf(*state, group, 128, GroupFormat::Decimal), "-128");
    EXPECT_EQ(TextOf(*state, group, 127, GroupFormat::Decimal), "127");
    GroupRecord& three = MakeRun(*state, 0, 3);
    three.TwosComplement = 1;
    EXPECT_EQ(TextOf(*state, three, 7, GroupFormat::Decimal), "-1");
    EXPECT_EQ(TextOf(*state, three, 3, GroupFormat::Decimal), "3");
}

TEST(GroupText, WideGroupsCountTheirFirst32ChannelsAndShowAllBits) {
    const auto state = MakeState(15);
    SetLength(*state, 16);
    for (int pod = 0; pod < 20; ++pod) FillPod(*state, pod, [&](std::int32_t) { return pod + 1; });
    GroupRecord& group = MakeRun(*state, 0, 160);
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Hex), "14131211100F0E0D0C0B0A090807060504030201");
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Binary).size(), 160U);
    EXPECT_EQ(GroupNumber(group, GroupReader(*state, group).At(0)), 0x04030201);
    FillPod(*state, 3, [](std::int32_t) { return 0xFF; });
    EXPECT_EQ(GroupNumber(group, GroupReader(*state, group).At(0)), 0xFF030201LL);
    group.TwosComplement = 1;
    EXPECT_EQ(GroupNumber(group, GroupReader(*state, group).At(0)), 0xFF030201LL - (1LL << 32));
    group.Size = 4000;
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Hex).size(), 40U);
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Decimal).size(), 55U);
}

TEST(GroupText, AsciiFromTheLowByteUp) {
    const auto state = MakeState();
    SetLength(*state, 16);
    FillPod(*state, 0, [](std::int32_t i) { return i == 0 ? 'H' : 0; });
    FillPod(*state, 1, [](std::int32_t) { return 'i'; });
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 16), 0, GroupFormat::Ascii), "Hi");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 16), 1, GroupFormat::Ascii), " i")
        << "a zero byte is a blank";
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 8, 7), 0, GroupFormat::Ascii), "i");
}

TEST(GroupText, TranslationIsTheFirstEntryInForceThatMatches) {
    const auto state = MakeState();
    SetLength(*state, 256);
    FillPod(*state, 0, [](std::int32_t i) { return i; });
    const GroupRecord& group = MakeRun(*state, 0, 8);
    EXPECT_EQ(TextOf(*state, group, 5, GroupFormat::Translate), "----------");
    auto& table = state->Translate;
    table.Entry[2] = {std::string_view("00000101"), std::string_view("never"), -1, 5, 255};
    table.Entry[4] = {std::string_view("0000010X"), std::string_view("JMP"), 2, 4, 254};
    table.Entry[9] = {std::string_view("XXXXXXXX"), std::string_view("other"), 0, 0, 0};
    table.TranslateCount = 2;
    EXPECT_EQ(TextOf(*state, group, 5, GroupFormat::Translate), "JMP");
    EXPECT_EQ(TextOf(*state, group, 4, GroupFormat::Translate), "JMP");
    EXPECT_EQ(TextOf(*state, group, 6, GroupFormat::Translate), "other");
}

TEST(GroupText, LeastLengthIsNeverMoreThanATextHas) {
    test::Random random(2);
    const auto state = MakeState(15);
    SetLength(*state, 64);
    for (int pod = 0; pod < 20; ++pod) FillPod(*state, pod, [&](std::int32_t) { return random.Below(256); });
    for (int round = 0; round < 500; ++round) {
        GroupRecord& group = MakeRun(*state, 0, 1 + random.Below(160));
        group.TwosComplement = static_cast<std::int8_t>(random.Below(2));
        for (int format = 0; format < 5; ++format) {
            const auto f = static_cast<GroupFormat>(format);
            ASSERT_LE(LeastTextLength(group, f),
                      static_cast<std::int32_t>(TextOf(*state, group, round % 64, f).size()));
        }
    }
}

TEST(GroupScan, EqualsTheReaderSampleBySample) {
    test::Random random(7);
    const auto state = MakeState(15);
    for (int round = 0; round < 300; ++round) {
        const std::int32_t length = 1 + random.Below(400);
        SetLength(*state, length);
        for (int pod = 0; pod < 5; ++pod) {
            FillPod(*state, pod, [&](std::int32_t) {
                return random.OneIn(3) ? 255 : random.OneIn(2) ? 0 : random.Below(256);
            });
            state->Pods.AdjAddr[static_cast<std::size_t>(pod)] = random.OneIn(4) ? random.Below(300) : 0;
        }
        const std::int32_t size = 1 + random.Below(40);
        GroupRecord& group =
            MakeRun(*state, random.OneIn(2) ? 0 : random.Below(8), random.OneIn(2) ? size : 1 + size % 16);
        if (random.OneIn(3))
            std::swap(group.Channels[0], group.Channels[static_cast<std::size_t>(group.Size - 1)]);
        group.TwosComplement = static_cast<std::int8_t>(random.Below(2));

        const GroupScan scan(*state, group);
        const GroupReader reader(*state, group);
        ASSERT_EQ(scan.Length(), reader.Length());
        if (scan.Length() == 0) continue;
        const std::int64_t from = random.Below(scan.Length());
        const std::int64_t to = from + 1 + random.Below(scan.Length() - from);
        bool disagrees = false;
        std::int64_t least = INT64_MAX;
        std::int64_t most = INT64_MIN;
        for (std::int64_t i = from; i < to; ++i) {
            const GroupValue value = reader.At(i);
            ASSERT_EQ(scan.At(i), GroupNumber(group, value));
            const std::string bits = GroupBits(group, value);
            disagrees =
                disagrees || (bits.find('0') != std::string::npos && bits.find('1') != std::string::npos);
            least = std::min(least, scan.At(i));
            most = std::max(most, scan.At(i));
        }
        ASSERT_EQ(scan.Disagrees(from, to), disagrees) << round;
        const GroupScan::Extent extent = scan.ExtentOf(from, to);
        ASSERT_EQ(extent.Minimum, least) << round;
        ASSERT_EQ(extent.Maximum, most) << round;
    }
}

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
    p.Draw(0, 10, 139, 7);
    // o = 128 / 16 = 8; -1 is cut to 0.
    EXPECT_EQ(p.Canvas.LastPolyline(), (Points{
                                           {100, 46},
                                           {110, 39},
                                           {120, 54},
                                           {130, 46},
                                           {130, 46},
                                       }));
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
