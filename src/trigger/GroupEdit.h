#pragma once

#include <string>
#include <string_view>

#include "state/InstrumentState.h"
#include "trigger/FieldEdits.h"

namespace zu {

/// Cells of a group's channels in a word, most significant channel first; empty for a group outside 0..29.
std::string GroupCells(const InstrumentState& state, int group, int word);

/// Characters that a group's value takes in a base.
int GroupFieldLimit(int base, int size);

/// The text field that shows a group's cells of a trigger word in a chosen base and writes them back. Where
/// the base cannot show them, the field falls back to binary. The field takes effect at each Write; Accept
/// keeps the base for the next use.
class TrigWordEditGroup {
  public:
    /// Opens in the base that the state keeps.
    TrigWordEditGroup(InstrumentState& state, int group, int word);

    [[nodiscard]] const std::string& Text() const { return text_; }
    [[nodiscard]] int Base() const { return base_; }
    [[nodiscard]] int Group() const { return group_; }
    [[nodiscard]] int Word() const { return word_; }
    /// Longest text in the present base.
    [[nodiscard]] int Limit() const;

    void SelectGroup(int group);
    void SelectWord(int word);
    void SelectBase(int base);
    /// Shows the cells anew.
    void Refresh();
    /// Stores a text typed in the present base into the cells and shows them anew.
    void Write(std::string_view text);
    /// The dialog was closed with Ok.
    void Accept();

  private:
    [[nodiscard]] int Size() const;
    void Store(int bit, char cell);
    void StoreBits(int lowest, int count, std::uint32_t value);
    void WriteHex(std::string text);
    void WriteAscii(std::string_view text);
    void WriteDecimal(std::string_view text);
    void WriteBinary(std::string_view text);

    InstrumentState& state_;
    int group_;
    int word_;
    int base_;
    std::string text_;
};

}  // namespace zu
