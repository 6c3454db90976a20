// The sweep search: planes over a range of angles.
#include "pressures/elevation_grid.h"
#include "pressures/wedge_forces.h"
#include "pressures/wedge_planes.h"
#include "pressures/wedge_strengths.h"
#include "runtime/arithmetic.h"
#include "state/pressure_details.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace korvane {

namespace {

constexpr double NoActiveForce = -100000.0; ///< lower than any force that counts
constexpr double LeastPassiveForce = 0.0001;

/// Without loads on the ground most rows are done behind some twenty planes.
constexpr std::size_t PlanesAtOnce = 24;

/// Cosine and sine of the mean wall friction.
struct WallDirection {
    double cos = 1;
    double sin = 0;
};

/// The forces of one row as far as its planes were taken, LB before the wall friction's cosine.
struct RowExtremes {
    double active = NoActiveForce; ///< the largest so far
    double passive = 0;            ///< the smallest so far
    bool found = false;            ///< a passive force that counts
    bool gain = false;             ///< the last plane's active force was the largest
    bool rising = false;           ///< the last plane's passive force was not the smallest
    bool passed = false;           ///< both extremes
    std::size_t taken = 0;         ///< planes so far
};

/// The sweep of one side at one level; holds what stays the same from plane to plane.
class Sweep {
  public:
    Sweep(State& state, int side, int level)
        : state_(state), problem_(*state.problem), side_(side), level_(level),
          layerCount_(state.problem->SoilLayerCount(side)),
          noForcePastHorizontal_(state.amendments.planesPastHorizontal),
          soils_(developedStrengths(state, side, level)), planes_(state, side, level),
          details_(state.details == nullptr ? nullptr : &state.details->sides(side).wedge) {}

    void run();

  private:
    using Column = PlaneColumn;

    RowExtremes sweepRow(int row);
    void enterRow(int row);
    void findForces(std::size_t begin, std::size_t end);
    void handOn(int piece, std::size_t begin, std::size_t end);
    void checkHandedOn(std::size_t n) const;
    void takeAbreast(RowExtremes& extremes) const;
    void takeForces(bool mayStopEarly, RowExtremes& extremes) const;
    void dropPastHorizontal(const DevelopedStrength& soil, std::size_t begin, std::size_t end,
                            Column& active) const;
    void dropOuterPastHorizontal(const TrialPlane& plane, std::size_t begin, std::size_t end);
    void pushOnWall(const LayerStrength& soil, std::size_t begin, std::size_t end, Column& active,
                    Column& passive) const;
    [[gnu::cold]] void recordRow(int row, const RowExtremes& extremes);
    [[gnu::cold]] WedgePlane recordPlane(std::optional<std::size_t> extreme, bool active,
                                         double depth);
    [[gnu::cold]] bool lowerSoilGoverns(std::size_t n, bool active) const;

    State& state_;
    const Problem& problem_;
    int side_;
    int level_;
    int layerCount_;
    bool noForcePastHorizontal_; ///< an amendment
    Array<LayerStrength, 11> soils_;
    SweepPlanes planes_;
    WedgeDetails* details_; ///< null where the planes are not asked for

    // Of the present row
    int layer_ = 1; ///< the layer at the row
    WallTerms activeTerms_;
    WallTerms passiveTerms_;
    WallDirection activeWall_;
    WallDirection passiveWall_;

