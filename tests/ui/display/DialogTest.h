#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QListWidget>

#include "ui/display/DialogBench.h"

namespace zu::test {

/// A program with 40 channels in which no window is open but the ones that note what is asked of them.
class DialogTest : public testing::Test {
  protected:
    DialogTest() {
        constexpr int kRow40 = 11;
        InstrumentState& state = State();
        ChangeModel(state, kRow40);
        ResetChannelNames(state);
        ResetChannelColors(state);
        state.Windows.TimingStat = 1;
    }

    InstrumentState& State() { return *bench.State; }
    GroupRecord& Group(int number) { return State().Groups.at(static_cast<std::size_t>(number)); }
    void Show(QWidget& dialog) {
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        QApplication::processEvents();
    }
    static void Click(QWidget& dialog, const char* name) {
        QTest::mouseClick(Find<QWidget>(dialog, name), Qt::LeftButton);
    }
    /// Clicks a row of a list; with Ctrl it joins the selection.
    static void ClickRow(QWidget& dialog, const char* list, int row, Qt::KeyboardModifiers keys = {}) {
        auto* rows = Find<QListWidget>(dialog, list);
        rows->scrollToItem(rows->item(row));
        QTest::mouseClick(rows->viewport(), Qt::LeftButton, keys,
                          rows->visualItemRect(rows->item(row)).center());
    }
    static std::vector<int> SelectedRows(QWidget& dialog, const char* list) {
        std::vector<int> selected;
        auto* rows = Find<QListWidget>(dialog, list);
        for (int row = 0; row < rows->count(); ++row) {
            if (rows->item(row)->isSelected()) selected.push_back(row);
        }
        return selected;
    }
    static std::string RowText(QWidget& dialog, const char* list, int row) {
        return Find<QListWidget>(dialog, list)->item(row)->text().toStdString();
    }
    /// Takes an entry of a box by its list.
    static void Choose(QWidget& dialog, const char* box, int index) {
        auto* choice = Find<QComboBox>(dialog, box);
        choice->setFocus();
        choice->showPopup();
        QApplication::processEvents();
        QAbstractItemView* view = choice->view();
        view->setCurrentIndex(choice->model()->index(index, 0));
        QTest::keyClick(view, Qt::Key_Return);
        QApplication::processEvents();
    }
    /// Text of a button or box without its mnemonic and without the dots of what opens a dialog.
    static std::string Label(QWidget& dialog, const char* name) {
        QString text = Find<QAbstractButton>(dialog, name)->text().remove(u'&');
        if (text.endsWith(QStringLiteral("..."))) text.chop(3);
        return text.toStdString();
    }
    static void ExpectWellMade(QWidget& dialog) {
        const std::vector<QChar> letters = Mnemonics(dialog);
        const auto twice = std::adjacent_find(letters.begin(), letters.end());
        EXPECT_EQ(twice, letters.end()) << "Alt+" << QString(*twice).toStdString() << " twice";
        EXPECT_EQ(ClippedWhenSmall(dialog), std::vector<std::string>{});
    }
    [[nodiscard]] std::vector<std::string> Texts() const { return bench.Texts(); }

    Bench bench;
    ScriptedColors colors;
};

}  // namespace zu::test
