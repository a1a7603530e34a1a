#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu {

/// Text of an event in the Statelist's serial column; empty, shown as blanks, for code 0 and unknown codes.
std::string_view StateListEventText(std::uint8_t code);

/// Values of the bits that an acknowledge at `index` ends, as "(Val=0x50)": one pair of brackets for each
/// kind of bit between the previous start, stop or acknowledge and `index`. Empty without such bits and
/// outside the map.
std::string SerialEventText(const InstrumentState& state, std::int32_t index);

/// Text of the serial view's row for the event at `index`; an acknowledge carries the values that it ends.
std::string SerialRowText(const InstrumentState& state, std::int32_t index);

}  // namespace zu
