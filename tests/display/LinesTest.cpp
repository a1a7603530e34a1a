// Kinds, heights, scales and fonts of display lines.
#include <gtest/gtest.h>

#include "display/Lines.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeState;
using test::ShowLines;

constexpr Metrics kSmall = Metrics::ForScreen(700);
constexpr Metrics kLarge = Metrics::ForScreen(701);

struct StyleRow {
    int Style;
    const char* Text;
    std::int32_t Small;  // height below 701 screen rows, and from there on
    std::int32_t Large;
    double Scale8;   // scale of a group of 8
    double Scale32;  // scale of a group of 32
    FontId Font;
};
constexpr double k2p31 = 2147483648.0;
constexpr StyleRow kRows[] = {
    {0, "Hex (Group only)", 15, 19, 1, 1, FontId::Text},
    {1, "Binary  (Group only)", 15, 19, 1, 1, FontId::Text},
    {2, "Ascii  (Group only)", 15, 19, 1, 1, FontId::Text},
    {3, "Decimal  (Group only)", 15, 19, 1, 1, FontId::Text},
    {4, "Translation table (Group only)", 15, 19, 1, 1, FontId::Text},
    {5, "Normal", 19, 21, 256.0 / 12, k2p31 / 6, FontId::Large},
    {6, "Timing (8 pixels tall)", 13, 13, 32, k2p31 / 4, FontId::Small},
    {7, "Timing (18 pixels tall)", 23, 23, 16, k2p31 / 8, FontId::Large},
    {8, "Timing (32 pixels tall)", 37, 37, 8, k2p31 / 16, FontId::Large},
    {9, "Timing (64 pixels tall)", 69, 69, 4, k2p31 / 32, FontId::Large},
    {10, "Timing (128  pixels tall)", 133, 133, 2, k2p31 / 64, FontId::Large},
    {11, "Timing (256  pixels tall)", 261, 261, 1, k2p31 / 128, FontId::Large},
};

class EachStyle : public testing::TestWithParam<StyleRow> {};
INSTANTIATE_TEST_SUITE_P(Lines, EachStyle, testing::ValuesIn(kRows));

TEST_P(EachStyle, HasItsTextHeightScaleAndFont) {
    const StyleRow& row = GetParam();
    EXPECT_EQ(kLineStyles[static_cast<std::size_t>(row.Style)].Text, row.Text);
    EXPECT_EQ(StyleHeight(row.Style, kSmall), row.Small);
    EXPECT_EQ(StyleHeight(row.Style, kLarge), row.Large);
    EXPECT_DOUBLE_EQ(VerticalScale(row.Style, 8), row.Scale8);
    EXPECT_DOUBLE_EQ(VerticalScale(row.Style, 32), row.Scale32);
    EXPECT_DOUBLE_EQ(VerticalScale(row.Style, 160), row.Scale32);
    EXPECT_EQ(StyleFont(row.Style), row.Font);
}

TEST(Lines, TheTracesOfStyles6To11AreAsTallAsTheirTextsSay) {
    constexpr std::int32_t kTall[] = {8, 18, 32, 64, 128, 256};
    for (int style = 6; style <= 11; ++style) {
        EXPECT_EQ(StyleHeight(style, kSmall) - kTraceFoot, kTall[style - 6]) << style;
    }
}

TEST(Lines, ModeTexts) {
    EXPECT_EQ(kLineModeTexts[0], "");
    EXPECT_EQ(kLineModeTexts[1], "Channel Overlay (Group only)");
    EXPECT_EQ(kLineModeTexts[2], "Channel Difference (Group only)");
    EXPECT_EQ(kLineModeTexts[3], "Pulse width");
    EXPECT_EQ(kLineModeTexts[4], "Frequency (1->0)");
    EXPECT_EQ(kLineModeTexts[5], "Frequency (0->1)");
}

TEST(Lines, SourcesSplitIntoChannelsGroupsAndSpacers) {
    EXPECT_EQ(KindOfSource(0), LineKind::Channel);
    EXPECT_EQ(KindOfSource(159), LineKind::Channel);
    EXPECT_EQ(KindOfSource(160), LineKind::Group);
    EXPECT_EQ(KindOfSource(189), LineKind::Group);
    EXPECT_EQ(KindOfSource(190), LineKind::Spacer);
    EXPECT_EQ(KindOfSource(INT32_MAX), LineKind::Spacer);
    EXPECT_EQ(KindOfSource(-1), LineKind::Spacer);
    EXPECT_EQ(GroupOfSource(159), -1);
    EXPECT_EQ(GroupOfSource(160), 0);
    EXPECT_EQ(GroupOfSource(189), 29);
    EXPECT_EQ(GroupOfSource(190), -1);
}

