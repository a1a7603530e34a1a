#include "hw/sim/SimTimeline.h"

#include <algorithm>

namespace zu {
namespace {

constexpr std::int64_t kNoEnd = INT64_MAX / 4;

bool Continues(const SimTimeline::Stretch& last, std::int64_t first, SimTicks origin, SimTicks period) {
    return last.Period == period && last.Origin + (first - last.First) * period == origin;
}

}  // namespace

void SimTimeline::Run(SimTicks origin, SimTicks period) {
    stretches_.push_back({next_, origin, period});
    runs_ = true;
}

void SimTimeline::Hold(SimTicks now) {
    next_ = Next(now);
    runs_ = false;
}

void SimTimeline::Append(SimTicks origin, SimTicks period, std::int64_t count) {
    if (stretches_.empty() || !Continues(stretches_.back(), next_, origin, period)) {
        stretches_.push_back({next_, origin, period});
    }
    next_ += count;
}

void SimTimeline::StartCounting() {
    for (Stretch& s : stretches_) s.First -= next_;
    next_ = 0;
}

void SimTimeline::Forget(std::int64_t sample) {
    std::size_t drop = 0;
    while (drop + 1 < stretches_.size() && stretches_[drop + 1].First <= sample) ++drop;
    stretches_.erase(stretches_.begin(), stretches_.begin() + static_cast<std::ptrdiff_t>(drop));
}

std::int64_t SimTimeline::Next(SimTicks now) const {
    if (!runs_) return next_;
    const Stretch& last = stretches_.back();
    if (now < last.Origin) return last.First;
    return last.First + (now - last.Origin) / last.Period + 1;
}

SimTimeline::Piece SimTimeline::Find(std::int64_t sample) const {
    if (stretches_.empty()) return {{}, kNoEnd};
    auto behind = std::upper_bound(stretches_.begin(), stretches_.end(), sample,
                                   [](std::int64_t s, const Stretch& stretch) { return s < stretch.First; });
    if (behind == stretches_.begin()) ++behind;
    const std::int64_t end = behind == stretches_.end() ? kNoEnd : behind->First;
    return {*(behind - 1), end};
}

SimTicks SimTimeline::TimeOf(std::int64_t sample) const {
    return Find(sample).TimeOf(sample);
}

std::int64_t SimTimeline::NumberAt(SimTicks time) const {
    if (stretches_.empty()) return 0;
    auto behind = std::upper_bound(stretches_.begin(), stretches_.end(), time,
                                   [](SimTicks t, const Stretch& stretch) { return t < stretch.Origin; });
    if (behind == stretches_.begin()) ++behind;
    const Stretch& of = *(behind - 1);
    const std::int64_t number = of.First + FloorDiv(time - of.Origin, of.Period);
    return behind == stretches_.end() ? number : std::min(number, behind->First - 1);
}

void SimTimeline::Sample(SimStimulus& stimulus, int pod, std::int64_t first, std::int64_t stride,
                         std::span<std::uint8_t> out) const {
    const auto size = static_cast<std::int64_t>(out.size());
    std::int64_t done = 0;
    while (done < size) {
        const std::int64_t sample = first + done * stride;
        const Piece piece = Find(sample);
        const std::int64_t pieceEnd = std::min(size, done + CeilDiv(piece.End - sample, stride));
        const SimTicks step = piece.Of.Period * stride;
        SimTicks time = piece.TimeOf(sample);
        while (done < pieceEnd) {
            const SimRun run = stimulus.At(pod, time);
            const std::int64_t count =
                run.Until - time <= step ? 1 : std::min(pieceEnd - done, CeilDiv(run.Until - time, step));
            std::fill_n(out.begin() + done, count, run.Value);
            done += count;
            time += count * step;
        }
    }
}

}  // namespace zu
