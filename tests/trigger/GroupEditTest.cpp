// A group's cells as one value in four bases.
#include <gtest/gtest.h>
#include <random>

#include "TriggerState.h"
#include "trigger/GroupEdit.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::SetGroup;
using test::TriggerState;

class GroupEdit : public testing::Test {
  protected:
    GroupEdit() : state(TriggerState(7)) { state->Trigger.TrigWordEditGroupBase = kBaseBinary; }

    void UseGroup(int size) {
        GroupRecord& record = state->Groups[0];
        record.Size = size;
        for (int i = 0; i < size; ++i) record.Channels[static_cast<std::size_t>(i)] = i;
    }
    void SetCells(std::string_view cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            SetCharOfChannel(*state, static_cast<int>(cells.size() - 1 - i), 0, cells[i]);
        }
    }
    [[nodiscard]] std::string Cells() const { return GroupCells(*state, 0, 0); }
    TrigWordEditGroup Edit(int base) {
        TrigWordEditGroup edit(*state, 0, 0);
        edit.SelectBase(base);
        return edit;
    }
    /// Text in a base after writing; the cells are in Cells().
    std::string Written(int base, std::string_view text) {
        SetCells(std::string(static_cast<std::size_t>(state->Groups[0].Size), '0'));
        TrigWordEditGroup edit = Edit(base);
        edit.Write(text);
        return edit.Text();
    }
    std::unique_ptr<InstrumentState> state;
};

TEST_F(GroupEdit, ChannelsAreListedLeastSignificantLast) {
    SetGroup(*state, 0, {3, 77, 0});
    SetCharOfChannel(*state, 3, 0, '1');
    SetCharOfChannel(*state, 77, 0, '0');
    EXPECT_EQ(Cells(), "X01");
    EXPECT_EQ(Edit(kBaseBinary).Text(), "X01");
}

TEST_F(GroupEdit, OpensInTheBaseThatWasKept) {
    UseGroup(8);
    SetCells("10100101");
    state->Trigger.TrigWordEditGroupBase = kBaseHex;
    TrigWordEditGroup edit(*state, 0, 0);
    EXPECT_EQ(edit.Text(), "A5");
    edit.SelectBase(kBaseDecimal);
    EXPECT_EQ(edit.Text(), "165");
    EXPECT_EQ(state->Trigger.TrigWordEditGroupBase, kBaseHex) << "kept only when the dialog closes with Ok";
    edit.Accept();
    EXPECT_EQ(state->Trigger.TrigWordEditGroupBase, kBaseDecimal);
}

TEST_F(GroupEdit, FieldLimits) {
    EXPECT_EQ(GroupFieldLimit(kBaseHex, 6), 2);
    EXPECT_EQ(GroupFieldLimit(kBaseHex, 8), 2);
    EXPECT_EQ(GroupFieldLimit(kBaseBinary, 6), 6);
    EXPECT_EQ(GroupFieldLimit(kBaseAscii, 9), 2);
    EXPECT_EQ(GroupFieldLimit(kBaseAscii, 8), 1);
    EXPECT_EQ(GroupFieldLimit(kBaseDecimal, 7), 3);
    EXPECT_EQ(GroupFieldLimit(kBaseDecimal, 32), 11);
    for (int base = 0; base < 4; ++base) EXPECT_EQ(GroupFieldLimit(base, 0), 0);
}

TEST_F(GroupEdit, HexShowsSixChannelsAsTwoDigits) {
    UseGroup(6);
    SetCells("101111");
    EXPECT_EQ(Edit(kBaseHex).Text(), "2F");
    UseGroup(8);
    SetCells("XXXX0011");
    EXPECT_EQ(Edit(kBaseHex).Text(), "X3");
}

TEST_F(GroupEdit, AMixedDigitFallsBackToBinary) {
    UseGroup(8);
    SetCells("0011X011");
    TrigWordEditGroup edit = Edit(kBaseHex);
    EXPECT_EQ(edit.Text(), "0011X011");
    EXPECT_EQ(edit.Base(), kBaseBinary);
}

