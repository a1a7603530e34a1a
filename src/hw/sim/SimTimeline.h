#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "hw/sim/SimStimulus.h"

namespace zu {

/// When each sample of an acquisition was taken. The clock may be held, changed and gated, so the samples lie
/// in stretches of even spacing; before the first and behind the last the spacing goes on.
class SimTimeline {
  public:
    struct Stretch {
        std::int64_t First = 0;  ///< number of its first sample
        SimTicks Origin = 0;     ///< when that one was taken
        SimTicks Period = 1;
    };

    /// The clock runs: samples come at `origin` and every `period` from then on.
    void Run(SimTicks origin, SimTicks period);
    /// The clock stands; samples up to `now` have been taken.
    void Hold(SimTicks now);
    /// A stretch of `count` samples and no more.
    void Append(SimTicks origin, SimTicks period, std::int64_t count);
    /// Makes the sample that is next number 0; those before it count down from -1.
    void StartCounting();
    /// Forgets stretches that end before a sample.
    void Forget(std::int64_t sample);

    /// Number that the next sample after `now` will have.
    [[nodiscard]] std::int64_t Next(SimTicks now) const;
    [[nodiscard]] SimTicks TimeOf(std::int64_t sample) const;
    /// The newest sample at a time, be it before the first one or behind the last.
    [[nodiscard]] std::int64_t NumberAt(SimTicks time) const;
    [[nodiscard]] bool Empty() const { return stretches_.empty(); }

    /// The stretch of a sample and the first sample behind it.
    struct Piece {
        Stretch Of;
        std::int64_t End = 0;
        [[nodiscard]] SimTicks TimeOf(std::int64_t sample) const {
            return Of.Origin + (sample - Of.First) * Of.Period;
        }
    };
    [[nodiscard]] Piece Find(std::int64_t sample) const;

    /// What a pod shows at samples `first`, `first + stride`, ….
    void Sample(SimStimulus& stimulus, int pod, std::int64_t first, std::int64_t stride,
                std::span<std::uint8_t> out) const;

  private:
    std::vector<Stretch> stretches_;
    std::int64_t next_ = 0;  ///< first sample not known; of no meaning while the clock runs
    bool runs_ = false;
};

}  // namespace zu
