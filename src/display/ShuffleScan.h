#pragma once

#include <cstdint>
#include <vector>

#include "display/GroupPart.h"

namespace zu {

/// Finds least and greatest words of a group sixteen samples at a time, whatever the order of its bits: each
/// half of a pod's byte is looked up in tables that the processor shuffles by.
class ShuffleScan {
  public:
    /// Whether this processor can.
    static bool Possible();

    /// `bits` of the words are in use, 1 to 32.
    ShuffleScan(const std::vector<GroupPart>& parts, std::int32_t bits);

    /// Takes the words of whole blocks of sixteen samples in [from, to), each turned over by `bias`; every
    /// part has these samples stored. Returns the first sample that was not taken.
    std::int64_t Take(WordExtent& extent, std::uint32_t bias, std::int64_t from, std::int64_t to) const;

  private:
    static constexpr std::size_t kWordBytes = 4;
    struct Lookup {
        const std::uint8_t* Data = nullptr;
        alignas(16) std::uint8_t Low[kWordBytes][16]{};   ///< a byte of the word by the pod byte's lower half
        alignas(16) std::uint8_t High[kWordBytes][16]{};  ///< and by its upper half
        bool Used[kWordBytes]{};                          ///< bytes of the word that the pod has bits of
    };
    /// Makes the tables of one byte of the word.
    static void Fill(Lookup& lookup, const GroupPart& part, std::size_t byte);
    template <std::size_t Bytes>
    std::int64_t TakeWords(WordExtent& extent, std::uint32_t bias, std::int64_t from, std::int64_t to) const;

    std::vector<Lookup> lookups_;
    std::int32_t bits_;
};

}  // namespace zu
