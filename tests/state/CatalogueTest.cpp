// The catalogue against a second writing of its tables.
#include <gtest/gtest.h>

#include "state/Catalogue.h"

namespace zu {
namespace {

struct Row {
    int Number;
    std::string_view ShortName, FileLabel, StatusLabel;
    int Samples, ChPerSlice, WordsPerTrig, Channels, Pods, Buffers;
};

constexpr Row kRows[] = {
    {0, "none", "None", "demo mode no board", 131072, 40, 4, 160, 20, 20},
    {1, "Pike40S", "Pike40S-32K", "Pike40S_32", 32768, 40, 1, 40, 5, 5},
    {2, "Pike80S", "Pike80S-32K", "Pike80S_32", 32768, 40, 2, 80, 10, 10},
    {3, "Pike40L", "Pike40L-128K", "pike40L_128", 131072, 40, 1, 40, 5, 5},
    {4, "Pike80L", "Pike80L-128K", "Pike80L_128", 131072, 40, 2, 80, 10, 10},
    {5, "Pike160L", "Pike160L-128K", "Pike160L_128", 131072, 40, 4, 160, 20, 20},
    {6, "Pike40SB", "Pike40SB-32K", "Pike40S_32B", 32768, 40, 1, 40, 5, 5},
    {7, "Pike80SB", "Pike80SB-32K", "Pike80S_32B", 32768, 40, 2, 80, 10, 10},
    {8, "Pike40LB", "Pike40LB-128K", "pike40L_128B", 131072, 40, 1, 40, 5, 5},
    {9, "Pike80LB", "Pike80LB-128K", "Pike80L_128B", 131072, 40, 2, 80, 10, 10},
    {10, "Pike160LB", "Pike160LB-128K", "Pike160L_128B", 131072, 40, 4, 160, 20, 20},
    {11, "Roach40SB", "Roach40SB-32K", "Roach40S_32B", 32768, 40, 1, 40, 5, 5},
    {12, "Roach80SB", "Roach80SB-32K", "Roach80S_32B", 32768, 40, 2, 80, 10, 10},
    {13, "Roach40LB", "Roach40LB-128K", "roach40L_128B", 524288, 40, 1, 40, 5, 5},
    {14, "Roach80LB", "Roach80LB-128K", "Roach80L_128B", 524288, 40, 2, 80, 10, 10},
    {15, "Roach160LB", "Roach160LB-128K", "Roach160L_128B", 524288, 40, 4, 160, 20, 20},
    {16, "Dace-32K", "Dace_32", "Dace_32", 32768, 24, 1, 24, 3, 3},
    {17, "Dace-128K", "Dace_128", "Dace_128", 131072, 24, 1, 24, 3, 3},
    {18, "Tench (512K)", "Tench-512K", "", 524288, 32, 1, 32, 4, 4},
    {19, "Tench (1024K)", "Tench-1024K", "", 1048576, 32, 1, 32, 4, 4},
    {24, "Bream", "Bream", "", 1048576, 64, 1, 64, 8, 8},
    {25, "PerchSmallA", "PerchPGSmallA", "", 262144, 32, 1, 32, 4, 4},
    {26, "PerchWideA", "PerchPGWideA", "", 262144, 32, 1, 32, 4, 4},
    {27, "PerchWideB", "PerchPGWideB", "", 2097152, 32, 1, 32, 4, 4},
};

class CatalogueRow : public testing::TestWithParam<Row> {};

TEST_P(CatalogueRow, HasItsTraits) {
    const Row& row = GetParam();
    const ModelTraits& model = Model(row.Number);
    EXPECT_EQ(model.ShortName, row.ShortName);
    EXPECT_EQ(model.FileLabel, row.FileLabel);
    EXPECT_EQ(model.StatusLabel, row.StatusLabel);
    EXPECT_EQ(model.SamplesDefault, row.Samples);
    EXPECT_EQ(model.ChPerSlice, row.ChPerSlice);
    EXPECT_EQ(model.WordsPerTrig, row.WordsPerTrig);
    EXPECT_EQ(model.TotalChannels, row.Channels);
    EXPECT_EQ(model.PodCount, row.Pods);
    EXPECT_EQ(model.BufCount, row.Buffers);
    EXPECT_TRUE(HasShape(row.Number));
}

TEST_P(CatalogueRow, IsFoundByItsLabelAndItsNames) {
    const Row& row = GetParam();
    EXPECT_EQ(RowOfFileLabel(row.FileLabel), row.Number);
    EXPECT_EQ(RowOfUserText(row.FileLabel), row.Number);
    EXPECT_EQ(RowOfUserText(row.ShortName), row.Number);
    EXPECT_EQ(RowOfUserText(std::to_string(row.Number)), row.Number);
    EXPECT_EQ(row.FileLabel.find(' '), std::string_view::npos) << "the model line is split at blanks";
}

TEST_P(CatalogueRow, DividesIntoBoards) {
    const ModelTraits& model = Model(GetParam().Number);
    EXPECT_EQ(model.ChPerSlice * model.WordsPerTrig, model.TotalChannels);
    EXPECT_EQ(model.PodCount * 8, model.TotalChannels);
}

INSTANTIATE_TEST_SUITE_P(All, CatalogueRow, testing::ValuesIn(kRows),
                         [](const auto& test) { return "Row" + std::to_string(test.param.Number); });

TEST(Catalogue, Rows20To23HaveNoShape) {
    for (int row = 20; row <= 23; ++row) {
        EXPECT_FALSE(HasShape(row));
        EXPECT_EQ(Model(row).FileLabel, "None");
        EXPECT_EQ(Model(row).StatusLabel, "");
        EXPECT_EQ(RowOfUserText(std::to_string(row)), std::nullopt);
    }
}

TEST(Catalogue, AnswersRow0OutsideItsRows) {
    for (const int row : {-1, 28, 255, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(Model(row).ShortName, "none");
        EXPECT_FALSE(HasShape(row));
    }
}

TEST(FileLabel, IsMatchedToTheLetter) {
    EXPECT_EQ(RowOfFileLabel("None"), 0) << "rows 20 to 23 share this label and come later";
    EXPECT_EQ(RowOfFileLabel("Roach40LB-128K"), 13);
    EXPECT_EQ(RowOfFileLabel("roach40lb-128k"), std::nullopt);
    EXPECT_EQ(RowOfFileLabel("Roach40LB-128K "), std::nullopt);
    EXPECT_EQ(RowOfFileLabel("Roach40LB"), std::nullopt);
    EXPECT_EQ(RowOfFileLabel(""), std::nullopt);
}

TEST(UserText, NamesARowInAnyCase) {
    EXPECT_EQ(RowOfUserText("roach160lb"), 15);
    EXPECT_EQ(RowOfUserText("ROACH160LB-128K"), 15);
    EXPECT_EQ(RowOfUserText("tench (512k)"), 18);
}

TEST(UserText, MayLeaveOutTheClosingB) {
    EXPECT_EQ(RowOfUserText("Roach40S"), 11);
    EXPECT_EQ(RowOfUserText("Roach160L"), 15);
    EXPECT_EQ(RowOfUserText("Pike160L"), 5) << "a name of its own comes first";
}

TEST(UserText, NamesNothingWhenThereIsNoSuchModel) {
    for (const char* text : {"", "28", "-1", "1x", " 1", "Roach", "99999999999999999999"}) {
        EXPECT_EQ(RowOfUserText(text), std::nullopt) << text;
    }
}

struct SeriesRow {
    int Number;
    SeriesTraits Traits;
};

constexpr SeriesRow kSeriesRows[] = {
    {0, {"Pike", "WPike", "PikeXX", 5, "Pikexxx Version 1.85b  - 5/10/06"}},
    {1, {"Dace", "WDace", "Dace", 17, "Dace Version 1.39 - 6/25/07"}},
    {2, {"Roach", "WRoach", "RoachXX", 15, "RoachSer Version 2.16 - 7/27/20"}},
    {3, {"Tench", "WTench", "", 19, "Tench Version 0.9 - 3/16/06"}},
    {4, {"Bream", "WBream", "", 24, ""}},
    {5, {"Perch", "WPerch", "PerchXX", 27, "PerchVer Version 1.39 - 7/27/20"}},
};

TEST(Series, HasItsTexts) {
    for (const SeriesRow& row : kSeriesRows) {
        const SeriesTraits& series = Series(row.Number);
        EXPECT_EQ(series.Family, row.Traits.Family);
        EXPECT_EQ(series.Prefix, row.Traits.Prefix);
        EXPECT_EQ(series.ModelKey, row.Traits.ModelKey);
        EXPECT_EQ(series.DefaultRow, row.Traits.DefaultRow);
        EXPECT_EQ(series.VersionText, row.Traits.VersionText);
        EXPECT_TRUE(HasShape(series.DefaultRow));
    }
}

TEST(Series, IsEmptyWhenUnknown) {
    for (const int number : {-1, 6, 255}) {
        EXPECT_EQ(Series(number).Prefix, "");
        EXPECT_EQ(Series(number).VersionText, "");
        EXPECT_EQ(Series(number).DefaultRow, 0);
    }
}

}  // namespace
}  // namespace zu
