#pragma once

#include <cstdint>

#include "hw/Registers.h"

namespace zu {

/// The two latched bytes behind the shift chain of an earlier board. Both latch pulses change the shadow and
/// end low.
void BusData(Registers& registers, int board, int value);
void BusControl(Registers& registers, int board, int value);
/// Three control bytes in a row: a strobe is a bit that is low in the middle one.
void BusStrobe(Registers& registers, int board, int idle, int active);

/// Loads the second divider of an earlier board (counter 2 of its timer), which only the chain reaches.
void SerialCounter(Registers& registers, std::uint16_t value);

}  // namespace zu
