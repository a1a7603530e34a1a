#pragma once

#include <cstdint>

#include "hw/PortKernelDriver.h"
#include "hw/Seams.h"
#include "hw/sim/SimInstrument.h"

namespace zu {

/// The simulated instrument as a plug-in board: each register a port.
class SimIsaPorts final : public PortIo {
  public:
    SimIsaPorts(SimInstrument& instrument, std::uint16_t base) : instrument_(&instrument), base_(base) {}
    void Out8(std::uint16_t port, std::uint8_t value) override;
    std::uint8_t In8(std::uint16_t port) override;
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override;

  private:
    SimInstrument* instrument_;
    std::uint16_t base_;
};

/// What a parallel port can do.
struct SimPortModes {
    bool Byte = true;
    bool Epp = true;
};

/// The simulated instrument behind a parallel port: data port `base`, control port `base + 2`, EPP address
/// and data ports `base + 3` and `base + 4`.
class SimParallelPorts final : public PortIo {
  public:
    SimParallelPorts(SimInstrument& instrument, std::uint16_t base, SimPortModes modes)
        : instrument_(&instrument), base_(base), modes_(modes) {}
    void Out8(std::uint16_t port, std::uint8_t value) override;
    std::uint8_t In8(std::uint16_t port) override;
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override;

  private:
    void OutControl(std::uint8_t value);
    [[nodiscard]] std::uint8_t DataLines() const;
    [[nodiscard]] int EppAddress() const;

    SimInstrument* instrument_;
    std::uint16_t base_;
    SimPortModes modes_;
    std::uint8_t data_ = 0;  ///< last byte that the host put on the data lines
    std::uint8_t control_ = 0;
    std::uint8_t address_ = 0;  ///< byte protocol: address latched
    bool drives_ = false;       ///< the instrument has the data lines since the last address
    std::uint8_t eppAddress_ = 0;
    bool framed_ = false;  ///< control lines are in the frame of an access without address offset
};

/// The simulated instrument on USB, the first device of the bus.
class SimUsbDevice final : public UsbDevice {
  public:
    explicit SimUsbDevice(SimInstrument& instrument) : instrument_(&instrument) {}
    bool Open(int n) override { return n == 0; }
    void Close() override {}
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override;
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override;
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override;
    std::int32_t BulkIn(std::span<std::uint8_t> data) override;
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override;

  private:
    bool TakeRegisters(std::span<const std::uint8_t> data);
    bool Announced(std::uint16_t direction, std::size_t length);

    SimInstrument* instrument_;
    std::uint8_t selected_ = 0;
    std::uint8_t test_ = 0;
    UsbBulkHeader header_;
};

/// Every port may be had: there is nothing behind them but the simulation.
class SimPortGate final : public PortGate {
  public:
    bool Available() override { return true; }
    bool Allow(const CardRange&) override { return true; }
};

}  // namespace zu
