// The scenes of the simulated instrument: what they set up, and that nothing of it reaches the files of the
// bench with a real one.
#include <gtest/gtest.h>
#include <memory>

#include "core/Capture.h"
#include "core/CommandLine.h"
#include "core/Commands.h"
#include "core/Frame.h"
#include "core/RateRules.h"
#include "core/SceneSetup.h"
#include "core/Startup.h"
#include "hw/Attachment.h"
#include "hw/sim/SimScenes.h"
#include "state/SampleView.h"
#include "support/Bench.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

using test::Bench;

/// A base of its own, so that it outlives the session.
struct Attached {
    std::unique_ptr<Attachment> Cable;
};

/// A program on the simulated instrument, in its own time, so that runs repeat.
struct SceneProgram : Attached, Bench {
    explicit SceneProgram(std::vector<std::string> options) {
        Cable = std::make_unique<Attachment>(Parse(std::move(options)));
        Cable->Simulated()->SetRealTime(false);
        Cable->AttachTo(Hardware);
        App.Simulated = Cable->Simulated();
        CreateFrame(App);
        RunStartupSequence(App);
    }

    std::string Parse(std::vector<std::string> options) {
        options.insert(options.begin(), "zu");
        EXPECT_FALSE(ParseCommandLine(options, State->Files.AppDir, State->Command));
        return State->Command.Simulate;
    }
    /// Polls until there are so many captures; false if they do not come.
    bool RunTo(int count) {
        for (int tick = 0; tick < 2000 && State->Capture.CaptureCount < count; ++tick) {
            Cable->Simulated()->Advance(30e6);
            TimerBody(App, kHardwareTimer);
        }
        return State->Capture.CaptureCount >= count;
    }
    bool Level(int channel, std::int64_t sample) const {
        return (BindChannel(*State, channel).At(sample) >> (channel % 8) & 1) != 0;
    }
    bool Meets(const SimScene& scene, std::int64_t sample) const {
        for (const SimSceneLevel& level : scene.Trigger) {
            if (Level(level.Channel, sample) != level.High) return false;
        }
        return true;
    }
};

class Scenes : public testing::TestWithParam<int> {
  protected:
    const SimScene& Scene() const { return kSimScenes[static_cast<std::size_t>(GetParam())]; }
};

TEST_P(Scenes, RunsLiveWithItsTriggerAtTheCursor) {
    SceneProgram program({"--scene=" + std::string(Scene().Name)});
    EXPECT_EQ(program.State->Identity.Emulated, 0);
    EXPECT_EQ(program.State->Capture.CaptureMode, 0);
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    ASSERT_TRUE(program.RunTo(3)) << program.State->Capture.StatusText.View();
    EXPECT_EQ(program.State->Capture.CaptureState, 1) << "it repeats";
    const std::int64_t at = program.State->Cursors.Cur[kCursorT];
    EXPECT_TRUE(program.Meets(Scene(), at));
    EXPECT_FALSE(program.Meets(Scene(), at - 1));
    EXPECT_TRUE(program.Host.Boxes.empty());
}

TEST_P(Scenes, BringsItsNamesGroupsLinesAndRate) {
    SceneProgram program({"--simulate=Roach160L"});
    ASSERT_TRUE(RunCommand(program.App, SceneCommand(GetParam())));
    const InstrumentState& state = *program.State;
    EXPECT_TRUE(QueryCommand(program.App, SceneCommand(GetParam())).Checked);
    EXPECT_EQ(state.Clock.ClockRate, Scene().RateCode);
    EXPECT_EQ(state.Timing.ScreenZoom, Scene().Zoom);
    for (const SimSceneChannel& channel : Scene().Channels) {
        EXPECT_EQ(state.Channels.ChannelName[channel.Channel].View(), channel.Name);
    }
    int serial = 0;
    for (std::size_t i = 0; i < Scene().Groups.size(); ++i) {
        EXPECT_EQ(state.Groups[i].Name.View(), Scene().Groups[i].Name);
        EXPECT_EQ(state.Groups[i].Size, Scene().Groups[i].Size);
        serial += state.Groups[i].Mode == 1 || state.Groups[i].Mode == 2 ? 1 : 0;
    }
    EXPECT_LE(serial, 1) << "the serial window decodes one group";
    EXPECT_EQ(serial, state.Serial.SerialMode != 0 ? 1 : 0);
    for (std::int32_t line = 0; line < state.Timing.TimingLines; ++line) {
        const auto at = static_cast<std::size_t>(line);
        EXPECT_LT(state.Timing.LineSource[at], kFirstSpacerLine);
    }
    EXPECT_GE(state.Timing.TimingLines, static_cast<int>(Scene().Groups.size()));
    EXPECT_EQ(state.Capture.CaptureState, 0) << "an idle capture stays idle";
}

INSTANTIATE_TEST_SUITE_P(All, Scenes, testing::Range(0, kSceneCount));

