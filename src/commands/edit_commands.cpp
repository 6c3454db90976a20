// The commands of the Edit menu.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/files.h"
#include "commands/report.h"
#include "commands/wall_notes.h"
#include "problem/validate.h"

#include <filesystem>
#include <system_error>

namespace korvane {

namespace {

void askForUnsavedData(Session& session, Desktop& desktop) {
    if (session.DataChanged != 0) {
        AskSaveInput(session, desktop, SaveInputBeforeEditing);
    }
    if (session.OutputSavedFlag == 0 && !session.report.CurrentOutputName.empty()) {
        AskSaveOutput(session, desktop);
    }
}

/// False where nothing was changed and the input has its whole file but no report: then the report
/// alone is made anew.
bool needsInputFile(const Session& session) {
    std::error_code ignored;
    return session.DataChanged != 0 || !session.report.CurrentOutputName.empty() ||
           session.inputFileStale ||
           !std::filesystem::is_regular_file(session.CurrentInputName, ignored);
}

void writeInputFile(Session& session, Desktop& desktop) {
    session.CurrentInputName = makeTemporaryFile(session, ".iii");
    WriteInputData(session, desktop, "FILE");
    session.menus.saveInput.enabled = true;
}

void writeReport(Session& session) {
    session.report.CurrentOutputName = makeTemporaryFile(session, ".ooo");
    startReport(session);
}

void enableForEditedData(Menus& menus) {
    for (MenuItem* item :
         {&menus.newProblem, &menus.open, &menus.save, &menus.edit, &menus.view, &menus.solve}) {
        item->enabled = true;
    }
    enableProblemViews(menus, true);
    menus.editData.caption = "Edit Input Data";
    disableResults(menus);
    menus.saveReport.enabled = true;
}

/// The data entry was cancelled: the problem is emptied. The menus for that stand in ClearProblem.
void abandonEdit(Session& session) {
    session.menus.edit.enabled = true;
    session.menus.cantileverPlots.enabled = false;
    ClearProblem(session);
}

/// What follows the data entry.
void takeEnteredData(Session& session, Desktop& desktop) {
    forgetSolution(session.notes, session.DataChanged != 0);
    session.running->keepEnteredData();
    session.menus.saveInput.enabled = session.DataChanged != 0;
    if (session.DataChanged == 0) {
        session.report.OutputLineCount = 0;
    }
    if (needsInputFile(session)) {
        writeInputFile(session, desktop);
    }
    writeReport(session);
    enableForEditedData(session.menus);
}

void enterData(Session& session, Desktop& desktop) {
    askForUnsavedData(session, desktop);
    session.DataChanged = 0;
    session.menus.cantileverPlots.enabled = false;
    desktop.ShowScreen(Screen::KEYIN, session);
    if (session.SolutionFailed != 0) {
        abandonEdit(session);
        return;
    }
    takeEnteredData(session, desktop);
}

/// Data that nobody has said Finished to may lack whole sections.
bool isUnfinished(const Problem& problem) {
    bool unfinished = false;
    forEachFinding(problem, [&](const Finding& finding) {
        unfinished = finding.isFatal();
        return !unfinished;
    });
    return unfinished;
}

void goOn(Session& session, Desktop& desktop) {
    session.HeadContDataValid = session.problem.NumHeadingLines > 0 ? 1 : 0;
    session.DataChanged = 1;
    if (isUnfinished(session.problem)) {
        desktop.ShowScreen(Screen::KEYIN, session);
        if (session.SolutionFailed != 0) {
            abandonEdit(session);
            return;
        }
        session.DataChanged = 1;
    }
    takeEnteredData(session, desktop);
}

} // namespace

void editData(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] { enterData(session, desktop); });
}

void goOnWithEnteredData(Session& session, Desktop& desktop, const Problem& problem,
                         const std::string& file, UnitSystem fileUnits) {
    runCommand(session, desktop, [&] {
        session.problem = problem;
        session.ProblemFile = file;
        session.fileUnits = fileUnits;
        session.units = fileUnits;
        goOn(session, desktop);
    });
}

} // namespace korvane
