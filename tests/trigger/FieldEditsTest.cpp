// Keys in the fields of trigger cells and of values.
#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <random>

#include "trigger/FieldEdits.h"

namespace zu {
namespace {

constexpr KeyResult kDefault{KeyAction::Default, false};
constexpr KeyResult kReplaced{KeyAction::Replaced, false};
constexpr KeyResult kSwallowed{KeyAction::Refused, false};
constexpr KeyResult kBeep{KeyAction::Refused, true};

TEST(X01Edit, TakesCellsAndControlsAndBeepsAtTheRest) {
    for (int c = 0; c < 256; ++c) {
        X01Edit edit(8);
        const auto key = static_cast<char>(c);
        const bool taken = c < 32 || c == '0' || c == '1' || c == 'x' || c == 'X';
        EXPECT_EQ(edit.Key(key), taken ? kDefault : kBeep) << c;
        EXPECT_EQ(edit.Field.Text, taken && c >= 32 ? std::string(1, key) : "") << c;
    }
}

TEST(X01Edit, TheFieldsOwnHandlingFollows) {
    X01Edit edit(3);
    for (const char c : {'1', '0', 'x', '1'}) edit.Key(c);
    EXPECT_EQ(edit.Field, (FieldText{"10x", 3, 3})) << "a full field takes no more";
    edit.Field.SelStart = 0;
    edit.Field.SelEnd = 2;
    edit.Key('X');
    EXPECT_EQ(edit.Field, (FieldText{"Xx", 1, 1})) << "a selection is replaced";
    edit.Key('\b');
    EXPECT_EQ(edit.Field, (FieldText{"x", 0, 0}));
    edit.Key('\b');
    EXPECT_EQ(edit.Field, (FieldText{"x", 0, 0}));
    edit.Field.SelEnd = 1;
    edit.Key('\b');
    EXPECT_EQ(edit.Field, (FieldText{"", 0, 0}));
}

bool IsTaken(int base, int c) {
    const bool digit = c >= '0' && c <= '9';
    const bool alnum = c < 128 && std::isalnum(c) != 0;
    if (c < 32) return true;
    if (base == 0) return c < 128 && (std::isxdigit(c) != 0 || c == 'x' || c == 'X');
    if (base == 1) return c == 'x' || c == 'X' || c == '1' || c == '0';
    return base == 3 ? digit : alnum;
}

TEST(BaseEdit, TakesTheCharactersOfItsBase) {
    for (const int base : {0, 1, 2, 3, 4, -1}) {
        for (int c = 0; c < 256; ++c) {
            BaseEdit edit(base, 4);
            const KeyResult refused = base == 1 || base == 3 ? kBeep : kSwallowed;
            EXPECT_EQ(edit.Key(static_cast<char>(c)), IsTaken(base, c) ? kDefault : refused)
                << base << " " << c;
            EXPECT_EQ(edit.Field.Text.size(), IsTaken(base, c) && c >= 32 ? 1U : 0U);
        }
    }
}

BaseEdit Full(int base, const char* text, int caret) {
    BaseEdit edit(base, static_cast<int>(std::string(text).size()));
    edit.Field = {text, caret, caret};
    return edit;
}

TEST(BaseEdit, AFullFieldOverwritesInPlace) {
    BaseEdit edit = Full(kBaseBinary, "0000", 1);
    EXPECT_EQ(edit.Key('1'), kReplaced);
    EXPECT_EQ(edit.Field, (FieldText{"0100", 2, 2}));
    EXPECT_EQ(edit.Key('x'), kReplaced);
    EXPECT_EQ(edit.Key('1'), kReplaced);
    EXPECT_EQ(edit.Field, (FieldText{"01x1", 4, 4}));
    EXPECT_EQ(edit.Key('1'), kDefault) << "the caret stands at the limit";
    EXPECT_EQ(edit.Field.Text, "01x1");
}

TEST(BaseEdit, EveryBaseOverwrites) {
    BaseEdit hex = Full(kBaseHex, "00", 0);
    EXPECT_EQ(hex.Key('f'), kReplaced);
    EXPECT_EQ(hex.Field.Text, "f0");
    BaseEdit ascii = Full(kBaseAscii, "ab", 1);
    EXPECT_EQ(ascii.Key('Z'), kReplaced);
    EXPECT_EQ(ascii.Field.Text, "aZ");
    BaseEdit decimal = Full(kBaseDecimal, "12", 1);
    EXPECT_EQ(decimal.Key('9'), kReplaced);
    EXPECT_EQ(decimal.Field.Text, "19");
    EXPECT_EQ(decimal.Key('a'), kBeep);
}

TEST(BaseEdit, AShorterTextOrASelectionIsHandledByTheField) {
    BaseEdit edit(kBaseBinary, 4);
    edit.Field = {"101", 1, 1};
    EXPECT_EQ(edit.Key('0'), kDefault);
    EXPECT_EQ(edit.Field, (FieldText{"1001", 2, 2}));
    edit.Field = {"1001", 1, 3};
    EXPECT_EQ(edit.Key('X'), kDefault);
    EXPECT_EQ(edit.Field, (FieldText{"1X1", 2, 2}));
}

TEST(BaseEdit, ABackspaceInAFullBinaryFieldPullsTheTailLeft) {
    BaseEdit edit = Full(kBaseBinary, "10X1", 2);
    EXPECT_EQ(edit.Key('\b'), kReplaced);
    EXPECT_EQ(edit.Field, (FieldText{"1X1", 2, 2})) << "the last cell is empty, the caret stays";
    EXPECT_EQ(edit.Key('\b'), kDefault) << "the field is not full any more";
    EXPECT_EQ(edit.Field, (FieldText{"11", 1, 1}));
}

TEST(BaseEdit, ABackspaceBeforeTheFirstCellDoesNothing) {
    BaseEdit edit = Full(kBaseBinary, "1010", 0);
    EXPECT_EQ(edit.Key('\b'), kReplaced);
    EXPECT_EQ(edit.Field, (FieldText{"1010", 0, 0}));
}

TEST(BaseEdit, ControlsInAFullFieldTakeTheOrdinaryWay) {
    BaseEdit hex = Full(kBaseHex, "12", 1);
    EXPECT_EQ(hex.Key('\b'), kDefault);
    EXPECT_EQ(hex.Field, (FieldText{"2", 0, 0}));
    BaseEdit binary = Full(kBaseBinary, "10", 1);
    EXPECT_EQ(binary.Key('\x03'), kDefault);
    EXPECT_EQ(binary.Field, (FieldText{"10", 1, 1})) << "nothing is typed";
    BaseEdit atEnd = Full(kBaseBinary, "10", 2);
    EXPECT_EQ(atEnd.Key('\b'), kDefault);
    EXPECT_EQ(atEnd.Field, (FieldText{"1", 1, 1}));
}

TEST(BaseEdit, FieldsLongerThanTheFetchedTextNeverOverwrite) {
    BaseEdit edit = Full(kBaseBinary, std::string(60, '0').c_str(), 3);
    EXPECT_EQ(edit.Key('1'), kDefault);
    EXPECT_EQ(edit.Field.Text, std::string(60, '0'));
    BaseEdit fifty = Full(kBaseBinary, std::string(50, '0').c_str(), 3);
    EXPECT_EQ(fifty.Key('1'), kReplaced);
}

TEST(BaseEdit, StaysWithinItsTextAndLimitWhateverIsTyped) {
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        const int limit = static_cast<int>(random() % 60) - 2;
        BaseEdit edit(static_cast<int>(random() % 6) - 1, limit);
        edit.Field.Text.assign(random() % 64, '0');
        const std::size_t longest =
            std::max(edit.Field.Text.size(), static_cast<std::size_t>(std::max(limit, 0)));
        for (int typed = 0; typed < 30; ++typed) {
            if (random() % 4 == 0) {
                edit.Field.SelStart = static_cast<int>(random() % 80) - 8;
                edit.Field.SelEnd = edit.Field.SelStart + static_cast<int>(random() % 9) - 4;
            }
            edit.Key(random() % 3 == 0 ? '\b' : static_cast<char>(random()));
            ASSERT_LE(edit.Field.Text.size(), longest);
            for (const char c : edit.Field.Text) ASSERT_TRUE(BaseAccepts(edit.Base(), c) && (c & 0x60) != 0);
        }
    }
}

TEST(BaseEdit, ACaretOutsideTheTextIsPutAtItsEnd) {
    BaseEdit edit(kBaseBinary, 8);
    edit.Field = {"101", 99, -5};
    EXPECT_EQ(edit.Key('1'), kDefault);
    EXPECT_EQ(edit.Field, (FieldText{"1011", 4, 4}));
    edit.Set(kBaseDecimal, 2);
    EXPECT_EQ(edit.Base(), kBaseDecimal);
    EXPECT_EQ(edit.Limit(), 2);
    edit.Field = {"10", -7, 0};
    EXPECT_EQ(edit.Key('9'), kReplaced);
    EXPECT_EQ(edit.Field, (FieldText{"90", 1, 1}));
}

}  // namespace
}  // namespace zu
