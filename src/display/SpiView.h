#pragma once

#include <cstdint>
#include <string>

#include "display/SerialListView.h"
#include "display/SpiPainter.h"

namespace zu {

/// The list of the bytes of the three SPI slots, below the slots' buttons.
class SpiView final : public SerialListView {
  public:
    SpiView(InstrumentState& state, SerialViewHost& window, Host& host, const Metrics& metrics);

    /// Paints all of the list; the window applies title and scroll range.
    SerialResult Paint(Canvas& canvas) const;

    /// A slot's button: switches it on or off and decodes anew. Without a group it says so and opens the
    /// Group setup.
    void PressSlot(int slot);
    /// Caption of a slot's button, two lines.
    [[nodiscard]] std::string SlotText(int slot) const;
    [[nodiscard]] bool SlotShown(int slot) const;

  protected:
    std::int32_t& Position() override;
    [[nodiscard]] std::int32_t Start() const override;
    [[nodiscard]] std::optional<std::int32_t> RowFrom(std::int32_t sample) const override;
    [[nodiscard]] std::optional<std::int32_t> StartBack(std::int32_t sample) const override;
    [[nodiscard]] std::optional<std::int32_t> ClickedSample(std::int32_t y) const override;
    [[nodiscard]] SampleBar Bar() const override;
    [[nodiscard]] SerialGrid Grid() const override;
    [[nodiscard]] std::string HeaderCells() const override;
    [[nodiscard]] std::string RowCells(std::int32_t sample) const override;
    [[nodiscard]] std::string RowHint(std::int32_t sample) const override;
};

}  // namespace zu
