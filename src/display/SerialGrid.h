#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "display/Canvas.h"
#include "display/Events.h"
#include "state/InstrumentState.h"

namespace zu {

/// Selected rows of a list, as the samples from First up to End.
struct RowSelection {
    std::int64_t First = 0;
    std::int64_t End = 0;

    [[nodiscard]] bool Empty() const { return First >= End; }
    [[nodiscard]] bool Holds(std::int64_t sample) const { return sample >= First && sample < End; }
};

/// What a list of decoded traffic looks like apart from the state.
struct SerialGeom {
    std::int32_t Width = 0;  ///< pixels; for the SPI list the area below its buttons
    std::int32_t Height = 0;
    RowSelection Selected{};
    bool Transfers = false;  ///< the list of I2C events has its column of transfers
};

/// What a paint of such a list tells its window.
struct SerialResult {
    std::string_view Title;
    ScrollRange Vertical;
    std::int32_t Page = 0;  ///< what the rows on the screen span, in the units of the range
};

/// Rows of such a list: a header, then events.
struct SerialGrid {
    std::int32_t RowHeight = 1;  ///< pixels
    std::int32_t PageRows = 0;   ///< whole rows that fit, the header among them

    /// Upper edge of a row of events, 0 the first below the header.
    [[nodiscard]] std::int32_t TopOf(std::int32_t row) const { return (row + 1) * RowHeight; }
    /// Rows that one page moves by.
    [[nodiscard]] std::int32_t PageStep() const { return PageRows > 2 ? PageRows - 1 : 1; }
};
SerialGrid GridOf(const Metrics& metrics, std::int32_t height);

/// Row of events at y as a click takes it, 0 the first; nothing in the header. The upper tenth of a row still
/// counts to the row before.
std::optional<std::int32_t> SerialRowAt(const SerialGrid& grid, std::int32_t y);
/// Row of events whose picture contains y, from 0; negative in the header and above it.
std::int32_t DrawnRowAt(const SerialGrid& grid, std::int32_t y);

/// A scroll bar over samples, as the state brings its ends.
struct SampleBar {
    std::int32_t First = 0;
    std::int32_t Last = 0;
    std::int32_t Unit = 1;  ///< samples of one step of the bar

    /// A sample within the ends, which may stand the wrong way round.
    [[nodiscard]] std::int32_t Clamped(std::int64_t sample) const;
    [[nodiscard]] ScrollRange RangeAt(std::int32_t position) const;
};

}  // namespace zu
