#pragma once

#include <cstdint>
#include <string>

#include "state/InstrumentState.h"

namespace zu {

/// One line on what a row does at a sample: for a channel its level, the width of the pulse, and period,
/// frequency and duty where the neighbouring edge is known; for a group its value and how long it lasts.
/// Empty for rows without samples there.
std::string HoverText(const InstrumentState& state, std::int32_t source, std::int64_t sample);
/// What a list says of a sample: its number, its time, and how far it is from each cursor, a line each.
std::string SampleHoverText(const InstrumentState& state, std::int64_t sample);

}  // namespace zu
