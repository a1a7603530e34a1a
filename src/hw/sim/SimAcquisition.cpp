#include "hw/sim/SimAcquisition.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zu {
namespace {

/// Stretches of even signals looked at in one go, so that a poll takes no longer than a few frames.
constexpr int kSearchBudget = 200000;
constexpr int kGateBudget = 400000;
/// Edges of a gated clock that are looked at before it begins to run, for the samples before the trigger.
constexpr std::int64_t kGateHistory = 131072;
constexpr double kSlowestNs = 1e10;

SimTicks PeriodOf(const SimClock& clock, int phases) {
    const double ticks = std::min(clock.PeriodNs, kSlowestNs) * kTicksPerNs / phases;
    return std::max<SimTicks>(1, std::llround(ticks));
}

bool IsExternal(const SimClock& clock) {
    return clock.Source == SimClockSource::External || clock.Source == SimClockSource::GatedExternal;
}

bool Ticks(const SimClock& clock) {
    return IsExternal(clock) || (clock.Source != SimClockSource::Stopped && clock.PeriodNs > 0);
}

bool SameClock(const SimClock& a, const SimClock& b) {
    return a.Source == b.Source && a.Falling == b.Falling && a.PeriodNs == b.PeriodNs;
}

}  // namespace

void SimAcquisition::Reset() {
    *this = SimAcquisition(*boards_);
}

void SimAcquisition::Update(const SimControl& control, int fitted,
                            const std::shared_ptr<SimStimulus>& stimulus, SimTicks now) {
    Progress(now);
    if (!control.Armed) {
        armed_ = begun_ = triggered_ = complete_ = ticks_ = false;
        return;
    }
    if (!armed_) {
        Arm();
        taken_.Trigger.Kind = control.Trigger.Kind;  // arming decides it, the rest is taken with the clock
    }
    if (!begun_ && control.Clock.Source != SimClockSource::Stopped) {
        Begin(control, fitted, stimulus, now);
    } else if (begun_ && !SameClock(control.Clock, taken_.Clock)) {
        FollowClock(control, now);
    }
    taken_.Gate = control.Gate;
    if (begun_ && !triggered_ && control.Gate == SimTriggerGate::Forced) {
        TriggerAt(std::max<std::int64_t>(0, timeline_->Next(now) - 1));
    }
}

void SimAcquisition::Arm() {
    armed_ = true;
    begun_ = triggered_ = complete_ = ticks_ = false;
    timeline_ = std::make_shared<SimTimeline>();
    snapshot_ = {};
}

void SimAcquisition::Begin(const SimControl& control, int fitted,
                           const std::shared_ptr<SimStimulus>& stimulus, SimTicks now) {
    const SimTriggerKind kind = taken_.Trigger.Kind;
    taken_ = control;
    taken_.Trigger.Kind = kind;
    stimulus_ = stimulus;
    begun_ = true;
    searched_ = 0;
    trigger_.Start(*boards_, fitted, taken_.Trigger);
    if (control.Clock.Source == SimClockSource::GatedExternal) {
        period_ = stimulus_->ExternalPeriod();
        gatedTo_ = now - kGateHistory * period_;
        TakeGated(now - 1);
        timeline_->StartCounting();
    }
    RunClock(now);
    PutOutPatterns(fitted);
}

/// The generator works with the sample clock, from its first edge on. R4 bit 4 says that it stops at the end.
void SimAcquisition::PutOutPatterns(int fitted) {
    SimPatterns patterns;
    bool any = false;
    for (int pod = 0; pod < fitted * kSimLanes; ++pod) {
        const SimBoard& board = (*boards_)[static_cast<std::size_t>(pod / kSimLanes)];
        if (!board.Generates(pod % kSimLanes)) continue;
        patterns.Pods[static_cast<std::size_t>(pod)] = board.Pattern(pod % kSimLanes);
        any = any || !board.Pattern(pod % kSimLanes).empty();
    }
    if (!any) return;
    patterns.Once = boards_->front().RegisterBit(4, 4);
    stimulus_ = std::make_shared<SimLoopback>(stimulus_, std::move(patterns), timeline_);
}

void SimAcquisition::FollowClock(const SimControl& control, SimTicks now) {
    if (triggered_ && !complete_ && control.Clock.Source == SimClockSource::Stopped) Finish();
    taken_.Clock = control.Clock;
    if (complete_) return;
    if (ticks_) timeline_->Hold(now);
    RunClock(now);
}

