#include "ui/display/CChannelDlg.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/Capture.h"
#include "ui/QtText.h"
#include "ui/display/CColorButton.h"
#include "ui/display/CTraceExample.h"

namespace zu {
namespace {

enum Column { kNumber, kName, kInvert, kColor, kTrace };
constexpr std::array kHeads{"Channel", "Name", "Invert", "Color", "Example"};

}  // namespace

CChannelDlg::CChannelDlg(App& app, ColorChooser& colors, int channel, QWidget* parent)
    : CEditDialog(app, colors, "ChannelNames", parent), edit_(app.State), pod_(new QComboBox(this)) {
    setWindowTitle(QStringLiteral("Channel names"));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(MakePager());
    layout->addLayout(MakeRows());
    layout->addStretch();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->addButton(
        MakeButton("&Reset", "Reset", "Default names for all channels, no inversion", [this] { Reset(); }),
        QDialogButtonBox::ResetRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &CChannelDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    const int last = std::max(edit_.PageCount() * kChannelsPerPage - 1, 0);
    const int first = std::clamp(channel, 0, last);
    ShowPage(first / kChannelsPerPage);
    At(first % kChannelsPerPage).Name->setFocus();
    At(first % kChannelsPerPage).Name->selectAll();
}

QLayout* CChannelDlg::MakePager() {
    pod_->setObjectName(QStringLiteral("Pod"));
    for (int page = 0; page < edit_.PageCount(); ++page) pod_->addItem(FromState(edit_.PageText(page)));
    connect(pod_, &QComboBox::activated, this, &CChannelDlg::ShowPage);
    auto* label = new QLabel(QStringLiteral("&Pod:"), this);
    label->setBuddy(pod_);
    previous_ = MakeButton("Pre&vious", "Previous", "The eight channels before (Page Up)",
                           [this] { ShowPage(page_ - 1); });
    next_ =
        MakeButton("Ne&xt", "Next", "The eight channels behind (Page Down)", [this] { ShowPage(page_ + 1); });
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(pod_);
    row->addStretch();
    row->addWidget(previous_);
    row->addWidget(next_);
    return row;
}

QLayout* CChannelDlg::MakeRows() {
    auto* grid = new QGridLayout;
    for (int column = 0; column < static_cast<int>(kHeads.size()); ++column) {
        auto* head = new QLabel(QString::fromLatin1(kHeads[static_cast<std::size_t>(column)]), this);
        const bool left = column == kName || column == kTrace;
        grid->addWidget(head, 0, column, left ? Qt::AlignLeft : Qt::AlignHCenter);
    }
    for (int row = 0; row < kChannelsPerPage; ++row) MakeRow(*grid, row);
    grid->setColumnStretch(kName, 3);
    grid->setColumnStretch(kTrace, 2);
    return grid;
}

void CChannelDlg::MakeRow(QGridLayout& grid, int row) {
    Row& fields = At(row);
    fields.Number = new QLabel(this);
    fields.Name = new QLineEdit(this);
    fields.Name->setObjectName(QStringLiteral("Name%1").arg(row));
    fields.Name->setMaxLength(kChannelNameTyped);
    fields.Name->setMinimumWidth((kChannelNameTyped + 3) * fields.Name->fontMetrics().averageCharWidth());
    fields.Name->installEventFilter(this);
    fields.Invert = new QCheckBox(this);
    fields.Invert->setObjectName(QStringLiteral("Invert%1").arg(row));
    fields.Color = new CColorButton(colors_, QString(), this);
    fields.Color->setObjectName(QStringLiteral("Color%1").arg(row));
    fields.Trace = new CTraceExample(this);
    grid.addWidget(fields.Number, row + 1, kNumber, Qt::AlignRight | Qt::AlignVCenter);
    grid.addWidget(fields.Name, row + 1, kName);
    grid.addWidget(fields.Invert, row + 1, kInvert, Qt::AlignCenter);
    grid.addWidget(fields.Color, row + 1, kColor);
    grid.addWidget(fields.Trace, row + 1, kTrace);
    connect(fields.Name, &QLineEdit::textEdited, this,
            [this, row](const QString& text) { edit_.SetName(ChannelOf(row), ToState(text)); });
    connect(fields.Invert, &QCheckBox::clicked, this, [this, row] { Invert(ChannelOf(row)); });
    connect(fields.Color, &CColorButton::chosen, this,
            [this, row](Rgb color) { Finish(SetChannelColor(app_.State, ChannelOf(row), color)); });
}

// A running capture is armed again, so that the trigger words are compiled with the new inversion.
void CChannelDlg::Reset() {
    const CapturePause pause(app_);
    Finish(edit_.Reset());
}

void CChannelDlg::Invert(int channel) {
    const CapturePause pause(app_);
    Finish(ToggleChannelInvert(app_.State, channel));
}

void CChannelDlg::ShowPage(int page) {
    page_ = std::clamp(page, 0, std::max(edit_.PageCount() - 1, 0));
    Reload();
}

void CChannelDlg::Reload() {
    pod_->setCurrentIndex(page_);
    previous_->setEnabled(page_ > 0);
    next_->setEnabled(page_ + 1 < edit_.PageCount());
    for (int row = 0; row < kChannelsPerPage; ++row) ShowRow(row);
}

void CChannelDlg::ShowRow(int row) {
    const Row& fields = At(row);
    const int channel = ChannelOf(row);
    const ChannelRecord& channels = app_.State.Channels;
    const auto at = static_cast<std::size_t>(channel);
    const bool inverted = (channels.ChannelInvert[at] & 1) != 0;
    fields.Number->setText(QString::number(channel));
    const QString name = FromState(edit_.Name(channel));
    if (fields.Name->text() != name) fields.Name->setText(name);
    fields.Name->setAccessibleName(QStringLiteral("Name of channel %1").arg(channel));
    fields.Invert->setChecked(inverted);
    fields.Invert->setAccessibleName(QStringLiteral("Invert channel %1").arg(channel));
    fields.Color->SetColor(channels.ChannelColor[at]);
    fields.Color->setAccessibleName(QStringLiteral("Color of channel %1").arg(channel));
    fields.Trace->Show(channels.ChannelColor[at], app_.State.Screen.ScreenColor[1], inverted);
}

void CChannelDlg::StepName(int row, int step) {
    int target = row + step;
    if (target < 0 || target >= kChannelsPerPage) {
        const int page = page_ + step;
        if (page < 0 || page >= edit_.PageCount()) return;
        ShowPage(page);
        target = step > 0 ? 0 : kChannelsPerPage - 1;
    }
    At(target).Name->setFocus();
    At(target).Name->selectAll();
}

bool CChannelDlg::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return CEditDialog::eventFilter(watched, event);
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [watched](const Row& row) { return row.Name == watched; });
    if (found == rows_.end()) return CEditDialog::eventFilter(watched, event);
    const auto row = static_cast<int>(found - rows_.begin());
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
            StepName(row, -1);
            return true;
        case Qt::Key_Down:
            StepName(row, 1);
            return true;
        case Qt::Key_PageUp:
            ShowPage(page_ - 1);
            return true;
        case Qt::Key_PageDown:
            ShowPage(page_ + 1);
            return true;
        default:
            return CEditDialog::eventFilter(watched, event);
    }
}

void CChannelDlg::accept() {
    const EditResult result = edit_.Accept();
    CEditDialog::accept();
    FinishEdit(app_, result);
}

}  // namespace zu
