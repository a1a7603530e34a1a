#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zu {

/// Joins phases to samples: sample i of phase p lands at out[i x phases + p]. As many phases as the name
/// says, `count` bytes each; `out` has room for all of them.
void JoinTwoPhases(const std::uint8_t* first, const std::uint8_t* second, std::size_t count,
                   std::uint8_t* out);
void JoinFourPhases(std::span<const std::uint8_t* const, 4> phases, std::size_t count, std::uint8_t* out);

/// Stores bytes `stride` apart from index `first` on, as far as `out` reaches.
void StorePhase(std::span<const std::uint8_t> phase, std::size_t first, std::size_t stride,
                std::span<std::uint8_t> out);
/// Stores each byte `times` times in a row, as far as `out` reaches.
void RepeatSamples(std::span<const std::uint8_t> samples, std::size_t times, std::span<std::uint8_t> out);

}  // namespace zu
