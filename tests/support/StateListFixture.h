#pragma once

#include <memory>
#include <string>
#include <vector>

#include "display/StateListPainter.h"
#include "display/StateListView.h"
#include "support/TimingFixture.h"

namespace zu::test {

/// A state of 40 channels with 100 samples whose Statelist shows group 0 in column 0 and nothing else,
/// plainly by sample numbers.
inline std::unique_ptr<InstrumentState> MakeListState() {
    auto state = MakeState(13);
    SetLength(*state, 100);
    for (GroupRecord& group : state->Groups) {
        group.Size = 0;
        group.Color = 0x112233;
    }
    for (std::size_t column = 0; column < kGroupCount; ++column) {
        state->StateList.ScreenL[column] = static_cast<std::int8_t>(column);
        state->StateList.ScreenF[column] = 1;
    }
    state->Cursors.Cur = {};
    for (std::size_t cursor = 0; cursor <= kCursorT; ++cursor) state->Cursors.Cur[cursor] = 90;
    state->Cursors.CursorDlgMode = 0;
    return state;
}

/// Makes a group of a run of channels and shows it in the column of its number.
inline void ShowRun(InstrumentState& state, int group, int first, int size, int format,
                    std::string_view name = "G") {
    GroupRecord& record = state.Groups[static_cast<std::size_t>(group)];
    record.Size = size;
    for (int i = 0; i < size; ++i) record.Channels[static_cast<std::size_t>(i)] = first + i;
    record.Name = name;
    state.StateList.ScreenF[static_cast<std::size_t>(group)] = static_cast<std::int8_t>(format);
    ComputeGroupWidths(state);
}

inline constexpr std::int32_t kListRow = 12;  ///< pixels of a row on a small screen

/// Paints a list of `rows` whole rows.
struct PaintedList {
    RecorderCanvas Canvas;
    StateListResult Result;

    /// Texts of a row from left to right; row 0 is the header.
    [[nodiscard]] std::vector<std::string> Row(std::int32_t row) const {
        return Canvas.TextsAt(row * kListRow);
    }
    /// Cells of one column from the first sample on.
    [[nodiscard]] std::vector<std::string> Column(std::int32_t left) const {
        std::vector<std::string> cells;
        for (const auto& op : Canvas.Ops()) {
            const bool cell = op.What == RecorderCanvas::Kind::Text && op.Area.Left == left;
            if (cell && op.Area.Top >= kListRow) cells.push_back(op.String);
        }
        return cells;
    }
};
inline PaintedList PaintList(const InstrumentState& state, std::int32_t rows = 8, std::int32_t width = 600) {
    PaintedList painted{RecorderCanvas(width, rows * kListRow), {}};
    painted.Result = PaintStateList(state, {width, rows * kListRow, 0, 0}, painted.Canvas);
    return painted;
}
inline constexpr std::int32_t kFirstColumn = 14 * 6;  ///< x of the first column

/// A window that writes down what the list's logic asks of it.
class ListHost final : public StateListHost {
  public:
    int Invalidations = 0;
    int Refreshes = 0;
    int Followers = 0;
    int Setups = 0;
    std::vector<PointerShape> Shapes;
    std::vector<MenuSpec> Menus;
    int Choice = 0;  ///< answer to Popup
    std::optional<Rgb> Color;

    void Invalidate() override { ++Invalidations; }
    void RefreshAll() override { ++Refreshes; }
    void RedrawFollowers() override { ++Followers; }
    void SetPointer(PointerShape shape) override { Shapes.push_back(shape); }
    int Popup(const MenuSpec& menu, std::int32_t, std::int32_t) override {
        Menus.push_back(menu);
        return Choice;
    }
    void OpenSetup() override { ++Setups; }
    std::optional<Rgb> ChooseColor(Rgb) override { return Color; }
};

}  // namespace zu::test
