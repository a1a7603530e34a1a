#pragma once

#include "core/App.h"

namespace zu {

/// Sets every default of the state; runs once. While emulating it takes the series' default row and lets the
/// user choose the model, unless the command line fixed one. Ends with ApplyModel and what depends on it.
void InitDefaults(App& app);

/// Thresholds and pattern voltages of the series.
void SetLevelDefaults(InstrumentState& state);

}  // namespace zu
