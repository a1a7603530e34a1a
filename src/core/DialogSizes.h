#pragma once

#include <map>
#include <string>
#include <string_view>

#include "state/ViewRecords.h"

namespace zu {

/// The sizes of all dialogs as one line of text: "ChannelNames=480x360;GroupSetup=640x480".
std::string FormatDialogSizes(const std::map<std::string, DialogSize>& sizes);
/// Reads what FormatDialogSizes wrote; entries that make no sense are left out, and so are more than a
/// hundred.
std::map<std::string, DialogSize> ParseDialogSizes(std::string_view text);

}  // namespace zu
