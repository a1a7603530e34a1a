#include "hw/sim/SimPatterns.h"

namespace zu {

SimRun SimLoopback::At(int pod, SimTicks time) {
    if (pod < 0 || pod >= kSimPods) return {};
    const std::vector<std::uint8_t>& pattern = patterns_.Pods[static_cast<std::size_t>(pod)];
    if (pattern.empty()) return signals_->At(pod, time);
    const auto length = static_cast<SimTicks>(pattern.size());
    const std::int64_t n = timeline_->NumberAt(time);
    if (n < 0) return {pattern.front(), timeline_->TimeOf(0)};
    if (patterns_.Once && n >= length) return {pattern.back(), kForever};
    return {pattern[static_cast<std::size_t>(n % length)], timeline_->TimeOf(n + 1)};
}

}  // namespace zu
