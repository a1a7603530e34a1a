#pragma once

#include "hw/CaptureSetup.h"
#include "hw/Registers.h"

namespace zu {

/// Turns the output drivers off that belong to the pattern pods among pods 0, 2 and 4 of the first board, on
/// every board.
void ReleasePatternLines(Registers& registers, const CaptureSetup& setup, const InstrumentState& state);
/// Routes each pod pair of a board to its input or its output, by the modes of its pods.
void SetLaneSelect(Registers& registers, const CaptureSetup& setup, const InstrumentState& state);
/// Joins the lanes of every board as the rate asks.
void SetInputMode(Registers& registers, const CaptureSetup& setup, const InstrumentState& state);
/// In the memory mode without pattern generator: two lanes a pod on every board, whatever the rate is.
void JoinLanesOfNoPatternMode(Registers& registers, const CaptureSetup& setup);

}  // namespace zu
