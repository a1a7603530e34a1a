// The frame: where the windows lie, what the bars show, what is dropped on it.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QUrl>

#include "core/FileCommands.h"
#include "ui/Desk.h"
#include "ui/DrawnIcon.h"
#include "ui/display/CCursorDlg.h"

namespace zu::test {
namespace {

TEST(Frame, FollowsMovesAndSizesOfTheUser) {
    StartedDesk desk;
    desk.Frame().setGeometry(60, 92, 1000, 640);
    Desk::Settle();
    const WindowRect& stored = desk.State().Windows.MainRect;
    EXPECT_EQ(stored.Left, 60);
    EXPECT_EQ(stored.Top, 92 - 52);
    EXPECT_EQ(stored.Right, 60 + 1000);
    EXPECT_EQ(stored.Bottom, stored.Top + 640 + 52);
}

TEST(Frame, ComesBackWhereItWasLeft) {
    const auto home = std::make_shared<TempFolder>();
    const QRect place(60, 92, 1000, 640);
    {
        Desk first({"--model=15"}, home);
        first.Start();
        first.Frame().setGeometry(place);
        Desk::Settle();
        first.End();
    }
    Desk second({"--model=15"}, home);
    second.Start();
    EXPECT_EQ(second.Frame().geometry(), place);
    EXPECT_EQ(second.State().Windows.MainRect.Left, 60);
}

TEST(Frame, IsMaximizedWithoutForgettingItsPlace) {
    StartedDesk desk;
    desk.Frame().setGeometry(60, 92, 1000, 640);
    Desk::Settle();
    const WindowRect before = desk.State().Windows.MainRect;
    desk.Frame().showMaximized();
    Desk::Settle();
    EXPECT_EQ(desk.State().Windows.MainRect, before);
}

TEST(Child, ItsRectangleFollowsEveryMoveAndSize) {
    StartedDesk desk;
    CChildFrame& timing = *desk.View().Child(WindowId::Timing);
    timing.move(310, 15);
    timing.resize(600, 400);
    EXPECT_EQ(desk.State().Windows.TimingRect, (WindowRect{310, 15, 910, 415}));
    EXPECT_EQ(desk.State().Windows.TimingRectValid, 1);
}

TEST(Child, AStoredPlaceOutsideIsShownInsideAndStaysStored) {
    const QSize area(1000, 600);
    EXPECT_EQ(FitInto({100, 1, 1600, 1000}, area), QRect(100, 1, 900, 599));
    EXPECT_EQ(FitInto({5000, 5000, 5400, 5300}, area), QRect(760, 360, 240, 240));
    EXPECT_EQ(FitInto({-90, -20, 300, 200}, area), QRect(0, 0, 390, 220));
    EXPECT_EQ(FitInto({10, 10, 20, 20}, area).size(), QSize(50, 50));

    StartedDesk desk;
    desk.View().Close(WindowId::Timing);
    const WindowRect far{9000, 8000, 9700, 8500};
    desk.State().Windows.TimingRect = far;
    desk.State().Windows.TimingRectValid = 1;
    desk.View().Open(WindowId::Timing);
    Desk::Settle();
    const QRect shown = desk.View().Child(WindowId::Timing)->geometry();
    EXPECT_TRUE(desk.Frame().Area().viewport()->rect().intersects(shown));
    EXPECT_EQ(desk.State().Windows.TimingRect, far);
}

TEST(Child, TheCursorWindowScrollsWhereItsFieldsHaveNoRoom) {
    StartedDesk desk;
    desk.View().Close(WindowId::Cursor);
    desk.Frame().setGeometry(60, 92, 740, 400);
    Desk::Settle();
    desk.View().Open(WindowId::Cursor);
    Desk::Settle();
    const CChildFrame& child = *desk.View().Child(WindowId::Cursor);
    EXPECT_LE(child.height(), desk.Frame().Area().viewport()->height());
    auto* fields = child.findChild<CCursorDlg*>();
    ASSERT_NE(fields, nullptr);
    EXPECT_GE(fields->height(), fields->sizeHint().height()) << "no field lies on another";
    const auto* scroller = child.findChild<QScrollArea*>();
    ASSERT_NE(scroller, nullptr);
    EXPECT_GT(scroller->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scroller->horizontalScrollBar()->maximum(), 0) << "room was left for the other bar";
    SaveShot(desk.Frame(), "cursor-small");
}

TEST(Child, ClosingHidesItAndClearsItsFlag) {
    StartedDesk desk;
    CChildFrame& timing = *desk.View().Child(WindowId::Timing);
    timing.close();
    EXPECT_FALSE(timing.isVisible());
    EXPECT_EQ(desk.State().Windows.TimingStat, 0);
    desk.View().Open(WindowId::Timing);
    EXPECT_EQ(desk.View().Child(WindowId::Timing), &timing) << "it is made once";
    EXPECT_TRUE(desk.Timing().isVisible());
}

TEST(Child, TheProgramsEndDoesNotCloseWindows) {
    StartedDesk desk;
    desk.End();
    EXPECT_EQ(desk.State().Windows.TimingStat, 1);
}

TEST(Child, TheKeyOfAHiddenWindowBringsItForward) {
    StartedDesk desk;
    CChildFrame& timing = *desk.View().Child(WindowId::Timing);
    desk.View().Execute(CommandId::WindowSerial);
    CChildFrame& serial = *desk.View().Child(WindowId::Serial);
    serial.setGeometry(300, 100, 500, 300);
    timing.setGeometry(250, 50, 900, 600);
    EXPECT_FALSE(serial.IsCovered());
    desk.Frame().Area().setActiveSubWindow(&timing);
    ASSERT_TRUE(serial.IsCovered());
    desk.View().Execute(CommandId::WindowSerial);
    EXPECT_EQ(desk.State().Windows.SerialStat, 1);
    EXPECT_FALSE(serial.IsCovered());
    EXPECT_EQ(desk.Frame().Area().activeSubWindow(), &serial);
    EXPECT_TRUE(serial.isAncestorOf(QApplication::focusWidget()));

    timing.setGeometry(400, 50, 900, 600);
    desk.Frame().Area().setActiveSubWindow(&timing);
    desk.View().Execute(CommandId::WindowSerial);
    EXPECT_EQ(desk.State().Windows.SerialStat, 0) << "a part of it was in sight";
}

TEST(Frame, TileAndCascadeArrangeTheWindows) {
    StartedDesk desk;
    desk.View().Execute(CommandId::WindowTile);
    Desk::Settle();
    const QRect cursor = desk.View().Child(WindowId::Cursor)->geometry();
    const QRect timing = desk.View().Child(WindowId::Timing)->geometry();
    EXPECT_FALSE(cursor.intersects(timing));
    EXPECT_EQ(desk.State().Windows.TimingRect.Left, timing.left());
    desk.View().Execute(CommandId::WindowCascade);
    Desk::Settle();
    EXPECT_TRUE(desk.View()
                    .Child(WindowId::Cursor)
                    ->geometry()
                    .intersects(desk.View().Child(WindowId::Timing)->geometry()));
}

TEST(Bars, BoxesAreReadOnlyAndOfTheirWidths) {
    StartedDesk desk;
    const std::pair<const char*, int> boxes[] = {{"ZoomBox", 65}, {"RateBox", 125}, {"ModeBox", 175}};
    int right = 0;
    for (const auto& [name, width] : boxes) {
        const auto* box = desk.Frame().findChild<QLineEdit*>(QLatin1String(name));
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->width(), width);
        EXPECT_TRUE(box->isReadOnly());
        EXPECT_GT(box->mapTo(&desk.Frame(), QPoint()).x(), right) << "zoom, rate, trigger mode in this order";
        right = box->mapTo(&desk.Frame(), QPoint(width, 0)).x();
    }
}

TEST(Bars, ABoxGrowsWithALargeFontSoThatNothingIsCut) {
    StartedDesk desk({"--model=13"});
    auto* box = desk.Frame().findChild<QLineEdit*>(QStringLiteral("RateBox"));
    QFont large = box->font();
    large.setPixelSize(30);
    box->setFont(large);
    desk.View().Execute(CommandId::RateDown);
    EXPECT_GT(box->width(), box->fontMetrics().horizontalAdvance(box->text().trimmed()));
}

TEST(Bars, ShowTheState) {
    StartedDesk desk({"--model=13"});
    EXPECT_EQ(desk.Shown("ZoomBox"), "1:1");
    EXPECT_EQ(desk.Shown("RateBox"), "100 MSa  (10 ns)");
    EXPECT_EQ(desk.Shown("ModeBox"), "Normal (w/trigger)    ");
    EXPECT_EQ(desk.Shown("ModePane"), "Normal (w/trigger)    ");
    EXPECT_EQ(desk.Shown("MemoryPane"), "512K");
    EXPECT_EQ(desk.Shown("ChannelPane"), "40 ch");
    EXPECT_EQ(desk.Shown("RatePane"), "100 MSa  (10 ns)");
    EXPECT_EQ(desk.Shown("ZoomPane"), "1:1");
    desk.View().Execute(RateCommand(1));
    EXPECT_EQ(desk.Shown("ChannelPane"), "24 ch");
    EXPECT_EQ(desk.Shown("RatePane"), "500 MSa   (2 ns)");
}

TEST(Bars, WordTheZoomAsTheMenuDoes) {
    StartedDesk desk;
    const std::pair<int, const char*> zooms[] = {
        {25, "1:20"}, {-4000, "4000:1"}, {-3, "3:1"}, {7, "1:7"}, {0, "1:1"}, {INT32_MIN, "2147483648:1"}};
    for (const auto& [zoom, text] : zooms) {
        desk.State().Timing.ScreenZoom = zoom;
        desk.View().UpdateBars();
        EXPECT_EQ(desk.Shown("ZoomBox"), text) << zoom;
    }
}

TEST(Frame, AFileDroppedOnItIsOpened) {
    StartedDesk desk;
    SaveSlot(desk.View().TheApp(), 1);
    const QString file = QString::fromStdString(desk.State().Files.SettingsSlot[1]);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&desk.Frame(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&desk.Frame(), &drop);
    Desk::Settle();
    EXPECT_EQ(desk.Frame().windowTitle(), file);
    EXPECT_EQ(desk.State().Files.RecentFiles[0], file.toStdString());
}

TEST(Frame, TwoFilesOrTextAreNoDropForIt) {
    StartedDesk desk;
    QMimeData two;
    two.setUrls({QUrl::fromLocalFile("/a.zu"), QUrl::fromLocalFile("/b.zu")});
    QMimeData text;
    text.setText("hello");
    for (const QMimeData* data : {&two, &text}) {
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, data, Qt::LeftButton, {});
        enter.ignore();
        QCoreApplication::sendEvent(&desk.Frame(), &enter);
        EXPECT_FALSE(enter.isAccepted());
    }
}

