#include "display/ShuffleScan.h"

#include <array>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#include <smmintrin.h>
#define ZU_SHUFFLES
#endif

namespace zu {

ShuffleScan::ShuffleScan(const std::vector<GroupPart>& parts, std::int32_t bits) : bits_(bits) {
    lookups_.resize(parts.size());
    for (std::size_t p = 0; p < parts.size(); ++p) {
        lookups_[p].Data = parts[p].Run.Data;
        for (std::size_t byte = 0; byte < kWordBytes; ++byte) Fill(lookups_[p], parts[p], byte);
    }
}

void ShuffleScan::Fill(Lookup& lookup, const GroupPart& part, std::size_t byte) {
    const auto ofWord = [&](std::size_t podByte) {
        return static_cast<std::uint8_t>(part.Word[podByte] >> (8 * byte));
    };
    for (std::size_t half = 0; half < 16; ++half) {
        lookup.Low[byte][half] = ofWord(half);
        lookup.High[byte][half] = ofWord(half << 4U);
    }
    lookup.Used[byte] = ofWord(0xFF) != 0;
}

#if defined(ZU_SHUFFLES)

// Processors of the last fifteen years have these instructions, but the build must not presume them.
#define ZU_SSE41 __attribute__((target("sse4.1")))

namespace {

constexpr std::int64_t kBlock = 16;

template <typename Lane>
void TakeLanes(WordExtent& extent, const __m128i& lanes) {
    std::array<Lane, 16 / sizeof(Lane)> each;
    std::memcpy(each.data(), &lanes, sizeof lanes);
    for (const Lane lane : each) extent.Take(lane);
}

/// Least and greatest of lanes as wide as the words.
template <std::size_t Bytes>
struct Lanes;

template <>
struct Lanes<1> {
    using Lane = std::uint8_t;
    __m128i Least, Most;
    ZU_SSE41 void Take(const __m128i* planes) {
        Least = _mm_min_epu8(Least, planes[0]);
        Most = _mm_max_epu8(Most, planes[0]);
    }
};

template <>
struct Lanes<2> {
    using Lane = std::uint16_t;
    __m128i Least, Most;
    ZU_SSE41 void Take(const __m128i* planes) {
        const __m128i a = _mm_unpacklo_epi8(planes[0], planes[1]);
        const __m128i b = _mm_unpackhi_epi8(planes[0], planes[1]);
        Least = _mm_min_epu16(Least, _mm_min_epu16(a, b));
        Most = _mm_max_epu16(Most, _mm_max_epu16(a, b));
    }
};

template <>
struct Lanes<4> {
    using Lane = std::uint32_t;
    __m128i Least, Most;
    ZU_SSE41 void Take(const __m128i* planes) {
        TakeHalf(_mm_unpacklo_epi8(planes[0], planes[1]), _mm_unpacklo_epi8(planes[2], planes[3]));
        TakeHalf(_mm_unpackhi_epi8(planes[0], planes[1]), _mm_unpackhi_epi8(planes[2], planes[3]));
    }
    ZU_SSE41 void TakeHalf(const __m128i& lower, const __m128i& upper) {
        const __m128i a = _mm_unpacklo_epi16(lower, upper);
        const __m128i b = _mm_unpackhi_epi16(lower, upper);
        Least = _mm_min_epu32(Least, _mm_min_epu32(a, b));
        Most = _mm_max_epu32(Most, _mm_max_epu32(a, b));
    }
};

}  // namespace

bool ShuffleScan::Possible() {
    static const bool possible = __builtin_cpu_supports("sse4.1") != 0;
    return possible;
}

template <std::size_t Bytes>
ZU_SSE41 std::int64_t ShuffleScan::TakeWords(WordExtent& extent, std::uint32_t bias, std::int64_t from,
                                             std::int64_t to) const {
    if (to - from < kBlock) return from;
    const __m128i half = _mm_set1_epi8(0x0F);
    Lanes<Bytes> lanes{_mm_set1_epi8(-1), _mm_setzero_si128()};
    for (; to - from >= kBlock; from += kBlock) {
        __m128i planes[Bytes];
        for (std::size_t k = 0; k < Bytes; ++k)
            planes[k] = _mm_set1_epi8(static_cast<char>(bias >> (8 * k) & 0xFFU));
        for (const Lookup& lookup : lookups_) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(lookup.Data + from));
            const __m128i low = _mm_and_si128(bytes, half);
            const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), half);
            for (std::size_t k = 0; k < Bytes; ++k) {
                if (!lookup.Used[k]) continue;
                const __m128i a = _mm_load_si128(reinterpret_cast<const __m128i*>(lookup.Low[k]));
                const __m128i b = _mm_load_si128(reinterpret_cast<const __m128i*>(lookup.High[k]));
                const __m128i word = _mm_or_si128(_mm_shuffle_epi8(a, low), _mm_shuffle_epi8(b, high));
                planes[k] = _mm_xor_si128(planes[k], word);
            }
        }
        lanes.Take(planes);
    }
    TakeLanes<typename Lanes<Bytes>::Lane>(extent, lanes.Least);
    TakeLanes<typename Lanes<Bytes>::Lane>(extent, lanes.Most);
    return from;
}

std::int64_t ShuffleScan::Take(WordExtent& extent, std::uint32_t bias, std::int64_t from,
                               std::int64_t to) const {
    if (bits_ <= 8) return TakeWords<1>(extent, bias, from, to);
    if (bits_ <= 16) return TakeWords<2>(extent, bias, from, to);
    return TakeWords<4>(extent, bias, from, to);
}

#else

bool ShuffleScan::Possible() {
    return false;
}

std::int64_t ShuffleScan::Take(WordExtent&, std::uint32_t, std::int64_t from, std::int64_t) const {
    return from;
}

#endif

}  // namespace zu
