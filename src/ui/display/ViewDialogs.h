#pragma once

#include "core/CommandTable.h"
#include "display/TimingView.h"

namespace zu {

class CZuView;

/// Runs a command that edits channels, groups, lines or columns, or searches: it opens the dialog, or works
/// on the line under the pointer. False for every other command.
bool RunEditCommand(CZuView& view, CommandId id);

/// Runs a dialog that the Timing view asks for.
void RunTimingDialog(CZuView& view, const DialogRequest& request);

}  // namespace zu
