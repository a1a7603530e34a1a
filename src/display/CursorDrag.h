#pragma once

#include <array>
#include <cstdint>

#include "display/Events.h"
#include "display/HitTest.h"
#include "display/TimeAxis.h"
#include "state/InstrumentState.h"

namespace zu {

/// Samples that a drag of `dx` pixels means at a zoom: tenths above 5 are rounded up.
std::int64_t DragSamples(std::int64_t dx, std::int32_t zoom);
/// Samples that a drag of `dx` pixels in the overview strip means: tenths above 5 are rounded up.
std::int64_t DragSamples(std::int64_t dx, const StripScale& strip);

/// Cursors, as bits, that a held digit moves together: 2 A and B, up to 5 all five; 0 without a digit.
unsigned CursorsOfDigit(const HeldKeys& held);

/// A cursor being dragged, with the cursors that a held digit takes along.
class CursorDrag {
  public:
    void Begin(const InstrumentState& state, int cursor);
    /// Puts the moving cursors at their start plus `delta`, each bounded by 0 and DisplayLen. Cursors whose
    /// digit is pressed on the way start where they are. True if any cursor moved.
    bool Move(InstrumentState& state, std::int64_t delta, const HeldKeys& held);
    [[nodiscard]] int Cursor() const { return cursor_; }
    [[nodiscard]] std::int64_t Delta() const { return delta_; }

  private:
    int cursor_ = 0;
    std::int64_t delta_ = 0;
    unsigned moving_ = 0;
    std::array<std::int64_t, kCursorT + 1> start_{};
};

}  // namespace zu
