#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "display/Events.h"
#include "display/HitTest.h"
#include "display/Measure.h"
#include "display/Menus.h"
#include "display/TimingPainter.h"
#include "state/InstrumentState.h"

namespace zu {

enum class TimingDialog : std::uint8_t {
    DisplayOptions,  ///< for a point: X, Y, Sample
    TrigWord,        ///< Number = trigger word
    GroupSetup,      ///< Number = group
    ChannelSetup     ///< Number = channel
};

struct DialogRequest {
    TimingDialog Dialog = TimingDialog::DisplayOptions;
    std::int32_t X = 0;  ///< client pixels of the click
    std::int32_t Y = 0;
    std::int32_t Sample = 0;
    std::int32_t Number = 0;
};

/// What the Timing view's logic asks of its window.
class TimingViewHost {
  public:
    virtual ~TimingViewHost() = default;
    /// Repaints this view.
    virtual void Invalidate() = 0;
    /// Redraws every open view, this one too: cursors or records changed.
    virtual void RefreshAll() = 0;
    /// Redraws the views that follow a scroll: pattern editor, Statelist, serial view.
    virtual void RedrawFollowers() = 0;
    virtual void SetPointer(PointerShape shape) = 0;
    virtual void CaptureMouse(bool capture) = 0;
    /// Shows a menu at a point of the view; id of the entry taken, 0 for none.
    virtual int Popup(const MenuSpec& menu, std::int32_t x, std::int32_t y) = 0;
    /// Runs a dialog to its end.
    virtual void OpenDialog(const DialogRequest& request) = 0;
    /// Lets the user choose a colour, starting from one.
    virtual std::optional<Rgb> ChooseColor(Rgb start) = 0;
    virtual void Beep() = 0;
};

/// Commands of menus and keys that the view carries out itself.
enum class TimingCommand : std::uint8_t { ZoomIn, ZoomOut, NextEdge, PreviousEdge, ToggleGrid };

/// Interaction of the Timing view: events in, changes of the state and requests to the window out.
class TimingView {
  public:
    TimingView(InstrumentState& state, TimingViewHost& host, const Metrics& metrics);

    /// Paints all of the view; the window applies title and scroll ranges.
    PaintResult Paint(Canvas& canvas);
    void Resize(std::int32_t width, std::int32_t height);
    /// Samples, rates, pods or the display list changed: measurements are taken anew.
    void DataChanged();

    void MouseDown(const MouseEvent& event);
    void MouseUp(const MouseEvent& event);
    void MouseMove(const MouseEvent& event);
    /// A double click on a name opens its editor.
    void DoubleClick(const MouseEvent& event);
    /// Ends a drag where it stands.
    void FocusLost();
    void Scroll(const ScrollEvent& event);
    void Command(TimingCommand command);
    /// Zoom of the menu's row, through the origin of the state.
    void SelectZoom(std::int32_t zoom);
    /// Zooms one step with the sample at `x` held in place (wheel, pinch).
    void ZoomAt(std::int32_t x, bool in);
    /// Moves the view by this many pixels.
    void PanBy(std::int32_t pixels);
    /// Goes to a sample, putting it in the middle.
    void GoTo(std::int64_t sample);
    /// Goes to what a text such as "12500", "3.2us" or "A+100" names; false if it names nothing.
    bool GoTo(std::string_view text);
    /// Drops a cursor by key at the pointer.
    void PlaceCursor(int cursor);

    /// What is under the pointer, as one line of text; empty if there is nothing to tell.
    [[nodiscard]] std::string HoverText() const;
    [[nodiscard]] std::int64_t VisibleSamples() const;
    [[nodiscard]] TimeAxis Axis() const;
    [[nodiscard]] bool Dragging() const { return drag_.What != Grab::None; }

  private:
    enum class Grab : std::uint8_t { None, Cursor, StripTick, StripBox, Line, Pan };
    struct Drag {
        Grab What = Grab::None;
        int Cursor = -1;
        std::int32_t StartX = 0;
        std::int32_t StartPos = 0;                  ///< TimingDataPos when the box or the view was grabbed
        std::array<std::int32_t, 5> CursorStart{};  ///< positions from which the moved cursors count
        unsigned Moving = 0;                        ///< bit per cursor that moves along
        std::int32_t Line = -1;
        bool Moved = false;
    };

    InstrumentState& state_;
    TimingViewHost& host_;
    Metrics metrics_;
    ViewGeom geom_;
    ColumnLayout layout_;
    PaintScratch scratch_;
    Drag drag_;
    std::int32_t pointerX_ = -1;
    std::int32_t pointerY_ = -1;
};

}  // namespace zu
