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

ImageCanvas::Pixels ImageCanvas::StrokePixels(const Point& from, const Point& to) const {
    return {Device(std::min(from.X, to.X)), Device(std::min(from.Y, to.Y)),
            Device(std::max(from.X, to.X)) + thickness_, Device(std::max(from.Y, to.Y)) + thickness_};
}

void ImageCanvas::Stroke(const Point& from, const Point& to, QRgb color) {
    if (from.X != to.X && from.Y != to.Y) return Slant(from, to);
    Fill(StrokePixels(from, to), color);
}

/// Joins the strokes of one line that stand in neighbouring columns of the layout into areas: a busy trace is
/// one full stroke in each of them. So it is solid at a broken scale too, where the columns do not touch, and
/// filling it row by row is faster than column by column.
class ImageCanvas::Joiner {
  public:
    Joiner(ImageCanvas& canvas, QRgb color) : canvas_(canvas), color_(color) {}
    ~Joiner() {
        canvas_.Fill(area_, color_);
        canvas_.Fill(link_, color_);
    }
    Joiner(const Joiner&) = delete;
    Joiner& operator=(const Joiner&) = delete;

    void Add(const Point& from, const Point& to) {
        const Pixels stroke = canvas_.StrokePixels(from, to);
        if (Holds(area_, stroke)) return;
        const bool level = stroke.Top == area_.Top && stroke.Bottom == area_.Bottom;
        const Pixels joined{area_.Left, area_.Top, stroke.Right, area_.Bottom};
        if (level && std::min(from.X, to.X) == areaEnd_ + 1 && (IsEmpty(link_) || Holds(joined, link_))) {
            area_ = joined;
            areaEnd_ = std::max(from.X, to.X);
            link_ = {};
            return;
        }
        if (!IsEmpty(link_)) {
            canvas_.Fill(area_, color_);
            area_ = link_;
            areaEnd_ = linkEnd_;
        }
        link_ = stroke;
        linkEnd_ = std::max(from.X, to.X);
    }

  private:
    static bool IsEmpty(const Pixels& area) { return area.Left >= area.Right; }
    static bool Holds(const Pixels& area, const Pixels& inner) {
        return inner.Left >= area.Left && inner.Right <= area.Right && inner.Top >= area.Top &&
               inner.Bottom <= area.Bottom;
    }

    ImageCanvas& canvas_;
    QRgb color_;
    Pixels area_{};              ///< strokes joined so far
    std::int64_t areaEnd_ = -2;  ///< their last column of the layout
    Pixels link_{};  ///< a stroke behind them: mostly the step to the next column, which that column covers
    std::int64_t linkEnd_ = -2;
};

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
    Joiner strokes(*this, LineColor().rgb());
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Point& from = points[i - 1];
        const Point& to = points[i];
        if (from.X != to.X && from.Y != to.Y) {
            Slant(from, to);
        } else {
            strokes.Add(from, to);
        }
    }
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
