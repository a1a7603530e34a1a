// The list of I2C and Microwire events as it is drawn.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "display/RecorderCanvas.h"
#include "display/SerialPainter.h"
#include "support/TimingFixture.h"

namespace zu::test {
namespace {

constexpr std::int32_t kRow = 12;  // pixels, on a small screen
constexpr std::int32_t kEventLeft = 5 + 13 * 6;
constexpr std::int32_t kCursorLeft = 5 + 26 * 6;

/// A start, the byte 0x50 with its acknowledge, and a stop, at every tenth sample from 10 on.
std::unique_ptr<InstrumentState> MakeSerialState() {
    auto state = MakeState(13);
    SetLength(*state, 200);
    state->Cursors.Cur = {};
    for (std::size_t cursor = 0; cursor <= kCursorT; ++cursor) state->Cursors.Cur[cursor] = 1000;
    state->Cursors.CursorDlgMode = 0;
    state->Serial.SerialMode = 1;
    state->Serial.SerialEvents.assign(200, 0);
    std::size_t at = 10;
    for (const int code : {1, 3, 4, 3, 4, 3, 3, 3, 3, 15, 2}) {
        state->Serial.SerialEvents[at] = static_cast<std::uint8_t>(code);
        at += 10;
    }
    state->Serial.SerialFirst = 10;
    state->Serial.SerialLast = 110;
    return state;
}

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
