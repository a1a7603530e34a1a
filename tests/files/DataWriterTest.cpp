// The bytes of a data file behind its settings text.
#include <gtest/gtest.h>

#include "LoadSupport.h"
#include "files/DataFile.h"
#include "files/SettingsWriter.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using test::ScriptedHost;
using test::StartState;
using test::TempFolder;
using namespace std::string_literals;

/// What a save writes behind the settings text.
std::string SavedTail(InstrumentState& state) {
    const TempFolder folder;
    ScriptedHost host;
    host.Clock = {2024, 12, 31, 23, 5, 9};
    EXPECT_TRUE(WriteDataFile(state, host, folder.File("x.zu")));
    EXPECT_EQ(folder.Count(), 1);
    const std::string bytes = test::ReadBytes(folder.File("x.zu"));
    const std::string settings = SettingsText(state, host);
    EXPECT_EQ(bytes.substr(0, settings.size()), settings);
    return bytes.substr(settings.size());
}

/// Text from the first record header on, without the bytes of the payloads.
std::vector<std::string> Headers(const std::string& tail) {
    std::vector<std::string> headers;
    for (std::size_t at = tail.find("\r\n[Data "); at != std::string::npos;
         at = tail.find("\r\n[Data ", at + 2)) {
        headers.push_back(tail.substr(at + 8, tail.find(']', at) - at - 8));
    }
    return headers;
}

TEST(WriteDataFile, WritesCommentModelRecordsAndEndMark) {
    auto state = StartState(16, 1);
    test::SetLengths(*state, 0);
    SetBufLenFull(state->Buffer.BufLen, 0, 3);
    SetBufLenFull(state->Buffer.BufLen, 2, 2);
    state->Memory.HardwareMode = 1;
    state->Memory.HardwareMux = -1;
    state->Pods.HardwarePod[2] = 1;
    std::copy_n("abc", 3, state->Buffer.Pod[0]);
    std::copy_n("[]\r", 3, state->Buffer.PatPod[0]);
    std::copy_n("no", 2, state->Buffer.Pod[2]);
    std::copy_n("\0z", 2, state->Buffer.PatPod[2]);
    EXPECT_EQ(SavedTail(*state),
              "\r\n[Comment File saved 12/31/2024 at 23:5:9]\r\n[Model Dace_32 1 -1]"
              "\r\n[Data D0 0 3]\r\nabc\r\n[Data PG0 0 3]\r\n[]\r"
              "\r\n[Data PG2 0 2]\r\n\0z\r\n[Settings]\r\n"s);
}

TEST(WriteDataFile, NamesTheModelByItsLabel) {
    for (int row = 0; row < kModelRows; ++row) {
        auto state = StartState(16);
        test::SetLengths(*state, 0);
        state->Identity.HardwareType = static_cast<std::uint8_t>(row);
        const std::string label(Model(row).FileLabel);
        EXPECT_NE(SavedTail(*state).find("\r\n[Model " + label + " 0 0]\r\n[Settings]\r\n"),
                  std::string::npos)
            << row;
        EXPECT_EQ(label.find(' '), std::string::npos);
        EXPECT_FALSE(label.empty());
    }
}

TEST(WriteDataFile, CutsBuffersInto32768Bytes) {
    using List = std::vector<std::string>;
    const std::pair<std::int32_t, List> kCases[] = {
        {1, {"D0 0 1", "PG0 0 1"}},
        {32767, {"D0 0 32767", "PG0 0 32767"}},
        {32768, {"D0 0 32768", "PG0 0 32768"}},
        {32769, {"D0 0 32768", "PG0 0 32768", "D0 32768 1", "PG0 32768 1"}},
        {65536, {"D0 0 32768", "PG0 0 32768", "D0 32768 32768", "PG0 32768 32768"}},
        {70000,
         {"D0 0 32768", "PG0 0 32768", "D0 32768 32768", "PG0 32768 32768", "D0 65536 4464",
          "PG0 65536 4464"}},
    };
    for (const auto& [length, headers] : kCases) {
        auto state = StartState(17, 1);
        test::SetLengths(*state, 0);
        SetBufLenFull(state->Buffer.BufLen, 0, length);
        EXPECT_EQ(Headers(SavedTail(*state)), headers) << length;
    }
}

