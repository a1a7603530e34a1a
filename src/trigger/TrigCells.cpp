#include "trigger/TrigCells.h"

#include <algorithm>

namespace zu {
namespace {

constexpr int kLastPosition = kTrigWordText - 2;  // of a cell; the last byte is the terminator's
constexpr int kLargeBoard = 40;                   // channels of the boards with five groups of eight

bool IsWord(int word) {
    return word >= 0 && word < kTrigWords;
}

/// Blank-separated groups of eight equal cells that a fill writes on every board.
int FillGroups(const InstrumentState& state, char value) {
    if (state.Shape.ChPerSlice == kLargeBoard) return 5;
    // The fill with "1" has always left out the fourth group.
    return value == '1' ? 3 : 4;
}

}  // namespace

std::optional<TrigCell> CellOfChannel(const InstrumentState& state, int channel) {
    const ShapeRecord& shape = state.Shape;
    if (channel < 0 || channel >= shape.TotalChannels || shape.BufStep <= 0) return std::nullopt;
    const int laneBits = shape.ChPerSlice / shape.BufStep;
    if (laneBits <= 0) return std::nullopt;
    const int board = channel / shape.ChPerSlice;
    const int lane = channel / laneBits;
    const int bit = channel % laneBits;
    // The text reads the most significant channel first: the last lane's group stands on the left.
    const int position = ((board + 1) * shape.BufStep - lane) * 9 + laneBits - bit - 10;
    if (board >= kMaxBoards || position < 0 || position > kLastPosition) return std::nullopt;
    return TrigCell{board, position};
}

char CharOfChannel(const InstrumentState& state, int channel, int word) {
    const auto cell = CellOfChannel(state, channel);
    if (!cell || !IsWord(word)) return 'X';
    const auto& entry =
        state.Trigger.TrigWord.Board[static_cast<std::size_t>(cell->Board)][static_cast<std::size_t>(word)];
    const char c = entry[static_cast<std::size_t>(cell->Position)];
    return c == '0' || c == '1' ? c : 'X';
}

void SetCharOfChannel(InstrumentState& state, int channel, int word, char value) {
    const auto cell = CellOfChannel(state, channel);
    if (!cell || !IsWord(word) || !IsCell(value)) return;
    auto& entry =
        state.Trigger.TrigWord.Board[static_cast<std::size_t>(cell->Board)][static_cast<std::size_t>(word)];
    entry[static_cast<std::size_t>(cell->Position)] = NormalCell(value);
}

void SetAllWord(InstrumentState& state, char value, int word) {
    if (!IsWord(word)) return;
    const char cell = value == '0' || value == '1' ? value : 'X';
    const int length = FillGroups(state, cell) * 9 - 1;
    const int boards = std::clamp(state.Shape.WordsPerTrig, 1, kMaxBoards);
    for (int board = 0; board < boards; ++board) {
        auto& entry =
            state.Trigger.TrigWord.Board[static_cast<std::size_t>(board)][static_cast<std::size_t>(word)];
        for (int i = 0; i < length; ++i) entry[static_cast<std::size_t>(i)] = IsSeparator(i) ? ' ' : cell;
        entry[static_cast<std::size_t>(length)] = '\0';  // what stands behind it stays
    }
    state.Trigger.TrigLevelsMatchWizard = 0;
}

}  // namespace zu
