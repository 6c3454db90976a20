// The sweep search: planes over a range of angles.
#include "pressures/elevation_grid.h"
#include "pressures/wedge_forces.h"
#include "pressures/wedge_planes.h"
#include "pressures/wedge_strengths.h"
#include "runtime/arithmetic.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double NoActiveForce = -100000.0; ///< lower than any force that counts
constexpr double LeastPassiveForce = 0.0001;

/// The two forces of one trial plane on the wall, before the wall friction's cosine.
struct TrialForces {
    double active;
    double passive;
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
        : state_(state), problem_(*state.problem), side_(side), level_(level),
          layerCount_(state.problem->SoilLayerCount(side)),
          soils_(developedStrengths(state, side, level)), planes_(state, side, level) {}

    void run();

  private:
    void sweepRow(int row);
    void enterRow(int row);
    TrialForces forces() const;
    TrialForces forcesInOneSoil() const;
    TrialForces forcesInSeveralSoils() const;
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
    SweepPlanes planes_;

    // Of the present row
    int layer_ = 1; ///< the layer at the row
    WallTerms activeTerms_;
    WallTerms passiveTerms_;
    WallDirection activeWall_;
    WallDirection passiveWall_;
};

/// Goes down to a row: layer, wall terms, mean wall friction, planes.
void Sweep::enterRow(int row) {
    const auto& ElevGrid = state_.grid.ElevGrid;
    const double y0 = ElevGrid(row);
    if (layer_ < layerCount_ && y0 < problem_.SoilBottomElev(side_, layer_)) {
        ++layer_;
    }
    const double height = ElevGrid(row - 1) - y0;
    activeTerms_.pass(height, soils_(layer_).active);
    passiveTerms_.pass(height, soils_(layer_).passive);

    const double depth = problem_.SurfaceElev(side_, 1) - y0;
    const double da = divide(activeTerms_.friction, depth);
    const double dp = divide(passiveTerms_.friction, depth);
    activeWall_ = {std::cos(da), std::sin(da)};
    passiveWall_ = {std::cos(dp), std::sin(dp)};
    planes_.enterRow(y0, layer_);
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

TrialForces Sweep::forces() const {
    return planes_.plane().pieceCount == 1 ? forcesInOneSoil() : forcesInSeveralSoils();
}

TrialForces Sweep::forcesInOneSoil() const {
    const Direction& direction = planes_.direction();
    const TrialPlane& plane = planes_.plane();
    const auto& piece = *planes_.pieces();
    const auto forcesWith = [&](const LayerStrength& soil) {
        bool exists = true;
        return TrialForces{
            activeOnWall(direction, soil.active, piece.load, piece.length, 0),
            passiveOnWall(direction, soil.passive, piece.load, piece.length, 0, exists)};
    };
    TrialForces forces = forcesWith(soils_(plane.layer));
    if (plane.alongBoundary) {
        // Along a boundary the weaker of both soils governs; the load is that of the upper one.
        const TrialForces below = forcesWith(soils_(plane.layer + 1));
        forces = {MaxOf(forces.active, below.active), MinOf(forces.passive, below.passive)};
    }
    return forces;
}

/// A plane through several layers, from the ground down to the wall: each outer wedge hands its
/// horizontal force on to the next one, the last one gives the force on the wall.
TrialForces Sweep::forcesInSeveralSoils() const {
    const Direction& direction = planes_.direction();
    const TrialPlane& plane = planes_.plane();
    const PlanePiece* const pieces = planes_.pieces();
    const int step = plane.upward ? 1 : -1;
    double push = 0;       // active force of the outer wedges
    double resistance = 0; // passive force of the outer wedges
    bool passiveExists = true;

    int layer = plane.layer - step * (plane.pieceCount - 1);
    for (int piece = 0; piece < plane.pieceCount - 1; ++piece) {
        const auto [load, length] = pieces[piece];
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
        layer += step;
    }

    const auto [load, length] = pieces[plane.pieceCount - 1];
    const LayerStrength& soil = soils_(plane.layer);
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
    const bool mayStopEarly = state_.preparation.NumSurchargesOnSide(side_) == 0;

    double Pa = NoActiveForce;
    double Pp = 0;
    bool found = false;
    bool rising = false;
    bool gain = false;
    bool passed = false; // both extremes
    while (!passed && planes_.next()) {
        const auto [P, Q] = forces();

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
    planes_.leaveRow();
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
    for (int row = 1; row <= state.TouchedRows; ++row) {
        state.wedge.WedgeActiveForce(row, side) = 0;
        state.wedge.WedgePassiveForce(row, side) = 0;
        state.pressures.ActiveMark(side, row) = false;
        state.pressures.PassiveMark(side, row) = false;
    }
    Sweep(state, side, level).run();
}

} // namespace korvane
