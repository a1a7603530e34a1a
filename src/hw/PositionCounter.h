#pragma once

#include "hw/CaptureSetup.h"
#include "hw/Registers.h"

namespace zu {

/// What the position counter starts from so that the trigger stands at sample `position`: the counter runs up
/// and stops the capture at its end. The low 18 bits are loaded.
std::int64_t PositionValue(const CaptureSetup& setup, std::int32_t position);
/// Loads it, with the clock held meanwhile.
void LoadPosition(Registers& registers, const CaptureSetup& setup, std::int32_t position);

}  // namespace zu
