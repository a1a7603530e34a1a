// Records of a data file as its headers describe them.
#include <gtest/gtest.h>

#include "CliSupport.h"
#include "cli/Records.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

std::vector<FileRecordInfo> RecordsOf(const std::string& bytes) {
    const TempFolder folder;
    return RecordsOfFile(WriteBytes(folder.File("a.zu"), bytes));
}

using Records = std::vector<FileRecordInfo>;

TEST(Records, AreListedInTheirOrder) {
    EXPECT_EQ(RecordsOf(DataFile(Record("D0", 0, "ab") + Record("PG0", 0, "ab") + Record("IO", 7, "c"))),
              (Records{{"D0", 0, 2}, {"PG0", 0, 2}, {"IO", 7, 1}}));
}

TEST(Records, EndAtTheEndMarker) {
    EXPECT_EQ(RecordsOf(DataFile(Record("D0", 0, "ab")) + Record("D1", 0, "ab")), (Records{{"D0", 0, 2}}));
}

TEST(Records, DoNotLookIntoPayloads) {
    const std::string payload = Record("D5", 0, "x") + "\r\n[Settings]\r\n";
    EXPECT_EQ(RecordsOf(DataFile(Record("D0", 0, payload) + Record("D1", 0, "ab"))),
              (Records{{"D0", 0, static_cast<std::int32_t>(payload.size())}, {"D1", 0, 2}}));
}

TEST(Records, AreNotLookedForInsideTheModelLine) {
    EXPECT_EQ(RecordsOf("[Model x [Data D0 0 1]\r\n[Data D1 0 1]\nx"), (Records{{"D1", 0, 1}}));
    EXPECT_EQ(RecordsOf("[Model]\r\n[Data D0 0 1]\nx"), Records{}) << "a load ends there too";
}

TEST(Records, KeepImpossibleNumbersWithinTheirWidth) {
    EXPECT_EQ(
        RecordsOf("\r\n[Data D0 -5 -1]\r\n\r\n[Data D1 99999999999 99999999999]\r\n\r\n[Data D2 0 1]\r\nx"),
        (Records{{"D0", -5, -1}, {"D1", INT32_MAX, INT32_MAX}}));
}

TEST(Records, OfACutFileEndWithIt) {
    EXPECT_EQ(RecordsOf("\r\n[Data D0 0 100]\r\nabc"), (Records{{"D0", 0, 100}}));
    EXPECT_EQ(RecordsOf("\r\n[Data D0 0"), Records{});
    EXPECT_EQ(RecordsOf("["), Records{});
    EXPECT_EQ(RecordsOf(""), Records{});
}

TEST(Records, OfAMissingFileAreNone) {
    const TempFolder folder;
    EXPECT_EQ(RecordsOfFile(folder.File("missing.zu")), Records{});
    EXPECT_EQ(RecordsOfFile(folder.Path().string()), Records{});
}

TEST(Records, AreAtMostAsManyAsAnyMeasurementHas) {
    std::string bytes;
    for (int i = 0; i < 70000; ++i) bytes += "[Data D0 0 0]\n";
    EXPECT_EQ(RecordsOf(bytes).size(), 65536U);
}

TEST(Ranges, JoinWhatContinues) {
    EXPECT_EQ(RangesOf({{"D0", 0, 100}, {"PG0", 0, 100}, {"D0", 100, 50}, {"D0", 200, 1}, {"PG0", 100, 1}}),
              (Records{{"D0", 0, 150}, {"PG0", 0, 101}, {"D0", 200, 1}}));
}

TEST(Ranges, DoNotJoinAcrossTheEndOfTheWidth) {
    const Records records{{"D0", 0, INT32_MAX}, {"D0", INT32_MAX, 1}, {"D0", -5, -1}, {"D0", -6, 1}};
    EXPECT_EQ(RangesOf(records), records);
}

}  // namespace
}  // namespace zu::test
