#include "hw/AddressSearch.h"

#include <algorithm>
#include <cstdio>

#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr std::uint8_t kIsaMode = 8;
constexpr std::uint8_t kUsbMode = 9;
constexpr std::uint8_t kUsbFound = 15;
constexpr std::array<std::uint8_t, 3> kModesBySpeed{1, 2, 4};  // 4 bit, 8 bit, EPP

std::string Format(const char* format, unsigned value) {
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string FoundAt(unsigned address, int row) {
    return Format("Address=0x%X Model=", address) + std::string(DialogModelName(row));
}

}  // namespace

std::string UsbErrorText(std::uint8_t result) {
    switch (result) {
        case 0:
            return "Ostrand Labs USB driver not installed";
        case 1:
            return "Ostrand Labs USB device not connected";
        case 3:
            return "Ostrand Labs USB device not detected";
        case 7:
            return "Ostrand Labs USB Logic Analyzer not detected";
        default:
            return Format("Ostrand Labs USB error(%X) Call Ostrand Labs", result);
    }
}

AddressChoices OfferedAddresses(HardwareSession& hardware, InstrumentState& state) {
    AddressChoices choices;
    prt_dect(hardware);
    std::transform(hardware.ParallelFound.begin(), hardware.ParallelFound.end(), choices.Ports.begin(),
                   [](std::uint8_t found) { return found != 0; });
    choices.PortGroups = DriverUsable(hardware);
    if (!choices.PortGroups) state.Identity.ComMode = kUsbMode;
    return choices;
}

std::string_view DialogModelName(int row) {
    return row == 0 ? std::string_view("No ZU found") : Model(row).ShortName;
}

void TellRestart(HardwareSession& hardware, const InstrumentState& state) {
    if (state.Identity.Emulated == 0) hardware.Host->Message("Restart software now.", "Note:");
}

AddressSearch::AddressSearch(HardwareSession& hardware, InstrumentState& state, Progress progress)
    : hardware_(hardware), state_(state), progress_(std::move(progress)) {}

void AddressSearch::Begin() {
    canAccept_ = false;
    clearsButtons_ = false;
}

bool AddressSearch::Show(std::string text) {
    status_ = std::move(text);
    return !progress_ || progress_(status_);
}

std::uint8_t AddressSearch::Probe(std::uint16_t index) {
    IdentityRecord& identity = state_.Identity;
    const std::uint8_t row = FindBoard(hardware_, state_, identity.AddressTable[index]);
    identity.FoundTable[index] = row;
    return row;
}

SearchEnd AddressSearch::Conclude(std::uint16_t index, std::uint8_t row, const std::string& found,
                                  const std::string& none) {
    if (row == 0) {
        ReleaseRegisters(hardware_);
        Show(none);
        return SearchEnd::NotFound;
    }
    state_.Identity.AddressIndex = index;
    canAccept_ = true;
    Show(found);
    return SearchEnd::Found;
}

SearchEnd AddressSearch::TryParallel(std::uint16_t port, std::uint8_t comMode) {
    Begin();
    if (port >= kParallelPorts.size()) return SearchEnd::NotFound;
    const std::uint8_t row = ProbeParallel(port, comMode);
    const unsigned base = state_.Identity.HwPort;
    return Conclude(static_cast<std::uint16_t>(kParallelCandidate + port), row, FoundAt(base, row),
                    Format("No Logic Analyzer found at address=0x%X", base));
}

SearchEnd AddressSearch::TryIsa(std::uint16_t index) {
    Begin();
    if (index >= kIsaCandidates) return SearchEnd::NotFound;
    SelectInterface(hardware_, state_, 0, kIsaMode);
    const std::uint8_t row = Probe(index);
    const unsigned address = state_.Identity.AddressTable[index];
    return Conclude(index, row, FoundAt(address, row),
                    Format("No Logic Analyzer found at address=0x%X", address));
}

SearchEnd AddressSearch::TryUsb() {
    Begin();
    SelectInterface(hardware_, state_, 0, kUsbMode);
    const std::uint8_t row = Probe(kParallelCandidate);
    return Conclude(kParallelCandidate, row, "Model= " + std::string(DialogModelName(row)) + " (USB)",
                    "No Logic Analyzer found on USB bus");
}

