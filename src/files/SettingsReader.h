#pragma once

#include <string>

#include "files/Ini.h"
#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// Reads the settings of a settings file or data file into the state, key by key; absent keys leave what is
/// there. False if the file cannot be opened, which is shown unless `quiet`; the state is untouched then.
bool ReadSettings(InstrumentState& state, Host& host, const std::string& path, bool quiet = false);
/// The same from text that is already parsed.
void ReadSettings(InstrumentState& state, Host& host, const IniText& ini);

}  // namespace zu
