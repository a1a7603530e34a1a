#pragma once

#include "core/App.h"

namespace zu {

/// Runs the row's memory layout for the mode in the state: settles HardwareMode and HardwareMux and sets
/// BufferLen, DisplayLen and the buffer lengths. mux -1 lets the layout choose; it may stay -1, and then
/// DisplayLen and the buffer lengths stay too. Rows 21 to 24 have no layout and keep everything. Called by
/// SetMemoryMode.
void RunMemoryLayout(App& app, int mux);

/// Whether a pod of the model is in a pattern generator mode.
bool HasPatternPod(const InstrumentState& state);

}  // namespace zu
