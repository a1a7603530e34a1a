#include "display/ChannelTrace.h"

#include "display/Pixels.h"
#include "display/TraceLabels.h"
#include "state/SampleView.h"

namespace zu {
namespace {

constexpr std::int32_t kOverhang = 5;  // pixels that a trace runs on beyond the right edge

std::uint8_t MaskOf(int channel) {
    return static_cast<std::uint8_t>(1U << (static_cast<unsigned>(channel) % 8));
}

void Step(const RowFrame& row, std::int32_t x, bool from, bool to) {
    row.Points.Add(row.Target, x, row.Level(from));
    row.Points.Add(row.Target, x, row.Level(to));
}

/// One pixel a sample.
void TraceOne(const RowFrame& row, const SampleView& view, std::uint8_t mask) {
    const TimeAxis& axis = row.Axis;
    bool level = (view.At(axis.First) & mask) != 0;
    row.Points.Add(row.Target, axis.Left, row.Level(level));
    std::int32_t i = 1;
    for (; axis.Left + i < axis.Right + kOverhang && view.Has(axis.First + i); ++i) {
        const bool now = (view.At(axis.First + i) & mask) != 0;
        const std::int32_t x = axis.Left + i;
        if (now == level && x != axis.Right) continue;
        Step(row, x, level, now);
        level = now;
    }
    row.Points.Add(row.Target, axis.Left + i, row.Level(level));
}

/// Several pixels a sample. A flat run is closed off the right edge by a point of its own.
void TraceWide(const RowFrame& row, const SampleView& view, std::uint8_t mask, TraceLabels& labels) {
    const TimeAxis& axis = row.Axis;
    const std::int64_t pixels = axis.Zoom;
    bool level = (view.At(axis.First) & mask) != 0;
    bool closed = false;
    row.Points.Add(row.Target, axis.Left, row.Level(level));
    std::int64_t i = 1;
    for (; axis.Left + i * pixels <= axis.Right + kOverhang + pixels && view.Has(axis.First + i); ++i) {
        const bool now = (view.At(axis.First + i) & mask) != 0;
        const std::int32_t x = Pixel(axis.Left + i * pixels);
        if (now != level) {
            labels.Change(i, x, now);
            Step(row, x, level, now);
        } else if (!closed && x >= axis.Right + kOverhang) {
            row.Points.Add(row.Target, x, row.Level(level));
            closed = true;
        }
        level = now;
    }
    row.Points.Add(row.Target, Pixel(axis.Left + i * pixels), row.Level(level));
}

/// Several samples a pixel. A column in which the level changes at all is a full stroke, however short the
/// pulse was, and ends at the level of its last sample.
void TraceCompressed(const RowFrame& row, const ColumnDigest& digest, std::uint8_t mask) {
    if (digest.Columns == 0) return;
    bool level = (digest.First & mask) != 0;
    std::int32_t x = row.Axis.Left;
    row.Points.Add(row.Target, x, row.Level(level));
    for (std::size_t column = 0; column < digest.Changed.size(); ++column, ++x) {
        if ((digest.Changed[column] & mask) == 0) continue;
        Step(row, x, level, !level);
        level = !level;
        if (((digest.Last[column] & mask) != 0) == level) continue;
        Step(row, x, level, !level);
        level = !level;
    }
    row.Points.Add(row.Target, x - 1, row.Level(level));
}

}  // namespace

void DrawChannelTrace(const RowFrame& row, int channel, LineExtra extra) {
    if (channel < 0 || channel >= kMaxChannels) return;
    const std::uint8_t mask = MaskOf(channel);
    if (row.Axis.Zoom < 0) {
        TraceCompressed(row, row.Digests.Of(row.State, channel / 8), mask);
        row.Points.Draw(row.Target);
        return;
    }
    const SampleView view = BindChannel(row.State, channel);
    if (ShownSamples(row.Axis.First, row.Axis.Zoom, row.Axis.Width(), view.Shown) == 0) return;
    if (row.Axis.Zoom == 1) {
        TraceOne(row, view, mask);
    } else {
        TraceLabels labels(row.State, row.Target, row.Top, extra, row.Font);
        TraceWide(row, view, mask, labels);
    }
    row.Points.Draw(row.Target);
}

}  // namespace zu
