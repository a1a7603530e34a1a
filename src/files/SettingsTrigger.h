#pragma once

#include "files/Ini.h"
#include "state/InstrumentState.h"

namespace zu {

/// Reads section [Trigger] as the file version in the state asks for.
void ReadTrigger(InstrumentState& state, const IniText& ini);

}  // namespace zu
