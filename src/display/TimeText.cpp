#include "display/TimeText.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cmath>
#include <cstdio>

#include "state/Rates.h"

namespace zu {
namespace {

struct Unit {
    double Ns;  ///< nanoseconds of one
    std::string_view Name;
    int FullDecimals;  ///< decimals at full resolution
};
constexpr Unit kNs{1, "ns", 1};
constexpr Unit kUs{1e3, "us", 4};
constexpr Unit kMs{1e6, "ms", 7};
constexpr Unit kS{1e9, "s", 10};
constexpr Unit kMin{6e10, "min", 13};
constexpr Unit kHour{3.6e12, "hour", 16};
// Days are computed and called hours; files and screens of users show them so.
constexpr Unit kDay{8.64e13, "hour", 16};

/// A unit is taken below Limit for a time, and for a time of 0 while the rate is below Limit.
struct Step {
    double Limit;
    Unit Use;
};
constexpr std::array<Step, 3> kShortSteps{{{1e3, kNs}, {1e6, kUs}, {1e9, kMs}}};
constexpr std::array<Step, 4> kLongSteps{{{1e12, kS}, {6e13, kMin}, {3.6e15, kHour}, {8.64e16, kDay}}};

Unit UnitOf(double time, double rate) {
    for (const Step& step : kShortSteps) {
        if (time > 0 ? time < step.Limit : rate < step.Limit) return step.Use;
    }
    for (const Step& step : kLongSteps) {
        if (time < step.Limit) return step.Use;
    }
    return kNs;
}

Unit UnitOfRate(double rate) {
    for (const Step& step : kShortSteps) {
        if (rate < step.Limit) return step.Use;
    }
    return kS;
}

std::string Decimals(double value, int decimals, std::string_view unit) {
    std::array<char, 384> text{};  // room for the largest double with its decimals
    std::snprintf(text.data(), text.size(), "%.*f%.*s", decimals, value, static_cast<int>(unit.size()),
                  unit.data());
    return text.data();
}

std::string WithCommas(std::int64_t value) {
    std::array<char, 24> digits{};
    std::snprintf(digits.data(), digits.size(), "%" PRId64, value);
    std::string text = digits.data();
    const std::size_t sign = value < 0 ? 1 : 0;
    for (std::size_t at = text.size(); at > sign + 3; at -= 3) text.insert(at - 3, 1, ',');
    return text;
}

std::int64_t Truncated(double value) {
    constexpr double kMost = 9e18;
    if (!(value > -kMost)) return std::isnan(value) ? 0 : -static_cast<std::int64_t>(kMost);
    return value < kMost ? static_cast<std::int64_t>(value) : static_cast<std::int64_t>(kMost);
}

}  // namespace

std::string TimeText(double samples, double rateNs, int precision) {
    if (precision == kTimeRateUnit) {
        const Unit unit = UnitOfRate(rateNs);
        return WithCommas(Truncated(samples * rateNs / unit.Ns)).append(unit.Name);
    }
    const double time = std::fabs(samples) * rateNs;
    const Unit unit = UnitOf(time, rateNs);
    const double value = std::copysign(time / unit.Ns, time == 0 ? 1.0 : samples);
    if (precision == kTimeFull) return Decimals(value, unit.FullDecimals, unit.Name);
    if (precision == kTimeWhole) return Decimals(value, value == std::floor(value) ? 0 : 1, unit.Name);
    return Decimals(value, precision > 0 ? std::min(precision, 20) : 0, unit.Name);
}

std::string TimeText(std::int64_t samples, double rateNs, int precision) {
    return TimeText(static_cast<double>(samples), rateNs, precision);
}

double RateOf(const InstrumentState& state) {
    return GetRateNS(state.Clock.ClockType, state.Clock.ClockRate);
}

bool TimeKnown(const InstrumentState& state) {
    return RateOf(state) > 0 && state.Cursors.CursorDlgMode != 0;
}

}  // namespace zu
