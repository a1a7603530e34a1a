#include "display/TimingView.h"

#include <algorithm>
#include <array>

#include "display/Cells.h"
#include "display/CursorMoves.h"
#include "display/Edges.h"
#include "display/GoTo.h"
#include "display/GroupLine.h"
#include "display/Hover.h"
#include "display/LineMove.h"
#include "display/Scroll.h"
#include "display/Zoom.h"
#include "trigger/Sequence.h"

namespace zu {
namespace {

constexpr std::int32_t kSnapReach = 6;  // pixels
constexpr std::uint8_t kTimingActive = 0;

std::array<bool, kCursorT + 1> HeldCursors(const HeldKeys& held) {
    return {held.A, held.B, held.C, held.D, held.T};
}

PointerShape ShapeOfCursor(int cursor) {
    return static_cast<PointerShape>(static_cast<int>(PointerShape::CursorA) + cursor);
}

std::int32_t ToSample(std::int64_t sample) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sample, 0, INT32_MAX));
}

}  // namespace

TimingView::TimingView(InstrumentState& state, TimingViewHost& host, const Metrics& metrics)
    : state_(state), host_(host), metrics_(metrics) {}

PaintResult TimingView::Paint(Canvas& canvas) {
    return PaintTiming(state_, geom_, canvas, scratch_);
}

void TimingView::Resize(std::int32_t width, std::int32_t height) {
    geom_ = {width, height};
}

void TimingView::DataChanged() {
    scratch_.Measures.Invalidate();
    jump_ = {};
}

ColumnLayout TimingView::Layout() const {
    return LayoutColumns(state_, metrics_.Advance);
}

TimeAxis TimingView::Axis() const {
    return AxisOf(state_, Layout().DataLeft, geom_.Width);
}

StripScale TimingView::Strip() const {
    return StripOf(state_, Layout().DataLeft, geom_.Width);
}

bool TimingView::InStrip(std::int32_t x, std::int32_t y) const {
    const StripScale strip = Strip();
    return strip.Width > 0 && x >= strip.Left && y >= 0 && y < StripHeight(metrics_);
}

bool TimingView::InData(std::int32_t x, std::int32_t y) const {
    const TimeAxis axis = Axis();
    return axis.Width() > 0 && x >= axis.Left && y >= StripHeight(metrics_);
}

int TimingView::ColumnUnder(const MouseEvent& event) const {
    return ColumnAtX(Layout(), event.X);
}

void TimingView::MakeActive() {
    if (state_.Windows.ActiveView == kTimingActive) return;
    state_.Windows.ActiveView = kTimingActive;
    host_.Invalidate();
    host_.RedrawFollowers();
}

void TimingView::MouseDown(const MouseEvent& event) {
    pressedY_ = event.Y;
    pointerX_ = event.X;
    pointerY_ = event.Y;
    if (grab_ != Grab::None) return;
    MakeActive();
    if (event.Button == MouseButton::Right) return PressRight(event);
    if (event.Button == MouseButton::Middle) {
        if (InData(event.X, event.Y)) Begin(Grab::Pan, event);
        return;
    }
    if (event.Button != MouseButton::Left) return;
    if (InStrip(event.X, event.Y)) return PressStrip(event);
    if (InData(event.X, event.Y)) return PressData(event);
    return event.Y < kHeaderHeight ? PressHeader(event) : PressCells(event);
}

bool TimingView::PlaceHeldCursors(const HeldKeys& held, std::int64_t sample) {
    const auto cursors = HeldCursors(held);
    bool placed = false;
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        if (!cursors[static_cast<std::size_t>(cursor)]) continue;
        zu::CursorToPoint(state_, cursor, sample);
        placed = true;
    }
    if (placed) host_.RefreshAll();
    return placed;
}

void TimingView::PressData(const MouseEvent& event) {
    const TimeAxis axis = Axis();
    if (PlaceHeldCursors(event.Held, axis.SampleAt(event.X))) return;
    if (event.Ctrl || event.Shift) return ZoomAt(event.X, event.Ctrl);
    const int cursor = CursorNear(state_, axis, event.X);
    if (cursor < 0) return;
    cursors_.Begin(state_, cursor);
    Begin(Grab::Cursor, event);
}

void TimingView::PressStrip(const MouseEvent& event) {
    const StripScale strip = Strip();
    if (PlaceHeldCursors(event.Held, strip.SampleAt(event.X))) return;
    if (event.Ctrl || event.Shift) return ZoomStrip(event);
    if (const int cursor = TickNear(state_, strip, event.X); cursor >= 0) {
        cursors_.Begin(state_, cursor);
        return Begin(Grab::StripTick, event);
    }
    const StripBox box = BoxOf(state_, strip, StripHeight(metrics_));
    const bool inBox =
        event.X >= box.Left && event.X <= box.Right && event.Y >= box.Top && event.Y <= box.Bottom;
    if (inBox) Begin(Grab::StripBox, event);
}

