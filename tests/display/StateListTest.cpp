// The picture of the Statelist: columns, headers, rows, formats.
#include <gtest/gtest.h>

#include "display/Hover.h"
#include "display/StateListCells.h"
#include "serial/EventCodes.h"
#include "support/Recorded.h"
#include "support/StateListFixture.h"

namespace zu {
namespace {

using test::kFirstColumn;
using test::kListRow;
using test::MakeListState;
using test::PaintList;
using test::ShowRun;
using Texts = std::vector<std::string>;

Rgb ColorOf(const RecorderCanvas& canvas, std::int32_t x, std::int32_t y) {
    Rgb color = 0;
    for (const auto& op : canvas.Ops()) {
        if (op.What == RecorderCanvas::Kind::TextColor) color = op.Color;
        if (op.What == RecorderCanvas::Kind::Text && op.Area.Left == x && op.Area.Top == y) return color;
    }
    return 0xFFFFFFFF;
}

struct WidthCase {
    int Size;
    int Format;
    int Width;
};
class StateListWidth : public testing::TestWithParam<WidthCase> {};
INSTANTIATE_TEST_SUITE_P(Formats, StateListWidth,
                         testing::Values(WidthCase{8, 1, 9}, WidthCase{8, 4, 9}, WidthCase{8, 2, 9},
                                         WidthCase{8, 9, 9}, WidthCase{8, -3, 9}, WidthCase{8, 0, 3},
                                         WidthCase{7, 0, 3}, WidthCase{4, 0, 2}, WidthCase{32, 0, 9},
                                         WidthCase{9, 3, 4}, WidthCase{8, 3, 4}, WidthCase{13, 3, 6},
                                         WidthCase{14, 3, 7}, WidthCase{15, 3, 7}, WidthCase{32, 3, 13},
                                         WidthCase{1, 1, 2}));

TEST_P(StateListWidth, FollowsSizeAndFormat) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, GetParam().Size, GetParam().Format, "");
    EXPECT_EQ(state->StateList.ScreenWidth[0], GetParam().Width);
}

TEST(StateListWidth, MakesRoomForNamesAndEvents) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 4, 0, "Address");
    EXPECT_EQ(state->StateList.ScreenWidth[0], 8);
    state->Serial.SerialMode = 1;
    state->Serial.SerialGroup = 0;
    ComputeGroupWidths(*state);
    EXPECT_EQ(state->StateList.ScreenWidth[0], 12);
    EXPECT_EQ(state->StateList.ScreenWidth[1], 0) << "an empty group";
}

TEST(StateList, LaysColumnsOutWhileTheyFit) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1, "");
    ShowRun(*state, 2, 8, 4, 0, "");
    ShowRun(*state, 3, 0, 8, 1, "");
    const std::int32_t need = kFirstColumn + (9 + 1) * 6 + (2 + 1) * 6 + (9 + 1) * 6;
    const auto layout = LayoutStateList(*state, {}, need, 100);
    ASSERT_EQ(layout.Count, 3) << "the empty group 1 takes no room";
    EXPECT_EQ(layout.Columns[0].Left, kFirstColumn);
    EXPECT_EQ(layout.Columns[1].Left, kFirstColumn + 60);
    EXPECT_EQ(layout.Columns[1].Group, 2);
    EXPECT_EQ(layout.Columns[2].Left, kFirstColumn + 78);
    EXPECT_EQ(LayoutStateList(*state, {}, need - 1, 100).Count, 2)
        << "the last one that overflows is dropped";
    state->StateList.StateGroupPos = 2;
    EXPECT_EQ(LayoutStateList(*state, {}, need, 100).Columns[0].Group, 2);
}

TEST(StateList, BehindAColumnThatDoesNotFitNoneIsShown) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 4, 1, "");
    ShowRun(*state, 1, 0, 32, 1, "");
    ShowRun(*state, 2, 0, 4, 1, "");
    const auto layout = LayoutStateList(*state, {}, kFirstColumn + 100, 100);
    ASSERT_EQ(layout.Count, 1) << "not the narrow one behind it either";
    EXPECT_EQ(layout.Columns[0].Group, 0);
    state->StateList.ScreenWidth[0] = INT32_MAX;
    EXPECT_EQ(LayoutStateList(*state, {}, kFirstColumn + 100, 100).Count, 0);
}

