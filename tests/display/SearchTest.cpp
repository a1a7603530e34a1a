// Searches for words and for serial patterns, alone and against a slow search.
#include <gtest/gtest.h>

#include "display/Search.h"
#include "support/PlainSearch.h"
#include "support/ScriptedHost.h"
#include "support/TimingFixture.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::Random;

void SetWord(InstrumentState& state, char value) {
    for (auto& entry : state.Search.SearchWd) {
        entry.fill('\0');
        for (int i = 0; i < 44; ++i) entry[static_cast<std::size_t>(i)] = IsSeparator(i) ? ' ' : value;
    }
}
/// Cells of one pod, the most significant first.
void SetPod(InstrumentState& state, int pod, std::string_view cells) {
    for (int bit = 0; bit < 8; ++bit) {
        const auto cell = CellOfChannel(state, pod * 8 + bit);
        ASSERT_TRUE(cell);
        state.Search
            .SearchWd[static_cast<std::size_t>(cell->Board)][static_cast<std::size_t>(cell->Position)] =
            cells[static_cast<std::size_t>(7 - bit)];
    }
}

/// 40 channels, 200 samples, pod 0 counts, the Timing view is active and stands at 0.
class SearchTest : public testing::Test {
  protected:
    SearchTest() {
        test::SetLength(*State, 200);
        test::FillPod(*State, 0, [](std::int32_t i) { return i; });
        SetWord(*State, 'X');
    }
    [[nodiscard]] std::int32_t Position() const { return State->Timing.TimingDataPos; }
    void GoTo(std::int32_t position) { State->Timing.TimingDataPos = position; }
    void Serial(std::string_view pattern, int channel = 8) {
        State->Search.SearchMode = 'S';
        State->Search.SearchWord = pattern;
        State->Search.SearchCh = static_cast<std::int16_t>(channel);
    }
    /// Channel 8 from a text of levels, from sample 0 on.
    void Levels(std::string_view levels) {
        test::FillPod(*State, 1, [levels](std::int32_t i) {
            return i < std::ssize(levels) && levels[static_cast<std::size_t>(i)] == '1' ? 1 : 0;
        });
    }

    std::unique_ptr<InstrumentState> State = test::MakeState(13);
};

TEST_F(SearchTest, BuildsCareAndDontCareFromTheWord) {
    SetPod(*State, 0, "10Xx1010");
    SetPod(*State, 4, "0000000X");
    const PodPatterns patterns = BuildPodPatterns(*State);
    EXPECT_EQ(patterns[0], (PodPattern{0b10111010, 0b00110000}));
    EXPECT_EQ(patterns[1], (PodPattern{0xFF, 0xFF}));
    EXPECT_EQ(patterns[4], (PodPattern{1, 1}));
    EXPECT_EQ(patterns[5], (PodPattern{0xFF, 0xFF})) << "the model has no such pod";
}

TEST_F(SearchTest, OtherCharactersAskForAZero) {
    SetPod(*State, 0, "?\0 2ZZZZ");
    EXPECT_EQ(BuildPodPatterns(*State)[0], (PodPattern{0, 0}));
}

TEST_F(SearchTest, AWordOfDontCareMatchesAtOnce) {
    GoTo(20);
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 21);
    EXPECT_TRUE(SearchBackward(*State));
    EXPECT_EQ(Position(), 20);
}

TEST_F(SearchTest, FindsAWordBothWays) {
    SetPod(*State, 0, "00110000");
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 48);
    EXPECT_FALSE(SearchForward(*State));
    EXPECT_EQ(Position(), 48) << "nothing moves without a match";
    GoTo(150);
    EXPECT_TRUE(SearchBackward(*State));
    EXPECT_EQ(Position(), 48);
    EXPECT_FALSE(SearchBackward(*State)) << "it does not wrap";
    EXPECT_EQ(Position(), 48);
}

TEST_F(SearchTest, BeepsWithoutAMatchAndSaysNothing) {
    test::ScriptedHost host;
    SetPod(*State, 0, "00110000");
    EXPECT_TRUE(SearchOrBeep(*State, host, true));
    EXPECT_EQ(Position(), 48);
    EXPECT_EQ(host.Beeps, 0);
    EXPECT_FALSE(SearchOrBeep(*State, host, true));
    EXPECT_FALSE(SearchOrBeep(*State, host, false));
    EXPECT_EQ(host.Beeps, 2);
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(Position(), 48);
}

TEST_F(SearchTest, AllPodsMustMatch) {
    SetPod(*State, 0, "XXXXXXX1");
    SetPod(*State, 2, "1XXXXXXX");
    test::FillPod(*State, 2, [](std::int32_t i) { return i == 60 || i == 77 ? 0x80 : 0; });
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 77) << "sample 60 is even";
}

TEST_F(SearchTest, APodWithoutASampleThere) {
    SetPod(*State, 2, "11111111");
    EXPECT_FALSE(SearchForward(*State));
    SetBufLenFull(State->Buffer.BufLen, 2, 150);
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 150) << "passes";
    SetBufLenFull(State->Buffer.BufLen, 2, 0);
    GoTo(10);
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 11);
}

