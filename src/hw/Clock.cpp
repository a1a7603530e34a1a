#include "hw/Clock.h"

#include <algorithm>

#include "hw/ClockTable.h"
#include "hw/Qualifier.h"
#include "hw/SerialBus.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr std::uint32_t kFixedWord = 0x14EF08;  // the instrument expects it ahead of every clock set-up
constexpr int kTimerCounter0 = 0x36;
constexpr int kTimerCounter1 = 0x76;
constexpr int kNoPatternMode = 3;  // memory mode without pattern generator, clocked by a table of its own
constexpr int kMode3SecondStage = 27;
constexpr int kSecondStageFirst = 28;
constexpr int kSecondStageLast = 34;

bool HasSecondStage(const ClockSettings& settings) {
    return settings.ClockRate >= kSecondStageFirst && settings.ClockRate <= kSecondStageLast;
}

/// Only the rate counts, also with an external clock: the counters are then loaded with zeros.
bool NoPatternSecondStage(const ClockSettings& settings) {
    return settings.HardwareMode == kNoPatternMode && settings.ClockRate == kMode3SecondStage;
}

ClockSetting Choose(const ClockSettings& settings) {
    if (settings.ClockType != 0) return {};
    const ClockRow row = ClockRowOf(settings.ClockRate);
    return settings.HardwareMode == kNoPatternMode ? row.Mode3 : row.Normal;
}

void PutDataBit(Registers& registers, bool high) {
    if (high) {
        registers.SetOut(S4, 0, Bit(3));
    } else {
        registers.ClearOut(S4, 0, Bit(3));
    }
}

bool WordBit(std::uint32_t word, int bit) {
    return (word >> bit & 1U) != 0;
}

void SendFixedWord(Registers& registers) {
    for (int bit = 0; bit < kClockWordBits; ++bit) {
        PutDataBit(registers, WordBit(kFixedWord, bit));
        registers.SetOutS8(0, Bit(1));
        registers.ClearOutS8(0, Bit(1));
    }
}

void SendSampleWord(Registers& registers, std::uint32_t word) {
    registers.ClearOut(S6, 0, Bit(2));
    for (int bit = 0; bit < kClockWordBits; ++bit) {
        PutDataBit(registers, WordBit(word, bit));
        registers.SetOut(S6, 0, Bit(2));
        registers.ClearOut(S6, 0, Bit(2));
    }
}

void LoadCounter(Registers& registers, Reg counter, int control, int value) {
    registers.Write(R11, 0, control);
    registers.Write(counter, 0, value & 0xFF);
    registers.Write(counter, 0, value >> 8);
}

void LoadCounters(Registers& registers, const ClockSettings& settings, const ClockSetting& chosen) {
    LoadCounter(registers, R8, kTimerCounter0, chosen.Counter0);
    const bool secondStage = HasSecondStage(settings);
    if (NoPatternSecondStage(settings) || (secondStage && registers.Later())) {
        LoadCounter(registers, R9, kTimerCounter1, chosen.Counter1);
    } else if (secondStage) {
        SerialCounter(registers, chosen.Counter1);
    }
}

void SetFastInput(Registers& registers, const ClockSettings& settings) {
    constexpr int kFirstSlowRate = 9;
    if (registers.Later()) {
        if (settings.ClockRate < kFirstSlowRate && settings.ClockType == 0) {
            registers.SetBits(S10, 0, Bit(4));
        } else {
            registers.ClearBits(S10, 0, Bit(4));
        }
    }
    registers.ClearBits(S11, 0, Bits(0, 1));
    registers.OutS10S11(0);
}

void WaitForTick(Host& host) {
    const std::uint32_t start = host.TickCount();
    while (host.TickCount() - start < 1) {
    }
}

bool HasPatternPod(const ClockSettings& settings) {
    return std::any_of(settings.HardwarePod.begin(), settings.HardwarePod.end(), IsPatternMode);
}

/// The question stands once per arming, and only where patterns go out once.
bool UserGoesOn(HardwareSession& hardware, const ClockSettings& settings) {
    if (settings.PatternOutputMode != 0 || hardware.FirstRun == 0 || !HasPatternPod(settings)) return true;
    hardware.FirstRun = 0;
    return hardware.Host->Confirm("Click Yes to output data once or cancel to stop.",
                                  "NRZ Pattern Generator");
}

void SelectInternal(Registers& registers, const ClockSettings& settings) {
    const int selector = ClockRowOf(settings.ClockRate).Selector;
    if (selector >= 0) registers.ClockSelect(selector);
    if (NoPatternSecondStage(settings)) registers.ClockSelect(5);
}

