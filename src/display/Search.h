#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// What the parallel word asks of one pod, as bits of its samples.
struct PodPattern {
    std::uint8_t Care = 0;      ///< "1" and "X"
    std::uint8_t DontCare = 0;  ///< "X"

    [[nodiscard]] bool Matches(std::uint8_t sample) const {
        return (sample & Care) == sample && (sample | DontCare) == Care;
    }
    friend bool operator==(const PodPattern&, const PodPattern&) = default;
};
using PodPatterns = std::array<PodPattern, kMaxPods>;
/// The parallel word of the state. Channels for which it has no place are "X".
PodPatterns BuildPodPatterns(const InstrumentState& state);

/// Samples [First, End) that a search may test.
struct SearchSpan {
    std::int64_t First = 0;
    std::int64_t End = 0;
};

/// First or last sample of the span at which every pod matches; a pod without a sample there passes.
std::optional<std::int64_t> FindWord(const InstrumentState& state, const PodPatterns& patterns,
                                     SearchSpan span, bool forward);

/// The serial pattern with nothing but its "0", "1" and "X" left, in the order in which it is typed.
std::string SerialPattern(const InstrumentState& state);
/// First or last place b in the span where the channel's samples b, b + 1, … match `pattern` from its first
/// character on; all of them lie inside the span. Nothing for an empty pattern.
std::optional<std::int64_t> FindBits(const InstrumentState& state, int channel, std::string_view pattern,
                                     SearchSpan span, bool forward);

/// Moves the active view to the next match: a word, or the sample behind a serial pattern. False, with
/// everything left as it was, without a match; the search does not wrap.
bool SearchForward(InstrumentState& state);
/// The same towards the first sample; a serial pattern's place is the sample before it.
bool SearchBackward(InstrumentState& state);
/// Searches in one direction and beeps without a match. True if the active view moved.
bool SearchOrBeep(InstrumentState& state, Host& host, bool forward);

}  // namespace zu
