#pragma once

#include "hw/RegisterOps.h"
#include "hw/UsbLink.h"

namespace zu {

/// USB: writes and strobes wait in the queue, only a real read goes out at once.
class UsbOps final : public RegisterOps {
  public:
    explicit UsbOps(UsbLink& link) : link_(&link) {}
    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;

  private:
    UsbLink* link_;
};

}  // namespace zu
