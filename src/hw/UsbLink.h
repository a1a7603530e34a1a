#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "hw/Seams.h"

namespace zu {

class TraceLog;

/// Commands of the USB device.
enum class UsbCommand : std::uint8_t {
    BulkHeader = 0x82,
    Registers = 0x83,  ///< one byte selects the register to read, more are address and data pairs
    ReadRegister = 0x84,
    ReadStatus = 0x86,  ///< bit 4 follows what WriteTest set
    WriteTest = 0x88,
    SetUp = 0x8C,  ///< once after detection
    ReadIdentity = 0x8E
};

inline constexpr std::uint16_t kUsbVendor = 0x3195;
inline constexpr std::uint16_t kUsbProduct = 0x20;
inline constexpr int kUsbNames = 127;  ///< device numbers searched
inline constexpr std::size_t kUsbQueueBytes = 1000000;
inline constexpr std::size_t kUsbPacketBytes = 64;
inline constexpr std::size_t kUsbBulkPiece = 61440;
inline constexpr std::uint8_t kUsbStatusGood = 63;  ///< status byte while no transfer has failed

/// The USB device of the instrument: its register commands, the queue of register writes and bulk transfers.
class UsbLink {
  public:
    explicit UsbLink(UsbDevice& device);

    /// Searches the device list and keeps the first match open; an earlier device is closed first. Vendor and
    /// product both 0 accept any device where the platform is asked by UsbIdQuery::Scan.
    bool Open(std::uint16_t vendor, std::uint16_t product, UsbIdQuery query);
    void Close();
    [[nodiscard]] bool IsOpen() const { return open_; }

    /// One byte; 0xFF if the command failed.
    std::uint8_t ReadCommand(UsbCommand command);
    bool WriteCommand(UsbCommand command, std::span<const std::uint8_t> data);
    /// Sets the block's index, which all later commands carry along.
    bool WriteIndexed(UsbCommand command, std::uint32_t index, std::span<const std::uint8_t> data);
    /// Selects the register that a read or a bulk transfer works on.
    bool SelectRegister(std::uint8_t address);

    /// Puts a pair at the queue's end; a full queue is sent first.
    void Queue(std::uint8_t address, std::uint8_t value);
    /// Sends all pairs in packets; the queue is empty afterwards whatever became of them.
    void Flush();
    [[nodiscard]] std::size_t Queued() const { return used_; }

    /// Bulk transfers in pieces, each announced by its header. False: a piece failed or came short, the rest
    /// was not moved.
    bool BulkRead(std::span<std::uint8_t> data);
    bool BulkWrite(std::span<const std::uint8_t> data);

    /// 63 while no transfer has failed since ResetStatus, else the command of the last failure.
    [[nodiscard]] std::uint8_t Status() const { return status_; }
    void ResetStatus() { status_ = kUsbStatusGood; }

    void SetTrace(TraceLog* trace) { trace_ = trace; }

  private:
    UsbRegisterBlock::Bytes Block(UsbCommand command, std::size_t length);
    bool Matches(std::uint16_t vendor, std::uint16_t product, UsbIdQuery query);
    bool AnnounceBulk(std::uint16_t direction, std::size_t length);
    bool Note(UsbCommand command, bool good);

    UsbDevice* device_;
    UsbRegisterBlock block_;  ///< one for all commands: its index stays from command to command
    std::unique_ptr<std::uint8_t[]> queue_;  ///< kUsbQueueBytes, touched as far as it is used
    std::size_t used_ = 0;
    bool open_ = false;
    std::uint8_t status_ = kUsbStatusGood;
    TraceLog* trace_ = nullptr;
};

}  // namespace zu
