// The memory layout of every row: modes, multiplexing, lengths.
#include <gtest/gtest.h>
#include <vector>

#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

constexpr const char* kNoPattern =
    "ERROR:|This mode is not availalbe with the Pattern Generator. Memory mode has been reset.";
constexpr const char* kInternalOnly =
    "ERROR:|This mode is only available with and internal clock <= 250MHz. Memory mode has been reset.";

/// A state in which a layout is run, and what comes of it.
struct Setting {
    int Row;
    int Type;  ///< clock
    int Code;
    int Mux;
    int Mode;
};

/// A bench with a row freshly applied. The last one is used again while the row stays the same, because the
/// buffers of a model are large.
Bench* BenchOf(int row) {
    static std::unique_ptr<Bench> bench;
    static MemoryRecord memory;
    static BufferLengths lengths;
    if (!bench || bench->State->Identity.HardwareType != row) {
        bench = std::make_unique<Bench>();
        bench->UseRow(row);
        memory = bench->State->Memory;
        lengths = bench->State->Buffer.BufLen;
    }
    bench->State->Memory = memory;
    bench->State->Buffer.BufLen = lengths;
    bench->State->Clock = ClockRecord{};
    bench->Forget();
    return bench.get();
}

Bench* Laid(const Setting& setting) {
    Bench* bench = BenchOf(setting.Row);
    bench->State->Clock.ClockType = static_cast<std::uint8_t>(setting.Type);
    bench->State->Clock.ClockRate = static_cast<std::uint8_t>(setting.Code);
    SetMemoryMode(bench->App, setting.Mux, setting.Mode);
    return bench;
}

std::vector<std::int32_t> Lengths(const Bench& bench, int count) {
    const auto& lengths = bench.State->Buffer.BufLen;
    return {lengths.begin(), lengths.begin() + count};
}

/// The pattern of one block, repeated over the buffers of the model.
void ExpectBlocks(const Bench& bench, const std::vector<std::int32_t>& block) {
    const auto& lengths = bench.State->Buffer.BufLen;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        const bool used = static_cast<int>(i) < bench.State->Shape.BufCount;
        EXPECT_EQ(lengths[i], used ? block[i % block.size()] : 0) << "buffer " << i;
    }
}

// --- Rows 0 and 13 to 15 -------------------------------------------------------------------------------

class CentralRow : public testing::TestWithParam<int> {};

TEST_P(CentralRow, HasItsDepthsAtTheTopRate) {
    constexpr std::int32_t kLengths[] = {32768, 524288, 65536, 524288};
    for (int mode = 0; mode < 4; ++mode) {
        const Bench* bench = Laid({GetParam(), 0, 1, -1, mode});
        const std::int32_t length = kLengths[mode];
        EXPECT_EQ(bench->State->Memory.BufferLen, length);
        EXPECT_EQ(bench->State->Memory.DisplayLen, 4 * length);
        EXPECT_EQ(bench->State->Memory.HardwareMux, 1);
        EXPECT_EQ(bench->State->Memory.HardwareMode, mode);
        ExpectBlocks(*bench, {length, 0, length, 0, length});
    }
}

TEST_P(CentralRow, HasItsDepthsAtThePlainRates) {
    constexpr std::int32_t kLengths[] = {8192, 131072, 16384, 262144};
    for (const int code : {3, 4, 5, 20, 34}) {
        for (int mode = 0; mode < 4; ++mode) {
            const Bench* bench = Laid({GetParam(), 0, code, -1, mode});
            EXPECT_EQ(bench->State->Memory.BufferLen, kLengths[mode]);
            EXPECT_EQ(bench->State->Memory.DisplayLen, kLengths[mode]);
            EXPECT_EQ(bench->State->Memory.HardwareMux, 0);
            ExpectBlocks(*bench, {kLengths[mode]});
        }
    }
}

