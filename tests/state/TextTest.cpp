// Byte strings in fields of fixed size.
#include <gtest/gtest.h>
#include <string>

#include "state/Text.h"

namespace zu {
namespace {

TEST(Text, StartsEmpty) {
    const Text<8> text;
    EXPECT_TRUE(text.Empty());
    EXPECT_EQ(text.View(), "");
    EXPECT_STREQ(text.CStr(), "");
}

TEST(Text, KeepsOneByteLessThanItsSize) {
    const Text<5> text("abcdefgh");
    EXPECT_EQ(text.View(), "abcd");
    EXPECT_STREQ(text.CStr(), "abcd") << "the terminator is inside the field";
    EXPECT_EQ(Text<5>("abcd").View(), "abcd");
    EXPECT_EQ(Text<1>("a").View(), "");
}

TEST(Text, EndsAtTheFirstNul) {
    const Text<16> text(std::string_view("ab\0cd", 5));
    EXPECT_EQ(text.View(), "ab");
}

TEST(Text, KeepsBytesAboveTheAsciiRange) {
    const Text<16> text("\xB5s \xFF");
    EXPECT_EQ(text.View(), "\xB5s \xFF");
}

TEST(Text, LeavesNothingOfALongerPredecessor) {
    Text<16> text("a long text");
    text = "ab";
    EXPECT_EQ(text.View(), "ab");
    EXPECT_EQ(text, Text<16>("ab"));
    EXPECT_EQ(std::string(text.CStr() + 3), "") << "the rest of the field is cleared";
    text.Clear();
    EXPECT_TRUE(text.Empty());
}

TEST(Text, MayBeAssignedFromItself) {
    Text<16> text("abc");
    text = text.View();
    EXPECT_EQ(text, "abc");
}

TEST(Text, ComparesByContent) {
    EXPECT_EQ(Text<16>("abc"), "abc");
    EXPECT_NE(Text<16>("abc"), "ABC");
    EXPECT_NE(Text<16>("abc"), Text<16>("abcd"));
}

TEST(Text, IsFilledAtCompileTime) {
    constexpr Text<4> kText("wxyz");
    static_assert(kText.View() == "wxy");
    static_assert(Text<4>::kSize == 4);
}

}  // namespace
}  // namespace zu
