#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "hw/sim/SimSignals.h"

namespace zu {

/// Samples of a recording, one byte a pod and sample. Shorter pods are quiet at their end.
struct SimSamples {
    SimTicks Period = 100 * kTicksPerNs;
    std::array<std::vector<std::uint8_t>, kSimPods> Pods;
};

/// Changes of a recording, in order of time from 0 on.
struct SimChanges {
    SimTicks Length = 1;
    std::array<std::vector<SimEdge>, kSimPods> Pods;
};

/// A recording as a stimulus, over and over again. Sampled at its own period it comes back sample for sample;
/// an external clock has that period as well.
std::shared_ptr<SimStimulus> MakeSimReplay(SimSamples samples);
std::shared_ptr<SimStimulus> MakeSimReplay(SimChanges changes);

}  // namespace zu
