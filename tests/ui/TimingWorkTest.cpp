// Work at the Timing window through the whole program: clicks, menus, dialogs, labels, gestures.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QRadioButton>
#include <QScrollArea>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

#include "display/Lines.h"
#include "ui/Desk.h"
#include "ui/display/CGroupDef.h"

namespace zu::test {
namespace {

constexpr int kRow = 19;  // a line in the normal style, on a small screen; 21 on a large one

/// A desk with two channels and a group on show; channel 1 is a square wave of 40 samples a period.
class Work : public StartedDesk {
  public:
    Work() {
        TimingRecord& timing = State().Timing;
        const std::int32_t sources[] = {0, 1, kFirstGroupLine + 2};
        for (std::size_t i = 0; i < std::size(sources); ++i) timing.LineSource[i] = sources[i];
        timing.LineStyle[2] = 0;
        timing.TimingLines = 3;
        for (std::int32_t i = 0; i < State().Memory.BufferLen; ++i) {
            State().Buffer.Pod[0][i] = i / 20 % 2 == 0 ? 0 : 2;
        }
        State().Cursors.Cur = {200, 300, 400, 500, 100, 0};
        Timing().DataChanged();
        Settle();
    }
    [[nodiscard]] int X(std::int64_t sample) { return static_cast<int>(Timing().View().Axis().XOf(sample)); }
    [[nodiscard]] int Row() { return StyleHeight(kNormalStyle, Metrics::ForScreen(State().Screen.ScreenH)); }
    /// A place in the middle of a line.
    [[nodiscard]] QPoint On(std::int64_t sample, int line) {
        return {X(sample), kHeaderHeight + line * Row() + kRow / 2};
    }
    /// A place on the name of a line.
    [[nodiscard]] QPoint Name(int line) { return {30, kHeaderHeight + line * Row() + kRow / 2}; }
    std::int32_t& Cur(int cursor) { return State().Cursors.Cur[static_cast<std::size_t>(cursor)]; }

    void Send(QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers keys = {}) {
        QMouseEvent event(type, QPointF(at), TimingArea().mapToGlobal(QPointF(at)), button, buttons, keys);
        QCoreApplication::sendEvent(&TimingArea(), &event);
    }
    void Drag(const QPoint& from, const QPoint& to, Qt::MouseButton button, Qt::KeyboardModifiers keys = {}) {
        Send(QEvent::MouseButtonPress, from, button, button, keys);
        Send(QEvent::MouseMove, to, Qt::NoButton, button, keys);
        Send(QEvent::MouseButtonRelease, to, button, Qt::NoButton, keys);
        Settle();
    }
    /// Clicks with the right button and takes an entry of the menu that pops up; answers its texts.
    QStringList RightClick(const QPoint& at, const QString& taken) {
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
        QTest::mouseClick(&TimingArea(), Qt::RightButton, {}, at);
        Settle();
        return texts;
    }
    void Pinch(const QPoint& at, double amount) {
        QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at, at,
                                  TimingArea().mapToGlobal(at), amount, {});
        QCoreApplication::sendEvent(&TimingArea(), &event);
        Settle();
    }
};

TEST(TimingWork, TheZoomBoxFollowsAClickThatZooms) {
    Work desk;
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, Qt::ControlModifier, desk.On(250, 1));
    EXPECT_EQ(desk.Shown("ZoomBox"), "1:2");
    EXPECT_EQ(desk.Shown("ZoomPane"), "1:2");
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, Qt::ShiftModifier, desk.On(250, 1));
    EXPECT_EQ(desk.Shown("ZoomBox"), "1:1");
    QTest::mouseDClick(&desk.TimingArea(), Qt::LeftButton, Qt::ShiftModifier, desk.On(250, 1));
    EXPECT_EQ(desk.State().Timing.ScreenZoom, -2) << "the second press of a double click zooms on";
    EXPECT_EQ(desk.Shown("ZoomBox"), "2:1");
}

