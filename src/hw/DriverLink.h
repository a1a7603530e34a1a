#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "hw/Seams.h"

namespace zu {

inline constexpr std::uint32_t kDriverVersionCode = 0x95382443;
inline constexpr std::uint32_t kDriverRegisterCode = 0x95382523;
inline constexpr std::uint32_t kDriverReleaseCode = 0x953824AF;
inline constexpr std::uint32_t kDriverTransferCode = 0x9538240F;
inline constexpr std::uint32_t kDriverOldestVersion = 432;
inline constexpr std::size_t kDriverVersionBytes = 104;

/// A range of ports that the instrument may use.
struct CardRange {
    std::uint32_t Start;
    std::uint32_t Length;
};
inline constexpr std::array<CardRange, 4> kCardRanges{
    {{0x210, 432}, {0x610, 384}, {0xA10, 384}, {0xE10, 384}}};

/// The description by which a card is registered: handle (0 before, the driver's answer after), number of
/// items, then 16 bytes an item: type 3 for I/O, start, length, 0.
struct CardRecord {
    static constexpr std::size_t kBytes = 708;
    static constexpr std::size_t kHandleAt = 0;
    static constexpr std::size_t kCountAt = 4;
    static constexpr std::size_t kItemsAt = 8;
    static constexpr std::size_t kItemBytes = 16;
    static constexpr std::uint32_t kIoType = 3;
    using Bytes = std::array<std::uint8_t, kBytes>;

    /// The record with the instrument's four ranges.
    static Bytes Describe();
};

/// The kernel driver behind port access: opened once, at first need, and closed at the end.
class DriverLink {
  public:
    explicit DriverLink(KernelDriver& driver) : driver_(&driver) {}

    /// Opens it unless that was tried before; false if it cannot be used.
    bool EnsureOpen();
    [[nodiscard]] bool IsOpen() const { return open_; }
    /// Starts true and drops when opening failed.
    [[nodiscard]] bool IsUsable() const { return usable_; }
    /// Why opening failed; empty if it did not.
    [[nodiscard]] const std::string& FailureText() const { return failure_; }
    /// One port access; without a driver it is skipped and the record keeps what it holds.
    void Transfer(TransferRecord& record, std::span<std::uint8_t> buffer);
    void Close();

  private:
    bool Fail(const char* text);
    bool VersionFits();
    bool RegisterCard();
    void Release();

    KernelDriver* driver_;
    CardRecord::Bytes card_{};
    bool open_ = false;
    bool usable_ = true;
    std::string failure_;
};

/// Port access by transfer records.
class DriverPorts final : public PortIo {
  public:
    explicit DriverPorts(DriverLink& link) : link_(&link) {}
    void Out8(std::uint16_t port, std::uint8_t value) override;
    std::uint8_t In8(std::uint16_t port) override;
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override;

  private:
    DriverLink* link_;
};

}  // namespace zu
