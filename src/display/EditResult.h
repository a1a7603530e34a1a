#pragma once

#include <array>
#include <string>
#include <string_view>

#include "state/Limits.h"

namespace zu {

/// Which rows of a multi-select list are selected; flags behind the list's last row count for nothing.
using Selection = std::array<bool, kLineSlots>;

/// What an edit of channels, groups or lines did and what must follow it.
struct EditResult {
    bool Changed = false;       ///< at least one record was edited
    std::string Text{};         ///< message to show; empty = none
    std::string_view Title{};   ///< caption of the message
    bool DecodeSpi = false;     ///< the SPI decoder must run, then its view be redrawn
    bool DecodeSerial = false;  ///< the decoder of the serial mode must run
    [[nodiscard]] bool HasMessage() const { return !Text.empty(); }
    /// All views are redrawn after any change, pattern editor and threshold window included.
    [[nodiscard]] bool MustRefresh() const { return Changed; }
};

}  // namespace zu
