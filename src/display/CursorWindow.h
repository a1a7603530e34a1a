#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu {

/// What the Cursor window can adjust, in the order of its list.
enum class CursorItem : std::uint8_t { A, B, C, D, T, TimingPosition, StateListPosition, SerialPosition };
inline constexpr int kCursorItems = 8;

/// One step button.
struct CursorStep {
    std::int32_t Samples;
    std::string_view Label;
    std::string_view ToolTip;
};
inline constexpr std::array<CursorStep, 6> kCursorSteps{{
    {1, "1", "Adjust selected item by 1 sample"},
    {10, "10", "Adjust selected item by 10 sample"},
    {100, "100", "Adjust selected item by 100 sample"},
    {1000, "1,000", "Adjust selected item by 1000 sample"},
    {10000, "10,000", "Adjust selected item by 10000 sample"},
    {50000, "50,000", "Adjust selected item by 50000 sample"},
}};
/// Label of a step button: its count, or the time of that many samples.
std::string StepText(const InstrumentState& state, const CursorStep& step);

/// Moves an item by a step, up or down. A cursor stays within 0 and DisplayLen; a view position is not
/// limited.
void StepItem(InstrumentState& state, CursorItem item, std::int32_t samples, bool up);

/// Position of a cursor in samples or time.
std::string CursorText(const InstrumentState& state, int cursor);

/// A difference of two cursors.
struct CursorPair {
    int From;
    int To;
    std::string_view Label;  ///< "A-B: "
};
inline constexpr std::array<CursorPair, 10> kCursorPairs{{
    {0, 1, "A-B: "},
    {0, 2, "A-C: "},
    {0, 3, "A-D: "},
    {0, 4, "A-T: "},
    {1, 2, "B-C: "},
    {1, 3, "B-D: "},
    {1, 4, "B-T: "},
    {2, 3, "C-D: "},
    {2, 4, "C-T: "},
    {3, 4, "D-T: "},
}};
/// Entry of the difference list, in samples or time, with its sign.
std::string DifferenceText(const InstrumentState& state, const CursorPair& pair);

/// Knows whether the lists of the Cursor window show what the state holds.
class CursorListState {
  public:
    /// True if a cursor, the unit or the rate changed since the last call; the lists are then to be rebuilt.
    bool Changed(InstrumentState& state);

  private:
    std::int8_t mode_ = -1;
    double rate_ = -1;
};

}  // namespace zu
