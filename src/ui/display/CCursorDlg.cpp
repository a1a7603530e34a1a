#include "ui/display/CCursorDlg.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "display/TimeText.h"
#include "paint/QtCanvas.h"
#include "ui/QtText.h"

namespace zu {
namespace {

constexpr char kNames[] = "ABCDT";
/// Two lines: the longest status has a line break in it.
constexpr int kStatusLines = 2;

}  // namespace

CCursorDlg::CCursorDlg(const InstrumentState& state) : state_(state), status_(new QLabel(this)) {
    setWindowTitle(QStringLiteral("Cursors"));
    status_->setObjectName(QStringLiteral("Status"));
    status_->setTextFormat(Qt::PlainText);
    status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    status_->setMinimumHeight(kStatusLines * status_->fontMetrics().lineSpacing());
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < letters_.size(); ++i) {
        letters_[i] = new QLabel(QString(QLatin1Char(kNames[i])), this);
        QFont bold = letters_[i]->font();
        bold.setBold(true);
        letters_[i]->setFont(bold);
        places_[i] = new QLabel(this);
        places_[i]->setObjectName(QStringLiteral("Place%1").arg(QLatin1Char(kNames[i])));
        places_[i]->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        places_[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        places_[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        grid->addWidget(letters_[i], static_cast<int>(i), 0);
        grid->addWidget(places_[i], static_cast<int>(i), 1);
    }
    grid->setColumnStretch(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(status_);
    layout->addLayout(grid);
    layout->addStretch();
    Redraw();
}

void CCursorDlg::Color(int cursor) {
    // The letters carry the traces' colours, on the traces' background where the desktop's would hide them.
    const auto at = static_cast<std::size_t>(cursor);
    letters_[at]->setStyleSheet(QStringLiteral("color: %1; background: %2; padding: 1px 5px;")
                                    .arg(ToQColor(state_.Cursors.CursorColor[at]).name(),
                                         ToQColor(state_.Screen.ScreenColor[1]).name()));
}

void CCursorDlg::Redraw() {
    status_->setText(FromState(state_.Capture.StatusText.View()));
    const bool known = TimeKnown(state_);
    for (std::size_t i = 0; i < places_.size(); ++i) {
        const std::int32_t at = state_.Cursors.Cur[i];
        places_[i]->setText(known ? FromState(TimeText(std::int64_t{at}, RateOf(state_), kTimeFull))
                                  : QString::number(at));
        Color(static_cast<int>(i));
    }
}

}  // namespace zu
