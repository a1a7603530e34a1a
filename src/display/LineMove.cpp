#include "display/LineMove.h"

#include <algorithm>

#include "display/Lines.h"

namespace zu {
namespace {

template <typename Array>
void MoveEntry(Array& list, std::int32_t from, std::int32_t to) {
    const auto at = list.begin();
    if (from < to) {
        std::rotate(at + from, at + from + 1, at + to + 1);
    } else {
        std::rotate(at + to, at + from, at + from + 1);
    }
}

}  // namespace

bool MoveLine(InstrumentState& state, std::int32_t from, std::int32_t to) {
    const std::int32_t count = LineCount(state);
    if (from == to || from < 0 || to < 0 || from >= count || to >= count) return false;
    MoveEntry(state.Timing.LineSource, from, to);
    MoveEntry(state.Timing.LineStyle, from, to);
    MoveEntry(state.Timing.LineMode, from, to);
    return true;
}

}  // namespace zu
