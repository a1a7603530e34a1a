#pragma once

#include <cstdint>
#include <string>

#include "display/SerialListView.h"
#include "display/SerialPainter.h"
#include "serial/SerialRows.h"

namespace zu {

/// The list of I2C or Microwire events.
class SerialView final : public SerialListView {
  public:
    SerialView(InstrumentState& state, SerialViewHost& window, Host& host, const Metrics& metrics);

    /// Paints all of the list; the window applies title and scroll range.
    SerialResult Paint(Canvas& canvas) const;

    /// The Next and Prev buttons look for SearchKind; false with a message if there is no such event that
    /// way.
    bool Search(SearchWay way);
    /// The Filter button: shows its menu at a point of the view and carries out the choice.
    void OpenFilter(std::int32_t x, std::int32_t y);

    /// The column with each I2C transfer as one line; it is on at first.
    void ShowTransfers(bool on);
    [[nodiscard]] bool ShowsTransfers() const { return geom_.Transfers; }

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
