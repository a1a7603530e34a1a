#pragma once

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// Clock type 4 no longer exists: it becomes 5, with a note to the user.
inline void ReplaceClockType4(InstrumentState& state, Host& host) {
    if (state.Clock.ClockType != 4) return;
    state.Clock.ClockType = 5;
    host.Message(
        "Clock mode External + Internal is not available. Mode changed to External + 100MHz Internal",
        "File load");
}

}  // namespace zu
