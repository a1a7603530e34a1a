// The menu as each model shows it, and what its entries and keys do.
#include <gtest/gtest.h>
#include <random>
#include <set>

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include "core/Capture.h"
#include "core/FileCommands.h"
#include "core/RateRules.h"
#include "state/Rates.h"
#include "ui/Desk.h"
#include "ui/MenuTree.h"

namespace zu::test {
namespace {

TEST(MenuTree, HoldsEveryCommandOnce) {
    std::multiset<CommandId> held;
    int depth = 0;
    for (const MenuRow& row : MenuTree()) {
        if (row.What == MenuRow::Kind::Begin) ++depth;
        if (row.What == MenuRow::Kind::End) --depth;
        EXPECT_GE(depth, 0);
        if (row.What != MenuRow::Kind::Commands) continue;
        EXPECT_GT(depth, 0);
        for (CommandId id = row.First; id <= row.Last; id = Plus(id, 1)) held.insert(id);
    }
    EXPECT_EQ(depth, 0);
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        EXPECT_EQ(held.count(static_cast<CommandId>(i)), 1U) << Traits(static_cast<CommandId>(i)).Text;
    }
}

TEST(Menu, TopMenusHaveMnemonicsOfTheirOwn) {
    StartedDesk desk;
    std::set<QChar> letters;
    QStringList titles;
    for (const QAction* action : desk.Frame().menuBar()->actions()) {
        const qsizetype mark = action->text().indexOf(u'&');
        ASSERT_GE(mark, 0) << action->text().toStdString();
        EXPECT_TRUE(letters.insert(action->text().at(mark + 1).toLower()).second)
            << action->text().toStdString();
        titles.append(action->text().remove(u'&'));
    }
    EXPECT_EQ(titles, (QStringList{"File", "Capture", "Clock", "Rate", "Memory", "Setup", "View", "Pattern",
                                   "Window", "Help"}));
}

TEST(Menu, SetupAndViewHaveAMnemonicForEachEntry) {
    StartedDesk desk;
    for (const char* menu : {"Setup", "View"}) {
        std::set<QChar> letters;
        for (const QString& text : desk.EntriesOf(menu)) {
            const qsizetype mark = text.indexOf(u'&');
            if (mark < 0) {
                EXPECT_EQ(text, "Pattern Generator output voltage...");
                continue;
            }
            EXPECT_TRUE(letters.insert(text.at(mark + 1).toLower()).second) << text.toStdString();
        }
        EXPECT_GE(letters.size(), 6U) << menu;
    }
}

struct ModelMemory {
    int Row;
    QStringList Slow;  ///< entries at 100 MSa/s
};

TEST(Menu, MemoryEntriesFollowTheModel) {
    const ModelMemory models[] = {
        {11, {"40ch       8K ", "40ch      32K "}},
        {12, {"80ch       8K", "80ch      32K"}},
        {13, {"40ch        8K", "40ch      128K", "40ch      256K (No Pattern Generator)"}},
        {14, {"80ch        8K", "80ch      128K", "80ch      256K (No Pattern Generator)"}},
        {15, {"160ch        8K", "160ch      128K", "160ch      256K (No Pattern Generator)"}},
    };
    for (const ModelMemory& model : models) {
        StartedDesk desk({"--model=" + std::to_string(model.Row)});
        EXPECT_EQ(desk.EntriesOf("Memory"), model.Slow) << model.Row;
    }
}

TEST(Menu, MemoryEntriesFollowTheRateEachTimeTheMenuOpens) {
    StartedDesk desk({"--model=15"});
    desk.View().Execute(RateCommand(1));
    const QStringList fast = desk.EntriesOf("Memory");
    ASSERT_EQ(fast.size(), 3);
    EXPECT_EQ(fast.at(0), "96ch 500MHz  32K");
    EXPECT_EQ(fast.at(1), "96ch 500MHz 512K");
    EXPECT_TRUE(fast.at(2).trimmed().isEmpty());
    EXPECT_FALSE(desk.View().Menu().Action(MemoryCommand(3))->isEnabled())
        << "the deep memory is not for the fastest rate";
    desk.View().Execute(RateCommand(5));
    EXPECT_EQ(desk.EntriesOf("Memory").at(2), "160ch      256K (No Pattern Generator)");
}

TEST(Menu, ChoosingAMemoryEntryChecksIt) {
    StartedDesk desk({"--model=15"});
    QAction* large = desk.Entry("Memory", "160ch      128K");
    ASSERT_NE(large, nullptr);
    large->trigger();
    EXPECT_EQ(desk.State().Memory.HardwareMode, 1);
    EXPECT_EQ(desk.State().Memory.BufferLen, 131072);
    EXPECT_TRUE(large->isChecked());
    EXPECT_EQ(desk.Shown("MemoryPane"), "128K");
}

TEST(Menu, EntriesThatTheModelLacksAreGone) {
    StartedDesk desk({"--model=15"});
    const QStringList capture = desk.EntriesOf("Capture");
    EXPECT_TRUE(capture.contains("&Normal (w/trigger)"));
    EXPECT_FALSE(capture.contains("One Shot (w/o trigger)"));
    EXPECT_FALSE(capture.contains("Continuous Pattern Generator output"));
    EXPECT_FALSE(capture.contains("Trigger out enabled"));
    EXPECT_EQ(desk.EntriesOf("Clock"), (QStringList{"&Internal", "Ext. Clock[0] &Rising",
                                                    "Ext. Clock[0] &Falling", "&External ...."}));
    EXPECT_EQ(desk.EntriesOf("Pattern"), QStringList{"&Edit Pattern Generator data"});
    const QStringList help = desk.EntriesOf("Help");
    EXPECT_FALSE(help.contains("Identify Analyzer"));
    EXPECT_FALSE(help.contains("test2"));
}

TEST(Menu, AnInputOutputSwitchKeepsIdentifyAnalyzer) {
    StartedDesk desk({"--model=15", "-perchwidea"});
    QAction* identify = desk.Entry("Help", "Identify Analyzer");
    ASSERT_NE(identify, nullptr);
    identify->trigger();
    EXPECT_TRUE(desk.Box.Seen.isEmpty()) << "it does nothing when chosen";
}

TEST(Menu, RateEntriesShowTheRowsRatesAndCheckTheCurrentOne) {
    StartedDesk desk({"--model=15"});
    const std::set<int> absent{0, 2, 4, 13, 15, 17, 19, 21};
    QStringList expected{"Rate &up", "Rate &down"};
    for (int code = 0; code < kRateCodes; ++code) {
        if (absent.contains(code)) continue;
        const std::string_view text = kRates[static_cast<std::size_t>(code)].MenuText;
        expected.append(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    }
    EXPECT_EQ(desk.EntriesOf("Rate"), expected);
    for (int code = 0; code < kRateCodes; ++code) {
        const QAction* entry = desk.View().Menu().Action(RateCommand(code));
        EXPECT_EQ(entry->isChecked(), code == 5) << code;
        EXPECT_EQ(entry->isEnabled(), !absent.contains(code)) << code;
    }
}

TEST(Menu, ARateThatTheRowForbidsIsMendedWhenAMenuOpens) {
    StartedDesk desk({"--model=15"});
    desk.State().Clock.ClockRate = 4;
    desk.EntriesOf("Rate");
    EXPECT_EQ(desk.State().Clock.ClockRate, 3);
}

TEST(Menu, EntriesOfWhichOneIsInForceHaveARoundMark) {
    StartedDesk desk;
    const MainMenu& menu = desk.View().Menu();
    for (const CommandId id : {RateCommand(5), MemoryCommand(0), CaptureModeCommand(0), CommandId::LoopNormal,
                               CommandId::ClockInternal, ZoomCommand(5)}) {
        const QActionGroup* group = menu.Action(id)->actionGroup();
        ASSERT_NE(group, nullptr) << Traits(id).Text;
        EXPECT_TRUE(group->isExclusive()) << "the style draws a check mark otherwise: " << Traits(id).Text;
    }
    for (const CommandId id : {CommandId::TimingGrid, CommandId::ClearBufferOnGo, CommandId::WindowTiming}) {
        EXPECT_EQ(menu.Action(id)->actionGroup(), nullptr) << Traits(id).Text;
    }
    QAction* current = menu.Action(RateCommand(5));
    current->trigger();
    EXPECT_TRUE(current->isChecked()) << "what is in force stays checked when it is chosen again";
    menu.Action(RateCommand(8))->trigger();
    EXPECT_FALSE(current->isChecked());
    EXPECT_TRUE(menu.Action(RateCommand(8))->isChecked());
}

class CommandsInAnyOrder : public testing::TestWithParam<int> {};

/// Every entry that can be chosen, in no order that makes sense; dialogs are cancelled, questions answered
/// No.
TEST_P(CommandsInAnyOrder, LeaveTheProgramAlive) {
    StartedDesk desk({"--model=" + std::to_string(GetParam())});
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    QTimer stopper;
    QObject::connect(&stopper, &QTimer::timeout, &stopper, [&desk] {
        if (desk.View().TheApp().Poll.FastLoopActive) desk.View().Execute(CommandId::Stop);
    });
    stopper.start(5);
    for (int step = 0; step < 250; ++step) {
        const auto id = static_cast<CommandId>(random() % kCommandCount);
        if (id == CommandId::FileExit) continue;
        desk.View().Execute(id);
        Desk::Settle();
        const InstrumentState& state = desk.State();
        ASSERT_LT(state.Clock.ClockRate, kRateCodes) << Traits(id).Text;
        ASSERT_EQ(QApplication::overrideCursor(), nullptr) << Traits(id).Text;
        ASSERT_EQ(desk.Shown("ModeBox").toStdString(), CaptureModeText(state.Capture.CaptureMode));
        for (int i = 0; i < kMaxPods; ++i) {
            ASSERT_LE(static_cast<std::size_t>(GetBufLenFull(state.Buffer.BufLen, i)), state.Buffer.Room(i));
        }
    }
    desk.View().Execute(CommandId::Stop);
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
}

INSTANTIATE_TEST_SUITE_P(Models, CommandsInAnyOrder, testing::Values(0, 11, 15, 17, 19, 27));

TEST(Menu, EntriesOfWhatIsNotBuiltAreDisabled) {
    StartedDesk desk;
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const auto id = static_cast<CommandId>(i);
        desk.View().Menu().Refresh();
        const QAction* action = desk.View().Menu().Action(id);
        if (IsOffered(id)) continue;
        EXPECT_FALSE(action->isEnabled()) << Traits(id).Text;
    }
}

TEST(Keys, GoAndStopShareOneKey) {
    StartedDesk desk;
    QTest::keyClick(&desk.Frame(), Qt::Key_F5);
    EXPECT_EQ(desk.State().Capture.CaptureState, 1);
    QTest::keyClick(&desk.Frame(), Qt::Key_F5);
    EXPECT_EQ(desk.State().Capture.CaptureState, 0);
    EXPECT_TRUE(desk.State().Capture.StatusText.View().starts_with("Stop hit ("));
}

TEST(Keys, MStepsThroughNormalSingleAndAuto) {
    StartedDesk desk;
    for (const int mode : {1, 2, 0}) {
        QTest::keyClick(&desk.Frame(), Qt::Key_M);
        EXPECT_EQ(desk.State().Capture.CaptureMode, mode);
        EXPECT_EQ(desk.Shown("ModeBox").toStdString(), CaptureModeText(mode));
    }
}

TEST(Keys, RStepsTheRateDownAndUp) {
    StartedDesk desk({"--model=15"});
    QTest::keyClick(&desk.Frame(), Qt::Key_R);
    EXPECT_EQ(desk.State().Clock.ClockRate, 6);
    EXPECT_EQ(desk.Shown("RateBox"), " 50 MSa  (20 ns)");
    QTest::keyClick(&desk.Frame(), Qt::Key_R, Qt::ShiftModifier);
    EXPECT_EQ(desk.State().Clock.ClockRate, 5);
    QTest::keyClick(&desk.Frame(), Qt::Key_R, Qt::ShiftModifier);
    EXPECT_EQ(desk.State().Clock.ClockRate, 3) << "200 MSa/s is not offered here";
}

TEST(Keys, PlusAndMinusZoom) {
    StartedDesk desk;
    desk.State().Timing.ScreenZoom = 1;
    QTest::keyClick(&desk.Frame(), Qt::Key_Plus);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 2);
    QTest::keyClick(&desk.Frame(), Qt::Key_Equal);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 5);
    QTest::keyClick(&desk.Frame(), Qt::Key_Minus);
    EXPECT_EQ(desk.State().Timing.ScreenZoom, 2);
    EXPECT_EQ(desk.Shown("ZoomBox"), "1:2");
}

