#pragma once

#include <iosfwd>
#include <string>

#include "cli/Cli.h"

namespace zu {

struct ScanRequest {
    std::string Simulate;   ///< instrument to simulate; empty = what hangs on this machine
    std::string TraceFile;  ///< file for the trace; empty = none
    bool Wire = false;      ///< the trace tells port accesses and USB transfers too
    bool Json = false;
};

/// Looks for instruments on USB, at the ISA addresses and on the parallel ports. Ok when one was found, else
/// NoInstrument.
CliExit ScanInstruments(const ScanRequest& request, std::ostream& out, std::ostream& err);

}  // namespace zu
