// Start-up on the simulated instrument: the shipped road from the command line to the found model.
#include <gtest/gtest.h>

#include "core/CommandLine.h"
#include "core/Frame.h"
#include "core/Preferences.h"
#include "core/RateRules.h"
#include "core/Startup.h"
#include "hw/Attachment.h"
#include "state/Catalogue.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

struct SimulatedProgram : Bench {
    explicit SimulatedProgram(const std::string& simulate) {
        End = ParseCommandLine(std::vector<std::string>{"zu", "--simulate=" + simulate}, State->Files.AppDir,
                               State->Command);
    }
    void Run(Attachment& attachment) {
        attachment.AttachTo(Hardware);
        CreateFrame(App);
        RunStartupSequence(App);
    }
    std::optional<CommandLineEnd> End;
};

TEST(SimulatedStart, FindsEveryModelOnEveryCableWithoutADialog) {
    for (const int row : {1, 2, 3, 4, 5, 11, 12, 13, 14, 15}) {
        for (const char* cable : {"usb", "isa", "byte", "epp", "epp16", "epp32"}) {
            const std::string text = std::string(Model(row).ShortName) + "@" + cable;
            SCOPED_TRACE(text);
            Attachment attachment(text);
            SimulatedProgram program(text);
            ASSERT_FALSE(program.End);
            program.Run(attachment);
            EXPECT_EQ(program.State->Identity.Emulated, 0);
            EXPECT_EQ(program.State->Identity.HardwareType, row);
            EXPECT_EQ(program.State->Shape.TotalChannels, Model(row).TotalChannels);
            for (const std::string& entry : program.Shell.Log) {
                EXPECT_EQ(entry.find("dialog"), std::string::npos) << entry;
            }
            SetRate(program.App, 9);
            UsbFlushQueue(program.Hardware);
            const SimBoard& master = attachment.Simulated()->Board(0);
            EXPECT_EQ(SynthPeriodNs(master.SynthWord()) * master.Timer().Divisor(0), 200);
            EXPECT_EQ(attachment.Simulated()->SampleClock().Source, SimClockSource::Stopped)
                << "an idle instrument's clock is held";
        }
    }
}

TEST(SimulatedStart, AnotherCableThanTheAttachedOneFindsNothing) {
    Attachment attachment("Roach160L@isa");
    SimulatedProgram program("Roach160L@usb");
    program.Run(attachment);
    EXPECT_EQ(program.State->Identity.Emulated, 1);
    EXPECT_EQ(program.Hardware.Ops, &NullRegisterOps()) << "nothing stays in force";
    EXPECT_EQ(GetTrigStat(program.Hardware), 2);
}

TEST(SimulatedStart, UnknownInstrumentsAreAMisuse) {
    for (const char* text : {"Roach160L@serial", "Nothing", "16", "0@usb"}) {
        const SimulatedProgram program(text);
        ASSERT_TRUE(program.End) << text;
        EXPECT_EQ(program.End->ExitCode, 2);
        EXPECT_NE(program.End->Text.find(text), std::string::npos);
        EXPECT_EQ(Attachment(text).Simulated(), nullptr);
    }
}

}  // namespace
}  // namespace zu
