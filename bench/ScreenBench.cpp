// Painting the Timing view into the pixels of a window.
#include <benchmark/benchmark.h>
#include <memory>

#include <QImage>
#include <QPainter>

#include "display/TimingPainter.h"
#include "paint/Graphics.h"
#include "paint/ImageCanvas.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr std::int32_t kLength = 2097152;
constexpr std::int32_t kWidth = 1920;

/// 160 channels: counters of every speed, an edge at each sample to one in thousands.
std::unique_ptr<InstrumentState> Filled() {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, 15);
    ResetChannelNames(*state);
    ResetChannelColors(*state);
    for (int pod = 0; pod < state->Shape.BufCount; ++pod) {
        SetBufLenFull(state->Buffer.BufLen, pod, kLength);
        std::uint32_t at = 0;
        for (auto& byte : state->Buffer.Samples(pod)) byte = static_cast<std::uint8_t>(at++ >> (pod % 4 * 4));
    }
    state->Memory.BufferLen = state->Memory.DisplayLen = kLength;
    state->Timing.TimingLines = 160;
    return state;
}

/// Arguments: zoom, height of the window, scale.
void BM_Frame(benchmark::State& run) {
    EnsureGraphics();
    const auto state = Filled();
    state->Timing.ScreenZoom = static_cast<std::int32_t>(run.range(0));
    const auto height = static_cast<std::int32_t>(run.range(1));
    const auto scale = static_cast<double>(run.range(2));
    const ScreenFonts fonts(Metrics::ForScreen(1080), scale, true);
    QImage image = MakeImage(kWidth, height, scale);
    const auto scratch = std::make_unique<PaintScratch>();
    for (auto _ : run) {
        QPainter painter(&image);
        ImageCanvas canvas(image, painter, fonts, kWidth, height);
        PaintTiming(*state, {kWidth, height}, canvas, *scratch);
    }
}
// A window on a screen of 1080 rows, and one that is tall enough for all 160 channels.
BENCHMARK(BM_Frame)
    ->ArgsProduct({{-4000, -400, -40, 1, 10}, {1000, 36 + 160 * 21}, {1, 2}})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zu
