#pragma once

#include <array>
#include <string>

#include "core/CommandTable.h"
#include "state/InstrumentState.h"

namespace zu {

/// One memory entry as the menu shows it now.
struct MemoryEntry {
    std::string_view Text;
    bool Enabled = true;
    bool Checked = false;
};

/// The entries of memory modes 0..11 for the present row, rate and clock. Mode 2 has no entry of its own.
std::array<MemoryEntry, kMemoryModes> MemoryMenuTexts(const InstrumentState& state);
/// Memory pane of the status bar.
std::string StatusMemoryText(const InstrumentState& state);
/// Text of the command BoardStatus: label, samples, channels, pods and buffers; empty above row 17.
std::string BoardStatusText(const InstrumentState& state);

}  // namespace zu
