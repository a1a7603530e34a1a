#pragma once

#include <cstdint>

#include "state/InstrumentState.h"

namespace zu {

/// Takes a line out of the display list and puts it in at row `to`, with its style and mode. False, and
/// nothing changed, when a row is not in use or both are the same.
bool MoveLine(InstrumentState& state, std::int32_t from, std::int32_t to);

}  // namespace zu
