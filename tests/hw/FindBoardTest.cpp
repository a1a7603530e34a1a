#include <gtest/gtest.h>

#include "Fakes.h"
#include "Script.h"
#include "hw/BackEnds.h"
#include "support/ScriptedHost.h"

namespace zu::test {
namespace {

/// What stands behind the registers: an answer for each read that detection makes.
struct Answers {
    unsigned Boards = 1;         ///< bit b: board b echoes on bit 7 of R1
    bool LargeMemory = false;    ///< R1[0] bit 5 low
    bool Later = false;          ///< R2[0] bit 7 low
    int DirectRounds = 4;        ///< rounds of the pod register test that echo on bit 1 of R1[0]
    std::uint8_t Absent = 0xFF;  ///< what a board that is not there reads
};

class AnsweringBus {
  public:
    AnsweringBus(RecordingOps& ops, const Answers& answers, std::uint16_t address)
        : answers_(answers), address_(address) {
        ops.Watch = [this](std::uint16_t port, std::uint8_t value) {
            if (Offset(port) != 1) return;
            latch_[Board(port)] = value & 1;
            // Each round of the first test writes 0 and then 1.
            if (Board(port) == 0 && value == 0) ++round_;
        };
        ops.Answer = [this](std::uint16_t port) { return Read(port); };
    }

  private:
    [[nodiscard]] int Offset(std::uint16_t port) const { return (port - address_) & 0x3FF; }
    [[nodiscard]] std::size_t Board(std::uint16_t port) const {
        return static_cast<std::size_t>((port - address_) >> 10 & 3);
    }
    std::uint8_t Read(std::uint16_t port) {
        const std::size_t board = Board(port);
        const bool there = (answers_.Boards >> board & 1U) != 0;
        if (Offset(port) == 2) return answers_.Later ? 0x00 : 0x80;
        if (Offset(port) != 1) return 0;
        int value = there ? latch_[board] << 7 : answers_.Absent & 0x80;
        if (board == 0) {
            value |= answers_.LargeMemory ? 0 : 0x20;
            value |= round_ <= answers_.DirectRounds ? latch_[0] << 1 : 0;
        }
        return static_cast<std::uint8_t>(value);
    }

    Answers answers_;
    std::uint16_t address_;
    int latch_[4] = {};
    int round_ = 0;
};

void IdleWord(Script& s, int column) {
    for (const int row : {11, 10, 2, 8, 4}) s.S(row, column) = 0;
    s.PodPair(0, s.S(10, 0), s.S(11, 0) & 0xFC);
    for (int i = 0; i < 22; ++i) {
        s.Do(column, (0x2D7C08 >> i & 1) != 0 ? "R4=8" : "R4=0");
        s.Do(column, "R0=0 R2=0 R2=2 R0=2 R2=0 R2=2");
    }
}

/// The whole of detection; returns the model.
int ExpectDetection(Script& s, const Answers& a) {
    s.Direct = false;
    for (int i = 0; i < 4; ++i) s.Do(0, "R1=0 ?R1 R1=1 ?R1");
    s.Direct = a.DirectRounds == 4;
    for (int b = 0; b < 4; ++b) {
        s.Do(b, "S3|01 R3");
        s.Do(0, "R11=36");
        s.Do(b, "S9|f8 W9");
        s.Write(13, b, s.S(9, b));
    }
    s.Do(0, "S10-10 S11=03 WX S8&17 S8|20");
    s.Write(0, 0, s.S(8, 0));
    s.Do(0, "R2-02 R2|02 ?R1 S10|10 S11=00");

    int model = 0;
    const int present[] = {a.LargeMemory ? 3 : 1, a.LargeMemory ? 4 : 2, 5};
    for (int b = 0; b < 3; ++b) {
        s.Do(b, "R1=0 ?R1 R1=1 ?R1");
        if ((a.Boards >> b & 1U) == 0) {
            IdleWord(s, b);
            break;
        }
        model = present[b];
        if (b == 2) {
            IdleWord(s, 2);
            IdleWord(s, 3);
        }
    }
    s.Do(0, "S4|07 R4 S9|f8 W9 S8&ea S8|08 W8 S2|40 R2 S5|40 R5 ?R2 ?R2");
    if (a.Later && model > 0) model += 10;
    for (int b = 0; b < 4; ++b) {
        s.Do(b, "S4|07 R4 S9|f8 W9 S4|e0 R4 S8|15 W8 S5-40 R5 S6|60 R6 S1|04 R1 S4-10 R4 S8|15");
        const int entry = s.Type;
        s.Type = model;
        s.Do(b, "W8");
        s.Type = entry;
        s.Do(b, "S2-40 R2");
    }
    return model;
}

struct Detection {
    ScriptedHost Host;
    HardwareSession Hardware{Host};
    InstrumentState State;
    RecordingOps Ops;

