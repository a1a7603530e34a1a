#include "hw/UsbOps.h"

#include "hw/AddressByte.h"

namespace zu {
namespace {

constexpr std::uint8_t kStrobeAddress = 0xF0;

}  // namespace

void UsbOps::RegWrite(std::uint16_t /*base*/, std::uint16_t port, std::uint8_t value) {
    link_->Queue(AddressOrPodRegister(port), value);
}

std::uint8_t UsbOps::RegRead(std::uint16_t /*base*/, std::uint16_t port) {
    const std::uint8_t address = AddressWithOffset(port);
    if ((address & 15) == 0) {
        // A read of R0 only clocks the boards' chains: it is queued to keep its place among the writes.
        link_->Queue(kStrobeAddress, 0);
        return 0;
    }
    if (link_->Queued() > 0) link_->Flush();
    link_->SelectRegister(address);
    return link_->ReadCommand(UsbCommand::ReadRegister);
}

void UsbOps::RegReadBlock(std::uint16_t /*base*/, std::uint16_t port, std::int32_t count,
                          std::uint8_t* buffer) {
    if (link_->Queued() > 0) link_->Flush();
    link_->SelectRegister(AddressWithOffset(port));
    if (count > 0) link_->BulkRead({buffer, static_cast<std::size_t>(count)});
}

}  // namespace zu
