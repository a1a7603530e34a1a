#pragma once

#include <string>
#include <string_view>

#include "core/App.h"
#include "files/DataFile.h"

namespace zu {

/// Loads a file by its type "ZU", "INI", "ZXT" or "CSV" (upper case) into the live state. With showErrors
/// false a file that cannot be opened gives FailedSilently instead of a message.
LoadStatus LoadFile(App& app, std::string_view type, const std::string& name, bool showErrors);
/// Saves by type: "ZU", "INI", "ZXT", "CSV", "PRN", "I2C", "SPI" in any case. A name of more than 500
/// characters ends the process.
void SaveFile(App& app, const std::string& name, std::string_view type);

/// The commands "Open" and "Save": file dialog, then load or save.
void OpenCommand(App& app);
void SaveCommand(App& app);
/// Opens a file without a dialog, as if it had been chosen in it: a recent file, or one that was dropped on
/// the window.
void OpenByName(App& app, const std::string& name);

/// Keeps the folder for the next file dialog and puts the file first in the list of recent files.
void RememberFile(FileRecord& files, const std::string& path);

/// The quick settings; slot 0 holds the default settings.
void LoadSlot(App& app, int slot);
void SaveSlot(App& app, int slot);

}  // namespace zu
