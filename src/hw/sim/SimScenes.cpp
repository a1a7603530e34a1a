#include "hw/sim/SimScenes.h"

#include <algorithm>
#include <utility>

#include "hw/sim/SimBuses.h"
#include "hw/sim/SimSignals.h"
#include "state/Rates.h"

namespace zu {
namespace {

constexpr SimTicks Ns(SimTicks ns) {
    return ns * kTicksPerNs;
}
constexpr SimTicks Us(SimTicks us) {
    return us * kTicksPerUs;
}

void AddSquare(SimMix& mix, int channel, SimTicks period, SimTicks high, SimTicks phase = 0) {
    mix.Add(channel / 8, std::make_unique<SimSquare>(channel % 8, period, high, phase));
}

void AddClock(SimMix& mix, int channel, SimTicks period, SimTicks phase = 0) {
    AddSquare(mix, channel, period, period / 2, phase);
}

void AddCounter(SimMix& mix, int pod, SimTicks step, SimCode code, int shift = 0) {
    mix.Add(pod, std::make_unique<SimCounter>(step, code, shift));
}

/// Larger instruments see slower counters on the pods that the scene says nothing of.
void AddMoreCounters(SimMix& mix) {
    for (int pod = 5; pod < kSimPods; ++pod) AddCounter(mix, pod, Ns(100) * pod, SimCode::Up);
}

void Counters(SimMix& mix, std::uint64_t) {
    AddCounter(mix, 0, Ns(100), SimCode::Up);
    AddCounter(mix, 1, Ns(100), SimCode::Up, 8);
    AddCounter(mix, 2, Ns(200), SimCode::Gray);
    AddCounter(mix, 3, Ns(500), SimCode::Walking);
    AddCounter(mix, 4, Ns(500), SimCode::Johnson);
    AddMoreCounters(mix);
}

void Clocks(SimMix& mix, std::uint64_t) {
    constexpr SimTicks kPeriods[] = {Ns(20), Ns(40), Ns(50), Ns(100), Ns(200), Ns(500), Us(1),   Us(2),
                                     Us(5),  Us(10), Us(20), Us(50),  Us(100), Us(200), Us(500), Us(1000)};
    int channel = 0;
    for (const SimTicks period : kPeriods) AddClock(mix, channel++, period);
    AddClock(mix, 16, Us(2));
    AddClock(mix, 17, Us(2), Ns(500));
    for (int i = 0; i < 4; ++i) AddSquare(mix, 18 + i, Us(4), Ns(800), Us(1) * i);
    AddSquare(mix, 22, Us(1), Ns(100));
    AddSquare(mix, 23, Us(1), Ns(900));
}

void I2c(SimMix& mix, std::uint64_t seed) {
    mix.Add(0, SimI2cEeprom(seed, Us(10), {}));
}

void Spi(SimMix& mix, std::uint64_t seed) {
    mix.Add(0, SimSpiFlash(seed, Us(1), {}));
}

void Microwire(SimMix& mix, std::uint64_t seed) {
    mix.Add(0, SimMicrowireEeprom(seed, Us(4), {}));
}

void Glitches(SimMix& mix, std::uint64_t seed) {
    AddClock(mix, 0, Us(2));
    AddClock(mix, 1, Us(2));
    AddSquare(mix, 3, Us(1), Us(1));
    AddClock(mix, 7, Us(40));
    mix.Add(0, std::make_unique<SimGlitches>(seed, Us(7), Ns(40), 0x0E));
    mix.Add(0, std::make_unique<SimGlitches>(seed + 100, Us(20), Ns(200), 0x70));
}

void Noise(SimMix& mix, std::uint64_t seed) {
    for (int pod = 0; pod < kSimPods; ++pod) {
        const auto lane = static_cast<std::uint64_t>(pod);
        mix.Add(pod, std::make_unique<SimNoise>(SimHash(seed, lane), Ns(100) * (1 + pod % 5)));
    }
}

void Bench(SimMix& mix, std::uint64_t seed) {
    mix.Add(0, SimI2cEeprom(seed, Us(10) / 4, {}));
    AddClock(mix, 2, Ns(200));
    AddClock(mix, 3, Us(1));
    AddClock(mix, 4, Us(8));
    AddClock(mix, 5, Us(8), Us(2));
    mix.Add(0, std::make_unique<SimPulseWidth>(6, Us(16)));
    mix.Add(0, std::make_unique<SimGlitches>(seed, Us(30), Us(1), 0x80));
    mix.Add(1, SimSpiFlash(seed, Us(1), {}));
    mix.Add(1, SimMicrowireEeprom(seed, Us(4), {4, 5, 6, 7}));
    AddCounter(mix, 2, Us(1), SimCode::Up);
    AddCounter(mix, 3, Us(1), SimCode::Gray);
    mix.Add(4, std::make_unique<SimNoise>(seed, Us(1)));
    AddMoreCounters(mix);
}

using Maker = void (*)(SimMix&, std::uint64_t seed);
/// In the order of kSimScenes.
constexpr std::array<Maker, kSimScenes.size()> kMakers{Bench, Counters,  Clocks,   I2c,
                                                       Spi,   Microwire, Glitches, Noise};

}  // namespace

const SimScene* FindSimScene(std::string_view name) {
    const auto* const found = std::find_if(kSimScenes.begin(), kSimScenes.end(),
                                           [name](const SimScene& scene) { return scene.Name == name; });
    return found == kSimScenes.end() ? nullptr : found;
}

std::shared_ptr<SimStimulus> MakeSimScene(std::string_view name, std::uint64_t seed) {
    const SimScene* scene = FindSimScene(name);
    if (scene == nullptr) return nullptr;
    auto mix = std::make_shared<SimMix>();
    mix->SetExternalPeriod(static_cast<SimTicks>(GetRateNS(0, scene->RateCode) * kTicksPerNs));
    kMakers[static_cast<std::size_t>(scene - kSimScenes.data())](*mix, seed);
    return mix;
}

}  // namespace zu
