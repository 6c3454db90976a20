// A wall that fills the arrays of the plots, for measurements.
#pragma once

#include "plots/plot_screen.h"

#include <cmath>
#include <memory>

namespace korvane::bench {

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

inline constexpr int Rows = 301;

inline void enterPressures(PressureDiagrams& diagrams) {
    diagrams.grid.NumElevs = Rows;
    for (int i = 1; i <= Rows; ++i) {
        const double value = 1000 * std::sin(i / 20.0);
        diagrams.grid.ElevGrid(i) = 1 - i;
        for (const int k : {1, 2}) {
            diagrams.pressures.WaterPressures(i, k) = value;
            diagrams.NetActive(i, k) = diagrams.NetPassive(i, k) = value;
            for (const int side : {Right, Left}) {
                diagrams.pressures.ActivePressures(side, i, k) = 3 * i;
                diagrams.pressures.PassivePressures(side, i, k) = 30 * i;
            }
        }
    }
}

inline void enterRows(ResultDiagrams& diagrams) {
    diagrams.RowCount = Rows;
    for (int i = 1; i <= Rows; ++i) {
        const double value = 1000 * std::sin(i / 20.0);
        diagrams.ResultElev(i) = 1 - i;
        diagrams.ResultDeflection(i) = diagrams.ResultMoment(i) = value;
        diagrams.ResultShear(i) = diagrams.ResultPressure(i) = value;
    }
    diagrams.DeflectionRange = diagrams.MomentRange = {1000, -1000};
    diagrams.ShearRange = diagrams.PressureRange = {1000, -1000};
}

/// An anchored design with 301 rows, 11 surface points and layers a side, every kind of load, water
/// pressures and 13 sections.
struct LargestWall {
    LargestWall() {
        enterProblem(problem);
        results->levelCount = 2;
        results->review.hasPressures = true;
        enterPressures(results->review.diagrams);
        for (LevelResult& level : results->levels) {
            level.bottomElev = -300;
            level.bottomIndex = Rows;
            enterPressures(level.solved);
            enterRows(level.diagrams);
        }
        reduction.RoweAlpha = 0.7;
        sections.PileSectionCount = 13;
        for (int p = 1; p <= 13; ++p) {
            reduction.PileLogRigidity(p) = -3.5 + 0.15 * p;
            reduction.PileMomentRatio(p) = 0.5;
        }
    }

    PlotData plotData() const { return {problem, *results, sections, reduction}; }

    Problem problem;
    std::unique_ptr<Results> results = std::make_unique<Results>();
    PileSections sections;
    MomentReduction reduction;
};

} // namespace korvane::bench
