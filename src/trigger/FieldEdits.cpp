#include "trigger/FieldEdits.h"

#include <algorithm>

namespace zu {
namespace {

constexpr char kBackspace = '\b';
constexpr std::size_t kFetchedText = 50;  // what the overtype rules look at

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 32;
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsHexDigit(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Puts the ends of the selection inside the text and in order.
void Bound(FieldText& field) {
    const int length = static_cast<int>(field.Text.size());
    field.SelStart = std::clamp(field.SelStart, 0, length);
    field.SelEnd = std::clamp(field.SelEnd, field.SelStart, length);
}

/// Takes a part of the text out; the caret stands where it was.
void Erase(FieldText& field, int from, int to) {
    field.Text.erase(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
    field.SelStart = field.SelEnd = from;
}

void Insert(FieldText& field, char key) {
    field.Text.insert(static_cast<std::size_t>(field.SelStart), 1, key);
    field.SelStart = field.SelEnd = field.SelStart + 1;
}

}  // namespace

void ApplyDefaultKey(FieldText& field, int limit, char key) {
    Bound(field);
    const int selected = field.SelEnd - field.SelStart;
    if (key == kBackspace) {
        if (selected > 0) {
            Erase(field, field.SelStart, field.SelEnd);
        } else if (field.SelStart > 0) {
            Erase(field, field.SelStart - 1, field.SelStart);
        }
        return;
    }
    if (IsControl(key) || static_cast<int>(field.Text.size()) - selected >= limit) return;
    Erase(field, field.SelStart, field.SelEnd);
    Insert(field, key);
}

KeyResult X01Edit::Key(char key) {
    const bool taken = key == '0' || key == '1' || key == 'X' || key == 'x' || IsControl(key);
    if (!taken) return {KeyAction::Refused, true};
    ApplyDefaultKey(Field, limit_, key);
    return {};
}

bool BaseAccepts(int base, char key) {
    if (IsControl(key)) return true;
    const bool dontCare = key == 'x' || key == 'X';
    switch (base) {
        case kBaseHex:
            return IsHexDigit(key) || dontCare;
        case kBaseBinary:
            return key == '0' || key == '1' || dontCare;
        case kBaseDecimal:
            return IsDigit(key);
        default:
            return IsDigit(key) || IsLetter(key);
    }
}

bool BaseBeeps(int base) {
    return base == kBaseBinary || base == kBaseDecimal;
}

void BaseEdit::Set(int base, int limit) {
    base_ = base;
    limit_ = limit;
}

KeyResult BaseEdit::Key(char key) {
    if (!BaseAccepts(base_, key)) return {KeyAction::Refused, BaseBeeps(base_)};
    Bound(Field);
    if (TakesDefault()) return Default(key);
    if (!IsControl(key)) return Overtype(key);
    return key == kBackspace && base_ == kBaseBinary ? Backspace() : Default(key);
}

bool BaseEdit::TakesDefault() const {
    const auto fetched = static_cast<int>(std::min(Field.Text.size(), kFetchedText));
    return fetched < limit_ || Field.SelEnd > Field.SelStart || Field.SelStart >= limit_;
}

KeyResult BaseEdit::Overtype(char key) {
    // A full text reaches to the limit, and the caret stands before it.
    Field.Text[static_cast<std::size_t>(Field.SelStart)] = key;
    Field.SelStart = Field.SelEnd = Field.SelStart + 1;
    return {KeyAction::Replaced, false};
}

// The rest of the text moves over the cell before the caret, and the caret stays where it was.
KeyResult BaseEdit::Backspace() {
    const int caret = Field.SelStart;
    if (caret == 0) return {KeyAction::Replaced, false};
    Erase(Field, caret - 1, caret);
    Field.SelStart = Field.SelEnd = std::min(caret, static_cast<int>(Field.Text.size()));
    return {KeyAction::Replaced, false};
}

KeyResult BaseEdit::Default(char key) {
    ApplyDefaultKey(Field, limit_, key);
    return {};
}

}  // namespace zu
