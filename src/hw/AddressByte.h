#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace zu {

/// Pod registers of boards 0 to 3 by literal port number: first the port of S10, then that of S11.
inline constexpr std::array<std::array<std::uint16_t, 2>, 4> kPodRegisterPorts{
    {{0xE1, 0xE0}, {0xD1, 0xD0}, {0xC1, 0xC0}, {0xB1, 0xB0}}};

/// With 32 added: board b of an instrument at base 0 is 0x20 + 16 b + offset.
constexpr std::uint8_t AddressWithOffset(std::uint16_t port) {
    return static_cast<std::uint8_t>((port & 15) + (port >> 6) + 32);
}
/// Without 32; the EPP routines of the kernel driver.
constexpr std::uint8_t AddressPlain(std::uint16_t port) {
    return static_cast<std::uint8_t>(((port >> 6) & 0x30) | (port & 15));
}
/// As AddressPlain, with the low six bits of the port kept; EPP block reads of words and double words.
constexpr std::uint8_t AddressWide(std::uint16_t port) {
    return static_cast<std::uint8_t>((port & 0x3F) | ((port >> 6) & 0x30));
}
/// Writes on the parallel port: a port with bit 6 or 7 set is the address itself. That is how the pod
/// registers are reached.
constexpr std::uint8_t AddressOrLiteral(std::uint16_t port) {
    return (port & 0xC0) != 0 ? static_cast<std::uint8_t>(port) : AddressWithOffset(port);
}
/// Writes on USB: only the eight pod registers are literal.
constexpr std::uint8_t AddressOrPodRegister(std::uint16_t port) {
    const bool literal = std::any_of(kPodRegisterPorts.begin(), kPodRegisterPorts.end(),
                                     [port](const auto& pair) { return port == pair[0] || port == pair[1]; });
    return literal ? static_cast<std::uint8_t>(port) : AddressWithOffset(port);
}

}  // namespace zu
