#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "display/ByteScan.h"
#include "state/InstrumentState.h"

namespace zu {

/// The channels of a group that lie in one pod.
struct GroupPart {
    ByteRun Run;
    std::uint8_t Mask = 0;                  ///< bits of the pod that belong to the group
    std::array<std::uint32_t, 256> Word{};  ///< the group's word from this pod's byte
};

/// Scans a group's samples pod by pod, many samples at a time.
class GroupScan {
  public:
    GroupScan(const InstrumentState& state, const GroupRecord& group);

    /// Samples that every channel has; 0 for a group without channels or with one that the model lacks.
    [[nodiscard]] std::int64_t Length() const { return length_; }
    /// The group's number at a sample, by TwosComplement.
    [[nodiscard]] std::int64_t At(std::int64_t i) const;
    /// Whether at some sample of [from, to) some channels, but not all, are 1.
    [[nodiscard]] bool Disagrees(std::int64_t from, std::int64_t to) const;

    struct Extent {
        std::int64_t Minimum = 0;
        std::int64_t Maximum = 0;
    };
    /// Least and greatest number in [from, to), which is not empty.
    [[nodiscard]] Extent ExtentOf(std::int64_t from, std::int64_t to) const;

    /// Least and greatest of words that order as the numbers do.
    struct WordExtent {
        std::uint32_t Least = UINT32_MAX;
        std::uint32_t Most = 0;
        void Take(std::uint32_t word) {
            Least = word < Least ? word : Least;
            Most = word > Most ? word : Most;
        }
    };

  private:
    void Add(const InstrumentState& state, std::int32_t channel, std::int32_t bit);
    [[nodiscard]] std::uint32_t WordAt(std::int64_t i) const;
    [[nodiscard]] bool DisagreesAt(std::int64_t i) const;
    [[nodiscard]] std::int64_t Number(std::uint32_t biased) const;
    /// Groups whose bits stand in the pods as in the number: their words need no table.
    enum class Order : std::uint8_t { Mixed, OneByte, TwoBytes };
    [[nodiscard]] Order OrderOfParts() const;
    void TakeMixed(WordExtent& extent, std::int64_t from, std::int64_t to) const;

    std::vector<GroupPart> parts_;
    std::int64_t length_ = 0;
    std::int64_t stored_ = 0;  ///< samples that every pod has stored
    std::int64_t any_ = 0;     ///< samples that some pod has stored; behind them all is 0
    std::int32_t bits_ = 0;    ///< of the number
    Order order_ = Order::Mixed;
    std::uint32_t bias_ = 0;  ///< turns the sign bit over, so that words order as numbers do
};

}  // namespace zu
