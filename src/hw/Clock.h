#pragma once

#include <cstdint>
#include <span>

#include "hw/HardwareSession.h"
#include "hw/Registers.h"

namespace zu {

inline constexpr int kClockWordBits = 22;

/// What the clock is programmed from. SetClock takes it from the state; parking the instrument sets its own.
struct ClockSettings {
    std::uint8_t PatternOutputMode = 1;
    std::uint8_t HardwareMode = 0;
    std::uint8_t HardwareType = 0;
    std::uint8_t ClockRate = 5;
    std::uint8_t ClockType = 0;
    std::uint8_t ClockEdge = 0;
    std::span<const Text<kQualifierText>> ClockExt;
    std::uint8_t Emulated = 0;
    std::span<const std::int8_t> HardwarePod;  ///< the pods that exist
};

/// The settings that the state asks for. The spans look into the state.
ClockSettings ClockSettingsOf(const InstrumentState& state);
/// Programs synthesiser, dividers and selector. False: the user stopped at the pattern question.
bool SetClock(HardwareSession& hardware, std::uint16_t base, const ClockSettings& settings);

/// Sends a word (low bit first) to the synthesiser of a column by R0 and R2. The values of R4 and S2 are the
/// ones to start from; no shadow changes.
void LoadClockWord(Registers& registers, int column, std::uint8_t r4, std::uint8_t s2, std::uint32_t word);

}  // namespace zu