TEST_P(CentralRow, LeavesMultiplexingOpenAtCodes0And2) {
    for (const int code : {0, 2}) {
        Bench bench;
        bench.UseRow(GetParam());
        SetMemoryMode(bench.App, -1, 1);
        const auto before = Lengths(bench, kMaxPods);
        bench.State->Clock.ClockRate = static_cast<std::uint8_t>(code);
        SetMemoryMode(bench.App, -1, 0);
        EXPECT_EQ(bench.State->Memory.HardwareMux, -1);
        EXPECT_EQ(bench.State->Memory.HardwareMode, 0);
        EXPECT_EQ(bench.State->Memory.BufferLen, 131072) << "no change";
        EXPECT_EQ(bench.State->Memory.DisplayLen, 131072);
        EXPECT_EQ(Lengths(bench, kMaxPods), before);
    }
}

TEST_P(CentralRow, TakesTheMultiplexingThatItIsGiven) {
    for (const int mux : {1, 2}) {
        const Bench* bench = Laid({GetParam(), 0, 5, mux, 1});
        EXPECT_EQ(bench->State->Memory.HardwareMux, mux);
        EXPECT_EQ(bench->State->Memory.DisplayLen, 4 * 131072);
        ExpectBlocks(*bench, {131072, 0, 131072, 0, 131072});
    }
    const Bench* plain = Laid({GetParam(), 0, 1, 0, 1});
    EXPECT_EQ(plain->State->Memory.BufferLen, 524288);
    EXPECT_EQ(plain->State->Memory.DisplayLen, 524288);
    ExpectBlocks(*plain, {524288});
}

TEST_P(CentralRow, HasNoDeepModeWithAnExternalClock) {
    for (const int type : {1, 2, 3, 5, 6, 9, 10, 11, 12, 13, 14}) {
        const Bench* bench = Laid({GetParam(), type, 1, -1, 3});
        EXPECT_EQ(bench->State->Memory.HardwareMode, 1);
        EXPECT_EQ(bench->State->Memory.HardwareMux, 0);
        EXPECT_EQ(bench->State->Memory.BufferLen, 131072);
        EXPECT_EQ(bench->Texts(), std::vector<std::string>{kInternalOnly});
        bench = Laid({GetParam(), type, 1, -1, 2});
        EXPECT_EQ(bench->State->Memory.HardwareMode, 0);
        EXPECT_EQ(bench->State->Memory.BufferLen, 8192);
        EXPECT_EQ(bench->Texts(), std::vector<std::string>{kInternalOnly});
        EXPECT_TRUE(Laid({GetParam(), type, 1, -1, 1})->Host.Boxes.empty());
    }
}

TEST_P(CentralRow, HasNoDeepModeWithAPatternPod) {
    for (const std::int8_t podMode : {std::int8_t{1}, std::int8_t{2}}) {
        Bench bench;
        bench.UseRow(GetParam());
        bench.State->Pods.HardwarePod[4] = podMode;
        SetMemoryMode(bench.App, -1, 3);
        EXPECT_EQ(bench.State->Memory.HardwareMode, 1);
        EXPECT_EQ(bench.State->Memory.BufferLen, 131072);
        SetMemoryMode(bench.App, -1, 2);
        EXPECT_EQ(bench.State->Memory.HardwareMode, 0);
        EXPECT_EQ(bench.State->Memory.BufferLen, 8192);
        EXPECT_EQ(bench.Texts(), (std::vector<std::string>{kNoPattern, kNoPattern}));
    }
}

TEST_P(CentralRow, TellsOfThePatternPodOnlyWhenTheClockForbidsTheModeToo) {
    Bench bench;
    bench.UseRow(GetParam());
    bench.State->Clock.ClockType = 1;
    bench.State->Pods.HardwarePod[0] = 1;
    SetMemoryMode(bench.App, -1, 3);
    EXPECT_EQ(bench.Texts(), std::vector<std::string>{kNoPattern});
}

TEST_P(CentralRow, KeepsTheDepthInAnUnknownMode) {
    for (const int mode : {-1, 4, 11, 12, 127, -128}) {
        const Bench* bench = Laid({GetParam(), 0, 5, -1, mode});
        EXPECT_EQ(bench->State->Memory.HardwareMode, mode);
        EXPECT_EQ(bench->State->Memory.BufferLen, bench->State->Shape.SamplesDefault);
    }
}

INSTANTIATE_TEST_SUITE_P(All, CentralRow, testing::Values(0, 13, 14, 15));

