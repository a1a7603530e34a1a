// Recordings of real buses, against what another program found in them.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "LoadSupport.h"
#include "state/SampleView.h"
#include "support/Captures.h"
#include "support/Sha256.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using nlohmann::json;

class CaptureFiles : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        ZU_NEEDS_CAPTURES();
        path_ = test::CapturePath(std::string(GetParam()) + ".zu").string();
        oracle_ = json::parse(test::ReadBytes(test::CapturePath(std::string(GetParam()) + ".oracle.json")));
    }

    std::string path_;
    json oracle_;
};

INSTANTIATE_TEST_SUITE_P(, CaptureFiles, testing::ValuesIn(test::kCaptures),
                         [](const auto& capture) { return std::string(capture.param); });

struct Loaded {
    std::unique_ptr<InstrumentState> State;
    test::ScriptedHost Host;
    LoadStatus Status = LoadStatus::Failed;

    Loaded(int row, const std::string& path) : State(test::StartState(row)) {
        test::Loader loader{*State, Host};
        Status = loader.Load(path);
    }
};

TEST_P(CaptureFiles, LoadWithoutAMessageOnTheirOwnModel) {
    const int row = HardwareTypeOfFile(path_).value_or(-1);
    EXPECT_EQ(row == 13 || row == 15, true);
    const Loaded loaded(row, path_);
    EXPECT_EQ(loaded.Status, LoadStatus::Loaded);
    EXPECT_TRUE(loaded.Host.Boxes.empty());
    EXPECT_EQ(loaded.State->Memory.BufferLen, oracle_["samples"].get<int>());
    EXPECT_EQ(loaded.State->Clock.ClockRate, oracle_["file_rate_code"].get<int>());
}

TEST_P(CaptureFiles, BringEveryBufferBack) {
    Loaded loaded(*HardwareTypeOfFile(path_), path_);
    ASSERT_FALSE(oracle_["buffers"].empty());
    for (const auto& [index, buffer] : oracle_["buffers"].items()) {
        const int pod = std::stoi(index);
        EXPECT_EQ(loaded.State->Buffer.Samples(pod).size(), buffer["bytes"].get<std::size_t>());
        EXPECT_EQ(test::Sha256::Of(loaded.State->Buffer.Samples(pod)), buffer["sample_sha256"])
            << "pod " << pod;
        EXPECT_EQ(test::Sha256::Of(loaded.State->Buffer.Pattern(pod)), buffer["pattern_sha256"])
            << "pod " << pod;
        EXPECT_EQ(loaded.State->Pods.AdjAddr[static_cast<std::size_t>(pod)], buffer["first_display_sample"]);
    }
}

struct Trace {
    int Initial = 0, Ones = 0, Rising = 0, Falling = 0, First = -1, Last = -1;
};

Trace Follow(const InstrumentState& state, int channel) {
    const SampleView view = BindChannel(state, channel);
    const auto level = [&view, channel](std::int32_t i) { return (view.At(i) >> (channel % 8)) & 1; };
    Trace trace;
    trace.Initial = trace.Ones = level(0);
    for (std::int32_t i = 1; i < view.Shown; ++i) {
        const int now = level(i);
        trace.Ones += now;
        if (now == level(i - 1)) continue;
        ++(now == 1 ? trace.Rising : trace.Falling);
        if (trace.First < 0) trace.First = i;
        trace.Last = i;
    }
    return trace;
}

int Number(const json& value) {
    return value.is_null() ? -1 : value.get<int>();
}

