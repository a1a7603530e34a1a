// The words as the instrument gets them, and the test of a sequence.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <type_traits>

#include "TriggerState.h"
#include "state/Catalogue.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::SetEntry;
using test::TriggerState;

static_assert(!std::is_convertible_v<TrigWordTable, CompiledTrigWords>);
static_assert(sizeof(CompiledTrigWords) == 2944);

char Compiled(const CompiledTrigWords& words, const InstrumentState& state, int channel, int word) {
    const auto cell = CellOfChannel(state, channel);
    return words.Word[static_cast<std::size_t>(word)][static_cast<std::size_t>(cell->Board)]
                     [static_cast<std::size_t>(cell->Position)];
}

TEST(PrepareTriggerWords, TurnsBoardMajorIntoWordMajor) {
    const auto state = TriggerState(10);
    SetEntry(*state, 2, 5, "10X00000 11111111 XXXXXXXX 01010101 xxxxxxxx");
    const auto words = PrepareTriggerWords(*state);
    EXPECT_EQ(words.Word[5][2], state->Trigger.TrigWord.Board[2][5]) << "without inversion a plain copy";
    const auto* flat = reinterpret_cast<const char*>(&words);
    EXPECT_EQ(std::string(flat + (5 * 4 + 2) * 46), "10X00000 11111111 XXXXXXXX 01010101 xxxxxxxx");
}

TEST(PrepareTriggerWords, AnInvertedChannelIsComparedInItsPhysicalSense) {
    const auto state = TriggerState(10);
    for (const int channel : {0, 39, 40, 81, 159}) {
        state->Channels.ChannelInvert[static_cast<std::size_t>(channel)] = 1;
        SetCharOfChannel(*state, channel, 0, '1');
        SetCharOfChannel(*state, channel, 1, '0');
        SetCharOfChannel(*state, channel, 2, 'X');
    }
    SetCharOfChannel(*state, 1, 0, '1');
    const auto words = PrepareTriggerWords(*state);
    for (const int channel : {0, 39, 40, 81, 159}) {
        EXPECT_EQ(Compiled(words, *state, channel, 0), '0') << channel;
        EXPECT_EQ(Compiled(words, *state, channel, 1), '1') << channel;
        EXPECT_EQ(Compiled(words, *state, channel, 2), 'X') << channel;
    }
    EXPECT_EQ(Compiled(words, *state, 1, 0), '1') << "its neighbour is not inverted";
}

