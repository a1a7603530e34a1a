// The Timing window between the toolkit and the view's logic: events in, pictures and bars out.
#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "display/Lines.h"
#include "display/Scroll.h"
#include "ui/Desk.h"

namespace zu::test {
namespace {

/// A wheel turn over a place of the data area.
void Wheel(Desk& desk, const QPoint& at, QPoint turn, Qt::KeyboardModifiers keys = {}) {
    QWidget& area = desk.TimingArea();
    QWheelEvent event(at, area.mapToGlobal(at), {}, turn, Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&area, &event);
    Desk::Settle();
}

/// A desk whose channel 0 is a square wave of 20 samples a period.
class Waves : public StartedDesk {
  public:
    Waves() {
        for (std::int32_t i = 0; i < State().Memory.BufferLen; ++i) {
            State().Buffer.Pod[0][i] = i / 10 % 2 == 0 ? 0 : 1;
        }
        Timing().DataChanged();
        Settle();
    }
    [[nodiscard]] int DataLeft() { return Timing().View().Axis().Left; }
};

QRgb PixelAt(Desk& desk, int x, int y) {
    return desk.Timing().Picture().pixel(x, y);
}

TEST(TimingWnd, DrawsTheSamplesOfTheState) {
    Waves desk;
    const int left = desk.DataLeft();
    const QRgb black = 0xFF000000;
    const int high = kHeaderHeight;
    const int low = kHeaderHeight + RowHeight(desk.State(), 0, Metrics::ForScreen(1000)) - kTraceFoot;
    EXPECT_EQ(PixelAt(desk, left + 5, low), black);
    EXPECT_NE(PixelAt(desk, left + 5, high), black);
    EXPECT_EQ(PixelAt(desk, left + 15, high), black);
    EXPECT_NE(PixelAt(desk, left + 15, low), black);
    EXPECT_EQ(PixelAt(desk, left + 20, (high + low) / 2), black) << "the falling edge";
}

TEST(TimingWnd, CopiesItsPictureToTheScreen) {
    Waves desk;
    const QImage screen = desk.TimingArea().grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QImage picture = desk.Timing().Picture().copy(0, 0, screen.width(), screen.height());
    EXPECT_EQ(screen, picture);
}

TEST(TimingWnd, ItsTitleTellsTheScale) {
    Waves desk;
    EXPECT_EQ(desk.View().Child(WindowId::Timing)->windowTitle(),
              "Timing view:  Time/Div:[500.0ns] Time/Acq:[5.2ms]");
    desk.State().Timing.TimingGrid = 0;
    desk.Timing().Redraw();
    Desk::Settle();
    EXPECT_EQ(desk.View().Child(WindowId::Timing)->windowTitle(), "Timing view(Active window):  ");
}

TEST(TimingWnd, ScrollBarsShowTheRangesOfTheView) {
    Waves desk;
    const QScrollBar& horizontal = *desk.Timing().horizontalScrollBar();
    const QScrollBar& vertical = *desk.Timing().verticalScrollBar();
    EXPECT_EQ(horizontal.minimum(), 0);
    EXPECT_EQ(horizontal.maximum(), 524288 / 32);
    EXPECT_EQ(vertical.maximum(), 160);
    desk.State().Timing.TimingDataPos = 6400;
    desk.State().Timing.TimingChPos = 7;
    desk.Timing().Redraw();
    Desk::Settle();
    EXPECT_EQ(horizontal.value(), 200);
    EXPECT_EQ(vertical.value(), 7);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 6400) << "what the program sets is no scroll";
    EXPECT_EQ(desk.State().Timing.TimingChPos, 7);
}

TEST(TimingWnd, ScrollBarActionsAreScrollCodes) {
    Waves desk;
    QScrollBar& bar = *desk.Timing().horizontalScrollBar();
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 1);
    bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 0);
    bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, desk.Timing().View().VisibleSamples() / 4);
    Desk::Settle();
    bar.setSliderDown(true);
    bar.setSliderPosition(300);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 9600) << "a thumb counts in units of 32 samples";
    bar.setSliderDown(false);
    QScrollBar& lines = *desk.Timing().verticalScrollBar();
    lines.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(desk.State().Timing.TimingChPos, 1);
    lines.triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(desk.State().Timing.TimingChPos, 159);
}

