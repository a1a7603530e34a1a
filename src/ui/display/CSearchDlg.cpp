#include "ui/display/CSearchDlg.h"

#include <utility>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "display/GroupEdits.h"
#include "trigger/TrigCells.h"
#include "ui/QtText.h"
#include "ui/display/CChoiceBox.h"

namespace zu {
namespace {

constexpr int kPatternLimit = 64;

/// A field that takes the bytes of its base, overtypes when it is full, and beeps at all others.
class CellField final : public QLineEdit {
  public:
    CellField(zu::Host& host, int base, int limit, QWidget* parent)
        : QLineEdit(parent), host_(host), base_(base) {
        setMaxLength(limit);
        const char* taken = base == kSearchBinary ? "[01xX]*"
                            : base == kSearchHex  ? "[0-9a-fA-F]*"
                                                  : "[0-9]*";
        setValidator(new QRegularExpressionValidator(QRegularExpression(QString::fromLatin1(taken)), this));
        setFixedWidth(fontMetrics().horizontalAdvance(QString(std::min(limit, 24), u'M')) + 16);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QString text = event->text();
        if (text.size() != 1 || !text[0].isPrint()) return QLineEdit::keyPressEvent(event);
        const char key = text[0].unicode() < 128 ? text[0].toLatin1() : '\0';
        if (!SearchFieldTakes(base_, key)) return host_.Beep();
        const bool full = this->text().size() >= maxLength() && !hasSelectedText();
        if (full && cursorPosition() < maxLength()) setSelection(cursorPosition(), 1);
        QLineEdit::keyPressEvent(event);
    }

