#include "verification/quantities.h"

#include "pressures/coefficient_pressures.h"
#include "pressures/elevation_grid.h"
#include "rowe/moment_reduction.h"
#include "runtime/arithmetic.h"
#include "state/tolerances.h"
#include "verification/beam_figures.h"

#include <cmath>
#include <functional>

namespace korvane {

namespace {

using Value = std::optional<double>;

// ---- first pressures --------------------------------------------------------------------------

/// Grid row of a depth below the wall top at the first pressures; 0 where there is none.
int rowAtDepth(const CaseWall& wall, double depth) {
    return firstRowAt(wall.first().grid, wall.problem.WallTopElev - depth);
}

/// The value of a diagram at a row; nothing at row 0.
template <class Diagram>
Value atRow(int row, Diagram diagram) {
    return row > 0 ? Value(diagram(row)) : std::nullopt;
}

/// Trapezoids between two rows of a diagram with values just below and just above each row.
Value integrate(const CaseWall& wall, int from, int to,
                const std::function<double(int, int)>& value) {
    if (from == 0 || to == 0) {
        return std::nullopt;
    }
    double sum = 0;
    for (int i = from + 1; i <= to; ++i) {
        const double height = wall.first().grid.ElevGrid(i - 1) - wall.first().grid.ElevGrid(i);
        sum += (value(i - 1, 1) + value(i, 2)) / 2 * height;
    }
    return sum;
}

template <int k>
Value netActive(const CaseWall* wall, const Arguments& a) {
    return atRow(rowAtDepth(*wall, a[0]), [&](int row) { return wall->first().NetActive(row, k); });
}

template <int k>
Value active(const CaseWall* wall, const Arguments& a) {
    return atRow(rowAtDepth(*wall, a[1]), [&](int row) {
        return wall->first().pressures.ActivePressures(static_cast<int>(a[0]), row, k);
    });
}

template <int k>
Value passive(const CaseWall* wall, const Arguments& a) {
    return atRow(rowAtDepth(*wall, a[1]), [&](int row) {
        return wall->first().pressures.PassivePressures(static_cast<int>(a[0]), row, k);
    });
}

Value activeForce(const CaseWall* wall, const Arguments& a) {
    const int side = static_cast<int>(a[0]);
    return integrate(*wall, rowAtDepth(*wall, a[1]), rowAtDepth(*wall, a[2]), [&](int i, int k) {
        return wall->first().pressures.ActivePressures(side, i, k);
    });
}

Value zeroActive(const CaseWall* wall, const Arguments& a) {
    const int side = static_cast<int>(a[0]);
    const ElevationGrid& grid = wall->first().grid;
    for (int row = 1; row < grid.NumElevs; ++row) {
        if (wall->first().pressures.ActivePressures(side, row + 1, 2) > 0) {
            return wall->problem.WallTopElev - grid.ElevGrid(row);
        }
    }
    return std::nullopt;
}

Value waterPressure(const CaseWall* wall, const Arguments& a) {
    return atRow(rowAtDepth(*wall, a[0]),
                 [&](int row) { return wall->first().pressures.WaterPressures(row, 2); });
}

/// A point of the pressures of all surcharges of a side.
struct SurchargePoint {
    double elev;
    double pressure;
};

/// From the surface down, as they were worked out; rows inserted later do not carry them along.
std::vector<SurchargePoint> surchargesOf(const CaseWall& wall, int side) {
    const SurchargeShares& shares = wall.workspace.review().details.sides(side).surcharges;
    std::vector<SurchargePoint> points{{wall.problem.SurfaceElev(side, 1), 0}};
    for (std::size_t row = 0; row < shares.elev.size(); ++row) {
        points.push_back({shares.elev[row], shares.sum[row]});
    }
    return points;
}

Value surcharge(const CaseWall* wall, const Arguments& a) {
    const double elev = wall->problem.WallTopElev - a[1];
    for (const SurchargePoint& point : surchargesOf(*wall, static_cast<int>(a[0]))) {
        if (std::fabs(point.elev - elev) <= SameElevation) {
            return point.pressure;
        }
    }
    return std::nullopt;
}

Value surchargeForce(const CaseWall* wall, const Arguments& a) {
    const double end = wall->problem.WallTopElev - a[1];
    const std::vector<SurchargePoint> points = surchargesOf(*wall, static_cast<int>(a[0]));
    double sum = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) {
            const SurchargePoint& above = points[i - 1];
            sum += (above.pressure + points[i].pressure) / 2 * (above.elev - points[i].elev);
        }
        if (std::fabs(points[i].elev - end) <= SameElevation) {
            return sum;
        }
    }
    return std::nullopt;
}

