#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "display/Canvas.h"
#include "state/InstrumentState.h"

namespace zu {

enum class ColumnType : std::uint8_t {
    Off,
    ChanNum,
    ChanName,
    TrigWord,
    CursorValues,
    Count,
    DutyFalling,
    DutyRising,
    Frequency,
    Period,
    AvgWidth0,
    AvgWidth1,
    MinWidth0,
    MinWidth1,
    MaxWidth0,
    MaxWidth1
};

struct ColumnTraits {
    std::string_view ListText;
    std::string_view Header;  ///< first header line; types 3 and 4 draw their own
    std::int32_t Width;       ///< characters
};
inline constexpr std::array<ColumnTraits, 16> kColumnTypes{{
    {"Off", "", 0},
    {"Chan Num", "Num", 3},
    {"Chan Name", "Name", 15},
    {"Trig Word", "", 2},
    {"Cursor Values", "", 5},
    {"Count", "Count", 8},
    {"Duty Cycle Falling", "Duty \\/", 7},
    {"Duty Cycle Rising", "Duty /\\", 7},
    {"Frequency", "Freq.", 12},
    {"Period", "Period", 15},
    {"Avg Width(0)", "Avg Width0", 12},
    {"Avg Width(1)", "Avg Width1", 12},
    {"Min Width(0)", "Min Width0", 12},
    {"Min Width(1)", "Min Width1", 12},
    {"Max Width(0)", "Max Width0", 12},
    {"Max Width(1)", "Max Width1", 12},
}};

/// The cursors that bound a measurement.
struct RangeTraits {
    std::string_view Text;
    int From;  ///< cursor number; -1 = the whole buffer
    int To;
};
inline constexpr std::array<RangeTraits, 11> kRanges{{
    {"Buffer", -1, -1},
    {"A to B", 0, 1},
    {"B to C", 1, 2},
    {"C to D", 2, 3},
    {"A to D", 0, 3},
    {"B to D", 1, 3},
    {"A to T", 0, 4},
    {"B to T", 1, 4},
    {"C to T", 2, 4},
    {"D to T", 3, 4},
    {"A to C", 0, 2},
}};

/// Type of a column; what is out of range counts as Off.
ColumnType TypeOfColumn(const InstrumentState& state, int column);
/// Range of a column; what is out of range counts as the whole buffer.
const RangeTraits& RangeOfColumn(const InstrumentState& state, int column);
/// Types 5 to 15: the cell is measured over the column's range.
constexpr bool IsMeasurement(ColumnType type) {
    return type >= ColumnType::Count;
}

/// Pixel span of one information column; an empty span is not shown.
struct ColumnSpan {
    std::int32_t Start = 0;
    std::int32_t End = 0;
    friend bool operator==(const ColumnSpan&, const ColumnSpan&) = default;
};
struct ColumnLayout {
    std::array<ColumnSpan, kTimingColumns> Columns{};
    std::int32_t DataLeft = 0;  ///< x of the first sample
    std::int32_t NameEnd = 0;   ///< right end of a name that overlaps the data: one character further
};
ColumnLayout LayoutColumns(const InstrumentState& state, std::int32_t advance);

/// Samples that a measurement covers, Last exclusive; empty when First is not below Last.
struct SampleRange {
    std::int64_t First = 0;
    std::int64_t Last = 0;
    friend bool operator==(const SampleRange&, const SampleRange&) = default;
};
/// Range of a column over a pod; the whole buffer for a negative column.
SampleRange RangeBounds(const InstrumentState& state, int column, int pod);

}  // namespace zu
