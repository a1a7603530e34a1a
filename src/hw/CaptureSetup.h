#pragma once

#include <cstdint>

#include "hw/HardwareSession.h"

namespace zu {

/// How many of a board's memory lanes hold the samples of one pod, as a power of two.
enum class Interleave : std::uint8_t { Plain = 0, Dual = 1, Quad = 2 };

inline constexpr int kBoardLanes = 5;    ///< memory lanes of one board
inline constexpr int kUnmatchedPod = 4;  ///< the lane that has no partner in a pair

/// What arming and read-out take from the state, within bounds whatever the state holds.
struct CaptureSetup {
    std::uint16_t Base = 0;  ///< of the register operations
    int Boards = 0;          ///< 0..4; also the column one past the last board
    int Pods = 0;            ///< pods that exist, 0..20
    int PodStep = 0;         ///< pods from one board to the next
    std::uint8_t HardwareType = 0;
    std::uint8_t HardwareMode = 0;
    std::uint8_t ClockType = 0;
    std::uint8_t ClockRate = 0;
    std::uint8_t OutputMode = 0;  ///< pattern output: 0 once, 1 until the trigger, 2 continuous
    std::uint8_t CountMode = 0;   ///< TrigCntMd
    std::uint8_t Count = 0;       ///< TrigCnt
    std::int32_t Position = 0;    ///< sample of the buffer at which the trigger shall stand, 0 or above
    bool HavePatterns = false;    ///< some pod is in a pattern mode
    bool HaveCapture = false;     ///< some pod is not
    Interleave Memory = Interleave::Plain;

    [[nodiscard]] bool Internal() const { return ClockType == 0; }
    /// The two fastest rates, the two next to them; whatever the clock is.
    [[nodiscard]] bool RateQuad() const { return ClockRate == 1 || ClockRate == 2; }
    [[nodiscard]] bool RateDual() const { return ClockRate == 3 || ClockRate == 4; }
    /// The memory mode without pattern generator.
    [[nodiscard]] bool NoPatternMode() const { return HardwareMode == 3; }
};

CaptureSetup CaptureSetupOf(const InstrumentState& state);

/// Mode of a pod; `outside` for a pod that no table holds.
int PodMode(const InstrumentState& state, std::int64_t pod, int outside);
/// Whether a pod, 0..19, is in a pattern mode.
bool IsPatternPod(const InstrumentState& state, std::int64_t pod);

}  // namespace zu
