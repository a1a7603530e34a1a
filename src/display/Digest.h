#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "display/TimeAxis.h"
#include "state/InstrumentState.h"

namespace zu {

/// What the samples of one pod do in each pixel column of a zoom below 0. One pass over the bytes serves all
/// eight channels.
struct ColumnDigest {
    std::int64_t Columns = 0;           ///< pixel columns with data
    std::uint8_t First = 0;             ///< first byte of the first column
    std::vector<std::uint8_t> Changed;  ///< per column: bits that left the level the column before ended at
    std::vector<std::uint8_t> Last;     ///< per column: its last byte
};

/// Digests of the pods on show, made when first asked for and good for one paint.
class DigestSet {
  public:
    /// Forgets all digests; the next ones are of this axis.
    void Begin(const TimeAxis& axis);
    const ColumnDigest& Of(const InstrumentState& state, int pod);

  private:
    TimeAxis axis_;
    std::array<ColumnDigest, kMaxPods> digests_;
    std::array<bool, kMaxPods> made_{};
};

/// Where the pixel columns of a zoom below 0 lie: whole columns, aligned to their width in samples so that a
/// picture does not shimmer while it scrolls.
struct ColumnGrid {
    std::int64_t Start = 0;    ///< first sample of the first column
    std::int64_t Width = 1;    ///< samples per column
    std::int64_t Columns = 0;  ///< columns that lie inside the data
};
ColumnGrid GridOf(const TimeAxis& axis, std::int64_t length);

}  // namespace zu
