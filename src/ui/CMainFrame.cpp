#include "ui/CMainFrame.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMimeData>
#include <QPainter>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

#include "ui/DrawnIcon.h"
#include "ui/MainMenu.h"

namespace zu {
namespace {

constexpr int kZoomBoxWidth = 65;
constexpr int kRateBoxWidth = 125;
constexpr int kModeBoxWidth = 175;
constexpr int kRemarkMilliseconds = 15000;
constexpr int kIconSide = 20;
constexpr int kLampSide = 14;

QColor LampColor(CaptureTexts::Lamp lamp, const QPalette& palette) {
    switch (lamp) {
        case CaptureTexts::Lamp::Running:
            return {46, 160, 67};
        case CaptureTexts::Lamp::Paused:
            return {227, 160, 8};
        case CaptureTexts::Lamp::Idle:
            break;
    }
    return palette.color(QPalette::Window);
}

QString LampText(CaptureTexts::Lamp lamp) {
    switch (lamp) {
        case CaptureTexts::Lamp::Running:
            return QStringLiteral("Capturing");
        case CaptureTexts::Lamp::Paused:
            return QStringLiteral("Paused for a change");
        case CaptureTexts::Lamp::Idle:
            break;
    }
    return QStringLiteral("Idle");
}

/// Widens a box that the text does not fit, as with a large font; it never shrinks again, so that the tools
/// beside it stay where they are.
void ShowInBox(QLineEdit& box, const QString& text) {
    constexpr int kMargins = 16;
    box.setText(text);
    box.setCursorPosition(0);
    const int needed = box.fontMetrics().horizontalAdvance(text.trimmed()) + kMargins;
    if (needed > box.width()) box.setFixedWidth(needed);
}

struct ToolRow {
    CommandId Id;
    Drawing Picture;
};

/// The one local file of a drag; empty if it holds anything else.
QString DroppedFile(const QMimeData* data) {
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 && urls.constFirst().isLocalFile() ? urls.constFirst().toLocalFile() : QString();
}

}  // namespace

CMainFrame::CMainFrame()
    : area_(new QMdiArea(this)), toolbar_(new QToolBar(QStringLiteral("Toolbar"), this)) {
    setObjectName(QStringLiteral("CMainFrame"));
    setCentralWidget(area_);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    FollowPalette();
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);

    toolbar_->setObjectName(QStringLiteral("Toolbar"));
    toolbar_->setMovable(false);
    toolbar_->setIconSize({kIconSide, kIconSide});
    addToolBar(toolbar_);
    zoomBox_ = MakeBox(kZoomBoxWidth, QStringLiteral("ZoomBox"));
    rateBox_ = MakeBox(kRateBoxWidth, QStringLiteral("RateBox"));
    modeBox_ = MakeBox(kModeBoxWidth, QStringLiteral("ModeBox"));

    MakeCapturePanes();
    modePane_ = MakePane(QStringLiteral("ModePane"));
    memoryPane_ = MakePane(QStringLiteral("MemoryPane"));
    channelPane_ = MakePane(QStringLiteral("ChannelPane"));
    ratePane_ = MakePane(QStringLiteral("RatePane"));
    zoomPane_ = MakePane(QStringLiteral("ZoomPane"));
}

QLineEdit* CMainFrame::MakeBox(int width, const QString& name) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    box->setReadOnly(true);
    box->setFixedWidth(width);
    box->setFocusPolicy(Qt::NoFocus);
    return box;
}

QLabel* CMainFrame::MakePane(const QString& name) {
    auto* pane = new QLabel(this);
    pane->setObjectName(name);
    pane->setTextFormat(Qt::PlainText);
    pane->setMargin(2);
    pane->setFrameShape(QFrame::NoFrame);
    statusBar()->addPermanentWidget(pane);
    return pane;
}

QLineEdit* CMainFrame::MakeLivePane(const QString& name, const QString& longest) {
    constexpr int kMargins = 10;
    auto* pane = MakeBox(fontMetrics().horizontalAdvance(longest) + kMargins, name);
    pane->setFrame(false);
    pane->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette colors;
    colors.setColor(QPalette::Base, Qt::transparent);
    pane->setPalette(colors);
    statusBar()->addPermanentWidget(pane);
    return pane;
}

void CMainFrame::MakeCapturePanes() {
    lampPane_ = MakePane(QStringLiteral("LampPane"));
    countPane_ = MakeLivePane(QStringLiteral("CountPane"), QStringLiteral("0000000 captures"));
    statusPane_ = MakeLivePane(QStringLiteral("StatusPane"),
                               QStringLiteral("Triggered 000000, Waiting for next trigger"));
    PaintLamp();
}

