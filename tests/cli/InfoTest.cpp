// What zu-cli tells of a file.
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliSupport.h"
#include "support/Captures.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

using nlohmann::json;

json InfoJson(const std::string& path) {
    const CliRun run = RunZuCli({"info", "--json", path});
    return json::parse(run.Out);
}

const std::string kGroups =
    "\r\n[Group0]\r\nM=0\r\nN=bus\r\nS=3\r\nL=2,1,0,\r\n"
    "\r\n[Group4]\r\nM=1\r\nN=wires\r\nS=2\r\nL=8,9,\r\n"
    "\r\n[Group]\r\nTotGroups=2\r\n"
    "\r\n[ChannelData]\r\nN0=clk\r\nN2=d\xB5ta\r\nI2=1\r\n";

TEST(Info, TellsTheHeadOfAFile) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile(Record("D0", 0, "abc")));
    const CliRun run = RunZuCli({"info", path});
    EXPECT_EQ(run.Code, 0);
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out,
              "File      " + path +
                  "\n"
                  "Saved     2/29/2024 at 23:59:1\n"
                  "Version   192\n"
                  "Model     Roach40LB (Roach40LB-128K, row 13), 40 channels\n"
                  "Clock     20 MSa  (50 ns), a sample every 50 ns\n"
                  "Memory    Small memory (mode 0, mux 0), 8192 samples a channel, 8192 shown at most\n"
                  "Pods      0-4: Logic, 8192 samples\n"
                  "Channels  all with the model's own names\n"
                  "Groups    0: Group 1, Normal, channels 0 1 2 3 4 5 6 7\n"
                  "          1: Group 2, Normal, channels 8 9 10 11 12 13 14 15\n"
                  "          2: Group 3, Normal, channels 16 17 18 19 20 21 22 23\n"
                  "          3: Group 4, Normal, channels 24 25 26 27 28 29 30 31\n"
                  "          4: Group 5, Normal, channels 32 33 34 35 36 37 38 39\n"
                  "Records   1\n"
                  "Ranges    D0: 3 bytes from 0 on\n"
                  "Problems  none\n");
}

TEST(Info, TellsGroupsAndRenamedChannels) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile("", kGroups));
    const CliRun run = RunZuCli({"info", path});
    EXPECT_NE(run.Out.find("Channels  0: clk\n          2: d\xC2\xB5ta (inverted)\nGroups"),
              std::string::npos)
        << run.Out;
    EXPECT_NE(
        run.Out.find("Groups    0: bus, Normal, channels 2 1 0\n          4: wires, I2C, channels 8 9\nRec"),
        std::string::npos)
        << run.Out;
}

TEST(Info, TellsPodsThatDiffer) {
    const TempFolder folder;
    const std::string pods = "Pod1=1\r\nPod2=2\r\nPod3=3\r\nPod4=77\r\n\r\n[Trigger]\r\nAdjAddr0=40\r\n";
    const CliRun run = RunZuCli({"info", WriteBytes(folder.File("a.zu"), DataFile("", pods))});
    EXPECT_NE(run.Out.find("Pods      0: Logic, 8192 samples, shown from 40 on\n"
                           "          1: Pat Gen, 8192 samples\n"
                           "          2: Pat Gen (II), 8192 samples\n"
                           "          3: Transfer off, 8192 samples\n"
                           "          4: unknown, 8192 samples\n"),
              std::string::npos)
        << run.Out;
}

TEST(Info, JoinsRangesOfNeighbours) {
    const TempFolder folder;
    const std::string records = Record("D0", 0, "ab") + Record("PG0", 0, "ab") + Record("D0", 2, "cd") +
                                Record("PG0", 2, "cd") + Record("D1", 0, "abcd") + Record("PG1", 0, "abcd") +
                                Record("D3", 0, "abcd");
    const CliRun run = RunZuCli({"info", WriteBytes(folder.File("a.zu"), DataFile(records))});
    EXPECT_NE(run.Out.find("Records   7\n"
                           "Ranges    D0-D1: 4 bytes from 0 on\n"
                           "          D3: 4 bytes from 0 on\n"
                           "          PG0-PG1: 4 bytes from 0 on\n"),
              std::string::npos)
        << run.Out;
}

