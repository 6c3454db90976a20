// Twists of the wall, the ground and the datum.
#include "support/twists.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace korvane::test {

namespace {

double hundredths(double value) {
    return std::round(value * 100) / 100;
}

/// Ground and layers of a side.
template <class Change>
void eachElevationOfSide(Problem& problem, int side, Change change) {
    for (int point = 1; point <= problem.SurfacePointCount(side); ++point) {
        change(problem.SurfaceElev(side, point));
    }
    for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
        change(problem.SoilBottomElev(side, layer));
    }
}

/// Every elevation that the problem uses.
template <class Change>
void eachElevation(Problem& problem, Change change) {
    change(problem.WallTopElev);
    if (problem.WallType == WallKind::Anchored) {
        change(problem.AnchorElev);
    }
    if (problem.ProgramMode == Mode::Analysis) {
        change(problem.WallBottomElev);
    }
    for (const int side : {Right, Left}) {
        eachElevationOfSide(problem, side, change);
        if (problem.WaterDataKind == WaterData::Elevations) {
            change(problem.WaterElev(side));
        }
    }
    if (problem.SeepageKind == Seepage::Automatic) {
        change(problem.SeepageElev);
    }
    for (int point = 1;
         problem.WaterDataKind == WaterData::Pressures && point <= problem.WaterPressCount;
         ++point) {
        change(problem.WaterPressElev(point));
    }
    for (int load = 1; load <= problem.HLineCount; ++load) {
        change(problem.HLineElev(load));
    }
    for (int point = 1; point <= problem.HDistCount; ++point) {
        change(problem.HDistElev(point));
    }
}

/// Strengths in place of coefficients, which cannot follow a surface.
void takeStrengths(Draws& draws, Problem& problem, int side) {
    if (problem.SoilDataKind(side) == SoilData::Strengths) {
        return;
    }
    problem.SoilDataKind(side) = SoilData::Strengths;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        problem.SoilFriction(side, layer) = draws.value(28, 38, 2);
    }
}

/// New points behind the first: steps of `shortest` to `longest` FT, each rising by `flattest` to
/// `steepest` FT a foot.
struct Ground {
    int points;
    double shortest, longest;
    double flattest, steepest;
};

void layGround(Draws& draws, Problem& problem, int side, const Ground& ground) {
    auto& SurfaceDist = problem.SurfaceDist;
    auto& SurfaceElev = problem.SurfaceElev;

    takeStrengths(draws, problem, side);
    problem.SurfacePointCount(side) = ground.points;
    for (int point = 2; point <= ground.points; ++point) {
        const double step = draws.value(ground.shortest, ground.longest, 10);
        const double slope = draws.value(ground.flattest, ground.steepest, 20);
        SurfaceDist(side, point) = hundredths(SurfaceDist(side, point - 1) + step);
        SurfaceElev(side, point) = hundredths(SurfaceElev(side, point - 1) + step * slope);
    }
}

/// `rises` chooses the way; one ground in five has a step that is all but upright.
void laySteepGround(Draws& draws, Problem& problem, int side, bool rises) {
    const int points = draws.whole(2, 8);
    const bool upright = draws.chance(0.2);
    const double steepest = upright ? 5 : draws.value(0.35, 1.2, 20);
    const double shortest = upright ? 0.1 : 1;
    layGround(draws, problem, side,
              rises ? Ground{points, shortest, 5, 0.3, steepest}
                    : Ground{points, shortest, 5, -steepest, -0.3});
}

/// Layers, water pressures and horizontal loads must go down, layers from below their ground.
bool goesDown(const Problem& problem) {
    bool down = true;
    for (const int side : {Right, Left}) {
        double above = problem.SurfaceElev(side, 1);
        for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
            down = down && problem.SoilBottomElev(side, layer) < above;
            above = problem.SoilBottomElev(side, layer);
        }
    }
    for (int point = 2;
         problem.WaterDataKind == WaterData::Pressures && point <= problem.WaterPressCount;
         ++point) {
        down = down && problem.WaterPressElev(point) < problem.WaterPressElev(point - 1);
    }
    for (int point = 2; point <= problem.HDistCount; ++point) {
        down = down && problem.HDistElev(point) < problem.HDistElev(point - 1);
    }
    return down;
}

} // namespace

