#pragma once

#include <cstdint>
#include <span>

#include "hw/Seams.h"

namespace zu {

/// What goes wrong on the way to the instrument.
enum class FaultKind : std::uint8_t {
    DeadLow,         ///< all reads are 0x00
    DeadHigh,        ///< all reads are 0xFF
    Noise,           ///< reads are random
    FlippedBit,      ///< one bit of a byte read is inverted
    FailedTransfer,  ///< a request or transfer fails
    ShortTransfer,   ///< a bulk or block transfer ends early
    Unplug           ///< from the first fault on nothing answers, nothing opens
};
inline constexpr int kFaultKinds = 7;

/// When it goes wrong: the first `After` accesses pass, then one in `OneIn` is hit, the same ones for the
/// same seed, until `Times` were. OneIn 1 hits all.
struct FaultPlan {
    FaultKind Kind = FaultKind::Noise;
    std::uint64_t Seed = 1;
    std::uint32_t After = 0;
    std::uint32_t OneIn = 1;
    std::uint32_t Times = UINT32_MAX;
};

/// Decides access by access whether a plan strikes.
class FaultSource {
  public:
    explicit FaultSource(const FaultPlan& plan) : plan_(plan), random_(plan.Seed) {}

    /// Counts one access; true if it is hit.
    bool Strikes();
    /// Accesses that were hit so far.
    [[nodiscard]] std::uint32_t Hits() const { return hits_; }
    /// Whether nothing answers any more.
    [[nodiscard]] bool Gone() const { return gone_; }
    [[nodiscard]] FaultKind Kind() const { return plan_.Kind; }
    /// What is read instead of `value` in an access that is hit.
    std::uint8_t Spoil(std::uint8_t value);
    void Spoil(std::span<std::uint8_t> bytes);
    /// Bytes that a short transfer of `length` moves.
    std::size_t ShortLength(std::size_t length);

  private:
    std::uint64_t Next();

    FaultPlan plan_;
    std::uint64_t random_;
    std::uint32_t accesses_ = 0;
    std::uint32_t hits_ = 0;
    bool gone_ = false;
};

/// Ports that go wrong by plan, in front of any others.
class FaultPortIo final : public PortIo {
  public:
    FaultPortIo(PortIo& inner, const FaultPlan& plan) : inner_(&inner), source_(plan) {}
    void Out8(std::uint16_t port, std::uint8_t value) override;
    std::uint8_t In8(std::uint16_t port) override;
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override;

  private:
    PortIo* inner_;
    FaultSource source_;
};

class FaultKernelDriver final : public KernelDriver {
  public:
    FaultKernelDriver(KernelDriver& inner, const FaultPlan& plan) : inner_(&inner), source_(plan) {}
    bool Open() override;
    bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) override;
    void Close() override;

  private:
    KernelDriver* inner_;
    FaultSource source_;
};

class FaultUsbDevice final : public UsbDevice {
  public:
    FaultUsbDevice(UsbDevice& inner, const FaultPlan& plan) : inner_(&inner), source_(plan) {}
    bool Open(int n) override;
    void Close() override;
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override;
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override;
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override;
    std::int32_t BulkIn(std::span<std::uint8_t> data) override;
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override;
    [[nodiscard]] const FaultSource& Source() const { return source_; }

  private:
    bool Fails();

    UsbDevice* inner_;
    FaultSource source_;
};

}  // namespace zu
