#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "files/DataFile.h"
#include "files/SettingsReader.h"
#include "support/ScriptedHost.h"
#include "support/StartState.h"

namespace zu::test {

/// Gives every buffer of the model one length, without freeing anything: what a memory mode does.
inline void SetLengths(InstrumentState& state, std::int32_t length) {
    state.Memory.BufferLen = state.Memory.DisplayLen = length;
    for (int i = 0; i < kMaxPods; ++i) {
        SetBufLenFull(state.Buffer.BufLen, i, i < state.Shape.BufCount ? length : 0);
    }
}

/// Stands in for the controller around a load and writes down what is asked of it.
struct Loader {
    InstrumentState& State;
    ScriptedHost& Host;
    std::vector<std::pair<int, int>> Modes{};  ///< mux and mode of each application
    std::vector<std::string> Log{};

    /// Lengths of the modes 0 to 3 at the slow internal rates of the large boards.
    static constexpr std::array<std::int32_t, 4> kLengths{8192, 131072, 16384, 262144};

    [[nodiscard]] DataFileHooks Hooks() {
        return {.ApplyMemoryMode =
                    [this](int mux, int mode) {
                        Log.push_back("memory");
                        Modes.emplace_back(mux, mode);
                        if (mode >= 0 && mode < 4)
                            SetLengths(State, kLengths[static_cast<std::size_t>(mode)]);
                    },
                .LoadCsv = [this](const std::string&) { Log.push_back("csv"); },
                .DecodeSerial = [this] { Log.push_back("decode"); },
                .RedrawWindows = [this] { Log.push_back("redraw"); }};
    }

    /// The whole load of a data file: question, settings, memory mode, windows, records.
    LoadStatus Load(const std::string& path) {
        const int row = HardwareTypeOfFile(path).value_or(State.Identity.HardwareType);
        if (row != State.Identity.HardwareType &&
            Host.Ask("The settings file does not match the installed hardware. Abort load?", "Warning")) {
            return LoadStatus::Loaded;
        }
        ReadSettings(State, Host, path);
        const DataFileHooks hooks = Hooks();
        hooks.ApplyMemoryMode(State.Memory.HardwareMux, State.Memory.HardwareMode);
        const IniText ini = IniText::Load(path).value_or(IniText{});
        State.Windows.TimingStat = ini.Int32("TimingWin", "Stat").value_or(State.Windows.TimingStat);
        State.Windows.StateStat = ini.Int32("StateWin", "Stat").value_or(State.Windows.StateStat);
        State.Windows.SerialStat = ini.Int32("SerialWin", "Stat").value_or(State.Windows.SerialStat);
        return ReadDataFile(State, Host, path, "ZU", false, hooks);
    }
};

}  // namespace zu::test
