#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "hw/sim/SimBoard.h"
#include "hw/sim/SimClock.h"
#include "hw/sim/SimPatterns.h"
#include "hw/sim/SimStimulus.h"
#include "hw/sim/SimTimeline.h"
#include "hw/sim/SimTrigger.h"

namespace zu {

/// What bits 5 and 6 of R3 say while the clock runs.
enum class SimTriggerGate : std::uint8_t {
    Open,    ///< 00 and 11: the trigger decides
    Parked,  ///< 01: it never comes
    Forced   ///< 10: it is now
};

/// What the registers say to an acquisition at a moment.
struct SimControl {
    bool Armed = false;
    SimClock Clock;
    SimTriggerGate Gate = SimTriggerGate::Open;
    SimTriggerSetup Trigger;     ///< taken when the clock begins to run, as all below
    int Phases = 1;              ///< samples of a lane's pod in each clock
    int Depth = 8192;            ///< words of memory a lane
    bool PhasesSwapped = false;  ///< of two phases the later one is in the first bank
    std::uint32_t Position = 0;
};

/// Samples that were taken, or would be: those before the window and behind it can be asked for as well.
struct SimMemory {
    std::shared_ptr<const SimTimeline> Timeline;
    std::int64_t First = 0;  ///< number of the window's first sample
    std::int64_t Length = 0;
    std::int64_t Trigger = -1;  ///< place of the trigger in the window, -1: none came
    int Phases = 1;
    int Depth = 8192;
    bool PhasesSwapped = false;
    std::shared_ptr<SimStimulus> Stimulus;

    /// What a pod held at places `first`, `first + stride`, … of the window.
    void Sample(int pod, std::int64_t first, std::int64_t stride, std::span<std::uint8_t> out) const {
        Timeline->Sample(*Stimulus, pod, First + first, stride, out);
    }
};

/// From arming to a full memory: lets samples come with the clock, looks for the trigger, counts what is
/// still to come after it. Nothing happens by itself: each call brings it up to the moment given.
class SimAcquisition {
  public:
    /// The boards must stay where they are.
    explicit SimAcquisition(const std::vector<SimBoard>& boards) : boards_(&boards) {}

    void Reset();
    /// To be called after every write that may change the control.
    void Update(const SimControl& control, int fitted, const std::shared_ptr<SimStimulus>& stimulus,
                SimTicks now);
    void Progress(SimTicks now);
    [[nodiscard]] bool Triggered() const { return triggered_; }
    [[nodiscard]] bool Complete() const { return complete_; }
    /// What read-out finds: a capture whose trigger came is finished at once; of one that still waits it is
    /// the newest samples. Null if nothing was ever sampled.
    const SimMemory* ReadOut(SimTicks now);
    /// The last finished capture; null before the first.
    [[nodiscard]] const SimMemory* Captured() const { return captured_.get(); }
    /// Counts the finished captures.
    [[nodiscard]] unsigned Captures() const { return captures_; }

  private:
    void Arm();
    void FollowClock(const SimControl& control, SimTicks now);
    void Begin(const SimControl& control, int fitted, const std::shared_ptr<SimStimulus>& stimulus,
               SimTicks now);
    void RunClock(SimTicks now);
    void PutOutPatterns(int fitted);
    void TakeGated(SimTicks now);
    void Search(SimTicks now);
    void TriggerAt(std::int64_t sample);
    void Finish();
    [[nodiscard]] SimMemory MemoryFrom(std::int64_t first) const;
    [[nodiscard]] SimTicks FirstEdge(SimTicks from) const;
    [[nodiscard]] std::int64_t Window() const { return std::int64_t{taken_.Depth} * taken_.Phases; }
    [[nodiscard]] std::int64_t AfterTrigger() const {
        return (0x40000 - std::int64_t{taken_.Position}) * 2 * taken_.Phases;
    }

    const std::vector<SimBoard>* boards_;
    SimControl taken_;  ///< as the clock began to run, but for the clock and the gate
    std::shared_ptr<SimStimulus> stimulus_;
    std::shared_ptr<SimTimeline> timeline_;  ///< of each arming its own; stands still once it is complete
    SimTrigger trigger_;
    bool armed_ = false;
    bool begun_ = false;
    bool triggered_ = false;
    bool complete_ = false;
    bool ticks_ = false;
    SimTicks period_ = 1;
    SimTicks gatedTo_ = 0;       ///< gated clock: edges before this have been looked at
    std::int64_t searched_ = 0;  ///< samples before this have been looked at
    std::int64_t triggerAt_ = 0;
    std::shared_ptr<SimMemory> captured_;
    SimMemory snapshot_;
    unsigned captures_ = 0;
};

}  // namespace zu
