#include "core/Replay.h"

#include <cmath>
#include <utility>

#include "core/Defaults.h"
#include "core/NoWindows.h"
#include "core/RateRules.h"
#include "files/DataFile.h"
#include "files/Paths.h"
#include "files/SettingsReader.h"
#include "files/Vcd.h"
#include "hw/sim/SimReplay.h"
#include "state/Catalogue.h"
#include "state/Model.h"
#include "state/Rates.h"

namespace zu {
namespace {

constexpr std::int64_t kPicosecondsATick = 1000 / kTicksPerNs;
constexpr double kUnknownPeriodNs = 1000;  // of a recording with an external clock

/// Period of the loaded samples; a recording of an unknown period is replayed as one of 1 us.
SimTicks PeriodOf(const ClockRecord& clock) {
    const double ns = GetRateNS(clock.ClockType, clock.ClockRate);
    return std::llround((ns > 0 ? ns : kUnknownPeriodNs) * kTicksPerNs);
}

Replay ReplayOfState(InstrumentState& state) {
    Replay replay;
    SimSamples samples;
    samples.Period = PeriodOf(state.Clock);
    for (std::size_t pod = 0; pod < samples.Pods.size(); ++pod) {
        const auto bytes = state.Buffer.Samples(static_cast<int>(pod));
        samples.Pods[pod].assign(bytes.begin(), bytes.end());
    }
    replay.Signals = MakeSimReplay(std::move(samples));
    for (const auto& name : state.Channels.ChannelName) replay.ChannelNames.emplace_back(name.View());
    return replay;
}

/// A program of its own loads the file, as the viewer would.
Replay ReplayOfDataFile(Host& host, const std::string& path) {
    const auto state = std::make_unique<InstrumentState>();
    NoWindows windows;
    HardwareSession hardware(host);
    App app{*state, host, windows, hardware};
    const int row = HardwareTypeOfFile(path).value_or(SeriesDefaultRow(*state));
    state->Command.ModelRow = HasShape(row) ? row : SeriesDefaultRow(*state);
    InitDefaults(app);
    if (!ReadSettings(*state, host, path)) return {};
    DataFileHooks hooks;
    hooks.ApplyMemoryMode = [&app](int mux, int mode) { SetMemoryMode(app, mux, mode); };
    hooks.ApplyMemoryMode(state->Memory.HardwareMux, state->Memory.HardwareMode);
    if (ReadDataFile(*state, host, path, "ZU", false, hooks) != LoadStatus::Loaded) return {};
    return ReplayOfState(*state);
}

Replay ReplayOfDump(Host& host, const std::string& path) {
    auto dump = ReadVcd(path);
    if (!dump) {
        host.Message("No signals could be read.", path);
        return {};
    }
    SimChanges changes;
    changes.Length = std::max<SimTicks>(1, dump->Picoseconds / kPicosecondsATick);
    for (std::size_t pod = 0; pod < changes.Pods.size(); ++pod) {
        for (const VcdChange& change : dump->Pods[pod]) {
            changes.Pods[pod].push_back({change.Picoseconds / kPicosecondsATick, change.Value});
        }
    }
    return {MakeSimReplay(std::move(changes)), std::move(dump->Channels)};
}

}  // namespace

Replay LoadReplay(Host& host, const std::string& path) {
    const std::string type = ExtensionOf(path);
    if (type == "ZU") return ReplayOfDataFile(host, path);
    if (type == "VCD") return ReplayOfDump(host, path);
    host.Message("Only data files and value change dumps can be replayed.", path);
    return {};
}

}  // namespace zu
