#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/Cli.h"

namespace zu {

struct CaptureRequest {
    std::string Simulate;  ///< instrument to simulate; empty = the connected one
    std::string Scene;     ///< signals of the simulated instrument; empty = the first scene
    std::string Settings;  ///< settings or data file to start from; empty = the defaults
    std::string Output;    ///< name ending in .zu
    std::string Rate;      ///< empty = as the settings have it
    std::vector<std::string> Trigger;
    std::optional<int> Mode;  ///< memory mode
    std::optional<std::int32_t> Position;
    int Count = 1;
    double TimeoutS = 10;  ///< for the trigger of each capture; 0 = without end
    bool Force = false;    ///< save what the memory holds when the time is over
    bool Json = false;
};

/// Arms the instrument, waits and saves, as many times as asked for. What was saved before a failure stays.
CliExit TakeCaptures(const CaptureRequest& request, std::ostream& out, std::ostream& err);

/// The scenes of the simulated instrument with commas between them.
std::string SceneNames();

/// Name of capture `index`, from 0: "out.zu" of one alone, else "out-1.zu" … with as many digits as the last.
std::string NumberedName(const std::string& name, int index, int count);

}  // namespace zu
