#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "display/Canvas.h"
#include "display/Menus.h"
#include "display/SerialGrid.h"
#include "state/InstrumentState.h"

namespace zu {

/// Where the list of I2C or Microwire events draws what, pixels. The row count is made even.
struct SerialLayout : SerialGrid {
    std::array<std::int32_t, 4> Columns{};  ///< left edges: place, event, cursor, transfer
};
SerialLayout LayoutSerial(const Metrics& metrics, std::int32_t height);

/// Sample of the row at y, as a click takes it; nothing in the header and past the end of data.
std::optional<std::int32_t> SerialSampleAt(const InstrumentState& state, const SerialGrid& grid,
                                           std::int32_t y);

/// Whether the list has its column of transfers: Microwire has none.
bool HasTransferColumn(const InstrumentState& state, const SerialGeom& geom);
/// Header of that column.
inline constexpr std::string_view kTransferHeader = "Transfer";
/// Texts of the header's first two columns.
std::array<std::string_view, 2> SerialHeaderTexts(const InstrumentState& state);
/// Text of a row's place: its time or its sample.
std::string SerialPlaceText(const InstrumentState& state, std::int32_t sample);
/// The I2C transfer that begins at a sample, as one line of at most so many bytes; empty if none begins
/// there.
std::string SerialTransferText(const InstrumentState& state, std::int32_t sample, std::size_t mostBytes);

/// Samples of the scroll bar's ends and of its unit.
SampleBar SerialBar(const InstrumentState& state);

/// Paints the whole list from SerialDataPos on. The state stays as it is.
SerialResult PaintSerial(const InstrumentState& state, const SerialGeom& geom, Canvas& canvas);

/// The menu of the Filter button; id of an entry = its flag + 1.
MenuSpec SerialFilterMenu(const InstrumentState& state);
/// Turns the flag of a menu entry over; false for an id of no entry.
bool ToggleSerialFilter(InstrumentState& state, int id);

}  // namespace zu
