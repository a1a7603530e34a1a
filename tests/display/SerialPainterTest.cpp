// The list of I2C and Microwire events as it is drawn.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "display/RecorderCanvas.h"
#include "display/SerialPainter.h"
#include "support/Recorded.h"
#include "support/SerialListFixture.h"

namespace zu::test {
namespace {

constexpr std::int32_t kRow = kSerialRow;
constexpr std::int32_t kEventLeft = 5 + 13 * 6;
constexpr std::int32_t kCursorLeft = 5 + 26 * 6;
constexpr std::int32_t kTransferLeft = 5 + 39 * 6;

using Texts = std::vector<std::string>;

RecorderCanvas Paint(const InstrumentState& state, std::int32_t rows) {
    RecorderCanvas canvas(400, rows * kRow);
    PaintSerial(state, {400, rows * kRow}, canvas);
    return canvas;
}

TEST(SerialPainter, HeaderThenOneRowAnEvent) {
    const auto state = MakeSerialState();
    const auto canvas = Paint(*state, 20);
    EXPECT_EQ(canvas.TextsAt(0), (Texts{"Location", "I2C"}));
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"10", "START"}));
    EXPECT_EQ(canvas.TextsAt(2 * kRow), (Texts{"20", "0"}));
    EXPECT_EQ(canvas.TextsAt(10 * kRow), (Texts{"100", "ACK(Val=0x50)"}));
    EXPECT_EQ(canvas.TextsAt(11 * kRow), (Texts{"110", "STOP"}));
    EXPECT_TRUE(canvas.TextsAt(12 * kRow).empty());
}

TEST(SerialPainter, ColumnsStandThirteenCharactersApart) {
    auto state = MakeSerialState();
    state->Cursors.Cur[2] = 10;
    std::vector<std::int32_t> lefts;
    for (const auto& op : Paint(*state, 4).Between(kRow, 2 * kRow)) {
        if (op.What == RecorderCanvas::Kind::Text) lefts.push_back(op.Area.Left);
    }
    EXPECT_EQ(lefts, (std::vector<std::int32_t>{5, kEventLeft, kCursorLeft}));
}

TEST(SerialPainter, ACursorColoursAndUnderlinesItsRow) {
    auto state = MakeSerialState();
    state->Cursors.Cur[1] = 10;
    state->Cursors.Cur[kCursorT] = 15;
    const auto canvas = Paint(*state, 10);
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"10", "START", "Cursor B"}));
    EXPECT_EQ(canvas.TextsAt(2 * kRow), (Texts{"15", "Trigger"})) << "a row of its own";
    const auto ops = canvas.Between(kRow, 2 * kRow);
    using Kind = RecorderCanvas::Kind;
    const auto find = [&ops](Kind kind) {
        return std::find_if(ops.begin(), ops.end(), [kind](const auto& op) { return op.What == kind; });
    };
    const auto move = find(Kind::Move);
    const auto line = find(Kind::Line);
    ASSERT_NE(move, ops.end());
    ASSERT_NE(line, ops.end());
    EXPECT_EQ(move->Area.Left, 5);
    EXPECT_EQ(move->Area.Top, 2 * kRow - 1);
    EXPECT_EQ(line->Area.Left, kCursorLeft);
    EXPECT_EQ(line->Area.Top, 2 * kRow - 1);
    const auto colored = [&canvas, &state](Kind kind) {
        return std::any_of(canvas.Ops().begin(), canvas.Ops().end(), [&](const auto& op) {
            return op.What == kind && op.Color == state->Cursors.CursorColor[1];
        });
    };
    EXPECT_TRUE(colored(Kind::TextColor));
    EXPECT_TRUE(colored(Kind::Pen));
}

TEST(SerialPainter, WithAllFiltersOffOnlyCursorsAreListed) {
    auto state = MakeSerialState();
    state->Serial.SerialFilter = {};
    state->Cursors.Cur[0] = 10;
    const auto canvas = Paint(*state, 10);
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"10", "Cursor A"}));
    EXPECT_TRUE(canvas.TextsAt(2 * kRow).empty());
}

TEST(SerialPainter, MicrowireHasItsOwnHeaderAndPlainSamples) {
    auto state = MakeSerialState();
    state->Serial.SerialMode = 2;
    state->Cursors.CursorDlgMode = 1;
    state->Serial.SerialEvents[30] = 26;
    state->Serial.SerialEvents[40] = 27;
    const auto canvas = Paint(*state, 10);
    EXPECT_EQ(canvas.TextsAt(0), (Texts{"Address", "Microwire"}));
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"30", "D in 1"}));
    EXPECT_EQ(canvas.TextsAt(2 * kRow), (Texts{"40", "D in 0"}));
    EXPECT_TRUE(canvas.TextsAt(3 * kRow).empty());
}

