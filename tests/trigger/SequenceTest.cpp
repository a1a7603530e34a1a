// The levels of the sequence, their texts and edits.
#include <gtest/gtest.h>

#include "TriggerState.h"
#include "support/ScriptedHost.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/Sequence.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::ScriptedHost;
using test::SetEntry;
using test::TriggerState;
using Box = ScriptedHost::Box;

class Sequence : public testing::Test {
  protected:
    Sequence() : state(TriggerState(18)), trigger(state->Trigger) {
        for (int w = 0; w < kTrigWords; ++w) {
            trigger.TrigWordName[static_cast<std::size_t>(w)] = std::to_string(w) + "Event";
        }
        trigger.CountList.fill(1);
        trigger.TrigMatchMode.fill(1);
        trigger.LevelEnable.fill(1);
        trigger.SeqList.fill(0);
        trigger.EdgeList16.fill(0);
        trigger.LevelCount = 4;
    }
    std::unique_ptr<InstrumentState> state;
    TriggerRecord& trigger;
    ScriptedHost host;
};

TEST_F(Sequence, DelayRates) {
    std::string all;
    for (int rate = 0; rate < 25; ++rate) all += std::string(DelayRateText(rate)) + " ";
    EXPECT_EQ(all,
              "10ns 20ns 50ns 100ns 200ns 500ns 1us 2us 5us 10us 20us 50us 100us 200us 500us "
              "1ms 2ms 5ms 10ms 20ms 50ms 100ms 200ms 500ms 1s ");
    for (const int rate : {25, -1, INT32_MAX, INT32_MIN}) EXPECT_EQ(DelayRateText(rate), "") << rate;
}

TEST_F(Sequence, ButtonAndColumnTexts) {
    using Texts = std::array<std::string_view, 4>;
    EXPECT_EQ(kTrigCntModeTexts,
              (Texts{"Duration greater or eq", "Duration less or eq", "Match Occurrences", "Off"}));
    EXPECT_EQ(kEventColumnTexts, (Texts{"Events 0..3", "Events 4..7", "Events 8..11", "Events 12..15"}));
}

TEST_F(Sequence, SetLevelStoresWordEdgeAndElse) {
    SetLevel(*state, 3, 7, 1, 1);
    EXPECT_EQ(trigger.SeqList[3], 8);
    EXPECT_EQ(trigger.EdgeList16[3], 1);
    EXPECT_EQ(trigger.ElseList[3], 1);
    EXPECT_EQ(WordOfLevel(*state, 3), 7);
    SetLevel(*state, 5, 7, 0, 0);
    EXPECT_EQ(WordOfLevel(*state, 5), 7) << "a word may repeat";
    const auto before = trigger.SeqList;
    SetLevel(*state, 16, 1, 1, 1);
    SetLevel(*state, -1, 1, 1, 1);
    for (const int word : {16, -2, INT32_MAX, INT32_MIN}) SetLevel(*state, 3, word, 0, 0);
    EXPECT_EQ(trigger.SeqList, before);
    EXPECT_EQ(trigger.EdgeList16[3], 1) << "a word that there is not changes nothing";
    SetLevel(*state, 3, -1, 0, 0);
    EXPECT_FALSE(WordOfLevel(*state, 3));
}

TEST_F(Sequence, EverySlotMayHoldTheSameWord) {
    for (int k = 0; k < kTrigWords; ++k) SetLevel(*state, k, 4, 0, 0);
    for (int k = 0; k < kTrigWords; ++k) EXPECT_EQ(WordOfLevel(*state, k), 4) << k;
    EXPECT_EQ(LastLevel(*state), 15);
    EXPECT_TRUE(TrigWordsConsistent(*state, PrepareTriggerWords(*state)));
}

TEST_F(Sequence, WordsAndLastLevel) {
    EXPECT_FALSE(LastLevel(*state));
    trigger.SeqList[2] = 16;
    trigger.SeqList[9] = 17;
    trigger.SeqList[20] = 1;
    EXPECT_EQ(WordOfLevel(*state, 2), 15);
    EXPECT_FALSE(WordOfLevel(*state, 9)) << "there is no word 16";
    EXPECT_FALSE(WordOfLevel(*state, 20));
    EXPECT_FALSE(WordOfLevel(*state, -1));
    EXPECT_EQ(LastLevel(*state), 2);
    trigger.SeqList[3] = -4;
    EXPECT_FALSE(WordOfLevel(*state, 3));
}

