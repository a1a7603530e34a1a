#include "display/SerialGrid.h"

#include <algorithm>

namespace zu {

SerialGrid GridOf(const Metrics& metrics, std::int32_t height) {
    constexpr std::int32_t kRowGap = 2;  // pixels between two lines of text
    SerialGrid grid;
    grid.RowHeight = metrics.TextHeight + kRowGap;
    grid.PageRows = std::max(height, 0) / grid.RowHeight;
    return grid;
}

std::optional<std::int32_t> SerialRowAt(const SerialGrid& grid, std::int32_t y) {
    if (y < grid.RowHeight) return std::nullopt;
    const std::int64_t below = std::int64_t{y} - 2 * grid.RowHeight;
    return static_cast<std::int32_t>((10 * below + 9 * grid.RowHeight) / (10 * grid.RowHeight));
}

std::int32_t DrawnRowAt(const SerialGrid& grid, std::int32_t y) {
    return y / grid.RowHeight - (y % grid.RowHeight < 0 ? 1 : 0) - 1;
}

std::int32_t SampleBar::Clamped(std::int64_t sample) const {
    const std::int32_t first = std::max(First, 0);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sample, first, std::max(Last, first)));
}

ScrollRange SampleBar::RangeAt(std::int32_t position) const {
    const std::int32_t first = std::max(First, 0);
    return {first / Unit, std::max(Last, first) / Unit, Clamped(position) / Unit};
}

}  // namespace zu
