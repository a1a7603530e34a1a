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

/// False with all filters off: no code passes, and nobody needs to look.
bool ListsAnyEvent(const InstrumentState& state) {
    const auto& filter = state.Serial.SerialFilter;
    return state.Serial.SerialMode == kModeMicrowire ||
           std::any_of(filter.begin(), filter.end(), [](std::uint8_t flag) { return flag != 0; });
}

/// First event in [from, to) that the view lists; `to` if there is none.
std::int32_t NextListedEvent(const InstrumentState& state, std::int32_t from, std::int32_t to) {
    const auto& events = state.Serial.SerialEvents;
    if (!ListsAnyEvent(state)) return to;
    EventCursor cursor(events, from, to);
    for (std::int32_t i = cursor.Next(); i >= 0; i = cursor.Next()) {
        if (PassesSerialFilter(state, events[static_cast<std::size_t>(i)])) return i;
    }
    return to;
}

/// Last event in [floor, from] that the view lists; floor - 1 if there is none.
std::int32_t ListedEventBack(const InstrumentState& state, std::int32_t from, std::int32_t floor) {
    const auto& events = state.Serial.SerialEvents;
    if (!ListsAnyEvent(state)) return floor - 1;
    std::int32_t i = FindEventBack(events, from);
    while (i >= floor && !PassesSerialFilter(state, events[static_cast<std::size_t>(i)])) {
        i = FindEventBack(events, i - 1);
    }
    return std::max(i, floor - 1);
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
    if (from >= end) return std::nullopt;
    // Events are looked for up to the next cursor only, so that no stretch is walked twice.
    const std::int32_t cursor = NextCursorSample(state, from, end);
    const std::int32_t stop = std::min(cursor + 1, end);
    const std::int32_t listed = NextListedEvent(state, from, stop);
    const std::int32_t sample = std::min(listed, cursor);
    if (sample >= end) return std::nullopt;
    const std::uint8_t code = listed < stop ? EventAt(state, listed) : event::kNone;
    return SerialRow{sample, code, CursorOnSample(state, sample)};
}

std::optional<std::int32_t> SerialRowBack(const InstrumentState& state, std::int32_t from) {
    from = std::min(from, MapLength(state) - 1);
    const std::int32_t cursor = CursorSampleBack(state, from);
    const std::int32_t sample = std::max(ListedEventBack(state, from, cursor + 1), cursor);
    return sample >= 0 ? std::optional(sample) : std::nullopt;
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

bool SearchSerialEvent(InstrumentState& state, Host& host, SearchWay way) {
    std::int32_t found = -1;
    const int kind = state.Serial.SearchKind;
    if (kind >= 0 && kind < static_cast<int>(kSerialSearchKinds.size())) {
        const std::uint8_t code = kSerialSearchKinds[static_cast<std::size_t>(kind)].Code;
        const std::int32_t position = std::clamp(state.Serial.SerialDataPos, -1, MapLength(state));
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
