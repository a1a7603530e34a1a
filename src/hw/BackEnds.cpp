#include "hw/BackEnds.h"

namespace zu {
namespace {

std::unique_ptr<RegisterOps> MakeEpp(PortIo& ports, bool directPorts, PortUnit unit) {
    if (directPorts) return std::make_unique<EppDirectOps>(ports, unit);
    return std::make_unique<EppDriverOps>(ports, unit);
}

}  // namespace

BackEnds::BackEnds(const InstrumentSeams& seams, bool directPorts)
    : Driver(*seams.Driver),
      DriverIo(Driver),
      Io(directPorts ? seams.Ports : &DriverIo),
      Usb(*seams.Usb),
      Isa(*Io),
      Byte(*Io, directPorts ? OutputDelay::Doubled : OutputDelay::None),
      EppBytes(MakeEpp(*Io, directPorts, PortUnit::Byte)),
      EppWords(MakeEpp(*Io, directPorts, PortUnit::Word)),
      EppDoubleWords(MakeEpp(*Io, directPorts, PortUnit::DoubleWord)),
      UsbRegisters(Usb) {}

void UseOps(HardwareSession& hardware, RegisterOps& ops) {
    BackEnds& slots = *hardware.Slots;
    slots.Selected = &ops;
    slots.Usb.SetTrace(hardware.Trace);
    hardware.Ops = &ops;
    slots.Traced.reset();
    if (hardware.Trace == nullptr) return;
    slots.Traced = std::make_unique<TraceOps>(ops, *hardware.Trace);
    hardware.Ops = slots.Traced.get();
}

}  // namespace zu
