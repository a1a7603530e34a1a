// What a change of model rebuilds, for every row of the catalogue.
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kRows[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,
                         12, 13, 14, 15, 16, 17, 18, 19, 24, 25, 26, 27};

std::unique_ptr<InstrumentState> StateOfRow(int row) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, row);
    return state;
}

class ChangeModelTo : public testing::TestWithParam<int> {
  protected:
    void TakesTheShapeOfTheRow() const;
    void DerivesWhatFollowsFromTheRow() const;
    void ScrollsBy32Or256Samples() const;
    void FillsTheBuffersOfTheModelOnly() const;
    void LaysOutRoomForFourTimesThePlainDepth() const;
    void MakesOneGroupAPod() const;
    void ShowsTheChannelsAndThenTheGroups() const;
    void GivesTheDecodersRoomForEverySample() const;

    std::unique_ptr<InstrumentState> state_ = StateOfRow(GetParam());
    const ModelTraits& model_ = Model(GetParam());
};

void ChangeModelTo::TakesTheShapeOfTheRow() const {
    const ShapeRecord& shape = state_->Shape;
    EXPECT_EQ(state_->Identity.HardwareType, GetParam());
    EXPECT_EQ(shape.SamplesDefault, model_.SamplesDefault);
    EXPECT_EQ(shape.ChPerSlice, model_.ChPerSlice);
    EXPECT_EQ(shape.WordsPerTrig, model_.WordsPerTrig);
    EXPECT_EQ(shape.TotalChannels, model_.TotalChannels);
    EXPECT_EQ(shape.PodCount, model_.PodCount);
    EXPECT_EQ(shape.BufCount, model_.BufCount);
    EXPECT_EQ(shape.MaxGroups, 30);
}

void ChangeModelTo::DerivesWhatFollowsFromTheRow() const {
    EXPECT_EQ(state_->Shape.BufStep, model_.PodCount / model_.WordsPerTrig);
    EXPECT_EQ(state_->Shape.WordLen, model_.ChPerSlice + 5);
    EXPECT_EQ(state_->Timing.TimingLines, model_.TotalChannels);
    EXPECT_EQ(state_->Memory.BufferLen, model_.SamplesDefault);
    EXPECT_EQ(state_->Memory.DisplayLen, model_.SamplesDefault);
    EXPECT_EQ(state_->Memory.HardwareMode, 0);
    EXPECT_EQ(state_->Memory.HardwareMux, 0);
    EXPECT_EQ(state_->Pattern.PatLimit, model_.SamplesDefault);
}

void ChangeModelTo::ScrollsBy32Or256Samples() const {
    const bool deep = GetParam() == 19 || GetParam() == 24 || GetParam() == 27;
    EXPECT_EQ(state_->Shape.ScrollStep, deep ? 256 : 32);
}

void ChangeModelTo::FillsTheBuffersOfTheModelOnly() const {
    for (int i = 0; i < kMaxPods; ++i) {
        EXPECT_EQ(GetBufLenFull(state_->Buffer.BufLen, i), i < model_.BufCount ? model_.SamplesDefault : 0)
            << i;
        EXPECT_EQ(state_->Buffer.Samples(i).size(),
                  static_cast<std::size_t>(state_->Buffer.BufLen[static_cast<std::size_t>(i)]));
    }
}

void ChangeModelTo::LaysOutRoomForFourTimesThePlainDepth() const {
    for (int i = 0; i < model_.BufCount; ++i) {
        EXPECT_GE(state_->Buffer.Room(i), 4U * static_cast<std::size_t>(model_.SamplesDefault)) << i;
    }
}

void ChangeModelTo::MakesOneGroupAPod() const {
    for (int g = 0; g < kGroupCount; ++g) {
        const GroupRecord& group = state_->Groups[static_cast<std::size_t>(g)];
        EXPECT_EQ(group.Name.View(), "Group " + std::to_string(g + 1));
        EXPECT_EQ(group.Size, g < model_.PodCount ? 8 : 0);
        EXPECT_EQ(group.Mode, 0);
        if (g < model_.PodCount) {
            EXPECT_EQ(group.Channels[0], 8 * g);
            EXPECT_EQ(group.Channels[7], 8 * g + 7);
        }
        EXPECT_EQ(group.Channels[8], 0);
    }
}

void ChangeModelTo::ShowsTheChannelsAndThenTheGroups() const {
    const TimingRecord& timing = state_->Timing;
    for (std::size_t line = 0; line < kLineSlots; ++line) {
        const bool used = line < kFirstSpacerLine;
        EXPECT_EQ(timing.LineSource[line], used ? static_cast<std::int32_t>(line) : 0);
        EXPECT_EQ(timing.LineStyle[line], line < kFirstGroupLine ? 5 : 0);
        EXPECT_EQ(timing.LineMode[line], 0);
    }
}

