// The edits of the Group setup: a group's channels, name, mode and flags.
#include <gtest/gtest.h>

#include "EditState.h"
#include "display/GroupEdits.h"
#include "display/Lines.h"

namespace zu {
namespace {

using test::EditState;
using test::FirstRows;
using test::Rows;
using test::RowsOf;
using Ints = std::vector<int>;

constexpr const char* kFull = "Group full. No room for additional channels";
constexpr const char* kI2cText =
    "Select any 2 channels. The first one is for I2C clock and the second one is for I2C data.";

class GroupEdits : public testing::Test {
  protected:
    GroupEdits() : state(EditState(test::kRow40)) { Fill({0, 1, 2, 3, 4, 5, 6, 7}); }

    GroupRecord& Group(int number = kGroup) { return state->Groups.at(static_cast<std::size_t>(number)); }
    void Fill(const Ints& channels) {
        Group().Size = 0;
        for (const int channel : channels)
            Group().Channels.at(static_cast<std::size_t>(Group().Size++)) = channel;
    }
    /// `size` channels, all of them number 9.
    void FillWithNines(int size) { Fill(Ints(static_cast<std::size_t>(size), 9)); }
    Ints Channels() { return {Group().Channels.begin(), Group().Channels.begin() + GroupSize(Group())}; }

