#include "support/nasty_problem.h"

#include "support/twists.h"

#include <algorithm>
#include <array>

namespace korvane::test {

namespace {

struct NamedTwist {
    const char* name;
    Twist apply;
    double probability;
};

/// In the order in which they are applied: what moves the ground comes before what measures from
/// it, the datum comes last.
constexpr std::array twists{
    NamedTwist{"long wall", longWall, 0.1},
    NamedTwist{"tiny height", tinyHeight, 0.06},
    NamedTwist{"wrong length", wrongLength, 0.35},
    NamedTwist{"steep right", steepRight, 0.14},
    NamedTwist{"steep left", steepLeft, 0.14},
    NamedTwist{"eleven points", elevenPoints, 0.1},
    NamedTwist{"many layers", manyLayers, 0.14},
    NamedTwist{"thin layers", thinLayers, 0.14},
    NamedTwist{"weak soil", weakSoil, 0.12},
    NamedTwist{"strong soil", strongSoil, 0.1},
    NamedTwist{"rough wall", roughWall, 0.14},
    NamedTwist{"clay with adhesion", clayWithAdhesion, 0.14},
    NamedTwist{"odd weights", oddWeights, 0.08},
    NamedTwist{"factors", oddFactors, 0.14},
    NamedTwist{"flooded", flooded, 0.12},
    NamedTwist{"large head", largeHead, 0.12},
    NamedTwist{"water table", waterTable, 0.12},
    NamedTwist{"loads at the limits", loadsAtTheLimits, 0.16},
    NamedTwist{"horizontal loads", horizontalLoads, 0.1},
    NamedTwist{"barely driven", barelyDriven, 0.06},
    NamedTwist{"anchor at an end", anchorAtAnEnd, 0.22},
    NamedTwist{"near misses", nearMisses, 0.2},
    NamedTwist{"layer above ground", layerAboveGround, 0.015},
    NamedTwist{"coefficients with surface", coefficientsWithSurface, 0.03},
    NamedTwist{"datum", farDatum, 0.25},
};

/// The rules of the input file that twists may have hurt: the anchor and the ground at or below the
/// top, the bottom of an analysis below all of them, and the limits of seepage.
void keepReadable(Problem& problem) {
    double lowest = problem.WallTopElev;
    for (const int side : {Right, Left}) {
        problem.SurfaceElev(side, 1) = std::min(problem.SurfaceElev(side, 1), problem.WallTopElev);
        lowest = std::min(lowest, problem.SurfaceElev(side, 1));
    }
    if (problem.WallType == WallKind::Anchored) {
        problem.AnchorElev = std::min(problem.AnchorElev, problem.WallTopElev);
        lowest = std::min(lowest, problem.AnchorElev);
    }
    if (problem.ProgramMode == Mode::Analysis && problem.WallBottomElev >= lowest) {
        problem.WallBottomElev = lowest - 1;
    }
    if (problem.SeepageKind == Seepage::Automatic) {
        const auto bound = [&](int side) {
            return std::min(problem.WaterElev(side), problem.SurfaceElev(side, 1));
        };
        if (problem.WaterElev(Left) >= problem.WaterElev(Right) || bound(Left) > bound(Right)) {
            problem.SeepageKind = Seepage::None;
        } else {
            problem.SeepageElev = std::clamp(problem.SeepageElev, bound(Left), bound(Right));
        }
    }
}

std::string headingOf(const std::vector<std::string>& names) {
    std::string line = "'NASTY:";
    for (const std::string& name : names) {
        line += (&name == &names.front() ? " " : ", ") + name;
    }
    return line;
}

} // namespace

NastyProblem NastyProblems::next() {
    NastyProblem nasty;
    nasty.problem = plain_.next();
    while (nasty.twists.empty()) {
        for (const NamedTwist& twist : twists) {
            if (draws_.chance(twist.probability) && twist.apply(draws_, nasty.problem)) {
                nasty.twists.emplace_back(twist.name);
            }
        }
    }
    keepReadable(nasty.problem);
    nasty.problem.HeadingLines(nasty.problem.NumHeadingLines) = headingOf(nasty.twists);
    return nasty;
}

std::vector<std::string> twistNames() {
    std::vector<std::string> names;
    names.reserve(twists.size());
    for (const NamedTwist& twist : twists) {
        names.emplace_back(twist.name);
    }
    return names;
}

} // namespace korvane::test
