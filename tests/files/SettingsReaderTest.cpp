// What a settings text of the present version puts into the state.
#include <gtest/gtest.h>

#include "DaceState.h"
#include "files/SettingsReader.h"
#include "files/SettingsWriter.h"
#include "state/Rates.h"
#include "support/ScriptedHost.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using test::ScriptedHost;
using test::StartState;

/// Reads a text of the present version; the boxes must be looked at by the caller.
ScriptedHost Read(InstrumentState& state, const std::string& text) {
    ScriptedHost host;
    ReadSettings(state, host, IniText::Parse("[File]\r\nFileVersion=192\r\n" + text));
    return host;
}

std::string Written(InstrumentState& state) {
    ScriptedHost host;
    host.Clock = {2024, 2, 29, 3, 4, 5};
    return SettingsText(state, host);
}

TEST(ReadSettings, BringsBackEveryKey) {
    const auto state = StartState(16, 1);
    ScriptedHost host;
    ASSERT_TRUE(ReadSettings(*state, host, std::string(ZU_TEST_DATA) + "/files/dace.ini"));
    EXPECT_TRUE(host.Boxes.empty());
    const auto expected = test::DaceState::Make();
    // What the format itself changes on the way back.
    for (std::size_t i = 0; i < kQualifierWords; ++i) {
        std::string word(expected->Clock.ClockExt[i].View().substr(0, 8));
        word.resize(9, 'x');
        expected->Clock.ClockExt[i] = word;
    }
    expected->Pods.AdjAddr[1] = 0;                                       // its pod generates patterns
    expected->Trigger.TrigDelayRateList[15] = 0;                         // beyond the field of 24 characters
    expected->Windows.TimingStat = expected->Windows.SerialStat = 0;     // left to whoever opens windows
    expected->Translate.Entry[2] = expected->Translate.Entry[512] = {};  // behind the first gap
    EXPECT_EQ(Written(*state), Written(*expected));
    EXPECT_EQ(state->Identity.HardwareType, 16);
    EXPECT_EQ(state->Files.FileVersion, 192);
    EXPECT_EQ(state->Trigger.LevelCount, 2);
    EXPECT_EQ(state->Cursors.Cur, expected->Cursors.Cur);
}

TEST(ReadSettings, OfAnEmptyTextLeavesWhatTheFormatLeaves) {
    const auto state = test::DaceState::Make();
    const auto before = test::DaceState::Make();
    ScriptedHost host;
    ReadSettings(*state, host, IniText::Parse(""));
    EXPECT_TRUE(host.Boxes.empty());
    // Cleared by each load: version, alignment, trigger words, groups, translate table; and the oldest form
    // of the columns, though not with the measured display.
    before->Pods.AdjAddr.fill(0);
    ResetTrigWords(*before);
    ResetGroups(*before);
    before->Translate = {};
    EXPECT_EQ(state->Files.FileVersion, 0);
    EXPECT_EQ(Written(*state), Written(*before));
}

TEST(ReadSettings, ReportsAMissingFileUnlessQuiet) {
    const auto state = test::DaceState::Make();
    const std::string before = Written(*state);
    ScriptedHost host;
    EXPECT_FALSE(ReadSettings(*state, host, "/no such folder/x.ini", true));
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_FALSE(ReadSettings(*state, host, "/no such folder/x.ini"));
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(host.Boxes[0], (ScriptedHost::Box{"Error: File not found.", ""}));
    EXPECT_EQ(Written(*state), before);
}

TEST(ReadSettings, NeverTakesTheModelFromAFile) {
    const auto state = StartState(10);
    Read(*state, "[Hardware]\r\nType=13\r\nPod19=3\r\n");
    EXPECT_EQ(state->Identity.HardwareType, 10);
    EXPECT_EQ(state->Pods.HardwarePod[19], 3);
}

TEST(ReadSettings, TakesPodsThatTheModelLacks) {
    const auto state = StartState(13);
    Read(*state, "[Hardware]\r\nType=15\r\nPod4=2\r\nPod5=4\r\nPod19=2\r\n[Trigger]\r\nAdjAddr19=7\r\n");
    EXPECT_EQ(state->Pods.HardwarePod[4], 2);
    EXPECT_EQ(state->Pods.HardwarePod[5], 4);
    EXPECT_EQ(state->Pods.HardwarePod[19], 2);
    EXPECT_EQ(state->Pods.AdjAddr[19], 7);
}

