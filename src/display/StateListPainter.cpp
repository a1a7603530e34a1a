#include "display/StateListPainter.h"

#include <algorithm>

#include "display/SelectionColor.h"
#include "display/StateListCells.h"

namespace zu {
namespace {

constexpr std::size_t kTextColor = 0;
constexpr std::size_t kBackground = 1;

/// One paint of the Statelist.
class StateListPaint {
  public:
    StateListPaint(const InstrumentState& state, const StateListGeom& geom, Canvas& canvas)
        : state_(state),
          geom_(geom),
          canvas_(canvas),
          layout_(LayoutStateList(state, canvas.FontMetrics(), geom.Width, geom.Height)) {}

    StateListResult Run() {
        canvas_.SetFont(FontId::Text);
        canvas_.FillRect({0, 0, geom_.Width + 1, geom_.Height + 1}, state_.Screen.ScreenColor[kBackground]);
        DrawSelection();
        DrawHeader();
        DrawPlaces();
        for (const StateColumn& column : layout_.Shown()) DrawColumn(column);
        return {"Statelist view: ", StateListHorizontalRange(state_), StateListVerticalRange(state_),
                layout_.Rows};
    }

  private:
    [[nodiscard]] std::int64_t First() const { return state_.StateList.StateDataPos; }

    void Out(std::int32_t x, std::int32_t y, std::int32_t width, std::string_view text, Rgb color) {
        text = text.substr(0, static_cast<std::size_t>(width));
        if (text.empty()) return;
        if (!canvas_.Mono()) canvas_.SetTextColor(color);
        canvas_.TextOut(x, y, text);
    }
    [[nodiscard]] Rgb RowColor(std::int64_t sample, Rgb other) const {
        const int cursor = StateListCursor(state_, sample);
        return cursor < 0 ? other : state_.Cursors.CursorColor[static_cast<std::size_t>(cursor)];
    }
    void DrawSelection();
    void DrawHeader();
    void DrawPlaces();
    void DrawColumn(const StateColumn& column);

    const InstrumentState& state_;
    const StateListGeom& geom_;
    Canvas& canvas_;
    StateListLayout layout_;
};

void StateListPaint::DrawSelection() {
    const std::int64_t from = std::max<std::int64_t>(geom_.SelectFirst - First(), 0);
    const std::int64_t to = std::min<std::int64_t>(geom_.SelectEnd - First(), layout_.SampleRows());
    if (from >= to) return;
    canvas_.FillRect({0, layout_.TopOf(static_cast<std::int32_t>(from)), geom_.Width,
                      layout_.TopOf(static_cast<std::int32_t>(to))},
                     SelectionColor(state_));
}

void StateListPaint::DrawHeader() {
    if (layout_.Rows < 1) return;
    Out(0, 0, kStateListLeft, StateListHeader(state_), state_.Screen.ScreenColor[kTextColor]);
    for (const StateColumn& column : layout_.Shown()) {
        const GroupRecord& group = state_.Groups[static_cast<std::size_t>(column.Group)];
        Out(column.Left, 0, column.Width, group.Name.View(), group.Color);
    }
}

void StateListPaint::DrawPlaces() {
    for (std::int32_t row = 0; row < layout_.SampleRows(); ++row) {
        const std::int64_t sample = First() + row;
        Out(0, layout_.TopOf(row), kStateListLeft, StateListPlace(state_, sample),
            RowColor(sample, state_.Screen.ScreenColor[kTextColor]));
    }
}

void StateListPaint::DrawColumn(const StateColumn& column) {
    const Rgb color = state_.Groups[static_cast<std::size_t>(column.Group)].Color;
    StateColumnTexts texts(state_, column);
    for (std::int32_t row = 0; row < layout_.SampleRows(); ++row) {
        const std::int64_t sample = First() + row;
        Out(column.Left, layout_.TopOf(row), column.Width, texts.Next(sample), RowColor(sample, color));
    }
}

}  // namespace

StateListResult PaintStateList(const InstrumentState& state, const StateListGeom& geom, Canvas& canvas) {
    return StateListPaint(state, geom, canvas).Run();
}

}  // namespace zu
