// Bus traffic as zu-cli prints it, against what another program decoded from the same recordings.
#include <algorithm>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliSupport.h"
#include "support/Captures.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

using nlohmann::json;

json OracleOf(const std::string& name, const std::string& kind) {
    const json oracle = json::parse(ReadBytes(CapturePath(name + ".oracle.json")));
    for (const json& decode : oracle["decodes"]) {
        if (decode["kind"] == kind) return decode;
    }
    return {};
}

std::string Recording(const std::string& name) {
    return CapturePath(name + ".zu").string();
}

json Transfers(const std::string& name, const std::string& group) {
    const CliRun run = RunZuCli({"decode", Recording(name), "--json", "--group", group});
    EXPECT_EQ(run.Code, 0) << run.Err;
    return json::parse(run.Out)["transfers"];
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

int HexByte(const json& text) {
    return static_cast<int>(std::stoul(text.get<std::string>(), nullptr, 16));
}

class DecodeI2c : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(, DecodeI2c, testing::Values("i2c_eeprom_page_write", "i2c_rtc_ds3231"),
                         [](const auto& capture) { return std::string(capture.param); });

/// The line that the other program's transfer makes; a byte without an acknowledge was cut and is left out.
std::string ExpectedLine(const json& found) {
    std::string text = found["repeated"].get<bool>() ? "Sr " : "S ";
    text += found["address"].get<std::string>() + (found["rw"] == "read" ? " R " : " W ");
    text += found["address_ack"] == "ack" ? "ACK" : "NACK";
    for (const json& data : found["data"]) {
        if (!data.contains("ack")) continue;
        text += " | " + data["byte"].get<std::string>() + (data["ack"] == "ack" ? " ACK" : " NACK");
    }
    return found.contains("stop") ? text + " | P" : text;
}

TEST_P(DecodeI2c, EveryTransferIsALine) {
    ZU_NEEDS_CAPTURES();
    const json expected = OracleOf(GetParam(), "i2c")["transactions"];
    const CliRun run = RunZuCli({"decode", Recording(GetParam())});
    EXPECT_EQ(run.Code, 0) << run.Err;
    const auto lines = Lines(run.Out);
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t t = 0; t < lines.size(); ++t) {
        const std::string text = ExpectedLine(expected[t]);
        EXPECT_EQ(std::stoi(lines[t]), expected[t]["start"].get<int>());
        ASSERT_GT(lines[t].size(), text.size());
        EXPECT_EQ(lines[t].substr(lines[t].size() - text.size() - 2), "  " + text);
    }
}

TEST_P(DecodeI2c, JsonHasEverySample) {
    ZU_NEEDS_CAPTURES();
    const json oracle = OracleOf(GetParam(), "i2c");
    const json transfers = Transfers(GetParam(), "0");
    std::vector<int> marks;
    for (const json& found : oracle["events"]) {
        const std::string kind = found["kind"];
        if (kind == "ack" || kind == "nack") marks.push_back(found["clock_fall"].get<int>());
    }
    std::vector<int> printed;
    for (const json& transfer : transfers) {
        for (const json& byte : transfer["bytes"]) printed.push_back(byte["ackSample"].get<int>());
    }
    EXPECT_EQ(printed, marks);
    ASSERT_EQ(transfers.size(), oracle["transactions"].size());
    for (std::size_t t = 0; t < transfers.size(); ++t) {
        const json& found = oracle["transactions"][t];
        EXPECT_EQ(transfers[t]["start"], found["start"]);
        EXPECT_EQ(transfers[t]["end"], found.contains("stop") ? found["stop"] : json());
        EXPECT_EQ(transfers[t]["repeated"], found["repeated"]);
        EXPECT_EQ(transfers[t]["bus"], "i2c");
    }
}

class DecodeSelect : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(, DecodeSelect,
                         testing::Values("spi_flash_read64", "spi_accel_mode3", "microwire_93c66"),
                         [](const auto& capture) { return std::string(capture.param); });

