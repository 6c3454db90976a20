// The sweep search: planes over a range of angles.
#include "pressures/elevation_grid.h"
#include "pressures/wedge_forces.h"
#include "pressures/wedge_load.h"
#include "pressures/wedge_strengths.h"
#include "runtime/arithmetic.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double RightAngle = 3.14159265358979 / 2;
constexpr double FirstAngle = 23 * DegreesToRadians;
constexpr double AngleStep = 0.0349065850398866; ///< 2 degrees
constexpr int MaxAngles = 80;                    ///< more than lead from 23 to 180 degrees

constexpr double NoActiveForce = -100000.0; ///< lower than any force that counts
constexpr double LeastPassiveForce = 0.0001;

/// The direction of a plane, measured from the vertical.
struct Direction {
    double angle = 0; ///< radians
    double sin = 0;
    double cos = 1;
};

Direction directionAt(double angle) {
    return {angle, std::sin(angle), std::cos(angle)};
}

/// All directions that a sweep can take before its last, by repeated addition of the step.
const Array<Direction, MaxAngles>& sweepDirections() {
    static const Array<Direction, MaxAngles> directions = [] {
        Array<Direction, MaxAngles> all;
        double angle = FirstAngle;
        for (Direction& direction : all) {
            direction = directionAt(angle);
            angle += AngleStep;
        }
        return all;
    }();
    return directions;
}

/// The ground as seen by the planes of one side: its points and the segment that ends at each.
struct Ground {
    int count = 0;
    Array<double, 51> x;     ///< FT
    Array<double, 51> y;     ///< FT
    Array<double, 51> slope; ///< of the segment that ends at the point
    Array<double, 51> sight; ///< slope of the line from the row's wall point to the point

    Ground(const WedgeRegions& regions, int side) : count(regions.WedgeSurfaceCount(side)) {
        for (int p = 1; p <= count; ++p) {
            x(p) = regions.WedgeSurfaceX(side, p);
            y(p) = regions.WedgeSurfaceY(side, p);
        }
        for (int p = 2; p <= count; ++p) {
            slope(p) = divide(y(p) - y(p - 1), x(p) - x(p - 1));
        }
    }

    /// Sights the points from (0, y0); returns the slope of the flattest sight.
    double sightFrom(double y0) {
        double flattest = sight(2) = (y(2) - y0) / x(2);
        for (int p = 3; p <= count; ++p) {
            sight(p) = (y(p) - y0) / x(p);
            flattest = MinOf(flattest, sight(p));
        }
        return flattest;
    }
};

/// The two forces of one trial plane on the wall, before the wall friction's cosine.
struct TrialForces {
    double active;
    double passive;
};

/// One trial plane from (0, y0) to the ground.
struct Plane {
    Direction direction;
    double slope; ///< FT/FT
    double x;     ///< FT, at the ground
    double y;     ///< FT, at the ground
};

/// How a plane meets the layer boundaries.
struct BoundaryScan {
    int kind = 4; ///< 4 no boundary starts at the row; 1 the plane stays above the one that does, 2
                  ///< runs along it, 3 stays below it
    int up = 0;   ///< boundaries that the plane crosses upward
    int down = 0; ///< boundaries that the plane crosses downward
};

/// Cosine and sine of the mean wall friction.
struct WallDirection {
    double cos = 1;
    double sin = 0;
};

/// The sweep of one side at one level; holds what stays the same from plane to plane.
class Sweep {
  public:
    Sweep(State& state, int side, int level)
        : state_(state), problem_(state.problem), side_(side), level_(level),
          layerCount_(state.problem.SoilLayerCount(side)),
          soils_(developedStrengths(state, side, level)), ground_(state.regions, side) {}

    void run();