TEST(StateList, AGroupOfEveryChannelIsShownWhole) {
    const auto state = test::MakeState(15);
    test::SetLength(*state, 50);
    for (GroupRecord& group : state->Groups) group.Size = 0;
    for (const int size : {1, 31, 32, 33, 63, 64, 65, 128, 159, 160}) {
        state->StateList.ScreenL[0] = 0;
        ShowRun(*state, 0, 0, size, 1, "");
        const std::int32_t top = size - 1;
        test::FillPod(*state, top / 8, [top](std::int32_t i) { return i == 1 ? 1 << top % 8 : 0; });
        const auto cells = PaintList(*state, 3, 1200).Column(kFirstColumn);
        const std::string zeros(static_cast<std::size_t>(size) - 1, '0');
        EXPECT_EQ(cells, (Texts{zeros + "0", "1" + zeros})) << size;
        EXPECT_EQ(state->StateList.ScreenWidth[0], size + 1);
        test::FillPod(*state, top / 8, [](std::int32_t) { return 0; });
    }
}

TEST(StateList, RowsAreAsHighAsTheirTextAndTwo) {
    const auto state = MakeListState();
    EXPECT_EQ(LayoutStateList(*state, {}, 400, 95).Rows, 7);
    EXPECT_EQ(LayoutStateList(*state, {}, 400, 95).SampleRows(), 6) << "the header is one of the rows";
    EXPECT_EQ(LayoutStateList(*state, Metrics::ForScreen(1080), 400, 96).Rows, 6);
    EXPECT_EQ(LayoutStateList(*state, {}, 400, -5).Rows, 0);
}

TEST(StateList, PaintsHeaderPlacesAndValues) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1, "Bus");
    ShowRun(*state, 2, 8, 8, 0, "Data");
    test::FillPod(*state, 0, [](std::int32_t i) { return i; });
    test::FillPod(*state, 1, [](std::int32_t i) { return 0xF0 + i; });
    state->StateList.StateDataPos = 3;
    const auto painted = PaintList(*state, 4);
    EXPECT_EQ(painted.Row(0), (Texts{"Samples ", "Bus", "Data"}));
    EXPECT_EQ(painted.Row(1), (Texts{"3", "00000011", "F3"}));
    EXPECT_EQ(painted.Row(3), (Texts{"5", "00000101", "F5"}));
    EXPECT_TRUE(painted.Row(4).empty());
    EXPECT_EQ(painted.Result.Title, "Statelist view: ");
    EXPECT_EQ(painted.Result.Rows, 4);
}

TEST(StateList, LooksAsRecorded) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1, "Bus");
    ShowRun(*state, 1, 8, 12, 0, "Address");
    ShowRun(*state, 2, 0, 8, 2, "Text");
    ShowRun(*state, 3, 0, 8, 3, "Number");
    test::FillPod(*state, 0, [](std::int32_t i) { return 'A' + i; });
    test::FillPod(*state, 1, [](std::int32_t i) { return i * 17; });
    state->Cursors.Cur[0] = 2;
    state->Cursors.Cur[4] = 3;
    RecorderCanvas canvas(400, 70);
    PaintStateList(*state, {400, 70, 1, 3}, canvas);
    test::ExpectRecorded("statelist", canvas.Dump());
}

TEST(StateList, HeaderTellsTheUnit) {
    const auto state = MakeListState();
    EXPECT_EQ(PaintList(*state).Row(0).front(), "Samples ") << "samples are chosen";
    state->Cursors.CursorDlgMode = 1;
    EXPECT_EQ(PaintList(*state).Row(0).front(), "Time    ");
    EXPECT_EQ(PaintList(*state).Row(3).front(), "20ns");
    state->Clock.ClockType = 1;
    EXPECT_EQ(PaintList(*state).Row(0).front(), "Samples ") << "an external clock has no rate";
    EXPECT_EQ(PaintList(*state).Row(3).front(), "2");
}

TEST(StateList, TimesHaveCommasInTheUnitOfTheRate) {
    const auto state = MakeListState();
    state->Cursors.CursorDlgMode = 1;
    EXPECT_EQ(StateListPlace(*state, 123456), "1,234,560ns");
}