void TimingView::ZoomStrip(const MouseEvent& event) {
    const std::int32_t before = state_.Timing.TimingDataPos;
    const std::int64_t sample = ToSample(Strip().SampleAt(event.X));
    const std::int32_t zoom = state_.Timing.ScreenZoom;
    state_.Timing.TimingDataPos = ToSample(sample);
    const bool zoomed = ApplyZoom(state_, Axis().Width(), kOriginPoint, {sample, 0},
                                  event.Ctrl ? ZoomIn(zoom) : ZoomOut(zoom));
    if (state_.Timing.ZoomOrigin == kOriginCenter) {
        state_.Timing.TimingDataPos = ToSample(state_.Timing.TimingDataPos - VisibleSamples() / 2);
    }
    Zoomed(zoomed || before != state_.Timing.TimingDataPos);
}

void TimingView::PressHeader(const MouseEvent& event) {
    const int column = ColumnUnder(event);
    if (TypeOfColumn(state_, column) != ColumnType::TrigWord) return;
    const ColumnSpan span = Layout().Columns[static_cast<std::size_t>(column)];
    std::int8_t& level = state_.Timing.TimingDisp[static_cast<std::size_t>(column)].TrigWord;
    if (event.X >= (span.Start + span.End) / 2) {
        return host_.OpenDialog(
            {TimingDialog::TrigWord, event.X, event.Y, 0, WordOfLevel(state_, level).value_or(0)});
    }
    if (event.Y >= kHeaderHeight / 2) {
        level = static_cast<std::int8_t>(std::max(level - 1, 0));
    } else if (level >= -1 && level < kTrigWords - 1 &&
               state_.Trigger.SeqList[static_cast<std::size_t>(level + 1)] != 0) {
        ++level;
    }
    host_.Invalidate();
}

void TimingView::PressCells(const MouseEvent& event) {
    const ColumnType type = TypeOfColumn(state_, ColumnUnder(event));
    if (type != ColumnType::ChanNum && type != ColumnType::ChanName) return;
    const auto hit = LineAtY(state_, metrics_, event.Y);
    if (!hit || hit->Kind == LineKind::Spacer) return;
    line_ = hit->Line;
    Begin(Grab::Line, event);
}

void TimingView::PressRight(const MouseEvent& event) {
    if (!InData(event.X, event.Y)) return;
    const TimeAxis axis = Axis();
    if (CursorNear(state_, axis, event.X) >= 0) return CursorPopup(event);
    host_.OpenDialog({TimingDialog::DisplayOptions, event.X, event.Y, ToSample(axis.SampleAt(event.X)), 0});
}

void TimingView::CursorPopup(const MouseEvent& event) {
    const int id = host_.Popup(CursorMenu(), event.X, event.Y);
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        if (id == CursorMenuId(cursor, CursorAction::ToWindow)) return CursorToWindow(cursor);
        if (id == CursorMenuId(cursor, CursorAction::WindowToCursor)) {
            CenterSample(state_, Axis().Width(), state_.Cursors.Cur[static_cast<std::size_t>(cursor)]);
            return host_.RefreshAll();
        }
        if (id != CursorMenuId(cursor, CursorAction::Color)) continue;
        Rgb& color = state_.Cursors.CursorColor[static_cast<std::size_t>(cursor)];
        if (const auto chosen = host_.ChooseColor(color)) color = *chosen;
        return host_.RefreshAll();
    }
}

void TimingView::DoubleClick(const MouseEvent& event) {
    const ColumnType type = TypeOfColumn(state_, ColumnUnder(event));
    const bool name = type == ColumnType::ChanNum || type == ColumnType::ChanName;
    const auto hit = LineAtY(state_, metrics_, event.Y);
    if (!name || !hit || hit->Kind == LineKind::Spacer || event.Button != MouseButton::Left)
        return MouseDown(event);
    End();
    const bool group = hit->Kind == LineKind::Group;
    host_.OpenDialog(
        {group ? TimingDialog::GroupSetup : TimingDialog::ChannelSetup, event.X, event.Y, 0, hit->Number});
}

void TimingView::Begin(Grab grab, const MouseEvent& event) {
    grab_ = grab;
    button_ = event.Button;
    startX_ = event.X;
    startPosition_ = state_.Timing.TimingDataPos;
    moved_ = false;
    host_.CaptureMouse(true);
    switch (grab) {
        case Grab::Line:
            return ShowPointer(PointerShape::SizeVertical);
        case Grab::StripBox:
        case Grab::Pan:
            return ShowPointer(PointerShape::SizeHorizontal);
        default:
            return ShowPointer(ShapeOfCursor(cursors_.Cursor()));
    }
}

