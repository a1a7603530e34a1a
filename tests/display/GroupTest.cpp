// Values of groups and their texts.
#include <gtest/gtest.h>

#include "display/GroupScan.h"
#include "display/GroupValue.h"
#include "support/Groups.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::FillPod;
using test::MakeGroup;
using test::MakeRun;
using test::MakeState;
using test::SetHigh;
using test::SetLength;

std::string TextOf(InstrumentState& state, const GroupRecord& group, std::int64_t i, GroupFormat format) {
    return GroupText(state, group, GroupReader(state, group).At(i), format);
}

TEST(GroupValue, FirstChannelIsTheLeastSignificantBit) {
    const auto state = MakeState();
    SetLength(*state, 100);
    SetHigh(*state, 9, 10, 20);
    const GroupRecord& group = MakeGroup(*state, {3, 9, 0});
    const GroupReader reader(*state, group);
    EXPECT_EQ(reader.Length(), 100);
    EXPECT_EQ(GroupNumber(group, reader.At(10)), 2);
    EXPECT_EQ(GroupNumber(group, reader.At(20)), 0);
    EXPECT_EQ(GroupBits(group, reader.At(10)), "010");
}

TEST(GroupValue, AbsentChannelsMakeTheGroupAbsent) {
    const auto state = MakeState();
    SetLength(*state, 100);
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {})).Length(), 0);
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, 40})).Length(), 0) << "beyond the model";
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, -1})).Length(), 0);
    SetBufLenFull(state->Buffer.BufLen, 1, 60);
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, 8})).Length(), 60) << "the shortest pod";
    state->Pods.AdjAddr[1] = 20;
    EXPECT_EQ(GroupReader(*state, MakeGroup(*state, {0, 8})).Length(), 40);
}

TEST(GroupText, HexPadsToWholeDigits) {
    const auto state = MakeState();
    SetLength(*state, 16);
    FillPod(*state, 0, [](std::int32_t) { return 0x25; });
    FillPod(*state, 1, [](std::int32_t) { return 0xAB; });
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 6), 0, GroupFormat::Hex), "25");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 1), 0, GroupFormat::Hex), "1");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 16), 0, GroupFormat::Hex), "AB25");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 13), 0, GroupFormat::Hex), "0B25");
    GroupRecord& signedGroup = MakeRun(*state, 8, 8);
    signedGroup.TwosComplement = 1;
    EXPECT_EQ(TextOf(*state, signedGroup, 0, GroupFormat::Hex), "AB") << "the sign does not show in hex";
    EXPECT_EQ(TextOf(*state, signedGroup, 0, GroupFormat::Binary), "10101011");
}

TEST(GroupText, DecimalIsPaddedAndSigned) {
    const auto state = MakeState();
    SetLength(*state, 256);
    FillPod(*state, 0, [](std::int32_t i) { return i; });
    GroupRecord& group = MakeRun(*state, 0, 8);
    EXPECT_EQ(TextOf(*state, group, 7, GroupFormat::Decimal), "007");
    EXPECT_EQ(TextOf(*state, group, 255, GroupFormat::Decimal), "255");
    group.TwosComplement = 1;
    EXPECT_EQ(TextOf(*state, group, 255, GroupFormat::Decimal), "-001");
    EXPECT_EQ(TextOf(*state, group, 128, GroupFormat::Decimal), "-128");
    EXPECT_EQ(TextOf(*state, group, 127, GroupFormat::Decimal), "127");
    GroupRecord& three = MakeRun(*state, 0, 3);
    three.TwosComplement = 1;
    EXPECT_EQ(TextOf(*state, three, 7, GroupFormat::Decimal), "-1");
    EXPECT_EQ(TextOf(*state, three, 3, GroupFormat::Decimal), "3");
}

TEST(GroupText, WideGroupsCountTheirFirst32ChannelsAndShowAllBits) {
    const auto state = MakeState(15);
    SetLength(*state, 16);
    for (int pod = 0; pod < 20; ++pod) FillPod(*state, pod, [&](std::int32_t) { return pod + 1; });
    GroupRecord& group = MakeRun(*state, 0, 160);
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Hex), "14131211100F0E0D0C0B0A090807060504030201");
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Binary).size(), 160U);
    EXPECT_EQ(GroupNumber(group, GroupReader(*state, group).At(0)), 0x04030201);
    FillPod(*state, 3, [](std::int32_t) { return 0xFF; });
    EXPECT_EQ(GroupNumber(group, GroupReader(*state, group).At(0)), 0xFF030201LL);
    group.TwosComplement = 1;
    EXPECT_EQ(GroupNumber(group, GroupReader(*state, group).At(0)), 0xFF030201LL - (1LL << 32));
    group.Size = 4000;
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Hex).size(), 40U);
    EXPECT_EQ(TextOf(*state, group, 0, GroupFormat::Decimal).size(), 55U);
}

