// From process start to a window, with and without an instrument, and down again.
#include <gtest/gtest.h>

#include <QLabel>
#include <QMdiArea>
#include <QProcess>
#include <QProcessEnvironment>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "support/Captures.h"
#include "ui/Desk.h"

namespace zu::test {
namespace {

void PressDemo(QDialog& dialog) {
    dialog.findChild<QPushButton*>(QStringLiteral("Demo"))->click();
    dialog.accept();
}

TEST(FirstStart, WithoutInstrumentEndsInEmulationWithTheTimingWindowOpen) {
    Desk desk(Desk::kNoArguments);
    desk.Box.Dialogs.emplace_back(PressDemo);
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) { dialog.accept(); });
    desk.Start();
    EXPECT_EQ(desk.Box.Titles, (QStringList{"Hardware address", "Logic Analyzer Emulation"}));
    EXPECT_TRUE(desk.Box.Seen.isEmpty()) << "a first start shows no boxes";
    EXPECT_EQ(desk.State().Identity.Emulated, 1);
    EXPECT_EQ(desk.State().Identity.HardwareType, 15);
    EXPECT_EQ(desk.State().Shape.TotalChannels, 160);
    EXPECT_TRUE(desk.Frame().isVisible());
    EXPECT_TRUE(desk.Timing().isVisible());
    EXPECT_EQ(desk.State().Windows.TimingStat, 1);
    EXPECT_EQ(desk.State().Windows.CursorDlgStat, 1);
    EXPECT_EQ(desk.State().Windows.StateStat, 0);
}

TEST(FirstStart, NoWindowCoversAnotherAndAllLieInTheFrame) {
    Desk desk({"--model=15"});
    desk.Start();
    const QRect area = desk.Frame().Area().viewport()->rect();
    const QRect cursor = desk.View().Child(WindowId::Cursor)->geometry();
    const QRect timing = desk.View().Child(WindowId::Timing)->geometry();
    EXPECT_TRUE(area.contains(cursor));
    EXPECT_TRUE(area.contains(timing));
    EXPECT_FALSE(cursor.intersects(timing));
    EXPECT_GT(timing.width(), area.width() / 2);
    EXPECT_EQ(desk.State().Windows.TimingRect.Left, 100) << "the stored place is untouched";
    EXPECT_EQ(desk.State().Windows.TimingRectValid, 0);
}

TEST(FirstStart, ClosingTheAddressDialogGoesOnInEmulation) {
    Desk desk(Desk::kNoArguments);
    desk.Start();
    EXPECT_EQ(desk.Box.Titles.size(), 2);
    EXPECT_EQ(desk.State().Identity.Emulated, 1);
    EXPECT_EQ(desk.State().Identity.HardwareType, 15);
    EXPECT_TRUE(desk.Frame().isVisible());
}

TEST(FirstStart, TheModelChosenIsTheModelRun) {
    Desk desk(Desk::kNoArguments);
    desk.Box.Dialogs.emplace_back(PressDemo);
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        dialog.findChild<QRadioButton*>(QStringLiteral("Row13"))->click();
        dialog.accept();
    });
    desk.Start();
    EXPECT_EQ(desk.State().Identity.HardwareType, 13);
    EXPECT_EQ(desk.State().Shape.TotalChannels, 40);
    EXPECT_EQ(desk.Shown("ChannelPane"), "40 ch");
}

TEST(FirstStart, AModelOnTheCommandLineAsksNothing) {
    Desk desk({"--model=11"});
    desk.Start();
    EXPECT_TRUE(desk.Box.Titles.isEmpty());
    EXPECT_EQ(desk.State().Identity.HardwareType, 11);
}

TEST(ModelDialog, OffersFiveModelsAndHidesTheRest) {
    Desk desk(Desk::kNoArguments);
    QStringList offered;
    QString checked;
    int all = 0;
    desk.Box.Dialogs.emplace_back(PressDemo);
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        for (const QRadioButton* choice : dialog.findChildren<QRadioButton*>()) {
            ++all;
            if (choice->isVisible()) offered.append(choice->text());
            if (choice->isChecked()) checked = choice->text();
        }
        dialog.accept();
    });
    desk.Start();
    EXPECT_EQ(offered, (QStringList{"Roach40S", "Roach80S", "Roach40L", "Roach80L", "Roach160L"}));
    EXPECT_EQ(checked, "Roach160L");
    EXPECT_EQ(all, 24) << "every row with a shape has its choice";
}

TEST(AddressDialog, TheDemoButtonSaysSoAndFreesOk) {
    Desk desk(Desk::kNoArguments);
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        QPushButton* ok = nullptr;
        for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
            if (button->text().contains("OK")) ok = button;
        }
        ASSERT_NE(ok, nullptr);
        EXPECT_FALSE(ok->isEnabled());
        dialog.findChild<QPushButton*>(QStringLiteral("Demo"))->click();
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("Status"))->text(), "Demo mode");
        EXPECT_TRUE(ok->isEnabled());
        ok->click();
    });
    desk.Start();
    EXPECT_EQ(desk.State().Identity.Emulated, 1);
}

