#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "hw/HardwareSession.h"

namespace zu::test {

/// Writes down what registers see: "W 0214 0f", "R 0210", "B 0210 8192".
class RecordingOps : public RegisterOps {
  public:
    std::function<std::uint8_t(std::uint16_t port)> Answer;
    std::function<void(std::uint16_t port, std::uint8_t value)> Watch;
    std::string Text;

    void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) override;
    std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) override;
    void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                      std::uint8_t* buffer) override;
};

/// The trace that a sequence should leave, from a script of words. Numbers are hexadecimal, the board is that
/// of the call, 0..4 (the fourth column is the next row's first):
///   S4|08  S4-08  S4&ea  S4=00   set, clear, mask, load bits of shadow S4; nothing goes out
///   R4                           shadow S4 to register R4
///   R4=7f                        a value to R4
///   R4|08  R4-08                 the shadow with bits set or clear to R4, the shadow stays
///   ?R0                          a read
///   W8  W9  WX                   the control bytes S8, S9, the pair S10 and S11
///   W9|f8  W9-80                 the shadow with bits set or clear as a control byte, the shadow stays
///   !                            the USB queue is sent
class Script {
  public:
    Script(int hardwareType, bool podRegistersDirect, std::uint16_t address);

    std::array<int, 64> Cells{};  ///< shadows, four columns a row
    int Type;
    bool Direct;
    std::string Text;

    int& S(int row, int board) {
        const int cell = row * 4 + board;
        return Cells[static_cast<std::size_t>(cell)];
    }
    void Do(int board, const std::string& words);
    /// A word for each bit, low first or high first: `one` or `zero` runs and then `clock`.
    void Bits(int board, std::uint32_t value, int count, bool lowFirst, const std::string& one,
              const std::string& zero, const std::string& clock);
    void ShiftByte(int board, int value);
    void PodPair(int board, int v10, int v11);
    void Control8(int board, int value);
    void Control9(int board, int value);
    void Write(int row, int board, int value);
    void Read(int row, int board);
    /// A block read of R0.
    void Block(int board, int count);

    /// Starting values that make a forgotten shadow visible.
    void FillShadows(unsigned seed);
    void CopyShadowsTo(ShadowTable& shadows) const;
    /// First row and column in which the two differ, empty if none.
    [[nodiscard]] std::string ShadowDifference(const ShadowTable& shadows) const;

  private:
    void Word(int board, const std::string& word);

    std::uint16_t address_;
};

/// Nothing if the texts are the same, else the first line that differs with some lines before it.
std::string Difference(const std::string& expected, const std::string& actual);

}  // namespace zu::test
