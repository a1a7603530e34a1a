#pragma once

#include "display/SpiView.h"
#include "ui/serial/CTrafficList.h"

namespace zu {

/// The list of SPI bytes in the SPI window.
class CSpiList final : public CTrafficList {
    Q_OBJECT

  public:
    explicit CSpiList(CZuView& controller);
    [[nodiscard]] SpiView& View() { return view_; }

  private:
    [[nodiscard]] SerialListView& Logic() override { return view_; }
    [[nodiscard]] const SerialListView& Logic() const override { return view_; }
    [[nodiscard]] SerialResult PaintList(ImageCanvas& canvas) override;

    SpiView view_;
};

}  // namespace zu
