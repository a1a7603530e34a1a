// Painting the Timing view over full memory, against one plain pass over the same bytes.
#include <benchmark/benchmark.h>
#include <emmintrin.h>
#include <memory>

#include "NullCanvas.h"
#include "display/TimingPainter.h"
#include "serial/SpiDecoder.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kRow = 15;  // 160 channels in 20 pods
constexpr int kLines = 40;
constexpr std::int32_t kWidth = 1600;
constexpr std::int32_t kHeight = 36 + kLines * 19;

enum Signal { kIdle, kSlow, kBusy };

/// A full row-15 memory: idle lines, edges every few thousand samples, or an edge at almost every sample.
std::unique_ptr<InstrumentState> Filled(std::int32_t length, Signal signal) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, kRow);
    ResetChannelNames(*state);
    ResetChannelColors(*state);
    for (int pod = 0; pod < state->Shape.BufCount; ++pod) SetBufLenFull(state->Buffer.BufLen, pod, length);
    state->Memory.BufferLen = state->Memory.DisplayLen = length;
    for (int pod = 0; pod < state->Shape.BufCount; ++pod) {
        std::uint32_t at = 0;
        for (auto& byte : state->Buffer.Samples(pod)) {
            byte = static_cast<std::uint8_t>(signal == kIdle ? 0x5A : signal == kBusy ? at : at >> 12);
            ++at;
        }
    }
    state->Timing.TimingLines = kLines;
    return state;
}

/// Reads all bytes that the lines on show have, once a line.
std::uint64_t ReadOnce(const InstrumentState& state) {
    __m128i sum = _mm_setzero_si128();
    for (int line = 0; line < kLines; ++line) {
        const auto pod =
            static_cast<std::size_t>(state.Timing.LineSource[static_cast<std::size_t>(line)] / 8);
        const std::uint8_t* at = state.Buffer.Pod[pod];
        const std::uint8_t* end = at + state.Buffer.BufLen[pod];
        for (; end - at >= 64; at += 64) {
            for (int i = 0; i < 4; ++i) {
                sum = _mm_xor_si128(sum, _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * i)));
            }
        }
    }
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(sum));
}

void SetBytes(benchmark::State& run, const InstrumentState& state) {
    run.SetBytesProcessed(run.iterations() * kLines * state.Buffer.BufLen[0]);
}

void BM_OnePass(benchmark::State& run) {
    const auto state = Filled(static_cast<std::int32_t>(run.range(0)), kIdle);
    for (auto _ : run) benchmark::DoNotOptimize(ReadOnce(*state));
    SetBytes(run, *state);
}
BENCHMARK(BM_OnePass)->Arg(524288)->Arg(2097152)->Unit(benchmark::kMicrosecond);

/// Arguments: samples, zoom, signal.
void BM_PaintFull(benchmark::State& run) {
    const auto state = Filled(static_cast<std::int32_t>(run.range(0)), static_cast<Signal>(run.range(2)));
    state->Timing.ScreenZoom = static_cast<std::int32_t>(run.range(1));
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) PaintTiming(*state, {kWidth, kHeight}, canvas, *scratch);
    SetBytes(run, *state);
}
BENCHMARK(BM_PaintFull)
    ->ArgsProduct({{524288, 2097152}, {-4000, -400}, {kIdle, kSlow, kBusy}})
    ->Unit(benchmark::kMicrosecond);

/// 40 group lines of eight channels. Arguments: style, mode, zoom, signal.
void BM_PaintGroups(benchmark::State& run) {
    const auto state = Filled(2097152, static_cast<Signal>(run.range(3)));
    for (std::size_t line = 0; line < kLines; ++line) {
        state->Timing.LineSource[line] = 160 + static_cast<std::int32_t>(line % 20);
        state->Timing.LineStyle[line] = static_cast<std::uint8_t>(run.range(0));
        state->Timing.LineMode[line] = static_cast<std::int8_t>(run.range(1));
    }
    state->Timing.ScreenZoom = static_cast<std::int32_t>(run.range(2));
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) PaintTiming(*state, {kWidth, 36 + kLines * 261}, canvas, *scratch);
}
BENCHMARK(BM_PaintGroups)
    ->ArgsProduct({{0, 1, 2, 3, 4}, {0}, {-4000, 1, 10}, {kSlow, kBusy}})
    ->ArgsProduct({{7, 11}, {0, 1, 2}, {-4000, 1, 10}, {kSlow, kBusy}})
    ->Unit(benchmark::kMicrosecond);

/// How the channels of a group lie in the pods.
enum Wiring { kInOrder, kReversed, kShifted, kMixed };

/// Makes the first 20 groups: bits in the order of the pods, from the top down, or all over.
void WireGroups(InstrumentState& state, std::int32_t size, Wiring wiring) {
    for (std::int32_t g = 0; g < 20; ++g) {
        GroupRecord& group = state.Groups[static_cast<std::size_t>(g)];
        group.Size = size;
        const std::int32_t first = 8 * (g % 16) + (wiring == kShifted ? 3 : 0);
        for (std::int32_t i = 0; i < size; ++i) {
            const std::int32_t bit = wiring == kReversed ? size - 1 - i : wiring == kMixed ? i * 7 % size : i;
            group.Channels[static_cast<std::size_t>(i)] = first + bit;
        }
    }
}

