#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "hw/sim/SimSignals.h"

namespace zu {

/// Which channels of a pod carry a bus.
struct SimI2cPins {
    int Scl = 0;
    int Sda = 1;
};
struct SimSpiPins {
    int Cs = 0;  ///< active low
    int Clk = 1;
    int Si = 2;
    int So = 3;
};
struct SimMicrowirePins {
    int Cs = 0;  ///< active high
    int Clk = 1;
    int Di = 2;
    int Do = 3;
};

/// A 256-byte EEPROM on I2C at address 0x50 and its master: pages of eight bytes are written, the end of
/// programming is polled for, and the bytes are read back in each of the three ways. What is written
/// depends on the seed; the traffic repeats after 16 rounds.
std::unique_ptr<SimSignal> SimI2cEeprom(std::uint64_t seed, SimTicks bit, SimI2cPins pins);

/// A serial flash memory on SPI in mode 0 and its master: identification, erasing, page programming with
/// status polls, reading back.
std::unique_ptr<SimSignal> SimSpiFlash(std::uint64_t seed, SimTicks bit, SimSpiPins pins);

/// A Microwire EEPROM of 256 words and its master: writing is enabled, words are written, the ready line is
/// polled, the words are read back, writing is disabled.
std::unique_ptr<SimSignal> SimMicrowireEeprom(std::uint64_t seed, SimTicks bit, SimMicrowirePins pins);

}  // namespace zu
