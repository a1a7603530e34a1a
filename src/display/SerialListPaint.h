#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "display/Canvas.h"
#include "display/SerialGrid.h"
#include "state/InstrumentState.h"

namespace zu {

/// One paint of a list of decoded traffic: its ground, then its rows from the top on.
class SerialListPaint {
  public:
    /// Fills the ground. All that is passed must outlive the paint.
    SerialListPaint(const InstrumentState& state, const SerialGeom& geom, const SerialGrid& grid,
                    Canvas& canvas);
    SerialListPaint(const SerialListPaint&) = delete;
    SerialListPaint& operator=(const SerialListPaint&) = delete;

    /// Begins the row of a sample; its upper edge, or nothing once the window is full.
    std::optional<std::int32_t> BeginRow(std::int32_t sample);
    /// Text of at most `most` characters in a colour.
    void Out(std::int32_t x, std::int32_t y, std::string_view text, Rgb color,
             std::size_t most = std::string_view::npos);
    /// Characters that fit into the window from x on.
    [[nodiscard]] std::int32_t RoomAt(std::int32_t x) const;
    [[nodiscard]] Rgb TextColor() const;
    /// What the rows so far span, in units of a bar.
    [[nodiscard]] std::int32_t Page(const SampleBar& bar) const;

  private:
    const InstrumentState& state_;
    const SerialGeom& geom_;
    const SerialGrid& grid_;
    Canvas& canvas_;
    std::int32_t rows_ = 0;
    std::int32_t first_ = 0;
    std::int32_t last_ = 0;
};

}  // namespace zu
