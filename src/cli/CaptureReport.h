#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/TerminalHost.h"
#include "state/InstrumentState.h"

namespace zu {

/// What a run of captures came to.
struct CaptureReport {
    struct Saved {
        std::string File;
        double Seconds = 0;  ///< from arming to the end of read-out
        std::int32_t Alignment =
            0;  ///< samples by which the buffers are shifted to bring the trigger to its place
    };

    std::string Model;  ///< empty: no instrument was reached
    int Row = 0;
    int Channels = 0;
    int Boards = 0;
    std::string Simulated;  ///< as asked for; empty on an instrument
    std::string Scene;
    int RateCode = 0;
    int ClockType = 0;
    double PeriodNs = 0;  ///< 0: unknown
    int MemoryMode = 0;
    std::int32_t Samples = 0;  ///< of a channel
    std::int32_t Position = 0;
    std::vector<Saved> Captures;
    std::string Result;
    int Exit = 0;
    std::vector<Problem> Problems;

    /// Takes what the state says of instrument, clock, memory and trigger.
    void Describe(const InstrumentState& state, const std::string& simulated);
    /// One line for people.
    [[nodiscard]] std::string Headline() const;
};

std::string CaptureJson(const CaptureReport& report);

}  // namespace zu
