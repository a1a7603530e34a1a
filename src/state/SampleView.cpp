#include "state/SampleView.h"

#include <algorithm>

namespace zu {

SampleView BindPod(const InstrumentState& state, int pod) {
    if (pod < 0 || pod >= kMaxPods) return {};
    const auto p = static_cast<std::size_t>(pod);
    const bool pattern = IsPatternMode(state.Pods.HardwarePod[p]);
    const std::uint8_t* bytes = pattern ? state.Buffer.PatPod[p] : state.Buffer.Pod[p];
    const auto room = static_cast<std::int64_t>(state.Buffer.Room(pod));
    const auto full = static_cast<std::int32_t>(std::clamp<std::int64_t>(state.Buffer.BufLen[p], 0, room));
    if (bytes == nullptr || full == 0) return {};
    const std::int32_t adjust = state.Pods.AdjAddr[p];
    const std::int32_t base = !pattern && adjust >= 0 && adjust <= full ? adjust : 0;
    return {bytes + base, full - base, GetBufLenDisp(pod, state.Buffer.BufLen, pattern ? 0 : adjust)};
}

SampleView BindChannel(const InstrumentState& state, int channel) {
    return channel < 0 || channel >= kMaxChannels ? SampleView{} : BindPod(state, channel / 8);
}

}  // namespace zu
