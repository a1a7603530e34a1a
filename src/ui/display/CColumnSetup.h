#pragma once

#include <array>
#include <functional>

#include <QWidget>

#include "state/InstrumentState.h"

class QComboBox;

namespace zu {

/// What the eight information columns of the Timing view show.
class CColumnSetup final : public QWidget {
    Q_OBJECT

  public:
    CColumnSetup(InstrumentState& state, QWidget* parent);
    void Reload();

  signals:
    /// A column was set up anew.
    void changed();

  private:
    struct Row {
        QComboBox* Type = nullptr;
        QComboBox* Range = nullptr;
        QComboBox* Word = nullptr;
    };
    QComboBox* MakeBox(const char* name, int column);
    void Store(int column);
    void ReloadRow(int column);

    InstrumentState& state_;
    std::array<Row, kTimingColumns> rows_;
};

}  // namespace zu
