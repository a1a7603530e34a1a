// The values that every run starts with.
#include <gtest/gtest.h>

#include "core/Defaults.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

std::unique_ptr<Bench> Started(std::uint8_t series = 2) {
    auto bench = std::make_unique<Bench>();
    bench->State->Identity.ModelSeries = series;
    InitDefaults(bench->App);
    return bench;
}

template <typename Array>
void ExpectAll(const Array& values, typename Array::value_type wanted) {
    for (const auto& value : values) EXPECT_EQ(value, wanted);
}

TEST(Defaults, EmulateTheSeriesRowAndAskForTheModel) {
    constexpr int kRows[] = {5, 17, 15, 19, 24, 27};
    for (std::uint8_t series = 0; series < 6; ++series) {
        const auto bench = Started(series);
        EXPECT_EQ(bench->State->Identity.HardwareType, kRows[series]);
        EXPECT_EQ(bench->Shell.Count("model dialog"), 1);
    }
    EXPECT_EQ(Started()->State->Shape.TotalChannels, 160);
}

TEST(Defaults, TakeTheModelThatTheUserPicks) {
    Bench bench;
    bench.Shell.OnModelDialog = [&] {
        EXPECT_EQ(bench.State->Identity.HardwareType, 15) << "the preset";
        bench.State->Identity.HardwareType = 13;
    };
    InitDefaults(bench.App);
    EXPECT_EQ(bench.State->Shape.TotalChannels, 40);
}

TEST(Defaults, LeaveTheModelOfABoard) {
    Bench bench;
    bench.State->Identity.Emulated = 0;
    bench.State->Identity.HardwareType = 12;
    InitDefaults(bench.App);
    EXPECT_EQ(bench.State->Identity.HardwareType, 12);
    EXPECT_EQ(bench.Shell.Count("model dialog"), 0);
    EXPECT_EQ(bench.State->Shape.TotalChannels, 80);
}

TEST(EmulationChoices, AreTheFiveOfThisBuild) {
    ASSERT_EQ(kEmulationChoices.size(), 5U);
    constexpr std::string_view kTexts[] = {"Roach40S", "Roach80S", "Roach40L", "Roach80L", "Roach160L"};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(kEmulationChoices[i].Text, kTexts[i]);
        EXPECT_EQ(kEmulationChoices[i].Row, 11 + static_cast<int>(i));
    }
}

TEST(Defaults, OfClockAndMemory) {
    const auto bench = Started();
    const InstrumentState& state = *bench->State;
    EXPECT_EQ(state.Clock.ClockType, 0);
    EXPECT_EQ(state.Clock.ClockEdge, 0);
    EXPECT_EQ(state.Clock.ClockRate, 5);
    EXPECT_EQ(state.Memory.HardwareMode, 0);
    EXPECT_EQ(state.Memory.HardwareMux, 0);
    EXPECT_EQ(state.Memory.BufferLen, 524288) << "the start value, not that of the memory mode";
    EXPECT_EQ(state.Memory.DisplayLen, 524288);
    for (const auto& word : state.Clock.ClockExt) EXPECT_EQ(word.View(), "XXXXXXXXX");
    ExpectAll(state.Clock.RateAvail, 1);
}

TEST(Defaults, OfPodsAndPatterns) {
    const auto bench = Started();
    const InstrumentState& state = *bench->State;
    ExpectAll(state.Pods.HardwarePod, 0);
    ExpectAll(state.Pods.AdjAddr, 0);
    EXPECT_EQ(state.Pods.ReprogramFlag, 0);
    EXPECT_EQ(state.Pattern.PatternOutputMode, 1);
    EXPECT_EQ(state.Pattern.PatDirty, 1);
    EXPECT_EQ(state.Pattern.PatInc, 0);
    EXPECT_EQ(state.Pattern.PatZoom, 1);
    EXPECT_EQ(state.Pattern.PatCountStart, 0U);
    EXPECT_EQ(state.Pattern.PatCountEnd, 256U);
    EXPECT_EQ(state.Pattern.PatCountDir, 0);
    EXPECT_EQ(state.Pattern.PatStep, 1U);
}

struct SeriesLevels {
    std::uint8_t Series;
    std::uint16_t Threshold, Voltage;
};

TEST(Defaults, OfLevelsGoBySeries) {
    for (const SeriesLevels levels :
         {SeriesLevels{0, 100, 39}, SeriesLevels{1, 28, 0}, SeriesLevels{2, 100, 39}, SeriesLevels{3, 14, 0},
          SeriesLevels{4, 100, 39}, SeriesLevels{5, 100, 0}}) {
        const auto bench = Started(levels.Series);
        ExpectAll(bench->State->Pods.ThrHd, levels.Threshold);
        ExpectAll(bench->State->Pods.PatGenV, levels.Voltage);
    }
}

