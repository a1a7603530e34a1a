#include <algorithm>
#include <sstream>

#include "Fakes.h"
#include "TraceBench.h"
#include "hw/PatternDownload.h"

namespace zu::test {
namespace {

// ---- the memory organisation ----

TEST(MemoryTrace, EveryModeAndType) {
    const std::string small = " 1 2 6 7 11 12 ";
    const std::string large = " 3 4 5 8 9 10 13 14 15 ";
    for (int type = 0; type <= 17; ++type) {
        for (const int mode : {-1, 0, 1, 2, 3, 4, 7, 11}) {
            for (const int boards : {1, 2, 4}) {
                SCOPED_TRACE(testing::Message()
                             << "type " << type << " mode " << mode << " boards " << boards);
                TraceBench bench(type, type % 2 == 0, static_cast<unsigned>(mode + 40));
                bench.State.Memory.HardwareMode = static_cast<std::int8_t>(mode);
                bench.State.Shape.WordsPerTrig = boards;
                const std::string name = " " + std::to_string(type) + " ";
                const bool isSmall = small.find(name) != std::string::npos;
                const bool isLarge = large.find(name) != std::string::npos;
                for (int b = 0; b < boards; ++b) {
                    if (mode == 0) bench.Expected.Do(b, "S10-24 WX");
                    if (mode != 1 && mode != 3) continue;
                    bench.Expected.Do(b, "S10-24");
                    if (isSmall) bench.Expected.Do(b, "S10|04 WX");
                    if (isLarge) bench.Expected.Do(b, "S10|20 WX");
                }
                EXPECT_TRUE(SetupMemConfig(bench.Hardware, bench.State));
                bench.Compare();
            }
        }
    }
}

TEST(MemoryTrace, Type5TakesBit5AndType12TakesBit2) {
    for (const auto& [type, bits] : {std::pair{5, 0x20}, std::pair{12, 0x04}}) {
        TraceBench bench(type, true);
        bench.State.Memory.HardwareMode = 1;
        SetupMemConfig(bench.Hardware, bench.State);
        EXPECT_EQ(bench.Hardware.Shadows.At(10, 0) & 0x24, bits);
    }
}

TEST(MemoryTrace, BoardCountIsBounded) {
    TraceBench bench(15, true);
    bench.State.Shape.WordsPerTrig = 1000;
    SetupMemConfig(bench.Hardware, bench.State);
    EXPECT_EQ(std::count(bench.Ops.Text.begin(), bench.Ops.Text.end(), '\n'), 8);
}

// ---- patterns ----

/// Four boards with a few bytes of pattern data a pod: pod p holds p * 16 + index.
void FillPatterns(InstrumentState& state, std::int32_t length) {
    state.Buffer.BufLen.fill(length);
    state.Buffer.Allocate();
    for (int pod = 0; pod < kMaxPods; ++pod) {
        for (std::int32_t i = 0; i < length; ++i) {
            state.Buffer.PatPod[static_cast<std::size_t>(pod)][i] =
                static_cast<std::uint8_t>(pod * 16 + i % 16);
        }
    }
}

std::string LaneMask(Script& s, int b, int lane) {
    s.Do(b, "S6-60 R6 S1-04 R1");
    if (lane <= 1) s.Do(b, "S6|20 R6");
    if (lane == 2 || lane == 3) s.Do(b, "S6|40 R6");
    if (lane == 4) s.Do(b, "S1|04 R1");
    const std::string mask = lane <= 1 ? "40" : lane <= 3 ? "80" : "20";
    s.Do(b, "R4-" + mask);
    return mask;
}

std::string OpenBit(int lane) {
    const char* const kBits[] = {"80", "40", "20", "10", "08"};
    return std::string("W9-") + kBits[lane];
}

void PrepareBoard(Script& s, int b) {
    s.Do(b, "S9|f8 W9 S4|e0 R4 S8|15 W8 S2-40 S5-40 R2 R5 S10-02 WX");
    s.PodPair(b, s.S(10, b) | 8, s.S(11, b));
    s.Do(b, "?R0");
    s.PodPair(b, s.S(10, b) & 0xF7, s.S(11, b));
    s.Do(b, "?R0 S6|08 R6 S3|01 R3");
}

struct PatternCase {
    int Boards;
    std::array<int, 20> Modes;
    std::int32_t Length;
};

void LaterPorts(Script& s, const PatternCase& c, bool direct) {
    for (int b = 0; b < c.Boards; ++b) {
        PrepareBoard(s, b);
        for (const int k : {0, 2, 4}) {
            const int first = 5 * b + k;
            const int second = k == 4 ? first : first + 1;
            LaneMask(s, b, k);
            const int mode = c.Modes[static_cast<std::size_t>(first)];
            if (mode == 1 || mode == 2) s.Do(b, OpenBit(k) + " R15=0");
            if (direct && k == 0) {
                s.Write(14, b, c.Length == 0 ? 0 : first * 16);
                s.Write(14, b, c.Length == 0 ? 0 : second * 16);
            }
            for (int i = 0; i < c.Length; ++i) {
                const int byte = first * 16 + i % 16;
                s.Write(14, b, byte);
                if (direct) {
                    s.Write(14, b, second * 16 + i % 16);
                } else {
                    s.Write(0, b, byte);
                    s.Read(0, b);
                }
            }
            s.Do(b, "R4");
        }
        s.Do(b, "W9");
    }
}

void EarlierPorts(Script& s, const PatternCase& c) {
    for (int b = 0; b < c.Boards; ++b) {
        PrepareBoard(s, b);
        for (int k = 0; k < 5; ++k) {
            const std::string mask = LaneMask(s, b, k);
            s.Do(b, OpenBit(k));
            const int mode = c.Modes[static_cast<std::size_t>(5 * b + k)];
            for (int i = 0; i < c.Length && (mode == 1 || mode == 2); ++i) {
                s.Do(b, "?R0");
                s.Write(0, b, (5 * b + k) * 16 + i % 16);
                s.Do(b, "R4-" + mask + " R4");
            }
            s.Do(b, "W9");
        }
        s.Do(b, "W9 S6|60 R6 S1|04 R1");
    }
}

const std::vector<PatternCase>& PatternCases() {
    static const std::vector<PatternCase> cases{
        {1, {1, 0, 0, 0, 0}, 5},
        {1, {0, 2, 0, 1, 1}, 3},
        {2, {1, 1, 2, 2, 1, 0, 0, 0, 0, 2}, 4},
        {4, {0, 0, 0, 0, 0, 3, 4, 0, 0, 0, 1, 0, 2, 0, 0, 0, 1, 0, 0, 1}, 2},
        {4, {1}, 0},
    };
    return cases;
}

TEST(PatternTrace, OverPorts) {
    for (const int type : {1, 5, 6, 13, 15}) {
        for (const bool direct : {false, true}) {
            for (const PatternCase& c : PatternCases()) {
                SCOPED_TRACE(testing::Message() << "type " << type << " direct " << direct << " boards "
                                                << c.Boards << " length " << c.Length);
                TraceBench bench(type, direct, 77);
                FillPatterns(bench.State, c.Length);
                bench.State.Shape.WordsPerTrig = c.Boards;
                for (std::size_t p = 0; p < 20; ++p) {
                    bench.State.Pods.HardwarePod[p] = static_cast<std::int8_t>(c.Modes[p]);
                }
                const int held = Hold(bench.Expected);
                if (type >= 6) {
                    LaterPorts(bench.Expected, c, direct);
                } else {
                    EarlierPorts(bench.Expected, c);
                }
                Selector(bench.Expected, held);
                bench.State.Pattern.PatDirty = 1;
                EXPECT_TRUE(DownloadPatterns(bench.Hardware, bench.State));
                bench.Compare();
                EXPECT_EQ(bench.State.Pattern.PatDirty, 0);
            }
        }
    }
}

/// Register pairs of the packets as lines of a register trace; everything else as it stands.
std::string UnpackPairs(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        if (line.rfind("UOUT 83 ", 0) != 0 || line.rfind("UOUT 83 1 ", 0) == 0) {
            text += line + "\n";
            continue;
        }
        std::istringstream bytes(line.substr(line.find(':') + 1));
        bytes >> std::hex;
        for (int address = 0, value = 0; bytes >> address >> value;) {
            char out[32];
            const int port = address >= 0x60 ? address : (address - 0x20) / 16 * 1024 + address % 16;
            std::snprintf(out, sizeof out, address == 0xF0 ? "STROBE\n" : "W %04x %02x\n", port, value);
            text += out;
        }
    }
    return text;
}

TEST(PatternTrace, OverUsbIsOneBulkImageAPair) {
    for (const bool direct : {false, true}) {
        ScriptedHost host;
        FakeUsb device;
        Lines trace;
        TraceUsbDevice traced(device, trace.Log);
        HardwareSession hardware(host);
        InstrumentState state;
        hardware.Seams.Usb = &traced;
        SetupOSFunctions(hardware, 0);
        UsbLink& link = hardware.Slots->Usb;
        ASSERT_TRUE(link.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan));
        UseOps(hardware, hardware.Slots->UsbRegisters);
        hardware.PodRegsDirect = direct ? 1 : 0;
        for (int b = 0; b < 4; ++b) SetBoardBase(hardware.Ports, b, static_cast<std::uint16_t>(0x400 * b));
        Script s(13, direct, 0);
        s.FillShadows(5);
        s.CopyShadowsTo(hardware.Shadows);
        state.Identity.HardwareType = 13;
        state.Shape.WordsPerTrig = 1;
        state.Shape.BufStep = 5;
        state.Pods.HardwarePod[2] = 1;
        FillPatterns(state, 40000);
        trace.Take();

        const int held = Hold(s);
        PrepareBoard(s, 0);
        std::vector<std::uint8_t> image;
        for (const int k : {0, 2, 4}) {
            LaneMask(s, 0, k);
            if (k == 2) s.Do(0, OpenBit(2) + " R15=0");
            s.Do(0, "R15=ff");
            s.Text +=
                "UOUT 83 1 0 : 2a\nUOUT 82 8 0 : 01 00 00 00 00 f0 00 00\nBOUT 61440\n"
                "UOUT 82 8 0 : 01 00 00 00 80 48 00 00\nBOUT 18560\n";
            for (int i = 0; i < 40000; ++i) {
                image.push_back(static_cast<std::uint8_t>(k * 16 + i % 16));
                image.push_back(static_cast<std::uint8_t>((k == 4 ? 4 : k + 1) * 16 + i % 16));
            }
            s.Do(0, "R4");
        }
        s.Do(0, "W9");
        Selector(s, held);

        DownloadPatterns(hardware, state);
        link.Flush();
        std::string expected = s.Text;
        for (std::size_t at = 0; (at = expected.find("R 0000", at)) != std::string::npos;) {
            expected.replace(at, 6, "STROBE");
        }
        EXPECT_EQ(Difference(expected, UnpackPairs(trace.All)), "") << direct;
        EXPECT_TRUE(device.Written == image);
    }
}

