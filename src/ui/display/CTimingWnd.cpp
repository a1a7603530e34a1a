#include "ui/display/CTimingWnd.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include "core/Capture.h"
#include "display/Lines.h"
#include "display/Scroll.h"
#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"
#include "ui/HeldKeyFilter.h"
#include "ui/QtText.h"
#include "ui/display/Pointers.h"

namespace zu {
namespace {

constexpr int kWheelNotch = 120;
constexpr int kLinesPerNotch = 3;
/// A pinch by this factor is one step of the zoom chain.
constexpr double kPinchStep = 0.25;

MouseButton ButtonOf(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return MouseButton::Left;
        case Qt::RightButton:
            return MouseButton::Right;
        case Qt::MiddleButton:
            return MouseButton::Middle;
        default:
            return MouseButton::None;
    }
}

/// Fonts for a screen; none when the small one cannot be had.
std::unique_ptr<ScreenFonts> MakeScreenFonts(const Metrics& metrics, double scale) {
    auto fonts = std::make_unique<ScreenFonts>(metrics, scale, true);
    return fonts->IsUsable(FontId::Small) ? std::move(fonts) : nullptr;
}

MouseButton FirstButton(Qt::MouseButtons buttons) {
    for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        if (buttons.testFlag(button)) return ButtonOf(button);
    }
    return MouseButton::None;
}

}  // namespace

CTimingWnd::CTimingWnd(CZuView& controller)
    : ImageMaker(MakeImage),
      FontMaker(MakeScreenFonts),
      controller_(controller),
      metrics_(Metrics::ForScreen(controller.State().Screen.ScreenH)),
      view_(controller.State(), *this, metrics_) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setWindowTitle(QStringLiteral("Timing view"));
    ConnectBar(ScrollAxis::Horizontal);
    ConnectBar(ScrollAxis::Vertical);
}

CTimingWnd::~CTimingWnd() = default;

void CTimingWnd::ConnectBar(ScrollAxis axis) {
    QScrollBar* bar = axis == ScrollAxis::Horizontal ? horizontalScrollBar() : verticalScrollBar();
    connect(bar, &QScrollBar::actionTriggered, this, [this, axis](int action) { OnBarAction(axis, action); });
}

void CTimingWnd::MakePicture() {
    const QSize wanted = screen()->size().expandedTo(viewport()->size()).expandedTo(room_);
    const double scale = devicePixelRatioF();
    MakeFonts(scale);
    if (!picture_.isNull() && wanted == room_) return;
    picture_ = ImageMaker(wanted.width(), wanted.height(), scale);
    room_ = wanted;
    dirty_ = true;
    if (!picture_.isNull()) return;
    Fail("Could not create bitmap. Reduce colors in Control panel.", "Graphics error:", 1);
}

void CTimingWnd::MakeFonts(double scale) {
    if (fonts_ != nullptr && fonts_->Scale() == scale) return;
    picture_ = {};
    fonts_ = FontMaker(metrics_, scale);
    if (fonts_ == nullptr) Fail("Could not create smallfont: call Ostrand", "Error", 0);
}

void CTimingWnd::ForgetPicture() {
    fonts_.reset();
    picture_ = {};
}

void CTimingWnd::Fail(std::string_view text, std::string_view caption, int code) {
    Host& host = controller_.TheApp().Host;
    host.Message(text, caption);
    host.EndProcess(code);
}

void CTimingWnd::Redraw() {
    dirty_ = true;
    viewport()->update();
}

void CTimingWnd::DataChanged() {
    view_.DataChanged();
    Redraw();
}

void CTimingWnd::Paint() {
    MakePicture();
    PaintResult result;
    {
        QPainter painter(&picture_);
        ImageCanvas canvas(picture_, painter, *fonts_, viewport()->width(), viewport()->height());
        result = view_.Paint(canvas);
    }
    dirty_ = false;
    Apply(result);
}

void CTimingWnd::Apply(const PaintResult& result) {
    const QString title = FromState(result.Title);
    if (windowTitle() != title) setWindowTitle(title);
    const auto set = [](QScrollBar* bar, const ScrollRange& range, int page) {
        // What the program sets is no scroll of the user.
        const QSignalBlocker quiet(bar);
        bar->setRange(range.Minimum, std::max(range.Minimum, range.Maximum));
        bar->setPageStep(std::max(1, page));
        if (!bar->isSliderDown()) bar->setValue(range.Position);
    };
    const std::int64_t visible = view_.VisibleSamples();
    const std::int64_t unit = ScrollUnit(controller_.State().Memory.DisplayLen);
    set(horizontalScrollBar(), result.Horizontal,
        static_cast<int>(std::clamp<std::int64_t>(visible / unit, 1, 1 << 30)));
    set(verticalScrollBar(), result.Vertical,
        (viewport()->height() - kHeaderHeight) / TextRowHeight(metrics_));
}

