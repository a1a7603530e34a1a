#include "hw/Fault.h"

#include <algorithm>

namespace zu {

std::uint64_t FaultSource::Next() {
    // splitmix64: tiny, and the same on every machine.
    random_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t z = random_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

bool FaultSource::Strikes() {
    if (gone_) return true;
    if (accesses_ < plan_.After) {
        ++accesses_;
        return false;
    }
    const bool hit = hits_ < plan_.Times && Next() % std::max<std::uint32_t>(plan_.OneIn, 1) == 0;
    if (hit) ++hits_;
    if (hit && plan_.Kind == FaultKind::Unplug) gone_ = true;
    return hit;
}

std::uint8_t FaultSource::Spoil(std::uint8_t value) {
    switch (plan_.Kind) {
        case FaultKind::DeadLow:
            return 0x00;
        case FaultKind::Noise:
            return static_cast<std::uint8_t>(Next());
        case FaultKind::FlippedBit:
            return static_cast<std::uint8_t>(value ^ (1U << (Next() % 8)));
        case FaultKind::DeadHigh:
        case FaultKind::FailedTransfer:
        case FaultKind::ShortTransfer:
        case FaultKind::Unplug:
            break;
    }
    return 0xFF;
}

void FaultSource::Spoil(std::span<std::uint8_t> bytes) {
    for (std::uint8_t& byte : bytes) byte = Spoil(byte);
}

std::size_t FaultSource::ShortLength(std::size_t length) {
    return length == 0 ? 0 : static_cast<std::size_t>(Next() % length);
}

void FaultPortIo::Out8(std::uint16_t port, std::uint8_t value) {
    const bool lost = source_.Strikes() && source_.Kind() >= FaultKind::FailedTransfer;
    if (!lost) inner_->Out8(port, value);
}

std::uint8_t FaultPortIo::In8(std::uint16_t port) {
    const bool hit = source_.Strikes();
    if (source_.Gone()) return 0xFF;
    const std::uint8_t value = inner_->In8(port);
    return hit ? source_.Spoil(value) : value;
}

void FaultPortIo::InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) {
    const bool hit = source_.Strikes();
    if (!source_.Gone()) inner_->InString(port, unit, bytes);
    if (hit) source_.Spoil(bytes.subspan(source_.ShortLength(bytes.size())));
}

bool FaultKernelDriver::Open() {
    return !source_.Gone() && inner_->Open();
}

bool FaultKernelDriver::Ioctl(std::uint32_t code, std::span<std::uint8_t> record,
                              std::span<std::uint8_t> buffer) {
    const bool hit = source_.Strikes();
    if (source_.Gone()) return false;
    if (hit && source_.Kind() == FaultKind::FailedTransfer) return false;
    const bool good = inner_->Ioctl(code, record, buffer);
    if (hit && buffer.empty()) source_.Spoil(record);
    if (hit) source_.Spoil(buffer.subspan(source_.ShortLength(buffer.size())));
    return good;
}

void FaultKernelDriver::Close() {
    inner_->Close();
}

bool FaultUsbDevice::Fails() {
    const bool hit = source_.Strikes();
    return source_.Gone() || (hit && source_.Kind() == FaultKind::FailedTransfer);
}

bool FaultUsbDevice::Open(int n) {
    return !source_.Gone() && inner_->Open(n);
}

void FaultUsbDevice::Close() {
    inner_->Close();
}

bool FaultUsbDevice::QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) {
    return !source_.Gone() && inner_->QueryIds(query, bytes);
}

bool FaultUsbDevice::RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) {
    const bool hit = source_.Strikes();
    if (source_.Gone() || (hit && source_.Kind() == FaultKind::FailedTransfer)) return false;
    const bool good = inner_->RegisterIn(block, data);
    if (hit) source_.Spoil(data);
    return good;
}

bool FaultUsbDevice::RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) {
    return !Fails() && inner_->RegisterOut(block, data);
}

std::int32_t FaultUsbDevice::BulkIn(std::span<std::uint8_t> data) {
    const bool hit = source_.Strikes();
    if (source_.Gone() || (hit && source_.Kind() == FaultKind::FailedTransfer)) return -1;
    if (!hit) return inner_->BulkIn(data);
    if (source_.Kind() == FaultKind::ShortTransfer) {
        return inner_->BulkIn(data.first(source_.ShortLength(data.size())));
    }
    const std::int32_t moved = inner_->BulkIn(data);
    source_.Spoil(data);
    return moved;
}

std::int32_t FaultUsbDevice::BulkOut(std::span<const std::uint8_t> data) {
    const bool hit = source_.Strikes();
    if (source_.Gone() || (hit && source_.Kind() == FaultKind::FailedTransfer)) return -1;
    const bool cut = hit && source_.Kind() == FaultKind::ShortTransfer;
    return inner_->BulkOut(cut ? data.first(source_.ShortLength(data.size())) : data);
}

}  // namespace zu
