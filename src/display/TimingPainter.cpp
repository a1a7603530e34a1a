#include "display/TimingPainter.h"

#include <algorithm>
#include <array>
#include <memory>

#include "display/Cells.h"
#include "display/ChannelTrace.h"
#include "display/GroupLine.h"
#include "display/Pixels.h"
#include "display/Scroll.h"
#include "display/Strip.h"
#include "display/TimeText.h"
#include "display/Zoom.h"

namespace zu {
namespace {

constexpr std::size_t kBackground = 1;
constexpr std::size_t kGridColor = 2;
constexpr std::size_t kCenterPen = 5;  // the sixth cursor colour
constexpr std::int32_t kDivision = 50;
constexpr std::int32_t kDash = 3;
constexpr std::int32_t kDashStep = 7;
constexpr std::array<std::string_view, 5> kFlags{"A", "B", "C", "D", "T"};

void VerticalLine(Canvas& canvas, std::int32_t x, std::int32_t top, std::int32_t bottom) {
    canvas.MoveTo(x, top);
    canvas.LineTo(x, bottom);
}

/// One paint of the Timing view.
class TimingPaint {
  public:
    TimingPaint(const InstrumentState& state, const ViewGeom& geom, Canvas& canvas, PaintScratch& scratch)
        : state_(state),
          geom_(geom),
          canvas_(canvas),
          scratch_(scratch),
          layout_(LayoutColumns(state, canvas.FontMetrics().Advance)),
          axis_(AxisOf(state, layout_.DataLeft, geom.Width)) {}

    PaintResult Run() {
        scratch_.Digests.Begin(axis_);
        canvas_.SetFont(FontId::Text);
        canvas_.FillRect({0, 0, geom_.Width + 1, geom_.Height + 1}, state_.Screen.ScreenColor[kBackground]);
        DrawGrid();
        DrawStrip(state_, canvas_, StripOf(state_, layout_.DataLeft, geom_.Width));
        DrawColumnHeaders(state_, canvas_, layout_);
        DrawLines();
        if (axis_.Width() > 0) {
            DrawCenter();
            DrawCursors();
        }
        return {TimingTitle(state_), HorizontalRange(state_), VerticalRange(state_), layout_.DataLeft,
                layout_.Columns};
    }

  private:
    void DrawGrid();
    void DrawLines();
    void DrawLine(const DisplayLine& line, std::int32_t top, std::int32_t height);
    void DrawChannel(const RowFrame& row, const DisplayLine& line);
    void DrawGroup(const RowFrame& row, const DisplayLine& line);
    void DrawCenter();
    void DrawCursors();

