#include "pressures/wedge_planes.h"

#include "pressures/wedge_description.h"
#include "pressures/wedge_load.h"
#include "pressures/wedge_pieces.h"
#include "runtime/arithmetic.h"
#include "state/kept_work.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace korvane {

namespace {

constexpr double RightAngle = 3.14159265358979 / 2;
constexpr double FirstAngle = 23 * DegreesToRadians;
constexpr double AngleStep = 0.0349065850398866; ///< 2 degrees

/// The directions that a sweep takes before its last, measured from the vertical.
struct Directions {
    PlaneColumn angle; ///< radians, by repeated addition of the step
    PlaneColumn sin;
    PlaneColumn cos;
    PlaneColumn slope; ///< FT/FT

    Directions() {
        double next = FirstAngle;
        for (std::size_t n = 0; n < MaxSweepPlanes; ++n) {
            angle[n] = next;
            sin[n] = std::sin(next);
            cos[n] = std::cos(next);
            slope[n] = cos[n] / sin[n];
            next += AngleStep;
        }
    }
};

const Directions& sweepDirections() {
    static const Directions directions;
    return directions;
}

/// Gives a description the room of another: of an analysis the two change places.
void reserveAs(const WedgeSide& other, WedgeSide& side) {
    side.ground.reserve(other.ground.capacity());
    side.points.reserve(other.points.capacity());
    side.layers.reserve(other.layers.capacity());
    side.lineLoads.reserve(other.lineLoads.capacity());
    side.loads.reserve(other.loads.capacity());
}

/// True where the places from begin to end at which planes meet one straight line are finite and
/// none is nearer than the one before it. A quotient rounds to no less than a lesser one does, and
/// all directions but the last grow flatter by two degrees: the ends tell of all between.
bool ascends(const PlaneColumn& x, std::size_t begin, std::size_t end) {
    const std::size_t beforeLast = end - begin > 1 ? end - 2 : begin;
    return begin == end || (0 < x[begin] && x[begin] <= x[beforeLast] &&
                            x[beforeLast] <= x[end - 1] && std::isfinite(x[end - 1]));
}

} // namespace

// Describes the side anew; planes of another side are forgotten. The first trial of an analysis
// keeps the planes of all rows; a row that only a later one has, where a diagram crosses zero, is
// worked out for that trial alone.
SweepPlanes::SweepPlanes(State& state, int side, int level)
    : kept_(state.kept->wedgePlanes(side)), side_(kept_.side) {
    const Directions& directions = sweepDirections();
    angle_ = directions.angle;
    sin_ = directions.sin;
    cos_ = directions.cos;
    slope_ = directions.slope;

    const bool keep = state.problem->ProgramMode == Mode::Analysis;
    if (!keep || !kept_.kept) {
        forgetPlanes();
        describeWedgeSide(state, side, level, kept_.side);
        kept_.kept = recording_ = keep;
        reserveAs(kept_.side, kept_.fresh);
        return;
    }
    describeWedgeSide(state, side, level, kept_.fresh);
    reserveAs(kept_.fresh, kept_.side);
    if (kept_.fresh != kept_.side) {
        forgetPlanes();
        std::swap(kept_.side, kept_.fresh);
        kept_.kept = recording_ = true;
    }
}

void SweepPlanes::forgetPlanes() {
    kept_.kept = false;
    kept_.rows.clear();
    kept_.planes.clear();
    kept_.columns.clear();
}

void SweepPlanes::enterRow(double elev, int layer) {
    auto& rows = kept_.rows;
    y0_ = elev;
    layer_ = layer;
    end_ = 0;
    while (nextRow_ < rows.size() && rows[nextRow_].elev > elev) {
        ++nextRow_;
    }
    const bool known =
        nextRow_ < rows.size() && rows[nextRow_].elev == elev && rows[nextRow_].layer == layer;
    if (known) {
        known_ = &rows[nextRow_];
        planeCount_ = stride_ = known_->planeCount;
        rowPlanes_ = kept_.planes.data() + known_->firstPlane;
        rowColumns_ = kept_.columns.data() + known_->firstColumn;
        topAngle_ = known_->topAngle;
    } else {
        known_ = nullptr;
        planeCount_ = 0;
        stride_ = MaxSweepPlanes;
        rowPlanes_ = planes_.data();
        rowColumns_ = columns_.data();
        groundPoint_ = 1;
        topAngle_ = RightAngle - std::atan(sightGround()) - AngleStep;
    }
    countPlanes();
}

