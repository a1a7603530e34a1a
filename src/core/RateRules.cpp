#include "core/RateRules.h"

#include <algorithm>
#include <array>
#include <span>

#include "core/Capture.h"
#include "core/MemoryLayout.h"
#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kSeriesPerch = 5;
constexpr int kCode100MHz = 5;
constexpr std::uint8_t kOffered = 1;
constexpr std::uint8_t kNotOffered = 255;

constexpr std::string_view kError = "ERROR:";
constexpr std::string_view kNote = "Note:";
constexpr std::string_view kPatternRate =
    "Max sample rate when in pattern generator mode is 100 MHz. Rate has been set to 100MHz";
constexpr std::string_view kPatternMemory =
    "Current memory mode is not available in pattern generator mode. Memory mode has been reset.";
constexpr std::string_view kRateMemory =
    "Current memory mode is not available with this sample rate. Memory mode has been reset.";
constexpr std::string_view kExternalMemory =
    "Current memory mode is not available with an external clock. Memory mode has been reset.";

enum class RateGroup : std::uint8_t { None, A, B, C, D, E };
enum class RateRule : std::uint8_t { None, HalfAndQuarter, Half, Central, Doubled, Quadrupled, Perch };

/// What the rates mean on a row.
struct RateRow {
    RateGroup Group;
    RateRule Rule;
};
constexpr std::array<RateRow, kModelRows> kRateRows{{
    {RateGroup::A, RateRule::HalfAndQuarter},  // 0
    {RateGroup::B, RateRule::Half},            // 1
    {RateGroup::B, RateRule::Half},            // 2
    {RateGroup::A, RateRule::HalfAndQuarter},  // 3
    {RateGroup::A, RateRule::HalfAndQuarter},  // 4
    {RateGroup::A, RateRule::HalfAndQuarter},  // 5
    {RateGroup::B, RateRule::Half},            // 6
    {RateGroup::B, RateRule::Half},            // 7
    {RateGroup::A, RateRule::HalfAndQuarter},  // 8
    {RateGroup::A, RateRule::HalfAndQuarter},  // 9
    {RateGroup::A, RateRule::HalfAndQuarter},  // 10
    {RateGroup::B, RateRule::Half},            // 11
    {RateGroup::B, RateRule::Half},            // 12
    {RateGroup::A, RateRule::Central},         // 13
    {RateGroup::A, RateRule::Central},         // 14
    {RateGroup::A, RateRule::Central},         // 15
    {RateGroup::C, RateRule::None},            // 16
    {RateGroup::C, RateRule::None},            // 17
    {RateGroup::A, RateRule::Doubled},         // 18
    {RateGroup::D, RateRule::Quadrupled},      // 19
    {RateGroup::A, RateRule::None},            // 20
    {RateGroup::A, RateRule::None},            // 21
    {RateGroup::A, RateRule::None},            // 22
    {RateGroup::A, RateRule::None},            // 23
    {RateGroup::A, RateRule::None},            // 24
    {RateGroup::B, RateRule::None},            // 25
    {RateGroup::B, RateRule::None},            // 26
    {RateGroup::E, RateRule::Perch},           // 27
}};

constexpr std::array kMissingA{0, 2, 4, 13, 15, 17, 19, 21};
constexpr std::array kMissingB{0, 1, 2, 3, 13, 15, 17, 19, 21};
constexpr std::array kMissingC{0, 1, 2, 3, 4, 13, 15, 17, 19, 21, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34};
constexpr std::array kMissingD{2, 4, 13, 15, 17, 19, 21};
constexpr std::array kMissingE{0, 1, 3, 13, 15, 17, 19, 21};

/// Codes that the open menu greys, and where a current one goes.
struct MenuLimit {
    std::array<int, 3> Codes;  ///< -1 = none
    int Instead;
};
constexpr MenuLimit kNoLimit{{-1, -1, -1}, -1};
constexpr MenuLimit kNo200{{4, -1, -1}, 3};
constexpr MenuLimit kNo500And250{{1, 3, -1}, 4};
constexpr MenuLimit kAtMost100{{1, 3, 4}, 5};

const RateRow& RateRowOf(int row) {
    static constexpr RateRow kNone{RateGroup::None, RateRule::None};
    return row >= 0 && row < kModelRows ? kRateRows[static_cast<std::size_t>(row)] : kNone;
}

std::span<const int> Missing(RateGroup group) {
    switch (group) {
        case RateGroup::A:
            return kMissingA;
        case RateGroup::B:
            return kMissingB;
        case RateGroup::C:
            return kMissingC;
        case RateGroup::D:
            return kMissingD;
        case RateGroup::E:
            return kMissingE;
        case RateGroup::None:
            break;
    }
    return {};
}

