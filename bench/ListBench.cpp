// Painting the Statelist and searching through full memory. A search is timed beside two plain passes over
// the bytes that it has to look at: a loop that adds them up, and one that does nothing but load them, as
// memchr would. "sums" and "loads" are how many of either the search takes.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <emmintrin.h>
#include <memory>
#include <random>

#include "NullCanvas.h"
#include "display/Search.h"
#include "display/StateListPainter.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kRow = 15;  // 160 channels in 20 pods
constexpr int kPods = 20;
constexpr std::int32_t kSamples = 2097152;

std::unique_ptr<InstrumentState> FullMemory() {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, kRow);
    for (int pod = 0; pod < kPods; ++pod) SetBufLenFull(state->Buffer.BufLen, pod, kSamples);
    state->Memory.BufferLen = state->Memory.DisplayLen = kSamples;
    return state;
}

template <typename Byte>
void Fill(InstrumentState& state, Byte&& byte) {
    for (int pod = 0; pod < kPods; ++pod) {
        std::uint32_t at = 0;
        for (auto& sample : state.Buffer.Samples(pod)) sample = static_cast<std::uint8_t>(byte(pod, at++));
    }
}

/// Seconds of this thread; other programs do not count.
double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Adds up samples [0, length) of the first pods.
std::uint64_t SumOnce(const InstrumentState& state, int pods, std::int64_t length) {
    std::uint64_t sum = 0;
    for (std::size_t pod = 0; pod < static_cast<std::size_t>(pods); ++pod) {
        const std::uint8_t* at = state.Buffer.Pod[pod];
        for (std::int64_t i = 0; i < length; ++i) sum += at[i];
    }
    return sum;
}

/// Loads the same bytes, sixteen at a time.
std::uint64_t LoadOnce(const InstrumentState& state, int pods, std::int64_t length) {
    __m128i sum = _mm_setzero_si128();
    for (std::size_t pod = 0; pod < static_cast<std::size_t>(pods); ++pod) {
        const std::uint8_t* at = state.Buffer.Pod[pod];
        for (const std::uint8_t* end = at + length; end - at >= 64; at += 64) {
            for (int i = 0; i < 4; ++i) {
                sum = _mm_xor_si128(sum, _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * i)));
            }
        }
    }
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(sum));
}

/// Times search and passes in turns and keeps the best of each.
template <typename Search>
void Compare(benchmark::State& run, const InstrumentState& state, int pods, Search&& search) {
    double bestSum = 1e9;
    double bestLoad = 1e9;
    double bestSearch = 1e9;
    const auto time = [](double& best, auto&& what) {
        const double start = ThreadSeconds();
        benchmark::DoNotOptimize(what());
        best = std::min(best, ThreadSeconds() - start);
    };
    for (auto _ : run) {
        time(bestSum, [&] { return SumOnce(state, pods, kSamples); });
        time(bestLoad, [&] { return LoadOnce(state, pods, kSamples); });
        time(bestSearch, search);
    }
    run.counters["search_us"] = bestSearch * 1e6;
    run.counters["sums"] = bestSearch / bestSum;
    run.counters["loads"] = bestSearch / bestLoad;
}

enum Word {
    kFirstPod,  ///< pod 0 never matches: its bytes alone have to be looked at
    kLastPod,   ///< all pods but the last match everywhere
    kRare,      ///< noise, and a level asked of one channel of each pod
};

/// Pods that a walk in blocks of 64 samples reads, on average; all samples of noise.
constexpr int kPodsOfNoise = 8;

/// Arguments: word, direction.
void BM_SearchParallel(benchmark::State& run) {
    const auto word = static_cast<Word>(run.range(0));
    const bool forward = run.range(1) != 0;
    const auto state = FullMemory();
    std::mt19937 random(1);
    Fill(*state, [&](int, std::uint32_t) { return word == kRare ? random() : 0x5AU; });
    PodPatterns patterns;
    patterns.fill(word == kRare ? PodPattern{0xF7, 0xF7} : PodPattern{0x5A, 0});
    if (word == kFirstPod) patterns.front() = {0x5B, 0};
    if (word == kLastPod) patterns.back() = {0x5B, 0};
    // Noise finds a match after a million samples or so; the last pod sees to it that there is none.
    if (word == kRare) std::ranges::fill(state->Buffer.Samples(kPods - 1), 8);
    const int pods = word == kFirstPod ? 1 : word == kLastPod ? kPods : kPodsOfNoise;
    Compare(run, *state, pods, [&] { return FindWord(*state, patterns, {1, kSamples - 1}, forward); });
}
BENCHMARK(BM_SearchParallel)
    ->ArgsProduct({{kFirstPod, kLastPod, kRare}, {1, 0}})
    ->ArgNames({"word", "forward"})
    ->Unit(benchmark::kMicrosecond);

