// zu-cli capture, on the simulated instrument in real time.
#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>
#include <unistd.h>

#include "CliSupport.h"
#include "cli/CaptureCommand.h"
#include "cli/CaptureSession.h"
#include "state/SampleView.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

using Arguments = std::vector<std::string>;

struct CaptureTest : testing::Test {
    CliRun Capture(const Arguments& more) {
        Arguments arguments{"capture", "-o", Folder.File("out.zu")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunZuCli(arguments);
    }
    /// The file, loaded as the viewer would.
    std::unique_ptr<CaptureSession> Load(const std::string& name) {
        auto session = std::make_unique<CaptureSession>(Out, Out);
        EXPECT_TRUE(session->Load(Folder.File(name)));
        EXPECT_TRUE(session->Host().Problems().empty()) << Out.str();
        return session;
    }

    TempFolder Folder;
    std::ostringstream Out;
};

const Arguments kCounters{
    "--simulate=Roach160L", "--scene", "counters", "--rate", "10MHz", "--trigger", "0-7=0x40",
    "--position",           "1000"};

Arguments With(Arguments arguments, const Arguments& more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

TEST_F(CaptureTest, SavesWhatTheSignalsDidWithTheTriggerAtItsPlace) {
    const CliRun run = Capture(kCounters);
    ASSERT_EQ(run.Code, 0) << run.Err;
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Err.find("zu-cli: Roach160LB, simulated, scene counters: 160 channels, 8192 samples at "
                           "10 MSa (100 ns), trigger at sample 1000\n"),
              0U)
        << run.Err;
    const auto session = Load("out.zu");
    InstrumentState& state = session->State();
    EXPECT_EQ(state.Clock.ClockRate, 8);
    EXPECT_EQ(state.Cursors.Cur[kCursorT], 1000);
    EXPECT_EQ(state.Channels.ChannelName[3].View().substr(0, 5), "CNT 3");
    const SampleView pod = BindPod(state, 0);
    EXPECT_EQ(pod.At(1000), 0x40);
    EXPECT_EQ(pod.At(999), 0x3F);
    for (int i = 1; i < 8000; ++i) {
        const int step = (pod.At(i) - pod.At(i - 1)) & 0xFF;
        ASSERT_LE(step, 1) << i;
    }
}

TEST_F(CaptureTest, NumbersTheNamesOfSeveral) {
    const CliRun run = Capture(With(kCounters, {"--count", "3"}));
    ASSERT_EQ(run.Code, 0) << run.Err;
    for (const char* name : {"out-1.zu", "out-2.zu", "out-3.zu"})
        EXPECT_EQ(BindPod(Load(name)->State(), 0).At(1000), 0x40);
    EXPECT_EQ(::access(Folder.File("out.zu").c_str(), F_OK), -1);
    EXPECT_NE(run.Err.find("2/3: saved " + Folder.File("out-2.zu")), std::string::npos) << run.Err;
}

TEST(NumberedName, HasTheDigitsOfTheLast) {
    EXPECT_EQ(NumberedName("a/b.zu", 0, 1), "a/b.zu");
    EXPECT_EQ(NumberedName("a/b.zu", 0, 9), "a/b-1.zu");
    EXPECT_EQ(NumberedName("a/b.zu", 0, 10), "a/b-01.zu");
    EXPECT_EQ(NumberedName("a.b/c.ZU", 122, 1000), "a.b/c-0123.ZU");
}

TEST_F(CaptureTest, SumsUpAsJson) {
    const CliRun run = Capture(With(kCounters, {"--count", "2", "--json"}));
    ASSERT_EQ(run.Code, 0) << run.Err;
    const auto json = nlohmann::json::parse(run.Out);
    EXPECT_EQ(json["instrument"]["row"], 15);
    EXPECT_EQ(json["instrument"]["simulated"], true);
    EXPECT_EQ(json["instrument"]["scene"], "counters");
    EXPECT_EQ(json["clock"]["periodNs"], 100);
    EXPECT_EQ(json["memory"]["samplesPerChannel"], 8192);
    EXPECT_EQ(json["position"], 1000);
    ASSERT_EQ(json["captures"].size(), 2U);
    EXPECT_EQ(json["captures"][1]["file"], Folder.File("out-2.zu"));
    EXPECT_EQ(json["result"], "done");
    EXPECT_EQ(json["exit"], 0);
    EXPECT_TRUE(json["problems"].empty());
}

TEST_F(CaptureTest, WorksOnEveryCable) {
    for (const char* cable : {"isa", "byte", "epp", "epp16", "epp32", "usb"}) {
        const CliRun run = Capture({std::string("--simulate=Roach40S@") + cable, "--scene", "clocks",
                                    "--trigger", "10 MHz=0,5 MHz=1"});
        EXPECT_EQ(run.Code, 0) << cable << run.Err;
    }
}

TEST_F(CaptureTest, BeginsAtOnceWithoutATrigger) {
    EXPECT_EQ(Capture({"--simulate=Pike80L"}).Code, 0);
    EXPECT_EQ(Load("out.zu")->State().Identity.HardwareType, 4);
}

TEST_F(CaptureTest, TakesItsSettingsFromAFile) {
    ASSERT_EQ(Capture(With(kCounters, {"--mode", "1"})).Code, 0);
    ASSERT_EQ(std::rename(Folder.File("out.zu").c_str(), Folder.File("first.zu").c_str()), 0);
    const CliRun run = Capture({"--simulate=Roach160L", "--scene", "counters", "--settings",
                                Folder.File("first.zu"), "--position", "500"});
    ASSERT_EQ(run.Code, 0) << run.Err;
    const auto session = Load("out.zu");
    EXPECT_EQ(session->State().Memory.HardwareMode, 1);
    EXPECT_EQ(session->State().Clock.ClockRate, 8);
    EXPECT_EQ(BindPod(session->State(), 0).At(500), 0x40);
    EXPECT_EQ(BindPod(session->State(), 0).At(499), 0x3F);
}

TEST_F(CaptureTest, EndsWithCode5WhenNoTriggerComes) {
    const Arguments never{"--simulate=Roach40L", "--scene", "clocks", "--trigger", "30=1",
                          "--timeout",           "0.1"};
    const CliRun run = Capture(never);
    EXPECT_EQ(run.Code, 5);
    EXPECT_NE(run.Err.find("zu-cli: waiting for the trigger\nzu-cli: no trigger came in time\n"),
              std::string::npos)
        << run.Err;
    EXPECT_EQ(::access(Folder.File("out.zu").c_str(), F_OK), -1);
    EXPECT_EQ(Capture(With(never, {"--force"})).Code, 0);
    const auto session = Load("out.zu");
    const SampleView pod = BindPod(session->State(), 0);
    int edges = 0;
    for (int i = 1; i < 1000; ++i) edges += (pod.At(i) & 8) != (pod.At(i - 1) & 8) ? 1 : 0;
    EXPECT_NEAR(edges, 200, 2) << "10 MHz at 100 MHz";
    const CliRun json = Capture(With(never, {"--json"}));
    EXPECT_EQ(nlohmann::json::parse(json.Out)["exit"], 5);
    EXPECT_EQ(nlohmann::json::parse(json.Out)["result"], "no trigger came in time");
}

TEST_F(CaptureTest, SaysExactlyWhatIsWrong) {
    struct Row {
        Arguments More;
        int Code;
        const char* Error;
    };
    for (const Row& row : {
             Row{{"--simulate=Roach40L", "--scene", "x"},
                 2,
                 "no scene x; there are bench, counters, clocks, i2c, spi, microwire, glitches, noise"},
             Row{{"--scene", "i2c"}, 2, "--scene needs --simulate"},
             Row{{"--simulate=Roach4"}, 2, "no instrument to simulate Roach4: MODEL[@CABLE]"},
             Row{{"--simulate=Roach40L", "--rate", "3MHz"}, 2, "--rate: no rate 3MHz; there are 500 MSa/s"},
             Row{{"--simulate=Roach40L", "--mode", "7"}, 2, "--mode: no memory mode 7 at this rate"},
             Row{{"--simulate=Roach40L", "--mode", "3", "--rate", "500MHz"}, 2, "--mode: no memory mode 3"},
             Row{{"--simulate=Roach40L", "--trigger", "40=1"},
                 2,
                 "--trigger: \"40\": the instrument has channels 0 to 39"},
             Row{{"--simulate=Roach40L", "--position", "8190"},
                 2,
                 "--position: the trigger can stand at sample 0 to 8189, not at 8190"},
             Row{{"--simulate=Roach40L", "--settings", "a.txt"}, 2, "a.txt: neither a settings file"},
             Row{{"--simulate=Roach40L", "--settings", "/nowhere/a.ini"},
                 1,
                 "/nowhere/a.ini: the settings could not"},
             Row{{"--count", "0"}, 2, "--count"},
             Row{{"--timeout", "-1"}, 2, "--timeout"},
             Row{{"--position", "-1"}, 2, "--position"},
             Row{{"--trigger"}, 2, "--trigger"},
         }) {
        const CliRun run = Capture(row.More);
        EXPECT_EQ(run.Code, row.Code) << row.Error;
        EXPECT_NE(run.Err.find(row.Error), std::string::npos) << run.Err;
        EXPECT_EQ(run.Out, "");
    }
    EXPECT_EQ(RunZuCli({"capture", "-o", "a.txt"}).Code, 2);
    EXPECT_EQ(RunZuCli({"capture"}).Code, 2);
    const CliRun nowhere = RunZuCli({"capture", "-o", "/nowhere/a.zu"});
    EXPECT_EQ(nowhere.Code, 1);
    EXPECT_EQ(nowhere.Err, "zu-cli: /nowhere: no such folder\n");
}

TEST_F(CaptureTest, EndsWithCode4WithoutAnInstrument) {
    ::setenv("ZU_HOME", Folder.Path().c_str(), 1);
    const CliRun run = Capture({});
    ::unsetenv("ZU_HOME");
    EXPECT_EQ(run.Code, 4);
    EXPECT_NE(run.Err.find("no instrument answers"), std::string::npos) << run.Err;
}

TEST_F(CaptureTest, EndsCleanlyOnASignal) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const pid_t child = ::fork();
        ASSERT_NE(child, -1);
        const std::string file = Folder.File("never.zu");
        const std::string log = Folder.File("log");
        if (child == 0) {
            std::freopen(log.c_str(), "w", stderr);
            ::execl(ZU_CLI, "zu-cli", "capture", "--simulate=Roach40L", "--scene", "clocks", "--trigger",
                    "30=1", "--timeout", "0", "-o", file.c_str(), nullptr);
            ::_exit(99);
        }
        const std::string waiting = "waiting for the trigger";
        for (int i = 0; i < 1000 && ReadBytes(log).find(waiting) == std::string::npos; ++i) ::usleep(10000);
        ::kill(child, signal);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 130);
        EXPECT_NE(ReadBytes(log).find("interrupted; the instrument is stopped"), std::string::npos);
        EXPECT_EQ(::access(file.c_str(), F_OK), -1);
        ::unlink(log.c_str());
    }
}

}  // namespace
}  // namespace zu::test
