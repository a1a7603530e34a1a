#pragma once

#include <array>

#include "state/Limits.h"
#include "ui/serial/CTrafficWnd.h"

class QPushButton;

namespace zu {

class CSpiList;

/// The SPI window: a button for each of the three slots above the list of their bytes.
class CSpiWnd final : public CTrafficWnd {
    Q_OBJECT

  public:
    explicit CSpiWnd(CZuView& controller);
    [[nodiscard]] CSpiList& List() { return *list_; }
    void Redraw();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    CSpiWnd(CZuView& controller, CSpiList* list);
    void Press(int slot);
    void ShowSlots();
    void ColorSlots();

    CSpiList* list_;
    std::array<QPushButton*, kSpiSlots> slots_{};
};

}  // namespace zu