void TimingView::End() {
    if (grab_ == Grab::None) return;
    grab_ = Grab::None;
    host_.CaptureMouse(false);
    ShowPointer(ShapeAt(pointerX_, pointerY_));
}

void TimingView::FocusLost() {
    End();
}

void TimingView::MouseLeave() {
    if (grab_ != Grab::None) return;
    pointerX_ = pointerY_ = -1;
}

void TimingView::MouseMove(const MouseEvent& event) {
    pointerX_ = event.X;
    pointerY_ = event.Y;
    if (grab_ != Grab::None) return DragTo(event);
    if (event.Button == MouseButton::None) ShowPointer(ShapeAt(event.X, event.Y));
}

void TimingView::DragTo(const MouseEvent& event) {
    const std::int64_t dx = std::int64_t{event.X} - startX_;
    moved_ = moved_ || dx != 0;
    const std::int32_t zoom = SafeZoom(state_.Timing.ScreenZoom);
    switch (grab_) {
        case Grab::Cursor:
            if (cursors_.Move(state_, DragSamples(dx, zoom), event.Held)) host_.RefreshAll();
            break;
        case Grab::StripTick:
            if (cursors_.Move(state_, DragSamples(dx, Strip()), event.Held)) host_.RefreshAll();
            break;
        case Grab::StripBox:
            MoveTo(startPosition_ + DragSamples(dx, Strip()));
            break;
        case Grab::Pan:
            MoveTo(startPosition_ - DragSamples(dx, zoom));
            break;
        default:
            break;
    }
}

void TimingView::MouseUp(const MouseEvent& event) {
    pointerX_ = event.X;
    pointerY_ = event.Y;
    const Grab grab = grab_;
    if (grab == Grab::None || event.Button != button_) return;  // another button ends nothing
    End();
    if (grab == Grab::Cursor && moved_ && !event.Alt) Snap(event);
    if (grab == Grab::Line) DropLine(event);
}

void TimingView::Snap(const MouseEvent& event) {
    const auto hit = LineAtY(state_, metrics_, event.Y);
    if (!hit) return;
    const std::int64_t at = state_.Cursors.Cur[static_cast<std::size_t>(cursors_.Cursor())];
    const std::int64_t zoom = SafeZoom(state_.Timing.ScreenZoom);
    const std::int64_t reach = zoom > 0 ? kSnapReach / zoom : kSnapReach * -zoom;
    const RowSignal signal(state_, SourceAt(*hit, event.Y));
    const auto edge = signal.Nearest(at, reach);
    if (edge && cursors_.Move(state_, cursors_.Delta() + *edge - at, event.Held)) host_.RefreshAll();
}

void TimingView::DropLine(const MouseEvent& event) {
    const auto hit = LineAtY(state_, metrics_, event.Y);
    if (hit && MoveLine(state_, line_, hit->Line)) host_.RefreshAll();
}

void TimingView::ShowPointer(PointerShape shape) {
    if (shape == shape_) return;
    shape_ = shape;
    host_.SetPointer(shape);
}

PointerShape TimingView::ShapeAt(std::int32_t x, std::int32_t y) const {
    int cursor = -1;
    if (InStrip(x, y)) cursor = TickNear(state_, Strip(), x);
    if (InData(x, y)) cursor = CursorNear(state_, Axis(), x);
    return cursor < 0 ? PointerShape::Arrow : ShapeOfCursor(cursor);
}

void TimingView::MoveTo(std::int64_t position) {
    const std::int32_t before = state_.Timing.TimingDataPos;
    MoveView(state_, position, VisibleSamples());
    if (before == state_.Timing.TimingDataPos) return;
    host_.Invalidate();
    host_.RedrawFollowers();
}

void TimingView::Scroll(const ScrollEvent& event) {
    ScrollTiming(state_, event, {geom_.Height, Axis().Width(), metrics_});
    host_.Invalidate();
    host_.RedrawFollowers();
}

void TimingView::PanBy(std::int32_t pixels) {
    const std::int64_t zoom = SafeZoom(state_.Timing.ScreenZoom);
    if ((pixels < 0) != (panRest_ < 0)) panRest_ = 0;
    panRest_ += pixels;
    const std::int64_t samples = zoom > 0 ? panRest_ / zoom : panRest_ * -zoom;
    panRest_ = zoom > 0 ? panRest_ % zoom : 0;
    if (samples != 0) MoveTo(state_.Timing.TimingDataPos + samples);
}