TEST_P(DecodeSelect, SpiPeriodsAndBytesAreTheOracles) {
    ZU_NEEDS_CAPTURES();
    const json oracle = OracleOf(GetParam(), "spi");
    const json transfers = Transfers(GetParam(), std::to_string(oracle["group"].get<int>()));
    ASSERT_EQ(transfers.size(), oracle["cs_frames"].size());
    std::size_t n = 0;
    for (std::size_t t = 0; t < transfers.size(); ++t) {
        EXPECT_EQ(transfers[t]["start"], oracle["cs_frames"][t]["active_from"]);
        EXPECT_EQ(transfers[t]["end"], oracle["cs_frames"][t]["active_to"]);
        EXPECT_EQ(transfers[t]["bytes"].size(), oracle["cs_frames"][t]["bytes"].get<std::size_t>());
        for (const json& byte : transfers[t]["bytes"]) {
            const json& found = oracle["bytes"].at(n++);
            EXPECT_EQ(byte["sample"].get<int>(), found["first_edge"].get<int>() - 1);
            EXPECT_EQ(byte["lastSample"].get<int>(), found["last_edge"].get<int>() - 1);
            EXPECT_EQ(byte["si"].get<int>(), HexByte(found["si"]));
            EXPECT_EQ(byte["so"].get<int>(), HexByte(found["so"]));
        }
    }
    EXPECT_EQ(n, oracle["bytes"].size());
}

TEST(Decode, MicrowirePeriodsHaveABitForEachClock) {
    ZU_NEEDS_CAPTURES();
    const json oracle = OracleOf("microwire_93c66", "spi");
    const json transfers = Transfers("microwire_93c66", "0");
    ASSERT_EQ(transfers.size(), oracle["cs_frames"].size());
    for (std::size_t t = 0; t < transfers.size(); ++t) {
        EXPECT_EQ(transfers[t]["start"], oracle["cs_frames"][t]["active_from"]);
        const auto clocks = oracle["cs_frames"][t]["clocks"].get<std::size_t>();
        EXPECT_EQ(transfers[t]["dataIn"].get<std::string>().size(), clocks);
        EXPECT_EQ(transfers[t]["dataOut"].get<std::string>().size(), clocks);
    }
    // A start bit and the two bits of the opcode for a read.
    EXPECT_EQ(transfers[0]["dataIn"].get<std::string>().substr(0, 3), "110");
}

TEST(Decode, SeveralBusesComeInTimeOrder) {
    ZU_NEEDS_CAPTURES();
    const CliRun run = RunZuCli({"decode", Recording("microwire_93c66")});
    EXPECT_EQ(run.Code, 0) << run.Err;
    const auto lines = Lines(run.Out);
    EXPECT_EQ(lines.size(), 24U);
    EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end(), [](const auto& left, const auto& right) {
        return std::stoi(left) < std::stoi(right);
    }));
}

TEST(Decode, AGroupMustBeABus) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile(""));
    const CliRun run = RunZuCli({"decode", path, "--group", "0"});
    EXPECT_EQ(run.Code, 2);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Err, "zu-cli: group 0 is not set up as I2C, Microwire or SPI\n");
    EXPECT_EQ(RunZuCli({"decode", path, "--group", "30"}).Code, 2);
    EXPECT_EQ(RunZuCli({"decode", path, "--group", "-1"}).Code, 2);
    EXPECT_EQ(RunZuCli({"decode", WriteBytes(folder.File("a.ini"), SettingsBlock())}).Code, 2);
    EXPECT_EQ(RunZuCli({"decode", folder.File("missing.zu")}).Code, 1);
}

TEST(Decode, WithoutABusThereIsNothingToPrint) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile(""));
    const CliRun run = RunZuCli({"decode", path});
    EXPECT_EQ(run.Code, 0);
    EXPECT_EQ(run.Out, "");
    EXPECT_TRUE(json::parse(RunZuCli({"decode", path, "--json"}).Out)["transfers"].empty());
}

}  // namespace
}  // namespace zu::test
