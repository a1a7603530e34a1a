#pragma once

#include <cstdint>
#include <span>

#include "hw/HardwareSession.h"

namespace zu {

/// Logical registers: rows of the PortTable.
enum class Reg : std::uint8_t { R0, R1, R2, R3, R4, R5, R6, R7, R8, R9, R10, R11, R12, R13, R14, R15 };
/// Shadow bytes: rows of the ShadowTable. S1 to S7 belong to the registers of the same number.
enum class Shadow : std::uint8_t { S1 = 1, S2, S3, S4, S5, S6, S7, S8, S9, S10, S11 };

/// Mask of one bit.
constexpr int Bit(int n) {
    return 1 << n;
}
/// Mask of bits `low` to `high`.
constexpr int Bits(int low, int high) {
    return (Bit(high - low + 1) - 1) << low;
}

/// A type of a later board, whose control bytes have registers of their own.
constexpr bool IsLaterBoard(int hardwareType) {
    return hardwareType >= 6 && hardwareType <= 15;
}

/// The registers as the programming sequences use them: board columns, shadows, and the control bytes that
/// are reached in a roundabout way. A write of a value leaves the shadows, the operations that name a shadow
/// change it.
class Registers {
  public:
    Registers(HardwareSession& hardware, std::uint16_t base, std::uint8_t hardwareType)
        : hardware_(&hardware), base_(base), type_(hardwareType) {}

    [[nodiscard]] bool Later() const { return IsLaterBoard(type_); }
    [[nodiscard]] std::uint8_t Type() const { return type_; }
    [[nodiscard]] bool Direct() const { return hardware_->PodRegsDirect != 0; }

    void Write(Reg reg, int board, int value);
    std::uint8_t Read(Reg reg, int board);

    /// Fills the bytes from the memory behind a register; an instrument that fails leaves them.
    void ReadBlock(Reg reg, int board, std::span<std::uint8_t> bytes);
    /// Reads R0 of the first board, which does nothing but clock what is being programmed.
    void Strobe(int times);

    std::uint8_t& At(Shadow shadow, int board);
    void SetBits(Shadow shadow, int board, int mask);
    void ClearBits(Shadow shadow, int board, int mask);
    /// Of S1 to S7: writes the shadow to its register, after setting or clearing bits of it.
    void Out(Shadow shadow, int board);
    void SetOut(Shadow shadow, int board, int mask);
    void ClearOut(Shadow shadow, int board, int mask);
    /// Keeps the bits of `keep`, sets those of `set`, and writes the shadow to its register.
    void MaskOut(Shadow shadow, int board, int keep, int set);
    /// Low, high, low on a bit of the shadow, which ends low.
    void PulseOut(Shadow shadow, int board, int mask);

    /// The control bytes; the value goes out as it is, the shadows S8 to S11 stay.
    void WriteS8(int board, int value);
    void WriteS9(int board, int value);
    void WriteS10S11(int board, int value10, int value11);
    /// The same with what the shadows hold.
    void OutS8(int board) { WriteS8(board, At(Shadow::S8, board)); }
    void OutS9(int board) { WriteS9(board, At(Shadow::S9, board)); }
    void OutS10S11(int board) { WriteS10S11(board, At(Shadow::S10, board), At(Shadow::S11, board)); }
    void SetOutS8(int board, int mask);
    void ClearOutS8(int board, int mask);
    void SetOutS9(int board, int mask);

    /// Shifts a byte into the board's chain, most significant bit first: data on R4 bit 3, clock on R6 bit 7.
    void ShiftOut(int board, int value);

    /// The clock selector, the top three bits of S8[0]; 7 stops the clock. Hold returns what it was.
    int ClockHold();
    void ClockSelect(int selector);

  private:
    void WriteLatched(int board, int value, int latchBit);

    HardwareSession* hardware_;
    std::uint16_t base_;
    std::uint8_t type_;
};

}  // namespace zu