/// Sets the clock going that is in force; the samples so far stay as they are.
void SimAcquisition::RunClock(SimTicks now) {
    ticks_ = Ticks(taken_.Clock);
    if (!ticks_) return;
    if (taken_.Clock.Source == SimClockSource::GatedExternal) {
        period_ = stimulus_->ExternalPeriod();
        gatedTo_ = now;
        return;
    }
    const bool external = taken_.Clock.Source == SimClockSource::External;
    period_ = external ? stimulus_->ExternalPeriod() : PeriodOf(taken_.Clock, taken_.Phases);
    timeline_->Run(external ? FirstEdge(now) : now, period_);
}

/// First edge of the external clock that counts, not before a moment.
SimTicks SimAcquisition::FirstEdge(SimTicks from) const {
    const SimTicks shift = taken_.Clock.Falling ? period_ / 2 : 0;
    return CeilDiv(from - shift, period_) * period_ + shift;
}

/// Takes the edges up to `now` at which the qualifier table lets the clock pass. It sees the first pod.
void SimAcquisition::TakeGated(SimTicks now) {
    for (int budget = kGateBudget; gatedTo_ <= now && budget > 0; --budget) {
        const SimRun word = stimulus_->At(0, gatedTo_);
        const SimTicks end = std::min(word.Until, now + 1);
        const SimTicks edge = FirstEdge(gatedTo_);
        if (edge < end && boards_->front().Gate(word.Value)) {
            timeline_->Append(edge, period_, CeilDiv(end - edge, period_));
        }
        gatedTo_ = end;
    }
    timeline_->Forget(timeline_->Next(now) - 2 * Window());
}

void SimAcquisition::Progress(SimTicks now) {
    if (!begun_ || complete_) return;
    if (ticks_ && taken_.Clock.Source == SimClockSource::GatedExternal) TakeGated(now);
    if (!triggered_) Search(now);
    if (triggered_ && timeline_->Next(now) > triggerAt_ + AfterTrigger()) Finish();
}

void SimAcquisition::Search(SimTicks now) {
    const std::int64_t limit = timeline_->Next(now);
    if (taken_.Gate != SimTriggerGate::Open) {
        searched_ = limit;
        return;
    }
    for (int budget = kSearchBudget; searched_ < limit && budget > 0; --budget) {
        const SimTimeline::Piece piece = timeline_->Find(searched_);
        const SimTicks time = piece.TimeOf(searched_);
        const SimRun match = trigger_.Match(*stimulus_, time);
        const std::int64_t last = std::min(limit, piece.End) - searched_;
        const std::int64_t count = std::min(last, CeilDiv(match.Until - time, piece.Of.Period));
        const SimTrigger::Step step = trigger_.Take(match.Value != 0, count);
        if (step.Fired >= 0) return TriggerAt(searched_ + step.Fired);
        searched_ += step.Taken;
    }
}

void SimAcquisition::TriggerAt(std::int64_t sample) {
    triggered_ = true;
    triggerAt_ = sample;
}

SimMemory SimAcquisition::MemoryFrom(std::int64_t first) const {
    return {timeline_, first, Window(), -1, taken_.Phases, taken_.Depth, taken_.PhasesSwapped, stimulus_};
}

void SimAcquisition::Finish() {
    const std::int64_t first = triggerAt_ + AfterTrigger() - Window();
    if (ticks_ && taken_.Clock.Source == SimClockSource::GatedExternal) {
        // Cut short: what is missing is sampled as the clock would have come.
        const std::int64_t missing = first + Window() - timeline_->Next(gatedTo_);
        if (missing > 0) TakeGated(gatedTo_ + missing * period_ * 4);
    }
    captured_ = std::make_shared<SimMemory>(MemoryFrom(first));
    captured_->Trigger = triggerAt_ - first;
    complete_ = true;
    ++captures_;
}

const SimMemory* SimAcquisition::ReadOut(SimTicks now) {
    Progress(now);
    if (triggered_ && !complete_) Finish();
    if (!begun_ || complete_) return captured_.get();
    if (snapshot_.Stimulus == nullptr) snapshot_ = MemoryFrom(timeline_->Next(now) - Window());
    return &snapshot_;
}

}  // namespace zu
