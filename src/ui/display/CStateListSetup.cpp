#include "ui/display/CStateListSetup.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>

#include "core/Capture.h"
#include "display/GroupEdits.h"
#include "display/StateListCells.h"
#include "state/Model.h"
#include "ui/QtText.h"
#include "ui/display/CChoiceBox.h"
#include "ui/display/CGroupDef.h"

namespace zu {
namespace {

constexpr int kGroupRowLength = 20;  // characters: a number and the longest name

}  // namespace

CStateListSetup::CStateListSetup(App& app, ColorChooser& colors, QWidget* parent)
    : CEditDialog(app, colors, "StateListSetup", parent),
      column_(new QComboBox(this)),
      group_(new CChoiceBox(this)),
      format_(new CChoiceBox(this)) {
    setWindowTitle(QStringLiteral("Statelist setup"));
    column_->setObjectName(QStringLiteral("Column"));
    group_->setObjectName(QStringLiteral("Group"));
    format_->setObjectName(QStringLiteral("Format"));
    group_->setMinimumContentsLength(kGroupRowLength);
    for (int column = 0; column < kGroupCount; ++column) column_->addItem(QString::number(column));
    for (const std::string_view format : kStateFormats) format_->addItem(FromState(format));
    connect(column_, &QComboBox::currentIndexChanged, this, &CStateListSetup::SelectColumn);
    connect(group_, &QComboBox::activated, this, &CStateListSetup::SelectGroup);
    connect(format_, &QComboBox::activated, this, &CStateListSetup::SelectFormat);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("C&olumn:"), column_);
    form->addRow(QStringLiteral("&Group:"), group_);
    form->addRow(QStringLiteral("&Format:"), format_);
    auto* edit = MakeButton("Group &setup...", "GroupSetup", "Channels, name and kind of the group",
                            [this] { EditGroups(); });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(edit);
    layout->addStretch();
    layout->addWidget(buttons);
    Reload();
}

std::size_t CStateListSetup::Column() const {
    return static_cast<std::size_t>(std::clamp<int>(app_.State.StateList.StateDisp, 0, kGroupCount - 1));
}

void CStateListSetup::SelectColumn(int column) {
    app_.State.StateList.StateDisp = static_cast<std::int8_t>(column);
    Reload();
}

void CStateListSetup::SelectGroup(int group) {
    app_.State.StateList.ScreenL[Column()] = static_cast<std::int8_t>(group);
    Changed();
}

void CStateListSetup::SelectFormat(int format) {
    app_.State.StateList.ScreenF[Column()] = static_cast<std::int8_t>(format);
    Changed();
}

void CStateListSetup::EditGroups() {
    CGroupDef(app_, colors_, GroupToEdit(app_.State.StateList.ScreenL[Column()]), this).exec();
    Changed();
    Reload();
}

void CStateListSetup::Changed() {
    ComputeGroupWidths(app_.State);
    RefreshAll(app_);
}

void CStateListSetup::Reload() {
    const StateListRecord& list = app_.State.StateList;
    const QSignalBlocker quiet(column_);
    column_->setCurrentIndex(static_cast<int>(Column()));
    group_->clear();
    for (int group = 0; group < kGroupCount; ++group) {
        group_->addItem(FromState(GroupRowText(app_.State, group)));
    }
    // What no list holds shows as nothing chosen.
    group_->setCurrentIndex(list.ScreenL[Column()] < kGroupCount ? std::max<int>(list.ScreenL[Column()], -1)
                                                                 : -1);
    format_->setCurrentIndex(
        list.ScreenF[Column()] < format_->count() ? std::max<int>(list.ScreenF[Column()], -1) : -1);
}

}  // namespace zu