TEST_F(GroupEdit, SixOpenChannelsMixWithThePadding) {
    UseGroup(6);
    TrigWordEditGroup edit = Edit(kBaseHex);
    EXPECT_EQ(edit.Text(), "XXXXXX");
    EXPECT_EQ(edit.Base(), kBaseBinary);
    SetCells("00XXXX");
    EXPECT_EQ(Edit(kBaseHex).Text(), "0X");
}

TEST_F(GroupEdit, AnyOpenChannelTurnsAsciiAndDecimalToBinary) {
    UseGroup(8);
    SetCells("0100000X");
    for (const int base : {kBaseAscii, kBaseDecimal}) {
        TrigWordEditGroup edit = Edit(base);
        EXPECT_EQ(edit.Text(), "0100000X");
        EXPECT_EQ(edit.Base(), kBaseBinary);
    }
}

TEST_F(GroupEdit, AsciiShowsBytesAndABlankForZero) {
    UseGroup(20);
    SetCells("01010000000001000010");
    EXPECT_EQ(Edit(kBaseAscii).Text(), "\x05 B");
}

TEST_F(GroupEdit, DecimalShowsTheLowest32Channels) {
    UseGroup(40);
    SetCells("1111111111111111111111111111111111111110");
    EXPECT_EQ(Edit(kBaseDecimal).Text(), "4294967294");
}

TEST_F(GroupEdit, HexWritesFromTheLeft) {
    UseGroup(6);
    EXPECT_EQ(Written(kBaseHex, "2a"), "2A");
    EXPECT_EQ(Cells(), "101010");
    UseGroup(8);
    EXPECT_EQ(Written(kBaseHex, "x5"), "X5");
    EXPECT_EQ(Cells(), "XXXX0101");
}

TEST_F(GroupEdit, HexPadsAShorterTextWithZeros) {
    UseGroup(12);
    EXPECT_EQ(Written(kBaseHex, "7"), "007");
    EXPECT_EQ(Written(kBaseHex, ""), "000");
}

TEST_F(GroupEdit, HexCutsWhatTheGroupCannotHold) {
    UseGroup(6);
    EXPECT_EQ(Written(kBaseHex, "FF"), "3F");
    UseGroup(1);
    EXPECT_EQ(Written(kBaseHex, "8"), "1");
    UseGroup(31);
    EXPECT_EQ(Written(kBaseHex, "FFFFFFFF"), "7FFFFFFF");
    UseGroup(8);
    EXPECT_EQ(Written(kBaseHex, "123"), "12") << "the field holds two characters";
}

TEST_F(GroupEdit, HexWithADontCareSkipsTheRangeTest) {
    UseGroup(6);
    EXPECT_EQ(Written(kBaseHex, "FX"), "3X") << "of the first digit two bits fit";
    EXPECT_EQ(Cells(), "11XXXX");
    EXPECT_EQ(Written(kBaseHex, "XF"), "XX1111") << "a mixed digit: shown in binary";
}

TEST_F(GroupEdit, GroupsOf32AndMoreHaveNoRangeTest) {
    UseGroup(32);
    EXPECT_EQ(Written(kBaseHex, "FFFFFFFF"), "FFFFFFFF");
    UseGroup(36);
    EXPECT_EQ(Written(kBaseHex, "FEDCBA987"), "FEDCBA987");
    UseGroup(33);
    EXPECT_EQ(Written(kBaseHex, "F00000001"), "100000001") << "one bit of the first digit fits";
}

TEST_F(GroupEdit, HexLeavesTheCellsOfAStrangeCharacter) {
    UseGroup(8);
    EXPECT_EQ(Written(kBaseHex, "?7"), "07");
}

TEST_F(GroupEdit, AsciiWritesEightBitsACharacter) {
    UseGroup(16);
    EXPECT_EQ(Written(kBaseAscii, "Az"), "Az");
    EXPECT_EQ(Cells(), "0100000101111010");
    UseGroup(12);
    EXPECT_EQ(Written(kBaseAscii, "Az"), "\x0Fz") << "four bits hold at most 15";
    EXPECT_EQ(Cells(), "111101111010");
}

TEST_F(GroupEdit, AsciiPadsLikeHexAndKnowsTheDontCare) {
    UseGroup(16);
    EXPECT_EQ(Written(kBaseAscii, "A"), "0A");
    Written(kBaseAscii, "xA");
    EXPECT_EQ(Cells(), "XXXXXXXX01000001");
}