TEST(CentralRow15, HasLZeroLZeroLWithFourTimesTheDisplay) {
    const Bench* bench = Laid({15, 0, 5, 1, 0});
    const std::int32_t length = bench->State->Memory.BufferLen;
    EXPECT_EQ(Lengths(*bench, 5), (std::vector<std::int32_t>{length, 0, length, 0, length}));
    EXPECT_EQ(bench->State->Memory.DisplayLen, 4 * length);
}

TEST(CentralRow15, WithAPatternPodBeyondItsPodsIsUndisturbed) {
    Bench bench;
    bench.UseRow(13);
    bench.State->Pods.HardwarePod[5] = 1;
    SetMemoryMode(bench.App, -1, 3);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 3);
    EXPECT_TRUE(bench.Host.Boxes.empty());
}

// --- Rows 1 to 12 --------------------------------------------------------------------------------------

struct EarlyCase {
    int Row;
    std::int32_t Large;
    bool QuarterRates;  ///< codes 3 and 1 multiplex, not code 4
};

class EarlyRow : public testing::TestWithParam<EarlyCase> {};

TEST_P(EarlyRow, HasItsDepths) {
    const EarlyCase& row = GetParam();
    for (int mode = 0; mode < 4; ++mode) {
        const std::int32_t length = mode == 0 ? 8192 : row.Large;
        const Bench* bench = Laid({row.Row, 0, 5, 0, mode});
        EXPECT_EQ(bench->State->Memory.BufferLen, length);
        EXPECT_EQ(bench->State->Memory.DisplayLen, length);
        ExpectBlocks(*bench, {length});
        bench = Laid({row.Row, 0, 5, 1, mode});
        EXPECT_EQ(bench->State->Memory.DisplayLen, 2 * length);
        ExpectBlocks(*bench, {2 * length, 2 * length, 0, 0, 2 * length});
        bench = Laid({row.Row, 0, 5, 2, mode});
        EXPECT_EQ(bench->State->Memory.DisplayLen, 4 * length);
        ExpectBlocks(*bench, {4 * length, 0, 0, 0, 4 * length});
    }
}

TEST_P(EarlyRow, ChoosesTheMultiplexingByTheCode) {
    const EarlyCase& row = GetParam();
    for (int code = 0; code < kRateCodes; ++code) {
        int mux = -1;
        if (code >= 5) mux = 0;
        if (row.QuarterRates && code == 3) mux = 1;
        if (row.QuarterRates && code == 1) mux = 2;
        if (!row.QuarterRates && code == 4) mux = 1;
        EXPECT_EQ(Laid({row.Row, 0, code, -1, 1})->State->Memory.HardwareMux, mux) << code;
        EXPECT_EQ(Laid({row.Row, 3, code, -1, 1})->State->Memory.HardwareMux, 0) << code;
        EXPECT_EQ(Laid({row.Row, 1, code, -1, 1})->State->Memory.HardwareMux, mux)
            << "an external type other than 3 goes by the code: " << code;
    }
}

TEST_P(EarlyRow, KeepsTheLengthsWhileMultiplexingIsOpen) {
    const Bench* bench = Laid({GetParam().Row, 0, 2, -1, 0});
    EXPECT_EQ(bench->State->Memory.HardwareMux, -1);
    EXPECT_EQ(bench->State->Memory.BufferLen, 8192);
    EXPECT_EQ(bench->State->Memory.DisplayLen, bench->State->Shape.SamplesDefault);
    ExpectBlocks(*bench, {bench->State->Shape.SamplesDefault});
}

INSTANTIATE_TEST_SUITE_P(All, EarlyRow,
                         testing::Values(EarlyCase{1, 32768, false}, EarlyCase{2, 32768, false},
                                         EarlyCase{6, 32768, false}, EarlyCase{7, 32768, false},
                                         EarlyCase{11, 32768, true}, EarlyCase{12, 32768, true},
                                         EarlyCase{3, 131072, true}, EarlyCase{4, 131072, true},
                                         EarlyCase{5, 131072, true}, EarlyCase{8, 131072, true},
                                         EarlyCase{9, 131072, true}, EarlyCase{10, 131072, true}),
                         [](const auto& test) { return "Row" + std::to_string(test.param.Row); });

