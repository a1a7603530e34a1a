#include "paint/ImageCanvas.h"

#include <algorithm>
#include <cmath>

namespace zu {
namespace {

constexpr double kFarPixels = 1 << 24;

}  // namespace

ImageCanvas::ImageCanvas(QImage& image, QPainter& painter, const ScreenFonts& fonts, std::int32_t width,
                         std::int32_t height)
    : QtCanvas(painter, fonts, width, height),
      stride_(static_cast<int>(image.bytesPerLine() / 4)),
      pixels_(reinterpret_cast<QRgb*>(image.bits())),
      scale_(fonts.Scale()),
      thickness_(std::max(1, static_cast<int>(fonts.Scale()))) {
    clips_.push_back({0, 0, image.width(), image.height()});
}

int ImageCanvas::Device(std::int32_t v) const {
    return static_cast<int>(std::clamp(std::floor(v * scale_), -kFarPixels, kFarPixels));
}

ImageCanvas::Pixels ImageCanvas::ToPixels(const zu::Rect& rect) const {
    return {Device(rect.Left), Device(rect.Top), Device(rect.Right), Device(rect.Bottom)};
}

void ImageCanvas::Fill(Pixels area, QRgb color) {
    const Pixels& clip = clips_.back();
    const int left = std::max(area.Left, clip.Left);
    const int right = std::min(area.Right, clip.Right);
    const int top = std::max(area.Top, clip.Top);
    const int bottom = std::min(area.Bottom, clip.Bottom);
    if (left >= right) return;
    for (int y = top; y < bottom; ++y) {
        QRgb* row = pixels_ + static_cast<std::ptrdiff_t>(y) * stride_;
        std::fill(row + left, row + right, color);
    }
}

void ImageCanvas::Stroke(const Point& from, const Point& to, QRgb color) {
    if (from.X != to.X && from.Y != to.Y) return Slant(from, to);
    Fill({Device(std::min(from.X, to.X)), Device(std::min(from.Y, to.Y)),
          Device(std::max(from.X, to.X)) + thickness_, Device(std::max(from.Y, to.Y)) + thickness_},
         color);
}

void ImageCanvas::Slant(const Point& from, const Point& to) {
    const double half = thickness_ / 2.0;
    Select(LineColor());
    QPen pen = painter_.pen();
    if (pen.width() != thickness_) {
        pen.setWidth(thickness_);
        painter_.setPen(pen);
    }
    painter_.drawLine(QPointF(Device(from.X) + half, Device(from.Y) + half),
                      QPointF(Device(to.X) + half, Device(to.Y) + half));
}

void ImageCanvas::LineTo(std::int32_t x, std::int32_t y) {
    const Point end{x, y};
    Stroke(at_, end, LineColor().rgb());
    at_ = end;
}

void ImageCanvas::Polyline(std::span<const Point> points) {
    const QRgb color = LineColor().rgb();
    for (std::size_t i = 1; i < points.size(); ++i) Stroke(points[i - 1], points[i], color);
}

void ImageCanvas::FillRect(const zu::Rect& rect, Rgb color) {
    Fill(ToPixels(rect), ToQColor(color).rgb());
}

void ImageCanvas::PushClip(const zu::Rect& rect) {
    const Pixels area = ToPixels(rect);
    const Pixels& outer = clips_.back();
    const Pixels inner{std::max(area.Left, outer.Left), std::max(area.Top, outer.Top),
                       std::min(area.Right, outer.Right), std::min(area.Bottom, outer.Bottom)};
    clips_.push_back(inner);
    PushDeviceClip(QRect(QPoint(inner.Left, inner.Top), QSize(std::max(0, inner.Right - inner.Left),
                                                              std::max(0, inner.Bottom - inner.Top))));
}

void ImageCanvas::PopClip() {
    if (clips_.size() == 1) return;
    clips_.pop_back();
    QtCanvas::PopClip();
}

QImage MakeImage(std::int32_t width, std::int32_t height, double scale) {
    const auto pixels = [scale](std::int32_t v) {
        return static_cast<int>(std::ceil(std::max(v, 1) * std::max(scale, 0.1)));
    };
    return QImage(pixels(width), pixels(height), QImage::Format_RGB32);
}

}  // namespace zu
