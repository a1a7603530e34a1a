#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hw/RegisterOps.h"
#include "hw/RegisterTables.h"
#include "hw/Seams.h"
#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

struct BackEnds;
struct CompiledTrigWords;
class TraceLog;

/// Addresses of the parallel ports, by port index.
inline constexpr std::array<std::uint16_t, 3> kParallelPorts{0x3BC, 0x378, 0x278};

/// The connection to the instrument: the operations in force and the two tables, one instance for the
/// program.
struct HardwareSession {
    explicit HardwareSession(zu::Host& host);
    ~HardwareSession();
    HardwareSession(const HardwareSession&) = delete;
    HardwareSession& operator=(const HardwareSession&) = delete;

    zu::Host* Host;
    RegisterOps* Ops;
    PortTable Ports{};
    ShadowTable Shadows{};
    std::uint16_t HwPort = 0;   ///< base of the operations, as SetupIO last set it
    std::uint8_t OsIoMode = 0;  ///< 1 port instructions by the program itself, 0 through the kernel driver
    std::uint8_t PodRegsDirect = 0;  ///< pod registers answer at their literal addresses; set by FindBoard
    std::uint8_t FirstRun = 0;       ///< latch of the pattern question: set at arming, cleared by SetClock
    std::unique_ptr<CompiledTrigWords> TrigCache;  ///< words last programmed; survives captures
    std::uint8_t ArmChanged = 0;            ///< the last programming brought other words; nothing reads it
    std::int32_t CaptureTimeout = 0;        ///< ms that the samples before the trigger take, and one more
    std::vector<std::uint8_t> ReadScratch;  ///< interleaved bytes of a board on their way to the buffers
    std::array<std::uint8_t, 3> ParallelFound{};  ///< parallel ports that prt_dect saw, by port index
    std::uint8_t DiagnosticLog = 0;               ///< UsbDetect leaves a line in DiagnosticFile
    std::string DiagnosticFile = "ZU5.txt";
    TraceLog* Trace = nullptr;  ///< takes every register access and queue flush; set by TraceRegisters

    InstrumentSeams Seams;            ///< attached before SetupOSFunctions
    std::unique_ptr<BackEnds> Slots;  ///< every way to a register on this platform
};

/// Fills the back-end slots for the platform (0 NT family, 1 the older consumer family). Called once, with
/// the seams attached.
void SetupOSFunctions(HardwareSession& hardware, std::uint8_t osFamily);
/// Selects the back-end of a connection; ComMode and HwPort of the state follow. A port index above 2 ends
/// the process with code 0 for every mode that takes a port.
void SetupIO(HardwareSession& hardware, InstrumentState& state, std::uint16_t portIndex,
             std::uint8_t comMode);
/// The choice of a connection by the user: opens the kernel driver if the mode needs it, then SetupIO. With
/// no driver every mode ends on USB.
void SelectInterface(HardwareSession& hardware, InstrumentState& state, std::uint16_t portIndex,
                     std::uint8_t comMode);
/// Parallel ports that answer: bit 0 port 0x3BC, bit 1 0x378, bit 2 0x278. Through the driver the operations
/// are left on the plain ports, so SetupIO must follow before the next register access.
std::uint8_t prt_dect(HardwareSession& hardware);
/// 15 found, 0 handshake failed, 1 no device.
std::uint8_t UsbDetect(HardwareSession& hardware);
/// Probes a board address: sets Emulated and HardwareType, returns the catalogue row or 0. Leaves a board
/// that answers idle.
std::uint8_t FindBoard(HardwareSession& hardware, InstrumentState& state, std::uint16_t boardAddress);
/// FindBoard on candidate `index` of AddressTable, a second time when the first succeeds so that the row
/// found is the type in force; the second answer counts and is kept in FoundTable.
std::uint8_t FindStoredBoard(HardwareSession& hardware, InstrumentState& state, std::uint16_t index);
/// Nothing is in force any more: for a program that goes on without its instrument.
void ReleaseRegisters(HardwareSession& hardware);
/// Writes every register access and queue flush down from now on; null ends that. The log must outlive it.
/// Without a log nothing stands between the program and its registers.
void TraceRegisters(HardwareSession& hardware, TraceLog* log);
/// Sends the register writes that wait for the USB.
void UsbFlushQueue(HardwareSession& hardware);
/// Whether registers are reached over USB at present.
bool UsbInForce(const HardwareSession& hardware);
/// 63 while no USB transfer has failed since the last set-up, else the failing command's code.
std::uint8_t UsbStatus(const HardwareSession& hardware);
void ResetUsbStatus(HardwareSession& hardware);
/// Whether the kernel driver is open, and whether it could be opened when it was tried.
bool DriverOpen(const HardwareSession& hardware);
bool DriverUsable(const HardwareSession& hardware);
/// Why the kernel driver could not be opened; empty if it could or was not needed.
const std::string& DriverFailureText(const HardwareSession& hardware);

/// Programs the sample clock for ClockType and ClockRate. False: the user stopped at the question that a
/// pattern pod in the one-time output mode brings.
bool SetClock(HardwareSession& hardware, InstrumentState& state);
/// Programs the memory organisation for HardwareMode. Always true.
bool SetupMemConfig(HardwareSession& hardware, InstrumentState& state);
/// 1 filling, 2 not triggered, 3 complete; 2 with nothing connected.
std::uint8_t GetTrigStat(HardwareSession& hardware);
/// Returns after at least `ns` nanoseconds, at once for none. True: measured by the fine clock, which the
/// host always has.
bool WaitNanoseconds(HardwareSession& hardware, double ns);
/// Does nothing; kept as the name that start-up and exit call.
void ZUPower(HardwareSession& hardware);
/// Closes the kernel driver and the USB device, if open.
void CloseHardware(HardwareSession& hardware);
/// The library's version number; fills the two texts.
float GetDLLVersion(std::string& name, std::string& text);

}  // namespace zu