TEST(Info, ReadsSettingsFilesToo) {
    const TempFolder folder;
    const CliRun run = RunZuCli({"info", WriteBytes(folder.File("a.INI"), SettingsBlock(kGroups))});
    EXPECT_EQ(run.Code, 0) << run.Err;
    EXPECT_NE(run.Out.find("Records   0\nProblems  none\n"), std::string::npos) << run.Out;
}

TEST(Info, WritesJson) {
    const TempFolder folder;
    const std::string path =
        WriteBytes(folder.File("a.zu"), DataFile(Record("D0", 5, "abc") + Record("PG0", 5, "abc"), kGroups));
    const CliRun run = RunZuCli({"info", path, "--json"});
    EXPECT_EQ(run.Code, 0);
    const json info = json::parse(run.Out);
    EXPECT_EQ(info["file"], path);
    EXPECT_EQ(info["saved"], "2/29/2024 at 23:59:1");
    EXPECT_EQ(info["version"], 192);
    EXPECT_EQ(info["model"], json({{"row", 13},
                                   {"name", "Roach40LB"},
                                   {"label", "Roach40LB-128K"},
                                   {"channels", 40},
                                   {"boards", 1}}));
    EXPECT_EQ(info["clock"],
              json({{"type", 0}, {"rateCode", 7}, {"rate", "20 MSa  (50 ns)"}, {"periodNs", 50}}));
    EXPECT_EQ(info["memory"]["samplesPerChannel"], 8192);
    EXPECT_EQ(info["pods"].size(), 5U);
    ASSERT_EQ(info["channels"].size(), 40U);
    EXPECT_EQ(info["channels"][2],
              json({{"channel", 2}, {"name", "d\xC2\xB5ta"}, {"renamed", true}, {"inverted", true}}));
    EXPECT_EQ(info["channels"][1]["renamed"], false);
    EXPECT_EQ(
        info["groups"][1],
        json({{"group", 4}, {"name", "wires"}, {"mode", 1}, {"modeText", "I2C"}, {"channels", {8, 9}}}));
    EXPECT_EQ(info["records"][1], json({{"target", "PG0"}, {"first", 5}, {"count", 3}}));
    EXPECT_EQ(info["problems"], json::array());
}

TEST(Info, SaysNothingOfAPeriodThatIsUnknown) {
    const TempFolder folder;
    std::string bytes = DataFile("");
    bytes.replace(bytes.find("[Clock]\r\nRateStg=20 MSa  (50 ns)\r\nType=0"), 40,
                  "[Clock]\r\nRateStg=20 MSa  (50 ns)\r\nType=1");
    const std::string path = WriteBytes(folder.File("a.zu"), bytes);
    const json info = InfoJson(path);
    EXPECT_EQ(info["clock"]["periodNs"], nullptr);
    EXPECT_EQ(info["clock"]["rate"], "ext.");
    EXPECT_NE(RunZuCli({"info", path}).Out.find("Clock     ext., a sample every unknown"), std::string::npos);
}

TEST(Info, TellsProblemsAndEndsWithCode1) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile(Record("D9", 0, "abc")));
    const CliRun run = RunZuCli({"info", path});
    EXPECT_EQ(run.Code, 1);
    const std::string problem = "File Load Error(10): Data buffer not available with this hardware.\n";
    EXPECT_EQ(run.Err, "zu-cli: " + problem);
    EXPECT_NE(run.Out.find("Problems  " + problem), std::string::npos) << run.Out;
    EXPECT_EQ(InfoJson(path)["problems"],
              json::array({{{"caption", "File Load Error(10)"},
                            {"text", "Data buffer not available with this hardware."}}}));
}

TEST(Info, TellsAProblemThatHasACaptionOnly) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("a.zu"), SettingsBlock() + "\r\n[Model]\r\n");
    EXPECT_EQ(RunZuCli({"info", path}).Err, "zu-cli: File Load Error(1)\n");
}

