#pragma once

#include <QString>

namespace zu {

/// The width in pixels of a dialog in which the window manager does not cut the caption off.
int CaptionRoom(const QString& caption);

}  // namespace zu