void SelectQualified(Registers& registers, const ClockSettings& settings, int selector) {
    LoadQualifier(registers, settings.ClockEdge, settings.ClockExt);
    registers.ClockSelect(selector);
    registers.ClearBits(S4, 0, Bit(0));
}

void SendZeroWord(Registers& registers) {
    registers.ClearOut(S6, 0, Bit(2));
    for (int bit = 0; bit < kClockWordBits; ++bit) {
        PutDataBit(registers, false);
        registers.ClearOutS8(0, Bit(1));
        registers.SetOutS8(0, Bit(1));
    }
}

/// The types without a case leave the selector where it is.
void SelectSource(Registers& registers, const ClockSettings& settings) {
    switch (settings.ClockType) {
        case 0:
            return SelectInternal(registers, settings);
        case 1:
            return registers.ClockSelect(0);
        case 2:
            return registers.ClockSelect(2);
        case 3:
            return SelectQualified(registers, settings, 6);
        case 4:
        case 6:
            return SelectQualified(registers, settings, 4);
        case 5:
            return SendZeroWord(registers);
        case 7:
            return registers.ClockSelect(7);
        default:
            return;
    }
}

void SetExternalInputs(Registers& registers, std::uint8_t clockType) {
    switch (clockType) {
        case 4:
            registers.SetBits(S3, 0, Bit(1));
            registers.ClearBits(S2, 0, Bit(2) | Bit(5));
            break;
        case 5:
            registers.SetBits(S3, 0, Bit(1));
            registers.SetBits(S2, 0, Bit(5));
            break;
        case 6:
            registers.ClearBits(S3, 0, Bit(1));
            registers.SetBits(S2, 0, Bit(5));
            break;
        default:
            return;
    }
    registers.Out(S3, 0);
    registers.Out(S2, 0);
}

}  // namespace

void LoadClockWord(Registers& registers, int column, std::uint8_t r4, std::uint8_t s2, std::uint32_t word) {
    registers.WriteS10S11(0, registers.At(S10, 0), registers.At(S11, 0) & 0xFC);
    const int control = registers.At(S8, column);
    const auto pulse = [&](int value) {
        registers.Write(R0, column, value);
        registers.Write(R2, column, s2 & ~Bit(1));
        registers.Write(R2, column, s2 | Bit(1));
    };
    for (int bit = 0; bit < kClockWordBits; ++bit) {
        registers.Write(R4, column, WordBit(word, bit) ? r4 | Bit(3) : r4 & ~Bit(3));
        pulse(control & ~Bit(1));
        pulse(control | Bit(1));
    }
}

bool SetClock(HardwareSession& hardware, std::uint16_t base, const ClockSettings& settings) {
    if (settings.Emulated != 0) return true;
    Registers registers(hardware, base, settings.HardwareType);
    for (int board = 0; board < kMaxBoards; ++board) registers.SetOut(S3, board, Bit(0));
    SendFixedWord(registers);
    const ClockSetting chosen = Choose(settings);
    LoadCounters(registers, settings, chosen);
    SetFastInput(registers, settings);
    SendSampleWord(registers, chosen.Word);
    UsbFlushQueue(hardware);
    WaitForTick(*hardware.Host);
    registers.SetBits(S4, 0, Bit(0));
    if (!UserGoesOn(hardware, settings)) return false;
    SelectSource(registers, settings);
    SetExternalInputs(registers, settings.ClockType);
    registers.Out(S4, 0);
    return true;
}

ClockSettings ClockSettingsOf(const InstrumentState& state) {
    const auto pods = std::clamp<std::size_t>(
        static_cast<std::size_t>(std::max<int>(state.Shape.PodCount, 0)), 0, state.Pods.HardwarePod.size());
    return {.PatternOutputMode = static_cast<std::uint8_t>(state.Pattern.PatternOutputMode),
            .HardwareMode = static_cast<std::uint8_t>(state.Memory.HardwareMode),
            .HardwareType = state.Identity.HardwareType,
            .ClockRate = state.Clock.ClockRate,
            .ClockType = state.Clock.ClockType,
            .ClockEdge = state.Clock.ClockEdge,
            .ClockExt = state.Clock.ClockExt,
            .Emulated = state.Identity.Emulated,
            .HardwarePod = std::span(state.Pods.HardwarePod).first(pods)};
}

bool SetClock(HardwareSession& hardware, InstrumentState& state) {
    return SetClock(hardware, state.Identity.HwPort, ClockSettingsOf(state));
}

}  // namespace zu
