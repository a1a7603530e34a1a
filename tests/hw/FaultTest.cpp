#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "Fakes.h"
#include "hw/AddressSearch.h"
#include "hw/BackEnds.h"
#include "hw/Fault.h"
#include "hw/PatternDownload.h"
#include "hw/sim/SimAttachment.h"
#include "state/Catalogue.h"
#include "support/ScriptedHost.h"

namespace zu::test {
namespace {

constexpr SimCable kCables[] = {SimCable::Usb, SimCable::Isa,   SimCable::Byte,
                                SimCable::Epp, SimCable::Epp16, SimCable::Epp32};
constexpr int kRows[] = {1, 2, 3, 4, 5, 11, 12, 13, 14, 15};

bool IsModel(int row) {
    return row == 0 || (row >= 1 && row <= 5) || (row >= 11 && row <= 15);
}

/// A simulated instrument behind faults, in front of a session.
struct FaultyRoad {
    SimAttachment Sim;
    FaultPortIo Ports;
    FaultKernelDriver Driver;
    FaultUsbDevice Usb;
    Lines Trace;
    TraceUsbDevice TracedUsb{Usb, Trace.Log};
    ScriptedHost Host;
    HardwareSession Hardware{Host};
    InstrumentState State;

    FaultyRoad(const SimSpec& spec, const FaultPlan& plan, int osFamily)
        : Sim(spec),
          Ports(*Sim.Seams().Ports, plan),
          Driver(*Sim.Seams().Driver, plan),
          Usb(*Sim.Seams().Usb, plan) {
        Hardware.Seams = {&Ports, &Driver, &TracedUsb};
        SetupOSFunctions(Hardware, static_cast<std::uint8_t>(osFamily));
    }
};

void Detect(FaultyRoad& road, const SimSpec& spec, std::mt19937& random) {
    const SimConnection c = ConnectionOf(spec);
    AddressSearch search(road.Hardware, road.State);
    switch (random() % 4) {
        case 0:
            SetupIO(road.Hardware, road.State, spec.Cable == SimCable::Isa ? 0 : 1,
                    static_cast<std::uint8_t>(c.ComMode));
            FindStoredBoard(road.Hardware, road.State, c.AddressIndex);
            break;
        case 1:
            search.SearchUsb();
            break;
        case 2:
            if (spec.Cable == SimCable::Isa || random() % 8 != 0) {
                search.SearchIsa();
            } else {
                search.SearchParallel();
            }
            break;
        default:
            OfferedAddresses(road.Hardware, road.State);
            if (c.ComMode < 8 || c.ComMode > 9) {
                search.TryParallel(1, static_cast<std::uint8_t>(c.ComMode));
            } else if (c.ComMode == 8) {
                search.TryIsa(0);
            } else {
                search.TryUsb();
            }
            break;
    }
}

void Program(FaultyRoad& road, int row, std::mt19937& random) {
    InstrumentState& state = road.State;
    // Whatever was found, the program goes on as with the model it looked for.
    state.Identity.HardwareType = static_cast<std::uint8_t>(row);
    state.Identity.Emulated = 0;
    state.Shape.PodCount = Model(row).PodCount;
    state.Shape.BufStep = 5;
    state.Shape.WordsPerTrig = Model(row).WordsPerTrig;
    state.Buffer.BufLen.fill(static_cast<std::int32_t>(random() % 300));
    state.Buffer.Allocate();
    state.Clock.ClockRate = static_cast<std::uint8_t>(random() % 40);
    state.Clock.ClockType = static_cast<std::uint8_t>(random() % 9);
    state.Memory.HardwareMode = static_cast<std::int8_t>(random() % 5);
    for (auto& pod : state.Pods.HardwarePod) pod = static_cast<std::int8_t>(random() % 5);
    state.Clock.ClockExt[random() % 16] = "01X01X01";
    SetupMemConfig(road.Hardware, state);
    DownloadPatterns(road.Hardware, state);
    SetClock(road.Hardware, state);
    UsbFlushQueue(road.Hardware);
    const int status = GetTrigStat(road.Hardware);
    EXPECT_TRUE(status >= 1 && status <= 3);
    std::vector<std::uint8_t> block(random() % 2 == 0 ? 1000 : 70001);
    road.Hardware.Ops->RegReadBlock(road.Hardware.HwPort, road.Hardware.Ports.At(0, 0),
                                    static_cast<std::int32_t>(block.size()), block.data());
}

class FaultRunsByKind : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Kinds, FaultRunsByKind, testing::Range(0, kFaultKinds));

TEST_P(FaultRunsByKind, DetectionAndProgrammingSurvive) {
    for (unsigned seed = 0; seed < 200 && !HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "kind " << GetParam() << " seed " << seed);
        std::mt19937 random(seed * 7919 + static_cast<unsigned>(GetParam()));
        const SimSpec spec{kRows[random() % 10], kCables[random() % 6]};
        const FaultPlan plan{.Kind = static_cast<FaultKind>(GetParam()),
                             .Seed = seed,
                             .After = random() % 2 == 0 ? 0 : static_cast<std::uint32_t>(random() % 3000),
                             .OneIn = random() % 3 == 0 ? 1 : static_cast<std::uint32_t>(random() % 200 + 1)};
        FaultyRoad road(spec, plan, random() % 4 == 0 ? 1 : 0);
        Detect(road, spec, random);
        EXPECT_TRUE(IsModel(road.State.Identity.FoundTable[0]));
        EXPECT_TRUE(road.State.Identity.Emulated <= 1);
        for (const std::uint16_t found : road.State.Identity.FoundTable) EXPECT_TRUE(IsModel(found));
        Program(road, spec.Row, random);
        CloseHardware(road.Hardware);
        EXPECT_EQ(GetTrigStat(road.Hardware), 2);
    }
}