    static constexpr int kGroup = 4;
    std::unique_ptr<InstrumentState> state;
    GroupSelection selection;
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

TEST_F(GroupEdits, InsertPutsEachChannelAtItsPosition) {
    selection.Channels = Rows({20, 21, 30});
    selection.Positions = Rows({0, 3, 7});
    ExpectSilent(InsertInGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{20, 0, 1, 2, 21, 3, 4, 5, 6, 30, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{0, 4, 9})) << "the inserted lines are marked";
    EXPECT_EQ(RowsOf(selection.Channels), (Ints{20, 21, 30}));
}

TEST_F(GroupEdits, InsertStopsWherePositionsRunOut) {
    selection.Channels = Rows({20, 21, 22});
    selection.Positions = Rows({2});
    ExpectSilent(InsertInGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{0, 1, 20, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{2}));
}

TEST_F(GroupEdits, InsertLeavesPositionsThatNoChannelTook) {
    selection.Channels = Rows({20});
    selection.Positions = Rows({1, 5});
    ExpectSilent(InsertInGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{0, 20, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{1}));
}

TEST_F(GroupEdits, AnEmptyGroupTakesInsertionsFromItsStart) {
    Fill({});
    selection.Channels = Rows({5, 17, 39});
    ExpectSilent(InsertInGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{5, 17, 39}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{0, 1, 2}));
}

TEST_F(GroupEdits, InsertNeedsAChannelAndAPosition) {
    const EditResult noChannel = InsertInGroup(*state, kGroup, selection);
    ExpectMessage(noChannel, "Select channel from 'channel list'", "Error:");
    EXPECT_FALSE(noChannel.Changed);
    selection.Channels = Rows({3});
    selection.Positions = Rows({8});
    ExpectMessage(InsertInGroup(*state, kGroup, selection), "Select position from 'group list'", "Error:");
    EXPECT_EQ(Channels(), (Ints{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(GroupEdits, AGroupOf31RefusesInsertButAcceptsOneAppend) {
    FillWithNines(31);
    selection.Channels = Rows({3});
    selection.Positions = Rows({0});
    const EditResult refused = InsertInGroup(*state, kGroup, selection);
    ExpectMessage(refused, "Select channel (channel window) and position (group window)", "Error");
    EXPECT_FALSE(refused.Changed);
    EXPECT_EQ(Group().Size, 31);
    ExpectSilent(AppendToGroup(*state, kGroup, selection));
    EXPECT_EQ(Group().Size, 32);
    EXPECT_EQ(Channels().back(), 3);
}

TEST_F(GroupEdits, AGroupOf32RefusesBothAsFull) {
    FillWithNines(32);
    selection.Channels = Rows({3});
    selection.Positions = Rows({0});
    ExpectMessage(InsertInGroup(*state, kGroup, selection), kFull, "Error");
    ExpectMessage(AppendToGroup(*state, kGroup, selection), kFull, "Error");
    EXPECT_EQ(Group().Size, 32);
}

TEST_F(GroupEdits, InsertFillsUpTo31AndKeepsWhatFitted) {
    FillWithNines(29);
    selection.Channels = Rows({1, 2, 3});
    selection.Positions = Rows({0, 1, 2});
    const EditResult result = InsertInGroup(*state, kGroup, selection);
    ExpectMessage(result, "Select channel (channel window) and position (group window)", "Error");
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Group().Size, 31);
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{0, 2}));
}

TEST_F(GroupEdits, AppendGoesToTheEnd) {
    selection.Channels = Rows({12, 9});
    ExpectSilent(AppendToGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{0, 1, 2, 3, 4, 5, 6, 7, 9, 12}));
    EXPECT_EQ(RowsOf(selection.Channels), (Ints{9, 12}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{8, 9}));
}

TEST_F(GroupEdits, AppendStopsAt32) {
    FillWithNines(30);
    selection.Channels = Rows({1, 2, 3});
    const EditResult result = AppendToGroup(*state, kGroup, selection);
    ExpectMessage(result, kFull, "Error");
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Group().Size, 32);
    EXPECT_EQ(Channels().back(), 2);
}

TEST_F(GroupEdits, AppendNeedsAChannel) {
    ExpectMessage(AppendToGroup(*state, kGroup, selection), "Select channel from 'channel list'", "Error:");
    ExpectMessage(AppendToGroupAndSelectNext(*state, kGroup, selection), "Select channel from 'channel list'",
                  "Error:");
}

TEST_F(GroupEdits, AppendRefusesAChannelThatTheModelLacks) {
    selection.Channels = Rows({39, 40});
    const EditResult result = AppendToGroup(*state, kGroup, selection);
    ExpectMessage(result, "Select channel (channel window)", "Error");
    EXPECT_EQ(Channels(), (Ints{0, 1, 2, 3, 4, 5, 6, 7, 39}));
}

TEST_F(GroupEdits, AppendAndNextMovesTheChannelSelection) {
    selection.Channels = Rows({9, 11});
    ExpectSilent(AppendToGroupAndSelectNext(*state, kGroup, selection));
    EXPECT_EQ(RowsOf(selection.Channels), (Ints{12}));
}

TEST_F(GroupEdits, AppendAndNextStaysOnTheHighestChannel) {
    selection.Channels = Rows({38, 39});
    ExpectSilent(AppendToGroupAndSelectNext(*state, kGroup, selection));
    EXPECT_EQ(RowsOf(selection.Channels), (Ints{38, 39}));
}

TEST_F(GroupEdits, AppendAndNextStaysWhenNothingWasAppended) {
    FillWithNines(32);
    selection.Channels = Rows({2});
    ExpectMessage(AppendToGroupAndSelectNext(*state, kGroup, selection), kFull, "Error");
    EXPECT_EQ(RowsOf(selection.Channels), (Ints{2}));
}

TEST_F(GroupEdits, DeleteTakesTheSelectedLinesOut) {
    selection.Positions = Rows({0, 2, 3});
    ExpectSilent(DeleteFromGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{1, 4, 5, 6, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{0, 2, 3})) << "rows that still exist stay selected";
}

TEST_F(GroupEdits, DeleteOfTheEndSelectsTheLastLineLeft) {
    selection.Positions = Rows({6, 7});
    ExpectSilent(DeleteFromGroup(*state, kGroup, selection));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{5}));
}

TEST_F(GroupEdits, DeleteOfAllSelectsNothing) {
    selection.Positions = FirstRows(8);
    ExpectSilent(DeleteFromGroup(*state, kGroup, selection));
    EXPECT_EQ(Group().Size, 0);
    EXPECT_EQ(RowsOf(selection.Positions), Ints{});
}

