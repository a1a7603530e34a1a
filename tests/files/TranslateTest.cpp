#include <gtest/gtest.h>
#include <memory>

#include "files/Translate.h"
#include "support/ScriptedHost.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using namespace std::string_view_literals;
using test::ScriptedHost;
using test::TempFolder;

std::unique_ptr<TranslateRecord> Read(const std::string& text) {
    auto table = std::make_unique<TranslateRecord>();
    table->Entry[5] = {"1"sv, "old"sv, 0, 0, 0};
    table->TranslateCount = 99;
    ReadTranslate(*table, IniText::Parse("[UserDefined]\r\n" + text));
    return table;
}

TEST(TranslateText, HoldsTheEntriesWithAPattern) {
    auto table = std::make_unique<TranslateRecord>();
    EXPECT_EQ(TranslateText(*table), "\r\n[UserDefined]\r\n");
    table->Entry[1] = {"01X"sv, ""sv, -1, 0, 0};
    table->Entry[2] = {""sv, "unused"sv, 0, 0, 0};
    table->Entry[512] = {"1"sv, "last one"sv, 7, 0, 0};
    EXPECT_EQ(TranslateText(*table),
              "\r\n[UserDefined]\r\nud1Bit=01X\r\nud1Stg=\r\nud1Skip=-1\r\n"
              "ud512Bit=1\r\nud512Stg=last one\r\nud512Skip=7\r\n");
}

TEST(ReadTranslate, ClearsTheTableFirst) {
    const auto table = Read("");
    EXPECT_TRUE(table->Entry[5].Bit.Empty());
    EXPECT_EQ(table->TranslateCount, 0);
}

TEST(ReadTranslate, BuildsValueAndMaskWithTheLastCharacterAsBit0) {
    const auto table = Read("ud0Bit=10X1x0\r\nud0Stg=text\r\nud0Skip=2\r\n");
    EXPECT_EQ(table->Entry[0].Stg, "text");
    EXPECT_EQ(table->Entry[0].Skip, 2);
    EXPECT_EQ(table->Entry[0].Value, 0b100100U);
    EXPECT_EQ(table->Entry[0].Care, 0b110101U);
    EXPECT_EQ(table->TranslateCount, 1);
}

TEST(ReadTranslate, TakesFull32Bits) {
    const auto table = Read(
        "ud0Bit=1000000000000000000000000000000100001\r\nud0Stg=more than nineteen "
        "characters\r\nud0Skip=0\r\n");
    EXPECT_EQ(table->Entry[0].Bit.View(), "10000000000000000000000000000001") << "32 characters are kept";
    EXPECT_EQ(table->Entry[0].Stg.View(), "more than nineteen ");
    EXPECT_EQ(table->Entry[0].Value, 0x80000001U);
    EXPECT_EQ(table->Entry[0].Care, 0xFFFFFFFFU);
}

TEST(ReadTranslate, EndsAtTheFirstGap) {
    const auto table = Read("ud0Bit=1\r\nud0Skip=0\r\nud2Bit=0\r\nud2Skip=0\r\n");
    EXPECT_EQ(table->TranslateCount, 1);
    EXPECT_TRUE(table->Entry[2].Bit.Empty());
}

TEST(ReadTranslate, KeepsAnEntryThatIsNotInForce) {
    const auto table = Read(
        "ud0Bit=10\r\nud0Stg=off\r\nud0Skip=-1\r\nud1Bit=01\r\nud1Stg=on\r\nud1Skip=0\r\nud2Bit=1\r\nud2Skip="
        "-5\r\n");
    EXPECT_EQ(table->TranslateCount, 1);
    EXPECT_EQ(table->Entry[0].Skip, -1);
    EXPECT_EQ(table->Entry[0].Care, 0U);
    EXPECT_EQ(table->Entry[1].Care, 3U);
    EXPECT_EQ(TranslateText(*table),
              "\r\n[UserDefined]\r\nud0Bit=10\r\nud0Stg=off\r\nud0Skip=-1\r\nud1Bit=01\r\nud1Stg="
              "on\r\nud1Skip=0\r\n"
              "ud2Bit=1\r\nud2Stg=\r\nud2Skip=-5\r\n");
}

TEST(ReadTranslate, HoldsAll513Entries) {
    std::string text;
    for (int i = 0; i < 600; ++i) {
        text += "ud" + std::to_string(i) + "Bit=1\r\nud" + std::to_string(i) + "Skip=0\r\n";
    }
    EXPECT_EQ(Read(text)->TranslateCount, 513);
}

TEST(ReadTranslate, LeavesAnEntryWithoutSkipOrPatternOutOfForce) {
    const auto table = Read("ud0Bit=1\r\nud1Bit=\r\nud1Skip=0\r\nud2Bit=0\r\nud2Skip=0\r\n");
    EXPECT_EQ(table->Entry[0].Skip, -1);
    EXPECT_EQ(table->TranslateCount, 1);
    EXPECT_EQ(table->Entry[2].Care, 1U) << "an empty pattern is no gap";
}

TEST(CompileTranslate, FollowsEditedTexts) {
    auto table = std::make_unique<TranslateRecord>();
    table->Entry[3] = {"X1"sv, "a"sv, 0, 9, 9};
    table->Entry[4] = {"11"sv, "b"sv, -1, 9, 9};
    CompileTranslate(*table);
    EXPECT_EQ(table->TranslateCount, 1);
    EXPECT_EQ(table->Entry[3].Value, 1U);
    EXPECT_EQ(table->Entry[3].Care, 1U);
    EXPECT_EQ(table->Entry[4].Care, 0U);
}

TEST(TranslateFile, IsSavedAndLoaded) {
    const TempFolder folder;
    ScriptedHost host;
    auto table = std::make_unique<TranslateRecord>();
    table->Entry[0] = {"1X"sv, "x"sv, 0, 0, 0};
    EXPECT_TRUE(SaveTranslateFile(*table, host, folder.File("t.zxt")));
    EXPECT_EQ(test::ReadBytes(folder.File("t.zxt")),
              "\r\n[UserDefined]\r\nud0Bit=1X\r\nud0Stg=x\r\nud0Skip=0\r\n");
    auto again = std::make_unique<TranslateRecord>();
    EXPECT_TRUE(LoadTranslateFile(*again, folder.File("t.zxt")));
    EXPECT_EQ(again->TranslateCount, 1);
    EXPECT_FALSE(LoadTranslateFile(*again, folder.File("none.zxt")));
    EXPECT_EQ(again->TranslateCount, 1) << "a file that does not open leaves the table";
    EXPECT_FALSE(SaveTranslateFile(*table, host, folder.File("no/t.zxt")));
    EXPECT_EQ(host.Remarks.size(), 1U);
    EXPECT_TRUE(host.Boxes.empty());
}

}  // namespace
}  // namespace zu
