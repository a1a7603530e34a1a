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
inline constexpr std::int32_t kBlock = 64;  ///< samples whose levels make one word of bits

/// Eight bytes as a number whose lowest byte is the first in memory.
inline std::uint64_t LoadWord(const void* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
}
/// Index of the first byte that is not zero; the word is not zero.
inline int FirstByte(std::uint64_t word) {
    return std::countr_zero(word) / 8;
}
/// Index of the last byte that is not zero; the word is not zero.
inline int LastByte(std::uint64_t word) {
    return 7 - std::countl_zero(word) / 8;
}
/// The lowest bits of eight bytes, side by side; all other bits of the bytes are 0.
inline std::uint64_t GatherBits(std::uint64_t word) {
    // The product moves bit 8i to bit 56 + i, and no two of its terms meet.
    return (word * 0x0102040810204080U) >> 56U;
}

}  // namespace scan

/// Levels of 64 samples, bit i for sample `base` + i. Samples beyond what is stored are 0.
inline std::uint64_t Levels64(const Line& line, std::int32_t base) {
    constexpr std::uint64_t kEachByte = 0x0101010101010101U;
    const auto shift = static_cast<unsigned>(std::countr_zero(line.Mask));
    std::uint64_t levels = 0;
    if (line.View.Stored - base >= scan::kBlock) {
        for (unsigned i = 0; i < 8; ++i) {
            const std::uint64_t word = scan::LoadWord(line.View.Data + base + 8 * i);
            levels |= scan::GatherBits((word >> shift) & kEachByte) << (8 * i);
        }
        return levels;
    }
    for (std::int32_t i = 0; i < line.View.Stored - base; ++i) {
        levels |= std::uint64_t{line.High(base + i) ? 1U : 0U} << i;
    }
    return levels;
}

/// Two lines, 64 samples at a time. Sample numbers given to it are not negative.
class PairScan {
  public:
    PairScan(const Line& first, const Line& second) : first_(first), second_(second) {}

    /// Makes the block that holds a sample the present one and returns the block's first sample.
    std::int32_t Load(std::int32_t sample) {
        const std::int32_t base = sample - sample % scan::kBlock;
        if (base == base_) return base;
        base_ = base;
        firstLevels_ = Levels64(first_, base);
        secondLevels_ = Levels64(second_, base);
        return base;
    }
    /// Levels in the present block.
    [[nodiscard]] std::uint64_t First() const { return firstLevels_; }
    [[nodiscard]] std::uint64_t Second() const { return secondLevels_; }

    /// First sample in [from, to) at which the first line is at a level; `to` if there is none.
    std::int32_t FindFirst(bool level, std::int32_t from, std::int32_t to) {
        return Find(from, to, [this, level] { return level ? firstLevels_ : ~firstLevels_; });
    }
    /// The same for the second line.
    std::int32_t FindSecond(bool level, std::int32_t from, std::int32_t to) {
        return Find(from, to, [this, level] { return level ? secondLevels_ : ~secondLevels_; });
    }

  private:
    template <typename Wanted>
    std::int32_t Find(std::int32_t from, std::int32_t to, Wanted wanted) {
        while (from < to) {
            const std::int32_t inBlock = from - Load(from);
            const std::int32_t step =
                std::min({std::countr_zero(wanted() >> inBlock), scan::kBlock - inBlock, to - from});
            from += step;
            if (inBlock + step < scan::kBlock) return from;
        }
        return to;
    }

    const Line& first_;
    const Line& second_;
    std::int32_t base_ = -1;
    std::uint64_t firstLevels_ = 0;
    std::uint64_t secondLevels_ = 0;
};

}  // namespace zu
