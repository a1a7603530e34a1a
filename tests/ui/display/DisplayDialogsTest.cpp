// The small dialogs of the Timing view: Insert group, Display style, Display options.
#include <QGroupBox>
#include <QRadioButton>

#include "DialogTest.h"
#include "display/CursorMoves.h"
#include "display/LineEdits.h"
#include "ui/display/CDisplayOptions.h"
#include "ui/display/CDisplayStyle.h"
#include "ui/display/CInsertGroup.h"

namespace zu {
namespace {

using Ints = std::vector<int>;

class DisplayDialogs : public test::DialogTest {
  protected:
    void SetRow(QWidget& dialog, const char* list, int row) {
        test::Find<QListWidget>(dialog, list)->setCurrentRow(row);
    }
    TimingRecord& Timing() { return State().Timing; }
};

TEST_F(DisplayDialogs, AGroupIsInsertedAndGivenItsStyle) {
    test::WhenShown<CInsertGroup>([this](CInsertGroup& choice) {
        SetRow(choice, "Groups", 2);
        test::WhenShown<CDisplayStyle>([this](CDisplayStyle& style) {
            SetRow(style, "Styles", 8);
            SetRow(style, "Extras", 1);
            QTest::keyClick(&style, Qt::Key_Return);
        });
        QTest::keyClick(test::Find<QWidget>(choice, "Groups"), Qt::Key_Return);
    });
    RunInsertGroup(bench.App, 5, nullptr);
    EXPECT_EQ(Timing().TimingLines, 41);
    EXPECT_EQ(Timing().LineSource[5], 162);
    EXPECT_EQ(Timing().LineStyle[5], 8);
    EXPECT_EQ(Timing().LineMode[5], 1);
    EXPECT_GE(bench.Shell.Count("redraw Timing"), 2);
}

TEST_F(DisplayDialogs, AChoiceGivenUpInsertsNothing) {
    test::WhenShown<CInsertGroup>([](CInsertGroup& choice) { QTest::keyClick(&choice, Qt::Key_Escape); });
    RunInsertGroup(bench.App, 5, nullptr);
    EXPECT_EQ(Timing().TimingLines, 40);
}

TEST_F(DisplayDialogs, AStyleGivenUpLeavesTheGroupInHex) {
    test::WhenShown<CInsertGroup>([](CInsertGroup& choice) {
        test::WhenShown<CDisplayStyle>([](CDisplayStyle& style) { style.reject(); });
        choice.accept();
    });
    RunInsertGroup(bench.App, 5, nullptr);
    EXPECT_EQ(Timing().LineSource[5], 160);
    EXPECT_EQ(Timing().LineStyle[5], 0);
}

TEST_F(DisplayDialogs, AFullListTakesNeither) {
    Timing().TimingLines = 188;
    test::WhenShown<CInsertGroup>([](CInsertGroup& choice) { choice.accept(); });
    RunInsertGroup(bench.App, 5, nullptr);
    RunInsertSpacer(bench.App, 5);
    EXPECT_EQ(Timing().TimingLines, 188);
    EXPECT_EQ(bench.Host.Remarks.size(), 2U);
    EXPECT_EQ(Texts(), std::vector<std::string>{});
}

TEST_F(DisplayDialogs, ASpacerIsInserted) {
    RunInsertSpacer(bench.App, 5);
    EXPECT_EQ(Timing().LineSource[5], 190);
    for (int i = 0; i < 40; ++i) RunInsertSpacer(bench.App, 5);
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Error|Maximum number of spacers inserted"}));
}

TEST_F(DisplayDialogs, AChannelIsOfferedNoStyleOfGroups) {
    Timing().LineMode[3] = 4;
    CDisplayStyle dialog(bench.App, 3);
    Show(dialog);
    auto* styles = test::Find<QListWidget>(dialog, "Styles");
    auto* extras = test::Find<QListWidget>(dialog, "Extras");
    EXPECT_EQ(styles->currentRow(), 5);
    EXPECT_EQ(extras->currentRow(), 4);
    for (int row = 0; row < 12; ++row)
        EXPECT_EQ((styles->item(row)->flags() & Qt::ItemIsEnabled) != 0, row > 4);
    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ((extras->item(row)->flags() & Qt::ItemIsEnabled) != 0, row == 0 || row > 2);
    }
    styles->setCurrentRow(9);
    extras->setCurrentRow(0);
    dialog.accept();
    EXPECT_EQ(Timing().LineStyle[3], 9);
    EXPECT_EQ(Timing().LineMode[3], 0);
}

TEST_F(DisplayDialogs, ATextStyleEndsTheExtra) {
    Timing().LineSource[3] = 161;
    Timing().LineStyle[3] = 7;
    Timing().LineMode[3] = 2;
    CDisplayStyle dialog(bench.App, 3);
    Show(dialog);
    EXPECT_EQ(test::Find<QListWidget>(dialog, "Extras")->currentRow(), 2);
    SetRow(dialog, "Styles", 1);
    EXPECT_EQ(test::Find<QListWidget>(dialog, "Extras")->currentRow(), 0);
    dialog.accept();
    EXPECT_EQ(Timing().LineStyle[3], 1);
    EXPECT_EQ(Timing().LineMode[3], 0);
}

TEST_F(DisplayDialogs, ALineThatIsGoneIsLeftAlone) {
    CDisplayStyle dialog(bench.App, 5000);
    Show(dialog);
    dialog.accept();
    EXPECT_EQ(Timing().TimingLines, 40);
}

TEST_F(DisplayDialogs, OptionsNameWhatTheyOffer) {
    CDisplayOptions dialog(State(), {});
    const char* origins[] = {"Left",     "Center (std.)", "Point",    "Cursor A",
                             "Cursor B", "Cursor C",      "Cursor D", "Trig. Cursor"};
    for (std::size_t row = 0; row < std::size(origins); ++row) {
        EXPECT_EQ(Label(dialog, ("Origin" + std::to_string(row)).c_str()), origins[row]);
        EXPECT_EQ(kZoomFrom[row].Text, origins[row]);
    }
    const char* cursors[] = {"A", "B", "C", "D", "Trig"};
    for (std::size_t cursor = 0; cursor < std::size(cursors); ++cursor) {
        EXPECT_EQ(Label(dialog, ("ToWindow" + std::to_string(cursor)).c_str()), cursors[cursor]);
        EXPECT_EQ(Label(dialog, ("ToPoint" + std::to_string(cursor)).c_str()), cursors[cursor]);
    }
    QStringList boxes;
    for (const QGroupBox* box : dialog.findChildren<QGroupBox*>()) boxes.append(box->title());
    EXPECT_EQ(boxes, (QStringList{"Zoom from", "Cursor to win", "Cursor to point"}));
    EXPECT_EQ(Label(dialog, "ZoomIn"), "Zoom +");
    EXPECT_EQ(Label(dialog, "ZoomOut"), "Zoom -");
}

TEST_F(DisplayDialogs, OptionsKeepTheOrigin) {
    Timing().ZoomOrigin = -2;
    CDisplayOptions dialog(State(), {});
    Show(dialog);
    EXPECT_TRUE(test::Find<QRadioButton>(dialog, "Origin0")->isChecked());
    QTest::mouseClick(test::Find<QRadioButton>(dialog, "Origin7"), Qt::LeftButton);
    EXPECT_EQ(Timing().ZoomOrigin, -2);
    dialog.accept();
    EXPECT_EQ(Timing().ZoomOrigin, 4);
}

TEST_F(DisplayDialogs, APointIsNotKept) {
    Timing().ZoomOrigin = 2;
    CDisplayOptions dialog(State(), {});
    Show(dialog);
    test::Find<QRadioButton>(dialog, "Origin2")->setChecked(true);
    dialog.accept();
    EXPECT_EQ(Timing().ZoomOrigin, 2);
}

TEST_F(DisplayDialogs, CancelKeepsTheOldOrigin) {
    Timing().ZoomOrigin = 77;  // of a file
    CDisplayOptions dialog(State(), {});
    Show(dialog);
    EXPECT_TRUE(test::Find<QRadioButton>(dialog, "Origin1")->isChecked());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(Timing().ZoomOrigin, 77);
}

TEST_F(DisplayDialogs, OptionsZoomFromTheChosenPlace) {
    std::vector<std::pair<int, bool>> zooms;
    CDisplayOptions dialog(State(), {[&](int origin, bool in) { zooms.emplace_back(origin, in); }, {}, {}});
    Show(dialog);
    test::Find<QRadioButton>(dialog, "Origin2")->setChecked(true);
    Click(dialog, "ZoomIn");
    test::Find<QRadioButton>(dialog, "Origin4")->setChecked(true);
    QTest::keyClick(&dialog, Qt::Key_Minus);
    // A button that is hit by its key is seen going down before it acts.
    EXPECT_TRUE(QTest::qWaitFor([&] { return zooms.size() == 2; }));
    EXPECT_EQ(zooms, (std::vector<std::pair<int, bool>>{{-3, true}, {1, false}}));
}

TEST_F(DisplayDialogs, OptionsMoveCursors) {
    Ints toWindow;
    Ints toPoint;
    CDisplayOptions dialog(State(), {{},
                                     [&](int cursor) { toWindow.push_back(cursor); },
                                     [&](int cursor) { toPoint.push_back(cursor); }});
    Show(dialog);
    for (int cursor = 0; cursor < 5; ++cursor) {
        Click(dialog, ("ToWindow" + std::to_string(cursor)).c_str());
        Click(dialog, ("ToPoint" + std::to_string(cursor)).c_str());
    }
    EXPECT_EQ(toWindow, (Ints{0, 1, 2, 3, 4}));
    EXPECT_EQ(toPoint, (Ints{0, 1, 2, 3, 4}));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(DisplayDialogs, AreWellMade) {
    CInsertGroup insert(State());
    Show(insert);
    test::Snap(insert, "insert-group");
    ExpectWellMade(insert);
    InsertGroupAt(State(), 0, 2);
    CDisplayStyle style(bench.App, 0);
    Show(style);
    SetRow(style, "Styles", 8);
    test::Snap(style, "style");
    ExpectWellMade(style);
    CDisplayOptions options(State(), {});
    Show(options);
    test::Snap(options, "options");
    ExpectWellMade(options);
}

}  // namespace
}  // namespace zu
