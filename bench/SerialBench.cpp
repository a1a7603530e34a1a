// Decoding buses that fill the memory: samples a second, one core.
#include <benchmark/benchmark.h>
#include <memory>
#include <random>

#include "serial/I2cDecoder.h"
#include "serial/SpiDecoder.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr std::int32_t kSamples = 2097152;
constexpr std::int8_t kSpiMode0 = 3;

/// Two pods of samples and no groups.
std::unique_ptr<InstrumentState> FullMemory() {
    auto state = std::make_unique<InstrumentState>();
    SetBufLenFull(state->Buffer.BufLen, 0, kSamples);
    SetBufLenFull(state->Buffer.BufLen, 1, kSamples);
    state->Buffer.Allocate();
    state->Memory.DisplayLen = kSamples;
    ResizeDecodeBuffers(*state);
    return state;
}

void SetGroup(InstrumentState& state, std::int8_t mode, std::initializer_list<int> channels) {
    state.Groups[0].Mode = mode;
    state.Groups[0].Size = static_cast<std::int32_t>(channels.size());
    std::copy(channels.begin(), channels.end(), state.Groups[0].Channels.begin());
}

/// Writes pod 0 sample by sample; what lies behind the memory is dropped.
class PodWriter {
  public:
    explicit PodWriter(InstrumentState& state) : pod_(state.Buffer.Pod[0]) {}
    [[nodiscard]] bool Full() const { return next_ >= kSamples; }
    void Hold(unsigned byte, int samples) {
        for (; samples > 0 && !Full(); --samples) pod_[next_++] = static_cast<std::uint8_t>(byte);
    }

  private:
    std::uint8_t* pod_;
    std::int32_t next_ = 0;
};

/// Transfers without a pause; clock on channel 0, data on channel 1. `width` is half a clock period.
std::unique_ptr<InstrumentState> BusyI2c(int width) {
    auto state = FullMemory();
    SetGroup(*state, kGroupModeI2C, {0, 1});
    PodWriter writer(*state);
    std::mt19937 random(1);
    while (!writer.Full()) {
        for (const unsigned lines : {3U, 1U, 0U}) writer.Hold(lines, width);
        for (int bit = 0; bit < 9 * 17; ++bit) {
            const unsigned data = random() % 2 == 0 ? 2U : 0U;
            writer.Hold(data, width);
            writer.Hold(data | 1U, width);
        }
        for (const unsigned lines : {0U, 1U, 3U}) writer.Hold(lines, width);
    }
    return state;
}

/// Frames of 64 bytes; chip select on channel 0, clock 1, SO 2, SI 3.
std::unique_ptr<InstrumentState> BusySpi(int width) {
    auto state = FullMemory();
    SetGroup(*state, kSpiMode0, {1, 3, 2, 0});
    PodWriter writer(*state);
    std::mt19937 random(2);
    while (!writer.Full()) {
        writer.Hold(1U, width);
        for (int bit = 0; bit < 8 * 64; ++bit) {
            const unsigned data = (random() % 4U) << 2U;
            writer.Hold(data, width);
            writer.Hold(data | 2U, width);
        }
        writer.Hold(0U, width);
    }
    return state;
}

std::unique_ptr<InstrumentState> Noise() {
    auto state = FullMemory();
    std::mt19937 random(3);
    for (std::int32_t i = 0; i < kSamples; ++i) state->Buffer.Pod[0][i] = static_cast<std::uint8_t>(random());
    return state;
}

void CountSamples(benchmark::State& run) {
    run.SetItemsProcessed(run.iterations() * kSamples);
}

void BM_I2cIdle(benchmark::State& run) {
    const auto state = FullMemory();
    SetGroup(*state, kGroupModeI2C, {0, 9});
    for (std::int32_t i = 0; i < kSamples; ++i) state->Buffer.Pod[0][i] = state->Buffer.Pod[1][i] = 0xFF;
    for (auto _ : run) DecodeI2C(*state);
    CountSamples(run);
}
BENCHMARK(BM_I2cIdle);

void BM_I2cBusy(benchmark::State& run) {
    const auto state = BusyI2c(static_cast<int>(run.range(0)));
    for (auto _ : run) DecodeI2C(*state);
    CountSamples(run);
}
BENCHMARK(BM_I2cBusy)->Arg(1)->Arg(2)->Arg(10);

void BM_I2cNoise(benchmark::State& run) {
    const auto state = Noise();
    SetGroup(*state, kGroupModeI2C, {0, 1});
    for (auto _ : run) DecodeI2C(*state);
    CountSamples(run);
}
BENCHMARK(BM_I2cNoise);

void BM_SpiIdle(benchmark::State& run) {
    const auto state = FullMemory();
    SetGroup(*state, kSpiMode0, {1, 3, 2, 8});
    for (std::int32_t i = 0; i < kSamples; ++i) state->Buffer.Pod[1][i] = 0xFF;
    for (auto _ : run) DecodeSPI(*state);
    CountSamples(run);
}
BENCHMARK(BM_SpiIdle);

void BM_SpiBusy(benchmark::State& run) {
    const auto state = BusySpi(static_cast<int>(run.range(0)));
    for (auto _ : run) DecodeSPI(*state);
    CountSamples(run);
}
BENCHMARK(BM_SpiBusy)->Arg(1)->Arg(2)->Arg(10);

void BM_SpiNoise(benchmark::State& run) {
    const auto state = Noise();
    SetGroup(*state, kSpiMode0, {1, 3, 2, 0});
    for (auto _ : run) DecodeSPI(*state);
    CountSamples(run);
}
BENCHMARK(BM_SpiNoise);

}  // namespace
}  // namespace zu
