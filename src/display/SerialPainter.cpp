#include "display/SerialPainter.h"

#include <algorithm>
#include <string>

#include "display/TimeText.h"
#include "serial/EventCodes.h"
#include "serial/EventText.h"
#include "serial/RowCursors.h"
#include "serial/SerialRows.h"

namespace zu {
namespace {

constexpr std::size_t kTextColor = 0;
constexpr std::size_t kBackground = 1;
constexpr std::int8_t kModeMicrowire = 2;

bool IsMicrowire(const InstrumentState& state) {
    return state.Serial.SerialMode == kModeMicrowire;
}

std::string PlaceText(const InstrumentState& state, std::int32_t sample) {
    if (IsMicrowire(state) || !TimeKnown(state)) return std::to_string(sample);
    return TimeText(std::int64_t{sample}, RateOf(state), kTimeRateUnit);
}

void DrawHeader(const InstrumentState& state, const SerialLayout& layout, Canvas& canvas) {
    if (!canvas.Mono()) canvas.SetTextColor(state.Screen.ScreenColor[kTextColor]);
    const bool microwire = IsMicrowire(state);
    canvas.TextOut(layout.Columns[0], 0, microwire ? "Address" : "Location");
    canvas.TextOut(layout.Columns[1], 0, microwire ? "Microwire" : "I2C");
}

void DrawRow(const InstrumentState& state, const SerialLayout& layout, const SerialRow& row, std::int32_t top,
             Canvas& canvas) {
    const bool marked = row.Cursor >= 0;
    const auto cursor = static_cast<std::size_t>(std::max(row.Cursor, 0));
    const Rgb color = marked ? state.Cursors.CursorColor[cursor] : state.Screen.ScreenColor[kTextColor];
    if (!canvas.Mono()) canvas.SetTextColor(color);
    canvas.TextOut(layout.Columns[0], top, PlaceText(state, row.Sample));
    if (row.Code != event::kNone) {
        canvas.TextOut(layout.Columns[1], top, SerialRowText(state, row.Sample));
    }
    if (!marked) return;
    canvas.TextOut(layout.Columns[2], top, kRowCursorTexts[cursor]);
    const std::int32_t line = top + layout.RowHeight - 1;
    if (!canvas.Mono()) canvas.SetPen(color);
    canvas.MoveTo(layout.Columns[0], line);
    canvas.LineTo(layout.Columns[2], line);
}

}  // namespace

SerialLayout LayoutSerial(const Metrics& metrics, std::int32_t height) {
    constexpr std::int32_t kLeft = 5;
    constexpr std::int32_t kColumnCharacters = 13;
    const std::int32_t step = kColumnCharacters * metrics.Advance;
    SerialLayout layout;
    layout.RowHeight = metrics.TextHeight + 2;
    layout.Columns = {kLeft, kLeft + step, kLeft + 2 * step};
    layout.PageRows = std::max(height, 0) / layout.RowHeight / 2 * 2;
    return layout;
}

std::optional<std::int32_t> SerialRowAt(const SerialLayout& layout, std::int32_t y) {
    if (y < layout.RowHeight) return std::nullopt;
    const std::int64_t below = std::int64_t{y} - 2 * layout.RowHeight;
    return static_cast<std::int32_t>((10 * below + 9 * layout.RowHeight) / (10 * layout.RowHeight));
}

std::optional<std::int32_t> SerialSampleAt(const InstrumentState& state, const SerialLayout& layout,
                                           std::int32_t y) {
    const auto row = SerialRowAt(layout, y);
    return row ? SerialRowSample(state, *row) : std::nullopt;
}

ScrollRange PaintSerial(const InstrumentState& state, std::int32_t width, std::int32_t height,
                        Canvas& canvas) {
    const SerialLayout layout = LayoutSerial(canvas.FontMetrics(), height);
    canvas.SetFont(FontId::Text);
    canvas.FillRect({0, 0, width, height}, state.Screen.ScreenColor[kBackground]);
    DrawHeader(state, layout, canvas);
    auto row = NextSerialRow(state, SerialRowsStart(state));
    for (std::int32_t r = 0; row && layout.TopOf(r) < height; ++r) {
        DrawRow(state, layout, *row, layout.TopOf(r), canvas);
        row = NextSerialRow(state, row->Sample + 1);
    }
    const SerialRecord& serial = state.Serial;
    const std::int32_t scale = SerialScrollScale(serial.SerialFirst, serial.SerialLast);
    return {serial.SerialFirst / scale, serial.SerialLast / scale, SerialRowsStart(state) / scale};
}

MenuSpec SerialFilterMenu(const InstrumentState& state) {
    MenuSpec menu;
    for (std::size_t flag = 0; flag < kFilterTexts.size(); ++flag) {
        menu.Entries.push_back({.Id = static_cast<int>(flag) + 1,
                                .Text = std::string(kFilterTexts[flag]),
                                .Checked = state.Serial.SerialFilter[flag] != 0});
    }
    return menu;
}

bool ToggleSerialFilter(InstrumentState& state, int id) {
    if (id < 1 || id > static_cast<int>(kFilterTexts.size())) return false;
    std::uint8_t& flag = state.Serial.SerialFilter[static_cast<std::size_t>(id) - 1];
    flag = flag == 0 ? 1 : 0;
    return true;
}

}  // namespace zu
