#pragma once

#include <deque>
#include <functional>

#include <QDialog>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

namespace zu::test {

/// Sits at the screen in a test's place: reads the boxes that open, answers them, works the dialogs.
class Boxes final : public QObject {
    Q_OBJECT

  public:
    struct Box {
        QString Text;
        QString Caption;
        friend bool operator==(const Box&, const Box&) = default;
    };

    Boxes();

    /// Message boxes and questions in the order in which they came.
    QList<Box> Seen;
    /// Answers to the questions to come; without one the answer is No or Cancel.
    std::deque<bool> Answers;
    /// What to do with each other dialog to come; without one it is closed.
    std::deque<std::function<void(QDialog&)>> Dialogs;
    /// Titles of those dialogs.
    QStringList Titles;

  private:
    void Look();
    void Work(QDialog& dialog);
    QTimer timer_;
    QDialog* last_ = nullptr;
};

}  // namespace zu::test
