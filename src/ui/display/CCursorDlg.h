#pragma once

#include <array>

#include <QWidget>

#include "state/InstrumentState.h"

class QLabel;

namespace zu {

/// The cursor window: what the capture is doing, and where the five cursors stand.
class CCursorDlg final : public QWidget {
    Q_OBJECT

  public:
    explicit CCursorDlg(const InstrumentState& state);
    /// Shows status text and positions anew.
    void Redraw();

  private:
    void Color(int cursor);

    const InstrumentState& state_;
    QLabel* status_;
    std::array<QLabel*, kCursorSlots - 1> letters_{};
    std::array<QLabel*, kCursorSlots - 1> places_{};
};

}  // namespace zu