TEST_F(Sequence, TheLevelListBelongsToThe32Channels) {
    EXPECT_TRUE(UsesLevelList(*state));
    state->Identity.ModelSeries = 5;
    EXPECT_FALSE(UsesLevelList(*state));
    EXPECT_FALSE(UsesLevelList(*TriggerState(6)));
    EXPECT_TRUE(UsesLevelList(*TriggerState(26))) << "by channels, whatever the row";
}

TEST_F(Sequence, ChoicesAreADashAndTheNames) {
    const auto choices = SequenceChoices(*state);
    ASSERT_EQ(choices.size(), 17U);
    EXPECT_EQ(choices[0], "-");
    for (std::size_t word = 0; word < 16; ++word) {
        EXPECT_EQ(choices[word + 1], std::to_string(word) + "Event");
    }
}

TEST_F(Sequence, AWordLevelAsText) {
    SetAllWord(*state, '0', 2);
    SetLevel(*state, 0, 2, 0, 0);
    EXPECT_EQ(DescribeLevel(*state, 0),
              "000: If(all bits) (count = 1)(True)  2Event    [00000000_00000000_00000000_00000000_]");
}

TEST_F(Sequence, EveryChoiceOfAWordLevelAsText) {
    SetLevel(*state, 1, 0, 1, 1);
    trigger.LevelEnable[1] = 0;
    trigger.TrigMatchMode[1] = 0;
    trigger.CountList[1] = 1048576;
    trigger.TrigWordName[0] = "aVeryLongName1";
    EXPECT_EQ(DescribeLevel(*state, 1),
              "Disabled - 001: If(any bit) (count = 1048576)(False) aVeryLongName1"
              "[XXXXXXXX_XXXXXXXX_XXXXXXXX_XXXXXXXX_] else go to 0");
    trigger.ElseList[1] = 2;
    EXPECT_FALSE(DescribeLevel(*state, 1).ends_with("else go to 0")) << "only 1 branches";
}

TEST_F(Sequence, ALevelWithoutAWordNamesWordZero) {
    EXPECT_EQ(DescribeLevel(*state, 15), "015: If(all bits) (count = 1)(True)  0Event    ");
    trigger.SeqList[15] = 99;
    EXPECT_EQ(DescribeLevel(*state, 15), "015: If(all bits) (count = 1)(True)  0Event    ");
}

TEST_F(Sequence, CellsBehindTheTextShowAsSeparators) {
    SetEntry(*state, 0, 0, "1x0");
    SetLevel(*state, 0, 0, 0, 0);
    const std::string line = DescribeLevel(*state, 0);
    EXPECT_EQ(line.substr(line.find('[')), "[1X0_________________________________]");
    const auto wide = TriggerState(6);
    SetLevel(*wide, 0, 0, 0, 0);
    const std::string wideLine = DescribeLevel(*wide, 0);
    EXPECT_EQ(wideLine.substr(wideLine.find('[')), "[XXXXXXXX_XXXXXXXX_XXXXXXXX_XXXXXXXX_]");
}

TEST_F(Sequence, ADelayLevelAsText) {
    trigger.ModeList[2] = 1;
    trigger.TrigDelayRateList[2] = 16;
    trigger.CountList[2] = 12;
    EXPECT_EQ(DescribeLevel(*state, 2), "002: Delay=2ms (count=12)");
    trigger.LevelEnable[2] = 0;
    trigger.TrigDelayRateList[2] = 77;
    EXPECT_EQ(DescribeLevel(*state, 2), "Disabled - 002: Delay= (count=12)");
    trigger.ModeList[2] = 2;
    EXPECT_TRUE(DescribeLevel(*state, 2).starts_with("Disabled - 002: If")) << "only 1 delays";
}

