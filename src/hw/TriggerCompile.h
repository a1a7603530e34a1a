#pragma once

#include <array>
#include <cstdint>

#include "hw/CaptureSetup.h"
#include "hw/Registers.h"
#include "trigger/CompiledTrigWords.h"

namespace zu {

/// What one board compares of a word: byte i is lane i. A lane whose mask is 0 always matches.
struct LaneMatch {
    std::array<std::uint8_t, kBoardLanes> Mask{};
    std::array<std::uint8_t, kBoardLanes> Value{};

    [[nodiscard]] bool Constrains() const;
    /// Bit i set: lane i matches the byte.
    [[nodiscard]] int Lanes(int byte) const;
};

/// Reads a board's text of a word; "0" and "1" change places if `complement` is set, and every character
/// but the two asks for nothing.
LaneMatch MatchOf(const CompiledTrigWords::Entry& entry, bool complement);
/// Lanes that carry other samples of a channel that another lane holds, at the rates where that is so: bit i
/// is lane i.
int BlankedLanes(const CaptureSetup& setup);

/// Whether any word of the sequence asks for a channel. The values are those of the instrument's protocol.
enum class TriggerKind : std::uint8_t { Constrained = 1, AnyData = 2 };

/// Programs the trigger: a page of 256 table entries a board for each level of the sequence, pages from 15
/// downwards from the last level, and the event count. With nothing in the sequence no table is written.
TriggerKind CompileTrigger(HardwareSession& hardware, Registers& registers, const CaptureSetup& setup,
                           const InstrumentState& state, const CompiledTrigWords& words);

}  // namespace zu
