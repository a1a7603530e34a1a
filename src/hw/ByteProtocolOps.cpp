#include "hw/ByteProtocolOps.h"

#include <array>

#include "hw/AddressByte.h"

namespace zu {
namespace {

// Bytes of the control port.
constexpr std::array<std::uint8_t, 3> kAddressStrobe{0xC5, 0xCD, 0xC5};
constexpr std::array<std::uint8_t, 2> kBlockAddressStrobe{0xCD, 0xC5};  // no leading 0xC5 here
constexpr std::array<std::uint8_t, 2> kWriteStrobe{0xC7, 0xC5};
constexpr std::array<std::uint8_t, 2> kReadStrobe{0xE4, 0xE6};
constexpr std::array<std::uint8_t, 1> kIdle{0xC5};

std::uint16_t ControlPort(std::uint16_t base) {
    return static_cast<std::uint16_t>(base + 2);
}

}  // namespace

void ByteProtocolOps::Out(std::uint16_t port, std::uint8_t value) {
    ports_->Out8(port, value);
    if (delay_ == OutputDelay::Doubled) ports_->Out8(port, value);
}

void ByteProtocolOps::Control(std::uint16_t base, std::span<const std::uint8_t> values) {
    for (const std::uint8_t value : values) Out(ControlPort(base), value);
}

void ByteProtocolOps::RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) {
    Out(base, AddressOrLiteral(port));
    Control(base, kAddressStrobe);
    Out(base, value);
    Control(base, kWriteStrobe);
}

std::uint8_t ByteProtocolOps::RegRead(std::uint16_t base, std::uint16_t port) {
    Out(base, AddressWithOffset(port));
    Control(base, kAddressStrobe);
    Control(base, kReadStrobe);
    if (delay_ == OutputDelay::Doubled) ports_->In8(base);
    const std::uint8_t value = ports_->In8(base);
    Control(base, kIdle);
    return value;
}

void ByteProtocolOps::RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                                   std::uint8_t* buffer) {
    if (count <= 0) return;
    // Block reads are never doubled.
    const std::uint16_t control = ControlPort(base);
    ports_->Out8(base, AddressWithOffset(port));
    for (const std::uint8_t value : kBlockAddressStrobe) ports_->Out8(control, value);
    for (std::int32_t i = 0; i < count; ++i) {
        buffer[i] = ports_->In8(base);
        for (const std::uint8_t value : kReadStrobe) ports_->Out8(control, value);
    }
    ports_->Out8(control, kIdle[0]);
}

}  // namespace zu
