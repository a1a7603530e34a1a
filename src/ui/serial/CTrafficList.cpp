#include "ui/serial/CTrafficList.h"

#include <cstdlib>

#include <QClipboard>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"
#include "ui/QtText.h"
#include "ui/display/CTimingWnd.h"

namespace zu {
namespace {

constexpr int kRowsPerNotch = 3;

}  // namespace

CTrafficList::CTrafficList(CZuView& controller) : CViewWnd(controller) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QSize CTrafficList::sizeHint() const {
    constexpr QSize kAllColumns(560, 300);
    return kAllColumns;
}

void CTrafficList::Copy() {
    QGuiApplication::clipboard()->setText(FromState(Logic().CopyText()));
}

void CTrafficList::PaintView(ImageCanvas& canvas) {
    const SerialResult result = PaintList(canvas);
    ShowTitle(result.Title);
    SetBar(ScrollAxis::Vertical, result.Vertical, result.Page);
}

ScrollRange CTrafficList::RangeOf(ScrollAxis axis) const {
    return axis == ScrollAxis::Vertical ? Logic().Range() : ScrollRange{};
}

QString CTrafficList::Hover() const {
    return FromState(Logic().HoverText());
}

void CTrafficList::mousePressEvent(QMouseEvent* event) {
    Logic().MouseDown(ToEvent(*event, ButtonOf(event->button())));
}

void CTrafficList::mouseReleaseEvent(QMouseEvent* event) {
    Logic().MouseUp(ToEvent(*event, ButtonOf(event->button())));
}

void CTrafficList::mouseMoveEvent(QMouseEvent* event) {
    Logic().MouseMove(ToEvent(*event, FirstButton(event->buttons())));
}

void CTrafficList::wheelEvent(QWheelEvent* event) {
    event->accept();
    const int notches = Notches(*event);
    ScrollBy(ScrollAxis::Vertical, notches > 0 ? ScrollCode::LineBack : ScrollCode::LineForward,
             kRowsPerNotch * std::abs(notches));
}

void CTrafficList::keyPressEvent(QKeyEvent* event) {
    struct KeyRow {
        int Key;
        ScrollCode Code;
    };
    static constexpr KeyRow kKeys[] = {
        {Qt::Key_Up, ScrollCode::LineBack},     {Qt::Key_Down, ScrollCode::LineForward},
        {Qt::Key_PageUp, ScrollCode::PageBack}, {Qt::Key_PageDown, ScrollCode::PageForward},
        {Qt::Key_Home, ScrollCode::Top},        {Qt::Key_End, ScrollCode::Bottom},
    };
    if (event->matches(QKeySequence::Copy)) return Copy();
    if (event->key() == Qt::Key_Escape) return Logic().ClearSelection();
    for (const KeyRow& row : kKeys) {
        if (row.Key == event->key()) return ScrollBy(ScrollAxis::Vertical, row.Code);
    }
    CViewWnd::keyPressEvent(event);
}

bool CTrafficList::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) Logic().MouseLeave();
    return CViewWnd::viewportEvent(event);
}

void CTrafficList::focusOutEvent(QFocusEvent* event) {
    CViewWnd::focusOutEvent(event);
    Logic().FocusLost();
}

void CTrafficList::RefreshAll() {
    Controller().RefreshKeepingMeasures();
}

void CTrafficList::RedrawFollowers() {
    Controller().RefreshKeepingMeasures();
}

void CTrafficList::CenterTiming(std::int32_t sample) {
    // A window that was never opened begins where the state tells.
    if (CTimingWnd* timing = Controller().Timing()) return timing->View().GoTo(sample);
    Controller().State().Timing.TimingDataPos = sample;
}

void CTrafficList::OpenSetup() {
    Controller().Execute(CommandId::StateListSetup);
}

void CTrafficList::OpenGroupSetup() {
    Controller().Execute(CommandId::GroupSetup);
}

}  // namespace zu
