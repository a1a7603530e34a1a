#include "ui/Desk.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "core/CommandLine.h"

namespace zu::test {
namespace {

QAction* FindIn(const QMenu& menu, const QString& text) {
    for (QAction* action : menu.actions()) {
        if (!action->isVisible()) continue;
        if (action->text() == text) return action;
        if (action->menu() == nullptr) continue;
        if (QAction* inner = FindIn(*action->menu(), text)) return inner;
    }
    return nullptr;
}

}  // namespace

Desk::Desk(std::vector<std::string> arguments, std::shared_ptr<TempFolder> home)
    : home_(std::move(home)),
      state_(std::make_unique<InstrumentState>()),
      host_(std::make_unique<QtHost>()),
      hardware_(std::make_unique<HardwareSession>(*host_)),
      keys_(std::make_unique<HeldKeyFilter>()),
      frame_(std::make_unique<CMainFrame>()) {
    arguments.insert(arguments.begin(), "zu");
    state_->Files.AppDir = home_->Path().string();
    const auto end = ParseCommandLine(arguments, state_->Files.AppDir, state_->Command);
    EXPECT_FALSE(end.has_value()) << end->Text;
    if (!state_->Command.Simulate.empty()) {
        attachment_ = std::make_unique<Attachment>(state_->Command.Simulate);
        attachment_->AttachTo(*hardware_);
    }
    view_ = std::make_unique<CZuView>(*state_, *host_, *hardware_, *keys_, *frame_);
    if (attachment_ != nullptr) view_->TheApp().Simulated = attachment_->Simulated();
}

Desk::~Desk() {
    // The next test begins without boxes that this one left to come.
    End();
}

void Desk::Start() {
    view_->Start();
    Settle();
}

void Desk::End() {
    if (std::exchange(ended_, true)) return;
    frame_->close();
    view_->CloseDown();
}

void Desk::Settle() {
    // Paints and repaints take a few turns of the message loop.
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

QMenu* Desk::OpenMenu(const QString& title) {
    for (QAction* action : frame_->menuBar()->actions()) {
        if (action->text().remove(u'&') != title) continue;
        emit action->menu()->aboutToShow();
        return action->menu();
    }
    return nullptr;
}

QStringList Desk::EntriesOf(const QString& menu) {
    QStringList texts;
    const QMenu* opened = OpenMenu(menu);
    if (opened == nullptr) return texts;
    for (const QAction* action : opened->actions()) {
        if (action->isVisible() && !action->isSeparator()) texts.append(action->text());
    }
    return texts;
}

QAction* Desk::Entry(const QString& menu, const QString& text) {
    QMenu* opened = OpenMenu(menu);
    return opened == nullptr ? nullptr : FindIn(*opened, text);
}

QString Desk::Shown(const QString& name) {
    if (const auto* box = frame_->findChild<QLineEdit*>(name)) return box->text();
    if (const auto* pane = frame_->findChild<QLabel*>(name)) return pane->text();
    return QStringLiteral("no such field");
}

DarkDesktop::DarkDesktop() : before_(QApplication::palette()) {
    QPalette dark(QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    QApplication::setPalette(dark);
}

DarkDesktop::~DarkDesktop() {
    QApplication::setPalette(before_);
}

void SaveShot(QWidget& window, const QString& name) {
    const QString folder = qEnvironmentVariable("ZU_SHOTS");
    if (!folder.isEmpty()) window.grab().save(folder + u'/' + name + QStringLiteral(".png"));
}

}  // namespace zu::test
