#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zu {

/// Scans of sample bytes under a mask: wide, bounded by `end`, without a call inside. The plain forms do the
/// same byte by byte; they serve short rests and machines without the wide ones.
namespace scan {

/// First byte in [at, end) whose bits under `mask` are not `value`; `end` if there is none.
inline const std::uint8_t* PlainDifference(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t mask,
                                           std::uint8_t value) {
    while (at != end && (*at & mask) == value) ++at;
    return at;
}

/// Last byte in [begin, at) whose bits under `mask` are not `value`; null if there is none.
inline const std::uint8_t* PlainDifferenceBack(const std::uint8_t* begin, const std::uint8_t* at,
                                               std::uint8_t mask, std::uint8_t value) {
    while (at != begin) {
        if ((*--at & mask) != value) return at;
    }
    return nullptr;
}

/// Eight bytes at a time.
inline const std::uint8_t* WordDifference(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t mask,
                                          std::uint8_t value) {
    constexpr std::uint64_t kEach = 0x0101010101010101ULL;
    const std::uint64_t masks = kEach * mask;
    const std::uint64_t values = kEach * value;
    while (end - at >= 32) {
        std::uint64_t w[4];
        std::memcpy(w, at, sizeof w);
        const std::uint64_t differ =
            ((w[0] ^ values) | (w[1] ^ values) | (w[2] ^ values) | (w[3] ^ values)) & masks;
        if (differ != 0) break;
        at += sizeof w;
    }
    return PlainDifference(at, end, mask, value);
}

/// Bits that any byte of [at, end) has unlike `value`.
inline std::uint8_t PlainChanges(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t value) {
    unsigned differ = 0;
    for (; at != end; ++at) differ |= static_cast<unsigned>(*at ^ value);
    return static_cast<std::uint8_t>(differ);
}

/// 64 bits: bit i is set where a bit under `mask` of at[i] is; 64 bytes are read.
inline std::uint64_t PlainLevels(const std::uint8_t* at, std::uint8_t mask) {
    std::uint64_t levels = 0;
    for (unsigned i = 0; i < 64; ++i) levels |= std::uint64_t{(at[i] & mask) != 0} << i;
    return levels;
}

#if defined(__SSE2__)

inline const std::uint8_t* WideDifference(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t mask,
                                          std::uint8_t value) {
    const __m128i masks = _mm_set1_epi8(static_cast<char>(mask));
    const __m128i values = _mm_set1_epi8(static_cast<char>(value));
    const __m128i zero = _mm_setzero_si128();
    const auto load = [](const std::uint8_t* p) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    };
    const auto same = [&](__m128i differ) {
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(differ, masks), zero)));
    };
    while (end - at >= 64) {
        const __m128i a = _mm_xor_si128(load(at), values);
        const __m128i b = _mm_xor_si128(load(at + 16), values);
        const __m128i c = _mm_xor_si128(load(at + 32), values);
        const __m128i d = _mm_xor_si128(load(at + 48), values);
        if (same(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) != 0xFFFF) break;
        at += 64;
    }
    while (end - at >= 16) {
        const unsigned equal = same(_mm_xor_si128(load(at), values));
        if (equal != 0xFFFF) return at + std::countr_one(equal);
        at += 16;
    }
    return PlainDifference(at, end, mask, value);
}

inline const std::uint8_t* WideDifferenceBack(const std::uint8_t* begin, const std::uint8_t* at,
                                              std::uint8_t mask, std::uint8_t value) {
    const __m128i masks = _mm_set1_epi8(static_cast<char>(mask));
    const __m128i values = _mm_set1_epi8(static_cast<char>(value));
    while (at - begin >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at - 16));
        const __m128i equal = _mm_cmpeq_epi8(_mm_and_si128(bytes, masks), values);
        const unsigned differ = static_cast<unsigned>(_mm_movemask_epi8(equal)) ^ 0xFFFFU;
        if (differ != 0) return at - 16 + (std::bit_width(differ) - 1);
        at -= 16;
    }
    return PlainDifferenceBack(begin, at, mask, value);
}

