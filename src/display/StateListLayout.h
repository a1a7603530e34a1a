#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "display/Canvas.h"
#include "display/Events.h"
#include "state/InstrumentState.h"

namespace zu {

inline constexpr int kStateListLeft = 14;  ///< characters of the sample column

/// Group that a column of the Statelist shows; -1 for a column without one, or with an empty one.
int GroupOfStateColumn(const InstrumentState& state, int column);

/// A column on the screen.
struct StateColumn {
    int Column = 0;
    int Group = 0;
    std::int32_t Left = 0;   ///< pixels
    std::int32_t Width = 0;  ///< characters
};

/// Where the Statelist draws what.
struct StateListLayout {
    std::int32_t RowHeight = 1;  ///< pixels
    std::int32_t Rows = 0;       ///< whole rows that fit, the header among them
    std::int32_t Advance = 1;    ///< pixels of one character
    std::array<StateColumn, kGroupCount> Columns{};
    int Count = 0;  ///< columns on the screen

    [[nodiscard]] std::span<const StateColumn> Shown() const {
        return {Columns.data(), static_cast<std::size_t>(Count)};
    }
    /// Rows that show a sample.
    [[nodiscard]] std::int32_t SampleRows() const { return Rows > 1 ? Rows - 1 : 0; }
    /// Upper edge of the row of a sample, counted from the first one shown.
    [[nodiscard]] std::int32_t TopOf(std::int32_t row) const { return (row + 1) * RowHeight; }
};
/// Layout for a client area of this size. An empty group takes no room; the first column that does not fit
/// ends the row.
StateListLayout LayoutStateList(const InstrumentState& state, const Metrics& metrics, std::int32_t width,
                                std::int32_t height);

/// Row of samples that contains y, from 0; above the first it is negative, and there is no lower end.
std::int32_t StateRowAt(const StateListLayout& layout, std::int32_t y);
/// Sample whose row contains y; nothing in the header and below the last whole row.
std::optional<std::int64_t> StateSampleAt(const InstrumentState& state, const StateListLayout& layout,
                                          std::int32_t y);
/// Column under x; null for none.
const StateColumn* StateColumnAt(const StateListLayout& layout, std::int32_t x);
/// Cursor 0..4 on a row within 4 pixels of y, the nearest and among equals the lowest; -1 for none.
int StateCursorNear(const InstrumentState& state, const StateListLayout& layout, std::int32_t y);

ScrollRange StateListVerticalRange(const InstrumentState& state);
/// Up to the last column that shows a group.
ScrollRange StateListHorizontalRange(const InstrumentState& state);

/// Moves StateDataPos or StateGroupPos. A move out of the samples is refused, not cut. The Statelist becomes
/// the active view; the caller redraws it, the Timing and serial views and the cursor window.
void ScrollStateList(InstrumentState& state, const ScrollEvent& event, const StateListLayout& layout);

}  // namespace zu