  private:
    void sweepRow(int row);
    void enterRow(int row);
    double topOfRange();
    Plane cutGround(const Direction& direction, int& groundPoint) const;
    BoundaryScan scanBoundaries(const Plane& plane) const;
    TrialForces forcesOf(const Plane& plane) const;
    TrialForces forcesInOneSoil(const Plane& plane, int kind) const;
    TrialForces forcesInSeveralSoils(const Plane& plane, const BoundaryScan& scan) const;
    double loadOn(const Plane& plane, double x1, double x2, double y2, int layer) const;
    double activeOnWall(const Direction& plane, const DevelopedStrength& soil, double load,
                        double length, double push) const;
    double passiveOnWall(const Direction& plane, const DevelopedStrength& soil, double load,
                         double length, double push, bool& exists) const;

    State& state_;
    const Problem& problem_;
    int side_;
    int level_;
    int layerCount_;
    Array<LayerStrength, 11> soils_;
    Ground ground_;

    // Of the present row
    double y0_ = 0; ///< FT
    int layer_ = 1; ///< the layer at the row
    WallTerms activeTerms_;
    WallTerms passiveTerms_;
    WallDirection activeWall_;
    WallDirection passiveWall_;
};

/// Goes down to a row: layer, wall terms, mean wall friction, sight of the ground.
void Sweep::enterRow(int row) {
    const auto& ElevGrid = state_.grid.ElevGrid;
    y0_ = ElevGrid(row);
    if (layer_ < layerCount_ && y0_ < problem_.SoilBottomElev(side_, layer_)) {
        ++layer_;
    }
    const double height = ElevGrid(row - 1) - y0_;
    activeTerms_.pass(height, soils_(layer_).active);
    passiveTerms_.pass(height, soils_(layer_).passive);

    const double depth = problem_.SurfaceElev(side_, 1) - y0_;
    const double da = divide(activeTerms_.friction, depth);
    const double dp = divide(passiveTerms_.friction, depth);
    activeWall_ = {std::cos(da), std::sin(da)};
    passiveWall_ = {std::cos(dp), std::sin(dp)};
}

/// 2 degrees short of the flattest line of sight to a ground point.
double Sweep::topOfRange() {
    return RightAngle - std::atan(ground_.sightFrom(y0_)) - AngleStep;
}

/// The ground point of a plane. `groundPoint` is where the walk along the ground starts and is left
/// where it ends: a flatter plane never ends before a steeper one.
Plane Sweep::cutGround(const Direction& direction, int& groundPoint) const {
    const double k = direction.cos / direction.sin;
    int& p = groundPoint;
    while (p <= ground_.count && ground_.sight(p) > k) {
        ++p;
    }
    if (p > ground_.count) {
        throw RuntimeError(9); // a plane that never reaches the ground
    }
    if (ground_.sight(p) == k) {
        return {direction, k, ground_.x(p), ground_.y(p)};
    }
    const double s = ground_.slope(p);
    const double x = divide(ground_.y(p) - s * ground_.x(p) - y0_, k - s);
    return {direction, k, x, k * x + y0_};
}

BoundaryScan Sweep::scanBoundaries(const Plane& plane) const {
    BoundaryScan scan;
    for (int b = 1; b < layerCount_; ++b) {
        const double xb = state_.regions.Layer.X(side_, b + 1, 2); // where it reaches the ground
        const double yb = problem_.SoilBottomElev(side_, b);
        if (yb == y0_) {
            scan.kind = plane.x == xb ? 2 : plane.x < xb ? 1 : 3;
            if (scan.kind != 3) {
                break;
            }
        } else if (yb > y0_) {
            if (plane.x == xb) {
                break;
            }
            scan.up += plane.x < xb ? 1 : 0;
        } else {
            if (plane.x <= xb) {
                break;
            }
            ++scan.down;
        }
    }
    return scan;
}

/// Soil and surcharge (LB) on the plane between x1 and (x2, y2).
double Sweep::loadOn(const Plane& plane, double x1, double x2, double y2, int layer) const {
    const double y1 = plane.slope * x1 + y0_;
    return WedgeWeight(state_, y0_, plane.slope, side_, level_, x1, y1, x2, y2, layer) +
           WedgeSurchargeLoad(problem_, side_, x1, x2);
}

