#include "hw/SerialBus.h"

namespace zu {
namespace {

constexpr int kTimerCounter2 = 0xB6;

}  // namespace

void BusData(Registers& registers, int board, int value) {
    registers.ShiftOut(board, value);
    registers.PulseOut(Shadow::S4, board, Bit(5));
}

void BusControl(Registers& registers, int board, int value) {
    registers.ShiftOut(board, value);
    registers.PulseOut(Shadow::S2, board, Bit(0));
}

void BusStrobe(Registers& registers, int board, int idle, int active) {
    BusControl(registers, board, idle);
    BusControl(registers, board, active);
    BusControl(registers, board, idle);
}

void SerialCounter(Registers& registers, std::uint16_t value) {
    BusData(registers, 0, kTimerCounter2);
    BusStrobe(registers, 0, 0xFF, 0xBF);
    BusData(registers, 0, value & 0xFF);
    BusStrobe(registers, 0, 0xEF, 0xAF);
    BusData(registers, 0, value >> 8);
    BusStrobe(registers, 0, 0xEF, 0xAF);
}

}  // namespace zu
