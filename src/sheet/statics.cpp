#include "sheet/statics.h"

#include "solution/wall_diagrams.h"
#include "state/tolerances.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace korvane::sheet {

double LoadPiece::pressureAt(double elev) const {
    return top == bottom ? atBottom : atTop + (atBottom - atTop) * (top - elev) / (top - bottom);
}

double LoadPiece::momentAbout(double elev) const {
    // Two triangles, each with its centre at a third of the height.
    const double height = top - bottom;
    return atTop * height / 2 * (bottom + height * 2 / 3 - elev) +
           atBottom * height / 2 * (bottom + height / 3 - elev);
}

LoadPiece LoadPiece::above(double elev) const {
    return {top, elev, atTop, pressureAt(elev)};
}

namespace {

/// The elevation of the row that stands at an elevation, or that itself.
double rowElevation(const std::vector<LoadPiece>& pieces, double elev) {
    for (const LoadPiece& piece : pieces) {
        if (std::fabs(piece.top - elev) < SameElevation) {
            return piece.top;
        }
    }
    return elev;
}

} // namespace

WallLoading wallLoading(const Problem& problem, const LevelResult& level) {
    const PressureDiagrams wall = wallDiagrams(level);
    const auto& ElevGrid = wall.grid.ElevGrid;
    WallLoading loading;
    for (int i = 2; i <= wall.grid.NumElevs; ++i) {
        loading.pieces.push_back(
            {ElevGrid(i - 1), ElevGrid(i), wall.NetActive(i - 1, 1), wall.NetActive(i, 2)});
    }
    loading.top = ElevGrid(1);
    loading.bottom = level.bottomElev;
    loading.anchorElev = rowElevation(loading.pieces, problem.AnchorElev);
    for (int j = 1; j <= problem.HLineCount; ++j) {
        if (problem.HLineElev(j) > level.bottomElev) {
            loading.lines.push_back(
                {rowElevation(loading.pieces, problem.HLineElev(j)), problem.HLineLoad(j)});
        }
    }
    return loading;
}

WallLoading withForce(WallLoading loading, const PointForce& force) {
    loading.lines.push_back(force);
    return loading;
}

namespace {

/// The pieces cut at the zeros within them.
std::vector<LoadPiece> cutAtZeros(const std::vector<LoadPiece>& pieces) {
    std::vector<LoadPiece> cut;
    for (const LoadPiece& piece : pieces) {
        if (piece.atTop * piece.atBottom >= 0) {
            cut.push_back(piece);
            continue;
        }
        const double share = piece.atTop / (piece.atTop - piece.atBottom);
        const double zero = piece.top - share * (piece.top - piece.bottom);
        cut.push_back({piece.top, zero, piece.atTop, 0});
        cut.push_back({zero, piece.bottom, 0, piece.atBottom});
    }
    return cut;
}

int signOf(double value) {
    return value > 0 ? 1 : value < 0 ? -1 : 0;
}

} // namespace

std::vector<PressureArea> areasBetweenZeros(const WallLoading& loading) {
    std::vector<PressureArea> areas;
    double moment = 0; // of the last area about elevation 0
    int sign = 0;
    for (const LoadPiece& piece : cutAtZeros(loading.pieces)) {
        const double force = piece.force();
        if (const int own = signOf(force); own != sign) {
            sign = own;
            moment = 0;
            if (own != 0) {
                areas.push_back({.top = piece.top});
            }
        }
        if (sign == 0) {
            continue;
        }
        PressureArea& area = areas.back();
        area.bottom = piece.bottom;
        area.force += force;
        moment += piece.momentAbout(0);
        area.centre = moment / area.force;
    }
    return areas;
}

LoadSums sumsAbout(const WallLoading& loading, double elev) {
    LoadSums sums{.forceSizes = 1, .momentSizes = 1};
    const auto add = [&](double force, double moment) {
        sums.force += force;
        sums.moment += moment;
        sums.forceSizes += std::fabs(force);
        sums.momentSizes += std::fabs(moment);
    };
    for (const LoadPiece& piece : loading.pieces) {
        add(piece.force(), piece.momentAbout(elev));
    }
    for (const PointForce& line : loading.lines) {
        add(line.force, line.force * (line.elev - elev));
    }
    return sums;
}

