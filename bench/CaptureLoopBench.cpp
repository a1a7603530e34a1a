// Captures a second in the fast loop on the simulated instrument, and whose time it is: what passes inside
// the seams is the instrument's, the rest the program's own, without its windows.
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <string>

#include "core/Capture.h"
#include "core/Startup.h"
#include "hw/sim/SimAttachment.h"
#include "hw/sim/SimScenes.h"
#include "state/Catalogue.h"
#include "support/Bench.h"

namespace zu {
namespace {

using Clock = std::chrono::steady_clock;

/// What passed a seam.
struct Passed {
    Clock::duration Time{};
    std::int64_t Accesses = 0;
    std::int64_t Bytes = 0;

    /// Runs one access and counts it.
    template <typename Access>
    auto Count(std::size_t bytes, Access access) {
        const Clock::time_point begin = Clock::now();
        auto result = access();
        Time += Clock::now() - begin;
        ++Accesses;
        Bytes += static_cast<std::int64_t>(bytes);
        return result;
    }
};

class TimedUsb final : public UsbDevice {
  public:
    TimedUsb(UsbDevice& inner, Passed& passed) : inner_(inner), passed_(passed) {}
    bool Open(int n) override { return inner_.Open(n); }
    void Close() override { inner_.Close(); }
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override {
        return inner_.QueryIds(query, bytes);
    }
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override {
        return passed_.Count(data.size(), [&] { return inner_.RegisterIn(block, data); });
    }
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override {
        return passed_.Count(data.size(), [&] { return inner_.RegisterOut(block, data); });
    }
    std::int32_t BulkIn(std::span<std::uint8_t> data) override {
        return passed_.Count(data.size(), [&] { return inner_.BulkIn(data); });
    }
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override {
        return passed_.Count(data.size(), [&] { return inner_.BulkOut(data); });
    }

  private:
    UsbDevice& inner_;
    Passed& passed_;
};

class TimedDriver final : public KernelDriver {
  public:
    TimedDriver(KernelDriver& inner, Passed& passed) : inner_(inner), passed_(passed) {}
    bool Open() override { return inner_.Open(); }
    bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) override {
        return passed_.Count(record.size() + buffer.size(),
                             [&] { return inner_.Ioctl(code, record, buffer); });
    }
    void Close() override { inner_.Close(); }

  private:
    KernelDriver& inner_;
    Passed& passed_;
};

/// Waits cost nothing but the instrument's own time. The loop ends after one capture more.
struct LoopHost final : test::ScriptedHost {
    SimInstrument* Instrument = nullptr;
    Passed* Simulator = nullptr;
    zu::App* Program = nullptr;
    std::int32_t Until = 0;

    void WaitNanoseconds(double ns) override {
        if (Instrument == nullptr) return;
        Simulator->Count(0, [&] { return Instrument->Advance(ns), true; });
    }
    Turn RunWaitingMessage() override {
        if (Program != nullptr && Program->State.Capture.CaptureCount >= Until) Stop(*Program);
        return Turn::Idle;
    }
};

struct Program {
    Passed Simulator;
    test::TempFolder Folder;
    SimAttachment Cable;
    TimedUsb Usb{*Cable.Seams().Usb, Simulator};
    TimedDriver Driver{*Cable.Seams().Driver, Simulator};
    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
    LoopHost Host;
    test::RecordingShell Shell{*State};
    HardwareSession Hardware{Host};
    zu::App App{*State, Host, Shell, Hardware};

    Program(int row, SimCable cable) : Cable(SimSpec{row, cable}) {
        State->Files.AppDir = Folder.Path();
        State->Command.Simulate = std::to_string(row) + "@" + std::string(SimCableName(cable));
        Cable.Instrument().SetRealTime(false);
        Cable.Instrument().Connect(MakeSimScene("counters"));
        Host.Instrument = &Cable.Instrument();
        Host.Simulator = &Simulator;
        Hardware.Seams = Cable.Seams();
        Hardware.Seams.Usb = &Usb;
        Hardware.Seams.Driver = &Driver;
        RunStartupSequence(App);
        Host.Program = &App;
        State->Capture.CaptureMode = 0;
        State->Capture.CaptureLoopMode = 1;
    }
    ~Program() { ReleaseRegisters(Hardware); }
};

constexpr int kCapturesARun = 20;

/// An instrument of 8K; argument 0: over USB, 1: behind an ISA-style address.
void FastLoopAt8192(benchmark::State& run) {
    Program program(RowOfUserText("Roach40L").value_or(0), run.range(0) == 0 ? SimCable::Usb : SimCable::Isa);
    if (program.State->Identity.Emulated != 0) return run.SkipWithError("no instrument found");
    program.Simulator = {};
    std::int64_t captures = 0;
    Clock::duration all{};
    for (auto _ : run) {
        program.Host.Until = kCapturesARun;
        const Clock::time_point begin = Clock::now();
        Go(program.App);
        all += Clock::now() - begin;
        captures += program.State->Capture.CaptureCount;
    }
    const double seconds = std::chrono::duration<double>(all).count();
    const double simulated = std::chrono::duration<double>(program.Simulator.Time).count();
    const auto count = static_cast<double>(captures);
    run.counters["samples"] = program.State->Memory.BufferLen;
    run.counters["captures/s"] = count / seconds;
    run.counters["own_us"] = (seconds - simulated) / count * 1e6;
    run.counters["sim_us"] = simulated / count * 1e6;
    run.counters["accesses"] = static_cast<double>(program.Simulator.Accesses) / count;
    run.counters["bytes"] = static_cast<double>(program.Simulator.Bytes) / count;
}
BENCHMARK(FastLoopAt8192)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zu