TEST_F(GroupEdits, DeleteNeedsALine) {
    ExpectMessage(DeleteFromGroup(*state, kGroup, selection), "Select channel from 'group list.'", "Error:");
    EXPECT_EQ(Group().Size, 8);
}

TEST_F(GroupEdits, ReverseSwapsTheSelectedLines) {
    selection.Positions = Rows({1, 2, 5, 7});
    ExpectSilent(ReverseGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{0, 7, 5, 3, 4, 2, 6, 1}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{1, 2, 5, 7}));
    selection.Positions = Rows({0, 3, 4});
    ReverseGroup(*state, kGroup, selection);
    EXPECT_EQ(Channels(), (Ints{4, 7, 5, 3, 0, 2, 6, 1})) << "of an odd number the middle stays";
}

TEST_F(GroupEdits, ReverseTakesTheWholeGroupWithLessThanTwoSelected) {
    ExpectSilent(ReverseGroup(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{7, 6, 5, 4, 3, 2, 1, 0}));
    selection.Positions = Rows({1});
    ReverseGroup(*state, kGroup, selection);
    EXPECT_EQ(Channels(), (Ints{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{6})) << "the line stays selected";
}

TEST_F(GroupEdits, MoveUpKeepsTheOrderOfTheSelected) {
    selection.Positions = Rows({2, 3, 6});
    ExpectSilent(MoveGroupUp(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{0, 2, 3, 1, 4, 6, 5, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{1, 2, 5}));
}

TEST_F(GroupEdits, MoveDownKeepsTheOrderOfTheSelected) {
    selection.Positions = Rows({0, 1, 5});
    ExpectSilent(MoveGroupDown(*state, kGroup, selection));
    EXPECT_EQ(Channels(), (Ints{2, 0, 1, 3, 4, 6, 5, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{1, 2, 6}));
}

TEST_F(GroupEdits, MoveStopsAtTheEnds) {
    selection.Positions = Rows({0, 4});
    ExpectMessage(MoveGroupUp(*state, kGroup, selection), "Selected lines are at top of list", "Error");
    selection.Positions = Rows({4, 7});
    ExpectMessage(MoveGroupDown(*state, kGroup, selection), "Selected lines are at bottom of list", "Error");
    EXPECT_EQ(Channels(), (Ints{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{4, 7}));
}

TEST_F(GroupEdits, MoveNeedsALine) {
    ExpectMessage(MoveGroupUp(*state, kGroup, selection), "Select line in display list to move.", "Error:");
    ExpectMessage(MoveGroupDown(*state, kGroup, selection), "Select line in display list to move.", "Error:");
}

TEST_F(GroupEdits, ANameHas14Characters) {
    ExpectSilent(RenameGroup(*state, kGroup, "Address bus 0-15"));
    EXPECT_EQ(Group().Name, "Address bus 0-");
    EXPECT_FALSE(RenameGroup(*state, kGroup, "Address bus 0-15").Changed);
}

TEST_F(GroupEdits, ANameFromAFileMayHave15) {
    Group().Name = "123456789012345";
    EXPECT_EQ(GroupRowText(*state, kGroup), "5 - 123456789012345");
}

TEST_F(GroupEdits, ModesAreListedInTheirOrder) {
    const std::vector<std::string> texts(kGroupModes.begin(), kGroupModes.end());
    EXPECT_EQ(texts, (std::vector<std::string>{"Normal", "I2C", "Microwire", "SPI(Mode0)", "SPI(Mode1)",
                                               "SPI(Mode2)", "SPI(Mode3)"}));
}

TEST_F(GroupEdits, I2cTakesTheRoleFromMicrowire) {
    SetGroupMode(*state, 2, 2, selection);
    ASSERT_EQ(Group(2).Mode, 2);
    selection.Positions = Rows({1, 4});
    const EditResult result = SetGroupMode(*state, 5, 1, selection);
    ExpectMessage(result, kI2cText, "I2C Group Enabled");
    EXPECT_TRUE(result.Changed);
    EXPECT_EQ(Group(2).Mode, 0);
    EXPECT_EQ(Group(5).Mode, 1);
    EXPECT_EQ(Group(5).Size, 2);
    EXPECT_EQ(state->Serial.SerialMode, 1);
    EXPECT_EQ(state->Serial.SerialGroup, 5);
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{1})) << "only the two lines are left";
}

TEST_F(GroupEdits, MicrowireHasFourChannels) {
    SetGroupMode(*state, 2, 1, selection);
    const EditResult result = SetGroupMode(*state, kGroup, 2, selection);
    ExpectMessage(result, "Bit 0=clk, Bit 1=DI, Bit 2=DO, Bit 3=CS ", "Microwire Enabled");
    EXPECT_EQ(Group(2).Mode, 0);
    EXPECT_EQ(Group().Mode, 2);
    EXPECT_EQ(Group().Size, 4);
    EXPECT_EQ(state->Serial.SerialMode, 2);
    EXPECT_EQ(state->Serial.SerialGroup, kGroup);
}

TEST_F(GroupEdits, EachSpiModeSetsFourChannelsAndDecodes) {
    for (int mode = 3; mode <= 6; ++mode) {
        Group().Size = 9;
        const EditResult result = SetGroupMode(*state, kGroup, mode, selection);
        ExpectMessage(result, "Bit 0=clk, Bit 1=SI, Bit 2=SO, Bit 3=CS ", "SPI Enabled");
        EXPECT_TRUE(result.DecodeSpi);
        EXPECT_EQ(Group().Mode, mode);
        EXPECT_EQ(Group().Size, 4);
    }
    EXPECT_EQ(state->Serial.SerialMode, 0);
}

TEST_F(GroupEdits, TheFourthSpiGroupIsRefusedAndEndsNormal) {
    for (const int group : {0, 1, 2}) SetGroupMode(*state, group, 3, selection);
    for (const int before : {0, 1, 2}) {
        if (before != 0) SetGroupMode(*state, kGroup, before, selection);
        const EditResult result = SetGroupMode(*state, kGroup, 3, selection);
        ExpectMessage(result, "The software supports a maximum of 3 SPI groups.", "Error:");
        EXPECT_TRUE(result.MustRefresh());
        EXPECT_EQ(Group().Mode, 0) << "was " << before;
    }
    EXPECT_EQ(CountSpiGroups(*state), 3);
}

TEST_F(GroupEdits, AnSpiGroupThatIsRefusedLeavesItsSlotToTheOthers) {
    for (const int group : {0, 1, 2}) SetGroupMode(*state, group, 3, selection);
    EXPECT_FALSE(SetGroupMode(*state, kGroup, 3, selection).DecodeSpi) << "nothing has moved";
    Group().Mode = 4;  // a file may bring a fourth
    EXPECT_TRUE(SetGroupMode(*state, kGroup, 3, selection).DecodeSpi);
}

TEST_F(GroupEdits, AnSpiGroupChangesItsModeBesideTwoOthers) {
    for (const int group : {0, 1, kGroup}) SetGroupMode(*state, group, 3, selection);
    SetGroupMode(*state, kGroup, 6, selection);
    EXPECT_EQ(Group().Mode, 6);
    EXPECT_EQ(CountSpiGroups(*state), 3);
}

TEST_F(GroupEdits, NormalLeavesAnSpiGroupAsItIs) {
    for (const int group : {0, kGroup}) {  // also the group that the number 0 of "no serial group" names
        SetGroupMode(*state, group, 3, selection);
        const EditResult result = SetGroupMode(*state, group, 0, selection);
        EXPECT_FALSE(result.HasMessage());
        EXPECT_FALSE(result.Changed);
        EXPECT_EQ(Group(group).Mode, 3);
    }
}

TEST_F(GroupEdits, NormalEndsTheSerialRole) {
    SetGroupMode(*state, kGroup, 1, selection);
    SetGroupMode(*state, 2, 0, selection);
    EXPECT_EQ(state->Serial.SerialMode, 1) << "another group's choice does nothing";
    ExpectSilent(SetGroupMode(*state, kGroup, 0, selection));
    EXPECT_EQ(Group().Mode, 0);
    EXPECT_EQ(state->Serial.SerialMode, 0);
    EXPECT_EQ(Group().Size, 2) << "the size stays";
}

TEST_F(GroupEdits, SpiOnTheSerialGroupLeavesTheSerialRole) {
    SetGroupMode(*state, kGroup, 1, selection);
    SetGroupMode(*state, kGroup, 4, selection);
    EXPECT_EQ(state->Serial.SerialMode, 1);
    EXPECT_EQ(state->Serial.SerialGroup, kGroup);
    EXPECT_EQ(Group().Mode, 4);
}

TEST_F(GroupEdits, AnSpiGroupThatBecomesSerialIsDecodedAway) {
    SetGroupMode(*state, kGroup, 3, selection);
    EXPECT_TRUE(SetGroupMode(*state, kGroup, 2, selection).DecodeSpi);
    EXPECT_FALSE(IsSpiGroup(*state, kGroup));
}

TEST_F(GroupEdits, AStrangeModeIsLeftAlone) {
    for (const int mode : {-1, 7, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(SetGroupMode(*state, kGroup, mode, selection).Changed);
    }
    EXPECT_EQ(Group().Mode, 0);
}

TEST_F(GroupEdits, TheCursorOfAFullSerialGroupStaysAtItsStart) {
    SetGroupMode(*state, kGroup, 2, selection);
    Fill({0, 1, 2});
    selection.Channels = Rows({10});
    AppendToGroup(*state, kGroup, selection);
    EXPECT_EQ(Channels(), (Ints{0, 1, 2, 10}));
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{0}));
    selection.Positions = Rows({2});
    InsertInGroup(*state, kGroup, selection);
    EXPECT_EQ(Channels(), (Ints{0, 1, 10, 2, 10})) << "the list is edited like any other";
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{0}));
    Fill({0});
    selection.Positions = {};
    AppendToGroup(*state, kGroup, selection);
    EXPECT_EQ(RowsOf(selection.Positions), (Ints{1})) << "not full yet";
}

