#pragma once

#include <cstdint>
#include <string>

#include "display/ChannelTrace.h"
#include "display/Columns.h"
#include "display/Measure.h"

namespace zu {

/// Upper edge of the first or second header line of the columns, each in the middle of its half.
constexpr std::int32_t HeaderLineY(const Metrics& metrics, int line) {
    constexpr std::int32_t kHalf = kHeaderHeight / 2;
    return line * kHalf + (kHalf - metrics.TextHeight) / 2;
}

/// Draws the headers of all columns.
void DrawColumnHeaders(const InstrumentState& state, Canvas& canvas, const ColumnLayout& layout);

/// Draws the cells of a channel line; leaves the text colour at the channel's.
void DrawChannelCells(const RowFrame& row, const ColumnLayout& layout, int channel, MeasureCache& measures);
/// Draws the cells of a group line.
void DrawGroupCells(const RowFrame& row, const ColumnLayout& layout, int group);

/// Draws number and name of a group alone.
void DrawGroupName(const RowFrame& row, const ColumnLayout& layout, int group);

/// Text of a measurement cell.
std::string MeasurementText(const InstrumentState& state, ColumnType type, const ChannelMeasure& measure);

/// What a Trig Word column of this level says of a channel: "0", "1", "X", "D" for a delay level, "PG" for a
/// pattern pod, or nothing.
std::string TrigWordCell(const InstrumentState& state, int level, int channel);

}  // namespace zu
