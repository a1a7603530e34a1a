// Settings texts of older programs.
#include <gtest/gtest.h>

#include "files/SettingsReader.h"
#include "support/ScriptedHost.h"
#include "support/StartState.h"

namespace zu {
namespace {

constexpr int kVersions[] = {0, 1, 183, 184, 185, 186, 187, 188, 189, 190, 191, 192};

/// The state that a text of a version leaves on a model with 20 pods; version 0 is a text without the key.
std::unique_ptr<InstrumentState> Read(int version, const std::string& text) {
    auto state = test::StartState(10);
    test::ScriptedHost host;
    const std::string head = version == 0 ? "" : "FileVersion=" + std::to_string(version) + "\r\n";
    ReadSettings(*state, host, IniText::Parse("[File]\r\n" + head + text));
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(state->Files.FileVersion, version);
    return state;
}

TEST(Versions, NumberThePodModesInTheirOwnWayBelow184) {
    const std::string text = "[Hardware]\r\nPod0=0\r\nPod1=1\r\nPod2=2\r\nPod3=3\r\nPod4=7\r\nPod5=-1\r\n";
    for (const int version : kVersions) {
        const auto state = Read(version, text);
        const bool old = version < 184;
        EXPECT_EQ(state->Pods.HardwarePod[0], old ? 1 : 0) << version;
        EXPECT_EQ(state->Pods.HardwarePod[1], old ? 0 : 1) << version;
        EXPECT_EQ(state->Pods.HardwarePod[2], old ? 3 : 2) << version;
        EXPECT_EQ(state->Pods.HardwarePod[3], 3) << version;
        EXPECT_EQ(state->Pods.HardwarePod[4], 7) << version;
        EXPECT_EQ(state->Pods.HardwarePod[5], old ? 0 : -1) << version << ": 32 bits take -1 as absent";
    }
}

TEST(Versions, Below184ReadThePodsOfTheModelOnly) {
    auto state = test::StartState(13);
    test::ScriptedHost host;
    ReadSettings(*state, host,
                 IniText::Parse("[File]\r\nFileVersion=183\r\n[Hardware]\r\nPod4=0\r\nPod5=0\r\n"));
    EXPECT_EQ(state->Pods.HardwarePod[4], 1);
    EXPECT_EQ(state->Pods.HardwarePod[5], 0);
}

TEST(Versions, ClearTheAlignmentOfTheRenumberedMode) {
    const auto state =
        Read(183, "[Trigger]\r\nAdjAddr0=5\r\nAdjAddr1=6\r\n[Hardware]\r\nPod0=0\r\nPod1=1\r\n");
    EXPECT_EQ(state->Pods.AdjAddr[0], 0);
    EXPECT_EQ(state->Pods.AdjAddr[1], 6);
}

TEST(Versions, Below185CountTheRateFromOneLess) {
    for (const int version : kVersions) {
        const auto state = Read(version, "[Clock]\r\nRate=9\r\nRateStg=1 MSa   (1 us)\r\n");
        EXPECT_EQ(state->Clock.ClockRate, version < 185 ? 10 : 11) << version;
    }
    EXPECT_EQ(Read(184, "")->Clock.ClockRate, 5) << "an absent rate is not raised";
    EXPECT_EQ(Read(184, "[Clock]\r\nRate=255\r\n")->Clock.ClockRate, 0);
}

TEST(Versions, From186OnHoldTheLevelLists) {
    const std::string text =
        "[Trigger]\r\nEdgeList16=0,\r\nElseList=2,\r\nCountList=3,\r\nModeList=1,\r\nTrigDelayRateList=4,"
        "\r\n";
    for (const int version : kVersions) {
        const auto state = Read(version, text);
        const bool held = version >= 186;
        EXPECT_EQ(state->Trigger.EdgeList16[0], held ? 0 : 1) << version;
        EXPECT_EQ(state->Trigger.ElseList[0], held ? 2 : 0) << version;
        EXPECT_EQ(state->Trigger.CountList[0], held ? 3 : 1) << version;
        EXPECT_EQ(state->Trigger.ModeList[0], held ? 1 : 0) << version;
        EXPECT_EQ(state->Trigger.TrigDelayRateList[0], held ? 4 : 0) << version;
    }
}

TEST(Versions, Above191HoldTheMatchMode) {
    for (const int version : kVersions) {
        const auto state = Read(version, "[Trigger]\r\nTrigMatchMode=0,\r\n");
        EXPECT_EQ(state->Trigger.TrigMatchMode[0], version > 191 ? 0 : 1) << version;
    }
    EXPECT_EQ(Read(193, "[Trigger]\r\nTrigMatchMode=0,\r\n")->Trigger.TrigMatchMode[0], 0);
}

TEST(Versions, TellTheSequenceEachInItsOwnKeys) {
    const std::string text =
        "[Trigger]\r\nTotTrigWords=1\r\nTotTrigComments=1\r\nseq0=2\r\nseqName0=old\r\nseqN0=3,"
        "named\r\nSeqList=4,\r\n"
        "N0=word\r\nC0=said\r\n";
    for (const int version : kVersions) {
        const auto state = Read(version, text);
        const int entry = state->Trigger.SeqList[0];
        const std::string name(state->Trigger.TrigWordName[0].View());
        const bool words = version >= 189;
        const int form = version == 0 ? 1 : version <= 186 ? 2 : version <= 188 ? 3 : 4;
        constexpr const char* kNames[] = {"0Event", "old", "named", "word"};
        EXPECT_EQ(entry, form) << version;
        EXPECT_EQ(name, kNames[form - 1]) << version;
        EXPECT_EQ(state->Trigger.TrigComment[0], words ? "said" : "") << version;
        EXPECT_EQ(state->Trigger.LevelCount, 1);
    }
}

TEST(Versions, ReadAll16OldestLevels) {
    const auto state =
        Read(186, "[Trigger]\r\nseq0=-1\r\nseq15=9\r\nseqName15=a name longer than fourteen\r\n");
    EXPECT_EQ(state->Trigger.SeqList[0], 1) << "a stored -1 keeps the old value";
    EXPECT_EQ(state->Trigger.SeqList[15], 9);
    EXPECT_EQ(state->Trigger.TrigWordName[15], "a name longer ");
}

TEST(Versions, CountNamedLevelsIn188Only) {
    const std::string text = "[Trigger]\r\nTotTrigWords=2\r\nseqN1=5,a b\r\nseqN3=6\r\nseqN4=-1,c,d\r\n";
    const auto all = Read(187, text);
    EXPECT_EQ(all->Trigger.SeqList[1], 5);
    EXPECT_EQ(all->Trigger.TrigWordName[1], "a b");
    EXPECT_EQ(all->Trigger.SeqList[3], 6);
    EXPECT_EQ(all->Trigger.TrigWordName[3], "3Event") << "without a comma there is no name";
    EXPECT_EQ(all->Trigger.SeqList[4], -1);
    EXPECT_EQ(all->Trigger.TrigWordName[4], "c,d");
    const auto two = Read(188, text);
    EXPECT_EQ(two->Trigger.SeqList[3], 6);
    EXPECT_EQ(two->Trigger.SeqList[4], 0);
}

TEST(Versions, Below188MayRaiseTheLogCounter) {
    for (const int version : kVersions) {
        const auto state = Read(version, "DataLogSaveCnt=12\r\n");
        EXPECT_EQ(state->Files.DataLogCnt, version < 188 ? 12 : 0) << version;
    }
    auto state = test::StartState(10);
    state->Files.DataLogCnt = 20;
    test::ScriptedHost host;
    ReadSettings(*state, host, IniText::Parse("[File]\r\nFileVersion=187\r\nDataLogSaveCnt=12\r\n"));
    EXPECT_EQ(state->Files.DataLogCnt, 20);
}

TEST(Versions, From187OnHoldColumnsAndLinesInOneKey) {
    const std::string text =
        "[TimingWin]\r\nTimingLines=2\r\nTimingDisp0=5,1,2\r\nTimingDispCol0=6\r\nLSE0=7,6,1\r\nLS0=8,"
        "7\r\nLSExt0=2,0\r\n";
    for (const int version : kVersions) {
        const auto state = Read(version, text);
        const bool old = version < 187;
        EXPECT_EQ(state->Timing.TimingDisp[0].Type, old ? 6 : 5) << version;
        EXPECT_EQ(state->Timing.LineSource[0], old ? 8 : 7) << version;
        EXPECT_EQ(state->Timing.LineStyle[0], old ? 7 : 6) << version;
        EXPECT_EQ(state->Timing.LineMode[0], old ? 2 : 1) << version;
    }
}

TEST(Versions, 187ReadsAll230Lines) {
    const std::string text =
        "[TimingWin]\r\nTimingLines=1\r\nLSE1=44,6,1\r\nLSE229=45,6,1\r\nLSE230=46,6,1\r\n";
    const auto old = Read(187, text);
    EXPECT_EQ(old->Timing.LineSource[1], 44);
    EXPECT_EQ(old->Timing.LineSource[229], 45);
    EXPECT_EQ(old->Timing.LineSource[230], 0);
    EXPECT_EQ(old->Timing.TimingLines, 1);
    EXPECT_EQ(Read(188, text)->Timing.LineSource[1], 1) << "later ones as many as are in use";
}

TEST(Versions, Below187MeasuredColumnsStandInThreeKeys) {
    const auto state = Read(186,
                            "[TimingWin]\r\nTimingDispInfoType=2\r\nTimingDispCol7=9\r\n"
                            "TimingDispMeasureRange7=3\r\nTimingDispColTrigWord7=-2\r\nDispNums=1\r\n");
    EXPECT_EQ(state->Timing.TimingDisp[7].Type, 9);
    EXPECT_EQ(state->Timing.TimingDisp[7].Range, 3);
    EXPECT_EQ(state->Timing.TimingDisp[7].TrigWord, -2);
    EXPECT_EQ(state->Timing.TimingDisp[0].Type, 0);
}

TEST(Versions, Below187FourSwitchesMakeTheOtherColumns) {
    auto state = test::StartState(10);
    state->Timing.TimingDisp.fill({7, 7, 7});
    test::ScriptedHost host;
    ReadSettings(
        *state, host,
        IniText::Parse("[File]\r\nFileVersion=186\r\n[TimingWin]\r\nTimingDispInfoType=1\r\nDispNums=1\r\n"
                       "DispTrigWord=1\r\nDispCurVal=2\r\n"));
    const auto type = [&state](std::size_t i) { return int{state->Timing.TimingDisp[i].Type}; };
    EXPECT_EQ(type(0), 1);
    EXPECT_EQ(type(1), 0);
    EXPECT_EQ(type(2), 3);
    EXPECT_EQ(type(3), 4);
    for (std::size_t i = 4; i < 8; ++i) EXPECT_EQ(type(i), 0);
    EXPECT_EQ(state->Timing.TimingDisp[2].Range, 0);
}

TEST(Versions, Below187TheOldestLinesEndAtAMissingOrZeroSource) {
    const auto state = Read(186, "[TimingWin]\r\nL0=9\r\nS0=6\r\nL1=160\r\nL2=0\r\nL3=12\r\n");
    EXPECT_EQ(state->Timing.LineSource[0], 9);
    EXPECT_EQ(state->Timing.LineStyle[0], 6);
    EXPECT_EQ(state->Timing.LineSource[1], 160);
    EXPECT_EQ(state->Timing.LineStyle[1], 5) << "an absent style stays";
    EXPECT_EQ(state->Timing.LineSource[2], 2);
    EXPECT_EQ(state->Timing.LineSource[3], 3);
    EXPECT_EQ(Read(186, "[TimingWin]\r\nL0=256\r\nL1=7\r\n")->Timing.LineSource[0], 0)
        << "a low byte of 0 ends it";
}

TEST(Versions, Below187TheOldestLinesGiveWayToTheLaterOnes) {
    const auto state = Read(186, "[TimingWin]\r\nL0=9\r\nL1=10\r\nLS0=20,7\r\n");
    EXPECT_EQ(state->Timing.LineSource[0], 20);
    EXPECT_EQ(state->Timing.LineSource[1], 1);
}

TEST(Versions, OfAnyAgeTakeTheOldestLinesWhereNoLaterOnesStand) {
    for (const int version : kVersions) {
        const auto state = Read(version, "[TimingWin]\r\nTimingLines=2\r\nL0=9\r\nS0=6\r\nL1=160\r\n");
        EXPECT_EQ(state->Timing.LineSource[0], 9) << version;
        EXPECT_EQ(state->Timing.LineStyle[0], 6) << version;
        EXPECT_EQ(state->Timing.LineSource[1], 160) << version;
    }
    const auto both = Read(192, "[TimingWin]\r\nTimingLines=2\r\nL0=9\r\nL1=10\r\nLSE0=20,7,0\r\n");
    EXPECT_EQ(both->Timing.LineSource[0], 20);
    EXPECT_EQ(both->Timing.LineSource[1], 1);
}

TEST(Versions, WithoutAFileSectionAreTheOldest) {
    auto state = test::StartState(10);
    test::ScriptedHost host;
    ReadSettings(
        *state, host,
        IniText::Parse("[Trigger]\r\nseq0=9\r\nSeqList=9,\r\nEdgeList16=0,\r\n[Clock]\r\nRate=3\r\n"));
    EXPECT_EQ(state->Files.FileVersion, 0);
    EXPECT_EQ(state->Trigger.SeqList[0], 1);
    EXPECT_EQ(state->Trigger.EdgeList16[0], 1);
    EXPECT_EQ(state->Clock.ClockRate, 4);
}

}  // namespace
}  // namespace zu
