#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "hw/RegisterOps.h"
#include "hw/Seams.h"

namespace zu {

/// Takes one line of text an access; whoever traces decides where the lines go.
class TraceLog {
  public:
    using Sink = std::function<void(std::string_view line)>;
    explicit TraceLog(Sink sink) : sink_(std::move(sink)) {}

    void Line(std::string_view text) { sink_(text); }
    /// "W 0210 1f"
    void Write(std::uint16_t port, std::uint8_t value);
    /// "R 0211 80"
    void Read(std::uint16_t port, std::uint8_t value);
    /// "B 0210 8192"
    void Block(std::uint16_t port, std::int32_t count);
    /// "FLUSH 64", bytes queued
    void Flush(std::size_t bytes);

  private:
    Sink sink_;
};

/// Register accesses, in front of any back-end.
class TraceOps final : public RegisterOps {
  public:
    TraceOps(RegisterOps& inner, TraceLog& log) : inner_(&inner), log_(&log) {}
    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;

  private:
    RegisterOps* inner_;
    TraceLog* log_;
};

/// Port accesses: "OUT 037a c5", "IN 0378 80", "INS1 0214 8192" (unit, port, bytes).
class TracePortIo final : public PortIo {
  public:
    TracePortIo(PortIo& inner, TraceLog& log) : inner_(&inner), log_(&log) {}
    void Out8(std::uint16_t port, std::uint8_t value) override;
    std::uint8_t In8(std::uint16_t port) override;
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override;

  private:
    PortIo* inner_;
    TraceLog* log_;
};

/// Requests of the port driver: "IOCTL 9538240f" and the record's bytes, of long records the first 24.
class TraceKernelDriver final : public KernelDriver {
  public:
    TraceKernelDriver(KernelDriver& inner, TraceLog& log) : inner_(&inner), log_(&log) {}
    bool Open() override;
    bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) override;
    void Close() override;

  private:
    KernelDriver* inner_;
    TraceLog* log_;
};

/// USB transfers: "UOUT 83 2 0 : 21 00" (command, length, index, data), "UIN 84 1 0 : 80", "BIN 8192",
/// "BOUT 8192"; a failed one ends in " failed".
class TraceUsbDevice final : public UsbDevice {
  public:
    TraceUsbDevice(UsbDevice& inner, TraceLog& log) : inner_(&inner), log_(&log) {}
    bool Open(int n) override;
    void Close() override;
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override;
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override;
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override;
    std::int32_t BulkIn(std::span<std::uint8_t> data) override;
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override;

  private:
    UsbDevice* inner_;
    TraceLog* log_;
};

/// Everything that leaves the machine, in front of any seams, which must outlive it.
class TracedSeams {
  public:
    TracedSeams(const InstrumentSeams& inner, TraceLog& log)
        : ports_(*inner.Ports, log), driver_(*inner.Driver, log), usb_(*inner.Usb, log) {}
    [[nodiscard]] InstrumentSeams Seams() { return {&ports_, &driver_, &usb_}; }

  private:
    TracePortIo ports_;
    TraceKernelDriver driver_;
    TraceUsbDevice usb_;
};

}  // namespace zu
