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
#include "trigger/FieldEdits.h"
#include "ui/QtText.h"
#include "ui/display/CChoiceBox.h"

namespace zu {
namespace {

constexpr int kPatternLimit = 64;

/// Base of the rules by which a field of this base is typed into.
int FieldBaseOf(int base) {
    if (base == kSearchHex) return kBaseHex;
    return base == kSearchBinary ? kBaseBinary : kBaseDecimal;
}

/// Byte that a key types: '\b' for a plain backspace, '\0' for keys that type nothing. What is not ASCII is
/// a byte that no base takes.
char ByteOf(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Backspace) return event.modifiers() == Qt::NoModifier ? '\b' : '\0';
    const QString text = event.text();
    if (text.size() != 1 || !text[0].isPrint()) return '\0';
    return text[0].unicode() < 128 ? text[0].toLatin1() : '\x7F';
}

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
        setMinimumWidth(fontMetrics().horizontalAdvance(QString(std::min(limit, 24), u'M')) + 16);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const char key = ByteOf(*event);
        if (key == '\0') return QLineEdit::keyPressEvent(event);
        if (key != '\b' && !SearchFieldTakes(base_, key)) return host_.Beep();
        BaseEdit edit(FieldBaseOf(base_), maxLength());
        const bool selected = hasSelectedText();
        const int begin = selected ? selectionStart() : cursorPosition();
        edit.Field = {ToState(text()), begin, selected ? selectionEnd() : begin};
        if (edit.Key(key).Action == KeyAction::Replaced) return Take(edit.Field);
        // The rules look at the first fifty bytes of a field; a longer one overtypes as well.
        const bool full = text().size() >= maxLength() && !selected;
        if (key != '\b' && full && begin < maxLength()) setSelection(begin, 1);
        QLineEdit::keyPressEvent(event);
    }

  private:
    void Take(const FieldText& field) {
        selectAll();
        insert(FromState(field.Text));
        setCursorPosition(field.SelStart);
    }

    zu::Host& host_;
    int base_;
};

/// A field under the numbers of its channels.
QWidget* Captioned(CellField* field, int pod, QWidget* parent) {
    auto* box = new QWidget(parent);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* caption = new QLabel(QStringLiteral("%1..%2").arg(pod * 8 + 7).arg(pod * 8), box);
    caption->setBuddy(field);
    layout->addWidget(caption);
    layout->addWidget(field);
    return box;
}

/// Place of a base in its list; both decimal ones share theirs.
int ListRowOf(int base) {
    return base == kSearchDecimal2 ? static_cast<int>(kSearchDecimal) : base;
}

}  // namespace

CSearchDlg::CSearchDlg(App& app, Search search, QWidget* parent)
    : CSizedDialog(app.State.Windows, "Search", parent),
      app_(app),
      search_(std::move(search)),
      edit_(app.State),
      place_(new QLabel(this)) {
    setWindowTitle(QStringLiteral("Search"));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(MakeModes());
    layout->addWidget(parallel_ = MakeParallel());
    layout->addWidget(serial_ = MakeSerial());
    layout->addStretch();
    layout->addWidget(place_);
    layout->addLayout(MakeButtons());
    place_->setObjectName(QStringLiteral("Place"));
    Tell(edit_.Open());
    ShowFields();
    ShowMode();
    ShowPlace();
    StartTyping();
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
    auto* pattern = pattern_ = new CellField(app_.Host, kSearchBinary, kPatternLimit, box);
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
        connect(button, &QPushButton::clicked, this, [this, forward] {
            search_(forward);
            ShowPlace();
        });
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

void CSearchDlg::ShowPlace() {
    place_->setText(FromState(SearchPlaceText(app_.State)));
}

/// The keyboard begins in the first field of the search that is chosen.
void CSearchDlg::StartTyping() {
    QLineEdit* first = app_.State.Search.SearchMode == 'S' ? pattern_ : parallel_->findChild<QLineEdit*>();
    if (first != nullptr) first->setFocus(Qt::TabFocusReason);
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
        field->setFixedWidth(field->minimumWidth());
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
        cells_->addWidget(Captioned(field, pod, parallel_));
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
