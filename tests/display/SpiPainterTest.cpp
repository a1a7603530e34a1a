// The list of SPI bytes as it is drawn.
#include <gtest/gtest.h>

#include "display/SpiPainter.h"
#include "support/Recorded.h"
#include "support/SerialListFixture.h"

namespace zu::test {
namespace {

constexpr std::int32_t kRow = kSerialRow;
constexpr std::int32_t kWide = 600;
using Texts = std::vector<std::string>;

RecorderCanvas Paint(const InstrumentState& state, std::int32_t rows = 20) {
    RecorderCanvas canvas(kWide, rows * kRow);
    PaintSpi(state, {kWide, rows * kRow}, canvas);
    return canvas;
}

/// Left edges of the texts of a row, in characters.
std::vector<std::int32_t> LeftsAt(const RecorderCanvas& canvas, std::int32_t y) {
    std::vector<std::int32_t> lefts;
    for (const auto& op : canvas.Between(y, y + 1)) {
        if (op.What == RecorderCanvas::Kind::Text) lefts.push_back(op.Area.Left / 6);
    }
    return lefts;
}

TEST(SpiPainter, HeaderThenOneRowAByte) {
    const auto state = MakeSpiState();
    const auto canvas = Paint(*state);
    EXPECT_EQ(canvas.TextsAt(0),
              (Texts{"Position", "MOSI", "MISO", std::string(state->Channels.ChannelName[9].View(), 0, 4),
                     std::string(state->Channels.ChannelName[10].View(), 0, 14), "Cursor(s)"}));
    EXPECT_EQ(canvas.TextsAt(kRow), (Texts{"0000020", "9F", "FF"})) << "the other slot's cells are blank";
    EXPECT_EQ(canvas.TextsAt(2 * kRow), (Texts{"0000040", "0A", "05", "01", "02"}));
    EXPECT_EQ(canvas.TextsAt(3 * kRow), (Texts{"0000060", "03", "04"}));
    EXPECT_TRUE(canvas.TextsAt(4 * kRow).empty());
}

TEST(SpiPainter, ColumnsStandAtTheirCharacters) {
    auto state = MakeSpiState();
    state->Groups[3] = state->Groups[2];
    PutSpiByte(*state, 2, 40, 0x77, 0x88);
    state->Cursors.Cur[1] = 40;
    const auto canvas = Paint(*state);
    EXPECT_EQ(LeftsAt(canvas, 0), (std::vector<std::int32_t>{0, 15, 20, 35, 40, 55, 60, 75}));
    EXPECT_EQ(LeftsAt(canvas, 2 * kRow), (std::vector<std::int32_t>{0, 15, 20, 35, 40, 55, 60, 75}));
}

TEST(SpiPainter, ASlotKeepsItsColumnsWhenAnotherIsSwitchedOff) {
    auto state = MakeSpiState();
    state->Serial.SpiShown[0] = 0;
    EXPECT_EQ(LeftsAt(Paint(*state), 0), (std::vector<std::int32_t>{0, 35, 40, 55}));
    state->Serial.SpiShown = {1, 0, 1};
    EXPECT_EQ(LeftsAt(Paint(*state), 0), (std::vector<std::int32_t>{0, 15, 20, 35}));
    state->Serial.SpiShown = {0, 0, 0};
    EXPECT_EQ(Paint(*state).TextsAt(0), (Texts{"Position", "Cursor(s)"}));
}

TEST(SpiPainter, HeadersStandInTheColoursOfTheirChannels) {
    auto state = MakeSpiState();
    state->Channels.ChannelColor[1] = 0x111111;
    state->Channels.ChannelColor[2] = 0x222222;
    state->Screen.ScreenColor[0] = 0x333333;
    const auto canvas = Paint(*state);
    EXPECT_EQ(TextColorAt(canvas, 0, 0), 0x333333U);
    EXPECT_EQ(TextColorAt(canvas, 15 * 6, 0), 0x111111U);
    EXPECT_EQ(TextColorAt(canvas, 20 * 6, 0), 0x222222U);
    EXPECT_EQ(TextColorAt(canvas, 15 * 6, kRow), 0x333333U) << "the bytes stand in the text's";
}

TEST(SpiPainter, ALongNameEndsAtTheNextColumn) {
    auto state = MakeSpiState();
    state->Channels.ChannelName[1] = std::string_view("FLASH_MOSI");
    state->Channels.ChannelName[2] = std::string_view("FLASH_MISO_NET_12");
    const auto texts = Paint(*state).TextsAt(0);
    EXPECT_EQ(texts[1], "FLAS");
    EXPECT_EQ(texts[2], "FLASH_MISO_NET");
}

TEST(SpiPainter, TheLastColumnListsTheCursors) {
    auto state = MakeSpiState();
    const auto note = [&](const decltype(state->Cursors.Cur)& cursors) {
        state->Cursors.Cur = cursors;
        return SpiCursorsText(*state, 40);
    };
    EXPECT_EQ(note({1, 2, 3, 4, 5, 40}), "") << "the sixth is no cursor";
    EXPECT_EQ(note({1, 2, 3, 4, 40, 6}), "Trigger,");
    EXPECT_EQ(note({1, 2, 40, 4, 5, 6}), "C");
    EXPECT_EQ(note({40, 40, 40, 40, 40, 6}), "Trigger,ABCD");
    state->Cursors.Cur = {50, 1000, 1000, 1000, 40, 0};
    const auto canvas = Paint(*state);
    EXPECT_EQ(canvas.TextsAt(2 * kRow), (Texts{"0000040", "0A", "05", "01", "02", "Trigger,"}));
    EXPECT_EQ(canvas.TextsAt(3 * kRow), (Texts{"0000050", "A"})) << "a row of its own";
    EXPECT_EQ(TextColorAt(canvas, 55 * 6, 2 * kRow), state->Cursors.CursorColor[kCursorT]);
    EXPECT_EQ(TextColorAt(canvas, 55 * 6, 3 * kRow), state->Cursors.CursorColor[0]);
}

TEST(SpiPainter, PlacesAreSevenDigitsOrTimes) {
    auto state = MakeSpiState();
    EXPECT_EQ(SpiPlaceText(*state, 0), "0000000");
    EXPECT_EQ(SpiPlaceText(*state, 2097151), "2097151");
    EXPECT_EQ(SpiPlaceText(*state, 12345678), "12345678");
    state->Cursors.CursorDlgMode = 1;
    EXPECT_EQ(SpiPlaceText(*state, 20), "200.0ns") << "10 ns a sample";
    EXPECT_EQ(SpiPlaceText(*state, 12345), "123.4500us");
}

TEST(SpiPainter, ASlotWithoutDataListsNothingUnderItsHeader) {
    auto state = MakeSpiState();
    state->Serial.SpiShown[0] = 0;
    state->Serial.SpiSI[1].assign(200, 0);
    state->Serial.SpiSO[1].assign(200, 0);
    const auto canvas = Paint(*state);
    EXPECT_EQ(canvas.TextsAt(0).size(), 4U);
    EXPECT_TRUE(canvas.TextsAt(kRow).empty());
}

TEST(SpiPainter, TheFirstRowIsMovedOntoAByte) {
    auto state = MakeSpiState();
    state->Serial.SpiDataPos = 21;
    EXPECT_EQ(Paint(*state).TextsAt(kRow)[0], "0000040");
    state->Serial.SpiLast = 90;
    state->Serial.SpiDataPos = 80;
    EXPECT_EQ(Paint(*state).TextsAt(kRow)[0], "0000060") << "back to the last one";
    EXPECT_EQ(state->Serial.SpiDataPos, 80) << "a paint moves nothing";
}

TEST(SpiPainter, TheScrollRangeIsInUnitsOfTheMemory) {
    auto state = MakeSpiState();
    state->Serial.SpiFirst = 64;
    state->Serial.SpiLast = 150;
    PutSpiByte(*state, 0, 100, 1, 2);
    state->Serial.SpiDataPos = 98;
    RecorderCanvas canvas(kWide, 100);
    const SerialResult result = PaintSpi(*state, {kWide, 100}, canvas);
    EXPECT_EQ(result.Title, "SPI bus");
    EXPECT_EQ(result.Vertical, (ScrollRange{2, 4, 3})) << "32 samples each, from the byte at 100";
    state->Memory.DisplayLen = 0xFFFFF;
    state->Serial.SpiLast = 0xFFFF0;
    EXPECT_EQ(SpiBar(*state).RangeAt(600), (ScrollRange{0, 0xFFFF0 / 256, 2})) << "256 in a long memory";
}

TEST(SpiPainter, ChannelsThatTheInstrumentLacksHaveNoHeader) {
    auto state = MakeSpiState();
    state->Groups[1].Channels[1] = state->Shape.TotalChannels;
    state->Groups[1].Channels[2] = -1;
    EXPECT_EQ(LeftsAt(Paint(*state), 0), (std::vector<std::int32_t>{0, 35, 40, 55}));
}

TEST(SpiPainter, RowsLookAsRecorded) {
    auto state = MakeSpiState();
    state->Cursors.Cur = {40, 50, 1000, 40, 60, 0};
    RecorderCanvas canvas(kWide, 8 * kRow);
    PaintSpi(*state, {.Width = kWide, .Height = 8 * kRow, .Selected = {40, 51}}, canvas);
    ExpectRecorded("spi-list", canvas.Dump());
}

}  // namespace
}  // namespace zu::test
