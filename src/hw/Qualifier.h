#pragma once

#include <cstdint>
#include <span>

#include "hw/Registers.h"

namespace zu {

/// Fills the 256-entry table that gates the external clock by eight signals. A word has eight characters,
/// most significant first: "0", "1", and anything else for "does not matter"; one without "0" and "1" is
/// skipped. Edge 0 opens the gate where a word matches, 1 where it does not.
void LoadQualifier(Registers& registers, std::uint8_t edge, std::span<const Text<kQualifierText>> words);

}  // namespace zu
