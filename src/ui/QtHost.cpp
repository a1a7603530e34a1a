#include "ui/QtHost.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QThread>
#include <QTimer>

#include "ui/CaptionRoom.h"
#include "ui/FileFilter.h"
#include "ui/QtText.h"

namespace zu {
namespace {

/// Shorter periods count as this, so that a tick that asks for the next at once leaves room for the rest.
constexpr int kShortestPeriod = 10;
/// Between two calls of LoopTurn, so that a tight loop spends its time on captures.
constexpr qint64 kLoopTurnMilliseconds = 50;

/// Below this a wait spins, as the scheduler would oversleep.
constexpr double kSpinNanoseconds = 2e6;

void PrintBox(std::string_view text, std::string_view caption) {
    std::fprintf(stderr, "%.*s %.*s\n", static_cast<int>(caption.size()), caption.data(),
                 static_cast<int>(text.size()), text.data());
}

/// A box is made for its text; a short one, or none at all, would cut off the caption.
void MakeRoomForCaption(QMessageBox& box) {
    auto* rows = qobject_cast<QGridLayout*>(box.layout());
    if (rows == nullptr) return;
    auto* room = new QSpacerItem(CaptionRoom(box.windowTitle()), 0);
    rows->addItem(room, rows->rowCount(), 0, 1, rows->columnCount());
}

QMessageBox::StandardButton ShowBox(QWidget* owner, std::string_view text, std::string_view caption,
                                    QMessageBox::Icon icon, QMessageBox::StandardButtons buttons) {
    QMessageBox box(icon, FromMessage(caption), FromMessage(text), buttons, owner);
    box.setTextFormat(Qt::PlainText);
    MakeRoomForCaption(box);
    box.exec();
    return box.standardButton(box.clickedButton());
}

/// A name without an extension gets that of the filter in force.
void OfferSuffix(QFileDialog& dialog, const FileFilters& filters, const QString& fallback) {
    dialog.setDefaultSuffix(filters.Suffixes.isEmpty() ? fallback : filters.Suffixes.constFirst());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&dialog, filters](const QString& filter) {
                         const qsizetype at = filters.Names.indexOf(filter);
                         if (at >= 0) dialog.setDefaultSuffix(filters.Suffixes.at(at));
                     });
}

}  // namespace

QtHost::QtHost(QObject* parent) : QObject(parent) {
    clock_.start();
}

QWidget* QtHost::Owner() const {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr) return modal;
    return window_ != nullptr && window_->isVisible() ? window_.data() : nullptr;
}

void QtHost::Message(std::string_view text, std::string_view caption) {
    if (unattended_ || quitting_) return PrintBox(text, caption);
    ShowBox(Owner(), text, caption, QMessageBox::Information, QMessageBox::Ok);
}

bool QtHost::Ask(std::string_view text, std::string_view caption) {
    return AnswerOf(text, caption, QMessageBox::Yes, QMessageBox::No);
}

bool QtHost::Confirm(std::string_view text, std::string_view caption) {
    return AnswerOf(text, caption, QMessageBox::Ok, QMessageBox::Cancel);
}

bool QtHost::AnswerOf(std::string_view text, std::string_view caption, int good, int bad) {
    if (unattended_ || quitting_) {
        PrintBox(text, caption);
        return false;
    }
    const auto yes = static_cast<QMessageBox::StandardButton>(good);
    const auto no = static_cast<QMessageBox::StandardButton>(bad);
    return ShowBox(Owner(), text, caption, QMessageBox::Question, yes | no) == yes;
}

void QtHost::Remark(std::string_view text) {
    if (ShowRemark) ShowRemark(FromMessage(text));
}

void QtHost::Beep() {
    QApplication::beep();
}

void QtHost::StartTimer(int id, int milliseconds) {
    QTimer*& timer = timers_[id];
    if (timer == nullptr) {
        timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [this, id] {
            if (Tick) Tick(id);
        });
    }
    timer->start(std::max(kShortestPeriod, milliseconds));
}

void QtHost::KillTimer(int id) {
    const auto found = timers_.find(id);
    if (found != timers_.end()) found->second->stop();
}

Host::Turn QtHost::RunWaitingMessage() {
    if (quitting_) return Turn::Quit;
    // The toolkit does not tell whether a message waits: what waits is run, and then it is the caller's turn.
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    if (quitting_) return Turn::Quit;
    if (LoopTurn && clock_.elapsed() - lastTurn_ >= kLoopTurnMilliseconds) {
        lastTurn_ = clock_.elapsed();
        LoopTurn();
    }
    return Turn::Idle;
}

std::uint32_t QtHost::TickCount() {
    return static_cast<std::uint32_t>(clock_.elapsed());
}

void QtHost::WaitNanoseconds(double ns) {
    QElapsedTimer since;
    since.start();
    if (!(ns > 0)) return;
    if (ns > kSpinNanoseconds) QThread::usleep(static_cast<unsigned long>((ns - kSpinNanoseconds) / 1000));
    while (static_cast<double>(since.nsecsElapsed()) < ns) {
    }
}

LocalTime QtHost::Now() {
    const QDateTime now = QDateTime::currentDateTime();
    return {now.date().year(), now.date().month(),  now.date().day(),
            now.time().hour(), now.time().minute(), now.time().second()};
}

std::optional<std::string> QtHost::ChooseFile(const FileRequest& request) {
    if (unattended_ || quitting_) return std::nullopt;
    const FileFilters filters = ParseFilters(request.Filters);
    QFileDialog dialog(Owner(), request.Save ? QStringLiteral("Save as") : QStringLiteral("Open"));
    dialog.setAcceptMode(request.Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(filters.Names);
    if (request.Save) OfferSuffix(dialog, filters, FromState(request.DefaultExtension));
    const QFileInfo start(FromPath(request.InitialName));
    dialog.setDirectory(start.isDir() ? start.filePath() : start.path());
    // A name such as "*.CSV" chooses a filter and is no name yet.
    if (!start.isDir() && !start.fileName().contains(u'*')) dialog.selectFile(start.fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return ToPath(dialog.selectedFiles().constFirst());
}

void QtHost::SetWindowTitle(std::string_view title) {
    if (window_ != nullptr) window_->setWindowTitle(FromMessage(title));
}

void QtHost::PrintLine(std::string_view text) {
    std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
    std::fflush(stdout);
}

void QtHost::CloseMainWindow() {
    quitting_ = true;
    if (window_ != nullptr) window_->close();
}

void QtHost::EndProcess(int code) {
    std::fflush(stdout);
    std::exit(code);
}

}  // namespace zu
