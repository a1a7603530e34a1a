#pragma once

#include <memory>
#include <string>

#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu::test {

/// The state of a freshly started program of a series with the model of a row, as far as files hold it.
inline std::unique_ptr<InstrumentState> StartState(int row, int series = 2) {
    auto state = std::make_unique<InstrumentState>();
    state->Identity.ModelSeries = static_cast<std::uint8_t>(series);
    state->Identity.Version = Series(series).VersionText;
    ChangeModel(*state, row);
    ResetChannelColors(*state);
    ResetChannelNames(*state);
    ResetTrigWords(*state);
    for (std::size_t i = 0; i < kTrigWords; ++i) {
        state->Trigger.TrigWordName[i] = std::to_string(i) + "Event";
        state->Trigger.CountList[i] = state->Trigger.EdgeList16[i] = state->Trigger.TrigMatchMode[i] = 1;
        state->Clock.ClockExt[i] = "XXXXXXXXX";
    }
    state->Trigger.SeqList[0] = 1;
    for (std::size_t i = 0; i < kGroupCount; ++i) {
        state->StateList.ScreenL[i] = static_cast<std::int8_t>(i);
        state->StateList.ScreenF[i] = 1;
    }
    state->Search.SearchWord = std::string(64, 'X');
    for (std::size_t i = 0; i < kMaxBoards; ++i) {
        state->Search.SearchWd[i] = state->Trigger.TrigWord.Board[i][0];
    }
    return state;
}

}  // namespace zu::test
