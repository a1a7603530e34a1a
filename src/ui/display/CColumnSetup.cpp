#include "ui/display/CColumnSetup.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

#include "display/Columns.h"
#include "display/LineEdits.h"
#include "ui/QtText.h"

namespace zu {
namespace {

/// A level of the trigger sequence with the name of the word that it waits for.
QString LevelText(const InstrumentState& state, int level) {
    QString text = QStringLiteral("Level %1").arg(level);
    const int word = state.Trigger.SeqList[static_cast<std::size_t>(level)] - 1;
    if (word < 0 || word >= kTrigWords) return text;
    return text + QStringLiteral("  ") +
           FromState(state.Trigger.TrigWordName[static_cast<std::size_t>(word)].View());
}

}  // namespace

CColumnSetup::CColumnSetup(InstrumentState& state, QWidget* parent) : QWidget(parent), state_(state) {
    auto* grid = new QGridLayout(this);
    constexpr std::array kHeads{"Column", "Shows", "Range", "Trigger word"};
    for (int i = 0; i < static_cast<int>(kHeads.size()); ++i) {
        grid->addWidget(new QLabel(QString::fromLatin1(kHeads[static_cast<std::size_t>(i)]), this), 0, i);
    }
    for (int column = 0; column < kTimingColumns; ++column) {
        Row& row = rows_[static_cast<std::size_t>(column)];
        row = {MakeBox("Type", column), MakeBox("Range", column), MakeBox("Word", column)};
        for (const ColumnTraits& type : kColumnTypes) row.Type->addItem(FromState(type.ListText));
        for (const RangeTraits& range : kRanges) row.Range->addItem(FromState(range.Text));
        for (int level = 0; level < kTrigWords; ++level) row.Word->addItem(LevelText(state, level));
        auto* label = new QLabel(QStringLiteral("&%1").arg(column + 1), this);
        label->setBuddy(row.Type);
        grid->addWidget(label, column + 1, 0, Qt::AlignCenter);
        grid->addWidget(row.Type, column + 1, 1);
        grid->addWidget(row.Range, column + 1, 2);
        grid->addWidget(row.Word, column + 1, 3);
    }
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(3, 2);
    grid->setRowStretch(kTimingColumns + 1, 1);
    Reload();
}

QComboBox* CColumnSetup::MakeBox(const char* name, int column) {
    auto* box = new QComboBox(this);
    box->setObjectName(QStringLiteral("%1%2").arg(QString::fromLatin1(name)).arg(column));
    connect(box, &QComboBox::activated, this, [this, column] { Store(column); });
    return box;
}

void CColumnSetup::Store(int column) {
    const Row& row = rows_[static_cast<std::size_t>(column)];
    const TimingColumn setup{static_cast<std::uint8_t>(row.Type->currentIndex()),
                             static_cast<std::uint8_t>(row.Range->currentIndex()),
                             static_cast<std::int8_t>(row.Word->currentIndex())};
    if (!SetColumn(state_, column, setup).Changed) return;
    ReloadRow(column);
    emit changed();
}

void CColumnSetup::Reload() {
    for (int column = 0; column < kTimingColumns; ++column) ReloadRow(column);
}

void CColumnSetup::ReloadRow(int column) {
    const Row& row = rows_[static_cast<std::size_t>(column)];
    const TimingColumn& setup = state_.Timing.TimingDisp[static_cast<std::size_t>(column)];
    const ColumnType type = TypeOfColumn(state_, column);
    row.Type->setCurrentIndex(static_cast<int>(type));
    row.Range->setCurrentIndex(setup.Range < kRanges.size() ? setup.Range : 0);
    row.Word->setCurrentIndex(setup.TrigWord >= 0 && setup.TrigWord < kTrigWords ? setup.TrigWord : 0);
    row.Range->setEnabled(IsMeasurement(type));
    row.Word->setEnabled(type == ColumnType::TrigWord);
}

}  // namespace zu