    Detection() { Hardware.Ops = &Ops; }
};

void CheckDetection(const Answers& a, int entryType, std::uint16_t address) {
    SCOPED_TRACE(testing::Message() << "boards " << a.Boards << " large " << a.LargeMemory << " later "
                                    << a.Later << " rounds " << a.DirectRounds << " entry " << entryType);
    Detection d;
    AnsweringBus bus(d.Ops, a, address);
    Script expected(entryType, false, address);
    expected.FillShadows(static_cast<unsigned>(entryType) + a.Boards * 3);
    expected.CopyShadowsTo(d.Hardware.Shadows);
    d.State.Identity.HardwareType = static_cast<std::uint8_t>(entryType);
    d.State.Identity.Emulated = 2;
    const int model = ExpectDetection(expected, a);
    EXPECT_EQ(FindBoard(d.Hardware, d.State, address), model);
    EXPECT_EQ(Difference(expected.Text, d.Ops.Text), "");
    EXPECT_EQ(expected.ShadowDifference(d.Hardware.Shadows), "");
    EXPECT_EQ(d.State.Identity.HardwareType, model);
    EXPECT_EQ(d.State.Identity.Emulated, model == 0 ? 1 : 0);
    EXPECT_EQ(d.Hardware.PodRegsDirect, a.DirectRounds == 4 ? 1 : 0);
}

TEST(FindBoardTrace, EveryAnswer) {
    for (const int entryType : {0, 1, 5, 11, 15, 27}) {
        for (unsigned boards = 0; boards < 16 && !HasFailure(); ++boards) {
            for (int bits = 0; bits < 16; ++bits) {
                Answers a;
                a.Boards = boards;
                a.LargeMemory = (bits & 1) != 0;
                a.Later = (bits & 2) != 0;
                a.DirectRounds = (bits & 4) != 0 ? 4 : 0;
                a.Absent = (bits & 8) != 0 ? 0xFF : 0x00;
                CheckDetection(a, entryType, 0x210);
            }
        }
    }
}

TEST(FindBoardTrace, EveryAddress) {
    for (const int address : {0x000, 0x210, 0x380, 0xE800, 0xFC00}) {
        CheckDetection({.Boards = 3, .LargeMemory = true, .Later = true, .DirectRounds = 4}, 13,
                       static_cast<std::uint16_t>(address));
    }
}

TEST(FindBoardTrace, ThreeOfFourEchoesLeaveThePodRegistersSerial) {
    for (const int rounds : {1, 2, 3}) {
        CheckDetection({.Boards = 1, .LargeMemory = true, .Later = true, .DirectRounds = rounds}, 13, 0x210);
    }
}

int ModelOf(const Answers& a) {
    Detection d;
    AnsweringBus bus(d.Ops, a, 0x210);
    return FindBoard(d.Hardware, d.State, 0x210);
}

TEST(FindBoardModel, TenModels) {
    const unsigned boards[] = {1, 3, 1, 3, 15};
    for (int i = 0; i < 5; ++i) {
        for (const bool later : {false, true}) {
            const bool large = i == 2 || i == 3;
            EXPECT_EQ(ModelOf({.Boards = boards[i], .LargeMemory = large, .Later = later}),
                      i + 1 + (later ? 10 : 0));
        }
    }
}

TEST(FindBoardModel, StackOfThreeIsModel5WhateverTheClass) {
    for (const bool large : {false, true}) {
        EXPECT_EQ(ModelOf({.Boards = 7, .LargeMemory = large}), 5);
        EXPECT_EQ(ModelOf({.Boards = 15, .LargeMemory = large}), 5);
        EXPECT_EQ(ModelOf({.Boards = 7, .LargeMemory = large, .Later = true}), 15);
    }
}

TEST(FindBoardModel, Model3WithBit7OfR2ClearReports13) {
    EXPECT_EQ(ModelOf({.Boards = 1, .LargeMemory = true, .Later = true}), 13);
}

TEST(FindBoardModel, SilentBusIsNoBoard) {
    for (const int stuck : {0x00, 0xFF}) {
        Detection d;
        d.Ops.Answer = [stuck](std::uint16_t) { return static_cast<std::uint8_t>(stuck); };
        EXPECT_EQ(FindBoard(d.Hardware, d.State, 0x210), 0);
        EXPECT_EQ(d.State.Identity.Emulated, 1);
    }
}

TEST(FindBoardModel, IdentityByteIsReadOverUsbOnly) {
    for (const bool usb : {false, true}) {
        ScriptedHost host;
        FakeUsb device;
        Lines trace;
        TraceUsbDevice traced(device, trace.Log);
        HardwareSession hardware(host);
        InstrumentState state;
        hardware.Seams.Usb = &traced;
        SetupOSFunctions(hardware, 0);
        hardware.Slots->Usb.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan);
        int reads = 0;
        device.Answer = [&](std::uint8_t command) {
            // The eight reads of the echo test: clear, set, clear, set ...
            return command == 0x84 && reads++ % 2 == 1 ? std::uint8_t{2} : std::uint8_t{0};
        };
        RecordingOps other;
        other.Answer = [&](std::uint16_t) { return reads++ % 2 == 1 ? std::uint8_t{2} : std::uint8_t{0}; };
        UseOps(hardware, usb ? static_cast<RegisterOps&>(hardware.Slots->UsbRegisters) : other);
        FindBoard(hardware, state, 0);
        EXPECT_EQ(hardware.PodRegsDirect, 1);
        const bool asked = std::any_of(trace.All.begin(), trace.All.end(),
                                       [](const std::string& line) { return line.rfind("UIN 8e ", 0) == 0; });
        EXPECT_EQ(asked, usb);
    }
}

TEST(FindStoredBoard, RunsTwiceOnSuccessAndTheSecondAnswerCounts) {
    Detection d;
    AnsweringBus bus(d.Ops, {.Boards = 1, .LargeMemory = true, .Later = true}, 0x280);
    Script expected(15, false, 0x280);
    d.State.Identity.HardwareType = 15;
    ExpectDetection(expected, {.Boards = 1, .LargeMemory = true, .Later = true});
    expected.Type = 13;
    EXPECT_EQ(FindStoredBoard(d.Hardware, d.State, 2), 13);
    EXPECT_EQ(d.State.Identity.FoundTable[2], 13);
    ExpectDetection(expected, {.Boards = 1, .LargeMemory = true, .Later = true, .DirectRounds = 0});
    EXPECT_EQ(Difference(expected.Text, d.Ops.Text), "");
}

TEST(FindStoredBoard, SilentCandidateIsAskedOnce) {
    Detection d;
    d.State.Identity.FoundTable[8] = 13;
    EXPECT_EQ(FindStoredBoard(d.Hardware, d.State, 8), 0);
    EXPECT_EQ(d.State.Identity.FoundTable[8], 0);
    const std::string once = d.Ops.Text;
    FindBoard(d.Hardware, d.State, 0);
    EXPECT_EQ(d.Ops.Text.size(), 2 * once.size());
    EXPECT_EQ(FindStoredBoard(d.Hardware, d.State, 60000), 0) << "a wild index stays in the table";
}

}  // namespace
}  // namespace zu::test
