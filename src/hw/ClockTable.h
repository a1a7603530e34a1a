#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "state/Limits.h"

namespace zu {

/// What makes a rate: the synthesiser's word (22 bits) and the two dividers behind it.
struct ClockSetting {
    std::uint32_t Word = 0;
    std::uint16_t Counter0 = 0;
    std::uint16_t Counter1 = 0;
};

/// One rate code: how it is made in all memory modes but 3, how in mode 3, and the clock selector. Selector
/// -1 leaves the selector as it is.
struct ClockRow {
    ClockSetting Normal;
    ClockSetting Mode3;
    int Selector = -1;
};

inline constexpr std::uint32_t kWord8ns = 0x3FD412;
inline constexpr std::uint32_t kWord10ns = 0x2D7C08;
inline constexpr std::uint32_t kWord20ns = 0x08B408;
inline constexpr std::uint32_t kWord40ns = 0x08B488;
inline constexpr std::uint32_t kWord50ns = 0x1D2D08;
inline constexpr std::uint32_t kWord100ns = 0x1D2D88;
inline constexpr std::uint32_t kWord200ns = 0x1D2E08;

/// By rate code. The codes without a setting program zeros and select nothing.
inline constexpr std::array<ClockRow, kRateCodes> kClockRows{{
    {},
    {{kWord8ns, 0, 0}, {kWord8ns, 0, 0}, 1},
    {{kWord10ns, 0, 0}, {kWord10ns, 0, 0}, 1},
    {{kWord8ns, 0, 0}, {kWord8ns, 0, 0}, 1},
    {{kWord10ns, 0, 0}, {kWord10ns, 0, 0}, 1},
    {{kWord10ns, 0, 0}, {kWord20ns, 0, 0}, 1},
    {{kWord20ns, 0, 0}, {kWord40ns, 0, 0}, 1},
    {{kWord50ns, 0, 0}, {kWord100ns, 0, 0}, 1},
    {{kWord100ns, 1, 0}, {kWord200ns, 1, 0}, 1},
    {{kWord100ns, 2, 0}, {kWord100ns, 4, 0}, 3},
    {{kWord100ns, 5, 0}, {kWord100ns, 10, 0}, 3},
    {{kWord100ns, 10, 0}, {kWord100ns, 20, 0}, 3},
    {{kWord100ns, 20, 0}, {kWord100ns, 40, 0}, 3},
    {},
    {{kWord100ns, 50, 0}, {kWord100ns, 100, 0}, 3},
    {},
    {{kWord100ns, 100, 0}, {kWord100ns, 200, 0}, 3},
    {},
    {{kWord100ns, 200, 0}, {kWord100ns, 400, 0}, 3},
    {},
    {{kWord100ns, 500, 0}, {kWord100ns, 1000, 0}, 3},
    {},
    {{kWord100ns, 1000, 0}, {kWord100ns, 2000, 0}, 3},
    {{kWord100ns, 2000, 0}, {kWord100ns, 4000, 0}, 3},
    {{kWord100ns, 5000, 0}, {kWord100ns, 10000, 0}, 3},
    {{kWord100ns, 10000, 0}, {kWord100ns, 20000, 0}, 3},
    {{kWord100ns, 20000, 0}, {kWord100ns, 40000, 0}, 3},
    {{kWord100ns, 50000, 0}, {kWord100ns, 50000, 2}, 3},
    {{kWord100ns, 50000, 2}, {kWord100ns, 50000, 4}, 5},
    {{kWord100ns, 50000, 4}, {kWord100ns, 50000, 8}, 5},
    {{kWord100ns, 50000, 10}, {kWord100ns, 50000, 20}, 5},
    {{kWord100ns, 50000, 20}, {kWord100ns, 50000, 40}, 5},
    {{kWord100ns, 50000, 40}, {kWord100ns, 50000, 80}, 5},
    {{kWord100ns, 50000, 100}, {kWord100ns, 50000, 200}, 5},
    {{kWord100ns, 50000, 200}, {kWord100ns, 50000, 400}, 5},
}};

/// Row of a rate code; an empty one for a code outside the table.
constexpr ClockRow ClockRowOf(int rate) {
    return rate >= 0 && rate < kRateCodes ? kClockRows[static_cast<std::size_t>(rate)] : ClockRow{};
}

}  // namespace zu
