#include "display/GroupEdits.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "display/EditTools.h"
#include "display/Lines.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr EditMessage kNoChannel{"Select channel from 'channel list'", kErrorBefore};
constexpr EditMessage kNoPosition{"Select position from 'group list'", kErrorBefore};
constexpr EditMessage kNothingToDelete{"Select channel from 'group list.'", kErrorBefore};
constexpr EditMessage kGroupFull{"Group full. No room for additional channels", kErrorDuring};
constexpr EditMessage kInsertStopped{"Select channel (channel window) and position (group window)",
                                     kErrorDuring};
constexpr EditMessage kAppendStopped{"Select channel (channel window)", kErrorDuring};

constexpr int kI2c = 1;
constexpr int kMicrowire = 2;
constexpr int kFirstSpi = 3;

/// Channels of a mode in the order of their roles, and what is told about them.
struct ModeTraits {
    std::int32_t Size;
    EditMessage Message;
};
constexpr std::array<ModeTraits, 4> kModeTraits{{
    {0, {}},
    {2,
     {"Select any 2 channels. The first one is for I2C clock and the second one is for I2C data.",
      "I2C Group Enabled"}},
    {4, {"Bit 0=clk, Bit 1=DI, Bit 2=DO, Bit 3=CS ", "Microwire Enabled"}},
    {4, {"Bit 0=clk, Bit 1=SI, Bit 2=SO, Bit 3=CS ", "SPI Enabled"}},
}};

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

GroupRecord* FindGroup(InstrumentState& state, int group) {
    return group >= 0 && group < kGroupCount ? &state.Groups[At(group)] : nullptr;
}

const GroupRecord* FindGroup(const InstrumentState& state, int group) {
    return group >= 0 && group < kGroupCount ? &state.Groups[At(group)] : nullptr;
}

int ChannelCount(const InstrumentState& state) {
    return std::clamp(state.Shape.TotalChannels, 0, kMaxChannels);
}

bool IsSerialGroup(const InstrumentState& state, int group) {
    return state.Serial.SerialMode != 0 && state.Serial.SerialGroup == group;
}

/// Once a serial group has the channels of its roles, its list starts from the first one again.
void RestSerialCursor(const InstrumentState& state, int group, Selection& positions) {
    if (!IsSerialGroup(state, group)) return;
    const std::int32_t full = kModeTraits[state.Serial.SerialMode == kI2c ? kI2c : kMicrowire].Size;
    if (GroupSize(state.Groups[At(group)]) < full) return;
    positions.fill(false);
    Select(positions, 0);
}

/// What follows once the channels of a group changed.
void FinishChannels(InstrumentState& state, int group, EditResult& result) {
    if (!result.Changed) return;
    ComputeGroupWidths(state);
    result.DecodeSpi = IsSpiGroup(state, group);
}

void InsertAt(GroupRecord& record, int position, int channel) {
    const int size = GroupSize(record);
    const auto first = record.Channels.begin() + position;
    std::move_backward(first, record.Channels.begin() + size, record.Channels.begin() + size + 1);
    *first = channel;
    record.Size = size + 1;
}

/// Whether a channel may go in at a position. A group of 31 takes none, although one of 32 may exist.
bool MayInsert(const InstrumentState& state, const GroupRecord& record, int position, int channel) {
    return channel < ChannelCount(state) && position < kGroupSlots && GroupSize(record) < kGroupInsertLimit;
}

/// The text is chosen by the limit of appending, so that a group of 31 is not told to be full.
EditMessage WhyStopped(const GroupRecord& record, const EditMessage& otherwise) {
    return GroupSize(record) < kGroupAppendLimit ? otherwise : kGroupFull;
}

/// Channel appended last; -1 for none.
struct Appended {
    EditResult Result;
    int Last = -1;
};

Appended Append(InstrumentState& state, int group, GroupSelection& selection) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    const std::vector<int> channels = SelectedRows(selection.Channels);
    if (channels.empty()) return {Refuse(kNoChannel)};
    Appended done;
    for (const int channel : channels) {
        const int size = GroupSize(*record);
        if (size >= kGroupAppendLimit || channel >= ChannelCount(state)) {
            Tell(done.Result, WhyStopped(*record, kAppendStopped));
            break;
        }
        if (!done.Result.Changed) selection.Positions.fill(false);
        InsertAt(*record, size, channel);
        Select(selection.Positions, size);
        done.Last = channel;
        done.Result.Changed = true;
    }
    if (done.Result.Changed) RestSerialCursor(state, group, selection.Positions);
    FinishChannels(state, group, done.Result);
    return done;
}

void SwapPairs(GroupRecord& record, const std::vector<int>& positions) {
    for (std::size_t i = 0, j = positions.size(); i + 1 < j; ++i) {
        --j;
        std::swap(record.Channels[At(positions[i])], record.Channels[At(positions[j])]);
    }
}

