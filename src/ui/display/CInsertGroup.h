#pragma once

#include "core/App.h"
#include "ui/display/CSizedDialog.h"

class QListWidget;

namespace zu {

/// The choice of a group to put into the Timing view.
class CInsertGroup final : public CSizedDialog {
    Q_OBJECT

  public:
    explicit CInsertGroup(InstrumentState& state, QWidget* parent = nullptr);
    /// Group chosen, 0..29.
    [[nodiscard]] int Group() const;

  private:
    QListWidget* groups_;
};

/// The Timing view's own Insert group: asks for a group, puts it in front of the line and asks for its style.
/// In a list without room the status bar says so.
void RunInsertGroup(App& app, std::int32_t line, QWidget* parent);
/// The Timing view's own Insert spacer.
void RunInsertSpacer(App& app, std::int32_t line);

}  // namespace zu
