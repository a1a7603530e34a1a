#include <gtest/gtest.h>

#include "Fakes.h"
#include "hw/AddressSearch.h"
#include "hw/BackEnds.h"
#include "hw/PatternDownload.h"
#include "hw/Registers.h"
#include "hw/sim/SimAttachment.h"
#include "state/Catalogue.h"
#include "state/Model.h"
#include "state/Rates.h"
#include "support/ScriptedHost.h"

// The shipped road from the operations down to the seams, with the simulated instrument behind them.

namespace zu::test {
namespace {

constexpr int kRows[] = {1, 2, 3, 4, 5, 11, 12, 13, 14, 15};
constexpr SimCable kCables[] = {SimCable::Usb, SimCable::Isa,   SimCable::Byte,
                                SimCable::Epp, SimCable::Epp16, SimCable::Epp32};

struct Road {
    SimAttachment Sim;
    SimCable Cable;
    ScriptedHost Host;
    HardwareSession Hardware{Host};
    InstrumentState State;

    Road(const SimTraits& traits, SimCable cable, int osFamily = 0, SimPortModes modes = {})
        : Sim(traits, cable, modes), Cable(cable) {
        Hardware.Seams = Sim.Seams();
        SetupOSFunctions(Hardware, static_cast<std::uint8_t>(osFamily));
    }
    void Connect() {
        const SimConnection c = ConnectionOf({15, Cable});
        const int port = c.ComMode == 8 || c.ComMode == 9 ? 0 : c.AddressIndex - 7;
        SetupIO(Hardware, State, static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(c.ComMode));
        State.Identity.AddressIndex = c.AddressIndex;
    }
    int Find() {
        return FindBoard(Hardware, State, State.Identity.AddressTable[State.Identity.AddressIndex]);
    }
};

SimTraits Traits(int row, bool direct) {
    SimTraits traits = TraitsOf(row);
    traits.Direct = direct;
    return traits;
}

class EveryCable : public testing::TestWithParam<SimCable> {};
INSTANTIATE_TEST_SUITE_P(Cables, EveryCable, testing::ValuesIn(kCables),
                         [](const auto& cable) { return std::string(SimCableName(cable.param)); });

TEST_P(EveryCable, FindsEveryModelTwiceWhateverTheStaleType) {
    for (const int row : kRows) {
        for (const bool direct : {false, true}) {
            for (const int entry : {0, row, 15, 5, 27}) {
                for (const int osFamily : {0, 1}) {
                    SCOPED_TRACE(testing::Message() << "row " << row << " direct " << direct << " entry "
                                                    << entry << " os " << osFamily);
                    Road road(Traits(row, direct), GetParam(), osFamily);
                    road.Connect();
                    for (int again = 0; again < 2; ++again) {
                        road.State.Identity.HardwareType = static_cast<std::uint8_t>(entry);
                        EXPECT_EQ(road.Find(), row);
                        EXPECT_EQ(road.State.Identity.HardwareType, row);
                        EXPECT_EQ(road.State.Identity.Emulated, 0);
                        EXPECT_EQ(road.Hardware.PodRegsDirect, direct ? 1 : 0);
                    }
                    UsbFlushQueue(road.Hardware);
                    EXPECT_TRUE(road.Sim.Instrument().Complaints().empty())
                        << road.Sim.Instrument().Complaints().front();
                }
            }
        }
    }
}

TEST_P(EveryCable, StackOfThreeIsModel5) {
    for (const bool large : {false, true}) {
        Road road({.Later = false, .LargeMemory = large, .Boards = 3, .Direct = true}, GetParam());
        road.Connect();
        EXPECT_EQ(road.Find(), 5);
    }
}

TEST_P(EveryCable, NothingAnswersWithoutAnInstrument) {
    Road road(Traits(15, true), GetParam());
    road.Hardware.Seams = {};
    SetupOSFunctions(road.Hardware, 0);
    road.Connect();
    EXPECT_EQ(road.Find(), 0);
    EXPECT_EQ(road.State.Identity.Emulated, 1);
}

TEST(DetectionOnIsa, EveryAddress) {
    SimInstrument sim(TraitsOf(14));
    for (std::size_t i = 0; i < 7; ++i) {
        ScriptedHost host;
        InstrumentState state;
        SimIsaPorts ports(sim, state.Identity.AddressTable[i]);
        SimPortGate gate;
        PortKernelDriver driver(ports, gate);
        HardwareSession hardware(host);  // ends first: it closes the driver
        hardware.Seams.Driver = &driver;
        SetupOSFunctions(hardware, 0);
        SetupIO(hardware, state, 0, 8);
        for (std::size_t j = 0; j < 7; ++j) {
            EXPECT_EQ(FindBoard(hardware, state, state.Identity.AddressTable[j]), i == j ? 14 : 0);
        }
    }
}

// ---- the clock, as the instrument understands it ----

/// Sample phases that share the clock.
int Phases(int mode, int rate) {
    if (rate == 1 || rate == 2) return 4;
    return mode == 3 || rate == 3 || rate == 4 ? 2 : 1;
}

TEST_P(EveryCable, SampleClockIsThatOfTheRate) {
    for (const int row : kRows) {
        for (const bool direct : {false, true}) {
            Road road(Traits(row, direct), GetParam());
            road.Connect();
            ASSERT_EQ(road.Find(), row);
            road.State.Shape.PodCount = Model(row).PodCount;
            for (int rate = 1; rate <= 34; ++rate) {
                if (rate >= 13 && rate <= 21 && rate % 2 == 1) continue;  // not made by the clock
                for (const int mode : {0, 1, 3}) {
                    SCOPED_TRACE(testing::Message() << row << " rate " << rate << " mode " << mode);
                    road.State.Clock.ClockRate = static_cast<std::uint8_t>(rate);
                    road.State.Memory.HardwareMode = static_cast<std::int8_t>(mode);
                    EXPECT_TRUE(SetClock(road.Hardware, road.State));
                    UsbFlushQueue(road.Hardware);
                    const SimClock clock = road.Sim.Instrument().SampleClock();
                    EXPECT_EQ(clock.Source, SimClockSource::Internal);
                    EXPECT_DOUBLE_EQ(clock.PeriodNs / Phases(mode, rate), GetRateNS(0, rate));
                }
            }
        }
    }
}

TEST(ClockOnTheInstrument, ExternalTypes) {
    const std::pair<int, SimClockSource> cases[] = {
        {1, SimClockSource::External},      {2, SimClockSource::External},
        {3, SimClockSource::GatedExternal}, {4, SimClockSource::GatedExternal},
        {6, SimClockSource::GatedExternal}, {7, SimClockSource::Stopped}};
    for (const int row : {3, 15}) {
        for (const auto& [type, source] : cases) {
            Road road(Traits(row, true), SimCable::Isa);
            road.Connect();
            road.Find();
            road.State.Clock.ClockType = static_cast<std::uint8_t>(type);
            EXPECT_TRUE(SetClock(road.Hardware, road.State));
            EXPECT_EQ(road.Sim.Instrument().SampleClock().Source, source) << type;
            EXPECT_EQ(road.Sim.Instrument().SampleClock().Falling, type == 2);
        }
        for (const bool stopped : {false, true}) {
            Road road(Traits(row, true), SimCable::Isa);
            road.Connect();
            road.Find();
            Registers registers(road.Hardware, 0, static_cast<std::uint8_t>(row));
            registers.ClockSelect(stopped ? 7 : 1);
            road.State.Clock.ClockType = 5;
            EXPECT_TRUE(SetClock(road.Hardware, road.State));
            EXPECT_EQ(road.Sim.Instrument().SampleClock().Source,
                      stopped ? SimClockSource::Fixed : SimClockSource::Internal);
        }
    }
}

TEST(ClockOnTheInstrument, QualifierTable) {
    for (const SimCable cable : {SimCable::Isa, SimCable::Usb, SimCable::Byte}) {
        for (const int edge : {0, 1}) {
            Road road(Traits(13, true), cable);
            road.Connect();
            ASSERT_EQ(road.Find(), 13);
            road.State.Clock.ClockType = 3;
            road.State.Clock.ClockEdge = static_cast<std::uint8_t>(edge);
            road.State.Clock.ClockExt[0] = "1X0XXXX1x";
            road.State.Clock.ClockExt[1] = "XXXXXXXX";
            SetClock(road.Hardware, road.State);
            UsbFlushQueue(road.Hardware);
            for (int word = 0; word < 256; ++word) {
                const bool match = (word & 0xA1) == 0x81;
                EXPECT_EQ(road.Sim.Instrument().Board(0).Gate(static_cast<std::uint8_t>(word)),
                          match == (edge == 0))
                    << word;
            }
        }
    }
}

TEST(MemoryOnTheInstrument, DepthByMode) {
    for (const int row : kRows) {
        for (const bool direct : {false, true}) {
            Road road(Traits(row, direct), SimCable::Usb);
            road.Connect();
            ASSERT_EQ(road.Find(), row);
            road.State.Shape.WordsPerTrig = Model(row).WordsPerTrig;
            const bool small = row % 10 == 1 || row % 10 == 2;
            for (const int mode : {0, 1, 3, 0}) {
                road.State.Memory.HardwareMode = static_cast<std::int8_t>(mode);
                SetupMemConfig(road.Hardware, road.State);
                UsbFlushQueue(road.Hardware);
                EXPECT_EQ(road.Sim.Instrument().Depth(), mode == 0 ? 8192 : small ? 32768 : 131072);
            }
        }
    }
}

TEST(PatternsOnTheInstrument, ArriveByteForByte) {
    for (const int row : {4, 14, 15}) {
        for (const bool direct : {false, true}) {
            for (const SimCable cable : {SimCable::Usb, SimCable::Isa, SimCable::Byte}) {
                SCOPED_TRACE(testing::Message() << row << direct << SimCableName(cable));
                Road road(Traits(row, direct), cable);
                road.Connect();
                ASSERT_EQ(road.Find(), row);
                road.State.Identity.HardwareType = static_cast<std::uint8_t>(row);
                ApplyModel(road.State);
                road.State.Buffer.BufLen.fill(700);
                for (int pod = 0; pod < road.State.Shape.PodCount; ++pod) {
                    for (int i = 0; i < 700; ++i) {
                        road.State.Buffer.PatPod[static_cast<std::size_t>(pod)][i] =
                            static_cast<std::uint8_t>(pod * 31 + i);
                    }
                }
                for (const int pod : {0, 2, 4, 7})
                    road.State.Pods.HardwarePod[static_cast<std::size_t>(pod)] = 1;
                DownloadPatterns(road.Hardware, road.State);
                UsbFlushQueue(road.Hardware);
                const bool earlier = row < 10;
                const bool pairs = !earlier && (direct || cable == SimCable::Usb);
                for (int pod = 0; pod < 10; ++pod) {
                    const int first = pod % 5 == 1 || pod % 5 == 3 ? pod - 1 : pod;
                    const bool open = first == 0 || first == 2 || first == 4 || first == 7;
                    const bool takes = earlier ? open && first == pod : open;
                    const auto& lane = road.Sim.Instrument().Board(pod / 5).Pattern(pod % 5);
                    ASSERT_EQ(lane.size(), takes ? 700U : 0U) << "pod " << pod;
                    const int source = pairs ? pod : first;
                    for (int i = 0; i < 700 && takes; ++i) {
                        ASSERT_EQ(lane[static_cast<std::size_t>(i)], (source * 31 + i) & 0xFF) << pod;
                    }
                }
            }
        }
    }
}

// ---- the address dialog's work ----

struct Dialog {
    Road TheRoad;
    std::vector<std::string> Texts;
    AddressSearch Search;