TEST(FaultRuns, SameSeedSameRun) {
    std::set<std::string> runs;
    for (int i = 0; i < 3; ++i) {
        std::mt19937 random(5);
        const SimSpec spec{15, SimCable::Usb};
        FaultyRoad road(spec, {FaultKind::FlippedBit, static_cast<std::uint64_t>(i == 2 ? 9 : 4), 0, 10}, 0);
        SetupIO(road.Hardware, road.State, 0, 9);
        FindBoard(road.Hardware, road.State, 0);
        runs.insert(road.Trace.Take());
    }
    EXPECT_EQ(runs.size(), 2U);
}

TEST(FaultRuns, DeadAndStuckInstrumentsAreNotFound) {
    for (const SimCable cable : kCables) {
        for (const FaultKind kind :
             {FaultKind::DeadLow, FaultKind::DeadHigh, FaultKind::FailedTransfer, FaultKind::Unplug}) {
            const SimSpec spec{15, cable};
            FaultyRoad road(spec, {kind, 1, 0, 1}, 0);
            SetupIO(road.Hardware, road.State, cable == SimCable::Isa ? 0 : 1,
                    static_cast<std::uint8_t>(ConnectionOf(spec).ComMode));
            EXPECT_EQ(FindStoredBoard(road.Hardware, road.State, ConnectionOf(spec).AddressIndex), 0)
                << SimCableName(cable) << static_cast<int>(kind);
            EXPECT_EQ(road.State.Identity.Emulated, 1);
        }
    }
}

/// Detection over USB and a full programming with one transfer, or all from one on, going wrong. True when
/// the run was over before the fault came.
bool RunPastStep(std::uint32_t step, FaultKind kind, bool once) {
    const SimSpec spec{15, SimCable::Usb};
    const FaultPlan plan{.Kind = kind, .Seed = step, .After = step, .Times = once ? 1 : UINT32_MAX};
    FaultyRoad road(spec, plan, 0);
    std::mt19937 random(1);  // the same programming for every step
    const std::uint8_t usb = UsbDetect(road.Hardware);
    EXPECT_TRUE(usb == 15 || usb == 0 || usb == 1);
    SetupIO(road.Hardware, road.State, 0, 9);
    const int row = FindStoredBoard(road.Hardware, road.State, 7);
    EXPECT_TRUE(IsModel(row));
    EXPECT_EQ(road.State.Identity.Emulated, row == 0 ? 1 : 0);
    Program(road, spec.Row, random);
    const bool untouched = road.Usb.Source().Hits() == 0;
    if (untouched) {
        EXPECT_EQ(row, 15);
    }
    return untouched;
}

class FaultAtEachStep : public testing::TestWithParam<FaultKind> {};
INSTANTIATE_TEST_SUITE_P(Kinds, FaultAtEachStep,
                         testing::Values(FaultKind::FailedTransfer, FaultKind::ShortTransfer,
                                         FaultKind::Unplug, FaultKind::Noise, FaultKind::DeadLow,
                                         FaultKind::DeadHigh));

