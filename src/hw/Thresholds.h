#pragma once

#include "hw/CaptureSetup.h"
#include "hw/Registers.h"

namespace zu {

/// Sends the levels of the three pod pairs of every board: the input threshold, or the output voltage where
/// the pair's first pod is not a plain capture pod.
void LoadThresholds(Registers& registers, const CaptureSetup& setup, const InstrumentState& state);

}  // namespace zu