namespace {

/// Calls `take` with each piece above an elevation, the one that it stands in cut there.
template <class Take>
void piecesAbove(const WallLoading& loading, double elev, Take take) {
    for (const LoadPiece& piece : loading.pieces) {
        if (piece.bottom >= elev) {
            take(piece);
        } else if (piece.top > elev) {
            take(piece.above(elev));
        }
    }
}

double pressureForceAbove(const WallLoading& loading, double elev) {
    double force = 0;
    piecesAbove(loading, elev, [&](const LoadPiece& piece) { force += piece.force(); });
    return force;
}

} // namespace

double shearBelow(const WallLoading& loading, double elev) {
    double shear = pressureForceAbove(loading, elev);
    for (const PointForce& line : loading.lines) {
        shear += line.elev >= elev ? line.force : 0;
    }
    return shear;
}

double shearAbove(const WallLoading& loading, double elev) {
    double shear = pressureForceAbove(loading, elev);
    for (const PointForce& line : loading.lines) {
        shear += line.elev > elev ? line.force : 0;
    }
    return shear;
}

double momentAt(const WallLoading& loading, double elev) {
    double moment = 0;
    piecesAbove(loading, elev, [&](const LoadPiece& piece) { moment += piece.momentAbout(elev); });
    for (const PointForce& line : loading.lines) {
        moment += line.elev > elev ? line.force * (line.elev - elev) : 0;
    }
    return moment;
}

namespace {

/// Where the shear vanishes between two elevations at which its sign differs.
double zeroOfShear(const WallLoading& loading, double top, double bottom) {
    const bool topPositive = shearBelow(loading, top) > 0;
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double middle = (top + bottom) / 2;
        ((shearBelow(loading, middle) > 0) == topPositive ? top : bottom) = middle;
    }
    return (top + bottom) / 2;
}

} // namespace

Extreme largestMoment(const WallLoading& loading) {
    // Between these the pressure keeps its sign and the shear grows or falls throughout.
    std::vector<double> breaks;
    for (const LoadPiece& piece : cutAtZeros(loading.pieces)) {
        breaks.push_back(piece.top);
    }
    for (const PointForce& line : loading.lines) {
        breaks.push_back(line.elev);
    }
    breaks.push_back(loading.bottom);
    std::sort(breaks.rbegin(), breaks.rend());
    Extreme largest;
    const auto take = [&](double elev) {
        const double moment = momentAt(loading, elev);
        if (std::fabs(moment) > std::fabs(largest.value)) {
            largest = {moment, elev};
        }
    };
    for (std::size_t i = 1; i < breaks.size(); ++i) {
        take(breaks[i]);
        if (shearBelow(loading, breaks[i - 1]) * shearAbove(loading, breaks[i]) < 0) {
            take(zeroOfShear(loading, breaks[i - 1], breaks[i]));
        }
    }
    return largest;
}

namespace {

/// Gauss's rule of three points on a stretch of length 1, exact up to the fifth degree.
struct GaussPoint {
    double place;
    double weight;
};
const std::array<GaussPoint, 3> GaussRule{{
    {0.5 - std::sqrt(0.15), 5.0 / 18},
    {0.5, 8.0 / 18},
    {0.5 + std::sqrt(0.15), 5.0 / 18},
}};

} // namespace

MomentAreas::MomentAreas(const WallLoading& loading) : loading_(loading) {
    for (const LoadPiece& piece : loading.pieces) {
        breaks_.push_back(piece.top);
    }
    for (const PointForce& line : loading.lines) {
        breaks_.push_back(line.elev);
    }
    breaks_.push_back(loading.bottom);
    std::sort(breaks_.rbegin(), breaks_.rend());
    for (std::size_t i = 1; i < breaks_.size(); ++i) {
        const double length = breaks_[i - 1] - breaks_[i];
        for (const GaussPoint& gauss : GaussRule) {
            const double elev = breaks_[i] + gauss.place * length;
            points_.push_back(
                {elev, length == 0 ? 0 : gauss.weight * length * momentAt(loading_, elev)});
        }
    }
}

