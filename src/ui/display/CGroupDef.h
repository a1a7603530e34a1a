#pragma once

#include "display/GroupEdits.h"
#include "ui/display/CEditDialog.h"

class QCheckBox;
class QComboBox;
class QLayout;
class QLineEdit;

namespace zu {

class CChoiceBox;
class CColorButton;
class CRowList;

/// Group setup: which channels a group has, its name, kind, flags and colour.
class CGroupDef final : public CEditDialog {
    Q_OBJECT

  public:
    CGroupDef(App& app, ColorChooser& colors, int group, QWidget* parent = nullptr);
    [[nodiscard]] int Group() const { return group_; }
    void done(int result) override;

  private:
    using Edit = EditResult (*)(InstrumentState&, int, GroupSelection&);
    using SetFlag = EditResult (*)(InstrumentState&, int, bool);

    QLayout* MakeHead();
    QLayout* MakeFlags();
    QLayout* MakeLists();
    QLayout* MakeButtons();
    void BindKeys();
    QCheckBox* MakeFlag(const char* text, const char* name, SetFlag set);
    void SelectGroup(int group);
    void Run(Edit edit);
    void ChooseMode(int mode);
    [[nodiscard]] GroupSelection Selected() const;
    void Reload() override;
    void Reload(const GroupSelection& selection);
    void ReloadNames();
    void ReloadFields();

    int group_;
    QComboBox* number_;
    QLineEdit* name_;
    CChoiceBox* mode_;
    QLineEdit* size_;
    CColorButton* color_;
    QCheckBox* twos_ = nullptr;
    QCheckBox* csHigh_ = nullptr;
    QCheckBox* bitOrder_ = nullptr;
    CRowList* channels_;
    CRowList* positions_;
};

}  // namespace zu
