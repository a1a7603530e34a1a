#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "display/Zoom.h"
#include "state/InstrumentState.h"

namespace zu {

/// The samples that a view shows.
struct ShownSpan {
    std::int64_t First = 0;
    std::int64_t Count = 0;
};

/// Brings a cursor that the view does not show near the view's middle: its number left of it, so that cursors
/// brought one after the other stay apart. One that the view shows stays.
void CursorToWindow(InstrumentState& state, int cursor, const ShownSpan& shown);
/// Puts a cursor at a sample, inside the memory.
void CursorToPoint(InstrumentState& state, int cursor, std::int64_t sample);

/// A place that zooming may start from.
struct ZoomFromRow {
    std::string_view Text;
    int Origin;
};
inline constexpr std::array<ZoomFromRow, 8> kZoomFrom{{
    {"Left", kOriginLeft},
    {"Center (std.)", kOriginCenter},
    {"Point", kOriginPoint},
    {"Cursor A", 0},
    {"Cursor B", 1},
    {"Cursor C", 2},
    {"Cursor D", 3},
    {"Trig. Cursor", kCursorT},
}};
/// Keeps an origin for the zooms to come. A point is good for one zoom only and is not kept.
void KeepZoomOrigin(InstrumentState& state, int origin);

}  // namespace zu
