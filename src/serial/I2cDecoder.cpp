#include "serial/I2cDecoder.h"

#include <algorithm>
#include <array>

#include "serial/EventCodes.h"
#include "serial/EventMap.h"
#include "serial/LineScan.h"

namespace zu {
namespace {

constexpr int kBitsOfByte = 9;  // with the acknowledge

/// Takes the line events in the order of their samples into the map.
class EventStore {
  public:
    EventStore(std::span<std::uint8_t> events, std::int32_t n) : events_(events), first_(n) {}

    void Take(std::uint8_t code, std::int32_t index) {
        if (code == event::kNone) return;
        const bool isMark = code == event::kStart || code == event::kStop;
        // The clock's fall behind a start or stop belongs to that condition and carries no bit.
        const bool skipped = afterMark_ && !isMark;
        afterMark_ = isMark;
        if (skipped || index >= std::ssize(events_)) return;
        events_[static_cast<std::size_t>(index)] = code;
        first_ = std::min(first_, index);
        last_ = index;
    }
    void Finish(SerialRecord& serial) const {
        serial.SerialFirst = last_ < first_ ? 0 : first_;
        serial.SerialLast = last_ < first_ ? 0 : last_;
    }

  private:
    std::span<std::uint8_t> events_;
    std::int32_t first_;
    std::int32_t last_ = -1;
    bool afterMark_ = false;
};

/// Level at sample n, one beyond the scan: real where the buffer reaches that far, else that of sample n - 1.
bool LevelBeyond(const Line& line, std::int32_t n) {
    return line.High(n < line.View.Stored ? n : n - 1);
}

void ScanLines(const Line& scl, const Line& sda, std::int32_t n, EventStore& store) {
    std::uint8_t clock = scl.Raw(0);
    std::uint8_t data = sda.Raw(0);
    for (std::int32_t i = FindChange(scl, clock, sda, data, 1, n); i < n;
         i = FindChange(scl, clock, sda, data, i + 1, n)) {
        const std::uint8_t nextClock = scl.Raw(i);
        const std::uint8_t nextData = sda.Raw(i);
        store.Take(I2cLineEvent(clock != 0, nextClock != 0, data != 0, nextData != 0), i);
        clock = nextClock;
        data = nextData;
    }
    store.Take(I2cLineEvent(clock != 0, LevelBeyond(scl, n), data != 0, LevelBeyond(sda, n)), n);
}

int FirstGroupOfMode(const InstrumentState& state, std::int8_t mode) {
    const auto found = std::find_if(state.Groups.begin(), state.Groups.end(),
                                    [mode](const GroupRecord& group) { return group.Mode == mode; });
    return found == state.Groups.end() ? -1 : static_cast<int>(found - state.Groups.begin());
}

/// How the walk through one frame ended.
struct FrameEnd {
    enum class By { Start, Stop, EndOfData, OddBit };
    By Cause = By::Start;
    std::int32_t Position = 0;  ///< the last acknowledge, or the frame's start
    std::int32_t AtStart = 0;
    std::int32_t AtStop = 0;
};

/// Replaces a data bit by its acknowledge; false for an event that is no data bit.
bool MarkAcknowledge(std::uint8_t& code) {
    if (code != event::kBit0 && code != event::kBit1) return false;
    code = code == event::kBit1 ? event::kNack : event::kAck;
    return true;
}

/// Walks from the start at `start` to the end of its frame. The count begins anew behind each acknowledge, so
/// AtStop counts the bits behind the last one only.
FrameEnd WalkFrame(std::span<std::uint8_t> events, std::int32_t n, std::int32_t start) {
    FrameEnd end{FrameEnd::By::EndOfData, start, 0, 0};
    std::int32_t bits = 0;
    for (std::int32_t j = FindEvent(events, start + 1, n); j < n; j = FindEvent(events, j + 1, n)) {
        std::uint8_t& code = events[static_cast<std::size_t>(j)];
        if (code == event::kStop) {
            end.Cause = FrameEnd::By::Stop;
            end.AtStop = bits;
            return end;
        }
        if (code == event::kStart && j != start + 1) {
            end.Cause = FrameEnd::By::Start;
            return end;
        }
        if (code == event::kStart) {
            // A start right behind the frame's own is the one that does not end it.
            end.AtStart = bits;
        } else if (++bits == kBitsOfByte) {
            if (!MarkAcknowledge(code)) {
                end.Cause = FrameEnd::By::OddBit;
                return end;
            }
            bits = 0;
            end.Position = j;
        }
    }
    return end;
}

}  // namespace

std::uint8_t I2cLineEvent(bool scl0, bool scl1, bool sda0, bool sda1) {
    // Index: clock before, clock after, data before, data after, from the highest bit down.
    constexpr std::array<std::uint8_t, 16> kEventOf{0,
                                                    0,
                                                    0,
                                                    0,
                                                    0,
                                                    0,
                                                    0,
                                                    0,  // clock low before
                                                    event::kBit0,
                                                    event::kBit0,
                                                    event::kBit1,
                                                    event::kBit1,
                                                    0,
                                                    event::kStop,
                                                    event::kStart,
                                                    0};
    const unsigned index = (scl0 ? 8U : 0U) | (scl1 ? 4U : 0U) | (sda0 ? 2U : 0U) | (sda1 ? 1U : 0U);
    return kEventOf[index];
}

void FrameI2C(std::span<std::uint8_t> events, std::int32_t n) {
    n = static_cast<std::int32_t>(std::min<std::int64_t>(n, std::ssize(events)));
    for (std::int32_t i = FindEvent(events, 0, n); i < n; i = FindEvent(events, i + 1, n)) {
        if (events[static_cast<std::size_t>(i)] != event::kStart) continue;
        const FrameEnd end = WalkFrame(events, n, i);
        if (end.Cause == FrameEnd::By::EndOfData) return;
        if (end.Cause == FrameEnd::By::Stop) ClassifyI2C(events, n, end.Position, end.AtStart, end.AtStop);
        i = end.Position;
    }
}

bool DecodeI2C(InstrumentState& state) {
    const int group = FirstGroupOfMode(state, kGroupModeI2C);
    if (group < 0) return false;
    SerialRecord& serial = state.Serial;
    serial.SerialGroup = group;
    const auto& channels = state.Groups[static_cast<std::size_t>(group)].Channels;
    const Line scl = BindLine(state, channels[0]);
    const Line sda = BindLine(state, channels[1]);
    const auto n = static_cast<std::int32_t>(
        std::min<std::int64_t>(std::min(scl.View.Shown, sda.View.Shown), std::ssize(serial.SerialEvents)));
    std::fill(serial.SerialEvents.begin(), serial.SerialEvents.end(), event::kNone);
    EventStore store(serial.SerialEvents, n);
    if (n > 0) ScanLines(scl, sda, n, store);
    store.Finish(serial);
    FrameI2C(serial.SerialEvents, n);
    return true;
}

}  // namespace zu
