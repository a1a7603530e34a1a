#include <random>

#include "ReferenceBench.h"
#include "hw/Arming.h"
#include "hw/PatternDownload.h"
#include "hw/ReadOut.h"
#include "reference/CaptureMaker.h"
#include "reference/PortPaper.h"

// What goes over each cable against its second writing.

namespace zu::test {
namespace {

constexpr std::uint8_t kAnswer = 0x5A;

/// A session with a trace at each seam.
struct Cables {
    ScriptedHost Host;
    Lines Log;
    FakePorts Ports;
    FakeDriver Driver;
    FakeUsb Usb;
    TracePortIo TracedPorts{Ports, Log.Log};
    TraceKernelDriver TracedDriver{Driver, Log.Log};
    TraceUsbDevice TracedUsb{Usb, Log.Log};
    InstrumentState State;
    HardwareSession Hardware{Host};

    explicit Cables(bool driver) {
        Ports.Answer = Driver.Answer = [](std::uint16_t) { return kAnswer; };
        Hardware.Seams = {&TracedPorts, &TracedDriver, &TracedUsb};
        SetupOSFunctions(Hardware, driver ? 0 : 1);
    }
};

/// Ports of every board, odd bases, and the pod registers.
const std::uint16_t kPorts[] = {0x000, 0x001, 0x00F, 0x404, 0x80B, 0xC0F, 0x210, 0x211, 0x61E, 0xA18, 0xE1F,
                                0x380, 0x78C, 0x2A3, 0x0E0, 0x0E1, 0x0D0, 0x0D1, 0x0C0, 0x0C1, 0x0B0, 0x0B1};

/// The same accesses on the operations in force and on paper.
template <typename Cable>
void Access(RegisterOps& ops, std::uint16_t base, Cable& cable) {
    std::vector<std::uint8_t> bytes(16);
    for (const std::uint16_t port : kPorts) {
        ops.RegWrite(base, port, 0xA7);
        cable.Write(port, 0xA7);
        ops.RegRead(base, port);
        cable.Read(port);
    }
    for (const std::uint16_t port : {std::uint16_t{0x210}, std::uint16_t{0xE10}, std::uint16_t{0x400}}) {
        for (int count = 1; count <= 9; ++count) {
            ops.RegReadBlock(base, port, count, bytes.data());
            cable.ReadBlock(port, count);
        }
    }
}

TEST(ReferenceWire, PlugInBoardAndParallelPort) {
    for (int driver = 0; driver < 2; ++driver) {
        for (const int mode : {1, 2, 4, 8, 32, 64}) {
            for (std::uint16_t index = 0; index < 3; ++index) {
                SCOPED_TRACE((driver != 0 ? "driver mode " : "own mode ") + std::to_string(mode));
                Cables cables(driver != 0);
                if (driver != 0) {
                    SelectInterface(cables.Hardware, cables.State, index, static_cast<std::uint8_t>(mode));
                } else {
                    unsigned reads = 0;  // each read of the echo test takes two inputs, low and then high
                    cables.Ports.Answer = [&reads](std::uint16_t) { return reads++ % 4 < 2 ? 0x00 : 0x02; };
                    SetupIO(cables.Hardware, cables.State, index, static_cast<std::uint8_t>(mode));
                    cables.Ports.Answer = [](std::uint16_t) { return kAnswer; };
                }
                cables.Log.Take();
                const std::uint16_t base = mode == 8 ? 0 : kParallelPorts[index];
                reference::PortCable cable(mode, base, driver != 0);
                cable.Paper.Answer = kAnswer;
                Access(*cables.Hardware.Ops, base, cable);
                EXPECT_EQ(Difference(cable.Paper.Text, cables.Log.Take()), "");
            }
        }
    }
}

/// Echo test of a byte protocol: the session's ports answer it well in the first `good` rounds.
void CompareEchoTest(std::uint8_t mode, int good) {
    SCOPED_TRACE("mode " + std::to_string(mode) + " good rounds " + std::to_string(good));
    Cables cables(false);
    reference::PortCable cable(mode, 0x378, false);
    reference::PortCable fallBack(4, 0x378, false);
    cables.Ports.Answer = [good, reads = 0](std::uint16_t) mutable -> std::uint8_t {
        const int round = reads / 4;
        return reads++ % 4 >= 2 && round < good ? 0x02 : 0x00;
    };
    SetupIO(cables.Hardware, cables.State, 1, mode);
    for (int round = 0; round < 4; ++round) {
        cable.Paper.Answer = 0x00;
        cable.Write(1, 0);
        cable.Read(1);
        cable.Paper.Answer = round < good ? 0x02 : 0x00;
        cable.Write(1, 1);
        cable.Read(1);
    }
    EXPECT_EQ(Difference(cable.Paper.Text, cables.Log.Take()), "");
    EXPECT_EQ(cables.State.Identity.ComMode, mode);
    EXPECT_EQ(cables.State.Identity.HwPort, 0x378);
    reference::PortCable& inForce = good == 4 ? cable : fallBack;
    inForce.Paper.Text.clear();
    inForce.Write(0x214, 0x99);
    cables.Hardware.Ops->RegWrite(0x378, 0x214, 0x99);
    EXPECT_EQ(Difference(inForce.Paper.Text, cables.Log.Take()), "");
}

TEST(ReferenceWire, EchoTestOfTheByteProtocol) {
    for (const std::uint8_t mode : {std::uint8_t{1}, std::uint8_t{2}}) {
        for (int good = 0; good <= 4; ++good) CompareEchoTest(mode, good);
    }
}

TEST(ReferenceWire, SetUpOfThePortModes) {
    for (const int mode : {4, 8, 32, 64}) {
        Cables cables(false);
        reference::PortPaper paper(false);
        SetupIO(cables.Hardware, cables.State, 2, static_cast<std::uint8_t>(mode));
        if (mode == 4) paper.Out(0x278 + 2, 0xC4);
        EXPECT_EQ(Difference(paper.Text, cables.Log.Take()), "");
    }
}

TEST(ReferenceWire, SearchOfParallelPorts) {
    for (int driver = 0; driver < 2; ++driver) {
        for (int present = 0; present < 8; ++present) {
            Cables cables(driver != 0);
            if (driver != 0) SelectInterface(cables.Hardware, cables.State, 0, 8);
            cables.Log.Take();
            reference::PortPaper paper(driver != 0);
            unsigned reads = 0;
            cables.Ports.Answer = [&](std::uint16_t port) -> std::uint8_t {
                const int index = port == 0x3BC ? 0 : port == 0x378 ? 1 : 2;
                return (present >> index & 1) != 0 ? cables.Ports.Latch[port] : 0x11;
            };
            cables.Driver.Answer = [&](std::uint16_t port) -> std::uint8_t {
                const int index = port == 0x3BC ? 0 : port == 0x378 ? 1 : 2;
                const std::uint8_t echo = reads++ % 4 < 2 ? 0xAA : 0x55;  // asked at outputs as well
                return (present >> index & 1) != 0 ? echo : 0x11;
            };
            EXPECT_EQ(prt_dect(cables.Hardware), present);
            for (const int port : {0x3BC, 0x378, 0x278}) {
                const int index = port == 0x3BC ? 0 : port == 0x378 ? 1 : 2;
                const bool there = (present >> index & 1) != 0;
                paper.Out(port, 0xAA);
                paper.Answer = there ? 0xAA : 0x11;
                paper.In(port);
                if (!there && driver == 0) continue;
                paper.Out(port, 0x55);
                paper.Answer = there ? 0x55 : 0x11;
                paper.In(port);
            }
            EXPECT_EQ(Difference(paper.Text, cables.Log.Take()), "");
        }
    }
}

/// USB in force on the program's side, an empty sheet of paper on the other.
struct UsbCables : Cables {
    reference::UsbPaper Paper;
    unsigned Status = 0;

