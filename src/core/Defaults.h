#pragma once

#include <array>
#include <string_view>

#include "core/App.h"

namespace zu {

/// One choice of the dialog "Logic Analyzer Emulation".
struct EmulationChoice {
    int Row;
    std::string_view Text;
};
/// The choices that this build offers; the dialog stores the row in HardwareType at once.
inline constexpr std::array<EmulationChoice, 5> kEmulationChoices{{
    {11, "Roach40S"},
    {12, "Roach80S"},
    {13, "Roach40L"},
    {14, "Roach80L"},
    {15, "Roach160L"},
}};

/// Sets every default of the state; runs once. While emulating it takes the series' default row and lets the
/// user choose the model, unless the command line fixed one. Ends with ApplyModel and what depends on it.
void InitDefaults(App& app);

/// Thresholds and pattern voltages of the series.
void SetLevelDefaults(InstrumentState& state);

/// Whether the command line asks for a viewer at once: a file to open, or a model to emulate.
bool StartsAsViewer(const CommandOptions& options);

}  // namespace zu
