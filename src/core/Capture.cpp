#include "core/Capture.h"

#include <algorithm>
#include <span>
#include <string>

#include "core/CaptureSteps.h"
#include "hw/Arming.h"
#include "serial/I2cDecoder.h"
#include "serial/MicrowireDecoder.h"
#include "state/Rates.h"

namespace zu {
namespace {

constexpr std::uint8_t kBoard = 0;
constexpr std::uint8_t kHardwareEmulation = 2;
constexpr std::uint8_t kReprogramAll = 0xFF;

constexpr int kPollMs = 30;
constexpr int kForceWhenUnknown = 160;  // ticks, with a clock whose period is unknown
constexpr std::uint8_t kComplete = 3;

CaptureRecord& Capture(App& app) {
    return app.State.Capture;
}

bool OnBoard(const App& app) {
    return app.State.Identity.Emulated == kBoard;
}

int TimerId(const App& app) {
    return OnBoard(app) ? kHardwareTimer : kEmulationTimer;
}

void RefuseHardwareEmulation(App& app) {
    app.Host.Message("Can't capture in Hardware emulation\tmode", "ERROR:");
}

/// Arms for Go. A text that a failed arming left is overwritten.
void BeginCapture(App& app) {
    CaptureRecord& capture = Capture(app);
    if (TimerPaced(capture)) StartPolling(app, TimerId(app));
    capture.TrigStat = 0;
    capture.CaptureState = kCaptureRunning;
    capture.CaptureCount = 0;
    app.State.Pods.ReprogramFlag = kReprogramAll;
    if (OnBoard(app) && !ArmInstrument(app)) Stop(app);
    SetStatus(app, "Go hit");
    if (!TimerPaced(capture) && !app.Poll.FastLoopActive) FastLoop(app, TimerId(app));
}

/// The tick stands for a capture: the count shows in the data, so that the display changes.
void EmulationTick(App& app) {
    CaptureRecord& capture = Capture(app);
    ++capture.TimerBodies;
    const bool once = EndsAfterOne(capture.CaptureMode);
    if (once) {
        capture.CaptureState = kCaptureIdle;  // the timer goes on, with a count of 0, until Stop
        capture.CaptureCount = 0;
    } else {
        ++capture.CaptureCount;
    }
    if (app.State.Buffer.Pod[0] != nullptr) {
        app.State.Buffer.Pod[0][1] = static_cast<std::uint8_t>(capture.CaptureCount % 255);
    }
    SetStatus(app, WithCount("Triggered ", capture.CaptureCount, ""));
    RedrawIfOpen(app, WindowId::Timing);
    RedrawIfOpen(app, WindowId::StateList);
    RefreshSerialWindow(app);
    if (once || capture.CaptureState == kCaptureIdle) return;
    capture.CaptureState = kCaptureRunning;
    if (TimerPaced(capture)) StartPolling(app, kEmulationTimer);
}

/// A change that leaves a capture running without a poller would leave it waiting for ever.
void EnsurePoller(App& app) {
    const bool polled = app.Poll.TimerRunning || app.Poll.FastLoopActive;
    if (Capture(app).CaptureState == kCaptureRunning && !polled) FastLoop(app, TimerId(app));
}

void ZeroDecoded(App& app) {
    InstrumentState& state = app.State;
    if (state.Windows.SpiStat != 0) {
        for (auto& words : state.Serial.SpiSI) std::fill(words.begin(), words.end(), std::uint16_t{0});
        for (auto& words : state.Serial.SpiSO) std::fill(words.begin(), words.end(), std::uint16_t{0});
    }
    if (state.Windows.SerialStat != 0 && state.Serial.SerialMode != 0) {
        std::fill(state.Serial.SerialEvents.begin(), state.Serial.SerialEvents.end(), std::uint8_t{0});
    }
}

bool IsOpen(const WindowRecord& windows, WindowId window) {
    switch (window) {
        case WindowId::Timing:
            return windows.TimingStat != 0;
        case WindowId::StateList:
            return windows.StateStat != 0;
        case WindowId::Serial:
            return windows.SerialStat != 0;
        case WindowId::Spi:
            return windows.SpiStat != 0;
        case WindowId::Cursor:
            return windows.CursorDlgStat != 0;
        case WindowId::Threshold:
            return windows.ThresholdStat != 0;
        case WindowId::Pattern:
            return windows.PatEditStat != 0;
    }
    return false;
}

/// Sets a flag for the length of a scope.
class Flagged {
  public:
    explicit Flagged(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~Flagged() { flag_ = before_; }
    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;

  private:
    bool& flag_;
    bool before_;
};

}  // namespace

std::string WithCount(std::string_view before, std::int32_t count, std::string_view after) {
    return std::string(before) + std::to_string(count) + std::string(after);
}

void SetStatus(App& app, std::string_view text) {
    Capture(app).StatusText = text;
    RedrawIfOpen(app, WindowId::Cursor);
}

void StartPolling(App& app, int id) {
    app.Host.StartTimer(id, GetTimerPeriod(app));
    app.Poll.TimerRunning = true;
}

void EndPolling(App& app, int id) {
    app.Host.KillTimer(id);
    app.Poll.TimerRunning = false;
}

void RefreshSerialWindow(App& app) {
    if (app.State.Windows.SerialStat != 0) DecodeSerialGroup(app.State);
    RedrawIfOpen(app, WindowId::Serial);
}

std::string_view CaptureModeText(int mode) {
    if (mode < 0 || mode >= kCaptureModeCount) return {};
    return kCaptureModes[static_cast<std::size_t>(mode)].BoxText;
}

void Go(App& app) {
    CaptureRecord& capture = Capture(app);
    capture.TimerBodies = 0;
    if (capture.CaptureState == kCaptureRunning) Stop(app);
    if (capture.ClearBufferOnGo != 0) ClearDataBuffer(app);
    capture.TicksSinceGo = 0;
    SetStatus(app, "Go hit");
    if (app.State.Identity.Emulated == kHardwareEmulation) return RefuseHardwareEmulation(app);
    if (OnBoard(app) && capture.CaptureState == kCaptureRunning) return;
    BeginCapture(app);
}

void Stop(App& app) {
    CaptureRecord& capture = Capture(app);
    if (app.State.Identity.Emulated == kHardwareEmulation) return RefuseHardwareEmulation(app);
    if (OnBoard(app)) ReportUsbFailure(app);
    capture.CaptureState = kCaptureIdle;
    if (TimerPaced(capture)) EndPolling(app, TimerId(app));
    if (OnBoard(app)) StopPatternGen(app.Hardware, app.State);
    SetStatus(app, WithCount("Stop hit (", capture.CaptureCount, ")"));
}

void End(App& app) {
    CaptureRecord& capture = Capture(app);
    if (app.State.Identity.Emulated == kHardwareEmulation) return RefuseHardwareEmulation(app);
    if (OnBoard(app)) return EndOnInstrument(app);
    capture.CaptureState = kCaptureIdle;
    SetStatus(app, WithCount("End hit (", capture.CaptureCount, ")"));
}

void GoOrStop(App& app) {
    if (Capture(app).CaptureState == kCaptureIdle) return Go(app);
    Stop(app);
}

void PauseCapture(App& app) {
    CaptureRecord& capture = Capture(app);
    if (capture.CaptureState == kCaptureRunning) {
        EndPolling(app, TimerId(app));
        capture.CaptureState = kCapturePaused;
    } else if (capture.CaptureState == kCapturePaused) {
        capture.CaptureState = kCaptureRunning;
        if (TimerPaced(capture)) StartPolling(app, TimerId(app));
        if (OnBoard(app) && !ArmInstrument(app)) Stop(app);
    }
}

CapturePause::CapturePause(App& app) : app_(app), paused_(Capture(app).CaptureState == kCaptureRunning) {
    if (paused_) PauseCapture(app_);
}

CapturePause::~CapturePause() {
    Resume();
}

void CapturePause::Resume() {
    if (!paused_) return;
    paused_ = false;
    if (Capture(app_).CaptureState == kCapturePaused) PauseCapture(app_);
    EnsurePoller(app_);
}

void StopPollingWhenIdle(App& app) {
    if (Capture(app).CaptureState != kCaptureIdle) return;
    EndPolling(app, kHardwareTimer);
    EndPolling(app, kEmulationTimer);
}

void TimerBody(App& app, int id) {
    if (app.Poll.BusyDepth > 0) return;
    const InstrumentBusy inside(app);
    if (id == kEmulationTimer) EmulationTick(app);
    if (id == kHardwareTimer) PollInstrument(app);
}

void OnTimer(App& app, int id) {
    TimerBody(app, id);
    if (app.State.Command.CmdExitAfterCapture != 0 && Capture(app).CaptureCount >= 1) {
        app.Host.CloseMainWindow();
    }
}

void FastLoop(App& app, int id) {
    CaptureRecord& capture = Capture(app);
    const Flagged inside(app.Poll.FastLoopActive);
    while (capture.CaptureState != kCaptureIdle) {
        if (app.Poll.TimerRunning) return;  // a change on the way has gone over to the timer
        if (capture.CaptureMode == kAutoMode) {
            Stop(app);
            return Go(app);
        }
        const Host::Turn turn = app.Host.RunWaitingMessage();
        if (turn == Host::Turn::Quit) capture.CaptureState = kCaptureIdle;
        // What ran may have stopped the capture; a poll behind Stop would overwrite its text.
        if (turn == Host::Turn::Idle && capture.CaptureState != kCaptureIdle) TimerBody(app, id);
    }
}

int GetTimerPeriod(App& app) {
    CaptureRecord& capture = Capture(app);
    const std::int32_t asked = app.State.Command.CmdTimerPeriod;
    const double period = GetRateNS(app.State.Clock.ClockType, app.State.Clock.ClockRate);
    if (asked != 0) {
        if (period == 0) capture.ForceDelay = kForceWhenUnknown;
        return asked;
    }
    if (GetTrigStat(app.Hardware) == kComplete) return 0;
    if (period == 0) {
        capture.ForceDelay = kForceWhenUnknown;
        return kPollMs;
    }
    const double fill = period * app.State.Memory.BufferLen;  // nanoseconds to fill the memory
    const double ticks = fill < 100000 ? 1.0 : fill / 100000000 * 1.1;
    capture.ForceDelay = static_cast<std::int32_t>(std::clamp(ticks, 1.0, 2147483647.0));
    return kPollMs;
}

void DecodeSerialGroup(InstrumentState& state) {
    if (state.Serial.SerialMode == 1) DecodeI2C(state);
    if (state.Serial.SerialMode == 2) DecodeMicrowire(state);
}

void ClearDataBuffer(App& app) {
    for (int pod = 0; pod < kMaxPods; ++pod) {
        const std::span<std::uint8_t> samples = app.State.Buffer.Samples(pod);
        std::fill(samples.begin(), samples.end(), std::uint8_t{0});
    }
    ZeroDecoded(app);
    RefreshAll(app);
}

void RefreshAll(App& app) {
    constexpr std::array kWindows{WindowId::Timing, WindowId::StateList, WindowId::Serial,
                                  WindowId::Cursor, WindowId::Threshold, WindowId::Spi};
    for (const WindowId window : kWindows) RedrawIfOpen(app, window);
}

void RedrawIfOpen(App& app, WindowId window) {
    if (IsOpen(app.State.Windows, window)) app.Shell.Redraw(window);
}

}  // namespace zu
