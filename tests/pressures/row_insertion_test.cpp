#include "pressures/row_insertion.h"
#include "support/pressure_bench.h"

namespace korvane::test {
namespace {

class RowInsertionTest : public testing::Test {
  protected:
    /// Three rows with a value of its own in every entry.
    RowInsertionTest() {
        state.grid.NumElevs = 3;
        for (int i = 1; i <= 3; ++i) {
            state.grid.ElevGrid(i) = -10.0 * i;
            for (const int k : {1, 2}) {
                pressures.WaterPressures(i, k) = 700 + 10 * i + k;
                for (const int side : {Right, Left}) {
                    pressures.ActivePressures(side, i, k) = 100 * side + 10 * i + k;
                    pressures.PassivePressures(side, i, k) = 1000 * side + 10 * i + k;
                }
            }
        }
        pressures.ActiveMark(Right, 2) = true;
        pressures.PassiveMark(Left, 3) = true;
    }

    PressureBench bench;
    State& state = *bench.state;
    Pressures& pressures = state.pressures;
};

TEST_F(RowInsertionTest, AnOpenedRowMovesGridPressuresAndMarksDownOnePlace) {
    openRow(state, 2, Left);
    EXPECT_EQ(state.grid.NumElevs, 4);
    EXPECT_EQ(state.grid.ElevGrid(1), -10);
    EXPECT_EQ(state.grid.ElevGrid(2), -20); // the old point's values until they are set
    EXPECT_EQ(state.grid.ElevGrid(3), -20);
    EXPECT_EQ(state.grid.ElevGrid(4), -30);
    for (const int side : {Right, Left}) {
        for (const int k : {1, 2}) {
            EXPECT_EQ(pressures.ActivePressures(side, 1, k), 100 * side + 10 + k);
            EXPECT_EQ(pressures.ActivePressures(side, 3, k), 100 * side + 20 + k);
            EXPECT_EQ(pressures.PassivePressures(side, 4, k), 1000 * side + 30 + k);
        }
    }
    EXPECT_EQ(pressures.WaterPressures(3, 1), 731); // water stays: the caller moves it or not
}

TEST_F(RowInsertionTest, MarksMoveWithTheirRowsAndTheNewRowHasNone) {
    openRow(state, 2, Left);
    EXPECT_FALSE(pressures.ActiveMark(Right, 2));
    EXPECT_TRUE(pressures.ActiveMark(Right, 3));
    EXPECT_FALSE(pressures.PassiveMark(Left, 3));
    EXPECT_TRUE(pressures.PassiveMark(Left, 4));
}

TEST_F(RowInsertionTest, OnTheRightSideTheLeftArraysStay) {
    openRow(state, 2, Right);
    EXPECT_EQ(pressures.ActivePressures(Right, 3, 1), 121);
    EXPECT_EQ(pressures.ActivePressures(Left, 3, 1), 231);
    EXPECT_TRUE(pressures.PassiveMark(Left, 3));
}

TEST_F(RowInsertionTest, TheGridHoldsThreeHundredAndOneRows) {
    state.grid.NumElevs = 300;
    openRow(state, 2, Right);
    EXPECT_EQ(state.grid.NumElevs, 301);
    EXPECT_EQ(errorOf([&] { openRow(state, 2, Right); }), 9);
    EXPECT_EQ(state.grid.NumElevs, 301);
}

TEST_F(RowInsertionTest, TheZeroRowStandsOnTheStraightLinesOfAllDiagrams) {
    pressures.ActivePressures(Left, 1, 1) = -30;
    pressures.ActivePressures(Left, 2, 2) = 90;
    insertActiveZeroRow(state, Left, 1);

    // A quarter of the way from -10 to -20; others from just below row 1 to just above row 2.
    EXPECT_DOUBLE_EQ(state.grid.ElevGrid(2), -12.5);
    for (const int k : {1, 2}) {
        EXPECT_EQ(pressures.ActivePressures(Left, 2, k), 0);
        EXPECT_DOUBLE_EQ(pressures.PassivePressures(Left, 2, k), 0.75 * 2011 + 0.25 * 2022);
        EXPECT_DOUBLE_EQ(pressures.WaterPressures(2, k), 0.75 * 711 + 0.25 * 722);
        EXPECT_DOUBLE_EQ(pressures.ActivePressures(Right, 2, k), 0.75 * 111 + 0.25 * 122);
        EXPECT_DOUBLE_EQ(pressures.PassivePressures(Right, 2, k), 0.75 * 1011 + 0.25 * 1022);
    }
    EXPECT_EQ(pressures.ActivePressures(Left, 1, 1), -30); // the caller clips
    EXPECT_EQ(pressures.ActivePressures(Left, 3, 2), 90);
    EXPECT_EQ(pressures.WaterPressures(3, 1), 721);
    EXPECT_EQ(pressures.WaterPressures(4, 2), 732);
}

} // namespace
} // namespace korvane::test
