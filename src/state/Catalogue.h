#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zu {

inline constexpr int kSeriesCount = 6;
inline constexpr int kModelRows = 28;

/// A family of instruments.
struct SeriesTraits {
    std::string_view Family;
    std::string_view Prefix;    ///< of the program's file names
    std::string_view ModelKey;  ///< text of the settings key "Model", empty = no such line
    int DefaultRow;             ///< row taken in emulation
    std::string_view VersionText;
};

inline constexpr std::array<SeriesTraits, kSeriesCount> kSeries{{
    {"Pike", "WPike", "PikeXX", 5, "Pikexxx Version 1.85b  - 5/10/06"},
    {"Dace", "WDace", "Dace", 17, "Dace Version 1.39 - 6/25/07"},
    {"Roach", "WRoach", "RoachXX", 15, "RoachSer Version 2.16 - 7/27/20"},
    {"Tench", "WTench", "", 19, "Tench Version 0.9 - 3/16/06"},
    {"Bream", "WBream", "", 24, ""},
    {"Perch", "WPerch", "PerchXX", 27, "PerchVer Version 1.39 - 7/27/20"},
}};

/// One instrument. Rows 20 to 23 have no shape: TotalChannels 0 says so, and applying one keeps the previous
/// shape.
struct ModelTraits {
    std::string_view ShortName;    ///< of the address dialog
    std::string_view FileLabel;    ///< model text of the data file; never contains a blank
    std::string_view StatusLabel;  ///< of the board status, empty above row 17
    std::int32_t SamplesDefault;
    std::int32_t ChPerSlice;
    std::int32_t WordsPerTrig;
    std::int32_t TotalChannels;
    std::int8_t PodCount;
    std::int8_t BufCount;
};

// "128K" of rows 13 to 15 is what files hold, 524288 the depth; both stand.
inline constexpr std::array<ModelTraits, kModelRows> kModels{{
    {"none", "None", "demo mode no board", 131072, 40, 4, 160, 20, 20},
    {"Pike40S", "Pike40S-32K", "Pike40S_32", 32768, 40, 1, 40, 5, 5},
    {"Pike80S", "Pike80S-32K", "Pike80S_32", 32768, 40, 2, 80, 10, 10},
    {"Pike40L", "Pike40L-128K", "pike40L_128", 131072, 40, 1, 40, 5, 5},
    {"Pike80L", "Pike80L-128K", "Pike80L_128", 131072, 40, 2, 80, 10, 10},
    {"Pike160L", "Pike160L-128K", "Pike160L_128", 131072, 40, 4, 160, 20, 20},
    {"Pike40SB", "Pike40SB-32K", "Pike40S_32B", 32768, 40, 1, 40, 5, 5},
    {"Pike80SB", "Pike80SB-32K", "Pike80S_32B", 32768, 40, 2, 80, 10, 10},
    {"Pike40LB", "Pike40LB-128K", "pike40L_128B", 131072, 40, 1, 40, 5, 5},
    {"Pike80LB", "Pike80LB-128K", "Pike80L_128B", 131072, 40, 2, 80, 10, 10},
    {"Pike160LB", "Pike160LB-128K", "Pike160L_128B", 131072, 40, 4, 160, 20, 20},
    {"Roach40SB", "Roach40SB-32K", "Roach40S_32B", 32768, 40, 1, 40, 5, 5},
    {"Roach80SB", "Roach80SB-32K", "Roach80S_32B", 32768, 40, 2, 80, 10, 10},
    {"Roach40LB", "Roach40LB-128K", "roach40L_128B", 524288, 40, 1, 40, 5, 5},
    {"Roach80LB", "Roach80LB-128K", "Roach80L_128B", 524288, 40, 2, 80, 10, 10},
    {"Roach160LB", "Roach160LB-128K", "Roach160L_128B", 524288, 40, 4, 160, 20, 20},
    {"Dace-32K", "Dace_32", "Dace_32", 32768, 24, 1, 24, 3, 3},
    {"Dace-128K", "Dace_128", "Dace_128", 131072, 24, 1, 24, 3, 3},
    {"Tench (512K)", "Tench-512K", "", 524288, 32, 1, 32, 4, 4},
    {"Tench (1024K)", "Tench-1024K", "", 1048576, 32, 1, 32, 4, 4},
    {"", "None", "", 0, 0, 0, 0, 0, 0},
    {"", "None", "", 0, 0, 0, 0, 0, 0},
    {"", "None", "", 0, 0, 0, 0, 0, 0},
    {"", "None", "", 0, 0, 0, 0, 0, 0},
    {"Bream", "Bream", "", 1048576, 64, 1, 64, 8, 8},
    {"PerchSmallA", "PerchPGSmallA", "", 262144, 32, 1, 32, 4, 4},
    {"PerchWideA", "PerchPGWideA", "", 262144, 32, 1, 32, 4, 4},
    {"PerchWideB", "PerchPGWideB", "", 2097152, 32, 1, 32, 4, 4},
}};

/// Traits of a row; row 0 for a number outside the catalogue.
const ModelTraits& Model(int row);
/// Row that has a shape of its own.
bool HasShape(int row);
/// Traits of a series; an unknown series has empty texts and default row 0.
const SeriesTraits& Series(int series);

/// First row whose file label is `label` (row 0 first); nothing for an unknown or empty label.
std::optional<int> RowOfFileLabel(std::string_view label);
/// Row named by a user: a number, or a file label or short name in any case, a closing "B" left out or not;
/// nothing if there is none with a shape.
std::optional<int> RowOfUserText(std::string_view text);

}  // namespace zu
