#include "hw/Trace.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zu {
namespace {

template <typename... Args>
std::string Format(const char* format, Args... args) {
    std::array<char, 64> line{};
    std::snprintf(line.data(), line.size(), format, args...);
    return line.data();
}

void AppendBytes(std::string& line, std::span<const std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes) line += Format(" %02x", static_cast<unsigned>(byte));
}

std::string CommandLine(const char* name, const UsbRegisterBlock::Bytes& bytes,
                        std::span<const std::uint8_t> data, bool good) {
    const UsbRegisterBlock block = UsbRegisterBlock::Unpack(bytes);
    std::string line = Format("%s %02x %u %x :", name, block.Offset, block.Length, block.Index);
    AppendBytes(line, data);
    return good ? line : line + " failed";
}

std::string BulkLine(const char* name, std::size_t asked, std::int32_t moved) {
    const std::string line = Format("%s %zu", name, asked);
    if (moved < 0) return line + " failed";
    return moved == static_cast<std::int32_t>(asked) ? line : line + Format(" short %d", moved);
}

}  // namespace

void TraceLog::Write(std::uint16_t port, std::uint8_t value) {
    Line(Format("W %04x %02x", static_cast<unsigned>(port), static_cast<unsigned>(value)));
}
void TraceLog::Read(std::uint16_t port, std::uint8_t value) {
    Line(Format("R %04x %02x", static_cast<unsigned>(port), static_cast<unsigned>(value)));
}
void TraceLog::Block(std::uint16_t port, std::int32_t count) {
    Line(Format("B %04x %d", static_cast<unsigned>(port), count));
}
void TraceLog::Flush(std::size_t bytes) {
    Line(Format("FLUSH %zu", bytes));
}

void TraceOps::RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) {
    log_->Write(port, value);
    inner_->RegWrite(base, port, value);
}
std::uint8_t TraceOps::RegRead(std::uint16_t base, std::uint16_t port) {
    const std::uint8_t value = inner_->RegRead(base, port);
    log_->Read(port, value);
    return value;
}
void TraceOps::RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                            std::uint8_t* buffer) {
    log_->Block(port, count);
    inner_->RegReadBlock(base, port, count, buffer);
}

void TracePortIo::Out8(std::uint16_t port, std::uint8_t value) {
    log_->Line(Format("OUT %04x %02x", static_cast<unsigned>(port), static_cast<unsigned>(value)));
    inner_->Out8(port, value);
}
std::uint8_t TracePortIo::In8(std::uint16_t port) {
    const std::uint8_t value = inner_->In8(port);
    log_->Line(Format("IN %04x %02x", static_cast<unsigned>(port), static_cast<unsigned>(value)));
    return value;
}
void TracePortIo::InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) {
    log_->Line(
        Format("INS%u %04x %zu", static_cast<unsigned>(unit), static_cast<unsigned>(port), bytes.size()));
    inner_->InString(port, unit, bytes);
}

bool TraceKernelDriver::Open() {
    const bool good = inner_->Open();
    log_->Line(good ? "OPEN" : "OPEN failed");
    return good;
}
bool TraceKernelDriver::Ioctl(std::uint32_t code, std::span<std::uint8_t> record,
                              std::span<std::uint8_t> buffer) {
    std::string line = Format("IOCTL %08x :", code);
    AppendBytes(line, record.first(std::min<std::size_t>(record.size(), TransferRecord::kBytes)));
    const bool good = inner_->Ioctl(code, record, buffer);
    log_->Line(good ? line : line + " failed");
    return good;
}
void TraceKernelDriver::Close() {
    log_->Line("CLOSE");
    inner_->Close();
}

bool TraceUsbDevice::Open(int n) {
    const bool good = inner_->Open(n);
    if (good) log_->Line(Format("UOPEN %d", n));
    return good;
}
void TraceUsbDevice::Close() {
    log_->Line("UCLOSE");
    inner_->Close();
}
bool TraceUsbDevice::QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) {
    const bool good = inner_->QueryIds(query, bytes);
    std::string line = query == UsbIdQuery::Scan ? "UIDS scan :" : "UIDS descriptor :";
    AppendBytes(line, bytes);
    log_->Line(good ? line : line + " failed");
    return good;
}
bool TraceUsbDevice::RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) {
    const bool good = inner_->RegisterIn(block, data);
    log_->Line(CommandLine("UIN", block, data, good));
    return good;
}
bool TraceUsbDevice::RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) {
    const bool good = inner_->RegisterOut(block, data);
    log_->Line(CommandLine("UOUT", block, data, good));
    return good;
}
std::int32_t TraceUsbDevice::BulkIn(std::span<std::uint8_t> data) {
    const std::int32_t moved = inner_->BulkIn(data);
    log_->Line(BulkLine("BIN", data.size(), moved));
    return moved;
}
std::int32_t TraceUsbDevice::BulkOut(std::span<const std::uint8_t> data) {
    const std::int32_t moved = inner_->BulkOut(data);
    log_->Line(BulkLine("BOUT", data.size(), moved));
    return moved;
}

}  // namespace zu
