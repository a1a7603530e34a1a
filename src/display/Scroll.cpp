#include "display/Scroll.h"

#include <algorithm>

#include "display/Lines.h"
#include "display/TimeAxis.h"

namespace zu {
namespace {

constexpr std::int32_t kLongDisplay = 0xFFFFF;
constexpr std::uint8_t kTimingActive = 0;

std::int64_t VisibleOf(const InstrumentState& state, const ScrollWindow& window) {
    return SamplesInPixels(window.DataWidth, state.Timing.ScreenZoom);
}

std::int64_t HorizontalTarget(const InstrumentState& state, const ScrollEvent& event,
                              const ScrollWindow& window) {
    const std::int64_t at = state.Timing.TimingDataPos;
    switch (event.Code) {
        case ScrollCode::LineBack:
            return at - 1;
        case ScrollCode::LineForward:
            return at + 1;
        case ScrollCode::PageBack:
            return at - VisibleOf(state, window) / 4;
        case ScrollCode::PageForward:
            return at + VisibleOf(state, window) / 4;
        case ScrollCode::Top:
            return at - window.Height;  // by the window's height in samples, not to sample 0
        case ScrollCode::Bottom:
            return at + state.Memory.DisplayLen;
        case ScrollCode::Thumb:
            return std::int64_t{event.Thumb} * ScrollUnit(state.Memory.DisplayLen);
    }
    return at;
}

std::int64_t VerticalTarget(const InstrumentState& state, const ScrollEvent& event,
                            const ScrollWindow& window) {
    const std::int64_t at = state.Timing.TimingChPos;
    const std::int64_t page = std::max(LinesThatFit(state, window) / 2, 1);
    switch (event.Code) {
        case ScrollCode::LineBack:
            return at - 1;
        case ScrollCode::LineForward:
            return at + 1;
        case ScrollCode::PageBack:
            return at - page;
        case ScrollCode::PageForward:
            return at + page;
        case ScrollCode::Top:
            return at - window.Height;
        case ScrollCode::Bottom:
            return at + LineCount(state);
        case ScrollCode::Thumb:
            return event.Thumb;
    }
    return at;
}

}  // namespace

std::int32_t ScrollUnit(std::int32_t displayLen) {
    return displayLen < kLongDisplay ? 32 : 256;
}

ScrollRange HorizontalRange(const InstrumentState& state) {
    const std::int32_t unit = ScrollUnit(state.Memory.DisplayLen);
    return {0, std::max(state.Memory.DisplayLen, 0) / unit, std::max(state.Timing.TimingDataPos, 0) / unit};
}

ScrollRange VerticalRange(const InstrumentState& state) {
    return {0, LineCount(state), FirstLine(state)};
}

void MoveView(InstrumentState& state, std::int64_t position, std::int64_t visible) {
    const std::int64_t length = state.Memory.DisplayLen;
    if (position >= length - 2) position = length - 3;
    position = std::min(position, (10 * length - std::max<std::int64_t>(visible, 0)) / 10);
    state.Timing.TimingDataPos = static_cast<std::int32_t>(std::clamp<std::int64_t>(position, 0, INT32_MAX));
}

void MoveToLine(InstrumentState& state, std::int64_t line) {
    const std::int64_t count = LineCount(state);
    const std::int64_t step = line < state.Timing.TimingChPos ? -1 : 1;
    while (line > 0 && line < count && !LineShown(state, static_cast<std::int32_t>(line))) line += step;
    line = std::clamp<std::int64_t>(line, 0, std::max<std::int64_t>(count - 1, 0));
    state.Timing.TimingChPos = static_cast<std::int32_t>(line);
}

std::int32_t LinesThatFit(const InstrumentState& state, const ScrollWindow& window) {
    std::int32_t y = kHeaderHeight;
    std::int32_t fit = 0;
    for (std::int32_t line = FirstLine(state); line < LineCount(state); ++line) {
        y += RowHeight(state, line, window.Fonts);
        if (y > window.Height) break;
        ++fit;
    }
    return fit;
}

void ScrollTiming(InstrumentState& state, const ScrollEvent& event, const ScrollWindow& window) {
    if (event.Axis == ScrollAxis::Horizontal) {
        MoveView(state, HorizontalTarget(state, event, window), VisibleOf(state, window));
    } else {
        MoveToLine(state, VerticalTarget(state, event, window));
    }
    state.Windows.ActiveView = kTimingActive;
}

}  // namespace zu
