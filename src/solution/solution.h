// The road of a solution: a problem in, results out, without files and without boxes.
//
// Three steps, each of which gives its value or a failure. Whoever stops nowhere calls `solve`.
//
//     Workspace workspace;
//     if (auto review = reviewWall(problem, options, workspace)) {   // a design: pressures
//         if (auto results = solveWall(workspace)) {                 // the wall
//             auto reduction = reduceWallMoments(workspace, sections); // Rowe, anchored designs
//
// A later failure leaves the earlier values as they are. Values stand in the workspace until its
// next solution; a step that is repeated gives what it gave before, and one without the step before
// it fails with run-time error 5. Any number of threads may solve at once, each in a workspace of
// its own; they may share problems.
#pragma once

#include "state/results.h"
#include "wall/factor_search.h"

#include <memory>
#include <optional>

namespace korvane {

enum class WedgeMethod { Sweep, FixedSurface };

/// What is asked of a person, and what is to be kept beyond the results.
struct Options {
    /// For all sides that need a wedge; without it such a wall ends with WedgeMethodMissing.
    std::optional<WedgeMethod> wedge;
    FactorLimit factorLimit; ///< of an analysis
    /// Review and levels tell how their pressures came about; without it nothing is recorded.
    bool keepDetails = false;
    Amendments amendments = {}; ///< for a second opinion
};

/// A value that a step has reached, or why it has not.
template <class Value>
class Reached {
  public:
    Reached(const Value& value) : value_(&value) {}
    Reached(const Failure& failure) : failure_(failure) {}

    explicit operator bool() const { return value_ != nullptr; }
    /// Only where the step has reached it.
    const Value& operator*() const { return *value_; }
    const Value* operator->() const { return value_; }
    const Failure& failure() const { return failure_; }

  private:
    const Value* value_ = nullptr;
    Failure failure_;
};

/// All that a solution works on and hands over; to be used again and again. The first solution
/// takes its memory; later ones of walls no larger take none, unless details are kept.
class Workspace {
  public:
    Workspace();
    ~Workspace();
    Workspace(Workspace&&) noexcept;
    Workspace& operator=(Workspace&&) noexcept;

    /// The working values as they stand.
    const State& state() const;
    const Review& review() const;
    const Results& results() const;
    const MomentReduction& reduction() const;

    struct Contents;
    Contents& contents() { return *contents_; }

  private:
    std::unique_ptr<Contents> contents_;
};

/// The preparation alone: what refuses a problem before any pressure of its soil is worked out;
/// code None where nothing does. The review does it too.
Failure prepareWall(const Problem& problem, const Options& options, Workspace& workspace);

/// Preparation and, in a design, the first pressures of both sides. The problem must stay as it is
/// until the last step.
Reached<Review> reviewWall(const Problem& problem, const Options& options, Workspace& workspace);

/// Goes on from the review: bottom, moments and deflections of each level; of an analysis the
/// factors of safety. Where a level fails, those before it stand in `workspace.results()` alone.
Reached<Results> solveWall(Workspace& workspace);

/// True for an anchored design: of all other walls no moment is reduced.
bool reducesMoments(const Problem& problem);

/// Goes on from the results, as often as there are sections to try; for a wall of which no moment
/// is reduced the value is empty.
Reached<MomentReduction> reduceWallMoments(Workspace& workspace, const PileSections& sections);

/// How far a solution has come; what was not reached is null.
struct Solved {
    const Review* review = nullptr;
    const Results* results = nullptr;           ///< of all levels
    const MomentReduction* reduction = nullptr; ///< where `reducesMoments`
    Failure failure;                            ///< code None where all went well
};

/// All three steps.
Solved solve(const Problem& problem, const Options& options, const PileSections& sections,
             Workspace& workspace);

} // namespace korvane
