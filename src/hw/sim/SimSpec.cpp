#include "hw/sim/SimSpec.h"

#include <algorithm>
#include <array>
#include <utility>

#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr std::array<std::pair<std::string_view, SimCable>, 6> kCables{{{"usb", SimCable::Usb},
                                                                        {"isa", SimCable::Isa},
                                                                        {"byte", SimCable::Byte},
                                                                        {"epp", SimCable::Epp},
                                                                        {"epp16", SimCable::Epp16},
                                                                        {"epp32", SimCable::Epp32}}};

std::optional<SimCable> CableOf(std::string_view name) {
    const auto found =
        std::find_if(kCables.begin(), kCables.end(), [name](const auto& c) { return c.first == name; });
    return found == kCables.end() ? std::nullopt : std::optional(found->second);
}

constexpr bool IsDetectable(int row) {
    return (row >= 1 && row <= 5) || (row >= 11 && row <= 15);
}

std::optional<int> RowOf(std::string_view name) {
    std::optional<int> row = RowOfUserText(name);
    if (!row) row = RowOfUserText(std::string(name) + "B");
    return row && IsDetectable(*row) ? row : std::nullopt;
}

}  // namespace

std::optional<SimSpec> ParseSimulate(std::string_view text) {
    const std::size_t at = text.find('@');
    const auto row = RowOf(text.substr(0, at));
    const auto cable =
        at == std::string_view::npos ? std::optional(SimCable::Usb) : CableOf(text.substr(at + 1));
    if (!row || !cable) return std::nullopt;
    return SimSpec{*row, *cable};
}

std::string SimulateChoices() {
    std::string models;
    for (int row = 0; row < kModelRows; ++row) {
        if (!IsDetectable(row)) continue;
        std::string_view name = Model(row).ShortName;
        if (name.ends_with('B')) name.remove_suffix(1);
        models += (models.empty() ? "" : ", ") + std::string(name);
    }
    std::string cables;
    for (const auto& [name, cable] : kCables) cables += (cables.empty() ? "" : ", ") + std::string(name);
    return "MODEL[@CABLE] with a model of " + models + " and a cable of " + cables;
}

std::string_view SimCableName(SimCable cable) {
    const auto found =
        std::find_if(kCables.begin(), kCables.end(), [cable](const auto& c) { return c.second == cable; });
    return found == kCables.end() ? std::string_view{} : found->first;
}

SimConnection ConnectionOf(const SimSpec& spec) {
    constexpr std::uint16_t kFirstPort =
        7;  // candidates 7 to 9 are the parallel ports, 7 also stands for USB
    constexpr std::uint16_t kSimPort = kFirstPort + 1;
    switch (spec.Cable) {
        case SimCable::Usb:
            return {9, kFirstPort};
        case SimCable::Isa:
            return {8, 0};
        case SimCable::Byte:
            return {2, kSimPort};
        case SimCable::Epp:
            return {4, kSimPort};
        case SimCable::Epp16:
            return {32, kSimPort};
        case SimCable::Epp32:
            break;
    }
    return {64, kSimPort};
}

SimTraits TraitsOf(int row) {
    if (!IsDetectable(row)) row = 15;
    SimTraits traits;
    traits.Later = row > 10;
    const int model = traits.Later ? row - 10 : row;
    traits.LargeMemory = model >= 3;
    traits.Boards = model == 5 ? 4 : model % 2 == 1 ? 1 : 2;
    return traits;
}

}  // namespace zu
