#pragma once

#include <array>

#include "state/InstrumentState.h"

namespace zu {

/// The trigger words as the instrument compares them: word-major, [word][board], where the record's own table
/// is board-major. The channels' inversion is worked in.
struct CompiledTrigWords {
    using Entry = TrigWordTable::Entry;
    std::array<std::array<Entry, kMaxBoards>, kTrigWords> Word{};

    friend bool operator==(const CompiledTrigWords&, const CompiledTrigWords&) = default;
};

/// The words of the state with '0' and '1' exchanged in the cells of inverted channels.
CompiledTrigWords PrepareTriggerWords(const InstrumentState& state);

/// False if the levels of the sequence mix words that constrain a channel with words that constrain none.
/// A sequence without levels, or of don't-care words alone, passes.
bool TrigWordsConsistent(const InstrumentState& state, const CompiledTrigWords& words);

}  // namespace zu
