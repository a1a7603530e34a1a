#include "display/CursorDrag.h"

#include <algorithm>
#include <cstdlib>

namespace zu {
namespace {

constexpr std::int64_t kRoundUpAbove = 5;  // tenths

std::int64_t Rounded(std::int64_t tenths, bool negative) {
    const std::int64_t samples = tenths / 10 + (tenths % 10 > kRoundUpAbove ? 1 : 0);
    return negative ? -samples : samples;
}

}  // namespace

std::int64_t DragSamples(std::int64_t dx, std::int32_t zoom) {
    const std::int64_t z = SafeZoom(zoom);
    return z > 0 ? Rounded(std::abs(dx) * 10 / z, dx < 0) : dx * -z;
}

std::int64_t DragSamples(std::int64_t dx, const StripScale& strip) {
    return strip.Width > 0 ? Rounded(std::abs(dx) * 10 * strip.Longest / strip.Width, dx < 0) : 0;
}

unsigned CursorsOfDigit(const HeldKeys& held) {
    if (held.Five) return 0b11111;
    if (held.Four) return 0b01111;
    if (held.Three) return 0b00111;
    return held.Two ? 0b00011 : 0;
}

void CursorDrag::Begin(const InstrumentState& state, int cursor) {
    cursor_ = cursor;
    delta_ = 0;
    moving_ = 1U << static_cast<unsigned>(cursor);
    std::copy_n(state.Cursors.Cur.begin(), start_.size(), start_.begin());
}

bool CursorDrag::Move(InstrumentState& state, std::int64_t delta, const HeldKeys& held) {
    const unsigned own = 1U << static_cast<unsigned>(cursor_);
    unsigned moving = CursorsOfDigit(held);
    if ((moving & own) == 0) moving = own;
    bool moved = false;
    for (std::size_t i = 0; i < start_.size(); ++i) {
        const unsigned bit = 1U << i;
        if ((moving & bit) == 0) continue;
        std::int32_t& at = state.Cursors.Cur[i];
        if ((moving_ & bit) == 0) start_[i] = at - delta_;
        const std::int64_t most = std::max(state.Memory.DisplayLen, 0);
        const auto to = static_cast<std::int32_t>(std::clamp<std::int64_t>(start_[i] + delta, 0, most));
        moved = moved || to != at;
        at = to;
    }
    moving_ = moving;
    delta_ = delta;
    return moved;
}

}  // namespace zu