TEST(Defaults, LeaveTheVoltagesOfTheSeriesThatDriveNone) {
    for (const std::uint8_t series : {std::uint8_t{1}, std::uint8_t{3}}) {
        Bench bench;
        bench.State->Identity.ModelSeries = series;
        bench.State->Pods.PatGenV.fill(77);
        SetLevelDefaults(*bench.State);
        ExpectAll(bench.State->Pods.PatGenV, 77);
    }
}

TEST(Defaults, OfCapture) {
    const auto bench = Started();
    const CaptureRecord& capture = bench->State->Capture;
    EXPECT_EQ(capture.CaptureState, 0);
    EXPECT_EQ(capture.CaptureMode, 0);
    EXPECT_EQ(capture.CaptureLoopMode, 0);
    EXPECT_EQ(capture.ClearBufferOnGo, 1);
    EXPECT_EQ(capture.TrigStat, 0);
    EXPECT_EQ(capture.CaptureCount, 0);
    EXPECT_EQ(capture.StatusText.View(), "     ");
}

TEST(Defaults, OfTheTrigger) {
    const auto bench = Started();
    const TriggerRecord& trigger = bench->State->Trigger;
    EXPECT_EQ(trigger.SeqList[0], 1);
    EXPECT_EQ(trigger.SeqList[1], 0);
    EXPECT_EQ(trigger.SeqList[25], 0);
    ExpectAll(trigger.CountList, 1);
    ExpectAll(trigger.ElseList, 0);
    ExpectAll(trigger.ModeList, 0);
    ExpectAll(trigger.TrigDelayRateList, 0);
    ExpectAll(trigger.EdgeList16, 1);
    ExpectAll(trigger.TrigMatchMode, 1);
    ExpectAll(trigger.LevelEnable, 1);
    EXPECT_EQ(trigger.LevelCount, 1);
    EXPECT_EQ(trigger.TrigCnt, 1);
    EXPECT_EQ(trigger.TrigCntMd, 3);
    EXPECT_EQ(trigger.TrigOut, 0);
    EXPECT_EQ(trigger.TrigWordEditGroupBase, 1);
    EXPECT_EQ(trigger.TrigLevelsMatchWizard, 1);
    EXPECT_EQ(trigger.TrigWordName[0].View(), "0Event");
    EXPECT_EQ(trigger.TrigWordName[15].View(), "15Event");
    EXPECT_TRUE(trigger.TrigComment[0].Empty());
}

