#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "Fakes.h"
#include "hw/AddressSearch.h"
#include "hw/BackEnds.h"
#include "hw/TraceRecorder.h"
#include "support/ScriptedHost.h"

namespace zu::test {
namespace {

/// A session with fakes behind all three seams.
struct Connection {
    ScriptedHost Host;
    Lines Trace;
    FakePorts Ports;
    TracePortIo TracedPorts{Ports, Trace.Log};
    FakeDriver Driver;
    FakeUsb Usb;
    TraceUsbDevice TracedUsb{Usb, Trace.Log};
    HardwareSession Hardware{Host};
    InstrumentState State;

    explicit Connection(int osFamily) {
        Hardware.Seams = {&TracedPorts, &Driver, &TracedUsb};
        SetupOSFunctions(Hardware, static_cast<std::uint8_t>(osFamily));
    }
    RegisterOps* Selected() { return Hardware.Slots->Selected; }
    BackEnds& Slots() { return *Hardware.Slots; }

    /// A device whose status bit follows the test byte.
    void Handshake() {
        Usb.Answer = [this](std::uint8_t command) {
            if (command != 0x86) return std::uint8_t{0};
            const std::string last = LastTestByte();
            return last == "ff" ? std::uint8_t{0x3F} : std::uint8_t{0x2F};
        };
    }

