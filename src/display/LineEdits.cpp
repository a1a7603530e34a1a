#include "display/LineEdits.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "display/Columns.h"
#include "display/EditTools.h"

namespace zu {
namespace {

constexpr std::string_view kWarning = "Warning:";

constexpr EditMessage kNothingToAppend{"Select channel from channels list.", kErrorBefore};
constexpr EditMessage kAppendStopped{"Select channel(channels list)", kErrorDuring};
constexpr EditMessage kNoChannel{"Select channel from 'channels list'", kErrorBefore};
constexpr EditMessage kNoChannelPosition{"Select channel(channels list) and position(timing display list)",
                                         kErrorDuring};
constexpr EditMessage kNoGroup{"Select group from 'groups list'", kErrorBefore};
constexpr EditMessage kNoGroupPosition{"Select group(group list) and position(Timing display list)",
                                       kErrorDuring};
constexpr EditMessage kSpacersBefore{"Maximum number of spacers inserted.", kErrorBefore};
constexpr EditMessage kSpacersDuring{"Maximum number of spacers inserted", kErrorDuring};
constexpr EditMessage kNothingToDelete{"Select line in display list to delete.", kErrorBefore};
constexpr EditMessage kDeleteStopped{"Select line from 'Timing list'", kErrorDuring};
constexpr EditMessage kNotGroups{
    "Some lines could not be set to selected style because they were not groups.", kWarning};
constexpr EditMessage kNotChannels{
    "Some lines could not be set to selected style because they were not single channels.", kWarning};
constexpr EditMessage kNotExpanded{"Some lines could not be expanded because they were not groups.",
                                   kWarning};
constexpr EditMessage kNothingToExpand{"Please select a group from the display list.", kErrorBefore};
constexpr EditMessage kNoGroupToEdit{"Select Group to edit.", kErrorBefore};
constexpr EditMessage kNoChannelToEdit{"Select Channel to edit.", kErrorBefore};

constexpr std::int32_t kLastStyledSource = 189;    // up to here a source may count as a group for its style,
constexpr std::int32_t kLastExpandedSource = 229;  // up to here for being expanded

std::size_t At(std::int32_t index) {
    return static_cast<std::size_t>(index);
}

/// What a new line shows and how.
struct NewLine {
    std::int32_t Source = 0;
    int Style = kNormalStyle;
    int Mode = 0;
};

int ChannelCount(const InstrumentState& state) {
    return std::clamp(state.Shape.TotalChannels, 0, kMaxChannels);
}

void StoreLine(TimingRecord& timing, std::int32_t at, const NewLine& line) {
    timing.LineSource[At(at)] = line.Source;
    timing.LineStyle[At(at)] = static_cast<std::uint8_t>(line.Style);
    timing.LineMode[At(at)] = static_cast<std::int8_t>(line.Mode);
}

template <typename Visit>
void ForEachList(TimingRecord& timing, Visit visit) {
    visit(timing.LineSource);
    visit(timing.LineStyle);
    visit(timing.LineMode);
}

/// Puts a line in front of line `at`; in a full list the last line is lost.
void InsertLine(InstrumentState& state, std::int32_t at, const NewLine& line) {
    const std::int32_t count = LineCount(state);
    const std::int32_t kept = std::min(count, kMaxLines - 1);
    ForEachList(state.Timing, [at, kept](auto& list) {
        std::move_backward(list.begin() + at, list.begin() + kept, list.begin() + kept + 1);
    });
    StoreLine(state.Timing, at, line);
    state.Timing.TimingLines = kept + 1;
}

/// Takes a line out; the slot that becomes free is cleared, since the count of spacers looks at it.
void RemoveLine(InstrumentState& state, std::int32_t at) {
    const std::int32_t count = LineCount(state);
    ForEachList(state.Timing, [at, count](auto& list) {
        std::move(list.begin() + at + 1, list.begin() + count, list.begin() + at);
        list[At(count - 1)] = 0;
    });
    state.Timing.TimingLines = count - 1;
}

void SwapLines(TimingRecord& timing, std::int32_t a, std::int32_t b) {
    ForEachList(timing, [a, b](auto& list) { std::swap(list[At(a)], list[At(b)]); });
}

/// A line like another one; texts of groups do not carry over.
NewLine LineLike(const TimingRecord& timing, std::int32_t model) {
    NewLine line;
    line.Style = std::max<int>(timing.LineStyle[At(model)], kFirstTimingStyle);
    line.Mode = timing.LineMode[At(model)];
    return line;
}

/// Group of a line source that counts as one up to `last`; -1 if it does not or if there is no such group.
int GroupUpTo(const InstrumentState& state, std::int32_t source, std::int32_t last) {
    if (source < state.Shape.TotalChannels || source > last) return -1;
    const std::int32_t group = source - kFirstGroupLine;
    return group >= 0 && group < kGroupCount ? group : -1;
}

bool IsStyledGroup(const InstrumentState& state, std::int32_t line) {
    return GroupUpTo(state, state.Timing.LineSource[At(line)], kLastStyledSource) >= 0;
}

bool IsChannelLine(const InstrumentState& state, std::int32_t line) {
    return KindOfSource(state.Timing.LineSource[At(line)]) == LineKind::Channel;
}

/// Selects the rows of lines that were put in front of these lines, given from the bottom up.
void SelectInserted(Selection& lines, std::vector<int> fromBelow) {
    lines.fill(false);
    std::reverse(fromBelow.begin(), fromBelow.end());
    for (std::size_t k = 0; k < fromBelow.size(); ++k) Select(lines, fromBelow[k] + static_cast<int>(k));
}

/// Place at which channels and groups go in: the first selected line; the start of an empty list.
std::optional<std::int32_t> InsertPosition(const InstrumentState& state, const Selection& lines) {
    const std::int32_t count = LineCount(state);
    if (count == 0) return 0;
    const std::vector<int> selected = SelectedRows(lines, count);
    if (selected.empty()) return std::nullopt;
    return selected.front();
}

/// Puts lines in at one place, from the last to the first, until one is refused.
EditResult InsertAll(InstrumentState& state, Selection& lines, std::int32_t at,
                     const std::vector<NewLine>& wanted, const EditMessage& refusal) {
    EditResult result;
    std::vector<int> inserted;
    for (auto line = wanted.rbegin(); line != wanted.rend(); ++line) {
        if (LineCount(state) >= kMaxLines) {
            Tell(result, refusal);
            break;
        }
        InsertLine(state, at, *line);
        inserted.push_back(at);
        result.Changed = true;
    }
    if (result.Changed) SelectInserted(lines, inserted);
    return result;
}

/// Lines that a group of this size adds behind `line`; -1 if there is no such line or group.
int InsertChannelsOf(InstrumentState& state, std::int32_t line, int group, NewLine pattern) {
    if (line < 0 || line >= LineCount(state) || group < 0 || group >= kGroupCount) return -1;
    const GroupRecord& record = state.Groups[At(group)];
    int added = 0;
    for (std::int32_t i = 0; i < GroupSize(record); ++i) {
        pattern.Source = record.Channels[At(i)];
        const bool exists = pattern.Source >= 0 && pattern.Source < ChannelCount(state);
        if (!exists || line + 1 + added >= kMaxLines) continue;
        InsertLine(state, line + 1 + added, pattern);
        ++added;
    }
    return added;
}

/// Style and mode for the channels of an expanded group.
NewLine ChannelPattern(int style, int mode) {
    const bool groupOnly =
        mode == static_cast<int>(LineExtra::Overlay) || mode == static_cast<int>(LineExtra::Difference);
    return {.Style = std::max(style, kFirstTimingStyle), .Mode = groupOnly ? 0 : mode};
}

NewLine NewSpacer(const InstrumentState& state) {
    return {.Source = kFirstSpacerLine + CountSpacers(state)};
}

/// A list with nothing selected takes its spacer at the end.
std::vector<int> SpacerPositions(const InstrumentState& state, const Selection& lines) {
    std::vector<int> positions = SelectedRows(lines, LineCount(state));
    if (positions.empty()) positions.push_back(LineCount(state));
    return positions;
}

void StoreStyle(InstrumentState& state, std::int32_t line, int style) {
    state.Timing.LineStyle[At(line)] = static_cast<std::uint8_t>(style);
    if (style < kFirstTimingStyle) state.Timing.LineMode[At(line)] = 0;
}

void FlipMode(InstrumentState& state, std::int32_t line, LineExtra extra) {
    std::int8_t& mode = state.Timing.LineMode[At(line)];
    const auto wanted = static_cast<std::int8_t>(extra);
    mode = mode == wanted ? std::int8_t{0} : wanted;
}

Selection Only(std::int32_t row) {
    Selection selection{};
    Select(selection, row);
    return selection;
}

/// Number of the first selected line that `number` accepts.
template <typename NumberOf>
LineTarget FirstTarget(const InstrumentState& state, const Selection& lines, const EditMessage& refusal,
                       NumberOf numberOf) {
    for (const int line : SelectedRows(lines, LineCount(state))) {
        const int number = numberOf(state.Timing.LineSource[At(line)]);
        if (number >= 0) return {number, {}};
    }
    return {std::nullopt, Refuse(refusal)};
}

}  // namespace

EditResult AppendChannelLines(InstrumentState& state, LineSelection& selection) {
    const std::vector<int> rows = SelectedRows(selection.Sources);
    if (rows.empty()) return Refuse(kNothingToAppend);
    const std::vector<int> lines = SelectedRows(selection.Lines, LineCount(state));
    NewLine line = lines.empty() ? NewLine{} : LineLike(state.Timing, lines.front());

    EditResult result;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const auto source = SourceOfRow(state, *row);
        if (LineCount(state) >= kAppendLimit || !source) {
            Tell(result, kAppendStopped);
            break;
        }
        line.Source = *source;
        if (!result.Changed) selection.Lines.fill(false);
        Select(selection.Lines, LineCount(state));
        InsertLine(state, LineCount(state), line);
        result.Changed = true;
    }
    return result;
}