// ---- results ----------------------------------------------------------------------------------

/// The value of a level that the first argument names; nothing where it is not solved.
template <class Evaluate>
Value ofLevel(const CaseWall* wall, const Arguments& a, Evaluate evaluate) {
    const int level = static_cast<int>(a[0]);
    if (!wall->solved || level > wall->results().levelCount) {
        return std::nullopt;
    }
    return evaluate(wall->results().levels(level));
}

/// Largest shear by size, also between rows: where the net pressure passes zero inside a segment
/// the shear's parabola has its extreme.
double largestShear(const ResultDiagrams& level) {
    double largest = 0;
    for (int row = 1; row < level.RowCount; ++row) {
        const double V = level.ResultShear(row);
        const double p = level.ResultPressure(row);
        const double q = level.ResultPressure(row + 1);
        const double h = level.ResultElev(row) - level.ResultElev(row + 1);
        largest = MaxOf(largest, std::fabs(V));
        if (p * q < 0) {
            largest = MaxOf(largest, std::fabs(V + p * (h * p / (p - q)) / 2));
        }
    }
    return largest;
}

/// The extreme of a sign (1 or -1) of the moments, also between rows: where the shear passes zero.
Extreme extremeMoment(const ResultDiagrams& level, double sign) {
    Extreme extreme{.value = level.ResultMoment(1), .elev = level.ResultElev(1)};
    const auto see = [&](double moment, double elev) {
        if (sign * moment > sign * extreme.value) {
            extreme = {.value = moment, .elev = elev};
        }
    };
    for (int row = 1; row < level.RowCount; ++row) {
        const double V = level.ResultShear(row);
        const double p = level.ResultPressure(row);
        const double h = level.ResultElev(row) - level.ResultElev(row + 1);
        const double slope = (level.ResultPressure(row + 1) - p) / h;
        see(level.ResultMoment(row), level.ResultElev(row));
        // V + p s + slope s^2 / 2 = 0, in the form that also does for a slope of zero.
        const double root = p * p - 2 * slope * V;
        const double divisor = p + (p < 0 ? -1 : 1) * std::sqrt(MaxOf(root, 0));
        const double s = root < 0 || divisor == 0 ? 0 : -2 * V / divisor;
        if (s > 0 && s < h) {
            see(level.ResultMoment(row) + V * s + p * s * s / 2 + slope * s * s * s / 6,
                level.ResultElev(row) - s);
        }
    }
    see(level.ResultMoment(level.RowCount), level.ResultElev(level.RowCount));
    return extreme;
}

template <int sign>
Value momentExtreme(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [](const LevelResult& level) {
        return extremeMoment(level.diagrams, sign).value;
    });
}

template <int sign>
Value momentExtremeDepth(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [&](const LevelResult& level) {
        return wall->problem.WallTopElev - extremeMoment(level.diagrams, sign).elev;
    });
}

Value penetration(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [](const LevelResult& level) { return level.penetration; });
}

Value maxMoment(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [](const LevelResult& level) {
        return std::fabs(level.diagrams.MaxMoment.value);
    });
}

Value maxMomentDepth(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [&](const LevelResult& level) {
        return wall->problem.WallTopElev - level.diagrams.MaxMoment.elev;
    });
}

