// The channel dialog by keys and mouse.
#include <QCheckBox>
#include <QLineEdit>

#include "DialogTest.h"
#include "core/Capture.h"
#include "ui/display/CChannelDlg.h"
#include "ui/display/CColorButton.h"

namespace zu {
namespace {

class ChannelDlg : public test::DialogTest {
  protected:
    static QLineEdit* Name(QWidget& dialog, int row) {
        return test::Find<QLineEdit>(dialog, ("Name" + std::to_string(row)).c_str());
    }
    std::string NameOf(int channel) {
        return std::string(State().Channels.ChannelName.at(static_cast<std::size_t>(channel)).View());
    }
};

TEST_F(ChannelDlg, OpensOnTheChannel) {
    CChannelDlg dialog(bench.App, colors, 13);
    Show(dialog);
    EXPECT_EQ(dialog.Page(), 1);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Pod")->currentText(), QStringLiteral("2A"));
    EXPECT_TRUE(Name(dialog, 5)->hasFocus());
    EXPECT_EQ(Name(dialog, 5)->selectedText(), QStringLiteral("Pod 2A Ch 13"));
}

TEST_F(ChannelDlg, ANumberOutsideOpensTheNearestChannel) {
    EXPECT_EQ(CChannelDlg(bench.App, colors, -7).Page(), 0);
    EXPECT_EQ(CChannelDlg(bench.App, colors, 5000).Page(), 4);
}

TEST_F(ChannelDlg, TypedNamesAreStoredByOk) {
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    QTest::keyClicks(Name(dialog, 0), "CLK");
    QTest::keyClick(Name(dialog, 0), Qt::Key_Down);
    EXPECT_TRUE(Name(dialog, 1)->hasFocus());
    QTest::keyClicks(Name(dialog, 1), "a name that is far too long");
    EXPECT_EQ(NameOf(0), "Pod 1A Ch 0");
    bench.Forget();
    QTest::keyClick(Name(dialog, 1), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(NameOf(0), "CLK");
    EXPECT_EQ(NameOf(1), "a name that is far ");
    EXPECT_EQ(bench.Shell.Count("redraw Timing"), 1);
}

TEST_F(ChannelDlg, LettersBeyondAsciiAreKeptAsBytes) {
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    Name(dialog, 0)->clear();
    QTest::keyClicks(Name(dialog, 0), QStringLiteral("\u00b5C"));
    dialog.accept();
    EXPECT_EQ(NameOf(0),
              "\xb5"
              "C");
}

TEST_F(ChannelDlg, CancelDropsTheNames) {
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    QTest::keyClicks(Name(dialog, 0), "CLK");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(NameOf(0), "Pod 1A Ch 0");
}

TEST_F(ChannelDlg, TheNamesAreWalkedThroughAllPages) {
    CChannelDlg dialog(bench.App, colors, 7);
    Show(dialog);
    QTest::keyClick(Name(dialog, 7), Qt::Key_Down);
    EXPECT_EQ(dialog.Page(), 1);
    EXPECT_TRUE(Name(dialog, 0)->hasFocus());
    QTest::keyClick(Name(dialog, 0), Qt::Key_Up);
    EXPECT_EQ(dialog.Page(), 0);
    EXPECT_TRUE(Name(dialog, 7)->hasFocus());
    for (int i = 0; i < 9; ++i) QTest::keyClick(Name(dialog, 7), Qt::Key_PageDown);
    EXPECT_EQ(dialog.Page(), 4);
    EXPECT_FALSE(test::Find<QPushButton>(dialog, "Next")->isEnabled());
    QTest::keyClick(Name(dialog, 7), Qt::Key_Down);
    EXPECT_EQ(dialog.Page(), 4) << "the last channel is the end";
    Click(dialog, "Previous");
    EXPECT_EQ(dialog.Page(), 3);
    Choose(dialog, "Pod", 0);
    EXPECT_EQ(dialog.Page(), 0);
    QTest::keyClick(Name(dialog, 0), Qt::Key_Up);
    EXPECT_TRUE(test::Find<QComboBox>(dialog, "Pod")->hasFocus()) << "nothing lies above the first name";
}

TEST_F(ChannelDlg, NamesOfOtherPagesAreKeptWhilePaging) {
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    QTest::keyClicks(Name(dialog, 0), "one");
    Click(dialog, "Next");
    Name(dialog, 0)->selectAll();
    QTest::keyClicks(Name(dialog, 0), "two");
    Click(dialog, "Previous");
    EXPECT_EQ(Name(dialog, 0)->text(), QStringLiteral("one"));
    dialog.accept();
    EXPECT_EQ(NameOf(0), "one");
    EXPECT_EQ(NameOf(8), "two");
}

TEST_F(ChannelDlg, InversionTakesEffectAtOnce) {
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    bench.Forget();
    auto* invert = test::Find<QCheckBox>(dialog, "Invert2");
    QTest::keyClick(invert, Qt::Key_Space);
    EXPECT_EQ(State().Channels.ChannelInvert[2], 1);
    EXPECT_EQ(bench.Shell.Count("redraw Timing"), 1);
    dialog.reject();
    EXPECT_EQ(State().Channels.ChannelInvert[2], 1) << "Cancel does not undo it";
}

TEST_F(ChannelDlg, InversionArmsARunningCaptureAgain) {
    State().Identity.Emulated = 1;
    Go(bench.App);
    ASSERT_EQ(State().Capture.CaptureState, 1);
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    bench.Forget();
    Click(dialog, "Invert2");
    EXPECT_EQ(State().Capture.CaptureState, 1);
    EXPECT_EQ(bench.Host.TimerLog.size(), 2U) << "stopped and started once";
    bench.Forget();
    Click(dialog, "Reset");
    EXPECT_EQ(State().Capture.CaptureState, 1);
    EXPECT_EQ(bench.Host.TimerLog.size(), 2U);
}

TEST_F(ChannelDlg, AColorIsChosen) {
    CChannelDlg dialog(bench.App, colors, 8);
    Show(dialog);
    const Rgb before = State().Channels.ChannelColor[11];
    Click(dialog, "Color3");
    EXPECT_EQ(colors.Start, before);
    EXPECT_EQ(State().Channels.ChannelColor[11], before) << "the choice was given up";
    colors.Answer = MakeRgb(10, 20, 30);
    Click(dialog, "Color3");
    EXPECT_EQ(State().Channels.ChannelColor[11], MakeRgb(10, 20, 30));
    EXPECT_EQ(test::Find<CColorButton>(dialog, "Color3")->Color(), MakeRgb(10, 20, 30));
}

TEST_F(ChannelDlg, ResetShowsTheDefaults) {
    State().Channels.ChannelName[1] = "mine";
    State().Channels.ChannelInvert[1] = 1;
    CChannelDlg dialog(bench.App, colors, 0);
    Show(dialog);
    Click(dialog, "Reset");
    EXPECT_EQ(Name(dialog, 1)->text(), QStringLiteral("Pod 1A Ch 1"));
    EXPECT_FALSE(test::Find<QCheckBox>(dialog, "Invert1")->isChecked());
    EXPECT_EQ(NameOf(1), "mine");
    dialog.accept();
    EXPECT_EQ(NameOf(1), "Pod 1A Ch 1");
}

TEST_F(ChannelDlg, ComesBackInItsSize) {
    {
        CChannelDlg dialog(bench.App, colors, 0);
        Show(dialog);
        dialog.resize(620, 470);
        dialog.reject();
    }
    EXPECT_EQ(State().Windows.DialogSizes.at("ChannelNames"), (DialogSize{620, 470}));
    CChannelDlg again(bench.App, colors, 0);
    Show(again);
    EXPECT_EQ(again.size(), QSize(620, 470));
    State().Windows.DialogSizes["ChannelNames"] = {30000, 1};
    CChannelDlg huge(bench.App, colors, 0);
    Show(huge);
    EXPECT_LE(huge.width(), huge.screen()->availableSize().width());
    EXPECT_GE(huge.height(), huge.minimumSizeHint().height());
}

TEST_F(ChannelDlg, IsWellMade) {
    State().Channels.ChannelName[3] = "SDA";
    State().Channels.ChannelInvert[3] = 1;
    CChannelDlg dialog(bench.App, colors, 3);
    Show(dialog);
    test::Snap(dialog, "channels");
    const std::vector<std::string> order = test::TabOrder(test::Find<QWidget>(dialog, "Pod"));
    EXPECT_EQ(std::vector<std::string>(order.begin(), order.begin() + 5),
              (std::vector<std::string>{"Pod", "Next", "Name0", "Invert0", "Color0"}));
    ExpectWellMade(dialog);
}

}  // namespace
}  // namespace zu
