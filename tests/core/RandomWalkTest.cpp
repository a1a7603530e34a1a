// A user who does anything at any time leaves the program in order.
#include <gtest/gtest.h>

#include "RandomWalk.h"

namespace zu {
namespace {

class Walk : public testing::TestWithParam<unsigned> {};

TEST_P(Walk, LeavesTheProgramInOrder) {
    test::RandomWalk walk(GetParam());
    walk.Run(500);
    EXPECT_GT(walk.Captures(), 0);
    EXPECT_GT(walk.Faults(), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Walk, testing::Values(5U, 9U, 13U, 21U, 34U, 47U));

}  // namespace
}  // namespace zu
