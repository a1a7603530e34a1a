#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace zu {

class TimingView;

/// Takes the Timing view to a sample, a time or a cursor.
class CGoToDlg final : public QDialog {
    Q_OBJECT

  public:
    explicit CGoToDlg(TimingView& view, QWidget* parent = nullptr);
    void accept() override;

  private:
    TimingView& view_;
    QLineEdit* place_;
    QLabel* hint_;
};

}  // namespace zu
