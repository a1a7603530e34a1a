#pragma once

#include "hw/RegisterOps.h"
#include "hw/Seams.h"

namespace zu {

/// Parallel port in EPP mode, ports accessed by the program itself: address port `base + 3`, data port
/// `base + 4`. Only block reads of words and double words are framed by control bytes.
class EppDirectOps final : public RegisterOps {
  public:
    EppDirectOps(PortIo& ports, PortUnit blockUnit) : ports_(&ports), unit_(blockUnit) {}
    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;

  private:
    PortIo* ports_;
    PortUnit unit_;
};

/// The same through the kernel driver: every access is framed and the address carries no offset, so the
/// literal pod register 0xE1 lands on address 0x01 here. The instrument's wire behaviour asks for both.
class EppDriverOps final : public RegisterOps {
  public:
    EppDriverOps(PortIo& ports, PortUnit blockUnit) : ports_(&ports), unit_(blockUnit) {}
    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;

  private:
    PortIo* ports_;
    PortUnit unit_;
};

}  // namespace zu
