#include "solution/solution.h"

#include "rowe/moment_reduction.h"
#include "runtime/run_guarded.h"
#include "solution/kept_results.h"
#include "state/kept_work.h"
#include "wall/analysis.h"
#include "wall/design.h"
#include "wall/net_pressures.h"
#include "wall/preparation.h"
#include "wall/trial_pressures.h"

namespace korvane {

struct Workspace::Contents {
    Problem none; ///< what the state stands on before the first solution
    KeptWork kept;
    State state{none, kept};
    Options options;
    Results results;
    MomentReduction reduction;
    PressureDetails details; ///< of the pressures that stand in the state, where asked for
};

Workspace::Workspace() : contents_(std::make_unique<Contents>()) {}
Workspace::~Workspace() = default;
Workspace::Workspace(Workspace&&) noexcept = default;
Workspace& Workspace::operator=(Workspace&&) noexcept = default;

const State& Workspace::state() const {
    return contents_->state;
}
const Review& Workspace::review() const {
    return contents_->results.review;
}
const Results& Workspace::results() const {
    return contents_->results;
}
const MomentReduction& Workspace::reduction() const {
    return contents_->reduction;
}

namespace {

/// Runs a step; a fault becomes the failure of the state.
template <class Step>
void runStep(State& state, Step step) {
    const auto fault = runGuarded(step);
    if (fault) {
        fail(state, {.code = FailureCode::RunTimeError, .error = fault->number()});
    }
}

/// Ends the solution of a problem that neither a file nor a screen can have left so. What one of
/// the two lets through is solved, or ends with a box of its own.
void refuseInvalid(State& state) {
    forEachFinding(*state.problem, [&state](const Finding& finding) {
        if (!finding.isFatal()) {
            return true;
        }
        fail(state,
             {.code = FailureCode::InvalidProblem, .side = finding.side, .finding = finding});
        return false;
    });
}

/// Every side that needs a wedge takes the method of the options.
void takeWedgeMethod(State& state, const Options& options) {
    for (const int side : {Right, Left}) {
        PressureMethod& method = state.preparation.SideMethod(side);
        if (method != PressureMethod::Wedge) {
            continue;
        }
        if (!options.wedge) {
            fail(state, {.code = FailureCode::WedgeMethodMissing, .side = side});
            return;
        }
        const bool sweep =
            options.amendments.methodSweep ||
            (*options.wedge == WedgeMethod::Sweep && !options.amendments.methodFixed);
        method = sweep ? PressureMethod::Sweep : PressureMethod::FixedSurface;
    }
}

/// The pressures of a design before its bottom is known.
void findFirstPressures(State& state) {
    constexpr int level = 1;
    for (const int side : {Right, Left}) {
        ComputeSidePressures(state, side, level);
        if (state.failed()) {
            return;
        }
    }
    auto& WedgeNoSolution = state.wedge.WedgeNoSolution;
    for (const int side : {Right, Left}) {
        WedgeNoSolution(2, side) = WedgeNoSolution(level, side);
        WedgeNoSolution(3, side) = WedgeNoSolution(level, side);
    }
    ComputeNetPressures(state);
}

} // namespace

Failure prepareWall(const Problem& problem, const Options& options, Workspace& workspace) {
    Workspace::Contents& contents = workspace.contents();
    State& state = contents.state;
    state.problem = &problem;
    state.details = options.keepDetails ? &contents.details : nullptr;
    state.amendments = options.amendments;
    state.failure = {};
    state.stage = {};
    state.preparation.SeepageKind = problem.SeepageKind;
    state.preparation.SeepageGradient = problem.SeepageGradient;
    contents.options = options;
    contents.results.levelCount = 0;
    contents.reduction = {};
    runStep(state, [&] {
        refuseInvalid(state);
        if (!state.failed()) {
            PrepareSolution(state);
        }
        if (!state.failed()) {
            takeWedgeMethod(state, options);
        }
    });
    return state.failure;
}

Reached<Review> reviewWall(const Problem& problem, const Options& options, Workspace& workspace) {
    State& state = workspace.contents().state;
    Results& results = workspace.contents().results;
    if (!prepareWall(problem, options, workspace) && problem.ProgramMode == Mode::Design) {
        runStep(state, [&state] { findFirstPressures(state); });
    }
    if (state.failed()) {
        return state.failure;
    }
    keepReview(state, results.review);
    return results.review;
}

Reached<Results> solveWall(Workspace& workspace) {
    State& state = workspace.contents().state;
    Results& results = workspace.contents().results;
    const Options& options = workspace.contents().options;
    if (state.failed()) { // the review
        return state.failure;
    }
    runStep(state, [&] {
        const LevelDone levelDone = [&](int level) { keepLevel(state, level, results); };
        if (state.problem->ProgramMode == Mode::Design) {
            SolveDesign(state, levelDone);
        } else {
            SolveAnalysis(state, options.factorLimit, levelDone);
        }
    });
    if (state.failed()) {
        return state.failure;
    }
    return results;
}

Reached<MomentReduction> reduceWallMoments(Workspace& workspace, const PileSections& sections) {
    State& state = workspace.contents().state;
    const Results& results = workspace.contents().results;
    MomentReduction& reduction = workspace.contents().reduction;
    const Problem& problem = *state.problem;
    reduction = {};
    if (state.failed() && state.stage.doing != Doing::MomentReduction) {
        return state.failure;
    }
    state.failure = {};
    if (problem.WallType == WallKind::Anchored && problem.ProgramMode == Mode::Design) {
        state.stage = {Doing::MomentReduction, 0, 1};
        runStep(state, [&] { reduction = reduceMoments(problem, results, sections); });
    }
    if (state.failed()) {
        return state.failure;
    }
    return reduction;
}

Solved solve(const Problem& problem, const Options& options, const PileSections& sections,
             Workspace& workspace) {
    Solved solved;
    const auto review = reviewWall(problem, options, workspace);
    if (!review) {
        solved.failure = review.failure();
        return solved;
    }
    solved.review = &*review;
    const auto results = solveWall(workspace);
    if (!results) {
        solved.failure = results.failure();
        return solved;
    }
    solved.results = &*results;
    if (problem.WallType == WallKind::Anchored && problem.ProgramMode == Mode::Design) {
        const auto reduction = reduceWallMoments(workspace, sections);
        if (!reduction) {
            solved.failure = reduction.failure();
            return solved;
        }
        solved.reduction = &*reduction;
    }
    return solved;
}

} // namespace korvane
