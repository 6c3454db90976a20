#include "wall/trial_pressures.h"

#include "pressures/coefficient_pressures.h"
#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "pressures/wedge_pressures.h"
#include "pressures/wedge_regions.h"

namespace korvane {

void ComputeSidePressures(State& state, int side, int level) {
    state.stage = {Doing::SoilPressures, side, level};
    if (state.preparation.SideMethod(side) == PressureMethod::Coefficients) {
        ComputeCoefficientPressures(state, side, level);
    } else {
        ComputeWedgePressures(state, side, level);
    }
}

void RebuildForSeepage(State& state, int level) {
    const Stage search = state.stage;
    BuildElevationGrid(state, level);
    ComputeWaterPressures(state, level);
    ComputeSoilPressures(state, level, [&state, level](int side) {
        if (state.preparation.SideMethod(side) != PressureMethod::Coefficients) {
            BuildSeepageEndRegions(state, side, level);
        }
    });
    if (!state.failed()) {
        state.stage = search;
    }
}

bool seepageFollowsBottom(const Problem& problem) {
    return problem.WaterDataKind == WaterData::Elevations &&
           problem.SeepageKind == Seepage::Automatic && problem.ProgramMode != Mode::Analysis;
}

bool shiftDrivingMoment(State& state) {
    const Problem& problem = *state.problem;
    NetPressures& net = state.net;
    const bool anchored = problem.WallType == WallKind::Anchored;
    const double pivot =
        anchored ? problem.AnchorElev : state.grid.ElevGrid(state.net.NetZeroIndex);
    net.DrivingMoment -= (problem.WallTopElev - pivot) * net.DrivingForce;
    return net.DrivingForce > 0 && (anchored ? net.DrivingMoment > 0 : net.DrivingMoment < 0);
}

} // namespace korvane
