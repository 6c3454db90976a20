// A wall that fills the arrays of the plots, for measurements.
#pragma once

#include "state/state.h"

#include <cmath>
#include <memory>

namespace korvane::bench {

class NoPrompts : public Prompts {
  public:
    Answer Ask(const MessageBox& /*box*/) override { return Answer::Ok; }
};

inline void enterProblem(Problem& problem) {
    clearProblemData(problem);
    problem.NumHeadingLines = 4;
    problem.WallType = WallKind::Anchored;
    problem.ProgramMode = Mode::Design;
    problem.AnchorElev = -5;
    for (const int side : {Right, Left}) {
        problem.SurfacePointCount(side) = 11;
        problem.SoilDataKind(side) = SoilData::Strengths;
        problem.SoilLayerCount(side) = 11;
        problem.VLineCount(side) = problem.VStripCount(side) = problem.VTriCount(side) = 5;
        problem.VUniformCount(side) = problem.VRampCount(side) = 1;
        problem.VUniformLoad(side) = problem.VRampLoad(side) = 100;
        problem.VRampEnd(side) = 20;
        problem.VVarCount(side) = 11;
        for (int i = 1; i <= 11; ++i) {
            problem.SurfaceDist(side, i) = problem.VVarDist(side, i) = 10 * i;
            problem.SurfaceElev(side, i) = side == Right ? 0 : -100;
            problem.SoilBottomElev(side, i) = -10 * i - side;
            problem.VVarLoad(side, i) = 20 * i;
        }
    }
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 11;
    problem.HLineCount = 5;
    problem.HDistCount = 11;
    for (int i = 1; i <= 11; ++i) {
        problem.WaterPressElev(i) = problem.HDistElev(i) = -10 * i;
        problem.WaterPressure(i) = problem.HDistLoad(i) = 50 * i;
    }
}

/// An anchored design with 301 rows, 11 surface points and layers a side, every kind of load, water
/// pressures and 13 sections.
struct LargestWall {
    LargestWall() {
        constexpr int Rows = 301;
        enterProblem(state->problem);
        state->grid.NumElevs = Rows;
        for (int i = 1; i <= Rows; ++i) {
            const double value = 1000 * std::sin(i / 20.0);
            state->grid.ElevGrid(i) = state->results.ResultElev(i) = 1 - i;
            state->results.ResultDeflection(i) = state->results.ResultMoment(i) = value;
            state->results.ResultShear(i) = state->results.ResultPressure(i) = value;
            for (const int k : {1, 2}) {
                state->pressures.WaterPressures(i, k) = value;
                state->net.NetActive(i, k) = state->net.NetPassive(i, k) = value;
                for (const int side : {Right, Left}) {
                    state->pressures.ActivePressures(side, i, k) = 3 * i;
                    state->pressures.PassivePressures(side, i, k) = 30 * i;
                }
            }
        }
        for (const int level : {1, 2}) {
            state->solution.SolvedBottomElev(level) = -300;
            state->solution.BottomIndex(level) = Rows;
        }
        for (const int entry : {1, 2, 3, 4}) {
            const double value = entry <= 2 ? 1000 : -1000;
            state->results.DeflectionRange(entry) = state->results.MomentRange(entry) = value;
            state->results.ShearRange(entry) = state->results.PressureRange(entry) = value;
        }
        state->rowe.RoweAlpha = 0.7;
        state->rowe.PileSectionCount = 13;
        for (int p = 1; p <= 13; ++p) {
            state->rowe.PileLogRigidity(p) = -3.5 + 0.15 * p;
            state->rowe.PileMomentRatio(p) = 0.5;
        }
    }

    NoPrompts prompts;
    std::unique_ptr<State> state = std::make_unique<State>(prompts);
};

} // namespace korvane::bench