void ChangeModelTo::GivesTheDecodersRoomForEverySample() const {
    const auto length = static_cast<std::size_t>(model_.SamplesDefault);
    EXPECT_EQ(state_->Serial.SerialEvents.size(), length);
    for (std::size_t slot = 0; slot < kSpiSlots; ++slot) {
        EXPECT_EQ(state_->Serial.SpiSI[slot].size(), length);
        EXPECT_EQ(state_->Serial.SpiSO[slot].size(), length);
    }
    EXPECT_EQ(state_->Pattern.DirectionBuffer.size(), GetParam() >= 25 ? length : 0);
}

TEST_P(ChangeModelTo, RebuildsTheShape) {
    TakesTheShapeOfTheRow();
    DerivesWhatFollowsFromTheRow();
    ScrollsBy32Or256Samples();
}

TEST_P(ChangeModelTo, RebuildsTheBuffers) {
    FillsTheBuffersOfTheModelOnly();
    LaysOutRoomForFourTimesThePlainDepth();
    GivesTheDecodersRoomForEverySample();
}

TEST_P(ChangeModelTo, RebuildsGroupsAndLines) {
    MakesOneGroupAPod();
    ShowsTheChannelsAndThenTheGroups();
}

INSTANTIATE_TEST_SUITE_P(All, ChangeModelTo, testing::ValuesIn(kRows),
                         [](const auto& test) { return "Row" + std::to_string(test.param); });

TEST(ChangeModel, Row13Has24ChannelsAtTheTopRate) {
    const auto state = StateOfRow(13);
    EXPECT_EQ(state->Shape.TotalChannels, 40);
    EXPECT_EQ(state->Shape.PodCount, 5);
    EXPECT_EQ(state->Shape.BufCount, 5);
    EXPECT_EQ(state->Memory.BufferLen, 524288);
    state->Clock.ClockRate = 1;
    EXPECT_EQ(DisplayChannelCount(*state), 24);
}

TEST(ChangeModel, MovesAFirstLineBeyondTheChannelsToTheLast) {
    auto state = StateOfRow(15);
    state->Timing.TimingChPos = 40;
    ChangeModel(*state, 13);
    EXPECT_EQ(state->Timing.TimingChPos, 39);
    state->Timing.TimingChPos = 38;
    ChangeModel(*state, 13);
    EXPECT_EQ(state->Timing.TimingChPos, 38);
}

TEST(ChangeModel, ClearsTheRestOfAGroup) {
    auto state = StateOfRow(15);
    state->Groups[3].Mode = 4;
    state->Groups[3].Color = 0x123456;
    state->Groups[3].TwosComplement = 1;
    state->Groups[29].Size = 32;
    ChangeModel(*state, 15);
    EXPECT_EQ(state->Groups[3].Mode, 0);
    EXPECT_EQ(state->Groups[3].Color, 0U);
    EXPECT_EQ(state->Groups[3].TwosComplement, 0);
    EXPECT_EQ(state->Groups[29].Size, 0);
}

class ShapelessRow : public testing::TestWithParam<int> {};

TEST_P(ShapelessRow, KeepsTheShapeOfTheRowBefore) {
    auto state = StateOfRow(14);
    state->Memory.BufferLen = 8192;
    ChangeModel(*state, GetParam());
    EXPECT_EQ(state->Identity.HardwareType, GetParam()) << "type and shape disagree from here on";
    EXPECT_EQ(state->Shape.TotalChannels, 80);
    EXPECT_EQ(state->Memory.BufferLen, 8192);
    EXPECT_EQ(GetBufLenFull(state->Buffer.BufLen, 9), 8192);
    EXPECT_EQ(GetBufLenFull(state->Buffer.BufLen, 10), 0);
    EXPECT_GE(state->Buffer.Room(0), 4U * 524288U) << "the room is that of the shape";
}

INSTANTIATE_TEST_SUITE_P(All, ShapelessRow, testing::Values(20, 21, 22, 23));

TEST(ChangeModel, AnUnknownRowBeforeAnyOtherHoldsNothing) {
    const auto state = StateOfRow(22);
    EXPECT_EQ(state->Shape.TotalChannels, 0);
    EXPECT_TRUE(state->Buffer.Samples(0).empty());
}

struct ChannelLoss {
    std::vector<int> Rows;
    int Rate1, Rate3, Rate4;
};

TEST(DisplayChannelCount, LosesChannelsAtTheTopRates) {
    const std::vector<ChannelLoss> losses{
        {{0, 5, 10}, 96, 64, 0}, {{1, 6, 11}, 0, 0, 16}, {{2, 7, 12}, 0, 0, 32},
        {{3, 8}, 24, 16, 0},     {{4, 9}, 48, 32, 0},    {{13}, 16, 0, 0},
        {{14}, 32, 0, 0},        {{15}, 64, 0, 0},       {{16, 17, 18, 19, 24, 25, 26, 27}, 0, 0, 0},
    };
    for (const ChannelLoss& loss : losses) {
        for (const int row : loss.Rows) {
            const auto state = StateOfRow(row);
            for (int code = 0; code < kRateCodes; ++code) {
                state->Clock.ClockRate = static_cast<std::uint8_t>(code);
                int lost = 0;
                if (code == 1) lost = loss.Rate1;
                if (code == 3) lost = loss.Rate3;
                if (code == 4) lost = loss.Rate4;
                EXPECT_EQ(DisplayChannelCount(*state), Model(row).TotalChannels - lost) << row << " " << code;
            }
        }
    }
}

