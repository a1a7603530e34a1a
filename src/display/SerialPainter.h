#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "display/Canvas.h"
#include "display/Events.h"
#include "display/Menus.h"
#include "state/InstrumentState.h"

namespace zu {

/// Where the list of I2C or Microwire events draws what, pixels.
struct SerialLayout {
    std::int32_t RowHeight = 1;
    std::array<std::int32_t, 3> Columns{};  ///< left edges: place, event, cursor
    std::int32_t PageRows = 0;              ///< rows that fit, made even

    /// Upper edge of a row of events, 0 the first below the header.
    [[nodiscard]] std::int32_t TopOf(std::int32_t row) const { return (row + 1) * RowHeight; }
};
SerialLayout LayoutSerial(const Metrics& metrics, std::int32_t height);

/// Row of events at y, 0 the first; nothing in the header. The upper tenth of a row still counts to the row
/// before.
std::optional<std::int32_t> SerialRowAt(const SerialLayout& layout, std::int32_t y);
/// Sample of the row at y, as a click takes it; nothing in the header and past the end of data.
std::optional<std::int32_t> SerialSampleAt(const InstrumentState& state, const SerialLayout& layout,
                                           std::int32_t y);

/// Paints the whole list from SerialDataPos on and returns its vertical scroll range, in units of
/// SerialScrollScale samples. The state stays as it is.
ScrollRange PaintSerial(const InstrumentState& state, std::int32_t width, std::int32_t height,
                        Canvas& canvas);

/// The menu of the Filter button; id of an entry = its flag + 1.
MenuSpec SerialFilterMenu(const InstrumentState& state);
/// Turns the flag of a menu entry over; false for an id of no entry.
bool ToggleSerialFilter(InstrumentState& state, int id);

}  // namespace zu
