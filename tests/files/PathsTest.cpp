#include <gtest/gtest.h>

#include "files/Paths.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

TEST(Paths, SplitAtEitherSeparator) {
    EXPECT_EQ(FolderOf("/a/b.c/d.zu"), "/a/b.c/");
    EXPECT_EQ(FileNameOf("/a/b.c/d.zu"), "d.zu");
    EXPECT_EQ(FolderOf("C:\\dir\\d.zu"), "C:\\dir\\");
    EXPECT_EQ(FileNameOf("C:\\dir\\d.zu"), "d.zu");
    EXPECT_EQ(FolderOf("d.zu"), "");
    EXPECT_EQ(FileNameOf(""), "");
}

TEST(ExtensionOf, IsUpperCaseAndOfTheFileNameOnly) {
    EXPECT_EQ(ExtensionOf("/a.b/run.Zu"), "ZU");
    EXPECT_EQ(ExtensionOf("run.tar.ini"), "INI");
    EXPECT_EQ(ExtensionOf("/a.b/run"), "");
    EXPECT_EQ(ExtensionOf("run."), "");
}

TEST(ResolveExisting, TakesTheExactNameFirst) {
    const test::TempFolder folder;
    test::WriteBytes(folder.File("RUN.ZU"), "");
    const std::string lower = test::WriteBytes(folder.File("run.zu"), "");
    EXPECT_EQ(ResolveExisting(lower), lower);
}

TEST(ResolveExisting, MatchesEachPartInAnyCase) {
    const test::TempFolder folder;
    std::filesystem::create_directories(folder.Path() / "Sub Folder");
    const std::string real = test::WriteBytes(folder.File("Sub Folder/My Run.zu"), "");
    EXPECT_EQ(ResolveExisting(folder.File("SUB FOLDER/MY RUN.ZU")), real);
    EXPECT_EQ(ResolveExisting(folder.File("sub folder\\my run.ZU")), real);
}

TEST(ResolveExisting, TakesTheFirstMatchInByteOrder) {
    const test::TempFolder folder;
    test::WriteBytes(folder.File("rUN.zu"), "");
    test::WriteBytes(folder.File("Run.zu"), "");
    test::WriteBytes(folder.File("rUn.zu"), "");
    EXPECT_EQ(ResolveExisting(folder.File("RUN.ZU")), folder.File("Run.zu"));
}

TEST(ResolveExisting, FindsRelativeNames) {
    const test::TempFolder folder;
    test::WriteBytes(folder.File("Run.zu"), "");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    EXPECT_EQ(std::filesystem::path(ResolveExisting("RUN.ZU")).filename(), "Run.zu");
    std::filesystem::current_path(before);
}

TEST(ResolveExisting, GivesBackWhatMatchesNothing) {
    const test::TempFolder folder;
    for (const std::string& name : {folder.File("none.zu"), std::string("/no/such/path.zu"), std::string(),
                                    std::string("a\0b", 3), std::string("/")}) {
        EXPECT_EQ(ResolveExisting(name), name);
    }
}

}  // namespace
}  // namespace zu
