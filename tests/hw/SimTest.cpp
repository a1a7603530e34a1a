#include <gtest/gtest.h>
#include <vector>

#include "Fakes.h"
#include "SimHand.h"
#include "hw/sim/SimAttachment.h"

// The simulated instrument by itself: registers are written here by hand, one step before and after each
// edge.

namespace zu::test {
namespace {

TEST(SimSpec, Names) {
    const std::pair<const char*, std::pair<int, SimCable>> good[] = {
        {"Roach160L", {15, SimCable::Usb}},     {"Roach160LB", {15, SimCable::Usb}},
        {"roach160l@isa", {15, SimCable::Isa}}, {"Roach40S@byte", {11, SimCable::Byte}},
        {"Pike40S@epp", {1, SimCable::Epp}},    {"Pike160L-128K@epp16", {5, SimCable::Epp16}},
        {"13@epp32", {13, SimCable::Epp32}},    {"Roach80LB-128K@usb", {14, SimCable::Usb}},
    };
    for (const auto& [text, expected] : good) {
        const auto spec = ParseSimulate(text);
        ASSERT_TRUE(spec) << text;
        EXPECT_EQ(spec->Row, expected.first) << text;
        EXPECT_EQ(spec->Cable, expected.second) << text;
    }
    for (const char* text : {"", "@usb", "Roach160L@", "Roach160L@serial", "0", "6", "Pike40SB", "16",
                             "Dace-32K", "27", "28", "Nothing", "Roach160L@usb@isa"}) {
        EXPECT_FALSE(ParseSimulate(text)) << text;
    }
}

TEST(SimSpec, TheChoicesThatAMessageListsAreAllTaken) {
    const std::string choices = SimulateChoices();
    EXPECT_EQ(
        choices,
        "MODEL[@CABLE] with a model of Pike40S, Pike80S, Pike40L, Pike80L, Pike160L, Roach40S, Roach80S, "
        "Roach40L, Roach80L, Roach160L and a cable of usb, isa, byte, epp, epp16, epp32");
    const std::pair<const char*, int> models[] = {
        {"Pike40S", 1},   {"Pike80S", 2},   {"Pike40L", 3},   {"Pike80L", 4},   {"Pike160L", 5},
        {"Roach40S", 11}, {"Roach80S", 12}, {"Roach40L", 13}, {"Roach80L", 14}, {"Roach160L", 15}};
    for (const auto& [name, row] : models) EXPECT_EQ(ParseSimulate(name)->Row, row) << name;
}

TEST(SimSpec, RowsAndConnections) {
    const std::pair<int, std::array<int, 3>> rows[] = {
        {1, {0, 0, 1}},  {2, {0, 0, 2}},  {3, {0, 1, 1}},  {4, {0, 1, 2}},  {5, {0, 1, 4}},
        {11, {1, 0, 1}}, {12, {1, 0, 2}}, {13, {1, 1, 1}}, {14, {1, 1, 2}}, {15, {1, 1, 4}}};
    for (const auto& [row, expected] : rows) {
        const SimTraits traits = TraitsOf(row);
        EXPECT_EQ(traits.Later, expected[0] == 1) << row;
        EXPECT_EQ(traits.LargeMemory, expected[1] == 1) << row;
        EXPECT_EQ(traits.Boards, expected[2]) << row;
    }
    const std::tuple<SimCable, int, int> cables[] = {{SimCable::Usb, 9, 7},    {SimCable::Isa, 8, 0},
                                                     {SimCable::Byte, 2, 8},   {SimCable::Epp, 4, 8},
                                                     {SimCable::Epp16, 32, 8}, {SimCable::Epp32, 64, 8}};
    for (const auto& [cable, mode, index] : cables) {
        EXPECT_EQ(ConnectionOf({15, cable}).ComMode, mode);
        EXPECT_EQ(ConnectionOf({15, cable}).AddressIndex, index);
        EXPECT_EQ(ParseSimulate("15@" + std::string(SimCableName(cable)))->Cable, cable);
    }
}

TEST(SimReset, Values) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    for (int reg = 0; reg < 16; ++reg) hand.Put(reg, 0xFF);
    sim.Complain("something");
    sim.Reset();
    for (int board = 0; board < 4; ++board) {
        const SimBoard& b = sim.Board(board);
        for (int reg = 0; reg < 16; ++reg) EXPECT_EQ(b.Register(reg), 0);
        EXPECT_EQ(b.S8(), 0);
        EXPECT_EQ(b.S9(), 0);
        EXPECT_EQ(b.S10(), 0);
        EXPECT_EQ(b.S11(), 0);
        EXPECT_EQ(b.SynthWord(), 0U);
        for (int group = 0; group < 3; ++group) EXPECT_EQ(b.Threshold(group), 0);
        for (int lane = 0; lane < kSimLanes; ++lane) EXPECT_TRUE(b.Pattern(lane).empty());
    }
    EXPECT_EQ(sim.Position(), 0U);
    EXPECT_EQ(sim.Depth(), 8192);
    EXPECT_TRUE(sim.Complaints().empty());
    EXPECT_EQ(sim.SampleClock().Source, SimClockSource::External);
}

TEST(SimIdentity, Status) {
    for (const bool later : {false, true}) {
        for (const bool large : {false, true}) {
            for (const bool direct : {false, true}) {
                SimInstrument sim({later, large, 2, direct});
                for (const int echo : {0, 1, 0xFE, 0xFF}) {
                    for (int b = 0; b < 4; ++b) sim.Write(b, 1, static_cast<std::uint8_t>(echo));
                    const int bit = echo & 1;
                    const int zero = bit << 7 | (direct ? bit << 1 : 0) | (large ? 0 : 0x20);
                    EXPECT_EQ(sim.Read(0, 1), zero);
                    EXPECT_EQ(sim.Read(1, 1), bit << 7);
                    EXPECT_EQ(sim.Read(2, 1), 0xFF) << "not fitted";
                    EXPECT_EQ(sim.Read(-1, 1), 0xFF);
                }
                EXPECT_EQ(sim.Read(0, 2), later ? 0x00 : 0x80);
                EXPECT_EQ(sim.Read(0, 7), 0);
                EXPECT_EQ(sim.Read(3, 2), 0xFF);
            }
        }
    }
}

TEST(SimPodRegisters, SerialChain) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    hand.Byte(0xA5);
    EXPECT_EQ(sim.Board(0).S10(), 0) << "shifted, not taken";
    hand.Set(5, 7, true);
    EXPECT_EQ(sim.Board(0).S10(), 0xA5);
    hand.Set(5, 7, false);
    hand.Byte(0x3C >> 1, 7);
    EXPECT_EQ(sim.Board(0).S11(), 0) << "seven clocks";
    hand.Bit8(false);
    EXPECT_EQ(sim.Board(0).S11(), 0x3C) << "eight";
    hand.Set(6, 0, true);
    hand.Set(6, 2, true);
    hand.Byte(0xFF);
    EXPECT_EQ(sim.Board(0).S10(), 0xA5);
    EXPECT_EQ(sim.Board(0).S11(), 0x3C) << "further clocks change nothing";
    EXPECT_EQ(sim.Board(1).S10(), 0) << "each board has its own chain";
}

