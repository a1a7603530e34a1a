#include "display/CursorMoves.h"

#include <algorithm>

namespace zu {
namespace {

bool IsCursor(int cursor) {
    return cursor >= 0 && cursor <= kCursorT;
}

std::int32_t& Place(InstrumentState& state, int cursor) {
    return state.Cursors.Cur[static_cast<std::size_t>(cursor)];
}

}  // namespace

void CursorToWindow(InstrumentState& state, int cursor, const ShownSpan& shown) {
    if (!IsCursor(cursor)) return;
    std::int64_t place = Place(state, cursor);
    const bool visible = place >= shown.First && place < shown.First + shown.Count;
    if (!visible) place = shown.First + shown.Count / 2 - cursor;
    const std::int64_t end = state.Memory.DisplayLen;
    if (place < 0 || place >= end) place = end - cursor - 1;
    Place(state, cursor) = static_cast<std::int32_t>(std::max<std::int64_t>(place, 0));
}

void CursorToPoint(InstrumentState& state, int cursor, std::int64_t sample) {
    if (!IsCursor(cursor)) return;
    const std::int64_t end = std::max(state.Memory.DisplayLen, 0);
    Place(state, cursor) = static_cast<std::int32_t>(std::clamp<std::int64_t>(sample, 0, end));
}

void KeepZoomOrigin(InstrumentState& state, int origin) {
    const auto* row = std::find_if(kZoomFrom.begin(), kZoomFrom.end(),
                                   [origin](const ZoomFromRow& known) { return known.Origin == origin; });
    if (row == kZoomFrom.end() || origin == kOriginPoint) return;
    state.Timing.ZoomOrigin = static_cast<std::int8_t>(origin);
}

}  // namespace zu
