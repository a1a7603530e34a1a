#pragma once

#include "display/Canvas.h"
#include "display/HitTest.h"
#include "state/InstrumentState.h"

namespace zu {

/// Draws the overview strip: where the screen and the cursors lie in the whole capture.
void DrawStrip(const InstrumentState& state, Canvas& canvas, const StripScale& strip);

}  // namespace zu