TEST(Menu, TheZoomMenuSetsItsValuesAndChecksThem) {
    StartedDesk desk;
    for (int step = 0; step < kZoomSteps; ++step) {
        const ZoomStep& row = kZoomTable[static_cast<std::size_t>(step)];
        QAction* entry = desk.Entry(
            "View", QString::fromLatin1(row.MenuText.data(), static_cast<qsizetype>(row.MenuText.size())));
        ASSERT_NE(entry, nullptr) << row.MenuText;
        entry->trigger();
        if (row.Zoom < -800) continue;  // this memory has no half screen at those
        EXPECT_EQ(desk.State().Timing.ScreenZoom, row.Zoom);
        EXPECT_TRUE(entry->isChecked());
    }
}

TEST(Menu, RecentFilesAreListedOpenedAndKept) {
    const auto home = std::make_shared<TempFolder>();
    const std::string file = home->File("first & last.ini");
    {
        Desk desk({"--model=15"}, home);
        desk.Start();
        SaveSlot(desk.View().TheApp(), 1);
        std::filesystem::copy_file(desk.State().Files.SettingsSlot[1], file);
        desk.View().OpenFile(QString::fromStdString(file));
        EXPECT_TRUE(desk.EntriesOf("File").contains("&1 first && last.ini"));
        desk.End();
    }
    Desk again({"--model=15"}, home);
    again.Start();
    QAction* entry = again.Entry("File", "&1 first && last.ini");
    ASSERT_NE(entry, nullptr);
    entry->trigger();
    EXPECT_TRUE(again.Frame().windowTitle().contains("first & last.ini"));
}

