#pragma once

#include <QObject>

class QSocketNotifier;

namespace zu {

/// Turns the signals that ask a program to end into a message, so that it ends by its ordinary exit path.
class SignalWatch final : public QObject {
    Q_OBJECT

  public:
    explicit SignalWatch(QObject* parent = nullptr);
    ~SignalWatch() override;

  signals:
    void endWanted();

  private:
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace zu
