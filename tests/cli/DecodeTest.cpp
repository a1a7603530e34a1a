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

TEST_P(DecodeSelect, SpiTransfersAreLines) {
    ZU_NEEDS_CAPTURES();
    const json oracle = OracleOf(GetParam(), "spi");
    const CliRun run =
        RunZuCli({"decode", Recording(GetParam()), "--group", std::to_string(oracle["group"].get<int>())});
    EXPECT_EQ(run.Code, 0) << run.Err;
    const auto lines = Lines(run.Out);
    ASSERT_EQ(lines.size(), oracle["cs_frames"].size());
    std::size_t n = 0;
    for (std::size_t t = 0; t < lines.size(); ++t) {
        std::string si = "  SI";
        std::string so = " | SO";
        for (auto left = oracle["cs_frames"][t]["bytes"].get<std::size_t>(); left > 0; --left, ++n) {
            si += ' ' + oracle["bytes"].at(n)["si"].get<std::string>();
            so += ' ' + oracle["bytes"].at(n)["so"].get<std::string>();
        }
        EXPECT_TRUE(lines[t].ends_with(si + so)) << lines[t];
        EXPECT_EQ(std::stoi(lines[t]), oracle["cs_frames"][t]["active_from"].get<int>());
    }
}

/// Eight bits as the other program tells them, read in the first sample behind the clock's edge.
int ByteAfterEdge(const json& found, const std::string& line) {
    return HexByte(found.contains(line + "_after") ? found[line + "_after"] : found[line]);
}

TEST(Decode, MicrowireBitsAreReadBehindTheClocksRise) {
    ZU_NEEDS_CAPTURES();
    const json oracle = OracleOf("microwire_93c66", "spi");
    const json transfers = Transfers("microwire_93c66", "0");
    ASSERT_EQ(transfers.size(), oracle["cs_frames"].size());
    std::size_t n = 0;
    for (std::size_t t = 0; t < transfers.size(); ++t) {
        const auto in = transfers[t]["dataIn"].get<std::string>();
        const auto out = transfers[t]["dataOut"].get<std::string>();
        const auto bytes = oracle["cs_frames"][t]["bytes"].get<std::size_t>();
        for (std::size_t b = 0; b < bytes; ++b, ++n) {
            const json& found = oracle["bytes"].at(n);
            EXPECT_EQ(std::stoi(in.substr(8 * b, 8), nullptr, 2), ByteAfterEdge(found, "si")) << n;
            EXPECT_EQ(std::stoi(out.substr(8 * b, 8), nullptr, 2), ByteAfterEdge(found, "so")) << n;
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
    EXPECT_EQ(
        run.Err,
        "zu-cli: group 0 is not set up as I2C, Microwire or SPI; no group of this file is: set one up in "
        "the Group setup of zu\n");
    EXPECT_EQ(RunZuCli({"decode", path, "--group", "30"}).Code, 2);
    EXPECT_EQ(RunZuCli({"decode", path, "--group", "-1"}).Code, 2);
    EXPECT_EQ(RunZuCli({"decode", WriteBytes(folder.File("a.ini"), SettingsBlock())}).Code, 2);
    EXPECT_EQ(RunZuCli({"decode", folder.File("missing.zu")}).Code, 1);
}

/// Two SPI groups, the second on a channel that no instrument has, an SPI group of three channels, and a bus
/// without a name.
std::string FileOfBuses(const TempFolder& folder) {
    std::string samples;
    for (int i = 0; i < 8192; ++i) {
        // Chip select is low from sample 30 on; then the clock runs with both lines high.
        samples += static_cast<char>(i < 30 ? 0x0E : i < 180 ? 0x06 + (i / 2) % 2 : 0x0E);
    }
    const std::string groups =
        "[Group0]\r\nN=FLASH\r\nL=0,1,2,3,\r\nS=4\r\nM=3\r\n[Group1]\r\nN=GONE\r\nL=200,1,2,3,\r\nS=4\r\n"
        "M=3\r\n[Group2]\r\nN=SHORT\r\nL=0,1,2,\r\nS=3\r\nM=4\r\n[Group3]\r\nN=\r\nL=8,9,\r\nS=2\r\nM=1\r\n"
        "[Group]\r\nTotGroups=4\r\n";
    return WriteBytes(folder.File("buses.zu"), DataFile(Record("D0", 0, samples), groups));
}

TEST(Decode, ABusShowsNoBytesOfAnother) {
    const TempFolder folder;
    const CliRun run = RunZuCli({"decode", FileOfBuses(folder), "--json"});
    EXPECT_EQ(run.Code, 0) << run.Err;
    const json transfers = json::parse(run.Out)["transfers"];
    ASSERT_EQ(transfers.size(), 2U) << run.Out;
    EXPECT_EQ(transfers[0]["group"], 0);
    EXPECT_GT(transfers[0]["bytes"].size(), 2U);
    EXPECT_EQ(transfers[1]["group"], 1);
    EXPECT_TRUE(transfers[1]["bytes"].empty()) << "its clock has no samples";
}

TEST(Decode, ARefusalNamesTheGroupsThatAreBuses) {
    const TempFolder folder;
    const std::string path = FileOfBuses(folder);
    EXPECT_EQ(RunZuCli({"decode", path, "--group", "7"}).Err,
              "zu-cli: group 7 is not set up as I2C, Microwire or SPI; groups that are: 0 (spi, FLASH), "
              "1 (spi, GONE), 3 (i2c)\n");
    const CliRun run = RunZuCli({"decode", path, "--group", "2"});
    EXPECT_EQ(run.Code, 2);
    EXPECT_EQ(run.Err,
              "zu-cli: group 2 is an SPI group of 3 channels and needs 4: clock, SI, SO, chip select\n");
}

TEST(Decode, WithoutABusThereIsNothingToPrint) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile(""));
    const CliRun run = RunZuCli({"decode", path});
    EXPECT_EQ(run.Code, 0);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(
        run.Err,
        "zu-cli: no group of this file is set up as I2C, Microwire or SPI: set one up in the Group setup "
        "of zu\n");
    EXPECT_TRUE(json::parse(RunZuCli({"decode", path, "--json"}).Out)["transfers"].empty());
}

}  // namespace
}  // namespace zu::test
