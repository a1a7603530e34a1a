#include "ui/display/CDisplayOptions.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "display/CursorMoves.h"

namespace zu {
namespace {

constexpr std::array kOriginTexts{"&Left",     "Ce&nter (std.)", "&Point",    "Cursor &A",
                                  "Cursor &B", "Cursor &C",      "Cursor &D", "&Trig. Cursor"};
static_assert(kOriginTexts.size() == kZoomFrom.size());
constexpr std::array kCursorTexts{"A", "B", "C", "D", "Trig"};

}  // namespace

CDisplayOptions::CDisplayOptions(InstrumentState& state, View view, QWidget* parent)
    : QDialog(parent), state_(state), view_(std::move(view)), origins_(new QButtonGroup(this)) {
    setWindowTitle(QStringLiteral("Display options"));
    setObjectName(QStringLiteral("DisplayOptions"));
    auto* layout = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    columns->addWidget(MakeOrigins());
    columns->addWidget(MakeCursors("Cursor to win", "ToWindow", view_.ToWindow));
    columns->addWidget(MakeCursors("Cursor to point", "ToPoint", view_.ToPoint));
    layout->addLayout(columns);
    layout->addLayout(MakeZoom());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &CDisplayOptions::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* CDisplayOptions::MakeOrigins() {
    auto* box = new QGroupBox(QStringLiteral("Zoom from"), this);
    auto* layout = new QVBoxLayout(box);
    for (std::size_t row = 0; row < kZoomFrom.size(); ++row) {
        auto* choice = new QRadioButton(QString::fromLatin1(kOriginTexts[row]), box);
        choice->setObjectName(QStringLiteral("Origin%1").arg(row));
        choice->setChecked(kZoomFrom[row].Origin == state_.Timing.ZoomOrigin);
        origins_->addButton(choice, static_cast<int>(row));
        layout->addWidget(choice);
    }
    // An origin that no file should hold counts as the middle.
    if (origins_->checkedId() < 0) origins_->button(1)->setChecked(true);
    return box;
}

QWidget* CDisplayOptions::MakeCursors(const char* title, const char* name,
                                      const std::function<void(int)>& move) {
    auto* box = new QGroupBox(QString::fromLatin1(title), this);
    auto* layout = new QVBoxLayout(box);
    for (int cursor = 0; cursor < static_cast<int>(kCursorTexts.size()); ++cursor) {
        auto* button =
            new QPushButton(QString::fromLatin1(kCursorTexts[static_cast<std::size_t>(cursor)]), box);
        button->setObjectName(QStringLiteral("%1%2").arg(QString::fromLatin1(name)).arg(cursor));
        button->setAccessibleName(QStringLiteral("%1 %2").arg(QString::fromLatin1(title), button->text()));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [cursor, move] { move(cursor); });
        layout->addWidget(button);
    }
    layout->addStretch();
    return box;
}

QLayout* CDisplayOptions::MakeZoom() {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (const bool in : {true, false}) {
        auto* button = new QPushButton(in ? QStringLiteral("Zoom +") : QStringLiteral("Zoom -"), this);
        button->setObjectName(in ? QStringLiteral("ZoomIn") : QStringLiteral("ZoomOut"));
        button->setShortcut(in ? Qt::Key_Plus : Qt::Key_Minus);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, in] {
            view_.Zoom(kZoomFrom[static_cast<std::size_t>(origins_->checkedId())].Origin, in);
        });
        row->addWidget(button);
    }
    row->addStretch();
    return row;
}

void CDisplayOptions::accept() {
    KeepZoomOrigin(state_, kZoomFrom[static_cast<std::size_t>(origins_->checkedId())].Origin);
    QDialog::accept();
}

}  // namespace zu
