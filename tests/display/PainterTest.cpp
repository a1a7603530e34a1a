// The whole paint of the Timing view: order, grid, title, headers, cells, flags.
#include <algorithm>
#include <gtest/gtest.h>

#include "display/Cells.h"
#include "display/Lines.h"
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

/// Columns as a new configuration has them: off, name, trigger word, cursor values.
void DefaultColumns(InstrumentState& state) {
    ShowColumns(state, {{0}, {2}, {3}, {4}});
}

/// Vertical lines of a drawing, as x, top, bottom.
struct Stroke {
    std::int32_t X, Top, Bottom;
    Rgb Pen;
};
std::vector<Stroke> Strokes(const RecorderCanvas& canvas) {
    std::vector<Stroke> strokes;
    Point at;
    Rgb pen = 0;
    for (const auto& op : canvas.Ops()) {
        if (op.What == Kind::Pen) pen = op.Color;
        if (op.What == Kind::Line && op.Area.Left == at.X) strokes.push_back({at.X, at.Y, op.Area.Top, pen});
        if (op.What == Kind::Move || op.What == Kind::Line) at = {op.Area.Left, op.Area.Top};
    }
    return strokes;
}

std::vector<Stroke> StrokesAt(const RecorderCanvas& canvas, std::int32_t top, std::int32_t bottom) {
    std::vector<Stroke> found;
    for (const Stroke& stroke : Strokes(canvas)) {
        if (stroke.Top == top && stroke.Bottom == bottom) found.push_back(stroke);
    }
    return found;
}

TEST(Paint, ClampsTheFirstSampleAndNothingElse) {
    const auto state = MakeState();
    state->Timing.TimingDataPos = -40;
    state->Timing.ScreenZoom = 0;
    state->Timing.TimingChPos = -2;
    Paint(*state, 800, 400);
    EXPECT_EQ(state->Timing.TimingDataPos, 0);
    EXPECT_EQ(state->Timing.ScreenZoom, 0) << "zoom 0 is drawn as 1 and stays";
    EXPECT_EQ(state->Timing.TimingChPos, -2);
}

TEST(Paint, TellsTitleScrollRangesAndColumns) {
    const auto state = MakeState();
    DefaultColumns(*state);
    state->Timing.TimingDataPos = 640;
    state->Timing.TimingChPos = 2;
    const auto painted = Paint(*state, 800, 400);
    EXPECT_EQ(painted.Result.Horizontal, (ScrollRange{0, 16384, 20}));
    EXPECT_EQ(painted.Result.Vertical, (ScrollRange{0, 40, 2}));
    EXPECT_EQ(painted.Result.DataLeft, 150);
    EXPECT_EQ(painted.Result.Columns[1], (ColumnSpan{0, 90}));
    EXPECT_EQ(painted.Result.Title, TimingTitle(*state));
}

TEST(Paint, FillsOnePixelBeyondTheClientArea) {
    const auto state = MakeState();
    state->Screen.ScreenColor[1] = 0x123456;
    const auto painted = Paint(*state, 800, 400);
    const auto& ops = painted.Canvas.Ops();
    ASSERT_GE(ops.size(), 2U);
    EXPECT_EQ(ops[1].What, Kind::Fill);
    EXPECT_EQ(ops[1].Area, (zu::Rect{0, 0, 801, 401}));
    EXPECT_EQ(ops[1].Color, 0x123456U);
}

/// Place of the first operation that `is` accepts, among all.
template <typename Is>
std::size_t FirstOp(const RecorderCanvas& canvas, Is&& is) {
    const auto& ops = canvas.Ops();
    return static_cast<std::size_t>(std::find_if(ops.begin(), ops.end(), is) - ops.begin());
}

