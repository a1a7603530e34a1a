#include <algorithm>
#include <set>

#include "ArmScript.h"
#include "Fakes.h"
#include "hw/Arming.h"
#include "state/Rates.h"

namespace zu::test {
namespace {

/// Arms and compares the whole trace, the shadows and what the state holds afterwards.
void CheckArming(ArmCase c, std::uint8_t result = 1) {
    SCOPED_TRACE(c.Name());
    ArmBench bench(c);
    const bool dirty = c.PatternsDirty;
    const int entries = c.Edge;
    ScriptArming(bench, c);
    EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), result);
    bench.Compare();
    EXPECT_EQ(bench.State.Trigger.EdgeList16[0], c.Edge) << "was " << entries;
    EXPECT_EQ(bench.State.Pods.ReprogramFlag, c.Reprogram & ~4);
    EXPECT_EQ(bench.State.Pattern.PatDirty, dirty && !c.HasPatterns() ? 1 : 0);
}

/// A word that asks for something in every lane of its boards.
ArmCase Constrained(int type, bool direct, int boards) {
    ArmCase c;
    c.Type = type;
    c.Direct = direct;
    c.Boards = boards;
    c.Word(0, 0, "X1XXXXXX XXXX0XXX 0XXXXXX1 XXXXXXXX 01XX01XX");
    c.Word(0, boards - 1, "XXXXXXXX 00000000 XXXXXXXX 1XXXXXXX XXXXXXX1");
    return c;
}

struct Instrument {
    int Type;
    bool Direct;
};
constexpr Instrument kInstruments[] = {{1, false},  {3, true},  {5, false},  {5, true},
                                       {7, false},  {10, true}, {11, false}, {13, true},
                                       {15, false}, {15, true}, {20, false}};
constexpr int kBoardCounts[] = {1, 2, 4};

class EveryInstrument : public testing::TestWithParam<std::tuple<Instrument, int>> {
  protected:
    [[nodiscard]] ArmCase Case() const {
        const auto& [instrument, boards] = GetParam();
        return Constrained(instrument.Type, instrument.Direct, boards);
    }
};
std::string InstrumentName(const testing::TestParamInfo<std::tuple<Instrument, int>>& param) {
    const Instrument& instrument = std::get<0>(param.param);
    return "Type" + std::to_string(instrument.Type) + (instrument.Direct ? "Direct" : "Serial") + "Boards" +
           std::to_string(std::get<1>(param.param));
}
INSTANTIATE_TEST_SUITE_P(All, EveryInstrument,
                         testing::Combine(testing::ValuesIn(kInstruments), testing::ValuesIn(kBoardCounts)),
                         InstrumentName);

TEST_P(EveryInstrument, TriggeredCapture) {
    for (const int mode : {0, 1, 2}) {
        for (const int countMode : {0, 1, 2, 3}) {
            ArmCase c = Case();
            c.Mode = mode;
            c.CountMode = countMode;
            c.Count = 5;
            CheckArming(c);
        }
    }
}

TEST_P(EveryInstrument, TriggeredCaptureAtEveryFastRate) {
    for (int rate = 1; rate <= 5; ++rate) {
        for (const int mode : {0, 3}) {
            for (const int clockType : {0, 1}) {
                ArmCase c = Case();
                c.Rate = rate;
                c.Mode = mode;
                c.ClockType = clockType;
                CheckArming(c);
            }
        }
    }
}

TEST_P(EveryInstrument, AtOnceForAWordThatAsksForNothing) {
    for (const int mode : {0, 3}) {
        for (const int clockType : {0, 1, 2, 3, 4, 5, 6, 7}) {
            ArmCase c = Case();
            c.Words = {};
            c.Mode = mode;
            c.ClockType = clockType;
            c.Position = 500;
            CheckArming(c);
        }
    }
}

TEST_P(EveryInstrument, AtOnceForAnEmptySequence) {
    ArmCase c = Case();
    c.Sequence = {0, 0};
    CheckArming(c);
}

TEST_P(EveryInstrument, AtOnceWithPatternsOnce) {
    for (const bool dirty : {false, true}) {
        ArmCase c = Case();
        c.OutputMode = 0;
        c.PatternsDirty = dirty;
        c.Pods[0] = 1;
        c.Pods[4] = 2;
        CheckArming(c);
    }
}

TEST_P(EveryInstrument, AtOnceWhenEveryPodIsAPattern) {
    ArmCase c = Case();
    c.Pods.fill(1);
    c.PatternsDirty = true;
    CheckArming(c);
}

TEST_P(EveryInstrument, ContinuousPatterns) {
    ArmCase c = Case();
    c.OutputMode = 2;
    c.PatternsDirty = true;
    c.Pods[2] = 2;
    c.Pods[9] = 1;
    CheckArming(c);
}