TEST(NumberKeys, OfEightAndSixteenBitsAreCut) {
    const auto state = StartState(10);
    Read(*state,
         "[File]\r\n[TimingWin]\r\nZoomOrigin=300\r\nTimingDispInfoType=-1\r\n"
         "[Trigger]\r\nCnt=511\r\nThrHd3=65537\r\nPatGenV3=-1\r\n[Search]\r\nCh=40000\r\n");
    EXPECT_EQ(state->Timing.ZoomOrigin, 44);
    EXPECT_EQ(state->Timing.TimingDispInfoType, -1) << "-1 counts in eight bits";
    EXPECT_EQ(state->Trigger.TrigCnt, 255);
    EXPECT_EQ(state->Pods.ThrHd[3], 1);
    EXPECT_EQ(state->Pods.PatGenV[3], 65535);
    EXPECT_EQ(state->Search.SearchCh, -25536);
}

TEST(NumberKeys, Of32BitsThatHoldMinusOneKeepTheOldValue) {
    const auto state = StartState(10);
    state->Timing.TimingDataPos = 55;
    state->Cursors.Cur[2] = 66;
    state->Timing.ScreenZoom = -4;
    Read(
        *state,
        "[TimingWin]\r\nDataPos=-1\r\nChPos=-2\r\n[Cursor]\r\nCur2=-1\r\nCur3=-2\r\n[Screen]\r\nZoom=-1\r\n");
    EXPECT_EQ(state->Timing.TimingDataPos, 55);
    EXPECT_EQ(state->Timing.TimingChPos, -2);
    EXPECT_EQ(state->Cursors.Cur[2], 66);
    EXPECT_EQ(state->Cursors.Cur[3], -2);
    EXPECT_EQ(state->Timing.ScreenZoom, -4);
}

TEST(NumberKeys, OfTheUnsigned32BitsTakeTheFullRange) {
    const auto state = StartState(10);
    Read(*state, "[PatEditor]\r\nCountStart=4294967295\r\nCountEnd=-1\r\nStep=4294967297\r\n");
    EXPECT_EQ(state->Pattern.PatCountStart, 4294967295U);
    EXPECT_EQ(state->Pattern.PatCountEnd, 4294967295U);
    EXPECT_EQ(state->Pattern.PatStep, 1U);
}

TEST(NumberKeys, WithStrayTextGiveTheirLeadingNumberOr0) {
    const auto state = StartState(10);
    state->Timing.TimingGrid = 1;
    state->Timing.TimingDataPos = 9;
    Read(*state, "[TimingWin]\r\nGrid=yes\r\nDataPos=\r\nChPos=12 lines\r\n[Capture]\r\nMode=\r\n");
    EXPECT_EQ(state->Timing.TimingGrid, 0);
    EXPECT_EQ(state->Timing.TimingDataPos, 0);
    EXPECT_EQ(state->Timing.TimingChPos, 12);
    EXPECT_EQ(state->Capture.CaptureMode, 0);
}

TEST(TextKeys, AreCutToTheirField) {
    const auto state = StartState(10);
    const std::string ink(600, 'i');
    Read(*state, "DataLogFileName=" + ink + "\r\nDataLogFormat=" + ink + "\r\n[ChannelData]\r\nN0=" + ink +
                     "\r\nN1=\r\nN2= \"two\" \r\n[Trigger]\r\nN0=" + ink + "\r\nC0=" + ink +
                     "\r\nw0-0=" + ink + "\r\n[Search]\r\nSW=" + ink + "\r\nWd0=" + ink +
                     "\r\n[Group0]\r\nN=" + ink + "\r\nS=0\r\n");
    EXPECT_EQ(state->Files.DataLogFileName.View().size(), 498U);
    EXPECT_EQ(state->Files.DataLogFormat.View().size(), 4U);
    EXPECT_EQ(state->Channels.ChannelName[0].View().size(), 230U);
    EXPECT_TRUE(state->Channels.ChannelName[1].Empty());
    EXPECT_EQ(state->Channels.ChannelName[2].View(), " \"two\" ");
    EXPECT_EQ(state->Trigger.TrigWordName[0].View().size(), 14U);
    EXPECT_EQ(state->Trigger.TrigComment[0].View().size(), 79U);
    EXPECT_EQ(std::string(state->Trigger.TrigWord.Board[0][0].data()), std::string(44, 'i'));
    EXPECT_EQ(state->Search.SearchWord.View().size(), 64U);
    EXPECT_EQ(std::string(state->Search.SearchWd[0].data()), std::string(45, 'i'));
    EXPECT_EQ(state->Groups[0].Name.View().size(), 15U);
}

