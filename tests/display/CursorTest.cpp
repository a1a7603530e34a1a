// Cursor drags, the Cursor window, going to places, line moves.
#include <gtest/gtest.h>

#include "display/CursorDrag.h"
#include "display/CursorWindow.h"
#include "display/GoTo.h"
#include "display/LineMove.h"
#include "display/Menus.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeState;
using test::SetLength;
using test::ShowLines;

TEST(DragSamples, TenthsAboveFiveRoundUp) {
    EXPECT_EQ(DragSamples(7, 1), 7);
    EXPECT_EQ(DragSamples(-7, 1), -7);
    EXPECT_EQ(DragSamples(5, 10), 0) << "five tenths are cut";
    EXPECT_EQ(DragSamples(6, 10), 1);
    EXPECT_EQ(DragSamples(-5, 10), 0);
    EXPECT_EQ(DragSamples(-6, 10), -1);
    EXPECT_EQ(DragSamples(25, 10), 2);
    EXPECT_EQ(DragSamples(26, 10), 3);
    EXPECT_EQ(DragSamples(1, 2), 0);
    EXPECT_EQ(DragSamples(3, 2), 1);
    EXPECT_EQ(DragSamples(13, 25), 0) << "5.2 tenths are 5";
    EXPECT_EQ(DragSamples(15, 25), 1);
    EXPECT_EQ(DragSamples(3, -40), 120);
    EXPECT_EQ(DragSamples(-3, -40), -120);
    EXPECT_EQ(DragSamples(3, 0), 3);
}

TEST(DragSamples, InTheStripByItsScale) {
    const StripScale strip{100, 800, 1000};
    EXPECT_EQ(DragSamples(8, strip), 10);
    EXPECT_EQ(DragSamples(-8, strip), -10);
    EXPECT_EQ(DragSamples(1, strip), 1) << "1.25";
    EXPECT_EQ(DragSamples(2, strip), 2) << "2.5 is cut";
    EXPECT_EQ(DragSamples(3, strip), 4) << "3.75";
    EXPECT_EQ(DragSamples(3, StripScale{100, 0, 1000}), 0);
}

TEST(CursorDrag, OneCursorWithinTheMemory) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    state->Cursors.Cur = {100, 200, 300, 400, 500, 600};
    CursorDrag drag;
    drag.Begin(*state, 1);
    EXPECT_TRUE(drag.Move(*state, 50, {}));
    EXPECT_EQ(state->Cursors.Cur[1], 250);
    EXPECT_FALSE(drag.Move(*state, 50, {})) << "nothing moved";
    drag.Move(*state, 5000, {});
    EXPECT_EQ(state->Cursors.Cur[1], 1000) << "up to DisplayLen";
    drag.Move(*state, -5000, {});
    EXPECT_EQ(state->Cursors.Cur[1], 0);
    drag.Move(*state, 10, {});
    EXPECT_EQ(state->Cursors.Cur[1], 210);
    EXPECT_EQ(state->Cursors.Cur[0], 100);
    EXPECT_EQ(state->Cursors.Cur[5], 600);
}

HeldKeys Digit(int digit) {
    HeldKeys held;
    held.Two = digit == 2;
    held.Three = digit == 3;
    held.Four = digit == 4;
    held.Five = digit == 5;
    return held;
}

TEST(CursorDrag, DigitsTakeOthersAlong) {
    for (int digit = 2; digit <= 5; ++digit) {
        const auto state = MakeState();
        SetLength(*state, 1000);
        state->Cursors.Cur = {100, 200, 300, 400, 500, 600};
        CursorDrag drag;
        drag.Begin(*state, 0);
        drag.Move(*state, 7, Digit(digit));
        for (int cursor = 0; cursor < 6; ++cursor) {
            const int start = 100 * (cursor + 1);
            EXPECT_EQ(state->Cursors.Cur[static_cast<std::size_t>(cursor)],
                      cursor < digit ? start + 7 : start);
        }
    }
}

TEST(CursorDrag, AGrabbedCursorOutsideTheDigitsSetMovesAlone) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    state->Cursors.Cur = {100, 200, 300, 400, 500, 0};
    CursorDrag drag;
    drag.Begin(*state, 2);
    drag.Move(*state, 7, Digit(2));
    EXPECT_EQ(state->Cursors.Cur[0], 100);
    EXPECT_EQ(state->Cursors.Cur[2], 307);
}

TEST(CursorDrag, ADigitPressedOnTheWayTakesTheOthersFromThere) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    state->Cursors.Cur = {100, 200, 300, 400, 500, 0};
    CursorDrag drag;
    drag.Begin(*state, 0);
    drag.Move(*state, 50, {});
    drag.Move(*state, 60, Digit(2));
    EXPECT_EQ(state->Cursors.Cur[0], 160);
    EXPECT_EQ(state->Cursors.Cur[1], 210) << "moved by the same amount since the key went down";
    drag.Move(*state, 70, {});
    EXPECT_EQ(state->Cursors.Cur[0], 170);
    EXPECT_EQ(state->Cursors.Cur[1], 210);
}