TEST_P(EveryInstrument, PatternsUntilTheTrigger) {
    for (const int rate : {1, 3, 5}) {
        ArmCase c = Case();
        c.Rate = rate;
        c.PatternsDirty = true;
        c.Pods[0] = 2;
        c.Pods[2] = 1;
        c.Pods[4] = 1;
        CheckArming(c);
    }
}

TEST_P(EveryInstrument, ThresholdsWhenAskedFor) {
    for (const int flags : {0x04, 0xFF, 0xFB, 0x00}) {
        ArmCase c = Case();
        c.Reprogram = flags;
        c.Pods[2] = 3;
        c.Pods[10] = 4;
        CheckArming(c);
    }
}

TEST_P(EveryInstrument, AnyBit) {
    for (const int edge : {0, 1, 2, 255}) {
        ArmCase c = Case();
        c.MatchMode = 0;
        c.Edge = edge;
        CheckArming(c);
    }
}

TEST_P(EveryInstrument, UsbEndsWithOneMorePair) {
    ArmCase c = Case();
    c.ComMode = 9;
    CheckArming(c);
}

TEST(ArmingTrace, AnyBitFlipsTheEdgeAtEveryArming) {
    ArmCase c = Constrained(15, true, 1);
    c.MatchMode = 0;
    ArmBench bench(c);
    for (const int edge : {0, 1, 0, 1}) {
        StartCapture(bench.Hardware, bench.State, bench.Words);
        EXPECT_EQ(bench.State.Trigger.EdgeList16[0], edge);
        EXPECT_EQ(bench.Hardware.Shadows.At(1, 0) >> 3 & 1, edge);
    }
    bench.State.Trigger.TrigMatchMode[0] = 1;
    StartCapture(bench.Hardware, bench.State, bench.Words);
    EXPECT_EQ(bench.State.Trigger.EdgeList16[0], 1);
}

TEST(ArmingTrace, AnyBitLeavesAnEdgeThatIsNeither) {
    for (const int edge : {2, 17, 255}) {
        ArmCase c = Constrained(15, true, 1);
        c.MatchMode = 0;
        c.Edge = edge;
        CheckArming(c);
        ArmBench bench(c);
        StartCapture(bench.Hardware, bench.State, bench.Words);
        EXPECT_EQ(bench.State.Trigger.EdgeList16[0], edge);
        EXPECT_EQ(bench.Hardware.Shadows.At(1, 0) >> 3 & 1, 1) << "anything but 0 is falling";
    }
}

TEST(ArmingTrace, LevelsWithHolesAndRepeatedWords) {
    for (const std::vector<int>& sequence : {std::vector<int>{1, 2, 3},
                                             {0, 2, 0, 0, 1},
                                             {3, 3, 1, 3},
                                             {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 16},
                                             {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16},
                                             {17, 1, -1},
                                             {1 << 30, 2, INT32_MIN}}) {
        for (const int match : {0, 1}) {
            ArmCase c = Constrained(15, true, 2);
            c.Sequence = sequence;
            c.MatchMode = match;
            for (int w = 1; w < 16; ++w) {
                std::string cells = kAnyCells;
                cells[static_cast<std::size_t>(w)] = w == 8 ? ' ' : '1';
                c.Word(w, w % 2, cells);
            }
            CheckArming(c);
        }
    }
}

TEST(ArmingTrace, EveryPodModeOnTheLaneBits) {
    for (int lane = 0; lane < 5; ++lane) {
        for (const int mode : {0, 1, 2, 3, 4, -1, 127}) {
            ArmCase c = Constrained(13, true, 2);
            c.Pods.fill(4);
            c.Pods[At(5 + lane)] = mode;
            CheckArming(c);
        }
    }
}

TEST(ArmingTrace, CharactersThatAreNoCells) {
    ArmCase c = Constrained(15, true, 1);
    c.Word(0, 0, "x0?1-2_ \x7f 1xxxxxx1 abcdefgh 0000000X xX10zZ..");
    CheckArming(c);
}

// ---- the cancel at the pattern question ----

TEST(ArmingTrace, ACancelAnswersZeroAndTheStepsGoOn) {
    ArmCase c = Constrained(15, true, 1);
    c.OutputMode = 0;
    c.Pods[0] = 1;
    ArmBench bench(c);
    bench.Host.Answers.assign(1, false);
    EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), 0);
    ASSERT_EQ(bench.Host.Boxes.size(), 1U);
    EXPECT_EQ(bench.Host.Boxes[0].Caption, "NRZ Pattern Generator");
    EXPECT_EQ(bench.Hardware.FirstRun, 0);
    // The forced trigger and the first poll still follow.
    const std::string end = bench.Ops.Text.substr(bench.Ops.Text.size() - 37);
    EXPECT_EQ(end.substr(0, 7), "W 0232 ");
    EXPECT_EQ(end.substr(end.size() - 7), "R 0231\n");
}

