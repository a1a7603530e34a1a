#pragma once

#include <cstdint>

#include "hw/sim/SimBoard.h"

namespace zu {

/// Where the sample clock comes from.
enum class SimClockSource : std::uint8_t {
    Stopped,
    Internal,       ///< synthesiser, with or without dividers
    Fixed,          ///< 10 ns whatever the synthesiser says
    External,       ///< edges of the first external clock
    GatedExternal,  ///< edges that the qualifier table lets pass
};

/// The sample clock as the registers of board 0 set it. Periods are those before pods are multiplexed.
struct SimClock {
    SimClockSource Source = SimClockSource::Stopped;
    bool Falling = false;  ///< of an external clock
    double PeriodNs = 0;   ///< 0 for an external or stopped clock
};

SimClock ClockOf(const SimBoard& master, bool later);

/// Period that a synthesiser word makes, ns; 0 for a word that makes none.
double SynthPeriodNs(std::uint32_t word);

}  // namespace zu
