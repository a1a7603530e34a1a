#include "ui/display/CTimingWnd.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QWheelEvent>

#include "core/Capture.h"
#include "display/Lines.h"
#include "display/Scroll.h"
#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"
#include "ui/QtText.h"

namespace zu {
namespace {

constexpr int kLinesPerNotch = 3;
/// A pinch by this factor is one step of the zoom chain.
constexpr double kPinchStep = 0.25;

}  // namespace

CTimingWnd::CTimingWnd(CZuView& controller)
    : CViewWnd(controller), view_(controller.State(), *this, FontMetrics()) {
    setWindowTitle(QStringLiteral("Timing view"));
}

void CTimingWnd::DataChanged() {
    view_.DataChanged();
    Redraw();
}

void CTimingWnd::PaintView(ImageCanvas& canvas) {
    Apply(view_.Paint(canvas));
}

void CTimingWnd::Apply(const PaintResult& result) {
    ShowTitle(result.Title);
    const std::int32_t position = Controller().State().Timing.TimingDataPos;
    if (std::exchange(shownPosition_, position) != position) {
        // The cursor window tells where this one stands.
        RedrawIfOpen(Controller().TheApp(), WindowId::Cursor);
    }
    const std::int64_t visible = view_.VisibleSamples();
    const std::int64_t unit = ScrollUnit(Controller().State().Memory.DisplayLen);
    SetBar(ScrollAxis::Horizontal, result.Horizontal,
           static_cast<int>(std::clamp<std::int64_t>(visible / unit, 1, 1 << 30)));
    SetBar(ScrollAxis::Vertical, result.Vertical,
           (viewport()->height() - kHeaderHeight) / TextRowHeight(FontMetrics()));
}

ScrollRange CTimingWnd::RangeOf(ScrollAxis axis) const {
    return axis == ScrollAxis::Horizontal ? HorizontalRange(Controller().State())
                                          : VerticalRange(Controller().State());
}

QString CTimingWnd::Hover() const {
    return FromState(view_.HoverText());
}

void CTimingWnd::mousePressEvent(QMouseEvent* event) {
    const std::int32_t zoom = Controller().State().Timing.ScreenZoom;
    view_.MouseDown(ToEvent(*event, ButtonOf(event->button())));
    if (zoom != Controller().State().Timing.ScreenZoom) Controller().UpdateBars();
}

void CTimingWnd::mouseReleaseEvent(QMouseEvent* event) {
    view_.MouseUp(ToEvent(*event, ButtonOf(event->button())));
}

void CTimingWnd::mouseMoveEvent(QMouseEvent* event) {
    view_.MouseMove(ToEvent(*event, FirstButton(event->buttons())));
}

void CTimingWnd::mouseDoubleClickEvent(QMouseEvent* event) {
    const std::int32_t zoom = Controller().State().Timing.ScreenZoom;
    view_.DoubleClick(ToEvent(*event, ButtonOf(event->button())));
    if (zoom != Controller().State().Timing.ScreenZoom) Controller().UpdateBars();
}

void CTimingWnd::focusOutEvent(QFocusEvent* event) {
    CViewWnd::focusOutEvent(event);
    view_.FocusLost();
}

int CTimingWnd::SidewaysPixels(const QWheelEvent& event) {
    const auto along = [](const QPoint& delta) { return delta.x() != 0 ? delta.x() : delta.y(); };
    // A touchpad tells pixels, a wheel eighths of a degree.
    if (!event.pixelDelta().isNull()) return along(event.pixelDelta());
    panRest_ += along(event.angleDelta());
    const int pixels = panRest_ / 2;
    panRest_ %= 2;
    return pixels;
}

void CTimingWnd::wheelEvent(QWheelEvent* event) {
    event->accept();
    const bool sideways = event->modifiers().testFlag(Qt::ShiftModifier) ||
                          std::abs(event->angleDelta().x()) > std::abs(event->angleDelta().y());
    if (sideways && !event->modifiers().testFlag(Qt::ControlModifier)) {
        return view_.PanBy(-SidewaysPixels(*event));
    }
    const int notches = Notches(*event);
    if (notches == 0) return;
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const auto x = static_cast<std::int32_t>(event->position().x());
        for (int i = 0; i < std::abs(notches); ++i) view_.ZoomAt(x, notches > 0);
        return Controller().UpdateBars();
    }
    ScrollBy(ScrollAxis::Vertical, notches > 0 ? ScrollCode::LineBack : ScrollCode::LineForward,
             kLinesPerNotch * std::abs(notches));
}