TEST_F(SearchTest, TheLastSampleIsNeverTested) {
    SetPod(*State, 0, "11000111");  // sample 199
    EXPECT_FALSE(SearchForward(*State));
    SetPod(*State, 0, "11000110");
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 198);
}

TEST_F(SearchTest, FromTheLastSampleForwardFails) {
    GoTo(199);
    EXPECT_FALSE(SearchForward(*State));
    EXPECT_EQ(Position(), 199);
    GoTo(5000);
    EXPECT_FALSE(SearchForward(*State));
}

TEST_F(SearchTest, BeforeTheLastSampleItStartsWhereItStands) {
    GoTo(198);
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 198);
}

TEST_F(SearchTest, SampleZeroIsNotFoundBackward) {
    SetPod(*State, 0, "00000000");
    GoTo(100);
    EXPECT_FALSE(SearchBackward(*State));
    GoTo(0);
    SetWord(*State, 'X');
    EXPECT_FALSE(SearchBackward(*State));
    GoTo(1);
    EXPECT_FALSE(SearchBackward(*State)) << "only sample 0 is left";
}

TEST_F(SearchTest, ANegativePositionIsZero) {
    GoTo(-500);
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 1);
    GoTo(INT32_MIN);
    EXPECT_FALSE(SearchBackward(*State));
}

TEST_F(SearchTest, FromBehindTheDataBackward) {
    GoTo(INT32_MAX);
    EXPECT_TRUE(SearchBackward(*State));
    EXPECT_EQ(Position(), 199);
}

TEST_F(SearchTest, MovesTheActiveView) {
    State->Windows.ActiveView = 1;
    State->StateList.StateDataPos = 30;
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(State->StateList.StateDataPos, 31);
    EXPECT_EQ(Position(), 0);
}

TEST_F(SearchTest, WithoutDataNothingIsFound) {
    test::SetLength(*State, 0);
    EXPECT_FALSE(SearchForward(*State));
    EXPECT_FALSE(SearchBackward(*State));
    Serial("1");
    EXPECT_FALSE(SearchForward(*State));
    EXPECT_FALSE(SearchBackward(*State));
}

TEST_F(SearchTest, ReadsEveryPodThroughItsAlignment) {
    SetPod(*State, 0, "00110000");
    State->Pods.AdjAddr[0] = 8;
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 40);
}

TEST_F(SearchTest, ReadsPatternPodsFromTheirPatterns) {
    State->Pods.HardwarePod[1] = 1;
    State->Buffer.Pattern(1)[70] = 0x55;
    SetPod(*State, 1, "01010101");
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 70);
}

TEST_F(SearchTest, ASerialPatternIsReadFromItsEnd) {
    Levels("0000100000110100");
    Serial("110");  // in the order of samples 0, 1, 1
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 12) << "one past the match at 9, 10, 11";
}

TEST_F(SearchTest, BackwardTheOrderOfSamplesIsTurned) {
    Levels("0000110100000000");
    Serial("110");  // walking back: 0, 1, 1
    GoTo(30);
    EXPECT_TRUE(SearchBackward(*State));
    EXPECT_EQ(Position(), 3) << "one before the match at 6, 5, 4";
}

TEST_F(SearchTest, AFailedMatchRewindsToItsStart) {
    Levels("000010101100");
    Serial("11010");  // 0, 1, 0, 1, 1
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 10) << "the match overlaps the failed one";
}

TEST_F(SearchTest, XMatchesAnyLevel) {
    Levels("0001001110000");
    Serial("1X1");
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 9);
    Serial("xxxxxxxx");
    GoTo(20);
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 29) << "begins at the sample behind";
}

TEST_F(SearchTest, OtherCharactersOfThePatternAreLeftOut) {
    Levels("00000110000");
    Serial(" 1-1 ");
    EXPECT_TRUE(SearchForward(*State));
    EXPECT_EQ(Position(), 7);
    Serial("hello");
    GoTo(0);
    EXPECT_FALSE(SearchForward(*State)) << "nothing is left";
    Serial("");
    EXPECT_FALSE(SearchBackward(*State));
}

TEST_F(SearchTest, APatternLongerThanTheDataFails) {
    test::SetLength(*State, 10);
    Serial("00000000000");
    EXPECT_FALSE(SearchForward(*State));
    EXPECT_FALSE(SearchBackward(*State));
    Serial("00000000");
    EXPECT_TRUE(SearchForward(*State)) << "samples 1 to 8";
    EXPECT_EQ(Position(), 9);
}

TEST_F(SearchTest, AChannelThatTheModelLacks) {
    for (const int channel : {-1, 40, 159, 160, 32767, -32768}) {
        Serial("X", channel);
        EXPECT_FALSE(SearchForward(*State)) << channel;
        GoTo(50);
        EXPECT_FALSE(SearchBackward(*State)) << channel;
    }
}

