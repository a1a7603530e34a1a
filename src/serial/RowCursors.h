#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu {

/// Names of the cursors in the serial view, by cursor index.
inline constexpr std::array<std::string_view, 5> kRowCursorTexts{"Cursor A", "Cursor B", "Cursor C",
                                                                 "Cursor D", "Trigger"};

/// Cursor on a sample, looked for in the order T, B, A, C, D; -1 if there is none.
int CursorOnSample(const InstrumentState& state, std::int32_t sample);
/// First cursor position at or behind a sample; `to` if there is none before it.
std::int32_t NextCursorSample(const InstrumentState& state, std::int32_t from, std::int32_t to);
/// Last cursor position from 0 up to a sample; -1 if there is none.
std::int32_t CursorSampleBack(const InstrumentState& state, std::int32_t from);

}  // namespace zu
