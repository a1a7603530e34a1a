#include "ArmScript.h"

#include <algorithm>
#include <set>

#include "hw/Clock.h"
#include "hw/PatternDownload.h"

namespace zu::test {
namespace {

bool IsPattern(int mode) {
    return mode == 1 || mode == 2;
}

/// Rates 1 and 2, 3 and 4.
bool Fastest(const ArmCase& c) {
    return c.Rate == 1 || c.Rate == 2;
}
bool Fast(const ArmCase& c) {
    return c.Rate == 3 || c.Rate == 4;
}

bool IsSmall(int type) {
    return std::set{1, 2, 6, 7, 11, 12}.count(type) != 0;
}
bool IsLarge(int type) {
    return type >= 1 && type <= 15 && !IsSmall(type);
}

const char* const kLoad = "?R0 ?R0 ?R0 R1|08 ?R0 ?R0 ?R0 R1-08 ?R0 ?R0 ?R0";

std::set<int> Blanked(const ArmCase& c) {
    if (c.Type >= 11 && c.Type <= 15) {
        if (c.ClockType == 0 && Fastest(c)) return {1, 3};
        return {};
    }
    if (Fastest(c)) return {1, 2, 3};
    if (Fast(c)) return {2, 3};
    return {};
}

/// Whether a byte satisfies the eight cells of a lane.
bool LaneMatches(const std::string& cells, int lane, int byte, bool swapped) {
    for (int i = 0; i < 8; ++i) {
        char cell = cells[At(36 - 9 * lane + i)];
        if (swapped && cell == '0') {
            cell = '1';
        } else if (swapped && cell == '1') {
            cell = '0';
        }
        const char bit = (byte & (128 >> i)) != 0 ? '1' : '0';
        if ((cell == '0' || cell == '1') && cell != bit) return false;
    }
    return true;
}

bool AsksForSomething(const std::string& cells, const std::set<int>& blanked) {
    for (int lane = 0; lane < 5; ++lane) {
        const std::string text = cells.substr(static_cast<std::size_t>(36 - 9 * lane), 8);
        if (blanked.count(lane) == 0 && text.find_first_of("01") != std::string::npos) return true;
    }
    return false;
}

void Table(Script& s, const ArmCase& c, int b, const std::string& cells) {
    const std::set<int> blanked = Blanked(c);
    s.Do(b, "R0=0 R4=3 R4=1 R4=3");
    for (int a = 0; a < 256; ++a) {
        int data = 3;
        for (int lane = 0; lane < 5; ++lane) {
            const bool free = blanked.count(lane) != 0;
            if (free || LaneMatches(cells, lane, a, c.MatchMode == 0)) data += 8 << lane;
        }
        s.Write(0, b, a);
        s.Write(14, b, a);
        s.Write(4, b, data);
        s.Write(4, b, data - 2);
        s.Write(4, b, data);
    }
    s.Do(b, "S4|06 R4 S1-03 R1");
}

void PatternDriversOff(Script& s, const ArmCase& c) {
    for (int b = 0; b < c.Boards; ++b) {
        if (IsPattern(c.Pods[0])) s.Do(b, "S8|01 W8");
        if (IsPattern(c.Pods[2])) s.Do(b, "S2-40 S5-40 R2 R5");
        if (IsPattern(c.Pods[4])) s.Do(b, "S8|04 W8");
    }
}

void DualInputs(Script& s, const ArmCase& c) {
    if (c.Mode != 3) return;
    for (int b = 0; b < c.Boards; ++b) s.Do(b, "S2-40 S5|40 S8&ea S8|08 R2 R5 W8");
}

void RunClock(ArmBench& bench) {
    Splice(bench, [](HardwareSession& hardware, InstrumentState& state) { SetClock(hardware, state); });
}

void WayA(ArmBench& bench, const ArmCase& c) {
    Script& s = bench.Expected;
    s.Do(0, "S3&9f S3|20 R3 S5-02 R5 S5|02 R5");
    ScriptInputMode(s, c);
    s.Do(0, "S2|10 R2 S10-02 WX S10-08 WX");
    RunClock(bench);
}

void WayB(ArmBench& bench, const ArmCase& c) {
    Script& s = bench.Expected;
    s.Do(0, "S10-08 WX S3&9f S3|20 R3 S5-02 R5 S5|02 R5");
    for (int b = 0; b < 4; ++b) s.Do(b, "S10|08 WX");
    for (int b = 0; b < 4; ++b) s.Do(b, "S10-08 WX");
    s.Do(0, "S8|e0 W8");
    for (int b = 0; b < c.Boards; ++b) {
        if (c.ClockType != 0 || c.HasPatterns()) s.Do(b, "S2|40 R2");
    }
    s.Do(0, "?R0");
    ScriptInputMode(s, c);
    DualInputs(s, c);
    s.Do(c.Boards, "R2 R5 W8");
    RunClock(bench);
    s.Do(0, "S2|10 R2 S3&9f S3|40 R3");
}

void WayC(ArmBench& bench, const ArmCase& c) {
    Script& s = bench.Expected;
    Hold(s);
    s.Do(0, "! S10-08 WX");
    s.Do(0, c.CountMode == 1 ? "S3|60 R3" : "S3-60 R3");
    s.Do(0, "S5-02 R5 S5|02 R5");
    ScriptInputMode(s, c);
    DualInputs(s, c);
    RunClock(bench);
    s.Do(0, "!");
}

// ---- read-out ----

struct ReadStep {
    int Pod;   ///< in the board
    int Bits;  ///< added to R5
    int Count;
};

/// Banks of a later board in the order in which they are read.
std::vector<ReadStep> LaterSteps(const ArmCase& c, const std::array<int, 5>& lengths) {
    std::vector<ReadStep> steps;
    const bool plain = c.ClockType != 0 || c.HasPatterns();
    if (!plain && Fastest(c)) {
        for (const int group : {0, 1, 2}) {
            for (const int k : {0, 1, 2, 3}) {
                steps.push_back({2 * group, group * 4 + k * 16, lengths[At(2 * group)] / 4});
            }
        }
        return steps;
    }
    const int bits[] = {0, 0x10, 0x04, 0x14, 0x08};
    for (int pod = 0; pod < 5; ++pod) {
        const int length = lengths[static_cast<std::size_t>(pod)];
        if (!plain && (Fast(c) || c.Mode == 3)) {
            const int count = c.Mode == 3 ? length / 2 : length;
            steps.push_back({pod, bits[pod], count});
            steps.push_back({pod, bits[pod] + 0x20, count});
        } else {
            steps.push_back({pod, bits[pod], length});
        }
    }
    return steps;
}

void LaterBoard(Script& s, const ArmCase& c, int b, const std::array<int, 5>& lengths) {
    const bool plain = c.ClockType != 0 || c.HasPatterns();
    const bool dual = !plain && !Fastest(c) && (Fast(c) || c.Mode == 3);
    s.Do(b, "W9&07");
    if (!dual) s.Do(b, "S3-01 R3");
    s.Do(b, "S5-3c");
    for (const ReadStep& step : LaterSteps(c, lengths)) {
        if (c.Pods[At(5 * b + step.Pod)] != 0) continue;
        s.Do(b, "S3|01 R3");
        s.Write(5, b, s.S(5, b) + step.Bits);
        s.Do(b, "S3-01 R3");
        s.Block(b, step.Count);
    }
    s.Do(b, "W9");
}

void EarlierBoard(Script& s, const ArmCase& c, int b, const std::array<int, 5>& lengths) {
    const bool plain = c.ClockType != 0 || c.HasPatterns();
    const char* const lanes[] = {"W9-80", "W9-40", "W9-20", "W9-10", "W9-08"};
    for (std::size_t k = 0; k < 5; ++k) {
        if (c.Pods[static_cast<std::size_t>(5 * b) + k] != 0) continue;
        s.Do(b, lanes[k]);
        s.Do(b, "S3-01 R3");
        if (!plain && Fastest(c)) {
            s.Block(b, lengths[0] / 4);
        } else if (!plain && (Fast(c) || c.Mode == 3)) {
            s.Block(b, (k == 4 ? lengths[0] : lengths[k % 2]) / 2);
        } else {
            s.Block(b, lengths[k]);
        }
        s.Do(b, "S3|01 R3");
    }
}

}  // namespace

bool ArmCase::HasPatterns() const {
    return std::any_of(Pods.begin(), Pods.end(), IsPattern);
}

std::string ArmCase::Name() const {
    std::string pods;
    for (const int mode : Pods) pods += std::to_string(mode);
    return "type " + std::to_string(Type) + (Direct ? " direct" : "") + " boards " + std::to_string(Boards) +
           " mode " + std::to_string(Mode) + " clock " + std::to_string(ClockType) + " rate " +
           std::to_string(Rate) + " output " + std::to_string(OutputMode) + " count mode " +
           std::to_string(CountMode) + " position " + std::to_string(Position) + " pods " + pods;
}

CompiledTrigWords WordsOf(const ArmCase& c) {
    CompiledTrigWords words;
    for (int w = 0; w < 16; ++w) {
        for (int b = 0; b < 4; ++b) {
            const std::string cells = c.Cells(w, b);
            auto& entry = words.Word[static_cast<std::size_t>(w)][static_cast<std::size_t>(b)];
            std::copy_n(cells.begin(), std::min(cells.size(), entry.size() - 1), entry.begin());
        }
    }
    return words;
}

ArmBench::ArmBench(const ArmCase& c, unsigned seed) : TraceBench(c.Type, c.Direct, seed), Words(WordsOf(c)) {
    State.Identity.ComMode = c.ComMode;
    State.Shape.WordsPerTrig = c.Boards;
    State.Memory.HardwareMode = static_cast<std::int8_t>(c.Mode);
    State.Clock.ClockType = static_cast<std::uint8_t>(c.ClockType);
    State.Clock.ClockRate = static_cast<std::uint8_t>(c.Rate);
    State.Pattern.PatternOutputMode = static_cast<std::int8_t>(c.OutputMode);
    State.Pattern.PatDirty = c.PatternsDirty ? 1 : 0;
    State.Pods.ReprogramFlag = static_cast<std::uint8_t>(c.Reprogram);
    State.Trigger.TrigCntMd = static_cast<std::int8_t>(c.CountMode);
    State.Trigger.TrigCnt = static_cast<std::uint8_t>(c.Count);
    State.Trigger.TrigMatchMode[0] = static_cast<std::uint8_t>(c.MatchMode);
    State.Trigger.EdgeList16[0] = static_cast<std::uint8_t>(c.Edge);
    State.Cursors.Cur[kCursorT] = c.Position;
    for (std::size_t i = 0; i < c.Sequence.size(); ++i) State.Trigger.SeqList[i] = c.Sequence[i];
    for (std::size_t p = 0; p < 20; ++p) State.Pods.HardwarePod[p] = static_cast<std::int8_t>(c.Pods[p]);
    for (std::size_t i = 0; i < 12; ++i) {
        State.Pods.ThrHd[i] = static_cast<std::uint16_t>(0x100 + 7 * i);
        State.Pods.PatGenV[i] = static_cast<std::uint16_t>(0x3A0 + 5 * i);
    }
    State.Buffer.BufLen.fill(c.Length);
    State.Buffer.Allocate();
    Host.Answers.assign(8, true);  // goes on at the pattern question
}

void Splice(ArmBench& bench, const std::function<void(HardwareSession&, InstrumentState&)>& sequence) {
    ScriptedHost host;
    host.Answers.assign(1, true);
    HardwareSession hardware(host);
    RecordingOps ops;
    TraceLog log([&ops](std::string_view line) { ops.Text += std::string(line) + "\n"; });
    hardware.Ops = &ops;
    hardware.Ports = bench.Hardware.Ports;
    hardware.PodRegsDirect = bench.Hardware.PodRegsDirect;
    hardware.FirstRun = 1;
    hardware.Slots->Usb.SetTrace(&log);
    bench.Expected.CopyShadowsTo(hardware.Shadows);
    sequence(hardware, bench.State);
    bench.Expected.Text += ops.Text;
    for (int i = 4; i < 48; ++i) bench.Expected.S(i / 4, i % 4) = hardware.Shadows.At(i / 4, i % 4);
}

int ScriptCompile(Script& s, const ArmCase& c) {
    int result = 2;
    const int held = Hold(s);
    s.Do(0, "S3-04 S5-02 R5 S2|18 R2 ?R0 ?R0 ?R0");
    for (int b = 0; b < c.Boards; ++b) s.Do(b, "S3|01 R3 S6|60 R6 S1|04 R1 R4=7");
    int page = 15;
    for (int k = 15; k >= 0; --k) {
        const auto at = static_cast<std::size_t>(k);
        const int entry = at < c.Sequence.size() ? c.Sequence[at] : 0;
        if (entry <= 0 || entry > 16) continue;
        s.Write(7, 0, page);
        s.Do(0, "R2-18");
        s.Do(0, kLoad);
        s.Do(0, "R2-08");
        for (int b = 0; b < c.Boards; ++b) {
            Table(s, c, b, c.Cells(entry - 1, b));
            if (AsksForSomething(c.Cells(entry - 1, b), Blanked(c))) result = 1;
        }
        --page;
    }
    s.Do(0, "S2&08 R2");
    for (int b = 0; b < c.Boards; ++b) {
        s.Do(b, "S1-03 R1");
        if (c.HasPatterns() || c.ClockType != 0) continue;
        if (Fastest(c)) {
            s.Do(b, "S1|02 R1");
        } else if (Fast(c) || c.Mode == 3) {
            s.Do(b, "S1|01 R1");
        }
    }
    s.Do(0, "S2-10 R2 ?R0 S3&63 S3|04 R3");
    const int preset = c.CountMode == 3 ? 0 : c.Count - 1;
    s.S(7, 0) = (255 - preset) % 256;
    s.Do(0, "R7");
    s.Do(0, kLoad);
    s.Do(0, c.CountMode == 2 || c.CountMode == 3 ? "S3&e7 S3|80 R3" : "S3&67 S3|18 R3");
    Selector(s, held);
    return result;
}

void ScriptPosition(Script& s, const ArmCase& c, int position) {
    long long value = std::max(position, 0);
    if (c.ClockType == 0 && Fastest(c)) {
        value += 64;
    } else if (c.ClockType == 0 && (c.Mode == 3 || Fast(c))) {
        value += 32;
    } else {
        value += 16;
    }
    if (c.ClockType != 0 || c.HasPatterns()) {
        value /= 2;
    } else if (Fastest(c)) {
        value /= 8;
    } else if (Fast(c) || c.Mode == 3) {
        value /= 4;
    } else {
        value /= 2;
    }
    if (c.Mode == 0) value = std::min(value, 0xFFELL) + 0x3F000;
    if (c.Mode == 1 && IsSmall(c.Type)) value = std::min(value, 0x3FFELL) + 0x3C000;
    if (c.Mode == 1 && IsLarge(c.Type)) value = std::min(value, 0xFFFELL) + 0x30000;
    if (c.Mode != 0 && c.Mode != 1 && c.Type >= 13 && c.Type <= 15) {
        value = std::min(value, 0xFFFELL) + 0x30000;
    }
    const int held = Hold(s);
    s.Do(0, "S10&f4 S10|09 WX ?R0 ?R0 ?R0 ?R0 S10-08 WX ?R0 ?R0 ?R0 ?R0");
    s.Do(0, value % 2048 == 2047 ? "R4|08 ?R0 ?R0" : "R4-08 ?R0 ?R0");
    s.Bits(0, static_cast<std::uint32_t>(value % 0x40000), 18, false, "R4|08", "R4-08", "?R0 ?R0");
    s.Do(0, "S10-01 WX S10|02 WX");
    Selector(s, held);
}

void ScriptThresholds(Script& s, const ArmCase& c, const InstrumentState& state) {
    for (int b = 0; b < c.Boards; ++b) {
        for (int group = 0; group < 3; ++group) {
            const auto pod = At(b * state.Shape.BufStep + 2 * group);
            const auto entry = static_cast<std::size_t>(3 * b + group);
            const int level = c.Pods[pod] != 0 ? state.Pods.PatGenV[entry] : state.Pods.ThrHd[entry];
            const int value = 255 - level % 256;
            if (c.Type >= 6 && c.Type <= 15) {
                const int address = 4 >> group;
                s.Do(b, "S3|01 R3 S6-01 R6");
                s.Bits(b, static_cast<std::uint32_t>(address * 256 + value), 16, false, "S4|08 R4",
                       "S4-08 R4", "S6-02 R6 S6|02 R6 S6-02 R6");
                s.Do(b, "S6|01 R6");
                continue;
            }
            const int idle = 0xCF + 0x10 * group;
            s.ShiftByte(b, value);
            s.Do(b, "S4-20 R4 S4|20 R4 S4-20 R4");
            for (const int control : {idle, idle - 4, idle}) {
                s.ShiftByte(b, control);
                s.Do(b, "S2-01 R2 S2|01 R2 S2-01 R2");
            }
        }
    }
}

void ScriptLaneSelect(Script& s, const ArmCase& c) {
    for (int b = 0; b < c.Boards; ++b) {
        for (int lane = 0; lane < 5; ++lane) {
            const int mode = c.Pods[static_cast<std::size_t>(5 * b + lane)];
            const bool clears = mode == 0 || mode == 3;
            if (!clears && !IsPattern(mode)) continue;
            if (lane == 0 || lane == 1) s.Do(b, clears ? "S6-20 S4-40" : "S6|20 S4|40");
            if (lane == 2 || lane == 3) s.Do(b, clears ? "S6-40 S4-80" : "S6|40 S4|80");
            if (lane == 4) s.Do(b, clears ? "S1-04 S4-20" : "S1|04 S4|20");
        }
        s.Do(b, "R6 R4 R1");
    }
}

void ScriptInputMode(Script& s, const ArmCase& c) {
    for (int b = 0; b < c.Boards; ++b) {
        if (c.HasPatterns()) {
            s.Do(b, "S2|40 S5|40 S8&ea S8|08");
            if (IsPattern(c.Pods[static_cast<std::size_t>(5 * b + 4)])) s.Do(b, "S8|e0");
        } else if (c.ClockType == 0 && Fastest(c)) {
            s.Do(b, "S2-40 S5|40 S8&f2 S8|10");
        } else {
            s.Do(b, c.ClockType == 0 && Fast(c) ? "S2-40" : "S2|40");
            s.Do(b, "S5|40 S8&ea S8|08");
        }
        s.Do(b, "R2 R5 W8");
    }
}

void ScriptArming(ArmBench& bench, ArmCase& c) {
    Script& s = bench.Expected;
    PatternDriversOff(s, c);
    s.Do(0, "!");
    for (int b = 0; b < c.Boards; ++b) s.Do(b, "S3|01 R3 S9|f8 W9");
    Splice(bench, [](HardwareSession& hardware, InstrumentState& state) { SetupMemConfig(hardware, state); });
    if (c.HasPatterns() && c.PatternsDirty) {
        Splice(bench,
               [](HardwareSession& hardware, InstrumentState& state) { DownloadPatterns(hardware, state); });
        bench.State.Pattern.PatDirty = 1;  // the sequence proper has not seen it yet
    }
    if ((c.Reprogram & 4) != 0) ScriptThresholds(s, c, bench.State);
    if (c.MatchMode == 0 && c.Edge <= 1) c.Edge = 1 - c.Edge;
    int kind = ScriptCompile(s, c);
    s.Do(0, c.Edge != 0 ? "S1|08 R1" : "S1-08 R1");
    ScriptPosition(s, c, kind == 2 ? 0 : c.Position);
    ScriptLaneSelect(s, c);
    s.Do(0, "! S3-60 R3|20 S4-10 R4 !");
    for (int b = 0; b < c.Boards; ++b) {
        if (c.HasPatterns() && c.OutputMode == 0) s.Do(b, "S4|10 R4");
        if (c.HasPatterns() && (c.OutputMode == 1 || c.OutputMode == 2)) s.Do(b, "S4-10 R4");
        s.Do(b, "S10|08 WX");
        s.Do(0, "?R0");
        s.Do(b, "S4-02 R4 S9&07 W9");
    }
    if (c.HasPatterns() && c.OutputMode == 0) kind = 2;
    Selector(s, 7);
    for (int b = 0; b < c.Boards; ++b) s.Do(b, "S10-08 WX");
    const bool noCapture = std::all_of(c.Pods.begin(), c.Pods.end(), IsPattern);
    if (c.HasPatterns() && c.OutputMode == 2) {
        WayA(bench, c);
    } else if (kind == 2 || noCapture) {
        WayB(bench, c);
    } else {
        WayC(bench, c);
    }
    if (c.ComMode == 9) s.Text += "W 0000 00\n";
    s.Do(0, "S2|10 R2 ?R1");
}

void ScriptReadOut(ArmBench& bench, const ArmCase& c) {
    Script& s = bench.Expected;
    if (c.OutputMode == 2) {
        s.Do(0, "S3&9f S3|40 R3");
        s.PodPair(0, s.S(10, 0), s.S(11, 0) | 2);
    }
    s.Do(0, "!");
    Hold(s);
    s.Do(0, "! S8|e0 W8 S4-10 R4");
    PatternDriversOff(s, c);
    s.PodPair(0, s.S(10, 0) & 0xFD, s.S(11, 0));
    s.Read(0, c.Boards);
    for (int b = 0; b < c.Boards; ++b) {
        s.Do(b, "S4|07 R4 S9|f8 W9 S4|e0 R4 S8|15 W8 S5-40 R5 S6|60 R6 S1|04 R1 S4-10 R4");
    }
    s.Do(c.Boards, "S2-04 R2 ?R0");
    const bool banks = (c.Type >= 11 && c.Type <= 15) || ((c.Type == 6 || c.Type == 7) && c.Direct);
    for (int b = 0; b < c.Boards; ++b) {
        std::array<int, 5> lengths{};
        for (std::size_t k = 0; k < 5; ++k) {
            lengths[k] = bench.State.Buffer.BufLen[static_cast<std::size_t>(5 * b) + k];
        }
        banks ? LaterBoard(s, c, b, lengths) : EarlierBoard(s, c, b, lengths);
    }
    s.PodPair(c.Boards, s.S(10, 0), s.S(11, 0));
}

}  // namespace zu::test
