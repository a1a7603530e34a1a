#pragma once

#include <QDialog>

#include "state/InstrumentState.h"

namespace zu {

/// Version text of the series, version and purpose of the program.
class CAboutDlg final : public QDialog {
    Q_OBJECT

  public:
    explicit CAboutDlg(const InstrumentState& state, QWidget* parent = nullptr);
};

}  // namespace zu
