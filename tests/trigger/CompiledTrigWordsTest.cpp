// The words as the instrument gets them, and the test of a sequence.
#include <gtest/gtest.h>
#include <type_traits>

#include "TriggerState.h"
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
