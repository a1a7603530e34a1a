#pragma once

#include "hw/RegisterOps.h"
#include "hw/Seams.h"

namespace zu {

/// Plug-in board: each register is a port of its own.
class IsaOps final : public RegisterOps {
  public:
    explicit IsaOps(PortIo& ports) : ports_(&ports) {}
    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;

  private:
    PortIo* ports_;
};

}  // namespace zu