const MenuLimit& LimitOf(int row) {
    switch (RateRowOf(row).Rule) {
        case RateRule::HalfAndQuarter:
        case RateRule::Central:
            return kNo200;
        case RateRule::Half:
            return kNo500And250;
        default:
            return row == 16 || row == 17 ? kAtMost100 : kNoLimit;
    }
}

int Mode(const App& app) {
    return app.State.Memory.HardwareMode;
}

/// The deep modes end where the top rate begins or ends.
void LeaveDeepMode(App& app, int mux) {
    int mode = Mode(app);
    if (mode == 3 || mode == 2) {
        app.Host.Message(kRateMemory, kError);
        mode = mode == 3 ? 1 : 0;
    }
    SetMemoryMode(app, mux, mode);
}

void RuleHalfAndQuarter(App& app, int newCode, int oldCode) {
    if (newCode == 3) {
        SetMemoryMode(app, 1, Mode(app));
    } else if (newCode == 1) {
        SetMemoryMode(app, 2, Mode(app));
    } else if (oldCode == 3 || oldCode == 1) {
        SetMemoryMode(app, 0, Mode(app));
    }
}

void RuleHalf(App& app, int newCode, int oldCode) {
    if (newCode == 4) {
        SetMemoryMode(app, 1, Mode(app));
    } else if (oldCode == 4) {
        SetMemoryMode(app, 0, Mode(app));
    }
}

void RuleCentral(App& app, int newCode, int oldCode) {
    const bool internal = app.State.Clock.ClockType == 0;
    if (internal && newCode == 1) {
        LeaveDeepMode(app, 1);
    } else if (internal && oldCode == 1) {
        LeaveDeepMode(app, 0);
    } else if (internal && newCode < 3) {
        return;
    } else {
        SetMemoryMode(app, -1, Mode(app));
    }
}

void RuleDoubled(App& app, int newCode) {
    if (newCode != 1) return;
    if (Mode(app) == 0) {
        SetMemoryMode(app, -1, 4);
    } else if (Mode(app) == 1) {
        SetMemoryMode(app, -1, 5);
    }
}

void RuleQuadrupled(App& app, int newCode) {
    if (newCode != 0) return RuleDoubled(app, newCode);
    const int mode = Mode(app);
    if (mode == 0 || mode == 4) {
        SetMemoryMode(app, -1, 6);
    } else if (mode == 1 || mode == 5) {
        SetMemoryMode(app, -1, 7);
    }
}

/// Programs the clock, and settles the memory again should that have changed it.
void ProgramClock(App& app, int code) {
    const MemoryRecord before = app.State.Memory;
    app.State.Clock.ClockRate = static_cast<std::uint8_t>(code);
    SetClock(app.Hardware, app.State);
    const MemoryRecord& after = app.State.Memory;
    if (after.HardwareMode != before.HardwareMode || after.HardwareMux != before.HardwareMux) {
        SetMemoryMode(app, after.HardwareMux, after.HardwareMode);
    }
}

void StepRate(App& app, int step) {
    const ClockRecord& clock = app.State.Clock;
    if (clock.ClockType != 0) return;
    // A file may hold a code beyond the table; the way up from there begins at the last one.
    const int from = std::min<int>(clock.ClockRate, kRateCodes);
    for (int code = from + step; code >= 0 && code < kRateCodes; code += step) {
        if (clock.RateAvail[static_cast<std::size_t>(code)] < kNotOffered) return SetRate(app, code);
    }
}

bool IsTwoEdge(int type) {
    return type == 13 || type == 14;
}

void DropTrigOut(App& app, int type) {
    InstrumentState& state = app.State;
    if (state.Identity.ModelSeries != kSeriesPerch || state.Trigger.TrigOut == 0 || !IsTwoEdge(type)) return;
    state.Trigger.TrigOut = 0;
    app.Host.Message("Trigger output disabled", kNote);
}

/// What both kinds of clock change end with.
void SettleClock(App& app) {
    SetMemoryMode(app, -1, Mode(app));
    app.Shell.UpdateBars();
    RefreshAll(app);
}

}  // namespace

void SetRate(App& app, int code) {
    if (code < 0 || code >= kRateCodes) return;
    CapturePause pause(app);
    app.State.Clock.ClockChanged = 1;
    code = CheckPatternGeneratorRate(app, code);
    app.State.Clock.ClockType = 0;
    RateChangeRule(app, code);
    ProgramClock(app, code);
    app.Shell.UpdateBars();
    RefreshAll(app);
    pause.Resume();
    if (app.State.Capture.CaptureState == 0) Stop(app);
}

