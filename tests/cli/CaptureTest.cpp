// zu-cli capture, on the simulated instrument in real time.
#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
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

    /// Makes a folder of this name; answers the name of a file in the same place.
    std::string FolderNamed(const std::string& name, const std::string& file = {}) {
        EXPECT_EQ(::mkdir(Folder.File(name).c_str(), 0700), 0);
        return Folder.File(file.empty() ? name : file);
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
    EXPECT_NE(
        run.Err.find("zu-cli: waiting for the trigger\nzu-cli: no trigger came in time; --timeout waits "
                     "longer, --force saves what the memory holds\n"),
        std::string::npos)
        << run.Err;
    EXPECT_EQ(::access(Folder.File("out.zu").c_str(), F_OK), -1);
    const CliRun forced = Capture(With(never, {"--force"}));
    EXPECT_EQ(forced.Code, 0);
    EXPECT_NE(forced.Err.find("zu-cli: out of time; what the memory holds is saved\nzu-cli: saved "),
              std::string::npos)
        << forced.Err;
    const auto session = Load("out.zu");
    const SampleView pod = BindPod(session->State(), 0);
    int edges = 0;
    for (int i = 1; i < 1000; ++i) edges += (pod.At(i) & 8) != (pod.At(i - 1) & 8) ? 1 : 0;
    EXPECT_NEAR(edges, 200, 2) << "10 MHz at 100 MHz";
    const CliRun json = Capture(With(never, {"--json"}));
    EXPECT_EQ(nlohmann::json::parse(json.Out)["exit"], 5);
    EXPECT_EQ(nlohmann::json::parse(json.Out)["result"].get<std::string>().substr(0, 25),
              "no trigger came in time; ");
    const CliRun second = Capture(With(never, {"--count", "3"}));
    EXPECT_EQ(second.Code, 5);
    EXPECT_NE(second.Err.find("zu-cli: 1/3: no trigger came in time"), std::string::npos) << second.Err;
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
             Row{{"--simulate=Roach4"},
                 2,
                 "no instrument to simulate Roach4: MODEL[@CABLE] with a model of "},
             Row{{"--simulate", "-o", "a.zu"}, 2, "--simulate: a value is missing ahead of -o"},
             Row{{"--simulate=Roach40L", "--scene", "--json"}, 2, "--scene"},
             Row{{"--simulate=Roach40L", "--rate", "500MHz", "--trigger", "0-7=1,8=1"},
                 2,
                 "--trigger: channel 8 takes no samples at this rate and memory mode"},
             Row{{"--simulate=Roach40L", "--trigger", "falling"},
                 2,
                 "--trigger: \"falling\" asks for no channel"},
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
    const CliRun folder = RunZuCli({"capture", "--simulate=Roach40L", "-o", FolderNamed("a.zu")});
    EXPECT_EQ(folder.Code, 1);
    EXPECT_EQ(folder.Err, "zu-cli: " + Folder.File("a.zu") + ": is a folder\n") << "before any capture";
    const CliRun first =
        RunZuCli({"capture", "--simulate=Roach40L", "--count", "20", "-o", FolderNamed("b-01.zu", "b.zu")});
    EXPECT_EQ(first.Err, "zu-cli: " + Folder.File("b-01.zu") + ": is a folder\n");
}

TEST_F(CaptureTest, HelpTellsWhatTheOptionsTake) {
    constexpr const char* kScenes = "bench, counters, clocks, i2c, spi, microwire, glitches, noise\n";
    const std::string help = RunZuCli({"capture", "--help"}).Out;
    for (const char* line :
         {"-o,--output FILE REQUIRED", "--simulate MODEL[@CABLE] ", "--scene NAME ", kScenes, "--rate RATE ",
          "--trigger TERMS ", "--count N ", "--timeout SECONDS=10 "}) {
        EXPECT_NE(help.find(line), std::string::npos) << line;
    }
}

TEST_F(CaptureTest, EndsWithCode4WithoutAnInstrument) {
    ::setenv("ZU_HOME", Folder.Path().c_str(), 1);
    const CliRun run = Capture({});
    ::unsetenv("ZU_HOME");
    EXPECT_EQ(run.Code, 4);
    EXPECT_NE(run.Err.find("no instrument answers"), std::string::npos) << run.Err;
}

/// zu-cli as a process of its own that gets a signal.
class SignalTest : public CaptureTest {
  protected:
    /// Sends `signal` as soon as the process has said `after`; answers its exit code, -1 if it did not exit
    /// by itself. What it said is in Said.
    int Interrupt(Arguments arguments, int signal, const std::string& after) {
        const std::string log = Folder.File("log");
        ::unlink(log.c_str());
        arguments.insert(arguments.begin(), {"zu-cli", "capture", "-o", Folder.File("out.zu")});
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        const pid_t child = ::fork();
        if (child == 0) {
            std::freopen(log.c_str(), "w", stderr);
            ::execv(ZU_CLI, argv.data());
            ::_exit(99);
        }
        for (int i = 0; i < 1000 && ReadBytes(log).find(after) == std::string::npos; ++i) ::usleep(10000);
        ::kill(child, signal);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        Said = ReadBytes(log);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    [[nodiscard]] bool Exists(const std::string& name) const {
        return ::access(Folder.File(name).c_str(), F_OK) == 0;
    }
    std::string Said;
};

const Arguments kForever{"--simulate=Roach40L", "--scene", "clocks", "--trigger", "30=1", "--timeout", "0"};

TEST_F(SignalTest, StopsTheInstrumentAndEndsWithCode130) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EQ(Interrupt(kForever, signal, "waiting for the trigger"), 130) << signal;
        EXPECT_NE(Said.find("zu-cli: interrupted; the instrument is stopped\n"), std::string::npos) << Said;
        EXPECT_FALSE(Exists("out.zu"));
    }
}

TEST_F(SignalTest, SavesWhatTheMemoryHoldsWhereThatIsForced) {
    EXPECT_EQ(Interrupt(With(kForever, {"--force"}), SIGINT, "waiting for the trigger"), 130);
    EXPECT_NE(Said.find("zu-cli: interrupted; what the memory holds is saved\nzu-cli: saved "),
              std::string::npos)
        << Said;
    const auto session = Load("out.zu");
    const SampleView pod = BindPod(session->State(), 0);
    int edges = 0;
    for (int i = 1; i < 1000; ++i) edges += (pod.At(i) & 8) != (pod.At(i - 1) & 8) ? 1 : 0;
    EXPECT_NEAR(edges, 200, 2) << "10 MHz at 100 MHz";
}

TEST_F(SignalTest, KeepsTheCapturesThatAreSavedAndCountsThem) {
    EXPECT_EQ(Interrupt(With(kCounters, {"--count", "1000000"}), SIGINT, "3/1000000: saved"), 130);
    int saved = 0;
    for (std::string name = "out-0000001.zu"; Exists(name); ++saved) {
        const std::string next = std::to_string(10000001 + saved + 1);
        name = "out-" + next.substr(1) + ".zu";
    }
    EXPECT_GE(saved, 3);
    EXPECT_NE(Said.find("interrupted; the instrument is stopped; " + std::to_string(saved) +
                        " of 1000000 captures are saved\n"),
              std::string::npos)
        << Said.substr(Said.size() - std::min<std::size_t>(Said.size(), 300)) << saved;
    EXPECT_EQ(BindPod(Load("out-0000003.zu")->State(), 0).At(1000), 0x40);
}

}  // namespace
}  // namespace zu::test
