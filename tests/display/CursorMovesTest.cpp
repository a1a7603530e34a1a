// Cursors brought into the window or to a point, and the origin of zooms to come.
#include <gtest/gtest.h>

#include "EditState.h"
#include "display/CursorMoves.h"

namespace zu {
namespace {

class CursorMoves : public testing::Test {
  protected:
    CursorMoves() : state(test::EditState(test::kRow40)) { state->Memory.DisplayLen = 1000; }
    std::int32_t Moved(int cursor, std::int32_t from, ShownSpan shown) {
        state->Cursors.Cur.at(static_cast<std::size_t>(cursor)) = from;
        CursorToWindow(*state, cursor, shown);
        return state->Cursors.Cur.at(static_cast<std::size_t>(cursor));
    }
    std::unique_ptr<InstrumentState> state;
};

TEST_F(CursorMoves, ACursorOutsideGoesToTheMiddleLessItsNumber) {
    for (int cursor = 0; cursor <= 4; ++cursor) EXPECT_EQ(Moved(cursor, 10, {200, 100}), 250 - cursor);
    EXPECT_EQ(Moved(2, 300, {200, 100}), 248) << "one sample behind the window";
    EXPECT_EQ(Moved(2, 199, {200, 100}), 248);
}

TEST_F(CursorMoves, ACursorInsideStays) {
    EXPECT_EQ(Moved(1, 200, {200, 100}), 200);
    EXPECT_EQ(Moved(1, 299, {200, 100}), 299);
}

TEST_F(CursorMoves, ACursorOutOfRangeEndsBeforeTheEnd) {
    for (int cursor = 0; cursor <= 4; ++cursor) {
        EXPECT_EQ(Moved(cursor, 10, {990, 100}), 999 - cursor);
        EXPECT_EQ(Moved(cursor, 1000, {990, 100}), 999 - cursor);
    }
    EXPECT_EQ(Moved(3, 10, {0, 4}), 996) << "left of the first sample counts as out of range too";
    state->Memory.DisplayLen = 0;
    EXPECT_EQ(Moved(4, 10, {0, 100}), 0);
}

TEST_F(CursorMoves, APointIsKeptInsideTheMemory) {
    CursorToPoint(*state, 3, 123);
    EXPECT_EQ(state->Cursors.Cur[3], 123);
    CursorToPoint(*state, 3, -5);
    EXPECT_EQ(state->Cursors.Cur[3], 0);
    CursorToPoint(*state, 3, INT64_MAX);
    EXPECT_EQ(state->Cursors.Cur[3], 1000);
}

TEST_F(CursorMoves, OtherNumbersAreNoCursors) {
    const auto before = state->Cursors.Cur;
    for (const int cursor : {-1, 5, 12, INT32_MAX}) {
        CursorToWindow(*state, cursor, {0, 10});
        CursorToPoint(*state, cursor, 7);
    }
    EXPECT_EQ(state->Cursors.Cur, before);
}

TEST_F(CursorMoves, EveryOriginButThePointIsKept) {
    for (const ZoomFromRow& row : kZoomFrom) {
        state->Timing.ZoomOrigin = 3;
        KeepZoomOrigin(*state, row.Origin);
        EXPECT_EQ(state->Timing.ZoomOrigin, row.Origin == kOriginPoint ? 3 : row.Origin) << row.Text;
    }
    KeepZoomOrigin(*state, 77);
    EXPECT_EQ(state->Timing.ZoomOrigin, kCursorT);
}

}  // namespace
}  // namespace zu