TEST_F(GroupEdits, FlagsAreStored) {
    EXPECT_TRUE(SetTwosComplement(*state, kGroup, true).Changed);
    EXPECT_FALSE(SetTwosComplement(*state, kGroup, true).Changed);
    EXPECT_EQ(Group().TwosComplement, 1);
    EXPECT_TRUE(SetCsActiveHigh(*state, kGroup, true).DecodeSpi);
    EXPECT_FALSE(SetCsActiveHigh(*state, kGroup, true).DecodeSpi) << "nothing changed";
    EXPECT_EQ(Group().CsActiveHigh, 1);
    EXPECT_TRUE(SetBitOrder(*state, kGroup, true).DecodeSpi);
    EXPECT_EQ(Group().BitOrder, 1);
    EXPECT_TRUE(SetBitOrder(*state, kGroup, false).DecodeSpi);
    EXPECT_EQ(Group().BitOrder, 0);
    EXPECT_TRUE(SetGroupColor(*state, kGroup, MakeRgb(1, 2, 3)).MustRefresh());
    EXPECT_EQ(Group().Color, 0x030201U);
}

TEST_F(GroupEdits, NewChannelsOfAnSpiGroupAreDecoded) {
    selection.Channels = Rows({10});
    EXPECT_FALSE(AppendToGroup(*state, kGroup, selection).DecodeSpi);
    SetGroupMode(*state, kGroup, 3, selection);
    EXPECT_TRUE(AppendToGroup(*state, kGroup, selection).DecodeSpi);
    selection.Positions = Rows({1});
    EXPECT_TRUE(MoveGroupUp(*state, kGroup, selection).DecodeSpi);
    EXPECT_FALSE(MoveGroupUp(*state, kGroup, selection).DecodeSpi) << "refused at the top";
}

