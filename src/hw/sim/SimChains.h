#pragma once

#include <array>
#include <cstdint>

namespace zu {

/// Whether a bit of a register goes up or down with a write.
constexpr bool Rises(std::uint8_t before, std::uint8_t after, int bit) {
    return (before >> bit & 1) == 0 && (after >> bit & 1) != 0;
}
constexpr bool Falls(std::uint8_t before, std::uint8_t after, int bit) {
    return Rises(after, before, bit);
}

/// The 8-bit chain of a board. It feeds the pod registers, and on the older series the two bus latches.
class SimByteChain {
  public:
    /// One clock. True when this is the eighth after Mark.
    bool Shift(bool bit) {
        value_ = static_cast<std::uint8_t>(value_ << 1 | (bit ? 1 : 0));
        return toGo_ > 0 && --toGo_ == 0;
    }
    void Mark() { toGo_ = 8; }
    [[nodiscard]] std::uint8_t Value() const { return value_; }

  private:
    std::uint8_t value_ = 0;
    int toGo_ = 0;
};

/// The threshold converter of the newer series: address and level in 16 bits, taken only when exactly 16
/// clocks came since the last latch.
class SimDac {
  public:
    void Shift(bool bit) {
        value_ = static_cast<std::uint16_t>(value_ << 1 | (bit ? 1 : 0));
        ++clocks_;
    }
    /// True if a level was taken.
    bool Latch() {
        const bool whole = clocks_ == 16;
        clocks_ = 0;
        return whole;
    }
    [[nodiscard]] int Address() const { return value_ >> 8; }
    [[nodiscard]] std::uint8_t Level() const { return static_cast<std::uint8_t>(value_); }

  private:
    std::uint16_t value_ = 0;
    int clocks_ = 0;
};

/// The synthesiser of the sample clock: 22 bits, low bit first.
class SimSynth {
  public:
    static constexpr int kBits = 22;
    void Shift(bool bit) { word_ = word_ >> 1 | (bit ? 1U << (kBits - 1) : 0U); }
    [[nodiscard]] std::uint32_t Word() const { return word_; }

  private:
    std::uint32_t word_ = 0;
};

/// The 8254-type timer: three dividers, each loaded low byte first after its control word.
class SimTimer {
  public:
    void Control(std::uint8_t value) {
        const std::size_t counter = value >> 6;
        if (counter < counters_.size()) counters_[counter].HighNext = false;
    }
    void Load(std::size_t counter, std::uint8_t value) {
        Counter& c = counters_[counter % counters_.size()];
        if (c.HighNext) {
            c.Value = static_cast<std::uint16_t>(c.Low | value << 8);
            if (counter != 0) lastStage_ = counter;
        }
        c.Low = value;
        c.HighNext = !c.HighNext;
    }
    [[nodiscard]] std::uint16_t Value(std::size_t counter) const { return counters_[counter].Value; }
    /// What a divider divides by; 0 is the full 16 bits.
    [[nodiscard]] int Divisor(std::size_t counter) const {
        return counters_[counter].Value == 0 ? 65536 : counters_[counter].Value;
    }
    /// Counter 1 or 2, the one loaded last; 0 if neither was.
    [[nodiscard]] std::size_t LastStage() const { return lastStage_; }

  private:
    struct Counter {
        std::uint16_t Value = 0;
        std::uint8_t Low = 0;
        bool HighNext = false;
    };
    std::array<Counter, 3> counters_{};
    std::size_t lastStage_ = 0;
};

/// The counter that says where the trigger lies: loaded bit by bit, every second strobe shifting one in while
/// the load is open.
class SimPosition {
  public:
    /// The control byte S10 of board 0: bit 0 opens the load, bit 3 suspends it.
    void SetControl(std::uint8_t s10) {
        const bool open = (s10 & 1) != 0;
        const bool loads = open && (s10 & 8) == 0;
        if (loads && !loads_) strobes_ = 0;
        if (open_ && !open) value_ = shift_ & kMask;
        open_ = open;
        loads_ = loads;
    }
    void Strobe(bool bit) {
        if (!loads_ || ++strobes_ % 2 != 0) return;
        shift_ = (shift_ << 1 | (bit ? 1U : 0U)) & kMask;
    }
    [[nodiscard]] std::uint32_t Value() const { return value_; }

  private:
    static constexpr std::uint32_t kMask = 0x3FFFF;  // 18 bits; what came before them falls out
    std::uint32_t shift_ = 0;
    std::uint32_t value_ = 0;
    unsigned strobes_ = 0;
    bool open_ = false;
    bool loads_ = false;
};

}  // namespace zu
