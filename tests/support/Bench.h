#pragma once

#include <memory>
#include <string>

#include "core/App.h"
#include "core/Paths.h"
#include "state/Model.h"
#include "support/RecordingShell.h"
#include "support/ScriptedHost.h"
#include "support/TempFolder.h"

namespace zu::test {

/// A whole program without windows: state, scripted host, recorded shell, and nothing at the cables. Its
/// files lie in a folder of its own.
struct Bench {
    Bench() {
        State->Files.AppDir = Folder.Path();
        BuildFileNames(*State);
    }

    TempFolder Folder;
    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
    ScriptedHost Host;
    RecordingShell Shell{*State};
    HardwareSession Hardware{Host};
    zu::App App{*State, Host, Shell, Hardware};

    /// Emulates a row of the catalogue with its plain memory.
    void UseRow(int row) { ChangeModel(*State, row); }
    [[nodiscard]] std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto& box : Host.Boxes) texts.push_back(box.Caption + "|" + box.Text);
        return texts;
    }
    void Forget() {
        Host.Boxes.clear();
        Host.TimerLog.clear();
        Shell.Log.clear();
    }
};

}  // namespace zu::test
