#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "state/Limits.h"
#include "state/Text.h"

namespace zu {

struct CaptureRecord {
    std::uint8_t CaptureState = 0;     ///< 0 idle, 1 running, 2 paused
    std::uint8_t CaptureMode = 0;      ///< 0 Normal, 1 Single, 2 Auto, 3 One Shot, 4 Continuous
    std::uint8_t CaptureLoopMode = 0;  ///< 0 timer paced, 1 fast loop
    std::uint8_t ClearBufferOnGo = 1;
    std::uint8_t TrigStat = 0;      ///< last answer of GetTrigStat
    std::int32_t CaptureCount = 0;  ///< captures completed since Go
    std::int32_t TicksSinceGo = 0;
    std::int32_t TimerBodies = 0;
    std::int32_t ForceDelay = 0;   ///< ticks after which Auto forces a trigger
    Text<99> StatusText{"     "};  ///< status line of the cursor window
};

/// Trigger words as text, board-major: [board][word] holds groups of eight "0", "1", "X" and blanks.
/// The word-major matrix that the hardware layer takes is another type on purpose.
struct TrigWordTable {
    using Entry = std::array<char, kTrigWordText>;
    std::array<std::array<Entry, kTrigWords>, kMaxBoards> Board{};
};

struct TriggerRecord {
    TrigWordTable TrigWord;
    std::array<Text<15>, kTrigWords> TrigWordName;  ///< default "%dEvent", 14 characters
    // The level lists have room for what a settings line can carry; levels are 0..15.
    std::array<std::int32_t, kTrigListSlots> SeqList{};   ///< 0 none, w + 1 selects word w
    std::array<std::int32_t, kTrigListSlots> ModeList{};  ///< 0 word level, 1 delay level
    std::array<std::int32_t, kTrigListSlots> CountList{};
    std::array<std::int32_t, kTrigListSlots> TrigDelayRateList{};
    std::array<std::int32_t, kTrigListSlots> ElseList{};
    std::array<std::uint8_t, kTrigListSlots> EdgeList16{};     ///< 0 true (rising), 1 false (falling)
    std::array<std::uint8_t, kTrigListSlots> TrigMatchMode{};  ///< 0 any bit, 1 all bits
    std::array<std::uint8_t, kTrigListSlots> LevelEnable{};
    std::array<Text<80>, kTrigWords> TrigComment;
    std::int32_t LevelCount = 1;  ///< levels in use
    std::int32_t CurrentLevel = 0;
    std::uint8_t TrigCnt = 1;
    std::int8_t TrigCntMd = 3;  ///< 0 duration >=, 1 duration <=, 2 occurrences, 3 off
    std::uint8_t TrigOut = 0;
    std::int8_t TrigWordEditGroupBase = 1;
    std::int8_t TrigLevelsMatchWizard = 1;
};

/// Serial decode output and the views of it. The arrays have DisplayLen entries, or none.
struct SerialRecord {
    std::int8_t SerialMode = 0;    ///< 0 none, 1 I2C, 2 Microwire
    std::int32_t SerialGroup = 0;  ///< the one I2C or Microwire group
    std::int32_t SerialDataPos = 0;
    std::int32_t SpiDataPos = 0;
    std::int32_t SerialFirst = 0;  ///< first and last sample with an event
    std::int32_t SerialLast = 0;
    std::int32_t SpiFirst = 0;  ///< start samples of the first and last byte of all slots
    std::int32_t SpiLast = 0;
    std::vector<std::uint8_t> SerialEvents;                   ///< one event code per sample
    std::array<std::vector<std::uint16_t>, kSpiSlots> SpiSI;  ///< one word per sample
    std::array<std::vector<std::uint16_t>, kSpiSlots> SpiSO;
    std::array<std::uint8_t, 11> SerialFilter{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    std::int8_t SearchKind = 0;  ///< what the serial view looks for, an index of kSerialSearchKinds
    std::array<std::uint8_t, kSpiSlots> SpiShown{1, 1, 1};
    std::uint8_t TransfersShown = 1;  ///< the list of I2C events has its column of transfers
};

struct SearchRecord {
    std::int8_t SearchMode = 'P';  ///< 'S' serial, 'P' parallel
    Text<65> SearchWord;           ///< default 64 "X"
    std::int16_t SearchCh = 0;
    std::int8_t SearchBase = 1;
    std::int8_t SearchLen = 0;  ///< row of SearchWd on show
    std::array<TrigWordTable::Entry, kMaxBoards>
        SearchWd{};  ///< row = board, laid out as a trigger word entry
};

struct PatternRecord {
    std::int8_t PatternOutputMode = 1;  ///< 0 NRZ, 1 until trigger, 2 continuous
    std::uint8_t PatDirty = 1;          ///< pattern data must be rewritten to the instrument
    std::int32_t PatLimit = 0;          ///< highest address the pattern functions may touch
    std::int8_t PatInc = 0;
    std::int32_t PatZoom = 1;
    double PatZoomScale = 1.0;
    std::uint32_t PatCountStart = 0;
    std::uint32_t PatCountEnd = 256;
    std::int8_t PatCountDir = 0;
    std::uint32_t PatStep = 1;
    std::int16_t PatChStart = 0;
    std::int16_t PatChEnd = 0;
    std::int32_t PatAddrStart = 0;
    std::int32_t PatAddrEnd = 0;
    std::int32_t PatSpiGroup = 0;
    std::vector<std::uint8_t> DirectionBuffer;  ///< one byte per address on rows 25..27, else empty
};

}  // namespace zu
