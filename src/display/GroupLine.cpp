#include "display/GroupLine.h"

#include <algorithm>
#include <cmath>

#include "display/BusCells.h"
#include "display/GroupScan.h"
#include "display/GroupValue.h"
#include "display/Pixels.h"

namespace zu {
namespace {

constexpr std::int64_t kMostSamples = 13499;  // of a group line above zoom 0
constexpr std::int64_t kMostPoints = 13498;   // of a curve below zoom 0
constexpr std::int64_t kPointsPerColumn = 3;

/// The steps of a group line along x: single samples, or the columns of a zoom below 0.
struct Steps {
    std::int64_t First = 0;   ///< sample of step 0
    std::int64_t Stride = 1;  ///< samples per step
    std::int64_t Count = 0;
    std::int32_t Pixels = 1;  ///< per step
};

/// Samples beyond the whole ones on screen that a zoom above 1 takes: one that is cut by the right edge, and
/// for a curve the next one, which its line runs to.
constexpr std::int64_t kCutSample = 1;
constexpr std::int64_t kCutSegment = 2;

Steps StepsOf(const TimeAxis& axis, std::int64_t length, std::int64_t beyond = kCutSample) {
    if (axis.Zoom < 0) {
        const ColumnGrid grid = GridOf(axis, length);
        return {grid.Start, grid.Width, std::min(grid.Columns, kMostSamples), 1};
    }
    const std::int64_t shown = ShownSamples(axis.First, axis.Zoom, axis.Width(), length);
    const std::int64_t more = axis.Zoom > 1 ? beyond : 0;
    const std::int64_t reach = shown > 0 ? std::min(shown + more, length - axis.First) : 0;
    return {axis.First, 1, std::min(reach, kMostSamples), axis.Zoom};
}

/// One text line: runs of equal values as cells.
class TextLine {
  public:
    TextLine(const RowFrame& row, const GroupRecord& group, GroupFormat format)
        : row_(row),
          group_(group),
          format_(format),
          reader_(row.State, group),
          steps_(StepsOf(row.Axis, reader_.Length())),
          cells_(row, row.Top, row.Top + row.Height - kRowPad) {}

    void Draw() {
        if (steps_.Count == 0) return;
        std::int64_t start = 0;
        GroupValue value = reader_.At(steps_.First);
        bool open = steps_.First > 0 && reader_.At(steps_.First - 1) == value;
        for (std::int64_t step = 1; step < steps_.Count; ++step) {
            const GroupValue next = reader_.At(steps_.First + step * steps_.Stride);
            if (next == value) continue;
            DrawRun(start, step, value, open);
            start = step;
            value = next;
            open = false;
        }
        DrawRun(start, steps_.Count, value, open);
    }

  private:
    void DrawRun(std::int64_t from, std::int64_t to, const GroupValue& value, bool open) {
        const std::int32_t x0 = Pixel(row_.Axis.Left + from * steps_.Pixels);
        const std::int32_t x1 = std::min(Pixel(row_.Axis.Left + to * steps_.Pixels), row_.Axis.Right);
        if (cells_.WidthOf(LeastTextLength(group_, format_)) > x1 - x0) return cells_.Hatch(x0, x1);
        const std::string text = GroupText(row_.State, group_, value, format_);
        if (row_.Target.TextWidth(row_.Font, text) > x1 - x0) return cells_.Hatch(x0, x1);
        if (to - from == 1) return cells_.Text(x0, text);
        cells_.Cell(x0, x1, text, open);
    }

