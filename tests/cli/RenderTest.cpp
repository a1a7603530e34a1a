// Pictures made by zu-cli.
#include <cstdint>
#include <gtest/gtest.h>

#include "CliSupport.h"
#include "support/Captures.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

TEST(Render, TakesDataFilesAndPictureNamesOnly) {
    const TempFolder folder;
    const std::string data = WriteBytes(folder.File("a.zu"), DataFile(""));
    const std::string settings = WriteBytes(folder.File("a.ini"), SettingsBlock());
    EXPECT_EQ(RunZuCli({"render", settings, "-o", folder.File("a.png")}).Code, 2);
    EXPECT_EQ(RunZuCli({"render", data, "-o", folder.File("a.jpg")}).Code, 2);
    EXPECT_EQ(RunZuCli({"render", data, "-o", folder.File("png")}).Code, 2);
    EXPECT_EQ(folder.Count(), 2);
}

#ifdef ZU_HAVE_PAINT

std::string SmallFile(const TempFolder& folder) {
    const std::string square = "\x01\x01\x02\x02";
    std::string samples;
    for (int i = 0; i < 2048; ++i) samples += square;
    return WriteBytes(folder.File("a.zu"), DataFile(Record("D0", 0, samples)));
}

std::uint32_t BigEndian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i) value = value << 8U | static_cast<unsigned char>(bytes[i]);
    return value;
}

TEST(Render, WritesAPngOfTheSizeAskedFor) {
    const TempFolder folder;
    const std::string picture = folder.File("a.png");
    const CliRun run = RunZuCli({"render", SmallFile(folder), "-o", picture, "--size", "300x200"});
    EXPECT_EQ(run.Code, 0) << run.Err;
    const std::string bytes = ReadBytes(picture);
    ASSERT_GT(bytes.size(), 24U);
    EXPECT_EQ(bytes.substr(1, 3), "PNG");
    EXPECT_EQ(BigEndian(bytes, 16), 300U);
    EXPECT_EQ(BigEndian(bytes, 20), 200U);
}

TEST(Render, ScalesAPng) {
    const TempFolder folder;
    const std::string picture = folder.File("a.png");
    const CliRun run =
        RunZuCli({"render", SmallFile(folder), "-o", picture, "--size", "300x200", "--scale", "2"});
    EXPECT_EQ(run.Code, 0) << run.Err;
    const std::string bytes = ReadBytes(picture);
    ASSERT_GT(bytes.size(), 24U);
    EXPECT_EQ(BigEndian(bytes, 16), 600U);
}

TEST(Render, WritesAnSvg) {
    const TempFolder folder;
    const std::string picture = folder.File("a.svg");
    EXPECT_EQ(RunZuCli({"render", SmallFile(folder), "-o", picture}).Code, 0);
    const std::string bytes = ReadBytes(picture);
    EXPECT_NE(bytes.find("<svg"), std::string::npos);
    EXPECT_NE(bytes.find("1280"), std::string::npos) << "the size when none is asked for";
}

TEST(Render, PaintsAnotherPictureAtAnotherZoomOrPosition) {
    const TempFolder folder;
    const std::string file = SmallFile(folder);
    const auto render = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"render", file, "-o", folder.File("b.png")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(RunZuCli(arguments).Code, 0);
        return ReadBytes(folder.File("b.png"));
    };
    const std::string plain = render({});
    EXPECT_EQ(render({}), plain) << "the same file gives the same picture";
    EXPECT_NE(render({"--zoom", "10"}), plain);
    EXPECT_NE(render({"--zoom", "-4"}), plain);
    EXPECT_NE(render({"--zoom", "10", "--pos", "1"}), render({"--zoom", "10"}));
}

TEST(Render, TellsWhenThePictureCannotBeWritten) {
    const TempFolder folder;
    const CliRun run =
        RunZuCli({"render", SmallFile(folder), "-o", folder.File("missing/a.png"), "--size", "50x50"});
    EXPECT_EQ(run.Code, 1);
    EXPECT_NE(run.Err.find("missing/a.png: "), std::string::npos) << run.Err;
}

TEST(Render, TellsWhenTheDataCannotBeRead) {
    const TempFolder folder;
    EXPECT_EQ(RunZuCli({"render", folder.File("missing.zu"), "-o", folder.File("a.png")}).Code, 1);
    EXPECT_EQ(folder.Count(), 0);
}

TEST(Render, PaintsAFileWithProblemsAndSaysSo) {
    const TempFolder folder;
    const std::string file = WriteBytes(folder.File("a.zu"), DataFile(Record("D9", 0, "abc")));
    EXPECT_EQ(RunZuCli({"render", file, "-o", folder.File("a.png"), "--size", "50x50"}).Code, 1);
    EXPECT_FALSE(ReadBytes(folder.File("a.png")).empty());
}

TEST(RenderOfRecordings, PaintsThemAll) {
    ZU_NEEDS_CAPTURES();
    const TempFolder folder;
    for (const std::string name : kCaptures) {
        const std::string picture = folder.File(name + ".png");
        const CliRun run = RunZuCli({"render", CapturePath(name + ".zu").string(), "-o", picture});
        EXPECT_EQ(run.Code, 0) << name << ": " << run.Err;
        EXPECT_GT(ReadBytes(picture).size(), 2000U) << name;
    }
}

#else

TEST(Render, IsNotAvailableWithoutACanvas) {
    const TempFolder folder;
    const std::string data = WriteBytes(folder.File("a.zu"), DataFile(""));
    const CliRun run = RunZuCli({"render", data, "-o", folder.File("a.png")});
    EXPECT_EQ(run.Code, 3);
    EXPECT_EQ(run.Err, "zu-cli: this build paints no pictures: it was made without Qt\n");
    EXPECT_EQ(folder.Count(), 1);
}

#endif

}  // namespace
}  // namespace zu::test
