#pragma once

#include <cstdint>
#include <span>

#include "state/InstrumentState.h"

namespace zu {

inline constexpr std::int8_t kGroupModeI2C = 1;  ///< GroupRecord::Mode

/// Decodes the first I2C group into SerialEvents and makes it the SerialGroup: channel slot 0 is the clock,
/// slot 1 the data line. False, with everything left as it was, if there is no such group.
bool DecodeI2C(InstrumentState& state);

/// Event between two neighbouring samples of clock and data: a start, a stop, a data bit at the clock's fall,
/// or none.
std::uint8_t I2cLineEvent(bool scl0, bool scl1, bool sda0, bool sda1);

/// Marks the ninth bits of the first `n` map entries as acknowledges, frame by frame.
void FrameI2C(std::span<std::uint8_t> events, std::int32_t n);

/// Renames the bits of a frame by the EEPROM protocol. The walk begins at `from`, where the frame's start or
/// its last acknowledge stands; `atStart` counts the bits up to a second start, `atStop` those up to the
/// stop. FrameI2C counts from acknowledge to acknowledge, so that its own calls find nothing to rename.
void ClassifyI2C(std::span<std::uint8_t> events, std::int32_t n, std::int32_t from, std::int32_t atStart,
                 std::int32_t atStop);

}  // namespace zu
