// What review and levels tell of how their pressures came about: that it is of these pressures, and
// that asking for it changes nothing.
#include "solution_numbers.h"
#include "support/nasty_problem.h"
#include "support/random_problem.h"
#include "walls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace korvane::test {
namespace {

constexpr double Degree = DegreesToRadians;

Options detailed(Options options) {
    options.keepDetails = true;
    return options;
}

bool isEmpty(const SideDetails& side) {
    return side.stresses.empty() && side.surcharges.elev.empty() && side.surcharges.loads.empty() &&
           side.wedge.rows.empty() && side.wedge.pieces.empty() && side.wedge.pressures.empty();
}

bool isEmpty(const PressureDetails& details) {
    return !details.kept && isEmpty(details.sides(Right)) && isEmpty(details.sides(Left));
}

/// Random walls, every second one nasty; without the walls that fail after long searches.
std::vector<Problem> drawnWalls(int count) {
    std::vector<Problem> walls;
    RandomProblems plain(77);
    NastyProblems nasty(77);
    for (int wall = 0; wall < count; ++wall) {
        walls.push_back(wall % 2 == 0 ? plain.next() : nasty.next().problem);
    }
    return walls;
}

/// The row at an elevation; 0 without one.
int rowAt(const ElevationGrid& grid, double elev) {
    for (int i = 1; i <= grid.NumElevs; ++i) {
        if (std::abs(grid.ElevGrid(i) - elev) < 1e-9) {
            return i;
        }
    }
    return 0;
}

// ---- with and without -------------------------------------------------------------------------

TEST(Details, ChangeNoNumber) {
    const PileSections sections = defaultSections();
    Workspace plain;
    Workspace recording;
    for (const Problem& wall : drawnWalls(40)) {
        for (const Options& options : {bySweep(), byFixedSurface()}) {
            EXPECT_EQ(solutionNumbers(wall, solve(wall, options, sections, plain)),
                      solutionNumbers(wall, solve(wall, detailed(options), sections, recording)));
        }
    }
}

TEST(Details, AreKeptOnRequestOnly) {
    const PileSections sections = defaultSections();
    const Problem wall = sloping(plainAnchored());
    Workspace workspace;
    for (int turn = 0; turn < 2; ++turn) {
        ASSERT_FALSE(solve(wall, bySweep(), sections, workspace).failure);
        EXPECT_TRUE(isEmpty(workspace.review().details));
        EXPECT_TRUE(isEmpty(workspace.results().levels(1).details));
        EXPECT_TRUE(isEmpty(workspace.results().levels(2).details));

        ASSERT_FALSE(solve(wall, detailed(bySweep()), sections, workspace).failure);
        for (const PressureDetails* details :
             {&workspace.review().details, &workspace.results().levels(1).details,
              &workspace.results().levels(2).details}) {
            EXPECT_TRUE(details->kept);
            EXPECT_FALSE(details->sides(Right).wedge.rows.empty());
            EXPECT_TRUE(details->sides(Right).stresses.empty());
            EXPECT_FALSE(details->sides(Left).stresses.empty());
            EXPECT_TRUE(details->sides(Left).wedge.rows.empty());
        }
    }
    const Problem analysis = analysisOf(wall, -28);
    ASSERT_FALSE(solve(analysis, detailed(bySweep()), sections, workspace).failure);
    EXPECT_TRUE(isEmpty(workspace.review().details));
    EXPECT_FALSE(isEmpty(workspace.results().levels(1).details));
}

// ---- against the results of many walls --------------------------------------------------------

/// Calls `check(problem, details, diagrams, level)` for the review and each level of many solved
/// walls; level is null for the review.
template <class Check>
void forManyDetails(int count, Check check) {
    const PileSections sections = defaultSections();
    Workspace workspace;
    for (const Problem& wall : drawnWalls(count)) {
        for (const Options& options : {bySweep(), byFixedSurface()}) {
            const Solved solved = solve(wall, detailed(options), sections, workspace);
            if (solved.review != nullptr && solved.review->hasPressures) {
                check(wall, solved.review->details, solved.review->diagrams, nullptr);
            }
            for (int level = 1; solved.results != nullptr && level <= solved.results->levelCount;
                 ++level) {
                const LevelResult& result = solved.results->levels(level);
                check(wall, result.details, result.solved, &result);
            }
        }
    }
}

double relative(double value) {
    return 1e-11 * std::max(1.0, std::abs(value));
}

/// The interval's coefficients on its stresses, and what stands in the diagrams.
void checkPoint(const StressInterval& interval, const StressPoint& point, double active,
                double passive) {
    const double sum = point.uniformLoad + point.soilWeight - point.water;
    ASSERT_NEAR(point.effective, sum, 1e-11 * std::max(1.0, point.soilWeight));
    const double Ka = interval.Ka;
    const double Kp = interval.Kp;
    const double size = 1e-11 * (1 + Kp * std::abs(point.effective) + 4 * interval.cp * Kp +
                                 4 * interval.ca + point.surcharge);
    ASSERT_NEAR(point.soilActive,
                (Ka * point.effective - 2 * interval.ca * std::sqrt(Ka)) * interval.cosA, size);
    ASSERT_NEAR(point.soilPassive,
                (Kp * point.effective + 2 * interval.cp * std::sqrt(Kp)) * interval.cosP, size);
    ASSERT_EQ(point.active, active);
    ASSERT_EQ(point.passive, passive);
    ASSERT_EQ(point.tensionCut, point.activeSum < 0);
    ASSERT_NEAR(point.active, std::max(0.0, point.activeSum), 0.0001);
}

TEST(Details, OfStressesAreThoseOfThePressures) {
    int points = 0;
    int cut = 0;
    int moved = 0;
    forManyDetails(50, [&](const Problem&, const PressureDetails& details,
                           const PressureDiagrams& diagrams, const LevelResult* level) {
        for (const int side : {Right, Left}) {
            for (const StressInterval& interval : details.sides(side).stresses) {
                for (const int k : {1, 2}) {
                    const StressPoint& point = k == 1 ? interval.top : interval.bottom;
                    const int row = rowAt(diagrams.grid, point.elev);
                    if (!point.onGrid || row == 0) {
                        ++moved; // by the searches
                        continue;
                    }
                    checkPoint(interval, point, diagrams.pressures.ActivePressures(side, row, k),
                               diagrams.pressures.PassivePressures(side, row, k));
                    ASSERT_NEAR(point.activeSum, point.soilActive + point.surcharge,
                                1e-6 * std::max(1.0, std::abs(point.soilActive)));
                    ++points;
                    cut += point.tensionCut ? 1 : 0;
                }
                if (level != nullptr) {
                    const DevelopedLayer& layer = level->layers(side, interval.layer);
                    ASSERT_NEAR(interval.Ka, layer.Ka, relative(layer.Ka));
                    ASSERT_NEAR(interval.Kp, layer.Kp, relative(layer.Kp));
                    ASSERT_NEAR(interval.ca, layer.cohesionActive, relative(layer.cohesionActive));
                    ASSERT_NEAR(interval.cosP, std::cos(layer.wallFrictionPassive * Degree), 1e-11);
                }
            }
        }
    });
    EXPECT_GT(points, 500);
    EXPECT_LT(moved, points / 20);
    EXPECT_GT(cut, 20);
}

TEST(Details, OfSurchargesAddUp) {
    int rows = 0;
    int loads = 0;
    forManyDetails(50, [&](const Problem& problem, const PressureDetails& details,
                           const PressureDiagrams& diagrams, const LevelResult*) {
        for (const int side : {Right, Left}) {
            const SideDetails& kept = details.sides(side);
            const int expected = kept.stresses.empty()
                                     ? 0
                                     : problem.VLineCount(side) + problem.VStripCount(side) +
                                           (problem.VRampCount(side) > 0 ? 1 : 0) +
                                           problem.VTriCount(side) +
                                           (problem.VVarCount(side) > 0 ? 1 : 0);
            ASSERT_EQ(kept.surcharges.loads.size(), static_cast<std::size_t>(expected));
            for (std::size_t r = 0; r < kept.surcharges.elev.size(); ++r) {
                double sum = 0;
                for (const SurchargeShare& share : kept.surcharges.loads) {
                    ASSERT_GE(share.pressure.at(r), 0);
                    sum += share.pressure[r];
                }
                const double engine = diagrams.pressures.SurchargePressures(
                    side, kept.surcharges.firstRow + static_cast<int>(r));
                ASSERT_EQ(kept.surcharges.sum.at(r), engine);
                ASSERT_NEAR(sum, engine, 1e-14 * engine);
                ++rows;
            }
            loads = std::max(loads, expected);
        }
    });
    EXPECT_GT(rows, 1000);
    EXPECT_GT(loads, 3);
}

TEST(Details, OfWedgeRowsAreThoseOfThePressures) {
    int rows = 0;
    int raised = 0;
    int cut = 0;
    int inserted = 0;
    int moved = 0;
    forManyDetails(50, [&](const Problem&, const PressureDetails& details,
                           const PressureDiagrams& diagrams, const LevelResult*) {
        for (const int side : {Right, Left}) {
            const auto& kept = details.sides(side).wedge.pressures;
            for (std::size_t r = 0; r < kept.size(); ++r) {
                const WedgePressureRow& row = kept[r];
                const int i = rowAt(diagrams.grid, row.elev);
                if (i == 0) {
                    ++moved; // the searches put some rows elsewhere
                    continue;
                }
                ASSERT_NEAR(row.effective, row.uniformLoad + row.soilWeight - row.water,
                            1e-11 * std::max(1.0, row.soilWeight));
                for (const int k : {1, 2}) {
                    if (k == 1 ? r + 1 == kept.size() : r == 0) {
                        continue;
                    }
                    ASSERT_EQ(row.active(k), diagrams.pressures.ActivePressures(side, i, k));
                    ASSERT_EQ(row.passive(k), diagrams.pressures.PassivePressures(side, i, k));
                    ASSERT_NEAR(row.active(k), std::max(0.0, row.activeBefore(k)), 0.0001);
                    ASSERT_EQ(row.passive(k), r == 0
                                                  ? row.passiveBefore(k)
                                                  : std::max(row.effective, row.passiveBefore(k)));
                    ASSERT_EQ(row.raised(k), row.passive(k) > row.passiveBefore(k));
                    raised += row.raised(k) ? 1 : 0;
                    cut += row.tensionCut(k) ? 1 : 0;
                }
                ++rows;
                inserted += row.inserted ? 1 : 0;
            }
        }
    });
    EXPECT_GT(rows, 1000);
    EXPECT_LT(moved, rows / 20);
    EXPECT_GT(raised, 20);
    EXPECT_GT(cut, 20);
    EXPECT_GT(inserted, 5);
}

// ---- forces found again from the pieces -------------------------------------------------------

/// The soil on one piece of plane. The plane pushes with a normal force N and along the plane with
/// N t + C: up the plane in the active state (s = +1), down it in the passive one (s = -1).
struct FreeBody {
    double W, C, t, sin, cos; // of the angle from the horizontal
    int s;

