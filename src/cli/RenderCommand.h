#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "cli/Cli.h"

namespace zu {

/// Size of a picture, layout pixels.
struct PictureRequest {
    std::int32_t Width = 1280;
    std::int32_t Height = 800;
    double Scale = 1;  ///< device pixels a layout pixel
};

struct RenderRequest {
    std::string File;
    std::string Output;  ///< name ending in .png or .svg
    PictureRequest Picture;
    std::optional<std::int32_t> Zoom;      ///< as ScreenZoom of the state; nothing = as the file has it
    std::optional<std::int32_t> Position;  ///< first sample; nothing = as the file has it
};

/// Paints the Timing view of a data file into a picture. NotAvailable in a build without a canvas.
CliExit RenderPicture(const RenderRequest& request, std::ostream& out, std::ostream& err);

}  // namespace zu
