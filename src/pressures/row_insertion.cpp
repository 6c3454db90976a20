#include "pressures/row_insertion.h"

#include "runtime/arithmetic.h"

namespace korvane {

void openRow(State& state, int row, int lastSide) {
    auto& ElevGrid = state.grid.ElevGrid;
    auto& NumElevs = state.grid.NumElevs;
    auto& pressures = state.pressures;

    if (NumElevs >= ElevGrid.size()) {
        throw RuntimeError(9);
    }
    ++NumElevs;
    touchRows(state);
    for (int i = NumElevs; i > row; --i) {
        ElevGrid(i) = ElevGrid(i - 1);
    }
    for (int side = Right; side <= lastSide; ++side) {
        shiftRows(pressures.ActivePressures, row, NumElevs, side);
        shiftRows(pressures.PassivePressures, row, NumElevs, side);
        for (auto* mark : {&pressures.ActiveMark, &pressures.PassiveMark}) {
            for (int i = NumElevs; i > row; --i) {
                (*mark)(side, i) = (*mark)(side, i - 1);
            }
            (*mark)(side, row) = false;
        }
    }
}

void insertActiveZeroRow(State& state, int side, int i) {
    auto& ElevGrid = state.grid.ElevGrid;
    auto& ActivePressures = state.pressures.ActivePressures;
    auto& PassivePressures = state.pressures.PassivePressures;
    auto& WaterPressures = state.pressures.WaterPressures;

    const double a = ActivePressures(side, i, 1);
    const double b = ActivePressures(side, i + 1, 2);
    const double e = ElevGrid(i) + (ElevGrid(i) - ElevGrid(i + 1)) * divide(a, b - a);
    const double t = divide(ElevGrid(i) - e, ElevGrid(i) - ElevGrid(i + 1));

    const int row = i + 1;
    openRow(state, row, side);
    shiftRows(WaterPressures, row, state.grid.NumElevs);

    ElevGrid(row) = e;
    ActivePressures(side, row, 1) = ActivePressures(side, row, 2) = 0;
    interpolateRow(PassivePressures, row, t, side);
    interpolateRow(WaterPressures, row, t);
    if (side == Left) {
        interpolateRow(ActivePressures, row, t, Right);
        interpolateRow(PassivePressures, row, t, Right);
    }
}

} // namespace korvane
