#pragma once

#include <vector>

#include <QImage>

#include "paint/QtCanvas.h"

namespace zu {

/// Draws on an image of any whole or broken scale. Level and upright lines, which nearly all of a timing
/// drawing is made of, are written into the pixels, so that they are as sharp at 1.5 as at 1 or 3 device
/// pixels a layout pixel.
class ImageCanvas final : public QtCanvas {
  public:
    /// `image` is of Format_RGB32 with no device pixel ratio of its own, `painter` is open on it and neither
    /// shifted nor scaled, `fonts` are those of the scale. Width and height are layout pixels.
    ImageCanvas(QImage& image, QPainter& painter, const ScreenFonts& fonts, std::int32_t width,
                std::int32_t height);

    void LineTo(std::int32_t x, std::int32_t y) override;
    void Polyline(std::span<const Point> points) override;
    void FillRect(const zu::Rect& rect, Rgb color) override;
    void PushClip(const zu::Rect& rect) override;
    void PopClip() override;

  private:
    class Joiner;
    struct Pixels {
        int Left, Top, Right, Bottom;
    };
    [[nodiscard]] int Device(std::int32_t v) const;
    [[nodiscard]] Pixels ToPixels(const zu::Rect& rect) const;
    /// Pixels of a level or upright line.
    [[nodiscard]] Pixels StrokePixels(const Point& from, const Point& to) const;
    void Stroke(const Point& from, const Point& to, QRgb color);
    void Slant(const Point& from, const Point& to);
    void Fill(Pixels area, QRgb color);

    int stride_;  ///< pixels from one row to the next
    QRgb* pixels_;
    double scale_;
    int thickness_;  ///< of a line, device pixels
    std::vector<Pixels> clips_;
};

/// An image that the Timing view's pictures are painted into: `width` x `height` layout pixels at `scale`.
/// A null image when there is no memory for it.
QImage MakeImage(std::int32_t width, std::int32_t height, double scale);

}  // namespace zu
