#pragma once

#include <cstdint>

#include "display/Canvas.h"
#include "display/Events.h"
#include "state/InstrumentState.h"

namespace zu {

/// Samples of one unit of a scroll bar.
std::int32_t ScrollUnit(std::int32_t displayLen);
ScrollRange HorizontalRange(const InstrumentState& state);
ScrollRange VerticalRange(const InstrumentState& state);

/// What a scroll needs to know of the window.
struct ScrollWindow {
    std::int32_t Height = 0;     ///< client pixels
    std::int32_t DataWidth = 0;  ///< pixels right of the columns
    Metrics Fonts;
};

/// Moves TimingDataPos or TimingChPos and makes the Timing view the active one. The caller redraws it, and
/// the pattern editor, the Statelist and the serial view where they are open.
void ScrollTiming(InstrumentState& state, const ScrollEvent& event, const ScrollWindow& window);

/// Sets TimingDataPos within what a move may reach: not below 0, not beyond the data, a tenth of a screen
/// stays in view.
void MoveView(InstrumentState& state, std::int64_t position, std::int64_t visible);
/// Sets TimingChPos, passing over lines without data in the direction of the move.
void MoveToLine(InstrumentState& state, std::int64_t line);

/// Lines that fit into the window from the first shown one on.
std::int32_t LinesThatFit(const InstrumentState& state, const ScrollWindow& window);

}  // namespace zu
