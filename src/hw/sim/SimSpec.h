#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zu {

/// The cable that the simulated instrument hangs on. The EPP ones differ in the width of block reads.
enum class SimCable : std::uint8_t { Usb, Isa, Byte, Epp, Epp16, Epp32 };

/// Which instrument is simulated, and where.
struct SimSpec {
    int Row = 15;  ///< catalogue row, one of those that detection can answer
    SimCable Cable = SimCable::Usb;
};

/// "Roach160L", "Roach160L@isa", "15@epp16" …: a row by its number, file label or short name (the last also
/// without its closing "B"), and a cable, USB if none is named. Nothing for a row that no detection answers
/// or an unknown cable.
std::optional<SimSpec> ParseSimulate(std::string_view text);

/// What ParseSimulate takes, as a message tells it: "MODEL[@CABLE] with a model of Pike40S, … and a cable
/// of usb, …".
std::string SimulateChoices();

/// Name of a cable as ParseSimulate takes it.
std::string_view SimCableName(SimCable cable);

/// The connection under which the program reaches it: ComMode and AddressIndex as the preferences keep them.
struct SimConnection {
    std::int32_t ComMode;
    std::uint16_t AddressIndex;
};
SimConnection ConnectionOf(const SimSpec& spec);

/// What an instrument of a row is made of.
struct SimTraits {
    bool Later = true;        ///< the younger series, with registers for its control bytes
    bool LargeMemory = true;  ///< memory class 2
    int Boards = 4;
    bool Direct = true;  ///< pod registers answer at addresses of their own
};
/// Row 1 to 5 or 11 to 15; any other is taken as 15.
SimTraits TraitsOf(int row);

}  // namespace zu
