#include "ui/core/CInitSettings.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Defaults.h"
#include "state/Catalogue.h"
#include "ui/CaptionRoom.h"
#include "ui/QtText.h"

namespace zu {
namespace {

/// The choice that offers a row, or null: the other rows are in the dialog and hidden, as all series share
/// it.
const EmulationChoice* OfferOf(int row) {
    const auto* found = std::find_if(kEmulationChoices.begin(), kEmulationChoices.end(),
                                     [row](const EmulationChoice& choice) { return choice.Row == row; });
    return found == kEmulationChoices.end() ? nullptr : found;
}

QString ShapeText(const ModelTraits& model) {
    return QStringLiteral("%1 channels, %2K samples each")
        .arg(model.TotalChannels)
        .arg(model.SamplesDefault / 1024);
}

}  // namespace

QString EmulatedModelName(int row) {
    const EmulationChoice* offer = OfferOf(row);
    return FromState(offer == nullptr ? Model(row).ShortName : offer->Text);
}

CInitSettings::CInitSettings(InstrumentState& state, QWidget* parent) : QDialog(parent), state_(state) {
    setWindowTitle(QStringLiteral("Logic Analyzer Emulation"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Select model to emulate"), this));
    // The choices are narrower than the caption.
    layout->addSpacerItem(new QSpacerItem(CaptionRoom(windowTitle()), 0));
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