TEST(ColorKeys, PackRedGreenAndBlue) {
    const auto state = StartState(16, 1);
    Read(*state,
         "[TimingWin]\r\nColor0=1,2,3\r\nColor1=255\r\nColor2=\r\nColor3=257,-1,x\r\nColor4= 9, 8, 7\r\n"
         "Color24=9,9,9\r\n[Cursor]\r\nColor5=10,20,30\r\n[Screen]\r\nColor3=4,5,6,7\r\n");
    EXPECT_EQ(state->Channels.ChannelColor[0], 0x030201U);
    EXPECT_EQ(state->Channels.ChannelColor[1], 0x0000FFU);
    EXPECT_EQ(state->Channels.ChannelColor[2], 0U);
    EXPECT_EQ(state->Channels.ChannelColor[3], 0x00FF01U);
    EXPECT_EQ(state->Channels.ChannelColor[4], 0x070809U);
    EXPECT_EQ(state->Channels.ChannelColor[24], MakeRgb(16 * 24, 32 * 24, 64 * 24)) << "the model has 24";
    EXPECT_EQ(state->Cursors.CursorColor[5], 0x1E140AU);
    EXPECT_EQ(state->Screen.ScreenColor[3], 0x060504U);
}

TEST(ListKeys, LoseWhatLiesBehind24Characters) {
    const auto state = StartState(10);
    state->Trigger.SeqList.fill(99);
    Read(*state, "[Trigger]\r\nSeqList=1,2,3,4,5,6,7,8,9,0,1,2,3,4,5,6,\r\n");
    const std::vector<std::int32_t> one(state->Trigger.SeqList.begin(), state->Trigger.SeqList.begin() + 16);
    EXPECT_EQ(one, (std::vector<std::int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 99, 99, 99, 99}));
    Read(*state, "[Trigger]\r\nSeqList=11,12,13,14,15,16,11,12,13,14,15,16,11,12,13,14,\r\n");
    const std::vector<std::int32_t> two(state->Trigger.SeqList.begin(), state->Trigger.SeqList.begin() + 10);
    EXPECT_EQ(two, (std::vector<std::int32_t>{11, 12, 13, 14, 15, 16, 11, 12, 9, 0}));
}

TEST(ListKeys, CountAnEntryOnlyWithItsComma) {
    const auto state = StartState(10);
    state->Trigger.CountList.fill(7);
    Read(*state, "[Trigger]\r\nCountList=1,2,3\r\nElseList=\r\nModeList=,,5,\r\n");
    EXPECT_EQ(state->Trigger.CountList[1], 2);
    EXPECT_EQ(state->Trigger.CountList[2], 7);
    EXPECT_EQ(state->Trigger.ElseList[0], 0);
    EXPECT_EQ(state->Trigger.ModeList[2], 5);
    // The comma behind the 24th character does not count.
    Read(*state, "[Trigger]\r\nCountList=111111111111111111111111,5,\r\n");
    EXPECT_EQ(state->Trigger.CountList[0], 1);
    Read(*state, "[Trigger]\r\nTrigDelayRateList=99999999999,-5 x,\r\n");
    EXPECT_EQ(state->Trigger.TrigDelayRateList[0], static_cast<std::int32_t>(99999999999LL));
    EXPECT_EQ(state->Trigger.TrigDelayRateList[1], -5);
}

