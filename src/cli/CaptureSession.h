#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "cli/TerminalHost.h"
#include "core/App.h"
#include "core/NoWindows.h"

namespace zu {

/// The program's state with one file loaded, as the viewer has it, without windows and without an instrument.
class CaptureSession {
  public:
    CaptureSession(std::ostream& out, std::ostream& err);

    /// Loads a data or settings file with the row that the file was saved for as the emulated model. False
    /// when the file could not be read; what is wrong inside a file is among the host's problems.
    bool Load(const std::string& path);

    [[nodiscard]] InstrumentState& State() { return *state_; }
    [[nodiscard]] const TerminalHost& Host() const { return host_; }

  private:
    std::unique_ptr<InstrumentState> state_;
    TerminalHost host_;
    NoWindows windows_;
    HardwareSession hardware_;
    App app_;
};

/// Load type of a file by its extension: "ZU", "INI", or empty for any other.
std::string LoadTypeOf(const std::string& path);

}  // namespace zu