TEST(Defaults, FillTheTriggerWordsWithX) {
    const auto bench = Started();
    const auto& entry = bench->State->Trigger.TrigWord.Board[3][15];
    EXPECT_STREQ(entry.data(), "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
    const auto narrow = Started(1);
    EXPECT_STREQ(narrow->State->Trigger.TrigWord.Board[0][0].data(), "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
}

TEST(Defaults, OfTheSearch) {
    const auto bench = Started();
    const SearchRecord& search = bench->State->Search;
    EXPECT_EQ(search.SearchMode, 'P');
    EXPECT_EQ(search.SearchWord.View(), std::string(64, 'X'));
    EXPECT_EQ(search.SearchCh, 0);
    EXPECT_EQ(search.SearchBase, 1);
    EXPECT_EQ(search.SearchLen, 0);
    for (const auto& word : search.SearchWd) {
        EXPECT_STREQ(word.data(), "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
    }
}

TEST(Defaults, OfCursors) {
    const auto bench = Started();
    const CursorRecord& cursors = bench->State->Cursors;
    constexpr std::int32_t kCursors[] = {50, 100, 150, 200, 10, 0};
    constexpr Rgb kColors[] = {0x007D00, 0xFF0000, 0x008080, 0x808040, 0x0000FF, 0x808080};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(cursors.Cur[i], kCursors[i]);
        EXPECT_EQ(cursors.CursorColor[i], kColors[i]);
    }
}

TEST(Defaults, OfTheWindows) {
    const auto bench = Started();
    const InstrumentState& state = *bench->State;
    EXPECT_EQ(state.Timing.ScreenZoom, 1);
    EXPECT_EQ(state.Timing.ZoomOrigin, -1);
    EXPECT_EQ(state.Timing.TimingGrid, 1);
    EXPECT_EQ(state.Timing.TimingDispInfoType, 2);
    EXPECT_EQ(state.Timing.TimingDataPos, 0);
    EXPECT_EQ(state.Timing.TimingLines, 160);
    EXPECT_EQ(state.Screen.ScreenColor, (std::array<Rgb, 4>{0x000000, 0xFFFFFF, 0x808080, 0xDCDCDC}));
    constexpr std::uint8_t kTypes[] = {0, 2, 3, 4, 0, 0, 0, 0};
    for (std::size_t column = 0; column < 8; ++column) {
        EXPECT_EQ(state.Timing.TimingDisp[column].Type, kTypes[column]) << column;
    }
}

TEST(Defaults, OfTheStateList) {
    const auto bench = Started();
    for (std::size_t column = 0; column < 30; ++column) {
        EXPECT_EQ(bench->State->StateList.ScreenL[column], static_cast<int>(column));
        EXPECT_EQ(bench->State->StateList.ScreenF[column], 1);
    }
    EXPECT_EQ(bench->State->StateList.ScreenWidth[0], 9) << "eight channels in binary, and a blank";
    EXPECT_EQ(bench->State->StateList.ScreenWidth[29], 0) << "an empty group";
}

TEST(Defaults, OfFilesAndPrinting) {
    const auto bench = Started();
    const FileRecord& files = bench->State->Files;
    EXPECT_EQ(files.DataLog, 0);
    EXPECT_EQ(files.DataLogCnt, 0);
    EXPECT_EQ(files.DataLogFileName.View(), "DL");
    EXPECT_EQ(files.DataLogFormat.View(), "ZU");
    EXPECT_EQ(files.ExportG, 0);
    EXPECT_EQ(files.ExportB, 1);
    EXPECT_EQ(files.ExportS, 10);
    EXPECT_EQ(files.ExportE, 11);
    EXPECT_EQ(files.ExportZU, 1);
    const PrintRecord& print = bench->State->Print;
    EXPECT_EQ(print.PrintColorMd, 1);
    EXPECT_EQ(print.PrintMode, 0);
    EXPECT_EQ(print.PrintRange, 0);
    EXPECT_EQ(print.PrintStart, 0);
    EXPECT_EQ(print.PrintEnd, 2000);
}

TEST(Defaults, OfNamesAndColors) {
    const auto bench = Started();
    EXPECT_EQ(bench->State->Channels.ChannelName[159].View(), "Pod 5D Ch 39");
    EXPECT_EQ(bench->State->Channels.ChannelColor[0], 0U);
    EXPECT_EQ(bench->State->Channels.ChannelColor[1], 0x402010U);
    EXPECT_EQ(bench->State->Groups[19].Name.View(), "Group 20");
    EXPECT_EQ(bench->State->Groups[19].Size, 8);
}

TEST(Viewer, TakesTheRowOfTheCommandLineWithoutAsking) {
    Bench bench;
    bench.State->Command.ModelRow = 17;
    EXPECT_TRUE(StartsAsViewer(bench.State->Command));
    InitDefaults(bench.App);
    EXPECT_EQ(bench.State->Identity.HardwareType, 17);
    EXPECT_TRUE(bench.Shell.Log.empty());
}

TEST(Viewer, TakesTheRowOfTheFile) {
    Bench bench;
    bench.State->Command.DocumentFile = bench.Folder.Write("a.zu", "\r\n[Hardware]\r\nType=14\r\n");
    InitDefaults(bench.App);
    EXPECT_EQ(bench.State->Identity.HardwareType, 14);
}

TEST(Viewer, TakesTheModelLineOfAFileWithoutType) {
    Bench bench;
    bench.State->Command.DocumentFile = bench.Folder.Write(
        "a.zu", "\r\n[File]\r\nFileVersion=192\r\n\r\n[Model Dace_128 0 0]\r\n[Settings]\r\n");
    InitDefaults(bench.App);
    EXPECT_EQ(bench.State->Identity.HardwareType, 17);
}

TEST(Viewer, FallsBackToTheSeriesRow) {
    for (const char* text :
         {"", "[Hardware]\r\nType=99\r\n", "[Hardware]\r\nType=22\r\n", "nothing of use"}) {
        Bench bench;
        bench.State->Command.DocumentFile = bench.Folder.Write("a.zu", text);
        InitDefaults(bench.App);
        EXPECT_EQ(bench.State->Identity.HardwareType, 15) << text;
    }
    Bench bench;
    bench.State->Command.DocumentFile = "/no/such/file.zu";
    InitDefaults(bench.App);
    EXPECT_EQ(bench.State->Identity.HardwareType, 15);
}

}  // namespace
}  // namespace zu