TEST(ByteKeys, TakeTheFirstCharacterOfATokenAndKeepFlags) {
    const auto state = StartState(10);
    state->Trigger.EdgeList16.fill(1);
    state->Trigger.TrigMatchMode.fill(0);
    Read(*state, "[Trigger]\r\nEdgeList16=0,1,A,-1,19,2, 1\r\nTrigMatchMode=0,1,A,-1,19,2,0\r\n");
    const auto head = [](const auto& list) { return std::vector<int>(list.begin(), list.begin() + 8); };
    EXPECT_EQ(head(state->Trigger.EdgeList16), (std::vector<int>{0, 1, 0, 0, 1, 0, 0, 1}));
    EXPECT_EQ(head(state->Trigger.TrigMatchMode), (std::vector<int>{0, 1, 1, 1, 1, 1, 0, 0}));
}

TEST(ByteKeys, NormaliseAll26Entries) {
    const auto state = StartState(10);
    state->Trigger.EdgeList16.fill(9);
    state->Trigger.TrigMatchMode.fill(9);
    Read(*state, "");
    EXPECT_EQ(state->Trigger.EdgeList16[25], 0);
    EXPECT_EQ(state->Trigger.TrigMatchMode[25], 1);
}

TEST(ByteKeys, Lose12OneDigitEntriesBehindTheField) {
    const auto state = StartState(10);
    state->Trigger.EdgeList16.fill(1);
    Read(*state, "[Trigger]\r\nEdgeList16=0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,\r\n");
    EXPECT_EQ(state->Trigger.EdgeList16[11], 0);
    EXPECT_EQ(state->Trigger.EdgeList16[12], 1);
}

TEST(QualifierWords, KeepEightCharactersAndFillUpWithX) {
    const auto state = StartState(10);
    Read(*state, "[Clock]\r\next0=01X\r\next1=01010101\r\next2=010101011\r\next3=\r\n");
    EXPECT_EQ(state->Clock.ClockExt[0].View(), "01Xxxxxxx");
    EXPECT_EQ(state->Clock.ClockExt[1].View(), "01010101x");
    EXPECT_EQ(state->Clock.ClockExt[2].View(), "01010101x");
    EXPECT_EQ(state->Clock.ClockExt[3].View(), "xxxxxxxxx");
    EXPECT_EQ(state->Clock.ClockExt[4].View(), "XXXXXXXXX");
}

TEST(RateText, NamesTheRow) {
    const auto state = StartState(10);
    for (std::size_t code = 0; code < kRates.size(); ++code) {
        Read(*state, "[Clock]\r\nRate=77\r\nRateStg=" + std::string(kRates[code].FileText) + "\r\n");
        EXPECT_EQ(state->Clock.ClockRate, code);
        Read(*state, "[Clock]\r\nRateStg=" + std::string(kRates[code].StatusText) + "\r\n");
        EXPECT_EQ(state->Clock.ClockRate, code) << "leading blanks do not matter";
    }
}

TEST(RateText, ThatIsUnknownIsRow6) {
    for (const char* text : {"", "1 Sa    (1 s)", "100 MSa", "100 MSa (10 ns)", "100 msa  (10 ns)"}) {
        const auto state = StartState(10);
        Read(*state, "[Clock]\r\nRateStg=" + std::string(text) + "\r\n");
        EXPECT_EQ(state->Clock.ClockRate, 6) << text;
    }
    const auto state = StartState(10);
    state->Clock.ClockRate = 11;
    Read(*state, "[Clock]\r\nRate=3\r\n");
    EXPECT_EQ(state->Clock.ClockRate, 11) << "without the text the rate stays";
}

TEST(ClockType4, BecomesType5WithANote) {
    const auto state = StartState(10);
    const ScriptedHost host = Read(*state, "[Clock]\r\nType=4\r\n");
    EXPECT_EQ(state->Clock.ClockType, 5);
    ASSERT_EQ(host.Boxes.size(), 1U);
    EXPECT_EQ(
        host.Boxes[0],
        (ScriptedHost::Box{
            "Clock mode External + Internal is not available. Mode changed to External + 100MHz Internal",
            "File load"}));
}

TEST(ExportZU, SelectsSamplesOrPattern) {
    const auto state = StartState(10);
    Read(*state, "ExportZU=0\r\n");
    EXPECT_EQ(state->Files.ExportZU, 0);
    EXPECT_EQ(state->Files.ExportPG, 1);
    Read(*state, "ExportZU=1\r\n");
    EXPECT_EQ(state->Files.ExportZU, 1);
    EXPECT_EQ(state->Files.ExportPG, 0);
    Read(*state, "ExportZU=2\r\n");
    EXPECT_EQ(state->Files.ExportZU, 0);
    EXPECT_EQ(state->Files.ExportPG, 1);
    Read(*state, "");
    EXPECT_EQ(state->Files.ExportPG, 1) << "an absent key changes nothing";
}

