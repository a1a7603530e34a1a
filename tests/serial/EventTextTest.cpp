// Texts and filter classes of the events.
#include <gtest/gtest.h>

#include "BusState.h"
#include "serial/EventCodes.h"
#include "serial/EventMap.h"
#include "serial/EventText.h"

namespace zu {
namespace {

using test::BusState;

struct Row {
    int Code;
    const char* StateList;
    const char* Serial;
    const char* Filter;  ///< menu item, null if the serial view of I2C has no row
};

constexpr Row kRows[] = {
    {1, "START", "START", "Start"},
    {2, "STOP", "STOP", "Stop"},
    {3, "     0", "0", "1 or 0"},
    {4, "     1", "1", "1 or 0"},
    {5, "DATA 0", "DATA 0", "Data"},
    {6, "DATA 1", "DATA 1", "Data"},
    {7, "ADDR 0", "ADDR 0", "Address"},
    {8, "ADDR 1", "ADDR 1", "Address"},
    {9, "CHIP SEL 0", "CHIP SEL 0", "Mode/Chip select"},
    {10, "CHIP SEL 1", "CHIP SEL 1", "Mode/Chip select"},
    {11, "CHIP SEL(10bit) 0", "CHIP SEL 0", "Mode/Chip select"},
    {12, "CHIP SEL(10bit) 1", "CHIP SEL 1", "Mode/Chip select"},
    {13, "BYTE WRITE", "BYTE WRITE", "Write"},
    {14, "PAGE WRITE", "PAGE WRITE", "Write"},
    {15, "ACK", "ACK", "ACK"},
    {16, "NACK", "NACK", "NACK"},
    {17, "MODE 0", "MODE 0", "Mode/Chip select"},
    {18, "MODE 1", "MODE 1", "Mode/Chip select"},
    {19, "ERROR 0", "ERROR[0]", "Error"},
    {20, "ERROR 1", "ERROR[1]", "Error"},
    {21, "RANDOM READ", "RANDOM READ", "Read"},
    {22, "SEQ. READ", "SEQ. READ", "Read"},
    {23, "CURRENT READ", "CURRENT ADDR READ", "Read"},
    {25, "START", "", nullptr},
    {26, "Data in 0", "D in 1", nullptr},
    {27, "Data in 1", "D in 0", nullptr},
    {28, "Data out 1", "", nullptr},
    {29, "Data out 0", "", nullptr},
    {30, "READ", "", nullptr},
    {31, "WRITE", "", nullptr},
    {32, "ERASE", "", nullptr},
    {33, "EWEN", "", nullptr},
    {34, "EWDS", "", nullptr},
    {35, "ERAL", "", nullptr},
    {36, "WRAL", "", nullptr},
    {37, "Data 1", "", nullptr},
    {38, "Data 0", "", nullptr},
    {40, "ADDR 1", "", nullptr},
    {41, "ADDR 0", "", nullptr},
};

TEST(EventTexts, EveryCodeInBothViews) {
    EXPECT_EQ(std::size(kRows), kEvents.size());
    for (const Row& row : kRows) {
        const auto code = static_cast<std::uint8_t>(row.Code);
        EXPECT_EQ(StateListEventText(code), row.StateList) << row.Code;
        EXPECT_EQ(EventOf(code).SerialText, row.Serial) << row.Code;
        const FilterClass filter = EventOf(code).Filter;
        ASSERT_EQ(filter == FilterClass::None, row.Filter == nullptr) << row.Code;
        if (row.Filter != nullptr) {
            EXPECT_EQ(kFilterTexts[static_cast<std::size_t>(filter)], row.Filter) << row.Code;
        }
    }
}

TEST(EventTexts, AnyOtherCodeIsBlank) {
    for (int code = 0; code < 256; ++code) {
        const bool known = std::any_of(std::begin(kRows), std::end(kRows),
                                       [code](const Row& row) { return row.Code == code; });
        if (known) continue;
        EXPECT_EQ(StateListEventText(static_cast<std::uint8_t>(code)), "") << code;
        EXPECT_EQ(EventOf(static_cast<std::uint8_t>(code)).Filter, FilterClass::None);
    }
}

TEST(EventTexts, FilterItemsInTheOrderOfTheirFlags) {
    const std::array<std::string_view, 11> expected{
        "Start", "Stop", "Read",    "Write", "1 or 0",          "ACK",
        "NACK",  "Data", "Address", "Error", "Mode/Chip select"};
    EXPECT_EQ(kFilterTexts, expected);
}

class RowText : public testing::Test {
  protected:
    RowText() : bus(64) {}
    /// Events from sample 0 on, with a gap of one sample between them.
    void Fill(std::initializer_list<int> codes) {
        std::fill(bus->Serial.SerialEvents.begin(), bus->Serial.SerialEvents.end(), std::uint8_t{0});
        std::size_t i = 0;
        for (const int code : codes) {
            bus->Serial.SerialEvents[i] = static_cast<std::uint8_t>(code);
            last = static_cast<std::int32_t>(i);
            i += 2;
        }
    }
    std::string Text() { return SerialRowText(*bus, last); }
    BusState bus;
    std::int32_t last = 0;
};

TEST_F(RowText, AnAcknowledgeCarriesTheByteBeforeIt) {
    Fill({1, 4, 3, 4, 3, 3, 3, 3, 3, 15});
    EXPECT_EQ(Text(), "ACK(Val=0xA0)");
    EXPECT_EQ(SerialEventText(*bus, last), "(Val=0xA0)");
    Fill({1, 4, 4, 15, 3, 3, 3, 3, 4, 4, 4, 4, 16});
    EXPECT_EQ(Text(), "NACK(Val=0xF)") << "from the acknowledge before";
    Fill({4, 4, 2, 4, 3, 15});
    EXPECT_EQ(Text(), "ACK(Val=0x2)") << "from the stop before";
}

TEST_F(RowText, WithoutAMarkTheBitsFromTheFirstSampleOnCount) {
    Fill({4, 3, 4, 15});
    EXPECT_EQ(Text(), "ACK(Val=0x5)");
}

TEST_F(RowText, EveryKindOfBitHasAValueOfItsOwn) {
    Fill({1, 17, 18, 9, 12, 11, 10, 7, 8, 8, 5, 6, 3, 4, 4, 15});
    EXPECT_EQ(Text(), "ACK(Val=0x3)(Addr=0x3)(Data=0x1)(Mode=0x1)(Chip=0x5)");
    Fill({1, 18, 17, 16});
    EXPECT_EQ(Text(), "NACK(Mode=0x2)");
}

TEST_F(RowText, WithoutBitsThereIsNoValue) {
    Fill({1, 15});
    EXPECT_EQ(Text(), "ACK");
    Fill({15});
    EXPECT_EQ(Text(), "ACK");
    Fill({1, 21, 13, 19, 26, 15});
    EXPECT_EQ(Text(), "ACK");
}

TEST_F(RowText, OtherEventsShowTheirTextAlone) {
    Fill({1, 4, 3});
    EXPECT_EQ(Text(), "0");
    Fill({26});
    EXPECT_EQ(Text(), "D in 1");
    EXPECT_EQ(SerialRowText(*bus, 1), "");
}

TEST_F(RowText, ManyBitsKeepTheLowest32) {
    bus.SetDisplayLen(100);
    std::fill_n(bus->Serial.SerialEvents.begin(), 99, std::uint8_t{4});
    bus->Serial.SerialEvents[99] = 15;
    EXPECT_EQ(SerialRowText(*bus, 99), "ACK(Val=0xFFFFFFFF)");
}

TEST_F(RowText, OutsideTheMapThereIsNothing) {
    for (const std::int32_t index : {-1, 64, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(SerialEventText(*bus, index), "");
        EXPECT_EQ(SerialRowText(*bus, index), "");
        EXPECT_EQ(EventAt(*bus, index), 0);
    }
}

TEST(EventMap, FindsTheSameEventsAsALoop) {
    std::vector<std::uint8_t> events(67, 0);
    for (const std::size_t i : {0U, 7U, 8U, 9U, 31U, 64U, 66U}) events[i] = 3;
    for (std::int32_t from = -3; from < 70; ++from) {
        std::int32_t next = std::max(from, 0);
        while (next < 67 && events[static_cast<std::size_t>(next)] == 0) ++next;
        EXPECT_EQ(FindEvent(events, from, 67), next < 67 ? next : 67) << from;
        std::int32_t previous = std::min(from, 66);
        while (previous >= 0 && events[static_cast<std::size_t>(previous)] == 0) --previous;
        EXPECT_EQ(FindEventBack(events, from), std::max(previous, -1)) << from;
    }
    EXPECT_EQ(FindEvent(events, 10, 20), 20);
    EXPECT_EQ(FindEvent({}, 0, 9), 9);
    EXPECT_EQ(FindEventBack({}, 5), -1);
}

}  // namespace
}  // namespace zu
