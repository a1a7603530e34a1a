#include "hw/HardwareSession.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zu {
namespace {

class NullOps final : public RegisterOps {
  public:
    void RegWrite(std::uint16_t, std::uint16_t, std::uint8_t) override {}
    std::uint8_t RegRead(std::uint16_t, std::uint16_t) override { return 0; }
    void RegReadBlock(std::uint16_t, std::uint16_t, std::int32_t count, std::uint8_t* buffer) override {
        std::fill_n(buffer, std::max(count, 0), std::uint8_t{0});
    }
};

constexpr std::array<std::uint16_t, 3> kParallelPorts{0x3BC, 0x378, 0x278};

bool TakesPort(std::uint8_t comMode) {
    constexpr std::array<std::uint8_t, 6> kModes{1, 2, 4, 9, 32, 64};
    return std::find(kModes.begin(), kModes.end(), comMode) != kModes.end();
}

}  // namespace

RegisterOps& NullRegisterOps() {
    static NullOps ops;
    return ops;
}

void SetupOSFunctions(HardwareSession& hardware, std::uint8_t osFamily) {
    hardware.OsIoMode = osFamily == 1 ? 1 : 0;
}

void SetupIO(HardwareSession& hardware, InstrumentState& state, std::uint16_t portIndex,
             std::uint8_t comMode) {
    state.Identity.ComMode = comMode;
    if (!TakesPort(comMode)) return;
    if (portIndex >= kParallelPorts.size()) hardware.Host->EndProcess(0);
    state.Identity.HwPort = kParallelPorts[portIndex];
}

std::uint8_t UsbDetect(HardwareSession& /*hardware*/) {
    return 1;
}

std::uint8_t FindBoard(HardwareSession& /*hardware*/, InstrumentState& state,
                       std::uint16_t /*boardAddress*/) {
    // Nothing answers on the null operations, as on a bus without a board.
    state.Identity.Emulated = 1;
    state.Identity.HardwareType = 0;
    return 0;
}

void SetClock(HardwareSession& /*hardware*/, InstrumentState& /*state*/) {}
void SetupMemConfig(HardwareSession& /*hardware*/, InstrumentState& /*state*/) {}
std::uint8_t GetTrigStat(HardwareSession& /*hardware*/) {
    return 0;
}
void ZUPower(HardwareSession& /*hardware*/) {}
void CloseHardware(HardwareSession& /*hardware*/) {}

float GetDLLVersion(std::string& name, std::string& text) {
    constexpr float kVersion = 0.14F;
    std::array<char, 32> line{};
    std::snprintf(line.data(), line.size(), "DLL ver %f", static_cast<double>(kVersion));
    name = "RoachSer";
    text = line.data();
    return kVersion;
}

}  // namespace zu