TEST(StateList, ScrollRangesCountInUnits) {
    const auto state = MakeListState();
    ShowRun(*state, 4, 0, 8, 1);
    test::SetLength(*state, 8192);
    state->StateList.StateDataPos = 6400;
    state->StateList.StateGroupPos = 2;
    auto result = PaintList(*state).Result;
    EXPECT_EQ(result.Vertical, (ScrollRange{0, 256, 200}));
    EXPECT_EQ(result.Horizontal, (ScrollRange{0, 4, 2}));
    state->Memory.DisplayLen = 0xFFFFF;
    result = PaintList(*state).Result;
    EXPECT_EQ(result.Vertical, (ScrollRange{0, 0xFFFFF / 256, 25}));
}

TEST(StateList, RowsAreInTheColourOfTheirCursor) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1, "Bus");
    // Each sample carries one cursor less, so that the order T, B, A, C, D shows.
    constexpr std::array<int, 5> kOrder{4, 1, 0, 2, 3};
    for (std::size_t first = 0; first < kOrder.size(); ++first) {
        state->Cursors.Cur = {50, 50, 50, 50, 50, 0};
        for (std::size_t i = first; i < kOrder.size(); ++i) {
            state->Cursors.Cur[static_cast<std::size_t>(kOrder[i])] = 2;
        }
        const auto painted = PaintList(*state);
        const Rgb expected = state->Cursors.CursorColor[static_cast<std::size_t>(kOrder[first])];
        EXPECT_EQ(ColorOf(painted.Canvas, 0, 3 * kListRow), expected) << first;
        EXPECT_EQ(ColorOf(painted.Canvas, kFirstColumn, 3 * kListRow), expected) << first;
        EXPECT_EQ(ColorOf(painted.Canvas, 0, 2 * kListRow), state->Screen.ScreenColor[0]);
        EXPECT_EQ(ColorOf(painted.Canvas, kFirstColumn, 2 * kListRow), 0x112233U);
        EXPECT_EQ(ColorOf(painted.Canvas, kFirstColumn, 0), 0x112233U) << "the header";
    }
}

TEST(StateList, MonochromeChoosesNoColours) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1);
    RecorderCanvas canvas(400, 80);
    canvas.SetMono(true);
    PaintStateList(*state, {400, 80, 0, 0}, canvas);
    for (const auto& op : canvas.Ops()) EXPECT_NE(op.What, RecorderCanvas::Kind::TextColor);
}

TEST(StateList, WithoutDataRowsShowDashes) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1, "Bus");
    test::SetLength(*state, 0);
    EXPECT_EQ(PaintList(*state, 3).Column(kFirstColumn), (Texts{"--------", "--------"}));
    const auto some = MakeListState();
    ShowRun(*some, 0, 0, 8, 1, "Bus");
    some->StateList.StateDataPos = 99;
    EXPECT_EQ(PaintList(*some, 3).Column(kFirstColumn), (Texts{"00000000", "--------"})) << "behind the end";
    some->StateList.StateDataPos = -1;
    EXPECT_EQ(PaintList(*some, 3).Column(kFirstColumn), (Texts{"--------", "00000000"}));
}

TEST(StateList, AChannelThatTheModelLacksMakesTheGroupAbsent) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 1, "Bus");
    state->Groups[0].Channels[7] = state->Shape.TotalChannels;
    EXPECT_EQ(PaintList(*state, 2).Column(kFirstColumn), (Texts{"--------"}));
}

TEST(StateList, AnEmptyGroupIsSkipped) {
    const auto state = MakeListState();
    ShowRun(*state, 1, 0, 8, 1, "Bus");
    const auto painted = PaintList(*state, 2);
    EXPECT_EQ(painted.Row(0), (Texts{"Samples ", "Bus"}));
    EXPECT_EQ(painted.Column(kFirstColumn), (Texts{"00000000"}));
}

TEST(StateList, TextIsCutToTheColumn) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 4, 0, "Bus");  // 4 characters wide
    test::SetLength(*state, 0);
    EXPECT_EQ(PaintList(*state, 2).Column(kFirstColumn), (Texts{"----"}));
    state->Groups[0].Name = "Longer name";  // the widths were not taken anew
    EXPECT_EQ(PaintList(*state, 2).Row(0).back(), "Long");
}

