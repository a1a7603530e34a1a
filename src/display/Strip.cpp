#include "display/Strip.h"

#include "display/ChannelTrace.h"

namespace zu {
namespace {

constexpr std::size_t kGridColor = 2;
constexpr std::string_view kNoHardware = "Demo Mode (Logic Analyzer hardware not found)";

void DrawBox(Canvas& canvas, const StripBox& box) {
    canvas.MoveTo(box.Left, box.Bottom);
    canvas.LineTo(box.Left, box.Top);
    canvas.LineTo(box.Right, box.Top);
    canvas.LineTo(box.Right, box.Bottom);
    canvas.LineTo(box.Left, box.Bottom);
}

}  // namespace

void DrawStrip(const InstrumentState& state, Canvas& canvas, const StripScale& strip) {
    if (strip.Width <= 0) return;
    const std::int32_t height = StripHeight(canvas.FontMetrics());
    canvas.SetPen(PenColor(canvas, state.Screen.ScreenColor[kGridColor]));
    canvas.MoveTo(strip.Left, height / 2);
    canvas.LineTo(strip.Left + strip.Width, height / 2);
    DrawBox(canvas, BoxOf(state, strip, height));
    if (state.Identity.Emulated != 0) {
        canvas.SetTextColor(PenColor(canvas, state.Screen.ScreenColor[0]));
        canvas.TextOut(strip.Left, 0, kNoHardware);
    }
    for (std::size_t cursor = 0; cursor <= kCursorT; ++cursor) {
        const std::int32_t x = strip.XOf(state.Cursors.Cur[cursor]);
        canvas.SetPen(PenColor(canvas, state.Cursors.CursorColor[cursor]));
        canvas.MoveTo(x, height * 7 / 10);
        canvas.LineTo(x, height * 3 / 10);
    }
}

}  // namespace zu
