// What detection, programming and pattern downloads cost: transfers and bytes over USB as counters, and the
// program's own time with nothing behind the device.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>
#include <vector>

#include "hw/BackEnds.h"
#include "hw/PatternDownload.h"
#include "hw/sim/SimAttachment.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kRow = 15;

/// Counts what passes.
class CountingUsb final : public UsbDevice {
  public:
    explicit CountingUsb(UsbDevice& inner) : inner_(inner) {}
    std::int64_t Control = 0;
    std::int64_t Bulk = 0;
    std::int64_t Bytes = 0;

    void Forget() { Control = Bulk = Bytes = 0; }
    bool Open(int n) override { return inner_.Open(n); }
    void Close() override { inner_.Close(); }
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override {
        return inner_.QueryIds(query, bytes);
    }
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override {
        ++Control;
        Bytes += static_cast<std::int64_t>(data.size());
        return inner_.RegisterIn(block, data);
    }
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override {
        ++Control;
        Bytes += static_cast<std::int64_t>(data.size());
        return inner_.RegisterOut(block, data);
    }
    std::int32_t BulkIn(std::span<std::uint8_t> data) override {
        ++Bulk;
        Bytes += static_cast<std::int64_t>(data.size());
        return inner_.BulkIn(data);
    }
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override {
        ++Bulk;
        Bytes += static_cast<std::int64_t>(data.size());
        return inner_.BulkOut(data);
    }

  private:
    UsbDevice& inner_;
};

/// A device that takes everything at once.
class SwallowingUsb final : public UsbDevice {
  public:
    bool Open(int n) override { return n == 0; }
    void Close() override {}
    bool QueryIds(UsbIdQuery, std::span<std::uint8_t> bytes) override {
        bytes[0] = 0x95;
        bytes[1] = 0x31;
        bytes[2] = 0x20;
        bytes[3] = 0;
        return true;
    }
    bool RegisterIn(const UsbRegisterBlock::Bytes&, std::span<std::uint8_t>) override { return true; }
    bool RegisterOut(const UsbRegisterBlock::Bytes&, std::span<const std::uint8_t>) override { return true; }
    std::int32_t BulkIn(std::span<std::uint8_t> data) override {
        return static_cast<std::int32_t>(data.size());
    }
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override {
        return static_cast<std::int32_t>(data.size());
    }
};

/// A host without windows whose clock never makes anybody wait.
class QuietHost final : public Host {
  public:
    void Message(std::string_view, std::string_view) override {}
    bool Ask(std::string_view, std::string_view) override { return true; }
    void Remark(std::string_view) override {}
    void Beep() override {}
    void StartTimer(int, int) override {}
    void KillTimer(int) override {}
    Turn RunWaitingMessage() override { return Turn::Idle; }
    std::uint32_t TickCount() override { return ticks_++; }
    void WaitNanoseconds(double) override {}
    LocalTime Now() override { return {}; }
    std::optional<std::string> ChooseFile(const FileRequest&) override { return std::nullopt; }
    void SetWindowTitle(std::string_view) override {}
    void PrintLine(std::string_view) override {}
    void CloseMainWindow() override {}
    [[noreturn]] void EndProcess(int code) override { std::exit(code); }

  private:
    std::uint32_t ticks_ = 0;
};

/// A program connected over USB.
struct Connected {
    SimAttachment Sim{{kRow, SimCable::Usb}};
    SwallowingUsb Swallow;
    CountingUsb Usb;
    QuietHost TheHost;
    HardwareSession Hardware{TheHost};
    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();

    explicit Connected(bool simulated) : Usb(simulated ? *Sim.Seams().Usb : Swallow) {
        Hardware.Seams.Usb = &Usb;
        SetupOSFunctions(Hardware, 0);
        ChangeModel(*State, kRow);
        SetupIO(Hardware, *State, 0, 9);
        if (simulated) {
            FindBoard(Hardware, *State, 0);
        } else {
            UseOps(Hardware, Hardware.Slots->UsbRegisters);
        }
        State->Identity.Emulated = 0;
        UsbFlushQueue(Hardware);
        Usb.Forget();
    }
    void Report(benchmark::State& run) {
        run.counters["control"] = static_cast<double>(Usb.Control);
        run.counters["bulk"] = static_cast<double>(Usb.Bulk);
        run.counters["bytes"] = static_cast<double>(Usb.Bytes);
    }
};

void Detection(benchmark::State& run) {
    Connected program(true);
    for (auto _ : run) {
        program.Usb.Forget();
        benchmark::DoNotOptimize(FindBoard(program.Hardware, *program.State, 0));
        UsbFlushQueue(program.Hardware);
    }
    program.Report(run);
}
BENCHMARK(Detection);

void ClockAndMemory(benchmark::State& run) {
    Connected program(true);
    program.State->Clock.ClockRate = static_cast<std::uint8_t>(run.range(0));
    for (auto _ : run) {
        program.Usb.Forget();
        SetupMemConfig(program.Hardware, *program.State);
        SetClock(program.Hardware, *program.State);
        UsbFlushQueue(program.Hardware);
    }
    program.Report(run);
}
BENCHMARK(ClockAndMemory)->Arg(5)->Arg(34);

void QualifiedClock(benchmark::State& run) {
    Connected program(true);
    program.State->Clock.ClockType = 3;
    for (auto& word : program.State->Clock.ClockExt) word = "1XXXXXXX";
    for (auto _ : run) {
        program.Usb.Forget();
        SetClock(program.Hardware, *program.State);
        UsbFlushQueue(program.Hardware);
    }
    program.Report(run);
}
BENCHMARK(QualifiedClock);

/// The queue by itself: register pairs in, packets out.
void QueueAndFlush(benchmark::State& run) {
    Connected program(false);
    for (auto _ : run) {
        for (std::int64_t i = 0; i < run.range(0); ++i) program.Hardware.Ops->RegWrite(0, 0x401, 5);
        UsbFlushQueue(program.Hardware);
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(QueueAndFlush)->Arg(1000)->Arg(80000);

/// Pattern data of all pods of the deepest memory, against copying the same bytes.
void PatternDownload(benchmark::State& run) {
    Connected program(false);
    for (std::size_t pod = 0; pod < kMaxPods; ++pod) program.State->Pods.HardwarePod[pod] = 1;
    for (auto _ : run) {
        program.Usb.Forget();
        DownloadPatterns(program.Hardware, *program.State);
    }
    program.Report(run);
    run.SetBytesProcessed(run.iterations() * program.Usb.Bytes);
}
BENCHMARK(PatternDownload)->Unit(benchmark::kMillisecond);

void PatternCopy(benchmark::State& run) {
    Connected program(false);
    std::vector<std::uint8_t> image(2 * 524288 * 12);
    for (auto _ : run) {
        auto at = image.begin();
        for (std::size_t k = 0; k < 24; ++k) {
            const std::uint8_t* pod = program.State->Buffer.PatPod[k % kMaxPods];
            at = std::copy_n(pod, 524288, at);
        }
        benchmark::DoNotOptimize(image.data());
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(image.size()));
}
BENCHMARK(PatternCopy)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zu
