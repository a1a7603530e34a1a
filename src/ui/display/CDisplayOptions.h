#pragma once

#include <functional>

#include <QDialog>

#include "state/InstrumentState.h"

class QButtonGroup;
class QLayout;

namespace zu {

/// What can be done at a point of the Timing view: zooming from a place, bringing cursors there or into the
/// window.
class CDisplayOptions final : public QDialog {
    Q_OBJECT

  public:
    /// What the dialog asks of the view that it belongs to.
    struct View {
        std::function<void(int origin, bool in)> Zoom;
        std::function<void(int cursor)> ToWindow;
        std::function<void(int cursor)> ToPoint;
    };
    CDisplayOptions(InstrumentState& state, View view, QWidget* parent = nullptr);
    void accept() override;

  private:
    QWidget* MakeOrigins();
    QWidget* MakeCursors(const char* title, const char* name, const std::function<void(int)>& move);
    QLayout* MakeZoom();

    InstrumentState& state_;
    View view_;
    QButtonGroup* origins_;
};

}  // namespace zu
