#pragma once

#include "ui/serial/CTrafficWnd.h"

class QComboBox;
class QPushButton;

namespace zu {

class CSerialList;

/// The serial window: what to search for, Next, Prev and Filter above the list of I2C or Microwire events.
class CSerialWnd final : public CTrafficWnd {
    Q_OBJECT

  public:
    explicit CSerialWnd(CZuView& controller);
    [[nodiscard]] CSerialList& List() { return *list_; }
    void Redraw();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    CSerialWnd(CZuView& controller, CSerialList* list);
    QComboBox* MakeKinds();
    QPushButton* MakeButton(const char* text, const char* name, const char* hint);
    void OpenFilter(const QPushButton& button);
    void OfferGroups();

    CSerialList* list_;
    QPushButton* groups_ = nullptr;  ///< there while no group is a bus
};

}  // namespace zu
