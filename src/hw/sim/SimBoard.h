#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "hw/sim/SimChains.h"
#include "hw/sim/SimSpec.h"

namespace zu {

inline constexpr int kSimLanes = 5;
inline constexpr int kSimTriggerPages = 16;

/// A page of trigger memory: for each byte that a lane may show, bit i tells whether lane i matches.
using SimTriggerTable = std::array<std::uint8_t, 256>;

/// One board of the simulated instrument: sixteen registers and what hangs on their bits.
class SimBoard {
  public:
    explicit SimBoard(const SimTraits& traits) : traits_(traits) {}

    void Write(int reg, std::uint8_t value);
    /// The pod registers at their own addresses.
    void WritePodRegister(bool first, std::uint8_t value) { (first ? s10_ : s11_) = value; }
    /// A block of bytes into the pattern memory, even bytes for the first lane of the open pair.
    void WriteBlock(int reg, std::span<const std::uint8_t> bytes);

    [[nodiscard]] std::uint8_t Register(int reg) const {
        return registers_[static_cast<std::size_t>(reg & 15)];
    }
    [[nodiscard]] bool RegisterBit(int reg, int bit) const { return (Register(reg) >> bit & 1) != 0; }
    [[nodiscard]] std::uint8_t S8() const { return s8_; }
    [[nodiscard]] std::uint8_t S9() const { return s9_; }
    [[nodiscard]] std::uint8_t S10() const { return s10_; }
    [[nodiscard]] std::uint8_t S11() const { return s11_; }
    [[nodiscard]] const SimTimer& Timer() const { return timer_; }
    [[nodiscard]] std::uint32_t SynthWord() const { return synth_.Word(); }
    /// Threshold level of a channel group, 0 to 2.
    [[nodiscard]] std::uint8_t Threshold(int group) const {
        return thresholds_[static_cast<std::size_t>(group) % thresholds_.size()];
    }
    /// Whether the external clock passes at a word of the qualifier signals.
    [[nodiscard]] bool Gate(std::uint8_t word) const { return gate_[word]; }
    /// Writes of S8, the one that the sample clock follows.
    [[nodiscard]] unsigned S8Writes() const { return s8Writes_; }
    /// Page 0 to 15 that trigger memory writes go to, and its tables.
    void SetTriggerPage(int page) { triggerPage_ = static_cast<std::size_t>(page) % kSimTriggerPages; }
    [[nodiscard]] const SimTriggerTable& TriggerTable(int page) const {
        return trigger_[static_cast<std::size_t>(page) % kSimTriggerPages];
    }
    /// Whether the pattern generator drives a lane.
    [[nodiscard]] bool Generates(int lane) const;
    /// What was last downloaded into a lane.
    [[nodiscard]] const std::vector<std::uint8_t>& Pattern(int lane) const {
        return patterns_[static_cast<std::size_t>(lane) % patterns_.size()];
    }

  private:
    void OnR2(std::uint8_t before, std::uint8_t after);
    void OnR4(std::uint8_t before, std::uint8_t after);
    void OnR5(std::uint8_t before, std::uint8_t after);
    void OnR6(std::uint8_t before, std::uint8_t after);
    void OnBusControl(std::uint8_t before, std::uint8_t after);
    void TakeLevel();
    void SetS8(std::uint8_t value) {
        s8_ = value;
        ++s8Writes_;
    }
    void SetS9(std::uint8_t value);
    void OnPatternByte(std::uint8_t value);
    [[nodiscard]] bool DataBit() const { return RegisterBit(4, 3); }
    [[nodiscard]] int OpenLane() const;
    void Append(int lane, std::uint8_t value);

    SimTraits traits_;
    std::array<std::uint8_t, 16> registers_{};
    std::uint8_t s8_ = 0;
    unsigned s8Writes_ = 0;
    std::uint8_t s9_ = 0;
    std::uint8_t s10_ = 0;
    std::uint8_t s11_ = 0;
    SimByteChain chain_;
    std::uint8_t busData_ = 0;
    std::uint8_t busControl_ = 0;
    SimDac dac_;
    SimSynth synth_;
    SimTimer timer_;
    std::array<std::uint8_t, 3> thresholds_{};
    std::array<bool, 256> gate_{};
    std::array<SimTriggerTable, kSimTriggerPages> trigger_{};
    std::size_t triggerPage_ = 0;
    std::array<std::vector<std::uint8_t>, kSimLanes> patterns_;
    std::array<bool, kSimLanes> fresh_{};  // opened; the next byte replaces what is there
    unsigned patternBytes_ = 0;            // since the lane was opened
};

}  // namespace zu
