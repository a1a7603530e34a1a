// The wide scans against the plain ones.
#include <gtest/gtest.h>
#include <vector>

#include "display/ByteScan.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::Random;

std::vector<std::uint8_t> RandomBytes(Random& random, std::int32_t size, std::int32_t rarity) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    auto value = static_cast<std::uint8_t>(random.Any());
    for (auto& byte : bytes) {
        if (random.OneIn(rarity)) value = static_cast<std::uint8_t>(random.Any());
        byte = value;
    }
    return bytes;
}

TEST(ByteScan, WideFormsFindWhatThePlainOnesFind) {
    Random random(3);
    for (int round = 0; round < 20000; ++round) {
        const auto bytes = RandomBytes(random, random.Below(400), 1 + random.Below(300));
        const std::uint8_t* end = bytes.data() + bytes.size();
        const std::uint8_t* at = bytes.data() + random.Below(static_cast<std::int64_t>(bytes.size()));
        const auto mask = static_cast<std::uint8_t>(1 << random.Below(8));
        const auto value = static_cast<std::uint8_t>(random.OneIn(2) ? 0 : mask);
        const std::uint8_t* plain = scan::PlainDifference(at, end, mask, value);
        ASSERT_EQ(scan::WideDifference(at, end, mask, value), plain);
        ASSERT_EQ(scan::WordDifference(at, end, mask, value), plain);
        ASSERT_EQ(scan::WideDifferenceBack(bytes.data(), at, mask, value),
                  scan::PlainDifferenceBack(bytes.data(), at, mask, value));
        const auto all = static_cast<std::uint8_t>(random.Any());
        ASSERT_EQ(scan::WideChanges(at, end, all), scan::PlainChanges(at, end, all));
        if (end - at >= 64) {
            ASSERT_EQ(scan::WideLevels(at, mask), scan::PlainLevels(at, mask));
        }
    }
}

TEST(ByteScan, BehindWhatIsStoredThereAreZeros) {
    const std::vector<std::uint8_t> ones(100, 0xFF);
    const ByteRun run{ones.data(), 100};
    EXPECT_EQ(run.Differs(0, 200, 1, 1), 100);
    EXPECT_EQ(run.Differs(100, 200, 1, 0), 200);
    EXPECT_EQ(run.Differs(150, 200, 1, 1), 150);
    EXPECT_EQ(run.Differs(0, 100, 1, 1), 100);
    EXPECT_EQ(run.Differs(60, 50, 1, 1), 50);
    EXPECT_EQ(run.At(99, 4), 4);
    EXPECT_EQ(run.At(100, 4), 0);
    EXPECT_EQ(run.At(-1, 4), 0);
    EXPECT_EQ(run.Changes(0, 100, 0xFF), 0);
    EXPECT_EQ(run.Changes(0, 101, 0xFF), 0xFF);
    EXPECT_EQ(run.Changes(100, 140, 0), 0);
}

}  // namespace
}  // namespace zu
