// Opening the windows of decoded traffic, and when it is decoded.
#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "core/Capture.h"
#include "core/Commands.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

constexpr std::int32_t kStart = 20;  // sample at which the data line falls

/// An I2C start on channels 0 and 1, and one SPI byte of ones on channels 8 to 11.
class Buses : public Bench {
  public:
    Buses() {
        UseRow(15);
        State->Serial.SerialMode = 1;
        AddGroup(0, 1, {0, 1});
        AddGroup(1, 3, {8, 9, 10, 11});
        for (std::int32_t i = 0; i < 200; ++i) {
            State->Buffer.Pod[0][i] = i < kStart ? 3 : 1;
            // Chip select is low from sample 30 on; then the clock runs with both lines high.
            State->Buffer.Pod[1][i] = static_cast<std::uint8_t>(i < 30 ? 0x0E : 0x06 + (i / 2) % 2);
        }
    }
    std::uint8_t Event() { return State->Serial.SerialEvents[kStart]; }
    bool HasByte() {
        const auto& words = State->Serial.SpiSI[0];
        return std::any_of(words.begin(), words.end(), [](std::uint16_t word) { return word != 0; });
    }

  private:
    void AddGroup(std::size_t number, std::int8_t mode, std::initializer_list<std::int32_t> channels) {
        GroupRecord& group = State->Groups[number];
        group.Mode = mode;
        group.Size = static_cast<std::int32_t>(channels.size());
        std::copy(channels.begin(), channels.end(), group.Channels.begin());
    }
};

TEST(SerialCommands, OpeningTheSerialWindowDecodes) {
    Buses bench;
    EXPECT_EQ(bench.Event(), 0);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::WindowSerial));
    EXPECT_EQ(bench.Shell.Log, Strings{"open Serial"});
    EXPECT_EQ(bench.Event(), 1);
    EXPECT_FALSE(bench.HasByte()) << "nobody asked for SPI";
}

TEST(SerialCommands, ClosingAndRedrawingDecodeNothing) {
    Buses bench;
    RunCommand(bench.App, CommandId::WindowSerial);
    bench.State->Serial.SerialEvents[kStart] = 0;
    RefreshAll(bench.App);
    EXPECT_EQ(bench.Event(), 0);
    EXPECT_TRUE(RunCommand(bench.App, CommandId::WindowSerial));
    EXPECT_EQ(bench.Shell.Log.back(), "close Serial");
    EXPECT_EQ(bench.Event(), 0);
}

TEST(SerialCommands, OpeningTheSpiWindowDecodes) {
    Buses bench;
    EXPECT_FALSE(bench.HasByte());
    EXPECT_TRUE(RunCommand(bench.App, CommandId::WindowSpi));
    EXPECT_EQ(bench.Shell.Log, Strings{"open Spi"});
    EXPECT_TRUE(bench.HasByte());
    EXPECT_EQ(bench.Event(), 0);
}

TEST(SerialCommands, TransfersNeedAnI2cListOnTheScreen) {
    Buses bench;
    const auto entry = [&bench] { return QueryCommand(bench.App, CommandId::SerialTransfers); };
    EXPECT_FALSE(entry().Enabled);
    EXPECT_EQ(entry().WhyNot, "Open the serial window first");
    RunCommand(bench.App, CommandId::WindowSerial);
    EXPECT_TRUE(entry().Enabled && entry().Checkable && entry().Checked);
    bench.State->Serial.SerialMode = 2;
    EXPECT_FALSE(entry().Enabled);
    EXPECT_EQ(entry().WhyNot, "Define an I2C group first");
}

TEST(SerialCommands, TransfersAreSwitchedOffAndOn) {
    Buses bench;
    RunCommand(bench.App, CommandId::WindowSerial);
    for (const int wanted : {0, 1}) {
        bench.Shell.Log.clear();
        EXPECT_TRUE(RunCommand(bench.App, CommandId::SerialTransfers));
        EXPECT_EQ(bench.State->Serial.TransfersShown, wanted);
        EXPECT_EQ(bench.Shell.Log, Strings{"redraw Serial"});
    }
}

TEST(WhyNot, TellsWhatIsMissing) {
    Bench bench;
    bench.UseRow(15);
    const auto why = [&bench](CommandId id) { return QueryCommand(bench.App, id).WhyNot; };
    EXPECT_EQ(why(CommandId::Stop), "Nothing runs that could be stopped");
    EXPECT_EQ(why(CommandId::End), "No capture runs that could be ended");
    EXPECT_EQ(why(CommandId::HardwareAddress), "");
    RunCommand(bench.App, CommandId::Go);
    EXPECT_EQ(why(CommandId::Stop), "");
    EXPECT_EQ(why(CommandId::End), "");
    EXPECT_EQ(why(CommandId::HardwareAddress), "Stop the capture first");
    bench.State->Clock.ClockType = 1;
    EXPECT_EQ(why(CommandId::RateUp), "An external clock sets the rate");
}

TEST(WhyNot, NoEntryIsGreyWithoutAReason) {
    Bench bench;
    for (const int row : {0, 11, 15, 17, 19, 27}) {
        bench.UseRow(row);
        for (std::size_t i = 0; i < kCommandCount; ++i) {
            const auto id = static_cast<CommandId>(i);
            const CommandState entry = QueryCommand(bench.App, id);
            const bool blank = entry.Text.find_first_not_of(' ') == std::string::npos;
            if (entry.Removed || blank) continue;
            EXPECT_EQ(entry.Enabled, entry.WhyNot.empty()) << Traits(id).Text << " of row " << row;
        }
    }
}

}  // namespace
}  // namespace zu