TEST(SimPodRegisters, ClockIsTheRisingEdge) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    for (int i = 0; i < 8; ++i) {
        hand.Set(6, 7, false);
        hand.Set(4, 3, true);
        hand.Set(6, 7, true);
        hand.Set(6, 7, true);   // no edge
        hand.Set(4, 3, false);  // the data may go away afterwards
        hand.Set(6, 7, false);
    }
    hand.Set(5, 7, true);
    EXPECT_EQ(sim.Board(0).S10(), 0xFF);
}

TEST(SimPodRegisters, OwnAddresses) {
    for (const bool direct : {false, true}) {
        SimInstrument sim({true, true, 2, direct});
        sim.WritePodRegister(1, true, 0x12);
        sim.WritePodRegister(1, false, 0x34);
        sim.WritePodRegister(2, true, 0x56);
        EXPECT_EQ(sim.Board(1).S10(), direct ? 0x12 : 0);
        EXPECT_EQ(sim.Board(1).S11(), direct ? 0x34 : 0);
        EXPECT_EQ(sim.Board(2).S10(), 0) << "not fitted";
    }
}

TEST(SimControl, EachSeriesHasItsOwnWay) {
    for (const bool later : {false, true}) {
        SimInstrument sim(later ? kLater : kEarlier);
        Hand hand{sim, 1};
        hand.Put(12, 0x55);
        hand.Put(13, 0x66);
        EXPECT_EQ(sim.Board(1).S8(), later ? 0x55 : 0);
        EXPECT_EQ(sim.Board(1).S9(), later ? 0x66 : 0);
        hand.Put(0, 0x77);
        hand.Set(2, 1, true);
        EXPECT_EQ(sim.Board(1).S8(), later ? 0x55 : 0x77);
        hand.Put(0, 0x88);
        hand.Set(2, 2, true);
        EXPECT_EQ(sim.Board(1).S9(), later ? 0x66 : 0x88);
        EXPECT_EQ(sim.Board(1).S8(), later ? 0x55 : 0x77) << "only its own bit latches";
        hand.Put(0, 0x99);
        hand.Set(2, 1, false);
        hand.Set(2, 2, false);
        EXPECT_EQ(sim.Board(1).S8(), later ? 0x55 : 0x77) << "not on the falling edge";
    }
}

