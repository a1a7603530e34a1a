#include "display/BusCells.h"

#include <algorithm>

namespace zu {
namespace {

constexpr std::int32_t kChevron = 2;  // pixels that the ends of a cell slant over

}  // namespace

BusCells::BusCells(const RowFrame& row, std::int32_t top, std::int32_t bottom)
    : row_(row), top_(top), bottom_(bottom) {}

std::int32_t BusCells::WidthOf(std::int32_t characters) const {
    return characters * row_.Target.FontMetrics().Advance;
}

void BusCells::Hatch(std::int32_t x0, std::int32_t x1) {
    // One line going up and down: neighbouring columns join into one drawing.
    if (row_.Points.Count() > 0 && x0 != hatched_) Flush();
    bool down = row_.Points.Count() == 0 || row_.Points.Last().Y == top_;
    for (std::int32_t x = x0; x < x1; ++x, down = !down) {
        row_.Points.Add(row_.Target, x, down ? top_ : bottom_);
        row_.Points.Add(row_.Target, x, down ? bottom_ : top_);
    }
    hatched_ = x1;
}

void BusCells::Flush() {
    row_.Points.Draw(row_.Target);
}

void BusCells::Text(std::int32_t x0, std::string_view text) {
    Flush();
    const std::int32_t spare = bottom_ - top_ - row_.Target.TextHeight(row_.Font);
    row_.Target.TextOut(x0, top_ + std::max(spare, 0) / 2, text);
}

void BusCells::Cell(std::int32_t x0, std::int32_t x1, std::string_view text, bool open) {
    Flush();
    Canvas& canvas = row_.Target;
    const std::int32_t middle = top_ + (bottom_ - top_) / 2;
    const std::int32_t left = open ? x0 : x0 + kChevron;
    if (!open) {
        canvas.MoveTo(left, top_);
        canvas.LineTo(x0, middle);
        canvas.LineTo(left, bottom_);
    }
    Text((x1 - canvas.TextWidth(row_.Font, text) - x0) / 2 + x0, text);
    canvas.MoveTo(x1 - kChevron, top_);
    canvas.LineTo(x1, middle);
    canvas.LineTo(x1 - kChevron, bottom_);
    canvas.MoveTo(left, top_);
    canvas.LineTo(x1 - kChevron, top_);
    canvas.MoveTo(left, bottom_);
    canvas.LineTo(x1 - kChevron, bottom_);
}

}  // namespace zu
