#pragma once

#include <initializer_list>
#include <memory>
#include <vector>

#include "display/EditResult.h"
#include "state/InstrumentState.h"
#include "state/Model.h"

namespace zu::test {

inline constexpr int kRow40 = 11;   ///< 40 channels
inline constexpr int kRow80 = 12;   ///< 80 channels
inline constexpr int kRow160 = 10;  ///< 160 channels
inline constexpr int kRow24 = 16;   ///< 24 channels, numbered without pods
inline constexpr int kRow32 = 25;   ///< 32 channels in banks

/// A state of a catalogue row with its default names.
inline std::unique_ptr<InstrumentState> EditState(int row, int series = 2) {
    auto state = std::make_unique<InstrumentState>();
    state->Identity.ModelSeries = static_cast<std::uint8_t>(series);
    ChangeModel(*state, row);
    ResetChannelNames(*state);
    return state;
}

inline Selection Rows(std::initializer_list<int> rows) {
    Selection selection{};
    for (const int row : rows) selection.at(static_cast<std::size_t>(row)) = true;
    return selection;
}

inline Selection FirstRows(int count) {
    Selection selection{};
    for (int row = 0; row < count; ++row) selection.at(static_cast<std::size_t>(row)) = true;
    return selection;
}

inline std::vector<int> RowsOf(const Selection& selection) {
    std::vector<int> rows;
    for (int row = 0; row < kLineSlots; ++row) {
        if (selection[static_cast<std::size_t>(row)]) rows.push_back(row);
    }
    return rows;
}

}  // namespace zu::test
