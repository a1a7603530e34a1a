#pragma once

#include <array>

#include "display/ChannelEdits.h"
#include "ui/display/CEditDialog.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;

namespace zu {

class CColorButton;
class CTraceExample;

/// Names, inversion and colours of the channels, eight a page.
class CChannelDlg final : public CEditDialog {
    Q_OBJECT

  public:
    CChannelDlg(App& app, ColorChooser& colors, int channel, QWidget* parent = nullptr);
    [[nodiscard]] int Page() const { return page_; }
    void accept() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Row {
        QLabel* Number = nullptr;
        QLineEdit* Name = nullptr;
        QCheckBox* Invert = nullptr;
        CColorButton* Color = nullptr;
        CTraceExample* Trace = nullptr;
    };
    QLayout* MakePager();
    QLayout* MakeRows();
    void MakeRow(QGridLayout& grid, int row);
    void ShowPage(int page);
    void ShowRow(int row);
    /// Moves the focus between the names; beyond the last or first one the page turns.
    void StepName(int row, int step);
    [[nodiscard]] int ChannelOf(int row) const { return page_ * kChannelsPerPage + row; }
    [[nodiscard]] Row& At(int row) { return rows_[static_cast<std::size_t>(row)]; }
    void Reset();
    void Invert(int channel);
    void Reload() override;

    ChannelNameEdit edit_;
    int page_ = 0;
    QComboBox* pod_;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    std::array<Row, kChannelsPerPage> rows_;
};

}  // namespace zu
