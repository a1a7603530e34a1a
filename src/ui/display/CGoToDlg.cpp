#include "ui/display/CGoToDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "display/TimingView.h"
#include "ui/QtText.h"

namespace zu {

CGoToDlg::CGoToDlg(TimingView& view, QWidget* parent)
    : QDialog(parent), view_(view), place_(new QLineEdit(this)), hint_(new QLabel(this)) {
    setWindowTitle(QStringLiteral("Go to"));
    place_->setObjectName(QStringLiteral("Place"));
    place_->setMinimumWidth(260);
    hint_->setText(QStringLiteral("A sample, a time or a cursor: 12500, 3.2us, A+100"));
    auto* label = new QLabel(QStringLiteral("&Place:"), this);
    label->setBuddy(place_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &CGoToDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(place_);
    layout->addWidget(hint_);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void CGoToDlg::accept() {
    if (view_.GoToText(ToState(place_->text()))) return QDialog::accept();
    // The dialog stays, so that the text can be mended.
    hint_->setText(QStringLiteral("This is no sample, time or cursor. Try 12500, 3.2us or A+100."));
    place_->selectAll();
    place_->setFocus();
}

}  // namespace zu