double MomentAreas::ruleOver(double top, double bottom, double about) const {
    double sum = 0;
    for (const GaussPoint& gauss : GaussRule) {
        const double elev = bottom + gauss.place * (top - bottom);
        sum += gauss.weight * (top - bottom) * momentAt(loading_, elev) * (about - elev);
    }
    return sum;
}

double MomentAreas::staticMoment(double upTo, double about) const {
    double sum = 0;
    for (std::size_t i = 1; i < breaks_.size(); ++i) {
        if (breaks_[i - 1] <= upTo) {
            for (std::size_t p = 3 * (i - 1); p < 3 * i; ++p) {
                sum += points_[p].weightedMoment * (about - points_[p].elev);
            }
        } else if (breaks_[i] < upTo) {
            sum += ruleOver(upTo, breaks_[i], about);
        }
    }
    return sum;
}

double MomentAreas::builtIn(double elev) const {
    return staticMoment(elev, elev);
}

double MomentAreas::hinged(double elev, double heldAt) const {
    const double bottom = breaks_.back();
    return builtIn(elev) - builtIn(heldAt) * (elev - bottom) / (heldAt - bottom);
}

double supportForce(const WallLoading& loading, double elev) {
    const double height = elev - loading.bottom;
    return 3 * MomentAreas(loading).builtIn(elev) / (height * height * height);
}

namespace {

/// The force (LB per foot, toward the right) that holds a level's wall at an elevation.
double holdingForce(SolutionMethod method, const WallLoading& loading, double elev) {
    switch (method) {
    case SolutionMethod::FreeEarth:
        return sumsAbout(loading, loading.bottom).moment / (elev - loading.bottom);
    case SolutionMethod::FixedEarth:
        return supportForce(loading, elev);
    case SolutionMethod::Cantilever:
        break;
    }
    return 0;
}

} // namespace

double zeroOfNetPressure(const Problem& problem, const LevelResult& level) {
    const ElevationGrid& grid = level.solved.grid;
    const auto& NetActive = level.solved.NetActive;
    const double ground = std::min(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    int row = 1;
    while (row < grid.NumElevs && grid.ElevGrid(row + 1) >= ground - SameElevation) {
        ++row;
    }
    const int surface = row;
    while (row < grid.NumElevs && NetActive(row, 1) > PressureNoise &&
           (row == surface || std::fabs(NetActive(row, 2)) > PressureNoise)) {
        ++row;
    }
    return grid.ElevGrid(row);
}

double continuedMoment(const Problem& problem, const LevelResult& level) {
    const WallLoading loading = wallLoading(problem, level);
    const double zero = zeroOfNetPressure(problem, level);
    const double way = problem.AnchorElev - zero;
    return MomentAreas(loading).staticMoment(zero, problem.AnchorElev) +
           momentAt(loading, zero) * way * way / 2 -
           shearAbove(loading, zero) * way * way * way / 6;
}

double anchorByStatics(const Problem& problem, const LevelResult& level) {
    if (level.method == SolutionMethod::FixedEarth && problem.AnchorElev < level.bottomElev) {
        const double height = problem.AnchorElev - level.bottomElev;
        return 3 * continuedMoment(problem, level) / (height * height * height);
    }
    return holdingForce(level.method, wallLoading(problem, level), problem.AnchorElev);
}

WallLoading heldLoading(const Problem& problem, const LevelResult& level) {
    WallLoading loading = wallLoading(problem, level);
    if (level.method == SolutionMethod::Cantilever || loading.anchorElev <= loading.bottom) {
        return loading;
    }
    const PointForce anchor{loading.anchorElev,
                            -holdingForce(level.method, loading, loading.anchorElev)};
    return withForce(std::move(loading), anchor);
}

double deflectionAt(SolutionMethod method, const MomentAreas& areas, double elev, double anchor) {
    return method == SolutionMethod::FreeEarth ? areas.hinged(elev, anchor) : areas.builtIn(elev);
}

double deflectionScale(const Problem& problem) {
    constexpr double inchesCubed = 1728; // of a cubic foot
    return problem.ProgramMode == Mode::Analysis
               ? inchesCubed / (problem.WallModulus * problem.WallInertia)
               : inchesCubed;
}

double withoutRounding(double sum, double sizes) {
    return std::fabs(sum) <= SumRounding * sizes ? 0 : sum;
}

} // namespace korvane::sheet
