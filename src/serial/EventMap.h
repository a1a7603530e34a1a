#pragma once

#include <cstdint>
#include <span>

#include "state/InstrumentState.h"

namespace zu {

/// Event code at a sample; 0, no event, outside the map.
inline std::uint8_t EventAt(const InstrumentState& state, std::int64_t index) {
    const auto& events = state.Serial.SerialEvents;
    return index >= 0 && index < static_cast<std::int64_t>(events.size())
               ? events[static_cast<std::size_t>(index)]
               : std::uint8_t{0};
}

/// First index in [from, to) with an event; `to` if there is none. The bounds are cut to the map.
std::int32_t FindEvent(std::span<const std::uint8_t> events, std::int32_t from, std::int32_t to);
/// Last index at or below `from` with an event; -1 if there is none.
std::int32_t FindEventBack(std::span<const std::uint8_t> events, std::int32_t from);

}  // namespace zu
