#include "hw/UsbLink.h"

#include <algorithm>

#include "hw/Trace.h"

namespace zu {
namespace {

constexpr std::uint16_t kDeviceToHost = 0;
constexpr std::uint16_t kHostToDevice = 1;

std::uint16_t GetU16(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
}

}  // namespace

UsbLink::UsbLink(UsbDevice& device)
    : device_(&device), queue_(std::make_unique_for_overwrite<std::uint8_t[]>(kUsbQueueBytes)) {}

bool UsbLink::Open(std::uint16_t vendor, std::uint16_t product, UsbIdQuery query) {
    Close();
    for (int n = 0; n < kUsbNames && !open_; ++n) {
        if (!device_->Open(n)) continue;
        open_ = Matches(vendor, product, query);
        if (!open_) device_->Close();
    }
    return open_;
}

bool UsbLink::Matches(std::uint16_t vendor, std::uint16_t product, UsbIdQuery query) {
    if (query == UsbIdQuery::Descriptor) {
        std::array<std::uint8_t, 18> descriptor{};
        return device_->QueryIds(query, descriptor) && GetU16(descriptor, 8) == vendor &&
               GetU16(descriptor, 10) == product;
    }
    if (vendor == 0 && product == 0) return true;
    std::array<std::uint8_t, 8> ids{};
    ids[0] = static_cast<std::uint8_t>(vendor);
    ids[1] = static_cast<std::uint8_t>(vendor >> 8);
    ids[2] = static_cast<std::uint8_t>(product);
    ids[3] = static_cast<std::uint8_t>(product >> 8);
    return device_->QueryIds(query, ids) && GetU16(ids, 0) == vendor && GetU16(ids, 2) == product;
}

void UsbLink::Close() {
    if (open_) device_->Close();
    open_ = false;
}

UsbRegisterBlock::Bytes UsbLink::Block(UsbCommand command, std::size_t length) {
    block_.Offset = static_cast<std::uint32_t>(command);
    block_.Length = static_cast<std::uint8_t>(length);  // the device takes the low byte only
    return block_.Pack();
}

bool UsbLink::Note(UsbCommand command, bool good) {
    if (!good) status_ = static_cast<std::uint8_t>(command);
    return good;
}

std::uint8_t UsbLink::ReadCommand(UsbCommand command) {
    std::array<std::uint8_t, 1> data{};
    const bool good = open_ && device_->RegisterIn(Block(command, data.size()), data);
    return Note(command, good) ? data[0] : std::uint8_t{0xFF};
}

bool UsbLink::WriteCommand(UsbCommand command, std::span<const std::uint8_t> data) {
    return Note(command, open_ && device_->RegisterOut(Block(command, data.size()), data));
}

bool UsbLink::WriteIndexed(UsbCommand command, std::uint32_t index, std::span<const std::uint8_t> data) {
    block_.Index = index;
    return WriteCommand(command, data);
}

bool UsbLink::SelectRegister(std::uint8_t address) {
    return WriteCommand(UsbCommand::Registers, {&address, 1});
}

void UsbLink::Queue(std::uint8_t address, std::uint8_t value) {
    if (used_ + 2 > kUsbQueueBytes) Flush();
    queue_[used_++] = address;
    queue_[used_++] = value;
}

void UsbLink::Flush() {
    if (trace_ != nullptr) trace_->Flush(used_);
    for (std::size_t at = 0; at < used_; at += kUsbPacketBytes) {
        const std::size_t length = std::min(kUsbPacketBytes, used_ - at);
        WriteCommand(UsbCommand::Registers, {queue_.get() + at, length});
    }
    used_ = 0;
}

bool UsbLink::AnnounceBulk(std::uint16_t direction, std::size_t length) {
    const UsbBulkHeader header{direction, 0, static_cast<std::uint32_t>(length)};
    return WriteCommand(UsbCommand::BulkHeader, header.Pack());
}

bool UsbLink::BulkRead(std::span<std::uint8_t> data) {
    while (!data.empty()) {
        const std::span<std::uint8_t> piece = data.first(std::min(kUsbBulkPiece, data.size()));
        if (!AnnounceBulk(kDeviceToHost, piece.size())) return false;
        const bool whole = device_->BulkIn(piece) == static_cast<std::int32_t>(piece.size());
        if (!Note(UsbCommand::BulkHeader, whole)) return false;
        data = data.subspan(piece.size());
    }
    return true;
}

bool UsbLink::BulkWrite(std::span<const std::uint8_t> data) {
    while (!data.empty()) {
        const std::span<const std::uint8_t> piece = data.first(std::min(kUsbBulkPiece, data.size()));
        if (!AnnounceBulk(kHostToDevice, piece.size())) return false;
        const bool whole = device_->BulkOut(piece) == static_cast<std::int32_t>(piece.size());
        if (!Note(UsbCommand::BulkHeader, whole)) return false;
        data = data.subspan(piece.size());
    }
    return true;
}

}  // namespace zu
