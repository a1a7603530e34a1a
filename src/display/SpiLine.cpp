#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>

#include "display/BusCells.h"
#include "display/Cells.h"
#include "display/GroupLine.h"
#include "display/Pixels.h"
#include "serial/SpiDecoder.h"

namespace zu {
namespace {

constexpr int kSiLane = 1;
constexpr int kSoLane = 2;
constexpr std::uint64_t kEachEntry = 0x0001000100010001ULL;
constexpr std::int64_t kEntriesAtOnce = 16;

/// Whether one of kEntriesAtOnce entries has one of these flags.
bool AnyOf(const std::uint16_t* entries, std::uint16_t flags) {
    std::uint64_t words[4];
    static_assert(sizeof words == kEntriesAtOnce * sizeof *entries);
    std::memcpy(words, entries, sizeof words);
    return ((words[0] | words[1] | words[2] | words[3]) & kEachEntry * flags) != 0;
}

/// Entries of one decoded line, bounded.
struct Entries {
    std::span<const std::uint16_t> Words;

    /// First index in [from, to) with one of these flags; `to` if there is none.
    [[nodiscard]] std::int64_t Find(std::int64_t from, std::int64_t to, std::uint16_t flags) const {
        to = std::min<std::int64_t>(to, static_cast<std::int64_t>(Words.size()));
        for (; to - from >= kEntriesAtOnce; from += kEntriesAtOnce) {
            if (AnyOf(Words.data() + from, flags)) break;
        }
        while (from < to && (Words[static_cast<std::size_t>(from)] & flags) == 0) ++from;
        return from;
    }
    /// Last index in [floor, from) with one of these flags; floor - 1 if there is none.
    [[nodiscard]] std::int64_t FindBack(std::int64_t from, std::uint16_t flags, std::int64_t floor) const {
        from = std::min<std::int64_t>(from, static_cast<std::int64_t>(Words.size()));
        for (; from - floor >= kEntriesAtOnce; from -= kEntriesAtOnce) {
            if (AnyOf(Words.data() + from - kEntriesAtOnce, flags)) break;
        }
        while (from > floor && (Words[static_cast<std::size_t>(from - 1)] & flags) == 0) --from;
        return std::max(from, floor) - 1;
    }
    [[nodiscard]] std::uint16_t At(std::int64_t i) const { return Words[static_cast<std::size_t>(i)]; }
    [[nodiscard]] std::int64_t Size() const { return static_cast<std::int64_t>(Words.size()); }
};

int SlotOfGroup(const InstrumentState& state, int group) {
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        if (SpiGroup(state, slot) == group) return slot;
    }
    return -1;
}

std::string ByteText(std::uint16_t entry) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%2.2X", static_cast<unsigned>(entry & spi::kValue));
    return text.data();
}

/// Start of the byte that reaches over `sample`, where it is not below `floor`; else the sample.
std::int64_t ByteOver(const Entries& entries, std::int64_t sample, std::int64_t floor) {
    const std::int64_t before = entries.FindBack(sample, spi::kStart | spi::kEnd, floor);
    return before >= floor && (entries.At(before) & spi::kStart) != 0 ? before : sample;
}

/// The bytes of one line, each over the span of its samples.
void DrawBytes(const RowFrame& row, const Entries& entries, std::int32_t top) {
    BusCells cells(row, top, top + TextRowHeight(row.Target.FontMetrics()) - kRowPad);
    const std::int64_t stop = std::min(row.Axis.First + row.Axis.Visible() + 1, entries.Size());
    std::int32_t drawn = row.Axis.Left;  // x up to which the row is filled: bytes may share a column
    std::int64_t at = entries.Find(ByteOver(entries, row.Axis.First, 0), stop, spi::kStart);
    while (at < stop && drawn < row.Axis.Right) {
        const std::int64_t end = entries.Find(at + 1, entries.Size(), spi::kEnd);
        const std::int32_t x0 = std::max(Pixel(row.Axis.XOf(at)), drawn);
        const std::int32_t x1 = std::min(Pixel(row.Axis.XOf(end)), row.Axis.Right);
        if (cells.WidthOf(2) <= x1 - x0) {
            cells.Cell(x0, x1, ByteText(entries.At(at)), at < row.Axis.First);
            drawn = x1;
        } else if (x1 >= drawn) {
            cells.Hatch(x0, std::max(x1, x0 + 1));
            drawn = std::max(x1, x0 + 1);
        }
        // Bytes that end left of what is drawn show nothing: a far zoom passes over hundreds in a column.
        const std::int64_t next = std::max(at + 1, row.Axis.SampleAt(drawn));
        at = entries.Find(ByteOver(entries, next, at + 1), stop, spi::kStart);
    }
}

void DrawLane(const RowFrame& lane, const ColumnLayout& layout, int channel, MeasureCache& measures) {
    DrawChannelCells(lane, layout, channel, measures);
    const bool known = channel >= 0 && channel < std::min(lane.State.Shape.TotalChannels, kMaxChannels);
    if (!known || lane.Axis.Width() == 0) return;
    lane.Target.SetPen(
        PenColor(lane.Target, lane.State.Channels.ChannelColor[static_cast<std::size_t>(channel)]));
    DrawChannelTrace(lane, channel);
}

}  // namespace

int LaneAt(std::int32_t rowTop, std::int32_t y, const Metrics& metrics) {
    for (int lane = 0; lane < kSpiLanes; ++lane) {
        const std::int32_t top = LaneTop(rowTop, lane, metrics);
        if (y >= top && y < top + kLaneStep) return lane;
    }
    return -1;
}

void DrawSpiLine(const RowFrame& row, const ColumnLayout& layout, int group, MeasureCache& measures) {
    if (group < 0 || group >= kGroupCount) return;
    const GroupRecord& record = row.State.Groups[static_cast<std::size_t>(group)];
    const Metrics& metrics = row.Target.FontMetrics();
    const int slot = SlotOfGroup(row.State, group);
    row.Target.SetFont(FontId::Text);
    for (int lane = 0; lane < std::min<std::int32_t>(kSpiLanes, GroupSize(record)); ++lane) {
        RowFrame frame = row;
        frame.Font = FontId::Text;
        frame.Top = LaneTop(row.Top, lane, metrics);
        frame.Height = kLaneHeight + kTraceFoot;
        DrawLane(frame, layout, record.Channels[static_cast<std::size_t>(lane)], measures);
        if (slot < 0 || row.Axis.Width() == 0 || (lane != kSiLane && lane != kSoLane)) continue;
        const auto& decoded = lane == kSiLane ? row.State.Serial.SpiSI : row.State.Serial.SpiSO;
        DrawBytes(frame, {decoded[static_cast<std::size_t>(slot)]}, frame.Top - kLaneStep);
    }
    RowFrame title = row;
    title.Top = LaneTop(row.Top, 0, metrics) + kLaneStep;
    title.Height = TextRowHeight(metrics);
    DrawGroupName(title, layout, group);
}

}  // namespace zu
