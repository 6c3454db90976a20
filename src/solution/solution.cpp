#include "solution/solution.h"

#include "rowe/moment_reduction.h"
#include "runtime/run_guarded.h"
#include "solution/kept_results.h"
#include "state/kept_work.h"
#include "wall/analysis.h"
#include "wall/design.h"
#include "wall/preparation.h"
#include "wall/trial_pressures.h"

namespace korvane {

namespace {

/// How far a solution has come.
enum class Step { None, Prepared, Reviewed, Solved };

constexpr int InvalidCall = 5;

} // namespace

struct Workspace::Contents {
    Problem none; ///< what the state stands on before the first solution
    KeptWork kept;
    State state{none, kept};
    Options options;
    Results results;
    MomentReduction reduction;
    PressureDetails details; ///< of the pressures that stand in the state, where asked for
    Step done = Step::None;
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

/// Why a step cannot go on from what was done: the failure before it, or that it is out of order.
Failure refusal(const State& state) {
    return state.failed() ? state.failure
                          : Failure{.code = FailureCode::RunTimeError,
                                    .stage = state.stage,
                                    .error = InvalidCall};
}

/// The pressures of a design before its bottom is known.
void findFirstPressures(State& state) {
    constexpr int level = 1;
    ComputeSoilPressures(state, level, [](int) {});
    auto& WedgeNoSolution = state.wedge.WedgeNoSolution;
    for (const int side : {Right, Left}) {
        WedgeNoSolution(2, side) = WedgeNoSolution(level, side);
        WedgeNoSolution(3, side) = WedgeNoSolution(level, side);
    }
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
    contents.done = Step::None;
    contents.results.levelCount = 0;
    contents.results.review.hasPressures = false;
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
    contents.done = state.failed() ? Step::None : Step::Prepared;
    return state.failure;
}

Reached<Review> reviewWall(const Problem& problem, const Options& options, Workspace& workspace) {
    State& state = workspace.contents().state;
    Results& results = workspace.contents().results;
    if (!prepareWall(problem, options, workspace) && problem.ProgramMode == Mode::Design) {
        runStep(state, [&state] { findFirstPressures(state); });
    }
    if (state.failed()) {
        workspace.contents().done = Step::None;
        return state.failure;
    }
    keepReview(state, results.review);
    workspace.contents().done = Step::Reviewed;
    return results.review;
}

Reached<Results> solveWall(Workspace& workspace) {
    Workspace::Contents& contents = workspace.contents();
    State& state = contents.state;
    Results& results = contents.results;
    if (contents.done == Step::Solved) {
        return results;
    }
    if (contents.done != Step::Reviewed) {
        return refusal(state);
    }
    contents.done = Step::None; // the search moves what it starts from
    runStep(state, [&] {
        const LevelDone levelDone = [&](int level) { keepLevel(state, level, results); };
        if (state.problem->ProgramMode == Mode::Design) {
            SolveDesign(state, levelDone);
        } else {
            SolveAnalysis(state, contents.options.factorLimit, levelDone);
        }
    });
    if (state.failed()) {
        return state.failure;
    }
    contents.done = Step::Solved;
    return results;
}

bool reducesMoments(const Problem& problem) {
    return problem.WallType == WallKind::Anchored && problem.ProgramMode == Mode::Design;
}

Reached<MomentReduction> reduceWallMoments(Workspace& workspace, const PileSections& sections) {
    Workspace::Contents& contents = workspace.contents();
    State& state = contents.state;
    MomentReduction& reduction = contents.reduction;
    reduction = {};
    if (contents.done != Step::Solved) {
        return refusal(state);
    }
    state.failure = {}; // of other sections
    if (reducesMoments(*state.problem)) {
        state.stage = {Doing::MomentReduction, 0, 1};
        runStep(state,
                [&] { reduction = reduceMoments(*state.problem, contents.results, sections); });
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
    if (reducesMoments(problem)) {
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
