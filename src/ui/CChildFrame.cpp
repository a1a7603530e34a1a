#include "ui/CChildFrame.h"

#include <algorithm>
#include <array>

#include <QCloseEvent>
#include <QMdiArea>
#include <QRegion>

namespace zu {
namespace {

constexpr std::array kRecords{
    ChildRecord{WindowId::Timing, &WindowRecord::TimingStat, &WindowRecord::TimingRect,
                &WindowRecord::TimingRectValid},
    ChildRecord{WindowId::StateList, &WindowRecord::StateStat, &WindowRecord::StateRect,
                &WindowRecord::StateRectValid},
    ChildRecord{WindowId::Serial, &WindowRecord::SerialStat, &WindowRecord::SerialRect,
                &WindowRecord::SerialRectValid},
    ChildRecord{WindowId::Spi, &WindowRecord::SpiStat, &WindowRecord::SpiRect, &WindowRecord::SpiRectValid},
    ChildRecord{WindowId::Cursor, &WindowRecord::CursorDlgStat},
    ChildRecord{WindowId::Threshold, &WindowRecord::ThresholdStat, &WindowRecord::ThresholdRect,
                &WindowRecord::ThresholdRectValid},
    ChildRecord{WindowId::Pattern, &WindowRecord::PatEditStat, &WindowRecord::PatternRect,
                &WindowRecord::PatternRectValid},
};

/// What stays visible at least of a window that was stored outside the area.
constexpr int kLeastShown = 240;

/// One axis of a rectangle: the place is moved inside, then the end is cut.
std::pair<int, int> FitSpan(int from, int to, int room) {
    const int length = std::max(to - from, 50);
    const int start = std::clamp(from, 0, std::max(0, room - std::min(length, kLeastShown)));
    return {start, std::min(length, std::max(room - start, 50))};
}

}  // namespace

const ChildRecord& ChildRecordOf(WindowId window) {
    return *std::find_if(kRecords.begin(), kRecords.end(),
                         [window](const ChildRecord& record) { return record.Window == window; });
}

QRect FitInto(const WindowRect& rect, const QSize& area) {
    const auto [x, width] = FitSpan(rect.Left, rect.Right, area.width());
    const auto [y, height] = FitSpan(rect.Top, rect.Bottom, area.height());
    return {x, y, width, height};
}

CChildFrame::CChildFrame(WindowRecord& windows, WindowId window, QWidget& content, QWidget* parent)
    : QMdiSubWindow(parent), windows_(windows), record_(ChildRecordOf(window)) {
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWidget(&content);
}

void CChildFrame::Open(const QRect& fallback) {
    const bool stored = record_.Rect != nullptr && windows_.*record_.RectValid != 0;
    const QSize area = mdiArea() == nullptr ? fallback.size() : mdiArea()->viewport()->size();
    const QRect place = stored ? FitInto(windows_.*record_.Rect, area) : fallback;
    if (!isVisible()) {
        showNormal();
        // What the window holds is never cut off, whatever was stored.
        Place(QRect(place.topLeft(), place.size().expandedTo(minimumSizeHint())));
    }
    windows_.*record_.Stat = 1;
    raise();
    widget()->setFocus();
    emit opened();
}

bool CChildFrame::IsCovered() const {
    if (!isVisible() || mdiArea() == nullptr) return false;
    QRegion seen(geometry());
    const QList<QMdiSubWindow*> stack = mdiArea()->subWindowList(QMdiArea::StackingOrder);
    for (const QMdiSubWindow* window : stack.mid(stack.indexOf(this) + 1)) {
        if (window->isVisible()) seen -= window->geometry();
    }
    return seen.isEmpty();
}

void CChildFrame::Place(const QRect& place) {
    placing_ = true;
    setGeometry(place);
    placing_ = false;
}

void CChildFrame::closeEvent(QCloseEvent* event) {
    event->ignore();
    hide();
    windows_.*record_.Stat = 0;
    emit closed();
}

void CChildFrame::moveEvent(QMoveEvent* event) {
    QMdiSubWindow::moveEvent(event);
    Remember();
}

void CChildFrame::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    Remember();
}

void CChildFrame::Remember() {
    if (placing_ || record_.Rect == nullptr || !isVisible() || isMinimized() || isMaximized()) return;
    const QRect place = geometry();
    windows_.*record_.Rect = {place.left(), place.top(), place.right() + 1, place.bottom() + 1};
    windows_.*record_.RectValid = 1;
}

}  // namespace zu
