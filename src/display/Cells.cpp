#include "display/Cells.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "display/TimeText.h"
#include "display/TraceLabels.h"
#include "state/SampleView.h"
#include "trigger/Sequence.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr std::array<std::string_view, 5> kCursorLetters{"A", "B", "C", "D", "T"};
constexpr std::string_view kNoMeasurement = "         ";  // nine blanks on a group line
constexpr std::int8_t kLogicPod = 0;
constexpr std::int8_t kUnusedPod = 4;

template <typename... Args>
std::string Format(const char* format, Args... args) {
    std::array<char, 384> text{};
    std::snprintf(text.data(), text.size(), format, args...);
    return text.data();
}

/// Text that does not leave its column: all screen fonts advance alike, so cutting characters is exact.
void CellOut(Canvas& canvas, const ColumnSpan& span, std::int32_t y, std::string_view text) {
    const std::int32_t advance = std::max(canvas.FontMetrics().Advance, 1);
    const auto room = static_cast<std::size_t>(std::max((span.End - span.Start) / advance, 0));
    text = text.substr(0, room);
    if (!text.empty()) canvas.TextOut(span.Start, y, text);
}

void CellColor(Canvas& canvas, Rgb color) {
    if (!canvas.Mono()) canvas.SetTextColor(color);
}

void DrawCursorValues(const RowFrame& row, const ColumnSpan& span, int channel) {
    const SampleView view = BindChannel(row.State, channel);
    const unsigned bit = static_cast<unsigned>(channel) % 8;
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        const auto c = static_cast<std::size_t>(cursor);
        const std::int32_t at = row.State.Cursors.Cur[c];
        // A cursor at sample 0 is valid and still shows nothing.
        if (at <= 0 || at >= row.State.Memory.DisplayLen || !view.Has(at)) continue;
        CellColor(row.Target, row.State.Cursors.CursorColor[c]);
        const bool one = (view.At(at) >> bit & 1U) != 0;
        row.Target.TextOut(span.Start + cursor * row.Target.FontMetrics().Advance, row.Top, one ? "1" : "0");
    }
}

void DrawTrigWordHeader(const InstrumentState& state, Canvas& canvas, const ColumnSpan& span, int column) {
    const Metrics& metrics = canvas.FontMetrics();
    const int level = state.Timing.TimingDisp[static_cast<std::size_t>(column)].TrigWord;
    canvas.TextOut(span.Start, HeaderLineY(metrics, 0), "+");
    canvas.TextOut(span.Start, HeaderLineY(metrics, 1), "-");
    canvas.TextOut(span.Start + metrics.Advance, HeaderLineY(metrics, 0), Format("%d", level));
}

void DrawCursorHeader(const InstrumentState& state, Canvas& canvas, const ColumnSpan& span) {
    const Metrics& metrics = canvas.FontMetrics();
    for (std::size_t cursor = 0; cursor < kCursorLetters.size(); ++cursor) {
        CellColor(canvas, state.Cursors.CursorColor[cursor]);
        canvas.TextOut(span.Start + static_cast<std::int32_t>(cursor) * metrics.Advance,
                       HeaderLineY(metrics, 0), kCursorLetters[cursor]);
    }
    CellColor(canvas, state.Screen.ScreenColor[0]);
}

void DrawHeader(const InstrumentState& state, Canvas& canvas, const ColumnSpan& span, int column) {
    const ColumnType type = TypeOfColumn(state, column);
    if (type == ColumnType::TrigWord) return DrawTrigWordHeader(state, canvas, span, column);
    if (type == ColumnType::CursorValues) return DrawCursorHeader(state, canvas, span);
    const Metrics& metrics = canvas.FontMetrics();
    CellOut(canvas, span, HeaderLineY(metrics, 0), kColumnTypes[static_cast<std::size_t>(type)].Header);
    if (IsMeasurement(type))
        CellOut(canvas, span, HeaderLineY(metrics, 1), RangeOfColumn(state, column).Text);
}

