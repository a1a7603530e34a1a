// Rates, clock sources and what they do to memory, with every message.
#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

constexpr const char* kPatternRate =
    "ERROR:|Max sample rate when in pattern generator mode is 100 MHz. Rate has been set to 100MHz";
constexpr const char* kPatternMemory =
    "ERROR:|Current memory mode is not available in pattern generator mode. Memory mode has been reset.";
constexpr const char* kRateMemory =
    "ERROR:|Current memory mode is not available with this sample rate. Memory mode has been reset.";
constexpr const char* kExternalMemory =
    "ERROR:|Current memory mode is not available with an external clock. Memory mode has been reset.";
constexpr const char* kInternalOnly =
    "ERROR:|This mode is only available with and internal clock <= 250MHz. Memory mode has been reset.";

constexpr int kEveryRow[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,
                             14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27};

/// Codes that a row's group does not offer, written anew.
std::set<int> NotOffered(int row) {
    const std::set<int> odd{13, 15, 17, 19, 21};
    std::set<int> codes = odd;
    const std::set<int> rowsOfB{1, 2, 6, 7, 11, 12, 25, 26};
    if (row == 16 || row == 17) {
        codes.insert({0, 1, 2, 3, 4});
        for (int code = 24; code <= 34; ++code) codes.insert(code);
    } else if (row == 19) {
        codes.insert({2, 4});
    } else if (row == 27) {
        codes.insert({0, 1, 3});
    } else if (rowsOfB.count(row) != 0) {
        codes.insert({0, 1, 2, 3});
    } else {
        codes.insert({0, 2, 4});
    }
    return codes;
}

class RowRates : public testing::TestWithParam<int> {};

TEST_P(RowRates, AreMarkedByTheirGroup) {
    ClockRecord clock;
    MarkAllRates(clock);
    MarkRowRates(clock, GetParam());
    for (int code = 0; code < kRateCodes; ++code) {
        EXPECT_EQ(clock.RateAvail[static_cast<std::size_t>(code)],
                  NotOffered(GetParam()).count(code) ? 255 : 1)
            << code;
    }
}

TEST_P(RowRates, StepOverWhatIsNotOffered) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Identity.HardwareType = static_cast<std::uint8_t>(GetParam());
    MarkAllRates(bench.State->Clock);
    MarkRowRates(bench.State->Clock, GetParam());
    bench.State->Identity.HardwareType = 24;  // a row whose rates change nothing else
    const std::set<int> missing = NotOffered(GetParam());
    for (int code = 0; code < kRateCodes; ++code) {
        int up = code - 1;
        while (up >= 0 && missing.count(up) != 0) --up;
        bench.State->Clock.ClockRate = static_cast<std::uint8_t>(code);
        RateUp(bench.App);
        EXPECT_EQ(bench.State->Clock.ClockRate, up < 0 ? code : up);
        int down = code + 1;
        while (down < kRateCodes && missing.count(down) != 0) ++down;
        bench.State->Clock.ClockRate = static_cast<std::uint8_t>(code);
        RateDown(bench.App);
        EXPECT_EQ(bench.State->Clock.ClockRate, down == kRateCodes ? code : down);
    }
}

INSTANTIATE_TEST_SUITE_P(All, RowRates, testing::ValuesIn(kEveryRow));

TEST(RateSteps, OfGroupA) {
    Bench bench;
    bench.UseRow(15);
    MarkAllRates(bench.State->Clock);
    MarkRowRates(bench.State->Clock, 15);
    RateUp(bench.App);
    EXPECT_EQ(bench.State->Clock.ClockRate, 3) << "code 4 is skipped";
    bench.State->Clock.ClockRate = 34;
    RateDown(bench.App);
    EXPECT_EQ(bench.State->Clock.ClockRate, 34);
}

TEST(RateSteps, DoNothingWithAnExternalClock) {
    Bench bench;
    bench.UseRow(15);
    MarkAllRates(bench.State->Clock);
    bench.State->Clock.ClockType = 1;
    RateUp(bench.App);
    RateDown(bench.App);
    EXPECT_EQ(bench.State->Clock.ClockRate, 5);
    EXPECT_EQ(bench.State->Clock.ClockType, 1);
    EXPECT_TRUE(bench.Shell.Log.empty());
}

