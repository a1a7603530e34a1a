#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "state/InstrumentState.h"

namespace zu::test {

// Decoders that look at one sample after the other, written to be obviously right and for nothing else.

struct SlowI2c {
    std::vector<std::uint8_t> Events;
    std::int32_t First = 0;
    std::int32_t Last = 0;
    int Group = -1;
};
/// What the map and the range must be after decoding.
SlowI2c DecodeSlowlyI2c(const InstrumentState& state);

struct SlowSpi {
    std::array<std::vector<std::uint16_t>, kSpiSlots> Si, So;
    std::int32_t First = 0;
    std::int32_t Last = 0;
    bool Any = false;
};
/// What the arrays must be after decoding, given what they hold before.
SlowSpi DecodeSlowlySpi(const InstrumentState& state);

/// The code of the last data bit in the first chip select period.
std::uint8_t DecodeSlowlyMicrowire(const InstrumentState& state);

}  // namespace zu::test
