// The main window before it exists.
#include <gtest/gtest.h>
#include <iterator>
#include <random>

#include "core/Frame.h"
#include "core/Preferences.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

constexpr ScreenRecord Sized(std::int32_t width, std::int32_t height) {
    ScreenRecord screen;
    screen.ScreenW = width;
    screen.ScreenH = height;
    return screen;
}

std::pair<std::int32_t, std::int32_t> Measured(const ScreenFacts& facts) {
    const ScreenRecord screen = MeasureScreen(facts, {});
    return {screen.ScreenW, screen.ScreenH};
}

TEST(MeasureScreen, TakesTheVirtualScreenUpToTheWorkArea) {
    EXPECT_EQ(Measured({3840, 2160, 1040, 1920, 1080}), std::pair(3840, 1040));
    EXPECT_EQ(Measured({1920, 1080, 1080, 800, 600}), std::pair(1920, 1080));
    EXPECT_EQ(Measured({1920, 1080, 4000, 800, 600}), std::pair(1920, 1080));
}

TEST(MeasureScreen, TakesTheDeviceWhenTheVirtualScreenCannotBe) {
    EXPECT_EQ(Measured({99, 1080, 1080, 800, 600}), std::pair(800, 600));
    EXPECT_EQ(Measured({100, 1080, 1080, 800, 600}), std::pair(100, 1080));
    EXPECT_EQ(Measured({30001, 1080, 1080, 800, 600}), std::pair(800, 600));
    EXPECT_EQ(Measured({30000, 1080, 1080, 800, 600}), std::pair(30000, 1080));
    EXPECT_EQ(Measured({1920, 99, 1080, 800, 600}), std::pair(800, 600));
    EXPECT_EQ(Measured({1920, 40000, 40000, 800, 600}), std::pair(800, 600));
    EXPECT_EQ(Measured({1920, 1080, 0, 800, 600}), std::pair(800, 600)) << "both are replaced";
}

struct RectCase {
    const char* Name;
    WindowRect In;
    WindowRect Out;
};

class Sanitise : public testing::TestWithParam<RectCase> {};

TEST_P(Sanitise, RepairsInItsOrder) {
    EXPECT_EQ(SanitiseRect(GetParam().In, 100, 80, Sized(1000, 700)), GetParam().Out);
}

INSTANTIATE_TEST_SUITE_P(
    All, Sanitise,
    testing::Values(RectCase{"Good", {10, 20, 500, 400}, {10, 20, 500, 400}},
                    RectCase{"NegativeLeft", {-5, 20, 500, 400}, {0, 20, 500, 400}},
                    RectCase{"NegativeTop", {10, -20, 500, 400}, {10, 0, 500, 400}},
                    RectCase{"Narrow", {10, 20, 50, 400}, {10, 20, 110, 400}},
                    RectCase{"Flat", {10, 20, 500, 30}, {10, 20, 500, 100}},
                    RectCase{"BottomAboveTop", {212, 400, 900, 398}, {212, 400, 900, 480}},
                    RectCase{"TooLow", {10, 701, 500, 900}, {10, 0, 500, 700}},
                    RectCase{"AtTheLowerEdge", {10, 700, 500, 900}, {10, 700, 500, 700}},
                    RectCase{"TooFarRight", {1001, 20, 1500, 400}, {0, 20, 1000, 400}},
                    RectCase{"AtTheRightEdge", {1000, 20, 1500, 400}, {1000, 20, 1000, 400}},
                    RectCase{"TooLarge", {0, 0, 5000, 5000}, {0, 0, 1000, 700}},
                    RectCase{"Extreme", {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}, {0, 0, 1000, 700}}),
    [](const auto& test) { return test.param.Name; });

/// The rules one after the other, in numbers that do not overflow.
WindowRect SanitisedSlowly(const WindowRect& rect, std::int64_t w, std::int64_t h,
                           const ScreenRecord& screen) {
    std::int64_t left = rect.Left;
    std::int64_t top = rect.Top;
    std::int64_t right = rect.Right;
    std::int64_t bottom = rect.Bottom;
    if (left < 0) left = 0;
    if (right < left + w) right = left + w;
    if (top < 0) top = 0;
    if (bottom < top + h) bottom = top + h;
    if (bottom < top) top = 0;
    if (top > screen.ScreenH) top = 0;
    if (bottom > screen.ScreenH) bottom = screen.ScreenH;
    if (right < left) left = 0;
    if (left > screen.ScreenW) left = 0;
    if (right > screen.ScreenW) right = screen.ScreenW;
    return {static_cast<std::int32_t>(left), static_cast<std::int32_t>(top), static_cast<std::int32_t>(right),
            static_cast<std::int32_t>(bottom)};
}

TEST(Sanitise, RepairsAnythingThatAFileMayHold) {
    std::mt19937 random(11);
    const auto edge = [&random] {
        constexpr std::int32_t kSpecial[] = {
            INT32_MIN,      INT32_MIN + 1, -1,       0, 1, 99, 100, 699, 700, 701, 999, 1000, 1001,
            INT32_MAX - 50, INT32_MAX - 1, INT32_MAX};
        if (random() % 2 == 0) return kSpecial[random() % std::size(kSpecial)];
        return static_cast<std::int32_t>(random() % 3000) - 1000;
    };
    for (int round = 0; round < 100000; ++round) {
        const WindowRect rect{edge(), edge(), edge(), edge()};
        const ScreenRecord screen =
            Sized(100 + static_cast<int>(random() % 2000), 100 + static_cast<int>(random() % 2000));
        const WindowRect repaired = SanitiseRect(rect, 100, 80, screen);
        ASSERT_EQ(repaired, SanitisedSlowly(rect, 100, 80, screen))
            << rect.Left << " " << rect.Top << " " << rect.Right << " " << rect.Bottom;
        ASSERT_TRUE(repaired.Left >= 0 && repaired.Left <= repaired.Right &&
                    repaired.Right <= screen.ScreenW);
        ASSERT_TRUE(repaired.Top >= 0 && repaired.Top <= repaired.Bottom &&
                    repaired.Bottom <= screen.ScreenH);
    }
}