TEST(Paint, BackgroundGridStripHeadersRowsCentreAndFlagsInThisOrder) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    DefaultColumns(*state);
    ShowLines(*state, {{3}});
    state->Cursors.Cur = {20, 0, 0, 0, 0, 0};
    const auto painted = Paint(*state, 800, 200);
    const auto lineTo = [](std::int32_t x, std::int32_t y) {
        return [x, y](const RecorderCanvas::Op& op) {
            return op.What == Kind::Line && op.Area.Left == x && op.Area.Top == y;
        };
    };
    const auto text = [](std::string_view string, std::int32_t y) {
        return [string, y](const RecorderCanvas::Op& op) {
            return op.What == Kind::Text && op.String == string && op.Area.Top == y;
        };
    };
    const std::size_t order[] = {
        FirstOp(painted.Canvas, [](const auto& op) { return op.What == Kind::Fill; }),
        FirstOp(painted.Canvas, lineTo(150, 41)),  // first dash of the grid
        FirstOp(painted.Canvas, lineTo(800, 13)),  // centre line of the strip
        FirstOp(painted.Canvas, text("Name", HeaderLineY({}, 0))),
        FirstOp(painted.Canvas, text("Pod 1A Ch 3", 36)),
        FirstOp(painted.Canvas, [](const auto& op) { return op.What == Kind::Polyline; }),
        FirstOp(painted.Canvas, lineTo(150 + 325, 200)),  // centre of the screen
        FirstOp(painted.Canvas, lineTo(170, 200)),        // cursor A
        FirstOp(painted.Canvas, text("A", 26)),
        painted.Canvas.Ops().size(),
    };
    for (std::size_t i = 1; i < std::size(order); ++i) EXPECT_LT(order[i - 1], order[i]) << i;
}

TEST(Paint, StylesAndModesOfGroupsMakeAChannelLineNoOther) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    ShowColumns(*state, {});
    SetHigh(*state, 0, 10, 20);
    const auto trace = [&](int style, int mode) {
        ShowLines(*state, {{0, style, mode}});
        return test::Polylines(Paint(*state, 800, 200).Canvas).at(0);
    };
    const auto plain = trace(5, 0);
    for (const int mode : {1, 2, 3, 4, 5}) EXPECT_EQ(trace(5, mode), plain) << mode;
    for (int style = 0; style < 5; ++style) {
        const auto points = trace(style, 0);
        EXPECT_EQ(points[0].Y, 36 + 15 - 5) << "a row of text, with its trace";
        EXPECT_EQ(points[2].Y, 36);
    }
}

TEST(Paint, GridOfDashesEvery50Pixels) {
    const auto state = MakeState();
    ShowColumns(*state, {});
    ShowLines(*state, {});
    const auto painted = Paint(*state, 210, 60);
    std::vector<Stroke> grid;
    for (const Stroke& s : Strokes(painted.Canvas)) {
        if (s.Bottom - s.Top == 3 && s.Pen == 0x808080) grid.push_back(s);
    }
    // 210 / 50 + 2 lines; dashes at 38, 45, 52, 59.
    ASSERT_EQ(grid.size(), 6U * 4U);
    EXPECT_EQ(grid[0].X, 0);
    EXPECT_EQ(grid[0].Top, 38);
    EXPECT_EQ(grid[1].Top, 45);
    EXPECT_EQ(grid[4].X, 50);
    EXPECT_EQ(grid.back().X, 250);
    state->Timing.TimingGrid = 0;
    const auto plain = Paint(*state, 210, 60);
    for (const Stroke& s : Strokes(plain.Canvas)) EXPECT_NE(s.Bottom - s.Top, 3);
}