TEST(SerialWin, TakesTheModeAsFarAsTheViewKnowsIt) {
    const auto state = StartState(10);
    Read(*state, "[SerialWin]\r\nMode=2\r\nGroup=7\r\nDataPos=99\r\nStat=1\r\n");
    EXPECT_EQ(state->Serial.SerialMode, 2);
    EXPECT_EQ(state->Serial.SerialGroup, 7);
    EXPECT_EQ(state->Serial.SerialDataPos, 99);
    EXPECT_EQ(state->Windows.SerialStat, 0) << "windows are opened by the controller";
    for (const char* mode : {"3", "-1", "x"}) {
        Read(*state, "[SerialWin]\r\nMode=" + std::string(mode) + "\r\n");
        EXPECT_EQ(state->Serial.SerialMode, 0) << mode;
    }
}

TEST(Cursors, HaveTheirPaintedCopyOneFurther) {
    const auto state = StartState(10);
    Read(*state, "[Cursor]\r\nCur0=7\r\nCur5=-9\r\nCur1=2147483647\r\n");
    EXPECT_EQ(state->Cursors.Cur[0], 7);
    EXPECT_EQ(state->Cursors.Cur[6], 8);
    EXPECT_EQ(state->Cursors.Cur[11], -8);
    EXPECT_EQ(state->Cursors.Cur[7], INT32_MIN);
    EXPECT_EQ(state->Cursors.Cur[8], 151) << "also where the key is absent";
}

TEST(TrigWords, AreResetThenReadSliceBySlice) {
    const auto state = StartState(10);
    state->Trigger.TrigWord.Board[1][4][0] = '1';
    Read(*state, "[Trigger]\r\nTotTrigWords=3\r\nw0-2=01\r\nw3-2=1\r\nw2-9=0\r\nN2=a\r\nN9=b\r\n");
    EXPECT_EQ(std::string(state->Trigger.TrigWord.Board[0][2].data()), "01");
    EXPECT_EQ(state->Trigger.TrigWord.Board[0][2][3], 'X') << "what stands behind the text stays";
    EXPECT_EQ(std::string(state->Trigger.TrigWord.Board[3][2].data()), "1");
    EXPECT_EQ(std::string(state->Trigger.TrigWord.Board[2][9].data()), "0");
    EXPECT_EQ(state->Trigger.TrigWord.Board[1][4][0], 'X');
    EXPECT_EQ(state->Trigger.TrigWordName[9], "b");
    EXPECT_EQ(state->Trigger.TrigWordName[3], "3Event");
}

TEST(TrigWords, EndWithTheirCount) {
    const auto state = StartState(10);
    Read(*state,
         "[Trigger]\r\nTotTrigWords=2\r\nw0-0=0\r\nw1-0=1\r\nw2-0=1\r\nw0-1=1\r\nN0=a\r\nN1=b\r\nN2=c\r\n");
    EXPECT_EQ(state->Trigger.TrigWord.Board[1][0][0], '1');
    EXPECT_EQ(state->Trigger.TrigWord.Board[2][0][0], 'X');
    EXPECT_EQ(state->Trigger.TrigWord.Board[0][1][0], 'X');
    EXPECT_EQ(state->Trigger.TrigWordName[1], "b") << "the names count down on their own";
    EXPECT_EQ(state->Trigger.TrigWordName[2], "2Event");
    Read(*state, "[Trigger]\r\nTotTrigWords=0\r\nw0-0=0\r\nN0=z\r\n");
    EXPECT_EQ(state->Trigger.TrigWord.Board[0][0][0], 'X');
    EXPECT_EQ(state->Trigger.TrigWordName[0], "a");
}

TEST(TrigWords, WithoutACountAreAllRead) {
    const auto state = StartState(10);
    Read(*state, "[Trigger]\r\nw0-0=0\r\nw3-15=1\r\nN15=last\r\nC0=x\r\nC15=y\r\n");
    EXPECT_EQ(state->Trigger.TrigWord.Board[3][15][0], '1');
    EXPECT_EQ(state->Trigger.TrigWordName[15], "last");
    EXPECT_EQ(state->Trigger.TrigComment[15], "y");
}