struct StepRow {
    std::int32_t Samples;
    const char* Label;
    const char* ToolTip;
    const char* Time;  // at 10 ns
};
constexpr StepRow kSteps[] = {
    {1, "1", "Adjust selected item by 1 sample", "10ns"},
    {10, "10", "Adjust selected item by 10 sample", "100ns"},
    {100, "100", "Adjust selected item by 100 sample", "1us"},
    {1000, "1,000", "Adjust selected item by 1000 sample", "10us"},
    {10000, "10,000", "Adjust selected item by 10000 sample", "100us"},
    {50000, "50,000", "Adjust selected item by 50000 sample", "500us"},
};

TEST(CursorWindow, StepButtons) {
    const auto state = MakeState();
    for (std::size_t i = 0; i < kCursorSteps.size(); ++i) {
        EXPECT_EQ(kCursorSteps[i].Samples, kSteps[i].Samples);
        EXPECT_EQ(kCursorSteps[i].ToolTip, kSteps[i].ToolTip);
        state->Cursors.CursorDlgMode = 1;
        EXPECT_EQ(StepText(*state, kCursorSteps[i]), kSteps[i].Time);
        state->Cursors.CursorDlgMode = 0;
        EXPECT_EQ(StepText(*state, kCursorSteps[i]), kSteps[i].Label);
    }
    state->Cursors.CursorDlgMode = 1;
    state->Clock.ClockRate = 2;  // 2.5 ns
    EXPECT_EQ(StepText(*state, kCursorSteps[0]), "2.5ns");
}

TEST(CursorWindow, StepsOfACursorStayInMemory) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    state->Cursors.Cur[2] = 850;
    StepItem(*state, CursorItem::C, 100, true);
    EXPECT_EQ(state->Cursors.Cur[2], 950);
    StepItem(*state, CursorItem::C, 100, true);
    EXPECT_EQ(state->Cursors.Cur[2], 1000) << "above DisplayLen less the step it goes to DisplayLen";
    StepItem(*state, CursorItem::C, 50000, false);
    EXPECT_EQ(state->Cursors.Cur[2], 0);
    StepItem(*state, CursorItem::T, 10, true);
    EXPECT_EQ(state->Cursors.Cur[4], 20);
}

TEST(CursorWindow, StepsDoNotLimitViewPositions) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    StepItem(*state, CursorItem::TimingPosition, 50000, true);
    EXPECT_EQ(state->Timing.TimingDataPos, 50000);
    StepItem(*state, CursorItem::StateListPosition, 10, false);
    EXPECT_EQ(state->StateList.StateDataPos, -10);
    StepItem(*state, CursorItem::SerialPosition, 1, true);
    EXPECT_EQ(state->Serial.SerialDataPos, 1);
    state->Timing.TimingDataPos = INT32_MAX;
    StepItem(*state, CursorItem::TimingPosition, 1, true);
    EXPECT_EQ(state->Timing.TimingDataPos, INT32_MAX);
}

TEST(CursorWindow, DifferencesInTheirOrder) {
    const auto state = MakeState();
    state->Cursors.Cur = {100, 150, 230, 400, 10, 0};
    const char* samples[] = {"A-B: -50",  "A-C: -130", "A-D: -300", "A-T: 90",  "B-C: -80",
                             "B-D: -250", "B-T: 140",  "C-D: -170", "C-T: 220", "D-T: 390"};
    state->Cursors.CursorDlgMode = 0;
    for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(DifferenceText(*state, kCursorPairs[i]), samples[i]);
    EXPECT_EQ(CursorText(*state, 2), "230");
    state->Cursors.CursorDlgMode = 1;
    EXPECT_EQ(DifferenceText(*state, kCursorPairs[0]), "A-B: -500.0ns");
    EXPECT_EQ(DifferenceText(*state, kCursorPairs[9]), "D-T: 3.9000us");
    EXPECT_EQ(CursorText(*state, 2), "2.3000us");
    state->Clock.ClockType = 2;
    EXPECT_EQ(CursorText(*state, 2), "230") << "without a rate samples";
}

