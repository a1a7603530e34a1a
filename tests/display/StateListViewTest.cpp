// Mouse and scroll bars of the Statelist: events in, changes of the state and requests to the window out.
#include <gtest/gtest.h>

#include "support/StateListFixture.h"

namespace zu {
namespace {

using test::kFirstColumn;
using test::kListRow;
using test::ListHost;
using test::MakeListState;
using test::ShowRun;

/// A list of ten rows, nine of them samples, over 100 samples.
class StateListViewTest : public testing::Test {
  protected:
    StateListViewTest() {
        ShowRun(*State, 0, 0, 8, 1, "Bus");
        ShowRun(*State, 3, 8, 8, 0, "Data");
        View.Resize(600, 10 * kListRow);
    }
    /// Middle of the row of a sample row.
    static std::int32_t Y(std::int32_t row) { return (row + 1) * kListRow + kListRow / 2; }
    static MouseEvent At(std::int32_t y, MouseButton button = MouseButton::Left) {
        MouseEvent event;
        event.X = 100;
        event.Y = y;
        event.Button = button;
        return event;
    }
    void Click(std::int32_t y) {
        View.MouseDown(At(y));
        View.MouseUp(At(y));
    }
    void Scroll(ScrollCode code, std::int32_t thumb = 0, ScrollAxis axis = ScrollAxis::Vertical) {
        View.Scroll({axis, code, thumb});
    }
    [[nodiscard]] std::int32_t Position() const { return State->StateList.StateDataPos; }