TEST(Comments, EndWithTheirCount) {
    const auto state = StartState(10);
    Read(*state, "[Trigger]\r\nTotTrigComments=1\r\nC3=x\r\nC4=y\r\n");
    EXPECT_EQ(state->Trigger.TrigComment[3], "x");
    EXPECT_TRUE(state->Trigger.TrigComment[4].Empty());
}

TEST(LevelCount, IsTheNumberOfPositiveEntries) {
    const auto state = StartState(10);
    Read(*state, "[Trigger]\r\nSeqList=0,3,-2,4,0,0,0,0,0,0,0,0,0,0,0,0,\r\n");
    EXPECT_EQ(state->Trigger.LevelCount, 2);
    EXPECT_EQ(state->Trigger.SeqList[0], 0);
}

TEST(LevelCount, IsCountedBeforeADaceGetsItsFirstLevel) {
    const auto state = StartState(16, 1);
    Read(*state, "[Trigger]\r\nSeqList=0,0,0,0,0,0,0,0,0,0,0,0,\r\n");
    EXPECT_EQ(state->Trigger.LevelCount, 0);
    EXPECT_EQ(state->Trigger.SeqList[0], 1);
}

TEST(PatternVoltage, OfAPerchIsClampedInElement0Only) {
    const auto perch = StartState(27, 5);
    Read(*perch, "[Trigger]\r\nPatGenV0=5\r\nPatGenV1=5\r\n");
    EXPECT_EQ(perch->Pods.PatGenV[0], 14);
    EXPECT_EQ(perch->Pods.PatGenV[1], 5);
    Read(*perch, "[Trigger]\r\nPatGenV0=500\r\nPatGenV11=500\r\n");
    EXPECT_EQ(perch->Pods.PatGenV[0], 101);
    EXPECT_EQ(perch->Pods.PatGenV[11], 500);
    const auto roach = StartState(10);
    Read(*roach, "[Trigger]\r\nPatGenV0=5\r\n");
    EXPECT_EQ(roach->Pods.PatGenV[0], 5);
}

TEST(Alignment, IsClearedAndOneOldKeyServesAllPods) {
    const auto state = StartState(10);
    state->Pods.AdjAddr.fill(9);
    Read(*state, "");
    EXPECT_EQ(state->Pods.AdjAddr, (std::array<std::int32_t, kMaxPods>{}));
    Read(*state, "[Trigger]\r\nadj=5\r\nAdjAddr2=7\r\nAdjAddr3=-1\r\n");
    EXPECT_EQ(state->Pods.AdjAddr[0], 5);
    EXPECT_EQ(state->Pods.AdjAddr[2], 7);
    EXPECT_EQ(state->Pods.AdjAddr[3], 5);
    EXPECT_EQ(state->Pods.AdjAddr[19], 5);
}

TEST(Alignment, OfTheOldKeyStopsAtALowByteThatIsNotPositive) {
    for (const int value : {256, 128, -3, 512 + 200}) {
        const auto state = StartState(10);
        Read(*state, "[Trigger]\r\nadj=" + std::to_string(value) + "\r\n");
        EXPECT_EQ(state->Pods.AdjAddr[0], value);
        EXPECT_EQ(state->Pods.AdjAddr[1], 0);
    }
}

TEST(Alignment, OfPodsInMode1IsCleared) {
    const auto state = StartState(10);
    Read(*state,
         "[Trigger]\r\nAdjAddr0=5\r\nAdjAddr1=6\r\nAdjAddr2=7\r\n[Hardware]\r\nPod0=0\r\nPod1=1\r\nPod2="
         "2\r\n");
    EXPECT_EQ(state->Pods.AdjAddr[0], 5);
    EXPECT_EQ(state->Pods.AdjAddr[1], 0);
    EXPECT_EQ(state->Pods.AdjAddr[2], 7);
}

