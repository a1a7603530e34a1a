#include "hw/DriverLink.h"

namespace zu {

CardRecord::Bytes CardRecord::Describe() {
    Bytes bytes{};
    PutU32(bytes, kCountAt, static_cast<std::uint32_t>(kCardRanges.size()));
    std::size_t at = kItemsAt;
    for (const CardRange& range : kCardRanges) {
        PutU32(bytes, at, kIoType);
        PutU32(bytes, at + 4, range.Start);
        PutU32(bytes, at + 8, range.Length);
        at += kItemBytes;
    }
    return bytes;
}

bool DriverLink::EnsureOpen() {
    if (open_) return true;
    if (!usable_) return false;
    if (!driver_->Open()) return Fail("Failed opening WinDriver device\n");
    open_ = VersionFits() && RegisterCard();
    if (!open_) {
        Release();
        driver_->Close();
    }
    return open_;
}

bool DriverLink::Fail(const char* text) {
    failure_ = text;
    usable_ = false;
    return false;
}

bool DriverLink::VersionFits() {
    std::array<std::uint8_t, kDriverVersionBytes> version{};
    const bool fits =
        driver_->Ioctl(kDriverVersionCode, version, {}) && GetU32(version, 0) >= kDriverOldestVersion;
    return fits || Fail("Incorrect WinDriver version\n");
}

bool DriverLink::RegisterCard() {
    card_ = CardRecord::Describe();
    const bool locked =
        driver_->Ioctl(kDriverRegisterCode, card_, {}) && GetU32(card_, CardRecord::kHandleAt) != 0;
    return locked || Fail("Failed locking device.\n");
}

void DriverLink::Release() {
    driver_->Ioctl(kDriverReleaseCode, card_, {});
}

void DriverLink::Transfer(TransferRecord& record, std::span<std::uint8_t> buffer) {
    if (!EnsureOpen()) return;
    TransferRecord::Bytes bytes = record.Pack();
    if (driver_->Ioctl(kDriverTransferCode, bytes, buffer)) record = TransferRecord::Unpack(bytes);
}

void DriverLink::Close() {
    if (!open_) return;
    Release();
    driver_->Close();
    open_ = false;
}

void DriverPorts::Out8(std::uint16_t port, std::uint8_t value) {
    TransferRecord record{TransferCommand::WriteByte, port, 1, value};
    link_->Transfer(record, {});
}

std::uint8_t DriverPorts::In8(std::uint16_t port) {
    TransferRecord record{TransferCommand::ReadByte, port, 1, 0};
    link_->Transfer(record, {});
    return static_cast<std::uint8_t>(record.Data);
}

void DriverPorts::InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) {
    TransferCommand command = TransferCommand::BlockBytes;
    if (unit == PortUnit::Word) command = TransferCommand::BlockWords;
    if (unit == PortUnit::DoubleWord) command = TransferCommand::BlockDoubleWords;
    TransferRecord record{command, port, static_cast<std::uint32_t>(bytes.size()), 0};
    link_->Transfer(record, bytes);
}

}  // namespace zu
