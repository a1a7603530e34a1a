#include "hw/sim/SimAttachment.h"

namespace zu {
namespace {

std::unique_ptr<PortIo> MakePorts(SimInstrument& instrument, SimCable cable, SimPortModes modes) {
    if (cable == SimCable::Isa) return std::make_unique<SimIsaPorts>(instrument, kSimIsaBase);
    return std::make_unique<SimParallelPorts>(instrument, kSimParallelBase, modes);
}

}  // namespace

SimAttachment::SimAttachment(const SimSpec& spec)
    : SimAttachment(TraitsOf(spec.Row), spec.Cable, {.Byte = true, .Epp = spec.Cable != SimCable::Byte}) {}

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