void ReverseAll(GroupRecord& record, Selection& positions) {
    const int size = GroupSize(record);
    std::reverse(record.Channels.begin(), record.Channels.begin() + size);
    std::reverse(positions.begin(), positions.begin() + size);
}

/// I2C and Microwire: one group of all has that role.
EditResult TakeSerialRole(InstrumentState& state, int group, int mode) {
    for (GroupRecord& other : state.Groups) {
        if (other.Mode == kI2c || other.Mode == kMicrowire) other.Mode = 0;
    }
    const bool wasSpi = IsSpiGroup(state, group);
    GroupRecord& record = state.Groups[At(group)];
    record.Mode = static_cast<std::int8_t>(mode);
    record.Size = kModeTraits[At(mode)].Size;
    state.Serial.SerialMode = static_cast<std::int8_t>(mode);
    state.Serial.SerialGroup = group;
    EditResult result{.Changed = true, .DecodeSpi = wasSpi};
    return Tell(result, kModeTraits[At(mode)].Message);
}

EditResult TooManySpiGroups(bool wasSpi) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "The software supports a maximum of %d SPI groups.",
                  kMaxSpiGroups);
    EditResult result{.Changed = true, .DecodeSpi = wasSpi};
    return Tell(result, {text.data(), kErrorBefore});
}

/// A group that is refused ends in mode 0, whatever it was before.
EditResult MakeSpi(InstrumentState& state, int group, int mode) {
    GroupRecord& record = state.Groups[At(group)];
    const bool wasSpi = IsSpiGroup(state, group);
    record.Mode = 0;
    if (CountSpiGroups(state) >= kMaxSpiGroups) return TooManySpiGroups(wasSpi);
    record.Mode = static_cast<std::int8_t>(mode);
    record.Size = kModeTraits[kFirstSpi].Size;
    EditResult result{.Changed = true, .DecodeSpi = true};
    return Tell(result, kModeTraits[kFirstSpi].Message);
}

/// Acts on the serial group only: an SPI group stays what it is.
EditResult MakeNormal(InstrumentState& state, int group) {
    if (!IsSerialGroup(state, group)) return {};
    const bool wasSpi = IsSpiGroup(state, group);
    state.Groups[At(group)].Mode = 0;
    state.Serial.SerialMode = 0;
    return {.Changed = true, .DecodeSpi = wasSpi};
}

/// Stores a value; tells whether it is another one.
template <typename Field, typename Value>
EditResult Store(Field& field, Value value) {
    const auto stored = static_cast<Field>(value);
    const bool changed = field != stored;
    field = stored;
    return {.Changed = changed};
}

}  // namespace

EditResult InsertInGroup(InstrumentState& state, int group, GroupSelection& selection) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    const int size = GroupSize(*record);
    const std::vector<int> channels = SelectedRows(selection.Channels);
    std::vector<int> positions = SelectedRows(selection.Positions, size);
    if (channels.empty()) return Refuse(kNoChannel);
    if (size > 0 && positions.empty()) return Refuse(kNoPosition);
    if (size == 0) positions.assign(channels.size(), 0);

    EditResult result;
    for (std::size_t k = 0; k < std::min(channels.size(), positions.size()); ++k) {
        const int position = positions[k] + static_cast<int>(k);
        if (!MayInsert(state, *record, position, channels[k])) {
            Tell(result, WhyStopped(*record, kInsertStopped));
            break;
        }
        if (!result.Changed) selection.Positions.fill(false);
        InsertAt(*record, position, channels[k]);
        Select(selection.Positions, position);
        result.Changed = true;
    }
    if (result.Changed) RestSerialCursor(state, group, selection.Positions);
    FinishChannels(state, group, result);
    return result;
}

EditResult AppendToGroup(InstrumentState& state, int group, GroupSelection& selection) {
    return Append(state, group, selection).Result;
}

EditResult AppendToGroupAndSelectNext(InstrumentState& state, int group, GroupSelection& selection) {
    Appended done = Append(state, group, selection);
    if (done.Last >= 0 && done.Last + 1 < ChannelCount(state)) {
        selection.Channels.fill(false);
        Select(selection.Channels, done.Last + 1);
    }
    return std::move(done.Result);
}

EditResult DeleteFromGroup(InstrumentState& state, int group, GroupSelection& selection) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    int size = GroupSize(*record);
    const std::vector<int> positions = SelectedRows(selection.Positions, size);
    if (positions.empty()) return Refuse(kNothingToDelete);
    for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
        const auto gone = record->Channels.begin() + *position;
        std::move(gone + 1, record->Channels.begin() + size, gone);
        --size;
    }
    record->Size = size;
    KeepSelectionInside(selection.Positions, size);
    EditResult result{.Changed = true};
    FinishChannels(state, group, result);
    return result;
}

