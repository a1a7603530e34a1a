#include "ui/display/CTimingSetup.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include "display/GroupEdits.h"
#include "ui/display/CChannelDlg.h"
#include "ui/display/CColumnSetup.h"
#include "ui/display/CGroupDef.h"
#include "ui/display/CRowList.h"
#include "ui/display/CStyleList.h"

namespace zu {
namespace {

struct EditRow {
    const char* Text;
    const char* Name;
    const char* Hint;
    EditResult (*Edit)(InstrumentState&, LineSelection&);
    bool GapBelow = false;
};
constexpr std::array kEdits{
    EditRow{"&Append channel", "AppendChannel", "Put the selected channels at the end of the list (Enter)",
            AppendChannelLines},
    EditRow{"&Insert channel", "InsertChannel", "Put the selected channels before the selected line (Ins)",
            InsertChannelLines},
    EditRow{"Insert gr&oup", "InsertGroup", "Put the selected groups before the selected line (Enter)",
            InsertGroupLines},
    EditRow{"Insert s&pacer", "InsertSpacer", "Put a spacer before each selected line", InsertSpacerLines,
            true},
    EditRow{"&Delete line", "DeleteLine", "Take the selected lines off the list (Del)", DeleteLines},
    EditRow{"Move &up", "MoveUp", "Move the selected lines up (Ctrl+Up)", MoveLinesUp},
    EditRow{"Move do&wn", "MoveDown", "Move the selected lines down (Ctrl+Down)", MoveLinesDown, true},
    EditRow{"&Expand group", "ExpandGroup", "Put the channels of the selected groups behind them",
            ExpandGroupLines},
};

}  // namespace

CTimingSetup::CTimingSetup(App& app, ColorChooser& colors, QWidget* parent)
    : CEditDialog(app, colors, "TimingSetup", parent),
      lines_(new CRowList("Lines", this)),
      sources_(new CRowList("Sources", this)),
      groups_(new CRowList("Groups", this)),
      styles_(new CStyleList(this)),
      columns_(new CColumnSetup(app.State, this)) {
    setWindowTitle(QStringLiteral("Timing setup"));
    auto* pages = new QTabWidget(this);
    pages->setObjectName(QStringLiteral("Pages"));
    pages->addTab(MakeLinesPage(), QStringLiteral("Li&nes"));
    pages->addTab(columns_, QStringLiteral("Colu&mns"));
    connect(columns_, &CColumnSetup::changed, this, [this] { FinishEdit(app_, {.Changed = true}); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages, 1);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    close->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(close);
    QWidget* last = lines_;
    for (QPushButton* button : pages->widget(0)->findChildren<QPushButton*>()) {
        setTabOrder(last, button);
        last = button;
    }
    ChainTabs({last, sources_, groups_, styles_, columns_, close->button(QDialogButtonBox::Close), pages});
    BindKeys();
    Reload({});
    lines_->setFocus();
}

QWidget* CTimingSetup::MakeLinesPage() {
    struct ListColumn {
        const char* Text;
        QWidget* List;
        int Column;
    };
    const std::array lists{
        ListColumn{"Display &list:", lines_, 0},
        ListColumn{"&Channels and groups:", sources_, 2},
        ListColumn{"&Groups:", groups_, 3},
        ListColumn{"&Styles:", styles_, 4},
    };
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    grid->addLayout(MakeButtons(), 1, 1);
    for (const ListColumn& list : lists) {
        auto* label = new QLabel(QString::fromLatin1(list.Text), page);
        label->setBuddy(list.List);
        grid->addWidget(label, 0, list.Column);
        grid->addWidget(list.List, 1, list.Column);
        grid->setColumnStretch(list.Column, list.List == styles_ ? 0 : 1);
    }
    connect(lines_, &QListWidget::itemSelectionChanged, this, &CTimingSetup::MarkStyles);
    connect(sources_, &QListWidget::itemDoubleClicked, this, [this] { Run(AppendChannelLines); });
    connect(groups_, &QListWidget::itemDoubleClicked, this, [this] { Run(InsertGroupLines); });
    connect(styles_, &QListWidget::itemDoubleClicked, this, &CTimingSetup::SetStyle);
    return page;
}

QLayout* CTimingSetup::MakeButtons() {
    auto* column = new QVBoxLayout;
    column->addStretch();
    for (const EditRow& row : kEdits) {
        const Edit edit = row.Edit;
        column->addWidget(MakeButton(row.Text, row.Name, row.Hint, [this, edit] { Run(edit); }));
        if (row.GapBelow) column->addSpacing(12);
    }
    MakeEditButtons(*column);
    column->addSpacing(12);
    column->addWidget(MakeButton("Set st&yle", "SetStyle",
                                 "Give the selected lines the selected style (Enter)",
                                 [this] { SetStyle(); }));
    column->addStretch();
    return column;
}

void CTimingSetup::MakeEditButtons(QLayout& column) {
    column.addWidget(MakeButton("Edit g&roup...", "EditGroup", "Group setup of the selected line's group",
                                [this] { EditGroup(); }));
    column.addWidget(MakeButton("Edit c&hannel...", "EditChannel",
                                "Name and color of the selected line's channel", [this] { EditChannel(); }));
}

void CTimingSetup::BindKeys() {
    const auto bind = [this](QWidget* widget, const QKeySequence& key, auto slot) {
        auto* shortcut = new QShortcut(key, widget, this, slot);
        shortcut->setContext(Qt::WidgetShortcut);
    };
    const auto run = [this](Edit edit) { return [this, edit] { Run(edit); }; };
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        bind(sources_, key, run(AppendChannelLines));
        bind(groups_, key, run(InsertGroupLines));
        bind(styles_, key, [this] { SetStyle(); });
    }
    bind(sources_, Qt::Key_Insert, run(InsertChannelLines));
    bind(groups_, Qt::Key_Insert, run(InsertGroupLines));
    bind(lines_, Qt::Key_Delete, run(DeleteLines));
    bind(lines_, Qt::CTRL | Qt::Key_Up, run(MoveLinesUp));
    bind(lines_, Qt::CTRL | Qt::Key_Down, run(MoveLinesDown));
}

LineSelection CTimingSetup::Selected() const {
    return {lines_->Selected(), sources_->Selected(), groups_->Selected()};
}

void CTimingSetup::Run(Edit edit) {
    LineSelection selection = Selected();
    const EditResult result = edit(app_.State, selection);
    Reload(selection);
    FinishEdit(app_, result);
}

void CTimingSetup::SetStyle() {
    const int style = CStyleList::StyleOfRow(styles_->currentRow());
    const LineExtra extra = CStyleList::ExtraOfRow(styles_->currentRow());
    Finish(style >= 0 ? SetLineStyle(app_.State, Selected(), style)
                      : ToggleLineMode(app_.State, Selected(), extra));
}

void CTimingSetup::EditGroup() {
    const LineTarget target = GroupOfSelection(app_.State, lines_->Selected());
    if (!target.Number) return FinishEdit(app_, target.Refusal);
    CGroupDef(app_, colors_, *target.Number, this).exec();
    Reload();
}

void CTimingSetup::EditChannel() {
    const LineTarget target = ChannelOfSelection(app_.State, lines_->Selected());
    if (!target.Number) return FinishEdit(app_, target.Refusal);
    CChannelDlg(app_, colors_, *target.Number, this).exec();
    Reload();
}

void CTimingSetup::MarkStyles() {
    std::vector<DisplayLine> lines;
    for (int row = 0; row < lines_->count(); ++row) {
        if (lines_->item(row)->isSelected()) lines.push_back(LineAt(app_.State, row));
    }
    styles_->Mark(lines);
}

void CTimingSetup::Reload() {
    Reload(Selected());
}

void CTimingSetup::Reload(const LineSelection& selection) {
    const InstrumentState& state = app_.State;
    lines_->ShowRows(
        LineCount(state), [&](int row) { return LineRowText(state, row); }, selection.Lines);
    sources_->ShowRows(
        SourceRows(state), [&](int row) { return SourceRowText(state, row); }, selection.Sources);
    groups_->ShowRows(
        kGroupCount, [&](int row) { return GroupRowText(state, row); }, selection.Groups);
    columns_->Reload();
    MarkStyles();
}

}  // namespace zu
