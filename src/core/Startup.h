#pragma once

#include "core/App.h"

namespace zu {

/// The first part of start-up, all that a script needs: the platform, the connection, the model and its
/// defaults. No window is opened and no file but the preferences is read.
void StartInstrument(App& app);
/// Marks the rates and entries that the model has.
void OfferModelChoices(App& app);

/// Brings the program from a created frame to a window that shows an instrument, real or emulated. May end
/// the process through the host: unknown operating system (code 1), "-RETURNZUSTAT" (0 or 1).
void RunStartupSequence(App& app);

/// Takes the program down: autosave, capture state, buffers, preferences, driver.
void Shutdown(App& app);

}  // namespace zu
