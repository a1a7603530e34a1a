// What the search dialog does to the search word.
#include <gtest/gtest.h>

#include "display/SearchEdits.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

/// Models of one board of five pods (13) and of four (15), with a word of nothing but X.
std::unique_ptr<InstrumentState> MakeSearchState(int row = 13) {
    auto state = test::MakeState(row);
    for (auto& entry : state->Search.SearchWd) entry = state->Trigger.TrigWord.Board[0][0];
    state->Search.SearchBase = kSearchBinary;
    return state;
}

void FillZeros(InstrumentState& state) {
    SearchWordEdit(state).Fill(3);
}

TEST(SearchEdits, ListsARowForEachBoard) {
    const auto wide = MakeSearchState(15);
    ASSERT_EQ(SearchRows(*wide), 4);
    EXPECT_EQ(SearchRowText(*wide, 0), "Ch 0 .. 39");
    EXPECT_EQ(SearchRowText(*wide, 3), "Ch 120 .. 159");
    const auto narrow = MakeSearchState(13);
    EXPECT_EQ(SearchRows(*narrow), 1);
    EXPECT_EQ(SearchPods(*narrow, 0), (std::vector<int>{4, 3, 2, 1, 0}));
    EXPECT_EQ(SearchPods(*wide, 2), (std::vector<int>{14, 13, 12, 11, 10}));
}

TEST(SearchEdits, PodsWithoutAPlaceInTheWordAreLeftOut) {
    const auto state = MakeSearchState(24);  // 64 channels in one word of 45 characters
    EXPECT_EQ(SearchPods(*state, 0), (std::vector<int>{7, 6, 5, 4, 3}));
}

TEST(SearchEdits, TheShownRowStaysWithinTheModel) {
    const auto state = MakeSearchState(15);
    for (const auto& [stored, shown] : {std::pair{-3, 0}, {0, 0}, {3, 3}, {4, 3}, {127, 3}}) {
        state->Search.SearchLen = static_cast<std::int8_t>(stored);
        EXPECT_EQ(ShownSearchRow(*state), shown);
    }
}

TEST(SearchEdits, FieldsAreTwoEightOrFourWide) {
    EXPECT_EQ(SearchFieldLimit(kSearchHex), 2);
    EXPECT_EQ(SearchFieldLimit(kSearchBinary), 8);
    EXPECT_EQ(SearchFieldLimit(kSearchDecimal), 4);
    EXPECT_EQ(SearchFieldLimit(kSearchDecimal2), 4);
}

TEST(SearchEdits, KeysByBase) {
    for (int c = 1; c < 256; ++c) {
        const char key = static_cast<char>(c);
        const bool digit = c >= '0' && c <= '9';
        const bool hex = digit || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
        EXPECT_EQ(SearchFieldTakes(kSearchHex, key), hex) << c;
        EXPECT_EQ(SearchFieldTakes(kSearchBinary, key), c == '0' || c == '1' || c == 'x' || c == 'X') << c;
        EXPECT_EQ(SearchFieldTakes(kSearchDecimal, key), digit) << c;
        EXPECT_EQ(SearchFieldTakes(kSearchDecimal2, key), digit) << c;
    }
}

TEST(SearchEdits, BinaryIsStoredAsItStandsWithXInFront) {
    const auto state = MakeSearchState();
    WriteSearchField(*state, 0, "10x1X010");
    EXPECT_EQ(SearchFieldText(*state, 0), "10x1X010");
    EXPECT_EQ(std::string(state->Search.SearchWd[0].data()), "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX 10x1X010");
    WriteSearchField(*state, 4, "01");
    EXPECT_EQ(SearchFieldText(*state, 4), "XXXXXX01");
    WriteSearchField(*state, 4, "");
    EXPECT_EQ(SearchFieldText(*state, 4), "XXXXXXXX");
    WriteSearchField(*state, 0, "12");
    EXPECT_EQ(SearchFieldText(*state, 0), "10x1X010") << "what the base does not take is not stored";
}

TEST(SearchEdits, NumbersAreStoredAsEightBits) {
    const auto state = MakeSearchState();
    FillZeros(*state);
    state->Search.SearchBase = kSearchHex;
    WriteSearchField(*state, 0, "a5");
    EXPECT_EQ(SearchFieldText(*state, 0), "A5");
    WriteSearchField(*state, 1, "F");
    EXPECT_EQ(SearchFieldText(*state, 1), "0F");
    WriteSearchField(*state, 2, "");
    EXPECT_EQ(SearchFieldText(*state, 2), "00");
    for (const int base : {kSearchDecimal, kSearchDecimal2}) {
        state->Search.SearchBase = static_cast<std::int8_t>(base);
        EXPECT_EQ(SearchFieldText(*state, 0), "165");
        WriteSearchField(*state, 3, "0017");
        EXPECT_EQ(SearchFieldText(*state, 3), "17");
        WriteSearchField(*state, 3, "9999");
        EXPECT_EQ(SearchFieldText(*state, 3), "255") << "cut to what eight bits hold";
    }
    state->Search.SearchBase = kSearchBinary;
    EXPECT_EQ(SearchFieldText(*state, 0), "10100101");
    EXPECT_EQ(SearchFieldText(*state, 1), "00001111");
}