    // Of the planes of the row, LB
    Column push_;          ///< active force of the outer wedges
    Column resistance_;    ///< passive force of the outer wedges
    Column passiveExists_; ///< 1, or 0 where an outer wedge resists nothing
    Column active_;        ///< on the wall, before the wall friction's cosine
    Column passive_;       ///< likewise
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

/// Adds the horizontal forces of an outer wedge, which it hands on to the next one.
void Sweep::handOn(int piece, std::size_t begin, std::size_t end) {
    const LayerStrength& soil = soils_(planes_.plane(begin).layerOfPiece(piece));
    const DevelopedStrength active = soil.active;
    const DevelopedStrength passive = soil.passive;
    const double* const loads = planes_.loads(piece);
    const double* const lengths = planes_.lengths(piece);
    const double* const sin = planes_.sin();
    const double* const cos = planes_.cos();
    for (std::size_t n = begin; n < end; ++n) {
        const double C = lengths[n] * active.cohesion;
        push_[n] += (loads[n] - cos[n] * C) * (cos[n] - sin[n] * active.friction) /
                        (cos[n] * active.friction + sin[n]) -
                    sin[n] * C;
    }
    for (std::size_t n = begin; n < end; ++n) {
        const double C = lengths[n] * passive.cohesion;
        const double A = sin[n] - cos[n] * passive.friction;
        const double B = -(sin[n] * passive.friction + cos[n]);
        const double quotient = -(cos[n] * C + loads[n]) * B / A + sin[n] * C;
        const double resisting = A == 0 ? 0 : quotient;
        passiveExists_[n] = resisting > 0 ? passiveExists_[n] : 0;
        resistance_[n] += resisting;
    }
}

/// The fault of an outer wedge's active force, if there is one.
void Sweep::checkHandedOn(std::size_t n) const {
    const TrialPlane& plane = planes_.plane(n);
    const double sin = planes_.sin()[n];
    const double cos = planes_.cos()[n];
    for (int piece = plane.pieceCount - 1; piece > 0; --piece) {
        const DevelopedStrength& soil = soils_(plane.layerOfPiece(piece)).active;
        const double C = planes_.lengths(piece)[n] * soil.cohesion;
        divide((planes_.loads(piece)[n] - cos * C) * (cos - sin * soil.friction),
               cos * soil.friction + sin);
    }
}

/// Takes the force off planes whose angle, friction and wall friction reach 180 degrees.
void Sweep::dropPastHorizontal(const DevelopedStrength& soil, std::size_t begin, std::size_t end,
                               Column& active) const {
    const double t = soil.friction;
    for (std::size_t n = begin; n < end; ++n) {
        const double sin = planes_.sin()[n];
        const double cos = planes_.cos()[n];
        if ((sin * t - cos) * activeWall_.sin - activeWall_.cos * (cos * t + sin) >= 0) {
            active[n] = NoActiveForce;
        }
    }
}

/// The same for planes with an outer piece whose angle and friction do.
void Sweep::dropOuterPastHorizontal(const TrialPlane& plane, std::size_t begin, std::size_t end) {
    for (int piece = plane.pieceCount - 1; piece > 0; --piece) {
        const double t = soils_(plane.layerOfPiece(piece)).active.friction;
        for (std::size_t n = begin; n < end; ++n) {
            if (planes_.cos()[n] * t + planes_.sin()[n] <= 0) {
                active_[n] = NoActiveForce;
                push_[n] = 0; // what it handed on counts no more
            }
        }
    }
}

/// Forces of the wedges at the wall, with what the outer wedges put on them.
void Sweep::pushOnWall(const LayerStrength& soil, std::size_t begin, std::size_t end,
                       Column& active, Column& passive) const {
    const double* const loads = planes_.loads(0);
    const double* const lengths = planes_.lengths(0);
    const double* const sin = planes_.sin();
    const double* const cos = planes_.cos();
    for (std::size_t n = begin; n < end; ++n) {
        const double t = soil.active.friction;
        const double C = lengths[n] * soil.active.cohesion;
        const double A = cos[n] * t + sin[n];
        const double B = sin[n] * t - cos[n];
        const double D = B * activeWall_.sin - activeWall_.cos * A;
        const double force =
            ((loads[n] - cos[n] * C - activeTerms_.adhesion) * B - (push_[n] - C * sin[n]) * A) / D;
        active[n] = D == 0 ? NoActiveForce : force;
    }
    if (noForcePastHorizontal_) {
        dropPastHorizontal(soil.active, begin, end, active);
    }
    for (std::size_t n = begin; n < end; ++n) {
        const double t = soil.passive.friction;
        const double C = lengths[n] * soil.passive.cohesion;
        const double A = sin[n] - cos[n] * t;
        const double B = -(sin[n] * t + cos[n]);
        const double D = -passiveWall_.sin * B - A * passiveWall_.cos;
        const double force = ((cos[n] * C + loads[n] + passiveTerms_.adhesion) * B -
                              (sin[n] * C + resistance_[n]) * A) /
                             D;
        passive[n] = D == 0 ? 0 : force;
    }
}

/// Forces of a run of planes through the same layers, from the ground down to the wall: each outer
/// wedge hands its horizontal force on to the next one, the last one gives the force on the wall.
void Sweep::findForces(std::size_t begin, std::size_t end) {
    const TrialPlane& plane = planes_.plane(begin);
    for (std::size_t n = begin; n < end; ++n) {
        push_[n] = resistance_[n] = 0;
    }
    if (plane.pieceCount > 1) {
        std::fill(&passiveExists_[begin], &passiveExists_[end], 1.0);
    }
    for (int piece = plane.pieceCount - 1; piece > 0; --piece) {
        handOn(piece, begin, end);
    }
    pushOnWall(soils_(plane.layer), begin, end, active_, passive_);
    if (plane.pieceCount > 1) {
        for (std::size_t n = begin; n < end; ++n) {
            active_[n] = active_[n] < 0 ? NoActiveForce : active_[n];
            const double passive = passive_[n] > resistance_[n] ? passive_[n] : 0;
            passive_[n] = passiveExists_[n] != 0 ? passive : 0;
        }
        if (noForcePastHorizontal_) {
            dropOuterPastHorizontal(plane, begin, end);
        }
    } else if (plane.alongBoundary != 0) {
        // Along a boundary the weaker of both soils governs; the load is that of the upper one.
        Column active;
        Column passive;
        pushOnWall(soils_(plane.layer + 1), begin, end, active, passive);
        for (std::size_t n = begin; n < end; ++n) {
            active_[n] = MaxOf(active_[n], active[n]);
            passive_[n] = MinOf(passive_[n], passive[n]);
        }
    }
}

/// Takes the forces of the planes that are worked out, until the row is done.
void Sweep::takeForces(bool mayStopEarly, RowExtremes& extremes) const {
    RowExtremes row = extremes;
    for (; row.taken < planes_.end() && !row.passed; ++row.taken) {
        if (!std::isfinite(push_[row.taken])) {
            checkHandedOn(row.taken);
        }
        const double P = active_[row.taken];
        const double Q = passive_[row.taken];
        row.gain = P > row.active;
        row.active = MaxOf(row.active, P);
        if (Q >= LeastPassiveForce) {
            row.rising = row.found && Q > row.passive;
            row.passive = row.rising ? row.passive : Q;
            row.found = true;
        }
        // A load on the ground can put the extreme beyond a first turning point.
        row.passed = !row.gain && row.rising && mayStopEarly;
    }
    extremes = row;
}

/// Takes the forces of all planes of a row but the last, several abreast: the largest and the
/// smallest do not hang on the order. Takes none where one of them is out of the ordinary or the
/// last passive force does not count: then the order does matter.
void Sweep::takeAbreast(RowExtremes& extremes) const {
    constexpr std::size_t Lanes = 4;
    constexpr double none = std::numeric_limits<double>::infinity();
    const std::size_t last = planes_.end() - 1;
    std::array<double, Lanes> most;
    std::array<double, Lanes> least;
    std::array<double, Lanes> zeros{}; // not a number behind a push that is infinite or none
    most.fill(extremes.active);
    least.fill(none);
    const auto take = [&](std::size_t n, std::size_t lane) {
        most[lane] = MaxOf(most[lane], active_[n]);
        // NOLINTNEXTLINE(bugprone-narrowing-conversions): infinity is a double
        least[lane] = MinOf(least[lane], passive_[n] >= LeastPassiveForce ? passive_[n] : none);
        zeros[lane] += push_[n] * 0;
    };
    std::size_t n = 0;
    for (; n + Lanes <= last; n += Lanes) {
        for (std::size_t lane = 0; lane < Lanes; ++lane) {
            take(n + lane, lane);
        }
    }
    for (; n < last; ++n) {
        take(n, 0);
    }
    for (std::size_t lane = 1; lane < Lanes; ++lane) {
        most[0] = MaxOf(most[0], most[lane]);
        least[0] = MinOf(least[0], least[lane]);
        zeros[0] += zeros[lane];
    }
    if (zeros[0] != 0 || !(least[0] < none) || !(passive_[last] >= LeastPassiveForce)) {
        return;
    }
    extremes.active = most[0];
    extremes.passive = least[0];
    extremes.found = true;
    extremes.taken = last;
}

/// Tries the planes of one row and keeps the largest active and the smallest passive force.
RowExtremes Sweep::sweepRow(int row) {
    const bool mayStopEarly = state_.preparation.NumSurchargesOnSide(side_) == 0;
    RowExtremes extremes;
    while (!extremes.passed && planes_.next(mayStopEarly ? PlanesAtOnce : MaxSweepPlanes)) {
        for (std::size_t begin = extremes.taken; begin < planes_.end();) {
            const std::size_t end = planes_.runEnd(begin);
            findForces(begin, end);
            begin = end;
        }
        if (!mayStopEarly && extremes.taken == 0) {
            takeAbreast(extremes);
        }
        takeForces(mayStopEarly, extremes);
    }
    planes_.leaveRow();
    state_.wedge.WedgeActiveForce(row, side_) = finite(extremes.active * activeWall_.cos);
    state_.wedge.WedgePassiveForce(row, side_) = finite(extremes.passive * passiveWall_.cos);

    if (extremes.passed || row == state_.grid.NumElevs) {
        return extremes;
    }
    if (extremes.gain) {
        state_.pressures.ActiveMark(side_, row) = true;
        state_.wedge.WedgeNoSolution(level_, side_) = 1;
    }
    if (!extremes.rising) {
        state_.pressures.PassiveMark(side_, row) = true;
        state_.wedge.WedgeNoSolution(level_, side_) = 1;
    }
    return extremes;
}

/// True where a plane along a boundary takes the soil below it.
bool Sweep::lowerSoilGoverns(std::size_t n, bool active) const {
    const TrialPlane& plane = planes_.plane(n);
    if (plane.alongBoundary == 0) {
        return false;
    }
    Column activeAbove;
    Column passiveAbove;
    pushOnWall(soils_(plane.layer), n, n + 1, activeAbove, passiveAbove);
    return active ? active_[n] > activeAbove[n] : passive_[n] < passiveAbove[n];
}

/// Describes the plane of an extreme, if there is one, and the forces of its pieces.
WedgePlane Sweep::recordPlane(std::optional<std::size_t> extreme, bool active, double depth) {
    const WallTerms& wall = active ? activeTerms_ : passiveTerms_;
    WedgePlane plane;
    plane.wallFriction = divide(wall.friction, depth) / DegreesToRadians;
    plane.wallAdhesion = wall.adhesion;
    plane.firstPiece = static_cast<int>(details_->pieces.size());
    if (!extreme) {
        return plane;
    }
    const std::size_t n = *extreme;
    const double force = active ? active_[n] * activeWall_.cos : passive_[n] * passiveWall_.cos;
    std::vector<WedgePiece> pieces = planes_.describePieces(n);
    pieces.back().layer += lowerSoilGoverns(n, active) ? 1 : 0;
    plane.found = true;
    plane.angle = pieces.back().angle;
    plane.force = force;
    plane.pieceCount = static_cast<int>(pieces.size());
    for (int number = plane.pieceCount - 1; WedgePiece & piece : pieces) {
        const LayerStrength& soil = soils_(piece.layer);
        const DevelopedStrength& strength = active ? soil.active : soil.passive;
        piece.cohesion = piece.length * strength.cohesion;
        piece.friction = strength.friction;
        piece.force = force;
        if (number > 0) {
            push_[n] = resistance_[n] = 0;
            handOn(number, n, n + 1);
            piece.force = active ? push_[n] : resistance_[n];
            plane.outerForce += piece.force;
        }
        --number;
    }
    details_->pieces.insert(details_->pieces.end(), pieces.begin(), pieces.end());
    return plane;
}

/// Describes the planes of the row's extremes. Of planes with the same force the search keeps the
/// first one active and the last one passive.
void Sweep::recordRow(int row, const RowExtremes& extremes) {
    std::optional<std::size_t> active;
    std::optional<std::size_t> passive;
    for (std::size_t n = 0; n < extremes.taken; ++n) {
        if (!active && active_[n] > NoActiveForce && active_[n] == extremes.active) {
            active = n;
        }
        if (extremes.found && passive_[n] == extremes.passive) {
            passive = n;
        }
    }
    const double elev = state_.grid.ElevGrid(row);
    const double depth = problem_.SurfaceElev(side_, 1) - elev;
    details_->rows.push_back({.elev = elev,
                              .layer = layer_,
                              .active = recordPlane(active, true, depth),
                              .passive = recordPlane(passive, false, depth),
                              .activeMarked = state_.pressures.ActiveMark(side_, row),
                              .passiveMarked = state_.pressures.PassiveMark(side_, row)});
}

void Sweep::run() {
    const int surfaceRow = lastRowAt(state_.grid, problem_.SurfaceElev(side_, 1));
    for (int row = surfaceRow + 1; row <= state_.grid.NumElevs; ++row) {
        enterRow(row);
        const RowExtremes extremes = sweepRow(row);
        if (details_ != nullptr) {
            recordRow(row, extremes);
        }
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