TEST(ArmingTrace, EveryArmingAsksTheQuestionAnew) {
    ArmCase c = Constrained(15, true, 1);
    c.OutputMode = 0;
    c.Pods[0] = 1;
    ArmBench bench(c);
    EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), 1);
    EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), 1);
    EXPECT_EQ(bench.Host.Boxes.size(), 2U);
}

// ---- emulation ----

TEST(ArmingTrace, EmulationWaitsAndPollsOnce) {
    for (const int emulated : {1, 2}) {
        ArmCase c = Constrained(15, true, 4);
        c.MatchMode = 0;
        c.Reprogram = 0xFF;
        ArmBench bench(c);
        bench.State.Identity.Emulated = static_cast<std::uint8_t>(emulated);
        bench.Expected.Do(0, "S2|10 R2 ?R1");
        EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), 1);
        bench.Compare();
        EXPECT_EQ(bench.State.Trigger.EdgeList16[0], 1);
        EXPECT_EQ(bench.State.Pods.ReprogramFlag, 0xFF);
        EXPECT_EQ(bench.Hardware.FirstRun, 1);
    }
}

TEST(ArmingTrace, NothingConnectedArmsNothing) {
    ArmCase c = Constrained(15, true, 4);
    ArmBench bench(c);
    ReleaseRegisters(bench.Hardware);
    bench.State.Identity.Emulated = 1;
    EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), 1);
    EXPECT_EQ(bench.Ops.Text, "");
}

// ---- the wait ----

/// Writes down how long it is asked to wait, and does not.
struct WaitingHost : ScriptedHost {
    std::vector<double> Waits;
    void WaitNanoseconds(double ns) override { Waits.push_back(ns); }
};

struct WaitBench {
    WaitingHost Host;
    HardwareSession Hardware{Host};
    InstrumentState State;

    WaitBench(int clockType, int rate, std::int32_t position) {
        State.Identity.Emulated = 1;
        State.Clock.ClockType = static_cast<std::uint8_t>(clockType);
        State.Clock.ClockRate = static_cast<std::uint8_t>(rate);
        State.Cursors.Cur[kCursorT] = position;
        StartCapture(Hardware, State, CompiledTrigWords{});
    }
};

TEST(ArmingWait, SamplesBeforeTheTriggerAndAHundredMore) {
    struct Row {
        int ClockType;
        int Rate;
        std::int32_t Position;
        double Ns;
        std::int32_t Timeout;
    };
    constexpr Row kRows[] = {{0, 5, 10, 1100, 1},
                             {0, 34, 10, 1.1e11, 110001},
                             {0, 25, 0, 1e8, 101},
                             {0, 1, 8000, 16200, 1},
                             {5, 34, 400, 5000, 1},
                             {0, 99, 900, 10000, 1},
                             {0, 26, -50, 2e8, 201},
                             {0, 2, 1, 252.5, 1},
                             {0, 22, 4900, 5e8, 501},
                             {0, 20, 0, 5e6, 6},
                             {0, 20, 49, 7.45e6, 8},
                             {0, 20, 50, 7.5e6, 9},
                             {0, 34, INT32_MAX, (2147483647.0 + 100) * 1e9, INT32_MAX}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.Rate);
        const WaitBench bench(row.ClockType, row.Rate, row.Position);
        ASSERT_EQ(bench.Host.Waits.size(), 1U);
        EXPECT_DOUBLE_EQ(bench.Host.Waits[0], row.Ns);
        EXPECT_EQ(bench.Hardware.CaptureTimeout, row.Timeout);
    }
}

TEST(ArmingWait, AnExternalClockHasNoKnownPeriod) {
    const WaitBench bench(1, 5, 1000);
    EXPECT_TRUE(bench.Host.Waits.empty());
    EXPECT_EQ(bench.Hardware.CaptureTimeout, 1);
}

// ---- the cache of the words ----

TEST(ArmingWords, ChangeIsNotedAndTheCacheSurvivesCaptures) {
    ArmBench bench(Constrained(15, true, 1));
    StartCapture(bench.Hardware, bench.State, bench.Words);
    EXPECT_EQ(bench.Hardware.ArmChanged, 1);
    StartCapture(bench.Hardware, bench.State, bench.Words);
    EXPECT_EQ(bench.Hardware.ArmChanged, 0);
    bench.Words.Word[15][3][45] = 'q';  // a byte that no lane reads
    StartCapture(bench.Hardware, bench.State, bench.Words);
    EXPECT_EQ(bench.Hardware.ArmChanged, 1);
    EXPECT_EQ(*bench.Hardware.TrigCache, bench.Words);
    EXPECT_EQ(sizeof(CompiledTrigWords), 2944U);
}

