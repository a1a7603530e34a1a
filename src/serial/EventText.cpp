#include "serial/EventText.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "serial/EventCodes.h"
#include "serial/EventMap.h"

namespace zu {
namespace {

constexpr auto kEventIndex = [] {
    std::array<std::int8_t, 256> index{};
    index.fill(-1);
    for (std::size_t i = 0; i < kEvents.size(); ++i) {
        index[kEvents[i].Code] = static_cast<std::int8_t>(i);
    }
    return index;
}();

constexpr EventTraits kUnknown{0, "", "", FilterClass::None};

bool EndsWalk(std::uint8_t code) {
    return code == event::kStart || code == event::kStop || code == event::kAck || code == event::kNack;
}

/// A kind of bit that an acknowledge's text adds up, most significant bit first.
struct BitKind {
    std::string_view Name;
    std::uint8_t FirstZero;  ///< codes run in pairs of 0 and 1 from here on
    std::uint8_t LastOne;
};
constexpr std::array<BitKind, 5> kBitKinds{{
    {"Val", event::kBit0, event::kBit1},
    {"Addr", event::kAddr0, event::kAddr1},
    {"Data", event::kData0, event::kData1},
    {"Mode", event::kMode0, event::kMode1},
    {"Chip", event::kChip0, event::kChipTenBit1},
}};

std::string KindText(std::span<const std::uint8_t> bits, const BitKind& kind) {
    std::uint32_t value = 0;
    bool seen = false;
    for (std::int32_t i = FindEvent(bits, 0, INT32_MAX); i < std::ssize(bits);
         i = FindEvent(bits, i + 1, INT32_MAX)) {
        const std::uint8_t code = bits[static_cast<std::size_t>(i)];
        if (code < kind.FirstZero || code > kind.LastOne) continue;
        value = (value << 1U) | static_cast<std::uint32_t>((code - kind.FirstZero) & 1);
        seen = true;
    }
    if (!seen) return {};
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "=0x%X)", value);
    std::string text("(");
    text += kind.Name;
    return text += number.data();
}

}  // namespace

const EventTraits& EventOf(std::uint8_t code) {
    const std::int8_t index = kEventIndex[code];
    return index < 0 ? kUnknown : kEvents[static_cast<std::size_t>(index)];
}

std::string_view StateListEventText(std::uint8_t code) {
    return EventOf(code).StateListText;
}

std::string SerialEventText(const InstrumentState& state, std::int32_t index) {
    const std::span<const std::uint8_t> events = state.Serial.SerialEvents;
    if (index < 0 || index >= std::ssize(events)) return {};
    std::int32_t start = FindEventBack(events, index - 1);
    while (start > 0 && !EndsWalk(events[static_cast<std::size_t>(start)])) {
        start = FindEventBack(events, start - 1);
    }
    start = std::max(start, 0);
    const auto bits =
        events.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(index - start));
    std::string text;
    for (const BitKind& kind : kBitKinds) text += KindText(bits, kind);
    return text;
}

std::string SerialRowText(const InstrumentState& state, std::int32_t index) {
    const std::uint8_t code = EventAt(state, index);
    std::string text(EventOf(code).SerialText);
    if (code == event::kAck || code == event::kNack) text += SerialEventText(state, index);
    return text;
}

}  // namespace zu