// --- Rows 16 to 20 -------------------------------------------------------------------------------------

TEST(DaceRows, UseAllBuffersWhateverTheMultiplexing) {
    for (const int row : {16, 17}) {
        for (const int mux : {-1, 0, 1, 2}) {
            const Bench* bench = Laid({row, 0, 5, mux, 0});
            EXPECT_EQ(bench->State->Memory.BufferLen, 2048);
            EXPECT_EQ(bench->State->Memory.DisplayLen, 2048);
            EXPECT_EQ(bench->State->Memory.HardwareMux, mux == -1 ? 0 : mux);
            ExpectBlocks(*bench, {2048});
            bench = Laid({row, 3, 5, mux, 1});
            EXPECT_EQ(bench->State->Memory.BufferLen, 131072);
            ExpectBlocks(*bench, {131072});
        }
    }
}

TEST(TenchRow18, ChoosesByMode) {
    constexpr int kMux[kMemoryModes] = {0, 0, -1, -1, 1, 1, 1, 1, -1, -1, -1, -1};
    for (int mode = 0; mode < kMemoryModes; ++mode) {
        const Bench* bench = Laid({18, 0, 5, -1, mode});
        EXPECT_EQ(bench->State->Memory.HardwareMux, kMux[mode]) << mode;
        EXPECT_EQ(bench->State->Memory.HardwareMode, mode);
        EXPECT_EQ(bench->State->Memory.BufferLen, mode == 0 ? 8192 : 524288);
    }
}

TEST(TenchRow18, DoublesTheModesAtTheTopRate) {
    const Bench* bench = Laid({18, 0, 1, -1, 0});
    EXPECT_EQ(bench->State->Memory.HardwareMode, 4);
    EXPECT_EQ(bench->State->Memory.HardwareMux, 1);
    EXPECT_EQ(bench->State->Memory.BufferLen, 524288);
    ExpectBlocks(*bench, {524288, 524288, 0, 0});
    bench = Laid({18, 0, 1, -1, 1});
    EXPECT_EQ(bench->State->Memory.HardwareMode, 5);
    bench = Laid({18, 1, 1, -1, 1});
    EXPECT_EQ(bench->State->Memory.HardwareMode, 1) << "with an external clock nothing moves";
    EXPECT_EQ(bench->State->Memory.HardwareMux, 0);
}

TEST(TenchRow18, HalvesThePodsWhenMultiplexed) {
    for (const int mux : {1, 2}) {
        const Bench* bench = Laid({18, 0, 5, mux, 1});
        EXPECT_EQ(bench->State->Memory.DisplayLen, 524288);
        ExpectBlocks(*bench, {524288, 524288, 0, 0});
    }
}

TEST(Row20, RunsTheLayoutOfRow18OnTheShapeItFinds) {
    Bench bench;
    bench.UseRow(18);
    ChangeModel(*bench.State, 20);
    SetMemoryMode(bench.App, -1, 5);
    EXPECT_EQ(bench.State->Memory.HardwareMux, 1);
    EXPECT_EQ(bench.State->Memory.BufferLen, 524288);
    ExpectBlocks(bench, {524288, 524288, 0, 0});
}

TEST(Row20, StaysInsideTheRoomOfASmallerShape) {
    Bench bench;
    bench.UseRow(1);
    ChangeModel(*bench.State, 20);
    SetMemoryMode(bench.App, 0, 1);
    EXPECT_EQ(bench.State->Memory.BufferLen, 524288);
    EXPECT_EQ(GetBufLenFull(bench.State->Buffer.BufLen, 0), 4 * 32768);
}

