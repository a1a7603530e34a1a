// The channel dialog's operations: names in copies, inversion and colour at once.
#include <gtest/gtest.h>

#include "EditState.h"
#include "display/ChannelEdits.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::EditState;

std::vector<std::string> Pages(int row, int series) {
    const auto state = EditState(row, series);
    const ChannelNameEdit edit(*state);
    std::vector<std::string> pages;
    for (int page = 0; page < edit.PageCount(); ++page) pages.push_back(edit.PageText(page));
    return pages;
}

TEST(ChannelEdits, PagesOfThePodFamilies) {
    EXPECT_EQ(Pages(test::kRow40, 2), (std::vector<std::string>{"1A", "2A", "3A", "4A", "5A"}));
    EXPECT_EQ(Pages(2, 0),
              (std::vector<std::string>{"1A", "2A", "3A", "4A", "5A", "1B", "2B", "3B", "4B", "5B"}));
    const auto all = Pages(test::kRow160, 2);
    ASSERT_EQ(all.size(), 20U);
    EXPECT_EQ(all.back(), "5D");
}

TEST(ChannelEdits, PagesOfTheNumberedFamilies) {
    EXPECT_EQ(Pages(test::kRow24, 1), (std::vector<std::string>{"0..7", "8..15", "16..23"}));
    EXPECT_EQ(Pages(test::kRow32, 5), (std::vector<std::string>{"0..7", "8..15", "16..23", "24..31"}));
    EXPECT_EQ(Pages(24, 4).size(), 8U);
    EXPECT_EQ(Pages(18, 3).front(), "0..7");
}

TEST(ChannelEdits, NamesAreStoredByAcceptOnly) {
    const auto state = EditState(test::kRow40);
    ChannelNameEdit edit(*state);
    edit.SetName(3, "SDA");
    EXPECT_EQ(edit.Name(3), "SDA");
    EXPECT_EQ(state->Channels.ChannelName[3], "Pod 1A Ch 3");
    EXPECT_TRUE(edit.Accept().MustRefresh());
    EXPECT_EQ(state->Channels.ChannelName[3], "SDA");
    EXPECT_EQ(state->Channels.ChannelName[4], "Pod 1A Ch 4");
}

TEST(ChannelEdits, AcceptCutsEveryNameTo19) {
    const auto state = EditState(test::kRow40);
    const std::string fromFile(230, 'n');
    state->Channels.ChannelName[100] = fromFile;
    ChannelNameEdit edit(*state);
    edit.SetName(0, "12345678901234567890");
    EXPECT_EQ(state->Channels.ChannelName[100], fromFile) << "nothing was accepted yet";
    edit.Accept();
    EXPECT_EQ(state->Channels.ChannelName[0], "1234567890123456789");
    EXPECT_EQ(state->Channels.ChannelName[100], fromFile.substr(0, 19)) << "channels of no page are cut too";
}

TEST(ChannelEdits, ResetPutsDefaultsIntoTheCopies) {
    const auto state = EditState(test::kRow40);
    state->Channels.ChannelName[2] = "CLK";
    state->Channels.ChannelInvert[2] = 1;
    ChannelNameEdit edit(*state);
    EXPECT_TRUE(edit.Reset().MustRefresh());
    EXPECT_EQ(edit.Name(2), "Pod 1A Ch 2");
    EXPECT_EQ(state->Channels.ChannelName[2], "CLK") << "until it is accepted";
    EXPECT_EQ(state->Channels.ChannelInvert[2], 0) << "inversion takes effect at once";
    edit.Accept();
    EXPECT_EQ(state->Channels.ChannelName[2], "Pod 1A Ch 2");
}

TEST(ChannelEdits, ResetOfTheBanksNames32Channels) {
    const auto state = EditState(test::kRow32, 5);
    state->Channels.ChannelInvert[31] = state->Channels.ChannelInvert[32] = 1;
    ChannelNameEdit edit(*state);
    edit.SetName(31, "thirty-one");
    edit.SetName(32, "beyond");
    edit.Reset();
    EXPECT_EQ(edit.Name(31), "Bank4 Ch 31");
    EXPECT_EQ(edit.Name(32), "beyond");
    EXPECT_EQ(state->Channels.ChannelInvert[31], 0);
    EXPECT_EQ(state->Channels.ChannelInvert[32], 1);
}

TEST(ChannelEdits, ResetOfTheNumberedFamilies) {
    const auto state = EditState(test::kRow24, 1);
    ChannelNameEdit edit(*state);
    edit.SetName(5, "five");
    edit.Reset();
    EXPECT_EQ(edit.Name(5), "Ch 5");
}

TEST(ChannelEdits, NamesOutsideTheTableAreNone) {
    const auto state = EditState(test::kRow40);
    ChannelNameEdit edit(*state);
    for (const int channel : {-1, 160, INT32_MAX, INT32_MIN}) {
        edit.SetName(channel, "x");
        EXPECT_EQ(edit.Name(channel), "");
        EXPECT_FALSE(ToggleChannelInvert(*state, channel).Changed);
        EXPECT_FALSE(SetChannelColor(*state, channel, 0).Changed);
    }
}

TEST(ChannelEdits, InvertAddsOneAndKeepsTheLowBit) {
    const auto state = EditState(test::kRow40);
    std::int8_t& invert = state->Channels.ChannelInvert[9];
    EXPECT_TRUE(ToggleChannelInvert(*state, 9).MustRefresh());
    EXPECT_EQ(invert, 1);
    ToggleChannelInvert(*state, 9);
    EXPECT_EQ(invert, 0);
    for (const int strange : {2, -1, 127, -128}) {
        invert = static_cast<std::int8_t>(strange);
        ToggleChannelInvert(*state, 9);
        EXPECT_EQ(invert, (strange + 1) & 1);
    }
}

TEST(ChannelEdits, InvertIsSeenByTheNextTriggerWordsAndLeavesSamples) {
    const auto state = EditState(test::kRow40);
    ResetTrigWords(*state);
    SetCharOfChannel(*state, 9, 0, '1');
    state->Buffer.Samples(1)[5] = 0x02;
    const CompiledTrigWords before = PrepareTriggerWords(*state);
    ToggleChannelInvert(*state, 9);
    EXPECT_FALSE(PrepareTriggerWords(*state) == before);
    EXPECT_EQ(CharOfChannel(*state, 9, 0), '1') << "the word itself stays in logic sense";
    EXPECT_EQ(state->Buffer.Samples(1)[5], 0x02);
}

TEST(ChannelEdits, ColorsAreTriples) {
    const auto state = EditState(test::kRow40);
    EXPECT_TRUE(SetChannelColor(*state, 4, 0xFF123456U).MustRefresh());
    EXPECT_EQ(state->Channels.ChannelColor[4], 0x123456U);
}

TEST(ChannelEdits, TraceExample) {
    const std::array<Point, 6> plain = TraceExample(100, 40, false);
    EXPECT_EQ(plain, (std::array<Point, 6>{{{0, 38}, {25, 38}, {25, 2}, {75, 2}, {75, 38}, {100, 38}}}));
    const std::array<Point, 6> inverted = TraceExample(100, 40, true);
    EXPECT_EQ(inverted, (std::array<Point, 6>{{{0, 2}, {25, 2}, {25, 38}, {75, 38}, {75, 2}, {100, 2}}}));
}

}  // namespace
}  // namespace zu
