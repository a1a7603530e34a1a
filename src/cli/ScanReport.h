#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hw/HardwareSession.h"

namespace zu {

/// One place where an instrument may be.
struct ScanPlace {
    std::string Cable;          ///< "USB", "ISA" or "parallel"
    std::int32_t Address = -1;  ///< port address, -1 for USB
    std::int32_t ComMode = 0;   ///< mode in which it was found; 0 where none answered
    std::string Mode;           ///< label of a parallel mode
    int Row = 0;                ///< catalogue row, 0 none
    std::string Model;          ///< short name of the row
    std::string Problem;        ///< why nothing was found; empty if something was
};

struct ScanReport {
    std::string Attached;       ///< "this machine", or the simulated instrument
    std::string DriverFailure;  ///< why ports cannot be reached; empty if they can
    std::vector<ScanPlace> Places;

    [[nodiscard]] bool FoundAny() const;
};

/// Tries every connection. The session's seams are attached and its start-up has run.
ScanReport Scan(HardwareSession& hardware);

std::string ScanText(const ScanReport& report);
std::string ScanJson(const ScanReport& report);

}  // namespace zu