TEST(TenchRow19, ChoosesByModeAndCode) {
    struct Case {
        int Code, Mode, Mux, NewMode;
    };
    for (const Case& c :
         {Case{5, 0, 0, 0}, Case{5, 1, 0, 1}, Case{5, 4, 1, 4}, Case{5, 5, 1, 5}, Case{5, 6, 2, 6},
          Case{5, 7, 2, 7}, Case{0, 0, 2, 6}, Case{0, 4, 2, 6}, Case{0, 1, 2, 7}, Case{0, 5, 2, 7},
          Case{0, 6, 2, 6}, Case{0, 7, 2, 7}, Case{1, 0, 1, 4}, Case{1, 1, 1, 5}, Case{1, 4, 1, 4},
          Case{1, 5, 1, 5}, Case{1, 6, 2, 6}, Case{1, 7, 2, 7}}) {
        const Bench* bench = Laid({19, 0, c.Code, -1, c.Mode});
        EXPECT_EQ(bench->State->Memory.HardwareMux, c.Mux) << c.Code << " " << c.Mode;
        EXPECT_EQ(bench->State->Memory.HardwareMode, c.NewMode) << c.Code << " " << c.Mode;
    }
    EXPECT_EQ(Laid({19, 1, 0, -1, 0})->State->Memory.HardwareMode, 0) << "external clock";
}

TEST(TenchRow19, HasItsDepths) {
    struct Case {
        int Mode;
        std::int32_t Length;
    };
    for (const Case& c : {Case{0, 8192}, Case{1, 1048576}, Case{4, 16384}, Case{5, 2097152}, Case{6, 32768},
                          Case{7, 4194304}, Case{2, 1048576}, Case{8, 1048576}}) {
        const Bench* bench = Laid({19, 0, 5, 2, c.Mode});
        EXPECT_EQ(bench->State->Memory.BufferLen, c.Length) << c.Mode;
        EXPECT_EQ(bench->State->Memory.DisplayLen, c.Length);
        ExpectBlocks(*bench, {c.Length, 0, 0, 0});
        const Bench* half = Laid({19, 0, 5, 1, c.Mode});
        ExpectBlocks(*half, {c.Length, c.Length, 0, 0});
    }
}

// --- Rows 21 to 27 -------------------------------------------------------------------------------------

TEST(RowsWithoutALayout, KeepWhatTheyHave) {
    for (const int row : {21, 22, 23, 24}) {
        Bench bench;
        bench.UseRow(24);
        ChangeModel(*bench.State, row);
        SetMemoryMode(bench.App, 1, 7);
        EXPECT_EQ(bench.State->Memory.HardwareMode, 7);
        EXPECT_EQ(bench.State->Memory.HardwareMux, 0);
        EXPECT_EQ(bench.State->Memory.BufferLen, 1048576);
        EXPECT_EQ(Lengths(bench, 9), (std::vector<std::int32_t>{1048576, 1048576, 1048576, 1048576, 1048576,
                                                                1048576, 1048576, 1048576, 0}));
    }
}

TEST(PerchRows25And26, OfferThreeModesAndNoMultiplexing) {
    struct Case {
        int Mode, NewMode;
        std::int32_t Length;
    };
    for (const int row : {25, 26}) {
        for (const Case& c : {Case{0, 0, 4096}, Case{1, 0, 4096}, Case{4, 4, 262144}, Case{5, 4, 262144},
                              Case{6, 4, 262144}, Case{7, 4, 262144}, Case{8, 8, 65536}, Case{9, 8, 65536},
                              Case{10, 4, 262144}, Case{11, 4, 262144}, Case{2, 2, 262144}}) {
            for (const int mux : {-1, 0, 1, 2}) {
                const Bench* bench = Laid({row, 0, 5, mux, c.Mode});
                EXPECT_EQ(bench->State->Memory.HardwareMode, c.NewMode) << c.Mode;
                EXPECT_EQ(bench->State->Memory.HardwareMux, 0);
                EXPECT_EQ(bench->State->Memory.BufferLen, c.Length);
                ExpectBlocks(*bench, {c.Length});
            }
        }
    }
}

TEST(PerchRows25And26, RaiseARateBelowCode4) {
    for (int code = 0; code < 7; ++code) {
        EXPECT_EQ(Laid({25, 0, code, -1, 0})->State->Clock.ClockRate, std::max(code, 4));
        EXPECT_EQ(Laid({26, 0, code, 0, 0})->State->Clock.ClockRate, std::max(code, 4));
    }
}

