#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "state/SampleView.h"

namespace zu {

/// One channel of a bound pod. Raw values are the channel's bit as it stands in the pod's byte.
struct Line {
    SampleView View;
    std::uint8_t Mask = 0;

    [[nodiscard]] std::uint8_t Raw(std::int64_t i) const {
        return static_cast<std::uint8_t>(View.At(i) & Mask);
    }
    [[nodiscard]] bool High(std::int64_t i) const { return Raw(i) != 0; }
};

/// The line of a channel as it is displayed; without samples for a channel outside 0..159.
inline Line BindLine(const InstrumentState& state, int channel) {
    const SampleView view = BindChannel(state, channel);
    const auto bit = view.Data == nullptr ? 0U : static_cast<unsigned>(channel) % 8U;
    return {view, static_cast<std::uint8_t>(1U << bit)};
}

namespace scan {

inline constexpr std::int32_t kWordBytes = 8;
inline constexpr std::uint64_t kEachByte = 0x0101010101010101;

inline std::uint64_t LoadWord(const void* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}
/// Index of the first byte in memory order that is not zero; the word is not zero.
inline int FirstByte(std::uint64_t word) {
    return (std::endian::native == std::endian::little ? std::countr_zero(word) : std::countl_zero(word)) / 8;
}
/// Index of the last byte in memory order that is not zero; the word is not zero.
inline int LastByte(std::uint64_t word) {
    return 7 -
           (std::endian::native == std::endian::little ? std::countl_zero(word) : std::countr_zero(word)) / 8;
}

}  // namespace scan

/// First index in [from, to) at which line `a` differs from `aRaw` or line `b` from `bRaw`; `to` if there is
/// none. `from` is not negative. Samples beyond what is stored are 0.
inline std::int32_t FindChange(const Line& a, std::uint8_t aRaw, const Line& b, std::uint8_t bRaw,
                               std::int32_t from, std::int32_t to) {
    const std::int32_t stored = std::min({a.View.Stored, b.View.Stored, to});
    const std::uint64_t aMask = scan::kEachByte * a.Mask;
    const std::uint64_t bMask = scan::kEachByte * b.Mask;
    const std::uint64_t aWord = scan::kEachByte * aRaw;
    const std::uint64_t bWord = scan::kEachByte * bRaw;
    for (; stored - from >= scan::kWordBytes; from += scan::kWordBytes) {
        const std::uint64_t changed = ((scan::LoadWord(a.View.Data + from) & aMask) ^ aWord) |
                                      ((scan::LoadWord(b.View.Data + from) & bMask) ^ bWord);
        if (changed != 0) return from + scan::FirstByte(changed);
    }
    for (; from < to; ++from) {
        if (from >= a.View.Stored && from >= b.View.Stored) return (aRaw | bRaw) == 0 ? to : from;
        if (a.Raw(from) != aRaw || b.Raw(from) != bRaw) return from;
    }
    return to;
}

/// The same for one line.
inline std::int32_t FindChange(const Line& line, std::uint8_t raw, std::int32_t from, std::int32_t to) {
    return FindChange(line, raw, line, raw, from, to);
}

}  // namespace zu
