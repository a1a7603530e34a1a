// Rate codes against a second writing of their tables.
#include <gtest/gtest.h>

#include "state/Rates.h"

namespace zu {
namespace {

constexpr int kInternal = 0;

struct Row {
    int Code;
    std::string_view MenuText;
    double Period;
    std::string_view StatusText;
};

constexpr Row kRows[] = {
    {0, "1 GSa/s (1 ns)", 10, "  1 GSa   (1 ns)"},
    {1, "500 MSa/s (2 ns)", 2, "500 MSa   (2 ns)"},
    {2, "400 MSa/s (2.5 ns)", 2.5, "400 MSa (2.5 ns)"},
    {3, "250 MSa/s (4 ns)", 4, "250 MSa   (4 ns)"},
    {4, "200 MSa/s (5 ns)", 5, "200 MSa   (5 ns)"},
    {5, "100 MSa/s (10 ns)", 10, "100 MSa  (10 ns)"},
    {6, "50 MSa/s (20 ns)", 20, " 50 MSa  (20 ns)"},
    {7, "20 MSa/s (50 ns)", 50, " 20 MSa  (50 ns)"},
    {8, "10 MSa/s (100 ns)", 100, " 10 MSa (100 ns)"},
    {9, "5 MSa/s  (200 ns)", 200, "  5 MSa (200 ns)"},
    {10, "2 MSa/s  (500 ns)", 500, "  2 MSa (500 ns)"},
    {11, "1 MSa/s  (1 us)", 1000, "  1 MSa   (1 us)"},
    {12, "500 KSa/s  (2 us)", 2000, "500 KSa   (2 us)"},
    {13, "250 KSa/s  (4 us)", 4000, "250 KSa   (4 us)"},
    {14, "200 KSa/s  (5 us)", 5000, "200 KSa   (5 us)"},
    {15, "125 KSa/s (8 us)", 8000, "125 KSa   (8 us)"},
    {16, "100 KSa/s  (10 us)", 10000, "100 KSa  (10 us)"},
    {17, "62.5 KSa/s (16 us)", 16000, " 62.5KSa (16 us)"},
    {18, "50 KSa/s  (20 us)", 20000, " 50 KSa  (20 us)"},
    {19, "31.25 KSa/s (32 us)", 32000, " 31.2KSa (32 us)"},
    {20, "20 KSa/s  (50 us)", 50000, " 20 KSa  (50 us)"},
    {21, "15.625 KSa/s (64 us)", 64000, " 15.6KSa (64 us)"},
    {22, "10 KSa/s  (100 us)", 100000, " 10 KSa (100 us)"},
    {23, "5 KSa/s  (200 us)", 200000, "  5 KSa (200 us)"},
    {24, "2 KSa/s  (500 us)", 500000, "  2 KSa (500 us)"},
    {25, "1 KSa/s  (1 ms)", 1000000, "  1 KSa   (1 ms)"},
    {26, "500 Sa/s  (2 ms)", 2000000, "500 Sa    (2 ms)"},
    {27, "200 Sa/s  (5 ms)", 5000000, "200 Sa    (5 ms)"},
    {28, "100 Sa/s  (10 ms)", 10000000, "100 Sa   (10 ms)"},
    {29, "50 Sa/s  (20 ms)", 20000000, " 50 Sa   (20 ms)"},
    {30, "20 Sa/s  (50 ms)", 50000000, " 20 Sa   (50 ms)"},
    {31, "10 Sa/s  (100 ms)", 100000000, " 10 Sa  (100 ms)"},
    {32, "5 Sa/s  (200 ms)", 200000000, "  5 Sa  (200 ms)"},
    {33, "2 Sa/s  (500 ms)", 500000000, "  2 Sa  (500 ms)"},
    {34, "1 Sa/s  (1 s)", 1000000000, "  1 Sa    (1 s) "},
};

constexpr std::string_view kFileTexts[] = {
    "  1 GSa   (1 ns)", "500 MSa   (2 ns)", "400 MSa (2.5 ns)", "250 MSa   (4 ns)", "200 MSa   (5 ns)",
    "100 MSa  (10 ns)", "50 MSa  (20 ns)",  "20 MSa  (50 ns)",  "10 MSa (100 ns)",  "5 MSa (200 ns)",
    "2 MSa (500 ns)",   "1 MSa   (1 us)",   "500 KSa   (2 us)", "250 KSa   (4 us)", "200 KSa   (5 us)",
    "125 KSa   (8 us)", "100 KSa  (10 us)", "62.5KSa (16 us)",  "50 KSa  (20 us)",  "31.2KSa (32 us)",
    "20 KSa  (50 us)",  "15.6KSa (64 us)",  "10 KSa (100 us)",  "5 KSa (200 us)",   "2 KSa (500 us)",
    "1 KSa   (1 ms)",   "500 Sa    (2 ms)", "200 Sa    (5 ms)", "100 Sa   (10 ms)", "50 Sa   (20 ms)",
    "20 Sa   (50 ms)",  "10 Sa  (100 ms)",  "5 Sa  (200 ms)",   "2 Sa  (500 ms)",   "1 Sa    (1 s) ",
};

class RateCode : public testing::TestWithParam<Row> {};

TEST_P(RateCode, HasItsTextsAndPeriod) {
    const Row& row = GetParam();
    const RateTraits& rate = kRates[static_cast<std::size_t>(row.Code)];
    EXPECT_EQ(rate.MenuText, row.MenuText);
    EXPECT_EQ(rate.StatusText, row.StatusText);
    EXPECT_EQ(rate.FileText, kFileTexts[row.Code]);
    EXPECT_EQ(GetRateNS(kInternal, row.Code), row.Period);
    EXPECT_EQ(RateStatusText(kInternal, row.Code), row.StatusText);
}

TEST_P(RateCode, HasNoPeriodWithAnExternalClock) {
    const int code = GetParam().Code;
    for (const int type : {1, 2, 3, 4, 6, 9, 10, 11, 12, 13, 14, 255}) {
        EXPECT_EQ(GetRateNS(type, code), 0) << type;
        EXPECT_EQ(RateStatusText(type, code), "ext.") << type;
    }
}

TEST_P(RateCode, Is100MHzWithTheLatchedClock) {
    EXPECT_EQ(GetRateNS(5, GetParam().Code), 10);
    EXPECT_EQ(RateStatusText(5, GetParam().Code), "100 MSa  (10 ns)");
}

INSTANTIATE_TEST_SUITE_P(All, RateCode, testing::ValuesIn(kRows),
                         [](const auto& test) { return "Code" + std::to_string(test.param.Code); });

TEST(UnknownRateCode, CountsAs10Nanoseconds) {
    for (const int code : {-1, 35, 255, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(GetRateNS(kInternal, code), 10);
        EXPECT_EQ(RateStatusText(kInternal, code), "");
    }
}

TEST(RateTexts, OfFilesAreAllDifferent) {
    for (int a = 0; a < kRateCodes; ++a) {
        for (int b = a + 1; b < kRateCodes; ++b) EXPECT_NE(kFileTexts[a], kFileTexts[b]);
    }
}

}  // namespace
}  // namespace zu
