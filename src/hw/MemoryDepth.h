#pragma once

#include <cstdint>

namespace zu {

/// Sample memory of a board type in the large memory modes; None for a type that has no such mode.
enum class MemoryDepth : std::uint8_t { None, Small, Large };

constexpr MemoryDepth DepthOfType(int hardwareType) {
    switch (hardwareType) {
        case 1:
        case 2:
        case 6:
        case 7:
        case 11:
        case 12:
            return MemoryDepth::Small;
        case 3:
        case 4:
        case 5:
        case 8:
        case 9:
        case 10:
        case 13:
        case 14:
        case 15:
            return MemoryDepth::Large;
        default:
            return MemoryDepth::None;
    }
}

}  // namespace zu
