#pragma once

namespace zu {

/// Fonts and images need the toolkit's application object. Makes one without a display if the program has
/// none; call it once before the first picture of a program without windows.
void EnsureGraphics();

}  // namespace zu
