#include "hw/linux/LinuxPorts.h"

#include <algorithm>
#include <cstring>

#if defined(__linux__) && (defined(__x86_64__) || defined(__i386__))
#include <sys/io.h>
#define ZU_PORT_INSTRUCTIONS 1
#else
#define ZU_PORT_INSTRUCTIONS 0
#endif

namespace zu {
namespace {

#if ZU_PORT_INSTRUCTIONS
bool AskForPorts(std::uint32_t start, std::uint32_t length) {
    return ioperm(start, length, 1) == 0;
}
void Out(std::uint16_t port, std::uint8_t value) {
    outb(value, port);
}
std::uint32_t In(std::uint16_t port, PortUnit unit) {
    if (unit == PortUnit::Word) return inw(port);
    return unit == PortUnit::DoubleWord ? inl(port) : inb(port);
}
#else
bool AskForPorts(std::uint32_t, std::uint32_t) {
    return false;
}
void Out(std::uint16_t, std::uint8_t) {}
std::uint32_t In(std::uint16_t, PortUnit) {
    return 0xFFFFFFFF;
}
#endif

}  // namespace

bool LinuxPorts::Available() {
    return AskForPorts(kCardRanges[0].Start, 1);
}

bool LinuxPorts::Allow(const CardRange& range) {
    const std::uint64_t end = std::uint64_t{range.Start} + range.Length;
    if (end > granted_.size() || !AskForPorts(range.Start, range.Length)) return false;
    for (std::size_t port = range.Start; port < end; ++port) granted_.set(port);
    return true;
}

bool LinuxPorts::Granted(std::uint16_t port, PortUnit unit) const {
    const std::size_t end = std::size_t{port} + static_cast<std::size_t>(unit);
    if (end > granted_.size()) return false;
    for (std::size_t p = port; p < end; ++p) {
        if (!granted_.test(p)) return false;
    }
    return true;
}

void LinuxPorts::Out8(std::uint16_t port, std::uint8_t value) {
    if (Granted(port, PortUnit::Byte)) Out(port, value);
}

std::uint8_t LinuxPorts::In8(std::uint16_t port) {
    return Granted(port, PortUnit::Byte) ? static_cast<std::uint8_t>(In(port, PortUnit::Byte))
                                         : std::uint8_t{0xFF};
}

void LinuxPorts::InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) {
    const std::size_t step = static_cast<std::size_t>(unit);
    const bool granted = Granted(port, unit);
    for (std::size_t at = 0; at + step <= bytes.size(); at += step) {
        const std::uint32_t value = granted ? In(port, unit) : 0xFFFFFFFF;
        for (std::size_t i = 0; i < step; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

}  // namespace zu
