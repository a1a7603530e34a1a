#include "trigger/Sequence.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utility>

#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr std::int32_t kDelayLevel = 1;
constexpr int kNoWord = -1;
constexpr int kShownCells = 36;
constexpr std::size_t kNameColumn = 10;
constexpr int kLevelListChannels = 32;
constexpr std::uint8_t kSeriesPerch = 5;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}
bool IsLevel(int k) {
    return k >= 0 && k < kTrigWords;
}

template <typename... Args>
std::string Format(const char* format, Args... args) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, args...);
    return text.data();
}

/// The word's text on the first board; separators and bytes behind the text's end show as "_".
std::string ShownCells(const TriggerRecord& trigger, int word) {
    std::string text(kShownCells, '_');
    const auto& entry = trigger.TrigWord.Board[0][At(word)];
    for (int i = 0; i < kShownCells; ++i) {
        const char c = entry[At(i)];
        if (!IsSeparator(i) && c != '\0') text[At(i)] = NormalCell(c);
    }
    return text;
}

std::string DescribeDelay(const TriggerRecord& trigger, int k) {
    std::string line = Format(trigger.LevelEnable[At(k)] != 0 ? "%3.3d:" : "Disabled - %3.3d:", k);
    line += " Delay=";
    line += DelayRateText(trigger.TrigDelayRateList[At(k)]);
    return line + Format(" (count=%d)", trigger.CountList[At(k)]);
}

std::string DescribeWord(const InstrumentState& state, int k) {
    const TriggerRecord& trigger = state.Trigger;
    const auto word = WordOfLevel(state, k);
    std::string line = Format(trigger.LevelEnable[At(k)] != 0 ? "%3.3d: If" : "Disabled - %3.3d: If", k);
    line += trigger.TrigMatchMode[At(k)] != 0 ? "(all bits) " : "(any bit) ";
    line += Format("(count = %d)", trigger.CountList[At(k)]);
    line += trigger.EdgeList16[At(k)] != 0 ? "(False) " : "(True)  ";
    std::string name(trigger.TrigWordName[At(word.value_or(0))].View());
    name.resize(std::max(name.size(), kNameColumn), ' ');
    line += name;
    if (word) line.append("[").append(ShownCells(trigger, *word)).append("]");
    if (trigger.ElseList[At(k)] == 1) line += " else go to 0";
    return line;
}

/// Leading decimal number of a text, saturated; 0 without digits.
std::int64_t LeadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.starts_with('+')) text.remove_prefix(1);
    std::int64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range) return value;
    return text.starts_with('-') ? INT64_MIN : INT64_MAX;
}

void ExchangeLevels(TriggerRecord& trigger, int a, int b) {
    const auto exchange = [a, b](auto& list) { std::swap(list[At(a)], list[At(b)]); };
    exchange(trigger.SeqList);
    exchange(trigger.ModeList);
    exchange(trigger.CountList);
    exchange(trigger.TrigDelayRateList);
    exchange(trigger.ElseList);
    exchange(trigger.EdgeList16);
    exchange(trigger.TrigMatchMode);
    exchange(trigger.LevelEnable);
    exchange(trigger.TrigComment);
}

/// The selected levels that are in use, in rising order and once each.
LevelSelection UsableSelection(const InstrumentState& state, LevelSelection selected) {
    const int levels = LevelsInUse(state);
    std::erase_if(selected, [levels](int k) { return k < 0 || k >= levels; });
    std::sort(selected.begin(), selected.end());
    selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
    return selected;
}

/// Common part of the two moves: `step` is -1 up or 1 down, `edge` the level that cannot move further.
bool MoveLevels(InstrumentState& state, Host& host, LevelSelection& selected, int step,
                std::string_view atEdge) {
    constexpr std::string_view kCaption = "Error:";
    selected = UsableSelection(state, std::move(selected));
    if (selected.empty()) {
        host.Message("Select line in display list to move.", kCaption);
        return false;
    }
    const bool refused = step < 0 ? selected.front() == 0 : selected.back() == LevelsInUse(state) - 1;
    if (refused) {
        host.Message(atEdge, kCaption);
        return false;
    }
    // Walking against the step keeps the selected levels in their order.
    if (step > 0) std::reverse(selected.begin(), selected.end());
    for (int& k : selected) {
        ExchangeLevels(state.Trigger, k, k + step);
        k += step;
    }
    std::sort(selected.begin(), selected.end());
    return true;
}

}  // namespace

