// Rates and memory modes as users write them.
#include <gtest/gtest.h>

#include "cli/ClockText.h"
#include "core/NoWindows.h"
#include "core/RateRules.h"
#include "core/Startup.h"
#include "state/Model.h"
#include "support/ScriptedHost.h"

namespace zu {
namespace {

TEST(ParseRate, TakesFrequenciesAndPeriods) {
    struct Row {
        const char* Text;
        int Code;
    };
    for (const Row& row :
         {Row{"100MHz", 5},    Row{"100 MHz", 5}, Row{"100mhz", 5}, Row{"10ns", 5},    Row{"10 ns", 5},
          Row{"100 MSa/s", 5}, Row{"100M", 5},    Row{"0.1GHz", 5}, Row{"500MHz", 1},  Row{"2.5ns", 2},
          Row{"1us", 11},      Row{"1MHz", 11},   Row{"62.5k", 17}, Row{"31.2k", 19},  Row{"31.25 kHz", 19},
          Row{"1 ms", 25},     Row{"1 s", 34},    Row{"1Hz", 34},   Row{" 10ms ", 28}, Row{"1Sa/s", 34}}) {
        EXPECT_EQ(ParseRate(row.Text), row.Code) << row.Text;
    }
    for (const char* text :
         {"", "10", "MHz", "-10ns", "0ns", "nan ns", "inf s", "3MHz", "10 ps", "10ns x", "1GHz"}) {
        EXPECT_EQ(ParseRate(text), std::nullopt) << text;
    }
}

/// A program with an emulated model, without windows.
struct OfferBench {
    explicit OfferBench(int row) {
        ChangeModel(*State, row);
        OfferModelChoices(App);
        SetMemoryMode(App, -1, 0);
    }

    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
    test::ScriptedHost Host;
    NoWindows Windows;
    HardwareSession Hardware{Host};
    zu::App App{*State, Host, Windows, Hardware};
};

TEST(ApplyRate, SetsWhatTheModelOffersAndListsItOtherwise) {
    OfferBench bench(15);
    EXPECT_EQ(ApplyRate(bench.App, "20MHz"), std::nullopt);
    EXPECT_EQ(bench.State->Clock.ClockRate, 7);
    const auto wrong = ApplyRate(bench.App, "200MHz");
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong->find("no rate 200MHz; there are 500 MSa/s (2 ns), 250 MSa/s (4 ns), 100 MSa/s"), 0U)
        << *wrong;
    EXPECT_EQ(wrong->find("125 KSa"), std::string::npos) << *wrong;
    EXPECT_EQ(bench.State->Clock.ClockRate, 7);
}

TEST(ApplyMemoryMode, SetsWhatTheMenuOffersAndListsItOtherwise) {
    OfferBench bench(15);
    EXPECT_EQ(ApplyMemoryMode(bench.App, 3), std::nullopt);
    EXPECT_EQ(bench.State->Memory.DisplayLen, 262144);
    EXPECT_EQ(ApplyMemoryMode(bench.App, 7),
              "no memory mode 7 at this rate; there are 0 (160ch 8K), 1 (160ch 128K), "
              "3 (160ch 256K (No Pattern Generator))");
    EXPECT_EQ(ApplyMemoryMode(bench.App, -1).has_value(), true);
    EXPECT_EQ(ApplyMemoryMode(bench.App, 12).has_value(), true);
    EXPECT_EQ(bench.State->Memory.HardwareMode, 3);
}

}  // namespace
}  // namespace zu
