#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "hw/sim/SimStimulus.h"

namespace zu {

/// One source of signals on a pod. Channels that it does not drive are 0.
class SimSignal {
  public:
    virtual ~SimSignal() = default;
    [[nodiscard]] virtual SimRun At(SimTicks time) = 0;
};

/// What a counter shows after n steps.
enum class SimCode : std::uint8_t {
    Up,       ///< n
    Down,     ///< -n
    Gray,     ///< one bit changes a step
    Walking,  ///< one bit is high
    Johnson   ///< fills with ones, then with zeros
};

/// Eight bits of a counter that steps at whole multiples of `step`.
class SimCounter final : public SimSignal {
  public:
    /// `shift`: the lowest bit of the count that is seen.
    explicit SimCounter(SimTicks step, SimCode code = SimCode::Up, int shift = 0)
        : step_(step), code_(code), shift_(shift) {}
    SimRun At(SimTicks time) override;

  private:
    SimTicks step_;
    SimCode code_;
    int shift_;
};

/// A clock on one channel, high from its phase on.
class SimSquare final : public SimSignal {
  public:
    SimSquare(int bit, SimTicks period, SimTicks high, SimTicks phase = 0)
        : mask_(static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit))),
          period_(period),
          high_(high),
          phase_(phase) {}
    SimRun At(SimTicks time) override;

  private:
    std::uint8_t mask_;
    SimTicks period_, high_, phase_;
};

/// A pulse whose width goes up and down again from one period to the next.
class SimPulseWidth final : public SimSignal {
  public:
    SimPulseWidth(int bit, SimTicks period)
        : mask_(static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit))), period_(period) {}
    SimRun At(SimTicks time) override;

  private:
    std::uint8_t mask_;
    SimTicks period_;
};

/// Channels of `mask` change at random at whole multiples of `step`.
class SimNoise final : public SimSignal {
  public:
    SimNoise(std::uint64_t seed, SimTicks step, std::uint8_t mask = 0xFF)
        : seed_(seed), step_(step), mask_(mask) {}
    SimRun At(SimTicks time) override;

  private:
    std::uint64_t seed_;
    SimTicks step_;
    std::uint8_t mask_;
};

/// In each frame of time one narrow pulse on each channel of `mask`, of a width between 2 ns and `widest` and
/// at a place of its own. To be laid over other signals.
class SimGlitches final : public SimSignal {
  public:
    SimGlitches(std::uint64_t seed, SimTicks frame, SimTicks widest, std::uint8_t mask)
        : seed_(seed), frame_(frame), widest_(widest), mask_(mask) {}
    SimRun At(SimTicks time) override;

  private:
    std::uint64_t seed_;
    SimTicks frame_, widest_;
    std::uint8_t mask_;
};

/// A change of a recorded signal.
struct SimEdge {
    SimTicks Time = 0;
    std::uint8_t Value = 0;
};

/// A recording that repeats without end.
class SimLoop final : public SimSignal {
  public:
    /// Edges in order of time, the first at 0; `length` behind the last.
    SimLoop(std::vector<SimEdge> edges, SimTicks length) : edges_(std::move(edges)), length_(length) {}
    SimRun At(SimTicks time) override;

  private:
    [[nodiscard]] std::size_t Find(SimTicks inside) const;

    std::vector<SimEdge> edges_;
    SimTicks length_;
    std::size_t last_ = 0;  ///< where the last look-up ended; the next one is mostly near
};

/// Signals on their pods, several on one pod exclusive-ored.
class SimMix final : public SimStimulus {
  public:
    void Add(int pod, std::unique_ptr<SimSignal> signal);
    void SetExternalPeriod(SimTicks period) { externalPeriod_ = period; }
    SimRun At(int pod, SimTicks time) override;
    [[nodiscard]] SimTicks ExternalPeriod() const override { return externalPeriod_; }

  private:
    std::array<std::vector<std::unique_ptr<SimSignal>>, kSimPods> pods_;
    SimTicks externalPeriod_ = kTicksPerUs;
};

/// A number that looks random, always the same for the same two.
std::uint64_t SimHash(std::uint64_t seed, std::uint64_t n);

}  // namespace zu
