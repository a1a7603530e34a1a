#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "display/Columns.h"
#include "state/InstrumentState.h"
#include "state/SampleView.h"

namespace zu {

/// Answer of FindEdge: the first sample with another level.
struct Edge {
    static constexpr std::uint8_t kNone = 255;
    std::int64_t At = 0;
    std::uint8_t Level = kNone;  ///< the new level; kNone when the end was reached
};
/// First sample from `from` on, before `to`, whose bit under `mask` differs from that of sample `from`.
Edge FindEdge(const SampleView& view, std::uint8_t mask, std::int64_t from, std::int64_t to);
/// Last sample before `from`, down to `to`, that has another level than `from`; At is the sample after it,
/// where the present level began.
Edge FindEdgeBack(const SampleView& view, std::uint8_t mask, std::int64_t from, std::int64_t to);

/// What the measurement columns say of one channel over one range.
struct ChannelMeasure {
    // Whole periods.
    std::int32_t Count = 0;
    std::int64_t FirstEdge = 0;
    std::int64_t LastEdge = 0;
    double Period = 0;  ///< average, an integer kept as a double
    // Duty, over completed pairs of phases.
    std::int64_t DutyLow = 0;
    std::int64_t DutyHigh = 0;
    // Widths of the phases, by level.
    struct Widths {
        std::int64_t Sum = 0;
        std::int64_t Count = 0;
        std::int64_t Minimum = 0;  ///< 0 = unset
        std::int64_t Maximum = 0;
    };
    Widths Low;
    Widths High;
};
/// The three edge passes over one range, taken in one walk.
ChannelMeasure MeasureChannel(const SampleView& view, std::uint8_t mask, const SampleRange& range);

/// What the Pulse width command tells of a channel: completed pairs of phases.
struct PulseWidths {
    std::int64_t Low = 0;  ///< sums of the phases
    std::int64_t High = 0;
    std::int64_t CountLow = 0;
    std::int64_t CountHigh = 0;
    std::int64_t Shortest = 0;  ///< period; the range's end when there is none
    std::int64_t Longest = 0;
};
PulseWidths MeasurePulses(const SampleView& view, std::uint8_t mask, const SampleRange& range);

/// Message of the Pulse width command: channel 0 over the range of column 0. Nothing is shown without pulses.
struct PulseMessage {
    std::string Text;
    std::string_view Title;
};
std::optional<PulseMessage> PulseWidthMessage(const InstrumentState& state);

/// Measurements kept from paint to paint, by channel, range and alignment.
class MeasureCache {
  public:
    /// Drops all that depends on samples.
    void Invalidate() { kept_.clear(); }
    const ChannelMeasure& Get(const InstrumentState& state, int channel, const SampleRange& range);
    /// Walks over samples since the start; for tests.
    [[nodiscard]] std::uint64_t Misses() const { return misses_; }

  private:
    struct Key {
        std::int32_t Channel = 0;
        std::int32_t Adjust = 0;
        std::int64_t First = 0;
        std::int64_t Last = 0;
        const std::uint8_t* Data = nullptr;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const;
    };
    std::unordered_map<Key, ChannelMeasure, Hash> kept_;
    std::uint64_t misses_ = 0;
};

}  // namespace zu
