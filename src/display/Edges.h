#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "state/InstrumentState.h"
#include "state/SampleView.h"

namespace zu {

/// The channels that one row shows, as bits of pods: what its edges are.
class RowSignal {
  public:
    /// Of a line source: a channel or a group. Empty for a spacer and for channels that do not exist.
    RowSignal(const InstrumentState& state, std::int32_t source);

    [[nodiscard]] bool Empty() const { return parts_.empty(); }
    /// Samples that all its channels have.
    [[nodiscard]] std::int64_t Length() const { return length_; }
    /// First sample after `from` at which the row differs from sample `from`; nothing up to the end.
    [[nodiscard]] std::optional<std::int64_t> Next(std::int64_t from) const;
    /// Sample at which the value of sample `from` began, at or before `from`; nothing if it began before the
    /// first sample.
    [[nodiscard]] std::optional<std::int64_t> Begin(std::int64_t from) const;
    /// The change nearest to a sample, at most `reach` away; the earlier of two.
    [[nodiscard]] std::optional<std::int64_t> Nearest(std::int64_t at, std::int64_t reach) const;

  private:
    struct Part {
        SampleView View;
        std::uint8_t Mask = 0;
    };
    void Add(const InstrumentState& state, std::int32_t channel);

    std::vector<Part> parts_;
    std::int64_t length_ = 0;
};

}  // namespace zu