TEST(StateList, HexPadsWithZerosWithAndWithoutASign) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 6, 0, "");
    test::FillPod(*state, 0, [](std::int32_t i) { return i == 0 ? 0x3F : 5; });
    EXPECT_EQ(PaintList(*state, 3).Column(kFirstColumn), (Texts{"3F", "05"}));
    state->Groups[0].TwosComplement = 1;
    EXPECT_EQ(PaintList(*state, 3).Column(kFirstColumn), (Texts{"3F", "05"}));
}

TEST(StateList, HexOfABusOfManyPods) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 40, 0, "");
    for (int pod = 0; pod < 5; ++pod) test::FillPod(*state, pod, [pod](std::int32_t) { return 0xA0 + pod; });
    EXPECT_EQ(PaintList(*state, 2).Column(kFirstColumn), (Texts{"A4A3A2A1A0"}));
}

TEST(StateList, DecimalIsZeroPaddedAndSigned) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 3, "Num");
    test::FillPod(*state, 0, [](std::int32_t i) { return i == 0 ? 255 : 7; });
    EXPECT_EQ(PaintList(*state, 3).Column(kFirstColumn), (Texts{"255", "007"}));
    state->Groups[0].TwosComplement = 1;
    EXPECT_EQ(PaintList(*state, 3).Column(kFirstColumn), (Texts{"-001", "007"}));
}

TEST(StateList, BinaryIgnoresTheSign) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 4, 1, "");
    test::FillPod(*state, 0, [](std::int32_t) { return 0x0D; });
    state->Groups[0].TwosComplement = 1;
    EXPECT_EQ(PaintList(*state, 2).Column(kFirstColumn), (Texts{"1101"}));
}

TEST(StateList, AsciiReadsFromTheLowByteUp) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 18, 2, "");
    test::FillPod(*state, 0, [](std::int32_t i) { return i == 0 ? 'H' : 0; });
    test::FillPod(*state, 1, [](std::int32_t) { return 'i'; });
    test::FillPod(*state, 2, [](std::int32_t) { return 0xFF; });  // two of its bits
    EXPECT_EQ(PaintList(*state, 3).Column(kFirstColumn), (Texts{"Hi\x03", " i\x03"}))
        << "a zero byte is a blank";
}

TEST(StateList, AnUnknownFormatIsBinary) {
    const auto state = MakeListState();
    for (const int format : {5, 17, -1}) {
        ShowRun(*state, 0, 0, 4, format, "");
        EXPECT_EQ(PaintList(*state, 2).Column(kFirstColumn), (Texts{"0000"}));
    }
}

void Translate(InstrumentState& state, std::string_view bits, std::string_view label, int skip,
               std::uint32_t value, std::uint32_t care) {
    state.Translate.Entry[static_cast<std::size_t>(state.Translate.TranslateCount++)] = {bits, label, skip,
                                                                                         value, care};
}

TEST(StateList, TranslatesThroughTheTable) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 4, "Opcodes 1");
    test::FillPod(*state, 0, [](std::int32_t i) { return i % 3; });
    Translate(*state, "00000000", "NOP", 0, 0, 0xFF);
    Translate(*state, "00000001", "JUMP", 0, 1, 0xFF);
    EXPECT_EQ(PaintList(*state, 4).Column(kFirstColumn), (Texts{"NOP", "JUMP", "---------"}))
        << "ten dashes, cut to nine characters";
}

TEST(StateList, ALabelStandsForTheRowsThatItSkips) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 4, "");
    ShowRun(*state, 1, 0, 8, 1, "");
    test::FillPod(*state, 0, [](std::int32_t i) { return i == 1 ? 7 : 0; });
    Translate(*state, "00000111", "LOAD", 2, 7, 0xFF);
    Translate(*state, "00000000", "NOP", 0, 0, 0xFF);
    const auto painted = PaintList(*state, 7);
    EXPECT_EQ(painted.Column(kFirstColumn), (Texts{"NOP", "LOAD", "--------", "--------", "NOP", "NOP"}));
    EXPECT_EQ(painted.Column(kFirstColumn + 60)[2], "00000000") << "the next column counts on its own";
}

