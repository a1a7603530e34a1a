#include <gtest/gtest.h>

#include "files/Ini.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

using namespace std::string_literals;
using test::TempFolder;
using test::WriteBytes;

std::string_view Value(const IniText& ini, std::string_view section, std::string_view key) {
    return ini.Find(section, key).value_or("(absent)");
}

TEST(IniText, FindsKeysBySectionWithoutRegardToCaseAndBlanks) {
    const IniText ini = IniText::Parse("[One]\r\nKey=a\r\n [ tWo\t]\r\n \tOther Key \t=b\r\n");
    EXPECT_EQ(Value(ini, "ONE", "key"), "a");
    EXPECT_EQ(Value(ini, " one ", " KEY "), "a");
    EXPECT_EQ(Value(ini, "two", "other key"), "b");
    EXPECT_EQ(Value(ini, "one", "other key"), "(absent)");
    EXPECT_EQ(Value(ini, "three", "key"), "(absent)");
    EXPECT_TRUE(ini.HasSection("Two"));
    EXPECT_FALSE(ini.HasSection("three"));
}

TEST(IniText, KeepsEveryByteOfAValue) {
    const std::string text =
        "[s]\na= two blanks  \nb=\"quoted\"\nc='x'\nd=1=2;3\ne=\ttab\nf=a\0b\x1A"
        "c\ng=\xE4\n"s;
    const IniText ini = IniText::Parse(text);
    EXPECT_EQ(Value(ini, "s", "a"), " two blanks  ");
    EXPECT_EQ(Value(ini, "s", "b"), "\"quoted\"");
    EXPECT_EQ(Value(ini, "s", "c"), "'x'");
    EXPECT_EQ(Value(ini, "s", "d"), "1=2;3");
    EXPECT_EQ(Value(ini, "s", "e"), "\ttab");
    EXPECT_EQ(Value(ini, "s", "f"), std::string_view("a\0b\x1A"
                                                     "c",
                                                     5));
    EXPECT_EQ(Value(ini, "s", "g"), "\xE4");
}

TEST(IniText, EndsLinesAtLfAndDropsOneCr) {
    const IniText ini = IniText::Parse("[s]\nlf=1\ncrlf=2\r\ncrcrlf=3\r\r\ncr=4\rx=5\nlast=6\r");
    EXPECT_EQ(Value(ini, "s", "lf"), "1");
    EXPECT_EQ(Value(ini, "s", "crlf"), "2");
    EXPECT_EQ(Value(ini, "s", "crcrlf"), "3\r");
    EXPECT_EQ(Value(ini, "s", "cr"), "4\rx=5");
    EXPECT_EQ(Value(ini, "s", "last"), "6");
}

TEST(IniText, TakesTheFirstSectionAndTheFirstKey) {
    const IniText ini = IniText::Parse("[s]\na=1\nA=2\n[t]\na=3\n[S]\na=4\nb=5\n");
    EXPECT_EQ(Value(ini, "s", "a"), "1");
    EXPECT_EQ(Value(ini, "t", "a"), "3");
    EXPECT_EQ(Value(ini, "s", "b"), "(absent)") << "a second section of the name is not looked at";
}

TEST(IniText, SkipsCommentsAndWhatIsNeitherHeadNorKey) {
    const IniText ini = IniText::Parse("a=0\n[s]\n;a=1\nnothing\n=2\n[broken\n[also=broken\n   \na=3\n");
    EXPECT_EQ(Value(ini, "s", "a"), "3");
    EXPECT_EQ(Value(ini, "", "a"), "(absent)");
    EXPECT_EQ(Value(ini, "s", "nothing"), "(absent)");
    EXPECT_EQ(Value(ini, "s", ""), "(absent)");
    EXPECT_EQ(Value(ini, "s", "[also"), "(absent)");
}