    UsbCables() : Cables(true) {
        Usb.Answer = [this](std::uint8_t command) { return HandshakeAnswer(command); };
        SetupIO(Hardware, State, 0, 9);
        Usb.Answer = {};
    }
    /// The status byte has bit 4 in the first pair of reads and not in the second.
    std::uint8_t HandshakeAnswer(std::uint8_t command) {
        if (command != 0x86) return 0;
        return Status++ < 2 ? 0x3F : 0x2F;
    }
    void Compare() {
        EXPECT_EQ(Difference(Paper.Text, Log.Take()), "");
        Paper.Text.clear();
    }
    /// What the set-up itself left, taken off.
    void SkipSetup() {
        Log.Take();
        Paper.CommandWithIndex(0x8C, 0x10, {4});
        Paper.Text.clear();
    }
};

TEST(ReferenceWire, UsbHandshake) {
    UsbCables cables;
    ASSERT_TRUE(UsbInForce(cables.Hardware));
    reference::UsbPaper& paper = cables.Paper;
    paper.Answer = [count = 0](int) mutable { return count++ < 2 ? 0x3F : 0x2F; };
    paper.Found(0);
    paper.Command(0x88, {0xFF});
    paper.ReadCommand(0x86);
    paper.ReadCommand(0x86);
    paper.Command(0x88, {0x00});
    paper.ReadCommand(0x86);
    paper.ReadCommand(0x86);
    paper.CommandWithIndex(0x8C, 0x10, {4});
    cables.Compare();
}

TEST(ReferenceWire, UsbAccesses) {
    UsbCables cables;
    cables.SkipSetup();
    cables.Usb.Answer = [](std::uint8_t) { return kAnswer; };
    cables.Paper.Answer = [](int) { return kAnswer; };
    Access(*cables.Hardware.Ops, 0, cables.Paper);
    UsbFlushQueue(cables.Hardware);
    cables.Paper.Flush();
    cables.Compare();
}

TEST(ReferenceWire, UsbPacketsOfEveryQueue) {
    UsbCables cables;
    cables.SkipSetup();
    for (int pairs = 0; pairs <= 130; ++pairs) {
        for (int i = 0; i < pairs; ++i) {
            if (i % 5 == 3) {
                cables.Hardware.Ops->RegRead(0, 0x400);
                cables.Paper.Read(0x400);
            } else {
                cables.Hardware.Ops->RegWrite(0, 0x214, static_cast<std::uint8_t>(i));
                cables.Paper.Write(0x214, i);
            }
        }
        UsbFlushQueue(cables.Hardware);
        cables.Paper.Flush();
        cables.Compare();
    }
}

TEST(ReferenceWire, UsbBulkPieces) {
    UsbCables cables;
    cables.SkipSetup();
    std::vector<std::uint8_t> bytes(600000);
    for (const int count : {0, 1, 61439, 61440, 61441, 122879, 122880, 122881, 131072, 524288}) {
        cables.Hardware.Ops->RegWrite(0, 0x213, 1);
        cables.Hardware.Ops->RegReadBlock(0, 0x210, count, bytes.data());
        cables.Paper.Write(0x213, 1);
        cables.Paper.ReadBlock(0x210, count);
        cables.Compare();
    }
}

/// What the sequences leave waiting is compared as well.
void FlushAndCompare(ReferenceBench& bench) {
    UsbFlushQueue(bench.Hardware);
    bench.Bank.Flush();
    bench.Compare();
}

TEST(ReferenceWire, DetectionOverUsb) {
    for (const int high : {0x00, 0x80, 0x82, 0xA2, 0xFF}) {
        ReferenceBench bench(0, false);
        bench.UseUsb();
        bench.Usb.Answer = [high, n = 0](std::uint8_t) mutable {
            return static_cast<std::uint8_t>(n++ % 2 == 0 ? 0 : high);
        };
        bench.Paper.Answer = [high, n = 0](int) mutable { return n++ % 2 == 0 ? 0 : high; };
        EXPECT_EQ(FindBoard(bench.Hardware, bench.State, kReferenceAddress),
                  reference::FindBoard(bench.Bank));
        FlushAndCompare(bench);
    }
}

TEST(ReferenceWire, ClockOverUsb) {
    for (const int type : {3, 15}) {
        for (const int rate : {1, 27, 28}) {
            ReferenceBench bench(type, type == 15);
            bench.UseUsb();
            bench.Setup.ClockRate = rate;
            bench.Apply();
            SetClock(bench.Hardware, bench.State);
            reference::SetClock(bench.Bank, bench.Setup);
            FlushAndCompare(bench);
        }
    }
}

void ComparePatterns(int type, int boards, int length) {
    ReferenceBench bench(type, type == 15);
    bench.UseUsb();
    bench.Setup.Boards = boards;
    bench.Setup.Pods = {1, 0, 2, 0, 1, 0, 0, 0, 0, 0, 2, 2, 0, 1, 2, 3, 1, 4, 0, 0};
    bench.Setup.Lengths.assign(20, length);
    for (std::size_t p = 0; p < 20; ++p) {
        bench.Setup.Patterns[p].resize(static_cast<std::size_t>(length));
        std::size_t i = 0;
        for (std::uint8_t& byte : bench.Setup.Patterns[p]) byte = static_cast<std::uint8_t>(31 * p + 7 * i++);
    }
    bench.Apply();
    DownloadPatterns(bench.Hardware, bench.State);
    reference::DownloadPatterns(bench.Bank, bench.Setup);
    FlushAndCompare(bench);
    EXPECT_EQ(bench.Usb.Written, bench.Paper.BulkBytes);
}

TEST(ReferenceWire, PatternsOverUsb) {
    for (const int type : {3, 5, 13, 15}) ComparePatterns(type, type % 10 == 5 ? 4 : 1, 5);
    ComparePatterns(13, 1, 30720);
    ComparePatterns(13, 1, 30721);
}

TEST(ReferenceWire, CapturesOverUsb) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        static const int kTypes[] = {1, 3, 5, 11, 13, 15};
        ReferenceBench bench(kTypes[random() % 6], random() % 2 != 0, seed);
        reference::MakeRandomCapture(bench.Setup, random);
        bench.UseUsb();
        bench.Apply();
        EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words),
                  reference::StartCapture(bench.Bank, bench.Setup));
        bench.Compare();
        EndCapture(bench.Hardware, bench.State, bench.Words);
        reference::EndCapture(bench.Bank, bench.Setup);
        FlushAndCompare(bench);
        bench.CompareSamples();
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace zu::test
