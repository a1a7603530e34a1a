#pragma once

#include <chrono>
#include <cstdint>

namespace zu {

/// The simulator's unit of time, 100 ps: every period that the clock can make is a whole number of it.
using SimTicks = std::int64_t;
inline constexpr SimTicks kTicksPerNs = 10;
inline constexpr SimTicks kTicksPerUs = 1000 * kTicksPerNs;
inline constexpr SimTicks kTicksPerMs = 1000 * kTicksPerUs;
/// Later than anything; sums of two of them do not overflow.
inline constexpr SimTicks kForever = INT64_MAX / 4;

/// Floored division and its remainder: time also runs before zero.
constexpr SimTicks FloorDiv(SimTicks a, SimTicks b) {
    return a / b - (a % b < 0 ? 1 : 0);
}
constexpr SimTicks FloorMod(SimTicks a, SimTicks b) {
    return a - FloorDiv(a, b) * b;
}
constexpr SimTicks CeilDiv(SimTicks a, SimTicks b) {
    return -FloorDiv(-a, b);
}

/// The time in which the instrument lives: its own, which only Advance moves, or that of this machine.
class SimTime {
  public:
    [[nodiscard]] SimTicks Now() const {
        if (!real_) return base_;
        const auto passed = std::chrono::steady_clock::now() - since_;
        return base_ + std::chrono::duration_cast<std::chrono::nanoseconds>(passed).count() * kTicksPerNs;
    }
    /// Lets own time pass; without effect on the machine's.
    void Advance(SimTicks ticks) {
        if (!real_ && ticks > 0) base_ += ticks;
    }
    /// Goes on from the present moment in the other kind of time.
    void SetReal(bool real) {
        base_ = Now();
        real_ = real;
        since_ = std::chrono::steady_clock::now();
    }
    [[nodiscard]] bool Real() const { return real_; }

  private:
    SimTicks base_ = 0;
    bool real_ = false;
    std::chrono::steady_clock::time_point since_{};
};

}  // namespace zu
