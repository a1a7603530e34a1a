#pragma once

#include "core/App.h"

namespace zu {

/// What the main window must know before it exists: screen size, series, file names, window rectangles.
/// Command options and AppDir must be filled.
void CreateFrame(App& app);

/// Repairs a rectangle for the state's screen with the given minimum size.
WindowRect SanitiseRect(WindowRect rect, std::int32_t minWidth, std::int32_t minHeight,
                        const ScreenRecord& screen);

/// Screen size that the virtual screen, the work area and the display device together give.
ScreenRecord MeasureScreen(const ScreenFacts& facts, ScreenRecord screen);

}  // namespace zu
