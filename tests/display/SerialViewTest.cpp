// Mouse, scroll bar, search and texts of the lists of I2C events and SPI bytes.
#include <gtest/gtest.h>

#include "display/SerialView.h"
#include "display/SpiView.h"
#include "serial/SpiDecoder.h"
#include "support/SerialListFixture.h"

namespace zu::test {
namespace {

constexpr std::int32_t kRow = kSerialRow;

void ScrollTo(SerialListView& view, ScrollCode code, std::int32_t thumb = 0) {
    view.Scroll({ScrollAxis::Vertical, code, thumb});
}

/// A window of six rows: a header and five rows of the eleven events.
class SerialViewTest : public testing::Test {
  protected:
    SerialViewTest() { View.Resize(400, 6 * kRow); }
    [[nodiscard]] std::int32_t Position() const { return State->Serial.SerialDataPos; }
    /// A to D and the trigger.
    [[nodiscard]] std::vector<std::int32_t> Cursors() const {
        return {State->Cursors.Cur.begin(), State->Cursors.Cur.begin() + kCursorT + 1};
    }
    std::int32_t After(ScrollCode code, std::int32_t thumb = 0) {
        ScrollTo(View, code, thumb);
        return Position();
    }
    void Press(std::int32_t row, MouseButton button = MouseButton::Left) {
        View.MouseDown(OnRow(row, button));
        View.MouseUp(OnRow(row, button));
    }

