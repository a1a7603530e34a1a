#include "hw/sim/SimClock.h"

#include <array>
#include <utility>

namespace zu {
namespace {

constexpr std::array<std::pair<std::uint32_t, double>, 7> kPeriods{{{0x3FD412, 8},
                                                                    {0x2D7C08, 10},
                                                                    {0x08B408, 20},
                                                                    {0x08B488, 40},
                                                                    {0x1D2D08, 50},
                                                                    {0x1D2D88, 100},
                                                                    {0x1D2E08, 200}}};
constexpr double kFixedNs = 10;

double DividedNs(const SimBoard& master, bool later, bool bothStages) {
    const SimTimer& timer = master.Timer();
    const double first = SynthPeriodNs(master.SynthWord()) * timer.Divisor(0);
    if (!bothStages) return first;
    // The older series has its second stage behind the serial bus; of two that are loaded the later counts.
    const std::size_t second = later || timer.LastStage() == 1 ? 1 : 2;
    return first * timer.Divisor(second);
}

}  // namespace

double SynthPeriodNs(std::uint32_t word) {
    for (const auto& [known, ns] : kPeriods) {
        if (known == word) return ns;
    }
    return 0;
}

SimClock ClockOf(const SimBoard& master, bool later) {
    switch (master.S8() >> 5) {
        case 0:
            return {SimClockSource::External, false, 0};
        case 1:
            return {SimClockSource::Internal, false, SynthPeriodNs(master.SynthWord())};
        case 2:
            return {SimClockSource::External, true, 0};
        case 3:
            return {SimClockSource::Internal, false, DividedNs(master, later, false)};
        case 4:
        case 6:
            return {SimClockSource::GatedExternal, false, 0};
        case 5:
            return {SimClockSource::Internal, false, DividedNs(master, later, true)};
        default:
            break;
    }
    const bool fixed = master.RegisterBit(3, 1) && master.RegisterBit(2, 5);
    return fixed ? SimClock{SimClockSource::Fixed, false, kFixedNs} : SimClock{};
}

}  // namespace zu
