#include "display/SerialListView.h"

#include <algorithm>
#include <array>

#include "display/CursorMoves.h"
#include "display/Hover.h"

namespace zu {

SerialListView::SerialListView(InstrumentState& state, SerialViewHost& window, Host& host,
                               const Metrics& metrics)
    : state_(state), window_(window), host_(host), metrics_(metrics) {}

void SerialListView::Resize(std::int32_t width, std::int32_t height) {
    geom_.Width = width;
    geom_.Height = height;
}

void SerialListView::MouseDown(const MouseEvent& event) {
    pointerY_ = event.Y;
    if (selecting_ || event.Y < 0) return;
    // What is listed begins within the range, and the rows of a click are counted from the same sample.
    Position() = Start();
    const bool inHeader = event.Y < Grid().RowHeight;
    if (event.Button == MouseButton::Right && !inHeader) return PointPopup(event);
    if (event.Button != MouseButton::Left) return;
    inHeader ? PressHeader() : PressRow(event);
}

void SerialListView::PressHeader() {
    window_.OpenSetup();
    window_.RefreshAll();
}

bool SerialListView::PlaceHeldCursors(const HeldKeys& held, std::int32_t sample) {
    const std::array<bool, kCursorT + 1> cursors{held.A, held.B, held.C, held.D, held.T};
    bool placed = false;
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        if (!cursors[static_cast<std::size_t>(cursor)]) continue;
        CursorToPoint(state_, cursor, sample);
        placed = true;
    }
    if (placed) window_.RefreshAll();
    return placed;
}

void SerialListView::PressRow(const MouseEvent& event) {
    const auto clicked = ClickedSample(event.Y);
    const auto drawn = DrawnSample(event.Y);
    if (clicked && PlaceHeldCursors(event.Held, *clicked)) return;
    if (event.Shift) {
        if (!drawn) return;
        if (!anchor_) anchor_ = drawn;
        selecting_ = true;
        return SelectTo(*drawn);
    }
    ClearSelection();
    anchor_ = drawn;
    selecting_ = drawn.has_value();
    if (clicked) ShowElsewhere(*clicked);
}

void SerialListView::ShowElsewhere(std::int32_t sample) {
    state_.StateList.StateDataPos = sample;
    window_.CenterTiming(sample);
    window_.RedrawFollowers();
}

void SerialListView::PointPopup(const MouseEvent& event) {
    const auto sample = ClickedSample(event.Y);
    if (!sample) return;
    const int id = window_.Popup(PointMenu(), event.X, event.Y);
    if (id == kTimingToPoint) {
        window_.CenterTiming(*sample);
    } else if (id == kSerialToPoint) {
        state_.Serial.SerialDataPos = *sample;
    } else if (id >= kCursorToPoint && id <= kCursorToPoint + kCursorT) {
        CursorToPoint(state_, id - kCursorToPoint, *sample);
    } else {
        return;
    }
    window_.RefreshAll();
}

void SerialListView::SelectTo(std::int32_t sample) {
    const std::int32_t anchor = anchor_.value_or(sample);
    geom_.Selected = {std::min(anchor, sample), std::int64_t{std::max(anchor, sample)} + 1};
    window_.Invalidate();
}

void SerialListView::ClearSelection() {
    anchor_.reset();
    if (geom_.Selected.Empty()) return;
    geom_.Selected = {};
    window_.Invalidate();
}

void SerialListView::MouseMove(const MouseEvent& event) {
    pointerY_ = event.Y;
    if (selecting_) DragRows(event.Y);
}

void SerialListView::DragRows(std::int32_t y) {
    const std::int32_t row = DrawnRowAt(Grid(), y);
    // Beyond the rows the list moves along.
    if (row < 0) Scroll({ScrollAxis::Vertical, ScrollCode::LineBack, 0});
    const std::int32_t room = std::max(geom_.Height, 0) / Grid().RowHeight - 1;
    if (row >= room) Scroll({ScrollAxis::Vertical, ScrollCode::LineForward, 0});
    const auto rows = WholeRows();
    if (rows.empty()) return;
    const auto last = static_cast<std::int32_t>(rows.size()) - 1;
    const std::int32_t sample = rows[static_cast<std::size_t>(std::clamp(row, 0, last))];
    // A click alone selects nothing.
    if (!geom_.Selected.Empty() || sample != anchor_) SelectTo(sample);
}

