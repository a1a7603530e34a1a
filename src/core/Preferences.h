#pragma once

#include <string>

#include "core/App.h"

namespace zu {

/// Pixels of caption, menu and toolbar that the stored place of the main window allows for.
inline constexpr std::int32_t kFrameOffset = 52;

/// Reads the preferences and reopens the windows that were open at the last exit.
void LoadPreferences(App& app);
/// Writes the preferences; a file that cannot be written leaves a remark and the old file whole.
void SavePreferences(App& app);
/// The stored rectangle of the main window, else `fallback`; not sanitised.
WindowRect ReadMainRect(const InstrumentState& state, WindowRect fallback);
/// Follow the main window: its client area was moved to x, y or sized to width, height.
void RememberMainMove(App& app, std::int32_t x, std::int32_t y);
void RememberMainSize(App& app, std::int32_t width, std::int32_t height);
/// Where the client area of the main window lies for a stored rectangle: what the two functions above make of
/// it again.
WindowRect MainClientRect(const WindowRect& stored);

/// The connection that the preferences hold. A key is present when its text is not empty; ComMode 0 counts as
/// absent.
struct StoredConnection {
    bool HasMode = false;
    bool HasAddress = false;
    std::int32_t ComMode = 0;
    std::int32_t Address = 0;
};
StoredConnection ReadStoredConnection(const InstrumentState& state);

/// "ZU", "INI", "I2C", "PRN" or "ZXT" in upper case; anything else counts as "ZU".
std::string CheckedFileType(std::string_view type);
/// Reads DefSaveType and DefLoadType.
void ReadFileTypes(InstrumentState& state);

}  // namespace zu
