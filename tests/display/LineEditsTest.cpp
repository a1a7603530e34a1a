// The edits of the display list: Timing setup and the Timing view's own commands.
#include <gtest/gtest.h>

#include "EditState.h"
#include "display/LineEdits.h"

namespace zu {
namespace {

using test::EditState;
using test::FirstRows;
using test::Rows;
using test::RowsOf;
using Ints = std::vector<int>;

constexpr const char* kNotGroups =
    "Some lines could not be set to selected style because they were not groups.";
constexpr const char* kNotChannels =
    "Some lines could not be set to selected style because they were not single channels.";

class LineEdits : public testing::Test {
  protected:
    LineEdits() : state(EditState(test::kRow40)) { SetLines({0, 1, 2, 160, 190, 3}); }

    TimingRecord& Timing() { return state->Timing; }
    /// Lines with these sources: groups in style 0, others in style 5, all without extra.
    void SetLines(const Ints& sources) {
        Timing().LineSource.fill(0);
        Timing().LineStyle.fill(0);
        Timing().LineMode.fill(0);
        Timing().TimingLines = static_cast<std::int32_t>(sources.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            Timing().LineSource.at(i) = sources[i];
            Timing().LineStyle.at(i) = GroupOfSource(sources[i]) >= 0 ? 0 : 5;
        }
    }
    void SetLength(int lines) { SetLines(Ints(static_cast<std::size_t>(lines), 7)); }
    Ints Sources() { return {Timing().LineSource.begin(), Timing().LineSource.begin() + LineCount(*state)}; }
    Ints Styles() { return {Timing().LineStyle.begin(), Timing().LineStyle.begin() + LineCount(*state)}; }
    Ints Modes() { return {Timing().LineMode.begin(), Timing().LineMode.begin() + LineCount(*state)}; }
    void SetGroup(int number, const Ints& channels) {
        GroupRecord& group = state->Groups.at(static_cast<std::size_t>(number));
        group.Size = 0;
        for (const int channel : channels)
            group.Channels.at(static_cast<std::size_t>(group.Size++)) = channel;
    }
    static int GroupRow(int group) { return 40 + group; }

    std::unique_ptr<InstrumentState> state;
    LineSelection selection;
};

void ExpectMessage(const EditResult& result, std::string_view text, std::string_view title) {
    EXPECT_EQ(result.Text, text);
    EXPECT_EQ(result.Title, title);
}

void ExpectSilent(const EditResult& result) {
    EXPECT_FALSE(result.HasMessage()) << result.Text;
    EXPECT_TRUE(result.Changed);
    EXPECT_TRUE(result.MustRefresh());
}

void ExpectRefused(const EditResult& result, std::string_view text, std::string_view title) {
    ExpectMessage(result, text, title);
    EXPECT_FALSE(result.Changed);
}

TEST_F(LineEdits, AppendCopiesStyleAndModeOfTheFirstSelectedLine) {
    Timing().LineStyle[1] = 8;
    Timing().LineMode[1] = 3;
    selection.Lines = Rows({1, 2});
    selection.Sources = Rows({20, 21, 30});
    ExpectSilent(AppendChannelLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 190, 3, 30, 21, 20})) << "the list is walked from its bottom up";
    EXPECT_EQ(Styles(), (Ints{5, 8, 5, 0, 5, 5, 8, 8, 8}));
    EXPECT_EQ(Modes(), (Ints{0, 3, 0, 0, 0, 0, 3, 3, 3}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{6, 7, 8}));
}

TEST_F(LineEdits, AppendRaisesATextStyle) {
    for (int style = 0; style <= 11; ++style) {
        SetLines({160});
        Timing().LineStyle[0] = static_cast<std::uint8_t>(style);
        selection.Lines = Rows({0});
        selection.Sources = Rows({4});
        AppendChannelLines(*state, selection);
        EXPECT_EQ(Styles().back(), std::max(style, 5));
    }
}

