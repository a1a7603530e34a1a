#include "hw/sim/SimBoard.h"

#include <algorithm>
#include <utility>

namespace zu {
namespace {

constexpr int kTimerFirst = 8;     // R8 to R10 are the dividers,
constexpr int kTimerControl = 11;  // R11 their control word
constexpr std::size_t kPatternRoom = std::size_t{1} << 21;

/// Bit of R4 that gates the lane's pair.
constexpr int GateBit(int lane) {
    return lane == 4 ? 5 : lane < 2 ? 6 : 7;
}

}  // namespace

void SimBoard::Write(int reg, std::uint8_t value) {
    const std::uint8_t before = Register(reg);
    registers_[static_cast<std::size_t>(reg & 15)] = value;
    switch (reg & 15) {
        case 0:
            if (traits_.Later) OnPatternByte(value);
            return;
        case 2:
            return OnR2(before, value);
        case 4:
            return OnR4(before, value);
        case 5:
            return OnR5(before, value);
        case 6:
            return OnR6(before, value);
        case kTimerFirst:
        case kTimerFirst + 1:
        case kTimerFirst + 2:
            return timer_.Load(static_cast<std::size_t>(reg - kTimerFirst), value);
        case kTimerControl:
            return timer_.Control(value);
        case 12:
            if (traits_.Later) SetS8(value);
            return;
        case 13:
            if (traits_.Later) SetS9(value);
            return;
        case 14:
            return OnPatternByte(value);
        default:
            return;
    }
}

/// The older series takes what R0 holds into its two control bytes, and the chain into the bus control byte.
void SimBoard::OnR2(std::uint8_t before, std::uint8_t after) {
    if (traits_.Later) return;
    if (Rises(before, after, 0)) OnBusControl(busControl_, chain_.Value());
    if (Rises(before, after, 1)) SetS8(Register(0));
    if (Rises(before, after, 2)) SetS9(Register(0));
}

void SimBoard::OnR4(std::uint8_t before, std::uint8_t after) {
    const bool runs = (after >> 2 & 1) != 0;  // low while trigger memory and qualifiers are written
    if (!runs && (after >> 1 & 1) != 0 && Falls(before, after, 0)) gate_[Register(14)] = DataBit();
    if (!runs && Falls(before, after, 1)) {
        trigger_[triggerPage_][Register(traits_.Later ? 14 : 0)] = static_cast<std::uint8_t>(after >> 3);
    }
    if (traits_.Later || !runs) return;
    if (Rises(before, after, 5)) busData_ = chain_.Value();
    const int lane = OpenLane();
    if (lane >= 0 && Rises(before, after, GateBit(lane))) Append(lane, Register(0));
}

void SimBoard::OnR5(std::uint8_t before, std::uint8_t after) {
    if (!Rises(before, after, 7)) return;
    s10_ = chain_.Value();
    chain_.Mark();
}

void SimBoard::OnR6(std::uint8_t before, std::uint8_t after) {
    if (Rises(before, after, 7) && chain_.Shift(DataBit())) s11_ = chain_.Value();
    if (Rises(before, after, 2)) synth_.Shift(DataBit());
    if (!traits_.Later) return;
    if (Rises(before, after, 0)) TakeLevel();
    if (Rises(before, after, 1) && !RegisterBit(6, 0)) dac_.Shift(DataBit());
}

void SimBoard::TakeLevel() {
    if (!dac_.Latch()) return;
    // One address bit a channel group, from the top.
    for (int group = 0; group < 3; ++group) {
        if (dac_.Address() == 4 >> group) {
            thresholds_[static_cast<std::size_t>(group)] = static_cast<std::uint8_t>(~dac_.Level());
        }
    }
}

void SimBoard::OnBusControl(std::uint8_t before, std::uint8_t after) {
    const std::size_t address = after >> 4 & 3;
    if (Falls(before, after, 6)) {
        if (address == 3) {
            timer_.Control(busData_);
        } else {
            timer_.Load(address, busData_);
        }
    }
    if (Falls(before, after, 2) && address < thresholds_.size()) {
        thresholds_[address] = static_cast<std::uint8_t>(~busData_);
    }
    busControl_ = after;
}

void SimBoard::SetS9(std::uint8_t value) {
    const int before = OpenLane();
    s9_ = value;
    const int lane = OpenLane();
    if (lane < 0 || lane == before) return;
    patternBytes_ = 0;
    fresh_ = {};
    fresh_[static_cast<std::size_t>(lane)] = true;
    if (traits_.Later && lane + 1 < kSimLanes) fresh_[static_cast<std::size_t>(lane) + 1] = true;
}

/// Routed and with its drivers on; during a download the drivers are off.
bool SimBoard::Generates(int lane) const {
    const bool routed = lane == 4 ? RegisterBit(1, 2) : RegisterBit(6, lane < 2 ? 5 : 6);
    return routed && RegisterBit(4, GateBit(lane));
}

/// The one lane that is open for pattern data: its bit of S9 alone is low and its pair is routed. -1: none.
int SimBoard::OpenLane() const {
    for (int lane = 0; lane < kSimLanes; ++lane) {
        if ((~s9_ & 0xF8) != 0x80 >> lane) continue;
        const bool routed = lane == 4 ? RegisterBit(1, 2) : RegisterBit(6, lane < 2 ? 5 : 6);
        return routed ? lane : -1;
    }
    return -1;
}

void SimBoard::OnPatternByte(std::uint8_t value) {
    const int lane = OpenLane();
    if (lane < 0 || !RegisterBit(4, 2) || RegisterBit(4, GateBit(lane))) return;
    // With direct registers the first lane's memory takes a pair ahead of the data.
    const unsigned ahead = traits_.Direct && lane == 0 ? 2 : 0;
    const unsigned index = patternBytes_++;
    if (index < ahead) return;
    Append(lane + static_cast<int>(index % 2), value);
}

void SimBoard::WriteBlock(int reg, std::span<const std::uint8_t> bytes) {
    const int lane = OpenLane();
    if (reg != 14 || lane < 0 || RegisterBit(4, GateBit(lane))) return;
    for (const std::uint8_t byte : bytes) Append(lane + static_cast<int>(patternBytes_++ % 2), byte);
}

void SimBoard::Append(int lane, std::uint8_t value) {
    if (lane >= kSimLanes) return;  // the last lane has no partner: its second byte is lost
    std::vector<std::uint8_t>& pattern = patterns_[static_cast<std::size_t>(lane)];
    if (std::exchange(fresh_[static_cast<std::size_t>(lane)], false)) pattern.clear();
    if (pattern.size() < kPatternRoom) pattern.push_back(value);
}

}  // namespace zu