    Dialog(int row, SimCable cable, SimPortModes modes = {})
        : TheRoad(Traits(row, true), cable, 0, modes),
          Search(TheRoad.Hardware, TheRoad.State, [this](std::string_view text) {
              Texts.emplace_back(text);
              return true;
          }) {}
    IdentityRecord& Identity() { return TheRoad.State.Identity; }
};

TEST(AddressDialog, SingleCandidates) {
    Dialog isa(15, SimCable::Isa);
    EXPECT_EQ(isa.Search.TryIsa(3), SearchEnd::NotFound);
    EXPECT_EQ(isa.Search.Status(), "No Logic Analyzer found at address=0x2A0");
    EXPECT_FALSE(isa.Search.CanAccept());
    EXPECT_EQ(isa.Identity().Emulated, 1);
    EXPECT_EQ(isa.Search.TryIsa(0), SearchEnd::Found);
    EXPECT_EQ(isa.Search.Status(), "Address=0x210 Model=Roach160LB");
    EXPECT_TRUE(isa.Search.CanAccept());
    EXPECT_EQ(isa.Identity().AddressIndex, 0);
    EXPECT_EQ(isa.Identity().FoundTable[0], 15);
    EXPECT_EQ(isa.Identity().FoundTable[3], 0);
    EXPECT_EQ(isa.Identity().ComMode, 8);

    Dialog epp(3, SimCable::Epp);
    EXPECT_EQ(epp.Search.TryParallel(0, 4), SearchEnd::NotFound);
    EXPECT_EQ(epp.Search.Status(), "No Logic Analyzer found at address=0x3BC");
    for (const int mode : {1, 2, 4, 32, 64}) {
        EXPECT_EQ(epp.Search.TryParallel(1, static_cast<std::uint8_t>(mode)), SearchEnd::Found) << mode;
        EXPECT_EQ(epp.Search.Status(), "Address=0x378 Model=Pike40L");
        EXPECT_EQ(epp.Identity().AddressIndex, 8);
        EXPECT_EQ(epp.Identity().FoundTable[8], 3);
        EXPECT_EQ(epp.Identity().ComMode, mode);
    }

    Dialog usb(12, SimCable::Usb);
    EXPECT_EQ(usb.Search.TryUsb(), SearchEnd::Found);
    EXPECT_EQ(usb.Search.Status(), "Model= Roach80SB (USB)");
    EXPECT_EQ(usb.Identity().AddressIndex, 7);
    EXPECT_EQ(usb.Identity().ComMode, 9);
    Dialog none(12, SimCable::Isa);
    EXPECT_EQ(none.Search.TryUsb(), SearchEnd::NotFound);
    EXPECT_EQ(none.Search.Status(), "No Logic Analyzer found on USB bus");
}

TEST(AddressDialog, WildCandidatesAreNone) {
    Dialog d(15, SimCable::Isa);
    EXPECT_EQ(d.Search.TryIsa(7), SearchEnd::NotFound);
    EXPECT_EQ(d.Search.TryParallel(3, 4), SearchEnd::NotFound);
    EXPECT_EQ(d.Search.TryParallel(65535, 4), SearchEnd::NotFound);
}

TEST(AddressDialog, AllIsaAddresses) {
    Dialog d(14, SimCable::Isa);
    EXPECT_EQ(d.Search.SearchIsa(), SearchEnd::Found);
    EXPECT_EQ(d.Texts, (std::vector<std::string>{"", "", "", "", "", "", "Address=0x210 Model=Roach80LB"}));
    EXPECT_EQ(d.Identity().AddressIndex, 0);
    EXPECT_EQ(d.Identity().HardwareType, 14);
    EXPECT_EQ(d.Identity().Emulated, 0);
    Dialog none(14, SimCable::Usb);
    EXPECT_EQ(none.Search.SearchIsa(), SearchEnd::NotFound);
    EXPECT_EQ(none.Texts.size(), 7U);
    EXPECT_FALSE(none.Search.CanAccept());
}

TEST(AddressDialog, ParallelSearchTakesTheFastestMode) {
    struct Case {
        SimPortModes Modes;
        int Series;
        int ComMode;
        int Dots;
    };
    const Case cases[] = {{{.Byte = true, .Epp = true}, 2, 4, 11},
                          {{.Byte = true, .Epp = false}, 2, 2, 11},
                          {{.Byte = true, .Epp = true}, 0, 4, 11},
                          {{.Byte = true, .Epp = true}, 1, 1, 2},
                          {{.Byte = true, .Epp = true}, 3, 1, 11}};
    for (const Case& c : cases) {
        Dialog d(15, SimCable::Epp, c.Modes);
        d.Identity().ModelSeries = static_cast<std::uint8_t>(c.Series);
        EXPECT_EQ(d.Search.SearchParallel(), SearchEnd::Found);
        EXPECT_EQ(d.Identity().ComMode, c.ComMode) << c.Series;
        EXPECT_EQ(d.Identity().AddressIndex, 8);
        EXPECT_EQ(d.Identity().HardwareType, 15);
        EXPECT_EQ(d.Search.Status(), "Address=0x378 Model=Roach160LB");
        EXPECT_FALSE(d.Search.ClearsButtons());
        EXPECT_EQ(d.Texts.front(), "Searching");
        EXPECT_EQ(d.Texts[d.Texts.size() - 2],
                  "Searching" + std::string(static_cast<std::size_t>(c.Dots), '.'));
    }
}

TEST(AddressDialog, ParallelSearchFindsNothing) {
    for (const SimPortModes modes : {SimPortModes{.Byte = false, .Epp = true}, SimPortModes{false, false}}) {
        Dialog d(15, SimCable::Epp, modes);
        EXPECT_EQ(d.Search.SearchParallel(), SearchEnd::NotFound);
        EXPECT_EQ(d.Texts, (std::vector<std::string>{"Searching", "Searching.", "Logic Analyzer not found"}));
        EXPECT_TRUE(d.Search.ClearsButtons());
        EXPECT_FALSE(d.Search.CanAccept());
    }
    Dialog usb(15, SimCable::Usb);
    EXPECT_EQ(usb.Search.SearchParallel(), SearchEnd::NotFound);
    EXPECT_EQ(usb.Texts, (std::vector<std::string>{"Searching", "Logic Analyzer not found"}));
}

/// An EPP port that is dumb for a while.
class UnsureEpp final : public PortIo {
  public:
    explicit UnsureEpp(PortIo& inner) : inner_(inner) {}
    void Out8(std::uint16_t port, std::uint8_t value) override { inner_.Out8(port, value); }
    std::uint8_t In8(std::uint16_t port) override {
        const std::uint8_t value = inner_.In8(port);
        if (port != 0x27C) return value;
        ++reads_;
        return reads_ > 45 && reads_ <= 60 ? std::uint8_t{0x00} : value;
    }
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override {
        inner_.InString(port, unit, bytes);
    }

