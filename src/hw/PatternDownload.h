#pragma once

#include "hw/HardwareSession.h"

namespace zu {

/// Sends the pattern data of every board to its memory and clears PatDirty. Runs before arming, when a pod is
/// in a pattern mode and PatDirty is set. Holds the clock meanwhile. Always true.
bool DownloadPatterns(HardwareSession& hardware, InstrumentState& state);

}  // namespace zu