TEST_F(LineEdits, AppendWithoutAModelLineIsPlain) {
    Timing().LineStyle.fill(9);
    selection.Sources = Rows({GroupRow(3), 4});
    ExpectSilent(AppendChannelLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 190, 3, 163, 4}));
    EXPECT_EQ(Styles()[6], 5);
    EXPECT_EQ(Styles()[7], 5);
    SetLines({});
    ExpectSilent(AppendChannelLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{163, 4}));
}

TEST_F(LineEdits, AppendNeedsAChannel) {
    ExpectRefused(AppendChannelLines(*state, selection), "Select channel from channels list.", "Error:");
}

TEST_F(LineEdits, AppendGoesUpTo191Lines) {
    SetLength(189);
    selection.Sources = Rows({1, 2, 3});
    const EditResult result = AppendChannelLines(*state, selection);
    ExpectMessage(result, "Select channel(channels list)", "Error");
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Timing().TimingLines, 191);
    EXPECT_EQ(Sources().back(), 2);
    ExpectRefused(AppendChannelLines(*state, selection), "Select channel(channels list)", "Error");
}

TEST_F(LineEdits, InsertChannelGoesBeforeTheSelectedLine) {
    Timing().LineStyle[2] = 7;
    Timing().LineMode[2] = 4;
    selection.Lines = Rows({2, 5});
    selection.Sources = Rows({10, 11, GroupRow(29)});
    ExpectSilent(InsertChannelLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{0, 1, 10, 11, 189, 2, 160, 190, 3}));
    EXPECT_EQ(Styles(), (Ints{5, 5, 7, 7, 7, 7, 0, 5, 5}));
    EXPECT_EQ(Modes(), (Ints{0, 0, 4, 4, 4, 4, 0, 0, 0}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{2, 3, 4}));
}

TEST_F(LineEdits, InsertChannelNeedsAChannelAndAPosition) {
    selection.Lines = Rows({1});
    ExpectRefused(InsertChannelLines(*state, selection), "Select channel from 'channels list'", "Error:");
    selection.Sources = Rows({1});
    selection.Lines = Rows({6});
    ExpectRefused(InsertChannelLines(*state, selection),
                  "Select channel(channels list) and position(timing display list)", "Error");
}

TEST_F(LineEdits, InsertChannelIntoAnEmptyList) {
    SetLines({});
    selection.Sources = Rows({8, 9});
    ExpectSilent(InsertChannelLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{8, 9}));
    EXPECT_EQ(Styles(), (Ints{5, 5}));
}

TEST_F(LineEdits, InsertChannelStopsAtAFullList) {
    SetLength(230);
    selection.Lines = Rows({0});
    selection.Sources = Rows({1, 2});
    const EditResult result = InsertChannelLines(*state, selection);
    ExpectMessage(result, "Select channel(channels list) and position(timing display list)", "Error");
    EXPECT_EQ(Timing().TimingLines, 231);
    EXPECT_EQ(Sources().front(), 2);
}

TEST_F(LineEdits, InsertGroupGoesBeforeTheSelectedLine) {
    selection.Lines = Rows({1});
    selection.Groups = Rows({0, 29});
    ExpectSilent(InsertGroupLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{0, 160, 189, 1, 2, 160, 190, 3}));
    EXPECT_EQ(Styles(), (Ints{5, 0, 0, 5, 5, 0, 5, 5}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{1, 2}));
}

TEST_F(LineEdits, InsertGroupIntoAnEmptyList) {
    SetLines({});
    selection.Groups = Rows({4});
    ExpectSilent(InsertGroupLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{164}));
}

TEST_F(LineEdits, InsertGroupNeedsAGroupAndAPosition) {
    ExpectRefused(InsertGroupLines(*state, selection), "Select group from 'groups list'", "Error:");
    selection.Groups = Rows({4});
    ExpectRefused(InsertGroupLines(*state, selection),
                  "Select group(group list) and position(Timing display list)", "Error");
}

TEST_F(LineEdits, InsertGroupGoesUpTo231Lines) {
    SetLength(230);
    selection.Lines = Rows({229});
    selection.Groups = Rows({4, 5});
    const EditResult result = InsertGroupLines(*state, selection);
    ExpectMessage(result, "Select group(group list) and position(Timing display list)", "Error");
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Timing().TimingLines, 231);
    EXPECT_EQ(Sources()[229], 165);
    EXPECT_EQ(Sources()[230], 7);
}