TEST(Info, SurvivesARowThatHasNoShape) {
    const TempFolder folder;
    std::string bytes = DataFile("");
    bytes.replace(bytes.find("Type=13"), 7, "Type=21");
    const CliRun run = RunZuCli({"info", WriteBytes(folder.File("a.zu"), bytes)});
    EXPECT_EQ(run.Code, 1);
    EXPECT_NE(run.Out.find("Roach160LB"), std::string::npos) << run.Out;
    EXPECT_NE(run.Err.find("does not match the installed hardware"), std::string::npos) << run.Err;
}

TEST(Info, CannotReadWhatIsNotThere) {
    const TempFolder folder;
    for (const std::string& path : {folder.File("missing.zu"), folder.File("missing.ini")}) {
        const CliRun run = RunZuCli({"info", path});
        EXPECT_EQ(run.Code, 1);
        EXPECT_EQ(run.Out, "");
        EXPECT_EQ(run.Err, "zu-cli: " + path + ": cannot be read\n");
    }
    std::filesystem::create_directory(folder.File("folder.zu"));
    EXPECT_EQ(RunZuCli({"info", folder.File("folder.zu")}).Code, 1);
}

TEST(Info, TakesDataAndSettingsFilesOnly) {
    const TempFolder folder;
    for (const char* name : {"a.csv", "a.zxt", "a", "zu"}) {
        const CliRun run = RunZuCli({"info", WriteBytes(folder.File(name), DataFile(""))});
        EXPECT_EQ(run.Code, 2) << name;
        EXPECT_NE(run.Err.find("neither a data file"), std::string::npos) << run.Err;
    }
}

TEST(Info, LetsNoNamePlayTricksOnTheTerminal) {
    const TempFolder folder;
    const std::string names = "\r\n[ChannelData]\r\nN0=\x1B[2Jred\x07\x9B\r\n";
    const std::string path = WriteBytes(folder.File("a.zu"), DataFile("", names));
    const std::string out = RunZuCli({"info", path}).Out;
    EXPECT_NE(out.find("0: .[2Jred..\n"), std::string::npos) << out;
    EXPECT_EQ(out.find('\x1B'), std::string::npos);
    EXPECT_EQ(InfoJson(path)["channels"][0]["name"], "\x1B[2Jred\x07\xC2\x9B") << "programs get every byte";
}

TEST(InfoOfExamples, HasNoProblems) {
    const CliRun run = RunZuCli({"info", ZU_EXAMPLES "/bus.zu"});
    EXPECT_EQ(run.Code, 0) << run.Err;
    EXPECT_NE(run.Out.find("2: FLASH, SPI(Mode0), channels 16 17 18 19"), std::string::npos) << run.Out;
}

TEST(InfoOfRecordings, TellsWhatTheirNotesSay) {
    ZU_NEEDS_CAPTURES();
    for (const std::string name : kCaptures) {
        const json note = json::parse(std::ifstream(CapturePath(name + ".note.json")));
        const std::string path = CapturePath(name + ".zu").string();
        const CliRun run = RunZuCli({"info", "--json", path});
        EXPECT_EQ(run.Code, 0) << name << ": " << run.Err;
        const json info = json::parse(run.Out);
        EXPECT_EQ(info["model"]["label"], note["model"]) << name;
        EXPECT_EQ(info["clock"]["rate"], note["file_rate_text"]) << name;
        EXPECT_EQ(info["memory"]["mode"], note["memory_mode"]) << name;
        EXPECT_EQ(info["memory"]["samplesPerChannel"], note["samples_in_file"]) << name;
        ASSERT_EQ(info["groups"].size(), note["groups"].size()) << name;
        for (std::size_t g = 0; g < note["groups"].size(); ++g) {
            EXPECT_EQ(info["groups"][g]["name"], note["groups"][g]["name"]) << name;
            EXPECT_EQ(info["groups"][g]["mode"], note["groups"][g]["mode"]) << name;
            EXPECT_EQ(info["groups"][g]["channels"], note["groups"][g]["channels"]) << name;
        }
    }
}

}  // namespace
}  // namespace zu::test
