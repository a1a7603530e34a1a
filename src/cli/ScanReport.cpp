#include "cli/ScanReport.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

#include "cli/Json.h"
#include "hw/AddressSearch.h"

namespace zu {
namespace {

constexpr std::uint8_t kUsbFound = 15;

std::string Hex(std::int32_t address) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%X", static_cast<unsigned>(address));
    return text.data();
}

std::string ModeName(std::int32_t comMode) {
    for (const ComModeLabel& mode : kParallelModes) {
        if (mode.ComMode == comMode) return std::string(mode.Text);
    }
    return {};
}

/// Fills in what a try left in the state.
ScanPlace Conclude(ScanPlace place, SearchEnd end, const AddressSearch& search,
                   const InstrumentState& state) {
    if (end != SearchEnd::Found) {
        place.Problem = search.Status();
        return place;
    }
    place.Row = state.Identity.HardwareType;
    place.Model = DialogModelName(place.Row);
    place.ComMode = state.Identity.ComMode;
    place.Mode = ModeName(place.ComMode);
    return place;
}

/// Runs the tries one after the other; each has a report of its own.
class Scanner {
  public:
    explicit Scanner(HardwareSession& hardware)
        : hardware_(hardware), state_(std::make_unique<InstrumentState>()), search_(hardware, *state_) {}

    ScanReport Run() {
        TryUsb();
        const AddressChoices choices = OfferedAddresses(hardware_, *state_);
        report_.DriverFailure = DriverFailureText(hardware_);
        if (choices.PortGroups) {
            for (std::uint16_t i = 0; i < kIsaCandidates; ++i) TryIsa(i);
            TryParallel(choices);
        }
        CloseHardware(hardware_);
        return std::move(report_);
    }

  private:
    void TryUsb() {
        ScanPlace place;
        place.Cable = "USB";
        const std::uint8_t result = UsbDetect(hardware_);
        if (result == kUsbFound) {
            const SearchEnd end = search_.TryUsb();
            place = Conclude(place, end, search_, *state_);
        } else {
            place.Problem = UsbErrorText(result);
        }
        report_.Places.push_back(place);
    }
    void TryIsa(std::uint16_t index) {
        ScanPlace place;
        place.Cable = "ISA";
        place.Address = state_->Identity.AddressTable[index];
        const SearchEnd end = search_.TryIsa(index);
        report_.Places.push_back(Conclude(place, end, search_, *state_));
    }
    /// The search itself picks the port with the instrument and the fastest mode.
    void TryParallel(const AddressChoices& choices) {
        if (std::none_of(choices.Ports.begin(), choices.Ports.end(), [](bool there) { return there; }))
            return;
        const SearchEnd end = search_.SearchParallel();
        const int found = end == SearchEnd::Found ? state_->Identity.AddressIndex - kParallelCandidate : -1;
        for (std::size_t i = 0; i < choices.Ports.size(); ++i) {
            if (!choices.Ports[i]) continue;
            ScanPlace place;
            place.Cable = "parallel";
            place.Address = kParallelPorts[i];
            if (static_cast<int>(i) == found) {
                place = Conclude(place, end, search_, *state_);
            } else {
                place.Problem = "No Logic Analyzer found at address=" + Hex(place.Address);
            }
            report_.Places.push_back(place);
        }
    }

    HardwareSession& hardware_;
    std::unique_ptr<InstrumentState> state_;
    AddressSearch search_;
    ScanReport report_;
};

std::string PlaceName(const ScanPlace& place) {
    return place.Address < 0 ? place.Cable : place.Cable + " " + Hex(place.Address);
}

std::string WithoutLineEnd(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

void PutPlace(JsonWriter& json, const ScanPlace& place) {
    json.BeginObject();
    json.String("cable", place.Cable);
    json.Key("address");
    place.Address < 0 ? json.Null() : json.Integer(place.Address);
    json.Boolean("found", place.Row != 0);
    if (place.Row != 0) {
        json.Integer("row", place.Row);
        json.String("model", place.Model);
        json.Integer("comMode", place.ComMode);
        if (!place.Mode.empty()) json.String("mode", place.Mode);
    } else {
        json.String("problem", place.Problem);
    }
    json.EndObject();
}

}  // namespace

bool ScanReport::FoundAny() const {
    return std::any_of(Places.begin(), Places.end(), [](const ScanPlace& place) { return place.Row != 0; });
}

ScanReport Scan(HardwareSession& hardware) {
    return Scanner(hardware).Run();
}

std::string ScanText(const ScanReport& report) {
    constexpr std::size_t kNameWidth = 16;
    std::string text = "Attached        " + report.Attached + "\n";
    for (const ScanPlace& place : report.Places) {
        std::string line = PlaceName(place);
        line.resize(std::max(kNameWidth, line.size() + 1), ' ');
        if (place.Row != 0) {
            line += place.Model + " (row " + std::to_string(place.Row) + ")";
            if (!place.Mode.empty()) line += ", " + place.Mode;
        } else {
            line += place.Problem;
        }
        text += line + "\n";
    }
    if (!report.DriverFailure.empty()) {
        text += "Ports           cannot be reached: " + WithoutLineEnd(report.DriverFailure) + "\n";
    }
    return text;
}

std::string ScanJson(const ScanReport& report) {
    JsonWriter json;
    json.BeginObject();
    json.String("attached", report.Attached);
    json.Boolean("found", report.FoundAny());
    json.Boolean("portsReachable", report.DriverFailure.empty());
    if (!report.DriverFailure.empty()) json.String("portProblem", WithoutLineEnd(report.DriverFailure));
    json.Key("places");
    json.BeginArray();
    for (const ScanPlace& place : report.Places) PutPlace(json, place);
    json.EndArray();
    json.EndObject();
    return json.Text();
}

}  // namespace zu
