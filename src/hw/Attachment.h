#pragma once

#include <memory>
#include <string_view>

#include "hw/HardwareSession.h"
#include "hw/linux/LinuxSeams.h"
#include "hw/sim/SimAttachment.h"

namespace zu {

/// What the program's session stands on: this machine's own ports and USB, or the simulated instrument that
/// an option names. Must outlive the session.
class Attachment {
  public:
    /// Empty text: this machine. A text that names no instrument attaches nothing. The simulated instrument
    /// lives in real time and shows the first scene.
    explicit Attachment(std::string_view simulate);

    /// For a session whose start-up has not run yet.
    void AttachTo(HardwareSession& hardware);
    /// Null on real hardware.
    [[nodiscard]] SimInstrument* Simulated();

  private:
    std::unique_ptr<LinuxSeams> machine_;
    std::unique_ptr<SimAttachment> simulation_;
};

}  // namespace zu