TEST_F(LineEdits, ASpacerIsNumberedByTheirCount) {
    selection.Lines = Rows({0, 3});
    ExpectSilent(InsertSpacerLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{192, 0, 1, 2, 191, 160, 190, 3}));
    EXPECT_EQ(Styles()[0], 5);
    EXPECT_EQ(Modes()[0], 0);
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{0, 4}));
}

TEST_F(LineEdits, ASpacerWithoutAPositionGoesToTheEnd) {
    ExpectSilent(InsertSpacerLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 190, 3, 191}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{6}));
    SetLines({});
    selection.Lines = {};
    ExpectSilent(InsertSpacerLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{190}));
}

TEST_F(LineEdits, The41stSpacerIsRefused) {
    SetLines(Ints(39, 190));
    selection.Lines = Rows({0, 1});
    const EditResult during = InsertSpacerLines(*state, selection);
    ExpectMessage(during, "Maximum number of spacers inserted", "Error");
    EXPECT_TRUE(during.Changed);
    EXPECT_EQ(CountSpacers(*state), 40);
    ExpectRefused(InsertSpacerLines(*state, selection), "Maximum number of spacers inserted.", "Error:");
    ExpectRefused(InsertSpacerAt(*state, 0), "Maximum number of spacers inserted", "Error");
    EXPECT_EQ(Timing().TimingLines, 40);
}

TEST_F(LineEdits, SpacersAreCountedOneBeyondTheLastLine) {
    Timing().LineSource[6] = 200;
    EXPECT_EQ(CountSpacers(*state), 2);
    SetLines(Ints(39, 190));
    Timing().LineSource[39] = 229;
    ExpectRefused(InsertSpacerLines(*state, selection), "Maximum number of spacers inserted.", "Error:");
    SetLines(Ints(231, 190));
    Timing().LineSource[231] = 190;
    EXPECT_EQ(CountSpacers(*state), 232);
}

TEST_F(LineEdits, AfterADeletionTwoSpacersMayCarryOneNumber) {
    SetLines({190, 191, 192});
    selection.Lines = Rows({0});
    DeleteLines(*state, selection);
    EXPECT_EQ(CountSpacers(*state), 2) << "the freed slot is not counted";
    selection.Lines = Rows({0});
    ExpectSilent(InsertSpacerLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{192, 191, 192}));
}

TEST_F(LineEdits, SpacersGoInBelow229Lines) {
    SetLength(228);
    selection.Lines = Rows({0, 1});
    const EditResult result = InsertSpacerLines(*state, selection);
    EXPECT_FALSE(result.HasMessage());
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Timing().TimingLines, 229);
    EXPECT_EQ(Sources()[1], 190);
    EXPECT_FALSE(InsertSpacerLines(*state, selection).Changed);
}

TEST_F(LineEdits, TheViewInsertsASpacerBelow188Lines) {
    SetLength(187);
    ExpectSilent(InsertSpacerAt(*state, 3));
    EXPECT_EQ(Sources()[3], 190);
    const EditResult result = InsertSpacerAt(*state, 3);
    EXPECT_FALSE(result.Changed);
    EXPECT_FALSE(result.HasMessage());
    EXPECT_EQ(Timing().TimingLines, 188);
}

TEST_F(LineEdits, TheViewInsertsAGroupBelow188Lines) {
    SetLength(187);
    ExpectSilent(InsertGroupAt(*state, 3, 12));
    EXPECT_EQ(Sources()[3], 172);
    EXPECT_EQ(Styles()[3], 0);
    EXPECT_FALSE(InsertGroupAt(*state, 3, 13).Changed);
    EXPECT_EQ(Sources()[3], 172);
}

TEST_F(LineEdits, TheViewInsertsInsideTheList) {
    EXPECT_TRUE(InsertGroupAt(*state, -5, 1).Changed);
    EXPECT_TRUE(InsertGroupAt(*state, INT32_MAX, 2).Changed);
    EXPECT_TRUE(InsertSpacerAt(*state, INT32_MIN).Changed);
    EXPECT_EQ(Sources(), (Ints{191, 161, 0, 1, 2, 160, 190, 3, 162}));
    for (const int group : {-1, 30, INT32_MAX}) EXPECT_FALSE(InsertGroupAt(*state, 0, group).Changed);
}

