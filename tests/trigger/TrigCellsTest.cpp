// Where a channel's cell stands in the text of the trigger words.
#include <gtest/gtest.h>
#include <set>

#include "TriggerState.h"
#include "state/Catalogue.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::EntryText;
using test::SetEntry;
using test::TriggerState;

constexpr const char* kOpen40 = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX";
constexpr const char* kOpen32 = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX";

TEST(CellOfChannel, FortyChannelsReadFromTheHighestChannelOn) {
    const auto state = TriggerState(6);
    EXPECT_EQ(CellOfChannel(*state, 0)->Position, 43);
    EXPECT_EQ(CellOfChannel(*state, 7)->Position, 36);
    EXPECT_EQ(CellOfChannel(*state, 8)->Position, 34);
    EXPECT_EQ(CellOfChannel(*state, 39)->Position, 0);
    EXPECT_EQ(CellOfChannel(*state, 39)->Board, 0);
}

TEST(CellOfChannel, LaterBoardsRepeatThePositionsOfTheFirst) {
    const auto state = TriggerState(10);
    for (int channel = 0; channel < 160; ++channel) {
        const auto cell = CellOfChannel(*state, channel);
        ASSERT_TRUE(cell) << channel;
        EXPECT_EQ(cell->Board, channel / 40);
        EXPECT_EQ(cell->Position, CellOfChannel(*state, channel % 40)->Position);
    }
}

TEST(CellOfChannel, ThirtyTwoChannelsHoldTheFormulaWithFourLanes) {
    const auto state = TriggerState(18);
    EXPECT_EQ(EntryText(*state, 0, 0).size(), 35U);
    EXPECT_EQ(CellOfChannel(*state, 0)->Position, 34);
    EXPECT_EQ(CellOfChannel(*state, 31)->Position, 0);
}

TEST(CellOfChannel, TwentyFourChannelsLeaveTheFourthGroupUnused) {
    const auto state = TriggerState(16);
    EXPECT_EQ(CellOfChannel(*state, 0)->Position, 25);
    EXPECT_EQ(CellOfChannel(*state, 23)->Position, 0);
}

TEST(CellOfChannel, EveryChannelOfEveryModelHasACellOfItsOwnOrNone) {
    for (int row = 0; row < kModelRows; ++row) {
        if (!HasShape(row)) continue;
        const auto state = TriggerState(row);
        std::set<std::pair<int, int>> seen;
        for (int channel = 0; channel < state->Shape.TotalChannels; ++channel) {
            const auto cell = CellOfChannel(*state, channel);
            if (!cell) {
                EXPECT_EQ(row, 24) << "only 64 channels do not fit";
                continue;
            }
            EXPECT_FALSE(IsSeparator(cell->Position));
            EXPECT_TRUE(seen.emplace(cell->Board, cell->Position).second) << row << " " << channel;
        }
    }
}

/// Position of a board's channels, the lowest first, found by writing the text from the left: the highest
/// channel first, a blank behind each eight.
std::vector<int> PositionsFromTheLeft(int channels) {
    std::vector<int> positions(static_cast<std::size_t>(channels));
    int at = 0;
    for (int channel = channels - 1; channel >= 0; --channel) {
        positions[static_cast<std::size_t>(channel)] = at++;
        if (channel % 8 == 0) ++at;
    }
    return positions;
}

TEST(CellOfChannel, StandsWhereTheTextWrittenFromTheLeftHasIt) {
    for (int row = 0; row < kModelRows; ++row) {
        if (!HasShape(row)) continue;
        const auto state = TriggerState(row);
        const int channels = state->Shape.ChPerSlice;
        const std::vector<int> positions = PositionsFromTheLeft(channels);
        for (int channel = 0; channel < state->Shape.TotalChannels; ++channel) {
            const int position = positions[static_cast<std::size_t>(channel % channels)];
            const auto cell = CellOfChannel(*state, channel);
            ASSERT_EQ(cell.has_value(), position <= 44) << row << " " << channel;
            if (!cell) continue;
            EXPECT_EQ(cell->Board, channel / channels) << row << " " << channel;
            EXPECT_EQ(cell->Position, position) << row << " " << channel;
        }
    }
}

TEST(CellOfChannel, SixtyFourChannelsKeepTheCellsThatFit) {
    const auto state = TriggerState(24);
    // Lane 3 begins at position 36; lanes 0 to 2 would stand behind the entry.
    EXPECT_FALSE(CellOfChannel(*state, 0));
    EXPECT_FALSE(CellOfChannel(*state, 23));
    EXPECT_EQ(CellOfChannel(*state, 24)->Position, 43);
    EXPECT_EQ(CellOfChannel(*state, 63)->Position, 0);
    SetCharOfChannel(*state, 0, 0, '1');
    EXPECT_EQ(CharOfChannel(*state, 0, 0), 'X');
    EXPECT_EQ(EntryText(*state, 0, 0), kOpen32) << "a write without a cell is dropped";
    SetCharOfChannel(*state, 63, 0, '1');
    EXPECT_EQ(CharOfChannel(*state, 63, 0), '1');
}

