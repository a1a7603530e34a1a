#pragma once

#include <cstdint>

namespace zu {

/// A window rectangle in the frame's coordinates, pixels; right and bottom are exclusive.
struct WindowRect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;

    friend bool operator==(const WindowRect&, const WindowRect&) = default;
};

/// A colour as files and state hold it: 0x00BBGGRR.
using Rgb = std::uint32_t;

constexpr Rgb MakeRgb(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFFU) | ((green & 0xFFU) << 8U) | ((blue & 0xFFU) << 16U);
}
constexpr unsigned Red(Rgb c) {
    return c & 0xFFU;
}
constexpr unsigned Green(Rgb c) {
    return (c >> 8U) & 0xFFU;
}
constexpr unsigned Blue(Rgb c) {
    return (c >> 16U) & 0xFFU;
}

}  // namespace zu
