#include "hw/HardwareSession.h"

#include <array>
#include <cstdio>

#include "hw/BackEnds.h"
#include "hw/Registers.h"
#include "trigger/CompiledTrigWords.h"

namespace zu {

HardwareSession::HardwareSession(zu::Host& host)
    : Host(&host),
      Ops(&NullRegisterOps()),
      TrigCache(std::make_unique<CompiledTrigWords>()),
      Slots(std::make_unique<BackEnds>(InstrumentSeams{}, false)) {}

HardwareSession::~HardwareSession() {
    CloseHardware(*this);
}

void ReleaseRegisters(HardwareSession& hardware) {
    UseOps(hardware, NullRegisterOps());
}

void TraceRegisters(HardwareSession& hardware, TraceLog* log) {
    hardware.Trace = log;
    UseOps(hardware, *hardware.Slots->Selected);
}

void UsbFlushQueue(HardwareSession& hardware) {
    hardware.Slots->Usb.Flush();
}

bool UsbInForce(const HardwareSession& hardware) {
    return hardware.Slots->Selected == &hardware.Slots->UsbRegisters;
}

std::uint8_t UsbStatus(const HardwareSession& hardware) {
    return hardware.Slots->Usb.Status();
}

void ResetUsbStatus(HardwareSession& hardware) {
    hardware.Slots->Usb.ResetStatus();
}

bool DriverOpen(const HardwareSession& hardware) {
    return hardware.Slots->Driver.IsOpen();
}

bool DriverUsable(const HardwareSession& hardware) {
    return hardware.Slots->Driver.IsUsable();
}

const std::string& DriverFailureText(const HardwareSession& hardware) {
    return hardware.Slots->Driver.FailureText();
}

std::uint8_t GetTrigStat(HardwareSession& hardware) {
    constexpr int kTriggered = Bit(4);
    constexpr int kFull = Bit(6);
    Registers registers(hardware, hardware.HwPort, 0);
    registers.SetOut(Shadow::S2, 0, Bit(4));
    const int status = registers.Read(Reg::R1, 0);
    if ((status & kTriggered) == 0) return 2;
    return (status & kFull) != 0 ? 3 : 1;
}

bool WaitNanoseconds(HardwareSession& hardware, double ns) {
    if (ns > 0) hardware.Host->WaitNanoseconds(ns);
    return true;
}

void ZUPower(HardwareSession& /*hardware*/) {}

void CloseHardware(HardwareSession& hardware) {
    ReleaseRegisters(hardware);
    hardware.Slots->Usb.Close();
    hardware.Slots->Driver.Close();
}

float GetDLLVersion(std::string& name, std::string& text) {
    constexpr float kVersion = 0.14F;
    std::array<char, 32> line{};
    std::snprintf(line.data(), line.size(), "DLL ver %f", static_cast<double>(kVersion));
    name = "RoachSer";
    text = line.data();
    return kVersion;
}

}  // namespace zu