  private:
    zu::Host& host_;
    int base_;
};

/// Place of a base in its list; both decimal ones share theirs.
int ListRowOf(int base) {
    return base == kSearchDecimal2 ? static_cast<int>(kSearchDecimal) : base;
}

}  // namespace

CSearchDlg::CSearchDlg(App& app, Search search, QWidget* parent)
    : CSizedDialog(app.State.Windows, "Search", parent),
      app_(app),
      search_(std::move(search)),
      edit_(app.State) {
    setWindowTitle(QStringLiteral("Search"));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(MakeModes());
    layout->addWidget(parallel_ = MakeParallel());
    layout->addWidget(serial_ = MakeSerial());
    layout->addStretch();
    layout->addLayout(MakeButtons());
    Tell(edit_.Open());
    ShowFields();
    ShowMode();
}

void CSearchDlg::Tell(std::string_view message) {
    if (!message.empty()) app_.Host.Message(message, "Search");
}

QLayout* CSearchDlg::MakeModes() {
    auto* row = new QHBoxLayout;
    parallelMode_ = new QRadioButton(QStringLiteral("&Parallel: a word on all channels"), this);
    parallelMode_->setObjectName(QStringLiteral("Parallel"));
    serialMode_ = new QRadioButton(QStringLiteral("&Serial: a pattern along one channel"), this);
    serialMode_->setObjectName(QStringLiteral("Serial"));
    (app_.State.Search.SearchMode == 'S' ? serialMode_ : parallelMode_)->setChecked(true);
    connect(serialMode_, &QRadioButton::toggled, this, [this](bool serial) {
        app_.State.Search.SearchMode = serial ? 'S' : 'P';
        ShowMode();
    });
    row->addWidget(parallelMode_);
    row->addWidget(serialMode_);
    row->addStretch();
    return row;
}

QWidget* CSearchDlg::MakeSerial() {
    SearchRecord& record = app_.State.Search;
    auto* box = new QGroupBox(QStringLiteral("Serial search"), this);
    auto* form = new QFormLayout(box);
    auto* pattern = new CellField(app_.Host, kSearchBinary, kPatternLimit, box);
    pattern->setObjectName(QStringLiteral("Pattern"));
    pattern->setText(FromState(record.SearchWord.View()));
    connect(pattern, &QLineEdit::textEdited, this,
            [&record](const QString& text) { record.SearchWord = ToState(text); });
    auto* channel = new QComboBox(box);
    channel->setObjectName(QStringLiteral("Channel"));
    for (int i = 0; i < app_.State.Shape.TotalChannels; ++i) {
        channel->addItem(FromState(ChannelRowText(app_.State, i)));
    }
    channel->setCurrentIndex(record.SearchCh < channel->count() ? std::max<int>(record.SearchCh, -1) : -1);
    connect(channel, &QComboBox::activated, this,
            [&record](int row) { record.SearchCh = static_cast<std::int16_t>(row); });
    form->addRow(QStringLiteral("Pa&ttern:"), pattern);
    form->addRow(QStringLiteral("C&hannel:"), channel);
    return box;
}

QWidget* CSearchDlg::MakeParallel() {
    auto* box = new QGroupBox(QStringLiteral("Parallel search"), this);
    auto* form = new QFormLayout(box);
    rows_ = new QComboBox(box);
    rows_->setObjectName(QStringLiteral("Rows"));
    for (int row = 0; row < SearchRows(app_.State); ++row) {
        rows_->addItem(FromState(SearchRowText(app_.State, row)));
    }
    connect(rows_, &QComboBox::activated, this, &CSearchDlg::ShowRow);
    base_ = new CChoiceBox(box);
    base_->setObjectName(QStringLiteral("Base"));
    base_->addItems({QStringLiteral("Hex"), QStringLiteral("Binary"), QStringLiteral("Decimal")});
    connect(base_, &QComboBox::activated, this, &CSearchDlg::SelectBase);
    fills_ = new CChoiceBox(box);
    fills_->setObjectName(QStringLiteral("Fills"));
    for (const std::string& text : SearchFillTexts(app_.State)) fills_->addItem(FromState(text));
    connect(fills_, &QComboBox::activated, this, &CSearchDlg::Fill);
    cells_ = new QHBoxLayout;
    form->addRow(QStringLiteral("Cha&nnels:"), rows_);
    form->addRow(QStringLiteral("Bas&e:"), base_);
    form->addRow(QStringLiteral("Set &all bits:"), fills_);
    form->addRow(cells_);
    return box;
}

QLayout* CSearchDlg::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (const bool forward : {false, true}) {
        auto* button = new QPushButton(
            forward ? QStringLiteral("Search &forward") : QStringLiteral("Search &backward"), this);
        button->setObjectName(forward ? QStringLiteral("Forward") : QStringLiteral("Backward"));
        button->setDefault(forward);
        connect(button, &QPushButton::clicked, this, [this, forward] { search_(forward); });
        auto* key = new QAction(this);
        key->setShortcut(forward ? QKeySequence(Qt::Key_F3) : QKeySequence(Qt::SHIFT | Qt::Key_F3));
        connect(key, &QAction::triggered, button, &QPushButton::click);
        addAction(key);
        row->addWidget(button);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    row->addWidget(buttons);
    return row;
}

void CSearchDlg::ShowMode() {
    const bool serial = app_.State.Search.SearchMode == 'S';
    serial_->setEnabled(serial);
    parallel_->setEnabled(!serial);
}

void CSearchDlg::ShowRow(int row) {
    app_.State.Search.SearchLen = static_cast<std::int8_t>(row);
    ShowFields();
}

/// Fields belong to a row and a base; they are made anew for another one.
void CSearchDlg::ShowFields() {
    const int base = SearchBaseOf(app_.State);
    rows_->setCurrentIndex(ShownSearchRow(app_.State));
    base_->setCurrentIndex(ListRowOf(base));
    while (QLayoutItem* item = cells_->takeAt(0)) {
        if (item->widget() != nullptr) item->widget()->deleteLater();
        delete item;
    }
    for (const int pod : SearchPods(app_.State, ShownSearchRow(app_.State))) {
        auto* field = new CellField(app_.Host, base, SearchFieldLimit(base), parallel_);
        field->setObjectName(QStringLiteral("Pod%1").arg(pod));
        field->setAccessibleName(QStringLiteral("Channels %1 to %2").arg(pod * 8 + 7).arg(pod * 8));
        field->setToolTip(field->accessibleName());
        field->setText(FromState(SearchFieldText(app_.State, pod)));
        // A field loses the keyboard while the dialog is already half gone: it asks nothing of it.
        connect(field, &QLineEdit::textEdited, field, [&state = app_.State, pod](const QString& text) {
            WriteSearchField(state, pod, ToState(text));
        });
        connect(field, &QLineEdit::editingFinished, field, [&state = app_.State, field, pod] {
            field->setText(FromState(SearchFieldText(state, pod)));
        });
        cells_->addWidget(field);
    }
    cells_->addStretch();
}

void CSearchDlg::SelectBase(int row) {
    if (row != ListRowOf(SearchBaseOf(app_.State))) Tell(edit_.SelectBase(row));
    ShowFields();
}

void CSearchDlg::Fill(int entry) {
    Tell(edit_.Fill(entry));
    fills_->setCurrentIndex(0);
    ShowFields();
}

}  // namespace zu
