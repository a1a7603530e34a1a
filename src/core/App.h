#pragma once

#include "core/CommandTable.h"
#include "core/Shell.h"
#include "hw/HardwareSession.h"
#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

class SimInstrument;

/// What the operating system says of itself. The defaults are this platform's; tests inject others.
struct PlatformFacts {
    std::uint32_t PlatformId = 2;   ///< 2 the NT family's way of port access, 1 the older one's
    bool MessageQueueGrows = true;  ///< whether a queue of 120 posted messages could be had
};

/// Who polls a running capture at the moment.
struct PollState {
    bool TimerRunning = false;    ///< one of the two timers
    bool FastLoopActive = false;  ///< a tight loop is on the stack
    int BusyDepth = 0;  ///< polls and programming steps on the stack; while there are any no poll begins
    std::uint32_t ArmBegan = 0;  ///< tick counts around the last arming after a read-out
    std::uint32_t ArmEnded = 0;
};

/// What every operation of the controller works on. One instance for the life of the process.
struct App {
    InstrumentState& State;
    zu::Host& Host;
    zu::Shell& Shell;
    HardwareSession& Hardware;
    PlatformFacts Platform{};
    PollState Poll{};
    CommandSet Removed{};                ///< menu entries taken away at start; never given back
    SimInstrument* Simulated = nullptr;  ///< the instrument behind the cable, if it is the simulated one
    int Scene = 0;                       ///< place in kSimScenes of its signals; -1 for a replayed file
    int MainMovesToIgnore = 0;  ///< first moves of a new frame that must not overwrite the stored rectangle
};

}  // namespace zu