TEST(Title, ByGridRateAndActiveView) {
    const auto state = MakeState();
    SetLength(*state, 8192);
    EXPECT_EQ(TimingTitle(*state), "Timing view:  Time/Div:[500.0ns] Time/Acq:[81.9us]");
    state->Windows.ActiveView = 0;
    EXPECT_EQ(TimingTitle(*state), "Timing view:  Time/Div:[500.0ns] Time/Acq:[81.9us]")
        << "with a known rate it never tells the active window";
    state->Timing.ScreenZoom = 25;
    EXPECT_EQ(TimingTitle(*state), "Timing view:  Time/Div:[20.0ns] Time/Acq:[81.9us]");
    state->Timing.ScreenZoom = -40;
    EXPECT_EQ(TimingTitle(*state), "Timing view:  Time/Div:[20.0us] Time/Acq:[81.9us]");
    state->Clock.ClockType = 1;
    EXPECT_EQ(TimingTitle(*state), "Timing view(Active window):  Samples/Div:[2000 ] Samples/Acq:[8192]");
    state->Windows.ActiveView = 1;
    EXPECT_EQ(TimingTitle(*state), "Timing view:  Samples/Div:[2000 ] Samples/Acq:[8192]");
    state->Timing.ScreenZoom = 10;
    EXPECT_EQ(TimingTitle(*state), "Timing view:  Samples/Div:[5 ] Samples/Acq:[8192]");
    state->Timing.TimingGrid = 0;
    EXPECT_EQ(TimingTitle(*state), "Timing view: ");
    state->Windows.ActiveView = 0;
    EXPECT_EQ(TimingTitle(*state), "Timing view(Active window):  ");
}

TEST(Paint, StripShowsCentreLineBoxAndTicks) {
    const auto state = MakeState();
    ShowColumns(*state, {});
    SetLength(*state, 8000);
    state->Timing.TimingDataPos = 1000;
    state->Cursors.Cur = {100, 200, 300, 400, 500, 0};
    const auto painted = Paint(*state, 800, 100);
    EXPECT_NE(painted.Canvas.Dump().find("pen 808080\nmove 0,13\nline 800,13\n"
                                         "move 100,22\nline 100,3\nline 180,3\nline 180,22\nline 100,22\n"),
              std::string::npos)
        << "the centre line, then the box from its lower left corner and back to it";
    const auto ticks = StrokesAt(painted.Canvas, 18, 7);  // 0.7 and 0.3 of 26
    ASSERT_EQ(ticks.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(ticks[i].X, static_cast<std::int32_t>(10 * (i + 1)));
        EXPECT_EQ(ticks[i].Pen, state->Cursors.CursorColor[i]);
    }
}

TEST(Paint, DemoModeIsToldWhileNoHardwareIsThere) {
    const auto state = MakeState();
    DefaultColumns(*state);
    const auto texts = Paint(*state, 800, 100).Canvas.TextsAt(0);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0], "Demo Mode (Logic Analyzer hardware not found)");
    state->Identity.Emulated = 2;
    EXPECT_EQ(Paint(*state, 800, 100).Canvas.TextsAt(0).size(), 1U);
    state->Identity.Emulated = 0;
    EXPECT_TRUE(Paint(*state, 800, 100).Canvas.TextsAt(0).empty());
}

TEST(Paint, HeadersOfTheColumns) {
    const auto state = MakeState();
    ShowColumns(*state, {{1}, {2}, {3, 0, 2}, {4}, {5, 1, 0}, {6, 10, 0}});
    const auto painted = Paint(*state, 800, 100);
    EXPECT_EQ(
        painted.Canvas.TextsAt(HeaderLineY({}, 0)),
        (std::vector<std::string>{"Num", "Name", "+", "2", "A", "B", "C", "D", "T", "Count", "Duty \\/"}));
    EXPECT_EQ(painted.Canvas.TextsAt(HeaderLineY({}, 1)),
              (std::vector<std::string>{"-", "A to B", "A to C"}));
}