TEST(CreateFrame, PlacesTheMainWindowOnAFreshScreen) {
    Bench bench;
    CreateFrame(bench.App);
    EXPECT_EQ(bench.State->Windows.MainRect, (WindowRect{0, 0, 1880, 1000}));
    EXPECT_EQ(bench.State->Screen.ScreenW, 1920);
    EXPECT_EQ(bench.State->Screen.ScreenH, 1040);
}

TEST(CreateFrame, PlacesTheChildren) {
    Bench bench;
    CreateFrame(bench.App);
    const WindowRecord& windows = bench.State->Windows;
    EXPECT_EQ(windows.StateRect, (WindowRect{212, 400, 1920, 398}));
    EXPECT_EQ(windows.TimingRect, (WindowRect{100, 1, 1920, 1040}));
    EXPECT_EQ(windows.SerialRect, (WindowRect{212, 100, 400, 1040}));
    EXPECT_EQ(windows.SpiRect, (WindowRect{212, 100, 400, 1040}));
}

TEST(CreateFrame, MovesAStoredWindowBeyondTheScreenBack) {
    Bench bench;
    bench.Folder.Write("WRoach.ini", "[Main]\r\nleft=5000\r\ntop=5000\r\nright=9000\r\nbottom=9000\r\n");
    CreateFrame(bench.App);
    EXPECT_EQ(bench.State->Windows.MainRect, (WindowRect{0, 0, 1920, 1040}));
}

TEST(CreateFrame, GivesTheMainWindowAtLeast100By100) {
    Bench bench;
    bench.Folder.Write("WRoach.ini", "[Main]\r\nleft=30\r\ntop=40\r\nright=31\r\nbottom=41\r\n");
    CreateFrame(bench.App);
    EXPECT_EQ(bench.State->Windows.MainRect, (WindowRect{30, 40, 130, 140}));
}

TEST(CreateFrame, AsksForTheVersionInTheFirstSeriesNameAndGoesOnInItsOwn) {
    Bench bench;
    CreateFrame(bench.App);
    EXPECT_FLOAT_EQ(bench.State->Identity.DllVersion, 0.14F);
    EXPECT_EQ(bench.State->Identity.DllName, "RoachSer");
    EXPECT_EQ(bench.State->Identity.DllText, "DLL ver 0.140000");
    EXPECT_EQ(bench.State->Identity.ModelSeries, 2);
}

TEST(CreateFrame, BuildsTheFileNames) {
    Bench bench;
    bench.State->Files.PreferencesFile.clear();
    CreateFrame(bench.App);
    EXPECT_EQ(bench.State->Files.PreferencesFile, bench.Folder.File("WRoach.ini"));
}

TEST(CreateFrame, TellsOfAMessageQueueThatDoesNotGrowAndGoesOn) {
    Bench bench;
    CreateFrame(bench.App);
    EXPECT_TRUE(bench.Host.Boxes.empty());
    bench.App.Platform.MessageQueueGrows = false;
    CreateFrame(bench.App);
    EXPECT_EQ(bench.Texts(), std::vector<std::string>{"|SetMessageQueue failed to increase to 120"});
}

TEST(MainWindow, IsFollowedWithTheOffsetOfItsFrame) {
    Bench bench;
    bench.State->Windows.MainRect = {10, 20, 500, 400};
    RememberMainMove(bench.App, 30, 152);
    EXPECT_EQ(bench.State->Windows.MainRect, (WindowRect{30, 100, 500, 400}));
    RememberMainSize(bench.App, 800, 600);
    EXPECT_EQ(bench.State->Windows.MainRect, (WindowRect{30, 100, 830, 752}));
    RememberMainMove(bench.App, 30, 51);
    EXPECT_EQ(bench.State->Windows.MainRect.Top, 0) << "never above the screen";
}

TEST(MainWindow, IsPutBackWhereItWas) {
    Bench bench;
    RememberMainMove(bench.App, 30, 152);
    RememberMainSize(bench.App, 800, 600);
    EXPECT_EQ(MainClientRect(bench.State->Windows.MainRect), (WindowRect{30, 152, 830, 752}));
}

TEST(MainWindow, IgnoresTheMovesOfItsOwnCreation) {
    Bench bench;
    CreateFrame(bench.App);
    const WindowRect stored = bench.State->Windows.MainRect;
    ASSERT_GT(bench.App.MainMovesToIgnore, 0);
    for (int left = bench.App.MainMovesToIgnore; left > 0; --left) RememberMainMove(bench.App, 77, 177);
    EXPECT_EQ(bench.State->Windows.MainRect, stored);
    RememberMainMove(bench.App, 77, 177);
    EXPECT_EQ(bench.State->Windows.MainRect.Left, 77);
    EXPECT_EQ(bench.State->Windows.MainRect.Top, 125);
}

}  // namespace
}  // namespace zu