TEST_F(SearchTest, PatternsOfAllLengthsAcrossBlocks) {
    for (int length = 1; length <= 64; ++length) {
        for (const int at : {1, 60, 63, 64, 100, 127}) {
            test::FillPod(*State, 1,
                          [at, length](std::int32_t i) { return i == at || i == at + length - 1 ? 1 : 0; });
            std::string pattern(static_cast<std::size_t>(length), '0');
            pattern.front() = pattern.back() = '1';
            Serial(pattern);
            GoTo(0);
            EXPECT_TRUE(SearchForward(*State)) << length << " at " << at;
            EXPECT_EQ(Position(), at + length);
            GoTo(199);
            EXPECT_TRUE(SearchBackward(*State)) << length << " at " << at;
            EXPECT_EQ(Position(), at - 1);
        }
    }
}

TEST_F(SearchTest, MoreCellsThanAPatternHoldsAreNotSearched) {
    EXPECT_EQ(FindBits(*State, 8, std::string(64, 'X'), {5, 190}, true), 5);
    EXPECT_EQ(FindBits(*State, 8, std::string(65, 'X'), {5, 190}, true), std::nullopt);
    EXPECT_EQ(FindBits(*State, 8, "", {5, 190}, false), std::nullopt);
}

TEST_F(SearchTest, ALongPatternIsComparedToItsLastCell) {
    // A clock with one wrong cell: what looks like it everywhere but at its end is no match.
    for (const int length : {9, 17, 33, 64}) {
        std::string pattern;
        for (int i = 0; i < length; ++i) pattern += i == 2 || i % 2 != 0 ? '1' : '0';
        test::FillPod(*State, 1, [](std::int32_t i) { return i % 2; });
        Serial(pattern);
        GoTo(0);
        EXPECT_FALSE(SearchForward(*State)) << length;
        State->Buffer.Pod[1][100] ^= 1;
        // Reversed on the way up, the wrong cell is the third from the end.
        EXPECT_TRUE(SearchForward(*State)) << length;
        EXPECT_EQ(Position(), 103) << length;
        GoTo(199);
        EXPECT_TRUE(SearchBackward(*State)) << length;
        EXPECT_EQ(Position(), 97) << "and on the way down the third from the beginning";
    }
}

void RandomSearch(InstrumentState& state, Random& random) {
    state.Search.SearchMode = random.OneIn(2) ? 'S' : 'P';
    state.Search.SearchCh = static_cast<std::int16_t>(random.Below(24));
    std::string pattern;
    const int length = random.OneIn(4) ? 1 + random.Below(64) : 1 + random.Below(8);
    for (int i = 0; i < length; ++i) pattern += "01Xx01"[random.Below(6)];
    state.Search.SearchWord = pattern;
    SetWord(state, 'X');
    for (int channel = 0; channel < state.Shape.TotalChannels; ++channel) {
        const auto cell = CellOfChannel(state, channel);
        if (!cell || !random.OneIn(5)) continue;
        state.Search
            .SearchWd[static_cast<std::size_t>(cell->Board)][static_cast<std::size_t>(cell->Position)] =
            "01xX"[random.Below(4)];
    }
    state.Windows.ActiveView = static_cast<std::uint8_t>(random.Below(2));
    state.Timing.TimingDataPos = random.Below(520) - 5;
    state.StateList.StateDataPos = random.Below(520) - 5;
}

class SearchAgainstSlow : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Rows, SearchAgainstSlow, testing::Values(0, 5, 9, 13, 15, 18, 24, 27));

TEST_P(SearchAgainstSlow, FindsTheSame) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(900 + GetParam()));
    int found = 0;
    for (int round = 0; round < 1500; ++round) {
        if (round % 30 == 0) {
            test::SetLength(*state, 1 + random.Below(500));
            for (int pod = 0; pod < state->Shape.BufCount; ++pod) {
                if (random.OneIn(8)) SetBufLenFull(state->Buffer.BufLen, pod, random.Below(500));
                state->Pods.AdjAddr[static_cast<std::size_t>(pod)] = random.OneIn(2) ? random.Below(140) : 0;
                const int step = 1 + random.Below(9);
                test::FillPod(*state, pod,
                              [&](std::int32_t i) { return random.OneIn(step) ? random.Any() : i / step; });
            }
        }
        RandomSearch(*state, random);
        const bool forward = random.OneIn(2);
        const std::int64_t slow = test::PlainSearch(*state, forward ? 1 : -1).Find();
        std::int32_t& position =
            state->Windows.ActiveView == 0 ? state->Timing.TimingDataPos : state->StateList.StateDataPos;
        const std::int32_t before = position;
        const bool moved = forward ? SearchForward(*state) : SearchBackward(*state);
        ASSERT_EQ(moved, slow >= 0) << "round " << round;
        ASSERT_EQ(position, moved ? slow : before) << "round " << round;
        found += moved ? 1 : 0;
    }
    EXPECT_GT(found, 200);
}

}  // namespace
}  // namespace zu
