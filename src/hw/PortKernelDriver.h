#pragma once

#include <cstdint>

#include "hw/DriverLink.h"
#include "hw/Seams.h"

namespace zu {

/// Decides which ports may be touched.
class PortGate {
  public:
    virtual ~PortGate() = default;
    /// Whether ports can be had at all.
    virtual bool Available() = 0;
    /// Asks for a range; false if it is refused.
    virtual bool Allow(const CardRange& range) = 0;
};

/// A port driver of our own: answers the version query and the card registration and serves transfer records
/// by port accesses.
class PortKernelDriver final : public KernelDriver {
  public:
    PortKernelDriver(PortIo& ports, PortGate& gate) : ports_(&ports), gate_(&gate) {}

    bool Open() override { return gate_->Available(); }
    bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) override;
    void Close() override {}

  private:
    bool AnswerVersion(std::span<std::uint8_t> record);
    bool RegisterCard(std::span<std::uint8_t> record);
    bool Transfer(std::span<std::uint8_t> record, std::span<std::uint8_t> buffer);

    PortIo* ports_;
    PortGate* gate_;
};

}  // namespace zu