TEST_F(GroupEdits, LeavingDecodesTheSerialGroup) {
    EXPECT_FALSE(LeaveGroupSetup(*state).DecodeSerial);
    for (const int mode : {1, 2}) {
        SetGroupMode(*state, kGroup, mode, selection);
        EXPECT_TRUE(LeaveGroupSetup(*state).DecodeSerial);
    }
}

TEST_F(GroupEdits, TheWidthsOfTheStatelistFollow) {
    state->StateList.ScreenL[0] = kGroup;
    state->StateList.ScreenF[0] = 1;
    RenameGroup(*state, kGroup, "G");
    selection.Channels = Rows({10, 11});
    AppendToGroup(*state, kGroup, selection);
    EXPECT_EQ(state->StateList.ScreenWidth[0], 11);
}

TEST_F(GroupEdits, ListTexts) {
    RenameGroup(*state, kGroup, "Bus");
    state->Channels.ChannelName[7] = "A7";
    state->Channels.ChannelInvert[7] = 1;
    EXPECT_EQ(ChannelRowText(*state, 7), "7 - A7");
    EXPECT_EQ(GroupRowText(*state, kGroup), "5 - Bus");
    EXPECT_EQ(PositionRowText(*state, kGroup, 7), "A7 ");
    EXPECT_EQ(GroupSizeText(*state, kGroup), "8 ");
    EXPECT_EQ(PositionRowText(*state, kGroup, 8), "");
    EXPECT_EQ(ChannelRowText(*state, 160), "");
    EXPECT_EQ(GroupRowText(*state, 30), "");
    EXPECT_EQ(GroupSizeText(*state, -1), "");
}

