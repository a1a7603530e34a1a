// The simulated instrument's own share: what a register write, a capture and a read-out cost it.
#include <benchmark/benchmark.h>

#include "hw/SimHand.h"
#include "hw/sim/SimScenes.h"

namespace {

using zu::test::SimBench;

constexpr zu::SimTraits kLarge{.Later = true, .LargeMemory = true, .Boards = 4, .Direct = true};

void Scenes(benchmark::internal::Benchmark* bench) {
    for (std::size_t i = 0; i < zu::kSimScenes.size(); ++i) bench->Arg(static_cast<std::int64_t>(i));
}

void BM_SimRegisterWrite(benchmark::State& state) {
    zu::SimInstrument sim(kLarge);
    std::uint8_t value = 0;
    for (auto _ : state) sim.Write(0, 4, ++value);
}
BENCHMARK(BM_SimRegisterWrite);

void BM_SimControlWrite(benchmark::State& state) {
    zu::SimInstrument sim(kLarge);
    for (auto _ : state) sim.Write(0, 2, 0x10);
}
BENCHMARK(BM_SimControlWrite);

/// Arms, waits for the first rise of the first channel, reads all pods out.
void Capture(benchmark::State& state, int depth) {
    const zu::SimScene& scene = zu::kSimScenes[static_cast<std::size_t>(state.range(0))];
    SimBench bench(kLarge, zu::MakeSimScene(scene.Name));
    bench.Depth(depth);
    bench.Position(static_cast<std::uint32_t>(0x40000 - depth / 2 + 8));
    bench.Word(15, [](int pod, std::uint8_t byte) { return pod != 0 || (byte & 1) != 0; });
    state.SetLabel(std::string(scene.Name));
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(depth));
    for (auto _ : state) {
        bench.Stop();
        bench.Go();
        if (!bench.Wait()) state.SkipWithError("no trigger");
        for (int board = 0; board < 4; ++board) {
            for (int pod = 0; pod < 5; ++pod) {
                bench.Boards[static_cast<std::size_t>(board)].Put(5, pod / 2 << 2 | (pod % 2) << 4 | 2);
                bench.Boards[static_cast<std::size_t>(board)].Pulse(3, 0);
                bench.Sim.ReadBlock(board, 0, bytes);
            }
        }
    }
    state.SetBytesProcessed(state.iterations() * 20 * depth);
}

void BM_SimCapture8192(benchmark::State& state) {
    Capture(state, 8192);
}
BENCHMARK(BM_SimCapture8192)->Apply(Scenes)->Unit(benchmark::kMillisecond);

void BM_SimCapture131072(benchmark::State& state) {
    Capture(state, 131072);
}
BENCHMARK(BM_SimCapture131072)->Apply(Scenes)->Unit(benchmark::kMillisecond);

}  // namespace