TEST_F(LineEdits, DeleteTakesTheSelectedLinesOut) {
    Timing().LineStyle[5] = 8;
    selection.Lines = Rows({0, 3, 4});
    ExpectSilent(DeleteLines(*state, selection));
    EXPECT_EQ(Sources(), (Ints{1, 2, 3}));
    EXPECT_EQ(Styles(), (Ints{5, 5, 8}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{0}));
}

TEST_F(LineEdits, DeleteOfTheEndSelectsTheLastLineLeft) {
    selection.Lines = Rows({4, 5});
    DeleteLines(*state, selection);
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{3}));
    selection.Lines = FirstRows(4);
    DeleteLines(*state, selection);
    EXPECT_EQ(Timing().TimingLines, 0);
    EXPECT_EQ(RowsOf(selection.Lines), Ints{});
}

TEST_F(LineEdits, DeleteNeedsALine) {
    ExpectRefused(DeleteLines(*state, selection), "Select line in display list to delete.", "Error:");
    selection.Lines = Rows({1, 6});
    ExpectRefused(DeleteLines(*state, selection), "Select line from 'Timing list'", "Error");
    EXPECT_EQ(Timing().TimingLines, 6);
}

TEST_F(LineEdits, MovesCarryStyleAndMode) {
    Timing().LineStyle[2] = 9;
    Timing().LineMode[2] = 5;
    selection.Lines = Rows({1, 2});
    ExpectSilent(MoveLinesUp(*state, selection));
    EXPECT_EQ(Sources(), (Ints{1, 2, 0, 160, 190, 3}));
    EXPECT_EQ(Styles(), (Ints{5, 9, 5, 0, 5, 5}));
    EXPECT_EQ(Modes(), (Ints{0, 5, 0, 0, 0, 0}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{0, 1}));
    ExpectSilent(MoveLinesDown(*state, selection));
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 190, 3}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{1, 2}));
}

TEST_F(LineEdits, MovesStopAtTheEnds) {
    ExpectRefused(MoveLinesUp(*state, selection), "Select line in display list to move.", "Error:");
    ExpectRefused(MoveLinesDown(*state, selection), "Select line in display list to move.", "Error:");
    selection.Lines = Rows({0, 3});
    ExpectRefused(MoveLinesUp(*state, selection), "Selected lines are at top of list", "Error");
    selection.Lines = Rows({3, 5});
    ExpectRefused(MoveLinesDown(*state, selection), "Selected lines are at bottom of list", "Error");
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 190, 3}));
}

TEST_F(LineEdits, TimingStylesGoToEveryLine) {
    for (int style = 5; style <= 11; ++style) {
        Timing().LineMode[3] = 1;
        selection.Lines = FirstRows(6);
        ExpectSilent(SetLineStyle(*state, selection, style));
        EXPECT_EQ(Styles(), Ints(6, style));
        EXPECT_EQ(Modes()[3], 1) << "stays beside a timing style";
    }
}

TEST_F(LineEdits, TextStylesGoToGroupsAndEndTheirExtra) {
    for (int style = 0; style <= 4; ++style) {
        SetLines({0, 160, 190});
        Timing().LineMode[0] = 3;
        Timing().LineStyle[1] = 8;
        Timing().LineMode[1] = 2;
        selection.Lines = FirstRows(3);
        const EditResult result = SetLineStyle(*state, selection, style);
        ExpectMessage(result, kNotGroups, "Warning:");
        EXPECT_TRUE(result.Changed);
        EXPECT_EQ(Styles(), (Ints{5, style, 5}));
        EXPECT_EQ(Modes(), (Ints{3, 0, 0}));
    }
}

TEST_F(LineEdits, ATextStyleOnChannelsAloneChangesNothing) {
    selection.Lines = Rows({0, 1});
    ExpectRefused(SetLineStyle(*state, selection, 0), kNotGroups, "Warning:");
    EXPECT_EQ(Styles()[0], 5);
}