TEST(IniText, EndsAtTheFirstCommentOrModelLine) {
    for (const char* mark : {"[Comment File saved]", "[MODEL x 0 0]", "[comment", "[modelling]"}) {
        const IniText ini = IniText::Parse("[s]\na=1\n" + std::string(mark) + "\r\n[t]\nb=2\n[s]\nb=3\n");
        EXPECT_EQ(Value(ini, "s", "a"), "1") << mark;
        EXPECT_FALSE(ini.HasSection("t")) << mark;
    }
    const IniText none = IniText::Parse("[s]\nModel=[Model\n [Model x]\na=1\n");
    EXPECT_EQ(Value(none, "s", "Model"), "[Model");
    EXPECT_EQ(Value(none, "Model x", "a"), "1") << "only the start of a line counts";
    EXPECT_FALSE(IniText::Parse("[Model x]\n[s]\na=1\n").HasSection("s"));
}

TEST(IniText, ReadsNumbersAndTakesAStoredMinusOneFor32BitsAsAbsent) {
    const IniText ini = IniText::Parse("[n]\na=-1\nb=\nc=x\nd=4294967295\ne=2147483648\nf= -1 \ng=12\n");
    EXPECT_EQ(ini.Number("n", "a"), -1);
    EXPECT_EQ(ini.Int32("n", "a"), std::nullopt);
    EXPECT_EQ(ini.Int32("n", "b"), 0) << "present but empty is 0";
    EXPECT_EQ(ini.Int32("n", "c"), 0);
    EXPECT_EQ(ini.Number("n", "d"), 4294967295);
    EXPECT_EQ(ini.Int32("n", "d"), std::nullopt) << "it is -1 in 32 bits";
    EXPECT_EQ(ini.Int32("n", "e"), INT32_MIN);
    EXPECT_EQ(ini.Int32("n", "f"), std::nullopt);
    EXPECT_EQ(ini.Int32("n", "g"), 12);
    EXPECT_EQ(ini.Number("n", "none"), std::nullopt);
    EXPECT_EQ(ini.Int32("n", "none"), std::nullopt);
}

TEST(IniText, OfNothingIsEmpty) {
    for (const std::string& text : {""s, "\0\0\0"s, "\n\r\n"s}) {
        const IniText ini = IniText::Parse(text);
        EXPECT_EQ(ini.Find("a", "b"), std::nullopt);
        EXPECT_FALSE(ini.HasSection(""));
    }
    const IniText none;
    EXPECT_EQ(none.Find("a", "b"), std::nullopt);
}

TEST(IniText, StaysValidWhenItIsMoved) {
    IniText first = IniText::Parse("[s]\na=1\n");
    const IniText second = std::move(first);
    EXPECT_EQ(Value(second, "s", "a"), "1");
}

TEST(IniTextLoad, ReadsTheTextInFrontOfTheBinaryPart) {
    const TempFolder folder;
    std::string bytes = "\r\n[s]\r\na=1\r\n\r\n[Comment x]\r\n[Model y 0 0]\r\n[t]\r\nb=1\r\n";
    bytes += std::string(3'000'000, '\n');
    const auto ini = IniText::Load(WriteBytes(folder.File("x.zu"), bytes));
    ASSERT_TRUE(ini);
    EXPECT_EQ(Value(*ini, "s", "a"), "1");
    EXPECT_FALSE(ini->HasSection("t"));
}

TEST(IniTextLoad, SeesAMarkThatBlocksOfReadingCut) {
    const TempFolder folder;
    for (const std::size_t fill : {65527U, 65530U, 65531U, 65535U, 65536U, 65540U}) {
        std::string bytes = "[s]\na=" + std::string(fill - 7, 'x') + "\n[Comment z]\n[t]\nb=1\n";
        const auto ini = IniText::Load(WriteBytes(folder.File("x.zu"), bytes));
        ASSERT_TRUE(ini);
        EXPECT_EQ(Value(*ini, "s", "a").size(), fill - 7);
        EXPECT_FALSE(ini->HasSection("t")) << fill;
    }
}