TEST_F(GroupEdit, DecimalWritesTheBinaryForm) {
    UseGroup(10);
    EXPECT_EQ(Written(kBaseDecimal, "513"), "513");
    EXPECT_EQ(Cells(), "1000000001");
    EXPECT_EQ(Written(kBaseDecimal, "9999"), "1023") << "above the largest value";
    EXPECT_EQ(Written(kBaseDecimal, ""), "0");
}

TEST_F(GroupEdit, DecimalOfLargeGroups) {
    UseGroup(32);
    EXPECT_EQ(Written(kBaseDecimal, "4294967295"), "4294967295");
    EXPECT_EQ(Written(kBaseDecimal, "99999999999"), "4294967295");
    UseGroup(36);
    EXPECT_EQ(Written(kBaseDecimal, "7"), "7");
    EXPECT_EQ(Cells(), std::string(33, '0') + "111");
}

TEST_F(GroupEdit, BinaryCopiesAndSetsTheBase) {
    UseGroup(6);
    EXPECT_EQ(Written(kBaseBinary, "1x0X01"), "1X0X01");
    EXPECT_EQ(Written(kBaseBinary, "11"), "110000") << "the channels behind stay";
    EXPECT_EQ(Written(kBaseBinary, "1?1111000"), "101111")
        << "strange characters and the surplus are dropped";
    TrigWordEditGroup edit = Edit(kBaseBinary);
    edit.Write("000000");
    EXPECT_EQ(edit.Base(), kBaseBinary);
}

TEST_F(GroupEdit, AWriteIsAManualChange) {
    UseGroup(4);
    state->Trigger.TrigLevelsMatchWizard = 1;
    TrigWordEditGroup edit = Edit(kBaseHex);
    EXPECT_EQ(state->Trigger.TrigLevelsMatchWizard, 1);
    edit.Write("3");
    EXPECT_EQ(state->Trigger.TrigLevelsMatchWizard, 0);
}

TEST_F(GroupEdit, OtherGroupsAndWordsCanBeChosen) {
    SetGroup(*state, 3, {5, 6});
    SetCharOfChannel(*state, 5, 7, '1');
    TrigWordEditGroup edit = Edit(kBaseBinary);
    edit.SelectGroup(3);
    edit.SelectWord(7);
    EXPECT_EQ(edit.Text(), "X1");
    EXPECT_EQ(edit.Group(), 3);
    EXPECT_EQ(edit.Word(), 7);
    EXPECT_EQ(edit.Limit(), 2);
    edit.Write("01");
    EXPECT_EQ(CharOfChannel(*state, 6, 7), '0');
}

TEST_F(GroupEdit, NumbersFromAFileDoNoHarm) {
    state->Groups[0].Size = 5000;
    state->Groups[0].Channels.fill(-7);
    state->Groups[1].Size = -3;
    for (const int group : {0, 1, -1, 30, INT32_MAX}) {
        for (const int base : {0, 1, 2, 3, 77, -128}) {
            for (const int word : {0, -1, 16}) {
                TrigWordEditGroup edit(*state, group, word);
                edit.SelectBase(base);
                edit.Write("1F0Xx9zA");
                EXPECT_LE(edit.Text().size(), 160U);
            }
        }
    }
    EXPECT_EQ(GroupCells(*state, 0, 0), std::string(160, 'X'));
}

TEST_F(GroupEdit, WhatIsShownWritesBackTheSameCells) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        const int size = 1 + static_cast<int>(random() % 40);
        const int base = static_cast<int>(random() % 2) * 3;  // hex or decimal
        UseGroup(size);
        std::string cells;
        for (int i = 0; i < size; ++i) cells += "01X"[random() % (base == kBaseHex ? 3 : 2)];
        if (base == kBaseDecimal && size > 32)
            cells.replace(0, static_cast<std::size_t>(size - 32), static_cast<std::size_t>(size - 32), '0');
        SetCells(cells);
        TrigWordEditGroup edit = Edit(base);
        const std::string shown = edit.Text();
        edit.Write(shown);
        EXPECT_EQ(Cells(), cells) << "size " << size << " shown " << shown;
        EXPECT_EQ(edit.Text(), shown);
    }
}

}  // namespace
}  // namespace zu
