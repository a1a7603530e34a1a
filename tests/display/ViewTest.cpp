// Mouse, keys and commands of the Timing view.
#include <gtest/gtest.h>

#include "support/TimingFixture.h"
#include "support/ViewHost.h"

namespace zu {
namespace {

using test::SetHigh;
using test::SetLength;
using test::ShowColumns;
using test::ShowLines;

// Columns end at 150; the data is 800 pixels wide; rows begin at 36.
constexpr std::int32_t kLeft = 150;

struct View {
    std::unique_ptr<InstrumentState> State = test::MakeState();
    test::ViewHost Host;
    std::unique_ptr<TimingView> Logic;

    explicit View(std::int32_t length = 100000) {
        SetLength(*State, length);
        ShowColumns(*State, {{0}, {2}, {3}, {4}});
        State->Cursors.Cur = {1100, 1200, 1300, 1400, 1050, 0};
        State->Timing.TimingDataPos = 1000;
        Logic = std::make_unique<TimingView>(*State, Host, Metrics{});
        Logic->Resize(kLeft + 800, 400);
    }
    TimingView* operator->() const { return Logic.get(); }
    std::int32_t& Cur(int i) { return State->Cursors.Cur[static_cast<std::size_t>(i)]; }
    std::int32_t& Pos() { return State->Timing.TimingDataPos; }

