#pragma once

#include "core/App.h"

namespace zu {

/// Puts the connection of ComMode and AddressIndex in force. A port that the index does not name ends the
/// process.
void SelectConnection(App& app);
/// The connection to begin with where none is known: the ISA addresses, or the parallel port of the series
/// that has no other.
void SelectFirstConnection(App& app);
/// BoardPortAddress of the chosen candidate.
void TakeBoardAddress(IdentityRecord& identity);

/// At start-up: the user finds the instrument or chooses emulation. Left without a choice, the stored
/// connection stays for the next start and the program goes on in emulation.
void AskForAddress(App& app);
/// From the menu, with no capture running: the same, and the model follows what was chosen. Left without a
/// choice, the instrument in use is taken up again. With hardware in use the user is told to restart.
void ChangeHardwareAddress(App& app);

}  // namespace zu
