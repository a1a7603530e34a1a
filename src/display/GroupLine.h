#pragma once

#include "display/ChannelTrace.h"
#include "display/Columns.h"
#include "display/Measure.h"

namespace zu {

/// Draws the samples of a group line (its cells are drawn before): a text line for styles 0 to 4, else by
/// `line.Extra` an overlay of its channels, bars where they differ, or its value as a curve.
void DrawGroupTrace(const RowFrame& row, int group, const DisplayLine& line);

/// Draws the line of an SPI group: four channels as lanes with their cells, and the decoded bytes between
/// them.
void DrawSpiLine(const RowFrame& row, const ColumnLayout& layout, int group, MeasureCache& measures);

/// Lanes of an SPI line, from its top: clock, SI, SO and chip select, with room for bytes above SI and SO.
inline constexpr int kSpiLanes = 4;
inline constexpr std::int32_t kLaneHeight = 16;
inline constexpr std::int32_t kLaneStep = kLaneHeight + kRowPad;
inline constexpr std::array<std::int32_t, kSpiLanes> kLaneSteps{0, 2, 4, 5};
/// Upper edge of a lane in a row.
constexpr std::int32_t LaneTop(std::int32_t rowTop, int lane, const Metrics& metrics) {
    return rowTop + TextRowHeight(metrics) / 2 + kLaneSteps[static_cast<std::size_t>(lane)] * kLaneStep;
}
/// The lane of a row that y lies in; -1 between lanes.
int LaneAt(std::int32_t rowTop, std::int32_t y, const Metrics& metrics);

}  // namespace zu