TEST_P(FaultAtEachStep, OfDetectionAndProgrammingIsSurvived) {
    for (const bool once : {true, false}) {
        std::uint32_t step = 0;
        while (!HasFailure() && !RunPastStep(step, GetParam(), once)) {
            ++step;
            ASSERT_LT(step, 20000U);
        }
        EXPECT_GT(step, 150U) << "detection alone takes about a hundred transfers";
    }
}

TEST(FaultRuns, UnplugInTheMiddleOfABulkRead) {
    for (std::uint32_t after = 0; after < 12; ++after) {
        SimAttachment sim({15, SimCable::Usb});
        FaultUsbDevice device(*sim.Seams().Usb, {FaultKind::Unplug, 1, after, 1});
        UsbLink link(device);
        ASSERT_TRUE(link.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan));
        UsbOps ops(link);
        std::vector<std::uint8_t> block(5 * 61440, 0x77);
        ops.RegReadBlock(0, 0, static_cast<std::int32_t>(block.size()), block.data());
        EXPECT_EQ(link.Status() == 63, after >= 11) << after;
        EXPECT_EQ(block.back(), after >= 11 ? 0x00 : 0x77) << "what did not come stays";
        link.Flush();
        EXPECT_EQ(ops.RegRead(0, 1), 0xFF) << "gone for good";
        EXPECT_FALSE(link.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan));
    }
}

TEST(FaultRuns, ANewStartWithoutFaultsFindsTheInstrument) {
    SimAttachment sim({13, SimCable::Usb});
    for (int round = 0; round < 50; ++round) {
        FaultUsbDevice device(*sim.Seams().Usb, {FaultKind::Noise, static_cast<std::uint64_t>(round), 0, 3});
        ScriptedHost host;
        HardwareSession hardware(host);
        InstrumentState state;
        hardware.Seams.Usb = &device;
        SetupOSFunctions(hardware, 0);
        SetupIO(hardware, state, 0, 9);
        FindBoard(hardware, state, 0);
        hardware.Seams = sim.Seams();
        SetupOSFunctions(hardware, 0);
        SetupIO(hardware, state, 0, 9);
        EXPECT_EQ(FindStoredBoard(hardware, state, 7), 13);
    }
}

// ---- the decorators themselves ----

TEST(FaultPortIo, Kinds) {
    FakePorts inner;
    inner.Answer = [](std::uint16_t) { return std::uint8_t{0x3C}; };
    const auto read = [&](FaultKind kind) { return FaultPortIo(inner, {kind, 3, 0, 1}).In8(0x210); };
    EXPECT_EQ(read(FaultKind::DeadLow), 0x00);
    EXPECT_EQ(read(FaultKind::DeadHigh), 0xFF);
    EXPECT_EQ(read(FaultKind::Unplug), 0xFF);
    EXPECT_EQ(std::popcount(static_cast<unsigned>(read(FaultKind::FlippedBit) ^ 0x3C)), 1);
    FaultPortIo lost(inner, {FaultKind::FailedTransfer, 3, 0, 1});
    lost.Out8(0x210, 0x12);
    EXPECT_TRUE(inner.Latch.empty());
}

TEST(FaultPortIo, AfterAndOneIn) {
    FakePorts inner;
    inner.Answer = [](std::uint16_t) { return std::uint8_t{0x3C}; };
    FaultPortIo ports(inner, {FaultKind::DeadLow, 3, 100, 10});
    int hits = 0;
    for (int i = 0; i < 1100; ++i) {
        const bool hit = ports.In8(0x210) == 0;
        EXPECT_FALSE(hit && i < 100);
        hits += hit ? 1 : 0;
    }
    EXPECT_GT(hits, 50);
    EXPECT_LT(hits, 200);
}

TEST(FaultUsbDevice, ShortTransfers) {
    FakeUsb inner;
    FaultUsbDevice device(inner, {FaultKind::ShortTransfer, 3, 0, 1});
    std::vector<std::uint8_t> data(1000);
    for (int i = 0; i < 20; ++i) {
        const std::int32_t moved = device.BulkIn(data);
        EXPECT_GE(moved, 0);
        EXPECT_LT(moved, 1000);
        EXPECT_LT(device.BulkOut(data), 1000);
    }
}

}  // namespace
}  // namespace zu::test
