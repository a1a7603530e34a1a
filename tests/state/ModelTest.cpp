// What a change of model rebuilds.
#include <gtest/gtest.h>
#include <memory>

#include "state/Model.h"

namespace zu {
namespace {

std::unique_ptr<InstrumentState> StateOfRow(int row) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, row);
    return state;
}

TEST(ChangeModel, Row13HasTheShapeOfTheLargeBoard) {
    const auto state = StateOfRow(13);
    EXPECT_EQ(state->Shape.TotalChannels, 40);
    EXPECT_EQ(state->Shape.PodCount, 5);
    EXPECT_EQ(state->Shape.BufCount, 5);
    EXPECT_EQ(state->Memory.BufferLen, 524288);
    EXPECT_EQ(GetBufLenFull(state->Buffer.BufLen, 4), 524288);
    EXPECT_EQ(GetBufLenFull(state->Buffer.BufLen, 5), 0) << "buffers that the model lacks hold nothing";
    state->Clock.ClockRate = 1;
    EXPECT_EQ(DisplayChannelCount(*state), 24);
}

}  // namespace
}  // namespace zu
