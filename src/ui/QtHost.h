#pragma once

#include <functional>
#include <map>
#include <string>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "state/Host.h"

class QTimer;
class QWidget;

namespace zu {

/// What the logic asks of its surroundings, answered by the desktop.
class QtHost final : public QObject, public Host {
    Q_OBJECT

  public:
    explicit QtHost(QObject* parent = nullptr);

    /// The main window: owner of the boxes, bearer of the title.
    void SetWindow(QWidget* window) { window_ = window; }
    /// Nobody sits at the screen: boxes go to standard error, questions are answered No or Cancel, no file is
    /// chosen.
    void SetUnattended(bool unattended) { unattended_ = unattended; }
    [[nodiscard]] bool Unattended() const { return unattended_; }
    /// The main window was closed: a waiting loop is told to quit.
    void SetQuitting() { quitting_ = true; }
    [[nodiscard]] bool Quitting() const { return quitting_; }

    /// Called with the timer's id at each tick.
    std::function<void(int)> Tick;
    /// Called now and then while a tight loop runs, which leaves no other chance to show what it does.
    std::function<void()> LoopTurn;
    /// Shows a remark in the status bar.
    std::function<void(const QString&)> ShowRemark;

    void Message(std::string_view text, std::string_view caption) override;
    bool Ask(std::string_view text, std::string_view caption) override;
    bool Confirm(std::string_view text, std::string_view caption) override;
    void Remark(std::string_view text) override;
    void Beep() override;
    void StartTimer(int id, int milliseconds) override;
    void KillTimer(int id) override;
    Turn RunWaitingMessage() override;
    std::uint32_t TickCount() override;
    void WaitNanoseconds(double ns) override;
    LocalTime Now() override;
    std::optional<std::string> ChooseFile(const FileRequest& request) override;
    void SetWindowTitle(std::string_view title) override;
    void PrintLine(std::string_view text) override;
    void CloseMainWindow() override;
    [[noreturn]] void EndProcess(int code) override;

  private:
    [[nodiscard]] QWidget* Owner() const;
    /// A question of two standard buttons; true for the first.
    bool AnswerOf(std::string_view text, std::string_view caption, int good, int bad);

    QPointer<QWidget> window_;
    std::map<int, QTimer*> timers_;
    QElapsedTimer clock_;
    qint64 lastTurn_ = 0;  ///< of the clock, at the last LoopTurn
    bool unattended_ = false;
    bool quitting_ = false;
};

}  // namespace zu
