// 100,000 actions in all, on every model and most cables. The sanitizers take ten times as long, so that
// build does a tenth unless ZU_LONG_WALKS says how many walks there shall be.
#include <cstdlib>
#include <gtest/gtest.h>

#include "RandomWalk.h"

namespace zu {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr unsigned kWalks = 5;
#else
constexpr unsigned kWalks = 50;
#endif
constexpr int kActions = 2000;

unsigned Walks() {
    const char* asked = std::getenv("ZU_LONG_WALKS");
    const int count = asked != nullptr ? std::atoi(asked) : 0;
    return count > 0 ? static_cast<unsigned>(count) : kWalks;
}

class LongWalk : public testing::TestWithParam<unsigned> {};

TEST_P(LongWalk, LeavesTheProgramInOrder) {
    test::RandomWalk walk(GetParam());
    walk.Run(kActions);
    EXPECT_GT(walk.Captures(), 0);
    EXPECT_GT(walk.FastLoops(), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, LongWalk, testing::Range(1000U, 1000U + Walks()));

}  // namespace
}  // namespace zu