SearchEnd AddressSearch::SearchIsa() {
    Begin();
    SelectInterface(hardware_, state_, 0, kIsaMode);
    std::uint16_t first = kIsaCandidates;
    for (std::uint16_t i = 0; i < kIsaCandidates; ++i) {
        if (Probe(i) != 0) {
            first = std::min(first, i);
        } else if (!Show("")) {
            ReleaseRegisters(hardware_);
            return SearchEnd::Cancelled;
        }
    }
    if (first < kIsaCandidates) return TryIsa(first);
    ReleaseRegisters(hardware_);
    return SearchEnd::NotFound;
}

std::uint8_t AddressSearch::ProbeParallel(std::uint16_t port, std::uint8_t comMode) {
    SelectInterface(hardware_, state_, port, comMode);
    return Probe(static_cast<std::uint16_t>(kParallelCandidate + port));
}

/// The first port on which a model answers in the slowest mode; false if the search was stopped.
bool AddressSearch::FindPort(std::uint16_t& port, std::uint8_t& row) {
    prt_dect(hardware_);
    const auto found = hardware_.ParallelFound;  // as it stands now: the search itself asks no more
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (found[i] == 0) continue;
        if (!Show(status_ + ".")) return false;
        const auto candidate = static_cast<std::uint16_t>(i);
        const std::uint8_t answer = ProbeParallel(candidate, kModesBySpeed[0]);
        if (row != 0 || answer == 0) continue;
        port = candidate;
        row = answer;
    }
    return true;
}

/// A mode stays in the running as long as it gives the model of the slowest one, round by round.
bool AddressSearch::RunRounds(std::uint16_t port, std::uint8_t row) {
    const std::uint8_t series = state_.Identity.ModelSeries;
    const int rounds = series == 1 ? 1 : 10;
    const bool fastModes = series == 0 || series == 2;
    running_ = {true, fastModes, fastModes};
    for (int round = 0; round < rounds; ++round) {
        if (!Show(status_ + ".")) return false;
        const std::uint8_t reference = ProbeParallel(port, kModesBySpeed[0]);
        running_[0] = running_[0] && reference == row;
        for (std::size_t i = 1; i < running_.size() && fastModes; ++i) {
            const std::uint8_t answer = ProbeParallel(port, kModesBySpeed[i]);
            running_[i] = running_[i] && answer != 0 && answer == reference;
        }
    }
    return true;
}

SearchEnd AddressSearch::ParallelNotFound(bool cancelled) {
    clearsButtons_ = true;
    ReleaseRegisters(hardware_);
    Show("Logic Analyzer not found");
    return cancelled ? SearchEnd::Cancelled : SearchEnd::NotFound;
}

SearchEnd AddressSearch::SearchParallel() {
    Begin();
    std::uint16_t port = 0;
    std::uint8_t row = 0;
    status_ = "Searching";
    if (!Show(status_) || !FindPort(port, row)) return ParallelNotFound(true);
    if (row == 0) return ParallelNotFound(false);
    if (!RunRounds(port, row)) return ParallelNotFound(true);
    for (std::size_t i = running_.size(); i-- > 0;) {
        if (running_[i]) return TryParallel(port, kModesBySpeed[i]);
    }
    return ParallelNotFound(false);
}

SearchEnd AddressSearch::SearchUsb() {
    Begin();
    const std::uint8_t result = UsbDetect(hardware_);
    if (result == kUsbFound) return TryUsb();
    ReleaseRegisters(hardware_);
    hardware_.Host->Message(UsbErrorText(result), "Error:");
    Show("USB error: Logic Analyzer not found");
    return SearchEnd::NotFound;
}

void AddressSearch::ChooseDemo() {
    Begin();
    IdentityRecord& identity = state_.Identity;
    constexpr int kRowOfOtherSeries = 5;
    const int row = Series(identity.ModelSeries).DefaultRow;
    identity.Emulated = 1;
    identity.HardwareType = static_cast<std::uint8_t>(row != 0 ? row : kRowOfOtherSeries);
    ReleaseRegisters(hardware_);
    canAccept_ = true;
    Show("Demo mode");
}

}  // namespace zu
