// The order of the stages of a solution and what the user sees between them.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/run_guarded.h"
#include "pressures/coefficient_pressures.h"
#include "pressures/wedge_pressures.h"
#include "reports/results_report.h"
#include "reports/soil_pressure_report.h"
#include "rowe/moment_reduction.h"
#include "rowe/pile_sections.h"
#include "wall/analysis.h"
#include "wall/design.h"
#include "wall/net_pressures.h"
#include "wall/preparation.h"
#include "wall/solution_files.h"

#include <functional>

namespace korvane {

namespace {

constexpr const char* completeText = "SOLUTION COMPLETE";
constexpr const char* abortedText = "SOLUTION ABORTED DUE TO CALCULATION ERRORS";

void enableTopMenus(Session& session, bool enabled) {
    Menus& menus = session.menus;
    for (MenuItem* menu : {&menus.mnuFile, &menus.mnuEdit, &menus.mnuView, &menus.mnuSolve}) {
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
    session.panels.panDoneAborted = session.state.SolutionFailed != 0;
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
    session.state.SolutionFailed = 1;
    if (fault->isFileFault()) {
        showFileError(desktop, *fault);
    } else {
        desktop.Ask({.text = runtimeErrorMessage(fault->number())});
    }
}

void chooseWedgeMethod(Session& session, Desktop& desktop) {
    const auto& SideMethod = session.state.preparation.SideMethod;
    if (SideMethod(Right) == PressureMethod::Wedge || SideMethod(Left) == PressureMethod::Wedge) {
        desktop.ShowScreen(Screen::WEDGMETH, session);
    }
}

void setWedgeMethod(Session& session, PressureMethod method) {
    for (PressureMethod& SideMethod : session.state.preparation.SideMethod) {
        if (SideMethod == PressureMethod::Wedge) {
            SideMethod = method;
        }
    }
}

/// Initial pressures of a design and their report.
void designPressures(State& state) {
    constexpr int level = 1;
    for (const int side : {Right, Left}) {
        if (state.preparation.SideMethod(side) == PressureMethod::Coefficients) {
            ComputeCoefficientPressures(state, side, level);
        } else {
            ComputeWedgePressures(state, side, level);
        }
        if (state.SolutionFailed != 0) {
            return;
        }
    }
    auto& WedgeNoSolution = state.wedge.WedgeNoSolution;
    for (const int side : {Right, Left}) {
        WedgeNoSolution(2, side) = WedgeNoSolution(level, side);
        WedgeNoSolution(3, side) = WedgeNoSolution(level, side);
    }
    ComputeNetPressures(state);
    if (state.SolutionFailed == 0) {
        WriteSoilPressureReport(state);
    }
}

void analyse(State& state, Desktop& desktop) {
    SolveAnalysis(state);
    desktop.SetBusy(false);
    if (state.SolutionFailed == 0) {
        WriteResults(state);
    }
}

/// From the preparation to the stop for review of a design or to the end of an analysis.
void firstStage(Session& session, Desktop& desktop) {
    State& state = session.state;
    forgetSolvedLevels(state); // nothing of an earlier solution may show in this one
    clearReduction(state.rowe);
    PrepareSolution(state);
    if (state.SolutionFailed != 0) {
        return;
    }
    chooseWedgeMethod(session, desktop);
    desktop.SetBusy(true);
    if (state.problem.ProgramMode == Mode::Design) {
        designPressures(state);
    } else {
        analyse(state, desktop);
    }
}

/// The wall stage of a design.
void wallStage(Session& session, Desktop& desktop) {
    State& state = session.state;
    desktop.SetBusy(true);
    SolveDesign(state);
    desktop.SetBusy(false);
    if (state.SolutionFailed != 0) {
        return;
    }
    WriteResults(state);
    if (state.SolutionFailed == 0 && state.problem.WallType == WallKind::Anchored) {
        ReduceRoweMoments(state, [&] { desktop.ShowScreen(Screen::ROWEPILE, session); });
    }
}

/// The result plots that a finished solution offers.
void enableResultPlots(Session& session) {
    auto& mnuViewItem = session.menus.mnuViewItem;
    const bool solved = session.state.SolutionFailed == 0;
    const bool anchored = session.state.problem.WallType == WallKind::Anchored;
    mnuViewItem(3).enabled = solved && !anchored;
    mnuViewItem(4).enabled = solved && anchored;
    mnuViewItem(5).enabled = solved && anchored;
    mnuViewItem(6).enabled = solved && anchored && session.state.rowe.RoweSoilType != 0;
}

/// Back to the menus; a next solution needs an edit first.
void returnToRest(Session& session) {
    enterStage(session, FlowStage::Rest);
    enableTopMenus(session, true);
    session.menus.mnuSolve.enabled = false;
}

} // namespace

void mnuSolveItem_Click(Session& session, Desktop& desktop) {
    enterStage(session, FlowStage::Solving);
    enableTopMenus(session, false);
    desktop.Mirror(session);
    runStage(session, desktop, [&] { firstStage(session, desktop); });
    if (session.state.SolutionFailed == 0 && session.state.problem.ProgramMode == Mode::Design) {
        enterStage(session, FlowStage::Review);
    } else {
        showDone(session);
    }
}

void cmdFixed_Click(Session& session) {
    setWedgeMethod(session, PressureMethod::FixedSurface);
}

void cmdSweep_Click(Session& session) {
    setWedgeMethod(session, PressureMethod::Sweep);
}

void cmdVuOutFile_Click(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] { desktop.ShowScreen(Screen::VUINECHO, session); });
}

void cmdPlotPres_Click(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] { desktop.ShowScreen(Screen::VUSOLPLT, session); });
}

void cmdContinue_Click(Session& session, Desktop& desktop) {
    session.stage = FlowStage::Solving;
    desktop.Mirror(session);
    runStage(session, desktop, [&] { wallStage(session, desktop); });
    showDone(session);
}

void cmdDiscontinue_Click(Session& session) {
    session.state.SolutionFailed = 2;
    enableResultPlots(session);
    returnToRest(session);
}

void cmdOK_Click(Session& session) {
    enableResultPlots(session);
    returnToRest(session);
}

void acceptDefaultSections(Session& session) {
    RoweData& rowe = session.state.rowe;
    acceptDefaultTexts(rowe, DefaultAllowStressText, DefaultModulusText);
    addSections(rowe, {});
}

} // namespace korvane
