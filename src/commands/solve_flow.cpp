// The order of the stages of a solution and what the user sees between them.
#include "commands/commands.h"
#include "commands/pile_entry.h"
#include "commands/report.h"
#include "commands/told_boxes.h"
#include "commands/wall_notes.h"
#include "rowe/moment_reduction.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <functional>

namespace korvane {

namespace {

constexpr const char* completeText = "SOLUTION COMPLETE";
constexpr const char* abortedText = "SOLUTION ABORTED DUE TO CALCULATION ERRORS";

void enableTopMenus(Session& session, bool enabled) {
    Menus& menus = session.menus;
    for (MenuItem* menu : {&menus.file, &menus.edit, &menus.view, &menus.solve, &menus.tools}) {
        menu->enabled = enabled;
    }
}

void enterStage(Session& session, FlowStage stage) {
    session.stage = stage;
    session.panels.Image1Visible = stage == FlowStage::Rest;
    session.panels.fraSoilOutVisible = stage == FlowStage::Review;
    session.panels.panDoneVisible = stage == FlowStage::Finished;
}

void showDone(Session& session) {
    session.panels.panDoneAborted = session.SolutionFailed != 0;
    session.panels.panDoneText = session.panels.panDoneAborted ? abortedText : completeText;
    enterStage(session, FlowStage::Finished);
}

/// Runs a stage of a solution. A fault shows its box and fails the solution: the data stay.
void runStage(Session& session, Desktop& desktop, const std::function<void()>& stage) {
    const auto fault = runGuarded(stage);
    desktop.SetBusy(false);
    if (!fault) {
        return;
    }
    session.SolutionFailed = 1;
    if (fault->isFileFault()) {
        showFileError(desktop, *fault);
    } else {
        desktop.Ask({.text = runtimeErrorMessage(fault->number())});
    }
}

/// True where a step has reached its value.
template <class Value>
bool reached(Session& session, Desktop& desktop, const Reached<Value>& step) {
    if (!step) {
        desktop.SetBusy(false);
        session.SolutionFailed = step.failure().code == FailureCode::NoSignChange ? 2 : 1;
        session.notes.solved.failure = step.failure();
        tellFailure(desktop, step.failure());
    }
    return static_cast<bool>(step);
}

/// The first pressures; a wall that needs a wedge method asks for it once the problem has passed
/// the preparation.
Reached<Review> review(Session& session, Desktop& desktop) {
    Options options;
    options.keepDetails = true; // for the calculation sheet
    double& largest = session.notes.options.factorLimit.largest;
    options.factorLimit.ask = [&desktop, &largest](double limit) {
        const bool goesOn = desktop.Ask(factorQuestion(limit)) == Answer::Yes;
        largest = goesOn ? std::max(largest, limit) : largest;
        return goesOn;
    };
    session.wedge.reset();
    desktop.SetBusy(true);
    const auto first = reviewWall(session.problem, options, session.workspace);
    if (first || first.failure().code != FailureCode::WedgeMethodMissing) {
        return first;
    }
    desktop.SetBusy(false);
    desktop.ShowScreen(Screen::WEDGMETH, session);
    desktop.SetBusy(true);
    options.wedge = session.wedge;
    session.notes.options.wedge = session.wedge;
    return reviewWall(session.problem, options, session.workspace);
}

/// The levels and their report. False after a failure.
bool solveAndReport(Session& session, Desktop& desktop) {
    const auto results = solveWall(session.workspace);
    if (!reached(session, desktop, results)) {
        return false;
    }
    session.notes.solved.results = &*results;
    desktop.SetBusy(false);
    continueReport(session);
    return true;
}

/// From the preparation to the stop for review of a design or to the end of an analysis.
void firstStage(Session& session, Desktop& desktop) {
    const auto pressures = review(session, desktop);
    if (!reached(session, desktop, pressures)) {
        return;
    }
    session.notes.solved.review = &*pressures;
    continueReport(session);
    if (!pressures->hasPressures) {
        solveAndReport(session, desktop);
    }
}

/// Reduces the moments and reports them, once the section table was shown to soil that may have
/// curves.
void reduceAndReport(Session& session, Desktop& desktop) {
    if (soilForReduction(session.problem, session.workspace.results())) {
        desktop.ShowScreen(Screen::ROWEPILE, session);
        if (session.SolutionFailed != 0) {
            return;
        }
    }
    const auto reduction = reduceWallMoments(session.workspace, session.sections);
    if (reached(session, desktop, reduction)) {
        session.notes.solved.reduction = &*reduction;
        continueReport(session);
    }
}

/// The wall stage of a design.
void wallStage(Session& session, Desktop& desktop) {
    desktop.SetBusy(true);
    if (solveAndReport(session, desktop) && reducesMoments(session.problem)) {
        reduceAndReport(session, desktop);
    }
}

/// The result plots that a finished solution offers, and the sheet of any.
void enableResults(Session& session) {
    Menus& menus = session.menus;
    const bool solved = session.SolutionFailed == 0;
    const bool anchored = session.problem.WallType == WallKind::Anchored;
    menus.cantileverPlots.enabled = solved && !anchored;
    menus.freeEarthPlots.enabled = solved && anchored;
    menus.fixedEarthPlots.enabled = solved && anchored;
    menus.roweCurves.enabled = solved && anchored && session.workspace.reduction().hasCurves();
    const Solved& reached = session.notes.solved;
    menus.sheet.enabled = reached.failure || reached.review != nullptr;
}

/// Back to the menus; a next solution needs an edit first.
void returnToRest(Session& session) {
    enterStage(session, FlowStage::Rest);
    enableTopMenus(session, true);
    session.menus.solve.enabled = false;
}

} // namespace

void solveProblem(Session& session, Desktop& desktop) {
    enterStage(session, FlowStage::Solving);
    enableTopMenus(session, false);
    desktop.Mirror(session);
    forgetSolution(session.notes, false);
    session.report.next = FirstOfSolution;
    runStage(session, desktop, [&] { firstStage(session, desktop); });
    const bool goesOn = session.SolutionFailed == 0 && session.problem.ProgramMode == Mode::Design;
    if (!goesOn) {
        takeSeepage(session.workspace, session.problem);
    }
    takeNotes(session, desktop);
    if (goesOn) {
        enterStage(session, FlowStage::Review);
    } else {
        showDone(session);
    }
    tellUnsafeNotes(session, desktop);
}

void continueSolution(Session& session, Desktop& desktop) {
    session.stage = FlowStage::Solving;
    desktop.Mirror(session);
    runStage(session, desktop, [&] { wallStage(session, desktop); });
    takeSeepage(session.workspace, session.problem);
    takeNotes(session, desktop);
    showDone(session);
    tellUnsafeNotes(session, desktop);
}

void discontinueSolution(Session& session) {
    session.SolutionFailed = 2;
    takeSeepage(session.workspace, session.problem);
    enableResults(session);
    returnToRest(session);
}

void acceptResults(Session& session) {
    enableResults(session);
    returnToRest(session);
}

void takeSeepage(const Workspace& workspace, Problem& problem) {
    const Preparation& preparation = workspace.state().preparation;
    problem.SeepageKind = preparation.SeepageKind;
    problem.SeepageGradient = preparation.SeepageGradient;
}

void acceptDefaultSections(Session& session) {
    acceptDefaultTexts(session.sections, DefaultAllowStressText, DefaultModulusText);
    addSections(session.sections, {});
}

} // namespace korvane
