// The desktop's answers to what the logic asks of its surroundings.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QFontMetrics>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "support/TempFolder.h"
#include "ui/Boxes.h"
#include "ui/FileFilter.h"
#include "ui/QtHost.h"
#include "ui/QtText.h"

namespace zu::test {
namespace {

TEST(FileFilter, PairsBecomeNameFiltersOfBothCases) {
    const FileFilters filters =
        ParseFilters("Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Comma Sep [data] (*.CSV)|*.csv||");
    EXPECT_EQ(filters.Names, (QStringList{"Data File (*.zu *.ZU)", "Settings File (*.ini *.INI)",
                                          "Comma Sep [data] (*.csv *.CSV)"}));
    EXPECT_EQ(filters.Suffixes, (QStringList{"zu", "ini", "csv"}));
}

TEST(FileFilter, OddTextsGiveWhatTheyHold) {
    EXPECT_TRUE(ParseFilters("").Names.isEmpty());
    EXPECT_TRUE(ParseFilters("||").Names.isEmpty());
    EXPECT_TRUE(ParseFilters("Only a label").Names.isEmpty());
    EXPECT_EQ(ParseFilters("Mathcad(*.PRN)|*.PRN||").Names, QStringList{"Mathcad (*.prn *.PRN)"});
    EXPECT_EQ(ParseFilters("All|*.*").Suffixes, QStringList{""});
    EXPECT_EQ(ParseFilters("Two (*.a;*.b)|*.a;*.b").Names, QStringList{"Two (*.a *.A *.b *.B)"});
}

TEST(QtText, StateTextIsLatin1BothWays) {
    std::string all;
    for (int c = 1; c < 256; ++c) all.push_back(static_cast<char>(c));
    EXPECT_EQ(ToState(FromState(all)), all);
    EXPECT_EQ(ToState(QStringLiteral("\u20AC5")), "?5");
}

TEST(QtText, MessagesMayCarryFileNames) {
    EXPECT_EQ(FromMessage("Gr\xC3\xBC\xC3\x9F"), QStringLiteral("Gr\u00FC\u00DF"));
    EXPECT_EQ(FromMessage("\xB5s"), QStringLiteral("\u00B5s"));
    EXPECT_EQ(ToPath(FromPath("/tmp/\xC3\xA4.zu")), "/tmp/\xC3\xA4.zu");
}

TEST(QtHost, ShowsTextAndCaptionAsTheyAre) {
    QtHost host;
    Boxes boxes;
    host.Message("<b>100%s</b> & more\tmode", "Note:");
    host.Message("", "File Error(9):");
    EXPECT_EQ(boxes.Seen,
              (QList<Boxes::Box>{{"<b>100%s</b> & more\tmode", "Note:"}, {"", "File Error(9):"}}));
}

TEST(QtHost, AShortTextLeavesRoomForTheCaption) {
    QtHost host;
    const char* caption = "Software running in Demo mode";
    int width = 0;
    QTimer::singleShot(50, &host, [&width] {
        QWidget* box = QApplication::activeModalWidget();
        width = box->width();
        box->close();
    });
    host.Message("", caption);
    EXPECT_GT(width, QFontMetrics(QApplication::font()).horizontalAdvance(caption) + 100);
}

TEST(QtHost, AsksAndAnswers) {
    QtHost host;
    Boxes boxes;
    boxes.Answers = {true, false, true, false};
    EXPECT_TRUE(host.Ask("Abort load?", "Warning"));
    EXPECT_FALSE(host.Ask("Abort load?", "Warning"));
    EXPECT_TRUE(host.Confirm("Go on?", "Warning"));
    EXPECT_FALSE(host.Confirm("Go on?", "Warning"));
}

TEST(QtHost, UnattendedNothingWaitsForAnybody) {
    QtHost host;
    host.SetUnattended(true);
    testing::internal::CaptureStderr();
    host.Message("text", "Caption:");
    EXPECT_FALSE(host.Ask("really?", "Warning"));
    EXPECT_FALSE(host.ChooseFile({}).has_value());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Caption: text\nWarning really?\n");
}

TEST(QtHost, TimersTickUntilTheyAreKilled) {
    QtHost host;
    QList<int> ticks;
    host.Tick = [&](int id) { ticks.append(id); };
    host.StartTimer(2, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks.size() >= 3; }));
    EXPECT_GE(ticks.size(), 3);
    EXPECT_EQ(ticks.first(), 2);
    host.KillTimer(2);
    host.KillTimer(7);
    ticks.clear();
    QTest::qWait(10);
    EXPECT_TRUE(ticks.isEmpty());
}

