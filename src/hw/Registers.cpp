#include "hw/Registers.h"

#include "hw/AddressByte.h"

namespace zu {
namespace {

constexpr int kSelectorShift = 5;
constexpr int kSelectorMask = Bits(5, 7);
constexpr int kSelectorStopped = 7;

}  // namespace

void Registers::Write(Reg reg, int board, int value) {
    hardware_->Ops->RegWrite(base_, hardware_->Ports.At(static_cast<int>(reg), board),
                             static_cast<std::uint8_t>(value));
}

std::uint8_t Registers::Read(Reg reg, int board) {
    return hardware_->Ops->RegRead(base_, hardware_->Ports.At(static_cast<int>(reg), board));
}

void Registers::ReadBlock(Reg reg, int board, std::span<std::uint8_t> bytes) {
    hardware_->Ops->RegReadBlock(base_, hardware_->Ports.At(static_cast<int>(reg), board),
                                 static_cast<std::int32_t>(bytes.size()), bytes.data());
}

void Registers::Strobe(int times) {
    for (int i = 0; i < times; ++i) Read(Reg::R0, 0);
}

std::uint8_t& Registers::At(Shadow shadow, int board) {
    return hardware_->Shadows.At(static_cast<int>(shadow), board);
}

void Registers::SetBits(Shadow shadow, int board, int mask) {
    std::uint8_t& value = At(shadow, board);
    value = static_cast<std::uint8_t>(value | mask);
}

void Registers::ClearBits(Shadow shadow, int board, int mask) {
    std::uint8_t& value = At(shadow, board);
    value = static_cast<std::uint8_t>(value & ~mask);
}

void Registers::Out(Shadow shadow, int board) {
    Write(static_cast<Reg>(shadow), board, At(shadow, board));
}

void Registers::SetOut(Shadow shadow, int board, int mask) {
    SetBits(shadow, board, mask);
    Out(shadow, board);
}

void Registers::ClearOut(Shadow shadow, int board, int mask) {
    ClearBits(shadow, board, mask);
    Out(shadow, board);
}

void Registers::MaskOut(Shadow shadow, int board, int keep, int set) {
    std::uint8_t& value = At(shadow, board);
    value = static_cast<std::uint8_t>((value & keep) | set);
    Out(shadow, board);
}

void Registers::PulseOut(Shadow shadow, int board, int mask) {
    ClearOut(shadow, board, mask);
    SetOut(shadow, board, mask);
    ClearOut(shadow, board, mask);
}

void Registers::WriteLatched(int board, int value, int latchBit) {
    Write(Reg::R0, board, value);
    const int latch = At(Shadow::S2, board);  // the latch pulse leaves the shadow
    Write(Reg::R2, board, latch & ~latchBit);
    Write(Reg::R2, board, latch | latchBit);
    Write(Reg::R2, board, latch & ~latchBit);
}

void Registers::WriteS8(int board, int value) {
    if (Later()) {
        Write(Reg::R12, board, value);
    } else {
        WriteLatched(board, value, Bit(1));
    }
}

void Registers::WriteS9(int board, int value) {
    if (Later()) {
        Write(Reg::R13, board, value);
    } else {
        WriteLatched(board, value, Bit(2));
    }
}

void Registers::WriteS10S11(int board, int value10, int value11) {
    if (Direct()) {
        if (board < 0 || board >= kMaxBoards) return;  // one past the last board has no such pair
        const auto& ports = kPodRegisterPorts[static_cast<std::size_t>(board)];
        hardware_->Ops->RegWrite(base_, ports[0], static_cast<std::uint8_t>(value10));
        hardware_->Ops->RegWrite(base_, ports[1], static_cast<std::uint8_t>(value11));
        return;
    }
    ClearOut(Shadow::S6, board, Bit(4));  // never set again
    ShiftOut(board, value10);
    PulseOut(Shadow::S5, board, Bit(7));
    ShiftOut(board, value11);
    SetOut(Shadow::S6, board, Bit(0) | Bit(2));
}

void Registers::SetOutS8(int board, int mask) {
    SetBits(Shadow::S8, board, mask);
    OutS8(board);
}

void Registers::ClearOutS8(int board, int mask) {
    ClearBits(Shadow::S8, board, mask);
    OutS8(board);
}

void Registers::SetOutS9(int board, int mask) {
    SetBits(Shadow::S9, board, mask);
    OutS9(board);
}

void Registers::ShiftOut(int board, int value) {
    for (int bit = 7; bit >= 0; --bit) {
        if ((value & Bit(bit)) != 0) {
            SetOut(Shadow::S4, board, Bit(3));
        } else {
            ClearOut(Shadow::S4, board, Bit(3));
        }
        ClearOut(Shadow::S6, board, Bit(7));
        SetOut(Shadow::S6, board, Bit(7));
    }
}

int Registers::ClockHold() {
    const int held = At(Shadow::S8, 0) >> kSelectorShift;
    SetOutS8(0, kSelectorMask);
    // Shadow only: it reaches the pod registers with the next write of them.
    if (Later()) ClearBits(Shadow::S10, 0, Bit(4));
    return held;
}

void Registers::ClockSelect(int selector) {
    std::uint8_t& control = At(Shadow::S8, 0);
    control = static_cast<std::uint8_t>((control & ~kSelectorMask) |
                                        ((selector & kSelectorStopped) << kSelectorShift));
    OutS8(0);
}

}  // namespace zu
