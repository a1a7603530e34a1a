#pragma once

#include <cstdint>
#include <span>

#include "serial/LineScan.h"
#include "state/InstrumentState.h"

namespace zu {

/// Event code at a sample; 0, no event, outside the map.
inline std::uint8_t EventAt(const InstrumentState& state, std::int64_t index) {
    const auto& events = state.Serial.SerialEvents;
    return index >= 0 && index < static_cast<std::int64_t>(events.size())
               ? events[static_cast<std::size_t>(index)]
               : std::uint8_t{0};
}

/// Goes through the events of [from, to) in order; the bounds are cut to the map. Events at or before the one
/// reached last may be changed on the way.
class EventCursor {
  public:
    EventCursor(std::span<const std::uint8_t> events, std::int32_t from, std::int32_t to);

    /// Index of the next event; -1 at the end.
    std::int32_t Next() {
        while (word_ == 0) {
            if (next_ >= end_) return -1;
            base_ = next_;
            if (end_ - next_ >= scan::kWordBytes) {
                word_ = scan::LoadWord(events_ + next_);
                next_ += scan::kWordBytes;
            } else {
                word_ = events_[next_++];
            }
        }
        const int byte = scan::FirstByte(word_);
        word_ &= ~(std::uint64_t{0xFF} << (8 * byte));
        return base_ + byte;
    }

  private:
    const std::uint8_t* events_;
    std::int32_t next_;
    std::int32_t end_;
    std::int32_t base_ = 0;
    std::uint64_t word_ = 0;  ///< bytes from base_ on that are still to come
};

/// First index in [from, to) with an event; `to` if there is none. The bounds are cut to the map.
std::int32_t FindEvent(std::span<const std::uint8_t> events, std::int32_t from, std::int32_t to);
/// Last index at or below `from` with an event; -1 if there is none.
std::int32_t FindEventBack(std::span<const std::uint8_t> events, std::int32_t from);

}  // namespace zu
