#include "hw/PositionCounter.h"

#include <algorithm>

#include "hw/MemoryDepth.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr int kCounterBits = 18;
constexpr int kLeadingBits = Bits(0, 10);  // all ones: the counter wants a one ahead of the value

/// Largest count of a memory organisation and where its count starts.
struct CounterRange {
    std::int64_t Limit;
    std::int64_t Offset;
};
constexpr CounterRange kPatternMemory{0xFFE, 0x3F000};
constexpr CounterRange kSmallMemory{0x3FFE, 0x3C000};
constexpr CounterRange kLargeMemory{0xFFFE, 0x30000};
constexpr CounterRange kUnlimited{INT64_MAX, 0};

CounterRange RangeOf(const CaptureSetup& setup) {
    if (setup.HardwareMode == 0) return kPatternMemory;
    if (setup.HardwareMode != 1) {
        const bool roachLarge = setup.HardwareType >= 13 && setup.HardwareType <= 15;
        return roachLarge ? kLargeMemory : kUnlimited;
    }
    const MemoryDepth depth = DepthOfType(setup.HardwareType);
    if (depth == MemoryDepth::None) return kUnlimited;
    return depth == MemoryDepth::Small ? kSmallMemory : kLargeMemory;
}

/// Samples between a trigger and the instrument's notice of it.
int Latency(const CaptureSetup& setup) {
    if (setup.Internal() && setup.RateQuad()) return 0x40;
    if (setup.Internal() && (setup.NoPatternMode() || setup.RateDual())) return 0x20;
    return 0x10;
}

/// R4 carries the data bit; its shadow stays as it is.
void ShiftBit(Registers& registers, bool one) {
    const int idle = registers.At(S4, 0) & ~Bit(3);
    registers.Write(R4, 0, one ? idle | Bit(3) : idle);
    registers.Strobe(2);
}

}  // namespace

std::int64_t PositionValue(const CaptureSetup& setup, std::int32_t position) {
    // Two samples of a lane make one count.
    const int shift = 1 + static_cast<int>(setup.Memory);
    const std::int64_t count = (std::int64_t{position} + Latency(setup)) >> shift;
    const CounterRange range = RangeOf(setup);
    return std::min(count, range.Limit) + range.Offset;
}

void LoadPosition(Registers& registers, const CaptureSetup& setup, std::int32_t position) {
    const std::int64_t value = PositionValue(setup, position);
    const int held = registers.ClockHold();
    std::uint8_t& control = registers.At(S10, 0);
    control = static_cast<std::uint8_t>((control & 0xF4) | Bit(0) | Bit(3));
    registers.OutS10S11(0);
    registers.Strobe(4);
    registers.ClearBits(S10, 0, Bit(3));
    registers.OutS10S11(0);
    registers.Strobe(4);
    ShiftBit(registers, (value & kLeadingBits) == kLeadingBits);
    for (int bit = kCounterBits - 1; bit >= 0; --bit) ShiftBit(registers, (value >> bit & 1) != 0);
    registers.ClearBits(S10, 0, Bit(0));
    registers.OutS10S11(0);
    registers.SetBits(S10, 0, Bit(1));
    registers.OutS10S11(0);
    registers.ClockSelect(held);
}

}  // namespace zu
