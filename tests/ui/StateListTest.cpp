// The Statelist window and the search commands between the toolkit and the logic.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "ui/Desk.h"
#include "ui/display/CStateList.h"

namespace zu::test {
namespace {

constexpr int kRow = 12 + 4;  // pixels of a row on the test's screen of 1000

/// A desk with an open Statelist over samples that count.
class ListDesk : public StartedDesk {
  public:
    ListDesk() {
        for (std::int32_t i = 0; i < State().Memory.BufferLen; ++i) {
            State().Buffer.Pod[0][i] = static_cast<std::uint8_t>(i);
        }
        View().Execute(CommandId::WindowStateList);
        Settle();
    }
    CStateList& List() { return *View().StateList(); }
    QWidget& Area() { return *List().viewport(); }
    std::int32_t Position() { return State().StateList.StateDataPos; }
    static QPoint OnRow(int row) { return {20, (row + 1) * kRow + kRow / 2}; }
    void Move(const QPoint& at, Qt::MouseButtons buttons) {
        QMouseEvent move(QEvent::MouseMove, QPointF(at), Area().mapToGlobal(QPointF(at)), Qt::NoButton,
                         buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&Area(), &move);
    }
};

TEST(StateListWnd, OpensAndClosesFromTheMenu) {
    StartedDesk desk;
    EXPECT_TRUE(
        desk.EntriesOf("Window").contains(desk.View().Menu().Action(CommandId::WindowStateList)->text()));
    EXPECT_TRUE(desk.View().Menu().Action(CommandId::WindowStateList)->isEnabled());
    desk.View().Execute(CommandId::WindowStateList);
    EXPECT_EQ(desk.State().Windows.StateStat, 1);
    EXPECT_EQ(desk.View().Child(WindowId::StateList)->windowTitle(), "Statelist view: ");
    desk.View().Execute(CommandId::WindowStateList);
    EXPECT_EQ(desk.State().Windows.StateStat, 0);
}

TEST(StateListWnd, ShowsItsPictureAndRanges) {
    ListDesk desk;
    SaveShot(desk.Frame(), QStringLiteral("statelist"));
    EXPECT_EQ(desk.List().verticalScrollBar()->maximum(), 524288 / 32);
    EXPECT_GT(desk.List().horizontalScrollBar()->maximum(), 0);
    const QImage screen = desk.Area().grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QImage picture = desk.List().Picture().copy(0, 0, screen.width(), screen.height());
    EXPECT_EQ(screen, picture);
    EXPECT_GT(desk.Area().height(), 10 * kRow) << "its first place has room for rows";
    bool drawn = false;
    for (int x = 90; x < 140; ++x) drawn = drawn || picture.pixel(x, kRow + kRow / 2) != 0xFFFFFFFF;
    EXPECT_TRUE(drawn) << "a value stands in the first row";
}

TEST(StateListWnd, BarsKeysAndWheelScroll) {
    ListDesk desk;
    QScrollBar& bar = *desk.List().verticalScrollBar();
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(desk.Position(), 1);
    QTest::keyClick(&desk.List(), Qt::Key_Down);
    EXPECT_EQ(desk.Position(), 2);
    QTest::keyClick(&desk.List(), Qt::Key_End);
    EXPECT_EQ(desk.Position(), 12);
    QTest::keyClick(&desk.List(), Qt::Key_Home);
    EXPECT_EQ(desk.Position(), 2);
    QTest::keyClick(&desk.List(), Qt::Key_PageDown);
    EXPECT_EQ(desk.Position(), 2 + desk.List().View().Layout().SampleRows());
    const QPoint at = ListDesk::OnRow(2);
    QWheelEvent turn(at, desk.Area().mapToGlobal(at), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                     false);
    desk.State().StateList.StateDataPos = 0;
    QCoreApplication::sendEvent(&desk.Area(), &turn);
    EXPECT_EQ(desk.Position(), 3);
    bar.setSliderDown(true);
    bar.setSliderPosition(100);
    EXPECT_EQ(desk.Position(), 3200);
    bar.setSliderDown(false);
    QTest::keyClick(&desk.List(), Qt::Key_Right);
    EXPECT_EQ(desk.State().StateList.StateGroupPos, 1);
    EXPECT_EQ(desk.State().Windows.ActiveView, 1);
}

TEST(StateListWnd, ALetterPutsAndADragMovesACursor) {
    ListDesk desk;
    QTest::keyPress(&desk.List(), Qt::Key_B);
    QTest::mouseClick(&desk.Area(), Qt::LeftButton, {}, ListDesk::OnRow(5));
    QTest::keyRelease(&desk.List(), Qt::Key_B);
    EXPECT_EQ(desk.State().Cursors.Cur[1], 5);
    QTest::mousePress(&desk.Area(), Qt::LeftButton, {}, ListDesk::OnRow(5));
    desk.Move(ListDesk::OnRow(8), Qt::LeftButton);
    QTest::mouseRelease(&desk.Area(), Qt::LeftButton, {}, ListDesk::OnRow(8));
    EXPECT_EQ(desk.State().Cursors.Cur[1], 8);
}

TEST(StateListWnd, TheHeaderOpensTheSetup) {
    ListDesk desk;
    int column = -1;
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        column = dialog.findChild<QComboBox*>(QStringLiteral("Column"))->currentIndex();
        dialog.reject();
    });
    const auto layout = desk.List().View().Layout();
    ASSERT_GE(layout.Count, 2);
    QTest::mouseClick(&desk.Area(), Qt::LeftButton, {}, {layout.Columns[1].Left + 3, kRow / 2});
    EXPECT_EQ(column, 1);
    EXPECT_EQ(desk.Box.Titles, QStringList{QStringLiteral("Statelist setup")});
}

