// Walls that are compared, and walls solved by themselves to compare with.
#pragma once

#include "comparison/comparison.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <memory>

namespace korvane::test {

inline Options bySweep() {
    Options options;
    options.wedge = WedgeMethod::Sweep;
    return options;
}

inline Comparison compared(const Problem& problem, const Options& options = bySweep()) {
    Workspace workspace;
    return compareWall({.problem = problem, .options = options}, workspace);
}

/// The row of a name, which must be there.
inline const ComparedRow& rowOf(const Comparison& comparison, std::string_view name) {
    for (const ComparedRow& row : comparison.rows) {
        if (row.name == name) {
            return row;
        }
    }
    ADD_FAILURE() << "no row " << name;
    return comparison.rows.front();
}

/// A value of a row's level, which must be there.
inline double valueOf(const ComparedRow& row, ComparedValue which, std::size_t level = 0) {
    EXPECT_EQ(row.reason, "") << row.name;
    if (level >= row.levels.size() || !row.levels[level].value(which)) {
        ADD_FAILURE() << row.name << " has no such value";
        return 0;
    }
    return *row.levels[level].value(which);
}

/// The results of a wall by itself; none after a failure.
struct SolvedWall {
    explicit SolvedWall(const Problem& told, const Options& options = bySweep()) : problem(told) {
        if (const auto review = reviewWall(problem, options, workspace)) {
            const auto solved = solveWall(workspace);
            results = solved ? &*solved : nullptr;
        }
    }
    Problem problem;
    Workspace workspace;
    const Results* results = nullptr;
};

/// A row must have the very results of a wall that was changed by hand.
inline void expectSameWall(const ComparedRow& row, const Problem& changed,
                           const Options& options = bySweep()) {
    const SolvedWall wall(changed, options);
    ASSERT_NE(wall.results, nullptr) << row.name;
    ASSERT_EQ(row.reason, "") << row.name;
    ASSERT_EQ(row.levels.size(), static_cast<std::size_t>(wall.results->levelCount)) << row.name;
    for (std::size_t n = 0; n < row.levels.size(); ++n) {
        const LevelResult& level = wall.results->levels(static_cast<int>(n) + 1);
        EXPECT_EQ(row.levels[n].method, level.method);
        EXPECT_EQ(valueOf(row, ComparedValue::Penetration, n), level.penetration) << row.name;
        EXPECT_EQ(valueOf(row, ComparedValue::MaxMoment, n), level.diagrams.MaxMoment.value);
        EXPECT_EQ(valueOf(row, ComparedValue::MaxShear, n), level.maxShear.value);
        EXPECT_EQ(valueOf(row, ComparedValue::MaxDeflection, n),
                  level.diagrams.MaxDeflection.value);
        if (level.method != SolutionMethod::Cantilever) {
            EXPECT_EQ(valueOf(row, ComparedValue::AnchorForce, n), level.anchorForce);
        }
    }
}

/// One soil (dry, 115 PCF, 30 degrees), 25 FT retained, anchored 10 FT below the top, factors 1.
inline Problem anchoredSand(double wallFriction = 0) {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -10;
    problem.SurfaceElev(Left, 1) = -25;
    for (const int side : {Right, Left}) {
        problem.SoilMoistWeight(side, 1) = problem.SoilSatWeight(side, 1) = 115;
        problem.SoilWallFriction(side, 1) = wallFriction;
    }
    return problem;
}

/// The same by given coefficients.
inline Problem anchoredByCoefficients(double Ka, double Kp) {
    Problem problem = anchoredSand();
    for (const int side : {Right, Left}) {
        problem.SoilDataKind(side) = SoilData::Coefficients;
        problem.SoilCoefActive(side, 1) = Ka;
        problem.SoilCoefPassive(side, 1) = Kp;
    }
    return problem;
}

inline Problem withWater(Problem problem, double right, double left) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = right;
    problem.WaterElev(Left) = left;
    for (const int side : {Right, Left}) {
        problem.SoilSatWeight(side, 1) = 125;
    }
    return problem;
}

} // namespace korvane::test
