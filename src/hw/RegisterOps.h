#pragma once

#include <cstdint>

namespace zu {

/// The three operations by which everything reaches a register; swapped at run time. `base` is the parallel
/// port (or nothing, for ISA and USB), `port` an entry of the PortTable. Nothing is reported: a dead
/// instrument reads as noise or 0xFF.
class RegisterOps {
  public:
    virtual ~RegisterOps() = default;
    virtual void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) = 0;
    virtual std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) = 0;
    /// Stores `count` bytes; a count below 1 stores nothing.
    virtual void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                              std::uint8_t* buffer) = 0;
};

/// Nothing is connected: writes go nowhere, reads give 0x00, block reads leave the buffer as it is.
RegisterOps& NullRegisterOps();

}  // namespace zu
