#include "trigger/CompiledTrigWords.h"

#include <algorithm>
#include <optional>

#include "trigger/Sequence.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr int kEntryCells = 45;  // string positions before the terminator

bool IsInverted(const InstrumentState& state, int channel) {
    return channel >= 0 && channel < kMaxChannels &&
           state.Channels.ChannelInvert[static_cast<std::size_t>(channel)] != 0;
}

char InvertedCell(char cell) {
    if (cell == '0') return '1';
    return cell == '1' ? '0' : 'X';
}

/// One board's text of one word; the cells run from the board's highest channel down.
CompiledTrigWords::Entry CompileEntry(const InstrumentState& state, const TrigWordTable::Entry& entry,
                                      int board) {
    CompiledTrigWords::Entry out = entry;
    int channel = (board + 1) * state.Shape.ChPerSlice - 1;
    for (char& c : out) {
        if (!IsCell(c)) continue;  // blanks between the groups stand for no channel
        if (IsInverted(state, channel)) c = InvertedCell(c);
        --channel;
    }
    return out;
}

/// Whether any cell of a word asks for "0" or "1".
bool ConstrainsChannel(const InstrumentState& state, const CompiledTrigWords& words, int word) {
    const int cells = std::clamp(state.Shape.PodCount * 9, 0, kEntryCells);
    for (const auto& entry : words.Word[static_cast<std::size_t>(word)]) {
        for (int i = 0; i < cells; ++i) {
            const char c = entry[static_cast<std::size_t>(i)];
            if (!IsSeparator(i) && (c == '0' || c == '1')) return true;
        }
    }
    return false;
}

}  // namespace

CompiledTrigWords PrepareTriggerWords(const InstrumentState& state) {
    CompiledTrigWords out;
    for (std::size_t word = 0; word < kTrigWords; ++word) {
        for (std::size_t board = 0; board < kMaxBoards; ++board) {
            out.Word[word][board] =
                CompileEntry(state, state.Trigger.TrigWord.Board[board][word], static_cast<int>(board));
        }
    }
    return out;
}

bool TrigWordsConsistent(const InstrumentState& state, const CompiledTrigWords& words) {
    std::optional<bool> first;
    for (int level = 0; level < kTrigWords; ++level) {
        const auto word = WordOfLevel(state, level);
        if (!word) continue;
        const bool constrains = ConstrainsChannel(state, words, *word);
        if (!first) first = constrains;
        if (constrains != *first) return false;
    }
    return true;
}

}  // namespace zu
