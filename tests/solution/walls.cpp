#include "walls.h"

#include "support/failing_walls.h"
#include "support/nasty_problem.h"
#include "support/support.h"

namespace korvane::test {

Problem plainAnchored(double left) {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -3;
    problem.SurfaceElev(Left, 1) = left;
    return problem;
}

Problem analysisOf(Problem problem, double bottom) {
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth;
    problem.WallBottomElev = bottom;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
    return problem;
}

Problem sloping(Problem problem) {
    problem.SurfacePointCount(Right) = 2;
    problem.SurfaceDist(Right, 2) = 20;
    problem.SurfaceElev(Right, 2) = problem.SurfaceElev(Right, 1) + 4;
    return problem;
}

std::vector<Problem> manyWalls(int count) {
    std::vector<Problem> walls;
    walls.reserve(static_cast<std::size_t>(count));
    RandomProblems plain(2026);
    NastyProblems nasty(2026);
    for (int wall = 0; wall < count; ++wall) {
        walls.push_back(wall % 2 == 0 ? plain.next() : nasty.next().problem);
    }
    for (const FailingWall& wall : failingWalls()) {
        if (wall.expected.code != FailureCode::FactorNotFound) { // 10,000 trials
            walls.push_back(wall.problem);
        }
    }
    return walls;
}

} // namespace korvane::test