TEST_F(Sequence, TextsOfStrangeLevels) {
    EXPECT_EQ(DescribeLevel(*state, -1), "");
    EXPECT_EQ(DescribeLevel(*state, 16), "");
    trigger.TrigWordName[0] = "%s%n%d";
    EXPECT_NE(DescribeLevel(*state, 0).find("%s%n%d"), std::string::npos);
}

TEST_F(Sequence, TheListPutsCommentsAboveTheirLevels) {
    trigger.LevelCount = 2;
    trigger.TrigComment[1] = "wait for ready";
    trigger.TrigComment[2] = "not in use";
    const auto lines = LevelList(*state);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].Text, DescribeLevel(*state, 0));
    EXPECT_EQ(lines[1].Text, "wait for ready");
    EXPECT_TRUE(lines[1].IsComment);
    EXPECT_EQ(lines[1].Level, 1);
    EXPECT_EQ(lines[2].Level, 1);
    trigger.LevelCount = 4000;
    EXPECT_EQ(LevelsInUse(*state), 16);
    trigger.LevelCount = -4;
    EXPECT_TRUE(LevelList(*state).empty());
}

TEST_F(Sequence, WhatTheLevelDialogOffers) {
    const auto word = ChoicesOfLevelMode(*state, 0);
    EXPECT_EQ(word.ModeLabel, "Mode");
    EXPECT_EQ(word.LogicLabel, "Logic");
    EXPECT_EQ(word.Match, (std::vector<std::string>{"OR", "AND"}));
    EXPECT_EQ(word.Edge, (std::vector<std::string>{"True (Rising)", "False (Falling)"}));
    EXPECT_EQ(word.Word, SequenceChoices(*state));
    EXPECT_EQ(word.Else, (std::vector<std::string>{"then next level", "else go to level 0"}));
    EXPECT_TRUE(word.Rate.empty());
    const auto delay = ChoicesOfLevelMode(*state, 1);
    EXPECT_EQ(delay.ModeLabel, "");
    EXPECT_EQ(delay.LogicLabel, "");
    EXPECT_TRUE(delay.Match.empty() && delay.Edge.empty() && delay.Word.empty() && delay.Else.empty());
    EXPECT_EQ(delay.Rate, (std::vector<std::string>{kDelayRates.begin(), kDelayRates.end()}));
}

TEST_F(Sequence, ACountTooLargeIsCutWithOneNote) {
    EnterLevelCount(*state, host, 1, "2000000");
    EXPECT_EQ(trigger.CountList[1], 1048576);
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0], (Box{"Max value for count is 1048576", "Note:"}));
}

