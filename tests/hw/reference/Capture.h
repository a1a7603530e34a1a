#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "reference/Sequences.h"

namespace zu::reference {

/// What a capture is armed and read out with, besides the clock and the pods.
struct Capture : Setup {
    bool IsUsb = false;
    bool PatDirty = false;
    int Reprogram = 0;    ///< bit 2: thresholds
    bool AnyBit = false;  ///< one matching bit is enough
    int Edge = 0;
    std::array<int, 16> Levels{};  ///< 0 none, else number of a word from 1
    /// Words of each board, five groups of eight characters with a blank between them, the last lane first.
    std::array<std::array<std::string, 4>, 16> Words;
    int Count = 1;
    int CountMode = 3;
    int Position = 10;
    std::array<int, 12> Thresholds{};
    std::array<int, 12> Voltages{};
    std::array<bool, 160> Inverted{};

    std::array<int, 20> Adjusted{};                  ///< found at read-out
    std::vector<std::vector<std::uint8_t>> Samples;  ///< memory of each pod, longer than its length
};

void LoadThresholds(Bank& bank, const Capture& capture);
/// 1 if some word asks for a channel, else 2.
int CompileTrigger(Bank& bank, const Capture& capture);
std::int64_t PositionValue(const Bank& bank, const Capture& capture, std::int64_t position);
void LoadPosition(Bank& bank, const Capture& capture, int position);
void ReleaseLines(Bank& bank, const Capture& capture);
void SetLaneSelect(Bank& bank, const Capture& capture);
void SetInputMode(Bank& bank, const Capture& capture);
/// 0: the user stopped.
int StartCapture(Bank& bank, Capture& capture);
void EndCapture(Bank& bank, Capture& capture);
int FindAlignment(const Capture& capture, int step);
int GetTrigStat(Bank& bank);
void ForceTrigger(Bank& bank);

}  // namespace zu::reference