    FreeBody(const WedgePiece& piece, int s_)
        : W(piece.soil + piece.surcharge), C(piece.cohesion), t(piece.friction),
          sin(std::cos(piece.angle * Degree)), cos(std::sin(piece.angle * Degree)), s(s_) {}

    /// Horizontal push on the inner neighbour without friction between them.
    double push() const {
        const double N = (W - s * C * sin) / (cos + s * t * sin);
        return N * sin - s * (N * t + C) * cos;
    }
    /// Horizontal force on the wall under mean wall friction (degrees) and adhesion T: across
    /// p cos d - N (sin - s t cos) = outer - s C cos, up s p sin d + N (cos + s t sin) = W - s T -
    /// s C sin.
    double onWall(double outer, double delta, double T) const {
        const double a1 = std::cos(delta * Degree);
        const double b1 = -(sin - s * t * cos);
        const double c1 = outer - s * C * cos;
        const double a2 = s * std::sin(delta * Degree);
        const double b2 = cos + s * t * sin;
        const double c2 = W - s * T - s * C * sin;
        return (c1 * b2 - c2 * b1) / (a1 * b2 - a2 * b1) * a1;
    }
};

struct PieceCounts {
    int planes = 0;
    int severalPieces = 0;
};

/// The force of a plane from its pieces, which must lie end to end.
void checkPlane(const WedgeDetails& details, const WedgeRow& row, const WedgePlane& plane, int s,
                PieceCounts& counts) {
    if (!plane.found) {
        ASSERT_EQ(plane.pieceCount, 0);
        return;
    }
    const auto* piece = &details.pieces.at(static_cast<std::size_t>(plane.firstPiece));
    const double size = std::abs(plane.force) + 1;
    double outer = 0;
    double weights = 1;
    for (int p = 1; p < plane.pieceCount; ++p, ++piece) {
        const double push = FreeBody(*piece, s).push();
        weights += piece->soil + piece->surcharge + piece->cohesion + std::abs(push);
        ASSERT_NEAR(piece->force, push, 1e-9 * (weights + std::abs(push)));
        ASSERT_NEAR(piece->x1, piece[1].x2, 1e-9 * std::max(1.0, piece->x1));
        ASSERT_NEAR(piece->y1, piece[1].y2, 1e-6 * std::max(1.0, piece->x1));
        outer += push;
    }
    weights += piece->soil + piece->surcharge + piece->cohesion;
    ASSERT_EQ(piece->x1, 0);
    ASSERT_NEAR(piece->y1, row.elev, 1e-12);
    ASSERT_NEAR(piece->length, std::hypot(piece->x2 - piece->x1, piece->y2 - piece->y1),
                1e-9 * std::max(1.0, piece->length));
    ASSERT_NEAR(plane.outerForce, outer, 1e-9 * weights);
    ASSERT_EQ(piece->force, plane.force);
    ASSERT_EQ(piece->angle, plane.angle);
    ASSERT_NEAR(plane.force,
                FreeBody(*piece, s).onWall(outer, plane.wallFriction, plane.wallAdhesion),
                1e-8 * (weights + size));
    ++counts.planes;
    counts.severalPieces += plane.pieceCount > 1 ? 1 : 0;
}

TEST(Details, OfPlanesGiveTheForces) {
    PieceCounts counts;
    forManyDetails(40, [&](const Problem&, const PressureDetails& details, const PressureDiagrams&,
                           const LevelResult*) {
        for (const int side : {Right, Left}) {
            const WedgeDetails& kept = details.sides(side).wedge;
            for (const WedgeRow& row : kept.rows) {
                checkPlane(kept, row, row.active, 1, counts);
                checkPlane(kept, row, row.passive, -1, counts);
            }
        }
    });
    EXPECT_GT(counts.planes, 3000);
    EXPECT_GT(counts.severalPieces, 300);
}

// The forces that the pressures of a sweep come from, pull taken off, to the last bit.
TEST(Details, OfASweepAreTheForcesOfItsRows) {
    int rows = 0;
    const PileSections sections = defaultSections();
    Workspace workspace;
    for (const Problem& wall : drawnWalls(60)) {
        const Solved solved = solve(wall, detailed(bySweep()), sections, workspace);
        if (solved.review == nullptr || !solved.review->hasPressures) {
            continue;
        }
        for (const int side : {Right, Left}) {
            const WedgeDetails& kept = solved.review->details.sides(side).wedge;
            std::size_t next = 0;
            for (const WedgePressureRow& row : kept.pressures) {
                if (next == kept.rows.size() || row.elev != kept.rows[next].elev) {
                    continue; // the surface, inserted rows
                }
                const WedgeRow& planes = kept.rows[next++];
                ASSERT_EQ(row.activeForce, std::max(0.0, planes.active.force));
                ASSERT_EQ(row.passiveForce, planes.passive.force);
                ++rows;
            }
            ASSERT_EQ(next, kept.rows.size());
        }
    }
    EXPECT_GT(rows, 300);
}

} // namespace
} // namespace korvane::test
