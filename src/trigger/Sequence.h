#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

inline constexpr int kMaxLevelCount = 1048576;  ///< largest repeat count of a level

/// Delay rates of a level, by TrigDelayRateList.
inline constexpr std::array<std::string_view, 25> kDelayRates{
    "10ns", "20ns", "50ns", "100ns", "200ns", "500ns", "1us", "2us", "5us",
    "10us", "20us", "50us", "100us", "200us", "500us", "1ms", "2ms", "5ms",
    "10ms", "20ms", "50ms", "100ms", "200ms", "500ms", "1s"};
/// Text of a delay rate; empty for a number outside the list.
std::string_view DelayRateText(std::int32_t rate);

/// Buttons of TrigCntMd 0..3.
inline constexpr std::array<std::string_view, 4> kTrigCntModeTexts{
    "Duration greater or eq", "Duration less or eq", "Match Occurrences", "Off"};
/// Heads of the four columns of sequence slots, four slots each.
inline constexpr std::array<std::string_view, 4> kEventColumnTexts{"Events 0..3", "Events 4..7",
                                                                   "Events 8..11", "Events 12..15"};

/// Word 0..15 that level k asks for; nothing for an empty slot, a value that no word has, or k outside
/// 0..15. Empty slots are no barrier: the levels around them follow one another.
std::optional<int> WordOfLevel(const InstrumentState& state, int k);
/// Highest level with a word, to which the trigger cursor refers; nothing if the sequence is empty.
std::optional<int> LastLevel(const InstrumentState& state);
/// Whether the model has the list of levels instead of the sixteen sequence slots.
bool UsesLevelList(const InstrumentState& state);
/// "-" and the names of the sixteen words; the index is the value of SeqList.
std::vector<std::string> SequenceChoices(const InstrumentState& state);

/// Lets level k ask for a word, or with word -1 for none. A level or word outside 0..15 is ignored.
void SetLevel(InstrumentState& state, int k, int word, int edge, int elseBranch);
/// Levels in use that the lists have room for, 0..16.
int LevelsInUse(const InstrumentState& state);

/// The line of level k in the level list; empty for a level outside 0..15.
std::string DescribeLevel(const InstrumentState& state, int k);

/// A line of the level list: a level or the comment above it.
struct LevelLine {
    int Level;
    bool IsComment;
    std::string Text;
};
std::vector<LevelLine> LevelList(const InstrumentState& state);

/// What the dialog of one level offers. Lists of the other mode are empty and disabled.
struct LevelChoices {
    std::string_view ModeLabel;   ///< beside Match
    std::string_view LogicLabel;  ///< beside Edge
    std::vector<std::string> Match;
    std::vector<std::string> Edge;
    std::vector<std::string> Word;
    std::vector<std::string> Else;
    std::vector<std::string> Rate;
};
LevelChoices ChoicesOfLevelMode(const InstrumentState& state, std::int32_t mode);

/// Takes a typed repeat count: cut to 1..kMaxLevelCount, with a note if it was too large. A level outside
/// 0..15 is ignored.
void EnterLevelCount(InstrumentState& state, Host& host, int k, std::string_view text);

/// Selected levels, in any order; the moves leave the moved levels selected.
using LevelSelection = std::vector<int>;
/// Exchanges each selected level with the one above it; false, with a message, if that cannot be.
bool MoveLevelsUp(InstrumentState& state, Host& host, LevelSelection& selected);
bool MoveLevelsDown(InstrumentState& state, Host& host, LevelSelection& selected);
/// Turns the selected levels on and off; false, with a message, if none is selected.
bool ToggleLevels(InstrumentState& state, Host& host, const LevelSelection& selected);

}  // namespace zu