    const RowFrame& row_;
    const GroupRecord& group_;
    GroupFormat format_;
    GroupReader reader_;
    Steps steps_;
    BusCells cells_;
};

void DrawOverlay(const RowFrame& row, const GroupRecord& group) {
    for (std::int32_t i = 0; i < GroupSize(group); ++i) {
        const std::int32_t channel = group.Channels[static_cast<std::size_t>(i)];
        if (channel < 0 || channel >= std::min(row.State.Shape.TotalChannels, kMaxChannels)) continue;
        const Rgb color = row.State.Channels.ChannelColor[static_cast<std::size_t>(channel)];
        row.Target.SetPen(PenColor(row.Target, color));
        DrawChannelTrace(row, channel);
    }
}

void DrawDifference(const RowFrame& row, const GroupRecord& group) {
    const GroupScan scan(row.State, group);
    const Steps steps = StepsOf(row.Axis, scan.Length());
    const auto bar = [&](std::int64_t from, std::int64_t to) {
        if (from == to) return;
        const std::int32_t x0 = Pixel(row.Axis.Left + from * steps.Pixels);
        const std::int32_t x1 = std::min(Pixel(row.Axis.Left + to * steps.Pixels), row.Axis.Right);
        row.Target.FillRect({x0, row.High(), x1, row.Low()}, PenColor(row.Target, group.Color));
    };
    std::int64_t start = 0;
    for (std::int64_t step = 0; step < steps.Count; ++step) {
        const std::int64_t at = steps.First + step * steps.Stride;
        if (scan.Disagrees(at, at + steps.Stride)) continue;
        bar(start, step);
        start = step + 1;
    }
    bar(start, steps.Count);
}

/// The group's value as a curve.
class Curve {
  public:
    Curve(const RowFrame& row, const GroupRecord& group, int style)
        : row_(row),
          scan_(row.State, group),
          steps_(StepsOf(row.Axis, scan_.Length(), kCutSegment)),
          scale_(VerticalScale(style, GroupSize(group))) {
        base_ = row.Top + row.Height - kRowPad - 2;
        const std::int32_t bits = std::min(GroupSize(group), kGroupValueBits);
        if (group.TwosComplement != 0) base_ -= std::ldexp(1.0, bits - 1) / scale_;
    }

    void Draw() {
        row_.Axis.Zoom < 0 ? DrawColumns() : DrawSamples();
        row_.Points.Draw(row_.Target);
    }

  private:
    [[nodiscard]] std::int32_t Y(std::int64_t value) const {
        return static_cast<std::int32_t>(base_ - std::trunc(static_cast<double>(value) / scale_));
    }
    void DrawSamples() {
        for (std::int64_t step = 0; step < steps_.Count; ++step) {
            row_.Points.AddIfRoom(Pixel(row_.Axis.Left + step * steps_.Pixels),
                                  Y(scan_.At(steps_.First + step)));
        }
        constexpr std::size_t kEnoughToDouble = 4;
        if (row_.Points.Count() < kEnoughToDouble) return;
        const Point last = row_.Points.Last();
        row_.Points.AddIfRoom(last.X, last.Y);
    }
    void DrawColumns() {
        const std::int64_t columns = std::min(steps_.Count, kMostPoints / kPointsPerColumn);
        for (std::int64_t step = 0; step < columns; ++step) {
            const std::int64_t from = steps_.First + step * steps_.Stride;
            const std::int64_t to = from + steps_.Stride;
            const GroupScan::Extent extent = scan_.ExtentOf(from, to);
            const std::int32_t x = Pixel(row_.Axis.Left + step);
            row_.Points.AddIfRoom(x, Y(extent.Minimum));
            row_.Points.AddIfRoom(x, Y(extent.Maximum));
            row_.Points.AddIfRoom(x, Y(scan_.At(to - 1)));
        }
    }

    const RowFrame& row_;
    GroupScan scan_;
    Steps steps_;
    double scale_;
    double base_;  ///< y of the value 0
};

}  // namespace

void DrawGroupTrace(const RowFrame& row, int group, const DisplayLine& line) {
    if (group < 0 || group >= kGroupCount) return;
    const GroupRecord& record = row.State.Groups[static_cast<std::size_t>(group)];
    row.Target.SetPen(PenColor(row.Target, record.Color));
    if (line.Style < kFirstTimingStyle) {
        TextLine(row, record, static_cast<GroupFormat>(line.Style)).Draw();
    } else if (line.Extra == LineExtra::Overlay) {
        DrawOverlay(row, record);
    } else if (line.Extra == LineExtra::Difference) {
        DrawDifference(row, record);
    } else {
        Curve(row, record, line.Style).Draw();
    }
}

}  // namespace zu