void CMainFrame::PaintLamp() {
    const double scale = devicePixelRatioF();
    QPixmap lamp(QSize(kLampSide, kLampSide) * scale);
    lamp.setDevicePixelRatio(scale);
    lamp.fill(Qt::transparent);
    QPainter painter(&lamp);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(LampColor(capture_.State, palette()));
    painter.drawEllipse(QRectF(1, 1, kLampSide - 2, kLampSide - 2));
    painter.end();
    lampPane_->setPixmap(lamp);
    lampPane_->setToolTip(LampText(capture_.State));
}

void CMainFrame::SetCapture(const CaptureTexts& texts) {
    if (texts == capture_) return;
    const bool lamp = texts.State != capture_.State;
    capture_ = texts;
    if (lamp) PaintLamp();
    countPane_->setText(texts.Count);
    statusPane_->setText(texts.Status);
    for (QLineEdit* pane : {countPane_, statusPane_}) pane->setCursorPosition(0);
}

void CMainFrame::BuildToolbar(const MainMenu& menu) {
    const auto add = [&](std::initializer_list<ToolRow> rows) {
        for (const ToolRow& row : rows) {
            QAction* action = menu.Action(row.Id);
            action->setIcon(MakeIcon(row.Picture));
            action->setIconVisibleInMenu(false);
            toolbar_->addAction(action);
        }
    };
    add({{CommandId::FileOpen, Drawing::Open}, {CommandId::FileSave, Drawing::Save}});
    toolbar_->addSeparator();
    add({{CommandId::Go, Drawing::Go}, {CommandId::Stop, Drawing::Stop}, {CommandId::End, Drawing::End}});
    toolbar_->addSeparator();
    add({{CommandId::ZoomOut, Drawing::ZoomOut}, {CommandId::ZoomIn, Drawing::ZoomIn}});
    toolbar_->addWidget(zoomBox_);
    toolbar_->addSeparator();
    add({{CommandId::RateDown, Drawing::RateDown}, {CommandId::RateUp, Drawing::RateUp}});
    toolbar_->addWidget(rateBox_);
    toolbar_->addSeparator();
    add({{CommandId::TriggerMode, Drawing::Mode}});
    toolbar_->addWidget(modeBox_);
}

void CMainFrame::SetBars(const BarTexts& texts) {
    ShowInBox(*zoomBox_, texts.Zoom);
    ShowInBox(*rateBox_, texts.Rate);
    ShowInBox(*modeBox_, texts.Mode);
    modePane_->setText(texts.Mode);
    memoryPane_->setText(texts.Memory);
    channelPane_->setText(texts.Channels);
    ratePane_->setText(texts.Rate);
    zoomPane_->setText(texts.Zoom);
}

void CMainFrame::ShowRemark(const QString& text) {
    statusBar()->showMessage(text, kRemarkMilliseconds);
}

void CMainFrame::Restore(const WindowRect& rect) {
    const bool before = std::exchange(presented_, false);
    setGeometry(rect.Left, rect.Top, std::max(100, rect.Right - rect.Left),
                std::max(100, rect.Bottom - rect.Top));
    presented_ = before;
}

void CMainFrame::Present() {
    if (presented_) return;
    show();
    // The window manager's first placing is no move of the user.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50);
    presented_ = true;
}

bool CMainFrame::Reports() const {
    return presented_ && isVisible() && !isMinimized() && !isMaximized() && !isFullScreen();
}

void CMainFrame::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    // Some desktops do not tell a window where it stands.
    const bool told = !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
    if (told && Reports()) emit userMoved(geometry().x(), geometry().y());
}

void CMainFrame::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (Reports()) emit userSized(width(), height());
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    event->accept();
    emit closing();
}

void CMainFrame::FollowPalette() {
    area_->setBackground(palette().brush(QPalette::Dark));
}

void CMainFrame::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    FollowPalette();
    if (lampPane_ != nullptr) PaintLamp();
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFile(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event) {
    const QString path = DroppedFile(event->mimeData());
    if (path.isEmpty()) return;
    event->acceptProposedAction();
    // Boxes may follow; the drag's source need not wait for them.
    QMetaObject::invokeMethod(
        this, [this, path] { emit fileDropped(path); }, Qt::QueuedConnection);
}

}  // namespace zu
