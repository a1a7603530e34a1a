#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "state/InstrumentState.h"

namespace zu {

/// A byte of an I2C transfer with its acknowledge.
struct I2cByte {
    std::int32_t First = 0;  ///< sample of the first bit's event
    std::int32_t Mark = 0;   ///< sample of the acknowledge
    std::uint8_t Value = 0;
    bool Acked = false;

    friend bool operator==(const I2cByte&, const I2cByte&) = default;
};

/// What stands between a start and the next start or stop. Bits behind the last acknowledge are left out.
struct I2cTransfer {
    std::int32_t Start = 0;
    bool Repeated = false;   ///< no stop ended the transfer before
    std::int32_t Stop = -1;  ///< -1: ended by a start or by the end of data
    std::vector<I2cByte> Bytes;
    bool Cut = false;  ///< there are more bytes than were asked for; Stop is not known

    friend bool operator==(const I2cTransfer&, const I2cTransfer&) = default;
};

/// The transfers of the event map in time order.
std::vector<I2cTransfer> I2cTransfers(const InstrumentState& state);
/// The transfers that begin in [first, last], each read up to so many bytes: what a list on the screen needs
/// of a full memory.
std::vector<I2cTransfer> I2cTransfers(const InstrumentState& state, std::int32_t first, std::int32_t last,
                                      std::size_t mostBytes = std::numeric_limits<std::size_t>::max());

/// One line, as "S 50 W ACK | 00 ACK | P": the first byte as address and direction, the others in hex.
/// A repeated start reads "Sr", and "..." ends a line that was cut.
std::string TransferText(const I2cTransfer& transfer);

}  // namespace zu
