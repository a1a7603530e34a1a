// The EEPROM layer of the I2C decoder: names for the bits of a frame whose length is known.
#include "serial/EventCodes.h"
#include "serial/EventMap.h"
#include "serial/I2cDecoder.h"

namespace zu {
namespace {

/// A frame's events in order. The walk ends at a stop, at the end of data and, unless starts are counted, at
/// a start behind its first entry.
class FrameWalk {
  public:
    FrameWalk(std::span<std::uint8_t> events, std::int32_t n, std::int32_t from, bool countStarts)
        : events_(events), cursor_(events, from, n), from_(from), countStarts_(countStarts) {}

    /// Goes on to the next event; null at the end of the walk.
    std::uint8_t* Next() {
        const std::int32_t i = cursor_.Next();
        if (i < 0) return nullptr;
        std::uint8_t& code = events_[static_cast<std::size_t>(i)];
        if (code == event::kStop) return nullptr;
        if (code == event::kStart && !countStarts_ && i != from_) return nullptr;
        return &code;
    }

  private:
    std::span<std::uint8_t> events_;
    EventCursor cursor_;
    std::int32_t from_;
    bool countStarts_;
};

bool IsBit(std::uint8_t code) {
    return code == event::kBit0 || code == event::kBit1;
}

void Rename(std::uint8_t& code, std::uint8_t zero, std::uint8_t one) {
    if (IsBit(code)) code = code == event::kBit1 ? one : zero;
}

bool InRange(std::int32_t value, std::int32_t low, std::int32_t high) {
    return value >= low && value <= high;
}

/// The four type bits and the three chip select bits, counted from 0; false for any other bit.
bool RenameControl(std::uint8_t& code, std::int32_t bit) {
    if (InRange(bit, 0, 3)) return Rename(code, event::kMode0, event::kMode1), true;
    if (InRange(bit, 4, 6)) return Rename(code, event::kChip0, event::kChip1), true;
    return false;
}

/// Control byte and one data byte without an address.
void ClassifyCurrentRead(FrameWalk walk) {
    std::int32_t b = 0;
    while (std::uint8_t* code = walk.Next()) {
        if (!IsBit(*code)) continue;
        if (!RenameControl(*code, b) && b == 7) Rename(*code, event::kError0, event::kCurrentRead);
        ++b;
    }
}

/// Control byte, address byte and data bytes, or a sequential read.
void ClassifyWhole(FrameWalk walk, std::int32_t atStop) {
    constexpr std::int32_t kByteWriteBits = 27;
    std::int32_t b = 0;
    bool reads = false;
    while (std::uint8_t* code = walk.Next()) {
        if (!IsBit(*code)) continue;
        if (b == 7) {
            reads = *code == event::kBit1;
            Rename(*code, atStop == kByteWriteBits ? event::kByteWrite : event::kPageWrite,
                   event::kSequentialRead);
        } else if (b % 9 == 8) {
            const bool mayRefuse = reads && b == atStop - 1;
            Rename(*code, event::kAck, mayRefuse ? event::kNack : event::kError1);
            if (*code == event::kError1) return;
        } else if (InRange(b, 9, 16)) {
            Rename(*code, event::kAddr0, event::kAddr1);
        } else if (!RenameControl(*code, b)) {
            Rename(*code, event::kData0, event::kData1);
        }
        ++b;
    }
}

/// Eight bits of a kind and the acknowledge behind them.
class ByteCount {
  public:
    void Take(std::uint8_t& code, std::uint8_t zero, std::uint8_t one) {
        if (!IsBit(code)) return;
        if (count_ < 8) {
            Rename(code, zero, one);
            ++count_;
        } else {
            Rename(code, event::kAck, event::kNack);
            count_ = 0;
        }
    }

  private:
    int count_ = 0;
};

/// Address and data around a second start, where starts count as bits.
void ClassifyRandomRead(FrameWalk walk, std::int32_t atStart, std::int32_t atStop) {
    ByteCount address;
    ByteCount data;
    for (std::int32_t b = 0; std::uint8_t* code = walk.Next(); ++b) {
        const std::int32_t second = b - atStart;
        if (InRange(b, 1, 7)) {
            RenameControl(*code, b - 1);
        } else if (InRange(second, 1, 7)) {
            RenameControl(*code, second - 1);
        } else if (b == 8) {
            Rename(*code, event::kRandomRead, event::kError1);
        } else if (InRange(b, 10, atStart - 1)) {
            address.Take(*code, event::kAddr0, event::kAddr1);
        } else if (InRange(b, atStart + 10, atStop)) {
            data.Take(*code, event::kData0, event::kData1);
        } else if ((b >= 9 && b % 9 == 0) || (second > 0 && second % 9 == 8)) {
            Rename(*code, event::kAck, event::kNack);
        }
    }
}

}  // namespace

void ClassifyI2C(std::span<std::uint8_t> events, std::int32_t n, std::int32_t from, std::int32_t atStart,
                 std::int32_t atStop) {
    if (from < 0) return;
    const FrameWalk walk(events, n, from, atStart != 0);
    if (atStart == 0 && atStop == 17) {
        ClassifyCurrentRead(walk);
    } else if (atStart == 0 && atStop % 9 == 0) {
        ClassifyWhole(walk, atStop);
    } else if (atStart != 0 && (atStart - 18) % 9 == 0 && (atStop - 35) % 9 == 0) {
        ClassifyRandomRead(walk, atStart, atStop);
    }
}

}  // namespace zu