TEST(TimingWork, RightClickOnACursorOffersItsMenu) {
    Work desk;
    QStringList wanted;
    for (const char* letter : {"A", "B", "C", "D", "T"}) {
        const QString name = QString::fromLatin1(letter);
        wanted +=
            {QStringLiteral("Cursor &%1 to window").arg(name),
             QStringLiteral("&Window to cursor %1").arg(name), QStringLiteral("Cursor %1 color").arg(name)};
    }
    desk.Cur(3) = 90000;
    EXPECT_EQ(desk.RightClick(desk.On(200, 1), "&Window to cursor D"), wanted);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 90000 - desk.Timing().View().VisibleSamples() / 2);
    EXPECT_TRUE(desk.Box.Titles.isEmpty());
}

TEST(TimingWork, RightClickElsewhereOpensTheDisplayOptions) {
    Work desk;
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        QTest::mouseClick(dialog.findChild<QWidget*>(QStringLiteral("ToPoint2")), Qt::LeftButton);
        dialog.reject();
    });
    EXPECT_TRUE(desk.RightClick(desk.On(250, 1), {}).isEmpty());
    EXPECT_EQ(desk.Box.Titles, QStringList{"Display options"});
    EXPECT_EQ(desk.Cur(2), 250);
}

TEST(TimingWork, DoubleClickOnANameOpensItsEditor) {
    Work desk;
    QString first;
    int group = -1;
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        first = dialog.focusWidget()->accessibleName();
        dialog.reject();
    });
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        if (const auto* setup = qobject_cast<CGroupDef*>(&dialog)) group = setup->Group();
        dialog.reject();
    });
    QTest::mouseDClick(&desk.TimingArea(), Qt::LeftButton, {}, desk.Name(1));
    QTest::mouseDClick(&desk.TimingArea(), Qt::LeftButton, {}, desk.Name(2));
    EXPECT_EQ(desk.Box.Titles, (QStringList{"Channel names", "Group setup"}));
    EXPECT_EQ(first, "Name of channel 1");
    EXPECT_EQ(group, 2);
}

TEST(TimingWork, TheMenuEditsTheLineClickedLastOnceThePointerIsInTheMenu) {
    Work desk;
    const auto edited = [&] {
        int group = -1;
        desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
            if (const auto* setup = qobject_cast<CGroupDef*>(&dialog)) group = setup->Group();
            dialog.reject();
        });
        desk.View().Execute(CommandId::GroupSetup);
        return group;
    };
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, {}, desk.On(250, 2));
    desk.Send(QEvent::MouseMove, {400, 3}, Qt::NoButton, Qt::NoButton);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&desk.TimingArea(), &leave);
    EXPECT_EQ(edited(), 2);
    desk.Send(QEvent::MouseMove, desk.On(250, 1), Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(edited(), 0) << "a channel is no group";
}

TEST(TimingWork, LabelsStandBetweenTheEdges) {
    Work desk;
    desk.State().Timing.ScreenZoom = 10;
    // Between two edges and below the high level nothing is drawn but a label.
    const auto inked = [&](std::int64_t from, std::int64_t to) {
        desk.Timing().Redraw();
        Desk::Settle();
        const int top = kHeaderHeight + desk.Row();
        int count = 0;
        for (int x = desk.X(from) + 2; x < desk.X(to) - 1; ++x) {
            for (int y = top + 2; y < top + desk.Row() - kTraceFoot - 1; ++y) {
                if (desk.Timing().Picture().pixel(x, y) != 0xFFFFFFFFU) ++count;
            }
        }
        return count;
    };
    desk.State().Timing.TimingGrid = 0;
    desk.Cur(4) = 85;
    EXPECT_EQ(inked(20, 40), 0);
    desk.State().Timing.LineMode[1] = static_cast<std::int8_t>(LineExtra::PulseWidth);
    EXPECT_GT(inked(20, 40), 0);
    EXPECT_EQ(inked(0, 20), 0) << "nobody knows when this pulse began";
    desk.State().Timing.LineMode[1] = static_cast<std::int8_t>(LineExtra::FrequencyRising);
    EXPECT_GT(inked(20, 40) + inked(40, 60), 0);
    desk.State().Timing.ScreenZoom = 1;
    desk.State().Timing.LineMode[1] = static_cast<std::int8_t>(LineExtra::PulseWidth);
    EXPECT_EQ(inked(20, 40), 0) << "only above zoom 1";
}