TEST(SerialPainter, ScrollRangeIsInUnitsOfTheScale) {
    auto state = MakeSerialState();
    state->Serial.SerialDataPos = 50;
    RecorderCanvas canvas(100, 100);
    EXPECT_EQ(PaintSerial(*state, {100, 100}, canvas).Vertical, (ScrollRange{10, 110, 50}));
    state->Serial.SerialFirst = 0;
    state->Serial.SerialLast = 0x7FFF;
    EXPECT_EQ(PaintSerial(*state, {100, 100}, canvas).Vertical, (ScrollRange{0, 0x7FFF / 2, 25}));
}

TEST(SerialPainter, TheUpperTenthOfARowIsTheRowBefore) {
    SerialGrid layout;
    layout.RowHeight = 20;
    EXPECT_FALSE(SerialRowAt(layout, -5));
    EXPECT_FALSE(SerialRowAt(layout, 19));
    EXPECT_EQ(SerialRowAt(layout, 20), 0);
    EXPECT_EQ(SerialRowAt(layout, 39), 0);
    EXPECT_EQ(SerialRowAt(layout, 41), 0);
    EXPECT_EQ(SerialRowAt(layout, 42), 1);
    EXPECT_EQ(SerialRowAt(layout, 61), 1);
    EXPECT_EQ(SerialRowAt(layout, 62), 2);
    EXPECT_TRUE(SerialRowAt(layout, INT32_MAX));
}

TEST(SerialPainter, AClickFindsItsSample) {
    auto state = MakeSerialState();
    state->Serial.SerialDataPos = 10;
    const SerialLayout layout = LayoutSerial(Metrics{}, 300);
    EXPECT_FALSE(SerialSampleAt(*state, layout, kRow - 1));
    EXPECT_EQ(SerialSampleAt(*state, layout, kRow + 5), 10);
    EXPECT_EQ(SerialSampleAt(*state, layout, 3 * kRow + 5), 30);
    EXPECT_FALSE(SerialSampleAt(*state, layout, 30 * kRow)) << "past the end of data";
}

TEST(SerialPainter, TheRowCountIsEven) {
    EXPECT_EQ(LayoutSerial(Metrics{}, 7 * kRow).PageRows, 6);
    EXPECT_EQ(LayoutSerial(Metrics{}, 8 * kRow).PageRows, 8);
    EXPECT_EQ(LayoutSerial(Metrics{}, -1).PageRows, 0);
}

TEST(SerialPainter, FilterMenuTurnsItsFlags) {
    auto state = MakeSerialState();
    EXPECT_TRUE(ToggleSerialFilter(*state, 5));
    const MenuSpec menu = SerialFilterMenu(*state);
    ASSERT_EQ(menu.Entries.size(), 11U);
    for (const MenuEntry& entry : menu.Entries) EXPECT_EQ(entry.Checked, entry.Id != 5);
    EXPECT_EQ(menu.Entries[4].Text, "1 or 0");
    EXPECT_TRUE(ToggleSerialFilter(*state, 5));
    EXPECT_EQ(state->Serial.SerialFilter[4], 1);
    EXPECT_FALSE(ToggleSerialFilter(*state, 0));
    EXPECT_FALSE(ToggleSerialFilter(*state, 12));
}

TEST(SerialPainter, ATransferStandsAtTheRowOfItsStart) {
    const auto state = MakeSerialState();
    RecorderCanvas canvas(400, 20 * kRow);
    PaintSerial(*state, {.Width = 400, .Height = 20 * kRow, .Transfers = true}, canvas);
    EXPECT_EQ(canvas.TextsAt(0), (Texts{"Location", "I2C", "Transfer"}));
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"10", "START", "S 28 W ACK | P"}));
    EXPECT_EQ(canvas.TextsAt(2 * kRow), (Texts{"20", "0"}));
    state->Serial.SerialFilter[0] = 0;
    canvas.Clear();
    PaintSerial(*state, {.Width = 400, .Height = 20 * kRow, .Transfers = true}, canvas);
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"20", "0"})) << "a start that is not listed has no row";
}

TEST(SerialPainter, ATransferIsCutToTheWindow) {
    const auto state = MakeSerialState();
    for (const std::int32_t characters : {0, 1, 5, 14, 20}) {
        const std::int32_t width = kTransferLeft + 6 * characters;
        RecorderCanvas canvas(width, 20 * kRow);
        PaintSerial(*state, {.Width = width, .Height = 20 * kRow, .Transfers = true}, canvas);
        Texts expected{"10", "START"};
        if (characters > 0) {
            expected.push_back(std::string("S 28 W ACK | P").substr(0, static_cast<std::size_t>(characters)));
        }
        EXPECT_EQ(canvas.TextsAt(kRow), expected);
    }
}