TEST(CursorWindow, ListsAreRebuiltWhenPositionUnitOrRateChanged) {
    const auto state = MakeState();
    CursorListState lists;
    EXPECT_TRUE(lists.Changed(*state)) << "first of all";
    EXPECT_FALSE(lists.Changed(*state));
    ++state->Cursors.Cur[3];
    EXPECT_TRUE(lists.Changed(*state));
    EXPECT_EQ(state->Cursors.Cur[9], state->Cursors.Cur[3]) << "the copy holds what was shown";
    EXPECT_FALSE(lists.Changed(*state));
    state->Cursors.CursorDlgMode = 0;
    EXPECT_TRUE(lists.Changed(*state));
    state->Clock.ClockRate = 9;
    EXPECT_TRUE(lists.Changed(*state));
    EXPECT_FALSE(lists.Changed(*state));
}

TEST(Menus, CursorMenuOffersThreeEntriesACursor) {
    const MenuSpec menu = CursorMenu();
    ASSERT_EQ(menu.Entries.size(), 15U);
    EXPECT_EQ(menu.Entries[0].Text, "Cursor &A to window");
    EXPECT_EQ(menu.Entries[1].Text, "&Window to cursor A");
    EXPECT_EQ(menu.Entries[2].Text, "Cursor A color");
    EXPECT_EQ(menu.Entries[12].Text, "Cursor &T to window");
    EXPECT_EQ(menu.Entries[14].Text, "Cursor T color");
    for (const MenuEntry& entry : menu.Entries) EXPECT_GT(entry.Id, 0);
}

TEST(GoTo, NumbersTimesAndCursors) {
    const auto state = MakeState();
    state->Cursors.Cur = {500, 600, 700, 800, 40, 0};
    const auto at = [&](const char* text) { return ParseGoTo(*state, text, 10000).value_or(-99); };
    EXPECT_EQ(at("12500"), 12500);
    EXPECT_EQ(at("12,500"), 12500);
    EXPECT_EQ(at(" 12500 "), 12500);
    EXPECT_EQ(at("3.2us"), 320);
    EXPECT_EQ(at("3.2 US"), 320);
    EXPECT_EQ(at("50ns"), 5);
    EXPECT_EQ(at("1ms"), 100000);
    EXPECT_EQ(at(".5s"), 50000000);
    EXPECT_EQ(at("1min"), 6000000000);
    EXPECT_EQ(at("A"), 500);
    EXPECT_EQ(at("t"), 40);
    EXPECT_EQ(at("A+100"), 600);
    EXPECT_EQ(at("b - 1us"), 500);
    EXPECT_EQ(at("+100"), 10100);
    EXPECT_EQ(at("-1us"), 9900);
    EXPECT_EQ(at("A-1000"), -500) << "bounded by the move, not here";
}

TEST(GoTo, AnythingElseNamesNothing) {
    const auto state = MakeState();
    for (const char* text : {"", " ", "x", "A100", "AB", "1.5", "3.2xs", "us", "+", "-", "A+", "--5", "1e5",
                             "0x10", "99999999999999999999999999", "nan", "inf", "+A", "5 us us"}) {
        EXPECT_FALSE(ParseGoTo(*state, text, 0)) << text;
    }
    state->Clock.ClockType = 1;
    EXPECT_FALSE(ParseGoTo(*state, "3.2us", 0)) << "no rate, no times";
    EXPECT_TRUE(ParseGoTo(*state, "32", 0));
}

TEST(MoveLine, TakesTheLineOutAndPutsItInAtTheRow) {
    const auto order = [](InstrumentState& state) {
        std::string text;
        for (std::int32_t i = 0; i < 5; ++i) {
            const auto at = static_cast<std::size_t>(i);
            text += std::to_string(state.Timing.LineSource[at]) + ":" +
                    std::to_string(state.Timing.LineStyle[at]) + ":" +
                    std::to_string(state.Timing.LineMode[at]) + " ";
        }
        return text;
    };
    const auto state = MakeState();
    const auto show = [&] { ShowLines(*state, {{0, 5, 0}, {161, 0, 1}, {2, 7, 3}, {3, 8, 4}, {190, 5, 0}}); };
    show();
    EXPECT_TRUE(MoveLine(*state, 0, 2));
    EXPECT_EQ(order(*state), "161:0:1 2:7:3 0:5:0 3:8:4 190:5:0 ");
    show();
    EXPECT_TRUE(MoveLine(*state, 3, 1));
    EXPECT_EQ(order(*state), "0:5:0 3:8:4 161:0:1 2:7:3 190:5:0 ");
    show();
    EXPECT_TRUE(MoveLine(*state, 0, 4));
    EXPECT_EQ(order(*state), "161:0:1 2:7:3 3:8:4 190:5:0 0:5:0 ");
    for (const auto& [from, to] : {std::pair{0, 0}, {-1, 2}, {0, 5}, {5, 0}, {0, 231}, {INT32_MAX, 0}}) {
        EXPECT_FALSE(MoveLine(*state, from, to));
    }
}

}  // namespace
}  // namespace zu
