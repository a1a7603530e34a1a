#include "ui/display/CGroupDef.h"

#include <algorithm>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include "display/Lines.h"
#include "ui/QtText.h"
#include "ui/display/CChoiceBox.h"
#include "ui/display/CColorButton.h"
#include "ui/display/CRowList.h"

namespace zu {
namespace {

struct EditRow {
    const char* Text;
    const char* Name;
    const char* Hint;
    EditResult (*Edit)(InstrumentState&, int, GroupSelection&);
    bool GapBelow = false;
};
constexpr std::array kEdits{
    EditRow{"&Insert in group", "Insert",
            "Put the selected channels in at the selected lines of the group (Ins)", InsertInGroup},
    EditRow{"&Append to group", "Append", "Put the selected channels behind the group's last one",
            AppendToGroup},
    EditRow{"Append to group and select ne&xt ch.", "AppendNext",
            "Append, then select the channel that follows (Enter in the channel list)",
            AppendToGroupAndSelectNext, true},
    EditRow{"&Delete ch. from group", "Delete", "Take the selected lines out of the group (Del)",
            DeleteFromGroup},
    EditRow{"&Reverse order", "Reverse", "Turn the selected lines round, or the whole group", ReverseGroup,
            true},
    EditRow{"Move &up", "MoveUp", "Towards bit 0 (Ctrl+Up)", MoveGroupUp},
    EditRow{"Move do&wn", "MoveDown", "Away from bit 0 (Ctrl+Down)", MoveGroupDown},
};

/// What the channels of a serial group are for, lowest bit first.
constexpr std::array<std::array<std::string_view, 4>, 3> kRoles{{
    {"clk", "data"},
    {"clk", "DI", "DO", "CS"},
    {"clk", "SI", "SO", "CS"},
}};
constexpr int kRoleCharacters = 4;

/// Bit number of a row of the group list, or the role that a serial mode gives it.
QString RowRole(int mode, int row) {
    if (mode >= 1 && mode < static_cast<int>(kGroupModes.size()) && row < kRoleCharacters) {
        const auto& roles = kRoles[static_cast<std::size_t>(std::min(mode, 3) - 1)];
        const std::string_view role = roles[static_cast<std::size_t>(row)];
        if (!role.empty()) return FromState(role);
    }
    return QString::number(row);
}

QLabel* MakeLabel(const char* text, QWidget* buddy) {
    auto* label = new QLabel(QString::fromLatin1(text), buddy->parentWidget());
    label->setBuddy(buddy);
    return label;
}

}  // namespace

CGroupDef::CGroupDef(App& app, ColorChooser& colors, int group, QWidget* parent)
    : CEditDialog(app, colors, "GroupSetup", parent),
      group_(GroupToEdit(group)),
      number_(new QComboBox(this)),
      name_(new QLineEdit(this)),
      mode_(new CChoiceBox(this)),
      size_(new QLineEdit(this)),
      color_(new CColorButton(colors, QStringLiteral("C&olor..."), this)),
      channels_(new CRowList("Channels", this)),
      positions_(new CRowList("Positions", this)) {
    setWindowTitle(QStringLiteral("Group setup"));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(MakeHead());
    layout->addLayout(MakeFlags());
    layout->addLayout(MakeLists(), 1);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    close->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(close);
    ChainTabs({number_, name_, mode_, twos_, csHigh_, bitOrder_, color_, channels_});
    setTabOrder(findChild<QPushButton*>(QString::fromLatin1(kEdits.back().Name)), positions_);
    ChainTabs({positions_, close->button(QDialogButtonBox::Close)});
    BindKeys();
    Reload({});
    channels_->setFocus();
}

QLayout* CGroupDef::MakeHead() {
    number_->setObjectName(QStringLiteral("Number"));
    for (int group = 0; group < kGroupCount; ++group) number_->addItem(QString());
    number_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    number_->setMinimumContentsLength(kGroupNameTyped + 6);
    name_->setObjectName(QStringLiteral("Name"));
    name_->setMaxLength(kGroupNameTyped);
    mode_->setObjectName(QStringLiteral("Mode"));
    for (const std::string_view text : kGroupModes) mode_->addItem(FromState(text));
    size_->setObjectName(QStringLiteral("Size"));
    size_->setReadOnly(true);
    size_->setFocusPolicy(Qt::ClickFocus);
    size_->setMaximumWidth(6 * size_->fontMetrics().horizontalAdvance(u'0'));
    connect(number_, &QComboBox::activated, this, &CGroupDef::SelectGroup);
    connect(name_, &QLineEdit::textEdited, this,
            [this](const QString& text) { Finish(RenameGroup(app_.State, group_, ToState(text))); });
    connect(mode_, &QComboBox::activated, this, &CGroupDef::ChooseMode);

    auto* grid = new QGridLayout;
    grid->addWidget(MakeLabel("Group &number:", number_), 0, 0);
    grid->addWidget(number_, 0, 1);
    grid->addWidget(MakeLabel("Na&me:", name_), 0, 2);
    grid->addWidget(name_, 0, 3);
    grid->addWidget(MakeLabel("Mod&e:", mode_), 1, 0);
    grid->addWidget(mode_, 1, 1);
    grid->addWidget(MakeLabel("Size:", size_), 1, 2);
    grid->addWidget(size_, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

QCheckBox* CGroupDef::MakeFlag(const char* text, const char* name, SetFlag set) {
    auto* box = new QCheckBox(QString::fromLatin1(text), this);
    box->setObjectName(QString::fromLatin1(name));
    connect(box, &QCheckBox::clicked, this, [this, set](bool on) { Finish(set(app_.State, group_, on)); });
    return box;
}

QLayout* CGroupDef::MakeFlags() {
    twos_ = MakeFlag("&2's Compliment", "TwosComplement", SetTwosComplement);
    csHigh_ = MakeFlag("CS Active &high", "CsActiveHigh", SetCsActiveHigh);
    bitOrder_ = MakeFlag("&SPI: LSB->MSB", "BitOrder", SetBitOrder);
    color_->setObjectName(QStringLiteral("Color"));
    connect(color_, &CColorButton::chosen, this,
            [this](Rgb color) { Finish(SetGroupColor(app_.State, group_, color)); });
    auto* row = new QHBoxLayout;
    for (QWidget* widget :
         {static_cast<QWidget*>(twos_), static_cast<QWidget*>(csHigh_), static_cast<QWidget*>(bitOrder_)}) {
        row->addWidget(widget);
        row->addSpacing(12);
    }
    row->addStretch();
    row->addWidget(color_);
    return row;
}

QLayout* CGroupDef::MakeLists() {
    auto* grid = new QGridLayout;
    grid->addWidget(MakeLabel("&Channel list:", channels_), 0, 0);
    grid->addWidget(MakeLabel("&Group list (bit 0 on top):", positions_), 0, 2);
    grid->addWidget(channels_, 1, 0);
    grid->addLayout(MakeButtons(), 1, 1);
    grid->addWidget(positions_, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    return grid;
}

QLayout* CGroupDef::MakeButtons() {
    auto* column = new QVBoxLayout;
    column->addStretch();
    for (const EditRow& row : kEdits) {
        const Edit edit = row.Edit;
        column->addWidget(MakeButton(row.Text, row.Name, row.Hint, [this, edit] { Run(edit); }));
        if (row.GapBelow) column->addSpacing(12);
    }
    column->addStretch();
    return column;
}

void CGroupDef::BindKeys() {
    const auto bind = [this](QWidget* widget, const QKeySequence& key, Edit edit) {
        auto* shortcut = new QShortcut(key, widget, this, [this, edit] { Run(edit); });
        shortcut->setContext(Qt::WidgetShortcut);
    };
    bind(channels_, Qt::Key_Return, AppendToGroupAndSelectNext);
    bind(channels_, Qt::Key_Enter, AppendToGroupAndSelectNext);
    bind(channels_, Qt::Key_Insert, InsertInGroup);
    bind(positions_, Qt::Key_Insert, InsertInGroup);
    bind(positions_, Qt::Key_Delete, DeleteFromGroup);
    bind(positions_, Qt::CTRL | Qt::Key_Up, MoveGroupUp);
    bind(positions_, Qt::CTRL | Qt::Key_Down, MoveGroupDown);
    connect(channels_, &QListWidget::itemDoubleClicked, this, [this] { Run(AppendToGroup); });
}

void CGroupDef::SelectGroup(int group) {
    group_ = GroupToEdit(group);
    Reload({.Channels = channels_->Selected(), .Positions = {}});
}

GroupSelection CGroupDef::Selected() const {
    return {channels_->Selected(), positions_->Selected()};
}

void CGroupDef::Run(Edit edit) {
    GroupSelection selection = Selected();
    const EditResult result = edit(app_.State, group_, selection);
    Reload(selection);
    FinishEdit(app_, result);
}

void CGroupDef::ChooseMode(int mode) {
    GroupSelection selection = Selected();
    const EditResult result = SetGroupMode(app_.State, group_, mode, selection);
    Reload(selection);
    FinishEdit(app_, result);
}

void CGroupDef::Reload() {
    Reload(Selected());
}

void CGroupDef::Reload(const GroupSelection& selection) {
    const InstrumentState& state = app_.State;
    ReloadNames();
    ReloadFields();
    const int channels = std::clamp(state.Shape.TotalChannels, 0, kMaxChannels);
    channels_->ShowRows(
        channels, [&](int row) { return ChannelRowText(state, row); }, selection.Channels);
    positions_->ShowRows(
        GroupSize(state.Groups[static_cast<std::size_t>(group_)]),
        [&](int row) { return PositionRowText(state, group_, row); }, selection.Positions);
    const int mode = state.Groups[static_cast<std::size_t>(group_)].Mode;
    positions_->SetGutter([mode](int row) { return RowRole(mode, row); }, kRoleCharacters);
}

void CGroupDef::ReloadNames() {
    for (int group = 0; group < kGroupCount; ++group) {
        number_->setItemText(group, FromState(GroupRowText(app_.State, group)));
    }
    number_->setCurrentIndex(group_);
}

void CGroupDef::ReloadFields() {
    const GroupRecord& group = app_.State.Groups[static_cast<std::size_t>(group_)];
    const QString name = FromState(group.Name.View().substr(0, kGroupNameTyped));
    if (name_->text() != name) name_->setText(name);
    const bool known = group.Mode >= 0 && group.Mode < mode_->count();
    mode_->setCurrentIndex(known ? group.Mode : 0);
    size_->setText(FromState(GroupSizeText(app_.State, group_)));
    color_->SetColor(group.Color);
    twos_->setChecked(group.TwosComplement != 0);
    csHigh_->setChecked(group.CsActiveHigh != 0);
    bitOrder_->setChecked(group.BitOrder != 0);
    const bool spi = IsSpiGroup(app_.State, group_);
    csHigh_->setEnabled(spi);
    bitOrder_->setEnabled(spi);
}

void CGroupDef::done(int result) {
    CEditDialog::done(result);
    FinishEdit(app_, LeaveGroupSetup(app_.State));
}

}  // namespace zu
