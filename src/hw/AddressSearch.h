#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "hw/HardwareSession.h"

namespace zu {

/// What became of a search.
enum class SearchEnd : std::uint8_t { Found, NotFound, Cancelled };

/// Connections that the address dialog may offer.
struct AddressChoices {
    std::array<bool, 3> Ports{};  ///< parallel ports that answered
    bool PortGroups = true;       ///< false: only USB and demo are left
};
/// Looks for parallel ports. Where the driver cannot be opened, ComMode becomes that of USB.
AddressChoices OfferedAddresses(HardwareSession& hardware, InstrumentState& state);

/// A kind of connection as the address dialog labels it.
struct ComModeLabel {
    std::uint8_t ComMode;
    std::string_view Text;
};
/// The modes of a parallel port, slowest first, and the label of the USB search.
inline constexpr std::array<ComModeLabel, 5> kParallelModes{{{1, "4 bit"},
                                                             {2, "8 bit"},
                                                             {4, "EPP (byte mode)"},
                                                             {32, "EPP (word mode)"},
                                                             {64, "EPP(dbl word mode)"}}};
inline constexpr std::string_view kUsbLabel = "USB \n\rAuto detect";
inline constexpr std::string_view kDemoLabel = "Demo (no Logic Analyzer)";
inline constexpr std::uint16_t kIsaCandidates = 7;      ///< first candidates of AddressTable
inline constexpr std::uint16_t kParallelCandidate = 7;  ///< of the first parallel port, and of USB

/// Name of a row as the address dialog shows it.
std::string_view DialogModelName(int row);

/// What the box of the USB search says of an answer of UsbDetect other than 15.
std::string UsbErrorText(std::uint8_t result);

/// The work behind the address dialog: tries single candidates and searches for the instrument. What it finds
/// goes into the state: ComMode, HwPort, AddressIndex, FoundTable, HardwareType, Emulated. Where nothing
/// answers, nothing is left in force: an open bus would read as a finished capture.
class AddressSearch {
  public:
    /// Takes each new status text while a search runs; false stops the search.
    using Progress = std::function<bool(std::string_view status)>;

    AddressSearch(HardwareSession& hardware, InstrumentState& state, Progress progress = {});

    /// Parallel port 0 to 2 in communication mode 1, 2, 4, 32 or 64.
    SearchEnd TryParallel(std::uint16_t port, std::uint8_t comMode);
    /// ISA address, candidate 0 to 6.
    SearchEnd TryIsa(std::uint16_t index);
    SearchEnd TryUsb();
    /// All ISA addresses; the first that answers is kept.
    SearchEnd SearchIsa();
    /// All parallel ports that are there, then the fastest mode that the one with the instrument can do.
    SearchEnd SearchParallel();
    /// Looks for the device first and says in a box what is wrong with it.
    SearchEnd SearchUsb();
    /// Goes on without an instrument, with the default model of the series.
    void ChooseDemo();

    [[nodiscard]] const std::string& Status() const { return status_; }
    /// Whether the dialog may be left with OK.
    [[nodiscard]] bool CanAccept() const { return canAccept_; }
    /// Whether the dialog shall clear its port and mode buttons.
    [[nodiscard]] bool ClearsButtons() const { return clearsButtons_; }

  private:
    bool Show(std::string text);
    void Begin();
    std::uint8_t Probe(std::uint16_t index);
    SearchEnd Conclude(std::uint16_t index, std::uint8_t row, const std::string& found,
                       const std::string& none);
    std::uint8_t ProbeParallel(std::uint16_t port, std::uint8_t comMode);
    bool FindPort(std::uint16_t& port, std::uint8_t& row);
    bool RunRounds(std::uint16_t port, std::uint8_t row);
    SearchEnd ParallelNotFound(bool cancelled);

    HardwareSession& hardware_;
    InstrumentState& state_;
    Progress progress_;
    std::string status_;
    bool canAccept_ = false;
    bool clearsButtons_ = false;
    std::array<bool, 3> running_{};  ///< modes still in the running, slowest first
};

/// After the address dialog was left from the menu: with hardware in use the program must start anew.
void TellRestart(HardwareSession& hardware, const InstrumentState& state);

}  // namespace zu
