#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "state/Host.h"
#include "state/InstrumentState.h"

namespace zu {

enum class LoadStatus : std::uint8_t { Failed = 0, Loaded = 1, FailedSilently = 2 };

/// What reading a data file asks of the controller. An empty function is not called.
struct DataFileHooks {
    /// Applies a memory mode; the state holds the two values already.
    std::function<void(int mux, int mode)> ApplyMemoryMode;
    /// Loads the comma-separated text of a file with extension "CSV".
    std::function<void(const std::string& path)> LoadCsv;
    /// Runs the decoder of SerialMode; called if there is one and the Serial window is open.
    std::function<void()> DecodeSerial;
    /// Redraws every open window; called last on every path.
    std::function<void()> RedrawWindows;
};

/// Reads the records of a data file into the live buffers in one pass; what the settings block says must be
/// in the state already. Only the extension "ZU" (upper case) is scanned. Problems inside the file are shown
/// and leave the status Loaded; a file that cannot be opened is Failed and shown, or FailedSilently if
/// `quiet`.
LoadStatus ReadDataFile(InstrumentState& state, Host& host, const std::string& path,
                        const std::string& extension, bool quiet, const DataFileHooks& hooks);

/// Replaces a file by the settings text, the saving time, the model, all records and the end marker, in one
/// step. A failure leaves the old file whole and is told by a remark only.
bool WriteDataFile(InstrumentState& state, Host& host, const std::string& path);

/// Catalogue row that a settings or data file was saved for: key Type of [Hardware], else the label of its
/// model line; nothing if neither names a row or the file cannot be read.
std::optional<int> HardwareTypeOfFile(const std::string& path);

}  // namespace zu
