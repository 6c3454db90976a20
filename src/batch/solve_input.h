// One input of the batch command, from the file to its report.
#pragma once

#include "batch/options.h"
#include "notes/notes.h"
#include "sheet/sheet.h"
#include "solution/solution.h"
#include "state/message_box.h"

#include <string>
#include <vector>

namespace korvane::batch {

/// A box that came up, and how it was answered.
struct Message {
    MessageBox box;
    Answer answer = Answer::Ok;
    std::string place =
        {}; ///< what stands behind it on a line of its own: place and rule in a file
};

struct Outcome {
    int status = StatusSolved;
    std::vector<Message> messages;
    std::string during;   ///< what was being done where there are no results: "reading the input"
    std::string withheld; ///< which outputs of an input that was not read are missing, and why
    std::vector<Note> notes;
    std::vector<Check> failedChecks; ///< of the calculation sheet
    std::string comparison;          ///< the table, where it is asked for and the input was read
    std::string report;              ///< only where it goes to standard output
    int fault = 0;                   ///< the run-time error that left no memory for a message
};

/// Reads and solves one input as the desktop program would and writes its report (JSON, figures and
/// calculation sheet too). Every fault ends as a message and a status. No file but the outputs is
/// made.
///
/// All outputs are written beside their places before one is touched: a fault of files or memory up
/// to then leaves those of an earlier run whole. Then the old figures, sheet and JSON go, and
/// report, figures, sheet and JSON take their places in this order. Where one cannot, the rest goes
/// on.
///
/// With --check the input is read alone: the notes on it, no output, and StatusFailed where one is
/// unsafe. `second` is where walls are solved once more for notes and comparison.
Outcome solveInput(const Job& job, const Options& options, Workspace& workspace,
                   NoteWorkspace& second);

/// A note as one line of the error output: "INPUT: note: SEVERITY: TEXT (CODE)".
std::string noteLineOf(const std::string& input, const Note& note);

/// The failing checks of a calculation sheet; where there are some the outcome is StatusFailed.
void tellChecks(const std::vector<Check>& checks, Outcome& outcome);

/// A failing check as one line of the error output: "INPUT: sheet: WHAT: VALUE, solution VALUE".
std::string checkLineOf(const std::string& input, const Check& check);

/// A message as one line of the error output: "INPUT: [TITLE] text", its lines joined by " / ".
/// At most 200 characters of each are shown, control characters as "\x1B".
/// Where the message has a place, "INPUT:PLACE" follows on a line of its own.
std::string messageLine(const std::string& input, const Message& message);

} // namespace korvane::batch
