#pragma once

#include "display/SerialView.h"
#include "ui/serial/CTrafficList.h"

namespace zu {

/// The list of I2C or Microwire events in the serial window.
class CSerialList final : public CTrafficList {
    Q_OBJECT

  public:
    explicit CSerialList(CZuView& controller);
    [[nodiscard]] SerialView& View() { return view_; }

  private:
    [[nodiscard]] SerialListView& Logic() override { return view_; }
    [[nodiscard]] const SerialListView& Logic() const override { return view_; }
    [[nodiscard]] SerialResult PaintList(ImageCanvas& canvas) override;

    SerialView view_;
};

}  // namespace zu