TEST_P(CaptureFiles, ShowTheEdgesOfEveryChannel) {
    const Loaded loaded(*HardwareTypeOfFile(path_), path_);
    ASSERT_FALSE(oracle_["channels"].empty());
    for (const auto& [number, expected] : oracle_["channels"].items()) {
        const int channel = std::stoi(number);
        const Trace trace = Follow(*loaded.State, channel);
        EXPECT_EQ(loaded.State->Channels.ChannelName[static_cast<std::size_t>(channel)].View(),
                  expected["name"].get<std::string>());
        EXPECT_EQ(trace.Initial, expected["initial"].get<int>()) << channel;
        EXPECT_EQ(trace.Ones, expected["ones"].get<int>()) << channel;
        EXPECT_EQ(trace.Rising, expected["rising"].get<int>()) << channel;
        EXPECT_EQ(trace.Falling, expected["falling"].get<int>()) << channel;
        EXPECT_EQ(trace.First, Number(expected["first_change"])) << channel;
        EXPECT_EQ(trace.Last, Number(expected["last_change"])) << channel;
    }
}

/// Sets the clock to the saving time of a file.
LocalTime SavingTime(const std::string& bytes) {
    LocalTime time;
    const std::size_t at = bytes.find("[Comment File saved ");
    std::sscanf(bytes.c_str() + at, "[Comment File saved %d/%d/%d at %d:%d:%d]", &time.Month, &time.Day,
                &time.Year, &time.Hour, &time.Minute, &time.Second);
    return time;
}

/// Where the settings text of a data file ends.
std::size_t EndOfSettings(const std::string& bytes) {
    return bytes.find("\r\n[Comment ");
}

/// Settings with the ninth character of the clock words, which no reader brings back, in the form that a load
/// leaves.
std::string AfterALoad(std::string text) {
    for (std::size_t at = text.find("=XXXXXXXXX\r\n"); at != std::string::npos;
         at = text.find("=XXXXXXXXX\r\n")) {
        text[at + 9] = 'x';
    }
    return text;
}

TEST_P(CaptureFiles, AreSavedByteForByte) {
    Loaded loaded(*HardwareTypeOfFile(path_), path_);
    const test::TempFolder folder;
    const std::string original = test::ReadBytes(path_);
    loaded.Host.Clock = SavingTime(original);
    ASSERT_TRUE(WriteDataFile(*loaded.State, loaded.Host, folder.File("again.zu")));
    const std::string again = test::ReadBytes(folder.File("again.zu"));
    EXPECT_TRUE(again.substr(EndOfSettings(again)) == original.substr(EndOfSettings(original)));
    EXPECT_EQ(again.substr(0, EndOfSettings(again)), AfterALoad(original.substr(0, EndOfSettings(original))));
}

TEST_P(CaptureFiles, AskOnAnotherModelAndLoadWhatFits) {
    const int row = *HardwareTypeOfFile(path_);
    Loaded own(row, path_);
    Loaded other(row == 13 ? 15 : 13, path_);
    ASSERT_GE(other.Host.Boxes.size(), 2U);
    EXPECT_EQ(other.Host.Boxes[0].Caption, "Warning");
    EXPECT_EQ(other.Host.Boxes[1], (test::ScriptedHost::Box{"", "Software running in Demo mode"}));
    EXPECT_EQ(other.State->Identity.Emulated, 1);
    const bool larger = row == 15;
    ASSERT_EQ(other.Host.Boxes.size(), larger ? 3U : 2U);
    if (larger) {
        EXPECT_EQ(other.Host.Boxes[2],
                  (test::ScriptedHost::Box{"Data buffer not available with this hardware.",
                                           "File Load Error(10)"}));
    }
    for (int pod = 0; pod < 5; ++pod) {
        EXPECT_TRUE(std::ranges::equal(other.State->Buffer.Samples(pod), own.State->Buffer.Samples(pod)));
    }
}

TEST_P(CaptureFiles, LeaveEverythingOnAnotherModelWhenTheUserAborts) {
    auto state = test::StartState(16);
    test::ScriptedHost host;
    host.Answers = {true};
    test::Loader loader{*state, host};
    EXPECT_EQ(loader.Load(path_), LoadStatus::Loaded);
    EXPECT_EQ(host.Boxes.size(), 1U);
    EXPECT_TRUE(loader.Log.empty());
    EXPECT_EQ(state->Channels.ChannelName[0], "Pod 1A Ch 0");
}

}  // namespace
}  // namespace zu
