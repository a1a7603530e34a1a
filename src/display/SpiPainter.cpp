#include "display/SpiPainter.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "display/Lines.h"
#include "display/Scroll.h"
#include "display/SerialListPaint.h"
#include "display/TimeText.h"
#include "serial/RowCursors.h"
#include "serial/SpiDecoder.h"
#include "serial/SpiRows.h"

namespace zu {
namespace {

constexpr int kSiLane = 1;
constexpr int kSoLane = 2;
constexpr std::size_t kSiCharacters = 5;   // from an SI column to the SO column beside it
constexpr std::size_t kSoCharacters = 15;  // from there to the next slot

/// Channel of a lane of a slot; -1 for one that the instrument lacks.
int LaneChannel(const InstrumentState& state, int slot, int lane) {
    const int group = SpiGroup(state, slot);
    if (group < 0) return -1;
    const int channel =
        state.Groups[static_cast<std::size_t>(group)].Channels[static_cast<std::size_t>(lane)];
    const bool known = channel >= 0 && channel < std::min(state.Shape.TotalChannels, kMaxChannels);
    return known ? channel : -1;
}

/// One paint of the list of bytes.
class ByteListPaint {
  public:
    ByteListPaint(const InstrumentState& state, const SerialGeom& geom, Canvas& canvas)
        : state_(state),
          layout_(LayoutSpi(state, canvas.FontMetrics(), geom.Height)),
          list_(state, geom, layout_, canvas) {}

    SerialResult Run() {
        DrawHeader();
        const std::int32_t start = SpiRowsStart(state_);
        for (auto row = NextSpiRow(state_, start); row; row = NextSpiRow(state_, *row + 1)) {
            const auto top = list_.BeginRow(*row);
            if (!top) break;
            DrawRow(*row, *top);
        }
        const SampleBar bar = SpiBar(state_);
        return {"SPI bus", bar.RangeAt(start), list_.Page(bar)};
    }

  private:
    void DrawHeader();
    void DrawLaneHeader(int slot, int lane, std::int32_t left, std::size_t most);
    void DrawRow(std::int32_t sample, std::int32_t top);

    const InstrumentState& state_;
    SpiLayout layout_;
    SerialListPaint list_;
};

void ByteListPaint::DrawHeader() {
    list_.Out(0, 0, kSpiPlaceHeader, list_.TextColor());
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        const auto s = static_cast<std::size_t>(slot);
        if (!layout_.Shown[s]) continue;
        DrawLaneHeader(slot, kSiLane, layout_.Si[s], kSiCharacters - 1);
        DrawLaneHeader(slot, kSoLane, layout_.So[s], kSoCharacters - 1);
    }
    list_.Out(layout_.Cursors, 0, kSpiCursorsHeader, list_.TextColor());
}

void ByteListPaint::DrawLaneHeader(int slot, int lane, std::int32_t left, std::size_t most) {
    const int channel = LaneChannel(state_, slot, lane);
    if (channel < 0) return;
    list_.Out(left, 0, SpiLaneName(state_, slot, lane),
              state_.Channels.ChannelColor[static_cast<std::size_t>(channel)], most);
}

void ByteListPaint::DrawRow(std::int32_t sample, std::int32_t top) {
    list_.Out(0, top, SpiPlaceText(state_, sample), list_.TextColor());
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        const auto s = static_cast<std::size_t>(slot);
        if (!layout_.Shown[s]) continue;
        list_.Out(layout_.Si[s], top, SpiCellText(SpiSiAt(state_, slot, sample)), list_.TextColor());
        list_.Out(layout_.So[s], top, SpiCellText(SpiSoAt(state_, slot, sample)), list_.TextColor());
    }
    const int cursor = CursorOnSample(state_, sample);
    if (cursor < 0) return;
    list_.Out(layout_.Cursors, top, SpiCursorsText(state_, sample),
              state_.Cursors.CursorColor[static_cast<std::size_t>(cursor)]);
}

}  // namespace

SpiLayout LayoutSpi(const InstrumentState& state, const Metrics& metrics, std::int32_t height) {
    constexpr std::int32_t kPlaceCharacters = 15;
    constexpr auto kSlotCharacters = static_cast<std::int32_t>(kSiCharacters + kSoCharacters);
    SpiLayout layout{GridOf(metrics, height), ShownSpiSlots(state), {}, {}, 0};
    layout.Cursors = kPlaceCharacters * metrics.Advance;
    for (std::int32_t slot = 0; slot < kSpiSlots; ++slot) {
        const auto s = static_cast<std::size_t>(slot);
        layout.Si[s] = (kPlaceCharacters + slot * kSlotCharacters) * metrics.Advance;
        layout.So[s] = layout.Si[s] + static_cast<std::int32_t>(kSiCharacters) * metrics.Advance;
        if (layout.Shown[s]) layout.Cursors = layout.Si[s] + kSlotCharacters * metrics.Advance;
    }
    return layout;
}

std::optional<std::int32_t> SpiSampleAt(const InstrumentState& state, const SerialGrid& grid,
                                        std::int32_t y) {
    const auto row = SerialRowAt(grid, y);
    return row ? SpiRowSample(state, *row) : std::nullopt;
}

std::string SpiPlaceText(const InstrumentState& state, std::int32_t sample) {
    if (TimeKnown(state)) return TimeText(std::int64_t{sample}, RateOf(state), kTimeFull);
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%7.7d", sample);
    return text.data();
}

std::string SpiCursorsText(const InstrumentState& state, std::int32_t sample) {
    constexpr std::string_view kLetters = "ABCD";
    const auto& cursors = state.Cursors.Cur;
    std::string text(cursors[kCursorT] == sample ? "Trigger," : "");
    for (std::size_t cursor = 0; cursor < kLetters.size(); ++cursor) {
        if (cursors[cursor] == sample) text += kLetters[cursor];
    }
    return text;
}

std::string_view SpiLaneName(const InstrumentState& state, int slot, int lane) {
    const int channel = LaneChannel(state, slot, lane);
    if (channel < 0) return {};
    return state.Channels.ChannelName[static_cast<std::size_t>(channel)].View();
}

SampleBar SpiBar(const InstrumentState& state) {
    return {state.Serial.SpiFirst, SpiRangeEnd(state), ScrollUnit(state.Memory.DisplayLen)};
}

SerialResult PaintSpi(const InstrumentState& state, const SerialGeom& geom, Canvas& canvas) {
    return ByteListPaint(state, geom, canvas).Run();
}

}  // namespace zu
