#pragma once

#include <QDialog>

#include "state/InstrumentState.h"

namespace zu {

/// Lets the user pick the model that is emulated. A choice is stored in HardwareType at once.
class CInitSettings final : public QDialog {
    Q_OBJECT

  public:
    explicit CInitSettings(InstrumentState& state, QWidget* parent = nullptr);

  private:
    QWidget* MakeChoice(int row, bool offered);
    InstrumentState& state_;
};

/// Name of a row in the dialog.
QString EmulatedModelName(int row);

}  // namespace zu
