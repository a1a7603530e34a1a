#pragma once

#include <string>
#include <string_view>

#include "core/App.h"

namespace zu {

/// How a load ended.
enum class LoadStatus : std::uint8_t {
    Failed = 0,   ///< with a message
    Loaded = 1,   ///< also with problems reported, or refused by the user
    Missing = 2,  ///< could not be opened, and nothing was shown
};

/// Loads a file by its type "ZU", "INI", "ZXT" or "CSV" (upper case). With showErrors false a file that
/// cannot be opened is not reported.
LoadStatus LoadFile(App& app, std::string_view type, const std::string& name, bool showErrors);
/// Saves by type: "ZU", "INI", "ZXT", "CSV", "PRN", "I2C", "SPI" in any case. A name of more than 500
/// characters ends the process.
void SaveFile(App& app, const std::string& name, std::string_view type);

/// The commands "Open" and "Save": file dialog, then load or save.
void OpenCommand(App& app);
void SaveCommand(App& app);
/// The quick settings; slot 0 holds the default settings.
void LoadSlot(App& app, int slot);
void SaveSlot(App& app, int slot);

}  // namespace zu
