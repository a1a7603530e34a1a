#pragma once

#include <cstdint>

#include "state/InstrumentState.h"

namespace zu {

/// Bits of an entry in SpiSI and SpiSO. 0x200 is reserved.
namespace spi {
inline constexpr std::uint16_t kValue = 0x00FF;  ///< byte value, valid beside kStart
inline constexpr std::uint16_t kStart = 0x0100;  ///< a byte began: the sample before its first clock edge
inline constexpr std::uint16_t kOne = 0x0400;    ///< the line was 1 at this clocked sample
inline constexpr std::uint16_t kEnd = 0x1000;    ///< the sample before the byte's last clock edge
}  // namespace spi

/// Whether a group's Mode is one of the four SPI modes.
constexpr bool IsSpiMode(std::int8_t mode) {
    return mode >= 3 && mode <= 6;
}

/// Group of slot 0..2: the SPI groups with exactly four channels take the slots in the order of the table. -1
/// if the slot is empty.
int SpiGroup(const InstrumentState& state, int slot);

/// Decodes the groups of all slots into SpiSI and SpiSO: channel slot 0 is the clock, 1 SI, 2 SO, 3 chip
/// select. SpiFirst and SpiLast begin at 0. False if no slot has a group.
bool DecodeSPI(InstrumentState& state);

}  // namespace zu
