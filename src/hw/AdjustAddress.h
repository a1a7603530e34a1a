#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "hw/CaptureSetup.h"
#include "trigger/CompiledTrigWords.h"

namespace zu {

/// What the last word of the sequence asks of one pod's samples. A pod without one asks for nothing.
struct PodMatch {
    std::uint8_t Mask = 0;
    std::uint8_t Value = 0;
    std::span<const std::uint8_t> Samples;
};

/// The capture pods with samples, as the last level of the sequence compares them.
using PodMatches = std::array<PodMatch, kMaxPods>;
PodMatches PodMatchesOf(const CaptureSetup& setup, int podStep, InstrumentState& state,
                        const CompiledTrigWords& words);

/// Samples from the nominal trigger position to the one where the condition became true (falling edge:
/// ceased to be) in the data, looked for over 128 samples; 0 if it did not.
std::int32_t FindTrigger(const CaptureSetup& setup, const PodMatches& pods, std::int32_t longest,
                         std::uint8_t edge);
/// Finds the alignment and stores it as AdjAddr of every pod. `podStep` is the distance of two boards' pods
/// in the capture buffer.
void AdjustAddress(const CaptureSetup& setup, int podStep, InstrumentState& state,
                   const CompiledTrigWords& words);

}  // namespace zu
