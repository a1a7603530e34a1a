#include <array>

#include "core/Capture.h"
#include "core/CaptureSteps.h"
#include "hw/Arming.h"
#include "hw/ReadOut.h"
#include "serial/SpiDecoder.h"
#include "trigger/CompiledTrigWords.h"

namespace zu {
namespace {

constexpr std::uint8_t kFilling = 1;
constexpr std::uint8_t kNotTriggered = 2;
constexpr std::uint8_t kComplete = 3;

constexpr std::uint8_t kUsbWell = 63;
constexpr std::uint8_t kUsbMode = 9;

constexpr std::uint8_t kFillRate = 5;       // 100 MHz
constexpr double kFillWaitNs = 16'000'000;  // 262,144 samples at 10 ns take 2.6 ms of it

CaptureRecord& Capture(App& app) {
    return app.State.Capture;
}

/// "1 capture" or "%d captures" between a word and a bracket.
std::string Counted(std::string_view before, std::int32_t count) {
    return count == 1 ? WithCount(before, 1, " capture)") : WithCount(before, count, " captures)");
}

bool GivesPattern(std::int8_t podMode) {
    return podMode == 1 || podMode == 2;
}

/// Step 1 of the read-out: a single capture ends here, a repeating one pauses until it is armed again.
void LeaveRunning(App& app) {
    CaptureRecord& capture = Capture(app);
    if (EndsAfterOne(capture.CaptureMode)) {
        capture.CaptureState = kCaptureIdle;
        capture.CaptureCount = 0;
        if (capture.CaptureLoopMode == 0) EndPolling(app, kHardwareTimer);
    } else if (capture.CaptureState == kCaptureRunning) {
        PauseCapture(app);
    }
}

void ShowCapture(App& app) {
    RedrawIfOpen(app, WindowId::Timing);
    RedrawIfOpen(app, WindowId::StateList);
    Capture(app).StatusText = WithCount("Triggered ", Capture(app).CaptureCount, "");
    RefreshSerialWindow(app);
    DecodeSPI(app.State);
    RedrawIfOpen(app, WindowId::Spi);
}

void ArmAgain(App& app) {
    CaptureRecord& capture = Capture(app);
    capture.TrigStat = 0;
    if (capture.CaptureState != kCaptureIdle) {
        capture.CaptureState = kCaptureRunning;
        app.Poll.ArmBegan = app.Host.TickCount();
        const bool armed = ArmInstrument(app);
        app.Poll.ArmEnded = app.Host.TickCount();
        if (!armed) Stop(app);
    }
    // An idle capture has no timer.
    if (capture.CaptureState == kCaptureRunning && TimerPaced(capture)) StartPolling(app, kHardwareTimer);
}

void ReadOut(App& app) {
    LeaveRunning(app);
    CaptureRecord& capture = Capture(app);
    ++capture.CaptureCount;
    ReadInstrument(app);
    ShowCapture(app);
    if (!EndsAfterOne(capture.CaptureMode)) ArmAgain(app);
    capture.TicksSinceGo = 0;
}

void StillNotTriggered(App& app) {
    CaptureRecord& capture = Capture(app);
    capture.StatusText = capture.CaptureCount == 0
                             ? std::string("Not triggered")
                             : WithCount("Triggered ", capture.CaptureCount, " \nWaiting for next trigger");
    ++capture.TicksSinceGo;
    if (TrigWordsConsistent(app.State, PrepareTriggerWords(app.State))) return;
    Stop(app);
    capture.StatusText = "Trig word can't be all X";
}

}  // namespace

bool ArmInstrument(App& app) {
    const InstrumentBusy busy(app);
    return StartCapture(app.Hardware, app.State, PrepareTriggerWords(app.State)) != 0;
}

void ReadInstrument(App& app) {
    const InstrumentBusy busy(app);
    EndCapture(app.Hardware, app.State, PrepareTriggerWords(app.State));
    for (std::size_t pod = 0; pod < kMaxPods; ++pod) {
        if (GivesPattern(app.State.Pods.HardwarePod[pod])) app.State.Pods.AdjAddr[pod] = 0;
    }
}

void PollInstrument(App& app) {
    CaptureRecord& capture = Capture(app);
    ++capture.TimerBodies;
    if (capture.CaptureMode == kAutoMode && capture.TicksSinceGo > capture.ForceDelay) {
        ForceTrigger(app.Hardware);
    }
    capture.TrigStat = GetTrigStat(app.Hardware);
    switch (capture.TrigStat) {
        case kFilling:
            capture.StatusText = Counted("Trig/Fill buf(", capture.CaptureCount);
            ++capture.TicksSinceGo;
            break;
        case kNotTriggered:
            StillNotTriggered(app);
            break;
        case kComplete:
            ReadOut(app);
            break;
        default:
            ++capture.TicksSinceGo;
            capture.StatusText = Counted("Waiting (", capture.CaptureCount);
            break;
    }
    RedrawIfOpen(app, WindowId::Cursor);
}

void ReportUsbFailure(App& app) {
    if (app.State.Identity.ComMode != kUsbMode || UsbStatus(app.Hardware) == kUsbWell) return;
    const InstrumentBusy busy(app);  // no poll behind the box
    app.Host.Message("Clear USB error", "Call Ostrand Labs");
    ResetUsbStatus(app.Hardware);
}

void EndOnInstrument(App& app) {
    CaptureRecord& capture = Capture(app);
    ClockRecord& clock = app.State.Clock;
    const InstrumentBusy busy(app);
    SetStatus(app, WithCount("End hit (", capture.CaptureCount, ")"));
    ForceTrigger(app.Hardware);
    const auto type = clock.ClockType;
    const auto rate = clock.ClockRate;
    clock.ClockType = 0;
    clock.ClockRate = kFillRate;
    SetClock(app.Hardware, app.State);
    WaitNanoseconds(app.Hardware, kFillWaitNs);
    clock.ClockType = type;
    clock.ClockRate = rate;
    capture.CaptureCount = 0;
    capture.CaptureState = kCaptureIdle;
    if (TimerPaced(capture)) EndPolling(app, kHardwareTimer);
    ReadInstrument(app);
    RefreshSerialWindow(app);
    RefreshAll(app);
}

}  // namespace zu
