// Words, lists and groups as a damaged file may leave them: nothing reaches outside its table, and what a
// field shows and writes keeps to its rules.
#include <gtest/gtest.h>
#include <random>

#include "TriggerState.h"
#include "state/Catalogue.h"
#include "support/ScriptedHost.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/GroupEdit.h"
#include "trigger/Sequence.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::ScriptedHost;
using test::TriggerState;

class AnyNumber {
  public:
    explicit AnyNumber(unsigned seed) : random_(seed) {}
    int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    template <typename Int>
    void Set(Int& field) {
        constexpr std::array<std::int64_t, 17> kEdges{0,   1,   2,   15,  16,  17,        24,        25, 30,
                                                      127, 128, 159, 160, 255, INT32_MAX, INT32_MIN, -1};
        field = static_cast<Int>(Below(4) == 0 ? static_cast<std::int64_t>(random_())
                                               : kEdges[static_cast<std::size_t>(Below(17))]);
    }
    template <typename Array>
    void SetEach(Array& fields) {
        for (auto& field : fields) Set(field);
    }
    int Number() {
        int number = 0;
        Set(number);
        return number;
    }
    std::string Text(int longest) {
        std::string text(static_cast<std::size_t>(Below(longest)), ' ');
        for (char& c : text) c = Below(2) == 0 ? "01XxFf9A?"[Below(9)] : static_cast<char>(random_());
        return text;
    }

  private:
    std::mt19937 random_;
};

void MakeHostile(InstrumentState& state, AnyNumber& any) {
    TriggerRecord& trigger = state.Trigger;
    for (auto& board : trigger.TrigWord.Board) {
        for (auto& entry : board) {
            for (char& c : entry)
                c = any.Below(2) == 0 ? "01X x"[any.Below(6)] : static_cast<char>(any.Number());
        }
    }
    for (auto& name : trigger.TrigWordName) name = any.Text(30);
    for (auto& comment : trigger.TrigComment) comment = any.Text(120);
    any.SetEach(trigger.SeqList);
    any.SetEach(trigger.ModeList);
    any.SetEach(trigger.CountList);
    any.SetEach(trigger.TrigDelayRateList);
    any.SetEach(trigger.ElseList);
    any.SetEach(trigger.EdgeList16);
    any.SetEach(trigger.TrigMatchMode);
    any.SetEach(trigger.LevelEnable);
    any.Set(trigger.LevelCount);
    any.Set(trigger.TrigWordEditGroupBase);
    any.SetEach(state.Channels.ChannelInvert);
    for (GroupRecord& group : state.Groups) {
        any.Set(group.Size);
        any.SetEach(group.Channels);
    }
}

class HostileTrigger : public testing::TestWithParam<int> {
  protected:
    HostileTrigger() : any(static_cast<unsigned>(GetParam())) {
        int row = GetParam() % kModelRows;
        while (!HasShape(row)) row = (row + 1) % kModelRows;
        state = TriggerState(row);
        MakeHostile(*state, any);
    }
    AnyNumber any;
    std::unique_ptr<InstrumentState> state;
    ScriptedHost host;
};

TEST_P(HostileTrigger, EveryReaderKeepsToItsTables) {
    const CompiledTrigWords words = PrepareTriggerWords(*state);
    TrigWordsConsistent(*state, words);
    for (int k = 0; k < kTrigWords; ++k) {
        const auto word = WordOfLevel(*state, k);
        EXPECT_TRUE(!word || (*word >= 0 && *word < kTrigWords)) << k;
    }
    EXPECT_EQ(SequenceChoices(*state).size(), 17U);
    std::size_t levels = 0;
    for (const LevelLine& line : LevelList(*state)) levels += line.IsComment ? 0 : 1;
    EXPECT_EQ(levels, static_cast<std::size_t>(LevelsInUse(*state)));
    for (int round = 0; round < 100; ++round) {
        const char cell = CharOfChannel(*state, any.Number(), any.Number());
        EXPECT_TRUE(cell == '0' || cell == '1' || cell == 'X');
        DescribeLevel(*state, any.Number());
    }
}

TEST_P(HostileTrigger, EveryWriterKeepsToItsTables) {
    for (int round = 0; round < 100; ++round) {
        const int channel = any.Number();
        const int word = any.Number();
        const auto value = static_cast<char>(any.Number());
        const char before = CharOfChannel(*state, channel, word);
        SetCharOfChannel(*state, channel, word, value);
        const bool there = CellOfChannel(*state, channel) && word >= 0 && word < kTrigWords;
        EXPECT_EQ(CharOfChannel(*state, channel, word), there && IsCell(value) ? NormalCell(value) : before);
        SetAllWord(*state, value, any.Number());
        SetLevel(*state, any.Number(), any.Number(), any.Number(), any.Number());
        EnterLevelCount(*state, host, any.Number(), any.Text(20));
        LevelSelection selected{any.Number(), any.Below(16), any.Number()};
        (any.Below(2) == 0 ? MoveLevelsUp : MoveLevelsDown)(*state, host, selected);
        for (const int k : selected) EXPECT_TRUE(k >= 0 && k < kTrigWords) << k;
        ToggleLevels(*state, host, {any.Number(), any.Number()});
    }
}

TEST_P(HostileTrigger, AGroupFieldShowsAndWritesOnlyCells) {
    for (int round = 0; round < 100; ++round) {
        TrigWordEditGroup edit(*state, any.Number(), any.Number());
        edit.SelectBase(any.Below(2) == 0 ? any.Below(4) : any.Number());
        edit.Write(any.Text(200));
        const std::string cells = GroupCells(*state, edit.Group(), edit.Word());
        EXPECT_EQ(cells.find_first_not_of("01X"), std::string::npos);
        edit.Accept();
        if (edit.Base() == kBaseDecimal) continue;
        EXPECT_EQ(static_cast<int>(edit.Text().size()), edit.Limit());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HostileTrigger, testing::Range(0, kModelRows));

}  // namespace
}  // namespace zu