EditResult InsertChannelLines(InstrumentState& state, LineSelection& selection) {
    const std::vector<int> rows = SelectedRows(selection.Sources, SourceRows(state));
    if (rows.empty()) return Refuse(kNoChannel);
    const auto at = InsertPosition(state, selection.Lines);
    if (!at) return Refuse(kNoChannelPosition);
    std::vector<NewLine> wanted;
    for (const int row : rows) {
        NewLine line = LineCount(state) == 0 ? NewLine{} : LineLike(state.Timing, *at);
        line.Source = *SourceOfRow(state, row);
        wanted.push_back(line);
    }
    return InsertAll(state, selection.Lines, *at, wanted, kNoChannelPosition);
}

EditResult InsertGroupLines(InstrumentState& state, LineSelection& selection) {
    const std::vector<int> groups = SelectedRows(selection.Groups, kGroupCount);
    if (groups.empty()) return Refuse(kNoGroup);
    const auto at = InsertPosition(state, selection.Lines);
    if (!at) return Refuse(kNoGroupPosition);
    std::vector<NewLine> wanted;
    wanted.reserve(groups.size());
    for (const int group : groups) wanted.push_back({.Source = kFirstGroupLine + group, .Style = 0});
    return InsertAll(state, selection.Lines, *at, wanted, kNoGroupPosition);
}