TEST_F(Sequence, ACountTooSmallBecomesOneSilently) {
    for (const char* text : {"0", "-5", "", "abc", "-99999999999999999999"}) {
        trigger.CountList[1] = 7;
        EnterLevelCount(*state, host, 1, text);
        EXPECT_EQ(trigger.CountList[1], 1) << text;
    }
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(Sequence, CountsInRangeAreTaken) {
    EnterLevelCount(*state, host, 0, "1048576");
    EXPECT_EQ(trigger.CountList[0], 1048576);
    EnterLevelCount(*state, host, 0, " +12 x");
    EXPECT_EQ(trigger.CountList[0], 12);
    EXPECT_TRUE(host.Boxes.empty());
    EnterLevelCount(*state, host, 0, "99999999999999999999");
    EXPECT_EQ(trigger.CountList[0], 1048576);
    EXPECT_EQ(host.Boxes.size(), 1U);
    EnterLevelCount(*state, host, 16, "5");
    EnterLevelCount(*state, host, -1, "5");
}

/// Gives each level values of its own in every list.
void NumberLevels(TriggerRecord& trigger) {
    for (std::size_t k = 0; k < 16; ++k) {
        const auto n = static_cast<std::int32_t>(k);
        trigger.SeqList[k] = n;
        trigger.ModeList[k] = n % 2;
        trigger.CountList[k] = 100 + n;
        trigger.TrigDelayRateList[k] = n + 1;
        trigger.ElseList[k] = n % 3;
        trigger.EdgeList16[k] = static_cast<std::uint8_t>(n + 20);
        trigger.TrigMatchMode[k] = static_cast<std::uint8_t>(n + 40);
        trigger.LevelEnable[k] = static_cast<std::uint8_t>(n + 60);
        trigger.TrigComment[k] = "c" + std::to_string(n);
    }
}

void ExpectLevel(const TriggerRecord& trigger, std::size_t k, std::int32_t was) {
    EXPECT_EQ(trigger.SeqList[k], was);
    EXPECT_EQ(trigger.ModeList[k], was % 2);
    EXPECT_EQ(trigger.CountList[k], 100 + was);
    EXPECT_EQ(trigger.TrigDelayRateList[k], was + 1);
    EXPECT_EQ(trigger.ElseList[k], was % 3);
    EXPECT_EQ(trigger.EdgeList16[k], was + 20);
    EXPECT_EQ(trigger.TrigMatchMode[k], was + 40);
    EXPECT_EQ(trigger.LevelEnable[k], was + 60);
    EXPECT_EQ(trigger.TrigComment[k], "c" + std::to_string(was));
}

TEST_F(Sequence, MoveUpExchangesEverythingWithTheLevelAbove) {
    NumberLevels(trigger);
    LevelSelection selected{3, 1};
    EXPECT_TRUE(MoveLevelsUp(*state, host, selected));
    EXPECT_EQ(selected, (LevelSelection{0, 2}));
    ExpectLevel(trigger, 0, 1);
    ExpectLevel(trigger, 1, 0);
    ExpectLevel(trigger, 2, 3);
    ExpectLevel(trigger, 3, 2);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(Sequence, NeighboursMoveTogether) {
    NumberLevels(trigger);
    LevelSelection selected{1, 2};
    EXPECT_TRUE(MoveLevelsDown(*state, host, selected));
    EXPECT_EQ(selected, (LevelSelection{2, 3}));
    ExpectLevel(trigger, 1, 3);
    ExpectLevel(trigger, 2, 1);
    ExpectLevel(trigger, 3, 2);
    EXPECT_TRUE(MoveLevelsUp(*state, host, selected));
    for (std::size_t k = 0; k < 4; ++k) ExpectLevel(trigger, k, static_cast<std::int32_t>(k));
}

TEST_F(Sequence, MovesThatCannotBe) {
    NumberLevels(trigger);
    LevelSelection none;
    LevelSelection top{0, 2};
    LevelSelection bottom{1, 3};
    LevelSelection strange{-1, 4, 99};
    EXPECT_FALSE(MoveLevelsUp(*state, host, none));
    EXPECT_FALSE(MoveLevelsUp(*state, host, top));
    EXPECT_FALSE(MoveLevelsDown(*state, host, none));
    EXPECT_FALSE(MoveLevelsDown(*state, host, bottom));
    EXPECT_FALSE(MoveLevelsDown(*state, host, strange));
    const std::vector<Box> expected{{"Select line in display list to move.", "Error:"},
                                    {"Selected lines are at top of list", "Error:"},
                                    {"Select line in display list to move.", "Error:"},
                                    {"Selected lines are at bottom of list", "Error:"},
                                    {"Select line in display list to move.", "Error:"}};
    EXPECT_EQ(host.Boxes, expected);
    for (std::size_t k = 0; k < 16; ++k) ExpectLevel(trigger, k, static_cast<std::int32_t>(k));
}

TEST_F(Sequence, EnableTogglesTheSelectedLevels) {
    trigger.LevelEnable[2] = 0;
    EXPECT_TRUE(ToggleLevels(*state, host, {1, 2, 2}));
    EXPECT_EQ(trigger.LevelEnable[0], 1);
    EXPECT_EQ(trigger.LevelEnable[1], 0);
    EXPECT_EQ(trigger.LevelEnable[2], 1);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(Sequence, EnablingNothingLeavesTheFlags) {
    const auto before = trigger.LevelEnable;
    EXPECT_FALSE(ToggleLevels(*state, host, {}));
    EXPECT_EQ(trigger.LevelEnable, before);
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0], (Box{"Select level from 'Trigger sequence list.'", "Error"}));
}

}  // namespace
}  // namespace zu
