#pragma once

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// Whether SPI commands can be generated on a group: four channels, SO on a pod of the analyzer, the other
/// three on pods of the pattern generator. Everything that is wrong is reported; only a group outside 0..29
/// ends the check at once.
bool SpiGroupCanGenerate(const InstrumentState& state, Host& host, int group);

}  // namespace zu
