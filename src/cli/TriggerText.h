#pragma once

#include <optional>
#include <span>
#include <string>

#include "state/InstrumentState.h"

namespace zu {

/// Replaces the trigger of the state by a sequence, one text a level. A text is a list of terms with commas
/// between them:
///   CHANNELS=VALUE       channels "12", "0-7", or the name of a channel or group; value in decimal, 0x hex
///   or
///                        0b binary, where a digit X asks for nothing
///   rising, falling      the edge of the whole condition, of the sequence as a whole
///   all, any             of the conditions of the level; of the sequence as a whole
///   count=N, lasts=N, within=N   events, or samples that the last level holds at least or at most, 1 to 255
/// Answers what is wrong with the texts, and leaves the state then as it was; nothing when all is well.
std::optional<std::string> ApplyTriggerTexts(InstrumentState& state, std::span<const std::string> levels);

}  // namespace zu
