#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "state/Limits.h"
#include "state/Text.h"

namespace zu {

/// What the command line asked for. The two I/O fields that nothing reads are accepted on purpose.
struct CommandOptions {
    std::uint8_t NoIoSwitch = 1;  ///< cleared by any I/O-model switch; while 1 "Identify Analyzer" is removed
    std::uint8_t CmdNumber = 1;   ///< "-1" to "-10"; never read
    std::array<std::uint8_t, 3> IoModelFlag{};  ///< one for each I/O model; never read
    std::uint8_t CmdAutoGo = 0;
    std::int32_t CmdTimerPeriod = 0;  ///< milliseconds, 0 = no override
    std::uint16_t CmdPid = 0;         ///< USB product id given; non-zero forces USB
    std::uint8_t CmdExitAfterCapture = 0;
    std::uint8_t CmdReturnZuStat = 0;
    std::string CmdLoadFile;     ///< "-L", upper-cased
    std::string CmdCsvFile;      ///< "-C", upper-cased
    std::string DocumentFile;    ///< positional file name, as typed
    std::int32_t ModelRow = -1;  ///< "--model": emulate this row without asking; -1 = not given
    std::string Simulate;        ///< "--simulate": instrument to simulate, empty = none
    std::string Scene;           ///< "--scene": signals to show live, empty = none
    std::string Screenshot;      ///< "--screenshot": picture of the window to write, empty = none
};

/// Which instrument it is and how it is connected.
struct IdentityRecord {
    std::uint8_t ModelSeries = 2;   ///< 0 Pike, 1 Dace, 2 Roach, 3 Tench, 4 Bream, 5 Perch
    std::uint8_t HardwareType = 0;  ///< row of the catalogue, 0..27
    std::uint8_t Emulated = 1;      ///< 0 board attached, 1 no board, 2 hardware emulation (nothing sets it)
    std::uint8_t OsFamily = 2;      ///< 0 NT family, 1 older consumer family, 2 unknown
    std::int32_t ComMode = 0;  ///< 1, 2 byte protocol; 4, 32, 64 EPP; 8 ISA; 9 USB; 16, 128 select nothing
    std::uint16_t AddressIndex = 0;  ///< into AddressTable
    /// Candidates: 0..6 ISA, 7..9 behind the parallel ports (7 also USB), 10 of communication mode 16.
    std::array<std::uint16_t, kAddressCandidates> AddressTable{0x210, 0x230, 0x280, 0x2A0, 0x300, 0x320,
                                                               0x380, 0,     0,     0,     0xE800};
    std::array<std::uint16_t, kAddressCandidates>
        FoundTable{};                    ///< FindBoard's answer per candidate, 0 = none
    std::uint16_t HwPort = 0;            ///< base address of the parallel port in use
    std::uint16_t BoardPortAddress = 0;  ///< AddressTable[AddressIndex]
    std::uint8_t HwAddressMenu = 0;
    std::string Version;       ///< version text of the series
    float DllVersion = 0.14F;  ///< from GetDLLVersion
    std::string DllName;
    std::string DllText;
};

/// Shape of the model; written by ApplyModel only.
struct ShapeRecord {
    std::int32_t SamplesDefault = 0;  ///< samples per channel at the reset memory mode
    std::int32_t ChPerSlice = 0;      ///< channels of one board = one trigger-word slice
    std::int32_t WordLen = 0;         ///< printed length of a trigger word slice
    std::int32_t WordsPerTrig = 0;    ///< boards
    std::int32_t BufStep = 0;         ///< pods per board
    std::int32_t TotalChannels = 0;
    std::int8_t PodCount = 0;
    std::int8_t BufCount = 0;
    std::int8_t MaxGroups = kGroupCount;
    std::int32_t ScrollStep = 32;  ///< unit of a scroll step in samples
};

struct ClockRecord {
    std::uint8_t ClockType = 0;     ///< 0 internal, else an external form
    std::uint8_t ClockEdge = 0;     ///< 0 rising, 1 falling
    std::uint8_t ClockRate = 5;     ///< rate code 0..34
    std::uint8_t ClockChanged = 0;  ///< set by SetRate for the clock programming; nothing reads it
    std::array<Text<kQualifierText>, kQualifierWords> ClockExt;  ///< qualifier words of "x", "0", "1"
    std::array<std::uint8_t, kRateCodes> RateAvail{};            ///< 1 offered, 255 not
};

struct MemoryRecord {
    std::int8_t HardwareMode = 0;  ///< memory mode 0..11
    std::int8_t HardwareMux = 0;   ///< 0 all channels, 1 and 2 multiplexed, -1 while being chosen
    std::int32_t BufferLen = 0;    ///< samples per channel in the current mode
    std::int32_t DisplayLen = 0;   ///< longest channel in samples, with multiplexing
};

struct PodRecord {
    std::array<std::int8_t, kMaxPods>
        HardwarePod{};  ///< 0 Logic, 1 and 2 pattern generator, 3 off, 4 out of use
    std::array<std::int32_t, kMaxPods> AdjAddr{};      ///< trigger alignment per buffer, samples
    std::array<std::uint16_t, kThresholds> ThrHd{};    ///< threshold code per pair of pods
    std::array<std::uint16_t, kThresholds> PatGenV{};  ///< output voltage code per pair of pods
    std::uint8_t ReprogramFlag = 0;                    ///< bits that name what must be reprogrammed
};

/// A pod that holds pattern data instead of samples.
constexpr bool IsPatternMode(std::int8_t podMode) {
    return podMode == 1 || podMode == 2;
}
/// A pod whose samples are captured and stored.
constexpr bool IsCaptureMode(std::int8_t podMode) {
    return podMode == 0 || podMode == 3 || podMode == 4;
}

}  // namespace zu