void SerialListView::MouseUp(const MouseEvent& event) {
    pointerY_ = event.Y;
    if (event.Button == MouseButton::Left) selecting_ = false;
}

void SerialListView::MouseLeave() {
    if (!selecting_) pointerY_ = -1;
}

void SerialListView::FocusLost() {
    selecting_ = false;
}

std::vector<std::int32_t> SerialListView::WholeRows() const {
    const SerialGrid grid = Grid();
    std::vector<std::int32_t> rows;
    auto row = RowFrom(Start());
    for (std::int32_t r = 0; row && grid.TopOf(r) + grid.RowHeight <= geom_.Height; ++r) {
        rows.push_back(*row);
        row = RowFrom(*row + 1);
    }
    return rows;
}

std::optional<std::int32_t> SerialListView::DrawnSample(std::int32_t y) const {
    const std::int32_t row = DrawnRowAt(Grid(), y);
    const auto rows = WholeRows();
    if (row < 0 || row >= std::ssize(rows)) return std::nullopt;
    return rows[static_cast<std::size_t>(row)];
}

std::int32_t SerialListView::Forward(std::int32_t rows) const {
    auto row = RowFrom(Start());
    if (!row) return Start();
    std::int32_t at = *row;
    for (; rows > 0 && row; --rows) {
        row = RowFrom(at + 1);
        at = row.value_or(at);
    }
    return at;
}

std::int32_t SerialListView::Back(std::int32_t from, std::int32_t rows) const {
    for (; rows > 0; --rows) {
        const auto before = StartBack(from - 1);
        if (!before) break;
        from = *before;
    }
    return from;
}

std::int64_t SerialListView::Target(const ScrollEvent& event) const {
    const SampleBar bar = Bar();
    switch (event.Code) {
        case ScrollCode::LineBack:
            return Back(Start(), 1);
        case ScrollCode::LineForward:
            return Forward(1);
        case ScrollCode::PageBack:
            return Back(Start(), Grid().PageStep());
        case ScrollCode::PageForward:
            return Forward(Grid().PageStep());
        case ScrollCode::Top:
            return bar.First;
        case ScrollCode::Bottom: {
            // The last page, full of rows.
            const std::int32_t last = StartBack(bar.Clamped(INT32_MAX)).value_or(Start());
            return Back(last, Grid().PageStep() - 1);
        }
        case ScrollCode::Thumb:
            return std::int64_t{event.Thumb} * bar.Unit;
    }
    return Start();
}

void SerialListView::Scroll(const ScrollEvent& event) {
    if (event.Axis != ScrollAxis::Vertical) return;
    Position() = Bar().Clamped(Target(event));
    Position() = Start();
    window_.Invalidate();
    window_.RedrawFollowers();
}

std::string SerialListView::CopyText() const {
    std::string text = HeaderCells() + '\n';
    if (geom_.Selected.Empty()) {
        for (const std::int32_t sample : WholeRows()) text += RowCells(sample) + '\n';
        return text;
    }
    const auto first = static_cast<std::int32_t>(geom_.Selected.First);
    for (auto row = RowFrom(first); row && geom_.Selected.Holds(*row); row = RowFrom(*row + 1)) {
        text += RowCells(*row) + '\n';
    }
    return text;
}

std::string SerialListView::HoverText() const {
    if (selecting_ || pointerY_ < 0) return {};
    const auto sample = DrawnSample(pointerY_);
    if (!sample) return {};
    std::string text = SampleHoverText(state_, *sample);
    const std::string hint = RowHint(*sample);
    return hint.empty() ? text : text + '\n' + hint;
}

}  // namespace zu
