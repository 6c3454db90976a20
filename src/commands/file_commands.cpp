// The commands of the File menu.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/files.h"
#include "commands/problem_name.h"
#include "commands/recent_files.h"
#include "commands/report.h"
#include "commands/told_boxes.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"

#include <algorithm>
#include <vector>

namespace korvane {

namespace {

void askForUnsavedFiles(Session& session, Desktop& desktop) {
    if (hasUnsavedInput(session)) {
        AskSaveInput(session, desktop);
    }
    if (endsIn(session.report.CurrentOutputName, ".OOO")) {
        AskSaveOutput(session, desktop);
    }
}

void clearForNew(Session& session, Desktop& desktop) {
    askForUnsavedFiles(session, desktop);
    DeleteTempFiles(session, desktop);
    ClearProblem(session);
    session.menus.edit.enabled = true;
}

/// True when the problem is complete and its echo is written.
bool readAndEcho(Session& session, Desktop& desktop, const std::string& fileText) {
    const std::string& name = session.InputFileName;
    if (!goOnWithFile(desktop, name, fileText.size())) {
        return false;
    }
    session.CurrentInputName = name;
    session.ProblemFile = name;
    session.readingInput = true;
    const ReadResult result =
        readProblem(session.problem, fileText, name, nullptr, nullptr, &session.notes.remarks);
    session.readingInput = false;
    session.SolutionFailed = result.complete ? 0 : 1;
    if (!tellReading(desktop, name, result)) {
        return false;
    }
    session.fileUnits = result.units;
    session.units = result.units;
    session.report.CurrentOutputName = makeTemporaryFile(session, ".ooo");
    startReport(session);
    return true;
}

void enableForOpenedFile(Menus& menus) {
    menus.save.enabled = true;
    menus.print.enabled = true;
    menus.edit.enabled = true;
    menus.editData.caption = "&Edit Input Data";
    menus.view.enabled = true;
    enableProblemViews(menus, true);
    menus.cantileverPlots.enabled = false;
    menus.saveInput.enabled = false;
    menus.solve.enabled = true;
}

void disableAfterFailedOpen(Menus& menus) {
    menus.newProblem.enabled = true;
    menus.open.enabled = true;
    menus.save.enabled = false;
    menus.print.enabled = false;
    menus.edit.enabled = false;
    menus.view.enabled = false;
    menus.solve.enabled = false;
}

/// `named` is the file to open, or empty for the dialog's.
void openProblem(Session& session, Desktop& desktop, const std::string& named) {
    askForUnsavedFiles(session, desktop);
    session.menus.saveReport.enabled = true;
    DeleteTempFiles(session, desktop);
    ClearProblem(session);

    session.InputFileName =
        named.empty() ? chooseFile(session, desktop,
                                   {.kind = FileDialog::Kind::Open,
                                    .title = "OPEN INPUT FILE.",
                                    .filter = "Input files(*.dat)|*.dat|Input files (*.in)|*.in|"
                                              "All files (*.*)|*.*"})
                      : named;
    if (session.InputFileName.empty()) {
        return;
    }
    RememberDialogFolder(session, session.InputFileName);
    const std::string text = readInputFile(session.InputFileName, Pipes::Refuse);
    if (readAndEcho(session, desktop, text)) {
        enableForOpenedFile(session.menus);
        noteRecent(session, session.InputFileName);
    } else {
        disableAfterFailedOpen(session.menus);
        ClearProblem(session);
    }
}

void printReportLines(Session& session, Desktop& desktop) {
    const Report& report = session.report;
    std::vector<std::string> lines = splitLines(readSessionFile(session, report.CurrentOutputName));
    const auto count = static_cast<std::size_t>(report.OutputLineCount);
    if (lines.size() < count) {
        throw RuntimeError(62, report.CurrentOutputName);
    }
    lines.resize(count);
    desktop.PrintDocument(report.CurrentOutputName, lines);
}

} // namespace

void newProblem(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] { clearForNew(session, desktop); });
}

void openFile(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] { openProblem(session, desktop, {}); });
}

void openNamedFile(Session& session, Desktop& desktop, const std::string& path) {
    runCommand(session, desktop, [&] { openProblem(session, desktop, path); });
}

void saveInput(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] {
        SaveInputData(session, desktop);
        if (!session.InputFileName.empty()) {
            session.InputSavedFlag = 1;
            session.DataChanged = 0;
            session.menus.saveInput.enabled = false;
        }
    });
}

void saveReport(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] {
        SaveOutputData(session, desktop);
        if (!session.SavedOutputName.empty()) {
            session.OutputSavedFlag = 1;
        }
    });
}

void printInput(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] {
        desktop.SetBusy(true);
        WriteInputData(session, desktop, "PRINTER");
        desktop.SetBusy(false);
    });
}

void printReport(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] {
        desktop.SetBusy(true);
        printReportLines(session, desktop);
        desktop.SetBusy(false);
    });
}

void exitProgram(Session& session, Desktop& desktop) {
    if (session.stage != FlowStage::Solving &&
        runCommand(session, desktop, [&] { askForUnsavedFiles(session, desktop); })) {
        DeleteTempFiles(session, desktop);
        desktop.EndProgram();
    }
}

} // namespace korvane
