#include <gtest/gtest.h>
#include <vector>

#include "Fakes.h"
#include "hw/AddressByte.h"
#include "hw/ByteProtocolOps.h"
#include "hw/DriverLink.h"
#include "hw/EppOps.h"
#include "hw/IsaOps.h"
#include "hw/RegisterTables.h"

namespace zu::test {
namespace {

// Port of register `offset` of board `board` of an instrument at address 0.
constexpr std::uint16_t At(int board, int offset) {
    return static_cast<std::uint16_t>(0x400 * board + offset);
}

struct DirectWire {
    FakePorts Ports;
    Lines Trace;
    TracePortIo Traced{Ports, Trace.Log};
};

/// The driver's records as short lines: command, port, count, data, and the two zero fields.
struct DriverWire {
    FakeDriver Driver;
    DriverLink Link{Driver};
    DriverPorts Ports{Link};

    DriverWire() {
        Link.EnsureOpen();
        Driver.Records.clear();
    }
    std::string Take() {
        std::string text;
        for (const auto& record : Driver.Records) {
            EXPECT_EQ(record.size(), 24U);
            EXPECT_EQ(GetU32(record, 12), 0U);
            EXPECT_EQ(GetU32(record, 16), 0U);
            char line[64];
            std::snprintf(line, sizeof line, "%u %03x %u %02x\n", GetU32(record, 0), GetU32(record, 4),
                          GetU32(record, 8), GetU32(record, 20));
            text += line;
        }
        Driver.Records.clear();
        return text;
    }
};

TEST(RegisterTables, TimerSitsOnTheHighestPorts) {
    PortTable ports;
    SetBoardBase(ports, 0, 0x210);
    SetBoardBase(ports, 3, 0x210 + 0xC00);
    const int offsets[16] = {0, 1, 2, 3, 4, 5, 6, 7, 12, 13, 14, 15, 8, 9, 10, 11};
    for (int r = 0; r < 16; ++r) {
        EXPECT_EQ(ports.At(r, 0), 0x210 + offsets[r]) << "R" << r;
        EXPECT_EQ(ports.At(r, 3), 0xE10 + offsets[r]) << "R" << r;
    }
}

TEST(RegisterTables, ColumnPastTheLastBoardIsTheNextRow) {
    PortTable ports;
    for (int b = 0; b < 4; ++b) SetBoardBase(ports, b, At(b, 0x210));
    EXPECT_EQ(ports.At(0, 4), ports.At(1, 0));
    EXPECT_EQ(ports.At(2, 4), ports.At(3, 0));
    EXPECT_EQ(ports.At(12, 4), ports.At(13, 0));
    ShadowTable shadows;
    shadows.At(9, 0) = 0x55;
    EXPECT_EQ(shadows.At(8, 4), 0x55);
    EXPECT_EQ(shadows.At(11, 4), 0) << "the row behind the last is room, not another's cell";
}

TEST(AddressByte, Rules) {
    for (int board = 0; board < 4; ++board) {
        for (int offset = 0; offset < 16; ++offset) {
            EXPECT_EQ(AddressWithOffset(At(board, offset)), 0x20 + 16 * board + offset);
            EXPECT_EQ(AddressPlain(At(board, offset)), 16 * board + offset);
            EXPECT_EQ(AddressWide(At(board, offset)), 16 * board + offset);
        }
    }
    EXPECT_EQ(AddressWide(0x25), 0x25) << "the low six bits stay";
    EXPECT_EQ(AddressPlain(0xE1), 0x01);
    EXPECT_EQ(AddressWithOffset(0xE1), 0x24);
}

TEST(AddressByte, LiteralPorts) {
    for (const int port : {0xE0, 0xE1, 0xD0, 0xD1, 0xC0, 0xC1, 0xB0, 0xB1}) {
        EXPECT_EQ(AddressOrPodRegister(static_cast<std::uint16_t>(port)), port);
        EXPECT_EQ(AddressOrLiteral(static_cast<std::uint16_t>(port)), port);
    }
    EXPECT_EQ(AddressOrLiteral(0x0040), 0x40) << "bit 6 alone passes";
    EXPECT_EQ(AddressOrLiteral(0x0380), 0x80) << "bit 7 alone passes, cut to a byte";
    EXPECT_EQ(AddressOrPodRegister(0x0040), 0x21) << "USB passes the eight pod registers only";
    EXPECT_EQ(AddressOrPodRegister(0xE2), AddressWithOffset(0xE2));
}

TEST(NullOps, ReadZeroAndLeaveTheBuffer) {
    std::vector<std::uint8_t> buffer(4, 0x77);
    NullRegisterOps().RegWrite(0, 0x210, 1);
    NullRegisterOps().RegReadBlock(0, 0x210, 4, buffer.data());
    EXPECT_EQ(NullRegisterOps().RegRead(0, 0x211), 0);
    EXPECT_EQ(buffer, std::vector<std::uint8_t>(4, 0x77));
}

TEST(Isa, Direct) {
    DirectWire wire;
    wire.Ports.Answer = [](std::uint16_t) { return std::uint8_t{0x80}; };
    IsaOps ops(wire.Traced);
    std::vector<std::uint8_t> buffer(3);
    ops.RegWrite(0x378, 0x612, 0x1F);
    EXPECT_EQ(ops.RegRead(0x378, 0x211), 0x80);
    ops.RegReadBlock(0x378, 0x210, 3, buffer.data());
    ops.RegReadBlock(0x378, 0x210, 0, nullptr);
    EXPECT_EQ(wire.Trace.Take(), "OUT 0612 1f\nIN 0211 80\nINS1 0210 3\n");
    EXPECT_EQ(buffer, std::vector<std::uint8_t>(3, 0x80));
}

TEST(Isa, ThroughTheDriver) {
    DriverWire wire;
    wire.Driver.Answer = [](std::uint16_t) { return std::uint8_t{0x42}; };
    IsaOps ops(wire.Ports);
    std::vector<std::uint8_t> buffer(5);
    ops.RegWrite(0, 0x612, 0x1F);
    EXPECT_EQ(ops.RegRead(0, 0x211), 0x42);
    ops.RegReadBlock(0, 0x210, 5, buffer.data());
    EXPECT_EQ(wire.Take(), "13 612 1 1f\n10 211 1 00\n20 210 5 00\n");
    EXPECT_EQ(buffer, std::vector<std::uint8_t>(5, 0x42));
}

TEST(ByteProtocol, DirectIsDoubledButTheBlock) {
    DirectWire wire;
    int reads = 0;
    wire.Ports.Answer = [&](std::uint16_t) { return static_cast<std::uint8_t>(0x10 + reads++); };
    ByteProtocolOps ops(wire.Traced, OutputDelay::Doubled);
    ops.RegWrite(0x378, At(2, 4), 0x5A);
    EXPECT_EQ(wire.Trace.Take(),
              "OUT 0378 44\nOUT 0378 44\nOUT 037a c5\nOUT 037a c5\nOUT 037a cd\nOUT 037a cd\n"
              "OUT 037a c5\nOUT 037a c5\nOUT 0378 5a\nOUT 0378 5a\nOUT 037a c7\nOUT 037a c7\n"
              "OUT 037a c5\nOUT 037a c5\n");
    EXPECT_EQ(ops.RegRead(0x378, At(0, 1)), 0x11) << "the second of the two reads counts";
    EXPECT_EQ(wire.Trace.Take(),
              "OUT 0378 21\nOUT 0378 21\nOUT 037a c5\nOUT 037a c5\nOUT 037a cd\nOUT 037a cd\n"
              "OUT 037a c5\nOUT 037a c5\nOUT 037a e4\nOUT 037a e4\nOUT 037a e6\nOUT 037a e6\n"
              "IN 0378 10\nIN 0378 11\nOUT 037a c5\nOUT 037a c5\n");
    std::vector<std::uint8_t> buffer(2);
    ops.RegReadBlock(0x378, At(1, 0), 2, buffer.data());
    EXPECT_EQ(wire.Trace.Take(),
              "OUT 0378 30\nOUT 037a cd\nOUT 037a c5\n"
              "IN 0378 12\nOUT 037a e4\nOUT 037a e6\nIN 0378 13\nOUT 037a e4\nOUT 037a e6\nOUT 037a c5\n");
    EXPECT_EQ(buffer, (std::vector<std::uint8_t>{0x12, 0x13}));
}

TEST(ByteProtocol, DriverDoublesNothing) {
    DriverWire wire;
    ByteProtocolOps ops(wire.Ports, OutputDelay::None);
    ops.RegWrite(0x3BC, At(0, 7), 0x99);
    EXPECT_EQ(wire.Take(),
              "13 3bc 1 27\n13 3be 1 c5\n13 3be 1 cd\n13 3be 1 c5\n13 3bc 1 99\n13 3be 1 c7\n13 3be 1 c5\n");
    ops.RegRead(0x3BC, At(3, 2));
    EXPECT_EQ(wire.Take(),
              "13 3bc 1 52\n13 3be 1 c5\n13 3be 1 cd\n13 3be 1 c5\n13 3be 1 e4\n13 3be 1 e6\n10 3bc 1 00\n"
              "13 3be 1 c5\n");
    std::vector<std::uint8_t> buffer(1);
    ops.RegReadBlock(0x3BC, At(0, 0), 1, buffer.data());
    EXPECT_EQ(wire.Take(),
              "13 3bc 1 20\n13 3be 1 cd\n13 3be 1 c5\n10 3bc 1 00\n13 3be 1 e4\n13 3be 1 e6\n13 3be 1 c5\n");
}

TEST(ByteProtocol, LiteralPortGoesOutAsItIs) {
    DirectWire wire;
    ByteProtocolOps ops(wire.Traced, OutputDelay::None);
    ops.RegWrite(0x278, 0xD1, 0x33);
    EXPECT_EQ(wire.Trace.All.front(), "OUT 0278 d1");
    wire.Trace.All.clear();
    ops.RegRead(0x278, 0xD1);
    EXPECT_EQ(wire.Trace.All.front(), "OUT 0278 24") << "reads know no literal ports";
}

TEST(Epp, DirectBytes) {
    DirectWire wire;
    wire.Ports.Answer = [](std::uint16_t) { return std::uint8_t{0x80}; };
    EppDirectOps ops(wire.Traced, PortUnit::Byte);
    std::vector<std::uint8_t> buffer(2);
    ops.RegWrite(0x378, At(1, 3), 0x01);
    ops.RegWrite(0x378, 0xE1, 0x02);
    ops.RegRead(0x378, At(2, 1));
    ops.RegReadBlock(0x378, At(3, 0), 2, buffer.data());
    EXPECT_EQ(wire.Trace.Take(),
              "OUT 037b 33\nOUT 037c 01\nOUT 037b e1\nOUT 037c 02\nOUT 037b 41\nIN 037c 80\n"
              "OUT 037b 50\nIN 037c 80\nIN 037c 80\n");
}

TEST(Epp, DirectWordsAndDoubleWords) {
    DirectWire wire;
    std::vector<std::uint8_t> buffer(8);
    EppDirectOps words(wire.Traced, PortUnit::Word);
    words.RegWrite(0x378, At(1, 3), 0x01);
    words.RegReadBlock(0x378, At(1, 0), 8, buffer.data());
    EXPECT_EQ(wire.Trace.Take(),
              "OUT 037b 33\nOUT 037c 01\n"
              "OUT 037a 04\nOUT 037a 0f\nOUT 037a 00\nOUT 037b 10\nINS2 037c 8\n"
              "OUT 037a 00\nOUT 037a 0b\nOUT 037a 00\n");
    EppDirectOps doubleWords(wire.Traced, PortUnit::DoubleWord);
    doubleWords.RegReadBlock(0x378, At(0, 0), 7, buffer.data());
    EXPECT_EQ(wire.Trace.Take(),
              "OUT 037a 04\nOUT 037a 0f\nOUT 037a 00\nOUT 037b 00\nINS4 037c 7\n"
              "OUT 037a 00\nOUT 037a 0b\nOUT 037a 00\n");
}

TEST(Epp, DriverFramesEveryAccess) {
    const std::string start = "13 37a 1 04\n13 37a 1 0f\n13 37a 1 00\n";
    const std::string end = "13 37a 1 00\n13 37a 1 0b\n13 37a 1 00\n";
    DriverWire wire;
    EppDriverOps ops(wire.Ports, PortUnit::Byte);
    ops.RegWrite(0x378, At(1, 3), 0x77);
    EXPECT_EQ(wire.Take(), start + "13 37b 1 13\n13 37c 1 77\n" + end);
    ops.RegWrite(0x378, 0xE1, 0x55);
    EXPECT_EQ(wire.Take(), start + "13 37b 1 01\n13 37c 1 55\n" + end) << "no literal ports here";
    ops.RegRead(0x378, At(2, 1));
    EXPECT_EQ(wire.Take(), start + "13 37b 1 21\n10 37c 1 00\n" + end);
    std::vector<std::uint8_t> buffer(9);
    const std::pair<PortUnit, const char*> units[] = {
        {PortUnit::Byte, "20"}, {PortUnit::Word, "21"}, {PortUnit::DoubleWord, "22"}};
    for (const auto& [unit, command] : units) {
        EppDriverOps(wire.Ports, unit).RegReadBlock(0x378, At(3, 0), 9, buffer.data());
        EXPECT_EQ(wire.Take(), start + "13 37b 1 30\n" + command + " 37c 9 00\n" + end)
            << "the count is in bytes for all three";
    }
}

TEST(Driver, OpensOnceAndDescribesTheCard) {
    FakeDriver driver;
    DriverLink link(driver);
    EXPECT_FALSE(link.IsOpen());
    EXPECT_TRUE(link.EnsureOpen());
    EXPECT_TRUE(link.EnsureOpen());
    EXPECT_EQ(driver.OpenCalls, 1);
    EXPECT_EQ(driver.Codes, (std::vector<std::uint32_t>{0x95382443, 0x95382523}));
    EXPECT_EQ(driver.Records[0], std::vector<std::uint8_t>(104, 0));
    ASSERT_EQ(driver.Records[1].size(), 708U);
    const std::uint32_t starts[] = {0x210, 0x610, 0xA10, 0xE10};
    const std::uint32_t lengths[] = {432, 384, 384, 384};
    EXPECT_EQ(GetU32(driver.Records[1], 4), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(GetU32(driver.Records[1], 8 + 16 * i), 3U);
        EXPECT_EQ(GetU32(driver.Records[1], 12 + 16 * i), starts[i]);
        EXPECT_EQ(GetU32(driver.Records[1], 16 + 16 * i), lengths[i]);
    }
    link.Close();
    EXPECT_EQ(driver.Codes.back(), 0x953824AFU);
    EXPECT_EQ(driver.CloseCalls, 1);
}

struct FailureCase {
    const char* Name;
    bool Opens;
    std::uint32_t Version;
    std::uint32_t Handle;
    std::uint32_t FailingCode;
    const char* Text;
    int Closes;
};

TEST(Driver, FailureTexts) {
    const FailureCase cases[] = {
        {"absent", false, 432, 7, 0, "Failed opening WinDriver device\n", 0},
        {"old", true, 431, 7, 0, "Incorrect WinDriver version\n", 1},
        {"version fails", true, 432, 7, 0x95382443, "Incorrect WinDriver version\n", 1},
        {"no handle", true, 432, 0, 0, "Failed locking device.\n", 1},
        {"register fails", true, 500, 7, 0x95382523, "Failed locking device.\n", 1},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.Name);
        FakeDriver driver;
        driver.Opens = c.Opens;
        driver.Version = c.Version;
        driver.Handle = c.Handle;
        driver.FailingCode = c.FailingCode;
        DriverLink link(driver);
        EXPECT_FALSE(link.EnsureOpen());
        EXPECT_FALSE(link.IsUsable());
        EXPECT_EQ(link.FailureText(), c.Text);
        EXPECT_EQ(driver.CloseCalls, c.Closes);
        if (c.Closes > 0) {
            EXPECT_EQ(driver.Codes.back(), 0x953824AFU) << "the card is released";
        }
        EXPECT_FALSE(link.EnsureOpen());
        EXPECT_EQ(driver.OpenCalls, 1) << "tried once";
    }
}

TEST(Driver, WithoutItAccessesAreSkipped) {
    FakeDriver driver;
    driver.Opens = false;
    DriverLink link(driver);
    DriverPorts ports(link);
    std::vector<std::uint8_t> buffer(4, 0x77);
    ports.Out8(0x210, 1);
    EXPECT_EQ(ports.In8(0x211), 0);
    ports.InString(0x210, PortUnit::Word, buffer);
    EXPECT_EQ(buffer, std::vector<std::uint8_t>(4, 0x77));
    EXPECT_TRUE(driver.Codes.empty());
}

TEST(Driver, OpensAtTheFirstAccess) {
    FakeDriver driver;
    driver.Answer = [](std::uint16_t) { return std::uint8_t{0x3C}; };
    DriverLink link(driver);
    DriverPorts ports(link);
    EXPECT_EQ(ports.In8(0x211), 0x3C);
    EXPECT_TRUE(link.IsOpen());
    EXPECT_EQ(driver.Codes, (std::vector<std::uint32_t>{0x95382443, 0x95382523, 0x9538240F}));
}

TEST(Driver, TransferRecordToTheByte) {
    FakeDriver driver;
    DriverLink link(driver);
    DriverPorts(link).Out8(0x1234, 0xAB);
    const std::vector<std::uint8_t> expected{13, 0, 0, 0, 0x34, 0x12, 0, 0, 1,    0, 0, 0,
                                             0,  0, 0, 0, 0,    0,    0, 0, 0xAB, 0, 0, 0};
    EXPECT_EQ(driver.Records.back(), expected);
}

}  // namespace
}  // namespace zu::test
