#pragma once

#include <cstdint>

#include "hw/HardwareSession.h"

namespace zu {

struct CompiledTrigWords;

/// Turns the state into a running acquisition: memory, patterns, thresholds, trigger, position, clock, and
/// returns when the part before the trigger has been sampled. `words` come from PrepareTriggerWords; the
/// trigger shall stand at Cur[T]. In OR mode the edge of the first level is toggled in the state. Sets
/// CaptureTimeout. 0: the user stopped at the pattern question, and the instrument is armed nonetheless; else
/// 1. Emulated: no programming, only the wait and one poll.
std::uint8_t StartCapture(HardwareSession& hardware, InstrumentState& state, const CompiledTrigWords& words);
/// Makes an armed instrument behave as if it had seen the trigger.
void ForceTrigger(HardwareSession& hardware);
/// The same, and the poll, under the names that callers from outside use.
inline void ForceTrigger1(HardwareSession& hardware) {
    ForceTrigger(hardware);
}
inline std::uint8_t GetTrigStat1(HardwareSession& hardware) {
    return GetTrigStat(hardware);
}
/// Stops the sample clock, and with it a pattern that is going out. Always true.
bool StopPatternGen(HardwareSession& hardware, InstrumentState& state);
/// The same under the name that belongs to continuous output.
bool StopContinuousPG(HardwareSession& hardware, InstrumentState& state);

}  // namespace zu
