#pragma once

#include <span>

#include "hw/RegisterOps.h"
#include "hw/Seams.h"

namespace zu {

/// Whether single accesses put every output out twice, as a bus delay.
enum class OutputDelay : std::uint8_t { None, Doubled };

/// Parallel port, byte protocol: data port `base`, control port `base + 2`.
class ByteProtocolOps final : public RegisterOps {
  public:
    ByteProtocolOps(PortIo& ports, OutputDelay delay) : ports_(&ports), delay_(delay) {}
    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;

  private:
    void Out(std::uint16_t port, std::uint8_t value);
    void Control(std::uint16_t base, std::span<const std::uint8_t> values);

    PortIo* ports_;
    OutputDelay delay_;
};

}  // namespace zu
