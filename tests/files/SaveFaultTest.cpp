// Whole saves that are killed, starved of space or refused: the target is always a whole file.
#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "files/DataFile.h"
#include "files/SettingsWriter.h"
#include "files/Translate.h"
#include "support/ScriptedHost.h"
#include "support/StartState.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using test::ReadBytes;
using test::ScriptedHost;
using test::StartState;
using test::TempFolder;

/// Two data files that differ in their length and in every sample.
struct TwoSaves {
    std::unique_ptr<InstrumentState> States[2];
    std::string Bytes[2];

    explicit TwoSaves(const TempFolder& folder) {
        ScriptedHost host;
        for (std::size_t k = 0; k < 2; ++k) {
            States[k] = StartState(16, 1);
            States[k]->Files.DataLogFileName = std::string(100 * k, 'k');
            for (std::size_t pod = 0; pod < 3; ++pod) {
                std::fill_n(States[k]->Buffer.Pod[pod], 32768, static_cast<std::uint8_t>(k + 1));
            }
            const std::string path = folder.File("whole.zu");
            EXPECT_TRUE(WriteDataFile(*States[k], host, path));
            Bytes[k] = ReadBytes(path);
            std::filesystem::remove(path);
        }
    }
};

[[noreturn]] void SaveForEver(TwoSaves& saves, const std::string& path) {
    ScriptedHost host;
    for (std::size_t turn = 0;; ++turn) WriteDataFile(*saves.States[turn % 2], host, path);
}

TEST(SaveFaults, AKillAtAnyMomentLeavesOneOfTheTwoFilesWhole) {
    const TempFolder folder;
    TwoSaves saves(folder);
    const std::string path = test::WriteBytes(folder.File("x.zu"), saves.Bytes[0]);
    std::mt19937 random(20240229);
    std::uniform_int_distribution<useconds_t> pause(0, 8000);
    int left = 0;
    for (int round = 0; round < 60; ++round) {
        const pid_t child = ::fork();
        if (child == 0) SaveForEver(saves, path);
        ::usleep(pause(random));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string now = ReadBytes(path);
        ASSERT_TRUE(now == saves.Bytes[0] || now == saves.Bytes[1])
            << "round " << round << ", " << now.size();
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            const std::string name = entry.path().filename().string();
            left += name != "x.zu" ? 1 : 0;
            ASSERT_TRUE(name == "x.zu" || name.ends_with(".tmp")) << name;
        }
    }
    RecordProperty("temporaries", left);
}

/// A file system of 200 KB of its own, where mounting is allowed.
class TinyDisk {
  public:
    explicit TinyDisk(const TempFolder& folder) : path_(folder.File("disk")) {
        std::filesystem::create_directory(path_);
        mounted_ = ::mount("tmpfs", path_.c_str(), "tmpfs", 0, "size=200k") == 0;
    }
    ~TinyDisk() {
        if (mounted_) ::umount2(path_.c_str(), MNT_DETACH);
    }
    TinyDisk(const TinyDisk&) = delete;
    TinyDisk& operator=(const TinyDisk&) = delete;
    [[nodiscard]] bool Mounted() const { return mounted_; }
    [[nodiscard]] std::string File(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
    bool mounted_ = false;
};

TEST(SaveFaults, AFullDiskLeavesTheOldFileWhole) {
    const TempFolder folder;
    const TinyDisk disk(folder);
    if (!disk.Mounted()) GTEST_SKIP() << "mounting is not allowed here";
    auto state = StartState(16, 1);
    ScriptedHost host;
    const std::string path = disk.File("x.zu");
    EXPECT_TRUE(SaveSettingsFile(*state, host, path));
    const std::string before = ReadBytes(path);
    EXPECT_FALSE(WriteDataFile(*state, host, path));
    EXPECT_EQ(ReadBytes(path), before);
    EXPECT_EQ(host.Remarks,
              (std::vector<std::string>{"Could not save " + path + ": No space left on device"}));
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(disk.File("")), {}), 1);
    EXPECT_TRUE(SaveSettingsFile(*state, host, path)) << "and there is room again";
}

TEST(SaveFaults, AFileSizeLimitLeavesTheOldFileWhole) {
    const TempFolder folder;
    const std::string path = test::WriteBytes(folder.File("x.zu"), "old");
    auto state = StartState(16, 1);
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{50000, 50000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ScriptedHost host;
        const bool saved = WriteDataFile(*state, host, path);
        ::_exit(!saved && host.Remarks.size() == 1 && host.Boxes.empty() ? 7 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 7);
    EXPECT_EQ(ReadBytes(path), "old");
    EXPECT_EQ(folder.Count(), 1);
}

TEST(SaveFaults, AReadOnlyDiskLeavesTheOldFileWhole) {
    const TempFolder folder;
    const TinyDisk disk(folder);
    if (!disk.Mounted()) GTEST_SKIP() << "mounting is not allowed here";
    auto state = StartState(16, 1);
    ScriptedHost host;
    const std::string path = disk.File("x.ini");
    EXPECT_TRUE(SaveSettingsFile(*state, host, path));
    const std::string before = ReadBytes(path);
    ASSERT_EQ(::mount("tmpfs", disk.File("").c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "size=200k"), 0);
    state->Files.DataLog = 1;
    EXPECT_FALSE(SaveSettingsFile(*state, host, path));
    EXPECT_FALSE(WriteDataFile(*state, host, path));
    EXPECT_FALSE(SaveTranslateFile(state->Translate, host, path));
    EXPECT_EQ(host.Remarks.size(), 3U);
    EXPECT_EQ(host.Remarks[0], "Could not save " + path + ": Read-only file system");
    EXPECT_EQ(ReadBytes(path), before);
}

TEST(SaveFaults, AFolderThatIsAFileRefusesEverySave) {
    const TempFolder folder;
    const std::string file = test::WriteBytes(folder.File("file"), "old");
    auto state = StartState(16, 1);
    ScriptedHost host;
    EXPECT_FALSE(SaveSettingsFile(*state, host, file + "/x.ini"));
    EXPECT_FALSE(WriteDataFile(*state, host, file + "/x.zu"));
    EXPECT_FALSE(SaveTranslateFile(state->Translate, host, file + "/x.zxt"));
    EXPECT_EQ(host.Remarks.size(), 3U);
    EXPECT_TRUE(host.Boxes.empty());
    EXPECT_EQ(ReadBytes(file), "old");
}

}  // namespace
}  // namespace zu
