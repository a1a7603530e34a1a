#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "hw/sim/SimStimulus.h"

namespace zu {

/// What a channel of a scene carries.
struct SimSceneChannel {
    std::uint8_t Channel;  ///< 0 to 39, so that the smallest instrument shows it
    std::string_view Name;
};

/// Channels of a scene that belong together.
struct SimSceneGroup {
    std::string_view Name;
    std::int8_t Mode;  ///< GroupRecord::Mode: 0 plain, 1 I2C, 2 Microwire, 3 SPI mode 0
    std::uint8_t Size;
    std::array<std::uint8_t, 8> Channels;  ///< in the order of the group's slots
};

/// A level that the trigger waits for; it comes when all of a scene's levels meet.
struct SimSceneLevel {
    std::uint8_t Channel;
    bool High;
};

/// A stimulus that comes with the simulated instrument.
struct SimScene {
    std::string_view Name;
    std::string_view Description;
    std::span<const SimSceneChannel> Channels;
    std::span<const SimSceneGroup> Groups;
    std::uint8_t RateCode;  ///< at which it is good to look at; its period is that of the external clock
    std::int8_t Zoom;       ///< TimingRecord::ScreenZoom that goes with it
    std::span<const SimSceneLevel> Trigger;
};

namespace scenes {

inline constexpr SimSceneChannel kBench[] = {
    {0, "SCL"},     {1, "SDA"},     {2, "CLK 5M"},  {3, "CLK 1M"},  {4, "QUAD A"},  {5, "QUAD B"},
    {6, "PWM"},     {7, "GLITCH"},  {8, "SPI CS"},  {9, "SPI CLK"}, {10, "SPI SI"}, {11, "SPI SO"},
    {12, "UW CS"},  {13, "UW CLK"}, {14, "UW DI"},  {15, "UW DO"},  {16, "CNT 0"},  {17, "CNT 1"},
    {18, "CNT 2"},  {19, "CNT 3"},  {20, "CNT 4"},  {21, "CNT 5"},  {22, "CNT 6"},  {23, "CNT 7"},
    {24, "GRAY 0"}, {25, "GRAY 1"}, {26, "GRAY 2"}, {27, "GRAY 3"}, {28, "GRAY 4"}, {29, "GRAY 5"},
    {30, "GRAY 6"}, {31, "GRAY 7"}, {32, "RND 0"},  {33, "RND 1"},  {34, "RND 2"},  {35, "RND 3"},
    {36, "RND 4"},  {37, "RND 5"},  {38, "RND 6"},  {39, "RND 7"}};
inline constexpr SimSceneGroup kBenchGroups[] = {{"I2C", 1, 2, {0, 1}},
                                                 {"SPI", 3, 4, {9, 10, 11, 8}},
                                                 {"UWIRE", 2, 4, {13, 14, 15, 12}},
                                                 {"COUNT", 0, 8, {16, 17, 18, 19, 20, 21, 22, 23}}};

inline constexpr SimSceneChannel kCounters[] = {
    {0, "CNT 0"},   {1, "CNT 1"},   {2, "CNT 2"},   {3, "CNT 3"},   {4, "CNT 4"},   {5, "CNT 5"},
    {6, "CNT 6"},   {7, "CNT 7"},   {8, "CNT 8"},   {9, "CNT 9"},   {10, "CNT 10"}, {11, "CNT 11"},
    {12, "CNT 12"}, {13, "CNT 13"}, {14, "CNT 14"}, {15, "CNT 15"}, {16, "GRAY 0"}, {17, "GRAY 1"},
    {18, "GRAY 2"}, {19, "GRAY 3"}, {20, "GRAY 4"}, {21, "GRAY 5"}, {22, "GRAY 6"}, {23, "GRAY 7"},
    {24, "WALK 0"}, {25, "WALK 1"}, {26, "WALK 2"}, {27, "WALK 3"}, {28, "WALK 4"}, {29, "WALK 5"},
    {30, "WALK 6"}, {31, "WALK 7"}, {32, "JOHN 0"}, {33, "JOHN 1"}, {34, "JOHN 2"}, {35, "JOHN 3"},
    {36, "JOHN 4"}, {37, "JOHN 5"}, {38, "JOHN 6"}, {39, "JOHN 7"}};
inline constexpr SimSceneGroup kCounterGroups[] = {{"COUNT", 0, 8, {0, 1, 2, 3, 4, 5, 6, 7}},
                                                   {"GRAY", 0, 8, {16, 17, 18, 19, 20, 21, 22, 23}}};

inline constexpr SimSceneChannel kClocks[] = {
    {0, "50 MHz"},   {1, "25 MHz"},   {2, "20 MHz"},   {3, "10 MHz"},   {4, "5 MHz"},   {5, "2 MHz"},
    {6, "1 MHz"},    {7, "500 kHz"},  {8, "200 kHz"},  {9, "100 kHz"},  {10, "50 kHz"}, {11, "20 kHz"},
    {12, "10 kHz"},  {13, "5 kHz"},   {14, "2 kHz"},   {15, "1 kHz"},   {16, "QUAD A"}, {17, "QUAD B"},
    {18, "PHASE 1"}, {19, "PHASE 2"}, {20, "PHASE 3"}, {21, "PHASE 4"}, {22, "10 %"},   {23, "90 %"}};

inline constexpr SimSceneChannel kI2c[] = {{0, "SCL"}, {1, "SDA"}};
inline constexpr SimSceneGroup kI2cGroups[] = {{"I2C", 1, 2, {0, 1}}};

inline constexpr SimSceneChannel kSpi[] = {{0, "CS"}, {1, "CLK"}, {2, "SI"}, {3, "SO"}};
inline constexpr SimSceneGroup kSpiGroups[] = {{"SPI", 3, 4, {1, 2, 3, 0}}};

inline constexpr SimSceneChannel kMicrowire[] = {{0, "CS"}, {1, "CLK"}, {2, "DI"}, {3, "DO"}};
inline constexpr SimSceneGroup kMicrowireGroups[] = {{"UWIRE", 2, 4, {1, 2, 3, 0}}};

inline constexpr SimSceneChannel kGlitches[] = {{0, "CLOCK"},   {1, "CLOCK+GL"}, {2, "LOW+GL"},
                                                {3, "HIGH+GL"}, {4, "SPIKE 1"},  {5, "SPIKE 2"},
                                                {6, "SPIKE 3"}, {7, "SLOW"}};

inline constexpr SimSceneChannel kNoise[] = {{0, "RND 0"},   {1, "RND 1"},   {2, "RND 2"},   {3, "RND 3"},
                                             {4, "RND 4"},   {5, "RND 5"},   {6, "RND 6"},   {7, "RND 7"},
                                             {8, "RND 8"},   {9, "RND 9"},   {10, "RND 10"}, {11, "RND 11"},
                                             {12, "RND 12"}, {13, "RND 13"}, {14, "RND 14"}, {15, "RND 15"}};

inline constexpr SimSceneLevel kBenchTrigger[] = {{8, false}};
inline constexpr SimSceneLevel kCountersTrigger[] = {
    {0, false}, {1, false}, {2, false},  {3, false},  {4, false},  {5, false},  {6, false},  {7, false},
    {8, false}, {9, false}, {10, false}, {11, false}, {12, false}, {13, false}, {14, false}, {15, false}};
inline constexpr SimSceneLevel kClocksTrigger[] = {{15, true}};
inline constexpr SimSceneLevel kI2cTrigger[] = {{0, true}, {1, false}};
inline constexpr SimSceneLevel kSpiTrigger[] = {{0, false}};
inline constexpr SimSceneLevel kMicrowireTrigger[] = {{0, true}};
inline constexpr SimSceneLevel kGlitchesTrigger[] = {{0, false}, {1, true}};
inline constexpr SimSceneLevel kNoiseTrigger[] = {{0, true}, {1, false}, {2, true}, {3, false}};

}  // namespace scenes

inline constexpr std::array<SimScene, 8> kSimScenes{{
    {"bench", "A bit of everything: buses, clocks, counters, glitches, noise", scenes::kBench,
     scenes::kBenchGroups, 8, 2, scenes::kBenchTrigger},
    {"counters", "Binary, Gray, walking and Johnson counters", scenes::kCounters, scenes::kCounterGroups, 7,
     10, scenes::kCountersTrigger},
    {"clocks",
     "Clocks from 50 MHz to 1 kHz, phases and duty cycles",
     scenes::kClocks,
     {},
     6,
     2,
     scenes::kClocksTrigger},
    {"i2c", "I2C EEPROM: page writes, polling, reads at 100 kHz", scenes::kI2c, scenes::kI2cGroups, 10, 1,
     scenes::kI2cTrigger},
    {"spi", "SPI flash: erase, program, status polls, reads at 1 MHz", scenes::kSpi, scenes::kSpiGroups, 8, 2,
     scenes::kSpiTrigger},
    {"microwire", "Microwire EEPROM: words written and read at 250 kHz", scenes::kMicrowire,
     scenes::kMicrowireGroups, 9, 1, scenes::kMicrowireTrigger},
    {"glitches",
     "Clean signals with narrow pulses on them",
     scenes::kGlitches,
     {},
     5,
     2,
     scenes::kGlitchesTrigger},
    {"noise", "Random levels on all channels", scenes::kNoise, {}, 8, 4, scenes::kNoiseTrigger},
}};

/// Scene of a name; null if there is none.
const SimScene* FindSimScene(std::string_view name);

/// The signals of a scene; the same seed gives the same signals. Null for a name that no scene has.
std::shared_ptr<SimStimulus> MakeSimScene(std::string_view name, std::uint64_t seed = 1);

}  // namespace zu
