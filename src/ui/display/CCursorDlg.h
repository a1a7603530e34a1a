#pragma once

#include <array>
#include <functional>

#include <QWidget>

#include "display/CursorWindow.h"
#include "state/InstrumentState.h"

class QBoxLayout;
class QButtonGroup;
class QComboBox;
class QLabel;

namespace zu {

/// The cursor window: what the capture is doing, where the cursors stand and how far apart, and steps that
/// move a cursor or a view.
class CCursorDlg final : public QWidget {
    Q_OBJECT

  public:
    /// `changed` is called after a step or a change of the unit: every view is to be redrawn.
    CCursorDlg(InstrumentState& state, std::function<void()> changed);
    /// Shows status, positions and differences anew.
    void Redraw();

  private:
    void AddItems(QBoxLayout& layout);
    void AddSteps(QBoxLayout& layout);
    QWidget* MakeStep(const CursorStep& step, std::size_t index);
    void AddUnits(QBoxLayout& layout);
    void AddDifferences(QBoxLayout& layout);
    void Step(const CursorStep& step, bool up);
    void ColorLetters();
    void ShowDifferences();

    InstrumentState& state_;
    std::function<void()> changed_;
    CursorListState lists_;
    QLabel* status_;
    QButtonGroup* items_;
    QButtonGroup* units_;
    std::array<QLabel*, kCursorT + 1> letters_{};
    std::array<QLabel*, kCursorItems> places_{};
    std::array<QLabel*, kCursorSteps.size()> stepTexts_{};
    std::array<QComboBox*, 5> differences_{};
};

}  // namespace zu
