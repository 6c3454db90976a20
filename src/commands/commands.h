// The commands of the main window without a window. Each works on a session and lets a desktop
// show what has to be shown; afterwards the caller mirrors session.menus and session.panels.
// Which entry of the menus calls which command stands in menus.h.
//
// Faults: a file or printer fault in a command shows the box "FILE ERROR" and the command ends
// with problem, files, menus and names as before it began. A fault in a solution shows its box and
// leads to the aborted panel. All other RuntimeErrors leave the command: they end the program.
#pragma once

#include "commands/session.h"

#include <string>

namespace korvane {

// ---- start ------------------------------------------------------------------------------------

/// Sets the environment variable "temp" where it is not set, from TEMP, TMP or TMPDIR, else to the
/// system's temporary folder. Each main calls it first, before any thread starts.
void provideTempVariable();

/// Start of the program once the disclaimer is accepted: temporary folder, constant tables, empty
/// problem, menus and panels. RuntimeError 76 where "temp" names no folder.
void startSession(Session& session);

/// Takes "temp", trimmed, as TempFolder, current folder and initial folder of the dialogs.
/// RuntimeError 76 where the variable is missing or names no folder.
void SetTempFolder(Session& session);

/// Empties the problem, the names and counts of the files and the list of temporary files, and
/// sets the menus for an empty problem. Deletes no file.
void ClearProblem(Session& session);

// ---- File -------------------------------------------------------------------------------------

void newProblem(Session& session, Desktop& desktop);

/// Open, with its dialog.
void openFile(Session& session, Desktop& desktop);

/// Open without its dialog: the file of that path, after the same questions.
void openNamedFile(Session& session, Desktop& desktop, const std::string& path);

void saveInput(Session& session, Desktop& desktop);
void saveReport(Session& session, Desktop& desktop);
void printInput(Session& session, Desktop& desktop);
void printReport(Session& session, Desktop& desktop);

/// Exit, Alt+F4 and the frame's cross; nothing in the middle of a solution.
void exitProgram(Session& session, Desktop& desktop);

// ---- Edit and View ----------------------------------------------------------------------------

/// Enter or edit the data on the screens, from KEYIN.
void editData(Session& session, Desktop& desktop);

/// Shows a text window or a plot: a screen of the View menu or of the stop for review.
void viewScreen(Session& session, Desktop& desktop, Screen screen);

/// Goes on as after Edit with data that were entered before, from the user's file of that name and
/// units or none; over KEYIN where a section is missing or holds what no section leaves.
void goOnWithEnteredData(Session& session, Desktop& desktop, const Problem& problem,
                         const std::string& file, UnitSystem fileUnits);

/// A text window's content.
struct TextView {
    std::string title; ///< the file's path, of notes their name, of the verification its outcome
    std::string text;
};

/// What VUINPTFL shows: the file named by CurrentInputName less its last character. File faults
/// are RuntimeErrors.
TextView inputFileView(const Session& session);

/// What VUINECHO shows: the file named by CurrentOutputName; of one with more than 48000 bytes the
/// first 48000, after a box that tells so. File faults are RuntimeErrors.
TextView outputFileView(const Session& session, Desktop& desktop);

/// The notes on the problem and its solution, if there is one, in the units chosen.
TextView notesView(Session& session, Desktop& desktop);

/// The cases that come with the program, run now: what is wrong with cases and the table.
TextView verificationView();

/// Saves the calculation sheet of the solution, also of one that has failed or was discontinued, in
/// the units chosen, and opens it.
void saveSheet(Session& session, Desktop& desktop);

// ---- solution ---------------------------------------------------------------------------------

/// Starts a solution: a design goes on to the stop for review, an analysis to its end.
void solveProblem(Session& session, Desktop& desktop);

/// The two ways on from the stop for review.
void continueSolution(Session& session, Desktop& desktop);
void discontinueSolution(Session& session);

/// The button of the last panel: the end of every finished solution.
void acceptResults(Session& session);

/// The record keeps the seepage that a solution has found, also after a failure; behind its last
/// step, which still reads the record.
void takeSeepage(const Workspace& workspace, Problem& problem);

/// Accepts the default sections with nothing changed and none added: ROWEPILE without a window.
void acceptDefaultSections(Session& session);

// ---- end --------------------------------------------------------------------------------------

/// Whether there is anything to rescue: not without headings, nor in the reader's own fatal cases.
bool hasRescueData(const Session& session);

/// Before the box of a RuntimeError that ends the program: writes the problem to a fresh
/// KORVANE-RESCUE-n.dat in the temporary folder. The file's path; empty where there is nothing to
/// keep or it cannot be written.
std::string rescueInput(const Session& session);

} // namespace korvane
