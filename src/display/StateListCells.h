#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "display/GroupValue.h"
#include "display/StateListLayout.h"
#include "state/InstrumentState.h"

namespace zu {

/// Format names in the order of ScreenF.
inline constexpr std::array<std::string_view, 5> kStateFormats{"Hex", "Binary", "Ascii", "Decimal",
                                                               "Translate table"};

/// Header of the sample column, with the blanks that belong to it.
std::string_view StateListHeader(const InstrumentState& state);
/// Text of the sample column for a sample: its time or its number.
std::string StateListPlace(const InstrumentState& state, std::int64_t sample);
/// Cursor that colours a sample's row, looked for in the order T, B, A, C, D; -1 for none.
int StateListCursor(const InstrumentState& state, std::int64_t sample);

/// The texts of one column, asked for row by row from the top on. A translated label may stand for the rows
/// that follow it, so one of these serves one picture.
class StateColumnTexts {
  public:
    StateColumnTexts(const InstrumentState& state, const StateColumn& column);
    /// Text of the next row, which shows this sample.
    std::string Next(std::int64_t sample);

  private:
    std::string Value(std::int64_t sample);
    std::string Translated(std::uint32_t word);

    const InstrumentState& state_;
    const GroupRecord& group_;
    GroupReader reader_;
    GroupFormat format_;
    bool serial_;
    std::int32_t skip_ = 0;  ///< rows that the last label still stands for
};

/// Rows [first, end) of the columns on the screen as text: a header line, then one line a sample, with tabs
/// between the columns.
std::string StateListText(const InstrumentState& state, const StateListLayout& layout, std::int64_t first,
                          std::int64_t end);

}  // namespace zu
