#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "display/EditResult.h"

namespace zu {

/// A message of the edits with its caption. Both captions are in use: with the colon for what was wrong from
/// the start, without it for what stopped an edit on its way.
struct EditMessage {
    std::string_view Text;
    std::string_view Title;
};
inline constexpr std::string_view kErrorBefore = "Error:";
inline constexpr std::string_view kErrorDuring = "Error";

inline EditResult& Tell(EditResult& result, const EditMessage& message) {
    result.Text = message.Text;
    result.Title = message.Title;
    return result;
}
inline EditResult Refuse(const EditMessage& message) {
    EditResult result;
    return Tell(result, message);
}

inline constexpr EditMessage kNothingToMove{"Select line in display list to move.", kErrorBefore};
inline constexpr EditMessage kAtTop{"Selected lines are at top of list", kErrorDuring};
inline constexpr EditMessage kAtBottom{"Selected lines are at bottom of list", kErrorDuring};

/// Selected rows below `rows`, from the top down.
inline std::vector<int> SelectedRows(const Selection& selection, int rows = kLineSlots) {
    std::vector<int> selected;
    for (int row = 0; row < std::min(rows, kLineSlots); ++row) {
        if (selection[static_cast<std::size_t>(row)]) selected.push_back(row);
    }
    return selected;
}

inline void Select(Selection& selection, int row) {
    if (row >= 0 && row < kLineSlots) selection[static_cast<std::size_t>(row)] = true;
}

/// After rows were deleted: rows that still exist stay selected; when none does, the last one is.
inline void KeepSelectionInside(Selection& selection, int rows) {
    std::fill(selection.begin() + std::clamp(rows, 0, kLineSlots), selection.end(), false);
    if (std::none_of(selection.begin(), selection.end(), [](bool on) { return on; })) {
        Select(selection, rows - 1);
    }
}

/// Swaps every selected row of a list with the one above it; `swap` is told both rows.
template <typename Swap>
EditResult MoveSelectedUp(Selection& selection, int rows, Swap swap) {
    const std::vector<int> selected = SelectedRows(selection, rows);
    if (selected.empty()) return Refuse(kNothingToMove);
    if (selected.front() == 0) return Refuse(kAtTop);
    selection.fill(false);
    for (const int row : selected) {
        swap(row, row - 1);
        Select(selection, row - 1);
    }
    return {.Changed = true};
}

/// The same with the one below.
template <typename Swap>
EditResult MoveSelectedDown(Selection& selection, int rows, Swap swap) {
    const std::vector<int> selected = SelectedRows(selection, rows);
    if (selected.empty()) return Refuse(kNothingToMove);
    if (selected.back() == rows - 1) return Refuse(kAtBottom);
    selection.fill(false);
    for (auto row = selected.rbegin(); row != selected.rend(); ++row) {
        swap(*row, *row + 1);
        Select(selection, *row + 1);
    }
    return {.Changed = true};
}

/// A row of a list: number and name.
inline std::string NumberedRow(const char* prefix, int number, std::string_view name) {
    return prefix + std::to_string(number) + " - " + std::string(name);
}

}  // namespace zu
