#include "pressures/wedge_planes.h"

#include "state/kept_work.h"

#include <algorithm>
#include <utility>

namespace korvane {

namespace {

constexpr double RightAngle = 3.14159265358979 / 2;
constexpr double FirstAngle = 23 * DegreesToRadians;
constexpr double AngleStep = 0.0349065850398866; ///< 2 degrees

} // namespace

/// All directions that a sweep can take before its last, by repeated addition of the step.
const SweepPlanes::Directions& SweepPlanes::allDirections() {
    static const Directions directions = [] {
        Directions all;
        double angle = FirstAngle;
        for (Direction& direction : all) {
            direction = {angle, std::sin(angle), std::cos(angle)};
            angle += AngleStep;
        }
        return all;
    }();
    return directions;
}

// Describes the side anew; planes of another side are forgotten. The first trial of an analysis
// keeps the planes of all rows; a row that only a later one has, where a diagram crosses zero, is
// worked out for that trial alone.
SweepPlanes::SweepPlanes(State& state, int side, int level)
    : kept_(state.kept->wedgePlanes(side)), side_(kept_.side), directions_(allDirections()) {
    const bool keep = state.problem->ProgramMode == Mode::Analysis;
    if (!keep || !kept_.kept) {
        forgetPlanes();
        describeWedgeSide(state, side, level, kept_.side);
        kept_.kept = recording_ = keep;
        return;
    }
    describeWedgeSide(state, side, level, kept_.fresh);
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
    kept_.pieces.clear();
}

void SweepPlanes::enterRow(double elev, int layer) {
    auto& rows = kept_.rows;
    y0_ = elev;
    layer_ = layer;
    step_ = 0;
    last_ = false;
    while (nextRow_ < rows.size() && rows[nextRow_].elev > elev) {
        ++nextRow_;
    }
    const bool known =
        nextRow_ < rows.size() && rows[nextRow_].elev == elev && rows[nextRow_].layer == layer;
    if (known) {
        known_ = &rows[nextRow_];
        planeCount_ = known_->planeCount;
        rowPlanes_ = kept_.planes.data() + known_->firstPlane;
        rowPieces_ = kept_.pieces.data() + known_->firstPiece;
        top_ = known_->top;
        topKnown_ = known_->topKnown;
        return;
    }
    known_ = nullptr;
    planeCount_ = pieceCount_ = 0;
    rowPlanes_ = planes_.data();
    rowPieces_ = pieces_.data();
    groundPoint_ = 1;
    top_.angle = RightAngle - std::atan(sightGround()) - AngleStep;
    topKnown_ = false;
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

/// A trial that needs more planes of a known row than those before it goes on from a copy.
void SweepPlanes::continueKnownRow() {
    pieceCount_ = known_->pieceCount;
    std::copy_n(rowPlanes_, planeCount_, planes_.begin());
    std::copy_n(rowPieces_, pieceCount_, pieces_.begin());
    rowPlanes_ = planes_.data();
    rowPieces_ = pieces_.data();
    groundPoint_ = 1;
    sightGround();
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
    }
    known_->top = top_;
    known_->topKnown = topKnown_;
    known_->firstPlane = kept_.planes.size();
    known_->planeCount = planeCount_;
    known_->firstPiece = kept_.pieces.size();
    known_->pieceCount = pieceCount_;
    const auto copy = [](const auto& from, std::size_t count, auto& to) {
        to.insert(to.end(), from.begin(), from.begin() + static_cast<std::ptrdiff_t>(count));
    };
    copy(planes_, planeCount_, kept_.planes);
    copy(pieces_, pieceCount_, kept_.pieces);
}

} // namespace korvane
