#include "ui/core/CHWAddress.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "state/Model.h"

namespace zu {

CHWAddress::CHWAddress(InstrumentState& state, QWidget* parent)
    : QDialog(parent), state_(state), status_(new QLabel(this)) {
    setWindowTitle(QStringLiteral("Hardware address"));
    auto* layout = new QVBoxLayout(this);
    auto* text =
        new QLabel(QStringLiteral("No logic analyzer answers on this computer.\n"
                                  "Recorded captures can be viewed and set-ups prepared without one."),
                   this);
    layout->addWidget(text);
    layout->addSpacing(4);
    auto* demo = new QPushButton(QStringLiteral("Demo (no Logic Analyzer)"), this);
    demo->setObjectName(QStringLiteral("Demo"));
    connect(demo, &QPushButton::clicked, this, &CHWAddress::ChooseDemo);
    layout->addWidget(demo);
    status_->setObjectName(QStringLiteral("Status"));
    status_->setMinimumHeight(status_->fontMetrics().height());
    layout->addWidget(status_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    ok_->setEnabled(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    demo->setDefault(true);
    demo->setFocus();
}

void CHWAddress::ChooseDemo() {
    state_.Identity.Emulated = 1;
    state_.Identity.HardwareType = static_cast<std::uint8_t>(SeriesDefaultRow(state_));
    status_->setText(QStringLiteral("Demo mode"));
    ok_->setEnabled(true);
    ok_->setDefault(true);
    ok_->setFocus();
}

}  // namespace zu
