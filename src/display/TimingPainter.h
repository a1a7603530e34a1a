#pragma once

#include <array>
#include <string>
#include <vector>

#include "display/Canvas.h"
#include "display/Columns.h"
#include "display/Digest.h"
#include "display/Events.h"
#include "display/Measure.h"
#include "display/PolylineBuffer.h"
#include "state/InstrumentState.h"

namespace zu {

/// What the Timing view looks like apart from the state: the client area and what is being done to it.
struct ViewGeom {
    std::int32_t Width = 0;  ///< client pixels
    std::int32_t Height = 0;
};

/// What a paint of the Timing view tells its window.
struct PaintResult {
    std::string Title;
    ScrollRange Horizontal;
    ScrollRange Vertical;
    std::int32_t DataLeft = 0;  ///< x of the first sample
    std::array<ColumnSpan, kTimingColumns> Columns{};
};

/// What paints share: the array of points, and the measurements, which stay good until samples change.
struct PaintScratch {
    MeasureCache Measures;
    DigestSet Digests;
    PolylineBuffer Points;
};

/// Paints the whole Timing view. The only change to the state is the clamp of TimingDataPos to 0.
PaintResult PaintTiming(InstrumentState& state, const ViewGeom& geom, Canvas& canvas);
/// The same with measurements that are kept from paint to paint.
PaintResult PaintTiming(InstrumentState& state, const ViewGeom& geom, Canvas& canvas, PaintScratch& scratch);

/// Title of the Timing window for the state's zoom, rate and active view.
std::string TimingTitle(const InstrumentState& state);

}  // namespace zu
