#pragma once

#include <cstdint>

#include "state/InstrumentState.h"

namespace zu {

/// The displayed bytes of one pod: capture pods from their trigger alignment on, pattern pods from address 0.
/// Bind it once for a loop; every read is bounded.
struct SampleView {
    const std::uint8_t* Data = nullptr;  ///< byte of display index 0
    std::int32_t Stored = 0;             ///< bytes that may be read at Data
    std::int32_t Shown = 0;              ///< displayable samples; may exceed Stored, reads beyond yield 0

    /// Byte at display index i; 0 outside what is stored.
    [[nodiscard]] std::uint8_t At(std::int64_t i) const {
        return i >= 0 && i < Stored ? Data[i] : std::uint8_t{0};
    }
    /// Whether the pod has a sample at display index i.
    [[nodiscard]] bool Has(std::int64_t i) const { return i >= 0 && i < Shown; }
};

/// View of a pod; empty for a pod outside 0..19, without memory, or with length 0.
SampleView BindPod(const InstrumentState& state, int pod);
/// View of the pod that holds a channel; empty for a channel outside 0..159.
SampleView BindChannel(const InstrumentState& state, int channel);

}  // namespace zu
