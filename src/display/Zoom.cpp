#include "display/Zoom.h"

#include <algorithm>

namespace zu {
namespace {

std::size_t StepOf(std::int32_t zoom) {
    const auto* found = std::find_if(kZoomTable.begin(), kZoomTable.end(),
                                     [zoom](const ZoomStep& step) { return step.Zoom == zoom; });
    return static_cast<std::size_t>(found - kZoomTable.begin());
}

std::int32_t ToPosition(std::int64_t sample) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sample, 0, INT32_MAX));
}

/// Samples that stay right of the view's left edge. Above zoom 0 it counts pixels times zoom, more than the
/// screen shows, and so holds strong zooms near the start of short captures.
std::int64_t PositionSlack(std::int32_t zoom, std::int32_t width, std::int64_t length) {
    const std::int64_t half = std::int64_t{zoom < 0 ? -zoom : zoom} * std::max(width, 0) / 2;
    return zoom < 0 ? half : std::min(half, length);
}

bool IsCursorOrigin(int origin) {
    return origin >= 0 && origin <= kCursorT;
}

}  // namespace

std::int32_t ZoomIn(std::int32_t zoom) {
    const std::size_t step = StepOf(zoom);
    return step == kZoomTable.size() || step == 0 ? zoom : kZoomTable[step - 1].Zoom;
}

std::int32_t ZoomOut(std::int32_t zoom) {
    const std::size_t step = StepOf(zoom);
    return step + 1 >= kZoomTable.size() ? zoom : kZoomTable[step + 1].Zoom;
}

std::int32_t ClampZoom(std::int32_t zoom, std::int32_t width, std::int32_t displayLen) {
    const std::int64_t w = std::max(width, 0);
    const std::int64_t twice = std::int64_t{2} * displayLen;
    if (zoom >= 0 || twice >= -std::int64_t{SafeZoom(zoom)} * w) return zoom;
    for (auto step = kZoomTable.rbegin(); step != kZoomTable.rend() && step->Zoom < 0; ++step) {
        const std::int64_t span = -std::int64_t{step->Zoom} * w;
        if (span <= twice && displayLen < span) return step->Zoom;
    }
    return zoom;
}

void ClampZoomPosition(InstrumentState& state, std::int32_t width) {
    const std::int64_t length = state.Memory.DisplayLen;
    const std::int64_t slack = PositionSlack(SafeZoom(state.Timing.ScreenZoom), width, length);
    if (length - state.Timing.TimingDataPos < slack) state.Timing.TimingDataPos = ToPosition(length - slack);
}

void CenterSample(InstrumentState& state, std::int32_t width, std::int64_t sample) {
    state.Timing.TimingDataPos = ToPosition(sample - SamplesInPixels(width, state.Timing.ScreenZoom) / 2);
}

void SetZoom(InstrumentState& state, std::int32_t width, int origin, const ZoomPoint& point,
             std::int32_t zoom) {
    TimingRecord& timing = state.Timing;
    const std::int64_t oldCenter = timing.TimingDataPos + SamplesInPixels(width, timing.ScreenZoom) / 2;
    timing.ScreenZoom = zoom;
    const std::int32_t z = SafeZoom(zoom);
    if (origin == kOriginPoint) {
        timing.TimingDataPos = ToPosition(point.Sample - (z > 0 ? point.X / z : std::int64_t{-z} * point.X));
    } else if (IsCursorOrigin(origin)) {
        CenterSample(state, width, state.Cursors.Cur[static_cast<std::size_t>(origin)]);
    } else if (origin != kOriginLeft) {
        CenterSample(state, width, oldCenter);
    }
}

bool ApplyZoom(InstrumentState& state, std::int32_t width, int origin, const ZoomPoint& point,
               std::int32_t zoom) {
    const TimingRecord before = state.Timing;
    SetZoom(state, width, origin, point, ClampZoom(zoom, width, state.Memory.DisplayLen));
    // A held point stays under the pointer: the wide slack of the zooms above 0 would pull it away.
    if (origin != kOriginPoint || state.Timing.ScreenZoom < 0) ClampZoomPosition(state, width);
    return before.ScreenZoom != state.Timing.ScreenZoom || before.TimingDataPos != state.Timing.TimingDataPos;
}

TimeAxis AxisOf(const InstrumentState& state, std::int32_t dataLeft, std::int32_t right) {
    return {std::max(state.Timing.TimingDataPos, 0), SafeZoom(state.Timing.ScreenZoom), dataLeft, right};
}

}  // namespace zu