std::string ChannelName(const InstrumentState& state, int channel) {
    const auto c = static_cast<std::size_t>(channel);
    std::string name = state.Channels.ChannelInvert[c] != 0 ? "~" : "";
    return name.append(state.Channels.ChannelName[c].View());
}

void DrawChannelCell(const RowFrame& row, const ColumnSpan& span, int column, int channel,
                     MeasureCache& measures) {
    const InstrumentState& state = row.State;
    const ColumnType type = TypeOfColumn(state, column);
    switch (type) {
        case ColumnType::Off:
            return;
        case ColumnType::ChanNum:
            return CellOut(row.Target, span, row.Top, Format("%d", channel));
        case ColumnType::ChanName:
            return CellOut(row.Target, span, row.Top, ChannelName(state, channel));
        case ColumnType::TrigWord:
            return CellOut(
                row.Target, span, row.Top,
                TrigWordCell(state, state.Timing.TimingDisp[static_cast<std::size_t>(column)].TrigWord,
                             channel));
        case ColumnType::CursorValues:
            DrawCursorValues(row, span, channel);
            return CellColor(row.Target, state.Channels.ChannelColor[static_cast<std::size_t>(channel)]);
        default: {
            const SampleRange range = RangeBounds(state, column, channel / 8);
            return CellOut(row.Target, span, row.Top,
                           MeasurementText(state, type, measures.Get(state, channel, range)));
        }
    }
}

void DrawNameCell(const RowFrame& row, const ColumnSpan& span, int column, int group) {
    const ColumnType type = TypeOfColumn(row.State, column);
    const GroupRecord& record = row.State.Groups[static_cast<std::size_t>(group)];
    if (type == ColumnType::ChanNum) CellOut(row.Target, span, row.Top, Format("G%d", group + 1));
    if (type == ColumnType::ChanName) CellOut(row.Target, span, row.Top, record.Name.View());
}

void DrawGroupCell(const RowFrame& row, const ColumnSpan& span, int column, int group) {
    const ColumnType type = TypeOfColumn(row.State, column);
    const GroupRecord& record = row.State.Groups[static_cast<std::size_t>(group)];
    DrawNameCell(row, span, column, group);
    if (IsMeasurement(type)) return CellOut(row.Target, span, row.Top, kNoMeasurement);
    if (type != ColumnType::TrigWord) return;
    row.Target.SetPen(PenColor(row.Target, record.Color));
    row.Target.MoveTo(span.Start, row.Top);
    row.Target.LineTo(span.End, row.Low());
    row.Target.MoveTo(span.Start, row.Low());
    row.Target.LineTo(span.End, row.Top);
}

std::string PeriodText(const InstrumentState& state, const ChannelMeasure& measure) {
    const std::int64_t span = measure.LastEdge - measure.FirstEdge;
    if (span <= 0 || measure.Count == 0) return "0";
    if (TimeKnown(state)) return TimeText(span / measure.Count, RateOf(state), kTimeRateUnit);
    return Format("%.2fSa", static_cast<double>(span) / measure.Count);
}

std::string FrequencyCell(const InstrumentState& state, const ChannelMeasure& measure) {
    const std::int64_t span = measure.LastEdge - measure.FirstEdge;
    if (!TimeKnown(state) || span <= 0) return "-N/A-";
    return FrequencyText(measure.Count / (static_cast<double>(span) * RateOf(state) / 1e9), 3);
}

std::string DutyText(std::int64_t part, const ChannelMeasure& measure) {
    const std::int64_t sum = measure.DutyHigh + measure.DutyLow;
    if (sum < 1) return "-";
    return Format("%.2f%%", 100.0 * static_cast<double>(part) / static_cast<double>(sum));
}

