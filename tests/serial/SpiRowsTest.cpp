// Bytes and rows of the SPI view.
#include <gtest/gtest.h>
#include <random>

#include "BusState.h"
#include "serial/RowCursors.h"
#include "serial/SpiDecoder.h"
#include "serial/SpiRows.h"

namespace zu {
namespace {

using test::BusState;
using SampleList = std::vector<std::int32_t>;

class SpiRowsTest : public testing::Test {
  protected:
    SpiRowsTest() : bus(300) {
        bus->Cursors.Cur.fill(-1);
        bus.SetGroup(1, 3, {0, 1, 2, 3});
        bus.SetGroup(2, 4, {8, 9, 10, 11});
        bus->Groups[1].Name = "FLASH";
        PutByte(0, 20, 30, 0x9F, 0xFF);
        PutByte(0, 40, 50, 0x0A, 0x05);
        PutByte(1, 40, 44, 0x01, 0x02);
        PutByte(1, 60, 64, 0x03, 0x04);
        bus->Serial.SpiFirst = 20;
        bus->Serial.SpiLast = 60;
    }
    void PutByte(std::size_t slot, std::size_t start, std::size_t end, unsigned si, unsigned so) {
        auto& siWords = bus->Serial.SpiSI[slot];
        auto& soWords = bus->Serial.SpiSO[slot];
        siWords[start] = static_cast<std::uint16_t>(0x100 | si);
        soWords[start] = static_cast<std::uint16_t>(0x100 | so);
        siWords[end] = soWords[end] = 0x1400;
        siWords[start + 2] = 0x400;
    }
    BusState bus;
};

TEST_F(SpiRowsTest, BytesInOrder) {
    EXPECT_EQ(NextSpiByte(*bus, 0, 0), (SpiByte{20, 30, 0x9F, 0xFF}));
    EXPECT_EQ(NextSpiByte(*bus, 0, 20), (SpiByte{20, 30, 0x9F, 0xFF}));
    EXPECT_EQ(NextSpiByte(*bus, 0, 21), (SpiByte{40, 50, 0x0A, 0x05}));
    EXPECT_FALSE(NextSpiByte(*bus, 0, 41));
    EXPECT_FALSE(NextSpiByte(*bus, 2, 0));
    EXPECT_FALSE(NextSpiByte(*bus, 3, 0));
    EXPECT_FALSE(NextSpiByte(*bus, -1, 0));
    EXPECT_TRUE(NextSpiByte(*bus, 1, -100));
}

TEST_F(SpiRowsTest, TheByteThatASampleLiesIn) {
    EXPECT_FALSE(SpiByteAround(*bus, 0, 19));
    EXPECT_EQ(SpiByteAround(*bus, 0, 20)->Si, 0x9F);
    EXPECT_EQ(SpiByteAround(*bus, 0, 30)->Si, 0x9F);
    EXPECT_FALSE(SpiByteAround(*bus, 0, 31));
    EXPECT_EQ(SpiByteAround(*bus, 0, 45)->Start, 40);
    EXPECT_FALSE(SpiByteAround(*bus, 0, 4000));
    EXPECT_FALSE(SpiByteAround(*bus, 9, 20));
}

TEST_F(SpiRowsTest, AStartWithoutAnEndIsItsOwnEnd) {
    bus->Serial.SpiSI[2][299] = 0x1AB;
    EXPECT_EQ(NextSpiByte(*bus, 2, 0), (SpiByte{299, 299, 0xAB, 0}));
}

TEST_F(SpiRowsTest, EntriesOutsideAreZero) {
    EXPECT_EQ(SpiSiAt(*bus, 0, 20), 0x19F);
    EXPECT_EQ(SpiSoAt(*bus, 0, 20), 0x1FF);
    for (const std::int64_t sample : {std::int64_t{-1}, std::int64_t{300}, INT64_MAX, INT64_MIN}) {
        EXPECT_EQ(SpiSiAt(*bus, 0, sample), 0);
        EXPECT_EQ(SpiSoAt(*bus, 0, sample), 0);
    }
    EXPECT_EQ(SpiSiAt(*bus, 3, 20), 0);
    EXPECT_EQ(SpiSoAt(*bus, -1, 20), 0);
}

TEST_F(SpiRowsTest, CellAndButtonTexts) {
    EXPECT_EQ(SpiCellText(0x019F), "9F");
    EXPECT_EQ(SpiCellText(0x1505), "05");
    EXPECT_EQ(SpiCellText(0x1405), "");
    EXPECT_EQ(SpiButtonText(*bus, 0), "SPI(0)\r\nFLASH");
    EXPECT_EQ(SpiButtonText(*bus, 2), "SPI(2)\r\nUndefined");
}

TEST_F(SpiRowsTest, ShownSlotsAreSwitchedOnAndDefined) {
    EXPECT_EQ(ShownSpiSlots(*bus), (std::array<bool, 3>{true, true, false}));
    bus->Serial.SpiShown[0] = 0;
    EXPECT_EQ(ShownSpiSlots(*bus), (std::array<bool, 3>{false, true, false}));
}

TEST_F(SpiRowsTest, ARowHasAByteInAnyShownSlotOrACursor) {
    EXPECT_EQ(SpiRows(*bus, 100), (SampleList{20, 40, 60}));
    EXPECT_EQ(SpiRows(*bus, 2), (SampleList{20, 40}));
    bus->Cursors.Cur[3] = 55;
    EXPECT_EQ(SpiRows(*bus, 100), (SampleList{20, 40, 55, 60}));
    bus->Serial.SpiShown[1] = 0;
    EXPECT_EQ(SpiRows(*bus, 100), (SampleList{20, 40, 55}));
    bus->Serial.SpiShown[0] = 0;
    EXPECT_EQ(SpiRows(*bus, 100), (SampleList{55}));
}

TEST_F(SpiRowsTest, AGroupWithoutDataListsNoRows) {
    bus->Serial.SpiShown[0] = 0;
    std::fill(bus->Serial.SpiSI[1].begin(), bus->Serial.SpiSI[1].end(), std::uint16_t{0});
    EXPECT_TRUE(SpiRows(*bus, 100).empty());
}

TEST_F(SpiRowsTest, AClickCountsSamplesWithAByteInAllShownSlots) {
    EXPECT_EQ(SpiRowSample(*bus, 0), 40);
    EXPECT_FALSE(SpiRowSample(*bus, 1)) << "past the end of data";
    bus->Cursors.Cur[0] = 30;
    EXPECT_EQ(SpiRowSample(*bus, 0), 30);
    EXPECT_EQ(SpiRowSample(*bus, 1), 40);
    bus->Serial.SpiShown[1] = 0;
    EXPECT_EQ(SpiRowSample(*bus, 0), 20);
    bus->Serial.SpiDataPos = 25;
    EXPECT_EQ(SpiRowSample(*bus, 0), 30);
    bus->Serial.SpiShown[0] = 0;
    EXPECT_EQ(SpiRowSample(*bus, 0), 30);
    EXPECT_FALSE(SpiRowSample(*bus, 1)) << "without a shown slot only cursors count";
    EXPECT_FALSE(SpiRowSample(*bus, -1));
}

TEST_F(SpiRowsTest, TheFirstRowIsMovedOntoAByte) {
    bus->Serial.SpiDataPos = 21;
    EXPECT_EQ(SpiRowsStart(*bus), 40);
    bus->Serial.SpiDataPos = 0;
    EXPECT_EQ(SpiRowsStart(*bus), 20);
    bus->Serial.SpiDataPos = 1000;
    EXPECT_EQ(SpiRowsStart(*bus), 60);
    bus->Serial.SpiLast = 90;
    bus->Serial.SpiDataPos = 80;
    EXPECT_EQ(SpiRowsStart(*bus), 60) << "back to the last one";
    bus->Serial.SpiShown.fill(0);
    EXPECT_EQ(SpiRowsStart(*bus), 60) << "a byte in any slot, shown or not";
}

TEST_F(SpiRowsTest, ASingleByteIsTheWholeRange) {
    bus->Serial.SpiLast = 0;
    EXPECT_EQ(SpiRangeEnd(*bus), 20);
    bus->Serial.SpiDataPos = 200;
    EXPECT_EQ(SpiRowsStart(*bus), 20);
}

TEST_F(SpiRowsTest, StartsBackwardsInShownSlots) {
    bus->Cursors.Cur[0] = 55;
    EXPECT_EQ(SpiStartBack(*bus, 1000), 60);
    EXPECT_EQ(SpiStartBack(*bus, 59), 40) << "a cursor is no start";
    EXPECT_EQ(SpiStartBack(*bus, 20), 20);
    EXPECT_FALSE(SpiStartBack(*bus, 19));
    EXPECT_FALSE(SpiStartBack(*bus, INT32_MIN));
    bus->Serial.SpiShown[1] = 0;
    EXPECT_EQ(SpiStartBack(*bus, 1000), 40);
}

TEST_F(SpiRowsTest, AnyArraysAreListedAsSampleBySample) {
    std::mt19937 random(9);
    for (int round = 0; round < 300; ++round) {
        bus.SetDisplayLen(9000);
        const auto spacing = 1 + random() % 5000;
        for (auto& words : bus->Serial.SpiSI) {
            words.resize(words.size() - random() % 10);
            for (auto& word : words)
                word = static_cast<std::uint16_t>(random() % spacing == 0 ? random() : 0);
        }
        for (auto& flag : bus->Serial.SpiShown) flag = random() % 3 == 0 ? 0 : 1;
        for (auto& cursor : bus->Cursors.Cur) cursor = static_cast<std::int32_t>(random() % 9500) - 100;
        const auto shown = ShownSpiSlots(*bus);
        SampleList expected;
        SampleList starts;
        const auto end = static_cast<std::int32_t>(bus->Serial.SpiSI[0].size());
        for (std::int32_t i = 0; i < end; ++i) {
            bool start = false;
            for (int slot = 0; slot < kSpiSlots; ++slot) {
                start |= shown[static_cast<std::size_t>(slot)] && (SpiSiAt(*bus, slot, i) & 0x100) != 0;
            }
            if (start) starts.push_back(i);
            if (start || CursorOnSample(*bus, i) >= 0) expected.push_back(i);
        }
        SampleList forward;
        for (auto row = NextSpiRow(*bus, -4); row; row = NextSpiRow(*bus, *row + 1)) forward.push_back(*row);
        ASSERT_EQ(forward, expected) << round;
        SampleList back;
        for (auto row = SpiStartBack(*bus, end - 1); row; row = SpiStartBack(*bus, *row - 1)) {
            back.insert(back.begin(), *row);
        }
        ASSERT_EQ(back, starts) << round;
    }
}

TEST_F(SpiRowsTest, EmptyArrays) {
    bus.SetDisplayLen(0);
    bus->Cursors.Cur[0] = 5;
    bus->Serial.SpiDataPos = INT32_MIN;
    EXPECT_TRUE(SpiRows(*bus, 10).empty());
    EXPECT_FALSE(SpiRowSample(*bus, 0));
    EXPECT_FALSE(NextSpiRow(*bus, INT32_MIN));
}

}  // namespace
}  // namespace zu
