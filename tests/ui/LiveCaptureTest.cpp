// Captures on the simulated instrument in the real window: what is seen of them, and closing in the midst of
// each phase.
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QProcess>
#include <QTest>

#include "core/Capture.h"
#include "core/RateRules.h"
#include "trigger/TrigCells.h"
#include "ui/Desk.h"

namespace zu::test {
namespace {

/// Nothing of the scene is connected to this channel, so that a trigger on it never comes.
constexpr int kQuietChannel = 39;

void NeverTrigger(Desk& desk) {
    const CapturePause pause(desk.View().TheApp());
    SetCharOfChannel(desk.State(), kQuietChannel, 0, '1');
}

bool WaitForCaptures(Desk& desk, int count) {
    return QTest::qWaitFor([&] { return desk.State().Capture.CaptureCount >= count; }, 10000);
}

bool Enabled(Desk& desk, CommandId id) {
    return desk.View().Menu().Action(id)->isEnabled();
}

TEST(LiveWindow, SaysAtAGlanceWhatTheCaptureDoes) {
    StartedDesk desk({"--scene=bench"});
    ASSERT_TRUE(WaitForCaptures(desk, 2));
    EXPECT_TRUE(desk.Box.Seen.isEmpty() && desk.Box.Titles.isEmpty());
    EXPECT_EQ(desk.Frame().findChild<QLabel*>("LampPane")->toolTip(), "Capturing");
    EXPECT_TRUE(desk.Shown("CountPane").endsWith(" captures")) << desk.Shown("CountPane").toStdString();
    EXPECT_FALSE(desk.Shown("StatusPane").contains(u'\n'));
    EXPECT_TRUE(Enabled(desk, CommandId::Stop) && Enabled(desk, CommandId::End));
    SaveShot(desk.Frame(), "live");
    QTest::keyClick(&desk.Frame(), Qt::Key_F5);
    EXPECT_EQ(desk.Frame().findChild<QLabel*>("LampPane")->toolTip(), "Idle");
    EXPECT_TRUE(desk.Shown("StatusPane").startsWith("Stop hit ("));
    EXPECT_FALSE(Enabled(desk, CommandId::Stop) || Enabled(desk, CommandId::End));
    EXPECT_TRUE(Enabled(desk, CommandId::Go));
}

TEST(LiveWindow, OfASingleCaptureIsIdleAfterIt) {
    StartedDesk desk({"--scene=bench"});
    desk.View().Execute(CaptureModeCommand(1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return desk.State().Capture.CaptureState == 0; }, 10000));
    Desk::Settle();
    EXPECT_EQ(desk.Shown("StatusPane"), "Triggered 1");
    EXPECT_EQ(desk.Shown("CountPane"), "1 capture");
    EXPECT_FALSE(Enabled(desk, CommandId::Stop)) << "the menu follows a capture that ends by itself";
}

/// Counts what the windows are told to do.
class EventCounter final : public QObject {
  public:
    int Paints = 0;
    int Layouts = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++Paints;
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) ++Layouts;
        return false;
    }
};

TEST(LiveWindow, PaintsOnceACaptureAndMovesNothing) {
    StartedDesk desk({"--scene=bench"});
    ASSERT_TRUE(WaitForCaptures(desk, 3));
    EventCounter traces;
    EventCounter frame;
    desk.TimingArea().installEventFilter(&traces);
    desk.Frame().installEventFilter(&frame);
    const int before = desk.State().Capture.CaptureCount;
    ASSERT_TRUE(WaitForCaptures(desk, before + 5));
    Desk::Settle();
    const int captures = desk.State().Capture.CaptureCount - before;
    EXPECT_GT(traces.Paints, 0);
    EXPECT_LE(traces.Paints, captures + 1);
    EXPECT_EQ(traces.Layouts, 0);
    EXPECT_EQ(frame.Layouts, 0) << "changing texts keep their place";
    desk.TimingArea().removeEventFilter(&traces);
    desk.Frame().removeEventFilter(&frame);
}

