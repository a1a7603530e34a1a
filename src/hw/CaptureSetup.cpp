#include "hw/CaptureSetup.h"

#include <algorithm>

namespace zu {
namespace {

constexpr std::int32_t kUsb = 9;
constexpr std::uint16_t kUsbBase = 1;  // stands for "no port"; nothing on the USB looks at it

Interleave InterleaveOf(const CaptureSetup& setup) {
    if (!setup.Internal() || setup.HavePatterns) return Interleave::Plain;
    if (setup.RateQuad()) return Interleave::Quad;
    return setup.RateDual() || setup.NoPatternMode() ? Interleave::Dual : Interleave::Plain;
}

void SortPods(CaptureSetup& setup, const InstrumentState& state) {
    for (int pod = 0; pod < setup.Pods; ++pod) {
        (IsPatternPod(state, pod) ? setup.HavePatterns : setup.HaveCapture) = true;
    }
}

}  // namespace

int PodMode(const InstrumentState& state, std::int64_t pod, int outside) {
    if (pod < 0 || pod >= kMaxPods) return outside;
    return state.Pods.HardwarePod[static_cast<std::size_t>(pod)];
}

bool IsPatternPod(const InstrumentState& state, std::int64_t pod) {
    const int mode = PodMode(state, pod, 0);
    return mode == 1 || mode == 2;
}

CaptureSetup CaptureSetupOf(const InstrumentState& state) {
    CaptureSetup setup;
    setup.Base = state.Identity.ComMode == kUsb ? kUsbBase : state.Identity.HwPort;
    setup.Boards = std::clamp(state.Shape.WordsPerTrig, 0, kMaxBoards);
    setup.Pods = std::clamp<int>(state.Shape.PodCount, 0, kMaxPods);
    setup.PodStep = std::max(state.Shape.BufStep, 0);
    setup.HardwareType = state.Identity.HardwareType;
    setup.HardwareMode = static_cast<std::uint8_t>(state.Memory.HardwareMode);
    setup.ClockType = state.Clock.ClockType;
    setup.ClockRate = state.Clock.ClockRate;
    setup.OutputMode = static_cast<std::uint8_t>(state.Pattern.PatternOutputMode);
    setup.CountMode = static_cast<std::uint8_t>(state.Trigger.TrigCntMd);
    setup.Count = state.Trigger.TrigCnt;
    setup.Position = std::max(state.Cursors.Cur[kCursorT], 0);
    SortPods(setup, state);
    setup.Memory = InterleaveOf(setup);
    return setup;
}

}  // namespace zu
