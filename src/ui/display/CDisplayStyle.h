#pragma once

#include "core/App.h"
#include "display/Lines.h"
#include "ui/display/CSizedDialog.h"

class QListWidget;

namespace zu {

/// How one line of the Timing view is drawn.
class CDisplayStyle final : public CSizedDialog {
    Q_OBJECT

  public:
    CDisplayStyle(App& app, std::int32_t line, QWidget* parent = nullptr);
    void accept() override;

  private:
    QListWidget* MakeList(const char* name);
    void FillStyles(const DisplayLine& line);
    void FillExtras(const DisplayLine& line);
    /// Texts of a group carry no extra rendering.
    void EnableExtras();

    App& app_;
    std::int32_t line_;
    QListWidget* styles_;
    QListWidget* extras_;
};

}  // namespace zu
