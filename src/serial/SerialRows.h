#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// A row of the serial view.
struct SerialRow {
    std::int32_t Sample = 0;
    std::uint8_t Code = 0;  ///< 0 on a row that only a cursor makes
    int Cursor = -1;        ///< as CursorOnSample tells

    friend bool operator==(const SerialRow&, const SerialRow&) = default;
};

/// Whether the serial view lists a code: by the filter flags, or for Microwire the two data bits alone.
bool PassesSerialFilter(const InstrumentState& state, std::uint8_t code);
/// Sample of the view's first row: SerialDataPos within SerialFirst..SerialLast.
std::int32_t SerialRowsStart(const InstrumentState& state);
/// First row at or behind a sample; nothing beyond the data.
std::optional<SerialRow> NextSerialRow(const InstrumentState& state, std::int32_t from);
/// Sample of the last row at or before a sample; nothing if there is none.
std::optional<std::int32_t> SerialRowBack(const InstrumentState& state, std::int32_t from);
/// Up to `count` rows from the view's start on.
std::vector<SerialRow> SerialRows(const InstrumentState& state, int count);
/// Sample under row `row` (0 the first below the header), as a click finds it: every sample with an event or
/// a cursor counts, listed or not. Nothing past the end of data.
std::optional<std::int32_t> SerialRowSample(const InstrumentState& state, int row);

/// Divisor of the scroll range, which reaches from first / s to last / s.
std::int32_t SerialScrollScale(std::int32_t first, std::int32_t last);

/// What the serial view's search list offers, and the code that each choice looks for.
struct SerialSearchKind {
    std::string_view Text;
    std::uint8_t Code;
};
inline constexpr std::array<SerialSearchKind, 6> kSerialSearchKinds{
    {{"Start", 1}, {"Stop", 2}, {"ACK", 15}, {"NACK", 16}, {"0", 3}, {"1", 4}}};
enum class SearchWay { Next, Prev };
/// Moves SerialDataPos to the next or previous event of SearchKind, without wrapping; false with a message,
/// and the position unchanged, if there is none. A kind outside the list finds nothing.
bool SearchSerialEvent(InstrumentState& state, Host& host, SearchWay way);

}  // namespace zu
