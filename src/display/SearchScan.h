#pragma once

#include <bit>
#include <cstdint>

#include "display/ByteScan.h"

namespace zu {

/// Scans that compare 64 samples at once; results have bit i for the i-th byte.
namespace scan {

/// Bytes of at[0..63] that equal `value` under `mask`.
inline std::uint64_t PlainEqual64(const std::uint8_t* at, std::uint8_t mask, std::uint8_t value) {
    std::uint64_t equal = 0;
    for (unsigned i = 0; i < 64; ++i) equal |= std::uint64_t{(at[i] & mask) == value} << i;
    return equal;
}

#if defined(__SSE2__)
inline std::uint64_t Equal64(const std::uint8_t* at, std::uint8_t mask, std::uint8_t value) {
    const __m128i masks = _mm_set1_epi8(static_cast<char>(mask));
    const __m128i values = _mm_set1_epi8(static_cast<char>(value));
    std::uint64_t equal = 0;
    for (unsigned i = 0; i < 4; ++i) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * i));
        const int same = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(bytes, masks), values));
        equal |= static_cast<std::uint64_t>(static_cast<unsigned>(same)) << (16 * i);
    }
    return equal;
}
#else
inline std::uint64_t Equal64(const std::uint8_t* at, std::uint8_t mask, std::uint8_t value) {
    return PlainEqual64(at, mask, value);
}
#endif

}  // namespace scan
}  // namespace zu
