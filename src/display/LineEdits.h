#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "display/EditResult.h"
#include "display/Lines.h"
#include "state/InstrumentState.h"

namespace zu {

inline constexpr int kAppendLimit = 191;        ///< lines up to which channels are appended
inline constexpr int kViewInsertLimit = 188;    ///< lines below which the Timing view's own commands insert
inline constexpr int kSpacerInsertLimit = 229;  ///< lines below which Timing setup inserts a spacer
inline constexpr int kMaxSpacers = 40;

/// The lists of the Timing setup.
struct LineSelection {
    Selection Lines{};    ///< the display list
    Selection Sources{};  ///< channels, then groups: rows of SourceOfRow
    Selection Groups{};   ///< groups 0..29
};

/// Each edit changes the display list as the selection says, leaves the lines that it made, moved or changed
/// selected and returns the message of the first item that it had to refuse, or a warning when it had to skip
/// some.

/// Appended from the bottom of the list of sources up; style and mode are those of the first selected line,
/// then of the line before.
EditResult AppendChannelLines(InstrumentState& state, LineSelection& selection);
/// Before the first selected line, with its style and mode.
EditResult InsertChannelLines(InstrumentState& state, LineSelection& selection);
EditResult InsertGroupLines(InstrumentState& state, LineSelection& selection);
EditResult InsertSpacerLines(InstrumentState& state, LineSelection& selection);
EditResult DeleteLines(InstrumentState& state, LineSelection& selection);
EditResult MoveLinesUp(InstrumentState& state, LineSelection& selection);
EditResult MoveLinesDown(InstrumentState& state, LineSelection& selection);
/// Styles 0 to 4 for groups only; they end a group's extra rendering.
EditResult SetLineStyle(InstrumentState& state, const LineSelection& selection, int style);
/// Turns an extra rendering (1..5 of kLineModeTexts) on, or off where it is on.
EditResult ToggleLineMode(InstrumentState& state, const LineSelection& selection, LineExtra extra);
EditResult ExpandGroupLines(InstrumentState& state, LineSelection& selection);

/// Puts the channels of a group behind its line. False if there is no such line or group.
bool ExpandGroup(InstrumentState& state, std::int32_t line, int group, int style, int mode);

/// The Timing view's own Insert group: in front of `line`, in style 0. Its caller then asks for the style.
/// Nothing is changed, and nothing told, when the list has kViewInsertLimit lines.
EditResult InsertGroupAt(InstrumentState& state, std::int32_t line, int group);
/// The Timing view's own Insert spacer.
EditResult InsertSpacerAt(InstrumentState& state, std::int32_t line);
/// Style and mode of one line from the Display style dialog.
EditResult SetStyleOfLine(InstrumentState& state, std::int32_t line, int style);
EditResult ToggleModeOfLine(InstrumentState& state, std::int32_t line, LineExtra extra);

/// What to edit from a selection: a number, or the message that there is none.
struct LineTarget {
    std::optional<int> Number;
    EditResult Refusal;
};
/// Group of the first selected group line.
LineTarget GroupOfSelection(const InstrumentState& state, const Selection& lines);
/// Channel of the first selected channel line.
LineTarget ChannelOfSelection(const InstrumentState& state, const Selection& lines);

/// Spacers among the lines in use and the slot behind them.
int CountSpacers(const InstrumentState& state);

/// Rows of the list that offers all channels, then all groups.
int SourceRows(const InstrumentState& state);
/// Line source that a row stands for; nothing outside the list.
std::optional<std::int32_t> SourceOfRow(const InstrumentState& state, int row);
/// "%d - %s" for a channel, "Group %d - %s" for a group.
std::string SourceRowText(const InstrumentState& state, int row);
/// "%d - %s" for a channel, "Group - %s" for a group, "Spacer Line".
std::string LineRowText(const InstrumentState& state, std::int32_t line);

/// Sets up an information column; types, ranges and levels that do not exist are left as they are.
EditResult SetColumn(InstrumentState& state, int column, const TimingColumn& setup);

}  // namespace zu