  private:
    std::string LastTestByte() {
        for (auto line = Trace.All.rbegin(); line != Trace.All.rend(); ++line) {
            if (line->rfind("UOUT 88", 0) == 0) return line->substr(line->size() - 2);
        }
        return "";
    }
};

TEST(SetupOs, Family) {
    Connection nt(0);
    EXPECT_EQ(nt.Hardware.OsIoMode, 0);
    EXPECT_EQ(nt.Hardware.Ops, &NullRegisterOps());
    Connection direct(1);
    EXPECT_EQ(direct.Hardware.OsIoMode, 1);
    Connection unknown(2);
    EXPECT_EQ(unknown.Hardware.OsIoMode, 0);
}

TEST(SetupIo, ThroughTheDriver) {
    Connection c(0);
    const std::pair<int, RegisterOps*> cases[] = {
        {8, &c.Slots().Isa},           {1, &c.Slots().Byte},           {2, &c.Slots().Byte},
        {4, c.Slots().EppBytes.get()}, {32, c.Slots().EppWords.get()}, {64, c.Slots().EppDoubleWords.get()},
    };
    for (const auto& [mode, ops] : cases) {
        SetupIO(c.Hardware, c.State, 1, static_cast<std::uint8_t>(mode));
        EXPECT_EQ(c.Selected(), ops) << mode;
        EXPECT_EQ(c.State.Identity.ComMode, mode);
    }
    EXPECT_TRUE(c.Driver.Codes.empty())
        << "no access: types 1 and 2 skip the echo test, type 4 its control byte";
    EXPECT_TRUE(c.Trace.All.empty());
}

TEST(SetupIo, PortFromTheTable) {
    const std::uint16_t ports[] = {0x3BC, 0x378, 0x278};
    for (const int mode : {1, 2, 4, 32, 64, 9}) {
        for (std::uint16_t i = 0; i < 3; ++i) {
            Connection c(0);
            SetupIO(c.Hardware, c.State, i, static_cast<std::uint8_t>(mode));
            EXPECT_EQ(c.State.Identity.HwPort, ports[i]) << mode;
            EXPECT_EQ(c.Hardware.HwPort, ports[i]) << mode;
        }
    }
}

TEST(SetupIo, BadPortIndexEndsTheProcess) {
    for (const int mode : {1, 2, 4, 9, 32, 64}) {
        for (const std::uint16_t index : {std::uint16_t{3}, std::uint16_t{65532}}) {
            Connection c(0);
            try {
                SetupIO(c.Hardware, c.State, index, static_cast<std::uint8_t>(mode));
                ADD_FAILURE() << "mode " << mode << " index " << index;
            } catch (const ProcessEnded& ended) {
                EXPECT_EQ(ended.Code, 0);
                EXPECT_EQ(c.State.Identity.ComMode, mode) << "the mode is stored first";
            }
        }
    }
}

TEST(SetupIo, OthersIgnoreTheIndexAndSelectNothing) {
    Connection c(0);
    SetupIO(c.Hardware, c.State, 60, 8);
    EXPECT_EQ(c.Selected(), &c.Slots().Isa);
    c.State.Identity.HwPort = 0x1234;
    for (const int mode : {16, 128, 0, 3, 255}) {
        SetupIO(c.Hardware, c.State, 60, static_cast<std::uint8_t>(mode));
        EXPECT_EQ(c.Selected(), &c.Slots().Isa) << mode;
        EXPECT_EQ(c.State.Identity.ComMode, mode);
        EXPECT_EQ(c.State.Identity.HwPort, 0x1234);
    }
}

TEST(SetupIo, DirectEppWritesTheControlByte) {
    Connection c(1);
    SetupIO(c.Hardware, c.State, 2, 4);
    EXPECT_EQ(c.Trace.Take(), "OUT 027a c4\n");
    SetupIO(c.Hardware, c.State, 2, 32);
    SetupIO(c.Hardware, c.State, 2, 64);
    SetupIO(c.Hardware, c.State, 2, 8);
    EXPECT_EQ(c.Trace.Take(), "");
}

/// Eight writes and reads of register 1; bit 1 of what is read follows bit 0 of what was written in the first
/// `good` rounds.
void EchoBus(Connection& c, int good) {
    c.Ports.Answer = [&c, good, reads = 0](std::uint16_t) mutable {
        const int read = reads++ / 2;  // the byte protocol reads twice
        const bool one = read % 2 == 1;
        return (read / 2 < good) == one ? std::uint8_t{0x02} : std::uint8_t{0xFD};
    };
}

TEST(SetupIo, DirectByteProtocolIsTestedByEcho) {
    for (const int mode : {1, 2}) {
        for (int good = 0; good <= 4; ++good) {
            Connection c(1);
            EchoBus(c, good);
            SetupIO(c.Hardware, c.State, 1, static_cast<std::uint8_t>(mode));
            EXPECT_EQ(c.Selected(),
                      good == 4 ? static_cast<RegisterOps*>(&c.Slots().Byte) : c.Slots().EppBytes.get());
            EXPECT_EQ(c.State.Identity.ComMode, mode) << "the mode stays";
            const auto reads = std::count_if(c.Trace.All.begin(), c.Trace.All.end(),
                                             [](const std::string& line) { return line[0] == 'I'; });
            EXPECT_EQ(reads, 16) << "all four rounds run";
            EXPECT_EQ(c.Trace.All[0], "OUT 0378 21");
        }
    }
}

TEST(SetupIo, UsbHandshake) {
    for (const int osFamily : {0, 1}) {
        Connection c(osFamily);
        c.Handshake();
        SetupIO(c.Hardware, c.State, 0, 9);
        EXPECT_EQ(c.Selected(), &c.Slots().UsbRegisters);
        EXPECT_TRUE(UsbInForce(c.Hardware));
        const std::string ids = osFamily == 0 ? "UIDS scan : 95 31 20 00 00 00 00 00\n"
                                              : "UIDS descriptor : 00 00 00 00 00 00 00 00 95 31 20 00 00 00 "
                                                "00 00 00 00\n";
        EXPECT_EQ(c.Trace.Take(), "UOPEN 0\n" + ids +
                                      "UOUT 88 1 0 : ff\nUIN 86 1 0 : 3f\nUIN 86 1 0 : 3f\n"
                                      "UOUT 88 1 0 : 00\nUIN 86 1 0 : 2f\nUIN 86 1 0 : 2f\n"
                                      "UOUT 8c 1 10 : 04\n");
    }
}

TEST(SetupIo, FailedUsbHandshakeLeavesTheEarlierRoutines) {
    for (const int stuck : {0x00, 0x10, 0xFF}) {
        for (const int osFamily : {0, 1}) {
            Connection c(osFamily);
            c.Usb.Answer = [stuck](std::uint8_t) { return static_cast<std::uint8_t>(stuck); };
            SetupIO(c.Hardware, c.State, 0, 9);
            EXPECT_FALSE(UsbInForce(c.Hardware));
            EXPECT_EQ(c.Selected(),
                      osFamily == 1 ? static_cast<RegisterOps*>(&c.Slots().Byte) : &NullRegisterOps());
            EXPECT_EQ(c.Usb.OpenNow, 1) << "the device stays open";
            EXPECT_EQ(c.State.Identity.ComMode, 9);
        }
    }
}

TEST(SetupIo, SecondReadOfTheStatusCounts) {
    Connection c(0);
    int reads = 0;
    c.Usb.Answer = [&](std::uint8_t) {
        const bool high[] = {false, true, true, false};
        return high[reads++ % 4] ? std::uint8_t{0x10} : std::uint8_t{0};
    };
    SetupIO(c.Hardware, c.State, 0, 9);
    EXPECT_TRUE(UsbInForce(c.Hardware));
}

TEST(SetupIo, MissingUsbDeviceLeavesNothing) {
    Connection c(0);
    c.Usb.Place = -1;
    SetupIO(c.Hardware, c.State, 0, 8);
    SetupIO(c.Hardware, c.State, 0, 9);
    EXPECT_EQ(c.Selected(), &NullRegisterOps());
    EXPECT_EQ(c.State.Identity.HwPort, 0x3BC);
}

TEST(SetupIo, UsbSetUpResetsTheStatus) {
    Connection c(0);
    c.Handshake();
    SetupIO(c.Hardware, c.State, 0, 9);
    EXPECT_EQ(UsbStatus(c.Hardware), 63);
    c.Usb.Works = [](std::uint8_t) { return false; };
    EXPECT_EQ(c.Hardware.Ops->RegRead(0, 1), 0xFF);
    EXPECT_EQ(UsbStatus(c.Hardware), 0x84);
    c.Usb.Works = nullptr;
    c.Trace.All.clear();
    SetupIO(c.Hardware, c.State, 0, 9);
    EXPECT_EQ(UsbStatus(c.Hardware), 63);
    EXPECT_EQ(c.Usb.OpenNow, 1);
}

TEST(SelectInterface, OpensTheDriverForEveryPortMode) {
    for (const int mode : {1, 2, 4, 8, 16, 32, 64, 128}) {
        Connection c(0);
        SelectInterface(c.Hardware, c.State, 0, static_cast<std::uint8_t>(mode));
        EXPECT_TRUE(DriverOpen(c.Hardware)) << mode;
        EXPECT_EQ(c.State.Identity.ComMode, mode);
        SelectInterface(c.Hardware, c.State, 0, static_cast<std::uint8_t>(mode));
        EXPECT_EQ(c.Driver.OpenCalls, 1);
    }
    Connection usb(0);
    SelectInterface(usb.Hardware, usb.State, 0, 9);
    EXPECT_FALSE(DriverOpen(usb.Hardware));
    EXPECT_EQ(usb.Driver.OpenCalls, 0);
}

TEST(SelectInterface, WithoutADriverOnlyUsbIsLeft) {
    Connection c(0);
    c.Driver.Opens = false;
    c.Handshake();
    EXPECT_TRUE(DriverUsable(c.Hardware));
    SelectInterface(c.Hardware, c.State, 0, 8);
    EXPECT_FALSE(DriverUsable(c.Hardware));
    EXPECT_EQ(DriverFailureText(c.Hardware), "Failed opening WinDriver device\n");
    EXPECT_EQ(c.State.Identity.ComMode, 9);
    EXPECT_TRUE(c.Host.Boxes.empty()) << "no error dialog";
    EXPECT_TRUE(UsbInForce(c.Hardware)) << "the choice ends on USB";
    c.Trace.All.clear();
    SelectInterface(c.Hardware, c.State, 0, 8);
    EXPECT_TRUE(c.Trace.All.empty()) << "does nothing any more";
    SelectInterface(c.Hardware, c.State, 0, 9);
    EXPECT_FALSE(c.Trace.All.empty()) << "but USB can be chosen again";
}

TEST(SelectInterface, WithPortsOfItsOwnEverythingEndsOnUsb) {
    for (const int mode : {1, 4, 8, 16, 64, 9}) {
        Connection c(1);
        c.Handshake();
        SelectInterface(c.Hardware, c.State, 0, static_cast<std::uint8_t>(mode));
        EXPECT_TRUE(UsbInForce(c.Hardware)) << mode;
        EXPECT_EQ(c.State.Identity.ComMode, 9);
        EXPECT_EQ(c.Driver.OpenCalls, 0);
    }
}

TEST(UsbDetectResult, Codes) {
    Connection found(0);
    found.Handshake();
    EXPECT_EQ(UsbDetect(found.Hardware), 15);
    EXPECT_EQ(found.Trace.Take(),
              "UOPEN 0\nUIDS scan : 95 31 20 00 00 00 00 00\n"
              "UOUT 88 1 0 : ff\nUIN 86 1 0 : 3f\nUIN 86 1 0 : 3f\n");
    Connection stuck(0);
    EXPECT_EQ(UsbDetect(stuck.Hardware), 0);
    Connection none(0);
    none.Usb.Place = -1;
    EXPECT_EQ(UsbDetect(none.Hardware), 1);
    Connection null(0);
    null.Hardware.Seams = {};
    SetupOSFunctions(null.Hardware, 0);
    EXPECT_EQ(UsbDetect(null.Hardware), 1);
}

TEST(UsbDetectResult, DiagnosticFile) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "zu_usb_detect";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    Connection c(0);
    c.Hardware.DiagnosticFile = (folder / "ZU5.txt").string();
    UsbDetect(c.Hardware);
    EXPECT_FALSE(std::filesystem::exists(folder / "ZU5.txt"));
    c.Hardware.DiagnosticLog = 1;
    UsbDetect(c.Hardware);
    std::ifstream file(folder / "ZU5.txt", std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(text, "UsbDetect \r\n");
    c.Hardware.DiagnosticFile = (folder / "missing" / "ZU5.txt").string();
    EXPECT_EQ(UsbDetect(c.Hardware), 0) << "a file that cannot be written is no matter";
    std::filesystem::remove_all(folder);
}

TEST(DriverFailure, LeavesTheModeOfUsbWhereverItShows) {
    Connection found(0);
    found.Driver.Opens = false;
    SetupIO(found.Hardware, found.State, 0, 8);
    EXPECT_EQ(found.State.Identity.ComMode, 8) << "not opened before its first need";
    EXPECT_EQ(FindBoard(found.Hardware, found.State, 0x210), 0);
    EXPECT_EQ(found.State.Identity.ComMode, 9);

    Connection offered(0);
    offered.Driver.Opens = false;
    offered.State.Identity.ComMode = 4;
    EXPECT_FALSE(OfferedAddresses(offered.Hardware, offered.State).PortGroups);
    EXPECT_EQ(offered.State.Identity.ComMode, 9);

    Connection good(0);
    SetupIO(good.Hardware, good.State, 0, 8);
    FindBoard(good.Hardware, good.State, 0x210);
    OfferedAddresses(good.Hardware, good.State);
    EXPECT_EQ(good.State.Identity.ComMode, 8);
}

TEST(PrtDect, DirectSkipsTheSecondWriteAfterAFailure) {
    Connection c(1);
    c.Ports.Answer = [&](std::uint16_t port) {
        return port == 0x378 ? c.Ports.Latch[port] : std::uint8_t{0xFF};
    };
    EXPECT_EQ(prt_dect(c.Hardware), 2);
    EXPECT_EQ(c.Trace.Take(),
              "OUT 03bc aa\nIN 03bc ff\nOUT 0378 aa\nIN 0378 aa\nOUT 0378 55\nIN 0378 55\n"
              "OUT 0278 aa\nIN 0278 ff\n");
    EXPECT_EQ(c.Hardware.ParallelFound, (std::array<std::uint8_t, 3>{0, 1, 0}));
    EXPECT_EQ(c.Hardware.Ops, &NullRegisterOps());
}

TEST(PrtDect, DriverWritesBothAndTakesThePlainPorts) {
    Connection c(0);
    SetupIO(c.Hardware, c.State, 0, 4);
    c.Driver.Answer = [&](std::uint16_t port) {
        if (port == 0x378) return std::uint8_t{0xFF};
        const auto& last = c.Driver.Records[c.Driver.Records.size() - 2];
        return port == 0x278 ? last[20] : std::uint8_t{0xAA};
    };
    EXPECT_EQ(prt_dect(c.Hardware), 4);
    EXPECT_EQ(c.Driver.Codes.size(), 2U + 12U)
        << "opened at first need, then both patterns on all three ports";
    EXPECT_EQ(c.Selected(), &c.Slots().Isa);
}

TEST(PrtDect, WithoutADriverThereIsNoPort) {
    Connection c(0);
    c.Driver.Opens = false;
    EXPECT_EQ(prt_dect(c.Hardware), 0);
    EXPECT_FALSE(DriverUsable(c.Hardware));
}

TEST(CloseHardware, ClosesDriverAndDevice) {
    Connection c(0);
    c.Handshake();
    SelectInterface(c.Hardware, c.State, 0, 8);
    SelectInterface(c.Hardware, c.State, 0, 9);
    EXPECT_TRUE(DriverOpen(c.Hardware));
    ZUPower(c.Hardware);
    CloseHardware(c.Hardware);
    EXPECT_FALSE(DriverOpen(c.Hardware));
    EXPECT_EQ(c.Driver.CloseCalls, 1);
    EXPECT_EQ(c.Usb.OpenNow, 0);
    EXPECT_EQ(c.Hardware.Ops, &NullRegisterOps());
    CloseHardware(c.Hardware);
    EXPECT_EQ(c.Driver.CloseCalls, 1);
}

TEST(Version, Texts) {
    std::string name;
    std::string text;
    EXPECT_FLOAT_EQ(GetDLLVersion(name, text), 0.14F);
    EXPECT_EQ(name, "RoachSer");
    EXPECT_EQ(text, "DLL ver 0.140000");
}

TEST(RegisterTrace, StandsInFrontOfEveryBackEnd) {
    Connection c(1);
    Lines lines;
    c.Hardware.Trace = &lines.Log;
    c.Ports.Answer = [](std::uint16_t) { return std::uint8_t{0x80}; };
    SetupIO(c.Hardware, c.State, 0, 8);
    std::uint8_t bytes[2];
    c.Hardware.Ops->RegWrite(0, 0x210, 0x1F);
    c.Hardware.Ops->RegRead(0, 0x211);
    c.Hardware.Ops->RegReadBlock(0, 0x210, 2, bytes);
    UsbFlushQueue(c.Hardware);
    EXPECT_EQ(lines.Take(), "W 0210 1f\nR 0211 80\nB 0210 2\nFLUSH 0\n");
    c.Handshake();
    SetupIO(c.Hardware, c.State, 0, 9);
    c.Hardware.Ops->RegWrite(0, 0x401, 1);
    c.Hardware.Ops->RegRead(0, 0x402);
    EXPECT_EQ(lines.Take(), "W 0401 01\nFLUSH 2\nR 0402 00\n");
    EXPECT_TRUE(UsbInForce(c.Hardware));
}

TEST(RegisterTrace, ComesAndGoesWhileTheConnectionStays) {
    Connection c(1);
    SetupIO(c.Hardware, c.State, 0, 8);
    EXPECT_EQ(c.Hardware.Ops, &c.Slots().Isa);
    Lines lines;
    TraceRegisters(c.Hardware, &lines.Log);
    c.Hardware.Ops->RegWrite(0, 0x210, 1);
    EXPECT_EQ(lines.Take(), "W 0210 01\n");
    SetupIO(c.Hardware, c.State, 0, 8);
    c.Hardware.Ops->RegWrite(0, 0x210, 2);
    EXPECT_EQ(lines.Take(), "W 0210 02\n") << "another choice of the connection keeps it";
    SetupOSFunctions(c.Hardware, 1);
    SetupIO(c.Hardware, c.State, 0, 8);
    c.Hardware.Ops->RegWrite(0, 0x210, 3);
    EXPECT_EQ(lines.Take(), "W 0210 03\n");
    TraceRegisters(c.Hardware, nullptr);
    EXPECT_EQ(c.Hardware.Ops, &c.Slots().Isa) << "nothing is left in between";
    c.Hardware.Ops->RegWrite(0, 0x210, 4);
    EXPECT_EQ(lines.Take(), "");
}

TEST(TraceRecorder, KeepsTheLastLines) {
    Connection c(1);
    SetupIO(c.Hardware, c.State, 0, 8);
    TraceRecorder recorder(c.Hardware, 3);
    c.Hardware.Ops->RegWrite(0, 0x210, 0);
    EXPECT_EQ(recorder.Total(), 0U);
    recorder.Start();
    EXPECT_TRUE(recorder.Recording());
    for (int i = 1; i <= 5; ++i) c.Hardware.Ops->RegWrite(0, 0x210, static_cast<std::uint8_t>(i));
    EXPECT_EQ(recorder.Text(), "W 0210 03\nW 0210 04\nW 0210 05\n");
    EXPECT_EQ(recorder.Total(), 5U);
    EXPECT_EQ(recorder.Dropped(), 2U);
    recorder.Stop();
    c.Hardware.Ops->RegWrite(0, 0x210, 6);
    EXPECT_EQ(recorder.Total(), 5U);
    recorder.Clear();
    EXPECT_EQ(recorder.Text(), "");
    EXPECT_EQ(recorder.Dropped(), 0U);
    recorder.Stop();
    EXPECT_FALSE(recorder.Recording());
}

TEST(TraceRecorder, LeavesAnothersTraceAlone) {
    Connection c(1);
    Lines lines;
    {
        TraceRecorder recorder(c.Hardware);
        TraceRegisters(c.Hardware, &lines.Log);
        recorder.Stop();
        EXPECT_EQ(c.Hardware.Trace, &lines.Log);
    }
    EXPECT_EQ(c.Hardware.Trace, &lines.Log);
    TraceRegisters(c.Hardware, nullptr);
    {
        TraceRecorder recorder(c.Hardware);
        recorder.Start();
    }
    EXPECT_EQ(c.Hardware.Trace, nullptr) << "a recorder that goes ends its trace";
}

TEST(TraceRecorder, NamesTheRegisterOfALine) {
    PortTable ports;
    for (int board = 0; board < 4; ++board) {
        SetBoardBase(ports, board, static_cast<std::uint16_t>(0x210 + 0x400 * board));
    }
    const std::pair<const char*, const char*> cases[] = {{"W 0210 00", "R0[0]"},
                                                         {"R 0611 80", "R1[1]"},
                                                         {"B 0e10 8192", "R0[3]"},
                                                         {"W 021c 36", "R8[0]"},
                                                         {"W 0218 00", "R12[0]"},
                                                         {"W 00e1 12", "S10[0]"},
                                                         {"W 00b0 12", "S11[3]"},
                                                         {"W 0500 00", ""},
                                                         {"FLUSH 64", ""},
                                                         {"", ""},
                                                         {"W 02", ""},
                                                         {"W 02x0 00", ""},
                                                         {"X 0210 00", ""}};
    for (const auto& [line, name] : cases) EXPECT_EQ(RegisterOfLine(ports, line), name) << line;
}

}  // namespace
}  // namespace zu::test
