#pragma once

#include "hw/ByteProtocolOps.h"
#include "hw/DriverLink.h"
#include "hw/EppOps.h"
#include "hw/HardwareSession.h"
#include "hw/IsaOps.h"
#include "hw/Trace.h"
#include "hw/UsbLink.h"
#include "hw/UsbOps.h"

namespace zu {

/// Every way to a register on the running platform; SetupIO puts one of them in force. The routines of the
/// 4-bit status cable have no mode that selects them and are left out.
struct BackEnds {
    BackEnds(const InstrumentSeams& seams, bool directPorts);

    DriverLink Driver;
    DriverPorts DriverIo;
    PortIo* Io;  ///< the processor's ports or the driver's
    UsbLink Usb;
    IsaOps Isa;
    ByteProtocolOps Byte;
    std::unique_ptr<RegisterOps> EppBytes;
    std::unique_ptr<RegisterOps> EppWords;
    std::unique_ptr<RegisterOps> EppDoubleWords;
    UsbOps UsbRegisters;

    RegisterOps* Selected = &NullRegisterOps();  ///< in force, without the trace in front of it
    std::unique_ptr<TraceOps> Traced;
};

/// Puts a back-end in force, behind the session's trace if there is one.
void UseOps(HardwareSession& hardware, RegisterOps& ops);

}  // namespace zu
