#include "display/TraceLabels.h"

#include <array>
#include <cstdio>

#include "display/TimeText.h"

namespace zu {
namespace {

struct FrequencyUnit {
    double Above;
    double Factor;
    const char* Name;
};
constexpr std::array<FrequencyUnit, 6> kFrequencyUnits{{
    {1e6, 1e-6, "MHz"},
    {1e3, 1e-3, "KHz"},
    {1e-3, 1, "Hz"},
    {1e-6, 1e3, "mHz"},
    {1e-9, 1e6, "uHz"},
    {-1, 1e9, "nHz"},
}};

}  // namespace

std::string FrequencyText(double hertz, int decimals) {
    std::array<char, 384> text{};
    for (const FrequencyUnit& unit : kFrequencyUnits) {
        if (hertz <= unit.Above) continue;
        std::snprintf(text.data(), text.size(), "%5.*f%s", decimals, hertz * unit.Factor, unit.Name);
        break;
    }
    return text.data();
}

TraceLabels::TraceLabels(const InstrumentState& state, Canvas& canvas, std::int32_t top, LineExtra extra,
                         FontId rowFont)
    : canvas_(canvas), rate_(RateOf(state)), top_(top), extra_(extra), rowFont_(rowFont) {}

void TraceLabels::Change(std::int64_t at, std::int32_t x, bool one) {
    switch (extra_) {
        case LineExtra::PulseWidth:
            if (started_) Width(at, x);
            break;
        case LineExtra::FrequencyFalling:
        case LineExtra::FrequencyRising:
            if (one != (extra_ == LineExtra::FrequencyRising)) return;
            if (started_) Frequency(at, x);
            break;
        default:
            return;
    }
    started_ = true;
    from_ = at;
    fromX_ = x;
}

void TraceLabels::Width(std::int64_t at, std::int32_t x) {
    std::array<char, 32> samples{};
    if (rate_ > 0) {
        Write(x, rowFont_, TimeText(at - from_, rate_, kTimeRateUnit));
        return;
    }
    std::snprintf(samples.data(), samples.size(), "%.2fSa", static_cast<double>(at - from_));
    Write(x, rowFont_, samples.data());
}

void TraceLabels::Frequency(std::int64_t at, std::int32_t x) {
    if (rate_ <= 0) return;
    canvas_.SetFont(FontId::Label);
    Write(x, FontId::Label, FrequencyText(1e9 / (static_cast<double>(at - from_) * rate_), 1));
}

void TraceLabels::Write(std::int32_t right, FontId font, const std::string& text) {
    const std::int32_t width = canvas_.TextWidth(font, text);
    if (width > right - fromX_) return;
    canvas_.TextOut(fromX_ + (right - fromX_ - width) / 2, top_ + 1, text);
}

}  // namespace zu