    const InstrumentState& state_;
    ViewGeom geom_;
    Canvas& canvas_;
    PaintScratch& scratch_;
    ColumnLayout layout_;
    TimeAxis axis_;
};

void TimingPaint::DrawGrid() {
    if (state_.Timing.TimingGrid == 0 || axis_.Width() == 0) return;
    canvas_.SetPen(PenColor(canvas_, state_.Screen.ScreenColor[kGridColor]));
    const std::int32_t lines = axis_.Width() / kDivision + 2;
    for (std::int32_t line = 0; line < lines; ++line) {
        const std::int32_t x = axis_.Left + line * kDivision;
        for (std::int32_t y = kHeaderHeight + 2; y < geom_.Height; y += kDashStep) {
            VerticalLine(canvas_, x, y, y + kDash);
        }
    }
}

void TimingPaint::DrawLines() {
    std::int32_t y = kHeaderHeight;
    for (std::int32_t index = FirstLine(state_); index < LineCount(state_) && y < geom_.Height; ++index) {
        const std::int32_t height = RowHeight(state_, index, canvas_.FontMetrics());
        if (height > 0) DrawLine(LineAt(state_, index), y, height);
        y += height;
    }
}

void TimingPaint::DrawLine(const DisplayLine& line, std::int32_t top, std::int32_t height) {
    const FontId font = StyleFont(line.Style);
    const RowFrame row{state_, canvas_, scratch_.Points, scratch_.Digests, axis_, top, height, font};
    canvas_.SetFont(font);
    switch (line.Kind) {
        case LineKind::Channel:
            return DrawChannel(row, line);
        case LineKind::Group:
            return DrawGroup(row, line);
        case LineKind::Spacer:
            if (axis_.Width() > 0) {
                canvas_.FillRect({axis_.Left, top, axis_.Right, row.Low()},
                                 state_.Screen.ScreenColor[kGridColor]);
            }
    }
}

void TimingPaint::DrawChannel(const RowFrame& row, const DisplayLine& line) {
    DrawChannelCells(row, layout_, line.Source, scratch_.Measures);
    if (line.Source >= state_.Shape.TotalChannels || axis_.Width() == 0) return;
    const Rgb color = PenColor(canvas_, state_.Channels.ChannelColor[static_cast<std::size_t>(line.Source)]);
    canvas_.SetPen(color);
    DrawChannelTrace(row, line.Source, line.Extra);
}

void TimingPaint::DrawGroup(const RowFrame& row, const DisplayLine& line) {
    const int group = GroupOfSource(line.Source);
    if (IsSpiGroup(state_, group)) return DrawSpiLine(row, layout_, group, scratch_.Measures);
    DrawGroupCells(row, layout_, group);
    if (axis_.Width() > 0) DrawGroupTrace(row, group, line);
}

void TimingPaint::DrawCenter() {
    canvas_.SetPen(PenColor(canvas_, state_.Cursors.CursorColor[kCenterPen]));
    const std::int32_t x = Pixel(axis_.Left + PixelsOfSamples(axis_.Visible() / 2, axis_.Zoom));
    VerticalLine(canvas_, x, kHeaderHeight, geom_.Height);
}

void TimingPaint::DrawCursors() {
    canvas_.SetFont(FontId::Text);
    const Metrics& metrics = canvas_.FontMetrics();
    for (std::size_t cursor = 0; cursor < kFlags.size(); ++cursor) {
        const std::int32_t at = state_.Cursors.Cur[cursor];
        if (!axis_.OnScreen(at)) continue;
        const std::int32_t x = Pixel(axis_.XOf(at));
        const Rgb color = PenColor(canvas_, state_.Cursors.CursorColor[cursor]);
        canvas_.SetPen(color);
        VerticalLine(canvas_, x, kHeaderHeight, geom_.Height);
        canvas_.SetTextColor(color);
        canvas_.TextOut(x - metrics.Advance / 2, kHeaderHeight - metrics.TextHeight, kFlags[cursor]);
    }
}

std::string Bracketed(const char* before, const std::string& division, const char* between,
                      const std::string& acquisition) {
    return before + division + between + acquisition + "]";
}

}  // namespace

std::string TimingTitle(const InstrumentState& state) {
    const bool active = state.Windows.ActiveView == 0;
    if (state.Timing.TimingGrid == 0) return active ? "Timing view(Active window):  " : "Timing view: ";
    const std::int32_t longest = GetLongestBufLen(state.Buffer.BufLen, state.Shape.BufCount);
    const std::int64_t zoom = SafeZoom(state.Timing.ScreenZoom);
    const double rate = RateOf(state);
    if (rate > 0) {
        const double division =
            zoom > 0 ? kDivision / static_cast<double>(zoom) : static_cast<double>(kDivision * -zoom);
        return Bracketed("Timing view:  Time/Div:[", TimeText(division, rate, 1), "] Time/Acq:[",
                         TimeText(std::int64_t{longest}, rate, 1));
    }
    const char* before =
        active ? "Timing view(Active window):  Samples/Div:[" : "Timing view:  Samples/Div:[";
    return Bracketed(before, std::to_string(SamplesInPixels(kDivision, state.Timing.ScreenZoom)) + " ",
                     "] Samples/Acq:[", std::to_string(longest));
}

PaintResult PaintTiming(InstrumentState& state, const ViewGeom& geom, Canvas& canvas, PaintScratch& scratch) {
    state.Timing.TimingDataPos = std::max(state.Timing.TimingDataPos, 0);
    return TimingPaint(state, geom, canvas, scratch).Run();
}

PaintResult PaintTiming(InstrumentState& state, const ViewGeom& geom, Canvas& canvas) {
    const auto scratch = std::make_unique<PaintScratch>();
    return PaintTiming(state, geom, canvas, *scratch);
}

}  // namespace zu
