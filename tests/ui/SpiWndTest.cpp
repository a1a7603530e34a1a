// The SPI window between the toolkit and the logic, and both windows of decoded traffic in live captures.
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QMdiArea>
#include <QPushButton>

#include "ui/BusDesk.h"
#include "ui/display/CGroupDef.h"
#include "ui/serial/CSerialList.h"
#include "ui/serial/CSerialWnd.h"
#include "ui/serial/CSpiList.h"
#include "ui/serial/CSpiWnd.h"

namespace zu::test {
namespace {

/// A desk with an open SPI window.
class SpiDesk : public BusDesk {
  public:
    SpiDesk() {
        View().Execute(CommandId::WindowSpi);
        Settle();
    }
    CSpiList& List() { return View().Spi()->List(); }
    QWidget& Area() { return *List().viewport(); }
    QPushButton& Slot(int slot) {
        return *View().Spi()->findChild<QPushButton*>(QStringLiteral("Spi%1").arg(slot));
    }
};

TEST(SpiWnd, OpensFromTheMenuWithItsTrafficDecoded) {
    SpiDesk desk;
    EXPECT_EQ(desk.State().Windows.SpiStat, 1);
    EXPECT_EQ(desk.View().Child(WindowId::Spi)->windowTitle(), "SPI bus");
    SaveShot(desk.Frame(), QStringLiteral("spi"));
    QTest::keyClick(&desk.List(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    ASSERT_GE(lines.size(), 4);
    EXPECT_TRUE(lines[1].contains("\t03\tFC")) << lines[1].toStdString();
    EXPECT_TRUE(lines[2].contains("\t9F\t60")) << lines[2].toStdString();
    EXPECT_TRUE(lines[3].contains("\tA5\t5A")) << lines[3].toStdString();
}

TEST(SpiWnd, ItsButtonsNameTheSlots) {
    SpiDesk desk;
    EXPECT_EQ(desk.Slot(0).text(), "SPI(0)\nFLASH");
    EXPECT_EQ(desk.Slot(1).text(), "SPI(1)\nUndefined");
    EXPECT_TRUE(desk.Slot(0).isChecked());
    EXPECT_FALSE(desk.Slot(1).isChecked() || desk.Slot(2).isChecked());
    const QFontMetrics metrics = desk.Slot(0).fontMetrics();
    for (int slot = 0; slot < 3; ++slot) {
        EXPECT_GE(desk.Slot(slot).height(), 2 * metrics.lineSpacing()) << "both lines are seen";
        EXPECT_GE(desk.Slot(slot).width(), metrics.horizontalAdvance("Undefined") / (slot == 0 ? 2 : 1));
    }
    desk.State().Groups[1].Name = "A&B";
    desk.View().Redraw(WindowId::Spi);
    EXPECT_EQ(desk.Slot(0).text(), "SPI(0)\nA&&B") << "a name has no mnemonic";
}

TEST(SpiWnd, AButtonHidesAndShowsItsSlot) {
    SpiDesk desk;
    const QImage before = desk.List().Picture().copy();
    QTest::mouseClick(&desk.Slot(0), Qt::LeftButton);
    Desk::Settle();
    EXPECT_EQ(desk.State().Serial.SpiShown[0], 0);
    EXPECT_FALSE(desk.Slot(0).isChecked());
    EXPECT_NE(desk.List().Picture(), before);
    QTest::keyClick(&desk.Slot(0), Qt::Key_Space);
    Desk::Settle();
    EXPECT_EQ(desk.State().Serial.SpiShown[0], 1);
    EXPECT_TRUE(desk.Slot(0).isChecked());
    EXPECT_EQ(desk.List().Picture(), before);
}

TEST(SpiWnd, AnUndefinedSlotSaysSoAndOpensTheGroupSetup) {
    SpiDesk desk;
    desk.Box.Dialogs.emplace_back([&desk](QDialog& dialog) {
        EXPECT_NE(qobject_cast<CGroupDef*>(&dialog), nullptr);
        EXPECT_FALSE(desk.Slot(1).isChecked()) << "nothing is shown yet";
        desk.SetGroup(2, 4, "ADC", {16, 17, 18, 19});
        dialog.reject();
    });
    QTest::mouseClick(&desk.Slot(1), Qt::LeftButton);
    EXPECT_EQ(desk.Box.Seen, (QList<Boxes::Box>{{"SPI group not defined.", "Note:"}}));
    EXPECT_EQ(desk.Box.Titles.size(), 1);
    EXPECT_EQ(desk.Slot(1).text(), "SPI(1)\nADC") << "what was made there is there at once";
    EXPECT_FALSE(desk.Slot(2).isChecked());
}

TEST(SpiWnd, AClickShowsTheMomentInTheOtherWindows) {
    SpiDesk desk;
    QTest::mouseClick(&desk.Area(), Qt::LeftButton, {}, BusDesk::OnRow(1));
    const std::int32_t sample = desk.State().StateList.StateDataPos;
    EXPECT_NE(desk.State().Serial.SpiSI[0][static_cast<std::size_t>(sample)], 0);
    const std::int64_t half = desk.Timing().View().VisibleSamples() / 2;
    EXPECT_EQ(desk.State().Timing.TimingDataPos, std::max<std::int64_t>(sample - half, 0));
}

TEST(SpiWnd, ScrollsByItsKeys) {
    SpiDesk desk;
    QTest::keyClick(&desk.List(), Qt::Key_Home);
    const std::int32_t first = desk.State().Serial.SpiDataPos;
    QTest::keyClick(&desk.List(), Qt::Key_Down);
    EXPECT_GT(desk.State().Serial.SpiDataPos, first);
    QTest::keyClick(&desk.List(), Qt::Key_Up);
    EXPECT_EQ(desk.State().Serial.SpiDataPos, first);
}

TEST(SpiWnd, TabGoesFromTheListThroughTheButtons) {
    SpiDesk desk;
    desk.Frame().activateWindow();
    desk.List().setFocus();
    QStringList order;
    for (int step = 0; step < 4; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order.append(QApplication::focusWidget()->objectName());
    }
    EXPECT_EQ(order, (QStringList{"Spi0", "Spi1", "Spi2", "SpiList"}));
}

TEST(SpiWnd, ItsToolsFollowTheDesktopAndItsListTheState) {
    SpiDesk desk;
    desk.View().Execute(CommandId::WindowSerial);
    desk.View().Child(WindowId::Serial)->move(600, 80);
    const DarkDesktop dark;
    Desk::Settle();
    const QImage slot = desk.Slot(1).grab().toImage();
    EXPECT_LT(slot.pixelColor(slot.width() / 2, 6).lightness(), 110);
    EXPECT_EQ(desk.Slot(0).palette().color(QPalette::Button),
              desk.Frame().palette().color(QPalette::Highlight))
        << "what is on is seen to be on";
    EXPECT_GT(desk.Slot(1).palette().color(QPalette::ButtonText).lightness(), 200);
    EXPECT_EQ(desk.List().Picture().pixel(desk.Area().width() - 3, 80), 0xFFFFFFFF);
    SaveShot(desk.Frame(), QStringLiteral("dark_traffic"));
}

/// Counts the paints and layouts of a widget.
class Repaints final : public QObject {
  public:
    explicit Repaints(QWidget& watched) { watched.installEventFilter(this); }
    int Paints = 0;
    int Layouts = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++Paints;
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) ++Layouts;
        return false;
    }
};

TEST(LiveTraffic, IsPaintedOnceACaptureAndMovesNothing) {
    StartedDesk desk({"--scene=bench"});
    desk.View().Execute(CommandId::WindowSerial);
    desk.View().Execute(CommandId::WindowSpi);
    const QRect area = desk.Frame().Area().viewport()->rect();
    desk.View().Child(WindowId::Serial)->setGeometry(QRect(area.topLeft(), area.size() / 2));
    desk.View().Child(WindowId::Spi)->setGeometry(QRect(area.center(), area.size() / 2));
    const auto captures = [&desk] { return desk.State().Capture.CaptureCount; };
    ASSERT_TRUE(QTest::qWaitFor([&] { return captures() >= 3; }, 20000));
    SaveShot(desk.Frame(), QStringLiteral("live_traffic"));
    Repaints serial(*desk.View().Serial()->List().viewport());
    Repaints spi(*desk.View().Spi()->List().viewport());
    Repaints tools(*desk.View().Spi());
    const int before = captures();
    ASSERT_TRUE(QTest::qWaitFor([&] { return captures() >= before + 5; }, 20000));
    Desk::Settle();
    const int more = captures() - before;
    for (const Repaints* list : {&serial, &spi}) {
        EXPECT_GT(list->Paints, 0);
        EXPECT_LE(list->Paints, more + 1);
        EXPECT_EQ(list->Layouts, 0);
    }
    EXPECT_EQ(tools.Layouts, 0);
}

}  // namespace
}  // namespace zu::test
