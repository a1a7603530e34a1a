#include "display/SpiView.h"

#include "display/TabbedText.h"
#include "serial/SpiDecoder.h"
#include "serial/SpiRows.h"

namespace zu {
namespace {

constexpr int kSiLane = 1;
constexpr int kSoLane = 2;

}  // namespace

SpiView::SpiView(InstrumentState& state, SerialViewHost& window, Host& host, const Metrics& metrics)
    : SerialListView(state, window, host, metrics) {}

SerialResult SpiView::Paint(Canvas& canvas) const {
    return PaintSpi(state_, geom_, canvas);
}

void SpiView::PressSlot(int slot) {
    if (slot < 0 || slot >= kSpiSlots) return;
    if (SpiGroup(state_, slot) < 0) {
        host_.Message("SPI group not defined.", "Note:");
        return window_.OpenGroupSetup();
    }
    std::uint8_t& shown = state_.Serial.SpiShown[static_cast<std::size_t>(slot)];
    shown = shown == 0 ? 1 : 0;
    DecodeSPI(state_);
    window_.RefreshAll();
}

std::string SpiView::SlotText(int slot) const {
    return SpiButtonText(state_, slot);
}

bool SpiView::SlotShown(int slot) const {
    return slot >= 0 && slot < kSpiSlots && ShownSpiSlots(state_)[static_cast<std::size_t>(slot)];
}

std::int32_t& SpiView::Position() {
    return state_.Serial.SpiDataPos;
}

std::int32_t SpiView::Start() const {
    return SpiRowsStart(state_);
}

std::optional<std::int32_t> SpiView::RowFrom(std::int32_t sample) const {
    return NextSpiRow(state_, sample);
}

/// A row that only a cursor makes is passed over: the list begins with a byte.
std::optional<std::int32_t> SpiView::StartBack(std::int32_t sample) const {
    return SpiStartBack(state_, sample);
}

std::optional<std::int32_t> SpiView::ClickedSample(std::int32_t y) const {
    return SpiSampleAt(state_, Grid(), y);
}

SampleBar SpiView::Bar() const {
    return SpiBar(state_);
}

SerialGrid SpiView::Grid() const {
    return GridOf(metrics_, geom_.Height);
}

std::string SpiView::HeaderCells() const {
    std::string cells(kSpiPlaceHeader);
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        if (!SlotShown(slot)) continue;
        AppendCell(cells += '\t', SpiLaneName(state_, slot, kSiLane));
        AppendCell(cells += '\t', SpiLaneName(state_, slot, kSoLane));
    }
    cells += '\t';
    return cells += kSpiCursorsHeader;
}

std::string SpiView::RowCells(std::int32_t sample) const {
    std::string cells = SpiPlaceText(state_, sample);
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        if (!SlotShown(slot)) continue;
        cells += '\t' + SpiCellText(SpiSiAt(state_, slot, sample));
        cells += '\t' + SpiCellText(SpiSoAt(state_, slot, sample));
    }
    return cells + '\t' + SpiCursorsText(state_, sample);
}

std::string SpiView::RowHint(std::int32_t) const {
    return {};
}

}  // namespace zu
