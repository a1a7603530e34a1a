#pragma once

#include "display/Canvas.h"

namespace zu {

/// A canvas that takes everything and draws nothing.
class NullCanvas final : public Canvas {
  public:
    NullCanvas(std::int32_t width, std::int32_t height) : width_(width), height_(height) {}

    std::uint64_t Points = 0;  ///< of all polylines and lines
    std::uint64_t Bytes = 0;   ///< of all texts
    std::int32_t Width() const override { return width_; }
    std::int32_t Height() const override { return height_; }
    const zu::Metrics& FontMetrics() const override { return metrics_; }
    std::int32_t TextWidth(FontId, std::string_view text) const override {
        return static_cast<std::int32_t>(text.size()) * metrics_.Advance;
    }
    std::int32_t TextHeight(FontId) const override { return metrics_.TextHeight; }
    void SetPen(Rgb) override {}
    void SetTextColor(Rgb) override {}
    void SetFont(FontId) override {}
    void MoveTo(std::int32_t, std::int32_t) override {}
    void LineTo(std::int32_t, std::int32_t) override { ++Points; }
    void Polyline(std::span<const Point> points) override { Points += points.size(); }
    void FillRect(const Rect&, Rgb) override {}
    void TextOut(std::int32_t, std::int32_t, std::string_view text) override { Bytes += text.size(); }
    void PushClip(const Rect&) override {}
    void PopClip() override {}

  private:
    std::int32_t width_;
    std::int32_t height_;
    zu::Metrics metrics_;
};

}  // namespace zu
