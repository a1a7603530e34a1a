#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "state/Limits.h"
#include "state/Text.h"

namespace zu {

struct FileRecord {
    std::string AppDir;                       ///< where all files of the program lie
    std::array<std::string, 6> SettingsSlot;  ///< default settings and quick settings 1 to 5
    std::string PreferencesFile;
    std::string DefaultDataFile;
    std::string DefSaveType = "ZU";
    std::string DefLoadType = "ZU";
    std::string LastFolder;                  ///< folder of the last file dialog
    std::array<std::string, 4> RecentFiles;  ///< opened or saved last, the newest first; empty = unused
    std::uint8_t Autosave = 1;
    std::uint8_t AutosaveData = 1;
    std::uint8_t DataLog = 0;
    std::int32_t DataLogCnt = 0;
    Text<499> DataLogFileName{"DL"};
    Text<5> DataLogFormat{"ZU"};
    std::int8_t ExportG = 0;
    std::int8_t ExportB = 1;
    std::int8_t ExportS = 10;
    std::int8_t ExportE = 11;
    std::int8_t ExportZU = 1;
    std::int8_t ExportPG = 0;
    std::int32_t FileVersion = 0;  ///< of the settings file read last
    std::int32_t GlitchLen = 0;    ///< carried by the settings file only
    std::int32_t PulseLen = 0;
};

/// One row of the translate table: data that match Bit are shown as Stg.
struct TranslateEntry {
    Text<33> Bit;  ///< "0", "1", "X"; empty = unused
    Text<20> Stg;
    std::int32_t Skip = 0;    ///< -1: not in force
    std::uint32_t Value = 0;  ///< the "1" bits of Bit
    std::uint32_t Care = 0;   ///< the "1" and "0" bits of Bit
};

struct TranslateRecord {
    std::array<TranslateEntry, kTranslateEntries> Entry;
    std::int32_t TranslateCount = 0;  ///< entries in force
};

}  // namespace zu
