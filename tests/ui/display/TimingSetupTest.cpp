// Timing setup by keys and mouse.
#include <QTabWidget>

#include "DialogTest.h"
#include "ui/display/CChannelDlg.h"
#include "ui/display/CGroupDef.h"
#include "ui/display/CTimingSetup.h"

namespace zu {
namespace {

using Ints = std::vector<int>;

class TimingSetup : public test::DialogTest {
  protected:
    TimingSetup() {
        TimingRecord& timing = State().Timing;
        const Ints sources{0, 1, 160, 190};
        timing.TimingLines = static_cast<std::int32_t>(sources.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            timing.LineSource[i] = sources[i];
            timing.LineStyle[i] = i == 2 ? 0 : 5;
        }
        dialog = std::make_unique<CTimingSetup>(bench.App, colors);
        Show(*dialog);
        bench.Forget();
    }
    Ints Sources() {
        const TimingRecord& timing = State().Timing;
        return {timing.LineSource.begin(), timing.LineSource.begin() + timing.TimingLines};
    }
    QWidget* List(const char* name) { return test::Find<QListWidget>(*dialog, name); }
    Ints MarkedStyles() {
        Ints marked;
        auto* styles = test::Find<QListWidget>(*dialog, "Styles");
        for (int row = 0; row < styles->count(); ++row) {
            if (styles->item(row)->data(Qt::UserRole).toBool()) marked.push_back(row);
        }
        return marked;
    }
    std::unique_ptr<CTimingSetup> dialog;
};

TEST_F(TimingSetup, ListsLinesSourcesAndGroups) {
    EXPECT_EQ(RowText(*dialog, "Lines", 0), "0 - Pod 1A Ch 0");
    EXPECT_EQ(RowText(*dialog, "Lines", 2), "Group - Group 1");
    EXPECT_EQ(RowText(*dialog, "Lines", 3), "Spacer Line");
    EXPECT_EQ(RowText(*dialog, "Sources", 39), "39 - Pod 5A Ch 39");
    EXPECT_EQ(RowText(*dialog, "Sources", 40), "Group 1 - Group 1");
    EXPECT_EQ(RowText(*dialog, "Groups", 29), "30 - Group 30");
    EXPECT_EQ(test::Find<QListWidget>(*dialog, "Styles")->count(), 17);
}

TEST_F(TimingSetup, NamesItsEditsAndStyles) {
    const std::pair<const char*, const char*> texts[] = {
        {"AppendChannel", "Append channel"}, {"InsertChannel", "Insert channel"},
        {"InsertGroup", "Insert group"},     {"InsertSpacer", "Insert spacer"},
        {"DeleteLine", "Delete line"},       {"MoveUp", "Move up"},
        {"MoveDown", "Move down"},           {"ExpandGroup", "Expand group"},
        {"EditGroup", "Edit group"},         {"EditChannel", "Edit channel"},
        {"SetStyle", "Set style"},
    };
    for (const auto& [name, text] : texts) EXPECT_EQ(Label(*dialog, name), text);
    for (int style = 0; style < 12; ++style) {
        EXPECT_EQ(RowText(*dialog, "Styles", style), kLineStyles[static_cast<std::size_t>(style)].Text);
    }
    for (int extra = 1; extra < 6; ++extra) {
        EXPECT_EQ(RowText(*dialog, "Styles", 11 + extra), kLineModeTexts[static_cast<std::size_t>(extra)]);
    }
}

TEST_F(TimingSetup, AppendsByEnterAndByDoubleClick) {
    ClickRow(*dialog, "Sources", 7);
    QTest::keyClick(List("Sources"), Qt::Key_Return);
    EXPECT_EQ(Sources(), (Ints{0, 1, 160, 190, 7}));
    EXPECT_EQ(SelectedRows(*dialog, "Lines"), (Ints{4}));
    EXPECT_EQ(bench.Shell.Count("redraw Timing"), 1);
    auto* sources = test::Find<QListWidget>(*dialog, "Sources");
    ClickRow(*dialog, "Sources", 9);
    QTest::mouseDClick(sources->viewport(), Qt::LeftButton, {},
                       sources->visualItemRect(sources->item(9)).center());
    EXPECT_EQ(Sources(), (Ints{0, 1, 160, 190, 7, 9}));
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(TimingSetup, InsertsAtTheSelectedLine) {
    ClickRow(*dialog, "Lines", 1);
    ClickRow(*dialog, "Sources", 12);
    Click(*dialog, "InsertChannel");
    EXPECT_EQ(Sources(), (Ints{0, 12, 1, 160, 190}));
    ClickRow(*dialog, "Groups", 3);
    QTest::keyClick(List("Groups"), Qt::Key_Return);
    EXPECT_EQ(Sources(), (Ints{0, 163, 12, 1, 160, 190}));
    Click(*dialog, "InsertSpacer");
    EXPECT_EQ(Sources(), (Ints{0, 191, 163, 12, 1, 160, 190}));
}

TEST_F(TimingSetup, DeletesAndMovesByKeys) {
    ClickRow(*dialog, "Lines", 2);
    QTest::keyClick(List("Lines"), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Sources(), (Ints{0, 160, 1, 190}));
    QTest::keyClick(List("Lines"), Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(List("Lines"), Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Sources(), (Ints{0, 1, 190, 160}));
    EXPECT_EQ(SelectedRows(*dialog, "Lines"), (Ints{3}));
    QTest::keyClick(List("Lines"), Qt::Key_Delete);
    EXPECT_EQ(Sources(), (Ints{0, 1, 190}));
    EXPECT_EQ(SelectedRows(*dialog, "Lines"), (Ints{2}));
}

TEST_F(TimingSetup, TellsWhatIsMissing) {
    for (const char* button : {"AppendChannel", "InsertChannel", "InsertGroup", "DeleteLine", "MoveUp",
                               "MoveDown", "ExpandGroup", "EditGroup", "EditChannel"}) {
        Click(*dialog, button);
    }
    EXPECT_EQ(
        Texts(),
        (std::vector<std::string>{
            "Error:|Select channel from channels list.", "Error:|Select channel from 'channels list'",
            "Error:|Select group from 'groups list'", "Error:|Select line in display list to delete.",
            "Error:|Select line in display list to move.", "Error:|Select line in display list to move.",
            "Error:|Please select a group from the display list.", "Error:|Select Group to edit.",
            "Error:|Select Channel to edit."}));
    EXPECT_EQ(bench.Shell.Log, std::vector<std::string>{}) << "nothing changed, nothing is redrawn";
}

TEST_F(TimingSetup, SetsStylesAndMarksThem) {
    ClickRow(*dialog, "Lines", 0);
    EXPECT_EQ(MarkedStyles(), (Ints{5}));
    ClickRow(*dialog, "Lines", 2, Qt::ControlModifier);
    EXPECT_EQ(MarkedStyles(), (Ints{0, 5}));
    ClickRow(*dialog, "Styles", 8);
    QTest::keyClick(List("Styles"), Qt::Key_Return);
    EXPECT_EQ(State().Timing.LineStyle[0], 8);
    EXPECT_EQ(State().Timing.LineStyle[2], 8);
    EXPECT_EQ(MarkedStyles(), (Ints{8}));
    ClickRow(*dialog, "Styles", 12);
    Click(*dialog, "SetStyle");
    EXPECT_EQ(State().Timing.LineMode[2], 1);
    EXPECT_EQ(MarkedStyles(), (Ints{8, 12}));
    EXPECT_EQ(Texts(),
              (std::vector<std::string>{"Warning:|Some lines could not be set to selected style because "
                                        "they were not groups."}));
}

TEST_F(TimingSetup, ExpandsAGroup) {
    Group(0).Size = 3;
    ClickRow(*dialog, "Lines", 2);
    Click(*dialog, "ExpandGroup");
    EXPECT_EQ(Sources(), (Ints{0, 1, 160, 0, 1, 2, 190}));
    EXPECT_EQ(SelectedRows(*dialog, "Lines"), (Ints{2}));
}

TEST_F(TimingSetup, OpensTheEditorOfALine) {
    ClickRow(*dialog, "Lines", 2);
    int group = -1;
    test::WhenShown<CGroupDef>([&](CGroupDef& editor) {
        group = editor.Group();
        RenameGroup(State(), 0, "Bus");
        editor.reject();
    });
    Click(*dialog, "EditGroup");
    EXPECT_EQ(group, 0);
    EXPECT_EQ(RowText(*dialog, "Lines", 2), "Group - Bus");
    ClickRow(*dialog, "Lines", 1);
    bool opened = false;
    test::WhenShown<CChannelDlg>([&](CChannelDlg& editor) {
        opened = true;
        QTest::keyClicks(editor.focusWidget(), "CLK");
        editor.accept();
    });
    Click(*dialog, "EditChannel");
    EXPECT_TRUE(opened);
    EXPECT_EQ(RowText(*dialog, "Lines", 1), "1 - CLK");
    EXPECT_EQ(RowText(*dialog, "Sources", 1), "1 - CLK");
}

TEST_F(TimingSetup, SetsUpAColumn) {
    test::Find<QTabWidget>(*dialog, "Pages")->setCurrentIndex(1);
    EXPECT_FALSE(test::Find<QComboBox>(*dialog, "Range7")->isEnabled());
    Choose(*dialog, "Type7", 8);
    EXPECT_EQ(State().Timing.TimingDisp[7].Type, 8);
    EXPECT_TRUE(test::Find<QComboBox>(*dialog, "Range7")->isEnabled());
    EXPECT_FALSE(test::Find<QComboBox>(*dialog, "Word7")->isEnabled());
    Choose(*dialog, "Range7", 10);
    EXPECT_EQ(State().Timing.TimingDisp[7].Range, 10);
    Choose(*dialog, "Type7", 3);
    Choose(*dialog, "Word7", 15);
    EXPECT_EQ(State().Timing.TimingDisp[7].TrigWord, 15);
    EXPECT_EQ(bench.Shell.Count("redraw Timing"), 4);
}

TEST_F(TimingSetup, LevelsAreNamedByTheirWord) {
    State().Trigger.SeqList[1] = 3;
    State().Trigger.TrigWordName[2] = "reset";
    CTimingSetup named(bench.App, colors);
    EXPECT_EQ(test::Find<QComboBox>(named, "Word0")->itemText(1), QStringLiteral("Level 1  reset"));
    EXPECT_EQ(test::Find<QComboBox>(named, "Word0")->itemText(2), QStringLiteral("Level 2"));
}

TEST_F(TimingSetup, ColumnsFromAFileAreShownSafely) {
    State().Timing.TimingDisp[0] = {200, 99, -4};
    CTimingSetup strange(bench.App, colors);
    EXPECT_EQ(test::Find<QComboBox>(strange, "Type0")->currentText(), QStringLiteral("Off"));
    EXPECT_EQ(test::Find<QComboBox>(strange, "Range0")->currentText(), QStringLiteral("Buffer"));
    EXPECT_EQ(State().Timing.TimingDisp[0].Type, 200) << "showing changes nothing";
}

TEST_F(TimingSetup, IsWellMade) {
    State().Timing.TimingDisp[0].Type = 1;
    State().Timing.TimingDisp[2].Type = 3;
    State().Timing.TimingDisp[4] = {9, 1, 0};
    dialog = std::make_unique<CTimingSetup>(bench.App, colors);
    Show(*dialog);
    ClickRow(*dialog, "Lines", 1);
    ClickRow(*dialog, "Lines", 2, Qt::ControlModifier);
    const std::vector<std::string> order = test::TabOrder(List("Lines"));
    EXPECT_EQ(order, (std::vector<std::string>{"Lines", "AppendChannel", "InsertChannel", "InsertGroup",
                                               "InsertSpacer", "DeleteLine", "MoveUp", "MoveDown",
                                               "ExpandGroup", "EditGroup", "EditChannel", "SetStyle",
                                               "Sources", "Groups", "Styles", "Pages"}));
    test::Snap(*dialog, "lines");
    ExpectWellMade(*dialog);
    test::Find<QTabWidget>(*dialog, "Pages")->setCurrentIndex(1);
    dialog->resize(dialog->sizeHint());
    test::Snap(*dialog, "columns");
    EXPECT_EQ(test::TabOrder(test::Find<QComboBox>(*dialog, "Type0")),
              (std::vector<std::string>{"Type0", "Type1", "Type2", "Word2", "Type3", "Type4", "Range4",
                                        "Type5", "Type6", "Type7", "Pages"}));
    ExpectWellMade(*dialog);
}

}  // namespace
}  // namespace zu
