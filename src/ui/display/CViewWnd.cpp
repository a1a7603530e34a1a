#include "ui/display/CViewWnd.h"

#include <algorithm>

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"
#include "ui/HeldKeyFilter.h"
#include "ui/QtText.h"
#include "ui/display/Pointers.h"

namespace zu {
namespace {

constexpr int kWheelNotch = 120;

/// Fonts for a screen; none when the small one cannot be had.
std::unique_ptr<ScreenFonts> MakeScreenFonts(const Metrics& metrics, double scale) {
    auto fonts = std::make_unique<ScreenFonts>(metrics, scale, true);
    return fonts->IsUsable(FontId::Small) ? std::move(fonts) : nullptr;
}

}  // namespace

CViewWnd::CViewWnd(CZuView& controller)
    : ImageMaker(MakeImage),
      FontMaker(MakeScreenFonts),
      controller_(controller),
      metrics_(Metrics::ForScreen(controller.State().Screen.ScreenH)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    ConnectBar(ScrollAxis::Horizontal);
    ConnectBar(ScrollAxis::Vertical);
}

CViewWnd::~CViewWnd() = default;

QScrollBar* CViewWnd::BarOf(ScrollAxis axis) const {
    return axis == ScrollAxis::Horizontal ? horizontalScrollBar() : verticalScrollBar();
}

void CViewWnd::ConnectBar(ScrollAxis axis) {
    connect(BarOf(axis), &QScrollBar::actionTriggered, this,
            [this, axis](int action) { OnBarAction(axis, action); });
}

void CViewWnd::OnBarAction(ScrollAxis axis, int action) {
    QScrollBar* bar = BarOf(axis);
    const auto send = [&](ScrollCode code) { Scroll({axis, code, bar->sliderPosition()}); };
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
    bar->setSliderPosition(RangeOf(axis).Position);
}

void CViewWnd::SetBar(ScrollAxis axis, const ScrollRange& range, int page) {
    QScrollBar* bar = BarOf(axis);
    const QSignalBlocker quiet(bar);
    bar->setRange(range.Minimum, std::max(range.Minimum, range.Maximum));
    bar->setPageStep(std::max(1, page));
    if (!bar->isSliderDown()) bar->setValue(range.Position);
}

void CViewWnd::ScrollBy(ScrollAxis axis, ScrollCode code, int times) {
    for (int i = 0; i < times; ++i) Scroll({axis, code, 0});
}

bool CViewWnd::ScrollByKey(const QKeyEvent& event, std::span<const ScrollKey> keys) {
    const bool ctrl = event.modifiers().testFlag(Qt::ControlModifier);
    for (const ScrollKey& row : keys) {
        if (row.Key != event.key() || row.Ctrl != ctrl) continue;
        ScrollBy(row.Axis, row.Code);
        return true;
    }
    return false;
}

int CViewWnd::Notches(const QWheelEvent& event) {
    wheelRest_ += event.angleDelta().y();
    const int notches = wheelRest_ / kWheelNotch;
    wheelRest_ %= kWheelNotch;
    return notches;
}

void CViewWnd::MakePicture() {
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

void CViewWnd::MakeFonts(double scale) {
    if (fonts_ != nullptr && fonts_->Scale() == scale) return;
    picture_ = {};
    fonts_ = FontMaker(metrics_, scale);
    if (fonts_ == nullptr) Fail("Could not create smallfont: call Ostrand", "Error", 0);
}

void CViewWnd::ForgetPicture() {
    fonts_.reset();
    picture_ = {};
}

void CViewWnd::Fail(std::string_view text, std::string_view caption, int code) {
    Host& host = controller_.TheApp().Host;
    host.Message(text, caption);
    host.EndProcess(code);
}

void CViewWnd::Redraw() {
    dirty_ = true;
    viewport()->update();
}

void CViewWnd::Paint() {
    MakePicture();
    {
        QPainter painter(&picture_);
        ImageCanvas canvas(picture_, painter, *fonts_, viewport()->width(), viewport()->height());
        PaintView(canvas);
    }
    dirty_ = false;
}

void CViewWnd::paintEvent(QPaintEvent* event) {
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

void CViewWnd::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    Resized(viewport()->width(), viewport()->height());
    Redraw();
}

void CViewWnd::contextMenuEvent(QContextMenuEvent* event) {
    // The right button's press already went to the view.
    event->accept();
}

bool CViewWnd::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        ShowHover(*static_cast<QHelpEvent*>(event));
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CViewWnd::ShowHover(const QHelpEvent& help) {
    const QString text = Hover();
    if (text.isEmpty()) return QToolTip::hideText();
    // The text belongs to this spot; the next move takes it away.
    QToolTip::showText(help.globalPos(), text, viewport(), QRect(help.pos() - QPoint(2, 2), QSize(5, 5)));
}

MouseButton CViewWnd::ButtonOf(Qt::MouseButton button) {
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

MouseButton CViewWnd::FirstButton(Qt::MouseButtons buttons) {
    for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        if (buttons.testFlag(button)) return ButtonOf(button);
    }
    return MouseButton::None;
}

MouseEvent CViewWnd::ToEvent(const QMouseEvent& event, MouseButton button) const {
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

void CViewWnd::ShowTitle(std::string_view title) {
    const QString text = FromState(title);
    if (windowTitle() != text) setWindowTitle(text);
}

void CViewWnd::ShowPointer(PointerShape shape) {
    viewport()->setCursor(MakePointer(shape, controller_.State().Cursors));
}

int CViewWnd::RunPopup(const MenuSpec& menu, std::int32_t x, std::int32_t y) {
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

}  // namespace zu