EditResult InsertSpacerLines(InstrumentState& state, LineSelection& selection) {
    if (CountSpacers(state) >= kMaxSpacers) return Refuse(kSpacersBefore);
    const std::vector<int> positions = SpacerPositions(state, selection.Lines);
    EditResult result;
    std::vector<int> inserted;
    for (auto at = positions.rbegin(); at != positions.rend(); ++at) {
        if (CountSpacers(state) >= kMaxSpacers) {
            Tell(result, kSpacersDuring);
            break;
        }
        if (LineCount(state) >= kSpacerInsertLimit) break;
        InsertLine(state, *at, NewSpacer(state));
        inserted.push_back(*at);
        result.Changed = true;
    }
    if (result.Changed) SelectInserted(selection.Lines, inserted);
    return result;
}

EditResult DeleteLines(InstrumentState& state, LineSelection& selection) {
    const std::vector<int> lines = SelectedRows(selection.Lines);
    if (lines.empty()) return Refuse(kNothingToDelete);
    EditResult result;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (*line >= LineCount(state)) {
            Tell(result, kDeleteStopped);
            break;
        }
        RemoveLine(state, *line);
        result.Changed = true;
    }
    if (result.Changed) KeepSelectionInside(selection.Lines, LineCount(state));
    return result;
}

EditResult MoveLinesUp(InstrumentState& state, LineSelection& selection) {
    return MoveSelectedUp(selection.Lines, LineCount(state),
                          [&state](int a, int b) { SwapLines(state.Timing, a, b); });
}

EditResult MoveLinesDown(InstrumentState& state, LineSelection& selection) {
    return MoveSelectedDown(selection.Lines, LineCount(state),
                            [&state](int a, int b) { SwapLines(state.Timing, a, b); });
}

EditResult SetLineStyle(InstrumentState& state, const LineSelection& selection, int style) {
    EditResult result;
    if (style < 0 || style >= static_cast<int>(kLineStyles.size())) return result;
    for (const int line : SelectedRows(selection.Lines, LineCount(state))) {
        if (style < kFirstTimingStyle && !IsStyledGroup(state, line)) {
            Tell(result, kNotGroups);
            continue;
        }
        StoreStyle(state, line, style);
        result.Changed = true;
    }
    return result;
}

EditResult ToggleLineMode(InstrumentState& state, const LineSelection& selection, LineExtra extra) {
    EditResult result;
    if (extra == LineExtra::Plain) return result;
    const bool forGroups = extra == LineExtra::Overlay || extra == LineExtra::Difference;
    for (const int line : SelectedRows(selection.Lines, LineCount(state))) {
        if (!(forGroups ? IsStyledGroup(state, line) : IsChannelLine(state, line))) {
            Tell(result, forGroups ? kNotGroups : kNotChannels);
            continue;
        }
        FlipMode(state, line, extra);
        result.Changed = true;
    }
    return result;
}

