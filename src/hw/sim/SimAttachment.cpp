#include "hw/sim/SimAttachment.h"

namespace zu {
namespace {

std::unique_ptr<PortIo> MakePorts(SimInstrument& instrument, SimCable cable, SimPortModes modes) {
    if (cable == SimCable::Isa) return std::make_unique<SimIsaPorts>(instrument, kSimIsaBase);
    return std::make_unique<SimParallelPorts>(instrument, kSimParallelBase, modes);
}

/// A framed EPP access reaches sixteen addresses a board and none of the pod registers' own, so an instrument
/// that offers those could not be programmed over that cable.
SimTraits TraitsFor(const SimSpec& spec) {
    SimTraits traits = TraitsOf(spec.Row);
    const bool epp =
        spec.Cable == SimCable::Epp || spec.Cable == SimCable::Epp16 || spec.Cable == SimCable::Epp32;
    if (epp) traits.Direct = false;
    return traits;
}

}  // namespace

SimAttachment::SimAttachment(const SimSpec& spec)
    : SimAttachment(TraitsFor(spec), spec.Cable, {.Byte = true, .Epp = spec.Cable != SimCable::Byte}) {}

SimAttachment::SimAttachment(const SimTraits& traits, SimCable cable, SimPortModes modes)
    : instrument_(traits),
      cable_(cable),
      ports_(MakePorts(instrument_, cable, modes)),
      driver_(*ports_, gate_),
      usb_(instrument_) {}

InstrumentSeams SimAttachment::Seams() {
    InstrumentSeams seams;
    if (cable_ == SimCable::Usb) {
        seams.Usb = &usb_;
    } else {
        seams.Ports = ports_.get();
        seams.Driver = &driver_;
    }
    return seams;
}

}  // namespace zu