inline std::uint8_t WideChanges(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t value) {
    const __m128i values = _mm_set1_epi8(static_cast<char>(value));
    const auto differ = [&](const std::uint8_t* p) {
        return _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), values);
    };
    __m128i any = _mm_setzero_si128();
    for (; end - at >= 64; at += 64) {
        const __m128i low = _mm_or_si128(differ(at), differ(at + 16));
        any = _mm_or_si128(any, _mm_or_si128(low, _mm_or_si128(differ(at + 32), differ(at + 48))));
    }
    for (; end - at >= 16; at += 16) any = _mm_or_si128(any, differ(at));
    std::uint64_t halves[2];
    std::memcpy(halves, &any, sizeof halves);
    std::uint64_t bits = halves[0] | halves[1];
    bits |= bits >> 32;
    bits |= bits >> 16;
    bits |= bits >> 8;
    return static_cast<std::uint8_t>(bits | PlainChanges(at, end, value));
}

inline std::uint64_t WideLevels(const std::uint8_t* at, std::uint8_t mask) {
    const __m128i masks = _mm_set1_epi8(static_cast<char>(mask));
    const __m128i zero = _mm_setzero_si128();
    std::uint64_t low = 0;
    for (unsigned i = 0; i < 4; ++i) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * i));
        const int equal = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(bytes, masks), zero));
        low |= static_cast<std::uint64_t>(static_cast<unsigned>(equal)) << (16 * i);
    }
    return ~low;
}

#else

inline const std::uint8_t* WideDifference(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t mask,
                                          std::uint8_t value) {
    return WordDifference(at, end, mask, value);
}
inline const std::uint8_t* WideDifferenceBack(const std::uint8_t* begin, const std::uint8_t* at,
                                              std::uint8_t mask, std::uint8_t value) {
    return PlainDifferenceBack(begin, at, mask, value);
}
inline std::uint8_t WideChanges(const std::uint8_t* at, const std::uint8_t* end, std::uint8_t value) {
    return PlainChanges(at, end, value);
}
inline std::uint64_t WideLevels(const std::uint8_t* at, std::uint8_t mask) {
    return PlainLevels(at, mask);
}

#endif

}  // namespace scan

/// Bytes of one pod at display indexes, for scans: what is stored, and zeros behind it.
struct ByteRun {
    const std::uint8_t* Data = nullptr;
    std::int64_t Stored = 0;

    [[nodiscard]] std::uint8_t At(std::int64_t i, std::uint8_t mask) const {
        return i >= 0 && i < Stored ? static_cast<std::uint8_t>(Data[i] & mask) : std::uint8_t{0};
    }
    /// Bits that any byte of [from, to) has unlike `value`.
    [[nodiscard]] std::uint8_t Changes(std::int64_t from, std::int64_t to, std::uint8_t value) const {
        const std::int64_t real = to < Stored ? to : Stored;
        std::uint8_t differ =
            from < real ? scan::WideChanges(Data + from, Data + real, value) : std::uint8_t{0};
        if (to > Stored) differ |= value;  // the zeros behind what is stored
        return differ;
    }
    /// First index of the run of equal bits under `mask` that holds `at`, not below `from`.
    [[nodiscard]] std::int64_t BeginOf(std::int64_t at, std::int64_t from, std::uint8_t mask) const {
        const std::uint8_t value = At(at, mask);
        std::int64_t real = at;
        if (at >= Stored) {
            // The zeros behind what is stored go on from zeros in it.
            if (Stored <= from || value != At(Stored - 1, mask)) return Stored > from ? Stored : from;
            real = Stored - 1;
        }
        if (real <= from) return from;
        const std::uint8_t* found = scan::WideDifferenceBack(Data + from, Data + real, mask, value);
        return found == nullptr ? from : found - Data + 1;
    }
    /// First index in [from, to) whose bits under `mask` are not `value`; `to` if there is none.
    [[nodiscard]] std::int64_t Differs(std::int64_t from, std::int64_t to, std::uint8_t mask,
                                       std::uint8_t value) const {
        const std::int64_t real = to < Stored ? to : Stored;
        if (from < real) {
            const std::uint8_t* found = scan::WideDifference(Data + from, Data + real, mask, value);
            if (found != Data + real) return found - Data;
            from = real;
        }
        return value == 0 || from >= to ? to : from;
    }
};

}  // namespace zu
