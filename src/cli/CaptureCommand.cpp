#include "cli/CaptureCommand.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <ostream>
#include <thread>
#include <unistd.h>

#include "cli/CaptureReport.h"
#include "cli/CaptureSession.h"
#include "cli/ClockText.h"
#include "cli/Interrupt.h"
#include "cli/TerminalText.h"
#include "cli/TriggerText.h"
#include "core/Capture.h"
#include "core/FileCommands.h"
#include "core/Paths.h"
#include "core/RateRules.h"
#include "core/Startup.h"
#include "files/DataFile.h"
#include "hw/Attachment.h"
#include "hw/sim/SimScenes.h"
#include "hw/sim/SimSpec.h"
#include "state/Catalogue.h"

namespace zu {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPollPause = std::chrono::milliseconds(30);
constexpr std::uint8_t kSingle = 1;
constexpr std::uint8_t kUsbWell = 63;
constexpr std::int32_t kAheadOfEnd = 3;  // the trigger needs room for what makes it

/// Why a run ends early.
struct Failure {
    CliExit Code;
    std::string Text;
};

/// Whether a file can come to stand at `name`, as far as that shows before a capture is taken.
std::optional<Failure> CheckPlace(const std::string& name) {
    namespace fs = std::filesystem;
    const std::string folder = FolderOfFile(name);
    std::error_code error;
    if (!fs::is_directory(folder, error)) return Failure{CliExit::Problems, folder + ": no such folder"};
    if (::access(folder.c_str(), W_OK) != 0)
        return Failure{CliExit::Problems, folder + ": may not be written"};
    if (fs::is_directory(name, error)) return Failure{CliExit::Problems, name + ": is a folder"};
    return std::nullopt;
}

/// What can be told wrong without asking an instrument.
std::optional<Failure> CheckRequest(const CaptureRequest& request) {
    if (LoadTypeOf(request.Output) != "ZU") {
        return Failure{CliExit::Usage, request.Output + ": the name of a capture ends in .zu"};
    }
    if (!request.Settings.empty() && LoadTypeOf(request.Settings).empty()) {
        return Failure{CliExit::Usage,
                       request.Settings + ": neither a settings file (.ini) nor a data file (.zu)"};
    }
    if (!request.Simulate.empty() && !ParseSimulate(request.Simulate)) {
        return Failure{CliExit::Usage,
                       "no instrument to simulate " + request.Simulate + ": " + SimulateChoices()};
    }
    if (!request.Scene.empty() && request.Simulate.empty()) {
        return Failure{CliExit::Usage, "--scene needs --simulate: an instrument has signals of its own"};
    }
    if (!request.Scene.empty() && FindSimScene(request.Scene) == nullptr) {
        return Failure{CliExit::Usage, "no scene " + request.Scene + "; there are " + SceneNames()};
    }
    return CheckPlace(NumberedName(request.Output, 0, request.Count));
}

/// One run: the program's state on an instrument, without windows.
class CaptureRun {
  public:
    CaptureRun(const CaptureRequest& request, std::ostream& out, std::ostream& err)
        : request_(request), err_(err), host_(out, err), cable_(request.Simulate) {
        host_.Interrupted = InterruptScope::Hit;
    }

    CliExit Run() {
        const auto failure = RunSteps();
        if (failure) Say(failure->Text);
        report_.Result = failure ? failure->Text : "done";
        report_.Exit = static_cast<int>(failure ? failure->Code : CliExit::Ok);
        report_.Problems = host_.Problems();
        return failure ? failure->Code : CliExit::Ok;
    }
    [[nodiscard]] const CaptureReport& Report() const { return report_; }

  private:
    std::optional<Failure> RunSteps() {
        if (auto failure = Connect()) return failure;
        if (auto failure = Prepare()) return failure;
        Introduce();
        for (int index = 0; index < request_.Count; ++index) {
            if (InterruptScope::Hit()) return Interrupted();
            if (auto failure = CaptureOne(index)) return failure;
        }
        return cutShort_ ? std::optional(Interrupted()) : std::nullopt;
    }

    void Say(const std::string& text) { err_ << "zu-cli: " << text << '\n' << std::flush; }

    std::optional<Failure> Connect();
    void ShowScene();
    std::optional<Failure> Prepare();
    std::optional<Failure> ApplyOptions();
    void Introduce();
    std::optional<Failure> CaptureOne(int index);
    std::optional<Failure> Wait(const std::string& label);
    std::optional<Failure> CheckWait(const std::string& label, Clock::time_point deadline, bool& forced);
    [[nodiscard]] Failure OutOfTime() const;
    [[nodiscard]] Failure Interrupted() const;
    void TellStatus(const std::string& label);
    std::optional<Failure> Save(int index, const std::string& label, double seconds);
    [[nodiscard]] double FillSeconds() const;