    std::unique_ptr<InstrumentState> State = MakeSerialState();
    SerialWindow Window;
    ScriptedHost Boxes;
    SerialView View{*State, Window, Boxes, Metrics{}};
};

TEST_F(SerialViewTest, ScrollsByRowsAndPages) {
    EXPECT_EQ(After(ScrollCode::LineForward), 20);
    EXPECT_EQ(After(ScrollCode::PageForward), 70) << "five rows";
    EXPECT_EQ(After(ScrollCode::LineBack), 60);
    EXPECT_EQ(After(ScrollCode::PageBack), 10);
    EXPECT_EQ(After(ScrollCode::LineBack), 10);
    EXPECT_EQ(After(ScrollCode::Bottom), 70) << "the last page is full";
    EXPECT_EQ(After(ScrollCode::Top), 10);
    State->Cursors.Cur[1] = 150;
    EXPECT_EQ(After(ScrollCode::Bottom), 70) << "a cursor behind the last event counts for nothing";
}

TEST_F(SerialViewTest, NoScrollLeavesTheRange) {
    EXPECT_EQ(After(ScrollCode::Thumb, -5), 10);
    EXPECT_EQ(After(ScrollCode::Thumb, INT32_MAX), 110);
    EXPECT_EQ(After(ScrollCode::LineForward), 110);
    EXPECT_EQ(After(ScrollCode::PageForward), 110);
    EXPECT_EQ(After(ScrollCode::Thumb, 55), 55);
    EXPECT_EQ(After(ScrollCode::LineForward), 70) << "the row after the first one shown";
    State->Serial.SerialDataPos = -100;
    EXPECT_EQ(After(ScrollCode::LineForward), 20) << "from what was on the screen";
}

TEST_F(SerialViewTest, AnEvenRowCountDecidesThePage) {
    View.Resize(400, 7 * kRow);
    EXPECT_EQ(After(ScrollCode::PageForward), 60) << "seven rows count as six";
    View.Resize(400, 0);
    EXPECT_EQ(After(ScrollCode::PageForward), 70) << "a page is a row at least";
}

TEST_F(SerialViewTest, AThumbCountsInUnitsOfTheScale) {
    State->Serial.SerialEvents.assign(200000, 3);
    State->Serial.SerialFirst = 0;
    State->Serial.SerialLast = 0x7FFF;
    EXPECT_EQ(After(ScrollCode::Thumb, 100), 200);
    EXPECT_EQ(View.Range(), (ScrollRange{0, 0x7FFF / 2, 100}));
    State->Serial.SerialLast = 0x7FFE;
    EXPECT_EQ(After(ScrollCode::Thumb, 100), 100);
}

TEST_F(SerialViewTest, AScrollRedrawsTheOthers) {
    ScrollTo(View, ScrollCode::LineForward);
    EXPECT_EQ(Window.Invalidations, 1);
    EXPECT_EQ(Window.Followers, 1);
    View.Scroll({ScrollAxis::Horizontal, ScrollCode::LineForward, 0});
    EXPECT_EQ(Position(), 20) << "there is nothing to either side";
}

TEST_F(SerialViewTest, AClickOnARowMovesTheOtherViews) {
    Press(2);
    EXPECT_EQ(State->StateList.StateDataPos, 30);
    EXPECT_EQ(Window.Centered, (std::vector<std::int32_t>{30}));
    EXPECT_EQ(Window.Followers, 1);
    EXPECT_EQ(Position(), 10) << "the list itself stays";
}

TEST_F(SerialViewTest, AClickCountsFromTheFirstRowShown) {
    State->Cursors.Cur[0] = 3;
    State->Serial.SerialDataPos = 0;
    Press(0);
    EXPECT_EQ(State->StateList.StateDataPos, 10) << "the cursor before the range is not listed";
}

TEST_F(SerialViewTest, AClickCountsEventsThatAreNotListed) {
    State->Serial.SerialFilter[4] = 0;
    Press(1);
    EXPECT_EQ(State->StateList.StateDataPos, 20) << "though the row shows the acknowledge at 100";
}

TEST_F(SerialViewTest, AClickOnTheHeaderOpensTheSetup) {
    MouseEvent event = OnRow(0);
    event.Y = kRow - 1;
    View.MouseDown(event);
    EXPECT_EQ(Window.Setups, 1);
    EXPECT_EQ(Window.Refreshes, 1);
    EXPECT_FALSE(View.Dragging());
    event.Y = -1;
    View.MouseDown(event);
    EXPECT_EQ(Window.Setups, 1) << "above the header nothing happens";
    event.Y = 3;
    event.Button = MouseButton::Right;
    View.MouseDown(event);
    EXPECT_EQ(Window.Setups, 1);
    EXPECT_TRUE(Window.Menus.empty());
}

TEST_F(SerialViewTest, AClickPastTheEndIsIgnored) {
    View.Resize(400, 30 * kRow);
    Press(20);
    Press(20, MouseButton::Right);
    EXPECT_TRUE(Window.Centered.empty());
    EXPECT_TRUE(Window.Menus.empty());
    EXPECT_EQ(State->StateList.StateDataPos, 0);
    Press(1, MouseButton::Middle);
    EXPECT_TRUE(Window.Centered.empty());
}

TEST_F(SerialViewTest, AHeldLetterPutsItsCursorOnTheRow) {
    MouseEvent event = OnRow(3);
    event.Held.B = event.Held.T = true;
    View.MouseDown(event);
    EXPECT_EQ(Cursors(), (std::vector<std::int32_t>{1000, 40, 1000, 1000, 40}));
    EXPECT_EQ(Window.Refreshes, 1);
    EXPECT_TRUE(Window.Centered.empty()) << "the views stay";
    EXPECT_FALSE(View.Dragging());
}

TEST_F(SerialViewTest, TheRightButtonOffersViewsAndCursors) {
    Press(4, MouseButton::Right);
    ASSERT_EQ(Window.Menus.size(), 1U);
    std::vector<std::string> texts;
    for (const MenuEntry& entry : Window.Menus[0].Entries) texts.push_back(entry.Text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{"Timing window to point", "Serial window to point",
                                        "Cursor &A to point", "Cursor &B to point", "Cursor &C to point",
                                        "Cursor &D to point", "Cursor &T to point"}));
    EXPECT_EQ(Window.Refreshes, 0) << "nothing was chosen";
    Window.Choice = kTimingToPoint;
    Press(4, MouseButton::Right);
    EXPECT_EQ(Window.Centered, (std::vector<std::int32_t>{50}));
    EXPECT_EQ(State->StateList.StateDataPos, 0) << "the Timing view alone";
    for (int cursor = 0; cursor <= kCursorT; ++cursor) {
        Window.Choice = kCursorToPoint + cursor;
        Press(cursor, MouseButton::Right);
    }
    EXPECT_EQ(Cursors(), (std::vector<std::int32_t>{10, 20, 30, 40, 50}));
    Window.Choice = kSerialToPoint;
    Press(4, MouseButton::Right);
    EXPECT_EQ(Position(), 50);
    EXPECT_EQ(Window.Refreshes, 7);
    Window.Choice = kCursorToPoint + kCursorT + 1;
    Press(1, MouseButton::Right);
    EXPECT_EQ(Window.Refreshes, 7);
}

TEST_F(SerialViewTest, ACursorStaysInTheMemory) {
    State->Memory.DisplayLen = 35;
    Window.Choice = kCursorToPoint;
    Press(4, MouseButton::Right);
    EXPECT_EQ(State->Cursors.Cur[0], 35);
}

TEST_F(SerialViewTest, SearchTakesTheChosenKind) {
    State->Serial.SearchKind = 4;
    EXPECT_TRUE(View.Search(SearchWay::Next));
    EXPECT_EQ(Position(), 20);
    EXPECT_TRUE(View.Search(SearchWay::Next));
    EXPECT_EQ(Position(), 40);
    EXPECT_TRUE(View.Search(SearchWay::Prev));
    EXPECT_EQ(Position(), 20);
    EXPECT_EQ(Window.Invalidations, 3);
    EXPECT_EQ(Window.Followers, 3);
    State->Serial.SearchKind = 3;
    EXPECT_FALSE(View.Search(SearchWay::Next));
    EXPECT_EQ(Position(), 20);
    EXPECT_EQ(Boxes.Boxes, (std::vector<ScriptedHost::Box>{{"Not found", "Serial Search"}}));
    EXPECT_EQ(Window.Invalidations, 3);
}

TEST_F(SerialViewTest, ASearchFromTheLastRowWrapsNowhere) {
    State->Serial.SerialDataPos = 110;
    for (std::int8_t kind = 0; kind < 6; ++kind) {
        State->Serial.SearchKind = kind;
        EXPECT_FALSE(View.Search(SearchWay::Next));
    }
    EXPECT_EQ(Boxes.Boxes.size(), 6U);
    EXPECT_EQ(Position(), 110);
}

TEST_F(SerialViewTest, TheFilterMenuTurnsAFlagAndRedraws) {
    Window.Choice = 5;
    View.OpenFilter(10, 20);
    EXPECT_EQ(State->Serial.SerialFilter[4], 0);
    EXPECT_EQ(Window.Invalidations, 1);
    View.OpenFilter(10, 20);
    EXPECT_EQ(State->Serial.SerialFilter[4], 1);
    ASSERT_EQ(Window.Menus.size(), 2U);
    EXPECT_TRUE(Window.Menus[0].Entries[4].Checked);
    EXPECT_FALSE(Window.Menus[1].Entries[4].Checked);
    Window.Choice = 0;
    View.OpenFilter(10, 20);
    EXPECT_EQ(Window.Invalidations, 2);
}

TEST_F(SerialViewTest, ScrollsOverListedRowsOnly) {
    State->Serial.SerialFilter.fill(0);
    EXPECT_EQ(After(ScrollCode::LineForward), 10) << "no rows at all";
    EXPECT_EQ(After(ScrollCode::Bottom), 10);
    State->Serial.SerialFilter[4] = 1;
    EXPECT_EQ(After(ScrollCode::LineForward), 30);
    State->Cursors.Cur[2] = 34;
    EXPECT_EQ(After(ScrollCode::LineForward), 34) << "a cursor is a row";
    EXPECT_EQ(After(ScrollCode::LineForward), 40);
    EXPECT_EQ(After(ScrollCode::LineBack), 34);
}

TEST_F(SerialViewTest, CopiesTheRowsOnTheScreen) {
    State->Cursors.Cur[0] = 10;
    EXPECT_EQ(View.CopyText(),
              "Location\tI2C\tCursor\tTransfer\n10\tSTART\tCursor A\tS 28 W ACK | P\n20\t0\t\t\n30\t1\t\t\n"
              "40\t0\t\t\n50\t1\t\t\n");
    View.ShowTransfers(false);
    State->Serial.SerialDataPos = 100;
    EXPECT_EQ(View.CopyText(), "Location\tI2C\tCursor\n100\tACK(Val=0x50)\t\n110\tSTOP\t\n");
}

TEST_F(SerialViewTest, CopiesMicrowireWithoutTransfers) {
    State->Serial.SerialMode = 2;
    State->Serial.SerialEvents[30] = 26;
    EXPECT_EQ(View.CopyText(), "Address\tMicrowire\tCursor\n30\tD in 1\t\n");
}

TEST_F(SerialViewTest, CopiesTheSelectedRows) {
    View.ShowTransfers(false);
    View.MouseDown(OnRow(1));
    View.MouseMove(OnRow(3));
    EXPECT_TRUE(View.Dragging());
    EXPECT_EQ(View.HoverText(), "");
    View.MouseUp(OnRow(3));
    const std::string header = "Location\tI2C\tCursor\n";
    EXPECT_EQ(View.CopyText(), header + "20\t0\t\n30\t1\t\n40\t0\t\n");
    MouseEvent shift = OnRow(0);
    shift.Shift = true;
    View.MouseDown(shift);
    View.MouseUp(shift);
    EXPECT_EQ(View.CopyText(), header + "10\tSTART\t\n20\t0\t\n") << "from where it began";
    EXPECT_EQ(Window.Centered.size(), 1U) << "a selection moves no view";
    State->Serial.SerialDataPos = 100;
    EXPECT_EQ(View.CopyText(), header + "10\tSTART\t\n20\t0\t\n") << "also when it is out of sight";
    View.ClearSelection();
    EXPECT_EQ(View.CopyText(), header + "100\tACK(Val=0x50)\t\n110\tSTOP\t\n");
}

TEST_F(SerialViewTest, ASelectionGoesOnBeyondTheRows) {
    View.MouseDown(OnRow(3));
    View.MouseMove(OnRow(5));
    View.MouseMove(OnRow(5));
    EXPECT_EQ(Position(), 30);
    View.FocusLost();
    View.MouseMove(OnRow(5));
    EXPECT_EQ(Position(), 30) << "the drag has ended";
    const std::string text = View.CopyText();
    EXPECT_NE(text.find("\n70\t"), std::string::npos);
    EXPECT_EQ(text.find("\n80\t"), std::string::npos);
    EXPECT_EQ(text.find("\n30\t"), std::string::npos);
    MouseEvent above = OnRow(0);
    above.Y = -40;
    View.MouseDown(OnRow(0));
    View.MouseMove(above);
    EXPECT_EQ(Position(), 20);
}

TEST_F(SerialViewTest, AClickSelectsNothing) {
    Press(2);
    EXPECT_NE(View.CopyText().find("\n10\t"), std::string::npos) << "all rows on the screen";
    View.MouseDown(OnRow(1));
    View.MouseMove(OnRow(3));
    View.MouseUp(OnRow(3));
    Press(0);
    EXPECT_NE(View.CopyText().find("\n50\t"), std::string::npos) << "the selection is gone";
}

TEST_F(SerialViewTest, TellsOfTheRowUnderThePointer) {
    State->Cursors.Cur = {10, 40, 1000, 1000, 1000, 0};
    View.MouseMove(OnRow(2, MouseButton::None));
    EXPECT_EQ(View.HoverText(),
              "Sample 30 (300ns)\nfrom A: +20 (200ns)\nfrom B: -10 (-100ns)\nfrom C: -970 (-9,700ns)\n"
              "from D: -970 (-9,700ns)\nfrom T: -970 (-9,700ns)");
    View.MouseMove(OnRow(0, MouseButton::None));
    EXPECT_TRUE(View.HoverText().ends_with("\nS 28 W ACK | P")) << "and of the transfer that begins there";
    View.MouseMove(OnRow(-1, MouseButton::None));
    EXPECT_EQ(View.HoverText(), "") << "the header";
    View.MouseMove(OnRow(5, MouseButton::None));
    EXPECT_EQ(View.HoverText(), "") << "below the whole rows";
    View.MouseMove(OnRow(1, MouseButton::None));
    View.MouseLeave();
    EXPECT_EQ(View.HoverText(), "");
}

TEST_F(SerialViewTest, TheColumnOfTransfersCanBeSwitchedOff) {
    const auto headers = [this] {
        RecorderCanvas canvas(400, 6 * kRow);
        View.Paint(canvas);
        return canvas.TextsAt(0).size();
    };
    EXPECT_TRUE(View.ShowsTransfers());
    EXPECT_EQ(headers(), 3U);
    View.ShowTransfers(false);
    EXPECT_FALSE(View.ShowsTransfers());
    EXPECT_EQ(headers(), 2U);
    View.ShowTransfers(false);
    EXPECT_EQ(Window.Invalidations, 1);
}

/// A window of four rows: a header and three rows of bytes.
class SpiViewTest : public testing::Test {
  protected:
    SpiViewTest() { View.Resize(600, 4 * kRow); }
    [[nodiscard]] std::int32_t Position() const { return State->Serial.SpiDataPos; }
    std::int32_t After(ScrollCode code, std::int32_t thumb = 0) {
        ScrollTo(View, code, thumb);
        return Position();
    }