TEST(SimTimer, ControlWordThenLowThenHigh) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    hand.Put(11, 0x36);
    hand.Put(8, 0x50);
    EXPECT_EQ(sim.Board(0).Timer().Value(0), 0) << "half loaded";
    hand.Put(8, 0xC3);
    EXPECT_EQ(sim.Board(0).Timer().Value(0), 0xC350);
    hand.Put(11, 0x76);
    hand.Put(9, 7);
    hand.Put(11, 0x76);  // begins the load anew
    hand.Put(9, 2);
    hand.Put(9, 0);
    EXPECT_EQ(sim.Board(0).Timer().Value(1), 2);
    EXPECT_EQ(sim.Board(0).Timer().Value(0), 0xC350);
    EXPECT_EQ(sim.Board(0).Timer().Divisor(2), 65536);
}

TEST(SimBusChain, TimerBehindTheSerialBus) {
    for (const bool later : {false, true}) {
        SimInstrument sim(later ? kLater : kEarlier);
        Hand hand{sim};
        hand.Set(4, 2, true);
        hand.BusData(0xB6);
        for (const int c : {0xFF, 0xBF, 0xFF}) hand.BusControl(c);
        hand.BusData(0xC8);
        for (const int c : {0xEF, 0xAF, 0xEF}) hand.BusControl(c);
        EXPECT_EQ(sim.Board(0).Timer().Value(2), 0);
        hand.BusData(0x01);
        for (const int c : {0xEF, 0xAF, 0xEF}) hand.BusControl(c);
        EXPECT_EQ(sim.Board(0).Timer().Value(2), later ? 0 : 0x01C8) << "the newer series has no such bus";
    }
}

TEST(SimBusChain, DataLatchNeedsTheBoardRunning) {
    SimInstrument sim(kEarlier);
    Hand hand{sim};
    hand.Set(4, 2, true);
    hand.BusData(0x11);
    hand.Set(4, 2, false);
    hand.BusData(0x22);
    for (const int c : {0xCF, 0xCB, 0xCF}) hand.BusControl(c);
    EXPECT_EQ(sim.Board(0).Threshold(0), 0xEE) << "the inverse of what was taken while R4 bit 2 was high";
}

TEST(SimBusChain, ThresholdsByGroup) {
    SimInstrument sim(kEarlier);
    Hand hand{sim, 2};
    hand.Set(4, 2, true);
    const int idle[] = {0xCF, 0xDF, 0xEF};
    for (int group = 0; group < 3; ++group) {
        hand.BusData(0x10 + group);
        hand.BusControl(idle[group]);
        EXPECT_EQ(sim.Board(2).Threshold(group), 0);
        hand.BusControl(idle[group] & 0xFB);
        EXPECT_EQ(sim.Board(2).Threshold(group), 0xFF - 0x10 - group);
        hand.BusData(0x77);
        hand.BusControl(idle[group]);
        EXPECT_EQ(sim.Board(2).Threshold(group), 0xFF - 0x10 - group) << "bit 2 rising takes nothing";
    }
}

