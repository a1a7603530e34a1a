// The terminal as host, and text on its way there.
#include <gtest/gtest.h>
#include <sstream>

#include "cli/TerminalHost.h"
#include "cli/TerminalText.h"

namespace zu {
namespace {

TEST(TerminalText, BecomesUtf8) {
    EXPECT_EQ(ToUtf8("plain"), "plain");
    EXPECT_EQ(ToUtf8("\xB5s \xFF"), "\xC2\xB5s \xC3\xBF");
}

TEST(TerminalText, LosesItsControlCharacters) {
    EXPECT_EQ(ForTerminal(std::string_view("a\0b\n\x1B\x7F\x80\x9F\xA0", 9)), "a.b.....\xC2\xA0");
}

TEST(Utf8, IsTold) {
    for (const char* text :
         {"", "abc", "\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(IsUtf8(text)) << text;
    }
}

TEST(Utf8, IsNotTakenForWhatIsBroken) {
    for (const char* text : {"\x80", "\xC0\x80", "\xC1\xBF", "\xC2",
                             "\xC2"
                             "a",
                             "\xE0\x9F\xBF", "\xED\xA0\x80", "\xE1\x80", "\xF0\x8F\xBF\xBF",
                             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(IsUtf8(text)) << text;
    }
}

TEST(Trimmed, DropsBlanksAtBothEnds) {
    EXPECT_EQ(Trimmed("  20 MSa  (50 ns) "), "20 MSa  (50 ns)");
    EXPECT_EQ(Trimmed("   "), "");
    EXPECT_EQ(Trimmed(""), "");
}

class TerminalHostTest : public testing::Test {
  protected:
    std::ostringstream out_;
    std::ostringstream err_;
    TerminalHost host_{out_, err_};
};

TEST_F(TerminalHostTest, WritesMessagesToStandardErrorAndKeepsThem) {
    host_.Message("File could not be opened", "File Error(9):");
    host_.Message("", "File Load Error(1)");
    host_.Message("Error: File not found.", "");
    EXPECT_EQ(err_.str(),
              "zu-cli: File Error(9): File could not be opened\n"
              "zu-cli: File Load Error(1)\n"
              "zu-cli: Error: File not found.\n");
    EXPECT_EQ(out_.str(), "");
    const std::vector<Problem> expected{{"File Error(9):", "File could not be opened"},
                                        {"File Load Error(1)", ""},
                                        {"", "Error: File not found."}};
    EXPECT_EQ(host_.Problems(), expected);
}

TEST_F(TerminalHostTest, AnswersNo) {
    EXPECT_FALSE(host_.Ask("Abort load?", "Warning"));
    EXPECT_FALSE(host_.Confirm("Go on?", "Note:"));
    EXPECT_EQ(host_.Problems().size(), 2U);
    EXPECT_EQ(host_.ChooseFile({}), std::nullopt);
}

TEST_F(TerminalHostTest, PrintsLinesOnStandardOutput) {
    host_.PrintLine("ZU NOT found");
    EXPECT_EQ(out_.str(), "ZU NOT found\n");
    EXPECT_EQ(err_.str(), "");
}

TEST_F(TerminalHostTest, KnowsTheTime) {
    const LocalTime now = host_.Now();
    EXPECT_GE(now.Year, 2024);
    EXPECT_TRUE(now.Month >= 1 && now.Month <= 12);
    EXPECT_TRUE(now.Day >= 1 && now.Day <= 31);
    const std::uint32_t before = host_.TickCount();
    host_.WaitNanoseconds(2e6);
    EXPECT_GE(host_.TickCount() - before, 1U) << "a wait lasts at least as long as asked";
}

TEST_F(TerminalHostTest, EndsTheProcess) {
    EXPECT_EXIT(host_.EndProcess(3), testing::ExitedWithCode(3), "");
}

}  // namespace
}  // namespace zu
