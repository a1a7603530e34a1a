#pragma once

#include "core/Shell.h"
#include "hw/HardwareSession.h"
#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// What every operation of the controller works on. One instance for the life of the process.
struct App {
    InstrumentState& State;
    zu::Host& Host;
    zu::Shell& Shell;
    HardwareSession& Hardware;
};

}  // namespace zu
