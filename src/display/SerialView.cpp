#include "display/SerialView.h"

#include <limits>

#include "display/TabbedText.h"
#include "serial/EventCodes.h"
#include "serial/EventText.h"
#include "serial/RowCursors.h"

namespace zu {

SerialView::SerialView(InstrumentState& state, SerialViewHost& window, Host& host, const Metrics& metrics)
    : SerialListView(state, window, host, metrics) {
    geom_.Transfers = true;
}

SerialResult SerialView::Paint(Canvas& canvas) const {
    return PaintSerial(state_, geom_, canvas);
}

bool SerialView::Search(SearchWay way) {
    if (!SearchSerialEvent(state_, host_, way)) return false;
    window_.Invalidate();
    window_.RedrawFollowers();
    return true;
}

void SerialView::OpenFilter(std::int32_t x, std::int32_t y) {
    if (ToggleSerialFilter(state_, window_.Popup(SerialFilterMenu(state_), x, y))) window_.Invalidate();
}

void SerialView::ShowTransfers(bool on) {
    if (on == geom_.Transfers) return;
    geom_.Transfers = on;
    window_.Invalidate();
}

std::int32_t& SerialView::Position() {
    return state_.Serial.SerialDataPos;
}

std::int32_t SerialView::Start() const {
    return SerialRowsStart(state_);
}

std::optional<std::int32_t> SerialView::RowFrom(std::int32_t sample) const {
    const auto row = NextSerialRow(state_, sample);
    return row ? std::optional(row->Sample) : std::nullopt;
}

std::optional<std::int32_t> SerialView::StartBack(std::int32_t sample) const {
    return SerialRowBack(state_, sample);
}

std::optional<std::int32_t> SerialView::ClickedSample(std::int32_t y) const {
    return SerialSampleAt(state_, Grid(), y);
}

SampleBar SerialView::Bar() const {
    return SerialBar(state_);
}

SerialGrid SerialView::Grid() const {
    return LayoutSerial(metrics_, geom_.Height);
}

std::string SerialView::HeaderCells() const {
    const auto texts = SerialHeaderTexts(state_);
    std::string cells(texts[0]);
    cells += '\t';
    cells += texts[1];
    cells += "\tCursor";
    if (HasTransferColumn(state_, geom_)) (cells += '\t') += kTransferHeader;
    return cells;
}

std::string SerialView::RowCells(std::int32_t sample) const {
    const auto row = NextSerialRow(state_, sample);
    std::string cells = SerialPlaceText(state_, sample) + '\t';
    if (!row) return cells;
    if (row->Code != event::kNone) AppendCell(cells, SerialRowText(state_, sample));
    cells += '\t';
    if (row->Cursor >= 0) cells += kRowCursorTexts[static_cast<std::size_t>(row->Cursor)];
    if (!HasTransferColumn(state_, geom_)) return cells;
    cells += '\t';
    constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
    return row->Code == event::kStart ? cells + SerialTransferText(state_, sample, kAll) : cells;
}

std::string SerialView::RowHint(std::int32_t sample) const {
    constexpr std::size_t kMostBytes = 16;
    return SerialTransferText(state_, sample, kMostBytes);
}

}  // namespace zu
