// The search dialog and the setup of the Statelist's columns.
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "DialogTest.h"
#include "ui/display/CGroupDef.h"
#include "ui/display/CSearchDlg.h"
#include "ui/display/CStateListSetup.h"

namespace zu {
namespace {

class SearchDlg : public test::DialogTest {
  protected:
    SearchDlg() {
        for (auto& entry : State().Search.SearchWd) entry = State().Trigger.TrigWord.Board[0][0];
        for (auto& entry : State().Search.SearchWd) std::fill_n(entry.begin(), 44, '0');
        State().Search.SearchBase = kSearchBinary;
        State().Search.SearchWord = "10";
    }
    CSearchDlg& Open() {
        dialog_ = std::make_unique<CSearchDlg>(
            bench.App, [this](bool forward) { searches.push_back(forward); }, nullptr);
        Show(*dialog_);
        return *dialog_;
    }
    QLineEdit& Field(const char* name) { return *test::Find<QLineEdit>(*dialog_, name); }
    std::string Cells(int pod) { return SearchFieldText(State(), pod); }

    std::vector<bool> searches;

  private:
    std::unique_ptr<CSearchDlg> dialog_;
};

TEST_F(SearchDlg, IsWellMade) {
    CSearchDlg& dialog = Open();
    test::Snap(dialog, "search");
    ExpectWellMade(dialog);
}

TEST_F(SearchDlg, SearchesWithButtonsAndKeys) {
    CSearchDlg& dialog = Open();
    Click(dialog, "Forward");
    Click(dialog, "Backward");
    QTest::keyClick(&dialog, Qt::Key_F3);
    QTest::keyClick(&dialog, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(searches, (std::vector<bool>{true, false, true, false}));
    EXPECT_TRUE(dialog.isVisible()) << "it stays for the next one";
}

TEST_F(SearchDlg, AFieldOvertypesAndStoresAtOnce) {
    Open();
    Field("Pod4").setFocus();
    Field("Pod4").setCursorPosition(0);
    QTest::keyClicks(&Field("Pod4"), "1X");
    EXPECT_EQ(Field("Pod4").text(), "1X000000");
    EXPECT_EQ(Cells(4), "1X000000");
    QTest::keyClicks(&Field("Pod4"), "2a ");
    EXPECT_EQ(bench.Host.Beeps, 3);
    EXPECT_EQ(Cells(4), "1X000000");
    Field("Pod4").selectAll();
    QTest::keyClick(&Field("Pod4"), Qt::Key_1);
    EXPECT_EQ(Cells(4), "XXXXXXX1");
    Field("Pod3").setFocus();
    EXPECT_EQ(Field("Pod4").text(), "XXXXXXX1") << "left, it shows what is stored";
}

TEST_F(SearchDlg, ABackspaceInAFullBinaryFieldLeavesTheCaret) {
    Open();
    QLineEdit& field = Field("Pod4");
    field.setText("10X10011");
    field.setFocus();
    field.setCursorPosition(3);
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.text(), "1010011") << "the rest moved left";
    EXPECT_EQ(field.cursorPosition(), 3);
    EXPECT_EQ(Cells(4), "X1010011") << "stored at once, with X in front";
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.text(), "100011") << "a shorter text is edited as any other";
    EXPECT_EQ(field.cursorPosition(), 2);
    field.setText("10110011");
    field.setCursorPosition(0);
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.text(), "10110011") << "nothing stands before the caret";
    EXPECT_EQ(bench.Host.Beeps, 0);
}

TEST_F(SearchDlg, TheLongPatternOvertypesAsWell) {
    State().Search.SearchMode = 'S';
    State().Search.SearchWord = std::string(64, 'X');
    Open();
    QLineEdit& pattern = Field("Pattern");
    pattern.setCursorPosition(2);
    QTest::keyClicks(&pattern, "01");
    EXPECT_EQ(State().Search.SearchWord.View(), "XX01" + std::string(60, 'X'));
    pattern.setCursorPosition(64);
    QTest::keyClicks(&pattern, "1");
    EXPECT_EQ(pattern.text().size(), 64) << "full, and the caret stands behind it";
}

TEST_F(SearchDlg, TypingStartsInTheFirstField) {
    Open();
    EXPECT_TRUE(Field("Pod4").hasFocus());
    EXPECT_EQ(Field("Pod4").selectedText(), "00000000");
    State().Search.SearchMode = 'S';
    Open();
    EXPECT_TRUE(Field("Pattern").hasFocus());
    QTest::keyClick(&Field("Pattern"), Qt::Key_Return);
    EXPECT_EQ(searches, std::vector<bool>{true}) << "Enter searches";
}

TEST_F(SearchDlg, FieldsTellTheirChannels) {
    CSearchDlg& dialog = Open();
    QStringList captions;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (qobject_cast<QLineEdit*>(label->buddy()) != nullptr) captions << label->text();
    }
    for (const char* text : {"39..32", "7..0"}) EXPECT_TRUE(captions.contains(QString(text))) << text;
}

TEST_F(SearchDlg, TellsWhereTheNextSearchStarts) {
    State().Timing.TimingDataPos = 12;
    CSearchDlg& dialog = Open();
    const auto* place = test::Find<QLabel>(dialog, "Place");
    EXPECT_TRUE(place->text().startsWith("From sample 12 ")) << place->text().toStdString();
    State().Timing.TimingDataPos = 40;
    Click(dialog, "Forward");
    EXPECT_TRUE(place->text().startsWith("From sample 40 ")) << place->text().toStdString();
}

