#pragma once

#include <array>
#include <string_view>

#include "core/App.h"
#include "core/CommandTable.h"

namespace zu {

inline constexpr int kHardwareTimer = 1;   ///< timer id that polls the instrument
inline constexpr int kEmulationTimer = 2;  ///< timer id of the emulation tick

/// Texts of a capture mode.
struct CaptureModeTraits {
    std::string_view MenuText;
    std::string_view BoxText;  ///< toolbar box and status bar, 22 characters
};
inline constexpr std::array<CaptureModeTraits, kCaptureModeCount> kCaptureModes{{
    {"&Normal (w/trigger)", "Normal (w/trigger)    "},
    {"&Single (w/trigger)", "Single (w/trigger)    "},
    {"&Auto", "Auto                  "},
    {"One Shot (w/o trigger)", "One Shot (w/o trigger)"},
    {"Continuous Pattern Generator output", "Continuous (PG only)  "},
}};
/// Box text of a mode; empty for a mode outside 0..4.
std::string_view CaptureModeText(int mode);

void Go(App& app);
void Stop(App& app);
/// Ends the wait and shows what the memory holds.
void End(App& app);
/// F5: Go when idle, Stop otherwise.
void GoOrStop(App& app);

/// The toggle of a running capture: 1 to 2 with the timer killed, 2 to 1 armed again. Nothing when idle.
void PauseCapture(App& app);

/// Pauses a running capture for the length of a change; resumes only what it paused itself, so scopes nest.
class CapturePause {
  public:
    explicit CapturePause(App& app);
    ~CapturePause();
    CapturePause(const CapturePause&) = delete;
    CapturePause& operator=(const CapturePause&) = delete;
    /// Resumes before the scope's end.
    void Resume();

  private:
    App& app_;
    bool paused_ = false;
};

/// After a change of mode or loop: an idle capture has no timer left behind.
void StopPollingWhenIdle(App& app);

/// One poll: id 1 with hardware, 2 in emulation.
void TimerBody(App& app, int id);
/// A timer message: one poll, then the end of the program that "-EXITAFTERCAPTURE" asks for.
void OnTimer(App& app, int id);
/// Polls as often as the message queue leaves it free, until the capture ends.
void FastLoop(App& app, int id);
/// Milliseconds for the next timer; sets ForceDelay.
int GetTimerPeriod(App& app);
/// Runs the decoder of SerialMode, if there is one.
void DecodeSerialGroup(InstrumentState& state);
/// Zeroes all samples up to their lengths and what was decoded from them, then redraws.
void ClearDataBuffer(App& app);
/// Redraws the open windows: Timing, Statelist, Serial, cursor, threshold, SPI.
void RefreshAll(App& app);
/// Redraws a window if its open flag is set.
void RedrawIfOpen(App& app, WindowId window);

}  // namespace zu
