#include "display/SerialPainter.h"

#include <algorithm>

#include "display/SerialListPaint.h"
#include "display/TimeText.h"
#include "serial/EventCodes.h"
#include "serial/EventMap.h"
#include "serial/EventText.h"
#include "serial/RowCursors.h"
#include "serial/SerialRows.h"
#include "serial/Transfers.h"

namespace zu {
namespace {

constexpr std::int8_t kModeMicrowire = 2;

bool IsMicrowire(const InstrumentState& state) {
    return state.Serial.SerialMode == kModeMicrowire;
}

/// One paint of the list of events.
class EventListPaint {
  public:
    EventListPaint(const InstrumentState& state, const SerialGeom& geom, Canvas& canvas)
        : state_(state),
          geom_(geom),
          canvas_(canvas),
          layout_(LayoutSerial(canvas.FontMetrics(), geom.Height)),
          list_(state, geom, layout_, canvas) {}

    SerialResult Run() {
        DrawHeader();
        auto row = NextSerialRow(state_, SerialRowsStart(state_));
        while (row) {
            const auto top = list_.BeginRow(row->Sample);
            if (!top) break;
            DrawRow(*row, *top);
            row = NextSerialRow(state_, row->Sample + 1);
        }
        const SampleBar bar = SerialBar(state_);
        return {"I2C View", bar.RangeAt(SerialRowsStart(state_)), list_.Page(bar)};
    }

  private:
    void DrawHeader();
    void DrawRow(const SerialRow& row, std::int32_t top);
    void DrawCursor(int cursor, std::int32_t top);
    void DrawTransfer(std::int32_t sample, std::int32_t top, Rgb color);

    const InstrumentState& state_;
    const SerialGeom& geom_;
    Canvas& canvas_;
    SerialLayout layout_;
    SerialListPaint list_;
};

void EventListPaint::DrawHeader() {
    const auto texts = SerialHeaderTexts(state_);
    for (std::size_t column = 0; column < texts.size(); ++column) {
        list_.Out(layout_.Columns[column], 0, texts[column], list_.TextColor());
    }
    if (HasTransferColumn(state_, geom_))
        list_.Out(layout_.Columns[3], 0, kTransferHeader, list_.TextColor());
}

void EventListPaint::DrawRow(const SerialRow& row, std::int32_t top) {
    const Rgb color =
        row.Cursor < 0 ? list_.TextColor() : state_.Cursors.CursorColor[static_cast<std::size_t>(row.Cursor)];
    list_.Out(layout_.Columns[0], top, SerialPlaceText(state_, row.Sample), color);
    if (row.Code != event::kNone) {
        list_.Out(layout_.Columns[1], top, SerialRowText(state_, row.Sample), color);
    }
    if (row.Cursor >= 0) DrawCursor(row.Cursor, top);
    if (row.Code == event::kStart && HasTransferColumn(state_, geom_)) DrawTransfer(row.Sample, top, color);
}

/// The cursor's name and the line under its row.
void EventListPaint::DrawCursor(int cursor, std::int32_t top) {
    const auto c = static_cast<std::size_t>(cursor);
    const Rgb color = state_.Cursors.CursorColor[c];
    list_.Out(layout_.Columns[2], top, kRowCursorTexts[c], color);
    const std::int32_t line = top + layout_.RowHeight - 1;
    if (!canvas_.Mono()) canvas_.SetPen(color);
    canvas_.MoveTo(layout_.Columns[0], line);
    canvas_.LineTo(layout_.Columns[2], line);
}

/// As much of the transfer as the window shows.
void EventListPaint::DrawTransfer(std::int32_t sample, std::int32_t top, Rgb color) {
    constexpr std::size_t kShortestByte = 5;  // characters of " | 00" without its mark
    const auto room = static_cast<std::size_t>(list_.RoomAt(layout_.Columns[3]));
    if (room == 0) return;
    list_.Out(layout_.Columns[3], top, SerialTransferText(state_, sample, room / kShortestByte + 1), color,
              room);
}

}  // namespace

SerialLayout LayoutSerial(const Metrics& metrics, std::int32_t height) {
    constexpr std::int32_t kLeft = 5;
    constexpr std::int32_t kColumnCharacters = 13;
    const std::int32_t step = kColumnCharacters * metrics.Advance;
    SerialLayout layout{GridOf(metrics, height), {}};
    layout.PageRows = layout.PageRows / 2 * 2;
    layout.Columns = {kLeft, kLeft + step, kLeft + 2 * step, kLeft + 3 * step};
    return layout;
}

std::optional<std::int32_t> SerialSampleAt(const InstrumentState& state, const SerialGrid& grid,
                                           std::int32_t y) {
    const auto row = SerialRowAt(grid, y);
    return row ? SerialRowSample(state, *row) : std::nullopt;
}

bool HasTransferColumn(const InstrumentState& state, const SerialGeom& geom) {
    return geom.Transfers && !IsMicrowire(state);
}

std::array<std::string_view, 2> SerialHeaderTexts(const InstrumentState& state) {
    if (IsMicrowire(state)) return {"Address", "Microwire"};
    return {"Location", "I2C"};
}

std::string SerialPlaceText(const InstrumentState& state, std::int32_t sample) {
    if (IsMicrowire(state) || !TimeKnown(state)) return std::to_string(sample);
    return TimeText(std::int64_t{sample}, RateOf(state), kTimeRateUnit);
}

std::string SerialTransferText(const InstrumentState& state, std::int32_t sample, std::size_t mostBytes) {
    if (IsMicrowire(state) || EventAt(state, sample) != event::kStart) return {};
    const auto transfers = I2cTransfers(state, sample, sample, mostBytes);
    return transfers.empty() ? std::string() : TransferText(transfers.front());
}

SampleBar SerialBar(const InstrumentState& state) {
    const SerialRecord& serial = state.Serial;
    return {serial.SerialFirst, serial.SerialLast, SerialScrollScale(serial.SerialFirst, serial.SerialLast)};
}

SerialResult PaintSerial(const InstrumentState& state, const SerialGeom& geom, Canvas& canvas) {
    return EventListPaint(state, geom, canvas).Run();
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
