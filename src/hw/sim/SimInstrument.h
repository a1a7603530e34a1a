#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hw/sim/SimAcquisition.h"
#include "hw/sim/SimBoard.h"
#include "hw/sim/SimClock.h"
#include "hw/sim/SimSpec.h"
#include "hw/sim/SimStimulus.h"
#include "hw/sim/SimTime.h"

namespace zu {

inline constexpr int kSimBoards = 4;

/// The simulated instrument: up to four boards of registers. It sees a board, a register and a value, however
/// they came, and decides here what that means. Nothing in it knows the code that drives it.
class SimInstrument {
  public:
    explicit SimInstrument(const SimTraits& traits);
    SimInstrument(const SimInstrument&) = delete;  // parts of it look at its boards
    SimInstrument& operator=(const SimInstrument&) = delete;

    /// As after power-up. The stimulus stays connected and time goes on.
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
    /// What a register would answer now, without setting anything off; and that which a read sets off.
    [[nodiscard]] std::uint8_t Peek(int board, int reg);
    void Clock(int board, int reg);
    /// One clock of the chains, of no board in particular.
    void Strobe();

    /// What is connected to the pods from the next acquisition on; null: nothing.
    void Connect(std::shared_ptr<SimStimulus> stimulus);
    [[nodiscard]] const std::shared_ptr<SimStimulus>& Stimulus() const { return stimulus_; }

    /// Time begins at 0 and is the instrument's own: it passes by Advance and with each poll of the status.
    /// In real time it passes by itself.
    void SetRealTime(bool real) { time_.SetReal(real); }
    void Advance(double ns) { time_.Advance(static_cast<SimTicks>(ns * kTicksPerNs)); }
    /// Own time that a poll of the status takes, 1 ms if not set.
    void SetPollNs(double ns) { pollTicks_ = static_cast<SimTicks>(ns * kTicksPerNs); }
    [[nodiscard]] SimTicks Now() const { return time_.Now(); }

    [[nodiscard]] const SimTraits& Traits() const { return traits_; }
    /// Board 0 to 3; boards that are not fitted stay as after power-up.
    [[nodiscard]] const SimBoard& Board(int board) const;
    [[nodiscard]] SimClock SampleClock() const { return ClockOf(boards_[0], traits_.Later); }
    /// The position counter's load, 18 bits.
    [[nodiscard]] std::uint32_t Position() const { return position_.Value(); }
    /// Words of sample memory in use a bank.
    [[nodiscard]] int Depth() const;
    /// The page that the next trigger memory write goes to, and the count register.
    [[nodiscard]] int TriggerPage() const { return page_; }
    [[nodiscard]] std::uint8_t TriggerCount() const { return count_; }
    [[nodiscard]] const SimAcquisition& Acquisition() const { return acquisition_; }
    /// Accesses that no instrument would understand, the first ones in words.
    [[nodiscard]] const std::vector<std::string>& Complaints() const { return complaints_; }
    void Complain(const std::string& text);

  private:
    /// Where in a window the bytes of a read-out come from.
    struct Bank {
        int Pod = 0;
        std::int64_t First = 0;
        std::int64_t Stride = 1;
        friend bool operator==(const Bank&, const Bank&) = default;
    };
    struct ReadCache {
        const SimMemory* Memory = nullptr;
        unsigned Captures = 0;
        Bank From;
        std::int64_t First = -1;  ///< address of the first byte
        std::vector<std::uint8_t> Bytes;
    };

    [[nodiscard]] bool Fitted(int board) const { return board >= 0 && board < traits_.Boards; }
    [[nodiscard]] std::uint8_t Status(int board);
    void OnR1(std::uint8_t before, std::uint8_t after);
    void OnControl();
    [[nodiscard]] SimControl Control() const;
    [[nodiscard]] std::optional<Bank> BankOf(int board, const SimMemory& memory) const;
    [[nodiscard]] std::optional<Bank> LaterBank(int board, const SimMemory& memory) const;
    [[nodiscard]] std::optional<Bank> EarlierBank(int board, const SimMemory& memory) const;
    void ReadMemory(int board, std::span<std::uint8_t> bytes);
    [[nodiscard]] std::uint8_t PeekMemory(int board);

    SimTraits traits_;
    std::vector<SimBoard> boards_;
    SimPosition position_;
    std::vector<std::string> complaints_;
    SimTime time_;
    SimTicks pollTicks_ = kTicksPerMs;
    std::shared_ptr<SimStimulus> stimulus_;
    SimAcquisition acquisition_;
    SimClock clock_;  ///< as the last write of S8 left it; the synthesiser may be reloaded meanwhile
    std::uint32_t clockWord_ = 0;
    unsigned s8Writes_ = 0;
    int page_ = 0;
    std::uint8_t count_ = 0;
    int polls_ = 0;                                 ///< since arming
    std::array<std::uint32_t, kSimBoards> next_{};  ///< memory address of the next byte
    ReadCache cache_;
};

}  // namespace zu
