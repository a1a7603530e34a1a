#include "hw/sim/SimReplay.h"

#include <algorithm>
#include <utility>

namespace zu {
namespace {

class SampleReplay final : public SimStimulus {
  public:
    explicit SampleReplay(SimSamples samples) : samples_(std::move(samples)) {
        samples_.Period = std::max<SimTicks>(samples_.Period, 1);
        for (const auto& pod : samples_.Pods) {
            length_ = std::max(length_, static_cast<std::int64_t>(pod.size()));
        }
    }

    SimRun At(int pod, SimTicks time) override {
        if (pod < 0 || pod >= kSimPods || length_ == 0) return {};
        const auto& list = samples_.Pods[static_cast<std::size_t>(pod)];
        const std::int64_t n = FloorDiv(time, samples_.Period);
        const std::int64_t place = FloorMod(n, length_);
        const std::int64_t run = RunAt(list, place);
        const auto size = static_cast<std::int64_t>(list.size());
        const std::uint8_t value = place < size ? list[static_cast<std::size_t>(place)] : std::uint8_t{0};
        return {value, (n + run) * samples_.Period};
    }
    [[nodiscard]] SimTicks ExternalPeriod() const override { return samples_.Period; }

  private:
    /// Samples that are alike from a place on; long runs come in pieces.
    [[nodiscard]] std::int64_t RunAt(const std::vector<std::uint8_t>& list, std::int64_t place) const {
        constexpr std::int64_t kLookAhead = 256;
        const auto size = static_cast<std::int64_t>(list.size());
        if (place >= size) return length_ - place;
        const std::int64_t limit = std::min(size, place + kLookAhead);
        std::int64_t end = place + 1;
        while (end < limit && list[static_cast<std::size_t>(end)] == list[static_cast<std::size_t>(place)]) {
            ++end;
        }
        return end - place;
    }

    SimSamples samples_;
    std::int64_t length_ = 0;
};

}  // namespace

std::shared_ptr<SimStimulus> MakeSimReplay(SimSamples samples) {
    return std::make_shared<SampleReplay>(std::move(samples));
}

std::shared_ptr<SimStimulus> MakeSimReplay(SimChanges changes) {
    auto mix = std::make_shared<SimMix>();
    for (int pod = 0; pod < kSimPods; ++pod) {
        std::vector<SimEdge>& edges = changes.Pods[static_cast<std::size_t>(pod)];
        if (edges.empty()) continue;
        if (edges.front().Time > 0) edges.insert(edges.begin(), SimEdge{});
        const SimTicks length = std::max(changes.Length, edges.back().Time + 1);
        mix->Add(pod, std::make_unique<SimLoop>(std::move(edges), length));
    }
    return mix;
}

}  // namespace zu