TEST(Menu, TheWindowMenuListsTheOpenWindows) {
    StartedDesk desk;
    const QStringList entries = desk.EntriesOf("Window");
    EXPECT_TRUE(entries.contains("&1 Timing view"));
    EXPECT_TRUE(entries.contains("&2 Cursors"));
    desk.View().Close(WindowId::Cursor);
    EXPECT_FALSE(desk.EntriesOf("Window").contains("&2 Cursors"));
}

TEST(Menu, WindowEntriesOpenAndClose) {
    StartedDesk desk;
    QAction* timing = desk.View().Menu().Action(CommandId::WindowTiming);
    EXPECT_TRUE(timing->isChecked());
    timing->trigger();
    EXPECT_EQ(desk.State().Windows.TimingStat, 0);
    EXPECT_FALSE(desk.Timing().isVisible());
    EXPECT_FALSE(timing->isChecked());
    timing->trigger();
    EXPECT_EQ(desk.State().Windows.TimingStat, 1);
    EXPECT_TRUE(desk.Timing().isVisible());
}

TEST(Menu, ExternalClockChecksItsEntryAndNoRate) {
    StartedDesk desk;
    desk.View().Execute(CommandId::ClockExtRising);
    EXPECT_EQ(desk.State().Clock.ClockType, 1);
    EXPECT_TRUE(desk.View().Menu().Action(CommandId::ClockExtRising)->isChecked());
    for (int code = 0; code < kRateCodes; ++code) {
        EXPECT_FALSE(desk.View().Menu().Action(RateCommand(code))->isChecked()) << code;
    }
    EXPECT_EQ(desk.Shown("RatePane"), "ext.");
    EXPECT_FALSE(desk.View().Menu().Action(CommandId::RateUp)->isEnabled());
}

}  // namespace
}  // namespace zu::test
