#include "core/Defaults.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "core/RateRules.h"
#include "files/DataFile.h"
#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr std::string_view kSearchDefault =
    "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX";
constexpr std::string_view kQualifierDefault = "XXXXXXXXX";
static_assert(kSearchDefault.size() == 64 && kQualifierDefault.size() + 1 == kQualifierText);

constexpr int kSeriesDace = 1;
constexpr int kSeriesTench = 3;
constexpr int kSeriesPerch = 5;

constexpr std::uint8_t kColumnName = 2;
constexpr std::uint8_t kColumnTrigWord = 3;
constexpr std::uint8_t kColumnCursors = 4;

void NameTriggerWords(TriggerRecord& trigger) {
    for (std::size_t word = 0; word < trigger.TrigWordName.size(); ++word) {
        trigger.TrigWordName[word] = std::to_string(word) + "Event";
    }
}

void SetColumns(InstrumentState& state) {
    state.Timing.TimingDisp = {};
    state.Timing.TimingDisp[1].Type = kColumnName;
    state.Timing.TimingDisp[2].Type = kColumnTrigWord;
    state.Timing.TimingDisp[3].Type = kColumnCursors;
    for (std::size_t column = 0; column < kGroupCount; ++column) {
        state.StateList.ScreenL[column] = static_cast<std::int8_t>(column);
        state.StateList.ScreenF[column] = 1;
        state.StateList.ScreenWidth[column] = 8;
    }
}

int ViewerRow(const InstrumentState& state) {
    const CommandOptions& options = state.Command;
    if (options.ModelRow >= 0) return options.ModelRow;
    const std::optional<int> row = HardwareTypeOfFile(options.DocumentFile);
    return row && HasShape(*row) ? *row : SeriesDefaultRow(state);
}

void IdentifyModel(App& app) {
    InstrumentState& state = app.State;
    if (state.Identity.Emulated == 0) return;
    if (StartsAsViewer(state.Command)) {
        state.Identity.HardwareType = static_cast<std::uint8_t>(ViewerRow(state));
        return;
    }
    state.Identity.HardwareType = static_cast<std::uint8_t>(SeriesDefaultRow(state));
    app.Shell.RunModelDialog();
}

void SetTriggerDefaults(InstrumentState& state) {
    TriggerRecord& trigger = state.Trigger;
    trigger.SeqList.fill(0);
    trigger.SeqList[0] = 1;
    trigger.CountList.fill(1);
    trigger.ElseList.fill(0);
    trigger.ModeList.fill(0);
    trigger.TrigDelayRateList.fill(0);
    trigger.EdgeList16.fill(1);
    trigger.TrigMatchMode.fill(1);
    trigger.LevelEnable.fill(1);
    trigger.LevelCount = 1;
    trigger.TrigCnt = 1;
    trigger.TrigCntMd = 3;
    trigger.TrigOut = 0;
    ResetTrigWords(state);
}

void SetSearchDefaults(InstrumentState& state) {
    state.Search.SearchWord = kSearchDefault;
    for (std::size_t board = 0; board < state.Search.SearchWd.size(); ++board) {
        state.Search.SearchWd[board] = state.Trigger.TrigWord.Board[board][0];
    }
}

void SetClockDefaults(ClockRecord& clock) {
    for (auto& word : clock.ClockExt) word = kQualifierDefault;
    MarkAllRates(clock);
}

}  // namespace

bool StartsAsViewer(const CommandOptions& options) {
    if (options.CmdReturnZuStat != 0)
        return false;  // the question is for an instrument, whatever file is named
    return !options.DocumentFile.empty() || options.ModelRow >= 0;
}

void SetLevelDefaults(InstrumentState& state) {
    const int series = state.Identity.ModelSeries;
    std::uint16_t threshold = 100;
    if (series == kSeriesDace) threshold = 28;
    if (series == kSeriesTench) threshold = 14;
    state.Pods.ThrHd.fill(threshold);
    if (series == kSeriesDace || series == kSeriesTench) return;  // they drive no patterns
    state.Pods.PatGenV.fill(series == kSeriesPerch ? 0 : 39);
}

void InitDefaults(App& app) {
    InstrumentState& state = app.State;
    state.Pattern.PatDirty = 1;
    NameTriggerWords(state.Trigger);
    SetColumns(state);
    IdentifyModel(app);
    ApplyModel(state);
    SetLevelDefaults(state);
    ResetChannelColors(state);
    ResetGroups(state);
    ResetChannelNames(state);
    SetTriggerDefaults(state);
    SetSearchDefaults(state);
    SetClockDefaults(state.Clock);
    ComputeGroupWidths(state);
}

}  // namespace zu
