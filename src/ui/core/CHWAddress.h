#pragma once

#include <QDialog>

#include "state/InstrumentState.h"

class QLabel;
class QPushButton;

namespace zu {

/// Where the user finds the instrument or chooses to work without one.
class CHWAddress final : public QDialog {
    Q_OBJECT

  public:
    explicit CHWAddress(InstrumentState& state, QWidget* parent = nullptr);

  private:
    void ChooseDemo();
    InstrumentState& state_;
    QLabel* status_;
    QPushButton* ok_;
};

}  // namespace zu
