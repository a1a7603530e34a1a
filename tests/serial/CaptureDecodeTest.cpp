// Recordings of real buses, against what another program decoded from them.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "files/LoadSupport.h"
#include "serial/EventText.h"
#include "serial/I2cDecoder.h"
#include "serial/MicrowireDecoder.h"
#include "serial/SpiDecoder.h"
#include "serial/SpiRows.h"
#include "serial/Transfers.h"
#include "support/Captures.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using nlohmann::json;

struct Recording {
    explicit Recording(const std::string& name) : Name(name) {
        const std::string path = test::CapturePath(name + ".zu").string();
        State = test::StartState(HardwareTypeOfFile(path).value_or(15));
        test::Loader loader{*State, Host};
        EXPECT_EQ(loader.Load(path), LoadStatus::Loaded);
        ResizeDecodeBuffers(*State);
        const json oracle = json::parse(test::ReadBytes(test::CapturePath(name + ".oracle.json")));
        for (const json& decode : oracle["decodes"]) {
            (decode["kind"] == "generic" ? Annotated : Bus) = decode;
        }
    }

    std::string Name;
    std::unique_ptr<InstrumentState> State;
    test::ScriptedHost Host;
    json Bus;        ///< what the other program found
    json Annotated;  ///< the same of a bus that it knows by annotations only
};

unsigned HexByte(const json& text) {
    return static_cast<unsigned>(std::stoul(text.get<std::string>(), nullptr, 16));
}

class I2cRecordings : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(, I2cRecordings, testing::Values("i2c_eeprom_page_write", "i2c_rtc_ds3231"),
                         [](const auto& capture) { return std::string(capture.param); });

/// Starts, stops and acknowledges with their samples. The map has no acknowledge for a byte that the other
/// program found unfinished at the end of the recording, and neither has that program.
TEST_P(I2cRecordings, StartsStopsAndAcknowledgesStandAtTheirSamples) {
    ZU_NEEDS_CAPTURES();
    const Recording recording(GetParam());
    ASSERT_TRUE(DecodeI2C(*recording.State));
    std::vector<std::pair<int, int>> expected;
    for (const json& found : recording.Bus["events"]) {
        const std::string kind = found["kind"];
        if (kind == "start" || kind == "repeat-start") expected.emplace_back(found["sample"].get<int>(), 1);
        if (kind == "stop") expected.emplace_back(found["sample"].get<int>(), 2);
        if (kind == "ack") expected.emplace_back(found["clock_fall"].get<int>(), 15);
        if (kind == "nack") expected.emplace_back(found["clock_fall"].get<int>(), 16);
    }
    std::vector<std::pair<int, int>> marks;
    const auto& events = recording.State->Serial.SerialEvents;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const int code = events[i];
        if (code != 0 && code != 3 && code != 4) marks.emplace_back(static_cast<int>(i), code);
    }
    EXPECT_EQ(marks, expected);
    EXPECT_GT(expected.size(), 50U);
}

TEST_P(I2cRecordings, EveryByteIsTheText) {
    ZU_NEEDS_CAPTURES();
    const Recording recording(GetParam());
    ASSERT_TRUE(DecodeI2C(*recording.State));
    unsigned byte = 0;
    int bytes = 0;
    for (const json& found : recording.Bus["events"]) {
        const std::string kind = found["kind"];
        if (kind == "address" || kind == "data") byte = HexByte(found["byte"]);
        if (kind != "ack" && kind != "nack") continue;
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%s(Val=0x%X)", kind == "ack" ? "ACK" : "NACK", byte);
        EXPECT_EQ(SerialRowText(*recording.State, found["clock_fall"].get<int>()), text.data());
        ++bytes;
    }
    EXPECT_GT(bytes, 50);
}

TEST_P(I2cRecordings, TransfersAreTheOracles) {
    ZU_NEEDS_CAPTURES();
    const Recording recording(GetParam());
    DecodeI2C(*recording.State);
    const auto transfers = I2cTransfers(*recording.State);
    const json& expected = recording.Bus["transactions"];
    ASSERT_EQ(transfers.size(), expected.size());
    for (std::size_t t = 0; t < transfers.size(); ++t) {
        const json& found = expected[t];
        EXPECT_EQ(transfers[t].Start, found["start"].get<int>());
        EXPECT_EQ(transfers[t].Repeated, found["repeated"].get<bool>());
        EXPECT_EQ(transfers[t].Stop, found.value("stop", -1));
        const bool reads = found["rw"] == "read";
        const unsigned address = HexByte(found["address"]) << 1U | (reads ? 1U : 0U);
        ASSERT_FALSE(transfers[t].Bytes.empty());
        EXPECT_EQ(transfers[t].Bytes[0].Value, address);
        EXPECT_EQ(transfers[t].Bytes[0].Acked, found["address_ack"] == "ack");
        std::size_t whole = 0;
        for (const json& data : found["data"]) {
            if (!data.contains("ack")) continue;
            ++whole;
            ASSERT_LT(whole, transfers[t].Bytes.size());
            EXPECT_EQ(transfers[t].Bytes[whole].Value, HexByte(data["byte"]));
            EXPECT_EQ(transfers[t].Bytes[whole].Acked, data["ack"] == "ack");
        }
        EXPECT_EQ(transfers[t].Bytes.size(), whole + 1);
    }
}

