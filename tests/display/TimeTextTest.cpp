// Units and precisions of time texts.
#include <gtest/gtest.h>

#include "display/TimeText.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

std::string Of(std::int64_t samples, double rate, int precision) {
    return TimeText(samples, rate, precision);
}

struct TextCase {
    std::int64_t Samples;
    double Rate;
    int Precision;
    const char* Text;
};
constexpr TextCase kCases[] = {
    // Units by the time.
    {99, 10, 1, "990.0ns"},
    {100, 10, 1, "1.0us"},
    {99999, 10, 1, "1000.0us"},
    {100000, 10, 1, "1.0ms"},
    {100000000, 10, 1, "1.0s"},
    {999, 1e9, 1, "999.0s"},
    {1000, 1e9, 1, "16.7min"},
    {59999, 1e9, 1, "1000.0min"},
    {60000, 1e9, 1, "16.7hour"},
    {3599999, 1e9, 1, "1000.0hour"},
    // Days are computed and called hours; beyond 1000 days it is nanoseconds.
    {3600000, 1e9, 1, "41.7hour"},
    {86399999, 1e9, 0, "1000hour"},
    {86400000, 1e9, 0, "86400000000000000ns"},
    // The sign comes back.
    {-100, 10, 1, "-1.0us"},
    {-12345, 10, -2, "-123,450ns"},
    // Nothing: the unit follows the rate.
    {0, 999, 1, "0.0ns"},
    {0, 1000, 1, "0.0us"},
    {0, 1e6, 1, "0.0ms"},
    {0, 1e9, 1, "0.0s"},
    {0, 10, -1, "0.0ns"},
    {0, 10, -2, "0ns"},
    // Full resolution.
    {3, 2.5, -1, "7.5ns"},
    {12345, 10, -1, "123.4500us"},
    {1234567, 10, -1, "12.3456700ms"},
    {123456789, 10, -1, "1.2345678900s"},
    {1200, 1e9, -1, "20.0000000000000min"},
    {72000, 1e9, -1, "20.0000000000000000hour"},
    {8640000, 1e9, -1, "100.0000000000000000hour"},
    // No decimals.
    {3, 2.5, 0, "8ns"},
    {150, 10, 0, "2us"},
    {60000, 1e9, 0, "17hour"},
    // Whole number or one decimal.
    {100, 10, -3, "1us"},
    {125, 10, -3, "1.2us"},
    {1000, 10, -3, "10us"},
    {50000, 10, -3, "500us"},
    {3, 2.5, -3, "7.5ns"},
    {1, 2, -3, "2ns"},
    // In the unit of the rate, with commas.
    {1, 10, -2, "10ns"},
    {99, 10, -2, "990ns"},
    {100, 10, -2, "1,000ns"},
    {123456, 10, -2, "1,234,560ns"},
    {5, 2.5, -2, "12ns"},
    {1234, 1000, -2, "1,234us"},
    {1234, 500000, -2, "617,000us"},
    {1234, 1e6, -2, "1,234ms"},
    {1234567, 1e9, -2, "1,234,567s"},
    {2147483647, 999, -2, "2,145,336,163,353ns"},
    // Decimals as asked.
    {1234, 10, 3, "12.340us"},
    {1000, 1e9, 2, "16.67min"},
};

class EachText : public testing::TestWithParam<TextCase> {};
INSTANTIATE_TEST_SUITE_P(TimeText, EachText, testing::ValuesIn(kCases));

TEST_P(EachText, Reads) {
    const TextCase& c = GetParam();
    EXPECT_EQ(Of(c.Samples, c.Rate, c.Precision), c.Text);
}

TEST(TimeText, AveragesKeepTheirFraction) {
    EXPECT_EQ(TimeText(12.5, 10, -2), "125ns");
    EXPECT_EQ(TimeText(0.5, 10, 1), "5.0ns");
    EXPECT_EQ(TimeText(-12.5, 1000, 1), "-12.5us");
}

TEST(TimeText, HostileValuesEndInSomeText) {
    for (const double samples : {1e300, -1e300, 1e18, 0.0}) {
        for (const double rate : {0.0, -5.0, 1e300, 10.0}) {
            for (const int precision : {-3, -2, -1, 0, 1, 400}) {
                EXPECT_FALSE(TimeText(samples, rate, precision).empty());
            }
        }
    }
}

TEST(TimeText, RateAndModeDecideWhetherTimeIsKnown) {
    const auto state = test::MakeState();
    EXPECT_EQ(RateOf(*state), 10);
    EXPECT_TRUE(TimeKnown(*state));
    state->Cursors.CursorDlgMode = 0;
    EXPECT_FALSE(TimeKnown(*state));
    state->Cursors.CursorDlgMode = 1;
    state->Clock.ClockType = 1;
    EXPECT_FALSE(TimeKnown(*state)) << "an external clock has no rate";
}

}  // namespace
}  // namespace zu
