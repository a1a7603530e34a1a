#include "serial/EventMap.h"

#include <algorithm>

namespace zu {

EventCursor::EventCursor(std::span<const std::uint8_t> events, std::int32_t from, std::int32_t to)
    : events_(events.data()),
      next_(std::max(from, 0)),
      end_(static_cast<std::int32_t>(std::min<std::int64_t>(to, std::ssize(events)))) {}

std::int32_t FindEvent(std::span<const std::uint8_t> events, std::int32_t from, std::int32_t to) {
    const std::int32_t found = EventCursor(events, from, to).Next();
    return found < 0 ? to : found;
}

std::int32_t FindEventBack(std::span<const std::uint8_t> events, std::int32_t from) {
    auto i = static_cast<std::int32_t>(std::min<std::int64_t>(from, std::ssize(events) - 1));
    for (; i >= scan::kWordBytes - 1; i -= scan::kWordBytes) {
        const std::int32_t start = i - (scan::kWordBytes - 1);
        const std::uint64_t word = scan::LoadWord(&events[static_cast<std::size_t>(start)]);
        if (word != 0) return start + scan::LastByte(word);
    }
    for (; i >= 0; --i) {
        if (events[static_cast<std::size_t>(i)] != 0) return i;
    }
    return -1;
}

}  // namespace zu
