#include "hw/linux/LinuxUsb.h"

namespace zu {

struct LinuxUsb::Impl {};

LinuxUsb::LinuxUsb() = default;
LinuxUsb::~LinuxUsb() = default;
bool LinuxUsb::Open(int) {
    return false;
}
void LinuxUsb::Close() {}
bool LinuxUsb::QueryIds(UsbIdQuery, std::span<std::uint8_t>) {
    return false;
}
bool LinuxUsb::RegisterIn(const UsbRegisterBlock::Bytes&, std::span<std::uint8_t>) {
    return false;
}
bool LinuxUsb::RegisterOut(const UsbRegisterBlock::Bytes&, std::span<const std::uint8_t>) {
    return false;
}
std::int32_t LinuxUsb::BulkIn(std::span<std::uint8_t>) {
    return -1;
}
std::int32_t LinuxUsb::BulkOut(std::span<const std::uint8_t>) {
    return -1;
}

}  // namespace zu
