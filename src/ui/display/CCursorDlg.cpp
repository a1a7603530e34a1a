#include "ui/display/CCursorDlg.h"

#include <utility>

#include <QButtonGroup>
#include <QComboBox>
#include <QFontDatabase>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "paint/QtCanvas.h"
#include "ui/QtText.h"

namespace zu {
namespace {

/// The longest status has a line break in it.
constexpr int kStatusLines = 2;
constexpr int kStepColumns = 3;
constexpr int kItemHeight = 21;

struct ItemRow {
    CursorItem Item;
    std::string_view Text;
    std::string_view ToolTip;
};
constexpr std::array<ItemRow, kCursorItems> kItems{{
    {CursorItem::A, "A", "Adjust cursor A"},
    {CursorItem::B, "B", "Adjust cursor B"},
    {CursorItem::C, "C", "Adjust cursor C"},
    {CursorItem::D, "D", "Adjust cursor D"},
    {CursorItem::T, "T", "Adjust the trigger cursor"},
    {CursorItem::TimingPosition, "Timing", "Adjust the first sample of the Timing window"},
    {CursorItem::StateListPosition, "Statelist", "Adjust the first sample of the Statelist"},
    {CursorItem::SerialPosition, "Serial", "Adjust the first sample of the serial window"},
}};

QFont Figures() {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

std::int32_t PositionOf(const InstrumentState& state, CursorItem item) {
    switch (item) {
        case CursorItem::TimingPosition:
            return state.Timing.TimingDataPos;
        case CursorItem::StateListPosition:
            return state.StateList.StateDataPos;
        case CursorItem::SerialPosition:
            return state.Serial.SerialDataPos;
        default:
            return state.Cursors.Cur[static_cast<std::size_t>(item)];
    }
}

QToolButton* MakeArrow(Qt::ArrowType arrow, const CursorStep& step, const QString& name) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setToolTip(FromState(step.ToolTip));
    button->setAccessibleName(QStringLiteral("%1 %2").arg(
        arrow == Qt::UpArrow ? QStringLiteral("Up") : QStringLiteral("Down"), FromState(step.Label)));
    button->setFixedSize(24, 16);
    return button;
}

}  // namespace

CCursorDlg::CCursorDlg(InstrumentState& state, std::function<void()> changed)
    : state_(state),
      changed_(std::move(changed)),
      status_(new QLabel(this)),
      items_(new QButtonGroup(this)),
      units_(new QButtonGroup(this)) {
    setWindowTitle(QStringLiteral("Cursors"));
    status_->setObjectName(QStringLiteral("Status"));
    status_->setTextFormat(Qt::PlainText);
    status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    status_->setMinimumHeight(kStatusLines * status_->fontMetrics().lineSpacing());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->setSpacing(6);
    layout->addWidget(status_);
    AddItems(*layout);
    AddSteps(*layout);
    AddUnits(*layout);
    AddDifferences(*layout);
    layout->addStretch();
    Redraw();
}

void CCursorDlg::AddItems(QBoxLayout& layout) {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(0);
    // What the long names need besides a button goes behind the letters, not in front of them.
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1000);
    for (std::size_t i = 0; i < kItems.size(); ++i) {
        const int row = static_cast<int>(i);
        grid->setRowMinimumHeight(row, kItemHeight);
        const bool isCursor = i < letters_.size();
        auto* choice = new QRadioButton(isCursor ? QString() : FromState(kItems[i].Text), this);
        choice->setObjectName(QStringLiteral("Item%1").arg(row));
        choice->setToolTip(FromState(kItems[i].ToolTip));
        choice->setAccessibleName(FromState(kItems[i].ToolTip));
        choice->setChecked(i == 0);
        items_->addButton(choice, row);
        grid->addWidget(choice, row, 0, 1, isCursor ? 1 : 2);
        if (isCursor) {
            letters_[i] = new QLabel(FromState(kItems[i].Text), this);
            letters_[i]->setAlignment(Qt::AlignCenter);
            letters_[i]->setAutoFillBackground(true);
            letters_[i]->setFixedWidth(22);
            grid->addWidget(letters_[i], row, 1, Qt::AlignLeft);
        }
        places_[i] = new QLabel(this);
        places_[i]->setObjectName(QStringLiteral("Place%1").arg(row));
        places_[i]->setFont(Figures());
        places_[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        places_[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        grid->addWidget(places_[i], row, 2);
    }
    layout.addLayout(grid);
}

QWidget* CCursorDlg::MakeStep(const CursorStep& step, std::size_t index) {
    auto* box = new QWidget(this);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* up = MakeArrow(Qt::UpArrow, step, QStringLiteral("Up%1").arg(index));
    auto* down = MakeArrow(Qt::DownArrow, step, QStringLiteral("Down%1").arg(index));
    stepTexts_[index] = new QLabel(box);
    stepTexts_[index]->setObjectName(QStringLiteral("Step%1").arg(index));
    stepTexts_[index]->setAlignment(Qt::AlignCenter);
    stepTexts_[index]->setToolTip(FromState(step.ToolTip));
    connect(up, &QToolButton::clicked, this, [this, &step] { Step(step, true); });
    connect(down, &QToolButton::clicked, this, [this, &step] { Step(step, false); });
    column->addWidget(up, 0, Qt::AlignHCenter);
    column->addWidget(stepTexts_[index]);
    column->addWidget(down, 0, Qt::AlignHCenter);
    return box;
}

void CCursorDlg::AddSteps(QBoxLayout& layout) {
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(4);
    for (std::size_t i = 0; i < kCursorSteps.size(); ++i) {
        const int place = static_cast<int>(i);
        grid->addWidget(MakeStep(kCursorSteps[i], i), place / kStepColumns, place % kStepColumns);
    }
    layout.addLayout(grid);
}

void CCursorDlg::AddUnits(QBoxLayout& layout) {
    auto* row = new QHBoxLayout;
    for (const auto& [mode, text] : {std::pair(1, "Time"), std::pair(0, "Samples")}) {
        auto* choice = new QRadioButton(QLatin1String(text), this);
        choice->setObjectName(QStringLiteral("Unit%1").arg(mode));
        units_->addButton(choice, mode);
        row->addWidget(choice);
    }
    row->addStretch();
    connect(units_, &QButtonGroup::idClicked, this, [this](int mode) {
        state_.Cursors.CursorDlgMode = static_cast<std::int8_t>(mode);
        changed_();
    });
    layout.addLayout(row);
}

void CCursorDlg::AddDifferences(QBoxLayout& layout) {
    for (std::size_t i = 0; i < differences_.size(); ++i) {
        auto* list = new QComboBox(this);
        list->setObjectName(QStringLiteral("Difference%1").arg(i));
        list->setFont(Figures());
        list->setToolTip(QStringLiteral("Distance between two cursors"));
        list->setAccessibleName(QStringLiteral("Distance %1").arg(i + 1));
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(18);
        for (const CursorPair& pair : kCursorPairs) list->addItem(FromState(pair.Label));
        connect(list, &QComboBox::activated, this,
                [this, i](int entry) { state_.Cursors.CursorMath[i] = entry; });
        layout.addWidget(list);
        differences_[i] = list;
    }
}

void CCursorDlg::Step(const CursorStep& step, bool up) {
    StepItem(state_, static_cast<CursorItem>(items_->checkedId()), step.Samples, up);
    changed_();
}

void CCursorDlg::ColorLetters() {
    // The letters stand on the traces' background: their colours are chosen for it.
    for (std::size_t i = 0; i < letters_.size(); ++i) {
        QPalette palette = letters_[i]->palette();
        palette.setColor(QPalette::Window, ToQColor(state_.Screen.ScreenColor[1]));
        palette.setColor(QPalette::WindowText, ToQColor(state_.Cursors.CursorColor[i]));
        letters_[i]->setPalette(palette);
        QFont bold = letters_[i]->font();
        bold.setBold(true);
        letters_[i]->setFont(bold);
    }
}

void CCursorDlg::ShowDifferences() {
    for (std::size_t i = 0; i < differences_.size(); ++i) {
        QComboBox& list = *differences_[i];
        for (std::size_t pair = 0; pair < kCursorPairs.size(); ++pair) {
            list.setItemText(static_cast<int>(pair), FromState(DifferenceText(state_, kCursorPairs[pair])));
        }
    }
}

void CCursorDlg::Redraw() {
    status_->setText(FromState(state_.Capture.StatusText.View()));
    ColorLetters();
    for (std::size_t i = 0; i < differences_.size(); ++i) {
        const std::int32_t chosen = state_.Cursors.CursorMath[i];
        const bool known = chosen >= 0 && chosen < static_cast<std::int32_t>(kCursorPairs.size());
        differences_[i]->setCurrentIndex(known ? chosen : -1);
    }
    for (std::size_t i = letters_.size(); i < places_.size(); ++i) {
        places_[i]->setText(QString::number(PositionOf(state_, kItems[i].Item)));
    }
    if (!lists_.Changed(state_)) return;
    for (std::size_t i = 0; i < letters_.size(); ++i) {
        places_[i]->setText(FromState(CursorText(state_, static_cast<int>(i))));
    }
    for (std::size_t i = 0; i < kCursorSteps.size(); ++i) {
        stepTexts_[i]->setText(FromState(StepText(state_, kCursorSteps[i])));
    }
    if (QAbstractButton* unit = units_->button(state_.Cursors.CursorDlgMode != 0 ? 1 : 0)) {
        unit->setChecked(true);
    }
    ShowDifferences();
}

}  // namespace zu
