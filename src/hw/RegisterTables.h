#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "state/Limits.h"

namespace zu {

/// A table of rows by board columns that is flat on purpose: sequences that run one column past the last
/// board land in the first column of the next row, as the instrument expects. One spare row bounds them.
template <typename Cell, int Rows>
class FlatTable {
  public:
    static constexpr int kColumns = kMaxBoards;

    /// Row 0..Rows-1, column 0..4; anything beyond the table is its last cell.
    [[nodiscard]] Cell& At(int row, int column) { return cells_[Index(row, column)]; }
    [[nodiscard]] const Cell& At(int row, int column) const { return cells_[Index(row, column)]; }

  private:
    static constexpr int kCells = Rows * kColumns;
    static std::size_t Index(int row, int column) {
        const int index = row * kColumns + column;
        assert(index >= 0 && index < kCells);
        return static_cast<std::size_t>(std::clamp(index, 0, kCells - 1));
    }
    std::array<Cell, Rows * kColumns> cells_{};
};

/// Port numbers: row r is logical register R0..R15, column b a board.
using PortTable = FlatTable<std::uint16_t, 17>;
/// Shadow bytes S1..S11, one column a board; row 0 is unused. S1 to S7 shadow R1 to R7, S8 to S11 hold the
/// four control bytes behind WriteS8, WriteS9 and WriteS10S11 and shadow no timer register.
using ShadowTable = FlatTable<std::uint8_t, 13>;

inline constexpr int kBoardSpacing = 0x400;  ///< port numbers between two boards

/// Offsets of R0..R15 from a board's base. The timer (R8..R11) sits on the four highest ports.
inline constexpr std::array<std::uint8_t, 16> kRegisterOffset{0,  1,  2,  3,  4, 5, 6,  7,
                                                              12, 13, 14, 15, 8, 9, 10, 11};

/// Fills column `board` of the table from the board's own base address.
inline void SetBoardBase(PortTable& ports, int board, std::uint16_t base) {
    for (std::size_t row = 0; row < kRegisterOffset.size(); ++row) {
        ports.At(static_cast<int>(row), board) = static_cast<std::uint16_t>(base + kRegisterOffset[row]);
    }
}

}  // namespace zu
