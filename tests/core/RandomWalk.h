#pragma once

#include <random>

#include "LiveBench.h"
#include "hw/Fault.h"

namespace zu::test {

/// Seams that can be led elsewhere while the program runs.
class PortSwitch final : public PortIo {
  public:
    PortIo* To = &NullPortIo();
    void Out8(std::uint16_t port, std::uint8_t value) override { To->Out8(port, value); }
    std::uint8_t In8(std::uint16_t port) override { return To->In8(port); }
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override {
        To->InString(port, unit, bytes);
    }
};
class DriverSwitch final : public KernelDriver {
  public:
    KernelDriver* To = &NullKernelDriver();
    bool Open() override { return To->Open(); }
    bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) override {
        return To->Ioctl(code, record, buffer);
    }
    void Close() override { To->Close(); }
};
class UsbSwitch final : public UsbDevice {
  public:
    UsbDevice* To = &NullUsbDevice();
    bool Open(int n) override { return To->Open(n); }
    void Close() override { To->Close(); }
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override {
        return To->QueryIds(query, bytes);
    }
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override {
        return To->RegisterIn(block, data);
    }
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override {
        return To->RegisterOut(block, data);
    }
    std::int32_t BulkIn(std::span<std::uint8_t> data) override { return To->BulkIn(data); }
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override { return To->BulkOut(data); }
};

/// A user who does anything at any time, on an instrument whose cable fails now and then.
class RandomWalk {
  public:
    explicit RandomWalk(unsigned seed);
    ~RandomWalk();

    /// Does `actions` things, one after the other; stops at the first after which something is out of order.
    void Run(int actions);

    [[nodiscard]] int Captures() const { return captures_; }
    [[nodiscard]] int Faults() const { return faults_; }
    [[nodiscard]] int FastLoops() const { return turns_; }

  private:
    struct Action {
        const char* Name;
        int Weight;
        void (RandomWalk::*Do)();
    };
    static const std::vector<Action>& Actions();
    [[nodiscard]] const Action& Choose();

    int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    bool OneIn(int count) { return Below(count) == 0; }
    InstrumentState& State() { return *bench_.State; }

    void DoGo();
    void DoStop() { Stop(bench_.App); }
    void DoEnd() { End(bench_.App); }
    void DoGoOrStop() { GoOrStop(bench_.App); }
    void DoTick();
    void DoTime() { bench_.Sim().Advance(Below(100) * 1e6); }
    void DoPause();
    void DoPausedChange();
    void DoCommand();
    void DoRate();
    void DoClock();
    void DoMemory();
    void DoMode();
    void DoTrigger();
    void DoPods();
    void DoWindows();
    void DoLoad();
    void DoSave();
    void DoClear();
    void DoFault();
    void DoRepair();

    Host::Turn TurnOfFastLoop();
    void BehindABox();
    void Tick();
    void Repair();
    void CheckOrder(const char* action);

    std::mt19937 random_;
    LiveBench bench_;
    PortSwitch ports_;
    DriverSwitch driver_;
    UsbSwitch usb_;
    InstrumentSeams whole_;
    std::unique_ptr<FaultPortIo> brokenPorts_;
    std::unique_ptr<FaultKernelDriver> brokenDriver_;
    std::unique_ptr<FaultUsbDevice> brokenUsb_;
    int depth_ = 0;  ///< actions within actions
    int turns_ = 0;
    int captures_ = 0;
    int faults_ = 0;
};

}  // namespace zu::test
