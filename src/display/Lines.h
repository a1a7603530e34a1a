#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "display/Canvas.h"
#include "state/InstrumentState.h"

namespace zu {

inline constexpr std::int32_t kRowPad = 3;
inline constexpr std::int32_t kTraceFoot = 5;      ///< pixels between the low level and the row's end
inline constexpr std::int32_t kHeaderHeight = 36;  ///< y of the first row
inline constexpr std::int32_t kSpiRowHeight = 7 * kRowPad + 114;

inline constexpr int kFirstTimingStyle = 5;  ///< styles below are texts of groups
inline constexpr int kNormalStyle = 5;
inline constexpr int kSmallStyle = 6;

/// How a line is drawn.
struct LineStyleTraits {
    std::string_view Text;
    std::int32_t Height;   ///< pixels besides kRowPad; 0 = a text row
    std::int32_t Divisor;  ///< a group's scale is 2^Size / Divisor; 0 = scale 1
};
inline constexpr std::array<LineStyleTraits, 12> kLineStyles{{
    {"Hex (Group only)", 0, 0},
    {"Binary  (Group only)", 0, 0},
    {"Ascii  (Group only)", 0, 0},
    {"Decimal  (Group only)", 0, 0},
    {"Translation table (Group only)", 0, 0},
    {"Normal", 14, 12},
    {"Timing (8 pixels tall)", 10, 8},
    {"Timing (18 pixels tall)", 20, 16},
    {"Timing (32 pixels tall)", 34, 32},
    {"Timing (64 pixels tall)", 66, 64},
    {"Timing (128  pixels tall)", 130, 128},
    {"Timing (256  pixels tall)", 258, 256},
}};

/// What is drawn besides.
enum class LineExtra : std::uint8_t {
    Plain,
    Overlay,
    Difference,
    PulseWidth,
    FrequencyFalling,
    FrequencyRising
};
inline constexpr std::array<std::string_view, 6> kLineModeTexts{
    "",
    "Channel Overlay (Group only)",
    "Channel Difference (Group only)",
    "Pulse width",
    "Frequency (1->0)",
    "Frequency (0->1)",
};

enum class LineKind : std::uint8_t { Channel, Group, Spacer };

/// Kind of a line source; a negative source is drawn as a spacer.
constexpr LineKind KindOfSource(std::int32_t source) {
    if (source < 0 || source >= kFirstSpacerLine) return LineKind::Spacer;
    return source >= kFirstGroupLine ? LineKind::Group : LineKind::Channel;
}
/// Number of the group that a source names; -1 if it names none.
constexpr int GroupOfSource(std::int32_t source) {
    return KindOfSource(source) == LineKind::Group ? source - kFirstGroupLine : -1;
}

/// One line of the display list with its fields made safe.
struct DisplayLine {
    std::int32_t Source = kFirstSpacerLine;
    LineKind Kind = LineKind::Spacer;
    int Style = kNormalStyle;            ///< 0..11; what is out of range counts as Normal
    LineExtra Extra = LineExtra::Plain;  ///< what is out of range counts as Plain
};
/// Line `index` of the list; a spacer when the index is outside the list.
DisplayLine LineAt(const InstrumentState& state, std::int32_t index);
/// Lines in use, 0..231.
std::int32_t LineCount(const InstrumentState& state);
/// First line shown, 0 or above.
std::int32_t FirstLine(const InstrumentState& state);

/// Whether a group, given by number or by line source, is an SPI group.
bool IsSpiGroup(const InstrumentState& state, std::int32_t numberOrSource);
int CountSpiGroups(const InstrumentState& state);
/// Channels of a group that may be used: its size cut to 0..160.
std::int32_t GroupSize(const GroupRecord& group);

/// Height of a row of text.
constexpr std::int32_t TextRowHeight(const Metrics& metrics) {
    return kRowPad + metrics.TextHeight + 2;
}
/// Height of the overview strip; the cursor letters stand below it.
constexpr std::int32_t StripHeight(const Metrics& metrics) {
    return kHeaderHeight - metrics.TextHeight;
}
/// Height of a row of this style, whatever the line shows.
std::int32_t StyleHeight(int style, const Metrics& metrics);
/// Height of a line's row in pixels; 0 for a channel that the present multiplex takes away.
std::int32_t RowHeight(const InstrumentState& state, std::int32_t index, const Metrics& metrics);
/// Whether a line has a row: false for a channel that the present multiplex takes away.
bool LineShown(const InstrumentState& state, std::int32_t index);
/// Units of a group's value per pixel; 1 for text styles.
double VerticalScale(int style, std::int32_t groupSize);
/// Font of a row.
FontId StyleFont(int style);

}  // namespace zu