std::string_view DelayRateText(std::int32_t rate) {
    return rate >= 0 && rate < static_cast<std::int32_t>(kDelayRates.size()) ? kDelayRates[At(rate)]
                                                                             : std::string_view{};
}

std::optional<int> WordOfLevel(const InstrumentState& state, int k) {
    if (!IsLevel(k)) return std::nullopt;
    const std::int32_t slot = state.Trigger.SeqList[At(k)];
    return slot >= 1 && slot <= kTrigWords ? std::optional(slot - 1) : std::nullopt;
}

std::optional<int> LastLevel(const InstrumentState& state) {
    for (int k = kTrigWords - 1; k >= 0; --k) {
        if (WordOfLevel(state, k)) return k;
    }
    return std::nullopt;
}

bool UsesLevelList(const InstrumentState& state) {
    return state.Shape.TotalChannels == kLevelListChannels && state.Identity.ModelSeries != kSeriesPerch;
}

std::vector<std::string> SequenceChoices(const InstrumentState& state) {
    std::vector<std::string> choices{"-"};
    for (const auto& name : state.Trigger.TrigWordName) choices.emplace_back(name.View());
    return choices;
}

void SetLevel(InstrumentState& state, int k, int word, int edge, int elseBranch) {
    if (!IsLevel(k) || word < kNoWord || word >= kTrigWords) return;
    state.Trigger.SeqList[At(k)] = word + 1;
    state.Trigger.EdgeList16[At(k)] = static_cast<std::uint8_t>(edge);
    state.Trigger.ElseList[At(k)] = elseBranch;
}

int LevelsInUse(const InstrumentState& state) {
    return std::clamp(state.Trigger.LevelCount, 0, kTrigWords);
}

std::string DescribeLevel(const InstrumentState& state, int k) {
    if (!IsLevel(k)) return {};
    return state.Trigger.ModeList[At(k)] == kDelayLevel ? DescribeDelay(state.Trigger, k)
                                                        : DescribeWord(state, k);
}

std::vector<LevelLine> LevelList(const InstrumentState& state) {
    std::vector<LevelLine> lines;
    for (int k = 0; k < LevelsInUse(state); ++k) {
        const auto& comment = state.Trigger.TrigComment[At(k)];
        if (!comment.Empty()) lines.push_back({k, true, std::string(comment.View())});
        lines.push_back({k, false, DescribeLevel(state, k)});
    }
    return lines;
}

LevelChoices ChoicesOfLevelMode(const InstrumentState& state, std::int32_t mode) {
    LevelChoices choices;
    if (mode == kDelayLevel) {
        choices.Rate.assign(kDelayRates.begin(), kDelayRates.end());
        return choices;
    }
    choices.ModeLabel = "Mode";
    choices.LogicLabel = "Logic";
    choices.Match = {"OR", "AND"};
    choices.Edge = {"True (Rising)", "False (Falling)"};
    choices.Word = SequenceChoices(state);
    choices.Else = {"then next level", "else go to level 0"};
    return choices;
}

void EnterLevelCount(InstrumentState& state, Host& host, int k, std::string_view text) {
    if (!IsLevel(k)) return;
    const std::int64_t count = LeadingNumber(text);
    state.Trigger.CountList[At(k)] =
        static_cast<std::int32_t>(std::clamp<std::int64_t>(count, 1, kMaxLevelCount));
    if (count > kMaxLevelCount) host.Message("Max value for count is 1048576", "Note:");
}

bool MoveLevelsUp(InstrumentState& state, Host& host, LevelSelection& selected) {
    return MoveLevels(state, host, selected, -1, "Selected lines are at top of list");
}

bool MoveLevelsDown(InstrumentState& state, Host& host, LevelSelection& selected) {
    return MoveLevels(state, host, selected, 1, "Selected lines are at bottom of list");
}

bool ToggleLevels(InstrumentState& state, Host& host, const LevelSelection& selected) {
    const LevelSelection levels = UsableSelection(state, selected);
    if (levels.empty()) {
        host.Message("Select level from 'Trigger sequence list.'", "Error");
        return false;
    }
    for (const int k : levels) {
        std::uint8_t& enabled = state.Trigger.LevelEnable[At(k)];
        enabled = enabled == 0 ? 1 : 0;
    }
    return true;
}

}  // namespace zu
