#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "cli/Cli.h"

namespace zu {

struct DecodeRequest {
    std::string File;
    std::optional<int> Group;  ///< nothing = every group that is set up as a bus
    bool Json = false;
};

/// Prints the I2C, SPI and Microwire transfers of a data file in time order. Usage for a group that is no
/// bus.
CliExit ShowTransfers(const DecodeRequest& request, std::ostream& out, std::ostream& err);

}  // namespace zu