    const CaptureRequest& request_;
    std::ostream& err_;
    TerminalHost host_;
    NoWindows windows_;
    Attachment cable_;
    std::unique_ptr<InstrumentState> state_ = std::make_unique<InstrumentState>();
    HardwareSession hardware_{host_};
    App app_{*state_, host_, windows_, hardware_};
    CaptureReport report_;
    int told_ = -1;
    bool cutShort_ = false;  ///< the last capture was forced by an interruption
};

std::optional<Failure> CaptureRun::Connect() {
    state_->Command.Simulate = request_.Simulate;
    if (request_.Simulate.empty()) state_->Files.AppDir = ProgramDirectory("zu-cli");
    if (SimInstrument* simulated = cable_.Simulated(); simulated != nullptr && !request_.Scene.empty()) {
        simulated->Connect(MakeSimScene(request_.Scene));
    }
    cable_.AttachTo(hardware_);
    StartInstrument(app_);
    if (state_->Identity.Emulated != 0) {
        return Failure{CliExit::NoInstrument,
                       "no instrument answers; is it connected and switched on? --simulate=MODEL captures "
                       "without one"};
    }
    OfferModelChoices(app_);
    SetMemoryMode(app_, -1, state_->Memory.HardwareMode);
    if (cable_.Simulated() != nullptr) ShowScene();
    return std::nullopt;
}

/// The channels are named as the signals of the scene.
void CaptureRun::ShowScene() {
    report_.Scene = request_.Scene.empty() ? std::string(kSimScenes.front().Name) : request_.Scene;
    const SimScene* scene = FindSimScene(report_.Scene);
    if (scene == nullptr) return;
    for (const SimSceneChannel& channel : scene->Channels) {
        state_->Channels.ChannelName[channel.Channel] = channel.Name;
    }
}

std::optional<Failure> CaptureRun::Prepare() {
    if (!request_.Settings.empty()) {
        const LoadStatus status = LoadFile(app_, LoadTypeOf(request_.Settings), request_.Settings, true);
        if (status != LoadStatus::Loaded) {
            return Failure{CliExit::Problems, request_.Settings + ": the settings could not be loaded"};
        }
    }
    state_->Capture.CaptureMode = kSingle;
    state_->Capture.CaptureLoopMode = 0;
    return ApplyOptions();
}

std::optional<Failure> CaptureRun::ApplyOptions() {
    std::optional<std::string> wrong;
    if (!request_.Rate.empty()) wrong = ApplyRate(app_, request_.Rate);
    if (wrong) return Failure{CliExit::Usage, "--rate: " + *wrong};
    if (request_.Mode) wrong = ApplyMemoryMode(app_, *request_.Mode);
    if (wrong) return Failure{CliExit::Usage, "--mode: " + *wrong};
    if (!request_.Trigger.empty()) wrong = ApplyTriggerTexts(*state_, request_.Trigger);
    if (wrong) return Failure{CliExit::Usage, "--trigger: " + *wrong};
    if (!request_.Position) return std::nullopt;
    const std::int32_t last = std::max(state_->Memory.DisplayLen - kAheadOfEnd, 0);
    if (*request_.Position > last) {
        return Failure{CliExit::Usage, "--position: the trigger can stand at sample 0 to " +
                                           std::to_string(last) + ", not at " +
                                           std::to_string(*request_.Position)};
    }
    state_->Cursors.Cur[kCursorT] = *request_.Position;
    return std::nullopt;
}

void CaptureRun::Introduce() {
    report_.Describe(*state_, request_.Simulate);
    Say(report_.Headline());
}

double CaptureRun::FillSeconds() const {
    return GetRateNS(state_->Clock.ClockType, state_->Clock.ClockRate) * state_->Memory.BufferLen / 1e9;
}

std::optional<Failure> CaptureRun::CaptureOne(int index) {
    const std::string label = request_.Count == 1
                                  ? std::string()
                                  : std::to_string(index + 1) + "/" + std::to_string(request_.Count) + ": ";
    const std::uint8_t edge = state_->Trigger.EdgeList16[0];
    const auto began = Clock::now();
    told_ = -1;
    if (auto failure = Wait(label)) return Failure{failure->Code, label + failure->Text};
    const std::chrono::duration<double> took = Clock::now() - began;
    auto failure = Save(index, label, took.count());
    state_->Trigger.EdgeList16[0] = edge;  // "any" alternates it from one arming to the next
    return failure;
}

std::optional<Failure> CaptureRun::Wait(const std::string& label) {
    const bool endless = request_.TimeoutS <= 0;
    const std::chrono::duration<double> limit(request_.TimeoutS + FillSeconds());
    const auto deadline = endless ? Clock::time_point::max()
                                  : Clock::now() + std::chrono::duration_cast<Clock::duration>(limit);
    bool forced = false;
    Go(app_);
    while (state_->Capture.CaptureState != 0) {
        TimerBody(app_, kHardwareTimer);
        TellStatus(label);
        if (state_->Capture.CaptureState == 0) break;
        if (auto failure = CheckWait(label, deadline, forced)) return failure;
        if (state_->Capture.CaptureState != 0) std::this_thread::sleep_for(kPollPause);
    }
    if (forced || state_->Capture.CaptureCount > 0) return std::nullopt;
    // A poll stops a capture with words of its own; before the first one arming has failed.
    const bool polled = state_->Capture.TimerBodies > 0;
    return Failure{CliExit::Problems, polled ? ForTerminal(state_->Capture.StatusText.View())
                                             : "the instrument could not be armed"};
}

std::optional<Failure> CaptureRun::CheckWait(const std::string& label, Clock::time_point deadline,
                                             bool& forced) {
    if (UsbInForce(hardware_) && UsbStatus(hardware_) != kUsbWell) {
        Stop(app_);
        return Failure{CliExit::NoInstrument, "the instrument does not answer any more"};
    }
    const bool interrupted = InterruptScope::Hit();
    if (!interrupted && Clock::now() < deadline) return std::nullopt;
    const Failure failure = interrupted ? Interrupted() : OutOfTime();
    if (!request_.Force) {
        Stop(app_);
        return failure;
    }
    Say(label + (interrupted ? "interrupted" : "out of time") + "; what the memory holds is saved");
    cutShort_ = interrupted;
    forced = true;
    End(app_);
    return std::nullopt;
}

Failure CaptureRun::OutOfTime() const {
    const bool triggered = state_->Capture.TrigStat == 1;
    const std::string what =
        triggered ? "triggered, but the memory did not fill in time" : "no trigger came in time";
    return {CliExit::NoTrigger, what + "; --timeout waits longer, --force saves what the memory holds"};
}

Failure CaptureRun::Interrupted() const {
    std::string text = "interrupted; the instrument is stopped";
    if (request_.Count > 1) {
        text += "; " + std::to_string(report_.Captures.size()) + " of " + std::to_string(request_.Count) +
                " captures are saved";
    }
    return {CliExit::Interrupted, text};
}

void CaptureRun::TellStatus(const std::string& label) {
    const int status = state_->Capture.TrigStat;
    if (status == told_) return;
    told_ = status;
    if (status == 2) Say(label + "waiting for the trigger");
    if (status == 1) Say(label + "triggered, the memory fills");
}

std::optional<Failure> CaptureRun::Save(int index, const std::string& label, double seconds) {
    const std::string name = NumberedName(request_.Output, index, request_.Count);
    if (!WriteDataFile(*state_, host_, name))
        return Failure{CliExit::Problems, name + ": could not be written"};
    report_.Captures.push_back({name, seconds, state_->Pods.AdjAddr[0]});
    Say(label + "saved " + name);
    return std::nullopt;
}

}  // namespace

std::string SceneNames() {
    std::string names;
    for (const SimScene& scene : kSimScenes) names += (names.empty() ? "" : ", ") + std::string(scene.Name);
    return names;
}

std::string NumberedName(const std::string& name, int index, int count) {
    if (count == 1) return name;
    const std::size_t dot = name.rfind('.');
    std::string number = std::to_string(index + 1);
    const std::size_t width = std::to_string(count).size();
    number.insert(0, width - std::min(width, number.size()), '0');
    return name.substr(0, dot) + "-" + number + name.substr(dot);
}

CliExit TakeCaptures(const CaptureRequest& request, std::ostream& out, std::ostream& err) {
    if (const auto failure = CheckRequest(request)) {
        err << "zu-cli: " << failure->Text << '\n';
        return failure->Code;
    }
    const InterruptScope signals;
    CaptureRun run(request, out, err);
    const CliExit code = run.Run();
    if (request.Json) out << CaptureJson(run.Report()) << std::flush;
    return out ? code : CliExit::Problems;
}

}  // namespace zu
