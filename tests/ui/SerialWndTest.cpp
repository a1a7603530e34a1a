// The serial window between the toolkit and the logic: its tools, keys, links to the other windows, and what
// of it outlives a run.
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QMdiArea>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include "serial/EventMap.h"
#include "ui/BusDesk.h"
#include "ui/display/CStateList.h"
#include "ui/serial/CSerialList.h"
#include "ui/serial/CSerialWnd.h"

namespace zu::test {
namespace {

/// A desk with an open serial window.
class SerialDesk : public BusDesk {
  public:
    SerialDesk() {
        View().Execute(CommandId::WindowSerial);
        Settle();
    }
    CSerialWnd& Window() { return *View().Serial(); }
    CSerialList& List() { return Window().List(); }
    QWidget& Area() { return *List().viewport(); }
    std::int32_t Position() { return State().Serial.SerialDataPos; }
    QPushButton& Button(const char* name) { return *Window().findChild<QPushButton*>(QLatin1String(name)); }
    QComboBox& Kind() { return *Window().findChild<QComboBox*>(QStringLiteral("SearchKind")); }
    /// Runs what opens a menu, takes an entry of it and answers its texts.
    template <typename Open>
    QStringList TakeFromMenu(const QString& taken, Open open) {
        QStringList texts;
        QTimer::singleShot(20, [&texts, taken] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr) return;
            for (QAction* action : menu->actions()) {
                texts.append(action->text());
                if (action->text() == taken) menu->setActiveAction(action);
            }
            QTest::keyClick(menu, taken.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        open();
        Settle();
        return texts;
    }
};

TEST(SerialWnd, OpensFromTheMenuWithItsTrafficDecoded) {
    BusDesk desk;
    EXPECT_TRUE(
        desk.Entry("Window", desk.View().Menu().Action(CommandId::WindowSerial)->text())->isEnabled());
    desk.View().Execute(CommandId::WindowSerial);
    Desk::Settle();
    EXPECT_EQ(desk.State().Windows.SerialStat, 1);
    EXPECT_EQ(desk.View().Child(WindowId::Serial)->windowTitle(), "I2C View");
    EXPECT_EQ(EventAt(desk.State(), kBusStart), 1);
    const CSerialList& list = desk.View().Serial()->List();
    const QImage screen = list.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(screen, list.Picture().copy(0, 0, screen.width(), screen.height()));
    SaveShot(desk.Frame(), QStringLiteral("serial"));
    desk.View().Execute(CommandId::WindowSerial);
    EXPECT_EQ(desk.State().Windows.SerialStat, 0);
}

TEST(SerialWnd, ItsFirstPlaceHoldsToolsAndColumns) {
    SerialDesk desk;
    const QRect place = desk.View().Child(WindowId::Serial)->geometry();
    EXPECT_TRUE(desk.Frame().Area().viewport()->rect().contains(place));
    EXPECT_GE(place.width(), 560);
    EXPECT_GT(desk.Area().height(), 10 * kListRow);
    EXPECT_EQ(desk.State().Windows.SerialRectValid, 0) << "the user has put it nowhere";
}

TEST(SerialWnd, LeavesTheTitleOfTheSpiWindowInSight) {
    SerialDesk desk;
    desk.View().Execute(CommandId::WindowSpi);
    const QRect below = desk.View().Child(WindowId::Serial)->geometry();
    const QRect above = desk.View().Child(WindowId::Spi)->geometry();
    EXPECT_GE(above.top(), below.top() + 20);
    EXPECT_TRUE(desk.Frame().Area().viewport()->rect().contains(above));
}

TEST(SerialWnd, IsNeverNarrowerThanItsTools) {
    BusDesk desk;
    desk.State().Windows.SerialRect = {10, 20, 70, 90};
    desk.State().Windows.SerialRectValid = 1;
    desk.View().Execute(CommandId::WindowSerial);
    Desk::Settle();
    const QWidget& window = *desk.View().Serial();
    const auto* filter = window.findChild<QPushButton*>(QStringLiteral("Filter"));
    EXPECT_LE(filter->geometry().right(), window.width());
    EXPECT_EQ(desk.State().Windows.SerialRect, (WindowRect{10, 20, 70, 90}));
}

TEST(SerialWnd, SearchesTheKindThatTheListNames) {
    SerialDesk desk;
    QStringList kinds;
    for (int i = 0; i < desk.Kind().count(); ++i) kinds.append(desk.Kind().itemText(i));
    EXPECT_EQ(kinds, (QStringList{"Start", "Stop", "ACK", "NACK", "0", "1"}));
    desk.Kind().setCurrentIndex(2);
    EXPECT_EQ(desk.State().Serial.SearchKind, 2);
    desk.Button("Next").click();
    const std::int32_t first = desk.Position();
    EXPECT_EQ(EventAt(desk.State(), first), 15);
    desk.Button("Next").click();
    EXPECT_GT(desk.Position(), first);
    desk.Button("Prev").click();
    EXPECT_EQ(desk.Position(), first);
    EXPECT_TRUE(desk.Box.Seen.isEmpty());
}

TEST(SerialWnd, ASearchThatFindsNothingSaysSo) {
    SerialDesk desk;
    desk.Kind().setCurrentIndex(0);
    desk.Button("Next").click();
    EXPECT_EQ(desk.Position(), kBusStart);
    desk.Button("Next").click();
    EXPECT_EQ(desk.Box.Seen, (QList<Boxes::Box>{{"Not found", "Serial Search"}}));
    EXPECT_EQ(desk.Position(), kBusStart);
}

TEST(SerialWnd, ItsSearchHasTheKeysOfTheSearch) {
    SerialDesk desk;
    desk.Kind().setCurrentIndex(3);
    QTest::keyClick(&desk.List(), Qt::Key_F3);
    EXPECT_EQ(EventAt(desk.State(), desk.Position()), 16);
    const std::int32_t nack = desk.Position();
    desk.Kind().setCurrentIndex(2);
    QTest::keyClick(&desk.Kind(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_LT(desk.Position(), nack);
    EXPECT_EQ(EventAt(desk.State(), desk.Position()), 15);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 0) << "the samples were not searched";
    EXPECT_TRUE(desk.Box.Seen.isEmpty());
}

TEST(SerialWnd, ElsewhereTheKeysSearchTheSamples) {
    SerialDesk desk;
    desk.State().Search.SearchMode = 'S';
    desk.State().Search.SearchWord = "0";
    desk.State().Search.SearchCh = 1;
    const std::int32_t before = desk.Position();
    QTest::keyClick(&desk.Timing(), Qt::Key_F3);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, kBusStart + 1);
    EXPECT_EQ(desk.Position(), before);
}

TEST(SerialWnd, TheFilterButtonTogglesWhatIsListed) {
    SerialDesk desk;
    const QImage before = desk.List().Picture().copy();
    const QStringList entries = desk.TakeFromMenu("1 or 0", [&] { desk.Button("Filter").click(); });
    EXPECT_EQ(entries, (QStringList{"Start", "Stop", "Read", "Write", "1 or 0", "ACK", "NACK", "Data",
                                    "Address", "Error", "Mode/Chip select"}));
    EXPECT_EQ(desk.State().Serial.SerialFilter[4], 0);
    EXPECT_NE(desk.List().Picture(), before) << "the bits are gone";
    desk.TakeFromMenu("1 or 0", [&] { desk.Button("Filter").click(); });
    EXPECT_EQ(desk.State().Serial.SerialFilter[4], 1);
    EXPECT_EQ(desk.List().Picture(), before);
}

TEST(SerialWnd, AClickShowsTheMomentInTheOtherWindows) {
    SerialDesk desk;
    desk.View().Execute(CommandId::WindowStateList);
    desk.State().Timing.ScreenZoom = 10;
    Desk::Settle();
    desk.Kind().setCurrentIndex(3);
    desk.Button("Next").click();
    const std::int32_t sample = desk.Position();
    QTest::mouseClick(&desk.Area(), Qt::LeftButton, {}, BusDesk::OnRow(0));
    EXPECT_EQ(desk.State().StateList.StateDataPos, sample);
    const std::int64_t half = desk.Timing().View().VisibleSamples() / 2;
    EXPECT_EQ(desk.State().Timing.TimingDataPos, std::max<std::int64_t>(sample - half, 0));
}

TEST(SerialWnd, TheMenuOfARowBringsWindowsAndCursorsToIt) {
    SerialDesk desk;
    const auto rightClick = [&desk](const QString& taken) {
        return desk.TakeFromMenu(
            taken, [&desk] { QTest::mouseClick(&desk.Area(), Qt::RightButton, {}, BusDesk::OnRow(2)); });
    };
    EXPECT_EQ(rightClick("Cursor &B to point"),
              (QStringList{"Timing window to point", "Serial window to point", "Cursor &A to point",
                           "Cursor &B to point", "Cursor &C to point", "Cursor &D to point",
                           "Cursor &T to point"}));
    const std::int32_t at = desk.State().Cursors.Cur[1];
    EXPECT_GT(at, kBusStart);
    EXPECT_NE(EventAt(desk.State(), at), 0);
    rightClick("Serial window to point");
    EXPECT_EQ(desk.Position(), at);
}

TEST(SerialWnd, TheHeaderOpensTheSetupOfTheStatelist) {
    SerialDesk desk;
    QTest::mouseClick(&desk.Area(), Qt::LeftButton, {}, {20, kListRow / 2});
    EXPECT_EQ(desk.Box.Titles, QStringList{QStringLiteral("Statelist setup")});
}

TEST(SerialWnd, BarKeysAndWheelScroll) {
    SerialDesk desk;
    QTest::keyClick(&desk.List(), Qt::Key_Down);
    const std::int32_t second = desk.Position();
    EXPECT_GT(second, kBusStart);
    QTest::keyClick(&desk.List(), Qt::Key_Up);
    EXPECT_EQ(desk.Position(), kBusStart);
    desk.List().verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(desk.Position(), second);
    QTest::keyClick(&desk.List(), Qt::Key_Home);
    EXPECT_EQ(desk.Position(), kBusStart);
    QTest::keyClick(&desk.List(), Qt::Key_PageDown);
    EXPECT_GT(desk.Position(), second);
    const std::int32_t page = desk.Position();
    const QPoint at = BusDesk::OnRow(1);
    QWheelEvent turn(at, desk.Area().mapToGlobal(at), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                     false);
    QCoreApplication::sendEvent(&desk.Area(), &turn);
    EXPECT_LT(desk.Position(), page);
}

TEST(SerialWnd, CopiesRowsAsText) {
    SerialDesk desk;
    QTest::mousePress(&desk.Area(), Qt::LeftButton, {}, BusDesk::OnRow(0));
    BusDesk::Move(desk.Area(), BusDesk::OnRow(1), Qt::LeftButton);
    QTest::mouseRelease(&desk.Area(), Qt::LeftButton, {}, BusDesk::OnRow(1));
    QTest::keyClick(&desk.List(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 4) << "header, two rows, the last line's end";
    EXPECT_TRUE(lines[0].startsWith("Location\tI2C"));
    EXPECT_TRUE(lines[1].startsWith("420ns\tSTART\t\tS 50 W ACK | 10 ACK | 5A NACK | P"))
        << lines[1].toStdString();
    QTest::keyClick(&desk.List(), Qt::Key_Escape);
    QTest::keyClick(&desk.List(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_GT(QGuiApplication::clipboard()->text().count(u'\n'), 8) << "the rows on the screen";
}

TEST(SerialWnd, TabGoesFromTheListThroughTheTools) {
    SerialDesk desk;
    desk.Frame().activateWindow();
    desk.List().setFocus();
    QStringList order;
    for (int step = 0; step < 5; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.append(QApplication::focusWidget()->objectName());
    }
    EXPECT_EQ(order, (QStringList{"SearchKind", "Next", "Prev", "Filter", "SerialList"}));
}

TEST(SerialWnd, WithoutABusItOffersTheGroupSetup) {
    SerialDesk desk;
    QPushButton& groups = desk.Button("GroupSetup");
    EXPECT_TRUE(groups.isHidden());
    desk.State().Serial.SerialMode = 0;
    desk.Window().Redraw();
    EXPECT_TRUE(groups.isVisible());
    desk.Box.Dialogs.emplace_back([&desk](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Group setup");
        desk.State().Serial.SerialMode = 1;
        dialog.reject();
    });
    QTest::mouseClick(&groups, Qt::LeftButton);
    Desk::Settle();
    EXPECT_EQ(desk.Box.Titles, QStringList{"Group setup"});
    EXPECT_TRUE(groups.isHidden()) << "a bus was made there";
}

TEST(SerialWnd, TheColumnOfTransfersIsSwitchedByItsEntry) {
    SerialDesk desk;
    EXPECT_TRUE(desk.List().View().ShowsTransfers());
    const QImage with = desk.List().Picture().copy();
    desk.View().Execute(CommandId::SerialTransfers);
    Desk::Settle();
    EXPECT_FALSE(desk.List().View().ShowsTransfers());
    EXPECT_NE(desk.List().Picture(), with);
    EXPECT_FALSE(desk.View().Menu().Action(CommandId::SerialTransfers)->isChecked());
    desk.View().Close(WindowId::Serial);
    const QAction& entry = *desk.View().Menu().Action(CommandId::SerialTransfers);
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_EQ(entry.statusTip(), "Open the serial window first");
    EXPECT_EQ(entry.toolTip(), "Open the serial window first") << "where the style passes over grey entries";
}

TEST(SerialWnd, ComesBackAsItWas) {
    const auto home = std::make_shared<TempFolder>();
    const QRect place(40, 50, 620, 260);
    {
        Desk first({"--model=15"}, home);
        first.Start();
        first.State().Serial.SerialMode = 1;
        first.View().Execute(CommandId::WindowSerial);
        first.View().Execute(CommandId::WindowSpi);
        first.View().Execute(CommandId::SerialTransfers);
        first.View().Child(WindowId::Serial)->setGeometry(place);
        first.View().Child(WindowId::Spi)->setGeometry(place.translated(30, 40));
        first.End();
    }
    Desk second({"--model=15"}, home);
    second.Start();
    EXPECT_EQ(second.State().Windows.SerialStat, 1);
    EXPECT_EQ(second.State().Windows.SpiStat, 1);
    EXPECT_EQ(second.View().Child(WindowId::Serial)->geometry(), place);
    EXPECT_EQ(second.View().Child(WindowId::Spi)->geometry(), place.translated(30, 40));
    EXPECT_FALSE(second.View().Serial()->List().View().ShowsTransfers());
}

TEST(SerialWnd, FollowsItsFlagInASettingsFile) {
    SerialDesk desk;
    desk.View().Execute(SaveSlotCommand(1));
    desk.View().Close(WindowId::Serial);
    desk.State().Serial.SerialEvents.assign(desk.State().Serial.SerialEvents.size(), 0);
    desk.View().Execute(LoadSlotCommand(1));
    Desk::Settle();
    EXPECT_EQ(desk.State().Windows.SerialStat, 1);
    EXPECT_TRUE(desk.View().Child(WindowId::Serial)->isVisible());
    EXPECT_EQ(EventAt(desk.State(), kBusStart), 1) << "and its traffic is decoded";
}

}  // namespace
}  // namespace zu::test