TEST(TimingWnd, TheBarStandsWhereTheViewWent) {
    Waves desk;
    QScrollBar& bar = *desk.Timing().horizontalScrollBar();
    bar.triggerAction(QAbstractSlider::SliderToMaximum);
    Desk::Settle();
    EXPECT_EQ(bar.value(), HorizontalRange(desk.State()).Position);
    EXPECT_LT(desk.State().Timing.TimingDataPos, desk.State().Memory.DisplayLen);
}

TEST(TimingWnd, TheWheelMovesThreeLines) {
    Waves desk;
    const QPoint at(desk.DataLeft() + 100, 200);
    Wheel(desk, at, {0, -120});
    EXPECT_EQ(desk.State().Timing.TimingChPos, 3);
    Wheel(desk, at, {0, -60});
    EXPECT_EQ(desk.State().Timing.TimingChPos, 3) << "half a notch waits for the other half";
    Wheel(desk, at, {0, -60});
    EXPECT_EQ(desk.State().Timing.TimingChPos, 6);
    Wheel(desk, at, {0, 240});
    EXPECT_EQ(desk.State().Timing.TimingChPos, 0);
}

TEST(TimingWnd, ControlWheelZoomsAtThePointer) {
    Waves desk;
    desk.State().Timing.TimingDataPos = 1000;
    const int x = 120;
    const QPoint at(desk.DataLeft() + x, 200);
    Wheel(desk, at, {0, 120}, Qt::ControlModifier);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 2);
    EXPECT_EQ(desk.State().Timing.TimingDataPos + x / 2, 1000 + x) << "the sample stays under the pointer";
    EXPECT_EQ(desk.Shown("ZoomBox"), "1:2");
    Wheel(desk, at, {0, -120}, Qt::ControlModifier);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 1);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 1000);
}

TEST(TimingWnd, ShiftWheelMovesAlongTheSamples) {
    Waves desk;
    const QPoint at(desk.DataLeft() + 100, 200);
    Wheel(desk, at, {0, -120}, Qt::ShiftModifier);
    EXPECT_GT(desk.State().Timing.TimingDataPos, 0);
    EXPECT_EQ(desk.State().Timing.TimingChPos, 0);
    Wheel(desk, at, {0, 120}, Qt::ShiftModifier);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 0);
}

TEST(TimingWnd, ATouchpadPansByItsPixels) {
    Waves desk;
    const QPoint at(desk.DataLeft() + 100, 200);
    const auto swipe = [&](QPoint pixels, QPoint angle) {
        QWidget& area = desk.TimingArea();
        QWheelEvent event(at, area.mapToGlobal(at), pixels, angle, Qt::NoButton, {}, Qt::ScrollUpdate, false);
        QCoreApplication::sendEvent(&area, &event);
    };
    swipe({-7, 1}, {-56, 8});
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 7);
    swipe({}, {-1, 0});
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 7);
    swipe({}, {-1, 0});
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 8) << "two small turns make a pixel";
    EXPECT_EQ(desk.State().Timing.TimingChPos, 0);
}

TEST(TimingWnd, KeysAreScrollCodes) {
    Waves desk;
    QWidget& window = desk.Timing();
    QTest::keyClick(&window, Qt::Key_Right);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 1);
    QTest::keyClick(&window, Qt::Key_Left);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 0);
    QTest::keyClick(&window, Qt::Key_PageDown);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, desk.Timing().View().VisibleSamples() / 4);
    QTest::keyClick(&window, Qt::Key_Down);
    EXPECT_EQ(desk.State().Timing.TimingChPos, 1);
    QTest::keyClick(&window, Qt::Key_Up);
    EXPECT_EQ(desk.State().Timing.TimingChPos, 0);
    QTest::keyClick(&window, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(desk.State().Timing.TimingChPos, 159);
}

