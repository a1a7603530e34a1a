#pragma once

#include <array>
#include <cstdint>

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// Port numbers: row r is logical register R0..R15, column b a board.
using PortTable = std::array<std::array<std::uint16_t, kMaxBoards>, 16>;
/// Shadow bytes S1..S11 of the write-only registers, one column a board; row 0 is unused.
using ShadowTable = std::array<std::array<std::uint8_t, kMaxBoards>, 12>;

/// The three operations by which everything reaches a register; swapped at run time.
class RegisterOps {
  public:
    virtual ~RegisterOps() = default;
    virtual void RegWrite(std::uint16_t base, std::uint16_t port, std::uint8_t value) = 0;
    virtual std::uint8_t RegRead(std::uint16_t base, std::uint16_t port) = 0;
    virtual void RegReadBlock(std::uint16_t base, std::uint16_t port, std::int32_t count,
                              std::uint8_t* buffer) = 0;
};

/// Nothing is connected: writes go nowhere, reads give 0x00.
RegisterOps& NullRegisterOps();

/// The connection to the instrument: the operations in force and the two tables, one instance for the
/// program.
struct HardwareSession {
    explicit HardwareSession(zu::Host& host) : Host(&host) {}

    zu::Host* Host;
    RegisterOps* Ops = &NullRegisterOps();
    PortTable Ports{};
    ShadowTable Shadows{};
    std::uint8_t OsIoMode = 0;  ///< 1 port instructions by the program itself, 0 through the kernel driver
};

/// Fills the back-end slots for the platform (0 NT family, 1 the older consumer family). Called once.
void SetupOSFunctions(HardwareSession& hardware, std::uint8_t osFamily);
/// Selects the back-end of a connection; ComMode and HwPort of the state follow. A port index above 2 ends
/// the process with code 0 for every mode that takes a port.
void SetupIO(HardwareSession& hardware, InstrumentState& state, std::uint16_t portIndex,
             std::uint8_t comMode);
/// 15 found, 0 handshake failed, 1 no device.
std::uint8_t UsbDetect(HardwareSession& hardware);
/// Probes a board address: sets Emulated and HardwareType, returns the catalogue row or 0.
std::uint8_t FindBoard(HardwareSession& hardware, InstrumentState& state, std::uint16_t boardAddress);
/// Programs the sample clock for ClockType and ClockRate.
void SetClock(HardwareSession& hardware, InstrumentState& state);
/// Programs the memory organisation for HardwareMode.
void SetupMemConfig(HardwareSession& hardware, InstrumentState& state);
/// 1 filling, 2 not triggered, 3 complete; 0 with nothing connected.
std::uint8_t GetTrigStat(HardwareSession& hardware);
/// Does nothing; kept as the name that start-up and exit call.
void ZUPower(HardwareSession& hardware);
/// Closes the kernel driver and the USB device, if open.
void CloseHardware(HardwareSession& hardware);
/// The library's version number; fills the two texts.
float GetDLLVersion(std::string& name, std::string& text);

}  // namespace zu