TEST(StateListWnd, CopiesRowsAsText) {
    ListDesk desk;
    QTest::mousePress(&desk.Area(), Qt::LeftButton, {}, ListDesk::OnRow(2));
    desk.Move(ListDesk::OnRow(3), Qt::LeftButton);
    QTest::mouseRelease(&desk.Area(), Qt::LeftButton, {}, ListDesk::OnRow(3));
    QTest::keyClick(&desk.List(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 4) << "header, two rows, the last line's end";
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("20ns\t00000010"))) << lines[1].toStdString();
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("30ns\t00000011"))) << lines[2].toStdString();
    QTest::keyClick(&desk.List(), Qt::Key_Escape);
    QTest::keyClick(&desk.List(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_GT(QGuiApplication::clipboard()->text().count(u'\n'), 5) << "the rows on the screen";
}

TEST(StateListWnd, FollowsTheOtherViews) {
    ListDesk desk;
    const QImage before = desk.List().Picture().copy();
    desk.State().Cursors.Cur[0] = 3;
    desk.View().RefreshKeepingMeasures();
    Desk::Settle();
    EXPECT_NE(desk.List().Picture(), before) << "the row is in the cursor's colour";
}

TEST(SearchCommands, KeysGoFromMatchToMatch) {
    StartedDesk desk;
    InstrumentState& state = desk.State();
    for (const std::int32_t at : {100, 250}) state.Buffer.Pod[0][at] = 0x80;
    state.Search.SearchMode = 'S';
    state.Search.SearchWord = "1";
    state.Search.SearchCh = 7;
    QTest::keyClick(&desk.Frame(), Qt::Key_F3);
    EXPECT_EQ(state.Timing.TimingDataPos, 101) << "the sample behind the match";
    QTest::keyClick(&desk.Frame(), Qt::Key_F3);
    EXPECT_EQ(state.Timing.TimingDataPos, 251);
    QTest::keyClick(&desk.Frame(), Qt::Key_F3);
    EXPECT_EQ(state.Timing.TimingDataPos, 251) << "there is no other, and no wrap";
    QTest::keyClick(&desk.Frame(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(state.Timing.TimingDataPos, 249);
    EXPECT_TRUE(desk.Box.Seen.empty()) << "no message";
}

TEST(SearchCommands, TheDialogSearchesTheActiveView) {
    ListDesk desk;
    desk.State().Windows.ActiveView = 1;
    desk.State().Search.SearchMode = 'S';
    desk.State().Search.SearchWord = "1";
    desk.State().Search.SearchCh = 4;
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("Forward"))->click();
        EXPECT_EQ(desk.Position(), 17);
        dialog.reject();
    });
    desk.View().Execute(CommandId::Search);
    EXPECT_EQ(desk.Box.Titles, QStringList{QStringLiteral("Search")});
}

}  // namespace
}  // namespace zu::test
