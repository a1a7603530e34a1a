#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "state/Limits.h"

namespace zu {

/// One rate code of the internal clock.
struct RateTraits {
    std::string_view MenuText;
    double PeriodNs;
    std::string_view StatusText;
    std::string_view FileText;  ///< text of the settings key "RateStg"; its blanks are part of the key
};

// Code 0 says 1 ns and counts as 10: it is offered on row 19 only.
inline constexpr std::array<RateTraits, kRateCodes> kRates{{
    {"1 GSa/s (1 ns)", 10, "  1 GSa   (1 ns)", "  1 GSa   (1 ns)"},
    {"500 MSa/s (2 ns)", 2, "500 MSa   (2 ns)", "500 MSa   (2 ns)"},
    {"400 MSa/s (2.5 ns)", 2.5, "400 MSa (2.5 ns)", "400 MSa (2.5 ns)"},
    {"250 MSa/s (4 ns)", 4, "250 MSa   (4 ns)", "250 MSa   (4 ns)"},
    {"200 MSa/s (5 ns)", 5, "200 MSa   (5 ns)", "200 MSa   (5 ns)"},
    {"100 MSa/s (10 ns)", 10, "100 MSa  (10 ns)", "100 MSa  (10 ns)"},
    {"50 MSa/s (20 ns)", 20, " 50 MSa  (20 ns)", "50 MSa  (20 ns)"},
    {"20 MSa/s (50 ns)", 50, " 20 MSa  (50 ns)", "20 MSa  (50 ns)"},
    {"10 MSa/s (100 ns)", 100, " 10 MSa (100 ns)", "10 MSa (100 ns)"},
    {"5 MSa/s  (200 ns)", 200, "  5 MSa (200 ns)", "5 MSa (200 ns)"},
    {"2 MSa/s  (500 ns)", 500, "  2 MSa (500 ns)", "2 MSa (500 ns)"},
    {"1 MSa/s  (1 us)", 1000, "  1 MSa   (1 us)", "1 MSa   (1 us)"},
    {"500 KSa/s  (2 us)", 2000, "500 KSa   (2 us)", "500 KSa   (2 us)"},
    {"250 KSa/s  (4 us)", 4000, "250 KSa   (4 us)", "250 KSa   (4 us)"},
    {"200 KSa/s  (5 us)", 5000, "200 KSa   (5 us)", "200 KSa   (5 us)"},
    {"125 KSa/s (8 us)", 8000, "125 KSa   (8 us)", "125 KSa   (8 us)"},
    {"100 KSa/s  (10 us)", 10000, "100 KSa  (10 us)", "100 KSa  (10 us)"},
    {"62.5 KSa/s (16 us)", 16000, " 62.5KSa (16 us)", "62.5KSa (16 us)"},
    {"50 KSa/s  (20 us)", 20000, " 50 KSa  (20 us)", "50 KSa  (20 us)"},
    {"31.25 KSa/s (32 us)", 32000, " 31.2KSa (32 us)", "31.2KSa (32 us)"},
    {"20 KSa/s  (50 us)", 50000, " 20 KSa  (50 us)", "20 KSa  (50 us)"},
    {"15.625 KSa/s (64 us)", 64000, " 15.6KSa (64 us)", "15.6KSa (64 us)"},
    {"10 KSa/s  (100 us)", 100000, " 10 KSa (100 us)", "10 KSa (100 us)"},
    {"5 KSa/s  (200 us)", 200000, "  5 KSa (200 us)", "5 KSa (200 us)"},
    {"2 KSa/s  (500 us)", 500000, "  2 KSa (500 us)", "2 KSa (500 us)"},
    {"1 KSa/s  (1 ms)", 1000000, "  1 KSa   (1 ms)", "1 KSa   (1 ms)"},
    {"500 Sa/s  (2 ms)", 2000000, "500 Sa    (2 ms)", "500 Sa    (2 ms)"},
    {"200 Sa/s  (5 ms)", 5000000, "200 Sa    (5 ms)", "200 Sa    (5 ms)"},
    {"100 Sa/s  (10 ms)", 10000000, "100 Sa   (10 ms)", "100 Sa   (10 ms)"},
    {"50 Sa/s  (20 ms)", 20000000, " 50 Sa   (20 ms)", "50 Sa   (20 ms)"},
    {"20 Sa/s  (50 ms)", 50000000, " 20 Sa   (50 ms)", "20 Sa   (50 ms)"},
    {"10 Sa/s  (100 ms)", 100000000, " 10 Sa  (100 ms)", "10 Sa  (100 ms)"},
    {"5 Sa/s  (200 ms)", 200000000, "  5 Sa  (200 ms)", "5 Sa  (200 ms)"},
    {"2 Sa/s  (500 ms)", 500000000, "  2 Sa  (500 ms)", "2 Sa  (500 ms)"},
    {"1 Sa/s  (1 s)", 1000000000, "  1 Sa    (1 s) ", "1 Sa    (1 s) "},
}};

/// Sample period in nanoseconds; 0 means unknown (every external clock but type 5).
double GetRateNS(int clockType, int rateCode);
/// Text of the status bar's rate pane; empty for an internal code above 34.
std::string_view RateStatusText(int clockType, int rateCode);

}  // namespace zu
