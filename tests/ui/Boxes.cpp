#include "ui/Boxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace zu::test {
namespace {

void Press(QMessageBox& box, bool good) {
    const QList<QMessageBox::StandardButton> wanted =
        good ? QList{QMessageBox::Ok, QMessageBox::Yes} : QList{QMessageBox::No, QMessageBox::Cancel};
    for (const QMessageBox::StandardButton each : wanted) {
        if (QAbstractButton* button = box.button(each)) return button->click();
    }
    box.reject();
}

}  // namespace

Boxes::Boxes() {
    connect(&timer_, &QTimer::timeout, this, &Boxes::Look);
    timer_.start(1);
}

void Boxes::Look() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || dialog == last_) return;
    last_ = dialog;
    connect(dialog, &QObject::destroyed, this, [this, dialog] {
        if (last_ == dialog) last_ = nullptr;
    });
    connect(dialog, &QDialog::finished, this, [this] { last_ = nullptr; });
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        Seen.append({box->text(), box->windowTitle()});
        bool good = box->button(QMessageBox::Ok) != nullptr && box->button(QMessageBox::Cancel) == nullptr;
        if (!good && !Answers.empty()) {
            good = Answers.front();
            Answers.pop_front();
        }
        return Press(*box, good);
    }
    Work(*dialog);
}

void Boxes::Work(QDialog& dialog) {
    Titles.append(dialog.windowTitle());
    if (Dialogs.empty()) return dialog.reject();
    const auto work = Dialogs.front();
    Dialogs.pop_front();
    work(dialog);
}

}  // namespace zu::test