enum Line {
    kQuiet,  ///< no change at all
    kNoise,  ///< any level at any sample
    kClock,  ///< a change at every sample, but for one in a thousand
};

/// Arguments: line, cells of the pattern, direction. The pattern changes at every cell and stands nowhere.
void BM_SearchSerial(benchmark::State& run) {
    const auto line = static_cast<Line>(run.range(0));
    const auto length = static_cast<std::size_t>(run.range(1));
    const bool forward = run.range(2) != 0;
    const auto state = FullMemory();
    std::mt19937 random(2);
    std::uint32_t level = 0;
    Fill(*state, [&](int pod, std::uint32_t at) {
        if (pod != 0 || line == kQuiet) return 0U;
        if (line == kNoise) return static_cast<std::uint32_t>(random());
        if (at % 1000 != 0) level ^= 1U;
        return level;
    });
    std::string pattern;
    for (std::size_t i = 0; i < length; ++i) {
        pattern += line == kNoise ? "01"[random() % 2] : "01"[i % 2];
    }
    // A clock has all but the end of it everywhere.
    if (line == kClock) pattern[length - 1] = pattern[length - 2] = pattern[length - 3];
    Compare(run, *state, 1, [&] { return FindBits(*state, 0, pattern, {1, kSamples - 1}, forward); });
}
BENCHMARK(BM_SearchSerial)
    ->ArgsProduct({{kQuiet, kNoise, kClock}, {32, 64}, {1, 0}})
    ->ArgNames({"line", "cells", "forward"})
    ->Unit(benchmark::kMicrosecond);

/// A list of 30 columns that show all 160 channels, on a screen of 3840 by 2160. Argument: format.
void BM_PaintStateList(benchmark::State& run) {
    constexpr std::int32_t kWidth = 3840;
    constexpr std::int32_t kHeight = 2160;
    const auto state = FullMemory();
    Fill(*state, [](int pod, std::uint32_t at) { return at * 7 + static_cast<std::uint32_t>(pod); });
    for (std::size_t c = 0; c < kGroupCount; ++c) {
        GroupRecord& group = state->Groups[c];
        group.Size = c < kPods ? 8 : 16;
        for (std::size_t i = 0; i < 16; ++i) group.Channels[i] = static_cast<std::int32_t>((8 * c + i) % 160);
        state->StateList.ScreenL[c] = static_cast<std::int8_t>(c);
        state->StateList.ScreenF[c] = static_cast<std::int8_t>(run.range(0));
    }
    TranslateRecord& table = state->Translate;
    for (TranslateEntry& entry : table.Entry) {
        entry.Bit = "10000000000000000";
        entry.Stg = "never";
        entry.Value = entry.Care = 0x10000;
    }
    table.TranslateCount = static_cast<std::int32_t>(table.Entry.size());
    ComputeGroupWidths(*state);
    state->Cursors.CursorDlgMode = 1;
    NullCanvas canvas(kWidth, kHeight);
    for (auto _ : run) {
        state->StateList.StateDataPos = (state->StateList.StateDataPos + 100000) % kSamples;
        PaintStateList(*state, {kWidth, kHeight, 0, 0}, canvas);
    }
    run.counters["characters"] = static_cast<double>(canvas.Bytes) / static_cast<double>(run.iterations());
}
BENCHMARK(BM_PaintStateList)->DenseRange(0, 4)->ArgName("format")->Unit(benchmark::kMicrosecond);

/// One column of a group of 160 channels, in binary.
void BM_PaintWideColumn(benchmark::State& run) {
    const auto state = FullMemory();
    Fill(*state, [](int pod, std::uint32_t at) { return at * 7 + static_cast<std::uint32_t>(pod); });
    for (auto& group : state->Groups) group.Size = 0;
    state->Groups[0].Size = 160;
    for (std::size_t i = 0; i < 160; ++i) state->Groups[0].Channels[i] = static_cast<std::int32_t>(i);
    state->StateList.ScreenL[0] = 0;
    state->StateList.ScreenF[0] = 1;
    ComputeGroupWidths(*state);
    NullCanvas canvas(1920, 1080);
    for (auto _ : run) {
        state->StateList.StateDataPos = (state->StateList.StateDataPos + 100000) % kSamples;
        PaintStateList(*state, {1920, 1080, 0, 0}, canvas);
    }
    run.counters["characters"] = static_cast<double>(canvas.Bytes) / static_cast<double>(run.iterations());
}
BENCHMARK(BM_PaintWideColumn)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zu
