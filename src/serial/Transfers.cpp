#include "serial/Transfers.h"

#include <array>
#include <cstdio>
#include <limits>
#include <span>

#include "serial/EventCodes.h"
#include "serial/EventMap.h"

namespace zu {
namespace {

constexpr int kBitsOfByte = 8;
constexpr std::int32_t kEndOfData = std::numeric_limits<std::int32_t>::max();

bool IsBit(std::uint8_t code) {
    return (code >= event::kBit0 && code <= event::kChipTenBit1) || code == event::kMode0 ||
           code == event::kMode1;
}
/// Codes of bits run in pairs, the odd one for 0 from 3 to 18.
bool BitValue(std::uint8_t code) {
    return code % 2 == 0;
}

/// Gathers the bits of one byte up to its acknowledge.
class ByteBuilder {
  public:
    void Clear() { bits_ = 0; }
    void Take(std::int32_t sample, std::uint8_t code) {
        if (bits_ == 0) byte_ = {.First = sample};
        byte_.Value = static_cast<std::uint8_t>(byte_.Value << 1 | (BitValue(code) ? 1 : 0));
        ++bits_;
    }
    /// Ends the byte; false if its bits were not eight.
    bool Finish(std::int32_t sample, bool acked, I2cByte& byte) {
        const bool whole = bits_ == kBitsOfByte;
        byte = byte_;
        byte.Mark = sample;
        byte.Acked = acked;
        Clear();
        return whole;
    }

  private:
    I2cByte byte_;
    int bits_ = 0;
};

using Events = std::span<const std::uint8_t>;

/// First start in [from, last]; -1 if there is none.
std::int32_t NextStart(Events events, std::int32_t from, std::int32_t last) {
    EventCursor cursor(events, from, last < kEndOfData ? last + 1 : kEndOfData);
    std::int32_t i = cursor.Next();
    while (i >= 0 && events[static_cast<std::size_t>(i)] != event::kStart) i = cursor.Next();
    return i;
}

/// Whether a transfer is open before a sample: a start stands there with no stop behind it.
bool StartsOpen(Events events, std::int32_t sample) {
    if (sample <= 0) return false;
    for (std::int32_t i = FindEventBack(events, sample - 1); i >= 0; i = FindEventBack(events, i - 1)) {
        const std::uint8_t code = events[static_cast<std::size_t>(i)];
        if (code == event::kStart || code == event::kStop) return code == event::kStart;
    }
    return false;
}

/// Reads what follows a transfer's start, up to its stop, the next start or so many bytes. Sample of the
/// event that ended it; -1 at the end of data.
std::int32_t ReadTransfer(Events events, std::size_t mostBytes, I2cTransfer& transfer) {
    EventCursor cursor(events, transfer.Start + 1, kEndOfData);
    ByteBuilder builder;
    for (std::int32_t i = cursor.Next(); i >= 0; i = cursor.Next()) {
        const std::uint8_t code = events[static_cast<std::size_t>(i)];
        I2cByte byte;
        if (code == event::kStop) transfer.Stop = i;
        if (code == event::kStart || code == event::kStop) return i;
        if (IsBit(code)) {
            builder.Take(i, code);
        } else if (code == event::kAck || code == event::kNack) {
            if (!builder.Finish(i, code == event::kAck, byte)) continue;
            transfer.Cut = transfer.Bytes.size() >= mostBytes;
            if (transfer.Cut) return i;
            transfer.Bytes.push_back(byte);
        }
    }
    return -1;
}

std::string ByteText(const I2cByte& byte, bool isAddress) {
    std::array<char, 8> text{};
    const auto value = static_cast<unsigned>(byte.Value);
    if (isAddress) {
        std::snprintf(text.data(), text.size(), "%2.2X %c ", value >> 1U, (value & 1U) != 0 ? 'R' : 'W');
    } else {
        std::snprintf(text.data(), text.size(), "%2.2X ", value);
    }
    return std::string(text.data()) + (byte.Acked ? "ACK" : "NACK");
}

}  // namespace

std::vector<I2cTransfer> I2cTransfers(const InstrumentState& state) {
    return I2cTransfers(state, 0, kEndOfData);
}

std::vector<I2cTransfer> I2cTransfers(const InstrumentState& state, std::int32_t first, std::int32_t last,
                                      std::size_t mostBytes) {
    const auto& events = state.Serial.SerialEvents;
    std::vector<I2cTransfer> transfers;
    std::int32_t next = NextStart(events, first, last);
    bool open = StartsOpen(events, next);
    while (next >= 0) {
        transfers.push_back({.Start = next, .Repeated = open, .Bytes = {}});
        I2cTransfer& transfer = transfers.back();
        const std::int32_t reached = ReadTransfer(events, mostBytes, transfer);
        if (reached < 0) break;
        next = NextStart(events, reached, last);
        open = transfer.Cut ? StartsOpen(events, next) : transfer.Stop < 0;
    }
    return transfers;
}

std::string TransferText(const I2cTransfer& transfer) {
    std::string text = transfer.Repeated ? "Sr" : "S";
    for (std::size_t i = 0; i < transfer.Bytes.size(); ++i) {
        text += i == 0 ? " " : " | ";
        text += ByteText(transfer.Bytes[i], i == 0);
    }
    if (transfer.Cut) text += transfer.Bytes.empty() ? " ..." : " | ...";
    if (transfer.Stop >= 0) text += transfer.Bytes.empty() ? " P" : " | P";
    return text;
}

}  // namespace zu
