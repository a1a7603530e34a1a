#include "ui/display/CInsertGroup.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "display/GroupEdits.h"
#include "display/LineEdits.h"
#include "ui/QtText.h"
#include "ui/display/CDisplayStyle.h"
#include "ui/display/CEditDialog.h"
#include "ui/display/RowDelegate.h"

namespace zu {

CInsertGroup::CInsertGroup(InstrumentState& state, QWidget* parent)
    : CSizedDialog(state.Windows, "InsertGroup", parent), groups_(new QListWidget(this)) {
    setWindowTitle(QStringLiteral("Insert group"));
    groups_->setObjectName(QStringLiteral("Groups"));
    groups_->setUniformItemSizes(true);
    groups_->setItemDelegate(new RowDelegate(groups_));
    for (int group = 0; group < kGroupCount; ++group) groups_->addItem(FromState(GroupRowText(state, group)));
    groups_->setCurrentRow(0);
    auto* label = new QLabel(QStringLiteral("&Group to show:"), this);
    label->setBuddy(groups_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(groups_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(groups_, 1);
    layout->addWidget(buttons);
    groups_->setFocus();
}

int CInsertGroup::Group() const {
    return groups_->currentRow();
}

void RunInsertGroup(App& app, std::int32_t line, QWidget* parent) {
    CInsertGroup choice(app.State, parent);
    if (choice.exec() != QDialog::Accepted) return;
    const EditResult result = InsertGroupAt(app.State, line, choice.Group());
    if (!result.Changed) return app.Host.Remark("No room for another line in the Timing view");
    FinishEdit(app, result);
    CDisplayStyle(app, line, parent).exec();
}

void RunInsertSpacer(App& app, std::int32_t line) {
    const EditResult result = InsertSpacerAt(app.State, line);
    if (!result.Changed && !result.HasMessage())
        app.Host.Remark("No room for another line in the Timing view");
    FinishEdit(app, result);
}

}  // namespace zu
