#include "display/SerialListPaint.h"

#include <algorithm>

#include "display/SelectionColor.h"

namespace zu {
namespace {

constexpr std::size_t kTextColor = 0;
constexpr std::size_t kBackground = 1;

}  // namespace

SerialListPaint::SerialListPaint(const InstrumentState& state, const SerialGeom& geom, const SerialGrid& grid,
                                 Canvas& canvas)
    : state_(state), geom_(geom), grid_(grid), canvas_(canvas) {
    canvas.SetFont(FontId::Text);
    canvas.FillRect({0, 0, geom.Width, geom.Height}, state.Screen.ScreenColor[kBackground]);
}

std::optional<std::int32_t> SerialListPaint::BeginRow(std::int32_t sample) {
    const std::int32_t top = grid_.TopOf(rows_);
    if (top >= geom_.Height) return std::nullopt;
    if (geom_.Selected.Holds(sample)) {
        canvas_.FillRect({0, top, geom_.Width, top + grid_.RowHeight}, SelectionColor(state_));
    }
    if (rows_++ == 0) first_ = sample;
    last_ = sample;
    return top;
}

void SerialListPaint::Out(std::int32_t x, std::int32_t y, std::string_view text, Rgb color,
                          std::size_t most) {
    text = text.substr(0, most);
    if (text.empty()) return;
    if (!canvas_.Mono()) canvas_.SetTextColor(color);
    canvas_.TextOut(x, y, text);
}

std::int32_t SerialListPaint::RoomAt(std::int32_t x) const {
    return std::max(geom_.Width - x, 0) / canvas_.FontMetrics().Advance;
}

Rgb SerialListPaint::TextColor() const {
    return state_.Screen.ScreenColor[kTextColor];
}

std::int32_t SerialListPaint::Page(const SampleBar& bar) const {
    return std::max((last_ - first_) / bar.Unit, 1);
}

}  // namespace zu
