#pragma once

#include <QIcon>

namespace zu {

/// The pictures of the toolbar, drawn by the program at whatever size and scale is asked for. Their strokes
/// take the colour of the desktop's button text, so they are seen on light and on dark.
enum class Drawing { Open, Save, Go, Stop, End, Mode, ZoomIn, ZoomOut, RateUp, RateDown };

QIcon MakeIcon(Drawing drawing);

}  // namespace zu