TEST(PrepareTriggerWords, ALowerCaseDontCareOfAnInvertedChannelBecomesUpperCase) {
    const auto state = TriggerState(6);
    SetEntry(*state, 0, 0, "xxXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
    state->Channels.ChannelInvert[39] = 1;
    const auto words = PrepareTriggerWords(*state);
    EXPECT_EQ(words.Word[0][0][0], 'X');
    EXPECT_EQ(words.Word[0][0][1], 'x');
}

TEST(PrepareTriggerWords, BlanksDoNotCountAsChannels) {
    const auto state = TriggerState(6);
    for (int channel = 0; channel < 40; ++channel) SetCharOfChannel(*state, channel, 0, '0');
    for (int lane = 0; lane < 5; ++lane) {
        state->Channels.ChannelInvert[8 * static_cast<std::size_t>(lane)] = 1;
    }
    const auto words = PrepareTriggerWords(*state);
    EXPECT_STREQ(words.Word[0][0].data(), "00000001 00000001 00000001 00000001 00000001");
}

TEST(PrepareTriggerWords, CellsBeyondTheChannelsAreNotInverted) {
    const auto state = TriggerState(16);
    SetAllWord(*state, '0', 0);
    state->Channels.ChannelInvert.fill(1);
    const auto words = PrepareTriggerWords(*state);
    EXPECT_STREQ(words.Word[0][0].data(), "11111111 11111111 11111111 00000000")
        << "24 channels, 32 cells: the last eight count below channel 0";
    const auto wide = TriggerState(24);
    wide->Channels.ChannelInvert.fill(1);
    wide->Trigger.TrigWord = state->Trigger.TrigWord;
    EXPECT_STREQ(PrepareTriggerWords(*wide).Word[0][0].data(), "11111111 11111111 11111111 11111111");
    EXPECT_STREQ(PrepareTriggerWords(*wide).Word[0][3].data(), "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX")
        << "counts down from channel 255";
}

TEST(PrepareTriggerWords, EveryCellOfEveryModelAndNothingElseIsTurned) {
    std::mt19937 random(31);
    for (int row = 0; row < kModelRows; ++row) {
        if (!HasShape(row)) continue;
        const auto state = TriggerState(row);
        for (auto& inverted : state->Channels.ChannelInvert) inverted = random() % 2 == 0 ? 1 : 0;
        auto expected = state->Trigger.TrigWord.Board;
        for (int channel = 0; channel < state->Shape.TotalChannels; ++channel) {
            const char value = "01X"[random() % 3];
            SetCharOfChannel(*state, channel, 3, value);
            const auto cell = CellOfChannel(*state, channel);
            if (!cell) continue;
            const bool turned = state->Channels.ChannelInvert[static_cast<std::size_t>(channel)] != 0;
            const char other = value == '0' ? '1' : '0';
            expected[static_cast<std::size_t>(cell->Board)][3][static_cast<std::size_t>(cell->Position)] =
                turned && value != 'X' ? other : value;
        }
        const auto words = PrepareTriggerWords(*state);
        for (std::size_t board = 0; board < kMaxBoards; ++board) {
            for (std::size_t word = 0; word < kTrigWords; ++word) {
                EXPECT_EQ(words.Word[word][board], expected[board][word]) << row;
            }
        }
    }
}

class Consistency : public testing::Test {
  protected:
    Consistency() : state(TriggerState(6)) { state->Trigger.SeqList.fill(0); }
    [[nodiscard]] bool Consistent() const { return TrigWordsConsistent(*state, PrepareTriggerWords(*state)); }
    void Sequence(std::initializer_list<int> slots) {
        std::copy(slots.begin(), slots.end(), state->Trigger.SeqList.begin());
    }
    std::unique_ptr<InstrumentState> state;
};

TEST_F(Consistency, AllDontCarePasses) {
    Sequence({1, 2, 3});
    EXPECT_TRUE(Consistent());
}

TEST_F(Consistency, NoDontCarePasses) {
    SetCharOfChannel(*state, 0, 0, '1');
    SetCharOfChannel(*state, 39, 1, '0');
    Sequence({1, 2, 1});
    EXPECT_TRUE(Consistent());
}

TEST_F(Consistency, AMixedSequenceFailsBothWays) {
    SetCharOfChannel(*state, 0, 1, '1');
    Sequence({1, 2});
    EXPECT_FALSE(Consistent()) << "first don't-care, second not";
    Sequence({2, 1});
    EXPECT_FALSE(Consistent()) << "and the reverse";
    Sequence({2, 0, 0, 1});
    EXPECT_FALSE(Consistent()) << "holes are skipped";
}

TEST_F(Consistency, AnEmptySequencePasses) {
    SetCharOfChannel(*state, 0, 1, '1');
    EXPECT_TRUE(Consistent());
}

TEST_F(Consistency, SlotsThatNoWordHasCountAsEmpty) {
    SetCharOfChannel(*state, 0, 1, '1');
    Sequence({2, 17, -1, 999});
    EXPECT_TRUE(Consistent());
    state->Trigger.SeqList[16] = 1;
    EXPECT_TRUE(Consistent()) << "the lists' slots behind the sixteenth are no levels";
}

TEST_F(Consistency, EveryBoardIsLookedAt) {
    SetEntry(*state, 3, 0, "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXX1");
    Sequence({1, 2});
    EXPECT_FALSE(Consistent());
}

/// The rule told step by step over the sixteen levels.
bool ConsistentStepByStep(const InstrumentState& state, const CompiledTrigWords& words) {
    std::array<int, 16> open{};
    open.fill(0xFF);
    for (std::size_t k = 0; k < 16; ++k) {
        const int slot = state.Trigger.SeqList[k];
        if (slot < 1 || slot > 16) continue;
        open[k] = 1;
        for (std::size_t board = 0; board < 4; ++board) {
            for (int i = 0; i < std::min(state.Shape.PodCount * 9, 45); ++i) {
                if (i == 8 || i == 17 || i == 26 || i == 35 || i == 44) continue;
                const auto& entry = words.Word[static_cast<std::size_t>(slot - 1)][board];
                const char c = entry[static_cast<std::size_t>(i)];
                if (c == '0' || c == '1') open[k] = 0;
            }
        }
    }
    const auto first = std::find_if(open.begin(), open.end(), [](int flag) { return flag != 0xFF; });
    if (first == open.end()) return true;
    return std::find(first, open.end(), 1 - *first) == open.end();
}

/// Words with seldom a cell, at any place of an entry, so that each is open about as often as not; slots with
/// holes and with numbers that no word has.
void MakeSequence(InstrumentState& state, std::mt19937& random) {
    ResetTrigWords(state);
    for (auto& board : state.Trigger.TrigWord.Board) {
        for (auto& entry : board) {
            if (random() % 6 == 0) entry[random() % entry.size()] = "01xX ?_"[random() % 7];
        }
    }
    for (auto& slot : state.Trigger.SeqList) {
        slot = random() % 3 == 0 ? static_cast<int>(random() % 19) - 1 : 0;
    }
}

TEST_F(Consistency, AgreesWithTheRuleToldStepByStep) {
    std::mt19937 random(17);
    int mixed = 0;
    constexpr int kRounds = 100;
    for (const int row : {5, 10, 15, 16, 18, 24, 27}) {
        state = TriggerState(row);
        for (int round = 0; round < kRounds; ++round) {
            MakeSequence(*state, random);
            const auto words = PrepareTriggerWords(*state);
            const bool expected = ConsistentStepByStep(*state, words);
            ASSERT_EQ(TrigWordsConsistent(*state, words), expected) << row << " " << round;
            mixed += expected ? 0 : 1;
        }
    }
    EXPECT_GT(mixed, kRounds);
    EXPECT_LT(mixed, 6 * kRounds);
}

TEST_F(Consistency, SeparatorsAndPositionsBeyondThePodsAreNot) {
    SetEntry(*state, 0, 0, "XXXXXXXX1XXXXXXXX0XXXXXXXX1XXXXXXXX0XXXXXXXX1");
    Sequence({1, 2});
    EXPECT_TRUE(Consistent());
    const auto small = TriggerState(16);
    SetEntry(*small, 0, 0, "XXXXXXXX XXXXXXXX XXXXXXXX 1XXXXXXX");
    small->Trigger.SeqList[0] = 1;
    small->Trigger.SeqList[1] = 2;
    EXPECT_TRUE(TrigWordsConsistent(*small, PrepareTriggerWords(*small))) << "three pods: 27 positions";
}

}  // namespace
}  // namespace zu