/// 40 curves. Arguments: channels of a group, wiring, signal.
void BM_PaintCurves(benchmark::State& run) {
    const auto state = Filled(2097152, static_cast<Signal>(run.range(2)));
    WireGroups(*state, static_cast<std::int32_t>(run.range(0)), static_cast<Wiring>(run.range(1)));
    for (std::size_t line = 0; line < kLines; ++line) {
        state->Timing.LineSource[line] = 160 + static_cast<std::int32_t>(line % 20);
        state->Timing.LineStyle[line] = 7;
    }
    state->Timing.ScreenZoom = -4000;
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) PaintTiming(*state, {kWidth, 36 + kLines * 23}, canvas, *scratch);
}
BENCHMARK(BM_PaintCurves)
    ->ArgsProduct({{8, 16, 32}, {kInOrder, kReversed, kShifted, kMixed}, {kSlow, kBusy}})
    ->Unit(benchmark::kMicrosecond);

/// All 160 channels on show, as on a tall screen. Arguments: zoom, signal.
void BM_PaintAllChannels(benchmark::State& run) {
    const auto state = Filled(2097152, static_cast<Signal>(run.range(1)));
    state->Timing.TimingLines = 160;
    state->Timing.ScreenZoom = static_cast<std::int32_t>(run.range(0));
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) PaintTiming(*state, {kWidth, 36 + 160 * 19}, canvas, *scratch);
}
BENCHMARK(BM_PaintAllChannels)
    ->ArgsProduct({{-4000, -400, 1, 10}, {kIdle, kSlow, kBusy}})
    ->Unit(benchmark::kMicrosecond);

/// Three SPI groups with bytes back to back, 16 samples a byte, or with none at all; the screen at the end of
/// the data, which a search for the byte before it crosses. Arguments: zoom, bytes.
void BM_PaintSpi(benchmark::State& run) {
    constexpr std::int32_t kLength = 2097152;
    const auto state = Filled(kLength, kBusy);
    WireGroups(*state, 4, kInOrder);
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        const auto s = static_cast<std::size_t>(slot);
        state->Groups[s].Mode = 3;
        state->Timing.LineSource[s] = 160 + slot;
        for (auto* lines : {&state->Serial.SpiSI, &state->Serial.SpiSO}) {
            auto& entries = (*lines)[s];
            entries.assign(kLength, 0);
            for (std::size_t i = 0; run.range(1) != 0 && i + 16 <= entries.size(); i += 16) {
                entries[i] = static_cast<std::uint16_t>(spi::kStart | (i / 16 & spi::kValue));
                entries[i + 14] = spi::kEnd;
            }
        }
    }
    state->Timing.TimingLines = kSpiSlots;
    state->Timing.ScreenZoom = static_cast<std::int32_t>(run.range(0));
    state->Timing.TimingDataPos = run.range(0) == -4000 ? 0 : kLength - 20000;
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) PaintTiming(*state, {kWidth, kHeight}, canvas, *scratch);
}
BENCHMARK(BM_PaintSpi)->ArgsProduct({{-4000, 1, 10}, {0, 1}})->Unit(benchmark::kMicrosecond);

/// All eight columns measure the whole buffer; nothing is kept from frame to frame.
void BM_MeasureAllColumns(benchmark::State& run) {
    const auto state = Filled(2097152, static_cast<Signal>(run.range(0)));
    state->Timing.ScreenZoom = -4000;
    for (std::uint8_t column = 0; column < 8; ++column) {
        state->Timing.TimingDisp[column] = {static_cast<std::uint8_t>(5 + column), 0, 0};
    }
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) {
        scratch->Measures.Invalidate();
        PaintTiming(*state, {kWidth, kHeight}, canvas, *scratch);
    }
}
BENCHMARK(BM_MeasureAllColumns)->Arg(kIdle)->Arg(kSlow)->Arg(kBusy)->Unit(benchmark::kMicrosecond);

/// Dragging cursor B with seven columns over the whole buffer and one from A to B.
void BM_CursorDrag(benchmark::State& run) {
    const auto state = Filled(2097152, static_cast<Signal>(run.range(0)));
    state->Timing.ScreenZoom = -4000;
    for (std::uint8_t column = 0; column < 8; ++column) {
        state->Timing.TimingDisp[column] = {static_cast<std::uint8_t>(5 + column),
                                            static_cast<std::uint8_t>(column == 0 ? run.range(1) : 0), 0};
    }
    NullCanvas canvas(kWidth, kHeight);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) {
        state->Cursors.Cur[1] = (state->Cursors.Cur[1] + 4000) % 2097152;
        PaintTiming(*state, {kWidth, kHeight}, canvas, *scratch);
    }
}
BENCHMARK(BM_CursorDrag)->ArgsProduct({{kIdle, kSlow, kBusy}, {0, 1}})->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zu