// --- SetRate -------------------------------------------------------------------------------------------

TEST(SetRate, LeavesTheDeepModeForTheTopRate) {
    Bench bench;
    bench.UseRow(15);
    SetRate(bench.App, 3);
    SetMemoryMode(bench.App, -1, 3);
    EXPECT_EQ(bench.State->Memory.BufferLen, 262144);
    bench.Forget();
    SetRate(bench.App, 1);
    EXPECT_EQ(bench.Texts(), Strings{kRateMemory});
    const MemoryRecord& memory = bench.State->Memory;
    EXPECT_EQ(memory.HardwareMode, 1);
    EXPECT_EQ(memory.HardwareMux, 1);
    EXPECT_EQ(memory.BufferLen, 524288);
    EXPECT_EQ(memory.DisplayLen, 2097152);
    for (int i = 0; i < 20; ++i) {
        const bool holds = i % 5 == 0 || i % 5 == 2 || i % 5 == 4;
        EXPECT_EQ(GetBufLenFull(bench.State->Buffer.BufLen, i), holds ? 524288 : 0) << i;
    }
}

TEST(SetRate, LeavesTheDoubledSmallModeForTheTopRate) {
    Bench bench;
    bench.UseRow(14);
    SetMemoryMode(bench.App, -1, 2);
    SetRate(bench.App, 1);
    EXPECT_EQ(bench.Texts(), Strings{kRateMemory});
    EXPECT_EQ(bench.State->Memory.HardwareMode, 0);
    EXPECT_EQ(bench.State->Memory.BufferLen, 32768);
}

TEST(SetRate, LeavesADeepModeWhenTheTopRateEnds) {
    Bench bench;
    bench.UseRow(13);
    SetRate(bench.App, 1);
    bench.State->Memory.HardwareMode = 3;
    bench.Forget();
    SetRate(bench.App, 5);
    EXPECT_EQ(bench.Texts(), Strings{kRateMemory});
    EXPECT_EQ(bench.State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench.State->Memory.HardwareMux, 0);
    EXPECT_EQ(bench.State->Memory.BufferLen, 131072);
}

TEST(SetRate, BelowCode3AndNotTheTopRateLeavesTheMemory) {
    for (const int code : {0, 2}) {
        Bench bench;
        bench.UseRow(15);
        SetMemoryMode(bench.App, -1, 1);
        bench.State->Pods.ReprogramFlag = 0;
        SetRate(bench.App, code);
        EXPECT_EQ(bench.State->Clock.ClockRate, code);
        EXPECT_EQ(bench.State->Memory.BufferLen, 131072);
        EXPECT_EQ(bench.State->Pods.ReprogramFlag, 0) << "no layout ran";
    }
}

TEST(SetRate, SwitchesToTheInternalClock) {
    Bench bench;
    bench.UseRow(15);
    SetClockType(bench.App, 1);
    SetRate(bench.App, 8);
    EXPECT_EQ(bench.State->Clock.ClockType, 0);
    EXPECT_EQ(bench.State->Clock.ClockRate, 8);
    EXPECT_EQ(bench.State->Clock.ClockChanged, 1);
}

TEST(SetRate, WhenIdleEndsInAStop) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Capture.CaptureCount = 7;
    SetRate(bench.App, 8);
    EXPECT_EQ(bench.State->Capture.StatusText.View(), "Stop hit (7)");
}

TEST(SetRate, RefreshesBarsAndWindows) {
    Bench bench;
    bench.UseRow(24);
    bench.State->Windows.TimingStat = 1;
    bench.State->Windows.CursorDlgStat = 1;
    SetRate(bench.App, 8);
    EXPECT_EQ(bench.Shell.Log, (Strings{"bars", "redraw Timing", "redraw Cursor", "redraw Cursor"}))
        << "the last redraw is the stop's";
}

TEST(SetRate, IgnoresACodeThatIsNone) {
    Bench bench;
    bench.UseRow(15);
    for (const int code : {-1, 35, 1000}) SetRate(bench.App, code);
    EXPECT_EQ(bench.State->Clock.ClockRate, 5);
}

/// What a change from one code to another does on a row: multiplexing afterwards, or "no layout".
struct RuleCase {
    int Old, New;
    int Mux;  ///< kNoLayout: nothing ran
};
constexpr int kNoLayout = 99;