// ---- force and stop ----

TEST(ArmingTrace, ForceSetsBit6AndClearsBit5) {
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        TraceBench bench(15, true, seed);
        bench.Expected.Do(0, "S3&9f S3|40 R3 S3&9f S3|40 R3 S2|10 R2 ?R1");
        ForceTrigger(bench.Hardware);
        ForceTrigger1(bench.Hardware);
        EXPECT_EQ(GetTrigStat1(bench.Hardware), 2);
        bench.Compare();
    }
}

TEST(ArmingTrace, StopHoldsTheClockUnderBothNames) {
    for (const int type : {1, 5, 6, 10, 11, 15, 20}) {
        TraceBench bench(type, true);
        for (int i = 0; i < 2; ++i) {
            Hold(bench.Expected);
            bench.Expected.Do(0, "!");
        }
        EXPECT_TRUE(StopPatternGen(bench.Hardware, bench.State));
        EXPECT_TRUE(StopContinuousPG(bench.Hardware, bench.State));
        bench.Compare();
    }
}

// ---- over USB ----

/// A device that keeps every register command with its data.
class PacketUsb : public FakeUsb {
  public:
    std::vector<std::vector<std::uint8_t>> Packets;  ///< command, then data
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) override {
        Packets.emplace_back(1, block[0]);
        Packets.back().insert(Packets.back().end(), data.begin(), data.end());
        return true;
    }
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override {
        Packets.emplace_back(1, block[0]);
        std::fill(data.begin(), data.end(), std::uint8_t{0});
        return true;
    }
};

/// What the device should see of a trace of registers: pairs in packets of 64, a read at once.
class WireScript {
  public:
    explicit WireScript(const std::string& trace) {
        std::istringstream lines(trace);
        std::string kind;
        while (lines >> kind) {
            int port = 0;
            if (kind != "FLUSH") lines >> std::hex >> port;
            if (kind == "FLUSH") {
                lines >> port;
                Send();
            } else if (kind == "W") {
                int value = 0;
                lines >> value;
                Put(Address(port), value);
            } else if (Address(port) % 16 == 0) {
                Put(0xF0, 0);
            } else {
                Send();
                Packets.push_back({0x83, static_cast<std::uint8_t>(Address(port))});
                Packets.push_back({0x84});
            }
        }
    }
    std::vector<std::vector<std::uint8_t>> Packets;

  private:
    static int Address(int port) {
        const std::set<int> literal{0xE0, 0xE1, 0xD0, 0xD1, 0xC0, 0xC1, 0xB0, 0xB1};
        return literal.count(port) != 0 ? port : port % 16 + port / 64 + 32;
    }
    void Put(int address, int value) {
        queue_.push_back(static_cast<std::uint8_t>(address));
        queue_.push_back(static_cast<std::uint8_t>(value));
    }
    void Send() {
        for (std::size_t at = 0; at < queue_.size(); at += 64) {
            const std::size_t end = std::min(at + 64, queue_.size());
            Packets.emplace_back(1, std::uint8_t{0x83});
            for (std::size_t i = at; i < end; ++i) Packets.back().push_back(queue_[i]);
        }
        queue_.clear();
    }
    std::vector<std::uint8_t> queue_;
};

TEST(ArmingOverUsb, PacketsAreThoseOfTheTrace) {
    for (const Instrument& instrument : kInstruments) {
        for (const int boards : kBoardCounts) {
            ArmCase c = Constrained(instrument.Type, instrument.Direct, boards);
            c.ComMode = 9;
            c.Reprogram = 0xFF;
            SCOPED_TRACE(c.Name());
            ArmBench bench(c);
            PacketUsb device;
            for (int b = 0; b < 4; ++b) {
                SetBoardBase(bench.Hardware.Ports, b, static_cast<std::uint16_t>(0x400 * b));
            }
            // The script's addresses lie at kTraceAddress; over USB the boards start at 0.
            Script atZero(c.Type, c.Direct, 0);
            atZero.Cells = bench.Expected.Cells;
            bench.Expected = atZero;
            bench.Hardware.Seams.Usb = &device;
            SetupOSFunctions(bench.Hardware, 0);
            ScriptArming(bench, c);
            const WireScript wire(bench.Expected.Text);
            bench.Hardware.Slots->Usb.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan);
            UseOps(bench.Hardware, bench.Hardware.Slots->UsbRegisters);
            StartCapture(bench.Hardware, bench.State, bench.Words);
            ASSERT_EQ(device.Packets.size(), wire.Packets.size());
            EXPECT_TRUE(device.Packets == wire.Packets);
            ReleaseRegisters(bench.Hardware);
            bench.Hardware.Slots->Usb.Close();
        }
    }
}

}  // namespace
}  // namespace zu::test
