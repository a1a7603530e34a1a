#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "files/AtomicFile.h"
#include "support/ScriptedHost.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

namespace fs = std::filesystem;
using test::ReadBytes;
using test::TempFolder;
using test::WriteBytes;

TEST(AtomicFile, TakesTheTargetsPlaceOnlyWhenCommitted) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("x.zu"), "old");
    const std::string text = "new and longer";
    AtomicFile file(path);
    file.Append(text);
    EXPECT_TRUE(file.Flush());
    EXPECT_EQ(ReadBytes(path), "old");
    EXPECT_TRUE(file.Commit());
    EXPECT_EQ(ReadBytes(path), text);
    EXPECT_EQ(file.Error(), "");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(AtomicFile, LeavesNothingBehindWhenItIsNotCommitted) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("x.zu"), "old");
    {
        AtomicFile file(path);
        file.Append("new");
        file.Flush();
        EXPECT_EQ(folder.Count(), 2);
    }
    EXPECT_EQ(ReadBytes(path), "old");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(AtomicFile, IsNeverMistakenForADataFileWhileItGrows) {
    const TempFolder folder;
    AtomicFile file(folder.File("x.zu"));
    file.Append("new");
    file.Flush();
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        EXPECT_EQ(entry.path().extension(), ".tmp");
        EXPECT_EQ(entry.path().filename().string().substr(0, 1), ".");
    }
}

TEST(AtomicFile, GoesRoundATemporaryThatAKillLeftBehind) {
    const TempFolder folder;
    WriteBytes(folder.Path() / (".zu-save-" + std::to_string(::getpid()) + "-0.tmp"), "left over");
    EXPECT_EQ(WriteWholeFile(folder.File("x.zu"), "new"), "");
    EXPECT_EQ(ReadBytes(folder.File("x.zu")), "new");
    EXPECT_EQ(folder.Count(), 2);
}

TEST(AtomicFile, TwoSavesAtATimeDoNotMeet) {
    const TempFolder folder;
    AtomicFile first(folder.File("x.zu"));
    AtomicFile second(folder.File("x.zu"));
    first.Append("first");
    second.Append("second");
    EXPECT_TRUE(first.Commit());
    EXPECT_EQ(ReadBytes(folder.File("x.zu")), "first");
    EXPECT_TRUE(second.Commit());
    EXPECT_EQ(ReadBytes(folder.File("x.zu")), "second");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(AtomicFile, TakesManyParts) {
    const TempFolder folder;
    const std::string part = "0123456789";
    std::string whole;
    AtomicFile file(folder.File("x.zu"));
    for (int i = 0; i < 3000; ++i) {
        file.Append(std::string_view(part).substr(static_cast<std::size_t>(i % 11)));
        whole += part.substr(static_cast<std::size_t>(i % 11));
    }
    EXPECT_TRUE(file.Commit());
    EXPECT_TRUE(ReadBytes(folder.File("x.zu")) == whole);
}

TEST(AtomicFile, FollowsLinks) {
    const TempFolder folder;
    fs::create_directory(folder.Path() / "real");
    fs::create_directory(folder.Path() / "links");
    const std::string real = WriteBytes(folder.File("real/x.zu"), "old");
    fs::create_symlink("../real/x.zu", folder.Path() / "links/a.zu");
    fs::create_symlink(folder.Path() / "links/a.zu", folder.Path() / "links/b.zu");
    EXPECT_EQ(WriteWholeFile(folder.File("links/b.zu"), "new"), "");
    EXPECT_EQ(ReadBytes(real), "new");
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "links/a.zu"));
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "links/b.zu"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path() / "links"), {}), 2);
}

TEST(AtomicFile, FollowsALinkToNothing) {
    const TempFolder folder;
    fs::create_symlink("later.zu", folder.Path() / "a.zu");
    EXPECT_EQ(WriteWholeFile(folder.File("a.zu"), "new"), "");
    EXPECT_EQ(ReadBytes(folder.File("later.zu")), "new");
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "a.zu"));
}

TEST(AtomicFile, DoesNotFollowLinksForEver) {
    const TempFolder folder;
    fs::create_symlink("b.zu", folder.Path() / "a.zu");
    fs::create_symlink("a.zu", folder.Path() / "b.zu");
    EXPECT_NE(WriteWholeFile(folder.File("a.zu"), "new"), "");
    EXPECT_EQ(folder.Count(), 2);
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "a.zu")) << "no file takes the place of a link";
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "b.zu"));
}

mode_t ModeOf(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 ? facts.st_mode & 07777U : 0;
}

TEST(AtomicFile, KeepsTheModeOfTheOldFile) {
    const TempFolder folder;
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
        const std::string path = WriteBytes(folder.File("x.zu"), "old");
        ::chmod(path.c_str(), mode);
        EXPECT_EQ(WriteWholeFile(path, "new"), "");
        EXPECT_EQ(ModeOf(path), mode);
    }
}

TEST(AtomicFile, GivesANewFileTheUsualMode) {
    const TempFolder folder;
    const mode_t mask = ::umask(027);
    EXPECT_EQ(WriteWholeFile(folder.File("x.zu"), "new"), "");
    ::umask(mask);
    EXPECT_EQ(ModeOf(folder.File("x.zu")), 0640U);
}