void ExpectRule(const std::vector<int>& rows, const std::vector<RuleCase>& cases) {
    for (const int row : rows) {
        Bench bench;
        bench.UseRow(row);
        for (const RuleCase& c : cases) {
            bench.State->Pods.ReprogramFlag = 0;
            bench.State->Memory.HardwareMode = 1;
            bench.State->Clock.ClockRate = static_cast<std::uint8_t>(c.Old);
            RateChangeRule(bench.App, c.New);
            EXPECT_EQ(bench.State->Clock.ClockRate, c.New);
            EXPECT_EQ(bench.State->Pods.ReprogramFlag, c.Mux == kNoLayout ? 0 : 1)
                << row << " " << c.Old << " " << c.New;
            if (c.Mux != kNoLayout) {
                EXPECT_EQ(bench.State->Memory.HardwareMux, c.Mux) << row << " " << c.Old << " " << c.New;
            }
        }
    }
}

TEST(RateChangeRule, OfTheRowsWithHalfAndQuarter) {
    ExpectRule({0, 3, 4, 5, 8, 9, 10}, {{5, 3, 1},
                                        {5, 1, 2},
                                        {3, 1, 2},
                                        {1, 3, 1},
                                        {3, 5, 0},
                                        {1, 5, 0},
                                        {5, 8, kNoLayout},
                                        {5, 4, kNoLayout},
                                        {5, 5, kNoLayout}});
}

TEST(RateChangeRule, OfTheRowsWithHalf) {
    ExpectRule({1, 2, 6, 7, 11, 12}, {{5, 4, 1}, {4, 5, 0}, {4, 4, 1}, {5, 3, kNoLayout}, {3, 5, kNoLayout}});
}

TEST(RateChangeRule, OfTheCentralRows) {
    ExpectRule({13, 14, 15},
               {{5, 1, 1}, {1, 5, 0}, {1, 1, 1}, {5, 8, 0}, {5, 3, 0}, {5, 2, kNoLayout}, {5, 0, kNoLayout}});
}

TEST(RateChangeRule, OfTheCentralRowsWithAnExternalClockAlwaysLetsTheLayoutChoose) {
    for (const int code : {0, 1, 2, 5}) {
        Bench bench;
        bench.UseRow(15);
        bench.State->Clock.ClockType = 1;
        bench.State->Memory.HardwareMode = 1;
        RateChangeRule(bench.App, code);
        EXPECT_EQ(bench.State->Memory.HardwareMux, 0);
        EXPECT_EQ(bench.State->Pods.ReprogramFlag, 1);
    }
}

struct ModeRule {
    int Row, New, Mode;
    int NewMode;  ///< kNoLayout: nothing ran
};

TEST(RateChangeRule, OfTheTenchRowsDoublesTheMode) {
    for (const ModeRule& c :
         {ModeRule{18, 1, 0, 4}, ModeRule{18, 1, 1, 5}, ModeRule{18, 1, 4, kNoLayout},
          ModeRule{18, 5, 0, kNoLayout}, ModeRule{19, 1, 0, 4}, ModeRule{19, 1, 1, 5}, ModeRule{19, 0, 0, 6},
          ModeRule{19, 0, 4, 6}, ModeRule{19, 0, 1, 7}, ModeRule{19, 0, 5, 7}, ModeRule{19, 0, 6, kNoLayout},
          ModeRule{19, 0, 7, kNoLayout}, ModeRule{19, 5, 0, kNoLayout}}) {
        Bench bench;
        bench.UseRow(c.Row);
        bench.State->Memory.HardwareMode = static_cast<std::int8_t>(c.Mode);
        RateChangeRule(bench.App, c.New);
        EXPECT_EQ(bench.State->Pods.ReprogramFlag, c.NewMode == kNoLayout ? 0 : 1);
        EXPECT_EQ(bench.State->Memory.HardwareMode, c.NewMode == kNoLayout ? c.Mode : c.NewMode)
            << c.Row << " " << c.New << " " << c.Mode;
    }
}

TEST(RateChangeRule, OfRow27MultiplexesCode2) {
    ExpectRule({27}, {{5, 2, 1}, {2, 5, kNoLayout}, {5, 8, kNoLayout}});
}

