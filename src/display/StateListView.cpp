#include "display/StateListView.h"

#include <algorithm>
#include <array>

#include "display/CursorMoves.h"
#include "display/Hover.h"
#include "display/StateListCells.h"

namespace zu {
namespace {

constexpr std::uint8_t kStateListActive = 1;

std::array<bool, kCursorT + 1> HeldCursors(const HeldKeys& held) {
    return {held.A, held.B, held.C, held.D, held.T};
}

std::int64_t LastSample(const InstrumentState& state) {
    return std::max<std::int64_t>(std::int64_t{state.Memory.DisplayLen} - 1, 0);
}

}  // namespace

StateListView::StateListView(InstrumentState& state, StateListHost& host, const Metrics& metrics)
    : state_(state), host_(host), metrics_(metrics) {}

StateListResult StateListView::Paint(Canvas& canvas) {
    return PaintStateList(state_, geom_, canvas);
}

void StateListView::Resize(std::int32_t width, std::int32_t height) {
    geom_.Width = width;
    geom_.Height = height;
}

StateListLayout StateListView::Layout() const {
    return LayoutStateList(state_, metrics_, geom_.Width, geom_.Height);
}

void StateListView::MakeActive() {
    if (state_.Windows.ActiveView == kStateListActive) return;
    state_.Windows.ActiveView = kStateListActive;
    host_.Invalidate();
    host_.RedrawFollowers();
}

void StateListView::MouseDown(const MouseEvent& event) {
    pointerY_ = event.Y;
    if (grab_ != Grab::None) return;
    MakeActive();
    if (event.Button == MouseButton::Right && !InHeader(event.Y)) return CursorPopup(event);
    if (event.Button != MouseButton::Left) return;
    if (InHeader(event.Y)) return PressHeader(event);
    PressRow(event);
}

void StateListView::PressHeader(const MouseEvent& event) {
    const StateListLayout layout = Layout();
    if (const StateColumn* column = StateColumnAt(layout, event.X)) {
        state_.StateList.StateDisp = static_cast<std::int8_t>(column->Column);
    }
    host_.OpenSetup();
}

bool StateListView::PlaceHeldCursors(const HeldKeys& held, std::int64_t sample) {
    const auto cursors = HeldCursors(held);
    bool placed = false;
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        if (!cursors[static_cast<std::size_t>(cursor)]) continue;
        CursorToPoint(state_, cursor, sample);
        placed = true;
    }
    if (placed) host_.RefreshAll();
    return placed;
}

void StateListView::PressRow(const MouseEvent& event) {
    const StateListLayout layout = Layout();
    const auto sample = StateSampleAt(state_, layout, event.Y);
    if (sample && PlaceHeldCursors(event.Held, *sample)) return;
    if (sample && event.Shift) {
        if (!anchor_) anchor_ = *sample;
        grab_ = Grab::Rows;
        return SelectTo(*sample);
    }
    const int cursor = StateCursorNear(state_, layout, event.Y);
    if (cursor >= 0) {
        cursors_.Begin(state_, cursor);
        startRow_ = StateRowAt(layout, event.Y);
        grab_ = Grab::Cursor;
        return ShowPointer(ShapeAt(event.Y));
    }
    ClearSelection();
    if (!sample) return;
    anchor_ = *sample;
    grab_ = Grab::Rows;
}

void StateListView::SelectTo(std::int64_t sample) {
    sample = std::clamp<std::int64_t>(sample, 0, LastSample(state_));
    const std::int64_t anchor = std::clamp<std::int64_t>(anchor_.value_or(sample), 0, LastSample(state_));
    geom_.SelectFirst = std::min(anchor, sample);
    geom_.SelectEnd = std::max(anchor, sample) + 1;
    host_.Invalidate();
}

void StateListView::ClearSelection() {
    anchor_.reset();
    if (geom_.SelectFirst >= geom_.SelectEnd) return;
    geom_.SelectFirst = geom_.SelectEnd = 0;
    host_.Invalidate();
}

