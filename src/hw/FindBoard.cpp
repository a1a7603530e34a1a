#include <algorithm>

#include "hw/BackEnds.h"
#include "hw/Clock.h"
#include "hw/HardwareSession.h"
#include "hw/Registers.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr std::int32_t kUsbMode = 9;
constexpr int kEchoRounds = 4;
constexpr int kSmallMemory = 1;
constexpr int kLargeMemory = 2;
constexpr int kStackModel = 5;  // three or four boards
constexpr int kLaterModelOffset = 10;
constexpr std::uint32_t kIdleClockWord = 0x2D7C08;

void SetBoardBases(HardwareSession& hardware, std::uint16_t address) {
    for (int board = 0; board < kMaxBoards; ++board) {
        SetBoardBase(hardware.Ports, board, static_cast<std::uint16_t>(address + kBoardSpacing * board));
    }
}

/// Writes 0 and 1 to R1 of a board; whether `mask` of the answer follows. Leaves the shadow.
bool Echoes(Registers& registers, int board, int mask) {
    registers.Write(R1, board, 0);
    const bool low = (registers.Read(R1, board) & mask) == 0;
    registers.Write(R1, board, 1);
    const bool high = (registers.Read(R1, board) & mask) != 0;
    return low && high;
}

void DetectPodRegisters(HardwareSession& hardware, Registers& registers) {
    hardware.PodRegsDirect = 0;
    bool direct = true;
    for (int round = 0; round < kEchoRounds; ++round) direct = Echoes(registers, 0, Bit(1)) && direct;
    if (!direct) return;
    hardware.PodRegsDirect = 1;
    if (UsbInForce(hardware)) hardware.Slots->Usb.ReadCommand(UsbCommand::ReadIdentity);  // answer unused
}

void QuietBoards(Registers& registers) {
    constexpr int kTimerMode = 0x36;
    for (int board = 0; board < kMaxBoards; ++board) {
        registers.SetOut(S3, board, Bit(0));
        registers.Write(R11, 0, kTimerMode);  // always board 0's timer
        registers.SetOutS9(board, Bits(3, 7));
        registers.Write(R13, board, registers.At(S9, board));
    }
}

int MemoryClass(Registers& registers) {
    registers.ClearBits(S10, 0, Bit(4));
    registers.At(S11, 0) = 3;
    registers.OutS10S11(0);

    std::uint8_t& control = registers.At(S8, 0);
    control = static_cast<std::uint8_t>((control & 0x17) | 0x20);
    registers.Write(R0, 0, control);
    const int latch = registers.At(S2, 0);
    registers.Write(R2, 0, latch & ~Bit(1));
    registers.Write(R2, 0, latch | Bit(1));
    const int answer = registers.Read(R1, 0);

    registers.SetBits(S10, 0, Bit(4));
    registers.At(S11, 0) = 0;
    return (answer & Bit(5)) == 0 ? kLargeMemory : kSmallMemory;
}

void ResetColumn(Registers& registers, int board) {
    for (const Shadow shadow : {S11, S10, S2, S8, S4}) registers.At(shadow, board) = 0;
    LoadClockWord(registers, board, registers.At(S4, board), registers.At(S2, board), kIdleClockWord);
}

bool Answers(Registers& registers, int board) {
    if (Echoes(registers, board, Bit(7))) return true;
    ResetColumn(registers, board);
    return false;
}

/// Model 1 to 5 by the boards that answer, 0 for none. A stack of three counts as one of four: the fourth
/// board is not asked.
int CountBoards(Registers& registers, int memoryClass) {
    const bool large = memoryClass == kLargeMemory;
    if (!Answers(registers, 0)) return 0;
    if (!Answers(registers, 1)) return large ? 3 : 1;
    if (!Answers(registers, 2)) return large ? 4 : 2;
    ResetColumn(registers, 2);
    ResetColumn(registers, 3);
    return kStackModel;
}

int SeriesOffset(Registers& registers) {
    registers.SetOut(S4, 0, Bits(0, 2));
    registers.SetOutS9(0, Bits(3, 7));
    std::uint8_t& control = registers.At(S8, 0);
    control = static_cast<std::uint8_t>((control & 0xEA) | 8);
    registers.OutS8(0);
    registers.SetOut(S2, 0, Bit(6));
    registers.SetOut(S5, 0, Bit(6));
    const int answer = registers.Read(R2, 0);
    registers.Read(R2, 0);
    return (answer & Bit(7)) == 0 ? kLaterModelOffset : 0;
}

void LeaveIdle(Registers& registers, Registers& asFound, int board) {
    constexpr int kLaneDrivers = Bit(0) | Bit(2) | Bit(4);
    registers.SetOut(S4, board, Bits(0, 2));
    registers.SetOutS9(board, Bits(3, 7));
    registers.SetOut(S4, board, Bits(5, 7));
    registers.SetOutS8(board, kLaneDrivers);
    registers.ClearOut(S5, board, Bit(6));
    registers.SetOut(S6, board, Bits(5, 6));
    registers.SetOut(S1, board, Bit(2));
    registers.ClearOut(S4, board, Bit(4));
    asFound.SetOutS8(board, kLaneDrivers);
    registers.ClearOut(S2, board, Bit(6));
}

}  // namespace

std::uint8_t FindBoard(HardwareSession& hardware, InstrumentState& state, std::uint16_t boardAddress) {
    IdentityRecord& identity = state.Identity;
    identity.Emulated = 0;
    SetBoardBases(hardware, boardAddress);
    // The type in force on entry decides how control bytes travel until the model is known, stale or not.
    Registers registers(hardware, identity.HwPort, identity.HardwareType);
    DetectPodRegisters(hardware, registers);
    QuietBoards(registers);
    const int memoryClass = MemoryClass(registers);
    int model = CountBoards(registers, memoryClass);
    const int offset = SeriesOffset(registers);
    if (model != 0) model += offset;

    const auto row = static_cast<std::uint8_t>(model);
    Registers asFound(hardware, identity.HwPort, row);
    for (int board = 0; board < kMaxBoards; ++board) LeaveIdle(registers, asFound, board);
    identity.HardwareType = row;
    // The first access tried to open the driver; without it USB is all that is left.
    if (!DriverUsable(hardware)) identity.ComMode = kUsbMode;
    if (model == 0) identity.Emulated = 1;
    return row;
}

std::uint8_t FindStoredBoard(HardwareSession& hardware, InstrumentState& state, std::uint16_t index) {
    IdentityRecord& identity = state.Identity;
    const std::uint16_t address =
        identity.AddressTable[std::min<std::size_t>(index, identity.AddressTable.size() - 1)];
    std::uint8_t row = FindBoard(hardware, state, address);
    if (row != 0) row = FindBoard(hardware, state, address);
    if (index < identity.FoundTable.size()) identity.FoundTable[index] = row;
    return row;
}

}  // namespace zu