TEST_F(LineEdits, AChannelThatTheModelLacksIsNoGroup) {
    SetLines({100, 189});
    selection.Lines = FirstRows(2);
    ExpectMessage(SetLineStyle(*state, selection, 1), kNotGroups, "Warning:");
    EXPECT_EQ(Styles(), (Ints{5, 1}));
}

TEST_F(LineEdits, StylesThatDoNotExistAreIgnored) {
    selection.Lines = FirstRows(6);
    for (const int style : {-1, 12, 255, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(SetLineStyle(*state, selection, style).Changed);
    }
    EXPECT_FALSE(SetLineStyle(*state, {}, 7).Changed);
}

TEST_F(LineEdits, OverlayAndDifferenceToggleOnGroups) {
    for (const LineExtra extra : {LineExtra::Overlay, LineExtra::Difference}) {
        SetLines({160, 161});
        selection.Lines = FirstRows(2);
        ExpectSilent(ToggleLineMode(*state, selection, extra));
        EXPECT_EQ(Modes(), Ints(2, static_cast<int>(extra)));
        selection.Lines = Rows({1});
        ExpectSilent(ToggleLineMode(*state, selection, extra));
        EXPECT_EQ(Modes(), (Ints{static_cast<int>(extra), 0}));
        SetLines({0, 190, 160});
        selection.Lines = FirstRows(3);
        const EditResult result = ToggleLineMode(*state, selection, extra);
        ExpectMessage(result, kNotGroups, "Warning:");
        EXPECT_TRUE(result.Changed);
        EXPECT_EQ(Modes(), (Ints{0, 0, static_cast<int>(extra)}));
    }
}

TEST_F(LineEdits, WidthAndFrequencyToggleOnChannels) {
    for (const LineExtra extra :
         {LineExtra::PulseWidth, LineExtra::FrequencyFalling, LineExtra::FrequencyRising}) {
        SetLines({160, 190, 8});
        selection.Lines = Rows({2});
        ExpectSilent(ToggleLineMode(*state, selection, extra));
        EXPECT_EQ(Modes(), (Ints{0, 0, static_cast<int>(extra)}));
        selection.Lines = FirstRows(3);
        ExpectMessage(ToggleLineMode(*state, selection, extra), kNotChannels, "Warning:");
        EXPECT_EQ(Modes(), (Ints{0, 0, 0}));
    }
    EXPECT_FALSE(ToggleLineMode(*state, selection, LineExtra::Plain).Changed);
}

TEST_F(LineEdits, AnotherExtraTakesThePlaceOfThePresentOne) {
    Timing().LineMode[0] = 4;
    EXPECT_TRUE(ToggleModeOfLine(*state, 0, LineExtra::PulseWidth).Changed);
    EXPECT_EQ(Modes()[0], 3);
    ExpectRefused(ToggleModeOfLine(*state, 0, LineExtra::Overlay), kNotGroups, "Warning:");
    EXPECT_TRUE(SetStyleOfLine(*state, 3, 2).Changed);
    EXPECT_EQ(Styles()[3], 2);
    for (const int line : {-1, 6, 231, INT32_MAX}) EXPECT_FALSE(SetStyleOfLine(*state, line, 7).Changed);
}

TEST_F(LineEdits, ExpandPutsTheChannelsBehindTheirGroup) {
    SetGroup(0, {9, 4, 30});
    EXPECT_TRUE(ExpandGroup(*state, 3, 0, 0, 0));
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 9, 4, 30, 190, 3}));
    EXPECT_EQ(Styles(), (Ints{5, 5, 5, 0, 5, 5, 5, 5, 5})) << "a group in hex gives plain traces";
}

TEST_F(LineEdits, ExpandCleansStyleAndMode) {
    SetGroup(0, {9});
    for (int style = 0; style <= 11; ++style) {
        for (int mode = 0; mode <= 5; ++mode) {
            SetLines({160});
            EXPECT_TRUE(ExpandGroup(*state, 0, 0, style, mode));
            EXPECT_EQ(Styles()[1], std::max(style, 5));
            EXPECT_EQ(Modes()[1], mode == 1 || mode == 2 ? 0 : mode);
        }
    }
}

