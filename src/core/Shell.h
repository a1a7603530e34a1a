#pragma once

#include <cstdint>

#include "state/Geometry.h"

namespace zu {

/// The modeless windows.
enum class WindowId : std::uint8_t { Timing, StateList, Serial, Spi, Cursor, Threshold, Pattern };

/// What the desktop says of the screen; all pixels.
struct ScreenFacts {
    std::int32_t VirtualWidth = 0;  ///< union of all screens
    std::int32_t VirtualHeight = 0;
    std::int32_t WorkBottom = 0;   ///< lower end of the primary screen's free area
    std::int32_t DeviceWidth = 0;  ///< the display device's own resolution
    std::int32_t DeviceHeight = 0;
};

/// What the logic asks of the windows. The windows implement it with Qt, the command line does nothing,
/// tests record it.
class Shell {
  public:
    virtual ~Shell() = default;

    virtual ScreenFacts Screen() = 0;
    /// Opens a window through its normal command: sets its open flag and shows it at its rectangle.
    virtual void Open(WindowId window) = 0;
    /// Sends a window its close message: clears its open flag.
    virtual void Close(WindowId window) = 0;
    /// Repaints a window if it is open.
    virtual void Redraw(WindowId window) = 0;
    /// Rewrites status bar and toolbar boxes.
    virtual void UpdateBars() = 0;
    /// The model or its menu changed: removed entries, texts and checks are to be shown anew.
    virtual void UpdateMenus() = 0;
    /// Modal: the user finds the board or chooses emulation (CHWAddress). False: left without a choice.
    virtual bool RunAddressDialog() = 0;
    /// Modal: the user picks the emulated model, stored in HardwareType at once (CInitSettings).
    virtual void RunModelDialog() = 0;
    /// A wait cursor while something blocks.
    virtual void SetBusy(bool busy) = 0;
};

}  // namespace zu