TEST(StateList, ASkipEndsWithThePicture) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 4, "");
    test::FillPod(*state, 0, [](std::int32_t i) { return i == 0 ? 7 : 0; });
    Translate(*state, "00000111", "BLOCK", 33, 7, 0xFF);
    Translate(*state, "00000000", "NOP", 0, 0, 0xFF);
    EXPECT_EQ(PaintList(*state, 5).Column(kFirstColumn),
              (Texts{"BLOCK", "--------", "--------", "--------"}));
    state->StateList.StateDataPos = 4;
    EXPECT_EQ(PaintList(*state, 5).Column(kFirstColumn), (Texts{"NOP", "NOP", "NOP", "NOP"}));
    state->StateList.StateDataPos = 0;
    const auto all = PaintList(*state, 40).Column(kFirstColumn);
    EXPECT_EQ(all[33], "--------");
    EXPECT_EQ(all[34], "NOP");
}

TEST(StateList, TheSerialColumnListsEvents) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 2, 1, "I2C");
    state->Serial.SerialMode = 1;
    state->Serial.SerialGroup = 0;
    ComputeGroupWidths(*state);
    state->Serial.SerialEvents.assign(100, 0);
    state->Serial.SerialEvents[1] = event::kStart;
    state->Serial.SerialEvents[3] = event::kBit0;
    state->Serial.SerialEvents[5] = event::kBit1;
    state->Serial.SerialEvents[6] = 200;  // no event has this code
    const auto painted = PaintList(*state, 9);
    EXPECT_EQ(painted.Row(2), (Texts{"1", "START"}));
    EXPECT_EQ(painted.Row(3), (Texts{"2"})) << "blanks between";
    EXPECT_EQ(painted.Row(4), (Texts{"3", "     0"}));
    EXPECT_EQ(painted.Row(6), (Texts{"5", "     1"}));
    EXPECT_EQ(painted.Row(7), (Texts{"6"}));
    state->Serial.SerialMode = 0;
    EXPECT_EQ(PaintList(*state, 9).Row(2), (Texts{"1", "00"})) << "without a serial mode it is a group";
}

TEST(StateList, AColumnOfNoGroupTakesNoRoom) {
    const auto state = MakeListState();
    ShowRun(*state, 1, 0, 8, 1, "Bus");
    for (const int group : {-1, 30, 127, -128}) {
        state->StateList.ScreenL[0] = static_cast<std::int8_t>(group);
        EXPECT_EQ(PaintList(*state, 2).Row(0), (Texts{"Samples ", "Bus"}));
    }
    state->StateList.StateGroupPos = -7;
    EXPECT_EQ(PaintList(*state, 2).Row(0), (Texts{"Samples ", "Bus"}));
    state->StateList.StateGroupPos = 30;
    EXPECT_EQ(PaintList(*state, 2).Row(0), (Texts{"Samples "}));
}

TEST(StateList, TheLongestTimeKeepsToItsColumn) {
    const auto state = MakeListState();
    state->Cursors.CursorDlgMode = 1;
    state->StateList.StateDataPos = 2'000'000'000;
    EXPECT_LE(PaintList(*state, 2).Row(1).front().size(), 14U);
}

TEST(StateListText, CopiesHeaderAndRowsWithTabs) {
    const auto state = MakeListState();
    ShowRun(*state, 0, 0, 8, 0, "Bus");
    ShowRun(*state, 2, 8, 8, 2, "Tab\there");
    test::FillPod(*state, 0, [](std::int32_t i) { return i; });
    test::FillPod(*state, 1, [](std::int32_t i) { return i == 11 ? '\n' : 'x'; });
    const auto layout = LayoutStateList(*state, {}, 600, 100);
    EXPECT_EQ(StateListText(*state, layout, 10, 12), "Samples\tBus\tTab here\n10\t0A\tx\n11\t0B\t \n");
    EXPECT_EQ(StateListText(*state, layout, 5, 5), "Samples\tBus\tTab here\n");
}

TEST(SampleHover, TellsSampleTimeAndDistances) {
    const auto state = MakeListState();
    state->Cursors.Cur = {20, 30, 10, 0, 25, 0};
    EXPECT_EQ(SampleHoverText(*state, 25),
              "Sample 25 (250ns)\nfrom A: +5 (50ns)\nfrom B: -5 (-50ns)\nfrom C: +15 (150ns)\n"
              "from D: +25 (250ns)\nfrom T: +0 (0ns)");
    state->Clock.ClockType = 1;
    EXPECT_EQ(SampleHoverText(*state, 25),
              "Sample 25\nfrom A: +5\nfrom B: -5\nfrom C: +15\nfrom D: +25\nfrom T: +0");
}

}  // namespace
}  // namespace zu