void TimingView::GoTo(std::int64_t sample) {
    MoveTo(sample - VisibleSamples() / 2);
}

bool TimingView::GoToText(std::string_view text) {
    const auto sample = ParseGoTo(state_, text, state_.Timing.TimingDataPos + VisibleSamples() / 2);
    if (sample) GoTo(*sample);
    return sample.has_value();
}

void TimingView::Zoomed(bool changed) {
    if (changed) host_.Invalidate();
}

void TimingView::SelectZoom(std::int32_t zoom) {
    const int origin = state_.Timing.ZoomOrigin == kOriginPoint ? kOriginCenter : state_.Timing.ZoomOrigin;
    Zoomed(ApplyZoom(state_, Axis().Width(), origin, {}, zoom));
}

void TimingView::ZoomFrom(bool in, int origin, const ZoomPoint& point) {
    const std::int32_t zoom = state_.Timing.ScreenZoom;
    const std::int32_t next = in ? ZoomIn(zoom) : ZoomOut(zoom);
    if (next != zoom) Zoomed(ApplyZoom(state_, Axis().Width(), origin, point, next));
}

void TimingView::ZoomAt(std::int32_t x, bool in) {
    const TimeAxis axis = Axis();
    x = std::clamp(x, axis.Left, std::max(axis.Right - 1, axis.Left));
    ZoomFrom(in, kOriginPoint, {axis.SampleAt(x), x - axis.Left});
}

void TimingView::CursorToWindow(int cursor) {
    zu::CursorToWindow(state_, cursor, {state_.Timing.TimingDataPos, VisibleSamples()});
    host_.RefreshAll();
}

void TimingView::CursorToPoint(int cursor, std::int64_t sample) {
    zu::CursorToPoint(state_, cursor, sample);
    host_.RefreshAll();
}

void TimingView::Command(TimingCommand command) {
    const std::int32_t zoom = state_.Timing.ScreenZoom;
    switch (command) {
        case TimingCommand::ZoomIn:
            if (ZoomIn(zoom) != zoom) SelectZoom(ZoomIn(zoom));
            break;
        case TimingCommand::ZoomOut:
            if (ZoomOut(zoom) != zoom) SelectZoom(ZoomOut(zoom));
            break;
        case TimingCommand::NextEdge:
        case TimingCommand::PreviousEdge:
            JumpToEdge(command == TimingCommand::NextEdge);
            break;
    }
}

std::int32_t TimingView::SourceAt(const LineHit& hit, std::int32_t y) const {
    const std::int32_t source = LineAt(state_, hit.Line).Source;
    const int lane =
        hit.Kind == LineKind::Group && IsSpiGroup(state_, hit.Number) ? LaneAt(hit.Top, y, metrics_) : -1;
    if (lane < 0) return source;
    const GroupRecord& group = state_.Groups[static_cast<std::size_t>(hit.Number)];
    if (lane >= GroupSize(group)) return source;
    const std::int32_t channel = group.Channels[static_cast<std::size_t>(lane)];
    return KindOfSource(channel) == LineKind::Channel ? channel : kFirstSpacerLine;
}

std::optional<LineHit> TimingView::LineUnderPointer() const {
    return LineAtY(state_, metrics_, pointerY_);
}

std::optional<LineHit> TimingView::LineForCommand() const {
    return LineAtY(state_, metrics_, pointerY_ >= 0 ? pointerY_ : pressedY_);
}

void TimingView::JumpToEdge(bool forward) {
    const auto hit = LineUnderPointer();
    if (!hit) return host_.Beep();
    const TimeAxis axis = Axis();
    const std::int32_t x =
        InData(pointerX_, pointerY_) && pointerX_ < axis.Right ? pointerX_ : axis.Left + axis.Width() / 2;
    const std::int32_t source = SourceAt(*hit, pointerY_);
    const bool goesOn =
        jump_.Source == source && jump_.X == x && jump_.Position == state_.Timing.TimingDataPos;
    const std::int64_t from = goesOn ? jump_.Edge : axis.SampleAt(x);
    const RowSignal signal(state_, source);
    const auto edge = forward ? signal.Next(from) : signal.Begin(from - 1);
    if (!edge) return host_.Beep();
    MoveTo(*edge - (axis.SampleAt(x) - axis.First));
    jump_ = {source, x, state_.Timing.TimingDataPos, *edge};
}

std::string TimingView::HoverText() const {
    if (grab_ != Grab::None || !InData(pointerX_, pointerY_) || pointerX_ >= Axis().Right) return {};
    const auto hit = LineUnderPointer();
    if (!hit) return {};
    return zu::HoverText(state_, SourceAt(*hit, pointerY_), Axis().SampleAt(pointerX_));
}

}  // namespace zu
