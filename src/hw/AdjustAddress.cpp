#include "hw/AdjustAddress.h"

#include <algorithm>
#include <optional>

#include "trigger/Sequence.h"

namespace zu {
namespace {

constexpr int kSearched = 128;  // samples behind the nominal position, the last one included
constexpr int kFallingEdge = 1;
constexpr std::int32_t kNegative = 0x3E;  // stored for an alignment below 0, which no search finds

/// Mask and value of the lane's eight cells; any character but "0" and "1" asks for nothing. The cells are
/// taken as they are, in "any bit" mode too, where the instrument compares their complement.
PodMatch MatchOfLane(const CompiledTrigWords::Entry& entry, std::int64_t lane) {
    PodMatch match;
    if (lane < 0 || lane >= kBoardLanes) return match;
    const auto lowest = static_cast<std::size_t>(43 - 9 * lane);
    for (std::size_t bit = 0; bit < 8; ++bit) {
        const char cell = entry[lowest - bit];
        if (cell != '0' && cell != '1') continue;
        match.Mask |= static_cast<std::uint8_t>(1U << bit);
        if (cell == '1') match.Value |= static_cast<std::uint8_t>(1U << bit);
    }
    return match;
}

/// A pod asks only where it has a sample.
bool Matches(const PodMatches& pods, std::size_t position) {
    return std::all_of(pods.begin(), pods.end(), [position](const PodMatch& pod) {
        return position >= pod.Samples.size() || (pod.Samples[position] & pod.Mask) == pod.Value;
    });
}

std::int32_t Alignment(const CaptureSetup& setup, int podStep, InstrumentState& state,
                       const CompiledTrigWords& words) {
    if (setup.OutputMode == 0 && setup.HavePatterns) return 0;
    const PodMatches pods = PodMatchesOf(setup, podStep, state, words);
    const std::int32_t longest = GetLongestBufLen(state.Buffer.BufLen, setup.Pods);
    const std::uint8_t edge = state.Trigger.EdgeList16[0];
    const std::int32_t found = FindTrigger(setup, pods, longest, edge);
    // The event of a duration count lies that much later.
    const bool duration = setup.CountMode == 0 || setup.CountMode == 1;
    return found != 0 && edge == kFallingEdge && duration ? found + setup.Count : found;
}

}  // namespace

PodMatches PodMatchesOf(const CaptureSetup& setup, int podStep, InstrumentState& state,
                        const CompiledTrigWords& words) {
    PodMatches pods;
    const auto level = LastLevel(state);
    const auto word = level ? WordOfLevel(state, *level) : std::nullopt;
    if (!word) return pods;  // without a sequence nothing is asked for and nothing is found
    for (int pod = 0; pod < setup.Pods; ++pod) {
        if (PodMode(state, pod, 1) != 0) continue;
        const int board = podStep > 0 ? pod / podStep : 0;
        PodMatch& match = pods[static_cast<std::size_t>(pod)];
        if (board < kMaxBoards) {
            match = MatchOfLane(words.Word[static_cast<std::size_t>(*word)][static_cast<std::size_t>(board)],
                                pod - std::int64_t{board} * podStep);
        }
        match.Samples = state.Buffer.Samples(pod);
    }
    return pods;
}

std::int32_t FindTrigger(const CaptureSetup& setup, const PodMatches& pods, std::int32_t longest,
                         std::uint8_t edge) {
    const bool wanted = edge == 0;  // rising: from no match to match
    bool armed = false;
    for (std::int32_t distance = 0; distance <= kSearched; ++distance) {
        const std::int64_t position = std::int64_t{setup.Position} + distance;
        if (position >= longest) return 0;
        const bool match = Matches(pods, static_cast<std::size_t>(position));
        if (match != wanted) {
            armed = true;
        } else if (armed) {
            return distance;
        }
    }
    return 0;
}

void AdjustAddress(const CaptureSetup& setup, int podStep, InstrumentState& state,
                   const CompiledTrigWords& words) {
    const std::int32_t alignment = Alignment(setup, podStep, state, words);
    for (int pod = 0; pod < setup.Pods; ++pod) {
        state.Pods.AdjAddr[static_cast<std::size_t>(pod)] = alignment < 0 ? kNegative : alignment;
    }
}

}  // namespace zu