TEST_F(SearchDlg, BasesChangeTheFields) {
    CSearchDlg& dialog = Open();
    Choose(dialog, "Base", 0);
    EXPECT_EQ(State().Search.SearchBase, kSearchHex);
    Field("Pod0").selectAll();
    QTest::keyClicks(&Field("Pod0"), "a5");
    EXPECT_EQ(Cells(0), "A5");
    Choose(dialog, "Base", 2);
    EXPECT_EQ(Field("Pod0").text(), "165");
    EXPECT_EQ(Texts(), std::vector<std::string>{});
}

TEST_F(SearchDlg, AnXKeepsTheBase) {
    CSearchDlg& dialog = Open();
    Choose(dialog, "Fills", 1);
    EXPECT_EQ(Field("Pod2").text(), "XXXXXXXX");
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Fills")->currentIndex(), 0) << "the title row";
    Choose(dialog, "Base", 0);
    EXPECT_EQ(Texts(),
              (std::vector<std::string>{"Search|ERROR: Don't care bits are available in BINARY only."}));
    EXPECT_EQ(State().Search.SearchBase, kSearchBinary);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Base")->currentIndex(), 1);
}

TEST_F(SearchDlg, OpensInBinaryWhereAnXStands) {
    State().Search.SearchWd[0][3] = 'X';
    State().Search.SearchBase = kSearchHex;
    Open();
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Search|Mode set to BINARY."}));
    EXPECT_EQ(Field("Pod4").text(), "000X0000");
}

TEST_F(SearchDlg, TheSerialPatternTakesItsCharactersOnly) {
    State().Search.SearchMode = 'S';
    CSearchDlg& dialog = Open();
    QLineEdit& pattern = Field("Pattern");
    pattern.setFocus();
    pattern.end(false);
    QTest::keyClicks(&pattern, "x2X");
    EXPECT_EQ(State().Search.SearchWord.View(), "10xX");
    EXPECT_EQ(bench.Host.Beeps, 1);
    Choose(dialog, "Channel", 17);
    EXPECT_EQ(State().Search.SearchCh, 17);
    test::Find<QRadioButton>(dialog, "Parallel")->click();
    EXPECT_EQ(State().Search.SearchMode, 'P');
    EXPECT_FALSE(pattern.isEnabled());
    EXPECT_TRUE(Field("Pod0").isEnabled());
}

TEST_F(SearchDlg, ABadChannelIsNoChoice) {
    for (const int channel : {-1, 40, 32767}) {
        State().Search.SearchCh = static_cast<std::int16_t>(channel);
        EXPECT_EQ(test::Find<QComboBox>(Open(), "Channel")->currentIndex(), -1);
        EXPECT_EQ(State().Search.SearchCh, channel) << "looking changes nothing";
    }
}

class StateListSetup : public test::DialogTest {
  protected:
    StateListSetup() {
        for (std::size_t i = 0; i < kGroupCount; ++i) {
            State().StateList.ScreenL[i] = static_cast<std::int8_t>(i);
            State().StateList.ScreenF[i] = 1;
        }
        State().Windows.StateStat = 1;
    }
};

TEST_F(StateListSetup, IsWellMade) {
    CStateListSetup dialog(bench.App, colors);
    Show(dialog);
    test::Snap(dialog, "statelist-setup");
    ExpectWellMade(dialog);
}

TEST_F(StateListSetup, PicksGroupAndFormatOfAColumn) {
    State().StateList.StateDisp = 2;
    CStateListSetup dialog(bench.App, colors);
    Show(dialog);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Column")->currentIndex(), 2);
    Choose(dialog, "Group", 4);
    EXPECT_EQ(State().StateList.ScreenL[2], 4);
    bench.Forget();
    Choose(dialog, "Format", 0);
    EXPECT_EQ(State().StateList.ScreenF[2], 0);
    EXPECT_EQ(State().StateList.ScreenWidth[2], 8) << "the name is longer than two digits";
    EXPECT_EQ(bench.Shell.Count("redraw StateList"), 1);
    Choose(dialog, "Column", 7);
    EXPECT_EQ(State().StateList.StateDisp, 7);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Group")->currentIndex(), 7);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Format")->currentIndex(), 1);
}

TEST_F(StateListSetup, OffersTheFormatsInTheirOrder) {
    CStateListSetup dialog(bench.App, colors);
    auto* formats = test::Find<QComboBox>(dialog, "Format");
    QStringList texts;
    for (int i = 0; i < formats->count(); ++i) texts << formats->itemText(i);
    EXPECT_EQ(texts.join(u'|'), "Hex|Binary|Ascii|Decimal|Translate table");
}

TEST_F(StateListSetup, GroupSetupReloadsTheNames) {
    CStateListSetup dialog(bench.App, colors);
    Show(dialog);
    test::WhenShown<CGroupDef>([this](CGroupDef& groups) {
        Group(0).Name = "Renamed group";
        groups.reject();
    });
    Click(dialog, "GroupSetup");
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Group")->currentText(), "1 - Renamed group");
    EXPECT_EQ(State().StateList.ScreenWidth[0], 14);
}

TEST_F(StateListSetup, BadColumnsGroupsAndFormatsAreNoChoice) {
    State().StateList.StateDisp = 100;
    State().StateList.ScreenL[29] = 77;
    State().StateList.ScreenF[29] = -4;
    CStateListSetup dialog(bench.App, colors);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Column")->currentIndex(), 29);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Group")->currentIndex(), -1);
    EXPECT_EQ(test::Find<QComboBox>(dialog, "Format")->currentIndex(), -1);
    EXPECT_EQ(State().StateList.ScreenL[29], 77) << "looking changes nothing";
}

}  // namespace
}  // namespace zu
