#pragma once

#include <functional>

#include "display/LineEdits.h"
#include "ui/display/CEditDialog.h"

class QLayout;

namespace zu {

class CColumnSetup;
class CRowList;
class CStyleList;

/// Timing setup: the lines of the Timing view and its information columns.
class CTimingSetup final : public CEditDialog {
    Q_OBJECT

  public:
    CTimingSetup(App& app, ColorChooser& colors, QWidget* parent = nullptr);

  private:
    using Edit = EditResult (*)(InstrumentState&, LineSelection&);

    QWidget* MakeLinesPage();
    QLayout* MakeButtons();
    void MakeEditButtons(QLayout& column);
    void BindKeys();
    void Run(Edit edit);
    void SetStyle();
    void EditGroup();
    void EditChannel();
    void MarkStyles();
    [[nodiscard]] LineSelection Selected() const;
    void Reload() override;
    void Reload(const LineSelection& selection);

    CRowList* lines_;
    CRowList* sources_;
    CRowList* groups_;
    CStyleList* styles_;
    CColumnSetup* columns_;
};

}  // namespace zu
