#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "display/Events.h"
#include "display/Menus.h"
#include "display/SerialGrid.h"
#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

/// What the logic of a list of decoded traffic asks of its window.
class SerialViewHost {
  public:
    virtual ~SerialViewHost() = default;
    /// Repaints this view.
    virtual void Invalidate() = 0;
    /// Redraws every open view, this one too: cursors or records changed.
    virtual void RefreshAll() = 0;
    /// Redraws the views that follow: Timing, Statelist, the other list and the cursor window.
    virtual void RedrawFollowers() = 0;
    /// Puts a sample at the centre of the Timing view's data width.
    virtual void CenterTiming(std::int32_t sample) = 0;
    /// Shows a menu at a point of the view; id of the entry taken, 0 for none.
    virtual int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) = 0;
    /// Runs the setup of the Statelist.
    virtual void OpenSetup() = 0;
    /// Runs the Group setup.
    virtual void OpenGroupSetup() = 0;
};

/// Interaction that the two lists of decoded traffic share: events in, changes of the state and requests to
/// the window out. All pixels are those of the list, with the header at 0.
class SerialListView {
  public:
    SerialListView(const SerialListView&) = delete;
    SerialListView& operator=(const SerialListView&) = delete;
    virtual ~SerialListView() = default;

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

    /// The selected rows as text, or, without a selection, the rows on the screen.
    [[nodiscard]] std::string CopyText() const;
    /// What is under the pointer, a few lines of text; empty if there is nothing to tell.
    [[nodiscard]] std::string HoverText() const;
    [[nodiscard]] bool Dragging() const { return selecting_; }
    /// Range and place of the vertical scroll bar; the list has no other.
    [[nodiscard]] ScrollRange Range() const { return Bar().RangeAt(Start()); }

  protected:
    SerialListView(InstrumentState& state, SerialViewHost& window, Host& host, const Metrics& metrics);

    /// Field that holds the first sample on show.
    virtual std::int32_t& Position() = 0;
    /// Sample from which on rows are listed.
    [[nodiscard]] virtual std::int32_t Start() const = 0;
    /// First row at or behind a sample; nothing if there is none.
    [[nodiscard]] virtual std::optional<std::int32_t> RowFrom(std::int32_t sample) const = 0;
    /// Last row at or before a sample that the list can begin with; nothing if there is none.
    [[nodiscard]] virtual std::optional<std::int32_t> StartBack(std::int32_t sample) const = 0;
    /// Sample of the row at y as a click finds it.
    [[nodiscard]] virtual std::optional<std::int32_t> ClickedSample(std::int32_t y) const = 0;
    [[nodiscard]] virtual SampleBar Bar() const = 0;
    [[nodiscard]] virtual SerialGrid Grid() const = 0;
    /// Cells of the header and of a row, with tabs between them.
    [[nodiscard]] virtual std::string HeaderCells() const = 0;
    [[nodiscard]] virtual std::string RowCells(std::int32_t sample) const = 0;
    /// What the hover tells of a row beyond its place; empty for nothing.
    [[nodiscard]] virtual std::string RowHint(std::int32_t sample) const = 0;

    InstrumentState& state_;
    SerialViewHost& window_;
    Host& host_;
    Metrics metrics_;
    SerialGeom geom_;

  private:
    void PressHeader();
    void PressRow(const MouseEvent& event);
    bool PlaceHeldCursors(const HeldKeys& held, std::int32_t sample);
    void ShowElsewhere(std::int32_t sample);
    void PointPopup(const MouseEvent& event);
    void SelectTo(std::int32_t sample);
    void DragRows(std::int32_t y);
    /// Samples of the rows that are on the screen as a whole.
    [[nodiscard]] std::vector<std::int32_t> WholeRows() const;
    [[nodiscard]] std::optional<std::int32_t> DrawnSample(std::int32_t y) const;
    [[nodiscard]] std::int32_t Forward(std::int32_t rows) const;
    [[nodiscard]] std::int32_t Back(std::int32_t from, std::int32_t rows) const;
    [[nodiscard]] std::int64_t Target(const ScrollEvent& event) const;

    bool selecting_ = false;
    std::optional<std::int32_t> anchor_;  ///< sample at which the selection began
    std::int32_t pointerY_ = -1;
};

}  // namespace zu
