#include <cmath>
#include <random>

#include "ReferenceBench.h"
#include "hw/Arming.h"
#include "hw/PositionCounter.h"
#include "hw/ReadOut.h"
#include "hw/Thresholds.h"
#include "hw/TriggerCompile.h"
#include "reference/CaptureMaker.h"
#include "state/Rates.h"

// Trigger programming and arming against their second writing.

namespace zu::test {
namespace {

constexpr int kTypes[] = {1, 3, 5, 11, 13, 15};
constexpr int kBoards[] = {1, 2, 4};

std::string Name(const ReferenceBench& bench) {
    const reference::Capture& c = bench.Setup;
    std::string pods;
    for (const int mode : c.Pods) pods += std::to_string(mode);
    return "type " + std::to_string(bench.Bank.Type) + (bench.Bank.Direct ? " direct" : "") + " boards " +
           std::to_string(c.Boards) + " clock " + std::to_string(c.ClockType) + " rate " +
           std::to_string(c.ClockRate) + " mode " + std::to_string(c.HardwareMode) + " output " +
           std::to_string(c.OutputMode) + " pods " + pods + " count " + std::to_string(c.CountMode);
}

std::int32_t TimeoutOf(const reference::Capture& capture) {
    const double ns = (std::max(capture.Position, 0) + 100) * GetRateNS(capture.ClockType, capture.ClockRate);
    return static_cast<std::int32_t>(std::lround(ns / 1e6)) + 1;
}

void CompareArming(ReferenceBench& bench) {
    SCOPED_TRACE(Name(bench));
    bench.Apply();
    const int wanted = reference::StartCapture(bench.Bank, bench.Setup);
    EXPECT_EQ(StartCapture(bench.Hardware, bench.State, bench.Words), wanted);
    bench.Compare();
    EXPECT_EQ(bench.State.Trigger.EdgeList16[0], bench.Setup.Edge);
    EXPECT_EQ(bench.State.Pods.ReprogramFlag, bench.Setup.Reprogram);
    EXPECT_EQ(bench.State.Pattern.PatDirty != 0, bench.Setup.PatDirty);
    EXPECT_EQ(bench.Hardware.FirstRun != 0, bench.Setup.FirstRun);
    EXPECT_EQ(bench.Hardware.CaptureTimeout, TimeoutOf(bench.Setup));
}

TEST(ReferenceArming, TriggeredAtEveryRate) {
    for (const int type : kTypes) {
        for (const int boards : kBoards) {
            for (const int rate : {0, 1, 2, 3, 4, 5, 8, 12, 28}) {
                ReferenceBench bench(type, rate % 2 != 0, static_cast<unsigned>(rate));
                reference::MakeCapture(bench.Setup, boards);
                bench.Setup.ClockRate = rate;
                bench.Setup.HardwareMode = rate == 12 ? 3 : rate % 2;
                bench.Setup.CountMode = rate % 4;
                bench.Setup.Count = 7;
                CompareArming(bench);
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceArming, AtOnceWithoutATriggerWord) {
    for (const int type : kTypes) {
        for (const int boards : kBoards) {
            for (int variant = 0; variant < 8; ++variant) {
                ReferenceBench bench(type, (variant & 1) != 0, static_cast<unsigned>(variant));
                reference::MakeCapture(bench.Setup, boards);
                bench.Setup.Levels = {};
                if ((variant & 2) != 0) bench.Setup.Levels[3] = 9;  // a word that asks for nothing
                bench.Setup.ClockRate = variant < 4 ? 5 : 1;
                bench.Setup.ClockType = variant == 7 ? 1 : 0;
                bench.Setup.HardwareMode = (variant & 4) != 0 ? 3 : 0;
                CompareArming(bench);
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceArming, PatternsInEveryOutputMode) {
    for (const int type : kTypes) {
        for (const int boards : kBoards) {
            for (int output = 0; output < 4; ++output) {
                for (int variant = 0; variant < 4; ++variant) {
                    ReferenceBench bench(type, variant == 1, static_cast<unsigned>(output));
                    reference::MakeCapture(bench.Setup, boards);
                    reference::MakePatterns(bench.Setup, variant);
                    bench.Setup.OutputMode = output;
                    bench.Setup.UserGoesOn = variant % 2 == 0;
                    bench.Setup.PatDirty = variant >= 2;
                    CompareArming(bench);
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST(ReferenceArming, PodsBeyondTheLastAreNotAsked) {
    ReferenceBench bench(13, true);
    reference::MakeCapture(bench.Setup, 1);
    bench.Setup.Pods[5] = 1;
    bench.Setup.Pods[9] = 2;
    CompareArming(bench);
}

TEST(ReferenceArming, EmulatedPollsOnce) {
    for (const int position : {-5, 0, 10, 4000}) {
        ReferenceBench bench(15, true);
        reference::MakeCapture(bench.Setup, 4);
        bench.Setup.Emulated = true;
        bench.Setup.Position = position;
        bench.Setup.ClockRate = 20;
        CompareArming(bench);
    }
}

TEST(ReferenceArming, LastPairOverUsb) {
    for (const int type : {5, 15}) {
        ReferenceBench bench(type, true);
        reference::MakeCapture(bench.Setup, 4);
        bench.Setup.IsUsb = true;
        CompareArming(bench);
    }
}

TEST(ReferenceArming, Random) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        std::mt19937 random(seed);
        const int type = kTypes[random() % 6];
        ReferenceBench bench(type, random() % 2 != 0, seed);
        reference::MakeRandomCapture(bench.Setup, random);
        SCOPED_TRACE("seed " + std::to_string(seed));
        CompareArming(bench);
        if (HasFailure()) return;
    }
}

TEST(ReferenceArming, CapturesInARow) {
    for (unsigned seed = 200; seed < 240; ++seed) {
        std::mt19937 random(seed);
        ReferenceBench bench(kTypes[random() % 6], random() % 2 != 0, seed);
        reference::MakeRandomCapture(bench.Setup, random);
        SCOPED_TRACE("seed " + std::to_string(seed));
        for (int capture = 0; capture < 3; ++capture) {
            if (capture == 1) bench.Setup.Words[2][0][43] = bench.Setup.Words[2][0][43] == '1' ? '0' : '1';
            CompareArming(bench);
            EXPECT_EQ(bench.Hardware.ArmChanged, capture < 2 ? 1 : 0);
            EndCapture(bench.Hardware, bench.State, bench.Words);
            reference::EndCapture(bench.Bank, bench.Setup);
            bench.Compare();
            bench.CompareSamples();
        }
        if (HasFailure()) return;
    }
}

TEST(ReferenceArming, CompileLevelsHolesAndBlanking) {
    for (const int type : kTypes) {
        for (int rate = 0; rate <= 5; ++rate) {
            for (int variant = 0; variant < 8; ++variant) {
                ReferenceBench bench(type, false, static_cast<unsigned>(variant));
                reference::MakeCapture(bench.Setup, 1 + variant % 4);
                bench.Setup.ClockRate = rate;
                bench.Setup.ClockType = variant == 3 ? 1 : 0;
                bench.Setup.AnyBit = variant == 5;
                bench.Setup.HardwareMode = variant == 6 ? 3 : 0;
                bench.Setup.Pods[1] = variant == 7 ? 2 : 3;
                bench.Setup.CountMode = variant % 4;
                bench.Setup.Count = variant == 4 ? 0 : 255 - variant;
                bench.Setup.Levels = {1, 0, 2, 0, 0, variant, 17, -3, 0, 0, 0, 0, 0, 0, 0, variant * 2};
                bench.Apply();
                Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
                const CaptureSetup setup = CaptureSetupOf(bench.State);
                const TriggerKind kind =
                    CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
                EXPECT_EQ(static_cast<int>(kind), reference::CompileTrigger(bench.Bank, bench.Setup));
                SCOPED_TRACE(Name(bench));
                bench.Compare();
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceArming, Thresholds) {
    for (int type = 0; type <= 17; ++type) {
        for (const int boards : kBoards) {
            ReferenceBench bench(type, false, static_cast<unsigned>(type));
            reference::MakeCapture(bench.Setup, boards);
            bench.Setup.Pods = {0, 1, 1, 0, 2, 3, 0, 0, 4, 0, 1, 0, 0, 2, 0, 0, 2, 0, 3, 1};
            bench.Apply();
            Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
            LoadThresholds(registers, CaptureSetupOf(bench.State), bench.State);
            reference::LoadThresholds(bench.Bank, bench.Setup);
            bench.Compare();
            if (HasFailure()) return;
        }
    }
}

/// One set-up for each rule of the position counter.
void PositionVariant(reference::Capture& setup, int variant) {
    static const int kRates[] = {1, 3, 5, 4};
    reference::MakeCapture(setup, 1);
    setup.ClockRate = kRates[variant % 4];
    setup.ClockType = variant / 4 == 1 ? 2 : 0;
    setup.Pods[2] = variant / 4 == 2 ? 1 : 0;
}

TEST(ReferenceArming, PositionValues) {
    for (int type = 0; type <= 16; ++type) {
        for (int mode = 0; mode <= 4; ++mode) {
            for (int variant = 0; variant < 12; ++variant) {
                ReferenceBench bench(type, false);
                PositionVariant(bench.Setup, variant);
                bench.Setup.HardwareMode = mode;
                bench.Apply();
                const CaptureSetup setup = CaptureSetupOf(bench.State);
                const int step = type == 13 ? 1 : 97;
                for (int position = 0; position < (1 << 20) && !HasFailure(); position += step) {
                    if (position == 4096 && step == 1 && variant != 0) break;
                    ASSERT_EQ(PositionValue(setup, position),
                              reference::PositionValue(bench.Bank, bench.Setup, position))
                        << "position " << position << " mode " << mode << " variant " << variant;
                }
            }
        }
    }
}

void ComparePosition(int type, int mode, int variant, int position) {
    ReferenceBench bench(type, variant % 2 != 0, static_cast<unsigned>(position));
    PositionVariant(bench.Setup, variant);
    bench.Setup.HardwareMode = mode;
    bench.Apply();
    Registers registers(bench.Hardware, 0, static_cast<std::uint8_t>(type));
    LoadPosition(registers, CaptureSetupOf(bench.State), position);
    reference::LoadPosition(bench.Bank, bench.Setup, position);
    bench.Compare();
}

TEST(ReferenceArming, PositionLoading) {
    for (const int type : kTypes) {
        for (int mode = 0; mode <= 4; ++mode) {
            for (int variant = 0; variant < 12; ++variant) {
                for (const int position : {0, 0x7D0, 8000, 65536, 131071, 0x7FFFFFFF}) {
                    ComparePosition(type, mode, variant, position);
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST(ReferenceArming, PositionsAroundTheLeadingBit) {
    for (const int center :
         {0, 2030, 4078, 6126, 8172}) {  // low 10, 11, 10 bits set at the halved rate; limit
        for (int position = center < 20 ? 0 : center - 20; position <= center + 20; ++position) {
            ComparePosition(13, 0, 2, position);
        }
    }
}

TEST(ReferenceArming, StatusForceAndStop) {
    for (int answer = 0; answer < 256; ++answer) {
        ReferenceBench bench(15, true, static_cast<unsigned>(answer));
        bench.Instrument.Answer = bench.Twin.Answer = [answer](std::uint16_t, EchoInstrument&) {
            return static_cast<std::uint8_t>(answer);
        };
        EXPECT_EQ(GetTrigStat(bench.Hardware), reference::GetTrigStat(bench.Bank));
        ForceTrigger(bench.Hardware);
        reference::ForceTrigger(bench.Bank);
        EXPECT_TRUE(StopPatternGen(bench.Hardware, bench.State));
        EXPECT_TRUE(StopContinuousPG(bench.Hardware, bench.State));
        for (int i = 0; i < 2; ++i) {
            bench.Bank.ClockHold();
            bench.Bank.Flush();
        }
        bench.Compare();
    }
}

}  // namespace
}  // namespace zu::test
