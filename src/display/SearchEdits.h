#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "state/InstrumentState.h"

namespace zu {

/// Values of SearchBase. 2 and 3 are both decimal; any other number counts as binary.
enum SearchBase : std::int8_t { kSearchHex = 0, kSearchBinary = 1, kSearchDecimal = 2, kSearchDecimal2 = 3 };
int SearchBaseOf(const InstrumentState& state);

/// Rows of the parallel word: one a board of the model.
int SearchRows(const InstrumentState& state);
/// "Ch %d .. %d" with the first and last channel of a row.
std::string SearchRowText(const InstrumentState& state, int row);
/// Row on show, within the model's rows.
int ShownSearchRow(const InstrumentState& state);
/// Pods of a row, by the numbers of their buffers, the highest first; those for which the word has no place
/// are left out.
std::vector<int> SearchPods(const InstrumentState& state, int row);

/// Characters that a pod's field takes: two, eight or four.
int SearchFieldLimit(int base);
/// Whether a pod's field takes this byte; the others beep.
bool SearchFieldTakes(int base, char key);
/// Cells of a pod in the base on show.
std::string SearchFieldText(const InstrumentState& state, int pod);
/// Stores what is typed: binary as it stands with "X" in front, numbers as eight bits.
void WriteSearchField(InstrumentState& state, int pod, std::string_view text);

/// Whether any channel of the word is "X".
bool SearchHoldsDontCare(const InstrumentState& state);

inline constexpr std::string_view kDontCareInBinary = "ERROR: Don't care bits are available in BINARY only.";
inline constexpr std::string_view kModeSetToBinary = "Mode set to BINARY.";

/// The parallel word as the dialog works on it, from its opening to its end.
class SearchWordEdit {
  public:
    explicit SearchWordEdit(InstrumentState& state) : state_(state) {}

    /// Makes sure that the base can show the word; message to show, or nothing.
    std::string_view Open();
    /// Changes the base unless an "X" forbids it; message to show, or nothing.
    std::string_view SelectBase(int base);
    /// Carries out an entry of the list of fills; message to show, or nothing.
    std::string_view Fill(int entry);

  private:
    std::string_view FallBack();

    InstrumentState& state_;
    bool told_ = false;
};

/// Where a search sets out: the active view and the first sample that it shows.
std::string SearchPlaceText(const InstrumentState& state);

/// Entries of the list "Set all bits": a title that does nothing, three fills, the sixteen trigger words.
std::vector<std::string> SearchFillTexts(const InstrumentState& state);

}  // namespace zu