void SetClockType(App& app, int type) {
    CapturePause pause(app);
    DropTrigOut(app, type);
    RateChangeRule(app, app.State.Clock.ClockRate);
    app.State.Clock.ClockType = static_cast<std::uint8_t>(type);
    if (Mode(app) == 3) {
        app.Host.Message(kExternalMemory, kError);
        app.State.Memory.HardwareMode = 1;
    }
    SettleClock(app);
}

void SetInternalClock(App& app) {
    CapturePause pause(app);
    RateChangeRule(app, app.State.Clock.ClockRate);
    app.State.Clock.ClockType = 0;
    SettleClock(app);
}

void SetMemoryMode(App& app, int mux, int mode) {
    CapturePause pause(app);
    InstrumentState& state = app.State;
    state.Memory.HardwareMode = static_cast<std::int8_t>(mode);
    RunMemoryLayout(app, mux);
    SetupMemConfig(app.Hardware, state);
    FitDecodeBuffers(state);
    state.Pattern.PatLimit = state.Memory.BufferLen;
    std::int32_t& trigger = state.Cursors.Cur[kCursorT];
    trigger = std::min(trigger, std::max(state.Memory.DisplayLen - 3, 0));
    for (const WindowId window : {WindowId::Timing, WindowId::StateList, WindowId::Serial, WindowId::Spi}) {
        RedrawIfOpen(app, window);
    }
    state.Pods.ReprogramFlag = 1;  // assigned, not added: a change waiting under another bit is lost until Go
    state.Pattern.PatDirty = 1;
}

void RateChangeRule(App& app, int newCode) {
    const int oldCode = app.State.Clock.ClockRate;
    app.State.Clock.ClockRate = static_cast<std::uint8_t>(newCode);  // the layouts below go by the new code
    switch (RateRowOf(app.State.Identity.HardwareType).Rule) {
        case RateRule::None:
            break;
        case RateRule::HalfAndQuarter:
            return RuleHalfAndQuarter(app, newCode, oldCode);
        case RateRule::Half:
            return RuleHalf(app, newCode, oldCode);
        case RateRule::Central:
            return RuleCentral(app, newCode, oldCode);
        case RateRule::Doubled:
            return RuleDoubled(app, newCode);
        case RateRule::Quadrupled:
            return RuleQuadrupled(app, newCode);
        case RateRule::Perch:
            if (newCode == 2) SetMemoryMode(app, 1, Mode(app));
            break;
    }
}

int CheckPatternGeneratorRate(App& app, int code) {
    InstrumentState& state = app.State;
    if (state.Identity.ModelSeries == kSeriesPerch || !HasPatternPod(state)) return code;
    if (code == 0 || code == 1 || code == 3 || code == 4) {  // code 2 passes
        app.Host.Message(kPatternRate, kError);
        code = kCode100MHz;
    }
    if (state.Memory.HardwareMode == 3) {
        app.Host.Message(kPatternMemory, kError);
        state.Memory.HardwareMode = 1;
    }
    return code;
}

void RateUp(App& app) {
    StepRate(app, -1);
}

void RateDown(App& app) {
    StepRate(app, 1);
}

void SetTrigOut(App& app, bool on) {
    CapturePause pause(app);
    InstrumentState& state = app.State;
    state.Trigger.TrigOut = on ? 1 : 0;
    if (!on || state.Identity.ModelSeries != kSeriesPerch || !IsTwoEdge(state.Clock.ClockType)) return;
    state.Clock.ClockType = state.Clock.ClockType == 13 ? 2 : 1;
    app.Host.Message("External clock mode changed", kNote);
    app.Shell.UpdateBars();
}

void MarkAllRates(ClockRecord& clock) {
    clock.RateAvail.fill(kOffered);
}

void MarkRowRates(ClockRecord& clock, int row) {
    for (const int code : Missing(RateRowOf(row).Group)) {
        clock.RateAvail[static_cast<std::size_t>(code)] = kNotOffered;
    }
}

bool RateEntryEnabled(int row, int code) {
    const auto& codes = LimitOf(row).Codes;
    return std::find(codes.begin(), codes.end(), code) == codes.end();
}

void CorrectRate(App& app) {
    const InstrumentState& state = app.State;
    const int row = state.Identity.HardwareType;
    if (state.Clock.ClockType == 0 && !RateEntryEnabled(row, state.Clock.ClockRate)) {
        SetRate(app, LimitOf(row).Instead);
    }
}

}  // namespace zu
