#include <algorithm>
#include <array>
#include <cstdio>

#include "hw/BackEnds.h"
#include "hw/HardwareSession.h"

namespace zu {
namespace {

constexpr std::uint8_t kUsbMode = 9;
constexpr std::uint8_t kIsaMode = 8;
constexpr std::uint8_t kStatusEcho = 0x10;  // bit of the USB status byte that follows the test byte
constexpr int kEchoRounds = 4;

bool TakesPort(std::uint8_t comMode) {
    constexpr std::array<std::uint8_t, 6> kModes{1, 2, 4, 9, 32, 64};
    return std::find(kModes.begin(), kModes.end(), comMode) != kModes.end();
}

bool NeedsDriver(std::uint8_t comMode) {
    constexpr std::array<std::uint8_t, 8> kModes{1, 2, 4, 8, 16, 32, 64, 128};
    return std::find(kModes.begin(), kModes.end(), comMode) != kModes.end();
}

UsbIdQuery IdQuery(const HardwareSession& hardware) {
    return hardware.OsIoMode == 1 ? UsbIdQuery::Descriptor : UsbIdQuery::Scan;
}

/// Whether the status byte takes over what the test byte says. The first read after a change is stale.
bool StatusFollows(UsbLink& usb, std::uint8_t testByte) {
    usb.WriteCommand(UsbCommand::WriteTest, {&testByte, 1});
    usb.ReadCommand(UsbCommand::ReadStatus);
    const bool high = (usb.ReadCommand(UsbCommand::ReadStatus) & kStatusEcho) != 0;
    return high == (testByte != 0);
}

bool OpenUsb(HardwareSession& hardware) {
    return hardware.Slots->Usb.Open(kUsbVendor, kUsbProduct, IdQuery(hardware));
}

void SetupUsb(HardwareSession& hardware) {
    BackEnds& slots = *hardware.Slots;
    UseOps(hardware, hardware.OsIoMode == 1 ? slots.Byte : NullRegisterOps());
    slots.Usb.ResetStatus();
    if (!OpenUsb(hardware)) return;
    // A failed handshake leaves the device open and the earlier routines in place.
    if (!StatusFollows(slots.Usb, 0xFF) || !StatusFollows(slots.Usb, 0)) return;
    UseOps(hardware, slots.UsbRegisters);
    constexpr std::uint32_t kSetUpIndex = 0x10;
    constexpr std::array<std::uint8_t, 1> kSetUpData{4};
    slots.Usb.WriteIndexed(UsbCommand::SetUp, kSetUpIndex, kSetUpData);
}

/// All rounds run to the end and are judged then, so the wire sees the same whatever answers.
bool EchoHolds(HardwareSession& hardware) {
    const std::uint16_t base = hardware.HwPort;
    bool holds = true;
    for (int round = 0; round < kEchoRounds; ++round) {
        hardware.Ops->RegWrite(base, 1, 0);
        if ((hardware.Ops->RegRead(base, 1) & 2) != 0) holds = false;
        hardware.Ops->RegWrite(base, 1, 1);
        if ((hardware.Ops->RegRead(base, 1) & 2) == 0) holds = false;
    }
    return holds;
}

void SetupByteProtocol(HardwareSession& hardware) {
    UseOps(hardware, hardware.Slots->Byte);
    // Through the driver the cable is not tested.
    if (hardware.OsIoMode == 1 && !EchoHolds(hardware)) UseOps(hardware, *hardware.Slots->EppBytes);
}

void SetupEpp(HardwareSession& hardware) {
    UseOps(hardware, *hardware.Slots->EppBytes);
    if (hardware.OsIoMode == 1)
        hardware.Slots->Io->Out8(static_cast<std::uint16_t>(hardware.HwPort + 2), 0xC4);
}

void WriteDiagnostic(const HardwareSession& hardware) {
    if (hardware.DiagnosticLog == 0) return;
    std::FILE* file = std::fopen(hardware.DiagnosticFile.c_str(), "wb");
    if (file == nullptr) return;
    std::fputs("UsbDetect \r\n", file);
    std::fclose(file);
}

bool EchoesDirect(PortIo& ports, std::uint16_t port) {
    constexpr std::array<std::uint8_t, 2> kPatterns{0xAA, 0x55};
    return std::all_of(kPatterns.begin(), kPatterns.end(), [&](std::uint8_t pattern) {
        ports.Out8(port, pattern);
        return ports.In8(port) == pattern;
    });
}

bool EchoesThroughDriver(RegisterOps& ops, std::uint16_t port) {
    ops.RegWrite(0, port, 0xAA);
    const bool first = ops.RegRead(0, port) == 0xAA;
    ops.RegWrite(0, port, 0x55);
    const bool second = ops.RegRead(0, port) == 0x55;
    return first && second;
}

}  // namespace

void SetupOSFunctions(HardwareSession& hardware, std::uint8_t osFamily) {
    CloseHardware(hardware);
    hardware.OsIoMode = osFamily == 1 ? 1 : 0;
    hardware.Slots = std::make_unique<BackEnds>(hardware.Seams, hardware.OsIoMode == 1);
    ReleaseRegisters(hardware);
}

void SetupIO(HardwareSession& hardware, InstrumentState& state, std::uint16_t portIndex,
             std::uint8_t comMode) {
    state.Identity.ComMode = comMode;
    if (TakesPort(comMode)) {
        if (portIndex >= kParallelPorts.size()) hardware.Host->EndProcess(0);
        state.Identity.HwPort = kParallelPorts[portIndex];
    }
    hardware.HwPort = state.Identity.HwPort;
    BackEnds& slots = *hardware.Slots;
    switch (comMode) {
        case 1:
        case 2:
            return SetupByteProtocol(hardware);
        case 4:
            return SetupEpp(hardware);
        case kIsaMode:
            return UseOps(hardware, slots.Isa);
        case kUsbMode:
            return SetupUsb(hardware);
        case 32:
            return UseOps(hardware, *slots.EppWords);
        case 64:
            return UseOps(hardware, *slots.EppDoubleWords);
        default:
            return;  // 16, 128 and anything else select nothing
    }
}

void SelectInterface(HardwareSession& hardware, InstrumentState& state, std::uint16_t portIndex,
                     std::uint8_t comMode) {
    // Without a driver everything but USB is closed to the user.
    if (!DriverUsable(hardware) && comMode != kUsbMode) return;
    DriverLink& driver = hardware.Slots->Driver;
    if (hardware.OsIoMode == 0 && NeedsDriver(comMode) && !driver.EnsureOpen()) {
        state.Identity.ComMode = kUsbMode;
    }
    // With port instructions of its own the program opens no driver, so every choice ends on USB.
    SetupIO(hardware, state, portIndex, driver.IsOpen() ? comMode : kUsbMode);
}

std::uint8_t prt_dect(HardwareSession& hardware) {
    BackEnds& slots = *hardware.Slots;
    const bool direct = hardware.OsIoMode == 1;
    if (!direct) UseOps(hardware, slots.Isa);
    int found = 0;
    for (std::size_t i = 0; i < kParallelPorts.size(); ++i) {
        const std::uint16_t port = kParallelPorts[i];
        const bool echoes = direct ? EchoesDirect(*slots.Io, port) : EchoesThroughDriver(*hardware.Ops, port);
        hardware.ParallelFound[i] = echoes ? 1 : 0;
        if (echoes) found |= 1 << i;
    }
    return static_cast<std::uint8_t>(found);
}

std::uint8_t UsbDetect(HardwareSession& hardware) {
    constexpr std::uint8_t kFound = 15;
    constexpr std::uint8_t kNoDevice = 1;
    constexpr std::uint8_t kNoHandshake = 0;
    WriteDiagnostic(hardware);
    if (!OpenUsb(hardware)) return kNoDevice;
    return StatusFollows(hardware.Slots->Usb, 0xFF) ? kFound : kNoHandshake;
}

}  // namespace zu
