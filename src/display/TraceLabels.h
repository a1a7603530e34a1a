#pragma once

#include <cstdint>
#include <string>

#include "display/Canvas.h"
#include "display/Lines.h"
#include "state/InstrumentState.h"

namespace zu {

/// A frequency with its unit: "%5.<decimals>f" and MHz, KHz, Hz, mHz, uHz or nHz.
std::string FrequencyText(double hertz, int decimals);

/// Writes widths of pulses or frequencies beside a trace while it is being walked.
class TraceLabels {
  public:
    TraceLabels(const InstrumentState& state, Canvas& canvas, std::int32_t top, LineExtra extra,
                FontId rowFont);

    /// The level became `one` at sample `at`, counted from the trace's start, at x.
    void Change(std::int64_t at, std::int32_t x, bool one);

  private:
    void Width(std::int64_t at, std::int32_t x);
    void Frequency(std::int64_t at, std::int32_t x);
    void Write(std::int32_t right, FontId font, const std::string& text);

    Canvas& canvas_;
    double rate_;
    std::int32_t top_;
    LineExtra extra_;
    FontId rowFont_;
    bool started_ = false;   ///< an edge to count from was seen
    std::int64_t from_ = 0;  ///< its sample and x
    std::int32_t fromX_ = 0;
};

}  // namespace zu
