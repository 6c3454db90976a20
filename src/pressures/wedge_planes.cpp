#include "pressures/wedge_planes.h"

#include "pressures/wedge_load.h"
#include "runtime/arithmetic.h"

#include <cmath>
#include <utility>

namespace korvane {

namespace {

constexpr double RightAngle = 3.14159265358979 / 2;
constexpr double FirstAngle = 23 * DegreesToRadians;
constexpr double AngleStep = 0.0349065850398866; ///< 2 degrees
constexpr int MaxAngles = 80;                    ///< more than lead from 23 to 180 degrees

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

template <class T>
T& at(std::vector<T>& values, int number) {
    return values[static_cast<std::size_t>(number)];
}

} // namespace

// Describes the side anew; planes of another side are forgotten. The first trial of an analysis
// keeps the planes of all rows; a row that only a later one has, where a diagram crosses zero, is
// worked out for that trial alone.
SweepPlanes::SweepPlanes(State& state, int side, int level)
    : planes_(state.wedgePlanes(side)), side_(planes_.side) {
    const bool keep = state.problem.ProgramMode == "A";
    if (!keep || !planes_.kept) {
        forgetPlanes();
        describeWedgeSide(state, side, level, planes_.side);
        planes_.kept = recording_ = keep;
        return;
    }
    describeWedgeSide(state, side, level, planes_.fresh);
    if (planes_.fresh != planes_.side) {
        forgetPlanes();
        std::swap(planes_.side, planes_.fresh);
        planes_.kept = recording_ = true;
    }
}

void SweepPlanes::forgetPlanes() {
    planes_.kept = false;
    planes_.rows.clear();
    planes_.planes.clear();
    planes_.pieces.clear();
}

void SweepPlanes::dropSpare() {
    if (hasSpare_) {
        planes_.rows.pop_back();
        planes_.planes.resize(keptPlanes_);
        planes_.pieces.resize(keptPieces_);
        hasSpare_ = false;
    }
}

void SweepPlanes::enterRow(double elev, int layer) {
    dropSpare();
    auto& rows = planes_.rows;
    y0_ = elev;
    layer_ = layer;
    sighted_ = false;
    step_ = 0;
    last_ = false;
    while (nextRow_ < rows.size() && rows[nextRow_].elev > elev) {
        ++nextRow_;
    }
    if (nextRow_ < rows.size() && rows[nextRow_].elev == elev && rows[nextRow_].layer == layer) {
        row_ = nextRow_;
        return;
    }
    hasSpare_ = !recording_;
    keptPlanes_ = planes_.planes.size();
    keptPieces_ = planes_.pieces.size();
    row_ = rows.size();
    rows.emplace_back();
    row().elev = elev;
    row().layer = layer;
    row().top.angle = RightAngle - std::atan(sightGround()) - AngleStep;
}

/// Sights the ground points from the row; returns the slope of the flattest sight.
double SweepPlanes::sightGround() {
    sighted_ = true;
    const auto& ground = side_.ground;
    double flattest = 0;
    for (std::size_t p = 1; p < ground.size(); ++p) {
        const double sight = (ground[p].y - y0_) / ground[p].x;
        sight_(static_cast<int>(p) + 1) = sight;
        flattest = p == 1 ? sight : MinOf(flattest, sight);
    }
    return flattest;
}

bool SweepPlanes::next() {
    if (last_) {
        return false;
    }
    const Direction& step = sweepDirections()(++step_);
    Direction& top = row().top;
    last_ = step.angle > top.angle;
    if (last_ && !row().topKnown) {
        top = directionAt(top.angle);
        row().topKnown = true;
    }
    direction_ = last_ ? top : step;
    const int known = step_ == 1 ? row().firstPlane : plane_.next;
    planeIndex_ = known >= 0 ? known : planNext();
    plane_ = at(planes_.planes, planeIndex_);
    return true;
}

/// Works out the plane of the present direction and hangs it behind the one before.
int SweepPlanes::planNext() {
    if (!sighted_) {
        sightGround();
    }
    const double slope = direction_.cos / direction_.sin;
    TrialPlane plane;
    addPieces(plane, slope, cutGround(slope));
    const int index = static_cast<int>(planes_.planes.size());
    planes_.planes.push_back(plane);
    (step_ == 1 ? row().firstPlane : at(planes_.planes, planeIndex_).next) = index;
    return index;
}

/// The walk along the ground starts where that of the plane before ended: a flatter plane never
/// ends before a steeper one.
SweepPlanes::GroundCut SweepPlanes::cutGround(double slope) {
    const auto& ground = side_.ground;
    int& p = row().groundPoint;
    while (p <= static_cast<int>(ground.size()) && sight_(p) > slope) {
        ++p;
    }
    if (p > static_cast<int>(ground.size())) {
        throwRuntimeError(9); // a plane that never reaches the ground
    }
    const LinePoint& end = ground[static_cast<std::size_t>(p - 1)];
    if (sight_(p) == slope) {
        return {end.x, end.y};
    }
    const double s = ground[static_cast<std::size_t>(p - 2)].slope;
    const double x = divide(end.y - s * end.x - y0_, slope - s);
    return {x, slope * x + y0_};
}

SweepPlanes::BoundaryScan SweepPlanes::scanBoundaries(double groundX) const {
    BoundaryScan scan;
    for (std::size_t b = 1; b < side_.layers.size(); ++b) {
        const double xb = side_.layers[b].topReach; // where the boundary reaches the ground
        const double yb = side_.layers[b - 1].bottomElev;
        if (yb == y0_) {
            scan.kind = groundX == xb ? 2 : groundX < xb ? 1 : 3;
            if (scan.kind != 3) {
                break;
            }
        } else if (yb > y0_) {
            if (groundX == xb) {
                break;
            }
            scan.up += groundX < xb ? 1 : 0;
        } else {
            if (groundX <= xb) {
                break;
            }
            ++scan.down;
        }
    }
    return scan;
}

/// Soil and surcharge on the plane between x1 and x2, in `layer`.
void SweepPlanes::addPiece(double slope, double x1, double x2, int layer) {
    const double load = WedgeWeight(side_, y0_, slope, x1, slope * x1 + y0_, x2, layer) +
                        WedgeSurchargeLoad(side_, x1, x2);
    planes_.pieces.push_back({load, std::abs(x2 - x1) / direction_.sin});
}

/// Cuts the plane at the boundaries that it crosses.
void SweepPlanes::addPieces(TrialPlane& plane, double slope, const GroundCut& ground) {
    const BoundaryScan scan = scanBoundaries(ground.x);
    plane.upward = scan.up > 0;
    plane.layer = !plane.upward && scan.kind == 3 ? layer_ + 1 : layer_;
    plane.alongBoundary = scan.kind == 2 && scan.up + scan.down == 0;
    plane.firstPiece = static_cast<int>(planes_.pieces.size());
    plane.pieceCount = (plane.upward ? scan.up : scan.down) + 1;

    double x2 = ground.x;
    const int step = plane.upward ? 1 : -1;
    for (int layer = plane.layer - step * (plane.pieceCount - 1); layer != plane.layer;
         layer += step) {
        const int boundary = plane.upward ? layer : layer - 1;
        const WedgeLayer& above = layerOf(side_, boundary);
        const double x1 = divide(above.bottomElev - y0_, slope - above.bottomSlope);
        addPiece(slope, x1, x2, layer);
        x2 = x1;
    }
    addPiece(slope, 0, x2, plane.layer);
}

} // namespace korvane
