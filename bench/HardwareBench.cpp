// What detection, programming, downloads, armings and read-outs cost: transfers and bytes over USB as
// counters, and the program's own time with nothing behind the device.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>
#include <vector>

#include "hw/AdjustAddress.h"
#include "hw/Arming.h"
#include "hw/BackEnds.h"
#include "hw/Deinterleave.h"
#include "hw/PatternDownload.h"
#include "hw/ReadOut.h"
#include "hw/sim/SimAttachment.h"
#include "state/Model.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/TrigCells.h"

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

/// A sequence of `levels` words that each ask for channel 0.
void SetLevels(InstrumentState& state, std::int64_t levels) {
    for (int k = 0; k < levels; ++k) {
        SetCharOfChannel(state, 0, k, '1');
        state.Trigger.SeqList[static_cast<std::size_t>(k)] = k + 1;
    }
}

/// An arming with nothing behind the device: what goes over the cable, and the program's own time.
void ArmingOverUsb(benchmark::State& run) {
    Connected program(false);
    SetLevels(*program.State, run.range(0));
    const CompiledTrigWords words = PrepareTriggerWords(*program.State);
    for (auto _ : run) {
        program.Usb.Forget();
        program.State->Pods.ReprogramFlag = 0xFF;
        benchmark::DoNotOptimize(StartCapture(program.Hardware, *program.State, words));
        UsbFlushQueue(program.Hardware);
    }
    program.Report(run);
}
BENCHMARK(ArmingOverUsb)->Arg(0)->Arg(1)->Arg(16)->Unit(benchmark::kMicrosecond);

constexpr std::int32_t kDeepest = 524288;  // samples of a pod of the deepest memory

/// Gives a pod the deepest memory in the interleave of a rate.
void SetFast(InstrumentState& state, std::int64_t rate) {
    state.Clock.ClockRate = static_cast<std::uint8_t>(rate);
    state.Memory.HardwareMode = rate == 1 ? 1 : 3;
    for (std::size_t pod = 0; pod < kMaxPods; ++pod) {
        state.Buffer.BufLen[pod] = rate == 1 && pod % 5 % 2 == 1 ? 0 : kDeepest;
    }
}

/// A read-out with nothing behind the device, at the rates with four, two and one phase.
void ReadOutOverUsb(benchmark::State& run) {
    Connected program(false);
    SetFast(*program.State, run.range(0));
    if (run.range(0) == 7) program.State->Memory.HardwareMode = 0;
    const CompiledTrigWords words = PrepareTriggerWords(*program.State);
    std::int64_t samples = 0;
    for (const std::int32_t length : program.State->Buffer.BufLen) samples += length;
    for (auto _ : run) {
        program.Usb.Forget();
        benchmark::DoNotOptimize(EndCapture(program.Hardware, *program.State, words));
    }
    program.Report(run);
    run.SetBytesProcessed(run.iterations() * samples);
}
BENCHMARK(ReadOutOverUsb)->Arg(1)->Arg(6)->Arg(7)->Unit(benchmark::kMillisecond);

/// All pods of the deepest memory from their phases, against copying the same bytes.
void Deinterleave(benchmark::State& run) {
    const auto phases = static_cast<std::size_t>(run.range(0));
    const std::vector<std::uint8_t> memory(kDeepest * std::size_t{12}, 0x5A);
    std::vector<std::uint8_t> pods(memory.size() + 1);
    const std::size_t count = kDeepest / phases;
    for (auto _ : run) {
        for (std::size_t at = 0; at < memory.size(); at += kDeepest) {
            const std::uint8_t* from = memory.data() + at;
            std::uint8_t* to = pods.data() + at + 1;
            if (phases == 1) std::copy_n(from, kDeepest, to);
            if (phases == 2) JoinTwoPhases(from, from + count, count, to);
            if (phases == 4) {
                const std::array<const std::uint8_t*, 4> parts{from, from + count, from + 2 * count,
                                                               from + 3 * count};
                JoinFourPhases(parts, count, to);
            }
        }
        benchmark::DoNotOptimize(pods.data());
        benchmark::ClobberMemory();
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(memory.size()));
}
BENCHMARK(Deinterleave)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMicrosecond);

/// The longest search: an edge that never comes.
void FindAlignment(benchmark::State& run) {
    Connected program(false);
    SetLevels(*program.State, 1);
    const CompiledTrigWords words = PrepareTriggerWords(*program.State);
    const CaptureSetup setup = CaptureSetupOf(*program.State);
    for (auto _ : run) AdjustAddress(setup, setup.PodStep, *program.State, words);
}
BENCHMARK(FindAlignment);

void PrepareWords(benchmark::State& run) {
    Connected program(false);
    for (auto _ : run) benchmark::DoNotOptimize(PrepareTriggerWords(*program.State));
}
BENCHMARK(PrepareWords);

void CheckWords(benchmark::State& run) {
    Connected program(false);
    SetLevels(*program.State, 16);
    const CompiledTrigWords words = PrepareTriggerWords(*program.State);
    for (auto _ : run) benchmark::DoNotOptimize(TrigWordsConsistent(*program.State, words));
}
BENCHMARK(CheckWords);

}  // namespace
}  // namespace zu
