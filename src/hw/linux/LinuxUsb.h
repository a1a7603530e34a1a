#pragma once

#include <memory>

#include "hw/Seams.h"

namespace zu {

/// A USB device by way of libusb. Register commands are the vendor requests of the still-image class driver:
/// request 0x0C for one byte and 0x04 for more, value = command, index = the block's index. Bulk transfers
/// use the first bulk endpoints of the device. A device that was pulled out or does not answer in time fails
/// every transfer until it is opened anew. Built without libusb there is never a device.
class LinuxUsb final : public UsbDevice {
  public:
    LinuxUsb();
    ~LinuxUsb() override;
    LinuxUsb(const LinuxUsb&) = delete;
    LinuxUsb& operator=(const LinuxUsb&) = delete;

    bool Open(int n) override;
    void Close() override;
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override;
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override;
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override;
    std::int32_t BulkIn(std::span<std::uint8_t> data) override;
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace zu
