#include "hw/IsaOps.h"

namespace zu {

void IsaOps::RegWrite(std::uint16_t /*base*/, std::uint16_t port, std::uint8_t value) {
    ports_->Out8(port, value);
}

std::uint8_t IsaOps::RegRead(std::uint16_t /*base*/, std::uint16_t port) {
    return ports_->In8(port);
}

void IsaOps::RegReadBlock(std::uint16_t /*base*/, std::uint16_t port, std::int32_t count,
                          std::uint8_t* buffer) {
    if (count <= 0) return;
    ports_->InString(port, PortUnit::Byte, {buffer, static_cast<std::size_t>(count)});
}

}  // namespace zu