void StateListView::CursorPopup(const MouseEvent& event) {
    const StateListLayout layout = Layout();
    const ShownSpan shown{state_.StateList.StateDataPos, layout.SampleRows()};
    const int id = host_.Popup(CursorMenu(), event.X, event.Y);
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        const auto c = static_cast<std::size_t>(cursor);
        if (id == CursorMenuId(cursor, CursorAction::ToWindow)) {
            CursorToWindow(state_, cursor, shown);
            return host_.RefreshAll();
        }
        if (id == CursorMenuId(cursor, CursorAction::WindowToCursor)) {
            const std::int64_t to = std::int64_t{state_.Cursors.Cur[c]} - layout.SampleRows() / 2;
            state_.StateList.StateDataPos =
                static_cast<std::int32_t>(std::clamp<std::int64_t>(to, 0, LastSample(state_)));
            return host_.RefreshAll();
        }
        if (id != CursorMenuId(cursor, CursorAction::Color)) continue;
        if (const auto chosen = host_.ChooseColor(state_.Cursors.CursorColor[c])) {
            state_.Cursors.CursorColor[c] = *chosen;
        }
        return host_.RefreshAll();
    }
}

void StateListView::MouseMove(const MouseEvent& event) {
    pointerY_ = event.Y;
    if (grab_ != Grab::None) return DragTo(event);
    if (event.Button == MouseButton::None) ShowPointer(ShapeAt(event.Y));
}

void StateListView::DragTo(const MouseEvent& event) {
    if (grab_ == Grab::Rows) return DragRows(event.Y);
    const std::int64_t rows = std::int64_t{StateRowAt(Layout(), event.Y)} - startRow_;
    if (cursors_.Move(state_, rows, event.Held)) host_.RefreshAll();
}

void StateListView::DragRows(std::int32_t y) {
    const StateListLayout layout = Layout();
    const std::int32_t row = StateRowAt(layout, y);
    // Beyond the rows the list moves along.
    if (row < 0) Scroll({ScrollAxis::Vertical, ScrollCode::LineBack, 0});
    if (row >= layout.SampleRows()) Scroll({ScrollAxis::Vertical, ScrollCode::LineForward, 0});
    const std::int32_t last = std::max(layout.SampleRows() - 1, 0);
    const std::int64_t sample = std::int64_t{state_.StateList.StateDataPos} + std::clamp(row, 0, last);
    // A click alone selects nothing.
    if (geom_.SelectFirst < geom_.SelectEnd || (anchor_ && sample != *anchor_)) SelectTo(sample);
}

void StateListView::MouseUp(const MouseEvent& event) {
    pointerY_ = event.Y;
    if (event.Button == MouseButton::Left) End();
}

void StateListView::End() {
    if (grab_ == Grab::None) return;
    grab_ = Grab::None;
    ShowPointer(ShapeAt(pointerY_));
}

void StateListView::MouseLeave() {
    if (grab_ == Grab::None) pointerY_ = -1;
}

void StateListView::FocusLost() {
    End();
}

void StateListView::ShowPointer(PointerShape shape) {
    if (shape == shape_) return;
    shape_ = shape;
    host_.SetPointer(shape);
}

PointerShape StateListView::ShapeAt(std::int32_t y) const {
    int cursor = cursors_.Cursor();
    if (grab_ != Grab::Cursor) cursor = InHeader(y) ? -1 : StateCursorNear(state_, Layout(), y);
    if (cursor < 0 || grab_ == Grab::Rows) return PointerShape::Arrow;
    return static_cast<PointerShape>(static_cast<int>(PointerShape::CursorA) + cursor);
}

void StateListView::Scroll(const ScrollEvent& event) {
    ScrollStateList(state_, event, Layout());
    host_.Invalidate();
    host_.RedrawFollowers();
}

std::string StateListView::CopyText() const {
    const StateListLayout layout = Layout();
    if (geom_.SelectFirst < geom_.SelectEnd) {
        return StateListText(state_, layout, geom_.SelectFirst, geom_.SelectEnd);
    }
    const std::int64_t first = state_.StateList.StateDataPos;
    const std::int64_t end = std::min<std::int64_t>(first + layout.SampleRows(), state_.Memory.DisplayLen);
    return StateListText(state_, layout, std::max<std::int64_t>(first, 0), end);
}

std::string StateListView::HoverText() const {
    if (grab_ != Grab::None || pointerY_ < 0) return {};
    const auto sample = StateSampleAt(state_, Layout(), pointerY_);
    if (!sample || *sample < 0 || *sample >= state_.Memory.DisplayLen) return {};
    return SampleHoverText(state_, *sample);
}

}  // namespace zu
