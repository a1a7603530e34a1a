#pragma once

#include <bitset>

#include "hw/PortKernelDriver.h"
#include "hw/Seams.h"

namespace zu {

/// The processor's port instructions, where there are some and the process may have them. Ports that were not
/// granted are never touched: writes are dropped, reads give 0xFF.
class LinuxPorts final : public PortIo, public PortGate {
  public:
    bool Available() override;
    bool Allow(const CardRange& range) override;

    void Out8(std::uint16_t port, std::uint8_t value) override;
    std::uint8_t In8(std::uint16_t port) override;
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override;

  private:
    [[nodiscard]] bool Granted(std::uint16_t port, PortUnit unit) const;
    std::bitset<65536> granted_;
};

}  // namespace zu