TEST(GroupSections, ReplaceTheGroupsThatTheyCount) {
    const auto state = StartState(10);
    Read(*state,
         "[Group]\r\nTotGroups=2\r\n[Group0]\r\nN=a\r\nS=2\r\nL=9,8,\r\nM=3\r\nB=1\r\nA=2\r\nT=1\r\nColor0=1,"
         "2,3\r\n"
         "[Group4]\r\nN=b\r\nS=1\r\nL=7,\r\nColor0=9,9,9\r\n[Group5]\r\nN=c\r\nS=1\r\nL=6,\r\n");
    EXPECT_EQ(state->Groups[0].Size, 2);
    EXPECT_EQ(state->Groups[0].Channels[0], 9);
    EXPECT_EQ(state->Groups[0].Mode, 3);
    EXPECT_EQ(state->Groups[0].BitOrder, 1);
    EXPECT_EQ(state->Groups[0].CsActiveHigh, 2);
    EXPECT_EQ(state->Groups[0].TwosComplement, 1);
    EXPECT_EQ(state->Groups[0].Color, 0x030201U);
    EXPECT_EQ(state->Groups[4].Name, "b");
    EXPECT_EQ(state->Groups[4].Color, 0U) << "the colour's key carries the group's number";
    for (const int other : {1, 2, 3, 5, 19})
        EXPECT_EQ(state->Groups[static_cast<std::size_t>(other)].Size, 0);
    EXPECT_EQ(state->StateList.ScreenWidth[0], 3) << "column widths follow at once";
}

TEST(GroupSections, WithoutACountLeaveTheDefaultGroupsBesideThem) {
    const auto state = StartState(10);
    state->Groups[1].Name = "old";
    Read(*state, "[Group0]\r\nN=a\r\nS=1\r\nL=3,\r\n");
    EXPECT_EQ(state->Groups[0].Size, 1);
    EXPECT_EQ(state->Groups[1].Size, 8);
    EXPECT_EQ(state->Groups[1].Name, "Group 2");
}

TEST(GroupSections, OfACountOf0LeaveNoGroup) {
    const auto state = StartState(10);
    Read(*state, "[Group]\r\nTotGroups=0\r\n[Group0]\r\nN=a\r\nS=1\r\nL=3,\r\n");
    for (const GroupRecord& group : state->Groups) EXPECT_EQ(group.Size, 0);
    Read(*state, "[Group]\r\nTotGroups=-1\r\n[Group0]\r\nN=a\r\nS=1\r\nL=3,\r\n");
    EXPECT_EQ(state->Groups[0].Size, 1) << "-1 is no count";
    EXPECT_EQ(state->Groups[1].Size, 8);
}

TEST(GroupSections, LoseAnEntryWithoutItsComma) {
    const auto state = StartState(10);
    Read(*state, "[Group]\r\nTotGroups=1\r\n[Group5]\r\nN=x\r\nS=3\r\nL=1,2,3\r\n");
    EXPECT_EQ(state->Groups[5].Size, 3);
    EXPECT_EQ(state->Groups[5].Channels[0], 1);
    EXPECT_EQ(state->Groups[5].Channels[1], 2);
    EXPECT_EQ(state->Groups[5].Channels[2], 42) << "the third is what the default list had";
}

TEST(GroupSections, WithoutAListAreEmpty) {
    const auto state = StartState(10);
    Read(*state, "[Group0]\r\nN=a\r\nS=3\r\nL=\r\n[Group1]\r\nN=b\r\nS=3\r\n");
    EXPECT_EQ(state->Groups[0].Size, 0);
    EXPECT_EQ(state->Groups[1].Size, 0);
}

TEST(GroupSections, TakeAtMostTheirSize) {
    const auto state = StartState(10);
    std::string list;
    for (int i = 0; i < 300; ++i) list += std::to_string(i) + ",";
    Read(*state, "[Group0]\r\nN=a\r\nS=2\r\nL=" + list + "\r\n[Group1]\r\nN=b\r\nS=999999\r\nL=" + list +
                     "\r\n[Group2]\r\nN=c\r\nS=-5\r\nL=" + list + "\r\n");
    EXPECT_EQ(state->Groups[0].Size, 2);
    EXPECT_EQ(state->Groups[0].Channels[2], 2);
    EXPECT_EQ(state->Groups[0].Channels[1], 1);
    EXPECT_EQ(state->Groups[1].Size, 160);
    EXPECT_EQ(state->Groups[1].Channels[159], 159);
    EXPECT_EQ(state->Groups[2].Size, 0);
}