TEST(WriteDataFile, StoresSamplesOfCapturingPodsAndPatternsOfAll) {
    auto state = StartState(13);
    test::SetLengths(*state, 4);
    for (std::size_t pod = 0; pod < 5; ++pod) state->Pods.HardwarePod[pod] = static_cast<std::int8_t>(pod);
    EXPECT_EQ(Headers(SavedTail(*state)),
              (std::vector<std::string>{"D0 0 4", "PG0 0 4", "PG1 0 4", "PG2 0 4", "D3 0 4", "PG3 0 4",
                                        "D4 0 4", "PG4 0 4"}));
    state->Pods.HardwarePod = {5, -1, 127, 1, 1};
    EXPECT_EQ(Headers(SavedTail(*state)),
              (std::vector<std::string>{"PG0 0 4", "PG1 0 4", "PG2 0 4", "PG3 0 4", "PG4 0 4"}));
}

TEST(WriteDataFile, WritesNothingForAnEmptyBuffer) {
    auto state = StartState(13);
    test::SetLengths(*state, 4);
    for (const int pod : {0, 1, 3, 4}) SetBufLenFull(state->Buffer.BufLen, pod, 0);
    state->Pods.HardwarePod[0] = 1;
    EXPECT_EQ(Headers(SavedTail(*state)), (std::vector<std::string>{"D2 0 4", "PG2 0 4"}));
}

TEST(WriteDataFile, WritesPayloadsStraightFromTheBuffers) {
    auto state = StartState(17, 1);
    test::SetLengths(*state, 70000);
    for (std::size_t pod = 0; pod < 3; ++pod) {
        for (std::size_t i = 0; i < 70000; ++i) {
            state->Buffer.Pod[pod][i] = static_cast<std::uint8_t>(i * 7 + pod);
            state->Buffer.PatPod[pod][i] = static_cast<std::uint8_t>(i * 11 + pod);
        }
    }
    const std::string tail = SavedTail(*state);
    const std::size_t at = tail.find("[Data PG2 65536 4464]\r\n");
    ASSERT_NE(at, std::string::npos);
    for (std::size_t i = 0; i < 4464; ++i) {
        ASSERT_EQ(static_cast<std::uint8_t>(tail[at + 23 + i]), state->Buffer.PatPod[2][65536 + i]);
    }
    EXPECT_EQ(tail.substr(at + 23 + 4464), "\r\n[Settings]\r\n");
}

TEST(WriteDataFile, KeepsClockType4InTheFile) {
    const TempFolder folder;
    auto state = StartState(16, 1);
    state->Clock.ClockType = 4;
    ScriptedHost host;
    EXPECT_TRUE(WriteDataFile(*state, host, folder.File("x.zu")));
    EXPECT_NE(test::ReadBytes(folder.File("x.zu")).find("\r\nType=4\r\n"), std::string::npos);
    EXPECT_EQ(state->Clock.ClockType, 5);
    EXPECT_EQ(host.Boxes.size(), 1U);
}

TEST(WriteDataFile, ThatDoesNotOpenLeavesTheStateAndSaysSoInTheStatusBarOnly) {
    auto state = StartState(16, 1);
    state->Clock.ClockType = 4;
    ScriptedHost host;
    EXPECT_FALSE(WriteDataFile(*state, host, "/no such folder/x.zu"));
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(host.Remarks.size(), 1U);
    EXPECT_EQ(state->Clock.ClockType, 4);
}

}  // namespace
}  // namespace zu
