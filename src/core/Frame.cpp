#include "core/Frame.h"

#include <algorithm>

#include "core/Paths.h"
#include "core/Preferences.h"

namespace zu {
namespace {

constexpr std::int32_t kSmallestScreen = 100;
constexpr std::int32_t kLargestScreen = 30000;
constexpr std::int32_t kMainMargin = 40;
constexpr std::int32_t kMainMinimum = 100;
constexpr int kFirstMoves = 2;  // the frame's own creation and the toolbar's

bool Believable(std::int32_t pixels) {
    return pixels >= kSmallestScreen && pixels <= kLargestScreen;
}

void FixSeries(App& app) {
    IdentityRecord& identity = app.State.Identity;
    const std::uint8_t series = identity.ModelSeries;
    identity.ModelSeries = 0;  // the version question is always asked in the first series' name
    identity.DllVersion = GetDLLVersion(identity.DllName, identity.DllText);
    identity.ModelSeries = series;
}

void PlaceMainWindow(InstrumentState& state) {
    const WindowRect whole{0, 0, state.Screen.ScreenW - kMainMargin, state.Screen.ScreenH - kMainMargin};
    state.Windows.MainRect =
        SanitiseRect(ReadMainRect(state, whole), kMainMinimum, kMainMinimum, state.Screen);
}

void PlaceChildren(InstrumentState& state) {
    const std::int32_t right = state.Screen.ScreenW;
    const std::int32_t bottom = state.Screen.ScreenH;
    state.Windows.StateRect = {212, 400, right, 398};  // the bottom above the top is mended when it opens
    state.Windows.TimingRect = {100, 1, right, bottom};
    state.Windows.SerialRect = {212, 100, 400, bottom};
    state.Windows.SpiRect = {212, 100, 400, bottom};
}

}  // namespace

ScreenRecord MeasureScreen(const ScreenFacts& facts, ScreenRecord screen) {
    screen.ScreenW = facts.VirtualWidth;
    screen.ScreenH = std::min(facts.VirtualHeight, facts.WorkBottom);
    if (!Believable(screen.ScreenW) || !Believable(screen.ScreenH)) {
        screen.ScreenW = facts.DeviceWidth;
        screen.ScreenH = facts.DeviceHeight;
    }
    return screen;
}

WindowRect SanitiseRect(WindowRect rect, std::int32_t minWidth, std::int32_t minHeight,
                        const ScreenRecord& screen) {
    const auto atLeast = [](std::int32_t edge, std::int32_t start, std::int32_t size) {
        const std::int64_t lowest = std::int64_t{start} + size;
        return static_cast<std::int32_t>(
            std::clamp<std::int64_t>(std::max<std::int64_t>(edge, lowest), INT32_MIN, INT32_MAX));
    };
    rect.Left = std::max(rect.Left, 0);
    rect.Right = atLeast(rect.Right, rect.Left, minWidth);
    rect.Top = std::max(rect.Top, 0);
    rect.Bottom = atLeast(rect.Bottom, rect.Top, minHeight);
    if (rect.Bottom < rect.Top) rect.Top = 0;
    if (rect.Top > screen.ScreenH) rect.Top = 0;
    rect.Bottom = std::min(rect.Bottom, screen.ScreenH);
    if (rect.Right < rect.Left) rect.Left = 0;
    if (rect.Left > screen.ScreenW) rect.Left = 0;
    rect.Right = std::min(rect.Right, screen.ScreenW);
    return rect;
}

void CreateFrame(App& app) {
    InstrumentState& state = app.State;
    state.Screen = MeasureScreen(app.Shell.Screen(), state.Screen);
    FixSeries(app);
    BuildFileNames(state);
    PlaceMainWindow(state);
    PlaceChildren(state);
    app.MainMovesToIgnore = kFirstMoves;
    if (!app.Platform.MessageQueueGrows) {
        app.Host.Message("SetMessageQueue failed to increase to 120", "");
    }
}

}  // namespace zu