Value maxShear(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [](const LevelResult& level) { return largestShear(level.diagrams); });
}

Value anchorForce(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [](const LevelResult& level) { return level.anchorForce; });
}

Value factorOfSafety(const CaseWall* wall, const Arguments& a) {
    return ofLevel(wall, a, [](const LevelResult& level) { return level.factorOfSafety; });
}

// ---- formulas without a wall ------------------------------------------------------------------

Value coulomb(const CaseWall* /*wall*/, const Arguments& a) {
    return coulombActive(a[0] * DegreesToRadians, a[1] * DegreesToRadians);
}

Value passiveOf(const CaseWall* /*wall*/, const Arguments& a) {
    return passiveCoefficient(a[0] * DegreesToRadians, a[1] * DegreesToRadians);
}

Value logRigidity(const CaseWall* /*wall*/, const Arguments& a) {
    return pileLogRigidity(a[0], a[1], a[2]);
}

BeamUnderTriangle beamOf(const Arguments& a) {
    return {.fixed = a[0] == 1, .length = a[1], .load = a[2]};
}

Value beamShear(const CaseWall* /*wall*/, const Arguments& a) {
    return std::fabs(beamAt(beamOf(a), a[3]).shear);
}

Value beamMoment(const CaseWall* /*wall*/, const Arguments& a) {
    return std::fabs(beamAt(beamOf(a), a[3]).moment);
}

Value beamDeflection(const CaseWall* /*wall*/, const Arguments& a) {
    constexpr double cubicInches = 1728; // in a cubic foot
    return divide(std::fabs(beamAt(beamOf(a), a[3]).deflection) * cubicInches, a[4] * a[5]);
}

Value beamSlope(const CaseWall* /*wall*/, const Arguments& a) {
    constexpr double squareInches = 144; // in a square foot
    return divide(std::fabs(beamAt(beamOf(a), a[3]).rotation) * squareInches, a[4] * a[5]);
}

constexpr CaseQuantity quantities[] = {
    {"penetration", "L", true, penetration},
    {"max-moment", "L", true, maxMoment},
    {"max-moment-depth", "L", true, maxMomentDepth},
    {"largest-moment", "L", true, momentExtreme<1>},
    {"largest-moment-depth", "L", true, momentExtremeDepth<1>},
    {"smallest-moment", "L", true, momentExtreme<-1>},
    {"smallest-moment-depth", "L", true, momentExtremeDepth<-1>},
    {"max-shear", "L", true, maxShear},
    {"anchor-force", "L", true, anchorForce},
    {"factor", "L", true, factorOfSafety},
    {"net-active", "Z", true, netActive<2>},
    {"net-active-below", "Z", true, netActive<1>},
    {"active", "SZ", true, active<2>},
    {"active-below", "SZ", true, active<1>},
    {"passive", "SZ", true, passive<2>},
    {"passive-below", "SZ", true, passive<1>},
    {"active-force", "SZZ", true, activeForce},
    {"zero-active", "S", true, zeroActive},
    {"water", "Z", true, waterPressure},
    {"surcharge", "SZ", true, surcharge},
    {"surcharge-force", "SZ", true, surchargeForce},
    {"coulomb-active", "NN", false, coulomb},
    {"passive-coefficient", "NN", false, passiveOf},
    {"log-rigidity", "NNN", false, logRigidity},
    {"beam-shear", "FNNZ", false, beamShear},
    {"beam-moment", "FNNZ", false, beamMoment},
    {"beam-deflection", "FNNZNN", false, beamDeflection},
    {"beam-slope", "FNNZNN", false, beamSlope},
};

} // namespace

const CaseQuantity* quantityNamed(std::string_view name) {
    for (const CaseQuantity& quantity : quantities) {
        if (name == quantity.name) {
            return &quantity;
        }
    }
    return nullptr;
}

} // namespace korvane