void CTimingWnd::paintEvent(QPaintEvent* event) {
    if (painting_) return;
    painting_ = true;
    if (dirty_ || picture_.isNull() || fonts_ == nullptr || fonts_->Scale() != devicePixelRatioF()) Paint();
    painting_ = false;
    const double scale = fonts_->Scale();
    const QRect area = event->rect();
    QPainter painter(viewport());
    painter.drawImage(
        QRectF(area), picture_,
        QRectF(area.x() * scale, area.y() * scale, area.width() * scale, area.height() * scale));
}

void CTimingWnd::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    view_.Resize(viewport()->width(), viewport()->height());
    Redraw();
}

MouseEvent CTimingWnd::ToEvent(const QMouseEvent& event, MouseButton button) const {
    const QPoint at = event.position().toPoint();
    const Qt::KeyboardModifiers keys = event.modifiers();
    return {at.x(),
            at.y(),
            button,
            keys.testFlag(Qt::ControlModifier),
            keys.testFlag(Qt::ShiftModifier),
            keys.testFlag(Qt::AltModifier),
            controller_.Keys().Held()};
}

void CTimingWnd::mousePressEvent(QMouseEvent* event) {
    view_.MouseDown(ToEvent(*event, ButtonOf(event->button())));
}

void CTimingWnd::mouseReleaseEvent(QMouseEvent* event) {
    view_.MouseUp(ToEvent(*event, ButtonOf(event->button())));
}

void CTimingWnd::mouseMoveEvent(QMouseEvent* event) {
    view_.MouseMove(ToEvent(*event, FirstButton(event->buttons())));
}

void CTimingWnd::mouseDoubleClickEvent(QMouseEvent* event) {
    view_.DoubleClick(ToEvent(*event, ButtonOf(event->button())));
}

void CTimingWnd::contextMenuEvent(QContextMenuEvent* event) {
    // The right button's press already went to the view.
    event->accept();
}

void CTimingWnd::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    view_.FocusLost();
}

void CTimingWnd::wheelEvent(QWheelEvent* event) {
    event->accept();
    const bool sideways = event->modifiers().testFlag(Qt::ShiftModifier) ||
                          std::abs(event->angleDelta().x()) > std::abs(event->angleDelta().y());
    if (sideways && !event->modifiers().testFlag(Qt::ControlModifier)) {
        const QPoint delta = event->angleDelta();
        const int amount = delta.x() != 0 ? delta.x() : delta.y();
        return view_.PanBy(-amount / 2);
    }
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / kWheelNotch;
    wheelRest_ %= kWheelNotch;
    if (notches == 0) return;
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const auto x = static_cast<std::int32_t>(event->position().x());
        for (int i = 0; i < std::abs(notches); ++i) view_.ZoomAt(x, notches > 0);
        return controller_.UpdateBars();
    }
    ScrollBy(ScrollAxis::Vertical, notches > 0 ? ScrollCode::LineBack : ScrollCode::LineForward,
             kLinesPerNotch * std::abs(notches));
}

void CTimingWnd::ScrollBy(ScrollAxis axis, ScrollCode code, int times) {
    for (int i = 0; i < times; ++i) view_.Scroll({axis, code, 0});
}

void CTimingWnd::keyPressEvent(QKeyEvent* event) {
    struct KeyRow {
        int Key;
        bool Ctrl;
        ScrollAxis Axis;
        ScrollCode Code;
    };
    using enum ScrollAxis;
    using enum ScrollCode;
    static constexpr KeyRow kKeys[] = {
        {Qt::Key_Left, false, Horizontal, LineBack},   {Qt::Key_Right, false, Horizontal, LineForward},
        {Qt::Key_Left, true, Horizontal, PageBack},    {Qt::Key_Right, true, Horizontal, PageForward},
        {Qt::Key_Up, false, Vertical, LineBack},       {Qt::Key_Down, false, Vertical, LineForward},
        {Qt::Key_PageUp, false, Horizontal, PageBack}, {Qt::Key_PageDown, false, Horizontal, PageForward},
        {Qt::Key_PageUp, true, Vertical, PageBack},    {Qt::Key_PageDown, true, Vertical, PageForward},
        {Qt::Key_Home, false, Horizontal, Top},        {Qt::Key_End, false, Horizontal, Bottom},
        {Qt::Key_Home, true, Vertical, Top},           {Qt::Key_End, true, Vertical, Bottom},
    };
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    for (const KeyRow& row : kKeys) {
        if (row.Key == event->key() && row.Ctrl == ctrl) return ScrollBy(row.Axis, row.Code);
    }
    QAbstractScrollArea::keyPressEvent(event);
}