/// Active force of the wedge at the wall; `push` is what the outer wedges put on it.
double Sweep::activeOnWall(const Direction& plane, const DevelopedStrength& soil, double load,
                           double length, double push) const {
    const double t = soil.friction;
    const double C = length * soil.cohesion;
    const double A = plane.cos * t + plane.sin;
    const double B = plane.sin * t - plane.cos;
    const double D = B * activeWall_.sin - activeWall_.cos * A;
    if (D == 0) {
        return NoActiveForce;
    }
    return ((load - plane.cos * C - activeTerms_.adhesion) * B - (push - C * plane.sin) * A) / D;
}

/// Passive force of the wedge at the wall; `exists` is false where there is none.
double Sweep::passiveOnWall(const Direction& plane, const DevelopedStrength& soil, double load,
                            double length, double push, bool& exists) const {
    const double t = soil.friction;
    const double C = length * soil.cohesion;
    const double A = plane.sin - plane.cos * t;
    const double B = -(plane.sin * t + plane.cos);
    const double D = -passiveWall_.sin * B - A * passiveWall_.cos;
    exists = D != 0;
    if (!exists) {
        return 0;
    }
    return ((plane.cos * C + load + passiveTerms_.adhesion) * B - (plane.sin * C + push) * A) / D;
}

TrialForces Sweep::forcesOf(const Plane& plane) const {
    const BoundaryScan scan = scanBoundaries(plane);
    return scan.up + scan.down == 0 ? forcesInOneSoil(plane, scan.kind)
                                    : forcesInSeveralSoils(plane, scan);
}

TrialForces Sweep::forcesInOneSoil(const Plane& plane, int kind) const {
    const Direction& direction = plane.direction;
    const int layer = kind == 3 ? layer_ + 1 : layer_;
    const double length = plane.x / direction.sin;
    const double load = loadOn(plane, 0, plane.x, plane.y, layer);
    const auto forcesWith = [&](const LayerStrength& soil) {
        bool exists = true;
        return TrialForces{activeOnWall(direction, soil.active, load, length, 0),
                           passiveOnWall(direction, soil.passive, load, length, 0, exists)};
    };
    TrialForces forces = forcesWith(soils_(layer));
    if (kind == 2) {
        // Along a boundary the weaker of both soils governs; the load is that of the upper one.
        const TrialForces below = forcesWith(soils_(layer + 1));
        forces = {MaxOf(forces.active, below.active), MinOf(forces.passive, below.passive)};
    }
    return forces;
}

/// A plane through several layers, from the ground down to the wall: each outer wedge hands its
/// horizontal force on to the next one, the last one gives the force on the wall.
TrialForces Sweep::forcesInSeveralSoils(const Plane& plane, const BoundaryScan& scan) const {
    const Direction& direction = plane.direction;
    const bool upward = scan.up > 0;
    const int step = upward ? 1 : -1;
    const int last = !upward && scan.kind == 3 ? layer_ + 1 : layer_;
    double push = 0;       // active force of the outer wedges
    double resistance = 0; // passive force of the outer wedges
    bool passiveExists = true;

    double x2 = plane.x;
    double y2 = plane.y;
    for (int layer = upward ? last - scan.up : last + scan.down; layer != last; layer += step) {
        const int boundary = upward ? layer : layer - 1;
        const double x1 = divide(problem_.SoilBottomElev(side_, boundary) - y0_,
                                 plane.slope - problem_.SoilBottomSlope(side_, boundary));
        const double load = loadOn(plane, x1, x2, y2, layer);
        const double length = std::abs(x2 - x1) / direction.sin;
        x2 = x1;
        y2 = plane.slope * x1 + y0_;

        const DevelopedStrength& active = soils_(layer).active;
        const double Ca = length * active.cohesion;
        push +=
            divide((load - direction.cos * Ca) * (direction.cos - direction.sin * active.friction),
                   direction.cos * active.friction + direction.sin) -
            direction.sin * Ca;

        const DevelopedStrength& passive = soils_(layer).passive;
        const double Cp = length * passive.cohesion;
        const double A = direction.sin - direction.cos * passive.friction;
        const double B = -(direction.sin * passive.friction + direction.cos);
        const double resisting =
            A == 0 ? 0 : -(direction.cos * Cp + load) * B / A + direction.sin * Cp;
        passiveExists = passiveExists && resisting > 0;
        resistance += resisting;
    }

    const double load = loadOn(plane, 0, x2, y2, last);
    const double length = x2 / direction.sin;
    const LayerStrength& soil = soils_(last);
    const double active = activeOnWall(direction, soil.active, load, length, push);
    bool wallForceExists = true;
    const double passive =
        passiveOnWall(direction, soil.passive, load, length, resistance, wallForceExists);
    passiveExists = passiveExists && wallForceExists && passive > resistance;
    return {active < 0 ? NoActiveForce : active, passiveExists ? passive : 0};
}

