#pragma once

#include <array>
#include <cstdint>

#include "display/ByteScan.h"

namespace zu {

/// The channels of a group that lie in one pod.
struct GroupPart {
    ByteRun Run;
    std::uint8_t Mask = 0;                  ///< bits of the pod that belong to the group
    std::array<std::uint32_t, 256> Word{};  ///< the group's word from this pod's byte
};

/// Least and greatest of words that order as the group's numbers do.
struct WordExtent {
    std::uint32_t Least = UINT32_MAX;
    std::uint32_t Most = 0;
    void Take(std::uint32_t word) {
        Least = word < Least ? word : Least;
        Most = word > Most ? word : Most;
    }
};

}  // namespace zu
