#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "state/InstrumentState.h"
#include "state/Model.h"

namespace zu::test {

/// A state of a catalogue row with every word "X", as at start-up.
inline std::unique_ptr<InstrumentState> TriggerState(int row) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, row);
    ResetTrigWords(*state);
    return state;
}

/// Text of an entry up to its terminator.
inline std::string EntryText(const InstrumentState& state, int board, int word) {
    const auto& entry =
        state.Trigger.TrigWord.Board[static_cast<std::size_t>(board)][static_cast<std::size_t>(word)];
    return entry.data();
}

/// Stores an entry's text as a file would; the bytes behind it become NUL.
inline void SetEntry(InstrumentState& state, int board, int word, std::string_view text) {
    auto& entry =
        state.Trigger.TrigWord.Board[static_cast<std::size_t>(board)][static_cast<std::size_t>(word)];
    entry.fill('\0');
    std::copy_n(text.begin(), std::min(text.size(), entry.size()), entry.begin());
}

/// Makes a group of these channels.
inline void SetGroup(InstrumentState& state, int group, std::initializer_list<int> channels) {
    GroupRecord& record = state.Groups[static_cast<std::size_t>(group)];
    record.Size = 0;
    for (const int channel : channels) record.Channels[static_cast<std::size_t>(record.Size++)] = channel;
}

}  // namespace zu::test
