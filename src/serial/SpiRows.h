#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "state/InstrumentState.h"

namespace zu {

/// A decoded byte of a slot.
struct SpiByte {
    std::int32_t Start = 0;  ///< sample with the start flag
    std::int32_t End = 0;    ///< sample with the end flag
    std::uint8_t Si = 0;
    std::uint8_t So = 0;

    friend bool operator==(const SpiByte&, const SpiByte&) = default;
};

/// Entry of a slot's SI or SO array; 0 outside.
std::uint16_t SpiSiAt(const InstrumentState& state, int slot, std::int64_t sample);
std::uint16_t SpiSoAt(const InstrumentState& state, int slot, std::int64_t sample);
/// First byte of a slot that starts at or behind a sample; nothing if there is none.
std::optional<SpiByte> NextSpiByte(const InstrumentState& state, int slot, std::int32_t from);
/// Byte of a slot that a sample lies in, from its start to its end.
std::optional<SpiByte> SpiByteAround(const InstrumentState& state, int slot, std::int32_t sample);

/// Slots that the SPI view shows: those that are switched on and have a group.
std::array<bool, kSpiSlots> ShownSpiSlots(const InstrumentState& state);
/// Caption of a slot's button.
std::string SpiButtonText(const InstrumentState& state, int slot);
/// "%2.2X" of an entry's byte; empty without the start flag.
std::string SpiCellText(std::uint16_t entry);

/// End of the range that the view scrolls over; with a single byte it is the first one.
std::int32_t SpiRangeEnd(const InstrumentState& state);
/// Sample of the SPI view's first row: SpiDataPos within the range, moved on to the next start of a byte in
/// any slot, or back to the last one.
std::int32_t SpiRowsStart(const InstrumentState& state);
/// First sample at or behind `from` with the start of a byte in any shown slot, or a cursor; nothing beyond
/// the data.
std::optional<std::int32_t> NextSpiRow(const InstrumentState& state, std::int32_t from);
/// Last start of a byte at or before a sample in any shown slot; nothing if there is none.
std::optional<std::int32_t> SpiStartBack(const InstrumentState& state, std::int32_t from);
/// Samples of up to `count` rows from the view's start on.
std::vector<std::int32_t> SpiRows(const InstrumentState& state, int count);
/// Sample under row `row` (0 the first below the header), as a click finds it: a sample counts if a byte
/// starts there in all shown slots, or by a cursor. Nothing past the end of data.
std::optional<std::int32_t> SpiRowSample(const InstrumentState& state, int row);

}  // namespace zu