TEST(PerchRow27, ChoosesByMode) {
    constexpr int kMux[kMemoryModes] = {0, 1, -1, -1, 0, 1, 0, 1, 0, 1, 0, 1};
    constexpr std::int32_t kLength[kMemoryModes] = {4096,    8192,    2097152, 2097152, 262144, 524288,
                                                    1048576, 2097152, 65536,   131072,  524288, 1048576};
    for (int mode = 0; mode < kMemoryModes; ++mode) {
        const Bench* bench = Laid({27, 0, 5, -1, mode});
        EXPECT_EQ(bench->State->Memory.HardwareMux, kMux[mode]) << mode;
        EXPECT_EQ(bench->State->Memory.HardwareMode, mode);
        EXPECT_EQ(bench->State->Memory.BufferLen, kLength[mode]) << mode;
        if (kMux[mode] == 0) ExpectBlocks(*bench, {kLength[mode]});
        if (kMux[mode] == 1) ExpectBlocks(*bench, {0, kLength[mode], kLength[mode], 0});
    }
}

TEST(PerchRow27, MovesToTheLargeModesWhenMultiplexed) {
    constexpr int kMoved[kMemoryModes] = {1, 1, 2, 3, 5, 5, 7, 7, 9, 9, 11, 11};
    for (int mode = 0; mode < kMemoryModes; ++mode) {
        EXPECT_EQ(Laid({27, 0, 5, 1, mode})->State->Memory.HardwareMode, kMoved[mode]);
        const Bench* top = Laid({27, 0, 2, -1, mode});
        EXPECT_EQ(top->State->Memory.HardwareMode, kMoved[mode]) << "code 2 forces it";
        EXPECT_EQ(top->State->Memory.HardwareMux, 1);
        EXPECT_EQ(top->State->Memory.DisplayLen, top->State->Memory.BufferLen);
    }
    const Bench* quarter = Laid({27, 0, 5, 2, 4});
    EXPECT_EQ(quarter->State->Memory.HardwareMode, 4);
    ExpectBlocks(*quarter, {262144, 0, 0, 0});
}

// --- Around the layout ---------------------------------------------------------------------------------

TEST(SetMemoryMode, CutsTheTriggerCursor) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Cursors.Cur[kCursorT] = 8190;
    SetMemoryMode(bench.App, -1, 0);
    EXPECT_EQ(bench.State->Cursors.Cur[kCursorT], 8189);
    SetMemoryMode(bench.App, -1, 1);
    EXPECT_EQ(bench.State->Cursors.Cur[kCursorT], 8189);
}

TEST(SetMemoryMode, MarksWhatMustBeProgrammed) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Pods.ReprogramFlag = 4;
    bench.State->Pattern.PatDirty = 0;
    SetMemoryMode(bench.App, -1, 1);
    EXPECT_EQ(bench.State->Pods.ReprogramFlag, 1) << "assigned: the waiting bit is lost";
    EXPECT_EQ(bench.State->Pattern.PatDirty, 1);
    EXPECT_EQ(bench.State->Pattern.PatLimit, 131072);
}

TEST(SetMemoryMode, KeepsTheSamples) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Buffer.Samples(3)[100] = 0x5A;
    SetMemoryMode(bench.App, -1, 0);
    SetMemoryMode(bench.App, -1, 1);
    EXPECT_EQ(bench.State->Buffer.Samples(3)[100], 0x5A);
}

TEST(SetMemoryMode, GivesTheDecodersRoomForTheNewDepth) {
    const Bench* bench = Laid({15, 0, 1, -1, 1});
    EXPECT_GE(bench->State->Serial.SerialEvents.size(), 2097152U);
    EXPECT_GE(bench->State->Serial.SpiSI[2].size(), 2097152U);
}

TEST(SetMemoryMode, RedrawsTheOpenDataWindows) {
    Bench bench;
    bench.UseRow(15);
    bench.State->Windows.TimingStat = 1;
    bench.State->Windows.SpiStat = 1;
    SetMemoryMode(bench.App, -1, 1);
    EXPECT_EQ(bench.Shell.Log, (std::vector<std::string>{"redraw Timing", "redraw Spi"}));
}

}  // namespace
}  // namespace zu
