#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hw/sim/SimStimulus.h"
#include "state/Host.h"

namespace zu {

/// Signals for the simulated instrument.
struct Replay {
    std::shared_ptr<SimStimulus> Signals;   ///< null: the file could not be used, and a message said so
    std::vector<std::string> ChannelNames;  ///< by channel, empty names for those without
};

/// Takes the samples of a data file ("zu") or the changes of a value change dump ("vcd", any case), to be
/// repeated without end. Nothing of the running program is touched.
Replay LoadReplay(Host& host, const std::string& path);

}  // namespace zu