TEST(IniTextLoad, LooksAtTheFirstMillionBytesOnly) {
    const TempFolder folder;
    const std::string bytes = "[s]\na=1\nlong=" + std::string(IniText::kLargestText, 'x') + "\nb=2\n";
    const auto ini = IniText::Load(WriteBytes(folder.File("x.ini"), bytes));
    ASSERT_TRUE(ini);
    EXPECT_EQ(Value(*ini, "s", "a"), "1");
    EXPECT_EQ(ini->Find("s", "b"), std::nullopt);
}

TEST(IniTextLoad, OpensOrdinaryFilesInAnyCaseAndNothingElse) {
    const TempFolder folder;
    WriteBytes(folder.File("Run.Ini"), "[s]\na=1\n");
    EXPECT_TRUE(IniText::Load(folder.File("RUN.INI")));
    EXPECT_FALSE(IniText::Load(folder.File("none.ini")));
    EXPECT_FALSE(IniText::Load(folder.Path().string()));
    EXPECT_FALSE(IniText::Load("/dev/zero"));
    EXPECT_FALSE(IniText::Load(""));
}

TEST(IniFile, ReplacesAValueInItsPlace) {
    IniFile file("; mine\r\n[File]\r\na=1\r\nunknown = x \r\n\r\n[Main]\r\nleft=5\r\n");
    file.Set("file", "A", "two");
    file.Set("Main", "left", -7);
    EXPECT_EQ(file.Text(), "; mine\r\n[File]\r\nA=two\r\nunknown = x \r\n\r\n[Main]\r\nleft=-7\r\n");
}

TEST(IniFile, AddsKeysAtTheEndOfTheirSection) {
    IniFile file("[File]\na=1\n\n[Main]\nleft=5");
    file.Set("File", "b", "2");
    file.Set("Main", "top", 3);
    file.Set("New", "c", "4");
    file.Set("New", "d", "5");
    EXPECT_EQ(file.Text(),
              "[File]\r\na=1\r\nb=2\r\n\r\n[Main]\r\nleft=5\r\ntop=3\r\n[New]\r\nc=4\r\nd=5\r\n");
}

TEST(IniFile, StartsFromNothing) {
    IniFile file;
    EXPECT_EQ(file.Text(), "");
    file.Set("A", "k", "v");
    EXPECT_EQ(file.Text(), "[A]\r\nk=v\r\n");
}

TEST(IniFile, FindsInTheFirstSectionOfTheName) {
    IniFile file("[a]\nk=1\n[b]\nk=2\n[A]\nk=3\nj=4\n;k=9\n");
    EXPECT_EQ(file.Find("A", "K"), "1");
    EXPECT_EQ(file.Find("b", "k"), "2");
    EXPECT_EQ(file.Find("a", "j"), std::nullopt);
    EXPECT_EQ(file.Find("c", "k"), std::nullopt);
    EXPECT_EQ(file.Number("b", "k", 9), 2);
    EXPECT_EQ(file.Number("b", "none", 9), 9);
    file.Set("a", "j", "5");
    EXPECT_EQ(file.Text(), "[a]\r\nk=1\r\nj=5\r\n[b]\r\nk=2\r\n[A]\r\nk=3\r\nj=4\r\n;k=9\r\n");
}

TEST(IniFile, KeepsALineBreakOutOfAValue) {
    IniFile file;
    file.Set("a", "k", "x\r\n[b]\r\nk=1");
    EXPECT_EQ(file.Text(), "[a]\r\nk=x  [b]  k=1\r\n");
}

TEST(IniFile, ComesBackFromDisk) {
    const TempFolder folder;
    IniFile file;
    file.Set("Main", "left", 12);
    const std::string path = WriteBytes(folder.File("p.ini"), file.Text());
    EXPECT_EQ(IniFile::Load(path).Number("Main", "left", 0), 12);
    EXPECT_EQ(IniFile::Load(folder.File("none.ini")).Text(), "");
}

}  // namespace
}  // namespace zu
