// Sizes of dialogs as one line of the preferences.
#include <gtest/gtest.h>

#include "core/DialogSizes.h"
#include "core/Preferences.h"
#include "support/Bench.h"

namespace zu {
namespace {

using Sizes = std::map<std::string, DialogSize>;

TEST(DialogSizes, AreWrittenAndReadBack) {
    const Sizes sizes{{"GroupSetup", {640, 480}}, {"ChannelNames", {1, 32767}}};
    EXPECT_EQ(FormatDialogSizes(sizes), "ChannelNames=1x32767;GroupSetup=640x480");
    EXPECT_EQ(ParseDialogSizes(FormatDialogSizes(sizes)), sizes);
    EXPECT_EQ(FormatDialogSizes({}), "");
    EXPECT_EQ(ParseDialogSizes(""), Sizes{});
}

TEST(DialogSizes, NonsenseIsLeftOut) {
    const Sizes good{{"Good", {5, 6}}};
    for (const char* text :
         {"Good=5x6", ";;Good=5x6;", "=1x2;Good=5x6", "A=0x5;Good=5x6", "A=5x0;Good=5x6", "A=-1x5;Good=5x6",
          "A=40000x5;Good=5x6", "A=5;Good=5x6", "A;Good=5x6", "A B=1x2;Good=5x6", "A=1x2x3;Good=5x6",
          "A=1 x2;Good=5x6", "A=99999999999x1;Good=5x6", "\xff=1x2;Good=5x6", "Good=1x1;Good=5x6"}) {
        EXPECT_EQ(ParseDialogSizes(text), good) << text;
    }
    EXPECT_EQ(ParseDialogSizes(std::string(41, 'A') + "=1x2"), Sizes{});
}

TEST(DialogSizes, AHundredAreEnough) {
    std::string text;
    for (int i = 0; i < 500; ++i) text += "D" + std::to_string(i) + "=10x10;";
    EXPECT_EQ(ParseDialogSizes(text).size(), 100U);
}

TEST(DialogSizes, OutliveARun) {
    test::Bench bench;
    bench.State->Windows.DialogSizes["GroupSetup"] = {700, 500};
    SavePreferences(bench.App);
    bench.State->Windows.DialogSizes.clear();
    LoadPreferences(bench.App);
    EXPECT_EQ(bench.State->Windows.DialogSizes, (Sizes{{"GroupSetup", {700, 500}}}));
}

TEST(DialogSizes, WithoutOneNothingIsWritten) {
    test::Bench bench;
    SavePreferences(bench.App);
    EXPECT_EQ(bench.Folder.Read("WRoach.ini").find("Dialogs"), std::string::npos);
}

}  // namespace
}  // namespace zu
