#include "hw/EppOps.h"

#include <array>

#include "hw/AddressByte.h"

namespace zu {
namespace {

constexpr std::array<std::uint8_t, 3> kFrameStart{0x04, 0x0F, 0x00};
constexpr std::array<std::uint8_t, 3> kFrameEnd{0x00, 0x0B, 0x00};

std::uint16_t At(std::uint16_t base, int offset) {
    return static_cast<std::uint16_t>(base + offset);
}

/// Control bytes around one access, and the address that follows the first of them.
class Frame {
  public:
    Frame(PortIo& ports, std::uint16_t base, std::uint8_t address) : ports_(ports), base_(base) {
        for (const std::uint8_t value : kFrameStart) ports_.Out8(At(base_, 2), value);
        ports_.Out8(At(base_, 3), address);
    }
    ~Frame() {
        for (const std::uint8_t value : kFrameEnd) ports_.Out8(At(base_, 2), value);
    }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

  private:
    PortIo& ports_;
    std::uint16_t base_;
};

}  // namespace

void EppDirectOps::RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) {
    ports_->Out8(At(base, 3), AddressOrLiteral(port));
    ports_->Out8(At(base, 4), value);
}

std::uint8_t EppDirectOps::RegRead(std::uint16_t base, std::uint16_t port) {
    ports_->Out8(At(base, 3), AddressWithOffset(port));
    return ports_->In8(At(base, 4));
}

void EppDirectOps::RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                                std::uint8_t* buffer) {
    if (count <= 0) return;
    if (unit_ != PortUnit::Byte) {
        const Frame frame(*ports_, base, AddressWide(port));
        ports_->InString(At(base, 4), unit_, {buffer, static_cast<std::size_t>(count)});
        return;
    }
    ports_->Out8(At(base, 3), AddressWithOffset(port));
    for (std::int32_t i = 0; i < count; ++i) buffer[i] = ports_->In8(At(base, 4));
}

void EppDriverOps::RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) {
    const Frame frame(*ports_, base, AddressPlain(port));
    ports_->Out8(At(base, 4), value);
}

std::uint8_t EppDriverOps::RegRead(std::uint16_t base, std::uint16_t port) {
    const Frame frame(*ports_, base, AddressPlain(port));
    return ports_->In8(At(base, 4));
}

void EppDriverOps::RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                                std::uint8_t* buffer) {
    if (count <= 0) return;
    const Frame frame(*ports_, base, AddressPlain(port));
    ports_->InString(At(base, 4), unit_, {buffer, static_cast<std::size_t>(count)});
}

}  // namespace zu
