#pragma once

#include "core/App.h"

namespace zu {

/// Brings the program from a created frame to a window that shows an instrument, real or emulated. May end
/// the process through the host: unknown operating system (code 1), "-RETURNZUSTAT" (0 or 1).
void RunStartupSequence(App& app);

/// Takes the program down: autosave, capture state, buffers, preferences, driver.
void Shutdown(App& app);

}  // namespace zu