void CTimingWnd::keyPressEvent(QKeyEvent* event) {
    using enum ScrollAxis;
    using enum ScrollCode;
    static constexpr ScrollKey kKeys[] = {
        {Qt::Key_Left, false, Horizontal, LineBack},   {Qt::Key_Right, false, Horizontal, LineForward},
        {Qt::Key_Left, true, Horizontal, PageBack},    {Qt::Key_Right, true, Horizontal, PageForward},
        {Qt::Key_Up, false, Vertical, LineBack},       {Qt::Key_Down, false, Vertical, LineForward},
        {Qt::Key_PageUp, false, Horizontal, PageBack}, {Qt::Key_PageDown, false, Horizontal, PageForward},
        {Qt::Key_PageUp, true, Vertical, PageBack},    {Qt::Key_PageDown, true, Vertical, PageForward},
        {Qt::Key_Home, false, Horizontal, Top},        {Qt::Key_End, false, Horizontal, Bottom},
        {Qt::Key_Home, true, Vertical, Top},           {Qt::Key_End, true, Vertical, Bottom},
    };
    if (!ScrollByKey(*event, kKeys)) CViewWnd::keyPressEvent(event);
}

bool CTimingWnd::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool back = key->key() == Qt::Key_Backtab;
        // With Ctrl the keys go from window to window.
        const bool plain = !key->modifiers().testFlag(Qt::ControlModifier);
        if (plain && (back || key->key() == Qt::Key_Tab)) {
            view_.Command(back ? TimingCommand::PreviousEdge : TimingCommand::NextEdge);
            return true;
        }
    }
    return CViewWnd::event(event);
}

bool CTimingWnd::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::NativeGesture && HandleGesture(event)) return true;
    if (event->type() == QEvent::Leave) view_.MouseLeave();
    return CViewWnd::viewportEvent(event);
}

bool CTimingWnd::HandleGesture(QEvent* event) {
    const auto* gesture = static_cast<QNativeGestureEvent*>(event);
    if (gesture->gestureType() != Qt::ZoomNativeGesture) return false;
    pinchRest_ += gesture->value();
    const int steps = static_cast<int>(pinchRest_ / kPinchStep);
    pinchRest_ -= steps * kPinchStep;
    const auto x = static_cast<std::int32_t>(gesture->position().x());
    for (int i = 0; i < std::abs(steps); ++i) view_.ZoomAt(x, steps > 0);
    if (steps != 0) Controller().UpdateBars();
    return true;
}

void CTimingWnd::RefreshAll() {
    Controller().RefreshKeepingMeasures();
}

void CTimingWnd::RedrawFollowers() {
    for (const WindowId window : {WindowId::Pattern, WindowId::StateList, WindowId::Serial}) {
        RedrawIfOpen(Controller().TheApp(), window);
    }
}

void CTimingWnd::CaptureMouse(bool /*capture*/) {
    // The toolkit holds the mouse from press to release by itself.
}

void CTimingWnd::OpenDialog(const DialogRequest& request) {
    Controller().OpenTimingDialog(request);
}

std::optional<Rgb> CTimingWnd::ChooseColor(Rgb start) {
    return Controller().Colors().Choose(this, start);
}

void CTimingWnd::Beep() {
    Controller().TheApp().Host.Beep();
}

}  // namespace zu