TEST(Frame, ClosingItDuringATightLoopEndsTheLoop) {
    StartedDesk desk;
    desk.State().Capture.CaptureLoopMode = 1;
    QTimer::singleShot(20, &desk.Frame(), &QWidget::close);
    desk.View().Execute(CommandId::Go);
    EXPECT_TRUE(desk.Host().Quitting());
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
}

/// Mean lightness of what an icon draws.
int Lightness(const QIcon& icon) {
    const QImage image = icon.pixmap(48, 48).toImage();
    qint64 sum = 0;
    qint64 weight = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            sum += static_cast<qint64>(color.lightness()) * color.alpha();
            weight += color.alpha();
        }
    }
    return weight == 0 ? -1 : static_cast<int>(sum / weight);
}

TEST(Desktop, IconsAndAreaFollowItsColoursAndTheViewKeepsTheStates) {
    StartedDesk light;
    const QAction* open = light.View().Menu().Action(CommandId::FileOpen);
    const int onLight = Lightness(open->icon());
    EXPECT_LT(onLight, 100);
    {
        const DarkDesktop dark;
        Desk::Settle();
        EXPECT_GT(Lightness(open->icon()), 150);
        EXPECT_LT(light.Frame().Area().background().color().lightness(), 60);
        EXPECT_EQ(light.Timing().Picture().pixel(light.TimingArea().width() - 3, 80), 0xFFFFFFFF);
        SaveShot(light.Frame(), "dark");
    }
    Desk::Settle();
    EXPECT_EQ(Lightness(open->icon()), onLight);
}

TEST(Icons, AreDrawnAtEverySizeAndEachIsDifferent) {
    std::vector<QImage> seen;
    for (const Drawing drawing :
         {Drawing::Open, Drawing::Save, Drawing::Go, Drawing::Stop, Drawing::End, Drawing::Mode,
          Drawing::ZoomIn, Drawing::ZoomOut, Drawing::RateUp, Drawing::RateDown}) {
        for (const int side : {16, 20, 32, 60}) {
            const QImage image = MakeIcon(drawing).pixmap(side, side).toImage();
            EXPECT_EQ(image.size(), QSize(side, side));
            EXPECT_GE(Lightness(MakeIcon(drawing)), 0);
            if (side == 20) seen.push_back(image);
        }
    }
    for (std::size_t i = 0; i < seen.size(); ++i) {
        for (std::size_t j = i + 1; j < seen.size(); ++j) EXPECT_NE(seen[i], seen[j]) << i << " and " << j;
    }
}

}  // namespace
}  // namespace zu::test
