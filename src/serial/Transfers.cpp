#include "serial/Transfers.h"

#include <array>
#include <cstdio>

#include "serial/EventCodes.h"
#include "serial/EventMap.h"

namespace zu {
namespace {

constexpr int kBitsOfByte = 8;

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
    const auto& events = state.Serial.SerialEvents;
    const auto end = static_cast<std::int32_t>(events.size());
    std::vector<I2cTransfer> transfers;
    ByteBuilder builder;
    bool open = false;
    for (std::int32_t i = FindEvent(events, 0, end); i < end; i = FindEvent(events, i + 1, end)) {
        const std::uint8_t code = events[static_cast<std::size_t>(i)];
        I2cByte byte;
        if (code == event::kStart) {
            transfers.push_back({i, open, -1, {}});
            builder.Clear();
            open = true;
        } else if (!open) {
            continue;
        } else if (code == event::kStop) {
            transfers.back().Stop = i;
            open = false;
        } else if (IsBit(code)) {
            builder.Take(i, code);
        } else if (code == event::kAck || code == event::kNack) {
            if (builder.Finish(i, code == event::kAck, byte)) transfers.back().Bytes.push_back(byte);
        }
    }
    return transfers;
}

std::string TransferText(const I2cTransfer& transfer) {
    std::string text = transfer.Repeated ? "Sr" : "S";
    for (std::size_t i = 0; i < transfer.Bytes.size(); ++i) {
        text += i == 0 ? " " : " | ";
        text += ByteText(transfer.Bytes[i], i == 0);
    }
    if (transfer.Stop >= 0) text += transfer.Bytes.empty() ? " P" : " | P";
    return text;
}

}  // namespace zu
