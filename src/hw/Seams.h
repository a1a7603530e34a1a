#pragma once

#include <cstdint>
#include <span>

#include "hw/WireRecords.h"

namespace zu {

/// Bytes that one unit of a string input moves.
enum class PortUnit : std::uint8_t { Byte = 1, Word = 2, DoubleWord = 4 };

/// Port input and output.
class PortIo {
  public:
    virtual ~PortIo() = default;
    virtual void Out8(std::uint16_t port, std::uint8_t value) = 0;
    virtual std::uint8_t In8(std::uint16_t port) = 0;
    /// String input from one port into `bytes`, little-endian; a remainder shorter than a unit is not read.
    virtual void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) = 0;
};

/// The kernel's port driver. `record` is rewritten in place with the answer; `buffer` takes the bytes of a
/// block read. False: the request failed, nothing is known of the record.
class KernelDriver {
  public:
    virtual ~KernelDriver() = default;
    virtual bool Open() = 0;
    virtual bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record,
                       std::span<std::uint8_t> buffer) = 0;
    virtual void Close() = 0;
};

/// How the platform asks a USB device for its ids.
enum class UsbIdQuery : std::uint8_t {
    Scan,       ///< 8 bytes in and out: vendor at 0, product at 2
    Descriptor  ///< 18 bytes out, the standard device descriptor: vendor at 8, product at 10
};

/// A USB device of the host's list. One is open at a time.
class UsbDevice {
  public:
    virtual ~UsbDevice() = default;
    /// Opens the n-th device, n from 0; false if there is none or it may not be used.
    virtual bool Open(int n) = 0;
    virtual void Close() = 0;
    virtual bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) = 0;
    /// A register command that reads `data`, or writes it.
    virtual bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) = 0;
    virtual bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) = 0;
    /// Bytes moved over the first bulk endpoint of the direction; -1 for a failure.
    virtual std::int32_t BulkIn(std::span<std::uint8_t> data) = 0;
    virtual std::int32_t BulkOut(std::span<const std::uint8_t> data) = 0;
};

/// Nothing is there: ports read 0xFF, driver and device do not open.
PortIo& NullPortIo();
KernelDriver& NullKernelDriver();
UsbDevice& NullUsbDevice();

/// What the connection stands on. Attached before SetupOSFunctions; must outlive the session.
struct InstrumentSeams {
    PortIo* Ports = &NullPortIo();
    KernelDriver* Driver = &NullKernelDriver();
    UsbDevice* Usb = &NullUsbDevice();
};

}  // namespace zu