TEST(AtomicFile, SavesInTheWorkingFolder) {
    const TempFolder folder;
    const auto before = fs::current_path();
    fs::current_path(folder.Path());
    EXPECT_EQ(WriteWholeFile("x.zu", "new"), "");
    fs::current_path(before);
    EXPECT_EQ(ReadBytes(folder.File("x.zu")), "new");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(AtomicFile, SavesUnderTheLongestName) {
    const TempFolder folder;
    const std::string name(255, 'n');
    EXPECT_EQ(WriteWholeFile(folder.File(name), "new"), "");
    EXPECT_EQ(ReadBytes(folder.File(name)), "new");
}

TEST(AtomicFile, SaysWhatIsWrong) {
    const TempFolder folder;
    const std::string file = WriteBytes(folder.File("file"), "old");
    EXPECT_EQ(WriteWholeFile(folder.File("no/x.zu"), "x"),
              "Could not save " + folder.File("no/x.zu") + ": No such file or directory");
    EXPECT_EQ(WriteWholeFile(file + "/x.zu", "x"), "Could not save " + file + "/x.zu: Not a directory");
    EXPECT_EQ(WriteWholeFile(folder.Path().string(), "x"),
              "Could not save " + folder.Path().string() + ": Is a directory");
    EXPECT_EQ(WriteWholeFile("/dev/full", "x"), "Could not save /dev/full: Invalid argument");
    EXPECT_NE(WriteWholeFile("", "x"), "");
    EXPECT_NE(WriteWholeFile(std::string("a\0b", 3), "x"), "");
    EXPECT_NE(WriteWholeFile(folder.File(std::string(256, 'n')), "x"), "");
    EXPECT_EQ(ReadBytes(file), "old");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(AtomicFile, FailsOnceTheFolderHasVanished) {
    const TempFolder folder;
    fs::create_directory(folder.Path() / "sub");
    const std::string path = WriteBytes(folder.File("sub/x.zu"), "old");
    AtomicFile file(path);
    file.Append("new");
    fs::rename(folder.Path() / "sub", folder.Path() / "moved");
    EXPECT_FALSE(file.Commit());
    EXPECT_NE(file.Error(), "");
    EXPECT_EQ(ReadBytes(folder.File("moved/x.zu")), "old");
}

/// Runs `body` in a process of its own and gives its exit code back.
template <typename Body>
int InAnotherProcess(Body body) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(body());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// What a save says to a user who is not the superuser.
std::string SaveAsNobody(const std::string& path) {
    constexpr uid_t kNobody = 65534;
    const std::string answer = path + ".answer";
    WriteBytes(answer, "");
    ::chmod(answer.c_str(), 0666);
    const int code = InAnotherProcess([&path, &answer] {
        if (::geteuid() == 0 &&
            (::setresgid(kNobody, kNobody, kNobody) != 0 || ::setresuid(kNobody, kNobody, kNobody) != 0)) {
            return 1;
        }
        WriteBytes(answer, WriteWholeFile(path, "new"));
        return 0;
    });
    return code == 0 ? ReadBytes(answer) : "no other user to be";
}

TEST(AtomicFile, RespectsWriteProtection) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("x.zu"), "old");
    const std::string denied = "Could not save " + path + ": Permission denied";
    ::chmod(folder.Path().c_str(), 0777);
    ::chmod(path.c_str(), 0444);
    EXPECT_EQ(SaveAsNobody(path), denied) << "a file that may not be written";
    ::chmod(path.c_str(), 0666);
    ::chmod(folder.Path().c_str(), 0555);
    WriteBytes(path + ".answer", "");
    EXPECT_EQ(SaveAsNobody(path), denied) << "a folder that takes no temporary";
    EXPECT_EQ(ReadBytes(path), "old");
    ::chmod(folder.Path().c_str(), 0777);
    EXPECT_EQ(SaveAsNobody(path), "");
    EXPECT_EQ(ReadBytes(path), "new");
}

TEST(AtomicFile, LeavesTheOldFileWholeOnAFullDisk) {
    const TempFolder folder;
    const std::string path = WriteBytes(folder.File("x.zu"), std::string(5000, 'o'));
    const int code = InAnotherProcess([&path] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100000, 100000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const std::string part(65536, 'n');
        AtomicFile file(path);
        file.Append(part);
        const bool first = file.Flush();
        file.Append(part);
        const bool saved = file.Commit();
        file.Append(part);
        const bool after = file.Commit();
        return first && !saved && !after && file.Error().find("File too large") != std::string::npos ? 7 : 1;
    });
    EXPECT_EQ(code, 7);
    EXPECT_EQ(ReadBytes(path), std::string(5000, 'o'));
    EXPECT_EQ(folder.Count(), 1) << "the temporary is gone";
}

TEST(AtomicFile, TellsAFailureByARemarkOnly) {
    test::ScriptedHost host;
    AtomicFile file("/no such folder/x.zu");
    EXPECT_FALSE(FinishSave(file, host));
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(host.Remarks,
              (std::vector<std::string>{"Could not save /no such folder/x.zu: No such file or directory"}));
}

}  // namespace
}  // namespace zu