/// Counts the planes of the row: the first direction beyond the top of the range gives way to the
/// top itself.
void SweepPlanes::countPlanes() {
    const auto beyond = std::upper_bound(angle_.begin(), angle_.end(), topAngle_);
    if (beyond == angle_.end()) {
        throwRuntimeError(9);
    }
    allPlanes_ = static_cast<std::size_t>(beyond - angle_.begin()) + 1;
    const Directions& directions = sweepDirections();
    const std::size_t old = topPlane_;
    sin_[old] = directions.sin[old];
    cos_[old] = directions.cos[old];
    slope_[old] = directions.slope[old];
}

void SweepPlanes::setTopDirection() {
    topPlane_ = allPlanes_ - 1;
    sin_[topPlane_] = std::sin(topAngle_);
    cos_[topPlane_] = std::cos(topAngle_);
    slope_[topPlane_] = cos_[topPlane_] / sin_[topPlane_];
}

/// Sights the ground points from the row; returns the slope of the flattest sight.
double SweepPlanes::sightGround() {
    const auto& ground = side_.ground;
    double flattest = 0;
    for (std::size_t p = 1; p < ground.size(); ++p) {
        sight_[p] = (ground[p].y - y0_) / ground[p].x;
        flattest = p == 1 ? sight_[p] : MinOf(flattest, sight_[p]);
    }
    return flattest;
}

bool SweepPlanes::next(std::size_t most) {
    if (end_ == allPlanes_) {
        return false;
    }
    const std::size_t wanted = std::min(end_ + most, allPlanes_);
    if (wanted == allPlanes_) {
        setTopDirection();
    }
    if (end_ == planeCount_) {
        planUpTo(wanted);
    }
    end_ = std::min(wanted, planeCount_);
    return true;
}

/// A trial that needs more planes of a known row than those before it goes on from a copy.
void SweepPlanes::continueKnownRow() {
    int columns = 0;
    for (std::size_t n = 0; n < planeCount_; ++n) {
        planes_[n] = rowPlanes_[n];
        columns = std::max(columns, 2 * rowPlanes_[n].pieceCount);
    }
    for (int number = 0; number < columns; ++number) {
        std::copy_n(column(number), planeCount_,
                    columns_.data() + static_cast<std::size_t>(number) * MaxSweepPlanes);
    }
    rowPlanes_ = planes_.data();
    rowColumns_ = columns_.data();
    stride_ = MaxSweepPlanes;
    groundPoint_ = 1;
    sightGround();
}

/// Works out planes of the row up to `end`, or up to one with a fault, which is thrown when that
/// plane is the next to be taken: a row that is done before has none.
void SweepPlanes::planUpTo(std::size_t end) {
    if (rowPlanes_ != planes_.data()) {
        continueKnownRow();
    }
    end = cutGround(planeCount_, end);
    while (planeCount_ < end) {
        const std::size_t begin = planeCount_;
        const std::size_t runEnd = nameLayers(begin, end);
        planeCount_ = runEnd > begin ? cutRun(begin, runEnd) : begin;
        if (planeCount_ == begin || planeCount_ < runEnd) {
            groundPoint_ = 1; // the walk has gone on
            return;
        }
    }
}

/// The layers that a plane passes through; false where there is none of that number.
bool SweepPlanes::planThrough(double groundX, TrialPlane& plane) const {
    int kind = 4; // 4 no boundary starts at the row; 1 the plane stays above the one that does, 2
                  // runs along it, 3 stays below it
    int up = 0;   // boundaries that the plane crosses upward
    int down = 0; // boundaries that the plane crosses downward
    const int layers = static_cast<int>(side_.layers.size());
    for (std::size_t b = 1; b < side_.layers.size(); ++b) {
        const double xb = side_.layers[b].topReach; // where the boundary reaches the ground
        const double yb = side_.layers[b - 1].bottomElev;
        if (yb == y0_) {
            kind = groundX == xb ? 2 : groundX < xb ? 1 : 3;
            if (kind != 3) {
                break;
            }
        } else if (yb > y0_) {
            if (groundX == xb) {
                break;
            }
            up += groundX < xb ? 1 : 0;
        } else {
            if (groundX <= xb) {
                break;
            }
            ++down;
        }
    }
    const int layer = up == 0 && kind == 3 ? layer_ + 1 : layer_;
    const int outermost = up > 0 ? layer - up : layer + down;
    plane.upward = up > 0 ? 1 : 0;
    plane.layer = static_cast<std::uint8_t>(layer);
    plane.alongBoundary = kind == 2 && up + down == 0 ? 1 : 0;
    plane.pieceCount = static_cast<std::uint8_t>((up > 0 ? up : down) + 1);
    return outermost >= 1 && outermost <= layers && std::isfinite(groundX);
}

