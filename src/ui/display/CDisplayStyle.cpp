#include "ui/display/CDisplayStyle.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "display/LineEdits.h"
#include "ui/QtText.h"
#include "ui/display/CEditDialog.h"
#include "ui/display/RowDelegate.h"

namespace zu {
namespace {

bool IsForGroups(LineExtra extra) {
    return extra == LineExtra::Overlay || extra == LineExtra::Difference;
}

bool Allows(LineKind kind, LineExtra extra) {
    if (extra == LineExtra::Plain) return true;
    return kind == (IsForGroups(extra) ? LineKind::Group : LineKind::Channel);
}

void Enable(QListWidgetItem& item, bool on) {
    item.setFlags(on ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags);
}

}  // namespace

CDisplayStyle::CDisplayStyle(App& app, std::int32_t line, QWidget* parent)
    : CSizedDialog(app.State.Windows, "DisplayStyle", parent),
      app_(app),
      line_(line),
      styles_(MakeList("Styles")),
      extras_(MakeList("Extras")) {
    setWindowTitle(QStringLiteral("Display style"));
    const DisplayLine shown = LineAt(app.State, line);
    FillStyles(shown);
    FillExtras(shown);
    EnableExtras();
    connect(styles_, &QListWidget::currentRowChanged, this, &CDisplayStyle::EnableExtras);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(FromState(LineRowText(app.State, line)), this));
    for (const auto& [text, list] :
         {std::pair{"&Style:", styles_}, std::pair{"&Additional rendering:", extras_}}) {
        auto* label = new QLabel(QString::fromLatin1(text), this);
        label->setBuddy(list);
        layout->addWidget(label);
        layout->addWidget(list, list->count());
        // All rows are seen at once.
        const int frame = 2 * list->frameWidth();
        list->setMinimumSize(list->sizeHintForColumn(0) + frame,
                             list->sizeHintForRow(0) * list->count() + frame);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &CDisplayStyle::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    styles_->setFocus();
}

QListWidget* CDisplayStyle::MakeList(const char* name) {
    auto* list = new QListWidget(this);
    list->setObjectName(QString::fromLatin1(name));
    list->setUniformItemSizes(true);
    list->setItemDelegate(new RowDelegate(list));
    list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    connect(list, &QListWidget::itemDoubleClicked, this, &CDisplayStyle::accept);
    return list;
}

void CDisplayStyle::FillStyles(const DisplayLine& line) {
    for (int style = 0; style < static_cast<int>(kLineStyles.size()); ++style) {
        styles_->addItem(FromState(kLineStyles[static_cast<std::size_t>(style)].Text));
        Enable(*styles_->item(style), style >= kFirstTimingStyle || line.Kind == LineKind::Group);
    }
    styles_->setCurrentRow(line.Style);
}

void CDisplayStyle::FillExtras(const DisplayLine& line) {
    for (const std::string_view text : kLineModeTexts) {
        extras_->addItem(text.empty() ? QStringLiteral("none") : FromState(text));
    }
    extras_->setCurrentRow(Allows(line.Kind, line.Extra) ? static_cast<int>(line.Extra) : 0);
}

void CDisplayStyle::EnableExtras() {
    const LineKind kind = LineAt(app_.State, line_).Kind;
    const bool text = styles_->currentRow() < kFirstTimingStyle;
    for (int row = 1; row < extras_->count(); ++row) {
        Enable(*extras_->item(row), !text && Allows(kind, static_cast<LineExtra>(row)));
    }
    if (text) extras_->setCurrentRow(0);
}

void CDisplayStyle::accept() {
    const auto wanted = static_cast<LineExtra>(std::max(extras_->currentRow(), 0));
    EditResult result = SetStyleOfLine(app_.State, line_, styles_->currentRow());
    const LineExtra present = LineAt(app_.State, line_).Extra;
    if (present != wanted) {
        // An extra rendering ends by being toggled once more.
        const EditResult toggled =
            ToggleModeOfLine(app_.State, line_, wanted == LineExtra::Plain ? present : wanted);
        result.Changed = result.Changed || toggled.Changed;
    }
    CSizedDialog::accept();
    FinishEdit(app_, result);
}

}  // namespace zu
