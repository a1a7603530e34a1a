#pragma once

#include <cstdint>

#include "hw/HardwareSession.h"

namespace zu {

struct CompiledTrigWords;

/// Stops the acquisition and brings the memory of every board into the capture buffer: undoes the interleave
/// of the fast rates, finds where the trigger really lies (AdjAddr of every pod), and turns inverted channels
/// to true logic. Pods in a mode other than 0 keep their bytes but for the inversion. Leaves the clock held.
/// Emulated: the inversion only. Always 1.
std::uint8_t EndCapture(HardwareSession& hardware, InstrumentState& state, const CompiledTrigWords& words);

/// Where sample `offset` of a pod is stored; the start of the first pod's buffer for a pod that the boards do
/// not have and for an offset behind the pod's samples. Null before there is memory.
std::uint8_t* PodSample(const CaptureBuffer& buffer, int podCount, int boards, int step, int pod,
                        std::int32_t offset);

}  // namespace zu
