#pragma once

#include <string>
#include <vector>

#include "display/Canvas.h"

namespace zu {

/// A canvas that writes down what is drawn, one line of text an operation, with fixed metrics.
class RecorderCanvas final : public Canvas {
  public:
    RecorderCanvas(std::int32_t width, std::int32_t height, const zu::Metrics& metrics = {});

    enum class Kind : std::uint8_t { Pen, TextColor, Font, Move, Line, Polyline, Fill, Text, Clip, Unclip };
    struct Op {
        Kind What;
        Rgb Color = 0;                ///< pen, text colour, fill
        FontId Font = FontId::Text;   ///< font in force for a text
        zu::Rect Area{};              ///< fill and clip; a text's, move's and line's point in Left, Top
        std::vector<Point> Points{};  ///< polyline
        std::string String{};         ///< text
    };

    [[nodiscard]] const std::vector<Op>& Ops() const { return ops_; }
    /// The drawing as text, one operation a line, for comparison with recorded drawings.
    [[nodiscard]] std::string Dump() const;
    /// Points of the last polyline drawn; empty if there was none.
    [[nodiscard]] std::vector<Point> LastPolyline() const;
    /// Texts whose upper edge is at y, in drawing order.
    [[nodiscard]] std::vector<std::string> TextsAt(std::int32_t y) const;
    /// Operations that start within [top, bottom).
    [[nodiscard]] std::vector<Op> Between(std::int32_t top, std::int32_t bottom) const;
    void Clear() { ops_.clear(); }

    [[nodiscard]] std::int32_t Width() const override { return width_; }
    [[nodiscard]] std::int32_t Height() const override { return height_; }
    [[nodiscard]] const zu::Metrics& FontMetrics() const override { return metrics_; }
    [[nodiscard]] std::int32_t TextWidth(FontId font, std::string_view text) const override;
    [[nodiscard]] std::int32_t TextHeight(FontId font) const override;
    [[nodiscard]] bool Mono() const override { return mono_; }
    void SetMono(bool mono) { mono_ = mono; }

    void SetPen(Rgb color) override;
    void SetTextColor(Rgb color) override;
    void SetFont(FontId font) override;
    void MoveTo(std::int32_t x, std::int32_t y) override;
    void LineTo(std::int32_t x, std::int32_t y) override;
    void Polyline(std::span<const Point> points) override;
    void FillRect(const zu::Rect& rect, Rgb color) override;
    void TextOut(std::int32_t x, std::int32_t y, std::string_view text) override;
    void PushClip(const zu::Rect& rect) override;
    void PopClip() override;

  private:
    std::int32_t width_;
    std::int32_t height_;
    zu::Metrics metrics_;
    bool mono_ = false;
    FontId font_ = FontId::Text;
    std::vector<Op> ops_;
};

}  // namespace zu
