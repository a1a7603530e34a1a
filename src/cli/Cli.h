#pragma once

#include <iosfwd>

namespace zu {

/// How zu-cli ends. Scripts rely on the numbers.
enum class CliExit : int {
    Ok = 0,
    Problems = 1,      ///< the file could not be read or written, or told of problems while it was read
    Usage = 2,         ///< the command line makes no sense
    NotAvailable = 3,  ///< this build cannot do what was asked
    NoInstrument = 4,  ///< no instrument answers, or it has ceased to
    NoTrigger = 5,     ///< the trigger did not come in time
    Interrupted = 130  ///< by Ctrl+C, after the instrument was stopped
};

/// The whole program: reads the command line, does one command, answers the exit code.
int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace zu
