#include "display/CursorWindow.h"

#include <algorithm>

#include "display/TimeText.h"

namespace zu {
namespace {

std::string SpanText(const InstrumentState& state, std::int64_t samples) {
    return TimeKnown(state) ? TimeText(samples, RateOf(state), kTimeFull) : std::to_string(samples);
}

std::int32_t PositionOf(const InstrumentState& state, int cursor) {
    return state.Cursors.Cur[static_cast<std::size_t>(std::clamp(cursor, 0, kCursorT))];
}

void StepCursor(InstrumentState& state, std::size_t cursor, std::int64_t samples, bool up) {
    const std::int64_t most = std::max(state.Memory.DisplayLen, 0);
    const std::int64_t at = state.Cursors.Cur[cursor];
    const std::int64_t to = up ? (at > most - samples ? most : at + samples) : at - samples;
    state.Cursors.Cur[cursor] = static_cast<std::int32_t>(std::clamp<std::int64_t>(to, 0, most));
}

void StepPosition(std::int32_t& position, std::int64_t samples, bool up) {
    const std::int64_t to = position + (up ? samples : -samples);
    position = static_cast<std::int32_t>(std::clamp<std::int64_t>(to, INT32_MIN, INT32_MAX));
}

}  // namespace

std::string StepText(const InstrumentState& state, const CursorStep& step) {
    if (!TimeKnown(state)) return std::string(step.Label);
    return TimeText(std::int64_t{step.Samples}, RateOf(state), kTimeWhole);
}

void StepItem(InstrumentState& state, CursorItem item, std::int32_t samples, bool up) {
    switch (item) {
        case CursorItem::TimingPosition:
            return StepPosition(state.Timing.TimingDataPos, samples, up);
        case CursorItem::StateListPosition:
            return StepPosition(state.StateList.StateDataPos, samples, up);
        case CursorItem::SerialPosition:
            return StepPosition(state.Serial.SerialDataPos, samples, up);
        default:
            return StepCursor(state, static_cast<std::size_t>(item), samples, up);
    }
}

std::string CursorText(const InstrumentState& state, int cursor) {
    return SpanText(state, PositionOf(state, cursor));
}

std::string DifferenceText(const InstrumentState& state, const CursorPair& pair) {
    const std::int64_t samples = std::int64_t{PositionOf(state, pair.From)} - PositionOf(state, pair.To);
    return std::string(pair.Label) + SpanText(state, samples);
}

bool CursorListState::Changed(InstrumentState& state) {
    auto& positions = state.Cursors.Cur;
    const bool moved =
        !std::equal(positions.begin(), positions.begin() + kCursorSlots, positions.begin() + kCursorSlots);
    const bool changed = moved || mode_ != state.Cursors.CursorDlgMode || rate_ != RateOf(state);
    std::copy_n(positions.begin(), kCursorSlots, positions.begin() + kCursorSlots);
    mode_ = state.Cursors.CursorDlgMode;
    rate_ = RateOf(state);
    return changed;
}

}  // namespace zu