TEST(TimingWnd, AClickWithALetterHeldPutsThatCursor) {
    Waves desk;
    const QPoint at(desk.DataLeft() + 333, 200);
    QTest::keyPress(&desk.Timing(), Qt::Key_B);
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, {}, at);
    QTest::keyRelease(&desk.Timing(), Qt::Key_B);
    EXPECT_EQ(desk.State().Cursors.Cur[1], 333);
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, {}, at + QPoint(200, 0));
    EXPECT_EQ(desk.State().Cursors.Cur[1], 333) << "the key is up again";
}

TEST(TimingWnd, HeldLettersAreForgottenWithTheWindow) {
    Waves desk;
    QTest::keyPress(&desk.Timing(), Qt::Key_C);
    EXPECT_TRUE(desk.View().Keys().Held().C);
    QEvent away(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&desk.Frame(), &away);
    EXPECT_FALSE(desk.View().Keys().Held().C);
}

TEST(TimingWnd, ACursorIsDragged) {
    Waves desk;
    desk.State().Cursors.Cur[3] = 405;
    const QPoint at(desk.DataLeft() + 405, 250);
    QTest::mouseMove(&desk.TimingArea(), at);
    EXPECT_EQ(desk.TimingArea().cursor().shape(), Qt::BitmapCursor) << "the pointer takes the cursor's shape";
    QTest::mousePress(&desk.TimingArea(), Qt::LeftButton, Qt::AltModifier, at);
    QMouseEvent move(QEvent::MouseMove, QPointF(at + QPoint(60, 0)),
                     desk.TimingArea().mapToGlobal(QPointF(at + QPoint(60, 0))), Qt::NoButton, Qt::LeftButton,
                     Qt::AltModifier);
    QCoreApplication::sendEvent(&desk.TimingArea(), &move);
    QTest::mouseRelease(&desk.TimingArea(), Qt::LeftButton, Qt::AltModifier, at + QPoint(60, 0));
    EXPECT_EQ(desk.State().Cursors.Cur[3], 465);
}

TEST(TimingWnd, ControlAndShiftClickZoomAtThePointer) {
    Waves desk;
    const QPoint at(desk.DataLeft() + 500, 200);
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, Qt::ControlModifier, at);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 2);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, 250);
    QTest::mouseClick(&desk.TimingArea(), Qt::LeftButton, Qt::ShiftModifier, at);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 1);
}

TEST(TimingWnd, AResizeKeepsThePictureAndPaintsAnew) {
    Waves desk;
    const QSize before = desk.Timing().Picture().size();
    CChildFrame& child = *desk.View().Child(WindowId::Timing);
    child.resize(child.width() - 100, child.height() - 100);
    Desk::Settle();
    EXPECT_EQ(desk.Timing().Picture().size(), before);
    EXPECT_GE(before.width(), 1600) << "it is as large as the screen";
    EXPECT_GE(before.height(), 1000);
}

TEST(TimingWnd, AWindowBeyondTheScreenGrowsThePicture) {
    Waves desk;
    desk.View().Child(WindowId::Timing)->resize(2300, 700);
    Desk::Settle();
    EXPECT_GE(desk.Timing().Picture().width(), desk.TimingArea().width());
}

TEST(TimingWndDeathTest, WithoutMemoryForThePictureTheProgramEndsWithAMessage) {
    const auto run = [] {
        Waves desk;
        desk.Host().SetUnattended(true);  // the box goes to standard error
        desk.Timing().ImageMaker = [](std::int32_t, std::int32_t, double) { return QImage(); };
        desk.View().Child(WindowId::Timing)->resize(2600, 700);
        Desk::Settle();
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(1),
                "Graphics error: Could not create bitmap. Reduce colors in Control panel.");
}

TEST(TimingWndDeathTest, WithoutASmallFontTheProgramEndsWithAMessage) {
    const auto run = [] {
        Waves desk;
        desk.Host().SetUnattended(true);
        desk.Timing().FontMaker = [](const Metrics&, double) { return std::unique_ptr<ScreenFonts>(); };
        desk.View().Close(WindowId::Timing);
        desk.Timing().ForgetPicture();
        desk.View().Open(WindowId::Timing);
        Desk::Settle();
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "Error Could not create smallfont: call Ostrand");
}

}  // namespace
}  // namespace zu::test
