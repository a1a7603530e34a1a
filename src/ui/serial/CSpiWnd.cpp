#include "ui/serial/CSpiWnd.h"

#include <QEvent>
#include <QPushButton>

#include "serial/SpiDecoder.h"
#include "ui/CZuView.h"
#include "ui/QtText.h"
#include "ui/serial/CSpiList.h"

namespace zu {
namespace {

/// A caption as a button takes it: lines by a line feed, no letter underlined.
QString ButtonText(const std::string& caption) {
    return FromState(caption).remove(u'\r').replace(u'&', QStringLiteral("&&"));
}

}  // namespace

CSpiWnd::CSpiWnd(CZuView& controller) : CSpiWnd(controller, new CSpiList(controller)) {}

CSpiWnd::CSpiWnd(CZuView& controller, CSpiList* list) : CTrafficWnd(controller, *list), list_(list) {
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        auto* button = new QPushButton(this);
        button->setObjectName(QStringLiteral("Spi%1").arg(slot));
        button->setCheckable(true);
        connect(button, &QPushButton::clicked, this, [this, slot] { Press(slot); });
        connect(button, &QPushButton::toggled, this, &CSpiWnd::ColorSlots);
        AddTool(*button);
        slots_[static_cast<std::size_t>(slot)] = button;
    }
    ShowSlots();
}

void CSpiWnd::Press(int slot) {
    // The button has turned itself over. Where there is nothing to show, a message stands until it is read,
    // and the button must not look pressed meanwhile.
    ShowSlots();
    list_->View().PressSlot(slot);
    ShowSlots();
}

void CSpiWnd::ShowSlots() {
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        const bool defined = SpiGroup(Controller().State(), slot) >= 0;
        QPushButton& button = *slots_[static_cast<std::size_t>(slot)];
        button.setText(ButtonText(list_->View().SlotText(slot)));
        button.setChecked(list_->View().SlotShown(slot));
        button.setToolTip(defined ? QStringLiteral("Show or hide the bytes of this bus")
                                  : QStringLiteral("Make a group of this bus"));
    }
}

/// On a dark desktop a button that is down hardly differs from the others.
void CSpiWnd::ColorSlots() {
    for (QPushButton* button : slots_) {
        if (button == nullptr) continue;
        QPalette colors;
        if (button->isChecked()) {
            colors.setColor(QPalette::Button, palette().color(QPalette::Highlight));
            colors.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
        }
        button->setPalette(colors);
    }
}

void CSpiWnd::changeEvent(QEvent* event) {
    CTrafficWnd::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ColorSlots();
}

void CSpiWnd::Redraw() {
    ShowSlots();
    list_->Redraw();
}

}  // namespace zu
