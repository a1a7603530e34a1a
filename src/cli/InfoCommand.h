#pragma once

#include <iosfwd>
#include <string>

#include "cli/Cli.h"

namespace zu {

struct InfoRequest {
    std::string File;
    bool Json = false;
};

/// Prints what a data or settings file holds. Problems found on the way are part of the report and make the
/// exit code 1; a file that cannot be read gives no report.
CliExit ShowInfo(const InfoRequest& request, std::ostream& out, std::ostream& err);

}  // namespace zu