    std::unique_ptr<InstrumentState> State = MakeSpiState();
    SerialWindow Window;
    ScriptedHost Boxes;
    SpiView View{*State, Window, Boxes, Metrics{}};
};

TEST_F(SpiViewTest, ScrollsFromByteToByte) {
    EXPECT_EQ(After(ScrollCode::LineForward), 40);
    EXPECT_EQ(After(ScrollCode::LineForward), 60);
    EXPECT_EQ(After(ScrollCode::LineForward), 60);
    EXPECT_EQ(After(ScrollCode::LineBack), 40);
    EXPECT_EQ(After(ScrollCode::Top), 20);
    EXPECT_EQ(After(ScrollCode::PageForward), 60);
    EXPECT_EQ(After(ScrollCode::PageBack), 20);
    EXPECT_EQ(After(ScrollCode::Bottom), 20) << "all three fit";
    View.Resize(600, 3 * kRow);
    EXPECT_EQ(After(ScrollCode::Bottom), 40);
    EXPECT_EQ(Window.Followers, 9);
}

TEST_F(SpiViewTest, AThumbIsMovedOntoAByte) {
    EXPECT_EQ(After(ScrollCode::Thumb, 1), 40) << "from sample 32 on";
    EXPECT_EQ(After(ScrollCode::Thumb, 0), 20);
    EXPECT_EQ(After(ScrollCode::Thumb, INT32_MAX), 60);
    EXPECT_EQ(After(ScrollCode::Thumb, INT32_MIN), 20);
    EXPECT_EQ(View.Range(), (ScrollRange{0, 1, 0}));
}

TEST_F(SpiViewTest, ACursorsRowIsPassedOverWhereTheListCannotBegin) {
    State->Cursors.Cur[0] = 50;
    State->Serial.SpiDataPos = 60;
    EXPECT_EQ(After(ScrollCode::LineBack), 40);
    EXPECT_EQ(After(ScrollCode::LineForward), 60) << "the list begins with a byte";
}

TEST_F(SpiViewTest, AClickMovesTheOtherViews) {
    State->Serial.SpiShown[1] = 0;
    View.MouseDown(OnRow(1));
    View.MouseUp(OnRow(1));
    EXPECT_EQ(State->StateList.StateDataPos, 40);
    EXPECT_EQ(Window.Centered, (std::vector<std::int32_t>{40}));
    MouseEvent header = OnRow(-1);
    View.MouseDown(header);
    EXPECT_EQ(Window.Setups, 1);
}

TEST_F(SpiViewTest, AClickCountsRowsWithAByteInAllSlots) {
    View.MouseDown(OnRow(0));
    EXPECT_EQ(State->StateList.StateDataPos, 40) << "though the first row shows the byte at 20";
    View.MouseUp(OnRow(0));
    View.MouseDown(OnRow(1));
    EXPECT_EQ(Window.Centered.size(), 1U) << "past the end of what counts";
}

TEST_F(SpiViewTest, ThePopupPlacesCursorsAndTheSerialView) {
    Window.Choice = kCursorToPoint + 3;
    View.MouseDown(OnRow(0, MouseButton::Right));
    EXPECT_EQ(State->Cursors.Cur[3], 40);
    Window.Choice = kSerialToPoint;
    View.MouseDown(OnRow(0, MouseButton::Right));
    EXPECT_EQ(State->Serial.SerialDataPos, 40);
    EXPECT_EQ(Position(), 20);
}

TEST_F(SpiViewTest, AButtonTurnsItsSlotAndDecodesAnew) {
    State->Serial.SpiFirst = 99;
    View.PressSlot(0);
    EXPECT_FALSE(View.SlotShown(0));
    EXPECT_TRUE(View.SlotShown(1));
    EXPECT_EQ(State->Serial.SpiFirst, 0) << "the samples hold no bytes";
    EXPECT_EQ(Window.Refreshes, 1);
    View.PressSlot(0);
    EXPECT_TRUE(View.SlotShown(0));
    EXPECT_EQ(View.SlotText(0), "SPI(0)\r\nFLASH");
    EXPECT_EQ(View.SlotText(2), "SPI(2)\r\nUndefined");
    EXPECT_TRUE(Boxes.Boxes.empty());
}

TEST_F(SpiViewTest, AButtonWithoutAGroupSaysSoAndOpensTheGroupSetup) {
    View.PressSlot(2);
    EXPECT_EQ(Boxes.Boxes, (std::vector<ScriptedHost::Box>{{"SPI group not defined.", "Note:"}}));
    EXPECT_EQ(Window.GroupSetups, 1);
    EXPECT_EQ(State->Serial.SpiShown[2], 1);
    EXPECT_FALSE(View.SlotShown(2));
    View.PressSlot(3);
    View.PressSlot(-1);
    EXPECT_EQ(Window.GroupSetups, 1);
    EXPECT_FALSE(View.SlotShown(-1));
}

TEST_F(SpiViewTest, CopiesRows) {
    State->Serial.SpiShown[1] = 0;
    State->Cursors.Cur[0] = State->Cursors.Cur[4] = 40;
    EXPECT_EQ(View.CopyText(),
              "Position\tMOSI\tMISO\tCursor(s)\n0000020\t9F\tFF\t\n0000040\t0A\t05\tTrigger,A\n");
    View.MouseDown(OnRow(1));
    View.MouseMove(OnRow(0));
    View.MouseMove(OnRow(1));
    View.MouseUp(OnRow(1));
    EXPECT_EQ(View.CopyText(), "Position\tMOSI\tMISO\tCursor(s)\n0000040\t0A\t05\tTrigger,A\n");
}

TEST_F(SpiViewTest, TellsOfTheRowUnderThePointer) {
    View.MouseMove(OnRow(1, MouseButton::None));
    EXPECT_EQ(View.HoverText().substr(0, 17), "Sample 40 (400ns)");
}

}  // namespace
}  // namespace zu::test
