// Colours as files and state hold them.
#include <gtest/gtest.h>

#include "state/Geometry.h"

namespace zu {
namespace {

TEST(Rgb, HasRedInItsLowestByte) {
    EXPECT_EQ(MakeRgb(0x12, 0x34, 0x56), 0x563412U);
    EXPECT_EQ(Red(0x563412), 0x12U);
    EXPECT_EQ(Green(0x563412), 0x34U);
    EXPECT_EQ(Blue(0x563412), 0x56U);
}

TEST(Rgb, TakesEachPartModulo256) {
    EXPECT_EQ(MakeRgb(16, 32, 64), 0x402010U);
    EXPECT_EQ(MakeRgb(256 + 1, 512 + 2, 1024 + 3), 0x030201U);
    EXPECT_EQ(Blue(0xFF000000U), 0U) << "the highest byte is no part of a colour";
}

TEST(WindowRect, ComparesBySides) {
    EXPECT_EQ((WindowRect{1, 2, 3, 4}), (WindowRect{1, 2, 3, 4}));
    EXPECT_NE((WindowRect{1, 2, 3, 4}), (WindowRect{1, 2, 3, 5}));
}

}  // namespace
}  // namespace zu
