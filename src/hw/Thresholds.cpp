#include "hw/Thresholds.h"

#include "hw/SerialBus.h"

namespace zu {
namespace {

using enum Shadow;

constexpr int kGroups = 3;  // pod pairs of a board that share a converter

/// How a group's converter is reached: by a strobe of the control byte, or by an address in the serial word.
struct Converter {
    int Idle;
    int Active;
    int Address;
};
constexpr std::array<Converter, kGroups> kConverters{{{0xCF, 0xCB, 4}, {0xDF, 0xDB, 2}, {0xEF, 0xEB, 1}}};

/// The converters count downwards.
std::uint8_t LevelByte(const CaptureSetup& setup, const InstrumentState& state, int board, int group) {
    const std::int64_t pod = std::int64_t{board} * setup.PodStep + 2 * group;
    const int place = kGroups * board + group;
    const auto entry = static_cast<std::size_t>(place);
    const bool output = PodMode(state, pod, 0) != 0;  // any mode but 0, not only the pattern modes
    const std::uint16_t level = output ? state.Pods.PatGenV[entry] : state.Pods.ThrHd[entry];
    return static_cast<std::uint8_t>(~level);
}

/// Sixteen bits, address first, most significant bit first, framed by bit 0 of S6.
void SerialDac(Registers& registers, int board, int address, int value) {
    const int word = address << 8 | value;
    registers.ClearOut(S6, board, Bit(0));
    for (int bit = 15; bit >= 0; --bit) {
        if ((word >> bit & 1) != 0) {
            registers.SetOut(S4, board, Bit(3));
        } else {
            registers.ClearOut(S4, board, Bit(3));
        }
        registers.PulseOut(S6, board, Bit(1));
    }
    registers.SetOut(S6, board, Bit(0));
}

}  // namespace

void LoadThresholds(Registers& registers, const CaptureSetup& setup, const InstrumentState& state) {
    for (int board = 0; board < setup.Boards; ++board) {
        for (int group = 0; group < kGroups; ++group) {
            const Converter& converter = kConverters[static_cast<std::size_t>(group)];
            const std::uint8_t value = LevelByte(setup, state, board, group);
            if (registers.Later()) {
                registers.SetOut(S3, board, Bit(0));
                SerialDac(registers, board, converter.Address, value);
            } else {
                BusData(registers, board, value);
                BusStrobe(registers, board, converter.Idle, converter.Active);
            }
        }
    }
}

}  // namespace zu
