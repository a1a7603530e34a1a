#pragma once

#include <string>

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// The whole settings text, from "\r\n[File]\r\n" to the last line of [UserDefined]. A clock type of 4 is
/// written as 4, then becomes 5 in the state with a message.
std::string SettingsText(InstrumentState& state, Host& host);

/// Replaces a file by the settings text. A failure leaves the old file whole and is told by a remark only.
bool SaveSettingsFile(InstrumentState& state, Host& host, const std::string& path);

}  // namespace zu
