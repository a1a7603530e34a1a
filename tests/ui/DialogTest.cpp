// About and the keyboard sheet.
#include <gtest/gtest.h>

#include <QLabel>
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

TEST(KeySheet, HoldsEveryKeyOfTheCommandTable) {
    StartedDesk desk;
    QString sheet;
    desk.Box.Dialogs.emplace_back([&](QDialog& dialog) {
        sheet = dialog.findChild<QTextBrowser*>()->toPlainText();
        dialog.reject();
    });
    desk.View().Execute(CommandId::HelpKeys);
    int keys = 0;
    for (std::size_t i = 0; i < kCommandCount; ++i) {
        const CommandTraits& traits = Traits(static_cast<CommandId>(i));
        if (traits.Key.empty()) continue;
        ++keys;
        const QString hint =
            QString::fromLatin1(traits.Hint.data(), static_cast<qsizetype>(traits.Hint.size()));
        EXPECT_TRUE(sheet.contains(hint)) << traits.Hint;
    }
    EXPECT_GT(keys, 15);
    EXPECT_TRUE(sheet.contains("Ctrl+wheel"));
}

TEST(Status, BoardStatusShowsTheBoardInABox) {
    StartedDesk desk({"--model=15"});
    desk.View().Execute(CommandId::BoardStatus);
    ASSERT_EQ(desk.Box.Seen.size(), 1);
    EXPECT_EQ(desk.Box.Seen.first().Caption, "status");
    EXPECT_EQ(desk.Box.Seen.first().Text, "Roach160L_128B , 524288K ,ch=160,pods=20,buffers=20");
}

}  // namespace
}  // namespace zu::test
