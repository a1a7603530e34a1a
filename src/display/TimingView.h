#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "display/CursorDrag.h"
#include "display/Events.h"
#include "display/HitTest.h"
#include "display/Menus.h"
#include "display/TimingPainter.h"
#include "display/Zoom.h"
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
enum class TimingCommand : std::uint8_t { ZoomIn, ZoomOut, NextEdge, PreviousEdge };

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
    /// A double click on a name opens its editor; elsewhere it is a press.
    void DoubleClick(const MouseEvent& event);
    /// The pointer left the view.
    void MouseLeave();
    /// Ends a drag where it stands.
    void FocusLost();
    void Scroll(const ScrollEvent& event);
    void Command(TimingCommand command);
    /// Zoom of the menu's row, through the origin of the state.
    void SelectZoom(std::int32_t zoom);
    /// Zooms one step with the sample at `x` held in place (wheel, pinch).
    void ZoomAt(std::int32_t x, bool in);
    /// One step of the Display options' Zoom +/-: through an origin, which may be the point.
    void ZoomFrom(bool in, int origin, const ZoomPoint& point);
    /// Moves the view by this many pixels; above 0 towards later samples. Pixels that make no whole sample
    /// count for the next call.
    void PanBy(std::int32_t pixels);
    /// Goes to a sample, putting it in the middle.
    void GoTo(std::int64_t sample);
    /// Goes to what a text such as "12500", "3.2us" or "A+100" names; false if it names nothing.
    bool GoToText(std::string_view text);
    /// Display options: "Cursor to win" and "Cursor to point".
    void CursorToWindow(int cursor);
    void CursorToPoint(int cursor, std::int64_t sample);

    /// What is under the pointer, as one line of text; empty if there is nothing to tell.
    [[nodiscard]] std::string HoverText() const;
    [[nodiscard]] std::int64_t VisibleSamples() const { return Axis().Visible(); }
    [[nodiscard]] TimeAxis Axis() const;
    /// Row under the pointer's last place; nothing where there is none.
    [[nodiscard]] std::optional<LineHit> LineUnderPointer() const;
    /// Row that a menu command works on: the one under the pointer, or, once the pointer went to the menu,
    /// the one that was clicked last.
    [[nodiscard]] std::optional<LineHit> LineForCommand() const;
    [[nodiscard]] bool Dragging() const { return grab_ != Grab::None; }
    /// Walks over samples that measurements took since the start; for tests.
    [[nodiscard]] std::uint64_t Measured() const { return scratch_.Measures.Misses(); }

  private:
    enum class Grab : std::uint8_t { None, Cursor, StripTick, StripBox, Line, Pan };

    [[nodiscard]] ColumnLayout Layout() const;
    [[nodiscard]] StripScale Strip() const;
    [[nodiscard]] bool InStrip(std::int32_t x, std::int32_t y) const;
    [[nodiscard]] bool InData(std::int32_t x, std::int32_t y) const;
    [[nodiscard]] int ColumnUnder(const MouseEvent& event) const;

    void MakeActive();
    bool PlaceHeldCursors(const HeldKeys& held, std::int64_t sample);
    void PressData(const MouseEvent& event);
    void PressStrip(const MouseEvent& event);
    void PressHeader(const MouseEvent& event);
    void PressCells(const MouseEvent& event);
    void PressRight(const MouseEvent& event);
    void CursorPopup(const MouseEvent& event);
    void ZoomStrip(const MouseEvent& event);
    void Zoomed(bool changed);

    void Begin(Grab grab, const MouseEvent& event);
    void End();
    void DragTo(const MouseEvent& event);
    void MoveTo(std::int64_t position);
    void Snap(const MouseEvent& event);
    void DropLine(const MouseEvent& event);
    void ShowPointer(PointerShape shape);
    /// What a row shows at y: its channel or group, or the channel of the lane of an SPI line.
    [[nodiscard]] std::int32_t SourceAt(const LineHit& hit, std::int32_t y) const;
    [[nodiscard]] PointerShape ShapeAt(std::int32_t x, std::int32_t y) const;
    void JumpToEdge(bool forward);

    /// Where the last jump to an edge went: the next one goes on from there, also where the view could not
    /// bring the edge under the pointer.
    struct Jump {
        std::int32_t Source = -1;
        std::int32_t X = 0;
        std::int32_t Position = 0;
        std::int64_t Edge = 0;
    };

    InstrumentState& state_;
    TimingViewHost& host_;
    Metrics metrics_;
    ViewGeom geom_;
    PaintScratch scratch_;
    Grab grab_ = Grab::None;
    MouseButton button_ = MouseButton::None;  ///< that holds what is grabbed
    CursorDrag cursors_;
    std::int32_t startX_ = 0;
    std::int32_t startPosition_ = 0;
    std::int32_t line_ = -1;
    std::int64_t panRest_ = 0;  ///< pixels panned that made no whole sample yet
    bool moved_ = false;
    std::int32_t pointerX_ = -1;
    std::int32_t pointerY_ = -1;
    std::int32_t pressedY_ = -1;
    PointerShape shape_ = PointerShape::Arrow;
    Jump jump_;
};

}  // namespace zu
