#include "display/StateListCells.h"

#include <array>

#include "display/TabbedText.h"
#include "display/TimeText.h"
#include "serial/EventMap.h"
#include "serial/EventText.h"

namespace zu {
namespace {

constexpr std::string_view kAbsent = "--------";
constexpr std::string_view kUntranslated = "----------";
constexpr std::array<int, 5> kColorOrder{4, 1, 0, 2, 3};

GroupFormat FormatOfColumn(const InstrumentState& state, int column) {
    const int format = state.StateList.ScreenF[static_cast<std::size_t>(column)];
    const bool known = format >= 0 && format < static_cast<int>(kStateFormats.size());
    // What no format has is as wide as a binary value and is shown as one.
    return known ? static_cast<GroupFormat>(format) : GroupFormat::Binary;
}

bool IsSerialColumn(const InstrumentState& state, int group) {
    return state.Serial.SerialMode != 0 && group == state.Serial.SerialGroup;
}

}  // namespace

std::string_view StateListHeader(const InstrumentState& state) {
    return TimeKnown(state) ? "Time    " : "Samples ";
}

std::string StateListPlace(const InstrumentState& state, std::int64_t sample) {
    return TimeKnown(state) ? TimeText(sample, RateOf(state), kTimeRateUnit) : std::to_string(sample);
}

int StateListCursor(const InstrumentState& state, std::int64_t sample) {
    for (const int cursor : kColorOrder) {
        if (state.Cursors.Cur[static_cast<std::size_t>(cursor)] == sample) return cursor;
    }
    return -1;
}

StateColumnTexts::StateColumnTexts(const InstrumentState& state, const StateColumn& column)
    : state_(state),
      group_(state.Groups[static_cast<std::size_t>(column.Group)]),
      reader_(state, group_),
      format_(FormatOfColumn(state, column.Column)),
      serial_(IsSerialColumn(state, column.Group)) {}

std::string StateColumnTexts::Next(std::int64_t sample) {
    if (serial_) return std::string(StateListEventText(EventAt(state_, sample)));
    if (skip_ > 0) {
        --skip_;
        return std::string(kAbsent);
    }
    return Value(sample);
}

std::string StateColumnTexts::Value(std::int64_t sample) {
    if (sample < 0 || sample >= reader_.Length()) return std::string(kAbsent);
    const GroupValue value = reader_.At(sample);
    if (format_ == GroupFormat::Translate) return Translated(GroupWord(group_, value));
    return GroupText(state_, group_, value, format_);
}

std::string StateColumnTexts::Translated(std::uint32_t word) {
    const TranslateEntry* entry = TranslateWord(state_.Translate, word);
    if (entry == nullptr) return std::string(kUntranslated);
    skip_ = entry->Skip;
    return std::string(entry->Stg.View());
}

std::string StateListText(const InstrumentState& state, const StateListLayout& layout, std::int64_t first,
                          std::int64_t end) {
    std::string text;
    std::vector<StateColumnTexts> columns;
    AppendCell(text, StateListHeader(state));
    for (const StateColumn& column : layout.Shown()) {
        text += '\t';
        AppendCell(text, state.Groups[static_cast<std::size_t>(column.Group)].Name.View());
        columns.emplace_back(state, column);
    }
    text += '\n';
    for (std::int64_t sample = first; sample < end; ++sample) {
        text += StateListPlace(state, sample);
        for (StateColumnTexts& column : columns) {
            text += '\t';
            AppendCell(text, column.Next(sample));
        }
        text += '\n';
    }
    return text;
}

}  // namespace zu
