#include "hw/PortKernelDriver.h"

#include <algorithm>

namespace zu {

bool PortKernelDriver::Ioctl(std::uint32_t code, std::span<std::uint8_t> record,
                             std::span<std::uint8_t> buffer) {
    switch (code) {
        case kDriverVersionCode:
            return AnswerVersion(record);
        case kDriverRegisterCode:
            return RegisterCard(record);
        case kDriverReleaseCode:
            return true;
        case kDriverTransferCode:
            return Transfer(record, buffer);
        default:
            return false;
    }
}

bool PortKernelDriver::AnswerVersion(std::span<std::uint8_t> record) {
    PutU32(record, 0, kDriverOldestVersion);
    return record.size() == kDriverVersionBytes;
}

bool PortKernelDriver::RegisterCard(std::span<std::uint8_t> record) {
    if (record.size() != CardRecord::kBytes) return false;
    constexpr std::size_t kRoom = (CardRecord::kBytes - CardRecord::kItemsAt) / CardRecord::kItemBytes;
    const std::size_t items = std::min<std::size_t>(GetU32(record, CardRecord::kCountAt), kRoom);
    bool granted = items > 0;
    for (std::size_t i = 0; i < items; ++i) {
        const std::size_t at = CardRecord::kItemsAt + i * CardRecord::kItemBytes;
        if (GetU32(record, at) != CardRecord::kIoType) continue;
        granted = gate_->Allow({GetU32(record, at + 4), GetU32(record, at + 8)}) && granted;
    }
    PutU32(record, CardRecord::kHandleAt, granted ? 1 : 0);
    return true;
}

bool PortKernelDriver::Transfer(std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) {
    if (record.size() != TransferRecord::kBytes) return false;
    const TransferRecord transfer = TransferRecord::Unpack(record);
    const auto port = static_cast<std::uint16_t>(transfer.Port);
    const std::span<std::uint8_t> bytes = buffer.first(std::min<std::size_t>(buffer.size(), transfer.Count));
    switch (transfer.Command) {
        case TransferCommand::ReadByte:
            PutU32(record, 20, ports_->In8(port));
            return true;
        case TransferCommand::WriteByte:
            ports_->Out8(port, static_cast<std::uint8_t>(transfer.Data));
            return true;
        case TransferCommand::BlockBytes:
            ports_->InString(port, PortUnit::Byte, bytes);
            return true;
        case TransferCommand::BlockWords:
            ports_->InString(port, PortUnit::Word, bytes);
            return true;
        case TransferCommand::BlockDoubleWords:
            ports_->InString(port, PortUnit::DoubleWord, bytes);
            return true;
    }
    return false;
}

}  // namespace zu