TEST(PatternTrace, AFullMemoryFitsThoughTheQueueWouldNotHoldIt) {
    ScriptedHost host;
    FakeUsb device;
    HardwareSession hardware(host);
    InstrumentState state;
    hardware.Seams.Usb = &device;
    SetupOSFunctions(hardware, 0);
    hardware.Slots->Usb.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan);
    UseOps(hardware, hardware.Slots->UsbRegisters);
    state.Identity.HardwareType = 15;
    state.Shape.WordsPerTrig = 1;
    state.Shape.BufStep = 5;
    FillPatterns(state, 524288);
    DownloadPatterns(hardware, state);
    EXPECT_EQ(device.Written.size(), 3U * 2 * 524288);
}

TEST(PatternTrace, MissingBuffersSendZeros) {
    TraceBench bench(15, true);
    bench.State.Buffer.BufLen.fill(2);
    bench.State.Shape.WordsPerTrig = 1;
    EXPECT_TRUE(DownloadPatterns(bench.Hardware, bench.State));
    EXPECT_NE(bench.Ops.Text.find("W 023a 00\nW 023a 00\nW 023a 00\nW 023a 00\n"), std::string::npos);
}

// ---- status ----

TEST(TriggerStatus, BitsOfTheAnswer) {
    const std::pair<int, int> cases[] = {{0x00, 2}, {0x10, 1}, {0x50, 3}, {0x40, 2}, {0xFF, 3}, {0xAF, 2}};
    for (const auto& [answer, status] : cases) {
        TraceBench bench(15, true);
        bench.Ops.Answer = [&, value = answer](std::uint16_t) { return static_cast<std::uint8_t>(value); };
        bench.Expected.Do(0, "S2|10 R2 ?R1");
        EXPECT_EQ(GetTrigStat(bench.Hardware), status);
        bench.Compare();
    }
}

TEST(TriggerStatus, NothingConnectedIsNotTriggered) {
    ScriptedHost host;
    HardwareSession hardware(host);
    EXPECT_EQ(GetTrigStat(hardware), 2);
}

}  // namespace
}  // namespace zu::test
