#include "serial/SpiGenerator.h"

#include <array>
#include <optional>
#include <string_view>

namespace zu {
namespace {

constexpr std::int32_t kSpiChannels = 4;

/// A line of the bus and what its pod must be.
struct RoleCheck {
    std::size_t Role;
    bool Captured;  ///< a pod of the analyzer, else of the pattern generator
    std::string_view Text;
};
constexpr std::array<RoleCheck, 4> kRoleChecks{{
    {2, true, "The Pod with the SO Channel must be configured as Logic Analyzer."},
    {1, false, "The Pod with the SI Channel must be configured as Pattern Generator."},
    {3, false, "The Pod with the CS Channel must be configured as Pattern Generator."},
    {0, false, "The Pod with the Clock Channel must be configured as Pattern Generator."},
}};

/// Mode of the pod that holds a channel; nothing for a channel that no pod has.
std::optional<std::int8_t> PodMode(const InstrumentState& state, int channel) {
    if (channel < 0 || channel >= kMaxChannels) return std::nullopt;
    return state.Pods.HardwarePod[static_cast<std::size_t>(channel / 8)];
}

bool RoleFits(const InstrumentState& state, const GroupRecord& group, const RoleCheck& check) {
    const auto mode = PodMode(state, group.Channels[check.Role]);
    if (!mode) return false;
    return check.Captured ? *mode == 0 : IsPatternMode(*mode);
}

}  // namespace

bool SpiGroupCanGenerate(const InstrumentState& state, Host& host, int group) {
    if (group < 0 || group >= kGroupCount) {
        host.Message("SPI group not defined. Click on 'Edit Groups' and create one.", "Error");
        return false;
    }
    const GroupRecord& record = state.Groups[static_cast<std::size_t>(group)];
    bool fits = record.Size == kSpiChannels;
    if (!fits)
        host.Message("The SPI group doesn't have 4 channels. Click on 'Edit Groups' and adjust.", "Error");
    for (const RoleCheck& check : kRoleChecks) {
        if (RoleFits(state, record, check)) continue;
        host.Message(check.Text, "SPI Group error");
        fits = false;
    }
    return fits;
}

}  // namespace zu
