#include "display/HitTest.h"

#include <algorithm>
#include <cstdlib>

#include "display/Pixels.h"

namespace zu {
namespace {

constexpr std::int32_t kCursorReach = 4;  // pixels
constexpr std::int32_t kTickReach = 2;

/// The nearest of five places within `reach`; the earlier of two at the same distance.
template <typename Distance>
int Nearest(std::int64_t reach, Distance&& distance) {
    int best = -1;
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        const std::int64_t d = distance(cursor);
        if (d > reach || (best >= 0 && d >= distance(best))) continue;
        best = cursor;
    }
    return best;
}

std::int64_t PositionOf(const InstrumentState& state, int cursor) {
    return state.Cursors.Cur[static_cast<std::size_t>(cursor)];
}

std::int32_t HitHeight(const InstrumentState& state, std::int32_t line, LineKind kind,
                       const Metrics& metrics) {
    return kind == LineKind::Spacer ? TextRowHeight(metrics) : RowHeight(state, line, metrics);
}

}  // namespace

std::optional<LineHit> LineAtY(const InstrumentState& state, const Metrics& metrics, std::int32_t y) {
    std::int32_t top = kHeaderHeight;
    for (std::int32_t index = FirstLine(state); index < LineCount(state) && top <= y; ++index) {
        const DisplayLine line = LineAt(state, index);
        const std::int32_t height = HitHeight(state, index, line.Kind, metrics);
        if (y >= top && y < top + height) {
            const int number = line.Kind == LineKind::Channel ? line.Source : GroupOfSource(line.Source);
            return LineHit{index, line.Kind, number, top, height};
        }
        top += height;
    }
    return std::nullopt;
}

int ColumnAtX(const ColumnLayout& layout, std::int32_t x) {
    for (int column = 0; column < kTimingColumns; ++column) {
        const ColumnSpan& span = layout.Columns[static_cast<std::size_t>(column)];
        if (x >= span.Start && x < span.End) return column;
    }
    return -1;
}

int CursorNear(const InstrumentState& state, const TimeAxis& axis, std::int32_t x) {
    const std::int64_t zoom = SafeZoom(axis.Zoom);
    const std::int64_t under = axis.SampleAt(x);
    // Below zoom 0 distance counts in samples; above it in pixels, and the whole width of a sample is near.
    return Nearest(zoom > 0 ? kCursorReach : kCursorReach * -zoom, [&](int cursor) {
        const std::int64_t at = PositionOf(state, cursor);
        if (!axis.OnScreen(at)) return INT64_MAX;
        if (zoom < 0) return std::abs(at - under);
        return at == under ? std::min<std::int64_t>(x - axis.XOf(at), kCursorReach)
                           : std::abs(axis.XOf(at) - x);
    });
}

std::int32_t StripScale::XOf(std::int64_t sample) const {
    return Pixel(Left + sample * Width / Longest);
}

std::int64_t StripScale::SampleAt(std::int32_t x) const {
    return Width > 0 ? (std::int64_t{x} - Left) * Longest / Width : 0;
}

StripScale StripOf(const InstrumentState& state, std::int32_t dataLeft, std::int32_t right) {
    const std::int32_t longest = GetLongestBufLen(state.Buffer.BufLen, state.Shape.BufCount);
    return {dataLeft, std::max(right - dataLeft, 0), std::max(longest, 1)};
}

StripBox BoxOf(const InstrumentState& state, const StripScale& strip, std::int32_t stripHeight) {
    const std::int64_t first = std::max(state.Timing.TimingDataPos, 0);
    const std::int64_t last = first + SamplesInPixels(strip.Width, state.Timing.ScreenZoom);
    return {strip.XOf(first), strip.XOf(last), stripHeight * 15 / 100, stripHeight * 85 / 100};
}

int TickNear(const InstrumentState& state, const StripScale& strip, std::int32_t x) {
    if (strip.Width <= 0) return -1;
    return Nearest(kTickReach, [&](int cursor) {
        return std::abs(std::int64_t{strip.XOf(PositionOf(state, cursor))} - x);
    });
}

}  // namespace zu
