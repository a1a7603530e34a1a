#pragma once

#include <cstdint>
#include <memory>

#include "hw/sim/SimTime.h"

namespace zu {

inline constexpr int kSimPods = 20;

/// The eight channels of a pod and how long they stay so.
struct SimRun {
    std::uint8_t Value = 0;
    SimTicks Until = kForever;  ///< first moment at which the value may differ, behind the one asked for
};

/// What is connected to the pods: signals over all time, before zero as well. The same moment always has the
/// same value.
class SimStimulus {
  public:
    virtual ~SimStimulus() = default;
    /// Pod 0 to 19; others are quiet.
    [[nodiscard]] virtual SimRun At(int pod, SimTicks time) = 0;
    /// Period of the signal at the external clock input. It rises at whole periods and falls between them.
    [[nodiscard]] virtual SimTicks ExternalPeriod() const { return kTicksPerUs; }
};

/// Nothing is connected: all channels low.
class SimQuiet final : public SimStimulus {
  public:
    SimRun At(int, SimTicks) override { return {}; }
};

}  // namespace zu
