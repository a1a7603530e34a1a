#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "reference/Bank.h"

namespace zu::reference {

/// What the sequences are run with; plain numbers, as the settings hold them.
struct Setup {
    int ClockType = 0;
    int ClockRate = 5;
    int ClockEdge = 0;
    std::vector<std::string> ClockExt;  ///< sixteen words of eight characters
    int HardwareMode = 0;
    int OutputMode = 1;
    bool Emulated = false;
    bool FirstRun = false;   ///< the pattern question is still to be asked
    bool UserGoesOn = true;  ///< the answer to it
    int Boards = 4;
    int BufStep = 5;
    int PodCount = 20;
    std::vector<int> Pods;     ///< modes of the pods that exist
    std::vector<int> Lengths;  ///< samples, by pod
    std::vector<std::vector<std::uint8_t>> Patterns;

    [[nodiscard]] bool HasPatternPod() const;
};

void LoadClockWord(Bank& bank, int column, int r4, int s2, std::uint32_t word);
void SerialCounter(Bank& bank, int value);
void BusData(Bank& bank, int board, int value);
void BusControl(Bank& bank, int board, int value);
void LoadQualifier(Bank& bank, int edge, const std::vector<std::string>& words);
/// False: the user stopped.
bool SetClock(Bank& bank, Setup& setup);
void SetupMemConfig(Bank& bank, const Setup& setup);
void DownloadPatterns(Bank& bank, const Setup& setup);
/// The catalogue row, 0 for none. The bank has the address and the type of before.
int FindBoard(Bank& bank);

}  // namespace zu::reference
