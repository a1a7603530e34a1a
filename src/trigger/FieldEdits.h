#pragma once

#include <string>
#include <string_view>

namespace zu {

/// Base of a text field that holds a value. Any other number counts as ASCII.
enum FieldBase : int { kBaseHex = 0, kBaseBinary = 1, kBaseAscii = 2, kBaseDecimal = 3 };

/// Text of an edit field with its selection; without one both ends stand at the caret.
struct FieldText {
    std::string Text;
    int SelStart = 0;
    int SelEnd = 0;

    friend bool operator==(const FieldText&, const FieldText&) = default;
};

/// What became of a key.
enum class KeyAction {
    Default,   ///< the field's ordinary handling
    Replaced,  ///< text and selection were set by the overtype rules
    Refused,   ///< nothing changed
};
struct KeyResult {
    KeyAction Action = KeyAction::Default;
    bool Beep = false;

    friend bool operator==(const KeyResult&, const KeyResult&) = default;
};

/// Ordinary handling of a typed byte: a printable one takes the selection's place if the text then stays
/// within `limit` bytes, a backspace deletes the selection or the byte before the caret; other control bytes
/// change nothing.
void ApplyDefaultKey(FieldText& field, int limit, char key);

/// A field of trigger cells: takes '0', '1', 'X', 'x' and control bytes and beeps at all others.
class X01Edit {
  public:
    explicit X01Edit(int limit) : limit_(limit) {}

    FieldText Field;
    /// Handles a key; the outcome stands in Field.
    KeyResult Key(char key);

  private:
    int limit_;
};

/// A field of a value in a base that overtypes once it is full.
class BaseEdit {
  public:
    BaseEdit(int base, int limit) : base_(base), limit_(limit) {}

    FieldText Field;
    /// Handles a key; the outcome stands in Field.
    KeyResult Key(char key);

    [[nodiscard]] int Base() const { return base_; }
    [[nodiscard]] int Limit() const { return limit_; }
    void Set(int base, int limit);

  private:
    [[nodiscard]] bool TakesDefault() const;
    KeyResult Overtype(char key);
    KeyResult Backspace();
    KeyResult Default(char key);

    int base_;
    int limit_;
};

/// Whether a field in `base` takes this byte.
bool BaseAccepts(int base, char key);
/// Whether a field in `base` beeps at a byte that it does not take; the others swallow it.
bool BaseBeeps(int base);

}  // namespace zu
