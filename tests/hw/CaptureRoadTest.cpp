// Armings and read-outs with the simulated instrument behind the cable: every way of storing samples, every
// model; what comes back is what the signals did, and the trigger stands where it was asked for.
#include <gtest/gtest.h>

#include "hw/Arming.h"
#include "hw/BackEnds.h"
#include "hw/ReadOut.h"
#include "hw/sim/SimAttachment.h"
#include "state/Model.h"
#include "state/Rates.h"
#include "support/ScriptedHost.h"
#include "trigger/CompiledTrigWords.h"
#include "trigger/TrigCells.h"

namespace zu::test {
namespace {

constexpr int kValue = 0x40;  // of pod 0, on which the trigger is set

/// Every pod counts upwards, each from a start of its own.
class Counters final : public SimStimulus {
  public:
    SimTicks Step = 1000;
    SimRun At(int pod, SimTicks time) override {
        const SimTicks count = FloorDiv(time, Step);
        return {static_cast<std::uint8_t>(count + 7 * pod), (count + 1) * Step};
    }
};

struct VirtualHost : ScriptedHost {
    SimInstrument* Sim = nullptr;
    void WaitNanoseconds(double ns) override { Sim->Advance(ns); }
};

/// How the samples are stored and clocked.
struct RoadCase {
    int Row;
    int Mode;
    int ClockType;
    int Rate;
};

bool SmallMemory(int row) {
    return row == 1 || row == 2 || row == 11 || row == 12;
}
int Phases(const RoadCase& c) {
    if (c.ClockType != 0) return 1;
    if (c.Rate <= 2) return 4;
    return c.Rate <= 4 || c.Mode == 3 ? 2 : 1;
}
std::int32_t Depth(const RoadCase& c) {
    if (c.Mode != 1 && c.Mode != 3) return 8192;
    return SmallMemory(c.Row) ? 32768 : 131072;
}
/// Lengths of the five buffers of a board.
std::array<std::int32_t, 5> Lengths(const RoadCase& c) {
    const std::int32_t n = Phases(c) * Depth(c);
    if (Phases(c) == 1) return {n, n, n, n, n};
    if (Phases(c) == 4) return c.Row > 10 ? std::array{n, 0, n, 0, n} : std::array{n, 0, 0, 0, n};
    if (c.Row >= 13)
        return c.Mode == 3 ? std::array{n, n, n, n, n} : std::array{n / 2, n / 2, n / 2, n / 2, n / 2};
    return {n, n, 0, 0, n};
}

struct CaptureRoad {
    SimAttachment Sim;
    VirtualHost Host;
    HardwareSession Hardware{Host};
    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
    std::shared_ptr<Counters> Signals = std::make_shared<Counters>();
    RoadCase Case;
    int SamplesPerStep = 3;

    CaptureRoad(const RoadCase& c, bool direct, SimCable cable)
        : Sim(Traits(c.Row, direct), cable, {}), Case(c) {
        Host.Sim = &Sim.Instrument();
        Sim.Instrument().SetRealTime(false);
        Sim.Instrument().Connect(Signals);
        Hardware.Seams = Sim.Seams();
        SetupOSFunctions(Hardware, 0);
        const SimConnection at = ConnectionOf({15, cable});
        const int port = at.ComMode == 8 || at.ComMode == 9 ? 0 : at.AddressIndex - 7;
        SetupIO(Hardware, *State, static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(at.ComMode));
        State->Identity.AddressIndex = at.AddressIndex;
        for (int times = 0; times < 2; ++times) FindBoard(Hardware, *State, Address());
        ChangeModel(*State, c.Row);
        Program();
    }
    ~CaptureRoad() { ReleaseRegisters(Hardware); }