TEST_F(LineEdits, ExpandRefusesWhatIsNotThere) {
    for (const int line : {-1, 6, 231, INT32_MAX, INT32_MIN})
        EXPECT_FALSE(ExpandGroup(*state, line, 0, 5, 0));
    for (const int group : {-1, 30, INT32_MAX, INT32_MIN}) EXPECT_FALSE(ExpandGroup(*state, 3, group, 5, 0));
    EXPECT_EQ(Timing().TimingLines, 6);
}

TEST_F(LineEdits, ExpandOfAnEmptyGroupIsGood) {
    for (const int size : {0, -7, INT32_MIN}) {
        state->Groups[0].Size = size;
        EXPECT_TRUE(ExpandGroup(*state, 3, 0, 5, 0));
        EXPECT_EQ(Timing().TimingLines, 6);
    }
}

TEST_F(LineEdits, ExpandLeavesOutChannelsThatTheModelLacks) {
    SetGroup(0, {9, 40, -3, 170, 4});
    EXPECT_TRUE(ExpandGroup(*state, 3, 0, 5, 0));
    EXPECT_EQ(Sources(), (Ints{0, 1, 2, 160, 9, 4, 190, 3}));
}

TEST_F(LineEdits, ExpandAtTheLimitLosesTheLastLines) {
    SetGroup(0, {20, 21, 22});
    SetLength(230);
    Timing().LineSource[0] = 160;
    Timing().LineSource[227] = 11;
    Timing().LineSource[228] = 12;
    Timing().LineSource[229] = 13;
    EXPECT_TRUE(ExpandGroup(*state, 0, 0, 5, 0));
    EXPECT_EQ(Timing().TimingLines, 231);
    EXPECT_EQ(Sources()[3], 22);
    EXPECT_EQ(Sources()[230], 11) << "two lines were pushed out";
}

TEST_F(LineEdits, ExpandOfTheLastLineOfAFullList) {
    SetGroup(0, {20, 21, 22});
    SetLength(231);
    Timing().LineSource[229] = 160;
    Timing().LineSource[230] = 160;
    EXPECT_TRUE(ExpandGroup(*state, 230, 0, 5, 0));
    EXPECT_EQ(Sources()[230], 160);
    EXPECT_TRUE(ExpandGroup(*state, 229, 0, 5, 0));
    EXPECT_EQ(Sources()[230], 20);
    EXPECT_EQ(Timing().TimingLines, 231);
}

TEST_F(LineEdits, ExpandOfASelectionWarnsOfOtherLines) {
    SetLines({160, 0, 161, 190});
    SetGroup(0, {8, 9});
    SetGroup(1, {10});
    Timing().LineStyle[2] = 8;
    Timing().LineMode[2] = 1;
    selection.Lines = FirstRows(4);
    const EditResult result = ExpandGroupLines(*state, selection);
    ExpectMessage(result, "Some lines could not be expanded because they were not groups.", "Warning:");
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Sources(), (Ints{160, 8, 9, 0, 161, 10, 190}));
    EXPECT_EQ(Styles(), (Ints{0, 5, 5, 5, 8, 8, 5}));
    EXPECT_EQ(RowsOf(selection.Lines), (Ints{0, 3, 4, 6})) << "the lines that were selected stay so";
}

TEST_F(LineEdits, ExpandNeedsASelection) {
    ExpectRefused(ExpandGroupLines(*state, selection), "Please select a group from the display list.",
                  "Error:");
}

TEST_F(LineEdits, ASpacerIsNoGroupToExpand) {
    SetLines({190, 229, 230, 100});
    selection.Lines = FirstRows(4);
    ExpectRefused(ExpandGroupLines(*state, selection),
                  "Some lines could not be expanded because they were not groups.", "Warning:");
}

