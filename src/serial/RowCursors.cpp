#include "serial/RowCursors.h"

#include <algorithm>

namespace zu {
namespace {

constexpr std::array<int, 5> kCursorOrder{kCursorT, 1, 0, 2, 3};

std::int32_t Position(const InstrumentState& state, int cursor) {
    return state.Cursors.Cur[static_cast<std::size_t>(cursor)];
}

}  // namespace

int CursorOnSample(const InstrumentState& state, std::int32_t sample) {
    const auto found = std::find_if(kCursorOrder.begin(), kCursorOrder.end(),
                                    [&](int cursor) { return Position(state, cursor) == sample; });
    return found == kCursorOrder.end() ? -1 : *found;
}

std::int32_t NextCursorSample(const InstrumentState& state, std::int32_t from, std::int32_t to) {
    std::int32_t next = to;
    for (const int cursor : kCursorOrder) {
        if (Position(state, cursor) >= from) next = std::min(next, Position(state, cursor));
    }
    return next;
}

std::int32_t CursorSampleBack(const InstrumentState& state, std::int32_t from) {
    std::int32_t last = -1;
    for (const int cursor : kCursorOrder) {
        if (Position(state, cursor) <= from) last = std::max(last, Position(state, cursor));
    }
    return last;
}

}  // namespace zu
