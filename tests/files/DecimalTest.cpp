#include <cstdint>
#include <gtest/gtest.h>

#include "files/Decimal.h"

namespace zu {
namespace {

struct Case {
    const char* Text;
    std::int64_t Value;
};

TEST(ParseDecimal, TakesBlanksASignAndDigitsAndStopsAtTheRest) {
    constexpr Case kCases[] = {
        {"", 0},
        {"0", 0},
        {"42", 42},
        {"-42", -42},
        {"+7", 7},
        {" \t 12", 12},
        {"12abc", 12},
        {"12 34", 12},
        {"- 5", 0},
        {"--5", 0},
        {"abc", 0},
        {"-", 0},
        {"0x10", 0},
        {"007", 7},
        {"1.9", 1},
        {"\n5", 0},
        {"5\r", 5},
        {"+-1", 0},
        {"2147483648", 2147483648},
        {"-2147483649", -2147483649LL},
        {"9223372036854775807", INT64_MAX},
        {"-9223372036854775808", INT64_MIN},
    };
    for (const Case& c : kCases) EXPECT_EQ(ParseDecimal(c.Text), c.Value) << c.Text;
}

TEST(ParseDecimal, SaturatesAtTheEnds) {
    EXPECT_EQ(ParseDecimal("9223372036854775808"), INT64_MAX);
    EXPECT_EQ(ParseDecimal("9223372036854775809"), INT64_MAX);
    EXPECT_EQ(ParseDecimal("-9223372036854775809"), INT64_MIN);
    EXPECT_EQ(ParseDecimal(std::string(100000, '9')), INT64_MAX);
    EXPECT_EQ(ParseDecimal("-" + std::string(100000, '9')), INT64_MIN);
}

TEST(ParseDecimalClamped, StaysInside32Bits) {
    EXPECT_EQ(ParseDecimalClamped("2147483647"), INT32_MAX);
    EXPECT_EQ(ParseDecimalClamped("2147483648"), INT32_MAX);
    EXPECT_EQ(ParseDecimalClamped("-99999999999999999999"), INT32_MIN);
    EXPECT_EQ(ParseDecimalClamped("-12"), -12);
}

TEST(UpperCase, ChangesAsciiLettersOnly) {
    EXPECT_EQ(UpperCase("a-z \xE4 Z9"), "A-Z \xE4 Z9");
    EXPECT_TRUE(EqualIgnoringCase("TimingWin", "TIMINGwin"));
    EXPECT_FALSE(EqualIgnoringCase("a", "ab"));
    EXPECT_FALSE(EqualIgnoringCase("\xE4", "\xC4"));
}

}  // namespace
}  // namespace zu