bool longWall(Draws& draws, Problem& problem) {
    const double top = problem.WallTopElev;
    const double height = top - problem.SurfaceElev(Left, 1);
    const double length =
        problem.ProgramMode == Mode::Analysis ? top - problem.WallBottomElev : 3 * height;
    if (length <= 0) {
        return false;
    }
    const double scale = std::max(1.0, draws.value(80, 200, 1) / length);
    eachElevation(problem, [&](double& elevation) {
        elevation = hundredths(top - scale * (top - elevation));
    });
    for (const int side : {Right, Left}) {
        for (int point = 1; point <= problem.SurfacePointCount(side); ++point) {
            problem.SurfaceDist(side, point) = hundredths(scale * problem.SurfaceDist(side, point));
        }
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            problem.SoilCohesion(side, layer) =
                std::round(scale * problem.SoilCohesion(side, layer));
        }
    }
    return true;
}

bool tinyHeight(Draws& draws, Problem& problem) {
    const double height = draws.chance(0.3) ? 0 : draws.value(0.01, 1, 100);
    const double rise = problem.SurfaceElev(Right, 1) - height - problem.SurfaceElev(Left, 1);
    eachElevationOfSide(problem, Left,
                        [&](double& elevation) { elevation = hundredths(elevation + rise); });
    if (problem.WallType == WallKind::Anchored && draws.chance(0.7)) {
        problem.AnchorElev = std::max(problem.AnchorElev, problem.SurfaceElev(Left, 1));
    }
    if (problem.ProgramMode == Mode::Analysis) {
        problem.WallBottomElev = problem.SurfaceElev(Left, 1) - draws.value(0.5, 12, 4);
    }
    return true;
}

bool wrongLength(Draws& draws, Problem& problem) {
    if (problem.ProgramMode != Mode::Analysis) {
        return false;
    }
    const double height = problem.WallTopElev - problem.SurfaceElev(Left, 1);
    const double depth =
        height * (draws.chance(0.6) ? draws.value(0.02, 0.4, 100) : draws.value(3, 7, 4));
    problem.WallBottomElev = hundredths(problem.SurfaceElev(Left, 1) - std::max(0.05, depth));
    return true;
}

bool steepRight(Draws& draws, Problem& problem) {
    const bool rises = draws.chance(0.75);
    laySteepGround(draws, problem, Right, rises);
    return true;
}

bool steepLeft(Draws& draws, Problem& problem) {
    const bool rises = draws.chance(0.25);
    laySteepGround(draws, problem, Left, rises);
    return true;
}

bool elevenPoints(Draws& draws, Problem& problem) {
    const int only = draws.whole(0, 2); // 0 both sides
    for (const int side : {Right, Left}) {
        if (only == 0 || only == side) {
            layGround(draws, problem, side, {11, 0.5, 8, -0.2, 0.2});
        }
    }
    return true;
}

bool anchorAtAnEnd(Draws& draws, Problem& problem) {
    if (problem.WallType != WallKind::Anchored) {
        return false;
    }
    switch (draws.whole(0, 4)) {
    case 0:
    case 1:
        problem.AnchorElev = problem.WallTopElev;
        break;
    case 2:
        problem.AnchorElev = problem.SurfaceElev(Right, 1);
        break;
    case 3:
        problem.AnchorElev = problem.SurfaceElev(Left, 1);
        break;
    default:
        problem.AnchorElev = problem.SurfaceElev(Left, 1) - draws.value(0.5, 5, 4);
    }
    return true;
}

/// A few elevations other than the top go where another one is, or as near as the tolerances of the
/// methods: 1E-9 to 0.01 FT.
bool nearMisses(Draws& draws, Problem& problem) {
    constexpr double gaps[] = {0, 2e-9, 1e-8, 1e-6, 0.00005, 0.0002, 0.0005, 0.002, 0.01};
    std::vector<double*> elevations;
    eachElevation(problem, [&](double& elevation) { elevations.push_back(&elevation); });
    const int last = static_cast<int>(elevations.size()) - 1;
    const int moves = draws.whole(2, 6);
    for (int move = 1; move <= moves; ++move) {
        double& moved = *elevations[static_cast<std::size_t>(draws.whole(1, last))];
        const double& other = *elevations[static_cast<std::size_t>(draws.whole(0, last))];
        const double gap = gaps[draws.whole(0, 8)];
        const double old = moved;
        moved = draws.chance(0.5) ? other - gap : other + gap;
        if (!goesDown(problem)) {
            moved = old;
        }
    }
    return true;
}

bool farDatum(Draws& draws, Problem& problem) {
    const double shift[] = {5000, 5000, 5000, 10000, 10000, -3000, 1234.56};
    const double rise = shift[draws.whole(0, 6)];
    eachElevation(problem, [&](double& elevation) { elevation += rise; });
    return true;
}

} // namespace korvane::test
