#include "RandomWalk.h"

#include <gtest/gtest.h>

#include "core/Commands.h"
#include "core/FileCommands.h"

namespace zu::test {
namespace {

constexpr int kRows[] = {1, 2, 3, 4, 5, 11, 12, 13, 14, 15};
constexpr SimCable kCables[] = {SimCable::Usb, SimCable::Usb, SimCable::Isa, SimCable::Byte, SimCable::Epp32};
constexpr int kDeepest = 3;  ///< actions within actions

int RowOf(unsigned seed) {
    return kRows[seed % std::size(kRows)];
}
SimCable CableOf(unsigned seed) {
    return kCables[seed / std::size(kRows) % std::size(kCables)];
}

/// Of what a load brings, the one thing that would let the walk end.
bool EndsTheProgram(CommandId id) {
    return id == CommandId::FileExit;
}

}  // namespace

RandomWalk::RandomWalk(unsigned seed) : random_(seed), bench_(RowOf(seed), CableOf(seed)) {
    EXPECT_EQ(State().Identity.Emulated, 0);
    whole_ = bench_.Cable->Seams();
    Repair();
    bench_.Hardware.Seams = {&ports_, &driver_, &usb_};
    SetupOSFunctions(bench_.Hardware, 0);
    const SimConnection at = ConnectionOf({RowOf(seed), CableOf(seed)});
    const int port = at.ComMode == 8 || at.ComMode == 9 ? 0 : at.AddressIndex - 7;
    SetupIO(bench_.Hardware, State(), static_cast<std::uint16_t>(port),
            static_cast<std::uint8_t>(at.ComMode));
    EXPECT_EQ(FindStoredBoard(bench_.Hardware, State(), State().Identity.AddressIndex), RowOf(seed));
    bench_.Host.LongestWaitNs = 1e9;
    bench_.Host.OnTurn = [this] { return TurnOfFastLoop(); };
    bench_.Host.OnBox = [this] { BehindABox(); };
    bench_.Signals->Step = 300;
    State().Capture.CaptureMode = 0;
}

RandomWalk::~RandomWalk() {
    bench_.Host.OnTurn = nullptr;
    bench_.Host.OnBox = nullptr;
    Repair();
    CloseHardware(bench_.Hardware);
    bench_.Hardware.Seams = {};
    SetupOSFunctions(bench_.Hardware, 0);
}

const std::vector<RandomWalk::Action>& RandomWalk::Actions() {
    static const std::vector<Action> kActions{
        {"tick", 30, &RandomWalk::DoTick},          {"go", 8, &RandomWalk::DoGo},
        {"stop", 3, &RandomWalk::DoStop},           {"end", 2, &RandomWalk::DoEnd},
        {"go or stop", 3, &RandomWalk::DoGoOrStop}, {"time", 10, &RandomWalk::DoTime},
        {"pause", 2, &RandomWalk::DoPause},         {"paused change", 2, &RandomWalk::DoPausedChange},
        {"command", 8, &RandomWalk::DoCommand},     {"rate", 4, &RandomWalk::DoRate},
        {"clock", 2, &RandomWalk::DoClock},         {"memory", 2, &RandomWalk::DoMemory},
        {"mode", 4, &RandomWalk::DoMode},           {"trigger", 8, &RandomWalk::DoTrigger},
        {"pods", 3, &RandomWalk::DoPods},           {"windows", 2, &RandomWalk::DoWindows},
        {"load", 2, &RandomWalk::DoLoad},           {"save", 1, &RandomWalk::DoSave},
        {"clear", 1, &RandomWalk::DoClear},         {"fault", 2, &RandomWalk::DoFault},
        {"repair", 3, &RandomWalk::DoRepair},
    };
    return kActions;
}

const RandomWalk::Action& RandomWalk::Choose() {
    int all = 0;
    for (const Action& action : Actions()) all += action.Weight;
    int left = Below(all);
    for (const Action& action : Actions()) {
        left -= action.Weight;
        if (left < 0) return action;
    }
    return Actions().front();
}

void RandomWalk::Run(int actions) {
    for (int i = 0; i < actions && !testing::Test::HasFailure(); ++i) {
        const Action& action = Choose();
        SCOPED_TRACE(testing::Message() << "action " << i << ": " << action.Name);
        (this->*action.Do)();
        CheckOrder(action.Name);
        bench_.Host.Boxes.clear();
        bench_.Host.TimerLog.clear();
        bench_.Host.Requests.clear();
        bench_.Host.Remarks.clear();
        bench_.Host.Files.clear();
        bench_.Shell.Log.clear();
    }
}

void RandomWalk::CheckOrder(const char* action) {
    const CaptureRecord& capture = State().Capture;
    const std::set<int>& timers = bench_.Host.Timers;
    EXPECT_LE(capture.CaptureState, 2) << action;
    EXPECT_EQ(bench_.App.Poll.BusyDepth, 0) << action;
    EXPECT_FALSE(bench_.App.Poll.FastLoopActive) << action;
    EXPECT_EQ(bench_.App.Poll.TimerRunning, !timers.empty()) << action;
    if (capture.CaptureState == 1) {
        EXPECT_EQ(timers, std::set<int>{kHardwareTimer}) << action;
    } else {
        EXPECT_TRUE(timers.empty()) << action << " in state " << int{capture.CaptureState} << ", mode "
                                    << int{capture.CaptureMode} << ", loop " << int{capture.CaptureLoopMode}
                                    << ": " << testing::PrintToString(bench_.Host.TimerLog);
    }
    for (int pod = 0; pod < kMaxPods; ++pod) {
        const std::int32_t length = GetBufLenFull(State().Buffer.BufLen, pod);
        EXPECT_GE(length, 0) << action;
        EXPECT_LE(static_cast<std::size_t>(length), State().Buffer.Room(pod)) << action;
    }
}

void RandomWalk::DoGo() {
    if (OneIn(4)) State().Capture.ClearBufferOnGo = static_cast<std::uint8_t>(Below(2));
    Go(bench_.App);
}

/// The timers that run fire, as the desktop would let them.
void RandomWalk::Tick() {
    const std::set<int> running = bench_.Host.Timers;
    const std::int32_t before = State().Capture.CaptureCount;
    for (const int id : running) OnTimer(bench_.App, id);
    if (State().Capture.CaptureCount > before) ++captures_;
}

void RandomWalk::DoTick() {
    bench_.Sim().Advance(Below(40) * 1e6);
    Tick();
}

/// The toggle by itself belongs to timer-paced captures; the fast loop is paused by scopes.
void RandomWalk::DoPause() {
    if (State().Capture.CaptureLoopMode == 0) PauseCapture(bench_.App);
}

void RandomWalk::DoPausedChange() {
    CapturePause pause(bench_.App);
    if (OneIn(2)) DoRate();
    DoTrigger();
    if (OneIn(2)) pause.Resume();
    if (OneIn(4)) DoMode();
}

void RandomWalk::DoCommand() {
    const auto id = static_cast<CommandId>(Below(kCommandCount));
    if (EndsTheProgram(id)) return;
    if (OneIn(2)) PrepareMenu(bench_.App);
    RunCommand(bench_.App, id);
}

void RandomWalk::DoRate() {
    SetRate(bench_.App, Below(kRateCodes));
}

void RandomWalk::DoClock() {
    if (OneIn(2)) return SetInternalClock(bench_.App);
    SetClockType(bench_.App, Below(15));
}

void RandomWalk::DoMemory() {
    SetMemoryMode(bench_.App, Below(4) - 1, OneIn(4) ? Below(kMemoryModes) : 0);
}

void RandomWalk::DoMode() {
    if (OneIn(2)) return SetCaptureMode(bench_.App, Below(kCaptureModeCount));
    RunCommand(bench_.App, OneIn(3) ? CommandId::LoopFaster : CommandId::LoopNormal);
}

void RandomWalk::DoTrigger() {
    TriggerRecord& trigger = State().Trigger;
    switch (Below(6)) {
        case 0:
            return SetAllWord(State(), "X01"[Below(3)], Below(kTrigWords));
        case 1:
            trigger.SeqList[static_cast<std::size_t>(Below(kTrigWords))] = Below(18) - 1;
            return;
        case 2:
            trigger.SeqList.fill(0);
            trigger.SeqList[0] = 1;
            return;
        case 3:
            trigger.EdgeList16[0] = static_cast<std::uint8_t>(Below(3));
            trigger.TrigMatchMode[0] = static_cast<std::uint8_t>(Below(2));
            trigger.TrigCnt = static_cast<std::uint8_t>(random_());
            trigger.TrigCntMd = static_cast<std::int8_t>(Below(4));
            return;
        case 4:
            State().Cursors.Cur[kCursorT] = Below(std::max(State().Memory.DisplayLen, 1));
            return;
        default:
            return SetCharOfChannel(State(), Below(40), Below(2), "X01"[Below(3)]);
    }
}

void RandomWalk::DoPods() {
    PodRecord& pods = State().Pods;
    const auto pod = static_cast<std::size_t>(Below(kMaxPods));
    pods.HardwarePod[pod] = static_cast<std::int8_t>(OneIn(2) ? 0 : Below(5));
    if (OneIn(3)) pods.HardwarePod.fill(0);
    pods.ThrHd[static_cast<std::size_t>(Below(kThresholds))] = static_cast<std::uint16_t>(random_());
    pods.ReprogramFlag = static_cast<std::uint8_t>(random_());
    State().Pattern.PatternOutputMode = static_cast<std::int8_t>(Below(3));
    State().Pattern.PatDirty = 1;
    State().Channels.ChannelInvert[static_cast<std::size_t>(Below(kMaxChannels))] ^= 1;
}

void RandomWalk::DoWindows() {
    constexpr WindowId kAll[] = {WindowId::Timing, WindowId::StateList, WindowId::Serial,
                                 WindowId::Spi,    WindowId::Cursor,    WindowId::Threshold};
    const WindowId window = kAll[Below(std::size(kAll))];
    if (OneIn(2)) return bench_.Shell.Open(window);
    bench_.Shell.Close(window);
}

void RandomWalk::DoLoad() {
    const std::string name = bench_.Folder.File(OneIn(2) ? "walk.zu" : "walk.ini");
    const bool data = name.ends_with("zu");
    if (OneIn(4)) {  // with a hole in it
        std::string bytes = bench_.Folder.Read(data ? "walk.zu" : "walk.ini");
        if (!bytes.empty()) bytes[static_cast<std::size_t>(Below(static_cast<int>(bytes.size())))] = '7';
        bench_.Folder.Write(data ? "walk.zu" : "walk.ini", bytes);
    }
    if (OneIn(2)) {
        LoadFile(bench_.App, data ? "ZU" : "INI", name, OneIn(2));
    } else {
        bench_.Host.Files.push_back(name);
        OpenCommand(bench_.App);
    }
}

void RandomWalk::DoSave() {
    const bool data = State().Memory.DisplayLen <= 32768 && OneIn(4);
    SaveFile(bench_.App, bench_.Folder.File(data ? "walk.zu" : "walk.ini"), data ? "ZU" : "INI");
}

void RandomWalk::DoClear() {
    ClearDataBuffer(bench_.App);
}

void RandomWalk::DoFault() {
    ++faults_;
    FaultPlan plan;
    plan.Kind = static_cast<FaultKind>(Below(kFaultKinds));
    plan.Seed = random_();
    plan.After = static_cast<std::uint32_t>(Below(2000));
    plan.OneIn = OneIn(3) ? 1 : static_cast<std::uint32_t>(1 + Below(1000));
    Repair();
    brokenPorts_ = std::make_unique<FaultPortIo>(*whole_.Ports, plan);
    brokenDriver_ = std::make_unique<FaultKernelDriver>(*whole_.Driver, plan);
    brokenUsb_ = std::make_unique<FaultUsbDevice>(*whole_.Usb, plan);
    ports_.To = brokenPorts_.get();
    driver_.To = brokenDriver_.get();
    usb_.To = brokenUsb_.get();
}

void RandomWalk::Repair() {
    ports_.To = whole_.Ports;
    driver_.To = whole_.Driver;
    usb_.To = whole_.Usb;
}

void RandomWalk::DoRepair() {
    Repair();
    if (OneIn(2)) FindStoredBoard(bench_.Hardware, State(), State().Identity.AddressIndex);
}

/// The user goes on while the fast loop runs, and ends it at last.
Host::Turn RandomWalk::TurnOfFastLoop() {
    ++turns_;
    bench_.Sim().Advance(Below(10) * 1e6);
    const int what = Below(12);
    if (what == 0) return Host::Turn::Quit;
    if (what == 1) {
        Stop(bench_.App);
        return Host::Turn::Handled;
    }
    if (what > 4 || depth_ >= kDeepest) return Host::Turn::Idle;
    ++depth_;
    (this->*Choose().Do)();
    --depth_;
    return Host::Turn::Handled;
}

/// A box keeps the user from all else, but timers fire and cables fall out.
void RandomWalk::BehindABox() {
    if (depth_ >= kDeepest) return;
    ++depth_;
    if (OneIn(2)) Tick();
    if (OneIn(20)) DoFault();
    bench_.Host.Answers.assign(1, OneIn(2));
    --depth_;
}

}  // namespace zu::test
