#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "core/Capture.h"
#include "core/RateRules.h"
#include "core/Startup.h"
#include "hw/sim/SimAttachment.h"
#include "state/Catalogue.h"
#include "state/Rates.h"
#include "support/Bench.h"
#include "trigger/TrigCells.h"

namespace zu::test {

/// Every pod counts upwards, each from a start of its own.
class PodCounters final : public SimStimulus {
  public:
    SimTicks Step = 1000;
    SimRun At(int pod, SimTicks time) override {
        const SimTicks count = FloorDiv(time, Step);
        return {static_cast<std::uint8_t>(count + 7 * pod), (count + 1) * Step};
    }
};

/// A host whose waits let the instrument's own time pass.
struct InstrumentTimeHost : ScriptedHost {
    SimInstrument* Instrument = nullptr;
    double LongestWaitNs = 1e18;
    std::function<Turn()> OnTurn;  ///< a turn of the message loop
    std::function<void()> OnBox;   ///< what goes on behind a box

    void WaitNanoseconds(double ns) override {
        ns = std::min(ns, LongestWaitNs);
        ScriptedHost::WaitNanoseconds(ns);
        if (Instrument != nullptr) Instrument->Advance(ns);
    }
    Turn RunWaitingMessage() override { return OnTurn ? OnTurn() : Turn::Idle; }
    void Message(std::string_view text, std::string_view caption) override {
        ScriptedHost::Message(text, caption);
        if (OnBox) OnBox();
    }
};

/// A whole program that came up on a simulated instrument with counters at its pods. Time is the
/// instrument's own, so runs repeat.
struct LiveBench {
    explicit LiveBench(int row, SimCable cable = SimCable::Usb, bool direct = true)
        : LiveBench(SimSpec{row, cable},
                    std::make_unique<SimAttachment>(Traits(row, cable, direct), cable, Modes(cable))) {}
    ~LiveBench() { ReleaseRegisters(Hardware); }

    static SimTraits Traits(int row, SimCable cable, bool direct) {
        SimTraits traits = TraitsOf(row);
        const bool framed = cable == SimCable::Epp || cable == SimCable::Epp16 || cable == SimCable::Epp32;
        traits.Direct = direct && !framed;  // the framed cables reach no pod registers
        return traits;
    }
    static SimPortModes Modes(SimCable cable) { return {.Byte = true, .Epp = cable != SimCable::Byte}; }

    [[nodiscard]] SimInstrument& Sim() { return Cable->Instrument(); }
    CaptureRecord& Capture() { return State->Capture; }
    [[nodiscard]] std::string Status() { return std::string(Capture().StatusText.View()); }

    TempFolder Folder;
    std::unique_ptr<SimAttachment> Cable;
    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
    InstrumentTimeHost Host;
    RecordingShell Shell{*State};
    HardwareSession Hardware{Host};
    zu::App App{*State, Host, Shell, Hardware};
    std::shared_ptr<PodCounters> Signals = std::make_shared<PodCounters>();

  private:
    LiveBench(const SimSpec& spec, std::unique_ptr<SimAttachment> cable) : Cable(std::move(cable)) {
        State->Files.AppDir = Folder.Path();
        State->Command.Simulate = std::to_string(spec.Row) + "@" + std::string(SimCableName(spec.Cable));
        Sim().SetRealTime(false);
        Sim().Connect(Signals);
        Host.Instrument = &Sim();
        Hardware.Seams = Cable->Seams();
        RunStartupSequence(App);
        Capture().CaptureMode = 1;
        Capture().CaptureLoopMode = 0;
    }
};

}  // namespace zu::test