    static MouseEvent At(std::int32_t x, std::int32_t y, MouseButton button = MouseButton::Left) {
        MouseEvent event;
        event.X = x;
        event.Y = y;
        event.Button = button;
        return event;
    }
    void Drag(std::int32_t x, std::int32_t y, std::int32_t toX, std::int32_t toY) {
        Logic->MouseDown(At(x, y));
        Logic->MouseMove(At(toX, toY));
        Logic->MouseUp(At(toX, toY));
    }
};

TEST(View, PointerTakesTheShapeOfACursorNearIt) {
    View v;
    v->MouseMove(View::At(kLeft + 102, 100, MouseButton::None));
    v->MouseMove(View::At(kLeft + 103, 100, MouseButton::None));
    v->MouseMove(View::At(kLeft + 300, 30, MouseButton::None));
    v->MouseMove(View::At(kLeft + 320, 100, MouseButton::None));
    EXPECT_EQ(v.Host.Shapes,
              (std::vector{PointerShape::CursorA, PointerShape::CursorC, PointerShape::Arrow}));
    v->MouseMove(View::At(kLeft + 100, 100, MouseButton::Left));
    EXPECT_EQ(v.Host.Shapes.size(), 3U) << "with a button down it stays";
    EXPECT_EQ(v.Host.TakeRedraws(), 0) << "hovering draws nothing";
}

TEST(View, DraggingACursor) {
    View v;
    v->MouseDown(View::At(kLeft + 102, 100));
    EXPECT_TRUE(v->Dragging());
    EXPECT_EQ(v.Cur(0), 1100) << "the grab itself moves nothing";
    v->MouseMove(View::At(kLeft + 152, 100));
    EXPECT_EQ(v.Cur(0), 1150);
    EXPECT_EQ(v.Host.Refreshes, 1);
    v->MouseUp(View::At(kLeft + 152, 100));
    EXPECT_FALSE(v->Dragging());
    v->MouseMove(View::At(kLeft + 400, 100, MouseButton::None));
    EXPECT_EQ(v.Cur(0), 1150);
    EXPECT_EQ(v.Host.Captures, (std::vector<bool>{true, false}));
}

TEST(View, DraggingAtOtherZooms) {
    View v;
    v.State->Timing.ScreenZoom = 10;
    v.Cur(0) = 1010;
    v.Drag(kLeft + 100, 300, kLeft + 126, 300);
    EXPECT_EQ(v.Cur(0), 1013) << "2.6 samples";
    v.State->Timing.ScreenZoom = -40;
    v.Pos() = 0;
    v.Cur(0) = 4000;
    v.Drag(kLeft + 100, 300, kLeft + 103, 300);
    EXPECT_EQ(v.Cur(0), 4120);
}

TEST(View, TwoCursorsOnOneSampleTheLowerIsTaken) {
    View v;
    v.Cur(3) = v.Cur(1) = 1250;
    v.Drag(kLeft + 250, 300, kLeft + 260, 300);
    EXPECT_EQ(v.Cur(1), 1260);
    EXPECT_EQ(v.Cur(3), 1250);
}

TEST(View, LosingTheFocusEndsADragWhereItStands) {
    View v;
    v->MouseDown(View::At(kLeft + 100, 300));
    v->MouseMove(View::At(kLeft + 120, 300));
    v->FocusLost();
    EXPECT_FALSE(v->Dragging());
    v->MouseMove(View::At(kLeft + 200, 300));
    EXPECT_EQ(v.Cur(0), 1120);
}

TEST(View, AnotherButtonDoesNotEndADrag) {
    View v;
    v->MouseDown(View::At(kLeft + 100, 300));
    v->MouseDown(View::At(kLeft + 110, 300, MouseButton::Right));
    v->MouseUp(View::At(kLeft + 110, 300, MouseButton::Right));
    EXPECT_TRUE(v->Dragging());
    EXPECT_TRUE(v.Host.Dialogs.empty());
    v->MouseMove(View::At(kLeft + 120, 300));
    v->MouseUp(View::At(kLeft + 120, 300));
    EXPECT_FALSE(v->Dragging());
    EXPECT_EQ(v.Cur(0), 1120);
}

TEST(View, KeysPlaceCursorsAtTheClick) {
    for (int cursor = 0; cursor <= 4; ++cursor) {
        View v;
        MouseEvent event = View::At(kLeft + 500, 100);
        bool* keys[] = {&event.Held.A, &event.Held.B, &event.Held.C, &event.Held.D, &event.Held.T};
        *keys[cursor] = true;
        v->MouseDown(event);
        EXPECT_EQ(v.Cur(cursor), 1500);
        EXPECT_FALSE(v->Dragging());
        EXPECT_EQ(v.Host.Refreshes, 1);
        event.Y = 5;
        v->MouseDown(event);
        EXPECT_EQ(v.Cur(cursor), 500 * 100000 / 800) << "in the strip by its scale";
    }
}

TEST(View, AKeyPlacedCursorDoesNotSnap) {
    View v;
    SetHigh(*v.State, 0, 1502, 1600);
    MouseEvent event = View::At(kLeft + 500, 40);
    event.Held.B = true;
    v->MouseDown(event);
    v->MouseUp(event);
    EXPECT_EQ(v.Cur(1), 1500);
}

TEST(View, ADroppedCursorSnapsToAnEdgeWithinSixPixels) {
    View v;
    SetHigh(*v.State, 0, 1506, 1600);  // line 0 is at 36..54
    v.Drag(kLeft + 100, 40, kLeft + 500, 40);
    EXPECT_EQ(v.Cur(0), 1506);
    v.Drag(kLeft + 506, 40, kLeft + 499, 40);
    EXPECT_EQ(v.Cur(0), 1499) << "seven pixels away";
    v.Drag(kLeft + 499, 40, kLeft + 604, 40);
    EXPECT_EQ(v.Cur(0), 1600);
    v.Drag(kLeft + 600, 60, kLeft + 605, 60);
    EXPECT_EQ(v.Cur(0), 1605) << "the next line has no edge";
}

TEST(View, SnappingIsSuspendedByAltAndTakesTheOthersAlong) {
    View v;
    SetHigh(*v.State, 0, 1506, 1600);
    v->MouseDown(View::At(kLeft + 100, 40));
    MouseEvent drop = View::At(kLeft + 500, 40);
    drop.Alt = true;
    v->MouseMove(drop);
    v->MouseUp(drop);
    EXPECT_EQ(v.Cur(0), 1500);
    v->MouseDown(View::At(kLeft + 500, 40));
    drop = View::At(kLeft + 501, 40);
    drop.Held.Two = true;
    v->MouseMove(drop);
    v->MouseUp(drop);
    EXPECT_EQ(v.Cur(0), 1506);
    EXPECT_EQ(v.Cur(1), 1206);
}

TEST(View, AClickThatMovesNothingDoesNotSnap) {
    View v;
    SetHigh(*v.State, 0, 1103, 1600);
    v.Drag(kLeft + 100, 40, kLeft + 100, 40);
    EXPECT_EQ(v.Cur(0), 1100);
}

TEST(View, SnapReachFollowsTheZoom) {
    View v;
    SetHigh(*v.State, 0, 3000, 3100);
    v.State->Timing.ScreenZoom = -40;
    v.Pos() = 0;
    v.Cur(0) = 4000;
    v.Drag(kLeft + 100, 40, kLeft + 83, 40);  // 3320: 220 behind the falling edge
    EXPECT_EQ(v.Cur(0), 3100);
    v.State->Timing.ScreenZoom = 10;
    v.Pos() = 3090;
    v.Drag(kLeft + 100, 40, kLeft + 110, 40);
    EXPECT_EQ(v.Cur(0), 3101) << "6 / 10 of a sample reaches no neighbour";
}

TEST(View, CtrlZoomsInAndShiftOutAroundThePointer) {
    View v;
    MouseEvent event = View::At(kLeft + 400, 100);
    event.Ctrl = true;
    v->MouseDown(event);
    EXPECT_EQ(v.State->Timing.ScreenZoom, 2);
    EXPECT_EQ(v.Pos(), 1400 - 200);
    EXPECT_EQ(v.Host.Invalidations, 1);
    event.Ctrl = false;
    event.Shift = true;
    v->MouseDown(event);
    v->MouseDown(event);
    EXPECT_EQ(v.State->Timing.ScreenZoom, -2);
    EXPECT_EQ(v.Pos(), 1400 - 800);
    EXPECT_EQ(v->Axis().SampleAt(event.X), 1400);
}

TEST(View, AStepThatChangesNothingRedrawsNothing) {
    View v;
    v.State->Timing.ScreenZoom = 50;
    MouseEvent event = View::At(kLeft + 400, 100);
    event.Ctrl = true;
    v->MouseDown(event);
    EXPECT_EQ(v.Host.TakeRedraws(), 0);
    v.State->Timing.ScreenZoom = 3;
    v->MouseDown(event);
    EXPECT_EQ(v.State->Timing.ScreenZoom, 3) << "off the chain";
    EXPECT_EQ(v.Host.TakeRedraws(), 0);
}

TEST(View, ZoomingInTheStripMovesThereFirst) {
    View v;
    MouseEvent event = View::At(kLeft + 400, 1);
    event.Ctrl = true;
    v->MouseDown(event);
    EXPECT_EQ(v.State->Timing.ScreenZoom, 2);
    EXPECT_EQ(v.Pos(), 50000 - 200) << "half a screen back, because zooms hold the centre";
    v.State->Timing.ZoomOrigin = -2;
    event.Ctrl = false;
    event.Shift = true;
    v->MouseDown(event);
    EXPECT_EQ(v.State->Timing.ScreenZoom, 1);
    EXPECT_EQ(v.Pos(), 50000);
}

TEST(View, ZoomingInTheStripOfAShortCapture) {
    View v(8192);
    v.State->Timing.ScreenZoom = 10;
    MouseEvent event = View::At(kLeft + 400, 1);
    event.Ctrl = true;
    v->MouseDown(event);
    EXPECT_EQ(v.State->Timing.ScreenZoom, 25);
    EXPECT_EQ(v.Pos(), 4096 - 16);
}

TEST(View, DraggingATickInTheStrip) {
    View v;
    v.Cur(2) = 25000;  // x 350
    v.Drag(kLeft + 201, 13, kLeft + 301, 13);
    EXPECT_EQ(v.Cur(2), 25000 + 12500);
    EXPECT_EQ(v.Host.Shapes.front(), PointerShape::CursorC);
}

TEST(View, DraggingTheBoxOfTheStrip) {
    View v;
    v.State->Timing.ScreenZoom = -20;  // 16000 samples: 128 pixels
    v.Pos() = 40000;
    v.Drag(kLeft + 400, 13, kLeft + 408, 13);
    EXPECT_EQ(v.Pos(), 41000);
    v.Drag(kLeft + 400, 13, kLeft - 900, 13);
    EXPECT_EQ(v.Pos(), 0);
    v.Drag(kLeft + 60, 13, kLeft + 2000, 13);
    EXPECT_EQ(v.Pos(), 100000 - 1600) << "a tenth of the screen stays";
    v.Pos() = 40000;
    v.Drag(kLeft + 400, 1, kLeft + 408, 1);
    EXPECT_EQ(v.Pos(), 40000) << "above the box nothing is grabbed";
    v.Drag(kLeft + 600, 13, kLeft + 608, 13);
    EXPECT_EQ(v.Pos(), 40000) << "beside it neither";
}

TEST(View, ANarrowWindowIgnoresTheStripAndTheData) {
    View v;
    v->Resize(100, 400);
    const auto before = v.State->Cursors.Cur;
    MouseEvent event = View::At(160, 5);
    event.Held.A = true;
    v->MouseDown(event);
    event.Y = 100;
    v->MouseDown(event);
    v->MouseDown(View::At(160, 100, MouseButton::Right));
    EXPECT_EQ(v.State->Cursors.Cur, before);
    EXPECT_TRUE(v.Host.Dialogs.empty());
    EXPECT_EQ(v->VisibleSamples(), 0);
    v->ZoomAt(50, false);
    v->GoTo(5000);
    EXPECT_EQ(v.Pos(), 5000);
}

TEST(View, DraggingALineByItsName) {
    View v;
    ShowLines(*v.State, {{0}, {1}, {2}, {3}});
    v.Drag(20, 40, 20, 36 + 19 * 2 + 5);
    EXPECT_EQ(v.State->Timing.LineSource[0], 1);
    EXPECT_EQ(v.State->Timing.LineSource[2], 0);
    EXPECT_EQ(v.Host.Refreshes, 1);
    EXPECT_EQ(v.Host.Shapes.front(), PointerShape::SizeVertical);
    v.Drag(20, 40, 20, 390);
    EXPECT_EQ(v.State->Timing.LineSource[0], 1) << "an empty spot does nothing";
    v.Drag(98, 40, 98, 80);
    EXPECT_EQ(v.State->Timing.LineSource[0], 1) << "the Trig Word column does not grab";
    EXPECT_EQ(v.Host.Refreshes, 1);
}

TEST(View, LinesMayBeDroppedOnASpacerButASpacerIsNotGrabbed) {
    View v;
    ShowLines(*v.State, {{0}, {195}, {2}});
    v.Drag(20, 40, 20, 60);
    EXPECT_EQ(v.State->Timing.LineSource[1], 0);
    v.Drag(20, 40, 20, 80);
    EXPECT_EQ(v.State->Timing.LineSource[0], 195);
}

TEST(View, TrigWordHeaderStepsTheLevelAndOpensTheEditor) {
    View v;
    auto& column = v.State->Timing.TimingDisp[2];
    v.State->Trigger.SeqList[0] = 1;
    v.State->Trigger.SeqList[1] = 7;
    v->MouseDown(View::At(97, 5));
    EXPECT_EQ(column.TrigWord, 1);
    EXPECT_EQ(v.Host.Invalidations, 1);
    v->MouseDown(View::At(97, 5));
    EXPECT_EQ(column.TrigWord, 1) << "level 2 selects no word";
    v->MouseDown(View::At(103, 5));
    ASSERT_EQ(v.Host.Dialogs.size(), 1U);
    EXPECT_EQ(v.Host.Dialogs[0].Dialog, TimingDialog::TrigWord);
    EXPECT_EQ(v.Host.Dialogs[0].Number, 6);
    v->MouseDown(View::At(97, 30));
    v->MouseDown(View::At(97, 30));
    EXPECT_EQ(column.TrigWord, 0) << "not below 0";
    v.State->Trigger.SeqList.fill(1);
    column.TrigWord = 15;
    v->MouseDown(View::At(97, 5));
    EXPECT_EQ(column.TrigWord, 15);
    v->MouseDown(View::At(20, 5));
    EXPECT_EQ(v.Host.Dialogs.size(), 1U) << "the Name header does nothing";
}

TEST(View, RightClickOpensTheDisplayOptionsForThePoint) {
    View v;
    v->MouseDown(View::At(kLeft + 500, 100, MouseButton::Right));
    ASSERT_EQ(v.Host.Dialogs.size(), 1U);
    EXPECT_EQ(v.Host.Dialogs[0].Dialog, TimingDialog::DisplayOptions);
    EXPECT_EQ(v.Host.Dialogs[0].Sample, 1500);
    EXPECT_EQ(v.Host.Dialogs[0].X, kLeft + 500);
    v->MouseDown(View::At(kLeft + 500, 5, MouseButton::Right));
    v->MouseDown(View::At(kLeft - 5, 100, MouseButton::Right));
    EXPECT_EQ(v.Host.Dialogs.size(), 1U) << "not in the strip nor left of the data";
}

TEST(View, RightClickOnACursorOffersItsMenu) {
    View v;
    v.Host.Choice = CursorMenuId(1, CursorAction::ToWindow);
    v.Cur(1) = 90000;
    v->MouseDown(View::At(kLeft + 100, 100, MouseButton::Right));
    EXPECT_TRUE(v.Host.Dialogs.empty());
    ASSERT_EQ(v.Host.Menus.size(), 1U);
    EXPECT_EQ(v.Cur(1), 1400 - 1);
    v.Host.Choice = CursorMenuId(4, CursorAction::WindowToCursor);
    v.Cur(4) = 5000;
    v->MouseDown(View::At(kLeft + 100, 100, MouseButton::Right));
    EXPECT_EQ(v.Pos(), 4600);
    v.Host.Choice = CursorMenuId(2, CursorAction::Color);
    v.Host.Color = 0x123456;
    v.Cur(0) = 4700;
    v->MouseDown(View::At(kLeft + 100, 100, MouseButton::Right));
    EXPECT_EQ(v.State->Cursors.CursorColor[2], 0x123456U);
    v.Host.Color.reset();
    v->MouseDown(View::At(kLeft + 100, 100, MouseButton::Right));
    EXPECT_EQ(v.State->Cursors.CursorColor[2], 0x123456U) << "no choice, no change";
    v.Host.Choice = 0;
    const int refreshes = v.Host.Refreshes;
    v->MouseDown(View::At(kLeft + 100, 100, MouseButton::Right));
    EXPECT_EQ(v.Host.Refreshes, refreshes);
}

TEST(View, DoubleClickOnANameOpensItsEditor) {
    View v;
    ShowLines(*v.State, {{7}, {162, 0}, {195}});
    v->DoubleClick(View::At(20, 40));
    v->DoubleClick(View::At(20, 60));
    v->DoubleClick(View::At(20, 75));
    ASSERT_EQ(v.Host.Dialogs.size(), 2U);
    EXPECT_EQ(v.Host.Dialogs[0].Dialog, TimingDialog::ChannelSetup);
    EXPECT_EQ(v.Host.Dialogs[0].Number, 7);
    EXPECT_EQ(v.Host.Dialogs[1].Dialog, TimingDialog::GroupSetup);
    EXPECT_EQ(v.Host.Dialogs[1].Number, 2);
    EXPECT_FALSE(v->Dragging());
    v->DoubleClick(View::At(kLeft + 100, 100));
    EXPECT_TRUE(v->Dragging()) << "elsewhere it is a press";
}

TEST(View, MiddleDragPans) {
    View v;
    v.State->Timing.ScreenZoom = -10;
    v.Pos() = 20000;
    v->MouseDown(View::At(kLeft + 300, 100, MouseButton::Middle));
    v->MouseMove(View::At(kLeft + 250, 100, MouseButton::Middle));
    EXPECT_EQ(v.Pos(), 20500);
    v->MouseMove(View::At(kLeft + 310, 100, MouseButton::Middle));
    EXPECT_EQ(v.Pos(), 19900);
    v->MouseUp(View::At(kLeft + 310, 100, MouseButton::Middle));
    EXPECT_GT(v.Host.Followers, 0);
}

TEST(View, PanByMovesAtEveryZoom) {
    View v;
    v->PanBy(30);
    EXPECT_EQ(v.Pos(), 1030);
    v->PanBy(-60);
    EXPECT_EQ(v.Pos(), 970);
    v.State->Timing.ScreenZoom = 50;
    for (int i = 0; i < 4; ++i) v->PanBy(10);
    EXPECT_EQ(v.Pos(), 970) << "40 pixels are no sample of 50";
    v->PanBy(10);
    EXPECT_EQ(v.Pos(), 971);
    v->PanBy(49);
    v->PanBy(-10);
    EXPECT_EQ(v.Pos(), 971) << "the other direction begins anew";
    v->PanBy(-115);
    EXPECT_EQ(v.Pos(), 969);
    v->PanBy(0);
    EXPECT_EQ(v.Pos(), 969);
}

TEST(View, AnyPressMakesTheViewActive) {
    View v;
    v.State->Windows.ActiveView = 1;
    v->MouseDown(View::At(kLeft + 500, 100));
    EXPECT_EQ(v.State->Windows.ActiveView, 0);
    EXPECT_EQ(v.Host.Invalidations, 1) << "the title tells it";
    EXPECT_EQ(v.Host.Followers, 1);
}

TEST(View, ScrollRedrawsTheFollowers) {
    View v;
    v->Scroll({ScrollAxis::Horizontal, ScrollCode::PageForward, 0});
    EXPECT_EQ(v.Pos(), 1200);
    EXPECT_EQ(v.Host.Invalidations, 1);
    EXPECT_EQ(v.Host.Followers, 1);
    v->Scroll({ScrollAxis::Vertical, ScrollCode::LineForward, 0});
    EXPECT_EQ(v.State->Timing.TimingChPos, 1);
}

TEST(View, ZoomCommandsGoThroughTheOrigin) {
    View v;
    v->Command(TimingCommand::ZoomIn);
    EXPECT_EQ(v.State->Timing.ScreenZoom, 2);
    EXPECT_EQ(v.Pos(), 1200) << "the centre stays";
    v.State->Timing.ZoomOrigin = 3;
    v->Command(TimingCommand::ZoomOut);
    EXPECT_EQ(v.Pos(), 1000) << "cursor D at 1400 in the middle";
    v.State->Timing.ZoomOrigin = -3;
    v->SelectZoom(10);
    EXPECT_EQ(v.Pos(), 1400 - 40) << "a stored point origin counts as the centre";
    v->SelectZoom(50);
    const int redraws = v.Host.TakeRedraws();
    EXPECT_GT(redraws, 0);
    v->Command(TimingCommand::ZoomIn);
    EXPECT_EQ(v.Host.TakeRedraws(), 0);
}

TEST(View, EdgesOfTheLineUnderThePointer) {
    View v;
    SetHigh(*v.State, 1, 5000, 6000);
    SetHigh(*v.State, 1, 9000, 9100);
    v->MouseMove(View::At(kLeft + 100, 60, MouseButton::None));
    v->Command(TimingCommand::NextEdge);
    EXPECT_EQ(v->Axis().SampleAt(kLeft + 100), 5000);
    v->Command(TimingCommand::NextEdge);
    EXPECT_EQ(v->Axis().SampleAt(kLeft + 100), 6000);
    v->Command(TimingCommand::NextEdge);
    v->Command(TimingCommand::NextEdge);
    EXPECT_EQ(v->Axis().SampleAt(kLeft + 100), 9100);
    v->Command(TimingCommand::NextEdge);
    EXPECT_EQ(v.Host.Beeps, 1);
    v->Command(TimingCommand::PreviousEdge);
    EXPECT_EQ(v->Axis().SampleAt(kLeft + 100), 9000);
    v->Command(TimingCommand::PreviousEdge);
    v->Command(TimingCommand::PreviousEdge);
    EXPECT_EQ(v->Axis().SampleAt(kLeft + 100), 5000);
    v->Command(TimingCommand::PreviousEdge);
    EXPECT_EQ(v.Host.Beeps, 2);
}

TEST(View, EdgesNearTheStartCannotComeUnderThePointerAndAreStillPassed) {
    View v;
    for (const int edge : {20, 40, 60}) SetHigh(*v.State, 0, edge, edge + 10);
    v.Pos() = 0;
    v->MouseMove(View::At(kLeft + 700, 40, MouseButton::None));
    const std::int64_t want[] = {70, 60, 50, 40, 30, 20};
    for (const std::int64_t edge : want) {
        v->Command(TimingCommand::PreviousEdge);
        EXPECT_EQ(v.Pos(), 0);
        EXPECT_EQ(v.Host.Beeps, 0) << edge;
    }
    v->Command(TimingCommand::PreviousEdge);
    EXPECT_EQ(v.Host.Beeps, 1);
}

TEST(View, EdgesWithoutALineBeep) {
    View v;
    ShowLines(*v.State, {{195}});
    v->MouseMove(View::At(kLeft + 100, 300, MouseButton::None));
    v->Command(TimingCommand::NextEdge);
    v->MouseMove(View::At(kLeft + 100, 40, MouseButton::None));
    v->Command(TimingCommand::NextEdge);
    EXPECT_EQ(v.Host.Beeps, 2);
}

TEST(View, GoTo) {
    View v;
    v->GoTo(5000);
    EXPECT_EQ(v.Pos(), 4600);
    EXPECT_TRUE(v->GoToText("A+100"));
    EXPECT_EQ(v.Pos(), 800);
    EXPECT_TRUE(v->GoToText("+1000"));
    EXPECT_EQ(v.Pos(), 1800);
    EXPECT_TRUE(v->GoToText("500us"));
    EXPECT_EQ(v.Pos(), 49600);
    EXPECT_FALSE(v->GoToText("nowhere"));
    EXPECT_EQ(v.Pos(), 49600);
    EXPECT_TRUE(v->GoToText("99999999"));
    EXPECT_EQ(v.Pos(), 100000 - 80);
}

TEST(Hover, TellsThePulseUnderThePointer) {
    View v;
    SetHigh(*v.State, 0, 1100, 1130);
    SetHigh(*v.State, 0, 1200, 1230);
    const auto at = [&](std::int32_t x, std::int32_t y) {
        v->MouseMove(View::At(kLeft + x, y, MouseButton::None));
        return v->HoverText();
    };
    EXPECT_EQ(at(110, 40), "Pod 1A Ch 0: 1 for 300ns, period 1,000ns, 1000.000KHz, duty 30.00%");
    EXPECT_EQ(at(150, 40), "Pod 1A Ch 0: 0 for 700ns, period 1,000ns, 1000.000KHz, duty 30.00%");
    EXPECT_EQ(at(210, 40), "Pod 1A Ch 0: 1 for 300ns, period 1,000ns, 1000.000KHz, duty 30.00%")
        << "the last pulse takes the phase before it";
    EXPECT_EQ(at(50, 40), "Pod 1A Ch 0: 0") << "it began before the capture";
    EXPECT_EQ(at(300, 40), "Pod 1A Ch 0: 0");
    EXPECT_EQ(at(50, 60), "Pod 1A Ch 1: 0");
    EXPECT_EQ(at(50, 10), "");
    EXPECT_EQ(at(-50, 40), "");
    EXPECT_EQ(at(850, 40), "");
    v.State->Cursors.CursorDlgMode = 0;
    EXPECT_EQ(at(110, 40), "Pod 1A Ch 0: 1 for 30Sa, period 100Sa, 1000.000KHz, duty 30.00%");
    v.State->Clock.ClockType = 1;
    EXPECT_EQ(at(110, 40), "Pod 1A Ch 0: 1 for 30Sa, period 100Sa, duty 30.00%");
    v->MouseLeave();
    EXPECT_EQ(v->HoverText(), "");
}

TEST(Hover, TellsTheValueOfAGroup) {
    View v;
    ShowLines(*v.State, {{160, 0}, {195}});
    SetHigh(*v.State, 0, 1100, 1130);
    SetHigh(*v.State, 5, 1110, 1130);
    const auto at = [&](std::int32_t x, std::int32_t y) {
        v->MouseMove(View::At(kLeft + x, y, MouseButton::None));
        return v->HoverText();
    };
    EXPECT_EQ(at(105, 40), "Group 1: 01 (1) for 100ns");
    EXPECT_EQ(at(115, 40), "Group 1: 21 (33) for 200ns");
    EXPECT_EQ(at(50, 40), "Group 1: 00 (0)");
    EXPECT_EQ(at(50, 60), "") << "a spacer";
    v.State->Groups[0].Size = 0;
    EXPECT_EQ(at(50, 40), "");
}

}  // namespace
}  // namespace zu
