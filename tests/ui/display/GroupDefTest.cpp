// Group setup by keys and mouse.
#include <QCheckBox>
#include <QLineEdit>
#include <QWheelEvent>

#include "DialogTest.h"
#include "serial/EventCodes.h"
#include "ui/display/CGroupDef.h"

namespace zu {
namespace {

using Ints = std::vector<int>;

constexpr const char* kI2cBox =
    "I2C Group Enabled|Select any 2 channels. The first one is for I2C clock and the second one is for I2C "
    "data.";

class GroupDef : public test::DialogTest {
  protected:
    GroupDef() : dialog(bench.App, colors, 1) { Show(dialog); }
    Ints Channels(int number = 1) {
        const GroupRecord& group = Group(number);
        return {group.Channels.begin(), group.Channels.begin() + group.Size};
    }
    QComboBox* Mode() { return test::Find<QComboBox>(dialog, "Mode"); }
    CGroupDef dialog;
};

TEST_F(GroupDef, ShowsItsGroup) {
    EXPECT_EQ(dialog.Group(), 1);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Number")->currentText(), QStringLiteral("2 - Group 2"));
    EXPECT_EQ(test::Find<QLineEdit>(dialog, "Name")->text(), QStringLiteral("Group 2"));
    EXPECT_EQ(test::Find<QLineEdit>(dialog, "Size")->text(), QStringLiteral("8 "));
    EXPECT_TRUE(test::Find<QLineEdit>(dialog, "Size")->isReadOnly());
    EXPECT_EQ(RowText(dialog, "Channels", 9), "9 - Pod 2A Ch 9");
    EXPECT_EQ(RowText(dialog, "Positions", 1), "Pod 2A Ch 9 ");
    EXPECT_EQ(CGroupDef(bench.App, colors, 30).Group(), 0);
}

TEST_F(GroupDef, NamesItsEditsAndFlags) {
    const std::pair<const char*, const char*> texts[] = {
        {"Insert", "Insert in group"},
        {"Append", "Append to group"},
        {"AppendNext", "Append to group and select next ch."},
        {"Delete", "Delete ch. from group"},
        {"Reverse", "Reverse order"},
        {"MoveUp", "Move up"},
        {"MoveDown", "Move down"},
        {"TwosComplement", "2's Compliment"},
        {"CsActiveHigh", "CS Active high"},
        {"BitOrder", "SPI: LSB->MSB"},
    };
    for (const auto& [name, text] : texts) EXPECT_EQ(Label(dialog, name), text);
    for (int mode = 0; mode < 7; ++mode) {
        EXPECT_EQ(Mode()->itemText(mode).toStdString(), kGroupModes[static_cast<std::size_t>(mode)]);
    }
}

TEST_F(GroupDef, InsertsByMouse) {
    ClickRow(dialog, "Channels", 30);
    ClickRow(dialog, "Channels", 32, Qt::ControlModifier);
    ClickRow(dialog, "Positions", 0);
    ClickRow(dialog, "Positions", 4, Qt::ControlModifier);
    bench.Forget();
    Click(dialog, "Insert");
    EXPECT_EQ(Channels(), (Ints{30, 8, 9, 10, 11, 32, 12, 13, 14, 15}));
    EXPECT_EQ(SelectedRows(dialog, "Positions"), (Ints{0, 5}));
    EXPECT_EQ(SelectedRows(dialog, "Channels"), (Ints{30, 32}));
    EXPECT_EQ(test::Find<QLineEdit>(dialog, "Size")->text(), QStringLiteral("10 "));
    EXPECT_EQ(bench.Shell.Count("redraw Timing"), 1);
    EXPECT_EQ(Texts(), std::vector<std::string>{});
}

TEST_F(GroupDef, TellsWhatIsMissing) {
    Click(dialog, "Insert");
    Click(dialog, "Append");
    Click(dialog, "Delete");
    Click(dialog, "MoveUp");
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Error:|Select channel from 'channel list'",
                                                 "Error:|Select channel from 'channel list'",
                                                 "Error:|Select channel from 'group list.'",
                                                 "Error:|Select line in display list to move."}));
}

