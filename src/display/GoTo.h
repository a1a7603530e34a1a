#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu {

/// Sample that a text names: a number ("12500", "12,500"), a time ("3.2us"; only with a known rate), a cursor
/// ("A"), or a cursor and a distance ("A+100", "T-3.2us"). A distance without a cursor ("+100") counts from
/// `here`. Case and blanks do not matter. Nothing for any other text.
std::optional<std::int64_t> ParseGoTo(const InstrumentState& state, std::string_view text, std::int64_t here);

}  // namespace zu
