#pragma once

#include "hw/PortKernelDriver.h"
#include "hw/Seams.h"
#include "hw/linux/LinuxPorts.h"
#include "hw/linux/LinuxUsb.h"

namespace zu {

/// The real ways out of this machine. Port access goes through a driver of our own, which the process must be
/// allowed to use; the program executes no port instructions beside it. Must outlive the session.
class LinuxSeams {
  public:
    [[nodiscard]] InstrumentSeams Seams() { return {&NullPortIo(), &driver_, &usb_}; }

  private:
    LinuxPorts ports_;
    PortKernelDriver driver_{ports_, ports_};
    LinuxUsb usb_;
};

}  // namespace zu
