// Rows of the serial view, its search and what a click finds.
#include <gtest/gtest.h>
#include <random>

#include "BusState.h"
#include "serial/RowCursors.h"
#include "serial/SerialRows.h"
#include "support/ScriptedHost.h"

namespace zu {
namespace {

using test::BusState;
using test::ScriptedHost;

class SerialRowsTest : public testing::Test {
  protected:
    SerialRowsTest() : bus(200) {
        bus->Serial.SerialMode = 1;
        bus->Cursors.Cur.fill(-1);
        Put({{10, 1}, {12, 4}, {14, 3}, {20, 15}, {30, 16}, {40, 2}});
        bus->Serial.SerialFirst = 10;
        bus->Serial.SerialLast = 40;
    }
    void Put(std::initializer_list<std::pair<std::size_t, int>> events) {
        for (const auto& [sample, code] : events) {
            bus->Serial.SerialEvents[sample] = static_cast<std::uint8_t>(code);
        }
    }
    void FiltersOff() { bus->Serial.SerialFilter.fill(0); }
    std::vector<std::int32_t> Samples(int count = 100) {
        std::vector<std::int32_t> samples;
        for (const SerialRow& row : SerialRows(*bus, count)) samples.push_back(row.Sample);
        return samples;
    }
    bool Search(int kind, SearchWay way) {
        bus->Serial.SearchKind = static_cast<std::int8_t>(kind);
        return SearchSerialEvent(*bus, host, way);
    }
    BusState bus;
    ScriptedHost host;
};

using SampleList = std::vector<std::int32_t>;

TEST_F(SerialRowsTest, ListsTheEventsOfTheRange) {
    EXPECT_EQ(Samples(), (SampleList{10, 12, 14, 20, 30, 40}));
    EXPECT_EQ(Samples(2), (SampleList{10, 12}));
    EXPECT_EQ(Samples(0), SampleList{});
    EXPECT_EQ(SerialRows(*bus, 1)[0], (SerialRow{10, 1, -1}));
}

TEST_F(SerialRowsTest, BeginsAtThePositionWithinTheRange) {
    bus->Serial.SerialDataPos = 13;
    EXPECT_EQ(SerialRowsStart(*bus), 13);
    EXPECT_EQ(Samples(), (SampleList{14, 20, 30, 40}));
    bus->Serial.SerialDataPos = 190;
    EXPECT_EQ(SerialRowsStart(*bus), 40);
    bus->Serial.SerialDataPos = -7;
    EXPECT_EQ(SerialRowsStart(*bus), 10);
    bus->Serial.SerialFirst = -50;
    bus->Serial.SerialDataPos = INT32_MIN;
    EXPECT_EQ(SerialRowsStart(*bus), 0);
}

TEST_F(SerialRowsTest, EachFlagListsItsEvents) {
    Put({{50, 21}, {51, 13}, {52, 5}, {53, 7}, {54, 19}, {55, 9}, {56, 18}, {57, 41}, {58, 25}, {59, 200}});
    const std::vector<SampleList> expected{{10}, {40}, {50}, {51}, {12, 14}, {20},
                                           {30}, {52}, {53}, {54}, {55, 56}};
    for (std::size_t flag = 0; flag < 11; ++flag) {
        FiltersOff();
        bus->Serial.SerialFilter[flag] = 1;
        EXPECT_EQ(Samples(), expected[flag]) << flag;
    }
}

TEST_F(SerialRowsTest, WithAllFiltersOffOnlyCursorsAreListed) {
    FiltersOff();
    bus->Cursors.Cur[2] = 20;
    bus->Cursors.Cur[kCursorT] = 33;
    const auto rows = SerialRows(*bus, 100);
    EXPECT_EQ(rows, (std::vector<SerialRow>{{20, 0, 2}, {33, 0, kCursorT}}))
        << "a cursor on an event that is not listed has no event text";
}

TEST_F(SerialRowsTest, CursorsMakeRowsAndNameThem) {
    bus->Cursors.Cur[0] = 11;
    bus->Cursors.Cur[1] = 12;
    bus->Cursors.Cur[5] = 13;
    const auto rows = SerialRows(*bus, 3);
    EXPECT_EQ(rows, (std::vector<SerialRow>{{10, 1, -1}, {11, 0, 0}, {12, 4, 1}}))
        << "the sixth is no cursor";
    EXPECT_EQ(kRowCursorTexts[0], "Cursor A");
    EXPECT_EQ(kRowCursorTexts[3], "Cursor D");
    EXPECT_EQ(kRowCursorTexts[kCursorT], "Trigger");
}

TEST_F(SerialRowsTest, CursorsOnOneSampleAreTakenInTheirOrder) {
    auto& cur = bus->Cursors.Cur;
    cur[0] = cur[1] = cur[2] = cur[3] = cur[4] = 77;
    EXPECT_EQ(CursorOnSample(*bus, 77), kCursorT);
    cur[4] = 0;
    EXPECT_EQ(CursorOnSample(*bus, 77), 1);
    cur[1] = 0;
    EXPECT_EQ(CursorOnSample(*bus, 77), 0);
    cur[0] = 0;
    EXPECT_EQ(CursorOnSample(*bus, 77), 2);
    cur[2] = 0;
    EXPECT_EQ(CursorOnSample(*bus, 77), 3);
    cur[3] = 0;
    EXPECT_EQ(CursorOnSample(*bus, 77), -1);
}

TEST_F(SerialRowsTest, RowsEndWithTheData) {
    bus->Cursors.Cur[0] = 199;
    bus->Cursors.Cur[1] = 200;
    EXPECT_EQ(Samples().back(), 199);
    EXPECT_FALSE(NextSerialRow(*bus, 200));
    EXPECT_FALSE(NextSerialRow(*bus, INT32_MAX));
    EXPECT_EQ(NextSerialRow(*bus, INT32_MIN)->Sample, 10);
    bus.SetDisplayLen(0);
    EXPECT_TRUE(SerialRows(*bus, 100).empty());
}

TEST_F(SerialRowsTest, MicrowireListsItsTwoDataBits) {
    bus->Serial.SerialMode = 2;
    FiltersOff();
    Put({{60, 26}, {61, 27}, {62, 28}, {63, 25}});
    EXPECT_EQ(Samples(), (SampleList{60, 61}));
}

TEST_F(SerialRowsTest, AClickCountsEveryEventListedOrNot) {
    FiltersOff();
    bus->Cursors.Cur[0] = 11;
    EXPECT_EQ(SerialRowSample(*bus, 0), 10);
    EXPECT_EQ(SerialRowSample(*bus, 1), 11);
    EXPECT_EQ(SerialRowSample(*bus, 6), 40);
    EXPECT_FALSE(SerialRowSample(*bus, 7)) << "past the end of data";
    EXPECT_FALSE(SerialRowSample(*bus, -1));
    bus->Serial.SerialDataPos = 15;
    EXPECT_EQ(SerialRowSample(*bus, 0), 20);
    bus->Serial.SerialDataPos = 100;
    EXPECT_FALSE(SerialRowSample(*bus, 0)) << "the click does not clamp as the list does";
    bus->Serial.SerialDataPos = -4;
    EXPECT_EQ(SerialRowSample(*bus, 0), 10);
}

TEST_F(SerialRowsTest, RowsBackwards) {
    bus->Cursors.Cur[0] = 25;
    EXPECT_EQ(SerialRowBack(*bus, 200), 40);
    EXPECT_EQ(SerialRowBack(*bus, 40), 40);
    EXPECT_EQ(SerialRowBack(*bus, 29), 25);
    EXPECT_EQ(SerialRowBack(*bus, 24), 20);
    EXPECT_FALSE(SerialRowBack(*bus, 9));
    EXPECT_FALSE(SerialRowBack(*bus, INT32_MIN));
    FiltersOff();
    EXPECT_EQ(SerialRowBack(*bus, INT32_MAX), 25);
    EXPECT_FALSE(SerialRowBack(*bus, 24));
}

/// The rows as one sample after the other gives them.
std::vector<SerialRow> PlainRows(const InstrumentState& state) {
    std::vector<SerialRow> rows;
    for (std::int32_t i = 0; i < std::ssize(state.Serial.SerialEvents); ++i) {
        const std::uint8_t code = state.Serial.SerialEvents[static_cast<std::size_t>(i)];
        const bool listed = code != 0 && PassesSerialFilter(state, code);
        const int cursor = CursorOnSample(state, i);
        if (listed || cursor >= 0) rows.push_back({i, listed ? code : std::uint8_t{0}, cursor});
    }
    return rows;
}

TEST_F(SerialRowsTest, AnyMapIsListedAsSampleBySample) {
    std::mt19937 random(8);
    for (int round = 0; round < 400; ++round) {
        for (auto& code : bus->Serial.SerialEvents) {
            code = static_cast<std::uint8_t>(random() % 4 == 0 ? random() % 45 : 0);
        }
        for (auto& flag : bus->Serial.SerialFilter) flag = random() % 3 == 0 ? 1 : 0;
        for (auto& cursor : bus->Cursors.Cur) cursor = static_cast<std::int32_t>(random() % 260) - 30;
        bus->Serial.SerialMode = static_cast<std::int8_t>(random() % 3);
        const auto expected = PlainRows(*bus);
        std::vector<SerialRow> forward;
        for (auto row = NextSerialRow(*bus, -9); row; row = NextSerialRow(*bus, row->Sample + 1)) {
            forward.push_back(*row);
        }
        ASSERT_EQ(forward, expected) << round;
        std::size_t left = expected.size();
        for (auto row = SerialRowBack(*bus, 500); row; row = SerialRowBack(*bus, *row - 1)) {
            ASSERT_GT(left, 0U);
            ASSERT_EQ(*row, expected[--left].Sample) << round;
        }
        ASSERT_EQ(left, 0U) << round;
    }
}

TEST_F(SerialRowsTest, ScrollScale) {
    EXPECT_EQ(SerialScrollScale(0, 0), 1);
    EXPECT_EQ(SerialScrollScale(100, 100 + 0x7FFE), 1);
    EXPECT_EQ(SerialScrollScale(100, 100 + 0x7FFF), 2);
    EXPECT_EQ(SerialScrollScale(0, 2097151), 65);
    EXPECT_EQ(SerialScrollScale(INT32_MIN, INT32_MAX), 131077);
}

TEST_F(SerialRowsTest, TheSearchListAndItsCodes) {
    const std::vector<std::pair<std::string_view, int>> expected{{"Start", 1}, {"Stop", 2}, {"ACK", 15},
                                                                 {"NACK", 16}, {"0", 3},    {"1", 4}};
    for (std::size_t kind = 0; kind < expected.size(); ++kind) {
        EXPECT_EQ(kSerialSearchKinds[kind].Text, expected[kind].first);
        EXPECT_EQ(kSerialSearchKinds[kind].Code, expected[kind].second);
    }
}

TEST_F(SerialRowsTest, NextAndPrevWalkFromThePosition) {
    Put({{50, 1}});
    bus->Serial.SerialDataPos = 0;
    EXPECT_TRUE(Search(0, SearchWay::Next));
    EXPECT_EQ(bus->Serial.SerialDataPos, 10);
    EXPECT_TRUE(Search(0, SearchWay::Next));
    EXPECT_EQ(bus->Serial.SerialDataPos, 50);
    EXPECT_TRUE(Search(5, SearchWay::Prev));
    EXPECT_EQ(bus->Serial.SerialDataPos, 12);
    EXPECT_TRUE(Search(0, SearchWay::Prev));
    EXPECT_EQ(bus->Serial.SerialDataPos, 10);
    EXPECT_TRUE(host.Boxes.empty());
}

TEST_F(SerialRowsTest, ASearchWrapsNowhere) {
    bus->Serial.SerialDataPos = 40;
    EXPECT_FALSE(Search(1, SearchWay::Next));
    EXPECT_EQ(bus->Serial.SerialDataPos, 40);
    bus->Serial.SerialDataPos = 10;
    EXPECT_FALSE(Search(0, SearchWay::Prev));
    EXPECT_EQ(host.Boxes, (std::vector<ScriptedHost::Box>{{"Not found", "Serial Search"},
                                                          {"Not found", "Serial Search"}}));
}

TEST_F(SerialRowsTest, ASearchBackEndsAtSampleOne) {
    Put({{0, 2}, {1, 16}});
    bus->Serial.SerialDataPos = 10;
    EXPECT_FALSE(Search(1, SearchWay::Prev)) << "sample 0 is not looked at";
    EXPECT_TRUE(Search(3, SearchWay::Prev));
    EXPECT_EQ(bus->Serial.SerialDataPos, 1);
}

TEST_F(SerialRowsTest, ASearchForwardFromBeforeTheDataSeesSampleZero) {
    Put({{0, 2}});
    bus->Serial.SerialDataPos = -1;
    EXPECT_TRUE(Search(1, SearchWay::Next));
    EXPECT_EQ(bus->Serial.SerialDataPos, 0);
    EXPECT_TRUE(Search(1, SearchWay::Next)) << "the sample it stands on is not looked at";
    EXPECT_EQ(bus->Serial.SerialDataPos, 40);
}

TEST_F(SerialRowsTest, StrangeSearches) {
    EXPECT_FALSE(Search(-1, SearchWay::Next));
    EXPECT_FALSE(Search(6, SearchWay::Next));
    for (const std::int32_t position : {INT32_MIN, INT32_MAX}) {
        bus->Serial.SerialDataPos = position;
        EXPECT_EQ(Search(0, SearchWay::Next), position < 0);
        bus->Serial.SerialDataPos = position;
        EXPECT_EQ(Search(0, SearchWay::Prev), position > 0);
    }
    bus.SetDisplayLen(0);
    EXPECT_FALSE(Search(0, SearchWay::Next));
    EXPECT_FALSE(Search(0, SearchWay::Prev));
}

}  // namespace
}  // namespace zu
