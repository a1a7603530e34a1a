// Painting and scrolling the lists of I2C events and SPI bytes over a full memory.
#include <benchmark/benchmark.h>
#include <memory>

#include "display/SerialPainter.h"
#include "display/SerialView.h"
#include "display/SpiPainter.h"
#include "serial/SerialRows.h"
#include "serial/SpiDecoder.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr std::int32_t kSamples = 2097152;
constexpr std::int32_t kWidth = 1000;
constexpr std::int32_t kHeight = 1000;

/// A canvas that takes everything and draws nothing.
class NullCanvas final : public Canvas {
  public:
    std::int32_t Width() const override { return kWidth; }
    std::int32_t Height() const override { return kHeight; }
    const zu::Metrics& FontMetrics() const override { return metrics_; }
    std::int32_t TextWidth(FontId, std::string_view text) const override {
        return static_cast<std::int32_t>(text.size()) * metrics_.Advance;
    }
    std::int32_t TextHeight(FontId) const override { return metrics_.TextHeight; }
    void SetPen(Rgb) override {}
    void SetTextColor(Rgb) override {}
    void SetFont(FontId) override {}
    void MoveTo(std::int32_t, std::int32_t) override {}
    void LineTo(std::int32_t, std::int32_t) override {}
    void Polyline(std::span<const Point>) override {}
    void FillRect(const Rect&, Rgb) override {}
    void TextOut(std::int32_t, std::int32_t, std::string_view) override {}
    void PushClip(const Rect&) override {}
    void PopClip() override {}

  private:
    zu::Metrics metrics_;
};

enum Traffic { kNone, kBusy, kOneTransfer };

/// Events at every second sample: transfers of 16 bytes, one transfer that never ends, or none. Bytes of SPI
/// at every 16th.
std::unique_ptr<InstrumentState> Filled(Traffic traffic) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, 15);
    state->Memory.DisplayLen = kSamples;
    state->Cursors.Cur.fill(-1);
    ResizeDecodeBuffers(*state);
    SerialRecord& serial = state->Serial;
    serial.SerialMode = 1;
    serial.SerialLast = serial.SpiLast = kSamples - 1;
    for (GroupRecord& group : state->Groups) group.Mode = 0;
    for (std::size_t slot = 0; slot < kSpiSlots; ++slot) {
        state->Groups[slot].Mode = 3;
        state->Groups[slot].Size = 4;
    }
    if (traffic == kNone) return state;
    for (std::size_t i = 0, event = 0; i < kSamples; i += 2, ++event) {
        const std::size_t at = traffic == kBusy ? event % 146 : std::min<std::size_t>(event, 1 + event % 9);
        serial.SerialEvents[i] = static_cast<std::uint8_t>(at == 0       ? 1
                                                           : at == 145   ? 2
                                                           : at % 9 == 0 ? 15
                                                                         : 3 + i / 2 % 2);
    }
    for (std::size_t i = 0; i + 16 <= kSamples; i += 16) {
        serial.SpiSI[0][i] = serial.SpiSO[0][i] = static_cast<std::uint16_t>(spi::kStart | (i / 16 & 0xFF));
        serial.SpiSI[0][i + 14] = serial.SpiSO[0][i + 14] = spi::kEnd;
    }
    return state;
}

enum Filter { kAllOn, kAllOff, kStarts, kErrors };

void SetFilter(InstrumentState& state, Filter filter) {
    state.Serial.SerialFilter.fill(filter == kAllOn ? 1 : 0);
    if (filter == kStarts) state.Serial.SerialFilter[0] = 1;
    if (filter == kErrors) state.Serial.SerialFilter[9] = 1;
}

/// Arguments: traffic, filter, first sample.
void BM_PaintSerial(benchmark::State& run) {
    const auto state = Filled(static_cast<Traffic>(run.range(0)));
    SetFilter(*state, static_cast<Filter>(run.range(1)));
    state->Serial.SerialDataPos = static_cast<std::int32_t>(run.range(2));
    NullCanvas canvas;
    const SerialGeom geom{.Width = kWidth, .Height = kHeight, .Transfers = true};
    for (auto _ : run) PaintSerial(*state, geom, canvas);
}
BENCHMARK(BM_PaintSerial)
    ->ArgsProduct({{kNone, kBusy, kOneTransfer}, {kAllOn, kAllOff, kStarts, kErrors}, {0, kSamples / 2}})
    ->Unit(benchmark::kMicrosecond);

/// Arguments: traffic, first sample.
void BM_PaintSpi(benchmark::State& run) {
    const auto state = Filled(static_cast<Traffic>(run.range(0)));
    state->Serial.SpiDataPos = static_cast<std::int32_t>(run.range(1));
    NullCanvas canvas;
    for (auto _ : run) PaintSpi(*state, {.Width = kWidth, .Height = kHeight}, canvas);
}
BENCHMARK(BM_PaintSpi)
    ->ArgsProduct({{kNone, kBusy}, {0, kSamples / 2, kSamples - 1}})
    ->Unit(benchmark::kMicrosecond);

/// One walk over a memory without events.
void BM_NextRowOfNothing(benchmark::State& run) {
    const auto state = Filled(kNone);
    for (auto _ : run) benchmark::DoNotOptimize(NextSerialRow(*state, 0));
}
BENCHMARK(BM_NextRowOfNothing)->Unit(benchmark::kMicrosecond);

/// What a click near the lower edge counts, from the middle of the memory on.
void BM_ClickedRow(benchmark::State& run) {
    const auto state = Filled(static_cast<Traffic>(run.range(0)));
    state->Serial.SerialDataPos = kSamples / 2;
    const SerialLayout layout = LayoutSerial(Metrics{}, kHeight);
    for (auto _ : run) benchmark::DoNotOptimize(SerialSampleAt(*state, layout, kHeight - 10));
}
BENCHMARK(BM_ClickedRow)->Arg(kNone)->Arg(kBusy)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zu
