#pragma once

#include <algorithm>
#include <cstdint>

namespace zu {

/// A pixel coordinate that any canvas can take: what lies far off the screen is brought nearer to it.
constexpr std::int32_t Pixel(std::int64_t at) {
    constexpr std::int64_t kFar = 1'000'000;
    return static_cast<std::int32_t>(std::clamp(at, -kFar, kFar));
}

}  // namespace zu
