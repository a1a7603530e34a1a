#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "state/Geometry.h"
#include "state/Limits.h"
#include "state/Text.h"

namespace zu {

struct ChannelRecord {
    std::array<Text<231>, kMaxChannels> ChannelName;
    std::array<std::int8_t, kMaxChannels> ChannelInvert{};
    std::array<Rgb, kMaxChannels> ChannelColor{};
};

/// An ordered bundle of channels; index 0 is the least significant bit of its value.
struct GroupRecord {
    Text<16> Name;
    std::int32_t Size = 0;  ///< channels in use, 0..160
    std::array<std::int32_t, kGroupSlots> Channels{};
    Rgb Color = 0;
    std::int8_t TwosComplement = 0;
    std::uint8_t CsActiveHigh = 0;  ///< SPI only
    std::int32_t BitOrder = 0;      ///< SPI only: 1 = least significant bit first
    std::int8_t Mode = 0;           ///< 0 Normal, 1 I2C, 2 Microwire, 3..6 SPI mode 0..3
};

struct CursorRecord {
    /// A, B, C, D, T and one more, in samples; six slots further the values last painted.
    std::array<std::int32_t, 2 * kCursorSlots> Cur{50, 100, 150, 200, 10, 0};
    std::array<Rgb, kCursorSlots> CursorColor{0x007D00, 0xFF0000, 0x008080, 0x808040, 0x0000FF, 0x808080};
    std::int8_t CursorDlgMode = 1;                          ///< 0 samples, 1 time
    std::array<std::int32_t, 5> CursorMath{0, 3, 6, 8, 9};  ///< difference chosen in each of the five lists
};

/// One information column of the Timing view.
struct TimingColumn {
    std::uint8_t Type = 0;     ///< 0 Off .. 15 Max Width(1)
    std::uint8_t Range = 0;    ///< 0 Buffer, else a pair of cursors
    std::int8_t TrigWord = 0;  ///< level shown by a type 3 column
};

struct TimingRecord {
    std::int32_t ScreenZoom = 1;  ///< above 0 pixels per sample, below 0 samples per pixel
    std::int8_t ZoomOrigin = -1;  ///< -1 centre, -2 left, -3 a point, 0..3 cursor A..D, 4 T
    std::uint8_t TimingGrid = 1;
    std::int8_t TimingDispInfoType = 2;
    std::int32_t TimingDataPos = 0;  ///< first sample shown
    std::int32_t TimingChPos = 0;    ///< first line shown
    std::array<TimingColumn, kTimingColumns> TimingDisp{};
    std::int32_t TimingLines = 0;                       ///< lines in use
    std::array<std::int32_t, kLineSlots> LineSource{};  ///< 0..159 channel, 160..189 group, above a spacer
    std::array<std::uint8_t, kLineSlots> LineStyle{};   ///< 0..11
    std::array<std::int8_t, kLineSlots> LineMode{};     ///< 0..5
};

struct StateListRecord {
    std::int32_t StateDataPos = 0;
    std::int32_t StateGroupPos = 0;
    std::int8_t StateDisp = 0;                       ///< column being set up
    std::array<std::int8_t, kGroupCount> ScreenL{};  ///< group shown in a column
    std::array<std::int8_t, kGroupCount> ScreenF{};  ///< 0 Hex, 1 Binary, 2 Ascii, 3 Decimal, 4 Translate
    std::array<std::int32_t, kGroupCount> ScreenWidth{};  ///< characters, computed
};

struct ScreenRecord {
    std::int32_t ScreenW = 0;  ///< pixels
    std::int32_t ScreenH = 0;
    /// Text, background of the analyzer, grid, background of the pattern generator.
    std::array<Rgb, 4> ScreenColor{0x000000, 0xFFFFFF, 0x808080, 0xDCDCDC};
};

/// Size that the user gave a dialog, pixels of the layout.
struct DialogSize {
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    friend bool operator==(const DialogSize&, const DialogSize&) = default;
};

/// Open flags and rectangles of the windows.
struct WindowRecord {
    std::int32_t TimingStat = 0;
    std::int32_t StateStat = 0;
    std::int32_t SerialStat = 0;
    std::int32_t SpiStat = 0;
    std::int32_t ThresholdStat = 0;
    std::int32_t CursorDlgStat = 0;
    std::int32_t PatEditStat = 0;
    std::uint8_t LastWindow = 0;
    std::uint8_t ActiveView = 0;  ///< 0 Timing, 1 Statelist
    WindowRect MainRect;
    WindowRect TimingRect;
    WindowRect StateRect;
    WindowRect SerialRect;
    WindowRect SpiRect;
    WindowRect PatternRect;
    WindowRect ThresholdRect;
    std::int32_t TimingRectValid = 0;  ///< the "def" keys: the stored rectangle is to be used
    std::int32_t StateRectValid = 0;
    std::int32_t SerialRectValid = 0;
    std::int32_t SpiRectValid = 0;
    std::int32_t PatternRectValid = 0;
    std::int32_t ThresholdRectValid = 0;
    std::map<std::string, DialogSize> DialogSizes;  ///< by the dialog's name, letters and digits
};

struct PrintRecord {
    std::int8_t PrintMode = 0;   ///< 1 Timing, 2 Serial, others State
    std::int8_t PrintRange = 0;  ///< 0 the entered addresses, 1 cursors A and B
    std::int32_t PrintStart = 0;
    std::int32_t PrintEnd = 2000;
    std::int8_t PrintColorMd = 1;
};

}  // namespace zu