EditResult ExpandGroupLines(InstrumentState& state, LineSelection& selection) {
    const std::vector<int> lines = SelectedRows(selection.Lines, LineCount(state));
    if (lines.empty()) return Refuse(kNothingToExpand);
    EditResult result;
    std::vector<int> added;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        const TimingRecord& timing = state.Timing;
        const int group = GroupUpTo(state, timing.LineSource[At(*line)], kLastExpandedSource);
        const NewLine pattern = ChannelPattern(timing.LineStyle[At(*line)], timing.LineMode[At(*line)]);
        const int count = InsertChannelsOf(state, *line, group, pattern);
        if (count < 0) Tell(result, kNotExpanded);
        added.push_back(std::max(count, 0));
        result.Changed = result.Changed || count > 0;
    }
    selection.Lines.fill(false);
    int shift = 0;
    for (std::size_t k = 0; k < lines.size(); ++k) {
        if (lines[k] + shift < LineCount(state)) Select(selection.Lines, lines[k] + shift);
        shift += added[lines.size() - 1 - k];
    }
    return result;
}

bool ExpandGroup(InstrumentState& state, std::int32_t line, int group, int style, int mode) {
    return InsertChannelsOf(state, line, group, ChannelPattern(style, mode)) >= 0;
}

EditResult InsertGroupAt(InstrumentState& state, std::int32_t line, int group) {
    if (group < 0 || group >= kGroupCount || LineCount(state) >= kViewInsertLimit) return {};
    InsertLine(state, std::clamp(line, 0, LineCount(state)), {.Source = kFirstGroupLine + group, .Style = 0});
    return {.Changed = true};
}

EditResult InsertSpacerAt(InstrumentState& state, std::int32_t line) {
    if (CountSpacers(state) >= kMaxSpacers) return Refuse(kSpacersDuring);
    if (LineCount(state) >= kViewInsertLimit) return {};
    InsertLine(state, std::clamp(line, 0, LineCount(state)), NewSpacer(state));
    return {.Changed = true};
}

EditResult SetStyleOfLine(InstrumentState& state, std::int32_t line, int style) {
    return SetLineStyle(state, {.Lines = Only(line)}, style);
}

EditResult ToggleModeOfLine(InstrumentState& state, std::int32_t line, LineExtra extra) {
    return ToggleLineMode(state, {.Lines = Only(line)}, extra);
}

LineTarget GroupOfSelection(const InstrumentState& state, const Selection& lines) {
    return FirstTarget(state, lines, kNoGroupToEdit, GroupOfSource);
}

LineTarget ChannelOfSelection(const InstrumentState& state, const Selection& lines) {
    return FirstTarget(state, lines, kNoChannelToEdit, [](std::int32_t source) {
        return KindOfSource(source) == LineKind::Channel ? source : -1;
    });
}

int CountSpacers(const InstrumentState& state) {
    const auto first = state.Timing.LineSource.begin();
    return static_cast<int>(std::count_if(first, first + LineCount(state) + 1,
                                          [](std::int32_t source) { return source >= kFirstSpacerLine; }));
}

int SourceRows(const InstrumentState& state) {
    return ChannelCount(state) + kGroupCount;
}

std::optional<std::int32_t> SourceOfRow(const InstrumentState& state, int row) {
    if (row < 0 || row >= SourceRows(state)) return std::nullopt;
    const int channels = ChannelCount(state);
    return row < channels ? row : kFirstGroupLine + row - channels;
}

std::string SourceRowText(const InstrumentState& state, int row) {
    const auto source = SourceOfRow(state, row);
    if (!source) return {};
    const int group = GroupOfSource(*source);
    if (group >= 0) return NumberedRow("Group ", group + 1, state.Groups[At(group)].Name.View());
    return NumberedRow("", *source, state.Channels.ChannelName[At(*source)].View());
}

std::string LineRowText(const InstrumentState& state, std::int32_t line) {
    if (line < 0 || line >= LineCount(state)) return {};
    const std::int32_t source = state.Timing.LineSource[At(line)];
    switch (KindOfSource(source)) {
        case LineKind::Channel:
            return NumberedRow("", source, state.Channels.ChannelName[At(source)].View());
        case LineKind::Group:
            return "Group - " + std::string(state.Groups[At(source - kFirstGroupLine)].Name.View());
        default:
            return "Spacer Line";
    }
}

EditResult SetColumn(InstrumentState& state, int column, const TimingColumn& setup) {
    const bool exists = column >= 0 && column < kTimingColumns && setup.Type < kColumnTypes.size() &&
                        setup.Range < kRanges.size() && setup.TrigWord >= 0 && setup.TrigWord < kTrigWords;
    if (!exists) return {};
    state.Timing.TimingDisp[At(column)] = setup;
    return {.Changed = true};
}

}  // namespace zu
