#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "display/Canvas.h"
#include "display/EditResult.h"
#include "state/InstrumentState.h"

namespace zu {

inline constexpr int kChannelsPerPage = 8;
inline constexpr int kChannelNameTyped = 19;  ///< characters of a name that may be typed

/// The channel dialog: names are edited in copies that Accept stores, inversion and colour take effect at
/// once.
class ChannelNameEdit {
  public:
    explicit ChannelNameEdit(InstrumentState& state);

    /// Eight channels a page.
    [[nodiscard]] int PageCount() const;
    /// "1A" on the pod families, "0..7" on the others.
    [[nodiscard]] std::string PageText(int page) const;
    [[nodiscard]] std::string_view Name(int channel) const;
    /// Keeps at most kChannelNameTyped characters.
    void SetName(int channel, std::string_view name);
    /// Default names into the copies; the inversion of the channels that have one ends at once.
    EditResult Reset();
    /// Stores all names, cut to kChannelNameTyped.
    EditResult Accept();

  private:
    InstrumentState& state_;
    std::array<Text<kChannelNameTyped + 1>, kMaxChannels> names_;
};

/// Inverts a channel or ends its inversion. Samples in memory stay as they are; names, trigger words and
/// searches follow at once, samples with the next capture.
EditResult ToggleChannelInvert(InstrumentState& state, int channel);
EditResult SetChannelColor(InstrumentState& state, int channel, Rgb color);

/// A small trace for a box of this size: edges at a quarter and three quarters of the width, amplitude nine
/// tenths of the height.
std::array<Point, 6> TraceExample(std::int32_t width, std::int32_t height, bool inverted);

}  // namespace zu
