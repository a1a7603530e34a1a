// Detection of every model at every place, whatever type was in force before, also after a capture.
#include "StorageCase.h"
#include "hw/sim/SimBus.h"

namespace zu {
namespace {

using test::LiveBench;
using test::StorageBench;

constexpr int kRows[] = {1, 2, 3, 4, 5, 11, 12, 13, 14, 15};

void ExpectFound(LiveBench& bench, int row, std::uint16_t index) {
    for (const int entry : {0, row, 15}) {
        SCOPED_TRACE(testing::Message() << "row " << row << " entry type " << entry);
        bench.State->Identity.HardwareType = static_cast<std::uint8_t>(entry);
        EXPECT_EQ(FindStoredBoard(bench.Hardware, *bench.State, index), row);
        EXPECT_EQ(bench.State->Identity.HardwareType, row);
        EXPECT_EQ(bench.State->Identity.Emulated, 0);
    }
}

TEST(DetectionMatrix, FindsEveryModelOnEveryCableBeforeAndAfterACapture) {
    using enum SimCable;
    for (const int row : kRows) {
        for (const SimCable cable : {Usb, Isa, Byte, Epp, Epp16, Epp32}) {
            for (const bool direct : {false, true}) {
                SCOPED_TRACE(testing::Message() << SimCableName(cable) << " direct " << direct);
                StorageBench bench({row, 0, 6}, cable, direct);
                const std::uint16_t index = bench.State->Identity.AddressIndex;
                ExpectFound(bench, row, index);
                ASSERT_TRUE(bench.Run()) << bench.Status();
                ExpectFound(bench, row, index);
                ASSERT_TRUE(bench.Run()) << "after detection: " << bench.Status();
                bench.ExpectSamples(bench.Case.TriggerIndex(bench.Cursor()), StorageBench::kValue);
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

/// A board at an address of its own behind the plain ports.
TEST(DetectionMatrix, FindsEveryModelAtEveryBoardAddress) {
    for (const int row : kRows) {
        for (std::uint16_t index = 0; index < 7; ++index) {
            for (const bool direct : {false, true}) {
                LiveBench bench(15, SimCable::Isa);
                SimTraits traits = TraitsOf(row);
                traits.Direct = direct;
                SimInstrument instrument(traits);
                SimIsaPorts ports(instrument, bench.State->Identity.AddressTable[index]);
                SimPortGate gate;
                PortKernelDriver driver(ports, gate);
                bench.Hardware.Seams.Ports = &ports;
                bench.Hardware.Seams.Driver = &driver;
                SetupOSFunctions(bench.Hardware, 0);
                SetupIO(bench.Hardware, *bench.State, 0, 8);
                ExpectFound(bench, row, index);
                const std::uint16_t other = index == 0 ? 1 : 0;
                EXPECT_EQ(FindStoredBoard(bench.Hardware, *bench.State, other), 0);
                ReleaseRegisters(bench.Hardware);
                CloseHardware(bench.Hardware);
                bench.Hardware.Seams = {};
                SetupOSFunctions(bench.Hardware, 0);
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

}  // namespace
}  // namespace zu
