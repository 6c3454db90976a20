#include "sheet/wall_view.h"

#include "problem/loads.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace korvane::sheet {

namespace {

constexpr double DrawingWidth = 440;  // pixels, at most
constexpr double DrawingHeight = 430; // pixels, at most
// Shares of the wall's length
constexpr double LeastReach = 0.6;
constexpr double LargestReach = 1.3;
constexpr double BelowWall = 0.12;
constexpr double LargestRise = 0.6; // of ground and water above the wall's top
constexpr double LeastHeight = 1;   // FT

double lowerGround(const Problem& problem) {
    return std::min(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
}

/// FT, the farthest ground point or end of a load.
double wantedReach(const Problem& problem, int side) {
    double reach = 0;
    const int points = problem.SurfacePointCount(side);
    for (int i = 2; i <= points; ++i) {
        reach = std::max(reach, problem.SurfaceDist(side, i));
    }
    for (const LoadRules& load : GroundLoads) {
        for (int row = 1; row <= load.rows(problem, side); ++row) {
            for (int column = 0; column + 1 < load.width(); ++column) {
                reach = std::max(reach, load.value(problem, column, side, row));
            }
        }
    }
    return reach;
}

/// Elevations that a figure should show above the wall.
double highestOf(const Problem& problem, const WallView& view) {
    double high = problem.WallTopElev;
    for (const int side : {Right, Left}) {
        high = std::max(high, highestGround(problem, side, view.reach(side)));
        if (problem.WaterDataKind == WaterData::Elevations) {
            high = std::max(high, problem.WaterElev(side));
        }
    }
    return high;
}

} // namespace

std::vector<WallBottom> wallBottoms(const SheetRequest& request) {
    std::vector<WallBottom> bottoms;
    if (request.problem.ProgramMode == Mode::Analysis) {
        return {{"", request.problem.WallBottomElev}};
    }
    if (request.solved.results == nullptr) {
        return {};
    }
    const Results& results = *request.solved.results;
    for (int level = 1; level <= results.levelCount; ++level) {
        const LevelResult& result = results.levels(level);
        bottoms.push_back(
            {results.levelCount > 1 ? solutionMethodName(result.method) : "", result.bottomElev});
    }
    return bottoms;
}

double groundElev(const Problem& problem, int side, double distance) {
    const int points = problem.SurfacePointCount(side);
    const auto& Dist = problem.SurfaceDist;
    const auto& Elev = problem.SurfaceElev;
    if (points < 1 || distance <= Dist(side, 1)) {
        return Elev(side, 1);
    }
    for (int i = 2; i <= points; ++i) {
        if (distance <= Dist(side, i)) {
            const double run = Dist(side, i) - Dist(side, i - 1);
            const double share = run > 0 ? (distance - Dist(side, i - 1)) / run : 1;
            return Elev(side, i - 1) + share * (Elev(side, i) - Elev(side, i - 1));
        }
    }
    return Elev(side, points);
}

double highestGround(const Problem& problem, int side, double reach) {
    double high = std::max(problem.SurfaceElev(side, 1), groundElev(problem, side, reach));
    for (int i = 2; i <= problem.SurfacePointCount(side); ++i) {
        if (problem.SurfaceDist(side, i) <= reach) {
            high = std::max(high, problem.SurfaceElev(side, i));
        }
    }
    return high;
}

WallView wallView(const SheetRequest& request) {
    const Problem& problem = request.problem;
    const double top = problem.WallTopElev;
    WallView view;
    view.wallBottom = top - std::max(LeastHeight, 2 * (top - lowerGround(problem)));
    const auto bottoms = wallBottoms(request);
    for (std::size_t i = 0; i < bottoms.size(); ++i) {
        view.wallBottom = i == 0 ? bottoms[i].elev : std::min(view.wallBottom, bottoms[i].elev);
    }
    const double wall = std::max(LeastHeight, top - view.wallBottom);
    for (const int side : {Right, Left}) {
        view.reach(side) =
            std::clamp(1.08 * wantedReach(problem, side), LeastReach * wall, LargestReach * wall);
    }
    view.high = std::min(highestOf(problem, view), top + LargestRise * wall) + 0.03 * wall;
    view.low = std::min(view.wallBottom, lowerGround(problem)) - BelowWall * wall;
    const double width = view.reach(Right) + view.reach(Left);
    view.scale = std::min(DrawingWidth / width, DrawingHeight / (view.high - view.low));
    // A tall wall leaves room beside it.
    for (const int side : {Right, Left}) {
        view.reach(side) *= DrawingWidth / (view.scale * width);
    }
    return view;
}

namespace {

/// A line that runs over the whole reach, as its elevations at some distances.
struct SoilLine {
    double atWall;
    double slope;
    double at(double distance) const { return atWall + slope * distance; }
};

std::vector<SoilLine> layerBottoms(const Problem& problem, int side) {
    std::vector<SoilLine> lines;
    const bool sloping = problem.SoilDataKind(side) == SoilData::Strengths;
    for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
        lines.push_back({problem.SoilBottomElev(side, layer),
                         sloping ? problem.SoilBottomSlope(side, layer) : 0});
    }
    return lines;
}

/// All distances at which a boundary of soil may turn: ground points, and where layer bottoms cross
/// each other or the ground.
std::vector<double> turningDistances(const Problem& problem, int side, double reach,
                                     const std::vector<SoilLine>& lines) {
    std::vector<double> turns{0, reach};
    for (int i = 1; i <= problem.SurfacePointCount(side); ++i) {
        turns.push_back(problem.SurfaceDist(side, i));
    }
    std::vector<double> ends = turns;
    std::sort(ends.begin(), ends.end());
    for (std::size_t a = 0; a < lines.size(); ++a) {
        for (std::size_t b = a + 1; b < lines.size(); ++b) {
            const double closing = lines[b].slope - lines[a].slope;
            if (closing != 0) {
                turns.push_back((lines[a].atWall - lines[b].atWall) / closing);
            }
        }
        for (std::size_t i = 1; i < ends.size(); ++i) {
            const double above = groundElev(problem, side, ends[i - 1]) - lines[a].at(ends[i - 1]);
            const double below = groundElev(problem, side, ends[i]) - lines[a].at(ends[i]);
            if (above * below < 0) {
                turns.push_back(ends[i - 1] + above / (above - below) * (ends[i] - ends[i - 1]));
            }
        }
    }
    std::erase_if(turns, [&](double x) { return !(x >= 0 && x <= reach); });
    std::sort(turns.begin(), turns.end());
    turns.erase(std::unique(turns.begin(), turns.end()), turns.end());
    return turns;
}

/// Middle of the layer at its outermost place, or at the wall, where it shows; false where it does
/// not.
bool markShape(SoilShape& shape, const WallView& view) {
    const double least = 1 / view.scale; // a pixel
    for (std::size_t i = shape.upper.size(); i-- > 0;) {
        const double top = std::min(shape.upper[i].y, view.high);
        const double bottom = std::max(shape.lower[i].y, view.low);
        if (top - bottom > least) {
            shape.mark = {shape.upper[i].x, (top + bottom) / 2};
            return true;
        }
    }
    return false;
}

} // namespace

std::vector<SoilShape> soilShapes(const Problem& problem, int side, const WallView& view) {
    const auto lines = layerBottoms(problem, side);
    const auto turns = turningDistances(problem, side, view.reach(side), lines);
    std::vector<double> boundary;
    boundary.reserve(turns.size());
    for (const double distance : turns) {
        boundary.push_back(groundElev(problem, side, distance));
    }
    std::vector<SoilShape> shapes;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        SoilShape shape;
        shape.layer = layer;
        for (std::size_t i = 0; i < turns.size(); ++i) {
            const double upper = boundary[i];
            const auto line = static_cast<std::size_t>(layer - 1);
            const double lower = line < lines.size() ? std::min(upper, lines[line].at(turns[i]))
                                                     : std::min(upper, view.low);
            shape.upper.push_back({turns[i], upper});
            shape.lower.push_back({turns[i], lower});
            boundary[i] = lower;
        }
        if (markShape(shape, view)) {
            const double noise = 0.01 / view.scale;
            shape.upper = withoutStraightOnes(shape.upper, noise);
            shape.lower = withoutStraightOnes(shape.lower, noise);
            shapes.push_back(shape);
        }
    }
    return shapes;
}

} // namespace korvane::sheet