TEST(TimingWork, TabGoesFromEdgeToEdge) {
    Work desk;
    desk.State().Timing.TimingDataPos = 1000;
    const int x = 100;
    desk.Send(QEvent::MouseMove, desk.On(1000 + x, 1), Qt::NoButton, Qt::NoButton);
    const auto under = [&] { return desk.State().Timing.TimingDataPos + x; };
    QTest::keyClick(&desk.Timing(), Qt::Key_Tab);
    EXPECT_EQ(under(), 1120);
    QTest::keyClick(&desk.Timing(), Qt::Key_Tab);
    EXPECT_EQ(under(), 1140);
    QTest::keyClick(&desk.Timing(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(under(), 1120);
    EXPECT_TRUE(desk.Timing().hasFocus()) << "Tab does not leave the window";
    QTest::keyClick(&desk.Timing(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(under(), 1120) << "with Ctrl it is the frame's";
}

TEST(TimingWork, MiddleDragPans) {
    Work desk;
    desk.State().Timing.TimingDataPos = 5000;
    desk.Drag({desk.X(5300), 150}, {desk.X(5200), 150}, Qt::MiddleButton);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 5100);
}

TEST(TimingWork, APinchZoomsAtThePointer) {
    Work desk;
    desk.State().Timing.TimingDataPos = 1000;
    const QPoint at = desk.On(1200, 1);
    desk.Pinch(at, 0.2);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 1) << "not yet a step";
    desk.Pinch(at, 0.1);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 2);
    EXPECT_EQ(desk.Timing().View().Axis().SampleAt(at.x()), 1200);
    EXPECT_EQ(desk.Shown("ZoomBox"), "1:2");
    desk.Pinch(at, -0.35);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 1);
}

TEST(TimingWork, ADroppedCursorSnapsUnlessAltIsHeld) {
    Work desk;
    desk.Drag(desk.On(200, 0), desk.On(263, 1), Qt::LeftButton);
    EXPECT_EQ(desk.Cur(0), 260);
    desk.Drag(desk.On(260, 0), desk.On(243, 1), Qt::LeftButton, Qt::AltModifier);
    EXPECT_EQ(desk.Cur(0), 243);
}