  private:
    PortIo& inner_;
    int reads_ = 0;
};

TEST(AddressDialog, AModeThatFailsInOneRoundIsOut) {
    SimInstrument sim(TraitsOf(13));
    SimParallelPorts ports(sim, 0x278, {});
    UnsureEpp unsure(ports);
    SimPortGate gate;
    PortKernelDriver driver(unsure, gate);
    ScriptedHost host;
    HardwareSession hardware(host);
    InstrumentState state;
    hardware.Seams.Driver = &driver;
    SetupOSFunctions(hardware, 0);
    AddressSearch search(hardware, state);
    EXPECT_EQ(search.SearchParallel(), SearchEnd::Found);
    EXPECT_EQ(state.Identity.ComMode, 2);
    EXPECT_EQ(state.Identity.AddressIndex, 9);
    EXPECT_EQ(search.Status(), "Address=0x278 Model=Roach40LB");
}

TEST(AddressDialog, SearchesCanBeStopped) {
    for (int allowed = 0; allowed < 12; ++allowed) {
        Road road(Traits(15, true), SimCable::Epp);
        int shown = 0;
        AddressSearch search(road.Hardware, road.State, [&](std::string_view) { return shown++ < allowed; });
        EXPECT_EQ(search.SearchParallel(), SearchEnd::Cancelled) << allowed;
        EXPECT_FALSE(search.CanAccept());
    }
    Road road(Traits(15, true), SimCable::Usb);
    AddressSearch search(road.Hardware, road.State, [](std::string_view) { return false; });
    EXPECT_EQ(search.SearchIsa(), SearchEnd::Cancelled);
}

TEST(AddressDialog, UsbSearch) {
    Dialog found(15, SimCable::Usb);
    EXPECT_EQ(found.Search.SearchUsb(), SearchEnd::Found);
    EXPECT_EQ(found.Search.Status(), "Model= Roach160LB (USB)");
    EXPECT_TRUE(found.TheRoad.Host.Boxes.empty());

    Dialog none(15, SimCable::Isa);
    EXPECT_EQ(none.Search.SearchUsb(), SearchEnd::NotFound);
    EXPECT_EQ(none.Search.Status(), "USB error: Logic Analyzer not found");
    ASSERT_EQ(none.TheRoad.Host.Boxes.size(), 1U);
    EXPECT_EQ(none.TheRoad.Host.Boxes[0],
              (ScriptedHost::Box{"Ostrand Labs USB device not connected", "Error:"}));

    FakeUsb mute;
    ScriptedHost host;
    HardwareSession hardware(host);
    InstrumentState state;
    hardware.Seams.Usb = &mute;
    SetupOSFunctions(hardware, 0);
    AddressSearch search(hardware, state);
    EXPECT_EQ(search.SearchUsb(), SearchEnd::NotFound);
    EXPECT_EQ(host.Boxes[0], (ScriptedHost::Box{"Ostrand Labs USB driver not installed", "Error:"}));
}

TEST(AddressDialog, UsbErrorTexts) {
    EXPECT_EQ(UsbErrorText(0), "Ostrand Labs USB driver not installed");
    EXPECT_EQ(UsbErrorText(1), "Ostrand Labs USB device not connected");
    EXPECT_EQ(UsbErrorText(3), "Ostrand Labs USB device not detected");
    EXPECT_EQ(UsbErrorText(7), "Ostrand Labs USB Logic Analyzer not detected");
    EXPECT_EQ(UsbErrorText(0x2F), "Ostrand Labs USB error(2F) Call Ostrand Labs");
}

TEST(AddressDialog, Demo) {
    const std::pair<int, int> cases[] = {{0, 5}, {1, 17}, {2, 15}, {3, 19}, {4, 24}, {5, 27}, {6, 5}};
    for (const auto& [series, row] : cases) {
        Dialog d(13, SimCable::Usb);
        d.Identity().ModelSeries = static_cast<std::uint8_t>(series);
        EXPECT_EQ(d.Search.TryUsb(), SearchEnd::Found);
        d.Search.ChooseDemo();
        EXPECT_EQ(d.Search.Status(), "Demo mode");
        EXPECT_TRUE(d.Search.CanAccept());
        EXPECT_EQ(d.Identity().Emulated, 1);
        EXPECT_EQ(d.Identity().HardwareType, row);
        EXPECT_EQ(d.TheRoad.Hardware.Ops, &NullRegisterOps()) << "the instrument is left alone";
        EXPECT_EQ(GetTrigStat(d.TheRoad.Hardware), 2);
    }
}

TEST(AddressDialog, OfferedChoices) {
    Dialog epp(15, SimCable::Epp);
    EXPECT_EQ(OfferedAddresses(epp.TheRoad.Hardware, epp.TheRoad.State).Ports,
              (std::array<bool, 3>{false, true, false}));
    EXPECT_TRUE(OfferedAddresses(epp.TheRoad.Hardware, epp.TheRoad.State).PortGroups);
    Dialog usb(15, SimCable::Usb);
    EXPECT_EQ(OfferedAddresses(usb.TheRoad.Hardware, usb.TheRoad.State).Ports,
              (std::array<bool, 3>{false, false, false}));
    EXPECT_FALSE(OfferedAddresses(usb.TheRoad.Hardware, usb.TheRoad.State).PortGroups)
        << "no driver: USB and demo only";
}

TEST(AddressDialog, WhereNothingAnswersNothingStaysInForce) {
    const auto releases = [](const char* name, auto search) {
        Dialog d(15, SimCable::Isa);
        OfferedAddresses(d.TheRoad.Hardware, d.TheRoad.State);
        search(d.Search);
        EXPECT_EQ(d.TheRoad.Hardware.Ops, &NullRegisterOps()) << name;
    };
    releases("isa", [](AddressSearch& s) { s.TryIsa(5); });
    releases("parallel", [](AddressSearch& s) { s.TryParallel(0, 4); });
    releases("all parallel", [](AddressSearch& s) { s.SearchParallel(); });
    releases("usb", [](AddressSearch& s) { s.TryUsb(); });
    releases("usb search", [](AddressSearch& s) { s.SearchUsb(); });
}

TEST(Waiting, GoesThroughTheHost) {
    ScriptedHost host;
    HardwareSession hardware(host);
    EXPECT_TRUE(WaitNanoseconds(hardware, 0));
    EXPECT_TRUE(WaitNanoseconds(hardware, -5));
    EXPECT_EQ(host.Ticks, 0U);
    EXPECT_TRUE(WaitNanoseconds(hardware, 5e6));
    EXPECT_EQ(host.Ticks, 5U);
}

TEST(AddressDialog, NamesAndTheNoteAfterwards) {
    EXPECT_EQ(DialogModelName(0), "No ZU found");
    EXPECT_EQ(DialogModelName(1), "Pike40S");
    EXPECT_EQ(DialogModelName(15), "Roach160LB");
    Road road(Traits(15, true), SimCable::Usb);
    TellRestart(road.Hardware, road.State);
    EXPECT_TRUE(road.Host.Boxes.empty()) << "no hardware in use";
    road.State.Identity.Emulated = 0;
    TellRestart(road.Hardware, road.State);
    EXPECT_EQ(road.Host.Boxes.at(0), (ScriptedHost::Box{"Restart software now.", "Note:"}));
}

}  // namespace
}  // namespace zu::test
