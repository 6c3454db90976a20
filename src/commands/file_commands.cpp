// The commands of the File menu.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/files.h"
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
    if (endsIn(session.CurrentInputName, ".III")) {
        AskSaveInput(session, desktop);
    }
    if (endsIn(session.report.CurrentOutputName, ".OOO")) {
        AskSaveOutput(session, desktop);
    }
}

void newProblem(Session& session, Desktop& desktop) {
    askForUnsavedFiles(session, desktop);
    DeleteTempFiles(session, desktop);
    ClearProblem(session);
    session.menus.mnuEdit.enabled = true;
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
    const ReadResult result = readProblem(session.problem, fileText, name);
    session.readingInput = false;
    session.SolutionFailed = result.complete ? 0 : 1;
    if (!tellReading(desktop, name, result)) {
        return false;
    }
    session.report.CurrentOutputName = makeTemporaryFile(session, ".ooo");
    startReport(session);
    return true;
}

void enableForOpenedFile(Menus& menus) {
    menus.mnuFileItem(3).enabled = true;
    menus.mnuFileItem(5).enabled = true;
    menus.mnuEdit.enabled = true;
    menus.mnuEditItem(0).caption = "&Edit Input Data";
    menus.mnuView.enabled = true;
    for (const int item : {0, 1, 2}) {
        menus.mnuViewItem(item).enabled = true;
    }
    menus.mnuViewItem(3).enabled = false;
    menus.mnuSaveItem(0).enabled = false;
    menus.mnuSolve.enabled = true;
}

void disableAfterFailedOpen(Menus& menus) {
    menus.mnuFileItem(0).enabled = true;
    menus.mnuFileItem(1).enabled = true;
    menus.mnuFileItem(3).enabled = false;
    menus.mnuFileItem(5).enabled = false;
    menus.mnuEdit.enabled = false;
    menus.mnuView.enabled = false;
    menus.mnuSolve.enabled = false;
}

/// `named` is the file to open, or empty for the dialog's.
void openFile(Session& session, Desktop& desktop, const std::string& named) {
    askForUnsavedFiles(session, desktop);
    session.menus.mnuSaveItem(1).enabled = true;
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
    if (readAndEcho(session, desktop, readInputFile(session.InputFileName))) {
        enableForOpenedFile(session.menus);
        noteRecent(session, session.InputFileName);
    } else {
        disableAfterFailedOpen(session.menus);
        ClearProblem(session);
    }
}

/// Works at rest, at the review and at the last panel, but never in the middle of a solution.
void exitProgram(Session& session, Desktop& desktop) {
    if (session.stage != FlowStage::Solving &&
        runCommand(session, desktop, [&] { askForUnsavedFiles(session, desktop); })) {
        DeleteTempFiles(session, desktop);
        desktop.EndProgram();
    }
}

void printReport(Session& session, Desktop& desktop) {
    const Report& report = session.report;
    std::vector<std::string> lines = splitLines(readFile(report.CurrentOutputName));
    const auto count = static_cast<std::size_t>(report.OutputLineCount);
    if (lines.size() < count) {
        throw RuntimeError(62, report.CurrentOutputName);
    }
    lines.resize(count);
    desktop.PrintDocument(report.CurrentOutputName, lines);
}

} // namespace

void mnuFileItem_Click(Session& session, Desktop& desktop, int index) {
    switch (index) {
    case 0:
        runCommand(session, desktop, [&] { newProblem(session, desktop); });
        break;
    case 1:
        runCommand(session, desktop, [&] { openFile(session, desktop, {}); });
        break;
    case 7:
        exitProgram(session, desktop);
        break;
    default: // a separator or a submenu
        break;
    }
}

void openNamedFile(Session& session, Desktop& desktop, const std::string& path) {
    runCommand(session, desktop, [&] { openFile(session, desktop, path); });
}

void mnuSaveItem_Click(Session& session, Desktop& desktop, int index) {
    runCommand(session, desktop, [&] {
        if (index == 0) {
            SaveInputData(session, desktop);
            if (!session.InputFileName.empty()) {
                session.InputSavedFlag = 1;
                session.DataChanged = 0;
                session.menus.mnuSaveItem(0).enabled = false;
            }
        } else {
            SaveOutputData(session, desktop);
            if (!session.SavedOutputName.empty()) {
                session.OutputSavedFlag = 1;
            }
        }
    });
}

void mnuPrintItem_Click(Session& session, Desktop& desktop, int index) {
    runCommand(session, desktop, [&] {
        desktop.SetBusy(true);
        if (index == 0) {
            WriteInputData(session, desktop, "PRINTER");
        } else {
            printReport(session, desktop);
        }
        desktop.SetBusy(false);
    });
}

} // namespace korvane
