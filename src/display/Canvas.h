#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "state/Geometry.h"

namespace zu {

struct Point {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// Pixels; right and bottom are exclusive.
struct Rect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

enum class FontId : std::uint8_t { Text, Small, Large, Label, Printer, PrinterBold };

/// Layout constants. They decide all geometry, so that pictures do not depend on installed fonts.
struct Metrics {
    std::int32_t Advance = 6;      ///< width of every character of the three screen fonts
    std::int32_t TextHeight = 10;  ///< height of the text font: 14 from 701 screen rows on
    std::int32_t SmallHeight = 5;
    std::int32_t LargeHeight = 17;  ///< 19 from 701 screen rows on
    bool LargeScreen = false;       ///< 701 screen rows or more

    /// Metrics for a screen of this height in pixels.
    static constexpr Metrics ForScreen(std::int32_t screenHeight) {
        return screenHeight < 701 ? Metrics{} : Metrics{6, 14, 5, 19, true};
    }
};

/// Where painters draw. Pens are one pixel wide, nothing is antialiased, text has no background, a filled
/// rectangle excludes its right and bottom edge. Colours are 0x00BBGGRR.
class Canvas {
  public:
    virtual ~Canvas() = default;

    [[nodiscard]] virtual std::int32_t Width() const = 0;
    [[nodiscard]] virtual std::int32_t Height() const = 0;
    [[nodiscard]] virtual const zu::Metrics& FontMetrics() const = 0;
    /// Width of a text in pixels: its length times the advance of the font.
    [[nodiscard]] virtual std::int32_t TextWidth(FontId font, std::string_view text) const = 0;
    /// Height of a font in pixels.
    [[nodiscard]] virtual std::int32_t TextHeight(FontId font) const = 0;
    /// Colours are drawn as the one black.
    [[nodiscard]] virtual bool Mono() const { return false; }

    virtual void SetPen(Rgb color) = 0;
    virtual void SetTextColor(Rgb color) = 0;
    virtual void SetFont(FontId font) = 0;
    virtual void MoveTo(std::int32_t x, std::int32_t y) = 0;
    virtual void LineTo(std::int32_t x, std::int32_t y) = 0;
    virtual void Polyline(std::span<const Point> points) = 0;
    virtual void FillRect(const Rect& rect, Rgb color) = 0;
    /// Text with its upper left corner at (x, y).
    virtual void TextOut(std::int32_t x, std::int32_t y, std::string_view text) = 0;
    virtual void PushClip(const Rect& rect) = 0;
    virtual void PopClip() = 0;
};

}  // namespace zu