TEST(QtHost, ATimerThatIsStartedAgainIsReplaced) {
    QtHost host;
    int ticks = 0;
    host.Tick = [&](int) { ++ticks; };
    host.StartTimer(1, 0);
    host.StartTimer(1, 60000);
    QTest::qWait(40);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(host.findChildren<QTimer*>().size(), 1);
    host.StartTimer(1, 0);
    EXPECT_EQ(host.findChild<QTimer*>()->interval(), 10) << "a shorter period leaves no time for the rest";
}

TEST(QtHost, RunsWhatWaitsUntilItQuits) {
    QtHost host;
    bool ran = false;
    QTimer::singleShot(0, &host, [&ran] { ran = true; });
    EXPECT_EQ(host.RunWaitingMessage(), Host::Turn::Idle);
    EXPECT_TRUE(ran) << "what waits is run";
    EXPECT_EQ(host.RunWaitingMessage(), Host::Turn::Idle);
    host.SetQuitting();
    EXPECT_EQ(host.RunWaitingMessage(), Host::Turn::Quit);
}

TEST(QtHost, WaitsAtLeastAsLongAsItIsTold) {
    QtHost host;
    const std::uint32_t before = host.TickCount();
    host.WaitNanoseconds(5e6);
    EXPECT_GE(host.TickCount() - before, 4U);
    host.WaitNanoseconds(0);
    host.WaitNanoseconds(-1);
}

TEST(QtHost, ChoosesAnExistingFile) {
    const TempFolder folder;
    WriteBytes(folder.Path() / "a.ZU", "x");
    QtHost host;
    Boxes boxes;
    boxes.Dialogs.emplace_back([&](QDialog& dialog) {
        auto& chooser = dynamic_cast<QFileDialog&>(dialog);
        EXPECT_EQ(chooser.nameFilters().first(), "Data File (*.zu *.ZU)");
        EXPECT_EQ(chooser.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(chooser.directory().path().toStdString(), folder.Path().string());
        chooser.selectFile("a.ZU");
        QMetaObject::invokeMethod(&chooser, "accept");
    });
    FileRequest request;
    request.InitialName = folder.File("*.ZU");
    request.Filters = "Data File (*.ZU)|*.zu||";
    EXPECT_EQ(host.ChooseFile(request), folder.File("a.ZU"));
    EXPECT_FALSE(host.ChooseFile(request).has_value()) << "the second dialog was cancelled";
}

TEST(QtHost, ANewNameGetsTheExtensionOfItsFilter) {
    const TempFolder folder;
    QtHost host;
    Boxes boxes;
    boxes.Dialogs.emplace_back([&](QDialog& dialog) {
        auto& chooser = dynamic_cast<QFileDialog&>(dialog);
        EXPECT_EQ(chooser.acceptMode(), QFileDialog::AcceptSave);
        chooser.findChild<QLineEdit*>()->setText("fresh");
        QMetaObject::invokeMethod(&chooser, "accept");
    });
    FileRequest request;
    request.Save = true;
    request.InitialName = folder.File("*.ZU");
    request.Filters = "Data File (*.ZU)|*.zu||";
    request.DefaultExtension = "ZU";
    EXPECT_EQ(host.ChooseFile(request), folder.File("fresh.zu"));
}

}  // namespace
}  // namespace zu::test
