#pragma once

#include <memory>

#include "hw/Seams.h"
#include "hw/sim/SimBus.h"
#include "hw/sim/SimInstrument.h"
#include "hw/sim/SimSpec.h"

namespace zu {

/// Where the simulated parallel port and plug-in board sit.
inline constexpr std::uint16_t kSimParallelBase = 0x378;
inline constexpr std::uint16_t kSimIsaBase = 0x210;

/// A simulated instrument on its cable, ready to stand behind a session's seams. Must outlive the session.
class SimAttachment {
  public:
    explicit SimAttachment(const SimSpec& spec);
    /// The same with traits of its own, for instruments that the catalogue does not tell apart.
    SimAttachment(const SimTraits& traits, SimCable cable, SimPortModes modes = {});

    /// Only the seams of the cable lead anywhere.
    [[nodiscard]] InstrumentSeams Seams();
    [[nodiscard]] SimInstrument& Instrument() { return instrument_; }

  private:
    SimInstrument instrument_;
    SimCable cable_;
    std::unique_ptr<PortIo> ports_;
    SimPortGate gate_;
    PortKernelDriver driver_;
    SimUsbDevice usb_;
};

}  // namespace zu