TEST(SearchEdits, ABaseOfNoKindIsBinary) {
    const auto state = MakeSearchState();
    for (const int base : {-1, 4, 100}) {
        state->Search.SearchBase = static_cast<std::int8_t>(base);
        EXPECT_EQ(SearchBaseOf(*state), kSearchBinary);
        EXPECT_EQ(SearchFieldText(*state, 0), "XXXXXXXX");
    }
}

TEST(SearchEdits, AnXForbidsOtherBases) {
    const auto state = MakeSearchState();
    SearchWordEdit edit(*state);
    for (const int base : {kSearchHex, kSearchDecimal, kSearchDecimal2}) {
        EXPECT_EQ(edit.SelectBase(base), "ERROR: Don't care bits are available in BINARY only.");
        EXPECT_EQ(state->Search.SearchBase, kSearchBinary) << "the base stays";
    }
    FillZeros(*state);
    EXPECT_EQ(edit.SelectBase(kSearchHex), "");
    EXPECT_EQ(state->Search.SearchBase, kSearchHex);
    state->Search.SearchBase = kSearchBinary;
    WriteSearchField(*state, 3, "0000x000");
    EXPECT_NE(edit.SelectBase(kSearchHex), "") << "a small x counts";
}

TEST(SearchEdits, AnXAnywhereInTheModelCounts) {
    const auto state = MakeSearchState(15);
    FillZeros(*state);
    EXPECT_FALSE(SearchHoldsDontCare(*state));
    state->Search.SearchWd[3][0] = 'X';
    EXPECT_TRUE(SearchHoldsDontCare(*state));
}

TEST(SearchEdits, OpeningInAnotherBaseWithAnXFallsBackOnce) {
    const auto state = MakeSearchState();
    state->Search.SearchBase = kSearchHex;
    SearchWordEdit edit(*state);
    EXPECT_EQ(edit.Open(), "Mode set to BINARY.");
    EXPECT_EQ(state->Search.SearchBase, kSearchBinary);
    EXPECT_EQ(edit.Open(), "");
    FillZeros(*state);
    EXPECT_EQ(edit.SelectBase(kSearchHex), "");
    EXPECT_EQ(edit.Fill(1), "") << "once in a dialog";
    EXPECT_EQ(state->Search.SearchBase, kSearchBinary);
    SearchWordEdit next(*state);
    EXPECT_EQ(next.Open(), "") << "already binary";
}

TEST(SearchEdits, TellsWhereASearchSetsOut) {
    const auto state = MakeSearchState();
    state->Timing.TimingDataPos = 1500;
    state->StateList.StateDataPos = -7;
    EXPECT_EQ(SearchPlaceText(*state), "From sample 1500 (15,000ns) of the Timing view");
    state->Windows.ActiveView = 1;
    EXPECT_EQ(SearchPlaceText(*state), "From sample 0 (0ns) of the Statelist");
    state->Clock.ClockType = 1;
    EXPECT_EQ(SearchPlaceText(*state), "From sample 0 of the Statelist") << "an external clock has no rate";
}

TEST(SearchEdits, ListsFillsAndTriggerLevels) {
    const auto state = MakeSearchState();
    state->Trigger.TrigWordName[0] = "0Event";
    state->Trigger.TrigWordName[15] = "last";
    const auto texts = SearchFillTexts(*state);
    ASSERT_EQ(texts.size(), 20U);
    EXPECT_EQ(texts[0], "Reset");
    EXPECT_EQ(texts[1], "Set all bits to X");
    EXPECT_EQ(texts[2], "Set all bits to 1");
    EXPECT_EQ(texts[3], "Set all bits to 0");
    EXPECT_EQ(texts[4], "Search for Trigger level 0  (0Event)");
    EXPECT_EQ(texts[19], "Search for Trigger level 15  (last)");
}

TEST(SearchEdits, FillsSetEveryChannel) {
    const auto state = MakeSearchState(15);
    SearchWordEdit edit(*state);
    for (const auto& [entry, cells] : {std::pair{2, "11111111"}, {3, "00000000"}, {1, "XXXXXXXX"}}) {
        edit.Fill(entry);
        for (int pod = 0; pod < 20; ++pod) EXPECT_EQ(SearchFieldText(*state, pod), cells);
        for (const auto& board : state->Search.SearchWd) EXPECT_EQ(board[8], ' ') << "separators stay";
    }
}

TEST(SearchEdits, TheTitleRowAndOthersDoNothing) {
    const auto state = MakeSearchState();
    const auto before = state->Search.SearchWd;
    SearchWordEdit edit(*state);
    for (const int entry : {0, -1, 20, 1000}) EXPECT_EQ(edit.Fill(entry), "");
    EXPECT_EQ(state->Search.SearchWd, before);
}

TEST(SearchEdits, ATriggerLevelCopiesItsWordForEverySlice) {
    const auto state = MakeSearchState(15);
    for (std::size_t board = 0; board < 4; ++board) {
        state->Trigger.TrigWord.Board[board][7].fill('\0');
        std::fill_n(state->Trigger.TrigWord.Board[board][7].begin(), 44, static_cast<char>('0' + board % 2));
    }
    state->Trigger.SeqList.fill(0);  // unset levels are offered too
    SearchWordEdit(*state).Fill(4 + 7);
    for (std::size_t board = 0; board < 4; ++board) {
        EXPECT_EQ(state->Search.SearchWd[board], state->Trigger.TrigWord.Board[board][7]);
    }
}

}  // namespace
}  // namespace zu
