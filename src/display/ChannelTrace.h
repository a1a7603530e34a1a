#pragma once

#include <cstdint>

#include "display/Canvas.h"
#include "display/Digest.h"
#include "display/Lines.h"
#include "display/PolylineBuffer.h"
#include "display/TimeAxis.h"
#include "state/InstrumentState.h"

namespace zu {

/// Where and with what a row is drawn.
struct RowFrame {
    const InstrumentState& State;
    Canvas& Target;
    PolylineBuffer& Points;
    DigestSet& Digests;
    TimeAxis Axis;
    std::int32_t Top = 0;     ///< pixels
    std::int32_t Height = 0;  ///< of the row
    FontId Font = FontId::Text;

    [[nodiscard]] std::int32_t High() const { return Top; }
    [[nodiscard]] std::int32_t Low() const { return Top + Height - kTraceFoot; }
    [[nodiscard]] std::int32_t Level(bool one) const { return one ? High() : Low(); }
};

/// Draws the level of a channel as one line at any zoom, in the pen that is set. `extra` names the labels
/// that the zooms above 1 write beside it. A channel without samples draws nothing.
void DrawChannelTrace(const RowFrame& row, int channel, LineExtra extra = LineExtra::Plain);

/// Colour of pens for state colours: black where the canvas has no colours.
inline Rgb PenColor(const Canvas& canvas, Rgb color) {
    return canvas.Mono() ? Rgb{0} : color;
}

}  // namespace zu