TEST(DisplayChannelCount, LooksAtTheRateCodeAlsoWithAnExternalClock) {
    const auto state = StateOfRow(15);
    state->Clock.ClockRate = 1;
    state->Clock.ClockType = 3;
    EXPECT_EQ(DisplayChannelCount(*state), 96);
}

TEST(SeriesDefaultRow, IsTheRowOfTheEmulation) {
    constexpr int kDefault[] = {5, 17, 15, 19, 24, 27};
    InstrumentState state;
    for (std::uint8_t series = 0; series < 6; ++series) {
        state.Identity.ModelSeries = series;
        EXPECT_EQ(SeriesDefaultRow(state), kDefault[series]);
    }
}

TEST(ChannelColors, RunThroughTheByteAtThreePaces) {
    InstrumentState state;
    ResetChannelColors(state);
    EXPECT_EQ(state.Channels.ChannelColor[0], 0x000000U);
    EXPECT_EQ(state.Channels.ChannelColor[1], 0x402010U);
    EXPECT_EQ(state.Channels.ChannelColor[16], 0x000000U) << "each modulo 256: red 0, green 0, blue 0";
    EXPECT_EQ(state.Channels.ChannelColor[9], MakeRgb(144, 32, 64));
}

TEST(ChannelNames, FollowTheFamily) {
    auto state = StateOfRow(15);
    ResetChannelNames(*state);
    EXPECT_EQ(state->Channels.ChannelName[0].View(), "Pod 1A Ch 0");
    EXPECT_EQ(state->Channels.ChannelName[39].View(), "Pod 5A Ch 39");
    EXPECT_EQ(state->Channels.ChannelName[40].View(), "Pod 1B Ch 0");
    EXPECT_EQ(state->Channels.ChannelName[159].View(), "Pod 5D Ch 39");
}

TEST(ChannelNames, OfTheOneBoardSeriesCountTheChannels) {
    auto state = StateOfRow(17);
    state->Identity.ModelSeries = 1;
    ResetChannelNames(*state);
    EXPECT_EQ(state->Channels.ChannelName[23].View(), "Ch 23");
    EXPECT_TRUE(state->Channels.ChannelName[24].Empty());
}

TEST(ChannelNames, OfThePatternSeriesNameBanks) {
    auto state = StateOfRow(27);
    state->Identity.ModelSeries = 5;
    ResetChannelNames(*state);
    EXPECT_EQ(state->Channels.ChannelName[31].View(), "Bank4 Ch 31");
    EXPECT_TRUE(state->Channels.ChannelName[32].Empty());
}

TEST(ChannelNames, ClearTheInversionOfWhatTheyName) {
    auto state = StateOfRow(27);
    state->Identity.ModelSeries = 5;
    state->Channels.ChannelInvert.fill(1);
    ResetChannelNames(*state);
    EXPECT_EQ(state->Channels.ChannelInvert[31], 0);
    EXPECT_EQ(state->Channels.ChannelInvert[32], 1);
}

TEST(DecodeBuffers, FollowTheDisplayedLength) {
    auto state = StateOfRow(15);
    state->Serial.SerialEvents[7] = 9;
    state->Memory.DisplayLen = 2097152;
    FitDecodeBuffers(*state);
    EXPECT_EQ(state->Serial.SerialEvents.size(), 2097152U);
    EXPECT_EQ(state->Serial.SpiSO[2].size(), 2097152U);
    EXPECT_EQ(state->Serial.SerialEvents[7], 9) << "what is there stays";
    state->Serial.SerialEvents[8192] = state->Serial.SerialEvents[8191] = 4;
    state->Serial.SpiSI[1][8192] = 0x19F;
    state->Memory.DisplayLen = 8192;
    FitDecodeBuffers(*state);
    EXPECT_EQ(state->Serial.SerialEvents.size(), 8192U) << "nothing is read beyond the displayed length";
    EXPECT_EQ(state->Serial.SpiSI[1].size(), 8192U);
    EXPECT_EQ(state->Serial.SerialEvents[8191], 4);
    state->Memory.DisplayLen = 16384;
    FitDecodeBuffers(*state);
    EXPECT_EQ(state->Serial.SerialEvents[8192], 0) << "old traffic does not come back";
    EXPECT_EQ(state->Serial.SpiSI[1][8192], 0);
    state->Memory.DisplayLen = -1;
    FitDecodeBuffers(*state);
    EXPECT_TRUE(state->Serial.SerialEvents.empty());
}

TEST(DecodeBuffers, DirectionsAreKeptInAShortMode) {
    auto state = StateOfRow(25);
    const std::size_t length = state->Pattern.DirectionBuffer.size();
    ASSERT_GT(length, 100U);
    state->Memory.DisplayLen = 100;
    FitDecodeBuffers(*state);
    EXPECT_EQ(state->Pattern.DirectionBuffer.size(), length);
}

}  // namespace
}  // namespace zu