/// Tries the planes of one row and keeps the largest active and the smallest passive force.
void Sweep::sweepRow(int row) {
    auto& WedgeActiveForce = state_.wedge.WedgeActiveForce;
    auto& WedgePassiveForce = state_.wedge.WedgePassiveForce;
    const auto& directions = sweepDirections();
    const bool mayStopEarly = state_.preparation.NumSurchargesOnSide(side_) == 0;

    double Pa = NoActiveForce;
    double Pp = 0;
    bool found = false;
    bool rising = false;
    bool gain = false;
    const double top = topOfRange();
    int groundPoint = 2;
    bool passed = false; // both extremes
    bool last = false;
    for (int step = 1; !last && !passed; ++step) {
        last = directions(step).angle > top;
        const Plane plane = cutGround(last ? directionAt(top) : directions(step), groundPoint);
        const auto [P, Q] = forcesOf(plane);

        gain = P > Pa;
        Pa = MaxOf(Pa, P);
        if (Q >= LeastPassiveForce) {
            rising = found && Q > Pp;
            Pp = rising ? Pp : Q;
            found = true;
        }
        // A load on the ground can put the extreme beyond a first turning point.
        passed = !gain && rising && mayStopEarly;
    }
    WedgeActiveForce(row, side_) = finite(Pa * activeWall_.cos);
    WedgePassiveForce(row, side_) = finite(Pp * passiveWall_.cos);

    if (passed || row == state_.grid.NumElevs) {
        return;
    }
    if (gain) {
        state_.pressures.ActiveMark(side_, row) = true;
        state_.wedge.WedgeNoSolution(level_, side_) = 1;
    }
    if (!rising) {
        state_.pressures.PassiveMark(side_, row) = true;
        state_.wedge.WedgeNoSolution(level_, side_) = 1;
    }
}

void Sweep::run() {
    const int surfaceRow = lastRowAt(state_.grid, problem_.SurfaceElev(side_, 1));
    for (int row = surfaceRow + 1; row <= state_.grid.NumElevs; ++row) {
        enterRow(row);
        sweepRow(row);
    }
}

} // namespace

// Horizontal forces of the soil on the wall, from the surface down to each row, by equilibrium of
// the wedge above a trial failure plane: the largest active and the smallest passive force over all
// planes, 2 degrees apart (Coulomb's method of trial wedges). A row is done when the planes are, or
// without surcharges when both extremes have been passed. Reads the regions, the layers and their
// factors; writes the side's WedgeActiveForce and WedgePassiveForce (LB per foot of wall), marks
// and WedgeNoSolution.
void SweepSearchForces(State& state, int side, int level) {
    for (int row = 1; row <= state.grid.ElevGrid.size(); ++row) {
        state.wedge.WedgeActiveForce(row, side) = 0;
        state.wedge.WedgePassiveForce(row, side) = 0;
        state.pressures.ActiveMark(side, row) = false;
        state.pressures.PassiveMark(side, row) = false;
    }
    Sweep(state, side, level).run();
}

} // namespace korvane