TEST(Paint, CellsOfAChannel) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    ShowColumns(*state, {{1}, {2}, {3, 0, 0}, {4}});
    ShowLines(*state, {{3}});
    state->Channels.ChannelName[3] = std::string_view("a name beyond fifteen characters");
    state->Trigger.SeqList[0] = 1;
    state->Trigger.TrigWord.Board[0][0][40] = '1';  // channel 3
    SetHigh(*state, 3, 120, 320);
    state->Cursors.Cur = {100, 150, 0, 1000, 300, 0};
    const auto painted = Paint(*state, 800, 100);
    EXPECT_EQ(painted.Canvas.TextsAt(36),
              (std::vector<std::string>{"3", "a name beyond f", "1", "0", "1", "1"}))
        << "cut to fifteen characters; cursor C at sample 0 and D at the end are blank";
    state->Channels.ChannelInvert[3] = 1;
    EXPECT_EQ(Paint(*state, 800, 100).Canvas.TextsAt(36)[1], "~a name beyond ");
}

TEST(Paint, CursorValuesHaveTheColourAndPlaceOfTheirCursor) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    ShowColumns(*state, {{4}});
    ShowLines(*state, {{3}});
    state->Cursors.Cur = {10, 0, 10, 10, 999, 0};
    const auto painted = Paint(*state, 800, 60);
    std::vector<std::pair<std::int32_t, Rgb>> cells;
    Rgb color = 0;
    for (const auto& op : painted.Canvas.Ops()) {
        if (op.What == Kind::TextColor) color = op.Color;
        if (op.What == Kind::Text && op.Area.Top == 36) cells.emplace_back(op.Area.Left, color);
    }
    EXPECT_EQ(cells, (std::vector<std::pair<std::int32_t, Rgb>>{
                         {0, 0x007D00}, {12, 0x008080}, {18, 0x808040}, {24, 0x0000FF}}));
}

TEST(TrigCell, WordDelayPatternAndNothing) {
    const auto state = MakeState();
    auto& word = state->Trigger.TrigWord.Board[0][4];
    word[43] = '0';
    word[42] = '1';
    word[41] = 'x';
    EXPECT_EQ(TrigWordCell(*state, 2, 0), "") << "level 2 selects no word";
    state->Trigger.SeqList[2] = 5;
    EXPECT_EQ(TrigWordCell(*state, 2, 0), "0");
    EXPECT_EQ(TrigWordCell(*state, 2, 1), "1");
    EXPECT_EQ(TrigWordCell(*state, 2, 2), "X");
    EXPECT_EQ(TrigWordCell(*state, 2, 3), "X");
    state->Pods.HardwarePod[0] = 4;
    EXPECT_EQ(TrigWordCell(*state, 2, 0), "0") << "mode 4 counts as logic";
    state->Pods.HardwarePod[0] = 3;
    EXPECT_EQ(TrigWordCell(*state, 2, 0), "");
    state->Pods.HardwarePod[0] = 1;
    EXPECT_EQ(TrigWordCell(*state, 2, 0), "PG");
    EXPECT_EQ(TrigWordCell(*state, 9, 0), "PG") << "whatever the level";
    state->Pods.HardwarePod[0] = 0;
    state->Trigger.ModeList[2] = 1;
    EXPECT_EQ(TrigWordCell(*state, 2, 0), "D");
    for (const int level : {-128, -1, 16, 127}) EXPECT_EQ(TrigWordCell(*state, level, 0), "");
    for (const int entry : {-1, 17, INT32_MAX, INT32_MIN}) {
        state->Trigger.SeqList[2] = entry;
        EXPECT_EQ(TrigWordCell(*state, 2, 0), "");
    }
    state->Trigger.SeqList[2] = 16;
    state->Trigger.ModeList[2] = 0;
    for (int channel = -1; channel <= 160; ++channel) {
        const std::string cell = TrigWordCell(*state, 2, channel);
        EXPECT_EQ(cell, channel >= 0 && channel < 40 ? "X" : "") << channel;
    }
}