TEST_F(GroupEdits, NumberToEdit) {
    EXPECT_EQ(GroupToEdit(0), 0);
    EXPECT_EQ(GroupToEdit(29), 29);
    for (const int number : {-1, 30, 31, INT32_MAX, INT32_MIN}) EXPECT_EQ(GroupToEdit(number), 0);
}

TEST_F(GroupEdits, NumbersFromAFileDoNoHarm) {
    for (const std::int32_t size : {-5, 33, 160, 161, INT32_MAX, INT32_MIN}) {
        for (const int group : {-1, 0, 29, 30, INT32_MAX}) {
            if (group >= 0 && group < kGroupCount) {
                Group(group).Size = size;
                Group(group).Channels.fill(size);
            }
            selection.Channels.fill(true);
            selection.Positions.fill(true);
            InsertInGroup(*state, group, selection);
            AppendToGroupAndSelectNext(*state, group, selection);
            ReverseGroup(*state, group, selection);
            MoveGroupUp(*state, group, selection);
            MoveGroupDown(*state, group, selection);
            PositionRowText(*state, group, 0);
            for (int mode = -1; mode < 8; ++mode) SetGroupMode(*state, group, mode, selection);
            selection.Positions.fill(true);
            DeleteFromGroup(*state, group, selection);
        }
    }
    EXPECT_EQ(Group(29).Size, 0);
}

TEST_F(GroupEdits, ALargeGroupFromAFileIsFull) {
    FillWithNines(160);
    selection.Channels = Rows({1});
    selection.Positions = Rows({159});
    ExpectMessage(InsertInGroup(*state, kGroup, selection), kFull, "Error");
    ExpectMessage(AppendToGroup(*state, kGroup, selection), kFull, "Error");
    selection.Positions = FirstRows(130);
    ExpectSilent(DeleteFromGroup(*state, kGroup, selection));
    EXPECT_EQ(Group().Size, 30);
}

}  // namespace
}  // namespace zu
