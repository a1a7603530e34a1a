#pragma once

#include <cstdint>

namespace zu {

inline constexpr std::int32_t kZoomLimit = 1'000'000;

/// A zoom that arithmetic can use: 0 counts as 1, magnitudes are limited.
constexpr std::int32_t SafeZoom(std::int32_t zoom) {
    if (zoom == 0) return 1;
    if (zoom > kZoomLimit) return kZoomLimit;
    return zoom < -kZoomLimit ? -kZoomLimit : zoom;
}

/// Samples that `width` pixels show; 0 for a width below 0.
constexpr std::int64_t SamplesInPixels(std::int32_t width, std::int32_t zoom) {
    const std::int64_t w = width < 0 ? 0 : width;
    const std::int32_t z = SafeZoom(zoom);
    return z > 0 ? w / z : w * -std::int64_t{z};
}

/// Pixels that `samples` take, cut towards 0.
constexpr std::int64_t PixelsOfSamples(std::int64_t samples, std::int32_t zoom) {
    const std::int32_t z = SafeZoom(zoom);
    return z > 0 ? samples * z : samples / -std::int64_t{z};
}

/// Sample to x and back, for one place and zoom of the sample axis.
struct TimeAxis {
    std::int64_t First = 0;  ///< sample at Left
    std::int32_t Zoom = 1;   ///< above 0 pixels per sample, below 0 samples per pixel, never 0
    std::int32_t Left = 0;   ///< x of the first sample
    std::int32_t Right = 0;  ///< x beyond the last pixel

    /// Pixels for data; 0 when the columns leave none.
    [[nodiscard]] constexpr std::int32_t Width() const { return Right > Left ? Right - Left : 0; }
    /// Samples across the width.
    [[nodiscard]] constexpr std::int64_t Visible() const { return SamplesInPixels(Width(), Zoom); }
    /// x of a sample, which may lie off the screen.
    [[nodiscard]] constexpr std::int64_t XOf(std::int64_t sample) const {
        return Left + PixelsOfSamples(sample - First, Zoom);
    }
    [[nodiscard]] constexpr bool OnScreen(std::int64_t sample) const {
        return sample >= First && XOf(sample) >= Left && XOf(sample) < Right;
    }
    /// Sample under x; below First for an x left of the data.
    [[nodiscard]] constexpr std::int64_t SampleAt(std::int64_t x) const {
        const std::int64_t dx = x - Left;
        return First + (Zoom > 0 ? dx / SafeZoom(Zoom) : dx * -std::int64_t{SafeZoom(Zoom)});
    }
};

/// Samples on screen for a line of `length` samples: what `width` pixels show from `pos` on, cut to the data.
std::int64_t ShownSamples(std::int64_t pos, std::int32_t zoom, std::int32_t width, std::int64_t length);

}  // namespace zu