TEST(RateChangeRule, OfTheOtherRowsDoesNothing) {
    ExpectRule(
        {16, 17, 21, 22, 23, 24, 25, 26},
        {{5, 1, kNoLayout}, {1, 5, kNoLayout}, {5, 3, kNoLayout}, {5, 4, kNoLayout}, {5, 8, kNoLayout}});
}

// --- Pattern generator ---------------------------------------------------------------------------------

TEST(PatternPods, LimitTheRateTo100MHz) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Pods.HardwarePod[2] = 1;
    for (int code = 0; code < kRateCodes; ++code) {
        bench.Forget();
        const bool tooFast = code == 0 || code == 1 || code == 3 || code == 4;
        SetRate(bench.App, code);
        EXPECT_EQ(bench.State->Clock.ClockRate, tooFast ? 5 : code) << "code 2 is not in the rule";
        EXPECT_EQ(bench.Texts(), tooFast ? Strings{kPatternRate} : Strings{});
    }
}

TEST(PatternPods, EndTheDeepMode) {
    Bench bench;
    bench.UseRow(15);
    SetMemoryMode(bench.App, -1, 3);
    bench.State->Pods.HardwarePod[0] = 2;
    SetRate(bench.App, 3);
    EXPECT_EQ(bench.Texts(), (Strings{kPatternRate, kPatternMemory}));
    EXPECT_EQ(bench.State->Clock.ClockRate, 5);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench.State->Memory.BufferLen, 131072);
}

TEST(PatternPods, OfThePatternSeriesAreFree) {
    Bench bench;
    bench.State->Identity.ModelSeries = 5;
    bench.UseRow(15);
    bench.State->Pods.HardwarePod[2] = 1;
    SetRate(bench.App, 3);
    EXPECT_EQ(bench.State->Clock.ClockRate, 3);
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

TEST(PatternPods, OffPodsAreNone) {
    for (const std::int8_t mode :
         {std::int8_t{0}, std::int8_t{3}, std::int8_t{4}, std::int8_t{-1}, std::int8_t{5}}) {
        Bench bench;
        bench.UseRow(15);
        bench.State->Pods.HardwarePod.fill(mode);
        EXPECT_EQ(CheckPatternGeneratorRate(bench.App, 1), 1);
        EXPECT_TRUE(bench.Host.Boxes.empty());
    }
}

// --- Clock types ---------------------------------------------------------------------------------------

TEST(SetClockType, EndsTheDeepMode) {
    Bench bench;
    bench.UseRow(15);
    SetMemoryMode(bench.App, -1, 3);
    SetClockType(bench.App, 1);
    EXPECT_EQ(bench.Texts(), Strings{kExternalMemory});
    EXPECT_EQ(bench.State->Clock.ClockType, 1);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench.State->Memory.BufferLen, 131072);
    bench.Forget();
    SetMemoryMode(bench.App, -1, 3);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench.Texts(), Strings{kInternalOnly});
}

TEST(SetClockType, EndsTheDoubledSmallModeByTheLayout) {
    Bench bench;
    bench.UseRow(15);
    SetMemoryMode(bench.App, -1, 2);
    SetClockType(bench.App, 2);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 0);
    EXPECT_EQ(bench.State->Memory.BufferLen, 8192);
    EXPECT_EQ(bench.Texts(), Strings{kInternalOnly});
}

TEST(SetClockType, RunsTheRateRuleWithTheOldClock) {
    Bench bench;
    bench.UseRow(15);
    SetRate(bench.App, 1);
    bench.State->Memory.HardwareMode = 3;
    bench.Forget();
    SetClockType(bench.App, 1);
    EXPECT_EQ(bench.Texts(), Strings{kRateMemory}) << "the rule saw the internal clock at its top rate";
    EXPECT_EQ(bench.State->Memory.HardwareMode, 1);
    EXPECT_EQ(bench.State->Memory.HardwareMux, 0);
}

