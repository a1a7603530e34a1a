#include "hw/Seams.h"

namespace zu {
namespace {

class NoPorts final : public PortIo {
  public:
    void Out8(std::uint16_t, std::uint8_t) override {}
    std::uint8_t In8(std::uint16_t) override { return 0xFF; }
    void InString(std::uint16_t, PortUnit, std::span<std::uint8_t>) override {}
};

class NoDriver final : public KernelDriver {
  public:
    bool Open() override { return false; }
    bool Ioctl(std::uint32_t, std::span<std::uint8_t>, std::span<std::uint8_t>) override { return false; }
    void Close() override {}
};

class NoUsb final : public UsbDevice {
  public:
    bool Open(int) override { return false; }
    void Close() override {}
    bool QueryIds(UsbIdQuery, std::span<std::uint8_t>) override { return false; }
    bool RegisterIn(const UsbRegisterBlock::Bytes&, std::span<std::uint8_t>) override { return false; }
    bool RegisterOut(const UsbRegisterBlock::Bytes&, std::span<const std::uint8_t>) override { return false; }
    std::int32_t BulkIn(std::span<std::uint8_t>) override { return -1; }
    std::int32_t BulkOut(std::span<const std::uint8_t>) override { return -1; }
};

}  // namespace

PortIo& NullPortIo() {
    static NoPorts ports;
    return ports;
}
KernelDriver& NullKernelDriver() {
    static NoDriver driver;
    return driver;
}
UsbDevice& NullUsbDevice() {
    static NoUsb usb;
    return usb;
}

}  // namespace zu
