#include "display/Columns.h"

#include <algorithm>
#include <utility>

namespace zu {
namespace {

bool IsColumn(int column) {
    return column >= 0 && column < kTimingColumns;
}

const TimingColumn& ColumnOf(const InstrumentState& state, int column) {
    return state.Timing.TimingDisp[static_cast<std::size_t>(column)];
}

}  // namespace

ColumnType TypeOfColumn(const InstrumentState& state, int column) {
    if (!IsColumn(column)) return ColumnType::Off;
    const std::uint8_t type = ColumnOf(state, column).Type;
    return type < kColumnTypes.size() ? static_cast<ColumnType>(type) : ColumnType::Off;
}

const RangeTraits& RangeOfColumn(const InstrumentState& state, int column) {
    if (!IsColumn(column)) return kRanges[0];
    const std::uint8_t range = ColumnOf(state, column).Range;
    return range < kRanges.size() ? kRanges[range] : kRanges[0];
}

ColumnLayout LayoutColumns(const InstrumentState& state, std::int32_t advance) {
    ColumnLayout layout;
    std::int32_t x = 0;
    for (int column = 0; column < kTimingColumns; ++column) {
        const auto type = static_cast<std::size_t>(TypeOfColumn(state, column));
        const std::int32_t width = kColumnTypes[type].Width * advance;
        layout.Columns[static_cast<std::size_t>(column)] = {x, x + width};
        if (width > 0) x += width + advance;
    }
    layout.DataLeft = x;
    layout.NameEnd = x + advance;
    return layout;
}

SampleRange RangeBounds(const InstrumentState& state, int column, int pod) {
    const std::int64_t length = GetBufLenFull(state.Buffer.BufLen, pod);
    const RangeTraits& range = RangeOfColumn(state, column);
    SampleRange bounds{0, length};
    if (range.From >= 0) {
        bounds.First = state.Cursors.Cur[static_cast<std::size_t>(range.From)];
        bounds.Last = state.Cursors.Cur[static_cast<std::size_t>(range.To)];
    }
    bounds.First = std::max<std::int64_t>(bounds.First, 0);
    bounds.Last = std::max<std::int64_t>(bounds.Last, 0);
    if (bounds.First > bounds.Last) std::swap(bounds.First, bounds.Last);
    const std::int64_t adjust =
        pod >= 0 && pod < kMaxPods ? state.Pods.AdjAddr[static_cast<std::size_t>(pod)] : 0;
    bounds.Last = std::min({bounds.Last, length - adjust, length});
    return bounds;
}

}  // namespace zu
