#pragma once

#include <cstdint>

#include "state/InstrumentState.h"

namespace zu {

inline constexpr std::int8_t kGroupModeMicrowire = 2;  ///< GroupRecord::Mode

/// Runs over the SerialGroup: channel slot 0 is the clock, 1 data in, 2 data out, 3 chip select, active high.
/// Empties SerialEvents. Of the first chip select period the code of the last data bit is returned, 0 without
/// one; no code is stored in the map, and the views list none.
std::uint8_t DecodeMicrowire(InstrumentState& state);

}  // namespace zu
