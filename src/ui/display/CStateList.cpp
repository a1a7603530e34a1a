#include "ui/display/CStateList.h"

#include <algorithm>
#include <cstdlib>

#include <QClipboard>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include "display/Scroll.h"
#include "paint/ImageCanvas.h"
#include "ui/CZuView.h"
#include "ui/QtText.h"

namespace zu {
namespace {

constexpr int kRowsPerNotch = 3;

}  // namespace

CStateList::CStateList(CZuView& controller)
    : CViewWnd(controller), view_(controller.State(), *this, FontMetrics()) {
    setWindowTitle(QStringLiteral("Statelist view: "));
}

void CStateList::Copy() {
    QGuiApplication::clipboard()->setText(FromState(view_.CopyText()));
}

void CStateList::PaintView(ImageCanvas& canvas) {
    const StateListResult result = view_.Paint(canvas);
    ShowTitle(result.Title);
    const std::int32_t unit = ScrollUnit(Controller().State().Memory.DisplayLen);
    SetBar(ScrollAxis::Vertical, result.Vertical, result.Rows / unit);
    SetBar(ScrollAxis::Horizontal, result.Horizontal, view_.Layout().Count);
}

ScrollRange CStateList::RangeOf(ScrollAxis axis) const {
    return axis == ScrollAxis::Horizontal ? StateListHorizontalRange(Controller().State())
                                          : StateListVerticalRange(Controller().State());
}

QString CStateList::Hover() const {
    return FromState(view_.HoverText());
}

void CStateList::mousePressEvent(QMouseEvent* event) {
    view_.MouseDown(ToEvent(*event, ButtonOf(event->button())));
}

void CStateList::mouseReleaseEvent(QMouseEvent* event) {
    view_.MouseUp(ToEvent(*event, ButtonOf(event->button())));
}

void CStateList::mouseMoveEvent(QMouseEvent* event) {
    view_.MouseMove(ToEvent(*event, FirstButton(event->buttons())));
}

void CStateList::wheelEvent(QWheelEvent* event) {
    event->accept();
    const int notches = Notches(*event);
    const bool sideways = event->modifiers().testFlag(Qt::ShiftModifier);
    ScrollBy(sideways ? ScrollAxis::Horizontal : ScrollAxis::Vertical,
             notches > 0 ? ScrollCode::LineBack : ScrollCode::LineForward,
             (sideways ? 1 : kRowsPerNotch) * std::abs(notches));
}

void CStateList::keyPressEvent(QKeyEvent* event) {
    using enum ScrollAxis;
    using enum ScrollCode;
    static constexpr ScrollKey kKeys[] = {
        {Qt::Key_Up, false, Vertical, LineBack},      {Qt::Key_Down, false, Vertical, LineForward},
        {Qt::Key_PageUp, false, Vertical, PageBack},  {Qt::Key_PageDown, false, Vertical, PageForward},
        {Qt::Key_Home, false, Vertical, Top},         {Qt::Key_End, false, Vertical, Bottom},
        {Qt::Key_Left, false, Horizontal, LineBack},  {Qt::Key_Right, false, Horizontal, LineForward},
        {Qt::Key_PageUp, true, Horizontal, PageBack}, {Qt::Key_PageDown, true, Horizontal, PageForward},
        {Qt::Key_Home, true, Horizontal, Top},        {Qt::Key_End, true, Horizontal, Bottom},
    };
    if (event->matches(QKeySequence::Copy)) return Copy();
    if (event->key() == Qt::Key_Escape) return view_.ClearSelection();
    if (!ScrollByKey(*event, kKeys)) CViewWnd::keyPressEvent(event);
}

bool CStateList::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) view_.MouseLeave();
    return CViewWnd::viewportEvent(event);
}

void CStateList::focusOutEvent(QFocusEvent* event) {
    CViewWnd::focusOutEvent(event);
    view_.FocusLost();
}

void CStateList::RefreshAll() {
    Controller().RefreshKeepingMeasures();
}

void CStateList::RedrawFollowers() {
    Controller().RefreshKeepingMeasures();
}

void CStateList::OpenSetup() {
    Controller().Execute(CommandId::StateListSetup);
}

std::optional<Rgb> CStateList::ChooseColor(Rgb start) {
    return Controller().Colors().Choose(this, start);
}

}  // namespace zu