TEST(CellOfChannel, NoCellOutsideTheModel) {
    const auto state = TriggerState(6);
    EXPECT_FALSE(CellOfChannel(*state, -1));
    EXPECT_FALSE(CellOfChannel(*state, 40));
    EXPECT_FALSE(CellOfChannel(*state, INT32_MAX));
    const auto blank = std::make_unique<InstrumentState>();
    EXPECT_FALSE(CellOfChannel(*blank, 0)) << "no model was applied";
}

TEST(CharOfChannel, ReadsTheCellByPosition) {
    const auto state = TriggerState(10);
    SetEntry(*state, 1, 0, "XXXXXXXX XXXXXXXX XXXXXXXX XXXX1X0X XXXXXXXX");
    EXPECT_EQ(CharOfChannel(*state, 51, 0), '1');
    EXPECT_EQ(CharOfChannel(*state, 49, 0), '0');
    EXPECT_EQ(CharOfChannel(*state, 50, 0), 'X');
}

TEST(CharOfChannel, AnythingElseCountsAsDontCare) {
    const auto state = TriggerState(6);
    SetEntry(*state, 0, 3, "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX x?1");
    EXPECT_EQ(CharOfChannel(*state, 7, 3), 'X');
    EXPECT_EQ(CharOfChannel(*state, 6, 3), 'X');
    EXPECT_EQ(CharOfChannel(*state, 5, 3), '1');
    EXPECT_EQ(CharOfChannel(*state, 4, 3), 'X') << "behind the text's end";
    EXPECT_EQ(CharOfChannel(*state, 5, 16), 'X');
    EXPECT_EQ(CharOfChannel(*state, 5, -1), 'X');
}

TEST(SetCharOfChannel, StoresUpperCaseAndNothingElse) {
    const auto state = TriggerState(6);
    SetCharOfChannel(*state, 0, 15, '0');
    EXPECT_EQ(CharOfChannel(*state, 0, 15), '0');
    SetCharOfChannel(*state, 0, 15, '2');
    SetCharOfChannel(*state, 0, 15, ' ');
    EXPECT_EQ(CharOfChannel(*state, 0, 15), '0');
    SetCharOfChannel(*state, 0, 15, 'x');
    EXPECT_EQ(EntryText(*state, 0, 15), kOpen40);
    SetCharOfChannel(*state, 0, 16, '1');
    SetCharOfChannel(*state, 160, 0, '1');
}

TEST(SetAllWord, FillsTheBoardsThatTheModelHas) {
    const auto state = TriggerState(7);
    SetAllWord(*state, '1', 4);
    EXPECT_EQ(EntryText(*state, 0, 4), "11111111 11111111 11111111 11111111 11111111");
    EXPECT_EQ(EntryText(*state, 1, 4), EntryText(*state, 0, 4));
    EXPECT_EQ(EntryText(*state, 2, 4), kOpen40) << "the model has two boards";
    SetAllWord(*state, '0', 4);
    EXPECT_EQ(EntryText(*state, 1, 4), "00000000 00000000 00000000 00000000 00000000");
    SetAllWord(*state, 'q', 4);
    EXPECT_EQ(EntryText(*state, 0, 4), kOpen40);
    EXPECT_EQ(EntryText(*state, 0, 5), kOpen40) << "other words stay";
}

TEST(SetAllWord, FourBoards) {
    const auto state = TriggerState(10);
    SetAllWord(*state, '0', 0);
    for (int board = 0; board < 4; ++board) EXPECT_EQ(EntryText(*state, board, 0)[43], '0') << board;
}

TEST(SetAllWord, OnesLeaveTheFourthGroupOfTheSmallBoards) {
    for (int row = 0; row < kModelRows; ++row) {
        if (!HasShape(row)) continue;
        const auto state = TriggerState(row);
        if (state->Shape.ChPerSlice == 40) continue;
        SetAllWord(*state, '0', 0);
        EXPECT_EQ(EntryText(*state, 0, 0), "00000000 00000000 00000000 00000000") << row;
        SetAllWord(*state, '1', 0);
        EXPECT_EQ(EntryText(*state, 0, 0), "11111111 11111111 11111111") << row;
        const auto& entry = state->Trigger.TrigWord.Board[0][0];
        EXPECT_EQ(std::string(entry.data() + 27, 8), "00000000") << row << ": what stands behind stays";
        SetAllWord(*state, 'X', 0);
        EXPECT_EQ(EntryText(*state, 0, 0), kOpen32) << row;
    }
}

TEST(SetAllWord, ACellBehindTheShortFillIsStillReadByPosition) {
    const auto state = TriggerState(18);
    SetAllWord(*state, '0', 0);
    SetAllWord(*state, '1', 0);
    EXPECT_EQ(CharOfChannel(*state, 31, 0), '1');
    EXPECT_EQ(CharOfChannel(*state, 8, 0), '1');
    EXPECT_EQ(CharOfChannel(*state, 7, 0), '0');
}

TEST(SetAllWord, IsAManualChange) {
    const auto state = TriggerState(6);
    state->Trigger.TrigLevelsMatchWizard = 1;
    SetAllWord(*state, '1', 99);
    EXPECT_EQ(state->Trigger.TrigLevelsMatchWizard, 1) << "nothing was changed";
    SetAllWord(*state, '1', 0);
    EXPECT_EQ(state->Trigger.TrigLevelsMatchWizard, 0);
}

}  // namespace
}  // namespace zu
