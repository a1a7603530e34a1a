#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "display/EditResult.h"
#include "state/InstrumentState.h"

namespace zu {

inline constexpr int kGroupNameTyped = 14;    ///< characters of a name that may be typed
inline constexpr int kGroupInsertLimit = 31;  ///< a group of this size takes no insertion
inline constexpr int kGroupAppendLimit = 32;  ///< a group of this size takes nothing more
inline constexpr int kMaxSpiGroups = 3;

/// Values of GroupRecord::Mode in the order of their list.
inline constexpr std::array<std::string_view, 7> kGroupModes{
    "Normal", "I2C", "Microwire", "SPI(Mode0)", "SPI(Mode1)", "SPI(Mode2)", "SPI(Mode3)",
};

/// The two lists of the Group setup: all channels, and the channels of the group, least significant first.
struct GroupSelection {
    Selection Channels{};
    Selection Positions{};
};

/// Each edit changes group `group` as its selection says, leaves the edited rows selected and returns the
/// message of the first item that it had to refuse. A group outside 0..29 is left alone.

/// Puts the k-th selected channel in at the k-th selected position + k; stops where positions run out. An
/// empty group takes all of them from its start.
EditResult InsertInGroup(InstrumentState& state, int group, GroupSelection& selection);
EditResult AppendToGroup(InstrumentState& state, int group, GroupSelection& selection);
/// Then selects the channel behind the last one that was appended, unless that was the highest.
EditResult AppendToGroupAndSelectNext(InstrumentState& state, int group, GroupSelection& selection);
EditResult DeleteFromGroup(InstrumentState& state, int group, GroupSelection& selection);
/// Swaps the selected positions end for end; with less than two selected the whole group.
EditResult ReverseGroup(InstrumentState& state, int group, GroupSelection& selection);
EditResult MoveGroupUp(InstrumentState& state, int group, GroupSelection& selection);
EditResult MoveGroupDown(InstrumentState& state, int group, GroupSelection& selection);

/// Keeps at most kGroupNameTyped characters.
EditResult RenameGroup(InstrumentState& state, int group, std::string_view name);
/// Makes the group one of kGroupModes, with the size and the message of that mode.
EditResult SetGroupMode(InstrumentState& state, int group, int mode, GroupSelection& selection);
EditResult SetTwosComplement(InstrumentState& state, int group, bool on);
EditResult SetCsActiveHigh(InstrumentState& state, int group, bool on);
/// On: the least significant bit comes first.
EditResult SetBitOrder(InstrumentState& state, int group, bool leastFirst);
EditResult SetGroupColor(InstrumentState& state, int group, Rgb color);
/// To be called when the Group setup closes, in whichever way: says whether a decoder must run.
EditResult LeaveGroupSetup(const InstrumentState& state);

/// Number to open the Group setup with; what no group has becomes 0.
int GroupToEdit(int number);

/// "%d - %s" with the channel's number from 0 and its name.
std::string ChannelRowText(const InstrumentState& state, int channel);
/// "%d - %s" with the group's number from 1 and its name.
std::string GroupRowText(const InstrumentState& state, int group);
/// "%s " with the name of the channel at a position of the group.
std::string PositionRowText(const InstrumentState& state, int group, int position);
/// "%d " with the size of the group.
std::string GroupSizeText(const InstrumentState& state, int group);

}  // namespace zu
