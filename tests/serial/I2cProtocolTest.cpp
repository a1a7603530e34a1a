// The names that the EEPROM protocol gives to the bits of a whole frame.
#include <gtest/gtest.h>
#include <string>

#include "serial/I2cDecoder.h"

namespace zu {
namespace {

/// Events from text: S start, P stop, R a second start, 0 and 1 bits, "." none.
std::vector<std::uint8_t> Frame(const std::string& text) {
    std::vector<std::uint8_t> events;
    for (const char c : text) {
        switch (c) {
            case 'S':
            case 'R':
                events.push_back(1);
                break;
            case 'P':
                events.push_back(2);
                break;
            case '0':
                events.push_back(3);
                break;
            case '1':
                events.push_back(4);
                break;
            default:
                events.push_back(0);
        }
    }
    return events;
}

std::vector<int> Classified(const std::string& text, std::int32_t atStart, std::int32_t atStop) {
    auto events = Frame(text);
    ClassifyI2C(events, static_cast<std::int32_t>(events.size()), 0, atStart, atStop);
    std::vector<int> codes;
    for (const auto code : events) {
        if (code != 0) codes.push_back(code);
    }
    return codes;
}

TEST(ClassifyI2C, ControlAndOneDataByteAreACurrentRead) {
    EXPECT_EQ(Classified("S1010.001101011110P", 0, 17),
              (std::vector<int>{1, 18, 17, 18, 17, 9, 9, 10, 23, 3, 4, 3, 4, 4, 4, 4, 3, 2}))
        << "bits from the eighth on stay";
    EXPECT_EQ(Classified("S01010110P", 0, 17), (std::vector<int>{1, 17, 18, 17, 18, 9, 10, 10, 19, 2}))
        << "a write without a data byte is an error";
}

TEST(ClassifyI2C, TwentySevenBitsAreAByteWrite) {
    EXPECT_EQ(Classified("S10100010 0"
                         "10101010 0"
                         "11110000 0"
                         "P",
                         0, 27),
              (std::vector<int>{1, 18, 17, 18, 17, 9, 9, 10, 13, 15,  //
                                8, 7,  8,  7,  8,  7, 8, 7,  15,      //
                                6, 6,  6,  6,  5,  5, 5, 5,  15, 2}));
}

TEST(ClassifyI2C, AnyOtherLengthIsAPageWrite) {
    const auto codes = Classified(
        "S10100000 0"
        "00000001 0"
        "00000000 0"
        "11111111 0"
        "P",
        0, 36);
    EXPECT_EQ(codes[8], 14);
    EXPECT_EQ(codes[9], 15);
    EXPECT_EQ(codes[17], 8);
    EXPECT_EQ(codes[28], 6);
    EXPECT_EQ(codes[36], 15);
}

TEST(ClassifyI2C, AReadMayRefuseItsLastByteOnly) {
    const auto codes = Classified(
        "S10100001 0"
        "11111111 0"
        "00000000 1"
        "P",
        0, 27);
    EXPECT_EQ(codes[8], 22);
    EXPECT_EQ(codes[9], 15);
    EXPECT_EQ(codes[27], 16);
    EXPECT_EQ(codes.back(), 2);
}

TEST(ClassifyI2C, ARefusalElsewhereIsAnErrorThatEndsTheNaming) {
    const auto read = Classified(
        "S10100001 0"
        "11111111 1"
        "00000000 1"
        "P",
        0, 27);
    EXPECT_EQ(read[18], 20);
    for (std::size_t i = 19; i < 28; ++i) EXPECT_TRUE(read[i] == 3 || read[i] == 4) << i;
    const auto write = Classified(
        "S10100000 0"
        "11111111 0"
        "00000000 1"
        "P",
        0, 27);
    EXPECT_EQ(write[27], 20) << "a write may not be refused at its end either";
    const auto control = Classified(
        "S10100000 1"
        "11111111 0"
        "P",
        0, 18);
    EXPECT_EQ(control[9], 20);
    EXPECT_EQ(control[10], 4);
}

TEST(ClassifyI2C, TheWalkEndsAtAStartAndAtAStop) {
    EXPECT_EQ(Classified("S10R10", 0, 9), (std::vector<int>{1, 18, 17, 1, 4, 3}));
    EXPECT_EQ(Classified("S10P10", 0, 9), (std::vector<int>{1, 18, 17, 2, 4, 3}));
}

TEST(ClassifyI2C, OtherEventsDoNotCountInAWriteOrRead) {
    auto events = Frame("S1010");
    events.insert(events.begin() + 3, 15);
    ClassifyI2C(events, static_cast<std::int32_t>(events.size()), 0, 0, 9);
    EXPECT_EQ(events, (std::vector<std::uint8_t>{1, 18, 17, 15, 18, 17}));
}

TEST(ClassifyI2C, ARandomReadCountsItsStarts) {
    // Entry 0 is the start; the second one stands at entry 19, one behind the 18 bits before it.
    const auto codes = Classified(
        "S"
        "10100000"
        "0"
        "01010101"
        "0"
        "R"
        "0100011"
        "0"
        "1"
        "11110000",
        18, 35);
    const std::vector<int> expected{1,                             // 0
                                    18, 17, 18, 17, 9, 9,  9, 21,  // 1..8 control, random read
                                    15,                            // 9
                                    7,  8,  7,  8,  7, 8,  7, 8,   // 10..17 address
                                    15,                            // 18
                                    1,                             // 19 the second start just counts
                                    17, 18, 17, 9,  9, 10,         // 20..25
                                    16,                            // 26, one short of nine behind
                                    15,                            // 27
                                    6,  6,  6,  6,  6, 5,  5, 5,   // 28..35 data
                                    15};                           // 36
    EXPECT_EQ(codes, expected);
}

TEST(ClassifyI2C, ARandomReadForWritingIsAnError) {
    const auto codes = Classified(
        "S"
        "10100001"
        "1",
        18, 35);
    EXPECT_EQ(codes[8], 20);
    EXPECT_EQ(codes[9], 16) << "the naming goes on";
}

TEST(ClassifyI2C, LongAddressesAndDataHaveAnAcknowledgeBehindEachByte) {
    // Two address bytes: the second start is counted at 27 bits, and the stop at 27 + 9 + 17 - 9.
    std::string text =
        "S"
        "10100000"
        "0"
        "00000000"
        "0"
        "1111111"
        "1"
        "0";
    const auto codes = Classified(text, 27, 44);
    EXPECT_EQ(codes[17], 7);
    EXPECT_EQ(codes[18], 15) << "the ninth of the count";
    EXPECT_EQ(codes[19], 8);
    EXPECT_EQ(codes[26], 8);
    EXPECT_EQ(codes[27], 15) << "a multiple of nine";
    // Behind the second control byte the data count begins anew.
    std::string data = "S" + std::string(27, '0') + std::string(9, '0') +
                       "00000000"
                       "1"
                       "1";
    const auto dataCodes = Classified(data, 27, 53);
    EXPECT_EQ(dataCodes[37], 5);
    EXPECT_EQ(dataCodes[44], 5);
    EXPECT_EQ(dataCodes[45], 16);
    EXPECT_EQ(dataCodes[46], 6);
}

TEST(ClassifyI2C, OtherCountsNameNothing) {
    const std::string text = "S1010000110101P";
    const std::vector<int> raw{1, 4, 3, 4, 3, 3, 3, 3, 4, 4, 3, 4, 3, 4, 2};
    for (const auto& [atStart, atStop] :
         std::vector<std::pair<int, int>>{{0, 8}, {0, 16}, {0, 35}, {17, 35}, {18, 36}, {19, 35}}) {
        EXPECT_EQ(Classified(text, atStart, atStop), raw) << atStart << " " << atStop;
    }
}

TEST(ClassifyI2C, StaysInsideTheMap) {
    auto events = Frame("S1010000");
    ClassifyI2C(events, 1000, 0, 0, 9);
    EXPECT_EQ(events[7], 9);
    auto few = Frame("S1010000");
    ClassifyI2C(few, 3, 0, 0, 9);
    EXPECT_EQ(few, (std::vector<std::uint8_t>{1, 18, 17, 4, 3, 3, 3, 3}));
    ClassifyI2C(few, 8, 8, 0, 9);
    ClassifyI2C(few, 8, -5, 0, 9);
    ClassifyI2C(few, -1, 0, 18, 35);
    EXPECT_EQ(few, (std::vector<std::uint8_t>{1, 18, 17, 4, 3, 3, 3, 3}));
}

}  // namespace
}  // namespace zu
