// What zu-cli makes of its command line.
#include <gtest/gtest.h>

#include "CliSupport.h"

namespace zu::test {
namespace {

TEST(CommandLine, HelpGoesToStandardOutput) {
    for (const auto& arguments : {std::vector<std::string>{"--help"}, {"-h"}, {"info", "--help"}}) {
        const CliRun run = RunZuCli(arguments);
        EXPECT_EQ(run.Code, 0);
        EXPECT_NE(run.Out.find("Usage: zu-cli"), std::string::npos) << run.Out;
        EXPECT_EQ(run.Err, "");
    }
}

TEST(CommandLine, HelpTellsTheExitCodes) {
    EXPECT_NE(RunZuCli({"--help"}).Out.find("Exit codes: 0 done; 1 "), std::string::npos);
}

TEST(CommandLine, VersionIsOneLine) {
    const CliRun run = RunZuCli({"--version"});
    EXPECT_EQ(run.Code, 0);
    EXPECT_EQ(run.Out.rfind("zu-cli ", 0), 0U) << run.Out;
    EXPECT_EQ(run.Out.find('\n'), run.Out.size() - 1);
}

TEST(CommandLine, MisuseEndsWithCode2AndSaysWhy) {
    const std::vector<std::vector<std::string>> wrong{
        {},
        {"nonsense"},
        {"info"},
        {"info", "a.zu", "b.zu"},
        {"info", "--nonsense", "a.zu"},
        {"render", "a.zu"},
        {"render", "a.zu", "-o"},
        {"render", "a.zu", "-o", "a.png", "--zoom", "0"},
        {"render", "a.zu", "-o", "a.png", "--zoom", "x"},
        {"render", "a.zu", "-o", "a.png", "--zoom", "99999999999"},
        {"render", "a.zu", "-o", "a.png", "--pos", "1.5"},
        {"render", "a.zu", "-o", "a.png", "--size", "100"},
        {"render", "a.zu", "-o", "a.png", "--size", "100x"},
        {"render", "a.zu", "-o", "a.png", "--size", "100x50x"},
        {"render", "a.zu", "-o", "a.png", "--size", "0x50"},
        {"render", "a.zu", "-o", "a.png", "--size", "100x-50"},
        {"render", "a.zu", "-o", "a.png", "--size", "999999999999x50"},
        {"render", "a.zu", "-o", "a.png", "--scale", "0"},
        {"render", "a.zu", "-o", "a.png", "--scale", "9"},
    };
    for (const auto& arguments : wrong) {
        const CliRun run = RunZuCli(arguments);
        EXPECT_EQ(run.Code, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(run.Out, "") << testing::PrintToString(arguments);
        EXPECT_NE(run.Err, "") << testing::PrintToString(arguments);
    }
}

}  // namespace
}  // namespace zu::test