TEST(LiveWindow, OffersScenesBesideTheSimulatedInstrumentOnly) {
    StartedDesk emulated;
    EXPECT_EQ(emulated.EntriesOf("Capture").filter("mulated signals").size(), 0);
    StartedDesk desk({"--simulate=Roach40L"});
    EXPECT_EQ(desk.EntriesOf("Capture").filter("mulated signals").size(), 1);
    QAction* entry = desk.Entry("Capture", "SPI flash: erase, program, status polls, reads at 1 MHz");
    ASSERT_NE(entry, nullptr);
    entry->trigger();
    EXPECT_TRUE(entry->isChecked());
    EXPECT_EQ(desk.State().Channels.ChannelName[0].View(), "CS");
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
}

TEST(LiveWindow, CapturesInTheTightLoopAndFollowsIt) {
    StartedDesk desk({"--simulate=Roach40L"});
    desk.View().Execute(SceneCommand(1));
    desk.View().Execute(CaptureModeCommand(0));
    desk.State().Capture.CaptureLoopMode = 1;
    bool stopOffered = false;
    QTimer stopper;
    QObject::connect(&stopper, &QTimer::timeout, &stopper, [&] {
        if (desk.State().Capture.CaptureCount < 3 || desk.Shown("CountPane") == "0 captures") return;
        stopOffered = Enabled(desk, CommandId::Stop);
        desk.View().Execute(CommandId::Stop);
    });
    stopper.start(20);
    desk.View().Execute(CommandId::Go);
    EXPECT_TRUE(stopOffered);
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
    EXPECT_TRUE(desk.Shown("StatusPane").startsWith("Stop hit (")) << "no poll writes over it";
    EXPECT_FALSE(desk.View().TheApp().Poll.TimerRunning);
}

// --- Closing the window --------------------------------------------------------------------------------

void ExpectCleanEnd(Desk& desk) {
    desk.End();
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
    EXPECT_FALSE(desk.View().TheApp().Poll.TimerRunning);
    EXPECT_EQ(desk.View().TheApp().Poll.BusyDepth, 0);
}

TEST(LiveClose, WhileArmed) {
    StartedDesk desk({"--scene=i2c"});
    NeverTrigger(desk);
    ASSERT_TRUE(QTest::qWaitFor([&] { return desk.State().Capture.TrigStat == 2; }, 10000));
    ExpectCleanEnd(desk);
}

TEST(LiveClose, WhileTheMemoryFills) {
    StartedDesk desk({"--scene=clocks"});
    SetRate(desk.View().TheApp(), 20);
    ASSERT_TRUE(QTest::qWaitFor([&] { return desk.State().Capture.TrigStat == 1; }, 10000));
    EXPECT_TRUE(desk.Shown("StatusPane").startsWith("Trig/Fill buf("));
    ExpectCleanEnd(desk);
}

TEST(LiveClose, BetweenTwoCaptures) {
    StartedDesk desk({"--scene=bench"});
    ASSERT_TRUE(WaitForCaptures(desk, 2));
    ExpectCleanEnd(desk);
}

TEST(LiveClose, InTheTightLoop) {
    StartedDesk desk({"--simulate=Roach40L"});
    desk.View().Execute(SceneCommand(1));
    desk.State().Capture.CaptureLoopMode = 1;
    QTimer::singleShot(100, &desk.Frame(), &QWidget::close);
    desk.View().Execute(CommandId::Go);
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
    EXPECT_FALSE(desk.View().TheApp().Poll.FastLoopActive);
    ExpectCleanEnd(desk);
}

TEST(LiveClose, InABox) {
    StartedDesk desk({"--scene=bench"});
    QTimer::singleShot(0, &desk.Frame(), &QWidget::close);
    desk.Host().Message("something", "Note:");
    EXPECT_TRUE(desk.Host().Quitting());
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
    const int count = desk.State().Capture.CaptureCount;
    QTest::qWait(60);
    EXPECT_EQ(desk.State().Capture.CaptureCount, count) << "nothing is polled behind the closed window";
    ExpectCleanEnd(desk);
}

/// The program itself, run to its end.
int RunProgram(const QStringList& arguments) {
    const TempFolder home;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZU_HOME", QString::fromStdString(home.Path().string()));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    program.setProcessEnvironment(environment);
    program.start(ZU_PROGRAM, arguments);
    if (!program.waitForFinished(30000)) program.kill();
    return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
}

TEST(LiveClose, AfterTheFirstCaptureByASwitch) {
    EXPECT_EQ(RunProgram({"--scene=bench", "-EXITAFTERCAPTURE"}), 0);
}

}  // namespace
}  // namespace zu::test