bool CTimingWnd::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool back = key->key() == Qt::Key_Backtab;
        if (back || key->key() == Qt::Key_Tab) {
            view_.Command(back ? TimingCommand::PreviousEdge : TimingCommand::NextEdge);
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

bool CTimingWnd::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::NativeGesture && HandleGesture(event)) return true;
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        ShowHover(help->pos(), help->globalPos());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

bool CTimingWnd::HandleGesture(QEvent* event) {
    const auto* gesture = static_cast<QNativeGestureEvent*>(event);
    if (gesture->gestureType() != Qt::ZoomNativeGesture) return false;
    pinchRest_ += gesture->value();
    const int steps = static_cast<int>(pinchRest_ / kPinchStep);
    pinchRest_ -= steps * kPinchStep;
    const auto x = static_cast<std::int32_t>(gesture->position().x());
    for (int i = 0; i < std::abs(steps); ++i) view_.ZoomAt(x, steps > 0);
    if (steps != 0) controller_.UpdateBars();
    return true;
}

void CTimingWnd::ShowHover(const QPoint& at, const QPoint& global) {
    const QString text = FromState(view_.HoverText());
    if (text.isEmpty()) return QToolTip::hideText();
    // The text belongs to this spot; the next move takes it away.
    QToolTip::showText(global, text, viewport(), QRect(at - QPoint(2, 2), QSize(5, 5)));
}

void CTimingWnd::OnBarAction(ScrollAxis axis, int action) {
    QScrollBar* bar = axis == ScrollAxis::Horizontal ? horizontalScrollBar() : verticalScrollBar();
    const auto send = [&](ScrollCode code) { view_.Scroll({axis, code, bar->sliderPosition()}); };
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd:
            send(ScrollCode::LineForward);
            break;
        case QAbstractSlider::SliderSingleStepSub:
            send(ScrollCode::LineBack);
            break;
        case QAbstractSlider::SliderPageStepAdd:
            send(ScrollCode::PageForward);
            break;
        case QAbstractSlider::SliderPageStepSub:
            send(ScrollCode::PageBack);
            break;
        case QAbstractSlider::SliderToMinimum:
            send(ScrollCode::Top);
            break;
        case QAbstractSlider::SliderToMaximum:
            send(ScrollCode::Bottom);
            break;
        case QAbstractSlider::SliderMove:
            return send(ScrollCode::Thumb);
        default:
            return;
    }
    // The view decides where the bar stands, not the bar.
    const QSignalBlocker quiet(bar);
    const ScrollRange range = axis == ScrollAxis::Horizontal ? HorizontalRange(controller_.State())
                                                             : VerticalRange(controller_.State());
    bar->setSliderPosition(range.Position);
}

void CTimingWnd::RefreshAll() {
    controller_.RefreshKeepingMeasures();
}

void CTimingWnd::RedrawFollowers() {
    for (const WindowId window : {WindowId::Pattern, WindowId::StateList, WindowId::Serial}) {
        RedrawIfOpen(controller_.TheApp(), window);
    }
}

void CTimingWnd::SetPointer(PointerShape shape) {
    viewport()->setCursor(MakePointer(shape, controller_.State().Cursors));
}

void CTimingWnd::CaptureMouse(bool /*capture*/) {
    // The toolkit holds the mouse from press to release by itself.
}

int CTimingWnd::Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) {
    QMenu popup(this);
    for (const MenuEntry& entry : menu.Entries) {
        if (entry.Id == 0) {
            popup.addSeparator();
            continue;
        }
        QAction* action = popup.addAction(FromState(entry.Text));
        action->setData(entry.Id);
        action->setCheckable(entry.Checked);
        action->setChecked(entry.Checked);
        action->setEnabled(entry.Enabled);
    }
    const QAction* taken = popup.exec(viewport()->mapToGlobal(QPoint(x, y)));
    return taken == nullptr ? 0 : taken->data().toInt();
}

void CTimingWnd::OpenDialog(const DialogRequest& request) {
    controller_.OpenTimingDialog(request);
}

std::optional<Rgb> CTimingWnd::ChooseColor(Rgb start) {
    return controller_.Colors().Choose(this, start);
}

void CTimingWnd::Beep() {
    controller_.TheApp().Host.Beep();
}

}  // namespace zu
