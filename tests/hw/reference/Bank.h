#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "hw/RegisterOps.h"
#include "reference/UsbPaper.h"

// The register sequences written a second time, slowly and plainly, by the manual of the registers and with
// nothing of the program's own: a trace of the program must equal what these leave behind, line by line.

namespace zu::reference {

/// A number that is not below 0, as the containers want it.
inline std::size_t Index(int number) {
    return static_cast<std::size_t>(number);
}

/// The instrument as the sequences see it: sixteen registers and eleven shadows for each of four boards.
/// Registers and shadows are named by number; "on" and "off" work on a shadow and nothing goes out.
class Bank {
  public:
    Bank(int type, bool direct, int address, RegisterOps& wire);

    int Type;                 ///< catalogue row in force
    bool Direct;              ///< the pod registers have addresses of their own
    UsbPaper* Usb = nullptr;  ///< writes down what goes over the cable, instead of the accesses
    int Address;              ///< of the first board
    std::string Text;         ///< what was accessed, a line an access

    /// Shadow `row` of a board; one column past the last one is the next row.
    int& S(int row, int board) { return shadows_.at(Index(row * 4 + board)); }
    [[nodiscard]] bool Later() const { return Type >= 6 && Type <= 15; }

    void Write(int reg, int board, int value);
    void WritePort(int port, int value);
    int Read(int reg, int board);
    void ReadTimes(int times);  ///< R0 of the first board
    std::vector<std::uint8_t> ReadBlock(int reg, int board, int count);
    [[nodiscard]] int PortOf(int reg, int board) const;
    /// The queue of the USB is sent.
    void Flush();

    void On(int row, int board, int bits) { S(row, board) |= bits; }
    void Off(int row, int board, int bits) { S(row, board) &= 255 - bits; }
    /// Shadow 1 to 7 to the register of the same number.
    void Put(int row, int board) { Write(row, board, S(row, board)); }
    void OnPut(int row, int board, int bits);
    void OffPut(int row, int board, int bits);
    void LowHighLow(int row, int board, int bits);

    void WriteS8(int board, int value);
    void WriteS9(int board, int value);
    void WriteS10S11(int board, int v10, int v11);
    void PutS8(int board) { WriteS8(board, S(8, board)); }
    void PutS9(int board) { WriteS9(board, S(9, board)); }
    void PutS10S11(int board) { WriteS10S11(board, S(10, board), S(11, board)); }

    /// Data on R4 bit 3, most significant bit first, clocked by R6 bit 7.
    void ShiftOut(int board, int value);

    int ClockHold();
    void ClockSelect(int selector);

  private:
    void Line(char kind, int port, int value);

    RegisterOps* wire_;
    std::array<int, 56> shadows_{};
};

}  // namespace zu::reference
