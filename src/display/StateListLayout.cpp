#include "display/StateListLayout.h"

#include <algorithm>
#include <cstdlib>

#include "display/Lines.h"
#include "display/Scroll.h"

namespace zu {
namespace {

constexpr std::int32_t kRowGap = 2;       // pixels between two lines of text
constexpr std::int32_t kCursorReach = 4;  // pixels
constexpr std::int32_t kEndStep = 10;     // rows that "top" and "bottom" move
constexpr std::uint8_t kStateListActive = 1;

std::int32_t FirstColumn(const InstrumentState& state) {
    return std::max(state.StateList.StateGroupPos, 0);
}

std::int32_t WidthOfColumn(const InstrumentState& state, int column) {
    return std::clamp(state.StateList.ScreenWidth[static_cast<std::size_t>(column)], 0, 2 * kGroupSlots);
}

std::int64_t VerticalTarget(const InstrumentState& state, const ScrollEvent& event,
                            const StateListLayout& layout) {
    const std::int64_t at = state.StateList.StateDataPos;
    const std::int64_t page = std::max(layout.SampleRows(), 1);
    switch (event.Code) {
        case ScrollCode::LineBack:
            return at - 1;
        case ScrollCode::LineForward:
            return at + 1;
        case ScrollCode::PageBack:
            return at - page;
        case ScrollCode::PageForward:
            return at + page;
        case ScrollCode::Top:
            return at - kEndStep;  // by ten rows, not to sample 0
        case ScrollCode::Bottom:
            return at + kEndStep;
        case ScrollCode::Thumb:
            return std::int64_t{event.Thumb} * ScrollUnit(state.Memory.DisplayLen);
    }
    return at;
}

std::int64_t HorizontalTarget(const InstrumentState& state, const ScrollEvent& event,
                              const StateListLayout& layout) {
    const std::int64_t at = FirstColumn(state);
    const std::int64_t page = std::max(layout.Count, 1);
    switch (event.Code) {
        case ScrollCode::LineBack:
            return at - 1;
        case ScrollCode::LineForward:
            return at + 1;
        case ScrollCode::PageBack:
            return at - page;
        case ScrollCode::PageForward:
            return at + page;
        case ScrollCode::Top:
            return 0;
        case ScrollCode::Bottom:
            return kGroupCount;
        case ScrollCode::Thumb:
            return event.Thumb;
    }
    return at;
}

}  // namespace

int GroupOfStateColumn(const InstrumentState& state, int column) {
    if (column < 0 || column >= kGroupCount) return -1;
    const int group = state.StateList.ScreenL[static_cast<std::size_t>(column)];
    if (group < 0 || group >= kGroupCount) return -1;
    return GroupSize(state.Groups[static_cast<std::size_t>(group)]) > 0 ? group : -1;
}

StateListLayout LayoutStateList(const InstrumentState& state, const Metrics& metrics, std::int32_t width,
                                std::int32_t height) {
    StateListLayout layout;
    layout.RowHeight = metrics.TextHeight + kRowGap;
    layout.Rows = std::max(height, 0) / layout.RowHeight;
    layout.Advance = metrics.Advance;
    std::int32_t left = kStateListLeft * metrics.Advance;
    for (int column = std::min(FirstColumn(state), kGroupCount); column < kGroupCount; ++column) {
        const int group = GroupOfStateColumn(state, column);
        if (group < 0) continue;
        const std::int32_t chars = WidthOfColumn(state, column);
        const std::int32_t right = left + (chars + 1) * metrics.Advance;
        if (right > width) break;
        layout.Columns[static_cast<std::size_t>(layout.Count++)] = {column, group, left, chars};
        left = right;
    }
    return layout;
}

std::int32_t StateRowAt(const StateListLayout& layout, std::int32_t y) {
    const std::int32_t row = y / layout.RowHeight - (y % layout.RowHeight < 0 ? 1 : 0);
    return row - 1;
}

std::optional<std::int64_t> StateSampleAt(const InstrumentState& state, const StateListLayout& layout,
                                          std::int32_t y) {
    const std::int32_t row = StateRowAt(layout, y);
    if (row < 0 || row >= layout.SampleRows()) return std::nullopt;
    return std::int64_t{state.StateList.StateDataPos} + row;
}

const StateColumn* StateColumnAt(const StateListLayout& layout, std::int32_t x) {
    for (const StateColumn& column : layout.Shown()) {
        const std::int32_t right = column.Left + (column.Width + 1) * layout.Advance;
        if (x >= column.Left && x < right) return &column;
    }
    return nullptr;
}

int StateCursorNear(const InstrumentState& state, const StateListLayout& layout, std::int32_t y) {
    int best = -1;
    std::int64_t nearest = kCursorReach + 1;
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        const std::int64_t row =
            std::int64_t{state.Cursors.Cur[static_cast<std::size_t>(cursor)]} - state.StateList.StateDataPos;
        if (row < 0 || row >= layout.SampleRows()) continue;
        const std::int64_t top = layout.TopOf(static_cast<std::int32_t>(row));
        const std::int64_t distance =
            std::max({std::int64_t{0}, top - y, std::int64_t{y} - (top + layout.RowHeight - 1)});
        if (distance >= nearest) continue;
        nearest = distance;
        best = cursor;
    }
    return best;
}

ScrollRange StateListVerticalRange(const InstrumentState& state) {
    const std::int32_t unit = ScrollUnit(state.Memory.DisplayLen);
    return {0, std::max(state.Memory.DisplayLen, 0) / unit, std::max(state.StateList.StateDataPos, 0) / unit};
}

ScrollRange StateListHorizontalRange(const InstrumentState& state) {
    int last = kGroupCount - 1;
    while (last > 0 && GroupOfStateColumn(state, last) < 0) --last;
    return {0, last, std::min(FirstColumn(state), last)};
}

void ScrollStateList(InstrumentState& state, const ScrollEvent& event, const StateListLayout& layout) {
    state.Windows.ActiveView = kStateListActive;
    if (event.Axis == ScrollAxis::Horizontal) {
        const std::int64_t most = StateListHorizontalRange(state).Maximum;
        const std::int64_t to = std::clamp<std::int64_t>(HorizontalTarget(state, event, layout), 0, most);
        state.StateList.StateGroupPos = static_cast<std::int32_t>(to);
        return;
    }
    const std::int64_t to = VerticalTarget(state, event, layout);
    if (to < 0 || to > state.Memory.DisplayLen) return;
    state.StateList.StateDataPos = static_cast<std::int32_t>(to);
}

}  // namespace zu
