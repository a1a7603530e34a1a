#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "state/InstrumentRecords.h"

namespace zu {

/// What is left to do after the command line was read: end with a text, or go on.
struct CommandLineEnd {
    int ExitCode = 0;
    std::string Text;      ///< with its line ends
    bool OnError = false;  ///< belongs on standard error
};

/// Fills `options` from the arguments, args[0] being the program's own name, which is compared with the
/// switches too. Switches with one dash are taken in any case and unknown ones are passed over; an unknown
/// option with two dashes ends the program with code 2. `appDir` completes the names of -L and -C that hold
/// no directory. Answers nothing when the program is to run.
std::optional<CommandLineEnd> ParseCommandLine(std::span<const std::string> args, std::string_view appDir,
                                               CommandOptions& options);

/// Text of --help for the windows program.
std::string UsageText();
/// Text of --version: one line.
std::string VersionLine(std::string_view programName);

}  // namespace zu