TEST(TrigCell, SecondBoardAndFourLanes) {
    const auto two = MakeState(14);  // two boards of 40
    two->Trigger.SeqList[0] = 1;
    two->Trigger.TrigWord.Board[1][0][43] = '1';
    EXPECT_EQ(TrigWordCell(*two, 0, 40), "1");
    EXPECT_EQ(TrigWordCell(*two, 0, 0), "X");
    const auto four = MakeState(18);  // 32 channels in four lanes
    four->Trigger.SeqList[0] = 1;
    four->Trigger.TrigWord.Board[0][0][34] = '1';
    four->Trigger.TrigWord.Board[0][0][0] = '0';
    EXPECT_EQ(TrigWordCell(*four, 0, 0), "1");
    EXPECT_EQ(TrigWordCell(*four, 0, 31), "0");
}

TEST(Paint, ALineBeyondTheModelHasCellsAndNoTrace) {
    const auto state = MakeState();
    ShowColumns(*state, {{1}});
    ShowLines(*state, {{159}, {40}});
    const auto painted = Paint(*state, 800, 100);
    EXPECT_EQ(painted.Canvas.TextsAt(36), (std::vector<std::string>{"159"}));
    EXPECT_EQ(painted.Canvas.TextsAt(55), (std::vector<std::string>{"40"}));
    EXPECT_TRUE(test::Polylines(painted.Canvas).empty());
}

TEST(Paint, ZoomedOutBeyondOneColumnLabelsStay) {
    const auto state = MakeState();
    SetLength(*state, 3000);
    DefaultColumns(*state);
    ShowLines(*state, {{0}});
    state->Timing.ScreenZoom = -4000;
    const auto painted = Paint(*state, 800, 100);
    EXPECT_EQ(painted.Canvas.TextsAt(36).at(0), "Pod 1A Ch 0");
    EXPECT_TRUE(test::Polylines(painted.Canvas).empty());
}

TEST(Paint, SpacersFillTheirRowDownToFivePixels) {
    const auto state = MakeState();
    DefaultColumns(*state);
    ShowLines(*state, {{195, 7}, {-3, 5}});
    const auto painted = Paint(*state, 800, 400);
    std::vector<zu::Rect> fills;
    for (const auto& op : painted.Canvas.Ops()) {
        if (op.What == Kind::Fill && op.Color == 0x808080) fills.push_back(op.Area);
    }
    EXPECT_EQ(fills, (std::vector<zu::Rect>{{150, 36, 800, 54}, {150, 59, 800, 73}}));
}

TEST(Paint, CentreLineAndFlags) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    DefaultColumns(*state);
    ShowLines(*state, {{0}});
    state->Timing.TimingDataPos = 1000;
    state->Cursors.Cur = {1010, 999, 1649, 1650, 1300, 1010};
    const auto painted = Paint(*state, 800, 200);
    const auto lines = StrokesAt(painted.Canvas, 36, 200);
    ASSERT_EQ(lines.size(), 4U) << "the centre, A, C and T; B and D are off the screen";
    EXPECT_EQ(lines[0].X, 150 + 325);
    EXPECT_EQ(lines[0].Pen, 0x808080U);
    EXPECT_EQ(lines[1].X, 160);
    EXPECT_EQ(lines[1].Pen, 0x007D00U);
    EXPECT_EQ(lines[2].X, 799);
    EXPECT_EQ(lines[3].X, 450);
    EXPECT_EQ(painted.Canvas.TextsAt(26), (std::vector<std::string>{"A", "C", "T"}));
    for (const auto& op : painted.Canvas.Ops()) {
        if (op.What == Kind::Text && op.String == "T" && op.Area.Top == 26) {
            EXPECT_EQ(op.Area.Left, 450 - 3);
        }
    }
}

TEST(Paint, CentreLineAtEachSideOfZoom1) {
    const auto state = MakeState();
    DefaultColumns(*state);
    state->Timing.ScreenZoom = 50;
    EXPECT_EQ(StrokesAt(Paint(*state, 800, 200).Canvas, 36, 200).at(0).X, 150 + 6 * 50)
        << "13 samples, half of it 6";
    state->Timing.ScreenZoom = -40;
    EXPECT_EQ(StrokesAt(Paint(*state, 800, 200).Canvas, 36, 200).at(0).X, 150 + 325);
}

