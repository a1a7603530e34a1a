#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "display/GroupPart.h"
#include "display/ShuffleScan.h"
#include "state/InstrumentState.h"

namespace zu {

/// Scans a group's samples pod by pod, many samples at a time.
class GroupScan {
  public:
    /// `shuffles` is off in tests of what other processors do.
    GroupScan(const InstrumentState& state, const GroupRecord& group,
              bool shuffles = ShuffleScan::Possible());

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

  private:
    void Add(const InstrumentState& state, std::int32_t channel, std::int32_t bit);
    [[nodiscard]] std::uint32_t WordAt(std::int64_t i) const;
    [[nodiscard]] bool DisagreesAt(std::int64_t i) const;
    [[nodiscard]] std::int64_t Number(std::uint32_t biased) const;
    void TakeWords(WordExtent& extent, std::int64_t from, std::int64_t to) const;

    std::vector<GroupPart> parts_;
    std::int64_t length_ = 0;
    std::int64_t stored_ = 0;  ///< samples that every pod has stored
    std::int64_t any_ = 0;     ///< samples that some pod has stored; behind them all is 0
    std::int32_t bits_ = 0;    ///< of the number
    std::uint32_t bias_ = 0;   ///< turns the sign bit over, so that words order as numbers do
    std::optional<ShuffleScan> shuffles_;
};

}  // namespace zu