TEST(SimDacChain, ExactlySixteenClocks) {
    for (const int bits : {15, 16, 17}) {
        SimInstrument sim(kLater);
        Hand hand{sim, 1};
        hand.DacBits(0x10464, bits);  // the last sixteen are a whole word in each case but the first
        EXPECT_EQ(sim.Board(1).Threshold(0), 0);
        hand.Set(6, 0, true);
        EXPECT_EQ(sim.Board(1).Threshold(0), bits == 16 ? 0x9B : 0) << bits;
    }
}

TEST(SimDacChain, GroupsAndStrayLatches) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    const int address[] = {4, 2, 1};
    for (int group = 0; group < 3; ++group) {
        hand.Set(6, 0, false);
        hand.DacBits(address[group] << 8 | (0x20 + group), 16);
        hand.Set(6, 0, true);
        EXPECT_EQ(sim.Board(0).Threshold(group), 0xFF - 0x20 - group);
    }
    hand.DacBits(0x04FF, 16);
    hand.Set(6, 0, false);
    hand.Set(6, 0, true);
    EXPECT_EQ(sim.Board(0).Threshold(0), 0xDF) << "clocks while bit 0 is high do not count";
    SimInstrument older(kEarlier);
    Hand other{older};
    other.DacBits(0x0464, 16);
    other.Set(6, 0, true);
    EXPECT_EQ(older.Board(0).Threshold(0), 0);
}

void ShiftSynth(Hand& hand, std::uint32_t word) {
    for (int i = 0; i < 22; ++i) {
        hand.Set(4, 3, (word >> i & 1) != 0);
        hand.Set(6, 2, true);
        hand.Set(6, 2, false);
    }
}

TEST(SimClock, SynthWords) {
    const std::pair<std::uint32_t, double> words[] = {{0x3FD412, 8},   {0x2D7C08, 10}, {0x08B408, 20},
                                                      {0x08B488, 40},  {0x1D2D08, 50}, {0x1D2D88, 100},
                                                      {0x1D2E08, 200}, {0x000000, 0},  {0x14EF08, 0}};
    for (const auto& [word, ns] : words) {
        SimInstrument sim(kLater);
        Hand hand{sim};
        hand.Set(6, 2, true);  // a stray clock ahead falls out
        hand.Set(6, 2, false);
        ShiftSynth(hand, word);
        EXPECT_EQ(sim.Board(0).SynthWord(), word);
        hand.Put(12, 1 << 5);
        EXPECT_EQ(sim.SampleClock().PeriodNs, ns);
    }
}

TEST(SimClock, Selectors) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    ShiftSynth(hand, 0x1D2D88);
    hand.Put(11, 0x36);
    hand.Put(8, 5);
    hand.Put(8, 0);
    hand.Put(11, 0x76);
    hand.Put(9, 3);
    hand.Put(9, 0);
    const std::tuple<int, SimClockSource, bool, double> cases[] = {
        {0, SimClockSource::External, false, 0},      {1, SimClockSource::Internal, false, 100},
        {2, SimClockSource::External, true, 0},       {3, SimClockSource::Internal, false, 500},
        {4, SimClockSource::GatedExternal, false, 0}, {5, SimClockSource::Internal, false, 1500},
        {6, SimClockSource::GatedExternal, false, 0}, {7, SimClockSource::Stopped, false, 0},
    };
    for (const auto& [selector, source, falling, ns] : cases) {
        hand.Put(12, selector << 5 | 0x1F);
        EXPECT_EQ(sim.SampleClock().Source, source) << selector;
        EXPECT_EQ(sim.SampleClock().Falling, falling) << selector;
        EXPECT_EQ(sim.SampleClock().PeriodNs, ns) << selector;
    }
}

TEST(SimClock, FixedClockNeedsBothBitsAndAStoppedSelector) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    hand.Put(12, 0xE0);
    hand.Set(3, 1, true);
    EXPECT_EQ(sim.SampleClock().Source, SimClockSource::Stopped);
    hand.Set(2, 5, true);
    EXPECT_EQ(sim.SampleClock().Source, SimClockSource::Fixed);
    EXPECT_EQ(sim.SampleClock().PeriodNs, 10);
    hand.Put(12, 4 << 5);
    EXPECT_EQ(sim.SampleClock().Source, SimClockSource::GatedExternal);
    hand.Put(12, 0xE0);
    hand.Set(3, 1, false);
    EXPECT_EQ(sim.SampleClock().Source, SimClockSource::Stopped);
}

