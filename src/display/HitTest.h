#pragma once

#include <cstdint>
#include <optional>

#include "display/Columns.h"
#include "display/Lines.h"
#include "display/TimeAxis.h"
#include "state/InstrumentState.h"

namespace zu {

/// A row of the Timing view under a point.
struct LineHit {
    std::int32_t Line = 0;  ///< index into the display list
    LineKind Kind = LineKind::Spacer;
    std::int32_t Number = -1;  ///< channel or group; -1 for a spacer
    std::int32_t Top = 0;      ///< pixels
    std::int32_t Height = 0;
};

/// The row that contains y; nothing above the first row or below the last. A spacer takes a text row here,
/// however high it is drawn, and a channel without data takes none.
std::optional<LineHit> LineAtY(const InstrumentState& state, const Metrics& metrics, std::int32_t y);

/// The column that contains x; -1 for none.
int ColumnAtX(const ColumnLayout& layout, std::int32_t x);

/// Cursor 0..4 within 4 pixels of x, the closest and among equals the lowest; -1 for none.
int CursorNear(const InstrumentState& state, const TimeAxis& axis, std::int32_t x);

/// The overview strip: the whole capture across the data width.
struct StripScale {
    std::int32_t Left = 0;
    std::int32_t Width = 0;    ///< pixels; 0 when the columns leave none
    std::int64_t Longest = 1;  ///< samples of the longest buffer, at least 1

    /// x of a sample.
    [[nodiscard]] std::int32_t XOf(std::int64_t sample) const;
    /// Sample under x; 0 when there is no width.
    [[nodiscard]] std::int64_t SampleAt(std::int32_t x) const;
};
StripScale StripOf(const InstrumentState& state, std::int32_t dataLeft, std::int32_t right);

/// The box of the strip: what the screen shows.
struct StripBox {
    std::int32_t Left = 0, Right = 0, Top = 0, Bottom = 0;
};
StripBox BoxOf(const InstrumentState& state, const StripScale& strip, std::int32_t stripHeight);

/// Cursor 0..4 whose tick is within 2 pixels of x, the closest and among equals the lowest; -1 for none.
int TickNear(const InstrumentState& state, const StripScale& strip, std::int32_t x);

}  // namespace zu