TEST_F(LineEdits, EditFindsTheFirstSuitableLine) {
    SetLines({5, 190, 163, 162, 7});
    EXPECT_EQ(GroupOfSelection(*state, FirstRows(5)).Number, 3);
    EXPECT_EQ(ChannelOfSelection(*state, Rows({1, 2, 4})).Number, 7);
    const LineTarget noGroup = GroupOfSelection(*state, Rows({0, 1}));
    EXPECT_FALSE(noGroup.Number);
    ExpectMessage(noGroup.Refusal, "Select Group to edit.", "Error:");
    const LineTarget noChannel = ChannelOfSelection(*state, {});
    EXPECT_FALSE(noChannel.Number);
    ExpectMessage(noChannel.Refusal, "Select Channel to edit.", "Error:");
}

TEST_F(LineEdits, ListTexts) {
    state->Channels.ChannelName[0] = "CLK";
    state->Groups[0].Name = "Bus";
    EXPECT_EQ(LineRowText(*state, 0), "0 - CLK");
    EXPECT_EQ(LineRowText(*state, 3), "Group - Bus");
    EXPECT_EQ(LineRowText(*state, 4), "Spacer Line");
    EXPECT_EQ(LineRowText(*state, 6), "");
    EXPECT_EQ(SourceRows(*state), 70);
    EXPECT_EQ(SourceRowText(*state, 0), "0 - CLK");
    EXPECT_EQ(SourceRowText(*state, 40), "Group 1 - Bus");
    EXPECT_EQ(SourceRowText(*state, 69), "Group 30 - Group 30");
    EXPECT_EQ(SourceRowText(*state, 70), "");
    EXPECT_EQ(SourceOfRow(*state, 39), 39);
    EXPECT_EQ(SourceOfRow(*state, 69), 189);
    EXPECT_EQ(SourceOfRow(*state, -1), std::nullopt);
}

TEST_F(LineEdits, ColumnsTakeWhatExists) {
    EXPECT_TRUE(SetColumn(*state, 7, {15, 10, 15}).MustRefresh());
    EXPECT_EQ(Timing().TimingDisp[7].Type, 15);
    EXPECT_EQ(Timing().TimingDisp[7].Range, 10);
    EXPECT_EQ(Timing().TimingDisp[7].TrigWord, 15);
    EXPECT_FALSE(SetColumn(*state, 8, {1, 0, 0}).Changed);
    EXPECT_FALSE(SetColumn(*state, -1, {1, 0, 0}).Changed);
    for (const TimingColumn& bad :
         {TimingColumn{16, 0, 0}, TimingColumn{1, 11, 0}, TimingColumn{3, 0, 16}, TimingColumn{3, 0, -1}}) {
        EXPECT_FALSE(SetColumn(*state, 7, bad).Changed);
    }
    EXPECT_EQ(Timing().TimingDisp[7].Type, 15);
}

TEST_F(LineEdits, NumbersFromAFileDoNoHarm) {
    for (const std::int32_t lines : {-4, 0, 231, 232, INT32_MAX, INT32_MIN}) {
        for (const std::int32_t source : {-1, 159, 160, 189, 190, 229, 230, INT32_MAX, INT32_MIN}) {
            Timing().TimingLines = lines;
            Timing().LineSource.fill(source);
            Timing().LineStyle.fill(255);
            Timing().LineMode.fill(-128);
            for (Selection* list : {&selection.Lines, &selection.Sources, &selection.Groups})
                list->fill(true);
            SetLineStyle(*state, selection, 3);
            ToggleLineMode(*state, selection, LineExtra::Overlay);
            ToggleLineMode(*state, selection, LineExtra::PulseWidth);
            MoveLinesUp(*state, selection);
            MoveLinesDown(*state, selection);
            ExpandGroupLines(*state, selection);
            AppendChannelLines(*state, selection);
            InsertChannelLines(*state, selection);
            InsertGroupLines(*state, selection);
            InsertSpacerLines(*state, selection);
            InsertSpacerAt(*state, lines);
            InsertGroupAt(*state, lines, 3);
            GroupOfSelection(*state, selection.Lines);
            for (int line = -1; line < 233; ++line) LineRowText(*state, line);
            DeleteLines(*state, selection);
            EXPECT_LE(LineCount(*state), 231);
            EXPECT_EQ(Timing().TimingLines, LineCount(*state));
        }
    }
}

}  // namespace
}  // namespace zu