TEST(CutI2cRecording, TheTransferThatTheRecordingCutsKeepsItsBits) {
    ZU_NEEDS_CAPTURES();
    const Recording recording("i2c_rtc_ds3231");
    DecodeI2C(*recording.State);
    const auto& events = recording.State->Serial.SerialEvents;
    // Behind the last acknowledge, at 4930, stand the bits of a byte whose acknowledge was not recorded.
    std::vector<int> rest;
    for (std::size_t i = 4931; i < events.size(); ++i) {
        if (events[i] != 0) rest.push_back(events[i]);
    }
    EXPECT_EQ(rest, std::vector<int>(8, 3));
    EXPECT_EQ(recording.State->Serial.SerialFirst, 50) << "a fall of the clock before the first transfer";
    EXPECT_EQ(recording.State->Serial.SerialGroup, 0);
}

struct SpiCase {
    const char* Name;
    int Bytes;
};
void PrintTo(const SpiCase& spiCase, std::ostream* out) {
    *out << spiCase.Name;
}

class SpiRecordings : public testing::TestWithParam<SpiCase> {};
INSTANTIATE_TEST_SUITE_P(, SpiRecordings,
                         testing::Values(SpiCase{"spi_flash_read64", 68}, SpiCase{"spi_accel_mode3", 14},
                                         SpiCase{"microwire_93c66", 299}),
                         [](const auto& capture) { return std::string(capture.param.Name); });

TEST_P(SpiRecordings, BytesAndTheirSamplesAreTheOracles) {
    ZU_NEEDS_CAPTURES();
    const Recording recording(GetParam().Name);
    ASSERT_TRUE(DecodeSPI(*recording.State));
    EXPECT_EQ(SpiGroup(*recording.State, 0), recording.Bus["group"].get<int>());
    std::int32_t from = 0;
    for (const json& found : recording.Bus["bytes"]) {
        const auto byte = NextSpiByte(*recording.State, 0, from);
        ASSERT_TRUE(byte) << found["n"];
        // The marks stand at the samples before the edges, where the lines are read.
        EXPECT_EQ(byte->Start, found["first_edge"].get<int>() - 1) << found["n"];
        EXPECT_EQ(byte->End, found["last_edge"].get<int>() - 1) << found["n"];
        EXPECT_EQ(byte->Si, HexByte(found["si"])) << found["n"];
        EXPECT_EQ(byte->So, HexByte(found["so"])) << found["n"];
        from = byte->Start + 1;
    }
    EXPECT_FALSE(NextSpiByte(*recording.State, 0, from));
    EXPECT_EQ(static_cast<int>(recording.Bus["bytes"].size()), GetParam().Bytes);
    EXPECT_EQ(recording.State->Serial.SpiFirst, recording.Bus["bytes"].front()["first_edge"].get<int>() - 1);
    EXPECT_EQ(recording.State->Serial.SpiLast, recording.Bus["bytes"].back()["first_edge"].get<int>() - 1);
}

// Another program lists 400 Microwire bits here. This decoder stores none: it reads the first chip select
// period and keeps the last code in a working byte, so that the views list cursors only.
TEST(MicrowireRecording, GivesTheLastBitOfTheFirstCommandAndAnEmptyMap) {
    ZU_NEEDS_CAPTURES();
    const Recording recording("microwire_93c66");
    recording.State->Serial.SerialGroup = 0;
    std::string last;
    for (const json& found : recording.Annotated["annotations"]) {
        const std::string text = found["text"];
        if (found["first"] < recording.Bus["cs_frames"][0]["active_to"] && text.starts_with("SI bit"))
            last = text;
    }
    EXPECT_EQ(DecodeMicrowire(*recording.State), last == "SI bit: 1" ? 26 : 27) << last;
    EXPECT_FALSE(last.empty());
    const auto& events = recording.State->Serial.SerialEvents;
    EXPECT_EQ(std::count(events.begin(), events.end(), 0), static_cast<std::ptrdiff_t>(events.size()));
}

}  // namespace
}  // namespace zu
