#include "serial/EventMap.h"

#include <algorithm>

#include "serial/LineScan.h"

namespace zu {

std::int32_t FindEvent(std::span<const std::uint8_t> events, std::int32_t from, std::int32_t to) {
    const auto end = static_cast<std::int32_t>(std::min<std::int64_t>(to, std::ssize(events)));
    std::int32_t i = std::max(from, 0);
    for (; end - i >= scan::kWordBytes; i += scan::kWordBytes) {
        const std::uint64_t word = scan::LoadWord(&events[static_cast<std::size_t>(i)]);
        if (word != 0) return i + scan::FirstByte(word);
    }
    for (; i < end; ++i) {
        if (events[static_cast<std::size_t>(i)] != 0) return i;
    }
    return to;
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
