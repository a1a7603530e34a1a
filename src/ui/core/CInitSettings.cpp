#include "ui/core/CInitSettings.h"

#include <algorithm>
#include <array>

#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "state/Catalogue.h"
#include "ui/QtText.h"

namespace zu {
namespace {

/// A row that this build offers. The other rows are in the dialog and hidden: all series share it.
struct Offer {
    int Row;
    std::string_view Name;
};
constexpr std::array kOffers{
    Offer{11, "Roach40S"}, Offer{12, "Roach80S"},  Offer{13, "Roach40L"},
    Offer{14, "Roach80L"}, Offer{15, "Roach160L"},
};

const Offer* OfferOf(int row) {
    const auto* found =
        std::find_if(kOffers.begin(), kOffers.end(), [row](const Offer& o) { return o.Row == row; });
    return found == kOffers.end() ? nullptr : found;
}

QString ShapeText(const ModelTraits& model) {
    return QStringLiteral("%1 channels, %2K samples each")
        .arg(model.TotalChannels)
        .arg(model.SamplesDefault / 1024);
}

}  // namespace

QString EmulatedModelName(int row) {
    const Offer* offer = OfferOf(row);
    return FromState(offer == nullptr ? Model(row).ShortName : offer->Name);
}

CInitSettings::CInitSettings(InstrumentState& state, QWidget* parent) : QDialog(parent), state_(state) {
    setWindowTitle(QStringLiteral("Logic Analyzer Emulation"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Select model to emulate"), this));
    for (int row = 0; row < kModelRows; ++row) {
        if (HasShape(row)) layout->addWidget(MakeChoice(row, OfferOf(row) != nullptr));
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addSpacing(8);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* CInitSettings::MakeChoice(int row, bool offered) {
    auto* choice = new QRadioButton(EmulatedModelName(row), this);
    choice->setObjectName(QStringLiteral("Row%1").arg(row));
    choice->setToolTip(ShapeText(Model(row)));
    choice->setChecked(row == state_.Identity.HardwareType);
    choice->setVisible(offered);
    connect(choice, &QRadioButton::toggled, this, [this, row](bool on) {
        if (on) state_.Identity.HardwareType = static_cast<std::uint8_t>(row);
    });
    return choice;
}

}  // namespace zu
