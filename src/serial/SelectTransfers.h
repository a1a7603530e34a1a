#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "serial/SpiRows.h"
#include "state/InstrumentState.h"

namespace zu {

/// What a bus carries while its chip select is active.
struct SelectTransfer {
    std::int32_t Start = 0;      ///< first sample with chip select active
    std::int32_t End = -1;       ///< first sample behind it; -1: active to the end of data
    std::vector<SpiByte> Bytes;  ///< SPI: the whole bytes
    std::string In;              ///< Microwire: data in at each rise of the clock, "1" or "0"
    std::string Out;             ///< the same of data out

    friend bool operator==(const SelectTransfer&, const SelectTransfer&) = default;
};

/// Transfers of a slot that DecodeSPI has filled, in time order. A byte belongs to the period it begins in.
std::vector<SelectTransfer> SpiTransfers(const InstrumentState& state, int slot);
/// Transfers of the SerialGroup read as Microwire, in time order, from the samples themselves: the event map
/// holds no Microwire events. Chip select is active high, on any bit.
std::vector<SelectTransfer> MicrowireTransfers(const InstrumentState& state);

/// One line, as "SI 9F 00 | SO FF C2".
std::string SpiTransferText(const SelectTransfer& transfer);
/// One line, as "DI 110 | DO 000".
std::string MicrowireTransferText(const SelectTransfer& transfer);

}  // namespace zu
