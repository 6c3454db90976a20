#include "sheet/statics.h"

#include "solution/wall_diagrams.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace korvane {

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
    for (int j = 1; j <= problem.HLineCount; ++j) {
        if (problem.HLineElev(j) > level.bottomElev) {
            loading.lines.push_back({problem.HLineElev(j), problem.HLineLoad(j)});
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
    LoadSums sums;
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
    piecesAbove(loading, elev,
                [&](const LoadPiece& piece) { moment += piece.momentAbout(elev); });
    for (const PointForce& line : loading.lines) {
        moment += line.elev > elev ? line.force * (line.elev - elev) : 0;
    }
    return moment;
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
            points_.push_back({elev, length == 0
                                         ? 0
                                         : gauss.weight * length * momentAt(loading_, elev)});
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

double MomentAreas::builtIn(double elev) const {
    double sum = 0;
    for (std::size_t i = 1; i < breaks_.size(); ++i) {
        if (breaks_[i - 1] <= elev) {
            for (std::size_t p = 3 * (i - 1); p < 3 * i; ++p) {
                sum += points_[p].weightedMoment * (elev - points_[p].elev);
            }
        } else if (breaks_[i] < elev) {
            sum += ruleOver(elev, breaks_[i], elev);
        }
    }
    return sum;
}

double MomentAreas::hinged(double elev, double heldAt) const {
    const double bottom = breaks_.back();
    return builtIn(elev) - builtIn(heldAt) * (elev - bottom) / (heldAt - bottom);
}

double supportForce(const WallLoading& loading, double elev) {
    const double height = elev - loading.bottom;
    return 3 * MomentAreas(loading).builtIn(elev) / (height * height * height);
}

} // namespace korvane
