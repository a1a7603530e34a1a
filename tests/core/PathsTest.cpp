// Where the program's files lie and what they are called.
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/Paths.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::TempFolder;

/// Sets an environment variable for the length of a scope.
class Variable {
  public:
    Variable(const char* name, const char* value) : name_(name) {
        const char* before = std::getenv(name);
        had_ = before != nullptr;
        if (had_) before_ = before;
        if (value == nullptr) {
            ::unsetenv(name);
        } else {
            ::setenv(name, value, 1);
        }
    }
    ~Variable() {
        if (had_) {
            ::setenv(name_, before_.c_str(), 1);
        } else {
            ::unsetenv(name_);
        }
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    bool had_ = false;
    std::string before_;
};

TEST(JoinPath, PutsOneSeparator) {
    EXPECT_EQ(JoinPath("/opt/zu", "a"), "/opt/zu/a");
    EXPECT_EQ(JoinPath("/opt/zu/", "a"), "/opt/zu/a");
    EXPECT_EQ(JoinPath("C:\\zu\\", "a"), "C:\\zu\\a");
    EXPECT_EQ(JoinPath("C:\\", "a"), "C:\\a");
    EXPECT_EQ(JoinPath("C:", "a"), "C:a");
    EXPECT_EQ(JoinPath("", "a"), "a");
    EXPECT_EQ(JoinPath(".", "a"), "./a");
    EXPECT_EQ(JoinPath("/", "a"), "/a");
}

TEST(FolderOfFile, IsTheFolderWithoutItsSeparator) {
    EXPECT_EQ(FolderOfFile("/opt/zu/zu"), "/opt/zu");
    EXPECT_EQ(FolderOfFile("bin\\zu"), "bin");
    EXPECT_EQ(FolderOfFile("/zu"), "/");
    EXPECT_EQ(FolderOfFile("zu"), ".");
}

TEST(ProgramDirectory, IsTheOneGivenByTheEnvironment) {
    const TempFolder folder;
    const std::string given = folder.File("deep/home");
    const Variable home(kHomeVariable, given.c_str());
    EXPECT_EQ(ProgramDirectory("/somewhere/zu"), given);
    EXPECT_TRUE(folder.Has("deep/home")) << "it is made";
}

TEST(ProgramDirectory, IsThatOfTheProgramsName) {
    const TempFolder folder;
    const Variable home(kHomeVariable, nullptr);
    EXPECT_EQ(ProgramDirectory(folder.File("zu")), folder.Path());
}

TEST(ProgramDirectory, IsTheExecutablesWhenTheNameHoldsNone) {
    const Variable home(kHomeVariable, nullptr);
    const std::string executable = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    EXPECT_EQ(ProgramDirectory("zu"), executable);
}

TEST(ProgramDirectory, FallsBackToTheUsersOwn) {
    const TempFolder folder;
    const Variable home(kHomeVariable, nullptr);
    const Variable config("XDG_CONFIG_HOME", folder.Path().c_str());
    EXPECT_EQ(ProgramDirectory("/no/such/folder/zu"), folder.File("zu"));
    EXPECT_TRUE(folder.Has("zu"));
}

TEST(ProgramDirectory, FallsBackBelowTheUsersHome) {
    const TempFolder folder;
    const Variable home(kHomeVariable, nullptr);
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const Variable user("HOME", folder.Path().c_str());
    EXPECT_EQ(ProgramDirectory("/no/such/folder/zu"), folder.File(".config/zu"));
}

TEST(FileNames, CarryThePrefixOfTheSeries) {
    constexpr const char* kPrefixes[] = {"WPike", "WDace", "WRoach", "WTench", "WBream", "WPerch"};
    InstrumentState state;
    state.Files.AppDir = "/opt/zu";
    for (std::uint8_t series = 0; series < 6; ++series) {
        state.Identity.ModelSeries = series;
        BuildFileNames(state);
        const std::string stem = std::string("/opt/zu/") + kPrefixes[series];
        for (std::size_t slot = 0; slot < 6; ++slot) {
            EXPECT_EQ(state.Files.SettingsSlot[slot], stem + "_" + std::to_string(slot) + ".ini");
        }
        EXPECT_EQ(state.Files.PreferencesFile, stem + ".ini");
        EXPECT_EQ(state.Files.DefaultDataFile, stem + "_0.zu");
    }
}

TEST(FileNames, OfAnUnknownSeriesHaveNoPrefix) {
    InstrumentState state;
    state.Files.AppDir = "/opt/zu";
    state.Identity.ModelSeries = 9;
    BuildFileNames(state);
    EXPECT_EQ(state.Files.PreferencesFile, "/opt/zu/.ini");
}

}  // namespace
}  // namespace zu