TEST(Paint, MonochromeUsesTheBlackPenAndLeavesTheTextColour) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    DefaultColumns(*state);
    ShowLines(*state, {{3}, {9}});
    RecorderCanvas canvas(800, 200);
    canvas.SetMono(true);
    PaintTiming(*state, {800, 200}, canvas);
    for (const auto& op : canvas.Ops()) {
        if (op.What == Kind::Pen || op.What == Kind::TextColor) {
            EXPECT_EQ(op.Color, 0U);
        }
    }
}

TEST(Paint, RowsStopAtTheWindowsLowerEdge) {
    const auto state = MakeState();
    DefaultColumns(*state);
    const auto painted = Paint(*state, 800, 36 + 19 * 3 + 1);
    EXPECT_FALSE(painted.Canvas.TextsAt(36 + 19 * 3).empty()) << "a row that begins inside is drawn";
    EXPECT_TRUE(painted.Canvas.TextsAt(36 + 19 * 4).empty());
}

TEST(Paint, AWindowNarrowerThanItsColumnsDrawsCellsOnly) {
    const auto state = MakeState();
    FillPod(*state, 0, [](std::int32_t i) { return i; });
    DefaultColumns(*state);
    ShowLines(*state, {{0}, {195}});
    for (const int zoom : {50, 1, -40}) {
        state->Timing.ScreenZoom = zoom;
        const auto painted = Paint(*state, 120, 200);
        EXPECT_EQ(painted.Result.DataLeft, 150);
        EXPECT_TRUE(test::Polylines(painted.Canvas).empty());
        EXPECT_TRUE(Strokes(painted.Canvas).empty());
        EXPECT_EQ(painted.Canvas.TextsAt(36).at(0), "Pod 1A Ch 0");
    }
}

TEST(Paint, MeasurementsAreKeptFromPaintToPaint) {
    const auto state = MakeState();
    ShowColumns(*state, {{5, 0, 0}, {8, 1, 0}, {9, 0, 0}, {10, 1, 0}});
    auto scratch = std::make_unique<PaintScratch>();
    RecorderCanvas canvas(800, 900);
    PaintTiming(*state, {800, 900}, canvas, *scratch);
    EXPECT_EQ(scratch->Measures.Misses(), 80U) << "40 lines over two ranges";
    state->Timing.TimingDataPos = 500;
    state->Cursors.Cur[3] += 10;
    PaintTiming(*state, {800, 900}, canvas, *scratch);
    EXPECT_EQ(scratch->Measures.Misses(), 80U) << "cursor D bounds no range on show";
    state->Cursors.Cur[0] += 10;
    PaintTiming(*state, {800, 900}, canvas, *scratch);
    EXPECT_EQ(scratch->Measures.Misses(), 120U) << "only what A bounds is measured anew";
}

TEST(RecordedDrawing, TimingAtEachKindOfZoom) {
    const auto state = MakeState();
    SetLength(*state, 4000);
    FillPod(*state, 0, [](std::int32_t i) { return i / 3; });
    FillPod(*state, 1, [](std::int32_t i) { return i == 1700 ? 1 : (i / 200) << 1; });
    DefaultColumns(*state);
    ShowLines(*state, {{0, 5}, {1, 6}, {2, 7, 3}, {8, 5}, {9, 6}, {190, 5}, {10, 8, 4}, {41, 5}});
    state->Cursors.Cur = {1690, 1700, 1720, 3000, 1705, 0};
    state->Timing.TimingDataPos = 1690;
    state->Timing.TimingGrid = 0;
    const struct {
        int Zoom;
        const char* Name;
    } cases[] = {{10, "timing-wide"}, {1, "timing-one"}, {-10, "timing-narrow"}};
    for (const auto& c : cases) {
        state->Timing.ScreenZoom = c.Zoom;
        test::ExpectRecorded(c.Name, Paint(*state, 400, 200).Canvas.Dump());
    }
}

}  // namespace
}  // namespace zu
