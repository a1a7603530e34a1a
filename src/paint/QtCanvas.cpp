#include "paint/QtCanvas.h"

#include <algorithm>

#include <QPen>
#include <QPolygonF>

namespace zu {
namespace {

/// Beyond this nothing is ever visible; it keeps absurd coordinates out of the paint engines.
constexpr std::int32_t kFar = 1 << 20;

std::int32_t Near(std::int32_t v) {
    return std::clamp(v, -kFar, kFar);
}

/// Lines run through the middle of their pixels, fills along their edges.
QPointF Middle(const Point& p) {
    return {Near(p.X) + 0.5, Near(p.Y) + 0.5};
}

QRectF ToQRect(const Rect& r) {
    const QPointF upperLeft(Near(r.Left), Near(r.Top));
    const QPointF lowerRight(std::max(Near(r.Left), Near(r.Right)), std::max(Near(r.Top), Near(r.Bottom)));
    return {upperLeft, lowerRight};
}

}  // namespace

QColor ToQColor(Rgb color) {
    return {static_cast<int>(Red(color)), static_cast<int>(Green(color)), static_cast<int>(Blue(color))};
}

Rgb FromQColor(const QColor& color) {
    return MakeRgb(static_cast<unsigned>(color.red()), static_cast<unsigned>(color.green()),
                   static_cast<unsigned>(color.blue()));
}

QtCanvas::QtCanvas(QPainter& painter, const ScreenFonts& fonts, std::int32_t width, std::int32_t height)
    : painter_(painter), fonts_(fonts), width_(width), height_(height) {
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.setRenderHint(QPainter::TextAntialiasing, true);
    painter_.setBackgroundMode(Qt::TransparentMode);
}

QtCanvas::~QtCanvas() {
    while (clips_ > 0) PopClip();
}

std::int32_t QtCanvas::TextWidth(FontId /*font*/, std::string_view text) const {
    return static_cast<std::int32_t>(std::min<std::size_t>(text.size(), kFar)) * fonts_.Layout().Advance;
}

std::int32_t QtCanvas::TextHeight(FontId font) const {
    return fonts_.Height(font);
}

void QtCanvas::Select(const QColor& color) {
    if (color == selected_) return;
    selected_ = color;
    painter_.setPen(QPen(color, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
}

void QtCanvas::LineTo(std::int32_t x, std::int32_t y) {
    const Point end{x, y};
    Select(LineColor());
    painter_.drawLine(Middle(at_), Middle(end));
    at_ = end;
}

void QtCanvas::Polyline(std::span<const Point> points) {
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(points.size()));
    for (const Point& p : points) line.append(Middle(p));
    Select(LineColor());
    painter_.drawPolyline(line);
}

void QtCanvas::FillRect(const zu::Rect& rect, Rgb color) {
    painter_.fillRect(ToQRect(rect), ToQColor(color));
}

void QtCanvas::TextOut(std::int32_t x, std::int32_t y, std::string_view text) {
    Select(mono_ ? QColor(Qt::black) : textColor_);
    fonts_.Draw(painter_, font_, Near(x) * fonts_.Scale(), Near(y) * fonts_.Scale(), text);
}

void QtCanvas::PushClip(const zu::Rect& rect) {
    PushDeviceClip(ToQRect(rect));
}

void QtCanvas::PushDeviceClip(const QRectF& rect) {
    painter_.save();
    painter_.setClipRect(rect, Qt::IntersectClip);
    ++clips_;
}

void QtCanvas::PopClip() {
    if (clips_ == 0) return;
    --clips_;
    painter_.restore();
    selected_ = QColor();
}

}  // namespace zu
