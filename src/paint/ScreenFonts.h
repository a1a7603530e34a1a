#pragma once

#include <array>
#include <string_view>

#include <QRawFont>

#include "display/Canvas.h"

class QPainter;

namespace zu {

/// The faces of the canvas at one scale. Whatever family is installed, every character takes exactly the
/// advance of the layout; geometry never depends on what the font says of itself.
class ScreenFonts {
  public:
    /// `scale` is device pixels per layout pixel; hinting snaps stems to the pixels of a screen and is left
    /// out for drawings that are scaled later.
    ScreenFonts(const Metrics& metrics, double scale, bool hinted);

    /// Draws Latin-1 text with its upper left corner at (x, y), device pixels.
    void Draw(QPainter& painter, FontId font, double x, double y, std::string_view text) const;
    [[nodiscard]] const Metrics& Layout() const { return metrics_; }
    /// Whether the face could be made.
    [[nodiscard]] bool IsUsable(FontId font) const { return FaceOf(font).Font.isValid(); }
    /// Height of the layout's cell, layout pixels.
    [[nodiscard]] std::int32_t Height(FontId font) const;
    [[nodiscard]] double Scale() const { return scale_; }

    /// The fixed-pitch family that is used.
    static QString Family();
    /// Size of the face that is drawn into the cell of a font, layout pixels.
    static int FacePixels(FontId font, const Metrics& metrics);

  private:
    struct Face {
        QRawFont Font;
        std::array<quint32, 256> Glyph{};
        std::array<double, 256> Inset{};  ///< centres a glyph in its cell
        double Baseline = 0;              ///< below the cell's upper edge, device pixels
    };
    static constexpr std::size_t kFaces = 6;

    [[nodiscard]] Face MakeFace(FontId font, bool hinted) const;
    [[nodiscard]] const Face& FaceOf(FontId font) const { return faces_[static_cast<std::size_t>(font)]; }

    Metrics metrics_;
    double scale_;
    std::array<Face, kFaces> faces_;
};

}  // namespace zu