/// The boundaries that reach the ground next to a place: up to them all planes pass through the
/// same layers. None around one that ends there itself.
Reach SweepPlanes::reachAround(double groundX) const {
    Reach reach{-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    for (std::size_t b = 1; b < side_.layers.size(); ++b) {
        const double xb = side_.layers[b].topReach;
        reach.from = xb <= groundX ? MaxOf(reach.from, xb) : reach.from;
        reach.to = xb >= groundX ? MinOf(reach.to, xb) : reach.to;
    }
    return reach;
}

/// Where planes reach the ground. The walk along the ground starts where that of the planes before
/// ended: a flatter plane never ends before a steeper one. Returns the end of those without a
/// fault; the first one's is thrown.
std::size_t SweepPlanes::cutGround(std::size_t begin, std::size_t end) {
    const auto& ground = side_.ground;
    std::size_t& p = groundPoint_;
    groundAscends_ = true;
    for (std::size_t n = begin; n < end;) {
        while (p < ground.size() && sight_[p] > slope_[n]) {
            ++p;
        }
        if (p == ground.size()) {
            if (n == begin) {
                throwRuntimeError(9); // a plane that never reaches the ground
            }
            end = n;
            break;
        }
        const double sight = sight_[p];
        std::size_t segmentEnd = n + 1;
        while (segmentEnd < end && !(sight > slope_[segmentEnd])) {
            ++segmentEnd;
        }
        const LinePoint point = ground[p];
        const double s = ground[p - 1].slope;
        const double height = point.y - s * point.x - y0_;
        if (n == begin && sight != slope_[n]) {
            divide(height, slope_[n] - s);
        }
        const std::size_t first = n;
        for (; n < segmentEnd; ++n) {
            const double x = height / (slope_[n] - s);
            groundX_[n] = sight == slope_[n] ? point.x : x;
        }
        groundAscends_ = groundAscends_ && ascends(groundX_, first, n) &&
                         (first == begin || groundX_[first - 1] <= groundX_[first]);
    }
    return end;
}

/// The layers that planes pass through, from `begin` on: returns the end of those that pass through
/// the same as the first, `begin` itself where that one has a fault that is not its turn yet.
std::size_t SweepPlanes::nameLayers(std::size_t begin, std::size_t end) {
    TrialPlane plane;
    const bool sound = planThrough(groundX_[begin], plane);
    if (!sound && begin != end_) {
        return begin;
    }
    std::size_t runEnd = begin + 1;
    const Reach alike = sound ? reachAround(groundX_[begin]) : Reach{};
    if (groundAscends_) {
        const auto ahead = std::lower_bound(&groundX_[runEnd], &groundX_[0] + end, alike.to);
        runEnd = static_cast<std::size_t>(ahead - &groundX_[0]);
    } else {
        while (runEnd < end && alike.from < groundX_[runEnd] && groundX_[runEnd] < alike.to) {
            ++runEnd;
        }
    }
    std::fill(&planes_[begin], &planes_[0] + runEnd, plane);
    return runEnd;
}

/// Cuts a run of planes through the same layers at the boundaries; returns the end of those that
/// can be cut.
std::size_t SweepPlanes::cutRun(std::size_t begin, std::size_t end) {
    const TrialPlane plane = planes_[begin];
    const double* x2 = groundX_.data();
    bool ascending = groundAscends_;
    for (int piece = plane.pieceCount - 1; piece > 0; --piece) {
        const int layer = plane.layerOfPiece(piece);
        const WedgeLayer& above = layerOf(side_, plane.upward != 0 ? layer : layer - 1);
        const double height = above.bottomElev - y0_;
        Column& cuts = cuts_[static_cast<std::size_t>(piece % 2)];
        double* const x1 = cuts.data();
        for (std::size_t n = begin; n < end; ++n) {
            x1[n] = height / (slope_[n] - above.bottomSlope);
        }
        if (begin == end_) {
            x1[begin] = divide(height, slope_[begin] - above.bottomSlope);
        }
        if (!ascends(cuts, begin, end)) {
            ascending = false;
            end = static_cast<std::size_t>(
                std::find_if(x1 + begin, x1 + end, [](double x) { return !std::isfinite(x); }) -
                x1);
        }
        addColumn(piece, {begin, end, x1, x2, ascending});
        x2 = x1;
    }
    addColumn(0, {begin, end, atWall_.data(), x2, ascending});
    return end;
}

/// Loads and lengths of a piece of the planes of a run, between x1 and x2.
void SweepPlanes::addColumn(int piece, const PieceEnds& ends) {
    const auto& [begin, end, x1, x2, ascending] = ends;
    double* const loads = columns_.data() + static_cast<std::size_t>(2 * piece) * MaxSweepPlanes;
    double* const lengths = loads + MaxSweepPlanes;
    weighPieces(side_,
                {.y0 = y0_,
                 .count = end - begin,
                 .slope = &slope_[begin],
                 .x1 = x1 + begin,
                 .x2 = x2 + begin,
                 .atWall = piece == 0,
                 .ascending = ascending},
                planes_[begin].layerOfPiece(piece), loads + begin);
    for (std::size_t n = begin; n < end; ++n) {
        lengths[n] = std::abs(x2[n] - x1[n]) / sin_[n];
    }
}

void SweepPlanes::leaveRow() {
    const bool grown = rowPlanes_ == planes_.data();
    if (!grown || (known_ == nullptr && !recording_)) {
        return;
    }
    if (known_ == nullptr) {
        known_ = &kept_.rows.emplace_back();
        known_->elev = y0_;
        known_->layer = layer_;
        known_->topAngle = topAngle_;
    }
    known_->firstPlane = kept_.planes.size();
    known_->planeCount = planeCount_;
    known_->firstColumn = kept_.columns.size();
    const auto count = static_cast<std::ptrdiff_t>(planeCount_);
    kept_.planes.insert(kept_.planes.end(), planes_.begin(), planes_.begin() + count);
    int columns = 0;
    for (std::size_t n = 0; n < planeCount_; ++n) {
        columns = std::max(columns, 2 * planes_[n].pieceCount);
    }
    for (int number = 0; number < columns; ++number) {
        kept_.columns.insert(kept_.columns.end(), column(number), column(number) + count);
    }
}

/// Where a plane reaches the ground, as cutGround has found it without a fault: a kept row does not
/// know it any more.
double SweepPlanes::groundOf(double slope) const {
    const auto& ground = side_.ground;
    const auto sight = [&](std::size_t p) { return (ground[p].y - y0_) / ground[p].x; };
    std::size_t p = 1;
    while (p + 1 < ground.size() && sight(p) > slope) {
        ++p;
    }
    const double s = ground[p - 1].slope;
    return sight(p) == slope ? ground[p].x : (ground[p].y - s * ground[p].x - y0_) / (slope - s);
}

std::vector<WedgePiece> SweepPlanes::describePieces(std::size_t n) const {
    const TrialPlane& trial = rowPlanes_[n];
    const double slope = slope_[n];
    const double angle = n + 1 == allPlanes_ ? topAngle_ : angle_[n];
    double x2 = groundOf(slope);
    std::vector<WedgePiece> described;
    for (int number = trial.pieceCount - 1; number >= 0; --number) {
        const int layer = trial.layerOfPiece(number);
        double x1 = 0;
        if (number > 0) {
            const WedgeLayer& above = layerOf(side_, trial.upward != 0 ? layer : layer - 1);
            x1 = (above.bottomElev - y0_) / (slope - above.bottomSlope);
        }
        WedgePiece& piece = described.emplace_back();
        piece.layer = layer;
        piece.angle = angle / DegreesToRadians;
        piece.x1 = x1;
        piece.y1 = slope * x1 + y0_;
        piece.x2 = x2;
        piece.y2 = slope * x2 + y0_;
        piece.length = lengths(number)[n];
        piece.soil = WedgeWeight(side_, y0_, slope, x1, piece.y1, x2, layer);
        piece.surcharge = WedgeSurchargeLoad(side_, x1, x2);
        x2 = x1;
    }
    return described;
}

} // namespace korvane