TEST(SerialPainter, MicrowireHasNoTransfers) {
    auto state = MakeSerialState();
    state->Serial.SerialMode = 2;
    state->Serial.SerialEvents[5] = 26;
    state->Cursors.Cur[0] = 10;
    RecorderCanvas canvas(400, 20 * kRow);
    PaintSerial(*state, {.Width = 400, .Height = 20 * kRow, .Transfers = true}, canvas);
    EXPECT_EQ(canvas.TextsAt(0), (Texts{"Address", "Microwire"}));
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"10", "Cursor A"}));
}

TEST(SerialPainter, SelectedRowsStandOnATint) {
    const auto state = MakeSerialState();
    RecorderCanvas canvas(400, 20 * kRow);
    PaintSerial(*state, {.Width = 400, .Height = 20 * kRow, .Selected = {20, 31}}, canvas);
    std::vector<Rect> fills;
    for (const auto& op : canvas.Ops()) {
        if (op.What == RecorderCanvas::Kind::Fill) fills.push_back(op.Area);
    }
    EXPECT_EQ(fills,
              (std::vector<Rect>{
                  {0, 0, 400, 20 * kRow}, {0, 2 * kRow, 400, 3 * kRow}, {0, 3 * kRow, 400, 4 * kRow}}));
}

TEST(SerialPainter, TellsTitleAndPage) {
    const auto state = MakeSerialState();
    RecorderCanvas canvas(400, 4 * kRow);
    const SerialResult result = PaintSerial(*state, {400, 4 * kRow}, canvas);
    EXPECT_EQ(result.Title, "I2C View");
    EXPECT_EQ(result.Page, 20) << "from the row of 10 to that of 30";
}

TEST(SerialPainter, ARateTurnsPlacesIntoTimes) {
    auto state = MakeSerialState();
    state->Cursors.CursorDlgMode = 1;
    state->Cursors.Cur.fill(9000);
    state->Serial.SerialEvents.assign(3000, 0);
    state->Serial.SerialEvents[2345] = 1;
    state->Serial.SerialLast = 2345;
    EXPECT_EQ(Paint(*state, 4).TextsAt(kRow), (Texts{"23,450ns", "START"})) << "10 ns a sample";
}

TEST(SerialPainter, RowsOfEveryKindLookAsRecorded) {
    auto state = MakeSerialState();
    state->Cursors.Cur = {10, 25, 30, 1000, 100, 0};
    state->Serial.SerialEvents[130] = 1;
    for (std::size_t i = 0; i < 9; ++i) {
        state->Serial.SerialEvents[132 + 2 * i] = static_cast<std::uint8_t>(i == 8 ? 16 : 3 + i % 2);
    }
    RecorderCanvas canvas(420, 26 * kRow);
    PaintSerial(*state, {.Width = 420, .Height = 26 * kRow, .Selected = {40, 61}, .Transfers = true}, canvas);
    ExpectRecorded("serial-list", canvas.Dump());
}

TEST(SerialPainter, NothingIsColouredOnMonoPaper) {
    auto state = MakeSerialState();
    state->Cursors.Cur[0] = 10;
    RecorderCanvas canvas(400, 20 * kRow);
    canvas.SetMono(true);
    PaintSerial(*state, {400, 20 * kRow}, canvas);
    for (const auto& op : canvas.Ops()) {
        EXPECT_TRUE(op.What != RecorderCanvas::Kind::TextColor && op.What != RecorderCanvas::Kind::Pen);
    }
}

TEST(SerialPainter, AnyStateIsDrawn) {
    std::mt19937 random(77);
    auto state = MakeSerialState();
    const auto any = [&random] { return static_cast<std::int32_t>(random()); };
    for (int round = 0; round < 500; ++round) {
        SerialRecord& serial = state->Serial;
        serial.SerialEvents.resize(random() % 300);
        for (auto& code : serial.SerialEvents) {
            if (random() % 3 == 0) code = static_cast<std::uint8_t>(random());
        }
        serial.SerialMode = static_cast<std::int8_t>(random() % 4);
        serial.SerialFirst = random() % 2 == 0 ? any() : 5;
        serial.SerialLast = random() % 2 == 0 ? any() : 250;
        serial.SerialDataPos = random() % 2 == 0 ? any() : 20;
        for (auto& cursor : state->Cursors.Cur) cursor = random() % 2 == 0 ? any() : any() % 300;
        state->Clock.ClockRate = static_cast<decltype(state->Clock.ClockRate)>(random() % 60);
        const std::int32_t height = any() % 600;
        RecorderCanvas canvas(200, 600);
        PaintSerial(*state, {200, height}, canvas);
        SerialSampleAt(*state, LayoutSerial(canvas.FontMetrics(), height), any() % 700);
    }
}

}  // namespace
}  // namespace zu::test
