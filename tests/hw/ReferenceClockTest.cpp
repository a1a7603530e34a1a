#include "ReferenceBench.h"
#include "hw/Clock.h"
#include "hw/Qualifier.h"
#include "hw/SerialBus.h"

// Clock sequences against their second writing.

namespace zu::test {
namespace {

constexpr int kTypes[] = {1, 3, 5, 11, 13, 15};

std::vector<std::string> QualifierWords() {
    std::vector<std::string> words(16, "XXXXXXXX");
    words[0] = "1XXXXXX0";
    words[1] = "xxxx01xx";
    words[5] = "11110000";
    words[9] = "00000000";
    words[15] = "?1-0XXX1";
    return words;
}

std::string Name(const ReferenceBench& bench) {
    return "type " + std::to_string(bench.Bank.Type) + (bench.Bank.Direct ? " direct" : "") + " clock " +
           std::to_string(bench.Setup.ClockType) + " rate " + std::to_string(bench.Setup.ClockRate) +
           " edge " + std::to_string(bench.Setup.ClockEdge) + " mode " +
           std::to_string(bench.Setup.HardwareMode);
}

void CompareSetClock(ReferenceBench& bench) {
    SCOPED_TRACE(Name(bench));
    bench.Apply();
    const bool wanted = reference::SetClock(bench.Bank, bench.Setup);
    EXPECT_EQ(SetClock(bench.Hardware, bench.State), wanted);
    bench.Compare();
    EXPECT_EQ(bench.Hardware.FirstRun != 0, bench.Setup.FirstRun);
}

TEST(ReferenceClock, EveryRateInEveryMemoryMode) {
    for (const int type : kTypes) {
        for (int direct = 0; direct < 2; ++direct) {
            for (int mode = 0; mode < 4; ++mode) {
                for (int rate = 0; rate <= 36; ++rate) {
                    ReferenceBench bench(type, direct != 0, static_cast<unsigned>(rate + 40 * mode));
                    bench.Setup.HardwareMode = mode;
                    bench.Setup.ClockRate = rate;
                    CompareSetClock(bench);
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST(ReferenceClock, EveryClockTypeAndEdge) {
    for (const int type : kTypes) {
        for (int clock = 0; clock <= 15; ++clock) {
            for (int variant = 0; variant < 6; ++variant) {
                ReferenceBench bench(type, variant % 2 != 0, static_cast<unsigned>(100 + clock));
                bench.Setup.ClockType = clock;
                bench.Setup.ClockEdge = variant % 3;
                bench.Setup.ClockRate = variant < 3 ? 5 : 27 + variant;
                bench.Setup.HardwareMode = variant == 4 ? 3 : variant % 4;
                bench.Setup.ClockExt = QualifierWords();
                CompareSetClock(bench);
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceClock, EmulatedIsNotProgrammed) {
    ReferenceBench bench(15, true);
    bench.Setup.Emulated = true;
    CompareSetClock(bench);
    EXPECT_TRUE(bench.Instrument.Latch.empty());
}

TEST(ReferenceClock, PatternQuestion) {
    for (int output = 0; output < 3; ++output) {
        for (int variant = 0; variant < 8; ++variant) {
            ReferenceBench bench(variant % 2 == 0 ? 13 : 3, false);
            bench.Setup.OutputMode = output;
            bench.Setup.FirstRun = (variant & 1) != 0;
            bench.Setup.UserGoesOn = (variant & 2) != 0;
            bench.Setup.Pods[19] = (variant & 4) != 0 ? 2 : 3;
            const bool asks = output == 0 && (variant & 1) != 0 && (variant & 4) != 0;
            CompareSetClock(bench);
            ASSERT_EQ(bench.Host.Boxes.size(), asks ? 1U : 0U);
            if (!asks) continue;
            EXPECT_EQ(bench.Host.Boxes[0].Text, "Click Yes to output data once or cancel to stop.");
            EXPECT_EQ(bench.Host.Boxes[0].Caption, "NRZ Pattern Generator");
        }
    }
}

TEST(ReferenceClock, Qualifier) {
    for (const int type : kTypes) {
        for (int edge = 0; edge < 3; ++edge) {
            ReferenceBench bench(type, edge == 1, 7);
            bench.Setup.ClockExt = QualifierWords();
            bench.Apply();
            Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
            LoadQualifier(registers, static_cast<std::uint8_t>(edge), bench.State.Clock.ClockExt);
            reference::LoadQualifier(bench.Bank, edge, bench.Setup.ClockExt);
            bench.Compare();
        }
    }
}

TEST(ReferenceClock, HoldAndSelect) {
    for (int type = 0; type <= 16; ++type) {
        for (unsigned seed = 0; seed < 8; ++seed) {
            ReferenceBench bench(type, false, seed);
            Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
            EXPECT_EQ(registers.ClockHold(), bench.Bank.ClockHold());
            bench.Compare();
            const int selector = static_cast<int>(seed);
            registers.ClockSelect(selector);
            bench.Bank.ClockSelect(selector);
            bench.Compare();
        }
    }
}

TEST(ReferenceClock, ClockWordOfEveryColumn) {
    for (const int type : kTypes) {
        for (int column = 0; column < 4; ++column) {
            ReferenceBench bench(type, column % 2 != 0, static_cast<unsigned>(type + column));
            Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
            const std::uint32_t word = column == 0 ? 0x2D7C08 : 0x15A5C3;
            LoadClockWord(registers, column, 0xB5, 0x6A, word);
            reference::LoadClockWord(bench.Bank, column, 0xB5, 0x6A, word);
            bench.Compare();
        }
    }
}

TEST(ReferenceClock, SerialCounterAndBus) {
    for (const int value : {0, 1, 400, 0x8001, 0xFFFF}) {
        ReferenceBench bench(5, value == 400, static_cast<unsigned>(value));
        Registers registers(bench.Hardware, 0, 5);
        SerialCounter(registers, static_cast<std::uint16_t>(value));
        reference::SerialCounter(bench.Bank, value);
        bench.Compare();
    }
}

}  // namespace
}  // namespace zu::test