TEST(TimingWork, RestingOnATraceTellsItsPulse) {
    Work desk;
    const QPoint at = desk.On(250, 1);
    desk.Send(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
    QHelpEvent help(QEvent::ToolTip, at, desk.TimingArea().mapToGlobal(at));
    QCoreApplication::sendEvent(&desk.TimingArea(), &help);
    EXPECT_EQ(QToolTip::text(), "Pod 1A Ch 1: 0 for 200ns, period 400ns, 2.500MHz, duty 50.00%");
    QToolTip::hideText();
}

TEST(TimingWork, NothingIsMeasuredAnewForWhatDidNotMove) {
    Work desk;
    desk.State().Timing.TimingDisp[3] = {static_cast<std::uint8_t>(ColumnType::Count), 0, 0};
    desk.State().Timing.TimingDisp[4] = {static_cast<std::uint8_t>(ColumnType::Period), 1, 0};
    desk.Timing().Redraw();
    Desk::Settle();
    auto walks = [&, last = std::uint64_t{0}]() mutable {
        Desk::Settle();
        const std::uint64_t all = desk.Timing().View().Measured();
        return all - std::exchange(last, all);
    };
    EXPECT_EQ(walks(), 4U) << "two channels, two ranges";
    desk.Drag({desk.X(400), 200}, {desk.X(450), 200}, Qt::LeftButton);
    EXPECT_EQ(desk.Cur(2), 450);
    EXPECT_EQ(walks(), 0U) << "cursor C bounds no range";
    desk.Drag({desk.X(300), 200}, {desk.X(350), 200}, Qt::LeftButton);
    EXPECT_EQ(walks(), 2U) << "cursor B bounds one";
    desk.View().Child(WindowId::Cursor)->findChild<QToolButton*>(QStringLiteral("Up0"))->click();
    EXPECT_EQ(desk.Cur(0), 201);
    EXPECT_EQ(walks(), 2U) << "a step of cursor A, too";
    for (int x = desk.X(0); x < desk.X(200); x += 5) {
        desk.Send(QEvent::MouseMove, {x, 60}, Qt::NoButton, Qt::NoButton);
        QHelpEvent help(QEvent::ToolTip, {x, 60}, {x, 60});
        QCoreApplication::sendEvent(&desk.TimingArea(), &help);
    }
    QToolTip::hideText();
    EXPECT_EQ(walks(), 0U) << "hovering";
    desk.View().Redraw(WindowId::Timing);
    EXPECT_EQ(walks(), 4U) << "a capture brought other samples";
}

TEST(CursorDlg, TellsWhereTheTimingWindowStands) {
    Work desk;
    const auto place = [&] {
        Desk::Settle();
        return desk.View().Child(WindowId::Cursor)->findChild<QLabel*>(QStringLiteral("Place5"))->text();
    };
    EXPECT_EQ(place(), "0");
    desk.Timing().View().Scroll({ScrollAxis::Horizontal, ScrollCode::LineForward, 0});
    EXPECT_EQ(place(), "1");
    desk.Timing().View().GoTo(50000);
    EXPECT_EQ(place(), QString::number(desk.State().Timing.TimingDataPos));
    desk.View().Execute(CommandId::ZoomIn);
    EXPECT_EQ(place(), QString::number(desk.State().Timing.TimingDataPos));
}

TEST(CursorDlg, TabGoesFromTheItemsToTheStepsToTheDistances) {
    Work desk;
    QWidget* first = desk.View().Child(WindowId::Cursor)->findChild<QWidget*>(QStringLiteral("Item0"));
    std::vector<std::string> wanted{"Item0", "Item1", "Item2", "Item3", "Item4", "Item5", "Item6", "Item7"};
    for (int step = 0; step < 6; ++step) {
        wanted.push_back("Up" + std::to_string(step));
        wanted.push_back("Down" + std::to_string(step));
    }
    for (const char* name : {"Unit1", "Unit0"}) wanted.emplace_back(name);
    for (int list = 0; list < 5; ++list) wanted.push_back("Difference" + std::to_string(list));
    QWidget* widget = first;
    for (const std::string& name : wanted) {
        EXPECT_EQ(widget->objectName().toStdString(), name);
        EXPECT_FALSE(widget->accessibleName().isEmpty() && qobject_cast<QRadioButton*>(widget) == nullptr)
            << name;
        do widget = widget->nextInFocusChain();
        while (widget != first && (widget->focusPolicy() & Qt::TabFocus) == 0);
    }
}

TEST(CursorDlg, ScrollsWhenItIsMadeSmall) {
    StartedDesk desk;
    CChildFrame& window = *desk.View().Child(WindowId::Cursor);
    auto* scroller = window.findChild<QScrollArea*>();
    ASSERT_NE(scroller, nullptr);
    EXPECT_GE(scroller->viewport()->height(), scroller->widget()->minimumSizeHint().height())
        << "it opens large enough";
    window.resize(window.width(), 200);
    Desk::Settle();
    EXPECT_EQ(window.height(), 200);
    EXPECT_GT(scroller->widget()->height(), scroller->viewport()->height());
}

TEST(Frame, AMoveKeepsTheSizeForTheNextRun) {
    const auto home = std::make_shared<TempFolder>();
    const QRect place(60, 92, 1000, 640);
    {
        Desk first({"--model=15"}, home);
        first.Start();
        first.Frame().setGeometry(QRect(20, 60, place.width(), place.height()));
        Desk::Settle();
        first.Frame().move(first.Frame().pos() + place.topLeft() - QPoint(20, 60));
        Desk::Settle();
        first.End();
    }
    Desk second({"--model=15"}, home);
    second.Start();
    EXPECT_EQ(second.Frame().geometry(), place);
}

}  // namespace
}  // namespace zu::test
