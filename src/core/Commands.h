#pragma once

#include <string>
#include <string_view>

#include "core/App.h"
#include "core/CommandTable.h"

namespace zu {

/// How an entry looks at this moment.
struct CommandState {
    bool Removed = false;  ///< taken away for good by the model; no menu shows it
    bool Enabled = true;
    bool Checkable = false;
    bool Checked = false;
    std::string Text;
    std::string_view WhyNot;  ///< why it cannot run just now; empty when it can
};

/// Entries that the running model takes away. Rows 20 to 24 count with row 15.
CommandSet RemovedCommands(const InstrumentState& state);
/// Whether the program can do what the entry promises; entries that it cannot do yet stay disabled.
bool IsOffered(CommandId id);

/// To be called when a menu opens: moves a rate that the row does not allow, as SetRate would.
void PrepareMenu(App& app);
/// Text, enabling and check of an entry for the present state.
CommandState QueryCommand(const App& app, CommandId id);
/// Runs a command. False when it is removed, disabled, or belongs to a window (zoom, arrangement of windows,
/// dialogs, help), which then handles it itself.
bool RunCommand(App& app, CommandId id);

/// Version text of the series, with the product id of the command line behind it.
std::string AboutText(const InstrumentState& state);

/// Next of Normal, Single and Auto: the toolbar's mode button and the key M.
void CycleCaptureMode(App& app);
/// Sets the capture mode 0..4 inside a pause.
void SetCaptureMode(App& app, int mode);

}  // namespace zu