std::string WidthText(const InstrumentState& state, double samples) {
    if (samples <= 0) return "-";
    if (TimeKnown(state)) return TimeText(samples, RateOf(state), kTimeRateUnit);
    return Format("%.2fSa", samples);
}

double Average(const ChannelMeasure::Widths& widths) {
    return widths.Count == 0 ? 0.0 : static_cast<double>(widths.Sum) / static_cast<double>(widths.Count);
}

}  // namespace

std::string MeasurementText(const InstrumentState& state, ColumnType type, const ChannelMeasure& measure) {
    switch (type) {
        case ColumnType::Count:
            return Format("%d", measure.Count);
        case ColumnType::DutyFalling:
            return DutyText(measure.DutyLow, measure);
        case ColumnType::DutyRising:
            return DutyText(measure.DutyHigh, measure);
        case ColumnType::Frequency:
            return FrequencyCell(state, measure);
        case ColumnType::Period:
            return PeriodText(state, measure);
        case ColumnType::AvgWidth0:
            return WidthText(state, Average(measure.Low));
        case ColumnType::AvgWidth1:
            return WidthText(state, Average(measure.High));
        case ColumnType::MinWidth0:
            return WidthText(state, static_cast<double>(measure.Low.Minimum));
        case ColumnType::MinWidth1:
            return WidthText(state, static_cast<double>(measure.High.Minimum));
        case ColumnType::MaxWidth0:
            return WidthText(state, static_cast<double>(measure.Low.Maximum));
        case ColumnType::MaxWidth1:
            return WidthText(state, static_cast<double>(measure.High.Maximum));
        default:
            return {};
    }
}

std::string TrigWordCell(const InstrumentState& state, int level, int channel) {
    if (channel < 0 || channel >= std::min(state.Shape.TotalChannels, kMaxChannels)) return {};
    const std::int8_t mode = state.Pods.HardwarePod[static_cast<std::size_t>(channel / 8)];
    if (IsPatternMode(mode)) return "PG";
    const auto word = WordOfLevel(state, level);
    if ((mode != kLogicPod && mode != kUnusedPod) || !word) return {};
    if (state.Trigger.ModeList[static_cast<std::size_t>(level)] == 1) return "D";
    return {CharOfChannel(state, channel, *word)};
}

void DrawColumnHeaders(const InstrumentState& state, Canvas& canvas, const ColumnLayout& layout) {
    CellColor(canvas, state.Screen.ScreenColor[0]);
    for (int column = 0; column < kTimingColumns; ++column) {
        DrawHeader(state, canvas, layout.Columns[static_cast<std::size_t>(column)], column);
    }
}

void DrawChannelCells(const RowFrame& row, const ColumnLayout& layout, int channel, MeasureCache& measures) {
    if (channel < 0 || channel >= kMaxChannels) return;
    CellColor(row.Target, row.State.Channels.ChannelColor[static_cast<std::size_t>(channel)]);
    for (int column = 0; column < kTimingColumns; ++column) {
        DrawChannelCell(row, layout.Columns[static_cast<std::size_t>(column)], column, channel, measures);
    }
}

void DrawGroupName(const RowFrame& row, const ColumnLayout& layout, int group) {
    if (group < 0 || group >= kGroupCount) return;
    CellColor(row.Target, row.State.Groups[static_cast<std::size_t>(group)].Color);
    for (int column = 0; column < kTimingColumns; ++column) {
        DrawNameCell(row, layout.Columns[static_cast<std::size_t>(column)], column, group);
    }
}

void DrawGroupCells(const RowFrame& row, const ColumnLayout& layout, int group) {
    if (group < 0 || group >= kGroupCount) return;
    CellColor(row.Target, row.State.Groups[static_cast<std::size_t>(group)].Color);
    for (int column = 0; column < kTimingColumns; ++column) {
        DrawGroupCell(row, layout.Columns[static_cast<std::size_t>(column)], column, group);
    }
}

}  // namespace zu
