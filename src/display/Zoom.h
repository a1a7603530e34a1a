#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "display/TimeAxis.h"
#include "state/InstrumentState.h"

namespace zu {

struct ZoomStep {
    std::string_view MenuText;
    std::int32_t Zoom;
};
// The second text says 20 and means 25; users' settings hold the 25.
inline constexpr std::array<ZoomStep, 17> kZoomTable{{
    {"  1:50 data:pixel", 50},
    {"  1:20 data:pixel", 25},
    {"  1:10 data:pixel", 10},
    {"  1:5  data:pixel", 5},
    {"  1:2  data:pixel", 2},
    {"  1:1  data:pixel", 1},
    {"  2:1  data:pixel", -2},
    {"  4:1  data:pixel", -4},
    {" 10:1  data:pixel", -10},
    {" 20:1  data:pixel", -20},
    {" 40:1  data:pixel", -40},
    {"100:1  data:pixel", -100},
    {"200:1  data:pixel", -200},
    {"400:1  data:pixel", -400},
    {"1000:1 data:pixel", -1000},
    {"2000:1 data:pixel", -2000},
    {"4000:1 data:pixel", -4000},
}};

/// One step up the chain; a value that is not on it, and its upper end, stay.
std::int32_t ZoomIn(std::int32_t zoom);
/// One step down the chain; a value that is not on it, and its lower end, stay.
std::int32_t ZoomOut(std::int32_t zoom);

/// The zoom that leaves half a screen of `width` pixels inside memory; `zoom` itself if the chain has none.
std::int32_t ClampZoom(std::int32_t zoom, std::int32_t width, std::int32_t displayLen);
/// Moves TimingDataPos so that half a screen stays inside memory.
void ClampZoomPosition(InstrumentState& state, std::int32_t width);

/// Where a zoom holds the picture. Values -1, -2 and 0..4 are those of ZoomOrigin.
inline constexpr int kOriginCenter = -1;
inline constexpr int kOriginLeft = -2;
inline constexpr int kOriginPoint = -3;

/// The point that kOriginPoint holds.
struct ZoomPoint {
    std::int64_t Sample = 0;
    std::int32_t X = 0;  ///< pixels right of the first sample
};

/// Stores the zoom and moves TimingDataPos by origin: the centre, the left edge, a point or a cursor stays
/// where it is told to be. `width` is the data width in pixels.
void SetZoom(InstrumentState& state, std::int32_t width, int origin, const ZoomPoint& point,
             std::int32_t zoom);

/// Clamps the zoom, sets it and clamps the position: what every zoom command does. False if neither zoom
/// nor position changed.
bool ApplyZoom(InstrumentState& state, std::int32_t width, int origin, const ZoomPoint& point,
               std::int32_t zoom);

/// Puts a sample in the middle of the data width.
void CenterSample(InstrumentState& state, std::int32_t width, std::int64_t sample);

/// What `width` pixels show of the state's samples. The grid's division is 50 pixels at every zoom.
TimeAxis AxisOf(const InstrumentState& state, std::int32_t dataLeft, std::int32_t right);

}  // namespace zu
