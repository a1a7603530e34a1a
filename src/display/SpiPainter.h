#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "display/Canvas.h"
#include "display/SerialGrid.h"
#include "state/InstrumentState.h"

namespace zu {

/// Where the list of SPI bytes draws what, pixels. A slot keeps its columns when others are switched off.
struct SpiLayout : SerialGrid {
    std::array<bool, kSpiSlots> Shown{};
    std::array<std::int32_t, kSpiSlots> Si{};  ///< left edges
    std::array<std::int32_t, kSpiSlots> So{};
    std::int32_t Cursors = 0;  ///< left edge of the last column, behind the last slot shown
};
SpiLayout LayoutSpi(const InstrumentState& state, const Metrics& metrics, std::int32_t height);

/// Sample of the row at y, as a click takes it; nothing in the header and past the end of data.
std::optional<std::int32_t> SpiSampleAt(const InstrumentState& state, const SerialGrid& grid, std::int32_t y);

inline constexpr std::string_view kSpiPlaceHeader = "Position";
inline constexpr std::string_view kSpiCursorsHeader = "Cursor(s)";
/// Text of the position column.
std::string SpiPlaceText(const InstrumentState& state, std::int32_t sample);
/// The cursors on a sample, as "Trigger,AC"; empty for none.
std::string SpiCursorsText(const InstrumentState& state, std::int32_t sample);
/// Name of channel `lane` (1 SI, 2 SO) of a slot's group; empty for a channel that the instrument lacks.
std::string_view SpiLaneName(const InstrumentState& state, int slot, int lane);

/// Samples of the scroll bar's ends and of its unit.
SampleBar SpiBar(const InstrumentState& state);

/// Paints the whole list from SpiDataPos on. The state stays as it is.
SerialResult PaintSpi(const InstrumentState& state, const SerialGeom& geom, Canvas& canvas);

}  // namespace zu