TEST(ShowScene, GoesOnCapturingWhatIsConnectedNow) {
    SceneProgram program({"--scene=clocks"});
    ASSERT_TRUE(program.RunTo(2));
    ASSERT_TRUE(ShowSceneNamed(program.App, "counters"));
    EXPECT_EQ(program.State->Capture.CaptureState, 1);
    ASSERT_TRUE(program.RunTo(program.State->Capture.CaptureCount + 2));
    const std::int64_t at = program.State->Cursors.Cur[kCursorT];
    EXPECT_EQ(BindPod(*program.State, 0).At(at), 0);
    EXPECT_EQ(BindPod(*program.State, 0).At(at + 20), 10) << "50 ns a sample, 100 ns a step";
}

TEST(ShowScene, NeedsTheSimulatedInstrument) {
    Bench bench;
    bench.UseRow(15);
    EXPECT_FALSE(ShowScene(bench.App, 0));
    EXPECT_FALSE(ReplayFile(bench.App, "nothing.zu"));
    SceneProgram program({"--simulate=Roach40L"});
    EXPECT_FALSE(ShowScene(program.App, -1));
    EXPECT_FALSE(ShowScene(program.App, kSceneCount));
    EXPECT_FALSE(ShowSceneNamed(program.App, "nothing"));
}

constexpr const char* kDump =
    "$timescale 1us $end\n$scope module top $end\n$var wire 1 ! ready $end\n"
    "$upscope $end\n$enddefinitions $end\n#0\n0!\n#10\n1!\n#20\n0!\n#40\n";

TEST(ReplayFile, ConnectsARecordingUnderItsNames) {
    SceneProgram program({"--scene=i2c"});
    program.Host.Files.push_back(program.Folder.Write("dump.vcd", kDump));
    ASSERT_TRUE(RunCommand(program.App, CommandId::ReplayFile));
    EXPECT_EQ(program.State->Channels.ChannelName[0].View(), "ready");
    EXPECT_FALSE(QueryCommand(program.App, SceneCommand(3)).Checked);
    EXPECT_EQ(program.State->Capture.CaptureState, 1) << "the capture goes on";
    EXPECT_EQ(program.Cable->Simulated()->Stimulus()->At(0, 15 * kTicksPerUs).Value & 1, 1);
    EXPECT_EQ(program.Cable->Simulated()->Stimulus()->At(0, 25 * kTicksPerUs).Value & 1, 0);
}

TEST(ReplayFile, KeepsTheSignalsWhenTheFileIsNoRecording) {
    SceneProgram program({"--scene=i2c"});
    const auto before = program.Cable->Simulated()->Stimulus();
    EXPECT_FALSE(ReplayFile(program.App, program.Folder.Write("text.txt", "hello")));
    EXPECT_EQ(program.Host.Boxes.size(), 1U);
    EXPECT_EQ(program.Cable->Simulated()->Stimulus(), before);
    RunCommand(program.App, CommandId::ReplayFile);  // cancelled
    EXPECT_EQ(program.Cable->Simulated()->Stimulus(), before);
}

TEST(SceneFiles, AreNotThoseOfTheBench) {
    SceneProgram program({"--scene=bench"});
    program.Folder.Write("WRoach.ini", "[Hardware]\nAddress=3\nComMode=8\n");
    ASSERT_TRUE(program.RunTo(1));
    program.State->Files.AutosaveData = 1;
    Shutdown(program.App);
    EXPECT_EQ(program.Folder.Read("WRoach.ini"), "[Hardware]\nAddress=3\nComMode=8\n");
    EXPECT_FALSE(program.Folder.Has("WRoach_0.zu"));
    EXPECT_FALSE(program.Folder.Has("WRoach_sim_0.zu")) << "a look at a scene is not kept";
    EXPECT_TRUE(program.Folder.Has("WRoach_sim.ini"));
}

TEST(SceneFiles, OfASimulatedRunComeBackInTheNext) {
    SceneProgram program({"--simulate=Roach40L"});
    program.State->Files.AutosaveData = 1;
    Shutdown(program.App);
    EXPECT_TRUE(program.Folder.Has("WRoach_sim_0.zu"));
    EXPECT_FALSE(program.Folder.Has("WRoach_0.zu"));
    EXPECT_FALSE(program.Folder.Has("WRoach.ini"));
}

TEST(SceneOption, SimulatesOnlyWhenAsked) {
    const auto parse = [](std::vector<std::string> arguments) {
        CommandOptions options;
        arguments.insert(arguments.begin(), "zu");
        EXPECT_FALSE(ParseCommandLine(arguments, "/", options));
        return std::pair(options.Simulate, options.Scene);
    };
    using Pair = std::pair<std::string, std::string>;
    EXPECT_EQ(parse({}), Pair("", ""));
    EXPECT_EQ(parse({"--scene=spi"}), Pair("Roach40L", "spi"));
    EXPECT_EQ(parse({"--scene", "spi", "--simulate=15@isa"}), Pair("15@isa", "spi"));
    EXPECT_EQ(parse({"--simulate=15"}), Pair("15", ""));
    EXPECT_EQ(parse({"--scene=spi", "--simulate=15", "--hardware"}), Pair("", ""));
    CommandOptions options;
    const auto end = ParseCommandLine(std::vector<std::string>{"zu", "--scene=tea"}, "/", options);
    ASSERT_TRUE(end);
    EXPECT_EQ(end->ExitCode, 2);
    EXPECT_NE(end->Text.find("no scene tea; there are bench counters"), std::string::npos);
}

}  // namespace
}  // namespace zu
