#pragma once

#include "ui/display/CEditDialog.h"

class QComboBox;

namespace zu {

class CChoiceBox;

/// Statelist setup: group and format of each column. Changes take effect at once.
class CStateListSetup final : public CEditDialog {
    Q_OBJECT

  public:
    /// Opens on the column that the state names.
    CStateListSetup(App& app, ColorChooser& colors, QWidget* parent = nullptr);

  private:
    [[nodiscard]] std::size_t Column() const;
    void SelectColumn(int column);
    void SelectGroup(int group);
    void SelectFormat(int format);
    void EditGroups();
    void Changed();
    void Reload() override;

    QComboBox* column_;
    CChoiceBox* group_;
    CChoiceBox* format_;
};

}  // namespace zu
