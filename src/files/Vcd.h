#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "state/Limits.h"

namespace zu {

/// A change of the eight channels of a pod.
struct VcdChange {
    std::int64_t Picoseconds = 0;
    std::uint8_t Value = 0;

    friend bool operator==(const VcdChange&, const VcdChange&) = default;
};

/// A value change dump, its signals laid out on channels: in the order of their declarations, the bits of a
/// vector from the lowest on. A second declaration of a signal takes no channel, nor do reals, and what goes
/// beyond the last channel is left out.
struct VcdRecording {
    std::vector<std::string> Channels;  ///< names; bits of a vector as "name[3]"
    std::array<std::vector<VcdChange>, kMaxPods> Pods;
    std::int64_t Picoseconds = 0;  ///< from the first time stamp to the last, at least 1
};

/// Unknown levels count as low, high impedance as high. Nothing for a text that declares no signal.
std::optional<VcdRecording> ParseVcd(std::string_view text);
/// Nothing as well for a file that cannot be read or is larger than 256 MB.
std::optional<VcdRecording> ReadVcd(const std::string& path);

}  // namespace zu