EditResult ReverseGroup(InstrumentState& state, int group, GroupSelection& selection) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    const std::vector<int> positions = SelectedRows(selection.Positions, GroupSize(*record));
    if (positions.size() >= 2) {
        SwapPairs(*record, positions);
    } else {
        ReverseAll(*record, selection.Positions);
    }
    EditResult result{.Changed = GroupSize(*record) > 1};
    FinishChannels(state, group, result);
    return result;
}

EditResult MoveGroupUp(InstrumentState& state, int group, GroupSelection& selection) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    const auto swap = [record](int a, int b) { std::swap(record->Channels[At(a)], record->Channels[At(b)]); };
    EditResult result = MoveSelectedUp(selection.Positions, GroupSize(*record), swap);
    FinishChannels(state, group, result);
    return result;
}

EditResult MoveGroupDown(InstrumentState& state, int group, GroupSelection& selection) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    const auto swap = [record](int a, int b) { std::swap(record->Channels[At(a)], record->Channels[At(b)]); };
    EditResult result = MoveSelectedDown(selection.Positions, GroupSize(*record), swap);
    FinishChannels(state, group, result);
    return result;
}

EditResult RenameGroup(InstrumentState& state, int group, std::string_view name) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    const Text<16> typed(name.substr(0, kGroupNameTyped));
    EditResult result{.Changed = !(record->Name == typed)};
    record->Name = typed;
    if (result.Changed) ComputeGroupWidths(state);
    return result;
}

EditResult SetGroupMode(InstrumentState& state, int group, int mode, GroupSelection& selection) {
    if (FindGroup(state, group) == nullptr || mode < 0 || mode >= static_cast<int>(kGroupModes.size())) {
        return {};
    }
    EditResult result;
    if (mode == 0) {
        result = MakeNormal(state, group);
    } else if (mode < kFirstSpi) {
        result = TakeSerialRole(state, group, mode);
    } else {
        result = MakeSpi(state, group, mode);
    }
    const auto rows = GroupSize(state.Groups[At(group)]);
    std::fill(selection.Positions.begin() + rows, selection.Positions.end(), false);
    if (result.Changed) ComputeGroupWidths(state);
    return result;
}

EditResult SetTwosComplement(InstrumentState& state, int group, bool on) {
    GroupRecord* record = FindGroup(state, group);
    return record == nullptr ? EditResult{} : Store(record->TwosComplement, on);
}

EditResult SetCsActiveHigh(InstrumentState& state, int group, bool on) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    EditResult result = Store(record->CsActiveHigh, on);
    result.DecodeSpi = result.Changed;
    return result;
}

EditResult SetBitOrder(InstrumentState& state, int group, bool leastFirst) {
    GroupRecord* record = FindGroup(state, group);
    if (record == nullptr) return {};
    EditResult result = Store(record->BitOrder, leastFirst);
    result.DecodeSpi = result.Changed;
    return result;
}

EditResult SetGroupColor(InstrumentState& state, int group, Rgb color) {
    GroupRecord* record = FindGroup(state, group);
    return record == nullptr ? EditResult{} : Store(record->Color, color & 0xFFFFFFU);
}

EditResult LeaveGroupSetup(const InstrumentState& state) {
    const std::int8_t mode = state.Serial.SerialMode;
    return {.DecodeSerial = mode == kI2c || mode == kMicrowire};
}

int GroupToEdit(int number) {
    return number >= 0 && number < kGroupCount ? number : 0;
}

std::string ChannelRowText(const InstrumentState& state, int channel) {
    if (channel < 0 || channel >= kMaxChannels) return {};
    return NumberedRow("", channel, state.Channels.ChannelName[At(channel)].View());
}

std::string GroupRowText(const InstrumentState& state, int group) {
    const GroupRecord* record = FindGroup(state, group);
    return record == nullptr ? std::string() : NumberedRow("", group + 1, record->Name.View());
}

std::string PositionRowText(const InstrumentState& state, int group, int position) {
    const GroupRecord* record = FindGroup(state, group);
    if (record == nullptr || position < 0 || position >= GroupSize(*record)) return {};
    const std::int32_t channel = record->Channels[At(position)];
    if (channel < 0 || channel >= kMaxChannels) return " ";
    return std::string(state.Channels.ChannelName[At(channel)].View()) + " ";
}

std::string GroupSizeText(const InstrumentState& state, int group) {
    const GroupRecord* record = FindGroup(state, group);
    return record == nullptr ? std::string() : std::to_string(GroupSize(*record)) + " ";
}

}  // namespace zu