TEST(SetClockType, TakesEveryTypeAndRefreshes) {
    for (const int type : {1, 2, 3, 5, 6, 9, 10, 11, 12, 13, 14}) {
        Bench bench;
        bench.UseRow(15);
        bench.State->Windows.TimingStat = 1;
        SetClockType(bench.App, type);
        EXPECT_EQ(bench.State->Clock.ClockType, type);
        EXPECT_EQ(bench.Shell.Count("bars"), 1);
        EXPECT_EQ(bench.Shell.Log.back(), "redraw Timing");
    }
}

TEST(SetInternalClock, RunsTheMemoryAnew) {
    Bench bench;
    bench.UseRow(15);
    SetRate(bench.App, 1);
    SetClockType(bench.App, 1);
    EXPECT_EQ(bench.State->Memory.HardwareMux, 0);
    SetInternalClock(bench.App);
    EXPECT_EQ(bench.State->Clock.ClockType, 0);
    EXPECT_EQ(bench.State->Memory.HardwareMux, 1) << "code 1 still stands";
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

TEST(SetInternalClock, HasNoMessageOfItsOwn) {
    Bench bench;
    bench.UseRow(24);
    bench.State->Memory.HardwareMode = 3;
    SetInternalClock(bench.App);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 3);
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

TEST(TriggerOutput, EndsWithTheTwoEdgeClocksOfThePatternSeries) {
    for (const int type : {13, 14}) {
        Bench bench;
        bench.State->Identity.ModelSeries = 5;
        bench.UseRow(27);
        SetTrigOut(bench.App, true);
        SetClockType(bench.App, type);
        EXPECT_EQ(bench.State->Trigger.TrigOut, 0);
        EXPECT_EQ(bench.Texts(), Strings{"Note:|Trigger output disabled"});
    }
}

TEST(TriggerOutput, ChangesATwoEdgeClockOfThePatternSeries) {
    for (const int type : {13, 14}) {
        Bench bench;
        bench.State->Identity.ModelSeries = 5;
        bench.UseRow(27);
        SetClockType(bench.App, type);
        SetTrigOut(bench.App, true);
        EXPECT_EQ(bench.State->Clock.ClockType, type == 13 ? 2 : 1);
        EXPECT_EQ(bench.State->Trigger.TrigOut, 1);
        EXPECT_EQ(bench.Texts(), Strings{"Note:|External clock mode changed"});
    }
}

TEST(TriggerOutput, OfOtherSeriesMinglesWithAnyClock) {
    Bench bench;
    bench.UseRow(15);
    SetClockType(bench.App, 13);
    SetTrigOut(bench.App, true);
    SetClockType(bench.App, 14);
    EXPECT_EQ(bench.State->Trigger.TrigOut, 1);
    EXPECT_EQ(bench.State->Clock.ClockType, 14);
    SetTrigOut(bench.App, false);
    EXPECT_EQ(bench.State->Trigger.TrigOut, 0);
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

// --- The menu's limits ---------------------------------------------------------------------------------

TEST(RateEntries, AreGreyedAndCorrectedByRow) {
    const std::set<int> no200{0, 3, 4, 5, 8, 9, 10, 13, 14, 15};
    const std::set<int> no500{1, 2, 6, 7, 11, 12};
    for (const int row : kEveryRow) {
        std::set<int> greyed;
        int instead = -1;
        if (no200.count(row) != 0) greyed = {4}, instead = 3;
        if (no500.count(row) != 0) greyed = {1, 3}, instead = 4;
        if (row == 16 || row == 17) greyed = {1, 3, 4}, instead = 5;
        Bench bench;
        for (int code = 0; code < kRateCodes; ++code) {
            EXPECT_EQ(RateEntryEnabled(row, code), greyed.count(code) == 0) << row << " " << code;
            bench.State->Identity.HardwareType = static_cast<std::uint8_t>(row);
            bench.State->Clock.ClockRate = static_cast<std::uint8_t>(code);
            CorrectRate(bench.App);
            EXPECT_EQ(bench.State->Clock.ClockRate, greyed.count(code) != 0 ? instead : code);
        }
    }
}

TEST(RateEntries, AreNotCorrectedUnderAnExternalClock) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Clock.ClockRate = 4;
    bench.State->Clock.ClockType = 1;
    CorrectRate(bench.App);
    EXPECT_EQ(bench.State->Clock.ClockRate, 4);
    EXPECT_EQ(bench.State->Clock.ClockType, 1);
}

}  // namespace
}  // namespace zu
