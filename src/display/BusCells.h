#pragma once

#include <cstdint>
#include <string_view>

#include "display/ChannelTrace.h"

namespace zu {

/// Draws runs of a bus: a cell with its text, or a hatch where the text does not fit. The pen and the text
/// colour are set before.
class BusCells {
  public:
    /// Cells reach from `top` to `bottom`.
    BusCells(const RowFrame& row, std::int32_t top, std::int32_t bottom);
    ~BusCells() { Flush(); }
    BusCells(const BusCells&) = delete;
    BusCells& operator=(const BusCells&) = delete;

    /// Pixels that a text of this many characters takes.
    [[nodiscard]] std::int32_t WidthOf(std::int32_t characters) const;
    /// Fills [x0, x1) with vertical lines, one per pixel column.
    void Hatch(std::int32_t x0, std::int32_t x1);
    /// Text at the left of [x0, x1), without a cell.
    void Text(std::int32_t x0, std::string_view text);
    /// A cell with chevrons at both ends; `open` leaves the left one out.
    void Cell(std::int32_t x0, std::int32_t x1, std::string_view text, bool open);

  private:
    void Flush();

    const RowFrame& row_;
    std::int32_t top_;
    std::int32_t bottom_;
    std::int32_t hatched_ = 0;  ///< x beyond the last hatched column
};

}  // namespace zu
