#pragma once

#include <optional>

#include "state/InstrumentState.h"

namespace zu {

/// Place of a channel in the text of the trigger words.
struct TrigCell {
    int Board;
    int Position;  ///< 0..44 in the board's entry of a word
};

/// Cell of a channel; nothing for a channel that the model does not have or whose lane lies behind the entry
/// (the upper three lanes of the 64-channel model).
std::optional<TrigCell> CellOfChannel(const InstrumentState& state, int channel);

/// '0', '1' or 'X' of a channel in word 0..15. A channel or word without a cell, and any other byte in the
/// cell, count as 'X'.
char CharOfChannel(const InstrumentState& state, int channel, int word);

/// Writes '0', '1' or 'X' ('x' is stored as 'X'); another byte, and a channel or word without a cell, change
/// nothing.
void SetCharOfChannel(InstrumentState& state, int channel, int word, char value);

/// Sets every channel of a word to '0', '1' or, for anything else, 'X', on the boards that the model has. It
/// is a manual change: the sequence no longer counts as written by a wizard.
void SetAllWord(InstrumentState& state, char value, int word);

/// Whether string position `position` holds a blank between groups of eight cells.
constexpr bool IsSeparator(int position) {
    return (position + 1) % 9 == 0;
}
/// 'X' for 'x', every other byte as it is.
constexpr char NormalCell(char c) {
    return c == 'x' ? 'X' : c;
}
constexpr bool IsCell(char c) {
    return c == '0' || c == '1' || c == 'X' || c == 'x';
}

}  // namespace zu
