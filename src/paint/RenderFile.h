#pragma once

#include <string>

#include "display/Canvas.h"
#include "state/InstrumentState.h"

namespace zu {

/// Size of a picture of the Timing view.
struct PictureSize {
    std::int32_t Width = 1280;  ///< layout pixels
    std::int32_t Height = 800;
    double Scale = 1;  ///< device pixels a layout pixel; PNG only
};

/// Largest side of a picture in layout pixels, and the largest scale.
inline constexpr std::int32_t kMaxPictureSide = 16384;
inline constexpr double kMaxPictureScale = 8;

/// Paints the Timing view and writes it as PNG or SVG, by the extension of `path`. The file appears whole or
/// not at all. False with the reason in `error`. Only TimingDataPos of the state may be clamped.
bool RenderTimingToFile(InstrumentState& state, const PictureSize& size, const std::string& path,
                        std::string& error);

}  // namespace zu
