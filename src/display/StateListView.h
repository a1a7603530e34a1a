#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "display/CursorDrag.h"
#include "display/Events.h"
#include "display/Menus.h"
#include "display/StateListPainter.h"
#include "state/InstrumentState.h"

namespace zu {

/// What the Statelist's logic asks of its window.
class StateListHost {
  public:
    virtual ~StateListHost() = default;
    /// Repaints this view.
    virtual void Invalidate() = 0;
    /// Redraws every open view, this one too: cursors or records changed.
    virtual void RefreshAll() = 0;
    /// Redraws the views that follow a scroll: Timing and serial views and the cursor window.
    virtual void RedrawFollowers() = 0;
    virtual void SetPointer(PointerShape shape) = 0;
    /// Shows a menu at a point of the view; id of the entry taken, 0 for none.
    virtual int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) = 0;
    /// Runs the setup of the column that the state names.
    virtual void OpenSetup() = 0;
    /// Lets the user choose a colour, starting from one.
    virtual std::optional<Rgb> ChooseColor(Rgb start) = 0;
};

/// Interaction of the Statelist: events in, changes of the state and requests to the window out.
class StateListView {
  public:
    StateListView(InstrumentState& state, StateListHost& host, const Metrics& metrics);

    /// Paints all of the list; the window applies title and scroll ranges.
    StateListResult Paint(Canvas& canvas);
    void Resize(std::int32_t width, std::int32_t height);

    void MouseDown(const MouseEvent& event);
    void MouseMove(const MouseEvent& event);
    void MouseUp(const MouseEvent& event);
    /// The pointer left the view.
    void MouseLeave();
    /// Ends a drag where it stands.
    void FocusLost();
    void Scroll(const ScrollEvent& event);
    void ClearSelection();

    /// The selected rows as text, or, without a selection, the rows on the screen that have samples.
    [[nodiscard]] std::string CopyText() const;
    /// What is under the pointer, a few lines of text; empty if there is nothing to tell.
    [[nodiscard]] std::string HoverText() const;
    [[nodiscard]] StateListLayout Layout() const;
    [[nodiscard]] bool Dragging() const { return grab_ != Grab::None; }

  private:
    enum class Grab : std::uint8_t { None, Cursor, Rows };

    [[nodiscard]] bool InHeader(std::int32_t y) const { return y < Layout().RowHeight; }
    void MakeActive();
    void PressHeader(const MouseEvent& event);
    void PressRow(const MouseEvent& event);
    bool PlaceHeldCursors(const HeldKeys& held, std::int64_t sample);
    void CursorPopup(const MouseEvent& event);
    void SelectTo(std::int64_t sample);
    void DragTo(const MouseEvent& event);
    void DragRows(std::int32_t y);
    void End();
    void ShowPointer(PointerShape shape);
    [[nodiscard]] PointerShape ShapeAt(std::int32_t y) const;

    InstrumentState& state_;
    StateListHost& host_;
    Metrics metrics_;
    StateListGeom geom_;
    Grab grab_ = Grab::None;
    CursorDrag cursors_;
    std::int32_t startRow_ = 0;
    std::optional<std::int64_t> anchor_;  ///< sample at which the selection began
    std::int32_t pointerY_ = -1;
    PointerShape shape_ = PointerShape::Arrow;
};

}  // namespace zu