TEST(GroupSections, AreCountedByTheirNames) {
    const auto state = StartState(10);
    Read(*state,
         "[Group]\r\nTotGroups=1\r\n[Group0]\r\nS=1\r\nL=5,\r\n[Group1]\r\nN=b\r\nS=1\r\nL=6,\r\n"
         "[Group2]\r\nN=c\r\nS=1\r\nL=7,\r\n");
    EXPECT_EQ(state->Groups[0].Size, 1) << "a section without a name is read and not counted";
    EXPECT_EQ(state->Groups[1].Size, 1);
    EXPECT_EQ(state->Groups[2].Size, 0);
}

TEST(DisplayLines, LoseAsManyRowsAsNameMissingChannels) {
    const auto state = StartState(13);
    Read(*state,
         "[TimingWin]\r\nTimingLines=5\r\nLSE0=40,5,0\r\nLSE1=0,5,0\r\nLSE2=159,5,0\r\nLSE3=160,0,0\r\nLSE4="
         "39,5,0\r\n");
    EXPECT_EQ(state->Timing.TimingLines, 3) << "the last rows go, not the offending ones";
    EXPECT_EQ(state->Timing.LineSource[0], 40);
    EXPECT_EQ(state->Timing.LineSource[2], 159);
}

TEST(DisplayLines, KeepAtLeastOne) {
    const auto state = StartState(13);
    Read(*state, "[TimingWin]\r\nTimingLines=1\r\nLSE0=100,5,0\r\n");
    EXPECT_EQ(state->Timing.TimingLines, 1);
    Read(*state, "[TimingWin]\r\nTimingLines=3\r\nLSE0=100,5,0\r\nLSE1=101,5,0\r\nLSE2=102,5,0\r\n");
    EXPECT_EQ(state->Timing.TimingLines, 1);
    Read(*state, "[TimingWin]\r\nTimingLines=0\r\n");
    EXPECT_EQ(state->Timing.TimingLines, 0);
}

TEST(DisplayLines, AreAtMost231) {
    const auto state = StartState(10);
    Read(*state, "[TimingWin]\r\nTimingLines=2147483647\r\nLSE230=195,6,1\r\nLSE231=7,7,7\r\n");
    EXPECT_EQ(state->Timing.TimingLines, 231);
    EXPECT_EQ(state->Timing.LineSource[230], 195);
    EXPECT_EQ(state->Timing.LineSource[231], 0);
    Read(*state, "[TimingWin]\r\nTimingLines=-7\r\n");
    EXPECT_EQ(state->Timing.TimingLines, 0);
}

TEST(DisplayLines, FillUpMissingNumbersWith0) {
    const auto state = StartState(10);
    Read(*state,
         "[TimingWin]\r\nTimingLines=3\r\nLSE0=12\r\nLSE1=\r\nTimingDisp0=4\r\nTimingDisp1=-1,300,-1\r\n");
    EXPECT_EQ(state->Timing.LineSource[0], 12);
    EXPECT_EQ(state->Timing.LineStyle[0], 0);
    EXPECT_EQ(state->Timing.LineSource[1], 0);
    EXPECT_EQ(state->Timing.LineSource[2], 2) << "a row without a key stays";
    EXPECT_EQ(state->Timing.TimingDisp[0].Type, 4);
    EXPECT_EQ(state->Timing.TimingDisp[1].Type, 255);
    EXPECT_EQ(state->Timing.TimingDisp[1].Range, 44);
    EXPECT_EQ(state->Timing.TimingDisp[1].TrigWord, -1);
}

TEST(RoundTrip, IsStableFromTheFirstLoadOn) {
    for (const int row : {13, 15, 16, 27}) {
        const auto state = StartState(row);
        ScriptedHost host;
        ReadSettings(*state, host, IniText::Parse(Written(*state)));
        const std::string once = Written(*state);
        const auto fresh = StartState(row);
        ReadSettings(*fresh, host, IniText::Parse(once));
        EXPECT_EQ(Written(*fresh), once) << row;
        EXPECT_TRUE(host.Boxes.empty());
    }
}

}  // namespace
}  // namespace zu