TEST(GroupText, AsciiFromTheLowByteUp) {
    const auto state = MakeState();
    SetLength(*state, 16);
    FillPod(*state, 0, [](std::int32_t i) { return i == 0 ? 'H' : 0; });
    FillPod(*state, 1, [](std::int32_t) { return 'i'; });
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 16), 0, GroupFormat::Ascii), "Hi");
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 0, 16), 1, GroupFormat::Ascii), " i")
        << "a zero byte is a blank";
    EXPECT_EQ(TextOf(*state, MakeRun(*state, 8, 7), 0, GroupFormat::Ascii), "i");
}

TEST(GroupText, TranslationIsTheFirstEntryInForceThatMatches) {
    const auto state = MakeState();
    SetLength(*state, 256);
    FillPod(*state, 0, [](std::int32_t i) { return i; });
    const GroupRecord& group = MakeRun(*state, 0, 8);
    EXPECT_EQ(TextOf(*state, group, 5, GroupFormat::Translate), "----------");
    auto& table = state->Translate;
    table.Entry[2] = {std::string_view("00000101"), std::string_view("never"), -1, 5, 255};
    table.Entry[4] = {std::string_view("0000010X"), std::string_view("JMP"), 2, 4, 254};
    table.Entry[9] = {std::string_view("XXXXXXXX"), std::string_view("other"), 0, 0, 0};
    table.TranslateCount = 2;
    EXPECT_EQ(TextOf(*state, group, 5, GroupFormat::Translate), "JMP");
    EXPECT_EQ(TextOf(*state, group, 4, GroupFormat::Translate), "JMP");
    EXPECT_EQ(TextOf(*state, group, 6, GroupFormat::Translate), "other");
}

TEST(GroupText, LeastLengthIsNeverMoreThanATextHas) {
    test::Random random(2);
    const auto state = MakeState(15);
    SetLength(*state, 64);
    for (int pod = 0; pod < 20; ++pod) FillPod(*state, pod, [&](std::int32_t) { return random.Below(256); });
    for (int round = 0; round < 500; ++round) {
        GroupRecord& group = MakeRun(*state, 0, 1 + random.Below(160));
        group.TwosComplement = static_cast<std::int8_t>(random.Below(2));
        for (int format = 0; format < 5; ++format) {
            const auto f = static_cast<GroupFormat>(format);
            ASSERT_LE(LeastTextLength(group, f),
                      static_cast<std::int32_t>(TextOf(*state, group, round % 64, f).size()));
        }
    }
}

TEST(GroupScan, EqualsTheReaderSampleBySample) {
    test::Random random(7);
    const auto state = MakeState(15);
    for (int round = 0; round < 1000; ++round) {
        const std::int32_t length = 1 + random.Below(400);
        SetLength(*state, length);
        for (int pod = 0; pod < 5; ++pod) {
            FillPod(*state, pod, [&](std::int32_t) {
                return random.OneIn(3) ? 255 : random.OneIn(2) ? 0 : random.Below(256);
            });
            state->Pods.AdjAddr[static_cast<std::size_t>(pod)] = random.OneIn(4) ? random.Below(300) : 0;
        }
        const std::int32_t size = 1 + random.Below(40);
        GroupRecord& group =
            MakeRun(*state, random.OneIn(2) ? 0 : random.Below(8), random.OneIn(2) ? size : 1 + size % 16);
        if (random.OneIn(3))
            std::swap(group.Channels[0], group.Channels[static_cast<std::size_t>(group.Size - 1)]);
        group.TwosComplement = static_cast<std::int8_t>(random.Below(2));

        if (random.OneIn(2)) {
            for (std::int32_t i = group.Size - 1; i > 0; --i) {
                std::swap(group.Channels[static_cast<std::size_t>(i)],
                          group.Channels[static_cast<std::size_t>(random.Below(i + 1))]);
            }
        }

        const GroupScan scan(*state, group, ShuffleScan::Possible() && round % 2 == 0);
        const GroupReader reader(*state, group);
        ASSERT_EQ(scan.Length(), reader.Length());
        if (scan.Length() == 0) continue;
        const std::int64_t from = random.Below(scan.Length());
        const std::int64_t to = from + 1 + random.Below(scan.Length() - from);
        bool disagrees = false;
        std::int64_t least = INT64_MAX;
        std::int64_t most = INT64_MIN;
        for (std::int64_t i = from; i < to; ++i) {
            const GroupValue value = reader.At(i);
            ASSERT_EQ(scan.At(i), GroupNumber(group, value));
            const std::string bits = GroupBits(group, value);
            disagrees =
                disagrees || (bits.find('0') != std::string::npos && bits.find('1') != std::string::npos);
            least = std::min(least, scan.At(i));
            most = std::max(most, scan.At(i));
        }
        ASSERT_EQ(scan.Disagrees(from, to), disagrees) << round;
        const GroupScan::Extent extent = scan.ExtentOf(from, to);
        ASSERT_EQ(extent.Minimum, least) << round;
        ASSERT_EQ(extent.Maximum, most) << round;
    }
}

}  // namespace
}  // namespace zu