    [[nodiscard]] std::uint16_t Address() const {
        return State->Identity.AddressTable[State->Identity.AddressIndex];
    }
    static SimTraits Traits(int row, bool direct) {
        SimTraits traits = TraitsOf(row);
        traits.Direct = direct;
        return traits;
    }
    void Program() {
        State->Identity.Emulated = 0;
        State->Memory.HardwareMode = static_cast<std::int8_t>(Case.Mode);
        State->Clock.ClockType = static_cast<std::uint8_t>(Case.ClockType);
        State->Clock.ClockRate = static_cast<std::uint8_t>(Case.Rate);
        for (std::size_t pod = 0; pod < kMaxPods; ++pod) State->Buffer.BufLen[pod] = Lengths(Case)[pod % 5];
        State->Pods.ReprogramFlag = 0xFF;
        for (std::size_t i = 0; i < kThresholds; ++i)
            State->Pods.ThrHd[i] = static_cast<std::uint16_t>(50 + 9 * i);
        State->Trigger.TrigMatchMode.fill(1);
        State->Trigger.EdgeList16.fill(0);
        State->Trigger.TrigCntMd = 3;
        State->Trigger.SeqList[0] = 1;
        SetWord(0, kValue);
        const double period = Period();
        Signals->Step = static_cast<SimTicks>(period * kTicksPerNs) * SamplesPerStep;
    }
    [[nodiscard]] double Period() const {
        const double period = GetRateNS(Case.ClockType, Case.Rate);
        return period > 0 ? period : 1000;  // the simulated external clock
    }
    void SetWord(int word, int value) {
        for (int bit = 0; bit < 8; ++bit) {
            SetCharOfChannel(*State, bit, word, (value >> bit & 1) != 0 ? '1' : '0');
        }
    }
    /// Arms, polls to the end and reads out; false if the end never comes.
    bool Capture() {
        const CompiledTrigWords words = PrepareTriggerWords(*State);
        EXPECT_EQ(StartCapture(Hardware, *State, words), 1);
        for (int polls = 0; polls < 100; ++polls) {
            if (GetTrigStat(Hardware) == 3) {
                EndCapture(Hardware, *State, words);
                return true;
            }
            Sim.Instrument().Advance(Period() * Phases(Case) * Depth(Case));
        }
        return false;
    }
    [[nodiscard]] std::int64_t Trigger() const {
        return std::int64_t{State->Cursors.Cur[kCursorT]} + State->Pods.AdjAddr[0];
    }
    [[nodiscard]] bool Repeats(int pod) const { return Case.Row <= 10 && pod % 5 == 4 && Phases(Case) > 1; }
    void ExpectThresholds() {
        for (int board = 0; board < State->Shape.WordsPerTrig; ++board) {
            for (int group = 0; group < 3; ++group) {
                EXPECT_EQ(Sim.Instrument().Board(board).Threshold(group), 50 + 9 * (3 * board + group));
            }
        }
    }
    /// The first samples of pod 0 and 4 may be unwritten, the last of a repeated pod 4 are.
    void ExpectSamples(int valueAtTrigger) {
        const int phases = Phases(Case);
        for (int pod = 0; pod < State->Shape.PodCount; ++pod) {
            const std::span<const std::uint8_t> samples = State->Buffer.Samples(pod);
            const bool repeats = Repeats(pod);
            const auto end = static_cast<std::int64_t>(samples.size()) - (repeats ? 4 * phases : 0);
            for (std::int64_t i = phases > 1 ? 1 : 0; i < end; ++i) {
                const std::int64_t taken = repeats ? i / phases * phases : i;
                const auto expected = static_cast<std::uint8_t>(valueAtTrigger + 7 * pod +
                                                                FloorDiv(taken - Trigger(), SamplesPerStep));
                ASSERT_EQ(samples[static_cast<std::size_t>(i)], expected) << "pod " << pod << " sample " << i;
            }
        }
    }
};

const RoadCase kCases[] = {
    // one phase
    {15, 0, 0, 5},
    {15, 1, 0, 6},
    {15, 0, 0, 34},
    {13, 1, 0, 8},
    {11, 0, 0, 5},
    {12, 1, 0, 9},
    {1, 0, 0, 5},
    {3, 1, 0, 10},
    {5, 0, 0, 28},
    {2, 1, 0, 6},
    {4, 0, 0, 5},
    {14, 0, 0, 12},
    // two
    {13, 0, 0, 3},
    {14, 1, 0, 3},
    {15, 3, 0, 3},
    {15, 3, 0, 5},
    {13, 3, 0, 6},
    {14, 3, 0, 8},
    {15, 3, 0, 27},
    {13, 3, 0, 34},
    {11, 0, 0, 4},
    {12, 1, 0, 4},
    {1, 0, 0, 4},
    {2, 1, 0, 4},
    {3, 0, 0, 3},
    {5, 1, 0, 3},
    // four
    {13, 0, 0, 1},
    {14, 1, 0, 1},
    {15, 0, 0, 1},
    {3, 0, 0, 1},
    {4, 1, 0, 1},
    {5, 0, 0, 1},
    // clocks from outside
    {15, 0, 1, 5},
    {15, 0, 2, 5},
    {13, 1, 5, 5},
    {5, 0, 1, 5},
    {1, 0, 2, 5},
    {3, 0, 5, 5}};

std::string RoadName(const testing::TestParamInfo<RoadCase>& param) {
    const RoadCase& c = param.param;
    return "Row" + std::to_string(c.Row) + "Mode" + std::to_string(c.Mode) + "Clock" +
           std::to_string(c.ClockType) + "Rate" + std::to_string(c.Rate);
}

/// Rate 27 in memory mode 3 passes through a faster clock while it is armed; the signals ahead of the arming
/// are then seen at that clock.
bool PassesAFasterClock(const RoadCase& c) {
    return c.Rate == 27 && c.Mode == 3;
}

class EveryStorage : public testing::TestWithParam<RoadCase> {
  protected:
    /// Distance of the trigger from its nominal place.
    void ExpectAlignment(const CaptureRoad& road) const {
        const int phases = Phases(GetParam());
        const int adjust = road.State->Pods.AdjAddr[0];
        EXPECT_GE(adjust, phases == 1 ? 15 : phases == 2 ? 29 : 57);
        EXPECT_LE(adjust, 16 * phases);
    }
};
INSTANTIATE_TEST_SUITE_P(Cases, EveryStorage, testing::ValuesIn(kCases), RoadName);

TEST_P(EveryStorage, TwoCapturesShowTheSignalsOnUsbAndOnTheBus) {
    for (const auto& [cable, direct] :
         {std::pair{SimCable::Usb, true}, {SimCable::Usb, false}, {SimCable::Isa, false}}) {
        SCOPED_TRACE(testing::Message() << SimCableName(cable) << " direct " << direct);
        CaptureRoad road(GetParam(), direct, cable);
        for (int again = 0; again < 2; ++again) {
            ASSERT_TRUE(road.Capture());
            ExpectAlignment(road);
            road.ExpectSamples(kValue);
            road.ExpectThresholds();
            if (HasFailure()) return;
        }
        EXPECT_TRUE(road.Sim.Instrument().Complaints().empty()) << road.Sim.Instrument().Complaints().front();
    }
}

TEST_P(EveryStorage, TheTriggerStandsAtItsCursor) {
    for (const int position : {0, 1, 10, 1000, 8000}) {
        SCOPED_TRACE(position);
        if (position > 10 && PassesAFasterClock(GetParam())) continue;
        CaptureRoad road(GetParam(), true, SimCable::Usb);
        road.State->Cursors.Cur[kCursorT] = position;
        ASSERT_TRUE(road.Capture());
        ExpectAlignment(road);
        road.ExpectSamples(kValue);
    }
}

TEST_P(EveryStorage, FallingEdgeIsTheEndOfTheMatch) {
    CaptureRoad road(GetParam(), true, SimCable::Usb);
    road.State->Trigger.EdgeList16[0] = 1;
    ASSERT_TRUE(road.Capture());
    ExpectAlignment(road);
    road.ExpectSamples(kValue + 1);
}

TEST_P(EveryStorage, TheLastLevelTriggers) {
    CaptureRoad road(GetParam(), true, SimCable::Usb);
    road.SetWord(4, 0x90);
    road.State->Trigger.SeqList[3] = 5;
    ASSERT_TRUE(road.Capture());
    ExpectAlignment(road);
    road.ExpectSamples(0x90);
}

TEST_P(EveryStorage, OccurrencesAreCounted) {
    CaptureRoad road(GetParam(), true, SimCable::Usb);
    road.State->Trigger.TrigCntMd = 2;
    road.State->Trigger.TrigCnt = 3;
    ASSERT_TRUE(road.Capture());
    ExpectAlignment(road);
    road.ExpectSamples(kValue);
}

TEST_P(EveryStorage, AWordThatAsksForNothingCapturesAtOnce) {
    CaptureRoad road(GetParam(), true, SimCable::Usb);
    road.SetWord(0, 0);
    for (int bit = 0; bit < 8; ++bit) SetCharOfChannel(*road.State, bit, 0, 'X');
    ASSERT_TRUE(road.Capture());
    EXPECT_EQ(road.State->Pods.AdjAddr[0], 0);
    // Consecutive samples, wherever the first one lies.
    const std::span<const std::uint8_t> samples = road.State->Buffer.Samples(0);
    std::size_t steps = 0;
    for (std::size_t i = 2; i < samples.size(); ++i) {
        const int step = (samples[i] - samples[i - 1]) & 0xFF;
        ASSERT_LE(step, 1) << i;
        steps += static_cast<std::size_t>(step);
    }
    EXPECT_NEAR(static_cast<double>(steps), static_cast<double>(samples.size()) / 3.0,
                PassesAFasterClock(GetParam()) ? 6.0 : 2.0);
}

TEST(CaptureRoad, TheEndOfTheWindowLimitsThePosition) {
    CaptureRoad road({15, 0, 0, 5}, true, SimCable::Usb);
    road.State->Cursors.Cur[kCursorT] = 8191;
    ASSERT_TRUE(road.Capture());
    EXPECT_EQ(road.State->Pods.AdjAddr[0], 0);
}

TEST(CaptureRoad, ForceEndsTheWait) {
    CaptureRoad road({15, 0, 0, 5}, true, SimCable::Usb);
    for (int bit = 0; bit < 8; ++bit)
        SetCharOfChannel(*road.State, 8 + bit, 0, '0');  // never with pod 0's word
    const CompiledTrigWords words = PrepareTriggerWords(*road.State);
    StartCapture(road.Hardware, *road.State, words);
    for (int polls = 0; polls < 20; ++polls) {
        road.Sim.Instrument().Advance(1e6);
        ASSERT_EQ(GetTrigStat(road.Hardware), 2);
    }
    ForceTrigger(road.Hardware);
    road.Sim.Instrument().Advance(1e6);
    GetTrigStat(road.Hardware);
    road.Sim.Instrument().Advance(1e6);
    EXPECT_EQ(GetTrigStat(road.Hardware), 3);
}

}  // namespace
}  // namespace zu::test
