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

/// The pairs of samples of one block, the first of them with the sample before the block.
void ScanBlock(const Line& scl, const Line& sda, std::int32_t base, std::int32_t n, EventStore& store) {
    const std::int32_t before = std::max(base - 1, 0);
    const std::uint64_t clock = Levels64(scl, base);
    const std::uint64_t data = Levels64(sda, base);
    const std::uint64_t clockBefore = clock << 1U | (scl.High(before) ? 1U : 0U);
    const std::uint64_t dataBefore = data << 1U | (sda.High(before) ? 1U : 0U);
    // Nothing happens unless the clock was high and falls, or stays high while the data line changes.
    std::uint64_t events = clockBefore & (~clock | (data ^ dataBefore));
    if (n - base < scan::kBlock) events &= (std::uint64_t{1} << (n - base)) - 1;
    for (; events != 0; events &= events - 1) {
        const int i = std::countr_zero(events);
        const auto level = [i](std::uint64_t levels) { return (levels >> i & 1U) != 0; };
        store.Take(I2cLineEvent(level(clockBefore), level(clock), level(dataBefore), level(data)), base + i);
    }
}

void ScanLines(const Line& scl, const Line& sda, std::int32_t n, EventStore& store) {
    for (std::int32_t base = 0; n - base > 0; base += scan::kBlock) {
        ScanBlock(scl, sda, base, n, store);
        if (n - base <= scan::kBlock) break;
    }
    store.Take(I2cLineEvent(scl.High(n - 1), LevelBeyond(scl, n), sda.High(n - 1), LevelBeyond(sda, n)), n);
}

int FirstGroupOfMode(const InstrumentState& state, std::int8_t mode) {
    const auto found = std::find_if(state.Groups.begin(), state.Groups.end(),
                                    [mode](const GroupRecord& group) { return group.Mode == mode; });
    return found == state.Groups.end() ? -1 : static_cast<int>(found - state.Groups.begin());
}

/// Replaces a data bit by its acknowledge; false for an event that is no data bit.
bool MarkAcknowledge(std::uint8_t& code) {
    if (code != event::kBit0 && code != event::kBit1) return false;
    code = code == event::kBit1 ? event::kNack : event::kAck;
    return true;
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
    constexpr std::int32_t kNoFrame = -2;
    EventCursor cursor(events, 0, n);
    std::int32_t start = kNoFrame;
    std::int32_t position = 0;  // the last acknowledge, or the frame's start
    std::int32_t atStart = 0;
    std::int32_t bits = 0;  // behind the last acknowledge
    for (std::int32_t i = cursor.Next(); i >= 0; i = cursor.Next()) {
        std::uint8_t& code = events[static_cast<std::size_t>(i)];
        if (code == event::kStart && i == start + 1) {
            atStart = bits;  // a start right behind the frame's own is the one that opens no frame
        } else if (code == event::kStart) {
            start = position = i;
            atStart = bits = 0;
        } else if (start == kNoFrame) {
            continue;
        } else if (code == event::kStop) {
            ClassifyI2C(events, n, position, atStart, bits);
            start = kNoFrame;
        } else if (++bits == kBitsOfByte) {
            if (!MarkAcknowledge(code)) start = kNoFrame;
            bits = 0;
            position = i;
        }
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
