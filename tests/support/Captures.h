#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace zu::test {

/// Folder with the recordings of real buses; tests skip where it is absent.
inline std::filesystem::path CaptureFolder() {
    const char* given = std::getenv("ZU_CAPTURES");
    return given != nullptr ? given : ZU_CAPTURES_DEFAULT;
}
inline std::filesystem::path CapturePath(const std::string& name) {
    return CaptureFolder() / name;
}
inline bool HaveCaptures() {
    return std::filesystem::exists(CapturePath("spi_flash_read64.zu"));
}

/// The six recordings, without extension.
inline constexpr const char* kCaptures[] = {"i2c_eeprom_page_write", "i2c_rtc_ds3231",   "microwire_93c66",
                                            "spi_accel_mode3",       "spi_flash_read64", "z80_bus_20mhz"};

}  // namespace zu::test

/// Skips the running test where the recordings are absent.
#define ZU_NEEDS_CAPTURES() \
    if (!zu::test::HaveCaptures()) GTEST_SKIP() << "no recordings at " << zu::test::CaptureFolder()
