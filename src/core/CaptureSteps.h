#pragma once

#include <string>
#include <string_view>

#include "core/App.h"

// Steps that the run loop's commands, its emulation and its hardware side share.
namespace zu {

inline constexpr std::uint8_t kCaptureIdle = 0;
inline constexpr std::uint8_t kCaptureRunning = 1;
inline constexpr std::uint8_t kCapturePaused = 2;

inline constexpr std::uint8_t kAutoMode = 2;

/// One capture and then idle: Single, One Shot, Continuous.
inline bool EndsAfterOne(std::uint8_t mode) {
    return mode == 1 || mode == 3 || mode == 4;
}

/// A timer polls; otherwise the fast loop does.
inline bool TimerPaced(const CaptureRecord& capture) {
    return capture.CaptureMode == kAutoMode || capture.CaptureLoopMode == 0;
}

/// A text with a number in its middle.
std::string WithCount(std::string_view before, std::int32_t count, std::string_view after);
/// Sets StatusText and shows it in the cursor window, if open.
void SetStatus(App& app, std::string_view text);

/// Starts a timer with GetTimerPeriod.
void StartPolling(App& app, int id);
void EndPolling(App& app, int id);

/// Decodes again what an open serial window shows, and redraws it.
void RefreshSerialWindow(App& app);

/// Keeps polls from beginning for the length of a scope: the boxes that a programming step shows run message
/// loops of their own.
class InstrumentBusy {
  public:
    explicit InstrumentBusy(App& app) : depth_(app.Poll.BusyDepth) { ++depth_; }
    ~InstrumentBusy() { --depth_; }
    InstrumentBusy(const InstrumentBusy&) = delete;
    InstrumentBusy& operator=(const InstrumentBusy&) = delete;

  private:
    int& depth_;
};

// --- The side that talks to the instrument (CaptureHardware.cpp) ---------------------------------------

/// Programs the instrument and arms it. False: arming failed.
bool ArmInstrument(App& app);
/// Reads the memory back; pods that put patterns out keep an alignment of 0.
void ReadInstrument(App& app);
/// One poll: status, texts, and the read-out when the capture is complete.
void PollInstrument(App& app);
/// Says once that a USB transfer has failed since the last set-up.
void ReportUsbFailure(App& app);
/// Forces the trigger, lets the memory fill at 100 MHz whatever the clock, and shows what it holds.
void EndOnInstrument(App& app);

}  // namespace zu
