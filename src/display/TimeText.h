#pragma once

#include <cstdint>
#include <string>

#include "state/InstrumentState.h"

namespace zu {

/// Precision of a time text; a value above 0 is a number of decimals.
inline constexpr int kTimeFull = -1;      ///< full resolution of the unit
inline constexpr int kTimePlain = 0;      ///< no decimals
inline constexpr int kTimeWhole = -3;     ///< whole number if it is one, else one decimal
inline constexpr int kTimeRateUnit = -2;  ///< whole count in the unit of the rate, with commas

/// `samples` at `rateNs` nanoseconds each, as text with its unit.
std::string TimeText(std::int64_t samples, double rateNs, int precision);
/// The same of an average.
std::string TimeText(double samples, double rateNs, int precision);

/// Sample period of the state's clock in nanoseconds; 0 or below when it is not known.
double RateOf(const InstrumentState& state);
/// Whether columns, cursor window and lists show time instead of samples.
bool TimeKnown(const InstrumentState& state);

}  // namespace zu
