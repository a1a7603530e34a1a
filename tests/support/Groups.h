#pragma once

#include <initializer_list>

#include "state/InstrumentState.h"

namespace zu::test {

/// Makes group 0 of these channels, least significant first.
inline GroupRecord& MakeGroup(InstrumentState& state, std::initializer_list<std::int32_t> channels) {
    GroupRecord& group = state.Groups[0];
    group.Size = 0;
    for (const std::int32_t channel : channels)
        group.Channels[static_cast<std::size_t>(group.Size++)] = channel;
    return group;
}

/// Makes group 0 of a run of channels.
inline GroupRecord& MakeRun(InstrumentState& state, std::int32_t first, std::int32_t size) {
    GroupRecord& group = state.Groups[0];
    group.Size = size;
    for (std::int32_t i = 0; i < size; ++i) group.Channels[static_cast<std::size_t>(i)] = first + i;
    return group;
}

}  // namespace zu::test