TEST(Lines, StylesAndModesOutOfRangeAreNormalAndPlain) {
    const auto state = MakeState();
    ShowLines(*state, {{0, 12, 6}, {0, 255, -1}, {0, 11, 5}});
    EXPECT_EQ(LineAt(*state, 0).Style, 5);
    EXPECT_EQ(LineAt(*state, 0).Extra, LineExtra::Plain);
    EXPECT_EQ(LineAt(*state, 1).Style, 5);
    EXPECT_EQ(LineAt(*state, 1).Extra, LineExtra::Plain);
    EXPECT_EQ(LineAt(*state, 2).Style, 11);
    EXPECT_EQ(LineAt(*state, 2).Extra, LineExtra::FrequencyRising);
    EXPECT_EQ(LineAt(*state, -1).Kind, LineKind::Spacer);
    EXPECT_EQ(LineAt(*state, 232).Kind, LineKind::Spacer);
}

TEST(Lines, CountsFromFilesAreBounded) {
    const auto state = MakeState();
    state->Timing.TimingLines = 1000;
    EXPECT_EQ(LineCount(*state), 231);
    state->Timing.TimingLines = -5;
    EXPECT_EQ(LineCount(*state), 0);
    state->Timing.TimingChPos = -7;
    EXPECT_EQ(FirstLine(*state), 0);
    state->Groups[0].Size = 4000;
    EXPECT_EQ(GroupSize(state->Groups[0]), 160);
    state->Groups[0].Size = -4;
    EXPECT_EQ(GroupSize(state->Groups[0]), 0);
}

TEST(Lines, SpiTestClampsItsArgument) {
    const auto state = MakeState();
    for (const int mode : {3, 4, 5, 6}) {
        state->Groups[7].Mode = static_cast<std::int8_t>(mode);
        EXPECT_TRUE(IsSpiGroup(*state, 7)) << mode;
        EXPECT_TRUE(IsSpiGroup(*state, 167)) << mode;
    }
    for (const int mode : {0, 1, 2, 7, -1}) {
        state->Groups[7].Mode = static_cast<std::int8_t>(mode);
        EXPECT_FALSE(IsSpiGroup(*state, 7)) << mode;
    }
    state->Groups[0].Mode = 3;
    EXPECT_TRUE(IsSpiGroup(*state, -4)) << "below 0 tests group 0";
    state->Groups[29].Mode = 3;
    EXPECT_TRUE(IsSpiGroup(*state, 31)) << "above 30 tests group 29";
    EXPECT_TRUE(IsSpiGroup(*state, 159));
    EXPECT_TRUE(IsSpiGroup(*state, 191)) << "191 is 31";
    EXPECT_FALSE(IsSpiGroup(*state, 30)) << "30 is let through and names no record";
    EXPECT_FALSE(IsSpiGroup(*state, 190));
    EXPECT_EQ(CountSpiGroups(*state), 2);
}

TEST(Lines, AnSpiGroupTakes135PixelsWhateverItsStyle) {
    const auto state = MakeState();
    state->Groups[3].Mode = 5;
    state->Groups[29].Mode = 3;
    ShowLines(*state, {{163, 0}, {163, 6}, {162, 0}, {191, 5}});
    EXPECT_EQ(RowHeight(*state, 0, kSmall), 135);
    EXPECT_EQ(RowHeight(*state, 1, kLarge), 135);
    EXPECT_EQ(RowHeight(*state, 2, kSmall), 15);
    EXPECT_EQ(RowHeight(*state, 3, kSmall), 19) << "a spacer is no SPI line, though group 29 is one";
}

TEST(Lines, AChannelThatTheMultiplexTakesAwayHasNoRow) {
    const auto state = MakeState();
    SetBufLenFull(state->Buffer.BufLen, 1, 0);
    ShowLines(*state, {{7, 5}, {8, 5}, {40, 5}, {161, 0}});
    EXPECT_EQ(RowHeight(*state, 0, kSmall), 19);
    EXPECT_EQ(RowHeight(*state, 1, kSmall), 0);
    EXPECT_FALSE(LineShown(*state, 1));
    EXPECT_EQ(RowHeight(*state, 2, kSmall), 19) << "a channel beyond the model keeps its row";
    EXPECT_EQ(RowHeight(*state, 3, kSmall), 15) << "a group line stays";
}

TEST(Lines, StripAndHeader) {
    EXPECT_EQ(kHeaderHeight, 36);
    EXPECT_EQ(StripHeight(kSmall), 26);
    EXPECT_EQ(StripHeight(kLarge), 22);
}

}  // namespace
}  // namespace zu
