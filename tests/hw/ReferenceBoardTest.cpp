#include "ReferenceBench.h"
#include "hw/PatternDownload.h"

// Detection, memory set-up and pattern download against their second writing.

namespace zu::test {
namespace {

/// What a stack of boards answers.
struct Stack {
    int Boards = 0;
    bool Small = false;  ///< memory class 1
    bool Later = false;
    int GoodEchoes = 4;  ///< rounds in which the pod registers answer
    bool Noise = false;  ///< random answers instead
};

std::uint8_t AnswerOf(const Stack& stack, std::uint16_t port, EchoInstrument& instrument) {
    if (stack.Noise) return static_cast<std::uint8_t>(instrument.Reads * 2654435761U >> 13);
    const int board = (port - kReferenceAddress) / 0x400;
    const int reg = (port - kReferenceAddress) % 0x400;
    if (board >= stack.Boards) return 0xFF;
    if (reg == 2) return stack.Later ? 0x7F : 0x80;
    if (reg != 1) return 0;
    const bool one = (instrument.Latch[port] & 1) != 0;
    const bool echo = instrument.Reads <= static_cast<unsigned>(2 * stack.GoodEchoes);
    return static_cast<std::uint8_t>((one ? 0x80 : 0) | (one && echo ? 2 : 0) | (stack.Small ? 0x20 : 0));
}

int CompareDetection(const Stack& stack, int entryType, unsigned seed) {
    ReferenceBench bench(entryType, seed % 2 != 0, seed);
    bench.Instrument.Answer = bench.Twin.Answer = [stack](std::uint16_t port, EchoInstrument& instrument) {
        return AnswerOf(stack, port, instrument);
    };
    for (int b = 0; b < 4; ++b) SetBoardBase(bench.Hardware.Ports, b, 0x320);  // of an earlier candidate
    const int wanted = reference::FindBoard(bench.Bank);
    EXPECT_EQ(FindBoard(bench.Hardware, bench.State, kReferenceAddress), wanted);
    EXPECT_EQ(bench.State.Identity.HardwareType, wanted);
    EXPECT_EQ(bench.State.Identity.Emulated, wanted == 0 ? 1 : 0);
    EXPECT_EQ(bench.Hardware.PodRegsDirect != 0, bench.Bank.Direct);
    bench.Compare();
    return wanted;
}

TEST(ReferenceBoard, DetectionOfEveryStack) {
    for (int boards = 0; boards <= 4; ++boards) {
        for (int variant = 0; variant < 4; ++variant) {
            for (int echoes = 0; echoes <= 4; ++echoes) {
                for (const int entry : {0, 1, 3, 5, 11, 13, 15, 17}) {
                    const Stack stack{boards, (variant & 1) != 0, (variant & 2) != 0, echoes, false};
                    CompareDetection(stack, entry, static_cast<unsigned>(boards + variant + echoes + entry));
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST(ReferenceBoard, ModelsOfTheStacks) {
    const int models[] = {0, 3, 4, 5, 5};
    const int smallModels[] = {0, 1, 2, 5, 5};
    for (int boards = 0; boards <= 4; ++boards) {
        const int step = boards == 0 ? 0 : 10;
        const auto index = static_cast<std::size_t>(boards);
        EXPECT_EQ(CompareDetection({boards, false, false, 4, false}, 0, 3), models[index]);
        EXPECT_EQ(CompareDetection({boards, true, false, 4, false}, 0, 3), smallModels[index]);
        EXPECT_EQ(CompareDetection({boards, false, true, 4, false}, 0, 3), models[index] + step);
        EXPECT_EQ(CompareDetection({boards, true, true, 4, false}, 0, 3), smallModels[index] + step);
    }
}

TEST(ReferenceBoard, DetectionInNoise) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        CompareDetection({4, false, false, 0, true}, seed % 2 == 0 ? 15 : 0, seed);
    }
}

TEST(ReferenceBoard, MemoryOrganisation) {
    for (int type = 1; type <= 15; ++type) {
        for (int mode = 0; mode <= 11; ++mode) {
            for (int boards = 1; boards <= 4; ++boards) {
                ReferenceBench bench(type, (mode + boards) % 2 != 0, static_cast<unsigned>(type * 16 + mode));
                SCOPED_TRACE("type " + std::to_string(type) + " mode " + std::to_string(mode));
                bench.Setup.HardwareMode = mode;
                bench.Setup.Boards = boards;
                bench.Apply();
                EXPECT_TRUE(SetupMemConfig(bench.Hardware, bench.State));
                reference::SetupMemConfig(bench.Bank, bench.Setup);
                bench.Compare();
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceBoard, TypesWithoutLargeMemoryAreSkipped) {
    for (const int type : {0, 16, 27}) {
        ReferenceBench bench(type, true);
        bench.Setup.HardwareMode = 1;
        bench.Apply();
        SetupMemConfig(bench.Hardware, bench.State);
        reference::SetupMemConfig(bench.Bank, bench.Setup);
        bench.Compare();
    }
}

void FillPatterns(reference::Setup& setup, int length) {
    unsigned noise = 99;
    for (std::size_t p = 0; p < 20; ++p) {
        setup.Pods[p] = static_cast<int>(p * 7 % 5);
        setup.Lengths[p] = length;
        setup.Patterns[p].resize(static_cast<std::size_t>(length));
        for (std::uint8_t& byte : setup.Patterns[p]) {
            noise = noise * 1664525U + 1013904223U;
            byte = static_cast<std::uint8_t>(noise >> 24);
        }
    }
}

void CompareDownload(ReferenceBench& bench) {
    SCOPED_TRACE("type " + std::to_string(bench.Bank.Type) + " boards " + std::to_string(bench.Setup.Boards));
    bench.Apply();
    bench.State.Pattern.PatDirty = 1;
    EXPECT_TRUE(DownloadPatterns(bench.Hardware, bench.State));
    EXPECT_EQ(bench.State.Pattern.PatDirty, 0);
    reference::DownloadPatterns(bench.Bank, bench.Setup);
    bench.Compare();
}

constexpr int kPatternTypes[] = {1, 2, 3, 4, 5, 6, 8, 10, 11, 12, 13, 14, 15};

TEST(ReferenceBoard, PatternDownload) {
    for (const int type : kPatternTypes) {
        for (int direct = 0; direct < 2; ++direct) {
            for (const int boards : {1, 2, 4}) {
                ReferenceBench bench(type, direct != 0, static_cast<unsigned>(type + boards));
                bench.Setup.Boards = boards;
                FillPatterns(bench.Setup, 9);
                CompareDownload(bench);
                if (HasFailure()) return;
            }
        }
    }
}

TEST(ReferenceBoard, PatternsOfUnequalLengths) {
    static const int kLengths[][5] = {{9, 9, 5, 9, 7}, {4, 9, 9, 6, 1}, {9, 0, 9, 0, 9}, {0, 9, 3, 2, 0}};
    for (const int type : kPatternTypes) {
        for (const auto& lengths : kLengths) {
            ReferenceBench bench(type, type % 2 == 0, static_cast<unsigned>(type));
            FillPatterns(bench.Setup, 9);
            for (std::size_t p = 0; p < 20; ++p) bench.Setup.Lengths[p] = lengths[p % 5];
            CompareDownload(bench);
            if (HasFailure()) return;
        }
    }
}

}  // namespace
}  // namespace zu::test
