// The program itself, as a script starts it.
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "CliSupport.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

/// Runs the program through the shell with its streams in files of the folder.
CliRun RunBinary(const TempFolder& folder, const std::string& arguments) {
    const std::string command = std::string("\"" ZU_CLI "\" ") + arguments + " </dev/null >\"" +
                                folder.File("out") + "\" 2>\"" + folder.File("err") + "\"";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(folder.File("out")),
            ReadBytes(folder.File("err"))};
}

TEST(Binary, TellsItsVersion) {
    const TempFolder folder;
    const CliRun run = RunBinary(folder, "--version");
    EXPECT_EQ(run.Code, 0);
    EXPECT_EQ(run.Out.rfind("zu-cli ", 0), 0U);
}

TEST(Binary, TellsOfAFileByItsExitCode) {
    const TempFolder folder;
    WriteBytes(folder.File("good.zu"), DataFile(Record("D0", 0, "abc")));
    WriteBytes(folder.File("bad.zu"), DataFile(Record("D9", 0, "abc")));
    const auto info = [&](const char* name) {
        return RunBinary(folder, "info \"" + folder.File(name) + "\"");
    };
    EXPECT_EQ(info("good.zu").Code, 0);
    EXPECT_EQ(info("bad.zu").Code, 1);
    EXPECT_EQ(info("missing.zu").Code, 1);
    EXPECT_EQ(info("good.txt").Code, 2);
    EXPECT_EQ(RunBinary(folder, "").Code, 2);
}

TEST(Binary, FindsAFullDeviceOut) {
    const TempFolder folder;
    WriteBytes(folder.File("a.zu"), DataFile(""));
    const std::string command = "\"" ZU_CLI "\" info \"" + folder.File("a.zu") + "\" >/dev/full";
    const int status = std::system(command.c_str());
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
}

}  // namespace
}  // namespace zu::test