TEST(SecondStart, WindowsComeBackWhereTheyWere) {
    const auto home = std::make_shared<TempFolder>();
    const QRect place(230, 40, 700, 480);
    {
        Desk first({"--model=15"}, home);
        first.Start();
        first.View().Child(WindowId::Timing)->setGeometry(place);
        Desk::Settle();
        EXPECT_EQ(first.State().Windows.TimingRect, (WindowRect{230, 40, 930, 520}));
        first.End();
    }
    Desk second({"--model=15"}, home);
    second.Start();
    EXPECT_EQ(second.View().Child(WindowId::Timing)->geometry(), place);
}

TEST(SecondStart, AClosedTimingWindowStaysClosedOnceADataFileIsThere) {
    const auto home = std::make_shared<TempFolder>();
    {
        Desk first(Desk::kNoArguments, home);
        first.Start();
        first.View().Close(WindowId::Timing);
        EXPECT_EQ(first.State().Windows.TimingStat, 0);
        first.End();
    }
    Desk second(Desk::kNoArguments, home);
    second.Start();
    EXPECT_EQ(second.State().Windows.TimingStat, 0);
    EXPECT_EQ(second.View().Timing(), nullptr);
    second.View().Execute(CommandId::WindowTiming);
    EXPECT_TRUE(second.Timing().isVisible());
}

/// Surroundings of a run with its files in a folder of its own, without a display or on a named platform.
QProcessEnvironment Surroundings(const TempFolder& home, const QString& platform = {}) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZU_HOME", QString::fromStdString(home.Path().string()));
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    environment.remove("QT_QPA_PLATFORM");
    if (!platform.isEmpty()) environment.insert("QT_QPA_PLATFORM", platform);
    return environment;
}

/// Runs the program itself and answers its exit code; `output` gets what it printed.
int RunProgram(const QStringList& arguments, const TempFolder& home, QByteArray& output,
               const QString& platform = {}) {
    QProcess program;
    program.setProcessEnvironment(Surroundings(home, platform));
    program.start(ZU_PROGRAM, arguments);
    if (!program.waitForFinished(60000)) return -1;
    output = program.readAllStandardOutput();
    return program.exitCode();
}

TEST(Program, TellsAScriptThatNoInstrumentIsThere) {
    const TempFolder home;
    QByteArray output;
    EXPECT_EQ(RunProgram({"-returnZuStat"}, home, output), 0);
    EXPECT_EQ(output, "ZU NOT found\n");
    EXPECT_EQ(home.Count(), 0) << "nothing was saved";
}

TEST(Program, AsksNobodyOnAPlatformWithoutAScreen) {
    const TempFolder home;
    QByteArray output;
    EXPECT_EQ(RunProgram({"-RETURNZUSTAT"}, home, output, "offscreen"), 0);
    EXPECT_EQ(output, "ZU NOT found\n");
}

TEST(Program, EndsOutOfItsFirstDialogs) {
    const TempFolder home;
    QProcess program;
    program.setProcessEnvironment(Surroundings(home, "minimal"));  // takes input, so somebody may sit at it
    program.start(ZU_PROGRAM, QStringList());
    ASSERT_TRUE(program.waitForStarted());
    QTest::qWait(1500);
    EXPECT_EQ(program.state(), QProcess::Running) << "it waits in the address dialog";
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(30000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_TRUE(std::filesystem::exists(home.File("WRoach.ini")));
}

TEST(Program, PrintsItsVersionAndItsUsage) {
    const TempFolder home;
    QByteArray output;
    EXPECT_EQ(RunProgram({"--version"}, home, output), 0);
    EXPECT_TRUE(output.startsWith("zu ")) << output.toStdString();
    EXPECT_EQ(RunProgram({"--help"}, home, output), 0);
    EXPECT_TRUE(output.contains("--screenshot")) << output.toStdString();
    EXPECT_EQ(RunProgram({"--no-such-option"}, home, output), 2);
}

TEST(Program, WritesAPictureOfItsWindowWithoutADisplay) {
    const TempFolder home;
    QByteArray output;
    const QString picture = QString::fromStdString(home.File("window.png"));
    EXPECT_EQ(RunProgram({"--screenshot=" + picture, "--model=15"}, home, output), 0);
    const QImage image(picture);
    EXPECT_GE(image.width(), 1200);
    EXPECT_GE(image.height(), 700);
}

TEST(Program, LeavesByTheExitPathWhenItIsAskedToEnd) {
    const TempFolder home;
    QProcess program;
    program.setProcessEnvironment(Surroundings(home, "offscreen"));
    program.start(ZU_PROGRAM, {"--model=11", "-G"});
    ASSERT_TRUE(program.waitForStarted());
    // Preferences are written by the exit path alone; the capture runs until then.
    QTest::qWait(1500);
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(30000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(std::filesystem::exists(home.File("WRoach.ini")));
}

}  // namespace
}  // namespace zu::test
