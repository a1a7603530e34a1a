#include "ui/CZuView.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMenu>
#include <QScreen>
#include <QStyle>

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/FileCommands.h"
#include "core/Frame.h"
#include "core/MemoryMenu.h"
#include "core/Preferences.h"
#include "core/Startup.h"
#include "display/Search.h"
#include "state/Model.h"
#include "ui/CChildFrame.h"
#include "ui/CMainFrame.h"
#include "ui/FittedScroller.h"
#include "ui/HeldKeyFilter.h"
#include "ui/MainMenu.h"
#include "ui/QtHost.h"
#include "ui/QtText.h"
#include "ui/core/CAboutDlg.h"
#include "ui/core/CHWAddress.h"
#include "ui/core/CInitSettings.h"
#include "ui/core/CKeySheet.h"
#include "ui/core/CRegisterTrace.h"
#include "ui/display/CCursorDlg.h"
#include "ui/display/CGoToDlg.h"
#include "ui/display/CStateList.h"
#include "ui/display/CTimingWnd.h"
#include "ui/display/ViewDialogs.h"
#include "ui/serial/CSerialList.h"
#include "ui/serial/CSerialWnd.h"
#include "ui/serial/CSpiList.h"
#include "ui/serial/CSpiWnd.h"

namespace zu {
namespace {

/// The zoom as a ratio of data to pixels, worded as in the zoom menu.
QString ZoomText(std::int32_t zoom) {
    for (const ZoomStep& step : kZoomTable) {
        if (step.Zoom == zoom) return FromState(step.MenuText).section(u' ', 0, 0, QString::SectionSkipEmpty);
    }
    return zoom < 0 ? QStringLiteral("%1:1").arg(-std::int64_t{zoom})
                    : QStringLiteral("1:%1").arg(std::max(zoom, 1));
}

bool IsTraffic(WindowId window) {
    return window == WindowId::Serial || window == WindowId::Spi;
}

}  // namespace

CZuView::CZuView(InstrumentState& state, QtHost& host, HardwareSession& hardware, HeldKeyFilter& keys,
                 CMainFrame& frame)
    : host_(host), keys_(keys), frame_(frame), app_{state, host, *this, hardware} {
    host_.SetWindow(&frame_);
    host_.Tick = [this](int id) { OnTick(id); };
    host_.LoopTurn = [this] { ShowCaptureState(); };
    host_.ShowRemark = [this](const QString& text) { frame_.ShowRemark(text); };
    BuildMenu();
    ConnectFrame();
}

CZuView::~CZuView() {
    host_.Tick = nullptr;
    host_.LoopTurn = nullptr;
    host_.ShowRemark = nullptr;
    // The windows draw from the state through this object; they go before it.
    delete trace_;
    for (auto& [window, child] : children_) delete child;
}

void CZuView::BuildMenu() {
    MainMenu::Source source;
    source.Prepare = [this] { PrepareMenu(app_); };
    source.Query = [this](CommandId id) { return QueryCommand(app_, id); };
    source.Run = [this](CommandId id) { Execute(id); };
    source.GoOrStop = [this] {
        GoOrStop(app_);
        menu_->Refresh();
        UpdateBars();
    };
    source.OpenRecent = [this](const QString& path) { OpenFile(path); };
    source.RecentFiles = [this] {
        QStringList paths;
        for (const std::string& name : State().Files.RecentFiles) {
            if (!name.empty()) paths.append(FromPath(name));
        }
        return paths;
    };
    source.ListWindows = [this](QMenu& menu) { ListWindows(menu); };
    menu_ = std::make_unique<MainMenu>(*frame_.menuBar(), frame_, std::move(source));
    frame_.BuildToolbar(*menu_);
}

void CZuView::ConnectFrame() {
    connect(&frame_, &CMainFrame::userMoved, this, [this](int x, int y) {
        RememberMainMove(app_, x, y);
        // The far edges go along, or the window would come back in another size.
        RememberMainSize(app_, frame_.width(), frame_.height());
    });
    connect(&frame_, &CMainFrame::userSized, this,
            [this](int width, int height) { RememberMainSize(app_, width, height); });
    connect(&frame_, &CMainFrame::fileDropped, this, &CZuView::OpenFile);
    connect(&frame_, &CMainFrame::closing, this, [this] {
        // Whatever is on the stack, a poll or a tight loop, unwinds and begins nothing more.
        State().Capture.CaptureState = 0;
        host_.SetQuitting();
        QApplication::quit();
    });
}

void CZuView::Start() {
    CreateFrame(app_);
    frame_.Restore(MainClientRect(State().Windows.MainRect));
    RunStartupSequence(app_);
    PresentFrame();
    UpdateMenus();
    UpdateBars();
}

void CZuView::PresentFrame() {
    if (frame_.Presented()) return;
    frame_.Present();
    // From here on every move is the user's.
    app_.MainMovesToIgnore = 0;
}

void CZuView::CloseDown() {
    host_.KillTimer(kHardwareTimer);
    host_.KillTimer(kEmulationTimer);
    frame_.hide();
    delete std::exchange(trace_, nullptr);
    // What follows frees the samples; no window may paint any more.
    for (auto& [window, child] : children_) delete child;
    children_.clear();
    timing_ = nullptr;
    stateList_ = nullptr;
    serial_ = nullptr;
    spi_ = nullptr;
    cursors_ = nullptr;
    Shutdown(app_);
}

void CZuView::OnTick(int id) {
    if (host_.Quitting()) return;
    OnTimer(app_, id);
    if (!host_.Quitting()) ShowCaptureState();
}

void CZuView::ShowCaptureState() {
    const CaptureRecord& capture = State().Capture;
    CaptureTexts texts;
    if (capture.CaptureState == 1) texts.State = CaptureTexts::Lamp::Running;
    if (capture.CaptureState == 2) texts.State = CaptureTexts::Lamp::Paused;
    const std::int32_t count = capture.CaptureCount;
    texts.Count = count == 1 ? QStringLiteral("1 capture") : QStringLiteral("%1 captures").arg(count);
    texts.Status = FromState(capture.StatusText.View()).replace(QStringLiteral(" \n"), QStringLiteral(", "));
    frame_.SetCapture(texts);
    const bool running = capture.CaptureState != 0;
    if (std::exchange(shownRunning_, running) != running) menu_->Refresh();
}

void CZuView::Execute(CommandId id) {
    const bool enabled = QueryCommand(app_, id).Enabled;
    if (enabled && !Uncover(id) && !RunCommand(app_, id)) ExecuteOwn(id);
    if (host_.Quitting()) return;
    menu_->Refresh();
    UpdateBars();
}

/// The command of a window that is hidden behind others brings it forward: to close what nobody sees would
/// look as if nothing had happened. False if the command is another, or its window can be seen.
bool CZuView::Uncover(CommandId id) {
    using Row = std::pair<CommandId, WindowId>;
    constexpr std::array kRows{
        Row{CommandId::WindowTiming, WindowId::Timing}, Row{CommandId::WindowStateList, WindowId::StateList},
        Row{CommandId::WindowSerial, WindowId::Serial}, Row{CommandId::WindowSpi, WindowId::Spi},
        Row{CommandId::WindowCursor, WindowId::Cursor}};
    const auto* row =
        std::find_if(kRows.begin(), kRows.end(), [id](const Row& each) { return each.first == id; });
    CChildFrame* child = row == kRows.end() ? nullptr : Child(row->second);
    if (child == nullptr || !child->IsCovered()) return false;
    frame_.Area().setActiveSubWindow(child);
    return true;
}

void CZuView::ExecuteOwn(CommandId id) {
    switch (id) {
        case CommandId::FileExit:
            frame_.close();
            break;
        case CommandId::WindowTile:
            frame_.Area().tileSubWindows();
            break;
        case CommandId::WindowCascade:
            frame_.Area().cascadeSubWindows();
            break;
        case CommandId::RegisterTrace:
            ShowRegisterTrace();
            break;
        case CommandId::HelpKeys:
            CKeySheet(&frame_).exec();
            break;
        case CommandId::About:
            CAboutDlg(State(), &frame_).exec();
            break;
        case CommandId::GoTo:
            if (timing_ != nullptr) CGoToDlg(timing_->View(), &frame_).exec();
            break;
        default:
            if (!RunEditCommand(*this, id) && !ExecuteColor(id)) ExecuteZoom(id);
    }
}

bool CZuView::ExecuteColor(CommandId id) {
    const int screen = FamilyIndex(id, CommandId::ScreenColor0, CommandId::ScreenColorLast);
    const int cursor = FamilyIndex(id, CommandId::CursorColor0, CommandId::CursorColorLast);
    if (screen < 0 && cursor < 0) return false;
    Rgb& color = screen >= 0 ? State().Screen.ScreenColor[static_cast<std::size_t>(screen)]
                             : State().Cursors.CursorColor[static_cast<std::size_t>(cursor)];
    if (const auto chosen = Colors().Choose(&frame_, color)) {
        color = *chosen;
        RefreshAll(app_);
        RedrawIfOpen(app_, WindowId::Pattern);
    }
    return true;
}

void CZuView::ExecuteZoom(CommandId id) {
    if (timing_ == nullptr) return;
    const int step = FamilyIndex(id, CommandId::Zoom0, CommandId::ZoomLast);
    if (step >= 0) {
        timing_->View().SelectZoom(kZoomTable[static_cast<std::size_t>(step)].Zoom);
    } else if (id == CommandId::ZoomIn) {
        timing_->View().Command(TimingCommand::ZoomIn);
    } else if (id == CommandId::ZoomOut) {
        timing_->View().Command(TimingCommand::ZoomOut);
    }
}

void CZuView::OpenFile(const QString& path) {
    OpenByName(app_, ToPath(path));
    menu_->Refresh();
    UpdateBars();
}

void CZuView::OpenTimingDialog(const DialogRequest& request) {
    RunTimingDialog(*this, request);
    UpdateBars();
}

void CZuView::RunSearch(bool forward) {
    if (SearchOrBeep(State(), host_, forward)) RefreshKeepingMeasures();
}

void CZuView::RefreshKeepingMeasures() {
    keepMeasures_ = true;
    RefreshAll(app_);
    RedrawIfOpen(app_, WindowId::Pattern);
    keepMeasures_ = false;
}

CChildFrame* CZuView::Child(WindowId window) {
    const auto found = children_.find(window);
    return found == children_.end() ? nullptr : found->second;
}

QWidget* CZuView::MakeCursorWindow() {
    cursors_ = new CCursorDlg(State(), [this] { RefreshKeepingMeasures(); });
    // A window that is made smaller than its fields scrolls them.
    auto* scroller = new FittedScroller(*cursors_);
    scroller->setWindowTitle(cursors_->windowTitle());
    return scroller;
}

CChildFrame* CZuView::MakeChild(WindowId window) {
    QWidget* content = nullptr;
    if (window == WindowId::Timing) content = timing_ = new CTimingWnd(*this);
    if (window == WindowId::StateList) content = stateList_ = new CStateList(*this);
    if (window == WindowId::Serial) content = serial_ = new CSerialWnd(*this);
    if (window == WindowId::Spi) content = spi_ = new CSpiWnd(*this);
    if (window == WindowId::Cursor) content = MakeCursorWindow();
    if (content == nullptr) return nullptr;
    auto* child = new CChildFrame(State().Windows, window, *content);
    frame_.Area().addSubWindow(child);
    connect(child, &CChildFrame::closed, this, [this] { menu_->Refresh(); });
    connect(child, &QMdiSubWindow::aboutToActivate, this,
            [this, window] { State().Windows.LastWindow = static_cast<std::uint8_t>(window); });
    return children_[window] = child;
}

QRect CZuView::DefaultPlace(WindowId window) {
    const QSize area = frame_.Area().viewport()->size();
    if (window == WindowId::Cursor) {
        const CChildFrame& child = *Child(window);
        QSize wanted = child.sizeHint();
        if (wanted.height() > area.height()) {
            wanted.rwidth() += child.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        }
        return {QPoint(), wanted.boundedTo(area)};
    }
    const ChildRecord& record = ChildRecordOf(window);
    if (record.Rect == nullptr) return {QPoint(), area};
    const WindowRect& first = State().Windows.*record.Rect;
    QRect place = FitInto(first, area);
    // The Statelist's first rectangle ends above its beginning: it then reaches to the lower end.
    if (first.Bottom <= first.Top) place.setBottom(std::max(area.height() - 1, place.bottom()));
    // Before the user has arranged anything, nothing covers the cursor window.
    CChildFrame* cursor = Child(WindowId::Cursor);
    if (cursor != nullptr && cursor->IsOpen() && place.intersects(cursor->geometry())) {
        place.setLeft(std::min(cursor->geometry().right() + 1, std::max(place.left(), area.width() / 2)));
    }
    return IsTraffic(window) ? TrafficPlace(window, place) : place;
}

QRect CZuView::TrafficPlace(WindowId window, QRect place) {
    constexpr int kBeside = 28;  // the title of the one below stays in sight
    const QSize area = frame_.Area().viewport()->size();
    const int wanted = std::min(Child(window)->sizeHint().width(), area.width());
    CChildFrame* other = Child(window == WindowId::Spi ? WindowId::Serial : WindowId::Spi);
    const bool covers = other != nullptr && other->IsOpen() && other->pos() == place.topLeft();
    if (covers) place.setTopLeft(place.topLeft() + QPoint(kBeside, kBeside));
    place.setWidth(std::max(place.width(), wanted));
    place.moveRight(std::min(place.right(), area.width() - 1));
    return place;
}

void CZuView::Open(WindowId window) {
    PresentFrame();
    CChildFrame* child = Child(window);
    if (child == nullptr) child = MakeChild(window);
    if (child == nullptr) return;
    child->Open(DefaultPlace(window));
    if (window == WindowId::Timing) timing_->MakePicture();
    if (window == WindowId::StateList) stateList_->MakePicture();
    if (window == WindowId::Serial) serial_->List().MakePicture();
    if (window == WindowId::Spi) spi_->List().MakePicture();
    Redraw(window);
}

void CZuView::Close(WindowId window) {
    if (CChildFrame* child = Child(window)) child->close();
}

void CZuView::Redraw(WindowId window) {
    if (window == WindowId::Timing && timing_ != nullptr) {
        keepMeasures_ ? timing_->Redraw() : timing_->DataChanged();
    }
    if (window == WindowId::StateList && stateList_ != nullptr) stateList_->Redraw();
    if (window == WindowId::Serial && serial_ != nullptr) serial_->Redraw();
    if (window == WindowId::Spi && spi_ != nullptr) spi_->Redraw();
    if (window == WindowId::Cursor && cursors_ != nullptr) cursors_->Redraw();
}

void CZuView::UpdateBars() {
    const InstrumentState& state = State();
    frame_.SetBars({ZoomText(state.Timing.ScreenZoom),
                    FromState(RateStatusText(state.Clock.ClockType, state.Clock.ClockRate)),
                    FromState(CaptureModeText(state.Capture.CaptureMode)), FromState(StatusMemoryText(state)),
                    QStringLiteral("%1 ch").arg(DisplayChannelCount(state))});
    ShowCaptureState();
}

void CZuView::UpdateMenus() {
    menu_->Refresh();
}

ScreenFacts CZuView::Screen() {
    const QScreen* screen = QApplication::primaryScreen();
    const QRect whole = screen->virtualGeometry();
    const QRect free = screen->availableGeometry();
    const QSize device = screen->size();
    return {whole.width(), whole.height(), free.y() + free.height(), device.width(), device.height()};
}

bool CZuView::RunAddressDialog() {
    // Asked to end during start-up, the program opens no further dialog.
    if (host_.Unattended() || host_.Quitting()) return false;
    CHWAddress dialog(app_.Hardware, State(), frame_.isVisible() ? &frame_ : nullptr);
    return dialog.exec() == QDialog::Accepted;
}

void CZuView::ShowRegisterTrace() {
    if (trace_ == nullptr) trace_ = new CRegisterTrace(app_, &frame_);
    trace_->show();
    trace_->raise();
    trace_->activateWindow();
}

void CZuView::RunModelDialog() {
    if (host_.Unattended() || host_.Quitting()) return;
    CInitSettings(State(), frame_.isVisible() ? &frame_ : nullptr).exec();
}

void CZuView::SetBusy(bool busy) {
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void CZuView::ListWindows(QMenu& menu) {
    int number = 0;
    for (auto& [window, child] : children_) {
        if (!child->IsOpen()) continue;
        QString title = child->windowTitle().section(u':', 0, 0);
        QAction* action = menu.addAction(
            QStringLiteral("&%1 %2").arg(++number).arg(title.replace(u'&', QStringLiteral("&&"))));
        action->setCheckable(true);
        action->setChecked(frame_.Area().activeSubWindow() == child);
        CChildFrame* shown = child;
        connect(action, &QAction::triggered, this,
                [this, shown] { frame_.Area().setActiveSubWindow(shown); });
    }
}

}  // namespace zu
