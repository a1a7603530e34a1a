#pragma once

#include <QColor>
#include <QPainter>

#include "display/Canvas.h"
#include "paint/ScreenFonts.h"

namespace zu {

/// A colour of the state for Qt.
QColor ToQColor(Rgb color);
/// A colour chosen with Qt for the state.
Rgb FromQColor(const QColor& color);

/// Draws on any paint device that takes outlines: SVG, PDF, a printer's page. One unit of the painter is one
/// pixel of the layout.
class QtCanvas : public Canvas {
  public:
    /// Painter and fonts must outlive the canvas. The painter's transform maps the layout to the device.
    QtCanvas(QPainter& painter, const ScreenFonts& fonts, std::int32_t width, std::int32_t height);
    ~QtCanvas() override;
    QtCanvas(const QtCanvas&) = delete;
    QtCanvas& operator=(const QtCanvas&) = delete;

    [[nodiscard]] std::int32_t Width() const override { return width_; }
    [[nodiscard]] std::int32_t Height() const override { return height_; }
    [[nodiscard]] const zu::Metrics& FontMetrics() const override { return fonts_.Layout(); }
    [[nodiscard]] std::int32_t TextWidth(FontId font, std::string_view text) const override;
    [[nodiscard]] std::int32_t TextHeight(FontId font) const override;
    [[nodiscard]] bool Mono() const override { return mono_; }
    void SetMono(bool mono) { mono_ = mono; }

    void SetPen(Rgb color) override { pen_ = ToQColor(color); }
    void SetTextColor(Rgb color) override { textColor_ = ToQColor(color); }
    void SetFont(FontId font) override { font_ = font; }
    void MoveTo(std::int32_t x, std::int32_t y) override { at_ = {x, y}; }
    void LineTo(std::int32_t x, std::int32_t y) override;
    void Polyline(std::span<const Point> points) override;
    void FillRect(const zu::Rect& rect, Rgb color) override;
    void TextOut(std::int32_t x, std::int32_t y, std::string_view text) override;
    void PushClip(const zu::Rect& rect) override;
    void PopClip() override;

  protected:
    [[nodiscard]] QColor LineColor() const { return mono_ ? QColor(Qt::black) : pen_; }
    /// Makes the painter draw in this colour, one layout pixel wide.
    void Select(const QColor& color);
    void PushDeviceClip(const QRectF& rect);

    QPainter& painter_;
    const ScreenFonts& fonts_;
    QColor pen_ = Qt::black;
    Point at_;

  private:
    std::int32_t width_;
    std::int32_t height_;
    QColor textColor_ = Qt::black;
    FontId font_ = FontId::Text;
    bool mono_ = false;
    QColor selected_;  ///< colour of the painter's pen; invalid when unknown
    int clips_ = 0;
};

}  // namespace zu
