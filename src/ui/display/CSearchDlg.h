#pragma once

#include <functional>

#include "core/App.h"
#include "display/SearchEdits.h"
#include "ui/display/CSizedDialog.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace zu {

class CChoiceBox;

/// The search dialog: a bit pattern along one channel, or a word across all of them. What is typed is stored
/// at once; the dialog stays open while it searches.
class CSearchDlg final : public CSizedDialog {
    Q_OBJECT

  public:
    using Search = std::function<void(bool forward)>;
    CSearchDlg(App& app, Search search, QWidget* parent = nullptr);

  private:
    QLayout* MakeModes();
    QWidget* MakeSerial();
    QWidget* MakeParallel();
    QLayout* MakeButtons();
    void ShowMode();
    void ShowRow(int row);
    void ShowFields();
    void ShowPlace();
    void StartTyping();
    void SelectBase(int row);
    void Fill(int entry);
    void Tell(std::string_view message);

    App& app_;
    Search search_;
    SearchWordEdit edit_;
    QRadioButton* parallelMode_ = nullptr;
    QRadioButton* serialMode_ = nullptr;
    QLabel* place_;
    QLineEdit* pattern_ = nullptr;
    QWidget* parallel_ = nullptr;
    QWidget* serial_ = nullptr;
    QComboBox* rows_ = nullptr;
    CChoiceBox* base_ = nullptr;
    CChoiceBox* fills_ = nullptr;
    QHBoxLayout* cells_ = nullptr;
};

}  // namespace zu