TEST_F(GroupDef, AGroupIsBuiltByKeys) {
    ClickRow(dialog, "Positions", 0);
    QTest::keySequence(test::Find<QWidget>(dialog, "Positions"), QKeySequence::SelectAll);
    QTest::keyClick(test::Find<QWidget>(dialog, "Positions"), Qt::Key_Delete);
    EXPECT_EQ(Channels(), Ints{});
    ClickRow(dialog, "Channels", 20);
    auto* channels = test::Find<QWidget>(dialog, "Channels");
    for (int i = 0; i < 4; ++i) QTest::keyClick(channels, Qt::Key_Return);
    EXPECT_EQ(Channels(), (Ints{20, 21, 22, 23}));
    EXPECT_EQ(SelectedRows(dialog, "Channels"), (Ints{24}));
    auto* positions = test::Find<QWidget>(dialog, "Positions");
    ClickRow(dialog, "Positions", 3);
    QTest::keyClick(positions, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(positions, Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Channels(), (Ints{20, 23, 21, 22}));
    EXPECT_EQ(SelectedRows(dialog, "Positions"), (Ints{1}));
    QTest::keyClick(positions, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Channels(), (Ints{20, 21, 23, 22}));
    QTest::keyClick(positions, Qt::Key_Insert);
    EXPECT_EQ(Channels(), (Ints{20, 21, 24, 23, 22}));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(GroupDef, ReversesAndAppendsByButton) {
    Click(dialog, "Reverse");
    EXPECT_EQ(Channels(), (Ints{15, 14, 13, 12, 11, 10, 9, 8}));
    ClickRow(dialog, "Channels", 0);
    Click(dialog, "Append");
    Click(dialog, "AppendNext");
    EXPECT_EQ(Channels(), (Ints{15, 14, 13, 12, 11, 10, 9, 8, 0, 0}));
    EXPECT_EQ(SelectedRows(dialog, "Channels"), (Ints{1}));
}

TEST_F(GroupDef, TheNameIsWrittenAsItIsTyped) {
    auto* name = test::Find<QLineEdit>(dialog, "Name");
    name->selectAll();
    QTest::keyClicks(name, "Address bus 0-15");
    EXPECT_EQ(Group(1).Name, "Address bus 0-");
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Number")->currentText(), QStringLiteral("2 - Address bus 0-"));
}

TEST_F(GroupDef, ALongNameFromAFileIsKeptUntilItIsTyped) {
    Group(2).Name = "123456789012345";
    Choose(dialog, "Number", 2);
    EXPECT_EQ(test::Find<QLineEdit>(dialog, "Name")->text(), QStringLiteral("12345678901234"));
    EXPECT_EQ(Group(2).Name, "123456789012345");
}

TEST_F(GroupDef, AnotherNumberShowsAnotherGroup) {
    ClickRow(dialog, "Channels", 3);
    Choose(dialog, "Number", 4);
    EXPECT_EQ(dialog.Group(), 4);
    EXPECT_EQ(test::Find<QLineEdit>(dialog, "Name")->text(), QStringLiteral("Group 5"));
    EXPECT_EQ(RowText(dialog, "Positions", 0), "Pod 5A Ch 32 ");
    EXPECT_EQ(SelectedRows(dialog, "Channels"), (Ints{3}));
    Click(dialog, "Append");
    EXPECT_EQ(Group(4).Size, 9);
    EXPECT_EQ(Group(1).Size, 8);
}

TEST_F(GroupDef, AModeIsChosenFromItsList) {
    Mode()->setFocus();
    QTest::keyClick(Mode(), Qt::Key_Down);
    EXPECT_EQ(Group(1).Mode, 0) << "the key opens the list only";
    QTest::keyClick(Mode()->view(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(Texts(), std::vector<std::string>{});
    Choose(dialog, "Mode", 1);
    EXPECT_EQ(Texts(), (std::vector<std::string>{kI2cBox}));
    EXPECT_EQ(Group(1).Mode, 1);
    EXPECT_EQ(Group(1).Size, 2);
    EXPECT_EQ(State().Serial.SerialGroup, 1);
    EXPECT_EQ(Mode()->currentText(), QStringLiteral("I2C"));
}

TEST_F(GroupDef, TheWheelLeavesTheMode) {
    const QPointF at(5, 5);
    QWheelEvent wheel(at, Mode()->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(Mode(), &wheel);
    EXPECT_EQ(Group(1).Mode, 0);
    EXPECT_EQ(Mode()->currentIndex(), 0);
}

TEST_F(GroupDef, NormalLeavesAnSpiGroup) {
    Choose(dialog, "Mode", 4);
    EXPECT_EQ(Texts(), (std::vector<std::string>{"SPI Enabled|Bit 0=clk, Bit 1=SI, Bit 2=SO, Bit 3=CS "}));
    Choose(dialog, "Mode", 0);
    EXPECT_EQ(Group(1).Mode, 4);
    EXPECT_EQ(Mode()->currentText(), QStringLiteral("SPI(Mode1)")) << "the box shows what the group is";
    EXPECT_EQ(Texts().size(), 1U);
}

TEST_F(GroupDef, TheFourthSpiGroupIsRefused) {
    for (const int other : {5, 6, 7}) Group(other).Mode = 3;
    Choose(dialog, "Mode", 3);
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Error:|The software supports a maximum of 3 SPI groups."}));
    EXPECT_EQ(Mode()->currentIndex(), 0);
}

TEST_F(GroupDef, FlagsOfSpiAreOpenToSpiGroups) {
    auto* csHigh = test::Find<QCheckBox>(dialog, "CsActiveHigh");
    auto* order = test::Find<QCheckBox>(dialog, "BitOrder");
    EXPECT_FALSE(csHigh->isEnabled());
    EXPECT_FALSE(order->isEnabled());
    Choose(dialog, "Mode", 3);
    State().Windows.SpiStat = 1;
    bench.Forget();
    QTest::keyClick(csHigh, Qt::Key_Space);
    QTest::keyClick(order, Qt::Key_Space);
    QTest::keyClick(test::Find<QWidget>(dialog, "TwosComplement"), Qt::Key_Space);
    EXPECT_EQ(Group(1).CsActiveHigh, 1);
    EXPECT_EQ(Group(1).BitOrder, 1);
    EXPECT_EQ(Group(1).TwosComplement, 1);
    EXPECT_EQ(bench.Shell.Count("redraw Spi"), 3);
}

TEST_F(GroupDef, TheColorIsChosen) {
    Group(1).Color = MakeRgb(1, 2, 3);
    Choose(dialog, "Number", 1);
    colors.Answer = MakeRgb(200, 100, 50);
    Click(dialog, "Color");
    EXPECT_EQ(colors.Start, MakeRgb(1, 2, 3));
    EXPECT_EQ(Group(1).Color, MakeRgb(200, 100, 50));
}

TEST_F(GroupDef, ChoosingSpiDecodes) {
    // Chip select goes low at 10; a clock with data 1 runs from 20 to 36.
    auto samples = State().Buffer.Samples(1);
    for (std::size_t i = 0; i < 60; ++i) {
        const bool clock = i >= 20 && i < 36 && i % 2 == 1;
        const bool select = i < 10 || i > 50;
        samples[i] = static_cast<std::uint8_t>((clock ? 1 : 0) | 2 | (select ? 8 : 0));
    }
    Choose(dialog, "Mode", 3);
    const auto& words = State().Serial.SpiSI[0];
    EXPECT_TRUE(std::any_of(words.begin(), words.begin() + 60, [](auto word) { return word != 0; }));
}

TEST_F(GroupDef, LeavingDecodesTheSerialGroup) {
    // A start: data falls at 20 while the clock, channel 8, is high.
    auto samples = State().Buffer.Samples(1);
    for (std::size_t i = 0; i < 40; ++i) samples[i] = i < 20 ? 3 : 1;
    State().Windows.SerialStat = 1;
    Choose(dialog, "Mode", 1);
    const auto& events = State().Serial.SerialEvents;
    const auto started = [&] { return std::count(events.begin(), events.end(), event::kStart); };
    EXPECT_EQ(started(), 0);
    bench.Forget();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(started(), 1);
    EXPECT_EQ(bench.Shell.Count("redraw Serial"), 1);
}

TEST_F(GroupDef, LeavingWithoutASerialGroupRedrawsNothing) {
    bench.Forget();
    dialog.reject();
    EXPECT_EQ(bench.Shell.Log, std::vector<std::string>{});
}

TEST_F(GroupDef, ThePatternEditorIsRefreshedToo) {
    State().Windows.PatEditStat = State().Windows.ThresholdStat = 1;
    bench.Forget();
    Click(dialog, "Reverse");
    EXPECT_EQ(bench.Shell.Count("redraw Pattern"), 1);
    EXPECT_EQ(bench.Shell.Count("redraw Threshold"), 1);
}

TEST_F(GroupDef, IsWellMade) {
    Choose(dialog, "Mode", 3);
    ClickRow(dialog, "Channels", 5);
    ClickRow(dialog, "Positions", 2);
    test::Snap(dialog, "groups");
    EXPECT_EQ(test::TabOrder(test::Find<QWidget>(dialog, "Number")),
              (std::vector<std::string>{"Number", "Name", "Mode", "TwosComplement", "CsActiveHigh",
                                        "BitOrder", "Color", "Channels", "Insert", "Append", "AppendNext",
                                        "Delete", "Reverse", "MoveUp", "MoveDown", "Positions"}));
    ExpectWellMade(dialog);
}

}  // namespace
}  // namespace zu
