#include "hw/sim/SimSignals.h"

#include <algorithm>
#include <utility>

namespace zu {
namespace {

std::uint8_t CodeOf(SimCode code, std::uint64_t n) {
    switch (code) {
        case SimCode::Down:
            return static_cast<std::uint8_t>(~n + 1);
        case SimCode::Gray:
            return static_cast<std::uint8_t>(n ^ (n >> 1));
        case SimCode::Walking:
            return static_cast<std::uint8_t>(1U << (n % 8));
        case SimCode::Johnson:
            return static_cast<std::uint8_t>(n % 16 < 8 ? (1U << (n % 8)) - 1 : 0xFFU << (n % 8));
        default:
            return static_cast<std::uint8_t>(n);
    }
}

std::uint64_t Count(SimTicks time, SimTicks step) {
    return static_cast<std::uint64_t>(FloorDiv(time, step));
}

/// What the next period brings cannot be before that.
SimTicks NextMultiple(SimTicks time, SimTicks step) {
    return (FloorDiv(time, step) + 1) * step;
}

}  // namespace

std::uint64_t SimHash(std::uint64_t seed, std::uint64_t n) {
    std::uint64_t x = seed * 0x9E3779B97F4A7C15U + n + 0x632BE59BD9B4E019U;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9U;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBU;
    return x ^ (x >> 31);
}

SimRun SimCounter::At(SimTicks time) {
    // A count that is seen from a higher bit on changes only when that bit does.
    const SimTicks step = step_ * (SimTicks{1} << shift_);
    return {CodeOf(code_, Count(time, step)), NextMultiple(time, step)};
}

SimRun SimSquare::At(SimTicks time) {
    const SimTicks inside = FloorMod(time - phase_, period_);
    const bool high = inside < high_;
    return {high ? mask_ : std::uint8_t{0}, time - inside + (high ? high_ : period_)};
}

SimRun SimPulseWidth::At(SimTicks time) {
    constexpr std::int64_t kWidths = 16;
    const SimTicks n = FloorMod(FloorDiv(time, period_), 2 * kWidths);
    const SimTicks width = (n < kWidths ? n + 1 : 2 * kWidths - n) * period_ / (kWidths + 1);
    const SimTicks inside = FloorMod(time, period_);
    const bool high = inside < width;
    return {high ? mask_ : std::uint8_t{0}, time - inside + (high ? width : period_)};
}

SimRun SimNoise::At(SimTicks time) {
    const std::uint64_t random = SimHash(seed_, Count(time, step_));
    return {static_cast<std::uint8_t>(random & mask_), NextMultiple(time, step_)};
}

SimRun SimGlitches::At(SimTicks time) {
    constexpr SimTicks kNarrowest = 2 * kTicksPerNs;
    const SimTicks inside = FloorMod(time, frame_);
    SimRun run{0, time - inside + frame_};
    for (unsigned bit = 0; bit < 8; ++bit) {
        if ((mask_ >> bit & 1U) == 0) continue;
        const std::uint64_t random = SimHash(seed_ + bit, Count(time, frame_));
        const auto width = kNarrowest + static_cast<SimTicks>(random % static_cast<std::uint64_t>(widest_));
        const auto room = static_cast<std::uint64_t>(frame_ - widest_ - kNarrowest);
        const auto first = static_cast<SimTicks>((random >> 20) % room);
        if (inside < first) {
            run.Until = std::min(run.Until, time - inside + first);
        } else if (inside < first + width) {
            run.Value = static_cast<std::uint8_t>(run.Value | 1U << bit);
            run.Until = std::min(run.Until, time - inside + first + width);
        }
    }
    return run;
}

std::size_t SimLoop::Find(SimTicks inside) const {
    for (std::size_t i = last_; i < edges_.size() && i < last_ + 4 && edges_[i].Time <= inside; ++i) {
        if (i + 1 == edges_.size() || edges_[i + 1].Time > inside) return i;
    }
    const auto behind = std::upper_bound(edges_.begin(), edges_.end(), inside,
                                         [](SimTicks t, const SimEdge& edge) { return t < edge.Time; });
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind - edges_.begin() - 1, 0));
}

SimRun SimLoop::At(SimTicks time) {
    if (edges_.empty() || length_ <= 0) return {};
    const SimTicks inside = FloorMod(time, length_);
    last_ = Find(inside);
    const SimTicks end = last_ + 1 < edges_.size() ? edges_[last_ + 1].Time : length_;
    return {edges_[last_].Value, time - inside + end};
}

void SimMix::Add(int pod, std::unique_ptr<SimSignal> signal) {
    if (pod >= 0 && pod < kSimPods) pods_[static_cast<std::size_t>(pod)].push_back(std::move(signal));
}

SimRun SimMix::At(int pod, SimTicks time) {
    SimRun mixed;
    if (pod < 0 || pod >= kSimPods) return mixed;
    for (const std::unique_ptr<SimSignal>& signal : pods_[static_cast<std::size_t>(pod)]) {
        const SimRun run = signal->At(time);
        mixed.Value ^= run.Value;
        mixed.Until = std::min(mixed.Until, run.Until);
    }
    return mixed;
}

}  // namespace zu