    std::unique_ptr<InstrumentState> State = MakeListState();
    ListHost Host;
    StateListView View{*State, Host, Metrics{}};
};

TEST_F(StateListViewTest, ScrollsByLinesPagesAndTens) {
    State->StateList.StateDataPos = 50;
    Scroll(ScrollCode::LineForward);
    EXPECT_EQ(Position(), 51);
    Scroll(ScrollCode::LineBack);
    EXPECT_EQ(Position(), 50);
    Scroll(ScrollCode::PageForward);
    EXPECT_EQ(Position(), 59) << "the rows without the header";
    Scroll(ScrollCode::PageBack);
    EXPECT_EQ(Position(), 50);
    Scroll(ScrollCode::Top);
    EXPECT_EQ(Position(), 40) << "ten rows, not to sample 0";
    Scroll(ScrollCode::Bottom);
    EXPECT_EQ(Position(), 50);
}

TEST_F(StateListViewTest, AThumbCountsInUnits) {
    Scroll(ScrollCode::Thumb, 2);
    EXPECT_EQ(Position(), 64);
    State->Memory.DisplayLen = 0xFFFFF;
    Scroll(ScrollCode::Thumb, 2);
    EXPECT_EQ(Position(), 512);
}

TEST_F(StateListViewTest, AMoveOutOfTheSamplesIsRefusedNotCut) {
    State->StateList.StateDataPos = 4;
    Scroll(ScrollCode::Top);
    Scroll(ScrollCode::PageBack);
    EXPECT_EQ(Position(), 4);
    State->StateList.StateDataPos = 95;
    Scroll(ScrollCode::Bottom);
    EXPECT_EQ(Position(), 95);
    State->StateList.StateDataPos = 90;
    Scroll(ScrollCode::Bottom);
    EXPECT_EQ(Position(), 100) << "as far as the end";
    Scroll(ScrollCode::LineForward);
    EXPECT_EQ(Position(), 100);
}

TEST_F(StateListViewTest, ScrollsSidewaysThroughTheColumns) {
    const auto sideways = [this](ScrollCode code, std::int32_t thumb = 0) {
        Scroll(code, thumb, ScrollAxis::Horizontal);
        return State->StateList.StateGroupPos;
    };
    EXPECT_EQ(sideways(ScrollCode::LineBack), 0);
    EXPECT_EQ(sideways(ScrollCode::LineForward), 1);
    EXPECT_EQ(sideways(ScrollCode::Bottom), 3) << "the last column that shows something";
    EXPECT_EQ(sideways(ScrollCode::LineForward), 3);
    EXPECT_EQ(sideways(ScrollCode::Top), 0);
    EXPECT_EQ(sideways(ScrollCode::PageForward), 2) << "as many as are on the screen";
    EXPECT_EQ(sideways(ScrollCode::PageBack), 1);
    EXPECT_EQ(sideways(ScrollCode::Thumb, 2), 2);
}

TEST_F(StateListViewTest, AnyScrollMakesTheListActiveAndRefreshes) {
    Scroll(ScrollCode::LineForward);
    EXPECT_EQ(State->Windows.ActiveView, 1);
    EXPECT_EQ(Host.Invalidations, 1);
    EXPECT_EQ(Host.Followers, 1);
    State->Windows.ActiveView = 0;
    Scroll(ScrollCode::LineForward, 0, ScrollAxis::Horizontal);
    EXPECT_EQ(State->Windows.ActiveView, 1);
}

TEST_F(StateListViewTest, AClickMakesTheListActive) {
    Click(Y(3));
    EXPECT_EQ(State->Windows.ActiveView, 1);
    EXPECT_EQ(Host.Followers, 1) << "the Timing view's title changes";
    Click(Y(3));
    EXPECT_EQ(Host.Followers, 1);
}

TEST_F(StateListViewTest, AClickOnTheHeaderOpensTheSetupOfItsColumn) {
    MouseEvent event = At(5);
    event.X = kFirstColumn + 70;
    View.MouseDown(event);
    EXPECT_EQ(Host.Setups, 1);
    EXPECT_EQ(State->StateList.StateDisp, 3);
    event.X = 10;
    View.MouseDown(event);
    EXPECT_EQ(Host.Setups, 2);
    EXPECT_EQ(State->StateList.StateDisp, 3) << "beside the columns the last one stays";
    EXPECT_FALSE(View.Dragging());
}

TEST_F(StateListViewTest, AHeldLetterPutsItsCursorOnTheRow) {
    State->StateList.StateDataPos = 20;
    struct KeyCase {
        bool HeldKeys::*Key;
        std::size_t Cursor;
    };
    for (const auto& [key, cursor] : {KeyCase{&HeldKeys::A, 0},
                                      {&HeldKeys::B, 1},
                                      {&HeldKeys::C, 2},
                                      {&HeldKeys::D, 3},
                                      {&HeldKeys::T, 4}}) {
        MouseEvent event = At(Y(static_cast<std::int32_t>(cursor) + 1));
        event.Held.*key = true;
        View.MouseDown(event);
        EXPECT_EQ(State->Cursors.Cur[cursor], 21 + static_cast<std::int32_t>(cursor));
    }
    EXPECT_EQ(Host.Refreshes, 5);
    EXPECT_FALSE(View.Dragging());
}

TEST_F(StateListViewTest, BelowTheLastWholeRowIsNoSample) {
    View.Resize(600, 10 * kListRow + 8);
    MouseEvent event = At(10 * kListRow + 4);
    event.Held.A = true;
    View.MouseDown(event);
    EXPECT_EQ(State->Cursors.Cur[0], 90);
}

TEST_F(StateListViewTest, ADragMovesACursorByRows) {
    State->Cursors.Cur[1] = 4;
    View.MouseDown(At(Y(4)));
    EXPECT_TRUE(View.Dragging());
    View.MouseMove(At(Y(6)));
    EXPECT_EQ(State->Cursors.Cur[1], 6);
    EXPECT_EQ(Host.Refreshes, 1);
    View.MouseMove(At(Y(6) + 1));
    EXPECT_EQ(Host.Refreshes, 1) << "nothing moved";
    View.MouseMove(At(Y(1)));
    EXPECT_EQ(State->Cursors.Cur[1], 1);
    View.MouseUp(At(Y(1)));
    EXPECT_FALSE(View.Dragging());
    View.MouseMove(At(Y(5)));
    EXPECT_EQ(State->Cursors.Cur[1], 1);
}

TEST_F(StateListViewTest, APressNearARowGrabsItsCursor) {
    State->Cursors.Cur[2] = 4;
    const std::int32_t top = 5 * kListRow;
    View.MouseDown(At(top - 4));
    EXPECT_TRUE(View.Dragging());
    View.MouseMove(At(top - 4 + kListRow));
    EXPECT_EQ(State->Cursors.Cur[2], 5) << "by rows from where it was grabbed";
    View.MouseUp(At(top));
    State->Cursors.Cur[2] = 4;
    View.MouseDown(At(top + kListRow + 4));
    View.MouseUp(At(top + kListRow + 4));
    View.MouseMove(At(top - 5, MouseButton::None));
    EXPECT_EQ(Host.Shapes.back(), PointerShape::Arrow) << "five pixels are too far";
}

TEST_F(StateListViewTest, TheNearestCursorIsTakenAndAmongEqualsTheLowest) {
    State->Cursors.Cur = {90, 4, 5, 4, 5, 0};
    View.MouseMove(At(Y(4), MouseButton::None));
    EXPECT_EQ(Host.Shapes.back(), PointerShape::CursorB);
    View.MouseMove(At(Y(5), MouseButton::None));
    EXPECT_EQ(Host.Shapes.back(), PointerShape::CursorC);
    View.MouseMove(At(Y(8), MouseButton::None));
    EXPECT_EQ(Host.Shapes.back(), PointerShape::Arrow);
}

TEST_F(StateListViewTest, ACursorOutsideTheRowsIsNotGrabbed) {
    State->StateList.StateDataPos = 10;
    State->Cursors.Cur[0] = 9;
    View.MouseDown(At(Y(0)));
    View.MouseMove(At(Y(3)));
    EXPECT_EQ(State->Cursors.Cur[0], 9);
}

TEST_F(StateListViewTest, ADraggedCursorStaysInTheSamples) {
    State->Cursors.Cur[0] = 2;
    View.MouseDown(At(Y(2)));
    View.MouseMove(At(-500));
    EXPECT_EQ(State->Cursors.Cur[0], 0);
    View.MouseMove(At(Y(2) + 500 * kListRow));
    EXPECT_EQ(State->Cursors.Cur[0], 100) << "the end itself is allowed";
    View.MouseMove(At(Y(3)));
    EXPECT_EQ(State->Cursors.Cur[0], 3) << "from where it started";
}

TEST_F(StateListViewTest, RowsGoOnAboveTheWindow) {
    State->StateList.StateDataPos = 48;
    State->Cursors.Cur[0] = 50;
    View.MouseDown(At(Y(2)));
    View.MouseMove(At(-1));
    EXPECT_EQ(State->Cursors.Cur[0], 46) << "the header is a row, and another lies above it";
    View.MouseMove(At(0));
    EXPECT_EQ(State->Cursors.Cur[0], 47);
}

TEST_F(StateListViewTest, AHeldDigitTakesOthersAlong) {
    State->Cursors.Cur = {2, 20, 30, 40, 50, 0};
    View.MouseDown(At(Y(2)));
    MouseEvent move = At(Y(5));
    move.Held.Three = true;
    View.MouseMove(move);
    EXPECT_EQ(State->Cursors.Cur, (decltype(State->Cursors.Cur){5, 23, 33, 40, 50, 0}));
}

TEST_F(StateListViewTest, LosingTheFocusEndsADrag) {
    State->Cursors.Cur[0] = 2;
    View.MouseDown(At(Y(2)));
    View.FocusLost();
    View.MouseMove(At(Y(6)));
    EXPECT_EQ(State->Cursors.Cur[0], 2);
}

TEST_F(StateListViewTest, AnotherButtonEndsNothing) {
    State->Cursors.Cur[0] = 2;
    View.MouseDown(At(Y(2)));
    View.MouseDown(At(Y(7), MouseButton::Right));
    View.MouseUp(At(Y(7), MouseButton::Right));
    EXPECT_TRUE(View.Dragging());
    EXPECT_TRUE(Host.Menus.empty());
}

TEST_F(StateListViewTest, TheRightButtonOffersTheCursors) {
    State->StateList.StateDataPos = 40;
    Host.Choice = CursorMenuId(0, CursorAction::ToWindow);
    View.MouseDown(At(Y(1), MouseButton::Right));
    ASSERT_EQ(Host.Menus.size(), 1U);
    EXPECT_EQ(State->Cursors.Cur[0], 44) << "the middle of the nine rows";
    Host.Choice = CursorMenuId(1, CursorAction::ToWindow);
    View.MouseDown(At(Y(1), MouseButton::Right));
    EXPECT_EQ(State->Cursors.Cur[1], 43) << "its number before the middle";
    State->Cursors.Cur[4] = 70;
    Host.Choice = CursorMenuId(4, CursorAction::WindowToCursor);
    View.MouseDown(At(Y(1), MouseButton::Right));
    EXPECT_EQ(Position(), 66);
    Host.Color = 0x445566;
    Host.Choice = CursorMenuId(3, CursorAction::Color);
    View.MouseDown(At(Y(1), MouseButton::Right));
    EXPECT_EQ(State->Cursors.CursorColor[3], 0x445566U);
    EXPECT_EQ(Host.Refreshes, 4);
    Host.Choice = 0;
    View.MouseDown(At(Y(1), MouseButton::Right));
    EXPECT_EQ(Host.Refreshes, 4);
    View.MouseDown(At(3, MouseButton::Right));
    EXPECT_EQ(Host.Menus.size(), 5U) << "not in the header";
}

TEST_F(StateListViewTest, CopiesTheRowsOnTheScreen) {
    State->StateList.StateDataPos = 97;
    test::FillPod(*State, 0, [](std::int32_t i) { return i; });
    EXPECT_EQ(View.CopyText(), "Samples\tBus\tData\n97\t01100001\t00\n98\t01100010\t00\n99\t01100011\t00\n");
}

TEST_F(StateListViewTest, CopiesTheSelectedRows) {
    View.MouseDown(At(Y(2)));
    View.MouseMove(At(Y(4)));
    View.MouseUp(At(Y(4)));
    EXPECT_EQ(View.CopyText(), "Samples\tBus\tData\n2\t00000000\t00\n3\t00000000\t00\n4\t00000000\t00\n");
    MouseEvent shift = At(Y(1));
    shift.Shift = true;
    View.MouseDown(shift);
    View.MouseUp(shift);
    EXPECT_EQ(View.CopyText(), "Samples\tBus\tData\n1\t00000000\t00\n2\t00000000\t00\n")
        << "from where the selection began";
    RecorderCanvas canvas(600, 120);
    View.Paint(canvas);
    const auto& fill = canvas.Ops()[2];
    EXPECT_EQ(fill.What, RecorderCanvas::Kind::Fill);
    EXPECT_EQ(fill.Area, (Rect{0, 2 * kListRow, 600, 4 * kListRow}));
}

TEST_F(StateListViewTest, AClickSelectsNothing) {
    View.MouseDown(At(Y(2)));
    View.MouseMove(At(Y(2) + 1));
    View.MouseUp(At(Y(2)));
    EXPECT_NE(View.CopyText().find("\n8\t"), std::string::npos) << "all rows on the screen";
    View.MouseDown(At(Y(2)));
    View.MouseMove(At(Y(4)));
    View.MouseUp(At(Y(4)));
    Click(Y(6));
    EXPECT_NE(View.CopyText().find("\n8\t"), std::string::npos) << "the selection is gone";
}

TEST_F(StateListViewTest, ASelectionGoesOnBeyondTheRows) {
    View.MouseDown(At(Y(7)));
    View.MouseMove(At(Y(9)));
    EXPECT_EQ(Position(), 1);
    View.MouseMove(At(Y(9)));
    EXPECT_EQ(Position(), 2);
    View.MouseUp(At(Y(9)));
    const std::string text = View.CopyText();
    EXPECT_NE(text.find("\n7\t"), std::string::npos);
    EXPECT_NE(text.find("\n10\t"), std::string::npos);
    EXPECT_EQ(text.find("\n6\t"), std::string::npos);
    View.ClearSelection();
    EXPECT_NE(View.CopyText().find("\n2\t"), std::string::npos);
}

TEST_F(StateListViewTest, TellsOfTheRowUnderThePointer) {
    State->StateList.StateDataPos = 96;
    View.MouseMove(At(Y(2), MouseButton::None));
    EXPECT_EQ(View.HoverText().substr(0, 9), "Sample 98");
    View.MouseMove(At(3, MouseButton::None));
    EXPECT_EQ(View.HoverText(), "") << "the header";
    View.MouseMove(At(Y(4), MouseButton::None));
    EXPECT_EQ(View.HoverText(), "") << "behind the last sample";
    View.MouseLeave();
    EXPECT_EQ(View.HoverText(), "");
}

}  // namespace
}  // namespace zu
