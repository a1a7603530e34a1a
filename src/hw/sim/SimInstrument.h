#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "hw/sim/SimBoard.h"
#include "hw/sim/SimClock.h"
#include "hw/sim/SimSpec.h"

namespace zu {

/// The simulated instrument: up to four boards of registers. It sees a board, a register and a value, however
/// they came, and decides here what that means. Nothing in it knows the code that drives it.
class SimInstrument {
  public:
    explicit SimInstrument(const SimTraits& traits);

    /// As after power-up.
    void Reset();

    void Write(int board, int reg, std::uint8_t value);
    /// The pod registers at addresses of their own: `first` is S10, else S11. Ignored by an instrument that
    /// has none.
    void WritePodRegister(int board, bool first, std::uint8_t value);
    /// A read with all that it sets off. A read of R0 is a strobe.
    std::uint8_t Read(int board, int reg);
    /// Bytes of one register in a row; of R0 they are memory and no strobes.
    void ReadBlock(int board, int reg, std::span<std::uint8_t> bytes);
    void WriteBlock(int board, int reg, std::span<const std::uint8_t> bytes);
    /// What a register would answer, without setting anything off; and that which a read sets off.
    [[nodiscard]] std::uint8_t Peek(int board, int reg) const;
    void Clock(int board, int reg);
    /// One clock of the chains, of no board in particular.
    void Strobe();

    [[nodiscard]] const SimTraits& Traits() const { return traits_; }
    /// Board 0 to 3; boards that are not fitted stay as after power-up.
    [[nodiscard]] const SimBoard& Board(int board) const;
    [[nodiscard]] SimClock SampleClock() const { return ClockOf(boards_[0], traits_.Later); }
    /// The position counter's load, 18 bits.
    [[nodiscard]] std::uint32_t Position() const { return position_.Value(); }
    /// Words of sample memory in use a bank.
    [[nodiscard]] int Depth() const;
    /// Accesses that no instrument would understand, the first ones in words.
    [[nodiscard]] const std::vector<std::string>& Complaints() const { return complaints_; }
    void Complain(const std::string& text);

  private:
    [[nodiscard]] bool Fitted(int board) const { return board >= 0 && board < traits_.Boards; }
    [[nodiscard]] std::uint8_t Status(int board) const;

    SimTraits traits_;
    std::vector<SimBoard> boards_;
    SimPosition position_;
    std::vector<std::string> complaints_;
};

}  // namespace zu