TEST(SimClock, SecondStageOfTheOlderSeries) {
    SimInstrument sim(kEarlier);
    Hand hand{sim};
    ShiftSynth(hand, 0x1D2D88);
    hand.Put(11, 0x36);
    hand.Put(8, 10);
    hand.Put(8, 0);
    hand.Put(0, 5 << 5);
    hand.Pulse(2, 1);
    hand.Put(11, 0x76);
    hand.Put(9, 2);
    hand.Put(9, 0);
    EXPECT_EQ(sim.SampleClock().PeriodNs, 2000) << "counter 1 if it was loaded";
    hand.Set(4, 2, true);
    hand.BusData(0xB6);
    for (const int c : {0xFF, 0xBF, 0xFF}) hand.BusControl(c);
    for (const int byte : {7, 0}) {
        hand.BusData(byte);
        for (const int c : {0xEF, 0xAF, 0xEF}) hand.BusControl(c);
    }
    EXPECT_EQ(sim.SampleClock().PeriodNs, 7000) << "counter 2 behind the bus once it was";
}

TEST(SimQualifier, StoresOnTheFallingStrobe) {
    SimInstrument sim(kLater);
    Hand hand{sim};
    hand.Put(14, 0x42);
    hand.Put(4, 0x0B);  // data, strobe high
    EXPECT_FALSE(sim.Board(0).Gate(0x42));
    hand.Put(4, 0x0A);
    EXPECT_TRUE(sim.Board(0).Gate(0x42));
    EXPECT_FALSE(sim.Board(0).Gate(0x43));
    hand.Put(4, 0x03);
    hand.Put(4, 0x02);
    EXPECT_FALSE(sim.Board(0).Gate(0x42)) << "cleared with the data bit low";
    hand.Put(4, 0x0F);
    hand.Put(4, 0x0E);
    EXPECT_FALSE(sim.Board(0).Gate(0x42)) << "not while R4 bit 2 is high";
    hand.Put(4, 0x09);
    hand.Put(4, 0x08);
    EXPECT_FALSE(sim.Board(0).Gate(0x42)) << "nor with bit 1 low";
}

TEST(SimPosition, EverySecondStrobeWhileOpen) {
    SimInstrument sim({true, true, 1, true});
    Hand hand{sim};
    const auto load = [&](std::uint32_t value, int leading) {
        sim.WritePodRegister(0, true, 0x09);
        for (int i = 0; i < 4; ++i) sim.Strobe();
        sim.WritePodRegister(0, true, 0x01);
        for (int i = 0; i < 4; ++i) sim.Strobe();
        hand.Set(4, 3, leading != 0);
        sim.Strobe();
        sim.Strobe();
        for (int bit = 17; bit >= 0; --bit) {
            hand.Set(4, 3, (value >> bit & 1) != 0);
            sim.Strobe();
            sim.Strobe();
        }
    };
    for (const std::uint32_t value : {0x3F001U, 0x00000U, 0x3FFFFU, 0x2AAAAU, 0x15555U}) {
        for (const int leading : {0, 1}) {
            const std::uint32_t before = sim.Position();
            load(value, leading);
            EXPECT_EQ(sim.Position(), before) << "taken when the load closes";
            sim.WritePodRegister(0, true, 0x00);
            EXPECT_EQ(sim.Position(), value);
        }
    }
    sim.Strobe();
    sim.Strobe();
    EXPECT_EQ(sim.Position(), 0x15555U);
}

TEST(SimDepth, ByPodRegister) {
    SimInstrument sim({true, true, 1, true});
    const std::pair<int, int> cases[] = {
        {0, 8192}, {0x04, 32768}, {0x20, 131072}, {0x24, 131072}, {0xDB, 8192}};
    for (const auto& [s10, words] : cases) {
        sim.WritePodRegister(0, true, static_cast<std::uint8_t>(s10));
        EXPECT_EQ(sim.Depth(), words);
    }
}

}  // namespace
}  // namespace zu::test
