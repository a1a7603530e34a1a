#include "serial/SerialRows.h"

#include <algorithm>

#include "serial/EventCodes.h"
#include "serial/EventMap.h"
#include "serial/RowCursors.h"

namespace zu {
namespace {

constexpr std::int8_t kModeMicrowire = 2;

std::int32_t MapLength(const InstrumentState& state) {
    return static_cast<std::int32_t>(state.Serial.SerialEvents.size());
}

/// First event at or behind a sample that the view lists; `to` if there is none.
std::int32_t NextListedEvent(const InstrumentState& state, std::int32_t from, std::int32_t to) {
    const auto& events = state.Serial.SerialEvents;
    std::int32_t i = FindEvent(events, from, to);
    while (i < to && !PassesSerialFilter(state, EventAt(state, i))) i = FindEvent(events, i + 1, to);
    return i;
}

std::int32_t FindCodeForward(const InstrumentState& state, std::uint8_t code, std::int32_t from) {
    const std::int32_t end = MapLength(state);
    std::int32_t i = FindEvent(state.Serial.SerialEvents, from, end);
    while (i < end && EventAt(state, i) != code) i = FindEvent(state.Serial.SerialEvents, i + 1, end);
    return i < end ? i : -1;
}

/// Sample 0 is never looked at.
std::int32_t FindCodeBack(const InstrumentState& state, std::uint8_t code, std::int32_t from) {
    std::int32_t i = FindEventBack(state.Serial.SerialEvents, from);
    while (i >= 1 && EventAt(state, i) != code) i = FindEventBack(state.Serial.SerialEvents, i - 1);
    return i >= 1 ? i : -1;
}

}  // namespace

bool PassesSerialFilter(const InstrumentState& state, std::uint8_t code) {
    if (state.Serial.SerialMode == kModeMicrowire) {
        return code == event::kMicrowireIn1 || code == event::kMicrowireIn0;
    }
    const FilterClass filter = EventOf(code).Filter;
    return filter != FilterClass::None && state.Serial.SerialFilter[static_cast<std::size_t>(filter)] != 0;
}

std::int32_t SerialRowsStart(const InstrumentState& state) {
    const SerialRecord& serial = state.Serial;
    return std::max(std::min(serial.SerialDataPos, serial.SerialLast), std::max(serial.SerialFirst, 0));
}

std::optional<SerialRow> NextSerialRow(const InstrumentState& state, std::int32_t from) {
    const std::int32_t end = MapLength(state);
    from = std::max(from, 0);
    const std::int32_t listed = NextListedEvent(state, from, end);
    const std::int32_t sample = std::min(listed, NextCursorSample(state, from, end));
    if (sample >= end) return std::nullopt;
    const std::uint8_t code = sample == listed ? EventAt(state, sample) : event::kNone;
    return SerialRow{sample, code, CursorOnSample(state, sample)};
}

std::vector<SerialRow> SerialRows(const InstrumentState& state, int count) {
    std::vector<SerialRow> rows;
    auto row = NextSerialRow(state, SerialRowsStart(state));
    for (int r = 0; r < count && row; ++r) {
        rows.push_back(*row);
        row = NextSerialRow(state, row->Sample + 1);
    }
    return rows;
}

std::optional<std::int32_t> SerialRowSample(const InstrumentState& state, int row) {
    const std::int32_t end = MapLength(state);
    if (row < 0) return std::nullopt;
    std::int32_t from = std::max(state.Serial.SerialDataPos, 0);
    for (;; --row) {
        const std::int32_t sample =
            std::min(FindEvent(state.Serial.SerialEvents, from, end), NextCursorSample(state, from, end));
        if (sample >= end) return std::nullopt;
        if (row == 0) return sample;
        from = sample + 1;
    }
}

std::int32_t SerialScrollScale(std::int32_t first, std::int32_t last) {
    constexpr std::int64_t kFullRange = 0x7FFF;
    const std::int64_t span = std::int64_t{last} - first;
    return span < kFullRange ? 1 : static_cast<std::int32_t>(span / kFullRange + 1);
}

bool SearchSerialEvent(InstrumentState& state, Host& host, int kind, SearchWay way) {
    std::int32_t found = -1;
    if (kind >= 0 && kind < static_cast<int>(kSerialSearchKinds.size())) {
        const std::uint8_t code = kSerialSearchKinds[static_cast<std::size_t>(kind)].Code;
        const std::int32_t position = std::clamp(state.Serial.SerialDataPos, 0, MapLength(state));
        found = way == SearchWay::Next ? FindCodeForward(state, code, position + 1)
                                       : FindCodeBack(state, code, position - 1);
    }
    if (found < 0) {
        host.Message("Not found", "Serial Search");
        return false;
    }
    state.Serial.SerialDataPos = found;
    return true;
}

}  // namespace zu
