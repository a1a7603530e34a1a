// About and the keyboard sheet.
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>

#include "ui/Desk.h"
#include "ui/core/CAboutDlg.h"
#include "ui/core/CKeySheet.h"

namespace zu::test {
namespace {

QString VersionShown(Desk& desk) {
    QString version;
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        version = dialog.findChild<QLabel*>(QStringLiteral("Version"))->text();
        dialog.accept();
    });
    desk.View().Execute(CommandId::About);
    return version;
}

TEST(About, ShowsTheVersionOfTheSeries) {
    StartedDesk desk;
    EXPECT_EQ(VersionShown(desk), "RoachSer Version 2.16 - 7/27/20");
}

TEST(About, ShowsTheProductIdOfTheCommandLine) {
    StartedDesk desk({"--model=15", "-pid_0325"});
    EXPECT_EQ(VersionShown(desk), "RoachSer Version 2.16 - 7/27/20 (PID_0325)");
}

TEST(KeySheet, HoldsEveryKeyOfWhatIsOffered) {
    StartedDesk desk;
    QString sheet;
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        sheet = dialog.findChild<QTextBrowser*>()->toPlainText();
        dialog.reject();
    });
    desk.View().Execute(CommandId::HelpKeys);
    int keys = 0;
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const auto id = static_cast<CommandId>(i);
        const CommandTraits& traits = Traits(id);
        if (traits.Key.empty()) continue;
        if (IsOffered(id)) ++keys;
        const QString hint =
            QString::fromLatin1(traits.Hint.data(), static_cast<qsizetype>(traits.Hint.size()));
        EXPECT_EQ(sheet.contains(hint), IsOffered(id)) << traits.Hint;
    }
    EXPECT_GT(keys, 15);
    for (const char* what : {"Ctrl+wheel, pinch", "middle drag", "Tab, Shift+Tab", "Home, End",
                             "Page Up, Page Down", "Left, Right", "Double click", "6 pixels", "Alt held",
                             "Rest on a trace", "2, 3, 4 or 5", "A, B, C, D or T", "Right click", "Ctrl+G"}) {
        EXPECT_TRUE(sheet.contains(QLatin1String(what))) << what;
    }
}

TEST(Status, BoardStatusShowsTheBoardInABox) {
    StartedDesk desk({"--model=15"});
    desk.View().Execute(CommandId::BoardStatus);
    ASSERT_EQ(desk.Box.Seen.size(), 1);
    EXPECT_EQ(desk.Box.Seen.first().Caption, "status");
    EXPECT_EQ(desk.Box.Seen.first().Text, "Roach160L_128B , 524288K ,ch=160,pods=20,buffers=20");
}

TEST(GoTo, TakesTheViewToWhatTheTextNames) {
    StartedDesk desk;
    desk.Box.Dialogs.emplace_back([](QDialog& dialog) {
        auto* place = dialog.findChild<QLineEdit*>(QStringLiteral("Place"));
        place->setText("nowhere");
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible()) << "a text that names nothing can be mended";
        place->setText("100us");
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible());
    });
    desk.View().Execute(CommandId::GoTo);
    const std::int64_t middle = desk.State().Timing.TimingDataPos + desk.Timing().View().VisibleSamples() / 2;
    EXPECT_NEAR(static_cast<double>(middle), 10000, 1);
    const std::int32_t before = desk.State().Timing.TimingDataPos;
    desk.View().Execute(CommandId::GoTo);
    EXPECT_EQ(desk.State().Timing.TimingDataPos, before) << "the second dialog was cancelled";
}

/// Chooses a fixed colour, or none.
class FixedColor final : public ColorChooser {
  public:
    std::optional<Rgb> Choose(QWidget* /*owner*/, Rgb start) override {
        Starts.push_back(start);
        return Answer;
    }
    std::optional<Rgb> Answer;
    std::vector<Rgb> Starts;
};

TEST(Colors, AreChosenForScreenAndCursors) {
    StartedDesk desk;
    FixedColor colors;
    desk.View().SetColors(colors);
    colors.Answer = 0x123456;
    desk.View().Execute(CommandId::ScreenColor0);
    EXPECT_EQ(desk.State().Screen.ScreenColor[0], 0x123456U);
    desk.View().Execute(Plus(CommandId::ScreenColor0, 1));
    Desk::Settle();
    EXPECT_EQ(desk.Timing().Picture().pixel(desk.TimingArea().width() - 3, 80), 0xFF563412U)
        << "the window is painted anew";
    desk.View().Execute(CommandId::CursorColorLast);
    EXPECT_EQ(desk.State().Cursors.CursorColor[4], 0x123456U);
    colors.Answer.reset();
    desk.View().Execute(CommandId::CursorColor0);
    EXPECT_EQ(desk.State().Cursors.CursorColor[0], 0x007D00U) << "the choice was given up";
    EXPECT_EQ(colors.Starts.back(), 0x007D00U);
}

}  // namespace
}  // namespace zu::test
