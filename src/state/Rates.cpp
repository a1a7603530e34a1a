#include "state/Rates.h"

namespace zu {
namespace {

constexpr int kInternal = 0;
constexpr int kLatched100MHz = 5;
constexpr int kCode100MHz = 5;
constexpr double kUnknownCodeNs = 10;

bool IsRate(int code) {
    return code >= 0 && code < kRateCodes;
}

}  // namespace

double GetRateNS(int clockType, int rateCode) {
    if (clockType == kLatched100MHz) return kRates[kCode100MHz].PeriodNs;
    if (clockType != kInternal) return 0;
    return IsRate(rateCode) ? kRates[static_cast<std::size_t>(rateCode)].PeriodNs : kUnknownCodeNs;
}

std::string_view RateStatusText(int clockType, int rateCode) {
    if (clockType == kLatched100MHz) return kRates[kCode100MHz].StatusText;
    if (clockType != kInternal) return "ext.";
    return IsRate(rateCode) ? kRates[static_cast<std::size_t>(rateCode)].StatusText : std::string_view{};
}

}  // namespace zu
