#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "hw/sim/SimStimulus.h"
#include "hw/sim/SimTimeline.h"

namespace zu {

/// The pattern memories of an instrument as they are put out.
struct SimPatterns {
    std::array<std::vector<std::uint8_t>, kSimPods> Pods;  ///< empty: the pod is none of the generator's
    bool Once = false;                                     ///< the last byte stays instead of a repetition
};

/// Signals on whose pods the generator works as well: where it drives a pod, the pod shows the pattern, a
/// byte a sample from number 0 on.
class SimLoopback final : public SimStimulus {
  public:
    SimLoopback(std::shared_ptr<SimStimulus> stimulus, SimPatterns patterns,
                std::shared_ptr<const SimTimeline> timeline)
        : signals_(std::move(stimulus)), patterns_(std::move(patterns)), timeline_(std::move(timeline)) {}
    SimRun At(int pod, SimTicks time) override;
    [[nodiscard]] SimTicks ExternalPeriod() const override { return signals_->ExternalPeriod(); }

  private:
    std::shared_ptr<SimStimulus> signals_;
    SimPatterns patterns_;
    std::shared_ptr<const SimTimeline> timeline_;
};

}  // namespace zu
